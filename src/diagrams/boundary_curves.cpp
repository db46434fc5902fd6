// Functions of the saturated states: the phase boundary in diagrams of a function over p, T, v or another
// function.
#include <algorithm>
#include <cmath>
#include <limits>

#include "diagrams/curve_run.h"
#include "engine/vapor_pressure.h"

namespace quom {
namespace {

using Q = AxisQuantity;

constexpr double LowestP = 1e-6;   // [kPa]; saturation below it is not drawn
constexpr double OnePhase = 1e-7;  // so near to p(cr), as part of it, both phases are the critical point
constexpr double absent = std::numeric_limits<double>::quiet_NaN();

// Saturated states on the way of a scan.
struct SaturationScan {
    std::vector<double> x;     // what runs, in displayed units
    SaturationColumns states;  // at each of x
    double T(std::size_t i) const { return states.T[i]; }
    double p(std::size_t i) const { return states.p[i]; }
    bool found(std::size_t i) const { return states.T[i] > 0.0 && states.p[i] >= LowestP; }
};

// A function by the vapor fraction, in molar units.
double function_between(const CurveRun& run, const SaturationScan& scan, std::size_t i, Q q) {
    return run.between(function_value(run.fluid, scan.states.L, i, q),
                       function_value(run.fluid, scan.states.V, i, q));
}

// cp and cV outside of 0 to 5000 kJ/(kmol K) are none.
bool is_heat_capacity(Q q) { return q == Q::cp || q == Q::cV; }
bool usable_heat_capacity(const CurveRun& run, const SaturationScan& scan, std::size_t i, Q q) {
    constexpr double Largest = 5000.0;
    const double L = function_value(run.fluid, scan.states.L, i, q);
    const double V = function_value(run.fluid, scan.states.V, i, q);
    return L >= 0.0 && L <= Largest && V >= 0.0 && V <= Largest;
}

// cp rises towards the critical point. Where it falls there, the equation of state fails: those points are
// dropped. T falls along the scan.
void drop_falling_cp(const CurveRun& run, const SaturationScan& scan, std::vector<double>& y) {
    constexpr double NearCritical = 0.9;  // T/T(cr); the minimum of cp(L) lies far below
    for (std::size_t i = 0; i + 1 < y.size() && !(scan.T(i) <= NearCritical * run.Tcr); ++i)
        if (y[i] < y[i + 1]) y[i] = absent;
}

// The functions of a scan against what runs.
void draw(CurveRun& run, const SaturationScan& scan, bool Par_is_T) {
    const Q q = run.kind.y;
    std::vector<double> y(scan.x.size(), absent);
    for (std::size_t i = 0; i < y.size(); ++i) {
        if (!scan.found(i)) continue;
        if (is_heat_capacity(q) && !usable_heat_capacity(run, scan, i, q)) continue;
        y[i] = function_between(run, scan, i, q);
    }
    if (q == Q::cp) drop_falling_cp(run, scan, y);
    for (std::size_t i = 0; i < y.size(); ++i)
        run.add(scan.x[i], y[i] * run.uFactor_at(scan.T(i)), Par_is_T ? scan.T(i) : scan.p(i));
}

// Whether a scan from XMax down to XMin passes x; the boundary closes at the critical point then.
bool passes(const CurveRun& run, double x) { return run.XMin < x && x <= run.XMax; }

std::vector<double> falling_x(const CurveRun& run) {
    return run.scan_x(run.XMax, run.XMin, -run.dx, 0.0, false);
}

// Saturated states of p [kPa] by the concept: PARTIAL takes T(LV) of the vapor pressure equation.
void boil(const Fluid& fluid, const std::vector<double>& p, SaturationColumns& states) {
    if (fluid.models.Konzept) return boiling_at(fluid, p, states);
    std::vector<double> T;
    T.reserve(p.size());
    for (const double at : p) T.push_back(TLV_EVP(fluid.substance, at, fluid.models.EVPKode).value);
    saturation_at(fluid, T, states);
}

// Limits of p [kPa] of the boundary of two functions: From and To of its process record, else all of it.
struct Limits {
    double low, high;
};
Limits limits_of_p(const CurveRun& run) {
    constexpr double FirstP = 0.05;
    const auto [low, high] = std::minmax(run.in.process.From, run.in.process.To);
    if (run.in.process.ScanT || !(high > low)) return {FirstP, run.pcr};
    return {std::max(low, FirstP), high};
}

}  // namespace

void curve_boundary_p(CurveRun& run) {
    if (!run.knows_saturation()) return;
    const double pFactor = run.f.pFactor, top = run.pcr * pFactor;
    SaturationScan scan;
    std::vector<double> p;  // [kPa]
    const auto add = [&](double x, double at) {
        scan.x.push_back(x);
        p.push_back(at);
    };
    if (passes(run, top)) add(top, run.pcr);
    for (const double x : falling_x(run)) {
        if (x / pFactor < LowestP) break;
        if (x < top * (1.0 - OnePhase)) add(x, x / pFactor);
    }
    boiling_at(run.fluid, p, scan.states);
    for (std::size_t i = 0; i < scan.x.size(); ++i)
        if (scan.found(i) && run.below_triple(scan.T(i))) scan.x.resize(i);
    draw(run, scan, true);
}

void curve_boundary_T(CurveRun& run) {
    if (!run.knows_saturation()) return;
    const double TFactor = run.f.TFactor, top = run.Tcr * TFactor;
    SaturationScan scan;
    std::vector<double> T;  // [K]
    const auto add = [&](double x, double at) {
        scan.x.push_back(x);
        T.push_back(at);
    };
    if (passes(run, top)) add(top, run.Tcr);
    for (const double x : falling_x(run)) {
        if (x >= top) continue;
        if (x / TFactor < TinyT || run.below_triple(x / TFactor)) break;
        add(x, x / TFactor);
    }
    saturation_at(run.fluid, T, scan.states);
    draw(run, scan, false);
}

void curve_boundary_v(CurveRun& run) {
    constexpr double FirstT = 0.1;   // [K]
    constexpr double FarOff = 50.0;  // vapor volumes beyond this many times XMax are left out
    constexpr double NearB = 1.08;   // so near to the covolume the roots are not to be trusted
    if (!run.knows_saturation()) return;
    const Q q = run.kind.y;
    SaturationScan scan;
    const double step = run.Tcr / std::max(run.in.options.Dens, 1);
    for (const double T : scan_values(FirstT, run.Tcr, step, 0.0, false, run.round_limit()))
        if (!run.below_triple(T)) scan.x.push_back(T);
    const bool closes = q != Q::cV && q != Q::a && run.fluid.eos.rhocrEOS > 0.0;
    if (closes) scan.x.push_back(run.Tcr);
    saturation_at(run.fluid, scan.x, scan.states);
    for (std::size_t i = 0; i < scan.x.size(); ++i) {
        if (!scan.found(i)) continue;
        const double T = scan.T(i), vL = scan.states.L.v[i], vV = scan.states.V.v[i];
        const double lowest = NearB * EOSParT(run.fluid, T).b;
        if (vV * run.f.vFactor > FarOff * run.XMax || !(vL > lowest) || !(vV > lowest)) continue;
        run.add(run.between(vL, vV) * run.f.vFactor, function_between(run, scan, i, q) * run.uFactor_at(T),
                T);
    }
    // The exergy of the liquid has its minimum at the surroundings: sorting would mix its two sides.
    const bool sorted = q == Q::u || q == Q::s;
    if (run.in.VaporFraction == 0.0 && sorted) run.sort_y();
}

void curve_boundary_pairs(CurveRun& run) {
    if (!run.knows_saturation()) return;
    const Limits limits = limits_of_p(run);
    const double step = 0.3 * (limits.high - limits.low) / std::max(run.in.options.Dens, 1);
    if (!(step > 0.0)) return;
    SaturationScan scan;  // over p [kPa]
    scan.x = scan_values(limits.low, std::min(limits.high, run.pcr), step, 0.0, false, run.round_limit());
    boil(run.fluid, scan.x, scan.states);
    const auto add = [&](std::size_t i) {
        const double uFactor = run.uFactor_at(scan.T(i));
        run.add(function_between(run, scan, i, run.kind.x) * uFactor,
                function_between(run, scan, i, run.kind.y) * uFactor, scan.x[i]);
    };
    for (std::size_t i = 0; i < scan.x.size(); ++i)
        if (scan.found(i) && scan.T(i) < run.Tcr && !run.below_triple(scan.T(i))) add(i);
    if (!(limits.high >= run.pcr)) return;
    scan.x = {run.pcr};
    saturation_at(run.fluid, {&run.Tcr, 1}, scan.states);
    add(0);
}

}  // namespace quom
