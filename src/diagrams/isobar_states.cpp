#include "diagrams/isobar_states.h"

namespace quom {

std::vector<double> falling_T(CurveRun& run, double from, double to, double beyond, bool clamp) {
    std::vector<double> T = scan_values(from, to, -run.dx, beyond, clamp, run.round_limit());
    for (std::size_t i = 0; i < T.size(); ++i) {
        T[i] /= run.f.TFactor;
        if (!run.below_triple(T[i])) continue;
        T.resize(i);
        break;
    }
    return T;
}

void stable_states(const Fluid& fluid, const Saturation& boiling, std::span<const double> T, double p,
                   StateColumns& out) {
    const std::vector<double> pressures(T.size(), p);
    states_at(fluid, T, pressures, out);
    for (std::size_t i = 0; i < T.size(); ++i) {
        if (out.phase[i] != ColumnPhase::saturated || !(T[i] < boiling.T)) continue;
        const double v = VolumeTp(fluid, T[i], p).vL;
        put_state(fluid, T[i], p, v, ColumnPhase::saturated, out, i);
    }
}

std::vector<double> loop_volumes(CurveRun& run, const Saturation& boiling, int steps) {
    const double span = boiling.vV - boiling.vL;
    if (!boiling.found() || !(span > 0.0)) {
        run.out.Status = CurveStatus::no_tie_line;
        return {};
    }
    return scan_values(boiling.vL, boiling.vV, span / steps, 0.0, false, static_cast<std::size_t>(steps) + 1);
}

}  // namespace quom
