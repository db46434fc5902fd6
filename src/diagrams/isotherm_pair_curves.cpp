// Isotherms of one thermodynamic function over another one, along p.
#include <algorithm>

#include "diagrams/isotherm_states.h"

namespace quom {
namespace {

constexpr int PairLoopSteps = 800;

void add_pair(CurveRun& run, const StateColumns& states, std::size_t i, double p) {
    const double x = function_value(run.fluid, states, i, run.kind.x);
    const double y = function_value(run.fluid, states, i, run.kind.y);
    run.add(x * run.f.uFactor, y * run.f.uFactor, p, run.in.T);
}

// From the liquid to the vapor.
void loop_of_pairs(CurveRun& run, const Saturation& sat) {
    std::vector<double> v = loop_volumes(sat.eos, {.from = sat.vL, .to = sat.vV, .steps = PairLoopSteps});
    v.push_back(sat.vV);
    VolumeStates at = states_at_volumes(run, std::move(v));
    at.p.back() = sat.p;
    for (std::size_t i = 0; i < at.v.size(); ++i) add_pair(run, at.columns, i, at.p[i]);
}

}  // namespace

void curve_isotherm_pairs(CurveRun& run) {
    double p1 = run.in.process.From, p2 = run.in.process.To;
    if (p1 == p2) {
        run.out.Status = CurveStatus::outside;
        return;
    }
    if (run.below_triple(run.in.T)) return;
    const Saturation sat = isotherm_saturation(run);
    if (run.in.SCurve) {
        if (has_loop(run, sat)) loop_of_pairs(run, sat);
        return;
    }
    if (p1 > p2) std::swap(p1, p2);
    const double step = (p2 - p1) / std::max(run.in.options.Dens, 1);
    const std::vector<double> p = scan_values(p1, p2, step, 0.0, false, run.round_limit());
    const StateColumns states = stable_states(run, sat, p);
    run.out.curve.points.reserve(p.size());
    for (std::size_t i = 0; i < p.size(); ++i) add_pair(run, states, i, p[i]);
}

}  // namespace quom
