// How the cells of the table of a result are painted: numbers by their points, units with a chevron, sections
// with theirs.
#pragma once
#include <QStyledItemDelegate>
#include <array>
#include <vector>

#include "report/result_table.h"

namespace quom {

class ResultTableModel;

// A number cut at its point, else at its exponent, else at its end.
struct NumberParts {
    QString left, right;
};
NumberParts cut_at_point(const QString& number);

// Widest parts of the numbers of a column within one section.
struct PointBlock {
    double left = 0, right = 0;
    double width() const { return left + right; }
    void take(const NumberParts& parts, const QFontMetricsF& metrics);
    // Where the points of the block stand in a cell: the block is centred.
    double point_in(const QRectF& cell) const { return cell.center().x() - width() / 2 + left; }
};
using PointBlocks = std::vector<std::array<PointBlock, result_columns>>;  // by section

class ResultTableDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    static constexpr int Inset = 6, Indent = 24, Chevron = 6;  // of cells, of the quantity, size

    explicit ResultTableDelegate(const ResultTableModel& model, QObject* parent)
        : QStyledItemDelegate(parent), model_(model) {}
    PointBlocks blocks;
    bool stale = false;        // grey, without units to choose
    bool many_marked = false;  // one marked cell has the ring alone
    bool symbol_shown = true;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
    // The head of a section over the whole row.
    void paint_section(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index,
                       bool unfolded) const;

 private:
    QColor text_colour(const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void paint_number(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    const ResultTableModel& model_;
};

}  // namespace quom
