#include "console/sweep_grid.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/code_page.h"
#include "base/number_text.h"
#include "console/sweep_rows.h"

namespace quom {
namespace {

// Numbers of rows stay exact as doubles too.
constexpr std::uint64_t MostRows = std::uint64_t{1} << 53;

std::string in_quotes(std::string_view text) { return '"' + std::string(text) + '"'; }

// The next part of a text up to a sign, which is dropped with it.
std::string_view cut(std::string_view& text, char sign) {
    const std::size_t end = std::min(text.find(sign), text.size());
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return part;
}

bool read_value(std::string_view text, double& into) {
    const std::optional<double> x =
        text.find_first_of(" \t") == std::string_view::npos ? read_number(text) : std::nullopt;
    into = x.value_or(0.0);
    return x.has_value();
}

// "250:550:301", "100:8000:80,log", "300" into the axis; why it is none, empty when good.
std::string read_range(std::string_view text, SweepGrid::Axis& axis) {
    const std::string form = " is no range; right is for example 250:550:301, 100:8000:80,log or 300";
    const std::string whole = in_quotes(text);
    std::string_view rest = text;
    std::string_view range = cut(rest, ',');
    axis.log = rest == "log";
    if (range.size() < text.size() && !axis.log) return whole + form;
    const auto colons = std::ranges::count(range, ':');
    if (colons == 0) {
        if (axis.log || !read_value(range, axis.low)) return whole + form;
        axis.high = axis.low;
        axis.count = 1;
        return {};
    }
    if (colons != 2 || !read_value(cut(range, ':'), axis.low) || !read_value(cut(range, ':'), axis.high))
        return whole + form;
    const auto [end, error] = std::from_chars(range.data(), range.data() + range.size(), axis.count);
    if (error == std::errc::result_out_of_range || axis.count > MostRows)
        return whole + " has too many values";
    if (error != std::errc() || end != range.data() + range.size()) return whole + form;
    if (axis.count == 0) return whole + " has no value: the last number counts them, both ends included";
    if (axis.count == 1 && axis.low != axis.high) return whole + " has two ends, but one value";
    if (axis.log && !(axis.low > 0 && axis.high > 0)) return whole + ": with log both ends must be above 0";
    if (!std::isfinite(axis.high - axis.low)) return whole + " is too wide";
    return {};
}

// "T/C=20:100:81" into the axis; why it is none, empty when good.
std::string read_axis(std::string_view text, double M, SweepGrid::Axis& axis) {
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos)
        return in_quotes(text) + " is no variable with its values; right is for example T=250:550:301";
    const ColumnMatch match = match_column(text.substr(0, sign), M);
    if (!match.fault.empty()) return match.fault;
    if (match.field < 0) return in_quotes(text.substr(0, sign)) + " is no variable";
    axis.field = static_cast<SweepField>(match.field);
    axis.unit = match.unit;
    const std::string fault = read_range(text.substr(sign + 1), axis);
    if (!fault.empty()) return std::string(field_name(axis.field)) + ": " + fault;
    if (axis.unit.inverse && !(axis.low > 0 && axis.high > 0))
        return std::string(field_name(axis.field)) + ": a volume must be above 0";
    if (!std::isfinite(axis.value(0)) || !std::isfinite(axis.value(axis.count - 1)))
        return std::string(field_name(axis.field)) + ": " + in_quotes(text.substr(sign + 1)) + " is too wide";
    return {};
}

std::string list_of(const std::vector<SweepField>& fields) {
    std::string list;
    for (const SweepField field : fields) list += (list.empty() ? "" : ", ") + std::string(field_name(field));
    return list;
}

// Why the axes do not give each value of the mode once; empty when they do.
std::string check_axes(const SweepGrid& grid, Mode mode) {
    const std::vector<SweepField> needed = needed_fields(mode);
    std::vector<SweepField> missing = needed;
    for (const SweepGrid::Axis& axis : grid.axes) {
        const std::string name(field_name(axis.field));
        if (std::ranges::find(needed, axis.field) == needed.end())
            return "the mode does not take " + name + ", but " + list_of(needed);
        if (std::erase(missing, axis.field) == 0) return name + " stands twice";
    }
    return missing.empty() ? std::string() : "there is no " + list_of(missing);
}

}  // namespace

// Linear: low + (high - low) i/(n - 1). Logarithmic: lg x in equal steps, powers of ten stay exact.
double SweepGrid::Axis::value(std::size_t i) const {
    if (i == 0) return unit.to_own(low);
    if (i + 1 >= count) return unit.to_own(high);
    const double k = static_cast<double>(i), n = static_cast<double>(count - 1);
    if (!log) return unit.to_own(low + (high - low) * k / n);
    const double from = std::log10(low), to = std::log10(high);
    return unit.to_own(std::pow(10.0, from + (to - from) * k / n));
}

std::uint64_t SweepGrid::rows() const {
    std::uint64_t n = axes.empty() ? 0 : 1;
    for (const Axis& axis : axes) n *= axis.count;
    return n;
}

SweepGrid parse_grid(std::string_view text, Mode mode, double M) {
    SweepGrid grid;
    std::uint64_t rows = 1;
    while (grid.fault.empty() && !(text = trim(text)).empty()) {
        SweepGrid::Axis axis;
        grid.fault = read_axis(cut(text, ' '), M, axis);
        if (!grid.fault.empty()) break;
        grid.axes.push_back(axis);
        if (axis.count > MostRows / rows) grid.fault = "it has too many rows";
        rows *= axis.count;
    }
    if (grid.fault.empty()) grid.fault = check_axes(grid, mode);
    if (!grid.fault.empty()) grid = {.axes = {}, .fault = "--grid: " + grid.fault};
    return grid;
}

void grid_rows(const SweepGrid& grid, std::uint64_t first, std::size_t count, SweepRows& rows) {
    const std::uint64_t all = grid.rows();
    if (first == 0 || first > all) return;
    const std::size_t n = static_cast<std::size_t>(std::min<std::uint64_t>(count, all - first + 1));
    std::vector<std::size_t> at(grid.axes.size());
    std::vector<double> x(grid.axes.size());
    std::uint64_t rest = first - 1;
    for (std::size_t a = grid.axes.size(); a-- > 0;) {
        at[a] = static_cast<std::size_t>(rest % grid.axes[a].count);
        rest /= grid.axes[a].count;
        x[a] = grid.axes[a].value(at[a]);
    }
    for (std::size_t row = 0; row < n; ++row) {
        for (std::size_t a = 0; a < x.size(); ++a) rows.value[grid.axes[a].field].push_back(x[a]);
        rows.kind.push_back(RowKind::good);
        rows.line.push_back(first + row);
        rows.kept.emplace_back();
        for (std::size_t a = grid.axes.size(); a-- > 0;) {
            const bool turns = ++at[a] == grid.axes[a].count;
            if (turns) at[a] = 0;
            x[a] = grid.axes[a].value(at[a]);
            if (!turns) break;
        }
    }
    for (std::vector<double>& column : rows.value)
        column.resize(rows.size(), std::numeric_limits<double>::quiet_NaN());
}

}  // namespace quom
