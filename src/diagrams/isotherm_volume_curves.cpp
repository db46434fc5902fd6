// Isotherms of the volume: p over v, pv over p, rho over p.
#include <algorithm>
#include <cmath>
#include <limits>

#include "diagrams/isotherm_states.h"

namespace quom {
namespace {

constexpr double LowestP = 0.01, LowestGasP = 1e-10;  // [kPa], a scan over p starts there at the lowest
constexpr int PvLoopSteps = 20000, RhoLoopSteps = 200;

// pv or rho in displayed units at p [kPa], v [m^3/kmol].
double ordinate(const CurveRun& run, double p, double v) {
    if (run.kind.y == AxisQuantity::pv) return p * v * run.f.pFactor * run.f.vFactor;
    return run.M > 0.0 ? run.M / v : std::numeric_limits<double>::quiet_NaN();
}

void add_over_p(CurveRun& run, double p, double v) {
    run.add(p * run.f.pFactor, ordinate(run, p, v), run.in.T);
}

// v = R T/p + B, pv = R T + B p
void vapor_only_over_p(CurveRun& run) {
    const double T = run.in.T;
    if (!run.fluid.has_eos() || !(T >= TinyT)) return;
    const double RT = RGas * T, B = VirialB(run.fluid, T), top = upper_p(run);
    const bool pv = run.kind.y == AxisQuantity::pv;
    for (const double x : run.scan_x(run.XMin, top, run.dx, 0.9, true)) {
        double p = x / run.f.pFactor;
        if (!pv) p = std::max(p, LowestGasP);
        const double product = RT + B * p;
        if (!(p >= 0.0) || !(product > 0.0)) continue;
        if (pv) {
            run.add(x, product * run.f.pFactor * run.f.vFactor, T);
        } else {
            add_over_p(run, p, product / p);
        }
    }
}

void cubic_over_p(CurveRun& run, const Saturation& sat) {
    const double lowest = run.in.T < run.Tcr ? LowestP : LowestGasP;
    std::vector<double> p = run.scan_x(run.XMin, run.XMax, run.dx, 0.9, true);
    for (double& value : p) value = std::max(value / run.f.pFactor, lowest);
    const StateColumns states = stable_states(run, sat, p);
    for (std::size_t i = 0; i < p.size(); ++i) add_over_p(run, p[i], states.v[i]);
    if (!sat.found()) return;
    add_over_p(run, sat.p, sat.vV);
    add_over_p(run, sat.p, sat.vL);
    run.sort_x();
}

// From the vapor to the liquid.
void loop_over_p(CurveRun& run, const Saturation& sat) {
    const bool pv = run.kind.y == AxisQuantity::pv;
    const LoopWalk walk{.from = sat.vV,
                        .to = sat.vL,
                        .steps = pv ? PvLoopSteps : RhoLoopSteps,
                        .moved = pv ? 0.5 * std::fabs(run.dx) / run.f.pFactor : 0.0};
    for (const double v : loop_volumes(sat.eos, walk)) add_over_p(run, pressure_at(sat.eos, v), v);
    add_over_p(run, sat.p, sat.vL);
    run.out.Outside = false;  // wherever the loop lies
}

}  // namespace

void curve_isotherm_v(CurveRun& run) {
    const double T = run.in.T;
    if (!std::isfinite(run.dx) || run.below_triple(T)) return;
    const Saturation sat = isotherm_saturation(run);
    const bool loop = run.in.SCurve, with_loop = run.in.options.chkSKurveOhneKonnode;
    if (loop && !has_loop(run, sat)) return;
    // Below T(cr) nothing can be told of the phases without p(LV).
    const bool two_phases = T < run.Tcr && !run.fluid.VPhaseOnly;
    if (two_phases && !sat.found()) return;
    for (const double x : run.scan_x(run.XMin, run.XMax, run.dx, 0.0, false)) {
        const double v = x / run.f.vFactor;
        const bool between = two_phases && v > sat.vL && v < sat.vV;
        if (loop ? !between : between && !with_loop) continue;
        const PressureResult at = pTv(run.fluid, T, v);
        if (at.reason == Reason::none) run.add(x, at.p * run.f.pFactor, T);
    }
    if (!two_phases) return;
    run.add(sat.vL * run.f.vFactor, sat.p * run.f.pFactor, T);
    run.add(sat.vV * run.f.vFactor, sat.p * run.f.pFactor, T);
    run.sort_x();
}

void curve_isotherm_p(CurveRun& run) {
    if (!std::isfinite(run.dx) || run.below_triple(run.in.T)) return;
    const Saturation sat = isotherm_saturation(run);
    if (run.in.SCurve) {
        if (has_loop(run, sat)) loop_over_p(run, sat);
    } else if (run.fluid.VPhaseOnly) {
        vapor_only_over_p(run);
    } else {
        cubic_over_p(run, sat);
    }
}

}  // namespace quom
