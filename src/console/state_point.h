// A state from two of T, p, rho by the equation of state in force, with its phases evaluated.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "console/output.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"
#include "session/session.h"

namespace quom::console {

// One phase with everything the engine tells of it.
struct PhaseState {
    double v = 0;
    StateFunctions functions;
    PhaseArrays arrays;
};

// Two of T [K], p [kPa], rho [kg/m^3].
struct StateInput {
    std::optional<double> T, p, rho;
};

// The state found.
struct StateResult {
    double T = 0, p = 0;
    std::optional<double> v;         // given volume [m^3/kmol]
    VolumeResult volume;             // of T, p
    std::array<double, 3> roots{};   // of T, p; saturated volumes of a two-phase state
    std::optional<PhaseState> L, V;  // the phases that exist
    std::optional<double> y;         // vapor fraction of a two-phase state
    bool critical = false;           // (dp/dv)_T vanishes within rounding
    std::string phase;               // in words
    std::vector<std::string> notes;
};

// Computes the state; r is of use only when nothing is returned. Refused: not two values, no molar mass for a
// density, no volume, no pressure above 0, no temperature, or a state that is unstable by the equation.
std::optional<Fault> compute_state(Session& s, const StateInput& input, StateResult& r);

}  // namespace quom::console
