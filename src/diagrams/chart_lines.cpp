#include "diagrams/chart_lines.h"

#include <algorithm>
#include <cmath>

#include "engine/state_columns.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

int points(const LineInput& in, int n) { return static_cast<int>(std::lround(n * in.fineness)); }

void append(ChartStates& line, const ChartState& state) {
    if (state.exists()) line.push_back(state);
}
void append_gap(ChartStates& line) {
    if (!line.empty() && line.back().exists()) line.emplace_back();
}
void append(ChartStates& line, const ChartStates& more) { line.insert(line.end(), more.begin(), more.end()); }

ChartState column_state(double T, double p, const StateColumns& c, std::size_t i) {
    if (!std::isfinite(c.h[i]) || !std::isfinite(c.s[i])) return {};
    return {.T = T, .p = p, .v = c.v[i], .h = c.h[i], .s = c.s[i]};
}

// States of one phase at T over pressures; those that the equation takes for the other phase are left out.
ChartStates phase_on_isotherm(const LineInput& in, double T, const std::vector<double>& p, bool liquid) {
    StateColumns columns;
    states_on(*make_isotherm(in.fluid, T), p, columns);
    ChartStates line;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const ColumnPhase phase = columns.phase[i];
        const bool fits = phase == ColumnPhase::fluid || phase == (liquid ? ColumnPhase::L : ColumnPhase::V);
        if (fits) append(line, column_state(T, p[i], columns, i));
    }
    return line;
}

// Liquid from p_high down to saturation, p = psat (p_high/psat)^(u^1.3).
ChartStates liquid_on_isotherm(const LineInput& in, double T, double psat) {
    std::vector<double> p;
    const int n = points(in, 48);
    for (int i = n; i >= 1; --i)
        p.push_back(psat * std::pow(in.span.p_high / psat, std::pow(static_cast<double>(i) / n, 1.3)));
    return phase_on_isotherm(in, T, p, true);
}

// Vapor from saturation down to p_low, p = psat (p_low/psat)^(u^1.5).
ChartStates vapor_on_isotherm(const LineInput& in, double T, double psat) {
    std::vector<double> p;
    const int n = points(in, 48);
    for (int i = 1; i <= n; ++i)
        p.push_back(psat * std::pow(in.span.p_low / psat, std::pow(static_cast<double>(i) / n, 1.5)));
    return phase_on_isotherm(in, T, p, false);
}

// Above T(cr): over ln v with u^1.6; equal steps of p would break on the flat part near T(cr).
ChartStates supercritical_isotherm(const LineInput& in, double T) {
    const double v1 = outer_volume(in.fluid, T, in.span.p_high, true);
    const double v2 = outer_volume(in.fluid, T, in.span.p_low, false);
    if (!(v1 > 0.0) || !(v2 > v1)) return {};
    std::vector<double> v, p;
    const int n = points(in, 130);
    for (int i = 0; i <= n; ++i)
        v.push_back(v1 * std::pow(v2 / v1, std::pow(static_cast<double>(i) / n, 1.6)));
    StateColumns columns;
    states_on_volumes(*make_isotherm(in.fluid, T), v, p, columns);
    ChartStates line;
    for (std::size_t i = 0; i < v.size(); ++i) append(line, column_state(T, p[i], columns, i));
    return line;
}

// States at p over temperatures; next to saturation the columns do not tell the phases apart.
ChartStates states_over_T(const Fluid& fluid, double p, const std::vector<double>& T) {
    const std::vector<double> pressures(T.size(), p);
    StateColumns columns;
    states_at(fluid, T, pressures, columns);
    ChartStates line;
    for (std::size_t i = 0; i < T.size(); ++i)
        if (columns.phase[i] != ColumnPhase::saturated) append(line, column_state(T[i], p, columns, i));
    return line;
}

// Which side of the dome a value lies on: -1 liquid, 0 two phases, 1 vapor.
int side_of(const SaturatedPair& pair, double ChartState::*quantity, double value) {
    if (value < pair.L.*quantity) return -1;
    return value > pair.V.*quantity ? 1 : 0;
}

// Saturated state between two nodes at which the phase has the value (false position, an end that stays
// counts half).
ChartState saturated_between(const Fluid& fluid, const ChartState& a, const ChartState& b,
                             double ChartState::*quantity, double value) {
    const bool vapor = a.x > 0.5;
    double T1 = a.T, T2 = b.T, f1 = a.*quantity - value, f2 = b.*quantity - value;
    ChartState best = std::fabs(f1) < std::fabs(f2) ? a : b;
    for (int round = 0, stays = 0; round < 40 && f1 * f2 < 0.0; ++round) {
        const double T = T1 - f1 * (T2 - T1) / (f2 - f1);
        const SaturatedPair pair = saturated_at_T(fluid, T);
        if (!pair.exists()) break;
        best = vapor ? pair.V : pair.L;
        const double f = best.*quantity - value;
        if (std::fabs(f) < 1e-10 * std::max(std::fabs(value), std::fabs(f1 - f2))) break;
        if (f * f1 < 0.0) {
            T2 = T;
            f2 = f;
            stays = std::max(stays, 0) + 1;
            if (stays > 1) f1 *= 0.5;
        } else {
            T1 = T;
            f1 = f;
            stays = std::min(stays, 0) - 1;
            if (stays < -1) f2 *= 0.5;
        }
    }
    return best;
}

// A line of constant v or s over the nodes and above T(cr), outside the dome. solve(T) is its state of one
// phase there. The side is decided per node, so that a dome that overhangs needs nothing of its own.
template <class Solve>
ChartStates march_over_T(const LineInput& in, double ChartState::*quantity, double value,
                         const Solve& solve) {
    ChartStates line;
    const auto& nodes = in.nodes.at;
    int side = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const int here = side_of(nodes[i], quantity, value);
        if (i > 0 && here != side) {
            const bool vapor = here == 1 || side == 1;
            const auto phase = vapor ? &SaturatedPair::V : &SaturatedPair::L;
            append(line, saturated_between(in.fluid, nodes[i - 1].*phase, nodes[i].*phase, quantity, value));
            if (here == 0) append_gap(line);
        }
        if (here != 0) append(line, solve(nodes[i].L.T));
        side = here;
    }
    const double Tcr = in.nodes.critical().T;
    const int n = points(in, 70);
    for (int i = 1; i <= n && in.span.T_high > Tcr; ++i) {
        const ChartState state = solve(Tcr + (in.span.T_high - Tcr) * i / n);
        append(line, state);
        if (state.exists() && state.p > 1.2 * in.span.p_high) break;
    }
    return line;
}

}  // namespace

ChartStates isotherm_states(const LineInput& in, double T, bool with_liquid) {
    if (!(T < in.fluid.substance.Tcr)) return supercritical_isotherm(in, T);
    const SaturatedPair pair = saturated_at_T(in.fluid, T);
    if (!pair.exists()) return {};
    const double psat = pair.L.p;
    ChartStates line;
    if (with_liquid) {
        if (psat < in.span.p_high) line = liquid_on_isotherm(in, T, psat);
        line.push_back(pair.L);
        for (int i = 1; i < 10; ++i) line.push_back(mixed(pair, 0.1 * i));
    }
    line.push_back(pair.V);
    if (psat > in.span.p_low) append(line, vapor_on_isotherm(in, T, psat));
    return line;
}

ChartStates isobar_states(const LineInput& in, double p) {
    const double T_low = in.span.T_low, T_high = in.span.T_high;
    std::vector<double> T;
    if (!(p < in.fluid.substance.pcr)) {
        const int n = points(in, 180);
        for (int i = 0; i <= n; ++i) T.push_back(T_low + (T_high - T_low) * i / n);
        return states_over_T(in.fluid, p, T);
    }
    const SaturatedPair pair = saturated_at_p(in.fluid, p);
    if (!pair.exists()) return {};
    const double T_LV = pair.L.T;
    const int n = points(in, 70);
    ChartStates line;
    if (T_LV > T_low) {
        for (int i = 0; i < n; ++i) {
            const double rest = 1.0 - static_cast<double>(i) / n;
            T.push_back(T_low + (T_LV - T_low) * (1.0 - rest * rest));
        }
        line = states_over_T(in.fluid, p, T);
        line.push_back(pair.L);
        for (int i = 1; i < 10; ++i) line.push_back(mixed(pair, 0.1 * i));
        line.push_back(pair.V);
        T.clear();
    }
    const double start = std::max(T_LV, T_low);
    const int first = T_LV > T_low ? 1 : 0;
    for (int i = first; i <= n && T_high > start; ++i)
        T.push_back(start + (T_high - start) * std::pow(static_cast<double>(i) / n, 1.5));
    append(line, states_over_T(in.fluid, p, T));
    return line;
}

ChartStates isochore_states(const LineInput& in, double v) {
    const double p_high = in.span.p_high;
    ChartStates line = march_over_T(in, &ChartState::v, v, [&](double T) -> ChartState {
        const PressureResult at = pTv(in.fluid, T, v);
        if (at.reason != Reason::none || !(at.p > 0.0)) return {};
        return one_phase(in.fluid, T, at.p, v);
    });
    // Up to p_high, where the lines of p end.
    auto end = std::find_if(line.begin(), line.end(), [&](const ChartState& s) { return s.p > p_high; });
    if (end == line.end()) return line;
    line.erase(end, line.end());
    const TemperatureResult last = TpV(in.fluid, p_high, in.fluid.M / v, true);
    if (last.reason == Reason::none && (line.empty() || last.T > line.back().T))
        append(line, one_phase(in.fluid, last.T, p_high, v));
    return line;
}

ChartStates isentrope_states(const LineInput& in, double s) {
    return march_over_T(in, &ChartState::s, s, [&](double T) { return state_at_Ts(in.fluid, T, s); });
}

ChartStates isenthalp_states(const LineInput& in, double h) {
    const double pcr = in.fluid.substance.pcr, p_low = in.span.p_low, p_high = in.span.p_high;
    const double p_first = in.nodes.at.front().L.p;
    std::vector<double> p;
    const auto add = [&](double from, double to, int n) {
        for (int i = 0; i < n; ++i) p.push_back(from * std::pow(to / from, static_cast<double>(i) / n));
    };
    if (p_low < p_first) add(p_low, p_first, points(in, 20));
    for (std::size_t i = 0; i + 1 < in.nodes.at.size(); i += 2)
        if (in.nodes.at[i].L.p >= p_low) p.push_back(in.nodes.at[i].L.p);
    add(pcr, p_high, points(in, 40));
    p.push_back(p_high);
    ChartStates line;
    double T_start = 0.0;
    for (std::size_t i = 0; i < p.size(); ++i) {
        const ChartState state = state_at_p(in.fluid, p[i], GivenAtP::h, h, T_start);
        const bool drawn = state.exists() && state.T >= in.span.T_low && state.T <= 1.3 * in.span.T_high;
        const ChartState last = line.empty() ? ChartState{} : line.back();
        if (drawn && last.exists() && (last.x < 0.0) != (state.x < 0.0)) {
            // The saturated state between both, on the side of the one with one phase.
            const ChartState& two = state.x < 0.0 ? last : state;
            const auto phase = two.x > 0.5 ? &SaturatedPair::V : &SaturatedPair::L;
            const SaturatedPair a = saturated_at_p(in.fluid, last.p), b = saturated_at_p(in.fluid, state.p);
            if (a.exists() && b.exists())
                append(line, saturated_between(in.fluid, a.*phase, b.*phase, &ChartState::h, h));
        }
        if (drawn) {
            line.push_back(state);
        } else {
            append_gap(line);
        }
        T_start = state.exists() ? state.T : 0.0;
    }
    return line;
}

ChartStates fraction_states(const SaturationNodes& nodes, double x) {
    ChartStates line;
    for (const SaturatedPair& pair : nodes.at) line.push_back(mixed(pair, x));
    return line;
}

}  // namespace quom
