#include "diagrams/isotherm_states.h"

#include <algorithm>
#include <cmath>

namespace quom {
namespace {

// The batch takes the vapor for saturated on either side of p(LV).
void put_liquid_above_saturation(const CurveRun& run, const Saturation& sat, std::span<const double> p,
                                 StateColumns& states) {
    for (std::size_t i = 0; i < p.size(); ++i) {
        if (states.phase[i] != ColumnPhase::saturated || !(p[i] > sat.p)) continue;
        const double v = CubicV(sat.eos, p[i]).VRoot[0];
        put_state(run.fluid, run.in.T, p[i], v, ColumnPhase::saturated, states, i);
    }
}

}  // namespace

Saturation isotherm_saturation(const CurveRun& run) {
    if (run.in.T < run.Tcr) return pLV_EOS(run.fluid, run.in.T);
    Saturation none;
    none.reason = Reason::above_critical_T;
    return none;
}

double upper_p(const CurveRun& run) {
    const bool cut = run.pLimit > 0.0 && run.in.T < run.Tcr;
    return cut ? std::min(run.XMax, run.pLimit * run.f.pFactor) : run.XMax;
}

StateColumns stable_states(const CurveRun& run, const Saturation& sat, std::span<const double> p) {
    StateColumns states;
    const auto isotherm = make_isotherm(run.fluid, run.in.T);
    states_on(*isotherm, p, states);
    if (sat.found()) put_liquid_above_saturation(run, sat, p, states);
    return states;
}

bool has_loop(CurveRun& run, const Saturation& sat) {
    const bool has = sat.found() && sat.vV > sat.vL;
    if (!has) run.out.Status = CurveStatus::no_tie_line;
    return has;
}

std::vector<double> loop_volumes(const EosAtT& eos, const LoopWalk& walk) {
    std::vector<double> volumes;
    const double step = (walk.to - walk.from) / walk.steps;
    double v = walk.from, last = 0.0;
    for (int i = 0; i < walk.steps; ++i, v += step) {
        const double p = pressure_at(eos, v);
        if (!(p >= walk.lowest_p)) continue;
        if (!volumes.empty() && !(std::fabs(p - last) >= walk.moved)) continue;
        volumes.push_back(v);
        last = p;
    }
    return volumes;
}

VolumeStates states_at_volumes(const CurveRun& run, std::vector<double> v) {
    VolumeStates states{.v = std::move(v), .p = {}, .columns = {}};
    states_on_volumes(*make_isotherm(run.fluid, run.in.T), states.v, states.p, states.columns);
    return states;
}

}  // namespace quom
