// T over v or rho along an isobar.
#include "diagrams/isobar_states.h"

namespace quom {
namespace {

constexpr int loop_steps = 150;

void add_volume(CurveRun& run, double T, double v, InsideBy rule) {
    const double x = run.kind.x == AxisQuantity::rho ? run.M / v : v * run.f.vFactor;
    run.add(x, T * run.f.TFactor, run.in.p, 0.0, rule);
}

// T(p, v) of the equation between v(L) and v(V).
void volume_loop(CurveRun& run, const Saturation& boiling) {
    const std::vector<double> volumes = loop_volumes(run, boiling, loop_steps);
    for (const double v : volumes) {
        const double T = TpV(run.fluid, run.in.p, run.M / v, true).T;
        if (T > 0.0 && !run.below_triple(T)) add_volume(run, T, v, InsideBy::x);
    }
    if (!volumes.empty() && !run.below_triple(boiling.T)) add_volume(run, boiling.T, boiling.vV, InsideBy::x);
    run.sort_x();
}

}  // namespace

void curve_isobar_volume(CurveRun& run) {
    const double p = run.in.p;
    const Saturation boiling = TLV_EOS(run.fluid, p);
    const bool two_phases = boiling.found() && p < run.pcr;
    if (run.in.SCurve) return volume_loop(run, boiling);
    std::vector<double> T;
    for (const double y : scan_values(run.YMin, run.YMax, run.dy, 0.0, false, run.round_limit()))
        if (!run.below_triple(y / run.f.TFactor)) T.push_back(y / run.f.TFactor);
    StateColumns states;
    stable_states(run.fluid, boiling, T, p, states);
    const InsideBy rule = two_phases ? InsideBy::x : InsideBy::both;
    run.out.curve.points.reserve(T.size() + 2);
    for (std::size_t i = 0; i < T.size(); ++i) add_volume(run, T[i], states.v[i], rule);
    if (two_phases && !run.below_triple(boiling.T)) {
        add_volume(run, boiling.T, boiling.vL, rule);
        add_volume(run, boiling.T, boiling.vV, rule);
    }
    run.sort_x();
}

}  // namespace quom
