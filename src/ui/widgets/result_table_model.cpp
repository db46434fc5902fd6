#include "ui/widgets/result_table_model.h"

#include <algorithm>

namespace quom {

namespace {

constexpr QChar Minus(0x2212), Hyphen('-');

QString on_screen(const std::string& text) { return QString::fromStdString(text); }
QString number_on_screen(const std::string& text) { return on_screen(text).replace(Hyphen, Minus); }

std::size_t at(int i) { return static_cast<std::size_t>(i); }

}  // namespace

void ResultTableModel::show(ResultValues values, ChosenUnits units, const Units& options, int digits) {
    const bool same_rows = has_rows_of(values);
    if (!same_rows) beginResetModel();
    values_ = std::move(values);
    units_ = std::move(units);
    options_ = options;
    digits_ = digits;
    write_texts();
    if (!same_rows) return endResetModel();
    for (int s = 0; s < rowCount(); ++s) {
        const QModelIndex section = index(s, 0);
        emit dataChanged(index(0, 0, section), index(rowCount(section) - 1, ColumnCount - 1, section));
    }
    emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

bool ResultTableModel::has_rows_of(const ResultValues& values) const {
    return std::ranges::equal(
        values_.sections, values.sections, [](const ResultSection& a, const ResultSection& b) {
            return std::ranges::equal(a.rows, b.rows, {}, &ResultRow::key, &ResultRow::key);
        });
}

void ResultTableModel::write_texts() {
    texts_.clear();
    for (const ResultSection& section : values_.sections) {
        std::vector<RowTexts>& rows = texts_.emplace_back();
        for (const ResultRow& row : section.rows) {
            const UnitChoice unit = unit_of(values_, row, units_, options_);
            RowTexts& texts = rows.emplace_back();
            texts.cells[Quantity] = on_screen(row.quantity);
            texts.cells[Symbol] = on_screen(row.symbol);
            texts.cells[Unit] = on_screen(unit.text);
            for (std::size_t k = 0; k < result_columns; ++k)
                texts.cells[FirstValue + k] =
                    number_on_screen(cell_text(row.values[k], unit.conversion, digits_));
            texts.has_choice = row.dimension && unit_choices(values_, row).size() > 1;
        }
    }
}

std::size_t ResultTableModel::section_of(const QModelIndex& index) const {
    return is_section(index) ? at(index.row()) : static_cast<std::size_t>(index.internalId()) - 1;
}

const ResultRow* ResultTableModel::row_of(const QModelIndex& index) const {
    if (!index.isValid() || is_section(index)) return nullptr;
    return &values_.sections[section_of(index)].rows[at(index.row())];
}

const ResultTableModel::RowTexts& ResultTableModel::texts_of(const QModelIndex& index) const {
    return texts_[section_of(index)][at(index.row())];
}

UnitChoice ResultTableModel::unit(const QModelIndex& index) const {
    return unit_of(values_, *row_of(index), units_, options_);
}

bool ResultTableModel::has_choice(const QModelIndex& index) const {
    return index.column() == Unit && row_of(index) && texts_of(index).has_choice;
}

bool ResultTableModel::has_column(int column) const {
    return column < FirstValue || (column < ColumnCount && !values_.heads[at(column - FirstValue)].empty());
}

ExportTable ResultTableModel::table() const {
    return result_table_export(values_, units_, options_, digits_);
}

QString ResultTableModel::text_of(QModelIndexList cells) const {
    std::ranges::sort(cells, [this](const QModelIndex& a, const QModelIndex& b) {
        return std::tuple(section_of(a), a.row(), a.column()) <
               std::tuple(section_of(b), b.row(), b.column());
    });
    QString text;
    for (int i = 0; i < cells.size(); ++i) {
        if (i > 0)
            text += cells[i].parent() == cells[i - 1].parent() && cells[i].row() == cells[i - 1].row()
                        ? QLatin1Char('\t')
                        : QLatin1Char('\n');
        text += cells[i].data().toString().replace(Minus, Hyphen);
    }
    return text;
}

QModelIndex ResultTableModel::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(parent)) return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : 0);
}

QModelIndex ResultTableModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || is_section(index)) return {};
    return createIndex(static_cast<int>(section_of(index)), 0, quintptr{0});
}

int ResultTableModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid()) return static_cast<int>(values_.sections.size());
    if (!is_section(parent) || parent.column() > 0) return 0;
    return static_cast<int>(values_.sections[section_of(parent)].rows.size());
}

int ResultTableModel::columnCount(const QModelIndex&) const { return ColumnCount; }

QVariant ResultTableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    if (role == Qt::AccessibleTextRole) return spoken_text(index);
    if (role != Qt::DisplayRole) return {};
    if (!is_section(index)) return texts_of(index).cells[at(index.column())];
    return index.column() == 0 ? on_screen(values_.sections[section_of(index)].title) : QString();
}

QVariant ResultTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(section < FirstValue ? Qt::AlignLeft | Qt::AlignVCenter
                                                        : Qt::Alignment(Qt::AlignCenter));
    if (role != Qt::DisplayRole) return {};
    const char* const heads[] = {"Quantity", "Symbol", "Unit"};
    return section < FirstValue ? QString::fromLatin1(heads[section])
                                : on_screen(values_.heads[at(section - FirstValue)]);
}

Qt::ItemFlags ResultTableModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) return Qt::NoItemFlags;
    return is_section(index) ? Qt::ItemIsEnabled
                             : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

// "enthalpy h, vapor V, 3122.209 kJ/kmol".
QString ResultTableModel::spoken_text(const QModelIndex& index) const {
    if (is_section(index))
        return data(index.siblingAtColumn(0)).toString() +
               QStringLiteral(", %1 rows").arg(rowCount(index.siblingAtColumn(0)));
    const RowTexts& texts = texts_of(index);
    const QString name = texts.cells[Quantity] + QLatin1Char(' ') + texts.cells[Symbol];
    const QString& unit = texts.cells[Unit];
    if (index.column() < Unit) return name;
    if (index.column() == Unit)
        return name + QStringLiteral(", unit ") + (unit.isEmpty() ? QStringLiteral("none") : unit);
    const QString& value = texts.cells[at(index.column())];
    const QString head = on_screen(values_.heads[at(index.column() - FirstValue)]);
    const QString told =
        value.isEmpty() ? QStringLiteral("no value") : (value + QLatin1Char(' ') + unit).trimmed();
    return name + QStringLiteral(", ") + head + QStringLiteral(", ") + told;
}

}  // namespace quom
