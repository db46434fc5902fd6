// Fluids, ranges and calls of curves along the phase equilibrium, for tests.
#pragma once
#include <cmath>
#include <memory>
#include <vector>

#include "diagrams/curve_generator.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "support/starter.h"

namespace quom::test {

inline double X(const CurvePoint& point) { return static_cast<double>(point.X); }
inline double Y(const CurvePoint& point) { return static_cast<double>(point.Y); }
inline double Par(const CurvePoint& point) { return static_cast<double>(point.Par); }

// What a number of molar units becomes in a diagram.
struct Factors {
    double v = 1, T = 1, p = 1;
};
inline Factors factors(const Fluid& fluid, int VolumeMode) {
    if (VolumeMode == volume_per_mass) return {.v = 1.0 / fluid.M};
    if (VolumeMode != reduced_volume) return {};
    return {.v = 1.0 / fluid.eos.vcrEOS, .T = 1.0 / fluid.substance.Tcr, .p = 1.0 / fluid.substance.pcr};
}
inline double energy_factor(const Fluid& fluid, int EnergyMode, double T) {
    const double R = 8.31451;
    const double by_mode[] = {1.0, 1.0 / R, 1.0 / (R * T), 1.0 / fluid.M};
    return by_mode[EnergyMode];
}

// A range in which the whole phase equilibrium from some 0.4 T(cr) on lies; y of functions is wide open.
inline CurveRange whole_range(const Fluid& fluid, Kind kind, int VolumeMode = volume_molar) {
    const Factors f = factors(fluid, VolumeMode);
    const KindInfo& info = kind_info(kind);
    const double rho = 3.5 * fluid.eos.rhocrEOS, pv = 3.0 * fluid.substance.pcr * fluid.eos.vcrEOS;
    const auto limits = [&](AxisQuantity q) -> std::pair<double, double> {
        switch (q) {
            case AxisQuantity::v:
                return {0.0, 7.0 * fluid.eos.vcrEOS * f.v};
            case AxisQuantity::rho:
                return {0.0, rho};
            case AxisQuantity::p:
                return {0.0, 1.5 * fluid.substance.pcr * f.p};
            case AxisQuantity::pv:
                return {0.0, pv * f.v * f.p};
            case AxisQuantity::T:
                return {0.4 * fluid.substance.Tcr * f.T, 1.1 * fluid.substance.Tcr * f.T};
            default:
                return {-1e6, 1e6};
        }
    };
    const auto [x1, x2] = limits(info.x);
    const auto [y1, y2] = limits(info.y);
    return {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2)};
}

inline CurveInput whole_curve(const Fluid& fluid, Kind kind, double VaporFraction = 0.0,
                              const Units& units = {}) {
    CurveInput input;
    input.kind = kind;
    input.range = whole_range(fluid, kind, units.VolumeMode);
    input.VaporFraction = VaporFraction;
    input.units = units;
    return input;
}

}  // namespace quom::test
