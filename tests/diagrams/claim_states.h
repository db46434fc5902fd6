// States that the coordinates of a point can mean, by the single calls of the engine.
#pragma once
#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "diagrams/point_claims.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"

namespace quom::test {

inline constexpr double ulp = 0x1p-23;  // of a single, relative
inline bool same_single(double x, double y) { return std::fabs(x - y) <= 2.0 * ulp * std::fabs(y); }

struct Reading {
    const Fluid& fluid;
    const CurveInput& in;
    const KindInfo& kind;
    DisplayFactors f;
    std::array<double, 4> at;  // X, Y, Par, Tag
    double X() const { return at[0]; }
    double Y() const { return at[1]; }
    double Par() const { return at[2]; }
    double Tag() const { return at[3]; }
    double Tcr() const { return fluid.substance.Tcr; }
};
// X, Y, Par, Tag that would be right, and what a process line holds constant, less its value at the start.
using Expected = std::array<double, 5>;
using Choices = std::vector<Expected>;

struct State {
    double T = 0, p = 0, v = 0;
};

// Saturated states at a T [K] or p [kPa] that a single may have lifted above the critical point.
Saturation saturated_T(const Fluid& fluid, double T);
Saturation saturated_p(const Fluid& fluid, double p);
// Those of the parameter of a section; not found at or above the critical point.
Saturation of_isotherm(const Fluid& fluid, double T);
Saturation of_isobar(const Fluid& fluid, double p);
std::vector<State> ends_of(const Saturation& saturation);

// All volumes above b of the cubic equation at T, p of either sign, rising.
std::vector<State> volumes(const Fluid& fluid, double T, double p);
// The stable state at T, p; both where the two phases are told apart by less than singles show.
std::vector<State> stable_states(const Fluid& fluid, double T, double p);
// States of a section: stable ones, or those of its loop.
std::vector<State> isotherm_states(const Reading& reading, double p);
std::vector<State> isobar_states(const Reading& reading, double T);

// A function in molar units; NaN for an axis of none.
double function_of(const Fluid& fluid, const StateFunctions& state, AxisQuantity q);
// What an axis shows of a state, in displayed units.
double displayed(const Reading& reading, AxisQuantity q, const State& state);

}  // namespace quom::test
