#include "ui/windows/import_models.h"

#include <QColor>

#include "ui/look/look.h"
#include "ui/windows/input_window.h"

namespace quom {

namespace {

constexpr const char* KindWords[] = {"head", "taken", "not taken", "comment", "empty"};

QString kind_word(const ImportLine& line) { return QLatin1String(KindWords[static_cast<int>(line.kind)]); }

int count(std::size_t n) { return static_cast<int>(n); }

}  // namespace

void ImportPreviewModel::show(const TextImport& import) {
    beginResetModel();
    lines_ = import.preview;
    columns_ = import.columns;
    endResetModel();
}

int ImportPreviewModel::row_of(int line) const {
    for (std::size_t i = 0; i < lines_.size(); ++i)
        if (lines_[i].number == line) return count(i);
    return -1;
}

int ImportPreviewModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count(lines_.size());
}

int ImportPreviewModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count(columns_.size()) + 1;
}

QVariant ImportPreviewModel::data(const QModelIndex& index, int role) const {
    const ImportLine& line = lines_[static_cast<std::size_t>(index.row())];
    const int cell = index.column() - 1;
    if (role == Qt::DisplayRole) {
        if (cell < 0) return kind_word(line);
        const auto at = static_cast<std::size_t>(cell);
        return at < line.cells.size() ? shown(line.cells[at]) : QString();
    }
    if (role == Qt::ToolTipRole) return line.fault.empty() ? QVariant() : shown(line.fault);
    if (role == Qt::AccessibleTextRole) {
        const QString text = cell < 0 ? kind_word(line) : data(index, Qt::DisplayRole).toString();
        return QStringLiteral("line %1, %2 %3").arg(line.number).arg(text, shown(line.fault)).simplified();
    }
    return look_of(line, cell, role);
}

QVariant ImportPreviewModel::look_of(const ImportLine& line, int cell, int role) const {
    const bool bad = line.kind == ImportLine::Kind::bad;
    const bool head = line.kind == ImportLine::Kind::head;
    const bool aside = line.kind == ImportLine::Kind::comment || line.kind == ImportLine::Kind::empty;
    const bool used = cell >= 0 && cell < count(columns_.size()) &&
                      columns_[static_cast<std::size_t>(cell)].quantity != ImportQuantity::skip;
    if (role == Qt::FontRole) {
        const bool at_fault = bad && (cell < 0 || cell == line.column);
        return head || at_fault ? QVariant(head_font()) : QVariant();
    }
    if (role == Qt::BackgroundRole) return bad ? QVariant(look_colour(LookColour::ErrorGround)) : QVariant();
    if (role == Qt::ForegroundRole) {
        if (bad) return look_colour(LookColour::ErrorText);
        if (head) return look_colour(LookColour::SectionHead);
        if (aside || !used) return look_colour(LookColour::Hint);
    }
    if (role == Qt::TextAlignmentRole) {
        const bool number = cell >= 0 && used && !head && !aside;
        return int((number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    }
    return {};
}

QVariant ImportPreviewModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) {
        if (role != Qt::DisplayRole) return {};
        return lines_[static_cast<std::size_t>(section)].number;
    }
    if (role == Qt::DisplayRole && section == 0) return QStringLiteral("Row");
    if (role != Qt::DisplayRole || section < 1) return {};
    const ImportColumn& column = columns_[static_cast<std::size_t>(section - 1)];
    if (column.quantity == ImportQuantity::skip) return QStringLiteral("not used");
    const QString name = shown(import_name(column.quantity));
    return column.unit.empty() ? name : name + QStringLiteral(" / ") + shown(column.unit);
}

void BadRowsModel::show(std::vector<BadRow> rows) {
    beginResetModel();
    rows_ = std::move(rows);
    endResetModel();
}

int BadRowsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count(rows_.size());
}

int BadRowsModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : 2; }

QVariant BadRowsModel::data(const QModelIndex& index, int role) const {
    const BadRow& row = rows_[static_cast<std::size_t>(index.row())];
    if (role == Qt::TextAlignmentRole)
        return int((index.column() == 0 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole) return shown(row.fault);
    if (role != Qt::DisplayRole) return {};
    return index.column() == 0 ? QVariant(row.line) : QVariant(shown(row.fault));
}

QVariant BadRowsModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? QStringLiteral("Line") : QStringLiteral("Rows that are not taken");
}

}  // namespace quom
