// The table of a result as items: sections with their rows; quantity, symbol, unit and the values by phases.
#pragma once
#include <QAbstractItemModel>
#include <QString>
#include <array>
#include <vector>

#include "report/result_table.h"

namespace quom {

class ResultTableModel : public QAbstractItemModel {
    Q_OBJECT
 public:
    enum Column { Quantity, Symbol, Unit, FirstValue, ColumnCount = FirstValue + result_columns };

    using QAbstractItemModel::QAbstractItemModel;
    // The sections stay as they are, marks and places with them, where the rows are the same.
    void show(ResultValues values, ChosenUnits units, const Units& options, int digits);
    const ResultValues& values() const { return values_; }

    bool is_section(const QModelIndex& index) const { return index.isValid() && index.internalId() == 0; }
    // The section of an index, its own or that of its row.
    std::size_t section_of(const QModelIndex& index) const;
    const ResultRow* row_of(const QModelIndex& index) const;  // null for a section
    UnitChoice unit(const QModelIndex& index) const;          // of a row
    bool has_choice(const QModelIndex& index) const;          // a unit cell with more than one unit
    bool has_column(int column) const;
    // The whole table for copying and saving; its text, and that of marked cells in the order of the rows,
    // columns parted by tabs; "-" as minus.
    ExportTable table() const;
    QString text() const { return QString::fromStdString(to_tsv(table())); }
    QString text_of(QModelIndexList cells) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
    // Texts of a row as they are on the screen.
    struct RowTexts {
        std::array<QString, ColumnCount> cells;
        bool has_choice = false;
    };
    bool has_rows_of(const ResultValues& values) const;
    void write_texts();
    const RowTexts& texts_of(const QModelIndex& index) const;
    QString spoken_text(const QModelIndex& index) const;

    ResultValues values_;
    ChosenUnits units_;
    Units options_;
    int digits_ = 7;
    std::vector<std::vector<RowTexts>> texts_;
};

}  // namespace quom
