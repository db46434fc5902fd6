#include "console/sweep_binary.h"

#include <algorithm>
#include <bit>

namespace quom {
namespace {

static_assert(std::endian::native == std::endian::little, "doubles are written as they lie in memory");

// Codes of the column "reason" behind those of Reason.
constexpr int last_reason = static_cast<int>(Reason::no_phase);
constexpr double malformed_code = last_reason + 1, blank_code = last_reason + 2;
constexpr int last_warning = static_cast<int>(WarningKind::several_solutions);

using Json = nlohmann::ordered_json;

Json reason_words() {
    Json words = Json::array({""});
    for (int i = 1; i <= last_reason; ++i) words.push_back(reason_name(static_cast<Reason>(i)));
    words.push_back("malformed");
    words.push_back("blank");
    return words;
}

Json warning_words() {
    Json words = Json::array();
    for (int i = 0; i <= last_warning; ++i) words.push_back(warning_name(static_cast<WarningKind>(i)));
    return words;
}

bool is_written(const SweepPlan::Column& column) { return column.source.cell != SweepCell::message; }

double reason_code(const SweepResults& results, std::size_t i) {
    if (results.kind[i] == RowKind::malformed) return malformed_code;
    if (results.kind[i] == RowKind::blank) return blank_code;
    return static_cast<double>(results.reason[i]);
}

void append_cells(SweepCell cell, const std::vector<double>& numbers, const SweepResults& results,
                  std::vector<double>& to) {
    const std::size_t before = to.size(), n = results.size();
    if (cell == SweepCell::number) {
        to.insert(to.end(), numbers.begin(), numbers.end());
        return;
    }
    to.resize(before + n);
    for (std::size_t i = 0; i < n; ++i) {
        to[before + i] = cell == SweepCell::phase      ? static_cast<double>(results.phase[i])
                         : cell == SweepCell::warnings ? static_cast<double>(results.warnings[i])
                                                       : reason_code(results, i);
    }
}

}  // namespace

std::string binary_head(const SweepPlan& plan, bool line_numbers, std::optional<std::uint64_t> rows,
                        const Json& about) {
    Json head = {{"format", "quomc sweep bin 1"}, {"type", "<f8"}, {"chunk_rows", binary_chunk_rows}};
    head["rows"] = rows ? Json(*rows) : Json();
    Json names = Json::array(), units = Json::array();
    const auto add = [&](std::string_view name, std::string_view unit) {
        names.push_back(name);
        units.push_back(unit);
    };
    if (line_numbers) add("line", "");
    for (const SweepPlan::Column& column : plan.columns) {
        if (!is_written(column)) continue;
        add(column.source.name, column.unit_name);
    }
    head["names"] = std::move(names);
    head["units"] = std::move(units);
    head["phase"] = {"", "L", "V", "V+L"};
    head["reason"] = reason_words();
    head["warnings"] = warning_words();
    for (const auto& [key, value] : about.items()) head[key] = value;
    std::string line = head.dump(-1, ' ', false, Json::error_handler_t::replace);
    line.append(7 - line.size() % 8, ' ');
    return line + '\n';
}

void append_binary(const SweepPlan& plan, bool line_numbers, const SweepRows& rows, std::size_t begin,
                   const SweepResults& results, BinaryColumns& out) {
    out.resize(plan.columns.size() + 1);
    std::size_t column = 0;
    if (line_numbers) {
        const auto first = rows.line.begin() + static_cast<std::ptrdiff_t>(begin);
        out[column].insert(out[column].end(), first, first + static_cast<std::ptrdiff_t>(results.size()));
        ++column;
    }
    for (std::size_t c = 0; c < plan.columns.size(); ++c) {
        if (!is_written(plan.columns[c])) continue;
        append_cells(plan.columns[c].source.cell, results.numbers[c], results, out[column++]);
    }
    out.resize(column);
}

bool BinaryChunks::take(const BinaryColumns& columns) {
    chunk_.resize(columns.size());
    const std::size_t n = columns.empty() ? 0 : columns.front().size();
    for (std::size_t from = 0; from < n;) {
        const std::size_t count = std::min(n - from, binary_chunk_rows - rows_);
        for (std::size_t c = 0; c < columns.size(); ++c) {
            const auto first = columns[c].begin() + static_cast<std::ptrdiff_t>(from);
            chunk_[c].insert(chunk_[c].end(), first, first + static_cast<std::ptrdiff_t>(count));
        }
        rows_ += count;
        from += count;
        if (rows_ == binary_chunk_rows && !finish()) return false;
    }
    return true;
}

bool BinaryChunks::finish() {
    bool good = true;
    for (std::vector<double>& column : chunk_) {
        const auto* const bytes = reinterpret_cast<const char*>(column.data());
        good = good && (column.empty() || write_({bytes, column.size() * sizeof(double)}));
        column.clear();
    }
    rows_ = 0;
    return good;
}

}  // namespace quom
