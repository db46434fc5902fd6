// Inversion curves of the Joule-Thomson effect: p over T, and pv over p.
#include <algorithm>
#include <cmath>

#include "diagrams/curve_run.h"
#include "diagrams/inversion.h"

namespace quom {

// T falls from XMax; below T(cr) the curve ends where it meets the vapor pressure curve.
void curve_inversion_T(CurveRun& run) {
    constexpr double ColdestT = 0.5;  // [K], evaluated in place of a T that is not above 0
    if (!run.knows_saturation()) return;
    const double TFactor = run.f.TFactor, pFactor = run.f.pFactor;
    InversionPoint last;
    for (const double x : scan_values(run.XMax, run.XMin, -run.dx / 3.0, 0.0, false, run.round_limit())) {
        const double T = x / TFactor < TinyT ? ColdestT : x / TFactor;
        if (run.below_triple(T)) break;
        InversionPoint at = InversionP(run.fluid, T, last.v);
        bool ends = T < TinyT;
        if (at.found() && T < run.Tcr) {
            const Saturation sat = pLV_EOS(run.fluid, T);
            ends = !sat.found() || at.p < sat.p;
            // Nothing when the scan starts below the meeting: there is no curve to end.
            if (ends) at = last.found() ? boiling_inversion(run.fluid, last.T, T, last.v) : InversionPoint{};
        }
        if (at.found() && at.p > 0.0) {
            run.add(at.T * TFactor, at.p * pFactor, at.v);
            last = at;
        }
        if (ends) break;
    }
}

// First the hot branch up to the highest pressure, then back down the cold one, which starts on the vapor
// pressure curve.
void curve_inversion_p(CurveRun& run) {
    constexpr double LowestX = 1e-6, FirstP = 0.03;  // [kPa]
    if (!run.knows_saturation()) return;
    const InversionDome dome = inversion_dome(run.fluid);
    if (!dome.found()) return;
    const double pFactor = run.f.pFactor, vFactor = run.f.vFactor, step = 2.0 * run.dx;
    const auto add = [&](const InversionPoint& at) {
        run.add(at.p * pFactor, at.p * pFactor * at.v * vFactor, at.T);
    };
    const auto pressure = [&](double x) { return x / pFactor < LowestX ? FirstP : x / pFactor; };

    double T = dome.Thighest;
    for (const double x : scan_values(run.XMin, run.XMax + step, step, 0.0, false, run.round_limit())) {
        const double p = pressure(x);
        if (p >= dome.top.p) break;
        const InversionPoint at = InversionT(run.fluid, p, dome.top.T, T);
        if (!at.found() || run.below_triple(at.T)) continue;
        add(at);
        T = at.T;
    }
    // The two ends of the cold branch lie between the steps.
    if (dome.top.p * pFactor > run.XMin && dome.top.p * pFactor < run.XMax) add(dome.top);
    T = dome.top.T;
    for (const double x : scan_values(run.XMax + step, run.XMin, -step, 0.0, false, run.round_limit())) {
        const double p = pressure(x);
        if (p >= dome.top.p) continue;
        const bool ends = p < dome.boiling.p;
        const InversionPoint at = ends ? dome.boiling : InversionT(run.fluid, p, dome.boiling.T, T);
        if (!at.found()) continue;
        if (run.below_triple(at.T)) break;
        add(at);
        if (ends) break;
        T = at.T;
    }
}

}  // namespace quom
