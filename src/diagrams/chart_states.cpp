#include "diagrams/chart_states.h"

#include <algorithm>
#include <cmath>

#include "engine/state_columns.h"
#include "engine/thermo_functions.h"

namespace quom {
namespace {

ChartState state_of(double T, double p, const StateFunctions& f) {
    if (!std::isfinite(f.h) || !std::isfinite(f.s)) return {};
    return {.T = T, .p = p, .v = f.v, .h = f.h, .s = f.s};
}

SaturatedPair pair_of(const Fluid& fluid, const Saturation& sat) {
    if (!sat.found()) return {};
    SaturatedPair r{.L = one_phase(fluid, sat.T, sat.p, sat.vL), .V = one_phase(fluid, sat.T, sat.p, sat.vV)};
    r.L.x = 0.0;
    r.V.x = 1.0;
    return r;
}

}  // namespace

ChartState one_phase(const Fluid& fluid, double T, double p, double v) {
    return state_of(T, p, ThermoState(fluid, T, p, v));
}

SlopedState sloped_state(const Fluid& fluid, double T, double p, double v) {
    const PhaseArrays arrays = ThermoFunc(fluid, T, p, v);
    return {.at = state_of(T, p, state_functions(fluid, T, p, v, arrays)),
            .cp = arrays.FuncA[fu_cp],
            .dpdT_v = arrays.DerivA[dpdT_v],
            .dpdv_T = arrays.DerivA[dpdv_T],
            .dvdT_p = arrays.DerivA[dvdT_p]};
}

ChartState stable_state(const Fluid& fluid, double T, double p) {
    const VolumeResult r = VolumeTp(fluid, T, p);
    if (r.reason != Reason::none) return {};
    // Near saturation both flags are set: fd is above 0 where the vapor is the stable phase.
    const bool vapor = r.LFlag && r.nRoots == 3 ? r.VFlag && r.fd > 0.0 : r.VFlag;
    return one_phase(fluid, T, p, vapor ? r.vV : r.vL);
}

SaturatedPair saturated_at_T(const Fluid& fluid, double T) { return pair_of(fluid, pLV_EOS(fluid, T)); }
SaturatedPair saturated_at_p(const Fluid& fluid, double p) { return pair_of(fluid, TLV_EOS(fluid, p)); }

ChartState mixed(const SaturatedPair& pair, double x) {
    const auto mix = [x](double L, double V) { return L + x * (V - L); };
    return {.T = pair.L.T,
            .p = pair.L.p,
            .v = mix(pair.L.v, pair.V.v),
            .h = mix(pair.L.h, pair.V.h),
            .s = mix(pair.L.s, pair.V.s),
            .x = x};
}

double outer_volume(const Fluid& fluid, double T, double p, bool liquid) {
    const CubicRoots roots = CubicV(EOSParT(fluid, T), p);
    if (roots.reason != Reason::none) return 0.0;
    return liquid || roots.nRoots < 3 ? roots.VRoot[0] : roots.VRoot[2];
}

SaturationNodes saturation_nodes(const Fluid& fluid, double T0, int n) {
    const double Tcr = fluid.substance.Tcr;
    std::vector<double> T;
    for (int i = 0; i < n; ++i) {
        const double rest = 1.0 - static_cast<double>(i) / n;
        T.push_back(Tcr - (Tcr - T0) * rest * rest);
    }
    T.push_back(Tcr);
    SaturationColumns columns;
    saturation_at(fluid, T, columns);
    SaturationNodes nodes;
    for (std::size_t i = 0; i < T.size(); ++i) {
        const auto phase = [&](const StateColumns& c, double x) -> ChartState {
            if (!std::isfinite(c.h[i]) || !std::isfinite(c.s[i])) return {};
            return {.T = T[i], .p = columns.p[i], .v = c.v[i], .h = c.h[i], .s = c.s[i], .x = x};
        };
        const SaturatedPair pair{.L = phase(columns.L, 0.0), .V = phase(columns.V, 1.0)};
        if (pair.exists()) nodes.at.push_back(pair);
    }
    return nodes;
}

}  // namespace quom
