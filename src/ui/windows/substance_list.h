// The rows of frmQStoffWahl: the lines of the database or of those that a text was found in, and how they are
// painted.
#pragma once
#include <QAbstractListModel>
#include <QStyledItemDelegate>

#include "forms/substance_form.h"
#include "report/table_export.h"

namespace quom {

class SubstanceList : public QAbstractListModel {
    Q_OBJECT
 public:
    // The session, whose database the lines are read from, outlives the list.
    explicit SubstanceList(const Session& session, QObject* parent = nullptr)
        : QAbstractListModel(parent), session_(session) {}

    void show(SubstanceSearch search);
    const SubstanceSearch& search() const { return search_; }
    int index_of(const QModelIndex& at) const;  // of the substance in a row, 0 for no row
    QModelIndex at_index(int index) const;      // the row of a substance; invalid when it is not shown
    const FoundSubstance& found(int row) const { return search_.rows[static_cast<std::size_t>(row)]; }
    std::string line(int row) const;
    ExportTable table() const;  // the rows that are shown

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& at, int role) const override;

 private:
    const Session& session_;
    SubstanceSearch search_;
};

// The line in the fixed font with its match in bold; where the line holds none, the text that was found at
// the right end. The marked row bears a bar at its left edge.
class SubstanceDelegate : public QStyledItemDelegate {
    Q_OBJECT
 public:
    SubstanceDelegate(const SubstanceList& list, QObject* parent)
        : QStyledItemDelegate(parent), list_(list) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& at) const override;

 private:
    const SubstanceList& list_;
};

}  // namespace quom
