#include "diagrams/curve_run.h"

#include <algorithm>
#include <cmath>

#include "diagrams/ticks.h"
#include "engine/unit_factors.h"
#include "engine/vapor_pressure.h"

namespace quom {

namespace {

constexpr double absent = std::numeric_limits<double>::quiet_NaN();

}  // namespace

void SortPointsX(std::vector<CurvePoint>& points) { std::ranges::stable_sort(points, {}, &CurvePoint::X); }
void SortPointsY(std::vector<CurvePoint>& points) { std::ranges::stable_sort(points, {}, &CurvePoint::Y); }

CurveRun::CurveRun(const Fluid& the_fluid, const CurveInput& input)
    : fluid(the_fluid),
      in(input),
      kind(kind_info(input.kind)),
      XMin(static_cast<double>(input.range.XMin)),
      XMax(static_cast<double>(input.range.XMax)),
      YMin(static_cast<double>(input.range.YMin)),
      YMax(static_cast<double>(input.range.YMax)),
      dx((XMax - XMin) / std::max(input.options.Dens, 1)),
      dy((YMax - YMin) / std::max(input.options.Dens, 1)),
      f(unit_factors(fluid, input.units, input.T)),
      Tcr(fluid.substance.Tcr),
      pcr(fluid.substance.pcr),
      vcr(fluid.eos.vcrEOS),
      M(fluid.M),
      Ttr_(static_cast<double>(fluid.substance.Ttr)) {
    out.isochore = input.isochore;
    if (!input.options.chkPartialKurve || !fluid.VPhaseOnly || kind.section == Section::database) return;
    const Evp code = fluid.models.EVPKode;
    if (input.T > 0.0) pLimit = pLV_EVP(fluid.substance, input.T, code).value;
    if (input.p > 0.0) TLimit = TLV_EVP(fluid.substance, input.p, code).value;
}

double CurveRun::uFactor_at(double T) const {
    return in.units.EnergyMode == energy_per_RT ? unit_factors(fluid, in.units, T).uFactor : f.uFactor;
}

bool CurveRun::inside(double X, double Y, InsideBy rule) const {
    const bool x = X > XMin && X<XMax, y = Y> YMin && Y < YMax;
    return (x || rule == InsideBy::y) && (y || rule == InsideBy::x);
}

void CurveRun::add(double X, double Y, double Par, double Tag, InsideBy rule) {
    const CurvePoint point{static_cast<float>(X), static_cast<float>(Y), static_cast<float>(Par),
                           static_cast<float>(Tag)};
    for (const float value : {point.X, point.Y, point.Par, point.Tag})
        if (!std::isfinite(value)) return;
    out.curve.points.push_back(point);
    if (inside(X, Y, rule)) out.Outside = false;
}

bool CurveRun::below_triple(double T) {
    if (!(T < Ttr_)) return false;
    if (in.options.chkCurveTpRestricted) return true;
    out.Status = CurveStatus::below_triple;
    return false;
}

bool CurveRun::knows_saturation() const {
    return !fluid.VPhaseOnly && fluid.has_eos() && Tcr > 0.0 && pcr > 0.0;
}

std::size_t CurveRun::round_limit() const {
    return 20 * static_cast<std::size_t>(std::max(in.options.Dens, 1)) + 1000;
}

std::vector<double> CurveRun::scan_x(double from, double to, double step, double beyond, bool clamp) const {
    std::vector<double> x = scan_values(from, to, step, beyond, clamp, round_limit());
    const double high = std::max(from, to), low = log_low(std::min(from, to), high);
    if (!in.LogX || x.empty() || !(low > 0.0) || !(low < high)) return x;
    const int n = std::max(in.options.Dens, 2);
    for (int i = 1; i < n; ++i) x.push_back(low * std::pow(high / low, static_cast<double>(i) / n));
    if (step > 0.0)
        std::ranges::sort(x);
    else
        std::ranges::sort(x, std::ranges::greater());
    return x;
}

std::vector<double> scan_values(double from, double to, double step, double beyond, bool clamp,
                                std::size_t most) {
    std::vector<double> values;
    if (!std::isfinite(from) || !std::isfinite(to) || !std::isfinite(step) || step == 0.0) return values;
    const double direction = step > 0.0 ? 1.0 : -1.0;
    const double end = to + beyond * step;
    for (double x = from; direction * (end - x) >= 0.0 && values.size() < most; x += step) {
        if (x + step == x && !values.empty()) break;
        values.push_back(clamp && direction * (x - to) > 0.0 ? to : x);
    }
    return values;
}

double function_value(const Fluid& fluid, const StateFunctions& state, AxisQuantity q) {
    switch (q) {
        case AxisQuantity::u:
            return state.u;
        case AxisQuantity::h:
            return state.h;
        case AxisQuantity::s:
            return state.s;
        case AxisQuantity::g:
            return state.g;
        case AxisQuantity::a:
            return state.a;
        case AxisQuantity::eH:
            return state.eH;
        case AxisQuantity::eU:
            return state.eU;
        case AxisQuantity::cp:
            return state.cp;
        case AxisQuantity::cV:
            return state.cV;
        case AxisQuantity::TSurr_s:
            return fluid.environment.T * state.s;
        default:
            return absent;
    }
}

double function_value(const Fluid& fluid, const StateColumns& states, std::size_t i, AxisQuantity q) {
    const Environment& environment = fluid.environment;
    const auto exists = [&] { return environment.reason == Reason::none; };
    switch (q) {
        case AxisQuantity::u:
            return states.u[i];
        case AxisQuantity::h:
            return states.h[i];
        case AxisQuantity::s:
            return states.s[i];
        case AxisQuantity::g:
            return states.g[i];
        case AxisQuantity::a:
            return states.a[i];
        case AxisQuantity::cp:
            return states.cp[i];
        case AxisQuantity::cV:
            return states.cV[i];
        case AxisQuantity::TSurr_s:
            return environment.T * states.s[i];
        case AxisQuantity::eH:
            return exists()
                       ? exergy_of_h(environment, environment_phase(environment), states.h[i], states.s[i])
                       : absent;
        case AxisQuantity::eU:
            return exists() ? exergy_of_u(environment, environment_phase(environment), states.u[i],
                                          states.s[i], states.v[i])
                            : absent;
        default:
            return absent;
    }
}

}  // namespace quom
