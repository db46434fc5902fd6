// States along the lines of a chart.
//
// Every function returns the states in order along the line, with gaps (states that do not exist) where the
// line is interrupted, and saturated states as vertices where it crosses the dome. Own units. fineness: how
// many times the usual number of points, for a zoom.
#pragma once
#include "diagrams/state_chart.h"

namespace quom {

struct LineInput {
    const Fluid& fluid;
    const SaturationNodes& nodes;
    const ChartSpan& span;
    double fineness = 1;
};

// T [K]: liquid from p_high, dome, vapor to p_low; or the vapor alone. Above T(cr): from p_high to p_low.
ChartStates isotherm_states(const LineInput& in, double T, bool with_liquid);
// p [kPa] from T_low to T_high.
ChartStates isobar_states(const LineInput& in, double p);
// v [m^3/kmol], s [kJ/(kmol K)] outside the dome, over T from T_low to T_high.
ChartStates isochore_states(const LineInput& in, double v);
ChartStates isentrope_states(const LineInput& in, double s);
// h [kJ/kmol] over p from p_low to p_high, through the dome.
ChartStates isenthalp_states(const LineInput& in, double h);
// Vapor fraction over T from the lowest node to the critical point; 0 and 1: the saturation lines.
ChartStates fraction_states(const SaturationNodes& nodes, double x);

}  // namespace quom
