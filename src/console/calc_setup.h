// What stands before a calculation of a mode: values from the arguments, and the switches that the input
// windows would set.
#pragma once
#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "console/selection.h"

namespace quom::console {

// Specified values as arguments; which of them a mode takes is in the table of modes.
struct SpecifiedValues {
    std::optional<double> T, p, rho, m, V;
};
void add_specified_values(CLI::App& app, SpecifiedValues& values);

// A mode that the console calculates: 1 to 24 without 12 (process lines) and 23 (no function).
void add_mode(CLI::App& app, int& mode);

// Sets s.calc for a mode as CalcDispatch and the choice of GLOBAL or PARTIAL would: the concept of the
// models, in mode 3 an equilibrium with --answer yes, rho(L) as the options say. Refused where the mode is
// not possible.
Refused set_up_mode(Program& program, int mode);

// Stores the values as direct input; refused when one is missing, or given and not needed.
Refused take_values(Session& s, int mode, const SpecifiedValues& values);

}  // namespace quom::console
