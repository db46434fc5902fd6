#include "diagrams/chart_hover.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/state_columns.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double Settled = 1e-11;     // relative step that ends a search
constexpr double OutsideDome = 1e-6;  // vapor fraction that still counts as two phases
constexpr int MostRounds = 100;

double value_of(const ChartState& state, GivenAtP given) { return given == GivenAtP::h ? state.h : state.s; }

// Whether two states cannot be told apart by h and s, to one part in ten million. At the critical point,
// where cp is infinite, no search settles.
bool nearly(double a, double b, double scale) { return std::fabs(a - b) < 1e-7 * scale; }

// A bracket for a function that rises with its argument.
struct Bracket {
    double low = 0, high = Infinity;
    // The step where it stays inside, else the middle; the middle in every other of many rounds too.
    double next(int round, double x, double wanted) const {
        const bool slow = round > 12 && round % 2 == 1 && high < Infinity;
        if (!slow && wanted > low && wanted < high) return wanted;
        return high < Infinity ? 0.5 * (low + high) : 1.3 * x;
    }
};

// One phase at p: the liquid or the vapor root.
ChartState search_T(const Fluid& fluid, double p, GivenAtP given, double value, double T, Bracket bracket,
                    bool liquid) {
    const double scale = RGas * (given == GivenAtP::h ? fluid.substance.Tcr : 1.0);
    for (int round = 0; round < MostRounds; ++round) {
        const double v = outer_volume(fluid, T, p, liquid);
        if (!(v > 0.0)) return {};
        const SlopedState here = sloped_state(fluid, T, p, v);
        if (!here.at.exists()) return {};
        const double missing = value - value_of(here.at, given);
        (missing > 0.0 ? bracket.low : bracket.high) = T;
        const double slope = given == GivenAtP::h ? here.cp : here.cp / T;
        double wanted = slope > 0.0 ? T + std::clamp(missing / slope, -0.2 * T, 0.3 * T) : Infinity;
        if (std::fabs(wanted - T) < Settled * T || std::fabs(missing) < 1e-13 * scale) return here.at;
        wanted = bracket.next(round, T, wanted);
        if (bracket.high - bracket.low < 1e-13 * T) return here.at;
        T = wanted;
    }
    return {};
}

// One phase at T between two volumes.
ChartState search_v(const Fluid& fluid, double T, double s, double v, Bracket bracket) {
    for (int round = 0; round < MostRounds; ++round) {
        const PressureResult at = pTv(fluid, T, v);
        if (at.reason != Reason::none || !(at.p > 0.0)) return {};
        const SlopedState here = sloped_state(fluid, T, at.p, v);
        if (!here.at.exists()) return {};
        const double missing = s - here.at.s;
        (missing > 0.0 ? bracket.low : bracket.high) = v;
        const double step = std::clamp(missing / (v * here.dpdT_v), -1.5, 1.5);
        if (std::fabs(step) < Settled) return here.at;
        v = bracket.next(round, v, v * std::exp(step));
        if (bracket.high - bracket.low < 1e-14 * v) return here.at;
    }
    return {};
}

double vapor_fraction(const SaturatedPair& pair, double ChartState::*quantity, double value) {
    return (value - pair.L.*quantity) / (pair.V.*quantity - pair.L.*quantity);
}

bool two_phases(double x) { return x >= 0.0 && x <= 1.0; }

// F = g(L) + T s - h at a saturated liquid.
double tie_line_rest(const ChartState& L, double h, double s) { return L.h - L.T * L.s + L.T * s - h; }

// Result of the search inside the dome: a state, or where the root of F would lie.
struct TieLine {
    ChartState state;
    double T = 0, p = 0;  // of the root; 0 without
};

// Root of F between two temperatures, by the line through both ends.
TieLine root_of_tie_line(const Fluid& fluid, double T1, double T2, double start, double h, double s) {
    Bracket bracket{.low = T1, .high = T2};
    double T = start;
    SaturatedPair pair;
    for (int round = 0; round < 50; ++round) {
        pair = saturated_at_T(fluid, T);
        if (!pair.exists()) return {};
        const double F = tie_line_rest(pair.L, h, s);
        (F < 0.0 ? bracket.low : bracket.high) = T;
        // Clapeyron: dp/dT = (s(V) - s(L))/(v(V) - v(L));  F' = s - s(L) + v(L) dp/dT
        const double slope = s - pair.L.s + pair.L.v * (pair.V.s - pair.L.s) / (pair.V.v - pair.L.v);
        double next = slope > 0.0 ? T - F / slope : Infinity;
        if (std::fabs(next - T) < Settled * T) break;
        next = bracket.next(round, T, next);
        if (bracket.high - bracket.low < 1e-13 * T) break;
        T = next;
    }
    TieLine r{.state = {}, .T = pair.L.T, .p = pair.L.p};
    const double x = vapor_fraction(pair, &ChartState::s, s);
    if (x >= -OutsideDome && x <= 1.0 + OutsideDome) r.state = mixed(pair, std::clamp(x, 0.0, 1.0));
    return r;
}

// Two phases at h, s: the cell of the nodes where F changes its sign, up to s(L) = s.
TieLine search_tie_line(const Fluid& fluid, const SaturationNodes& nodes, double h, double s) {
    double last = 0.0;
    for (std::size_t i = 0; i < nodes.at.size(); ++i) {
        const ChartState& L = nodes.at[i].L;
        if (!(L.s < s)) {
            // F is below 0 at the last node with s(L) < s: the root, if any, lies before this one.
            if (i == 0) return {};
            const double T1 = nodes.at[i - 1].L.T;
            return root_of_tie_line(fluid, T1, L.T, 0.5 * (T1 + L.T), h, s);
        }
        const double F = tie_line_rest(L, h, s);
        if (F >= 0.0) {
            if (i == 0) return {};
            const double T1 = nodes.at[i - 1].L.T;
            const double start = T1 + (L.T - T1) * last / (last - F);
            return root_of_tie_line(fluid, T1, L.T, std::clamp(start, T1, L.T), h, s);
        }
        last = F;
    }
    return {};
}

// One phase at h, s from a start. It ends far outside of every chart, where points without a state lead.
ChartState search_pT(const Fluid& fluid, double h, double s, double p, double T, bool liquid) {
    const double Tcr = fluid.substance.Tcr, scale = RGas * Tcr;
    const double T_least = 0.1 * Tcr, p_most = 1e3 * fluid.substance.pcr;
    for (int round = 0; round < 60 && T > T_least && p < p_most; ++round) {
        const double v = outer_volume(fluid, T, p, liquid);
        if (!(v > 0.0)) return {};
        const SlopedState here = sloped_state(fluid, T, p, v);
        if (!here.at.exists() || !(here.cp > 0.0)) return {};
        const double Dh = h - here.at.h, Ds = s - here.at.s;
        if (std::fabs(Dh) < 1e-10 * scale && std::fabs(Ds) < 1e-10 * RGas) return here.at;
        // dh - T ds = v dp,  ds = cp dT/T - (dv/dT)_p dp
        const double dlnp = std::clamp((Dh - T * Ds) / (p * v), -1.0, 1.0);
        const double dT = T * (Ds + here.dvdT_p * p * dlnp) / here.cp;
        p *= std::exp(dlnp);
        T += std::clamp(dT, -0.2 * T, 0.3 * T);
    }
    return {};
}

// Whether a state of one phase is the stable one.
bool is_stable(const Fluid& fluid, const ChartState& state, bool liquid) {
    if (!(state.T < fluid.substance.Tcr)) return true;
    const Saturation sat = pLV_EOS(fluid, state.T);
    if (!sat.found()) return true;
    return liquid ? state.p >= sat.p * (1.0 - 1e-6) : state.p <= sat.p * (1.0 + 1e-6);
}

}  // namespace

ChartState state_at_p(const Fluid& fluid, double p, GivenAtP given, double value, double T_start) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (!(p > 0.0) || !std::isfinite(value)) return {};
    if (nearly(p, pcr, pcr)) {
        const SaturatedPair critical = saturated_at_T(fluid, Tcr);
        const double scale = RGas * (given == GivenAtP::h ? Tcr : 1.0);
        if (critical.exists() && nearly(value_of(critical.L, given), value, scale)) return critical.L;
    }
    if (!(p < pcr)) return search_T(fluid, p, given, value, T_start > 0.0 ? T_start : 1.05 * Tcr, {}, true);
    const SaturatedPair pair = saturated_at_p(fluid, p);
    if (!pair.exists()) return {};
    const auto quantity = given == GivenAtP::h ? &ChartState::h : &ChartState::s;
    const double x = vapor_fraction(pair, quantity, value), T_LV = pair.L.T;
    if (two_phases(x)) return mixed(pair, x);
    const bool liquid = x < 0.0;
    const Bracket bracket = liquid ? Bracket{.high = T_LV} : Bracket{.low = T_LV};
    const bool usable = T_start > bracket.low && T_start < bracket.high;
    return search_T(fluid, p, given, value, usable ? T_start : (liquid ? 0.97 : 1.05) * T_LV, bracket,
                    liquid);
}

ChartState state_at_Ts(const Fluid& fluid, double T, double s) {
    if (!(T > 0.0) || !std::isfinite(s)) return {};
    const double b = EOSParT(fluid, T).b, v_low = std::max(b, 0.0) * (1.0 + 1e-9);
    if (T < fluid.substance.Tcr) {
        const SaturatedPair pair = saturated_at_T(fluid, T);
        if (!pair.exists()) return {};
        const double x = vapor_fraction(pair, &ChartState::s, s);
        if (two_phases(x)) return mixed(pair, x);
        if (x < 0.0)
            return search_v(fluid, T, s, v_low + 0.98 * (pair.L.v - v_low),
                            {.low = v_low, .high = pair.L.v * (1.0 + 1e-12)});
        const double v = pair.V.v * std::exp(std::min((s - pair.V.s) / RGas, 200.0));
        return search_v(fluid, T, s, v, {.low = pair.V.v * (1.0 - 1e-12)});
    }
    const double v = 1.5 * fluid.eos.vcrEOS;
    return search_v(fluid, T, s, v, {.low = v_low});
}

HoverStarts hover_starts(const Fluid& fluid, const SaturationNodes& nodes, double T_high, double p_low,
                         double p_high) {
    constexpr int Side = 25;
    const double T_low = nodes.at.front().L.T;
    std::vector<double> T, p;
    for (int i = 0; i < Side; ++i) {
        for (int k = 0; k < Side; ++k) {
            T.push_back(T_low + (T_high - T_low) * i / (Side - 1.0));
            p.push_back(p_low * std::pow(p_high / p_low, k / (Side - 1.0)));
        }
    }
    StateColumns columns;
    states_at(fluid, T, p, columns);
    HoverStarts starts;
    double h[2] = {Infinity, -Infinity}, s[2] = {Infinity, -Infinity};
    for (std::size_t i = 0; i < T.size(); ++i) {
        if (!std::isfinite(columns.h[i]) || !std::isfinite(columns.s[i])) continue;
        starts.states.push_back(
            {.T = T[i], .p = p[i], .v = columns.v[i], .h = columns.h[i], .s = columns.s[i]});
        h[0] = std::min(h[0], columns.h[i]);
        h[1] = std::max(h[1], columns.h[i]);
        s[0] = std::min(s[0], columns.s[i]);
        s[1] = std::max(s[1], columns.s[i]);
    }
    if (h[1] > h[0]) starts.width_h = h[1] - h[0];
    if (s[1] > s[0]) starts.width_s = s[1] - s[0];
    return starts;
}

ChartState state_at_hs(const Fluid& fluid, const SaturationNodes& nodes, const HoverStarts& starts, double h,
                       double s) {
    if (nodes.at.empty() || !std::isfinite(h) || !std::isfinite(s)) return {};
    const TieLine tie = search_tie_line(fluid, nodes, h, s);
    if (tie.state.exists()) return tie.state;
    const ChartState& critical = nodes.critical();
    const double Tcr = critical.T, pcr = critical.p;
    if (nearly(critical.h, h, RGas * Tcr) && nearly(critical.s, s, RGas)) return critical;
    const ChartState* nearest = &critical;
    double least = Infinity;
    for (const ChartState& state : starts.states) {
        const double distance = std::hypot((state.h - h) / starts.width_h, (state.s - s) / starts.width_s);
        if (distance < least) nearest = &state;
        least = std::min(least, distance);
    }
    // The side of the start decides first: where the dome overhangs, vapor has less entropy than the critical
    // point.
    const bool start_liquid = nearest->T < Tcr && nearest->v < critical.v, by_s = s < critical.s;
    const struct {
        double T, p;
        bool liquid;
    } tries[] = {{nearest->T, nearest->p, start_liquid},
                 {nearest->T, nearest->p, !start_liquid},
                 {tie.T, tie.p, by_s},
                 {tie.T, tie.p, !by_s},
                 {1.001 * Tcr, pcr, by_s},
                 {1.5 * Tcr, 0.1 * pcr, false}};
    for (const auto& start : tries) {
        if (!(start.T > 0.0)) continue;
        const ChartState state = search_pT(fluid, h, s, start.p, start.T, start.liquid);
        if (state.exists() && is_stable(fluid, state, start.liquid)) return state;
    }
    return {};
}

}  // namespace quom
