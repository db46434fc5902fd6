// The inverse question to a state calculation: which p at a given T, or which T at a given p, gives a
// function its value.
#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "engine/fluid.h"
#include "engine/thermo_functions.h"

namespace quom {

enum IsoUnknown : int { iso_find_p = 0, iso_find_T = 1 };

// Functions that can be held, by their index: v, h, s, g, u, a, eH, eU.
enum IsoFunction : int { iso_v, iso_h, iso_s, iso_g, iso_u, iso_a, iso_eH, iso_eU, iso_function_count };

struct IsoInput {
    int What = iso_find_p;
    int Column = iso_v;  // IsoFunction
    double Target = 0;   // molar: [m^3/kmol], [kJ/kmol], [kJ/(kmol K)]
    Phase phase = phase_V;
    double given = 0;               // T [K] for iso_find_p, p [kPa] for iso_find_T
    std::optional<double> start{};  // of the unknown
    bool all = true;                // name every solution, nearest first; false: the first one found will do
};

struct IsoResult {
    double value = 0;              // p [kPa] or T [K]
    std::vector<double> others;    // further solutions, ascending; value is the one nearest to the start
    int rounds = 0;                // of the Newton search
    bool bracketed = false;        // found between two states with the target between them
    Reason reason = Reason::none;  // no_solution
    std::int16_t err() const { return err_of(reason); }
};

// Newton with the analytic slope, to |dx/x| <= 1.5e-6 and then to the last digits; a root counts only when
// the function equals the target there and its phase is the one asked: region 1 is L alone, region 3 V alone.
// Without a start the vapor is searched from 0.01 of the smaller of p(LV), p(cr), the liquid from p(LV), T
// from T(LV) or T(cr). p stays below 300 p(cr) and T below 5 T(cr), or twice the start where that is more.
// Fails: no state of this phase has the target.
IsoResult IsoSearch(const Fluid& fluid, const IsoInput& input);

// Value of a function (IsoFunction) of a state; NaN where it does not exist.
double function_of(const StateFunctions& state, int Column);

}  // namespace quom
