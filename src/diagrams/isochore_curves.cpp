// Curves along an isochore: p and functions over T.
#include <cmath>

#include "diagrams/isobar_states.h"

namespace quom {
namespace {

constexpr double beyond = 0.8;  // share of a step behind the end of the scan, clamped to it

}  // namespace

void curve_isochore_p(CurveRun& run) {
    const double v = run.in.v;
    const bool critical = std::fabs(v - run.vcr) < std::fabs(run.vcr / 1000.0);
    bool on_boundary = false;  // an isochore of the vapor side has met p(LV) and stays on it
    for (const double T : falling_T(run, run.XMax, run.XMin, beyond, true)) {
        const Saturation boundary = pLV_EOS(run.fluid, T);
        const PressureResult at = pTv(run.fluid, T, v);
        double p = at.p;
        bool good = at.reason == Reason::none;
        if (critical && !(T > run.Tcr)) {
            p = boundary.p;
            good = boundary.found();
        } else if (boundary.found() || boundary.reason == Reason::p_too_low) {
            // A wide step may lead past the part where p > p(LV).
            on_boundary = on_boundary || (v > run.vcr && (p > boundary.p || v < boundary.vV));
            if (on_boundary || (v < run.vcr && p < boundary.p)) p = boundary.p;
        } else if (on_boundary) {
            good = false;
        }
        if (good && p > 1e-6) run.add(T * run.f.TFactor, p * run.f.pFactor, v);
    }
}

void curve_isochore_functions(CurveRun& run) {
    const double v = run.in.v;
    for (const double x : scan_values(run.XMax, run.XMin, -run.dx, beyond, true, run.round_limit())) {
        const double T = x / run.f.TFactor;
        const PressureResult at = pTv(run.fluid, T, v);
        if (at.reason != Reason::none) return;
        if (!run.fluid.VPhaseOnly && T < run.Tcr) {
            const Saturation boundary = pLV_EOS(run.fluid, T);
            if (!boundary.found()) continue;
            if (v >= boundary.vL && v <= boundary.vV) {
                // A step of a steep isochore may lead to p <= 0, still inside the boundary.
                const double past = v > run.vcr ? 0.3 * run.dx / run.f.TFactor : 0.0;
                run.out.isochore = {.T = T + past, .p = at.p > 0.0 ? at.p : boundary.p, .v = v};
                return;
            }
        }
        if (!(at.p > 0.0) || run.below_triple(T)) return;
        const StateFunctions state = ThermoState(run.fluid, T, at.p, v);
        const double y = function_value(run.fluid, state, run.kind.y) * run.uFactor_at(T);
        run.add(T * run.f.TFactor, y, v);
    }
}

}  // namespace quom
