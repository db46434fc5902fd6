#include "console/sweep_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "report/calc_record.h"

namespace quom {
namespace {

constexpr std::size_t NumberSpace = 32;

// Where the columns of the input go, by SweepField.
struct FieldTarget {
    const char* name;
    std::optional<double> StateInput::*value;
};
constexpr FieldTarget field_targets[field_count] = {{"T", &StateInput::T},
                                                    {"p", &StateInput::p},
                                                    {"rho", &StateInput::rho},
                                                    {"m", &StateInput::m},
                                                    {"V", &StateInput::V}};

// What is left of a cell without blanks and quotes.
std::string_view cell_text(std::string_view cell) {
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    while (!cell.empty() && blank(cell.front())) cell.remove_prefix(1);
    while (!cell.empty() && blank(cell.back())) cell.remove_suffix(1);
    if (cell.size() >= 2 && cell.front() == '"' && cell.back() == '"') cell = cell.substr(1, cell.size() - 2);
    return cell;
}

// A number as programs write it; none for anything else, and for one that is not finite.
std::optional<double> read_cell(std::string_view cell) {
    if (!cell.empty() && cell.front() == '+') cell.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), value);
    const bool whole = error == std::errc() && end == cell.data() + cell.size();
    return whole && std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

}  // namespace

void RowWriter::put(std::string_view text) {
    text.copy(space(text.size()), text.size());
    used_ += text.size();
}

void RowWriter::grow(std::size_t n) { bytes_.resize(std::max(2 * bytes_.size(), used_ + n + 4096)); }

void RowWriter::number(double x) {
    if (!std::isfinite(x)) return;
    char* begin = space(NumberSpace);
    // A sum with 0 makes -0 a 0.
    used_ += static_cast<std::size_t>(std::to_chars(begin, begin + NumberSpace, x + 0.0).ptr - begin);
}

void RowWriter::quoted(std::string_view text, char delimiter) {
    if (text.find(delimiter) == std::string_view::npos &&
        text.find_first_of("\"\n") == std::string_view::npos)
        return put(text);
    put('"');
    for (const char c : text) {
        if (c == '"') put('"');
        put(c == '\n' ? ' ' : c);
    }
    put('"');
}

SweepLine::SweepLine(std::shared_ptr<const Fluid> fluid, const SweepSettings& settings, SweepHead head)
    : fluid_(std::move(fluid)),
      head_(std::move(head)),
      columns_(sweep_columns(settings.mode, settings.functions)),
      units_(settings.units),
      factors_(settings.factors) {
    input_.mode = settings.mode;
    input_.setup = settings.setup;
    input_.functions = settings.functions || settings.mode == Mode::functions;
}

std::string SweepLine::read(std::string_view line) {
    std::size_t begin = 0;
    for (std::size_t column = 0; column < head_.field_of_column.size(); ++column) {
        if (begin > line.size()) {
            return "only " + std::to_string(column) + " of " + std::to_string(head_.field_of_column.size()) +
                   " columns";
        }
        std::size_t end = line.find(head_.delimiter, begin);
        if (end == std::string_view::npos) end = line.size();
        const int field = head_.field_of_column[column];
        if (field >= 0) {
            const FieldTarget& target = field_targets[field];
            const std::string_view cell = cell_text(line.substr(begin, end - begin));
            input_.*target.value = read_cell(cell);
            if (!(input_.*target.value))
                return std::string(target.name) + " is no number: \"" + std::string(cell.substr(0, 40)) +
                       "\"";
        }
        begin = end + 1;
    }
    if (begin <= line.size()) return "more columns than the head";
    return {};
}

void SweepLine::write(const Outcome& outcome, RowWriter& out) const {
    const bool own_factors = units_.EnergyMode == energy_per_RT && outcome.T.has_value();
    const UnitFactors of_line = own_factors ? outcome_factors(*fluid_, outcome, units_) : factors_;
    const SweepRow row{*fluid_, outcome, of_line};
    const bool plain = outcome.has_result() && outcome.warnings.empty();
    bool first = true;
    for (const SweepColumn& column : columns_) {
        if (!first) out.put(head_.delimiter);
        first = false;
        switch (column.cell) {
            case SweepCell::number:
                out.number(column.number(row));
                break;
            case SweepCell::text:
                out.put(column.text(row));
                break;
            case SweepCell::warnings:
                if (!plain) out.put(sweep_warnings(outcome));
                break;
            case SweepCell::message:
                if (!plain) out.quoted(sweep_message(outcome), head_.delimiter);
                break;
        }
    }
    out.put('\n');
}

void SweepLine::write_malformed(RowWriter& out) const {
    for (std::size_t i = 1; i < columns_.size(); ++i) out.put(head_.delimiter);
    out.quoted(fault_, head_.delimiter);
    out.put('\n');
}

LineKind SweepLine::run(std::string_view line, std::uint64_t number, RowWriter& out) {
    warnings_.clear();
    if (cell_text(line).empty()) return LineKind::empty;
    fault_ = read(line);
    if (!fault_.empty()) {
        fault_.insert(0, "line " + std::to_string(number) + ": ");
        write_malformed(out);
        return LineKind::malformed;
    }
    const Outcome outcome = CalcBatch(*fluid_, input_);
    write(outcome, out);
    warnings_ = outcome.warnings;
    if (!outcome.has_result()) return LineKind::failed;
    return warnings_.empty() ? LineKind::good : LineKind::warned;
}

}  // namespace quom
