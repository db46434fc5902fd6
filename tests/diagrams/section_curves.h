// Calls of curves along isobars and isochores, and what tests read from their points.
#pragma once
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "diagrams/curve_generator.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "support/starter.h"

namespace quom::test {

inline constexpr double absent = std::numeric_limits<double>::quiet_NaN();

inline CurveInput input_of(Kind kind, CurveRange range, double p = 0.0, double v = 0.0) {
    CurveInput input;
    input.kind = kind;
    input.range = range;
    input.p = p;
    input.v = v;
    return input;
}

inline double X(const CurvePoint& point) { return static_cast<double>(point.X); }
inline double Y(const CurvePoint& point) { return static_cast<double>(point.Y); }

inline bool finite(const CurvePoint& point) {
    return std::isfinite(point.X) && std::isfinite(point.Y) && std::isfinite(point.Par) &&
           std::isfinite(point.Tag);
}

// Both points of a jump: neighbours with X (or Y) equal to `at` in single precision; not found: two points 0.
struct Jump {
    CurvePoint first, second;
    int count = 0;  // points there
};
inline Jump jump_at(const CurveResult& result, double at, float CurvePoint::*coordinate = &CurvePoint::X) {
    Jump jump;
    for (const CurvePoint& point : result.curve.points) {
        if (point.*coordinate != static_cast<float>(at)) continue;
        (jump.count == 0 ? jump.first : jump.second) = point;
        ++jump.count;
    }
    return jump;
}

// Enthalpy of vaporization by Clapeyron's equation, delta(LV)h = T (v(V) - v(L)) dp(LV)/dT, with the slope as
// a difference quotient.
inline double clapeyron(const Fluid& fluid, double T) {
    const double step = 1e-4 * T;
    const Saturation at = pLV_EOS(fluid, T);
    const double slope = (pLV_EOS(fluid, T + step).p - pLV_EOS(fluid, T - step).p) / (2.0 * step);
    return T * (at.vV - at.vL) * slope;
}

}  // namespace quom::test
