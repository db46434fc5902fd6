// Isotherms of the thermodynamic functions: over p, residual functions over p, over v.
#include <algorithm>
#include <cmath>
#include <limits>

#include "diagrams/isotherm_states.h"
#include "engine/ideal_gas.h"

namespace quom {
namespace {

constexpr int FunctionLoopSteps = 30000;
constexpr double LoopStep = 1.5;       // dx that p moves between two points of a loop
constexpr double LowestLogP = 0.1;     // [kPa], of functions with ln p along a loop
constexpr double ReplacementP = 0.01;  // [kPa], for a p below 0
constexpr double Margin = 1.04;        // of v over b

bool has_ln_p(AxisQuantity q) {
    return q != AxisQuantity::u && q != AxisQuantity::h && q != AxisQuantity::cp && q != AxisQuantity::cV &&
           q != AxisQuantity::residual_h && q != AxisQuantity::residual_cp;
}

// The jump at p(LV); p rises through it from the vapor to the liquid.
void add_tie_line_ends(CurveRun& run, const Saturation& sat) {
    if (!sat.found()) return;
    const TieLine line = TieLineEnds(run, run.in.T, sat.p);
    if (!line.found()) return;
    run.add(line.X2, line.Y2, run.in.T);
    run.add(line.X1, line.Y1, run.in.T);
}

// y(states, i, p [kPa]) at the stable states of p [kPa].
template <class Function>
void add_over_p(CurveRun& run, const Saturation& sat, const std::vector<double>& p, const Function& y) {
    const StateColumns states = stable_states(run, sat, p);
    run.out.curve.points.reserve(p.size() + 2);
    for (std::size_t i = 0; i < p.size(); ++i)
        run.add(p[i] * run.f.pFactor, y(states, i, p[i]) * run.f.uFactor, run.in.T);
}

// The same along the loop, from the liquid to the vapor.
template <class Function>
void loop_over_p(CurveRun& run, const Saturation& sat, const Function& y) {
    LoopWalk walk{.from = sat.vL,
                  .to = sat.vV,
                  .steps = FunctionLoopSteps,
                  .moved = LoopStep * std::fabs(run.dx) / run.f.pFactor};
    if (has_ln_p(run.kind.y)) walk.lowest_p = LowestLogP;
    std::vector<double> v = loop_volumes(sat.eos, walk);
    v.push_back(sat.vV);
    const VolumeStates at = states_at_volumes(run, std::move(v));
    run.out.curve.points.reserve(at.v.size());
    for (std::size_t i = 0; i < at.v.size(); ++i)
        run.add(at.p[i] * run.f.pFactor, y(at.columns, i, at.p[i]) * run.f.uFactor, run.in.T);
}

// From displayed units [kPa].
void divide(std::vector<double>& x, double factor) {
    for (double& value : x) value /= factor;
}

// Residual functions out of the columns of a batch; where they are small against the functions themselves,
// or there is no cp(idG), from the arrays of the single state.
class ResidualFunction {
 public:
    explicit ResidualFunction(const CurveRun& run)
        : fluid_(run.fluid), T_(run.in.T), q_(run.kind.y), ideal_(IdGasFunc(run.fluid, run.in.T, 1.0)) {}

    // h - h_idG, (h - h_idG - g_res)/T, g_res = R T ln phi, cp - cp_idG [kJ/kmol], [kJ/(kmol K)]
    double operator()(const StateColumns& states, std::size_t i, double p) const {
        const double RT = RGas * T_, g = RT * states.lnphi[i], h = states.h[i] - ideal_.h;
        double value = std::numeric_limits<double>::quiet_NaN(), scale = RT;
        if (q_ == AxisQuantity::residual_g) {
            value = g;
        } else if (q_ == AxisQuantity::residual_h) {
            value = h;
            scale += std::fabs(states.h[i]);
        } else if (q_ == AxisQuantity::residual_s) {
            value = (h - g) / T_;
            scale = (scale + std::fabs(states.h[i])) / T_;
        } else if (q_ == AxisQuantity::residual_cp) {
            value = states.cp[i] - ideal_.cp;
            scale = RGas + std::fabs(states.cp[i]);
        }
        if (std::fabs(value) >= Share * scale) return value;
        return residual_value(ThermoFunc(fluid_, T_, p, states.v[i]), q_);
    }

 private:
    static constexpr double Share = 1e-4;  // the columns are good for some 1e-15 of the scale
    const Fluid& fluid_;
    double T_;
    AxisQuantity q_;
    IdealGas ideal_;
};

// Volumes [m^3/kmol] of the scan over v; where it comes to the liquid it goes on behind the vapor.
std::vector<double> stable_volumes(const CurveRun& run, const Saturation& sat) {
    const double step = 0.5 * run.dx;
    const auto scan = [&](double from) {
        auto v = run.scan_x(from, run.XMax, step, 0.9, true);
        divide(v, run.f.vFactor);
        return v;
    };
    std::vector<double> volumes = scan(run.XMin);
    if (sat.found()) {
        const auto liquid_end = std::ranges::find_if(volumes, [&](double v) { return v >= sat.vL; });
        if (liquid_end != volumes.end() && *liquid_end < sat.vV) {
            volumes.erase(liquid_end, volumes.end());
            std::ranges::copy(scan(sat.vV * run.f.vFactor), std::back_inserter(volumes));
        }
    }
    const double lowest = std::max({0.0, Margin * EOSParT(run.fluid, run.in.T).b, run.fluid.eos.EOSb});
    std::erase_if(volumes, [&](double v) { return !(v > lowest); });
    return volumes;
}

// Volumes [m^3/kmol] of the loop. p [kPa] is compared with the step of v as displayed.
std::vector<double> unstable_volumes(const CurveRun& run, const Saturation& sat) {
    const double F = run.f.vFactor;
    std::vector<double> x = scan_values(sat.vL * F, sat.vV * F, 0.5 * run.dx, 0.0, false, run.round_limit());
    divide(x, F);
    const bool positive = has_ln_p(run.kind.y);
    std::vector<double> volumes;
    double last = std::numeric_limits<double>::infinity();
    for (const double v : x) {
        const double p = pressure_at(sat.eos, v);
        if ((positive && !(p > 0.0)) || !(std::fabs(p - last) >= run.dx)) continue;
        if (!(v > sat.vL) || !(v < sat.vV)) continue;
        volumes.push_back(v);
        last = p;
    }
    return volumes;
}

void add_over_v(CurveRun& run, double v, double p, double value) {
    const double y = run.kind.y == AxisQuantity::cV ? std::fabs(value) : value;
    run.add(v * run.f.vFactor, y * run.f.uFactor, p, run.in.T);
}

}  // namespace

void curve_isotherm_functions_p(CurveRun& run) {
    if (!std::isfinite(run.dx) || run.below_triple(run.in.T)) return;
    const Saturation sat = isotherm_saturation(run);
    const AxisQuantity q = run.kind.y;
    const auto y = [&](const StateColumns& states, std::size_t i, double) {
        return function_value(run.fluid, states, i, q);
    };
    if (run.in.SCurve) {
        if (!has_loop(run, sat)) return;
        loop_over_p(run, sat, y);
        // The last point sets the flag that every other point clears.
        const std::vector<CurvePoint>& points = run.out.curve.points;
        if (points.empty()) return;
        if (run.inside(static_cast<double>(points.back().X), static_cast<double>(points.back().Y)))
            run.out.Outside = true;
        return;
    }
    std::vector<double> p = run.scan_x(upper_p(run), run.XMin, -run.dx, 0.9, false);
    const double lowest = run.in.LogX ? 0.0 : 0.1 * run.dx;
    std::erase_if(p, [&](double x) { return !(x > lowest); });
    divide(p, run.f.pFactor);
    add_over_p(run, sat, p, y);
    add_tie_line_ends(run, sat);
    run.sort_x();
}

void curve_isotherm_residual(CurveRun& run) {
    if (!std::isfinite(run.dx) || run.below_triple(run.in.T)) return;
    const Saturation sat = isotherm_saturation(run);
    const ResidualFunction y(run);
    if (run.in.SCurve) {
        if (has_loop(run, sat)) loop_over_p(run, sat, y);
        return;
    }
    std::vector<double> p = run.scan_x(upper_p(run), run.XMin, -run.dx, 0.0, false);
    divide(p, run.f.pFactor);
    std::erase_if(p, [](double value) { return !(value > 0.0); });
    add_over_p(run, sat, p, y);
    if (!p.empty() && p.back() < sat.p) add_tie_line_ends(run, sat);
    run.sort_x();
}

void curve_isotherm_functions_v(CurveRun& run) {
    const double T = run.in.T;
    if (!std::isfinite(run.dx) || run.below_triple(T) || !run.fluid.has_eos()) return;
    const Saturation sat = isotherm_saturation(run);
    const bool loop = run.in.SCurve, two_phases = T < run.Tcr && !run.fluid.VPhaseOnly;
    if (loop && !has_loop(run, sat)) return;
    if (two_phases && !sat.found()) return;
    const auto single = [&](double p, double v) {
        return function_value(run.fluid, ThermoState(run.fluid, T, p, v), run.kind.y);
    };
    const VolumeStates at =
        states_at_volumes(run, loop ? unstable_volumes(run, sat) : stable_volumes(run, sat));
    run.out.curve.points.reserve(at.v.size() + 2);
    for (std::size_t i = 0; i < at.v.size(); ++i) {
        const double v = at.v[i], p = at.p[i];
        if (!loop && p <= 0.0) {
            add_over_v(run, v, ReplacementP, single(ReplacementP, v));
        } else {
            add_over_v(run, v, p, function_value(run.fluid, at.columns, i, run.kind.y));
        }
    }
    if (two_phases) {
        add_over_v(run, sat.vL, sat.p, single(sat.p, sat.vL));
        add_over_v(run, sat.vV, sat.p, single(sat.p, sat.vV));
    }
    if (two_phases || std::fabs(T - run.Tcr) < 0.01) run.sort_x();
}

}  // namespace quom
