// Columns of a sweep by mode: each reads one cell of a row from the outcome.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calc/outcome.h"
#include "quantities/quantity_table.h"

namespace quom {

// What the cells of one row are read from.
struct SweepRow {
    const Fluid& fluid;
    const Outcome& outcome;
    const UnitFactors& factors;  // for the T of the row where a unit depends on it
};

enum class SweepCell : std::uint8_t {
    number,    // column.number(row); NaN: the cell is blank
    phase,     // phase_text
    warnings,  // sweep_warnings
    reason,    // reason_name of a row without a result
    message,   // sweep_message
};
struct SweepColumn {
    std::string_view name;  // head of the column, without its unit
    SweepCell cell = SweepCell::number;
    std::optional<Quantity> quantity{};  // whose unit a number has
    std::optional<Phase> phase{};        // whose function it is
    std::string_view unit{};             // of a number that is no quantity of the table: "kmol"
    double (*number)(const SweepRow&) = nullptr;
};

// The columns of a mode; functions: with h, s, g, u, a, exergies, cp, cV, w of both phases. The last three
// are "warnings" (names, separated by blanks), "reason" (name) and "message". None for a mode that is no
// calculation.
std::vector<SweepColumn> sweep_columns(Mode mode, bool functions);

// Names of the warnings of a row, separated by blanks; empty without.
std::string sweep_warnings(const Outcome& outcome);
// Why the row has no result, or its warnings in words, separated by "; "; empty for a good row.
std::string sweep_message(const Outcome& outcome);

}  // namespace quom
