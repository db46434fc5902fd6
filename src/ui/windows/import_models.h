// The tables of the import window: the lines of the text as they are taken, and the rows that are not.
#pragma once
#include <QAbstractTableModel>

#include "forms/text_import.h"

namespace quom {

// The first lines: what each is, and its cells. Line numbers are in the vertical header, quantities with
// units in the horizontal one.
class ImportPreviewModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    using QAbstractTableModel::QAbstractTableModel;
    void show(const TextImport& import);
    // The row of a line; -1 for one that is not among the first.
    int row_of(int line) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    QVariant look_of(const ImportLine& line, int cell, int role) const;

    std::vector<ImportLine> lines_;
    std::vector<ImportColumn> columns_;
};

class BadRowsModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    using QAbstractTableModel::QAbstractTableModel;
    void show(std::vector<BadRow> rows);
    int line(int row) const { return rows_[static_cast<std::size_t>(row)].line; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
    std::vector<BadRow> rows_;
};

}  // namespace quom
