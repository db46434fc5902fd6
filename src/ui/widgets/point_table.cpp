#include "ui/widgets/point_table.h"

#include "base/number_text.h"
#include "calc/mode_table.h"
#include "ui/look/look.h"

namespace quom {

namespace {

QString text_of(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString state_text(const TpRhoPoint& point, const BatchResult& result) {
    if (point.Aus != 0) return QStringLiteral("inactive");
    switch (result.state) {
        case PointState::open:
            return {};
        case PointState::failed:
            return QStringLiteral("no result");
        case PointState::done:
            break;
    }
    return result.has_result() ? text_of(result.phase()).trimmed() : QStringLiteral("calculated");
}

// A value that a mode reads from the points.
bool is_specified(Mode mode, std::size_t q) {
    constexpr Compared<unsigned> values = {spec_T, spec_p, spec_rhoV, spec_rhoL, 0};
    return (mode_info(mode).specified & values[q]) != 0;
}

}  // namespace

const BatchResult& PointTable::result(std::size_t point) const {
    static const BatchResult none;
    return point < session_.batch.size() ? session_.batch[point] : none;
}

std::vector<PointTable::Column> PointTable::columns_now() const {
    Compared<bool> measured{}, calculated{};
    const auto& points = session_.document.exp.points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PointComparison c = compare_point(points[i], result(i));
        for (std::size_t q = 0; q < compared_count; ++q) {
            measured[q] = measured[q] || c.measured[q] != 0.0F;
            calculated[q] = calculated[q] || c.calculated[q] != 0.0F;
        }
    }
    std::vector<Column> columns = {{Content::phase, 0}};
    for (std::size_t q = 0; q < compared_count; ++q) {
        const bool compared = measured[q] && !is_specified(session_.document.calc.CalcMode, q);
        if (measured[q]) columns.push_back({Content::measured, q});
        if (calculated[q] && (compared || !measured[q])) columns.push_back({Content::calculated, q});
        if (!calculated[q] || !compared) continue;
        columns.push_back({Content::difference, q});
        columns.push_back({Content::deviation, q});
    }
    return columns;
}

void PointTable::refresh() {
    const int rows = data_point_count(session_.document.exp);
    std::vector<Column> columns = columns_now();
    means_ = deviation_means(session_.document.exp.points.list(), session_.batch);
    if (rows == rows_ && columns == columns_) {
        if (rows > 0) emit dataChanged(index(0, 0), index(rows - 1, columnCount() - 1));
        return;
    }
    beginResetModel();
    rows_ = rows;
    columns_ = std::move(columns);
    endResetModel();
}

void PointTable::refresh_point(int point) {
    if (columns_now() != columns_ || point < 1 || point > rows_) return refresh();
    means_ = deviation_means(session_.document.exp.points.list(), session_.batch);
    emit dataChanged(index(point - 1, 0), index(point - 1, columnCount() - 1));
}

int PointTable::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int PointTable::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QString PointTable::cell_text(std::size_t point, const Column& column) const {
    const TpRhoPoint& measured = session_.document.exp.points[point];
    if (column.content == Content::phase) return state_text(measured, result(point));
    const PointComparison c = compare_point(measured, result(point));
    const auto shown = [](float x) { return x == 0.0F ? QString() : text_of(genNum(x)); };
    switch (column.content) {
        case Content::measured:
            return column.q == compared_T   ? (measured.T == 0 ? QString() : text_of(genNum(measured.T)))
                   : column.q == compared_p ? (measured.p == 0 ? QString() : text_of(genNum(measured.p)))
                                            : shown(c.measured[column.q]);
        case Content::calculated:
            return shown(c.calculated[column.q]);
        case Content::difference:
            return c.both[column.q] ? text_of(genNum(c.difference[column.q])) : QString();
        default:
            return c.both[column.q] ? text_of(formatMask(c.deviation[column.q], "0.00")) : QString();
    }
}

QVariant PointTable::data(const QModelIndex& index, int role) const {
    const auto point = static_cast<std::size_t>(index.row()) + 1;
    if (!index.isValid() || point >= session_.document.exp.points.size()) return {};
    const Column& column = columns_[static_cast<std::size_t>(index.column())];
    if (role == Qt::DisplayRole) return cell_text(point, column);
    if (role == Qt::TextAlignmentRole)
        return QVariant(column.content == Content::phase ? Qt::AlignCenter
                                                         : Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ForegroundRole && session_.document.exp.points[point].Aus != 0)
        return look_colour(LookColour::Hint);
    return {};
}

QVariant PointTable::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role == Qt::TextAlignmentRole && orientation == Qt::Vertical)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) return section + 1;
    if (section < 0 || section >= columnCount()) return {};
    const Column& column = columns_[static_cast<std::size_t>(section)];
    const QString name = text_of(compared_name(column.q)), unit = text_of(compared_unit(column.q));
    switch (column.content) {
        case Content::phase:
            return QStringLiteral("phase");
        case Content::measured:
            return QStringLiteral("%1 exp.\n%2").arg(name, unit);
        case Content::calculated:
            return QStringLiteral("%1 calc.\n%2").arg(name, unit);
        case Content::difference:
            return QStringLiteral("difference\n%1").arg(unit);
        default:
            return QStringLiteral("deviation\n%");
    }
}

}  // namespace quom
