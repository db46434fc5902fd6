// The state that belongs to a point of a chart: inverse searches for p and h, T and s, h and s.
#pragma once
#include "diagrams/chart_states.h"

namespace quom {

// Quantity that is given beside p.
enum class GivenAtP { h, s };

// Stable state at p [kPa] and h [kJ/kmol] or s [kJ/(kmol K)]; two phases between the saturation lines.
// T_start [K]: where the search of one phase begins, 0 for its own. None where no state is found.
//
// Newton in T with cp (of s: cp/T), kept in a bracket that each value met narrows; bisection where a step
// leaves it.
ChartState state_at_p(const Fluid& fluid, double p, GivenAtP given, double value, double T_start = 0.0);

// Stable state at T [K], s [kJ/(kmol K)].
//
// Newton in ln v:  d ln v = (s - s_i)/(v (dp/dT)_v).
ChartState state_at_Ts(const Fluid& fluid, double T, double s);

// Stored states that the search for h, s begins from.
struct HoverStarts {
    ChartStates states;               // over T and p of the chart
    double width_h = 1, width_s = 1;  // that distances are measured by
};
HoverStarts hover_starts(const Fluid& fluid, const SaturationNodes& nodes, double T_high, double p_low,
                         double p_high);

// Stable state at h [kJ/kmol], s [kJ/(kmol K)] at or above the lowest T of the nodes.
//
// Two phases: root of F(T) = g(L)(T) + T s - h, which rises while s(L)(T) < s. One phase: Newton for ln p and
// T by dh - T ds = v dp.
ChartState state_at_hs(const Fluid& fluid, const SaturationNodes& nodes, const HoverStarts& starts, double h,
                       double s);

}  // namespace quom
