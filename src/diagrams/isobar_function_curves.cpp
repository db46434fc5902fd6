// Functions along an isobar: over T, residual ones, and one over another.
#include <algorithm>
#include <cmath>

#include "diagrams/isobar_states.h"

namespace quom {
namespace {

// How a family walks its isobar.
struct IsobarWalk {
    double beyond = 0.0;   // share of a step behind the end of the scan
    bool clamp = false;    // what lies behind is put onto the end
    int loop_steps = 800;  // of the loop between v(L) and v(V)
    bool sparse = false;   // the loop keeps a point below T(cr) only, and where T moved by a step of the axis
};
constexpr IsobarWalk functions_walk{.beyond = 0.9, .clamp = true};
constexpr IsobarWalk cp_walk{.loop_steps = 40000, .sparse = true};

// Where the scan over T ends: an equation of the V-phase only may be cut at T(LV).
double scan_end(const CurveRun& run) {
    return run.TLimit > 0.0 && run.in.p < run.pcr ? run.TLimit * run.f.TFactor : run.XMin;
}

// The point at T: y over T, or over another function; value gives a function in molar units.
template <class Value>
void add_state(CurveRun& run, double T, InsideBy rule, const Value& value) {
    const double p = run.in.p, u = run.uFactor_at(T);
    if (run.kind.x == AxisQuantity::T) {
        const double factor = run.kind.y == AxisQuantity::joule_thomson ? 1.0 : u;
        run.add(T * run.f.TFactor, value(run.kind.y) * factor, p, 0.0, rule);
    } else {
        run.add(value(run.kind.x) * u, value(run.kind.y) * u, T, p, rule);
    }
}

// The point at T, v, stable or not.
void add_single(CurveRun& run, double T, double v, InsideBy rule) {
    const double p = run.in.p;
    const CurveFamily family = run.kind.family;
    if (family == CurveFamily::isobar_residual || family == CurveFamily::joule_thomson) {
        const PhaseArrays arrays = ThermoFunc(run.fluid, T, p, v);
        add_state(run, T, rule, [&](AxisQuantity q) {
            return q == AxisQuantity::joule_thomson ? arrays.FuncA[fu_dTdp_h] : residual_value(arrays, q);
        });
        return;
    }
    const StateFunctions at = ThermoState(run.fluid, T, p, v);
    add_state(run, T, rule, [&](AxisQuantity q) { return function_value(run.fluid, at, q); });
}

// The functions between v(L) and v(V), with T(p, v) of the equation.
void function_loop(CurveRun& run, const Saturation& boiling, const IsobarWalk& walk, InsideBy rule) {
    const double least = walk.sparse ? std::fabs(run.dx) / run.f.TFactor : 0.0;
    double last = 0.0;
    const std::vector<double> volumes = loop_volumes(run, boiling, walk.loop_steps);
    for (const double v : volumes) {
        const double T = TpV(run.fluid, run.in.p, run.M / v, true).T;
        if (!(T > 0.0) || std::fabs(T - last) < least || (walk.sparse && !(T < run.Tcr))) continue;
        if (run.below_triple(T)) continue;
        last = T;
        add_single(run, T, v, rule);
    }
    if (!volumes.empty() && !run.below_triple(boiling.T)) add_single(run, boiling.T, boiling.vV, rule);
}

void add_ends(CurveRun& run, const TieLine& ends, InsideBy rule) {
    run.add(ends.X1, ends.Y1, run.in.p, 0.0, rule);
    run.add(ends.X2, ends.Y2, run.in.p, 0.0, rule);
}

// A function over T with its jump at T(LV).
void function_curve(CurveRun& run, const IsobarWalk& walk) {
    const double p = run.in.p;
    const Saturation boiling = TLV_EOS(run.fluid, p);
    if (run.in.SCurve) return function_loop(run, boiling, walk, InsideBy::y);
    const std::vector<double> T = falling_T(run, run.XMax, scan_end(run), walk.beyond, walk.clamp);
    StateColumns states;
    stable_states(run.fluid, boiling, T, p, states);
    run.out.curve.points.reserve(T.size() + 2);
    for (std::size_t i = T.size(); i-- > 0;) {  // rising, so that little is left to sort
        add_state(run, T[i], InsideBy::y,
                  [&](AxisQuantity q) { return function_value(run.fluid, states, i, q); });
    }
    if (boiling.found() && !run.below_triple(boiling.T)) {
        const TieLine ends = TieLineEnds(run, boiling.T, p);
        if (ends.found()) add_ends(run, ends, InsideBy::y);
    }
    run.sort_x();
}

// Points of residual functions or of the Joule-Thomson coefficient at stable states.
void add_residuals(CurveRun& run, const Saturation& boiling, const std::vector<double>& T) {
    StateColumns states;
    stable_states(run.fluid, boiling, T, run.in.p, states);
    for (std::size_t i = 0; i < T.size(); ++i)
        if (states.v[i] > 0.0) add_single(run, T[i], states.v[i], InsideBy::both);
}

}  // namespace

void curve_isobar_functions(CurveRun& run) { function_curve(run, functions_walk); }

void curve_isobar_cp(CurveRun& run) { function_curve(run, cp_walk); }

void curve_isobar_residual(CurveRun& run) {
    constexpr double beyond = 0.9, below_boiling = 0.0001;  // share of a step, [K]
    const double p = run.in.p, end = scan_end(run);
    const Saturation boiling = TLV_EOS(run.fluid, p);
    if (run.in.SCurve) return function_loop(run, boiling, {}, InsideBy::both);
    std::vector<double> T = falling_T(run, run.XMax, end, beyond, false);
    const TieLine ends = boiling.found() && p < run.pcr ? TieLineEnds(run, boiling.T, p) : TieLine{};
    // The scan meets T(LV) once: both ends are drawn there, and it goes on just below.
    const auto meets = [&](double t) { return std::fabs(t - boiling.T) < run.dx / run.f.TFactor; };
    const auto met = ends.found() ? std::ranges::find_if(T, meets) : T.end();
    if (met != T.end() && !run.below_triple(boiling.T)) {
        T.erase(met, T.end());
        add_ends(run, ends, InsideBy::both);
        const double restart = (boiling.T - below_boiling) * run.f.TFactor;
        const std::vector<double> rest = falling_T(run, restart, end, beyond, false);
        T.insert(T.end(), rest.begin(), rest.end());
    }
    add_residuals(run, boiling, T);
    run.sort_x();
}

void curve_joule_thomson(CurveRun& run) {
    const Saturation boiling = TLV_EOS(run.fluid, run.in.p);
    if (run.in.SCurve) return function_loop(run, boiling, {}, InsideBy::both);
    add_residuals(run, boiling, falling_T(run, run.XMax, run.XMin, 0.0, false));
}

void curve_isobar_pairs(CurveRun& run) {
    const double p = run.in.p;
    const Saturation boiling = TLV_EOS(run.fluid, p);
    if (run.in.SCurve) return function_loop(run, boiling, {}, InsideBy::both);
    const auto [from, to] = std::minmax(run.in.process.From, run.in.process.To);
    if (from == to) {
        run.out.Status = CurveStatus::outside;
        return;
    }
    const double step = (to - from) / std::max(run.in.options.Dens, 1);
    std::vector<double> T = scan_values(from, to, step, 0.0, false, run.round_limit());
    std::erase_if(T, [&](double t) { return run.below_triple(t); });
    StateColumns states;
    stable_states(run.fluid, boiling, T, p, states);
    for (std::size_t i = 0; i < T.size(); ++i) {
        add_state(run, T[i], InsideBy::both,
                  [&](AxisQuantity q) { return function_value(run.fluid, states, i, q); });
    }
}

}  // namespace quom
