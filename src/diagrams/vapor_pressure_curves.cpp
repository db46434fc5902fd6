// Vapor pressure by the concept in force, and the enthalpy of vaporization.
#include <cmath>
#include <optional>

#include "diagrams/isobar_states.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

constexpr double lowest_p = 0.01;  // [kPa] that ln p(LV) is drawn from

// p(LV) [kPa] at T [K]: GLOBAL by the equation of state, PARTIAL by the vapor pressure equation.
std::optional<double> vapor_pressure(const Fluid& fluid, double T) {
    if (fluid.models.Konzept) {
        const Saturation at = pLV_EOS(fluid, T);
        return at.found() ? std::optional(at.p) : std::nullopt;
    }
    const EvpResult at = pLV_EVP(fluid.substance, T, fluid.models.EVPKode);
    return at.err() == 0 ? std::optional(at.value) : std::nullopt;
}

// d(ln p)/d(1/T) [K] of the vapor pressure equation; the equation of state has no such curve.
std::optional<double> slope(const Fluid& fluid, double T) {
    if (fluid.models.Konzept) return std::nullopt;
    const EvpSlope at = dpLVdT_EVP(fluid.substance, T, fluid.models.EVPKode);
    return at.err() == 0 ? std::optional(static_cast<double>(at.value)) : std::nullopt;
}

// Scan from the critical point to the end of the axis. One that would run out of rounds before it reaches the
// range starts at the range.
std::vector<double> scan_from_critical(const CurveRun& run, double critical, double nearest, double to,
                                       double step) {
    const double rounds = (to - critical) / step;
    const bool within = rounds < static_cast<double>(run.round_limit());
    return scan_values(within ? critical : nearest, to, step, 0.0, false, run.round_limit());
}

}  // namespace

std::optional<double> vapor_pressure_value(const CurveRun& run, double T) {
    if (run.kind.y == AxisQuantity::slope) return slope(run.fluid, T);
    const std::optional<double> p = vapor_pressure(run.fluid, T);
    if (!p || run.kind.y == AxisQuantity::p) return p ? std::optional(*p * run.f.pFactor) : p;
    return *p > lowest_p ? std::optional(std::log(*p * run.f.pFactor)) : std::nullopt;
}

void curve_vapor_pressure(CurveRun& run) {
    const bool inverse = run.kind.x == AxisQuantity::inverse_T;
    const double TFactor = run.f.TFactor, critical = run.Tcr * TFactor;
    const std::vector<double> scan = inverse
                                         ? scan_from_critical(run, 1.0 / critical, run.XMin, run.XMax, run.dx)
                                         : scan_from_critical(run, critical, run.XMax, run.XMin, -run.dx);
    for (const double x : scan) {
        double T = inverse ? 1.0 / (x * TFactor) : x / TFactor;
        // At the start the quotient may lie above T(cr) by rounding.
        if (T > run.Tcr && T < run.Tcr * (1.0 + 1e-12)) T = run.Tcr;
        if (run.below_triple(T)) break;
        if (const std::optional<double> y = vapor_pressure_value(run, T)) run.add(x, *y, 0.0);
    }
    if (!inverse) run.sort_x();
}

void curve_vaporization(CurveRun& run) {
    const ModelSelection& models = run.fluid.models;
    bool with_p = false;
    for (const double T : falling_T(run, run.XMax, run.XMin, 0.0, false)) {
        const HlvResult at =
            hLV(run.fluid, {.model = models.HLVKode, .T = T, .EVP = models.EVPKode, .benson = run.in.benson});
        if (at.err() != 0) continue;
        with_p = with_p || at.p > 0.0;
        run.add(T * run.f.TFactor, at.value * run.uFactor_at(T), at.p);
    }
    run.out.curve.Par = with_p ? par_p : par_none;
    run.sort_x();
}

}  // namespace quom
