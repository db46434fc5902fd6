// What stands before a calculation of a mode: values from the arguments, and the setup that the input windows
// would give it.
#pragma once
#include <CLI/CLI.hpp>
#include <optional>

#include "console/selection.h"

namespace quom {

// Specified values as arguments; which of them a mode takes is in the table of modes.
struct SpecifiedArguments {
    std::optional<GivenValue> T, p, rho, m, V;
};
void add_specified_values(CLI::App& app, SpecifiedArguments& arguments);

// The same in the workbench's units.
struct SpecifiedValues {
    std::optional<double> T, p, rho, m, V;
};
// Converts the arguments for a substance of molar mass M [kg/kmol]; refused where a unit needs the M that is
// not known.
Refused convert(const SpecifiedArguments& arguments, double M, SpecifiedValues& into);

// A mode that the console calculates.
void add_mode(CLI::App& app, Mode& mode);

// Commits the setup of a mode: the concept of the models, in mode 3 an equilibrium with --answer yes, rho(L)
// as the options say. Refused where the mode is not possible.
Refused set_up_mode(Program& program, Mode mode);

// Commits the values as direct input; refused when one is missing, or given and not needed.
Refused take_values(Session& session, const SpecifiedValues& values);

// The calculation that the document has, with the values in all their digits: the document keeps densities
// and tanks as singles.
StateInput exact_input(const Document& document, const SpecifiedValues& values);

}  // namespace quom
