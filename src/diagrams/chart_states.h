// States of a chart, and the saturation table that its lines and searches start from.
#pragma once
#include <limits>
#include <vector>

#include "engine/fluid.h"
#include "engine/saturation.h"

namespace quom {

// One state. Two phases: v, h, s are those of the mixture.
struct ChartState {
    double T = std::numeric_limits<double>::quiet_NaN();  // [K]; NaN: no state, a gap in a line
    double p = 0;                                         // [kPa]
    double v = 0, h = 0, s = 0;                           // [m^3/kmol], [kJ/kmol], [kJ/(kmol K)]
    double x = -1;  // vapor fraction, 0 and 1 on the saturation lines; below 0: one phase
    bool exists() const { return T > 0.0; }
};
using ChartStates = std::vector<ChartState>;

// State at T [K], p [kPa], v [m^3/kmol] of one phase; none where h or s does not exist.
ChartState one_phase(const Fluid& fluid, double T, double p, double v);
// The same, with the derivatives that searches step by.
struct SlopedState {
    ChartState at;
    double cp = 0;                              // [kJ/(kmol K)]; NaN in the critical point
    double dpdT_v = 0, dpdv_T = 0, dvdT_p = 0;  // [kPa/K], [kPa kmol/m^3], [m^3/(kmol K)]
};
SlopedState sloped_state(const Fluid& fluid, double T, double p, double v);
// Stable state at T [K], p [kPa].
ChartState stable_state(const Fluid& fluid, double T, double p);

// Both saturated phases; none at or above the critical point and where the equation has no saturation.
struct SaturatedPair {
    ChartState L, V;
    bool exists() const { return L.exists() && V.exists(); }
};
SaturatedPair saturated_at_T(const Fluid& fluid, double T);
SaturatedPair saturated_at_p(const Fluid& fluid, double p);
// Mixture of both with the vapor fraction x.
ChartState mixed(const SaturatedPair& pair, double x);
// Outer root of the equation at T [K], p [kPa]: the liquid or the vapor one [m^3/kmol]; 0 without.
double outer_volume(const Fluid& fluid, double T, double p, bool liquid);

// Saturated states from a lowest T to the critical point, dense at the top:
//     T(i) = Tcr - (Tcr - T(0)) (1 - i/n)^2
struct SaturationNodes {
    std::vector<SaturatedPair> at;  // n + 1 pairs; both phases of the last one are the critical point
    const ChartState& critical() const { return at.back().L; }
};
SaturationNodes saturation_nodes(const Fluid& fluid, double T0, int n);

}  // namespace quom
