// The tree of the table of a result: its keys, its columns, its menus of units.
#pragma once
#include <QTreeView>

#include "ui/widgets/result_table_delegate.h"
#include "ui/widgets/result_table_model.h"

namespace quom {

class ResultTableView : public QTreeView {
    Q_OBJECT
 public:
    explicit ResultTableView(ResultTableModel& model, QWidget* parent = nullptr);

    void set_stale(bool stale);
    bool any_unfolded() const;
    QStringList folded() const;  // keys of sections
    void fold(const QStringList& keys);
    // Marked cells as text, else the whole table.
    QString marked_text() const;
    void copy() const;
    void copy_all() const;  // as text and as a table of a page
    void save_all();        // as CSV, with tabs or as a page, in a file that is asked for
    // Where the point of a number stands [px from the left].
    double point_of(const QModelIndex& index) const;
    void lay_out_columns();

 signals:
    // The user chooses a unit for a row, or the unit of the row for all that can have it.
    void unit_chosen(const QModelIndex& row, const QString& name);
    void unit_for_all(const QModelIndex& row);
    void folding_changed();

 protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override;
    void drawBranches(QPainter*, const QRect&, const QModelIndex&) const override {}
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    using Widths = std::array<int, ResultTableModel::ColumnCount>;
    struct Wanted {
        Widths widths{};  // with points below each other
        Widths least{};   // of columns of numbers, with every number whole
        int sum() const;
        void give_way(int column, int least_width, int& missing);
    };
    Wanted wanted_widths(bool all_sections) const;
    void measure_points();
    void measure_rows();
    void use_cell(const QModelIndex& index);
    void open_units(const QModelIndex& index);

    ResultTableModel& model_;
    ResultTableDelegate* delegate_;
};

}  // namespace quom
