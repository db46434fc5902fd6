#include "console/sweep_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "report/calc_record.h"

namespace quom {
namespace {

constexpr std::size_t NumberSpace = 32;

// Where the values of a row go, by SweepField.
constexpr std::optional<double> StateInput::*field_targets[field_count] = {
    &StateInput::T, &StateInput::p, &StateInput::rho, &StateInput::m, &StateInput::V};

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
      line_numbers_(settings.table.line_numbers),
      keeps_(std::ranges::any_of(head_.columns, &SweepHead::Column::kept)),
      columns_(sweep_columns(settings.mode, settings.functions)),
      units_(settings.units),
      factors_(settings.factors) {
    input_.mode = settings.mode;
    input_.setup = settings.setup;
    input_.functions = settings.functions || settings.mode == Mode::functions;
}

// Line number and kept cells.
void SweepLine::write_front(const SweepRows& rows, std::size_t i, RowWriter& out) const {
    if (line_numbers_) {
        out.number(static_cast<double>(rows.line[i]));
        out.put(head_.delimiter);
    }
    if (keeps_) {
        out.put(rows.kept[i]);
        out.put(head_.delimiter);
    }
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

void SweepLine::write_malformed(std::string_view fault, RowWriter& out) const {
    for (std::size_t i = 1; i < columns_.size(); ++i) out.put(head_.delimiter);
    out.quoted(fault, head_.delimiter);
    out.put('\n');
}

LineKind SweepLine::run(const SweepRows& rows, std::size_t i, std::string_view fault, RowWriter& out) {
    warnings_.clear();
    if (rows.kind[i] == RowKind::blank) {
        out.put('\n');
        return LineKind::blank;
    }
    write_front(rows, i, out);
    if (rows.kind[i] == RowKind::malformed) {
        write_malformed(fault, out);
        return LineKind::malformed;
    }
    for (const SweepHead::Column& column : head_.columns) {
        if (column.field < 0) continue;
        const auto field = static_cast<std::size_t>(column.field);
        input_.*field_targets[field] = rows.value[field][i];
    }
    const Outcome outcome = CalcBatch(*fluid_, input_);
    write(outcome, out);
    warnings_ = outcome.warnings;
    if (!outcome.has_result()) return LineKind::failed;
    return warnings_.empty() ? LineKind::good : LineKind::warned;
}

}  // namespace quom
