#include "engine/saturation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/reduced_saturation.h"

namespace quom {
namespace {

constexpr double SmallestP = 1e-10;  // [kPa], no T(LV) is searched below it

// So near to the critical point, as part of Tcr or pcr, that the three roots are one in double precision.
constexpr double CriticalBand = 1e-7;

// What keeps a fluid from having saturation at all.
Reason refusal(const Fluid& fluid) {
    if (fluid.eos_row().family == EosFamily::none) return Reason::no_equation;
    if (fluid.VPhaseOnly) return Reason::vapor_only;
    return fluid.eos_reason;
}

// Saturation at T = Tcr: every volume is that of the equation's critical point.
Saturation critical_point(const Fluid& fluid) {
    const double v = fluid.eos.vcrEOS;
    return {.T = fluid.substance.Tcr,
            .p = fluid.substance.pcr,
            .vL = v,
            .vMiddle = v,
            .vV = v,
            .eos = EOSParT(fluid, fluid.substance.Tcr)};
}

// Within CriticalBand: every volume is the one root at T, p.
Saturation near_critical(const Fluid& fluid, double T, double p) {
    const EosAtT eos = EOSParT(fluid, T);
    const CubicRoots roots = CubicV(eos, p);
    const double v = roots.reason == Reason::none ? roots.VRoot[0] : fluid.eos.vcrEOS;
    return {.T = T, .p = p, .vL = v, .vMiddle = v, .vV = v, .eos = eos};
}

// Integral of a/((v + c)(v + d)) dv from y to z:
//     a/(d - c) ln((z + c)(y + d)/((y + c)(z + d))), for c = d a (1/(y + c) - 1/(z + c))
double attraction_integral(const EosAtT& eos, double y, double z) {
    if (eos.c == eos.d) return eos.a * (1.0 / (y + eos.c) - 1.0 / (z + eos.c));
    const double ratio = (z + eos.c) * (y + eos.d) / ((y + eos.c) * (z + eos.d));
    return eos.a / (eos.d - eos.c) * std::log(ratio);
}

// t = R T b/a of the reduced curve
double reduced_t(const EosAtT& eos) { return RGas * eos.T * eos.b / eos.a; }

// Saturation at the T of eos, p, from the reduced curve, t on it:
//
//     v(L) = b (1 + w(L)),   w(V) = z(V) t/p',   w(M) = m/(w(L) z(V)),   p' = p b^2/a,
//
// w(M) of the middle root from the product t m/p' of the three. The areas are equal there:
//     g1/(R T) = ln(w(V)/w(M)) - (1/t) times the integral of dw/N from w(M) to w(V) - (w(V) - w(M)) p'/t
Saturation saturated_at(const SaturationTable& table, const EosAtT& eos, double t, double p) {
    const ReducedSaturation at = reduced_saturation(table, t);
    const double b = eos.b, wM = table.m / (at.wL * at.zV), wV = at.zV * t * eos.a / (p * b * b);
    Saturation r{.T = eos.T, .p = p, .eos = eos};
    r.vL = b + b * at.wL;
    r.vMiddle = b + b * wM;
    r.vV = b + b * wV;
    const double attraction = attraction_integral(eos, r.vMiddle, r.vV);
    r.g1 = RGas * eos.T * std::log(wV / wM) - p * (r.vV - r.vMiddle) - attraction;
    r.g2 = -r.g1;
    return r;
}

Saturation failed(double T, double p, Reason reason) { return {.T = T, .p = p, .eos = {}, .reason = reason}; }

Saturation p_from_curve(const Fluid& fluid, double T) {
    const SaturationTable& table = *fluid.saturation;
    const EosAtT eos = EOSParT(fluid, T);
    const double t = reduced_t(eos);
    if (on_curve(table, t)) {  // p = p' a/b^2
        const double p = std::exp(reduced_saturation(table, t).ln_p) * eos.a / (eos.b * eos.b);
        if (p >= std::numeric_limits<double>::min()) return saturated_at(table, eos, t, p);
    }
    const bool cold = t > 0.0 && t < table.tc;
    return failed(T, 0.0, cold ? Reason::p_too_low : Reason::not_settled);
}

// d ln p(LV)/d ln T at the critical point: k (1 - n) + n with n = d ln a/d ln T there and k = d ln p'/d ln t.
double critical_slope(const Fluid& fluid, double k) {
    const EosBlock& e = fluid.eos;
    double n = e.AlphaForm == 2 ? -e.EOSna : e.EOSna;
    if (fluid.eos_row().family == EosFamily::tovarn_ji) n = -1.5 * (e.JiP3 + (JiBracket - 1.0) * e.JiP4);
    const double slope = k * (1.0 - n) + n;
    return slope > 1.0 ? slope : 1.0;
}

// A point of the curve of X = Tcr/T over ln p.
struct CurvePoint {
    double X = 0, ln_p = 0, slope = 0;  // slope: dX/d ln p
};

// The point at X, t = R T b/a on the reduced curve:
//
//     ln p = ln p'(t) + ln(a/b^2),   d ln p/d ln T = k (1 + T b'/b - T a'/a) + T a'/a - 2 T b'/b,
//     k = d ln p'/d ln t
CurvePoint curve_point(const SaturationTable& table, const EosTerms& eos, double t, double X) {
    const ReducedPressure at = reduced_pressure(table, t);
    const EosAtT& e = eos.at;
    const double a = e.T * eos.k.a1 / e.a, b = e.T * eos.k.b1 / e.b;
    return {.X = X,
            .ln_p = at.ln_p + std::log(e.a / (e.b * e.b)),
            .slope = -X / (at.slope * (1.0 + b - a) + a - 2.0 * b)};
}

// The critical point, with the tangent there.
CurvePoint critical_curve_point(const Fluid& fluid) {
    if (const BoilingCurve* curve = fluid.boiling.get())
        return {.X = 1.0, .ln_p = curve->ln_pcr, .slope = -curve->c[0][1] * curve->cells_per_ln_p};
    return {.X = 1.0,
            .ln_p = std::log(fluid.substance.pcr),
            .slope = -1.0 / critical_slope(fluid, fluid.saturation->slope_c)};
}

// X at ln_p from two points and their slopes: Hermite's cubic, expanded at the second one.
double interpolated(const CurvePoint& k, const CurvePoint& l, double ln_p) {
    const double by_h = 1.0 / (l.ln_p - k.ln_p), e = ln_p - l.ln_p, chord = (l.X - k.X) * by_h;
    const double square = (2.0 * l.slope + k.slope - 3.0 * chord) * by_h;
    const double cubic = (l.slope + k.slope - 2.0 * chord) * by_h * by_h;
    return l.X + e * (l.slope + e * (square + e * cubic));
}

// X at ln_p from the boiling curve of a fluid.
double start_of(const BoilingCurve& curve, double ln_p) {
    const double place = (curve.ln_pcr - ln_p) * curve.cells_per_ln_p;
    const int cell = std::clamp(static_cast<int>(place), 0, BoilingCurve::Cells - 1);
    const double u = place - cell;
    const auto& c = curve.c[cell];
    return c[0] + u * (c[1] + u * (c[2] + u * c[3]));
}

// T(LV) from the reduced curve, on X = Tcr/T over ln p, which is nearly a straight line. The start is the
// fluid's boiling curve, without one the tangent in the critical point. A round lays a cubic through the last
// two points, or the tangent when the step is small. The sign of ln p(LV) - ln p bounds X; a step that leads
// out of the bounds is replaced by the middle.
Saturation T_from_curve(const Fluid& fluid, double p) {
    const SaturationTable& table = *fluid.saturation;
    const double Tcr = fluid.substance.Tcr, ln_p = std::log(p);
    CurvePoint last = critical_curve_point(fluid);
    double X = fluid.boiling ? start_of(*fluid.boiling, ln_p) : last.X + last.slope * (ln_p - last.ln_p);
    double low = 1.0, high = HUGE_VAL;
    for (int round = 0; round < 100; ++round) {
        const EosTerms eos = EOSTerme(fluid, Tcr / X);
        const double t = reduced_t(eos.at);
        double next = HUGE_VAL;
        if (on_curve(table, t)) {
            const CurvePoint here = curve_point(table, eos, t, X);
            next = X + here.slope * (ln_p - here.ln_p);
            if (std::fabs(next - X) < 1e-6 * X) {  // the error of the step is of the order of its square
                const EosAtT at = EOSParT(fluid, Tcr / next);
                return saturated_at(table, at, reduced_t(at), p);
            }
            (here.ln_p > ln_p ? low : high) = X;
            if (here.ln_p != last.ln_p) next = interpolated(last, here, ln_p);
            last = here;
        } else {
            (t > 0.0 && t < table.tc ? high : low) = X;
        }
        if (!(next > low && next < high)) next = high < HUGE_VAL ? 0.5 * (low + high) : 2.0 * X;
        X = next;
    }
    return failed(0.0, p, Reason::not_settled);
}

void take_areas(Saturation& r) {
    const CubicRoots roots{.VRoot = {r.vL, r.vMiddle, r.vV}, .nRoots = 3};
    const Areas areas = MaxwellDiff(r.eos, roots, r.p);
    r.fd = areas.fd;
    r.g1 = areas.g1;
    r.g2 = areas.g2;
}

// One end of the interval of a search.
struct Bound {
    double x = 0;
    double area = 0;                    // g1 + g2 with three roots, there
    bool moved = false, three = false;  // has been met; with three roots
};

// Next x between two bounds: the zero of the line through the areas where both have three roots, else the
// middle; that of a wide interval is the geometric one.
double between(const Bound& below, const Bound& above) {
    if (below.three && above.three) {
        const double x = above.x - above.area * (above.x - below.x) / (above.area - below.area);
        if (x > below.x && x < above.x) return x;
    }
    return above.x > 4.0 * below.x ? std::sqrt(below.x * above.x) : 0.5 * (below.x + above.x);
}

// The search of a fluid without a curve, for T or p alike: x is bracketed by the sign of fd, with one root by
// the volume against vcrEOS, and the line through the areas of both ends leads to g1 + g2 = 0 (Illinois rule:
// an end that stays counts half). state(x) gives T, p and a .. d; vapor_above: the vapor is stable above x.
// Without three roots at the end, or with a bound that was never met, there is no result.
template <class State>
Saturation search(const Fluid& fluid, Bound below, Bound above, bool vapor_above, const State& state) {
    constexpr double WideStop = 1e-5, FineStop = 1e-14;  // of fd with a bound not met, of the width
    double previous = 0.0;
    int stays = 0;  // rounds in a row that moved the upper (> 0) or the lower (< 0) bound
    for (int round = 0; round < 200; ++round) {
        const double x = between(below, above);
        Saturation r = state(x);
        const CubicRoots roots = CubicV(r.eos, r.p);
        if (roots.reason != Reason::none) break;
        const bool three = roots.nRoots == 3;
        if (three) {
            r.vL = roots.VRoot[0];
            r.vMiddle = roots.VRoot[1];
            r.vV = roots.VRoot[2];
            take_areas(r);
        }
        const double area = r.g1 + r.g2;
        const bool met = (below.moved && above.moved) || std::fabs(r.fd) < WideStop;
        if (three && met && (area == 0.0 || std::fabs(x - previous) < FineStop * x)) return r;
        if (!(above.x - below.x > FineStop * x)) break;
        const bool vapor = three ? area > 0.0 : roots.VRoot[0] >= fluid.eos.vcrEOS;
        const bool moves_above = vapor == vapor_above;
        (moves_above ? above : below) = {.x = x, .area = area, .moved = true, .three = three};
        stays = moves_above ? std::max(stays, 0) + 1 : std::min(stays, 0) - 1;
        if (stays > 1) below.area *= 0.5;
        if (stays < -1) above.area *= 0.5;
        previous = x;
    }
    return failed(0.0, 0.0, Reason::not_settled);
}

Saturation search_p(const Fluid& fluid, double T) {
    const EosAtT eos = EOSParT(fluid, T);
    Saturation r = search(fluid, {.x = SmallestP}, {.x = fluid.substance.pcr}, false,
                          [&](double p) { return Saturation{.T = T, .p = p, .eos = eos}; });
    if (!r.found()) r.T = T;
    return r;
}

Saturation search_T(const Fluid& fluid, double p) {
    const double Tcr = fluid.substance.Tcr;
    Saturation r = search(fluid, {.x = 0.2 * Tcr}, {.x = Tcr}, true,
                          [&](double T) { return Saturation{.T = T, .p = p, .eos = EOSParT(fluid, T)}; });
    if (!r.found()) r.p = p;
    return r;
}

}  // namespace

Areas MaxwellDiff(const EosAtT& eos, const CubicRoots& roots, double p) {
    const auto& v = roots.VRoot;
    const double RT = RGas * eos.T;
    // Integral of p dv from y to z: R T ln((z - b)/(y - b)) - the attraction
    const auto integral = [&](double z, double y) {
        return RT * std::log((z - eos.b) / (y - eos.b)) - attraction_integral(eos, y, z);
    };
    Areas r;
    r.g1 = integral(v[2], v[1]) - (v[2] - v[1]) * p;
    r.g2 = integral(v[1], v[0]) - (v[1] - v[0]) * p;
    r.fd = (r.g1 + r.g2) / (r.g1 - r.g2);
    if (!std::isfinite(r.fd)) return {.reason = Reason::not_finite};
    return r;
}

Saturation pLV_EOS(const Fluid& fluid, double T) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (const Reason reason = refusal(fluid); reason != Reason::none) return failed(T, 0.0, reason);
    if (!(T >= TinyT) || !std::isfinite(T)) return failed(T, 0.0, Reason::T_not_positive);
    if (T > Tcr) return failed(T, 0.0, Reason::above_critical_T);
    if (T == Tcr) return critical_point(fluid);
    if (T > Tcr * (1.0 - CriticalBand)) return near_critical(fluid, T, pcr);
    return fluid.saturation ? p_from_curve(fluid, T) : search_p(fluid, T);
}

Saturation TLV_EOS(const Fluid& fluid, double p) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (const Reason reason = refusal(fluid); reason != Reason::none) return failed(0.0, p, reason);
    if (!(p > 0.0) || !std::isfinite(p)) return failed(0.0, p, Reason::p_not_positive);
    if (p > pcr) return failed(0.0, p, Reason::above_critical_p);
    if (p == pcr) return critical_point(fluid);
    if (p < SmallestP) return failed(0.0, p, Reason::p_too_low);
    if (p > pcr * (1.0 - CriticalBand)) return near_critical(fluid, Tcr, p);
    return fluid.saturation ? T_from_curve(fluid, p) : search_T(fluid, p);
}

std::shared_ptr<const BoilingCurve> boiling_curve_for(const Fluid& fluid) {
    const double Tcr = fluid.substance.Tcr;
    if (!fluid.saturation || !(fluid.substance.pcr > SmallestP)) return nullptr;
    auto curve = std::make_shared<BoilingCurve>();
    CurvePoint warm = critical_curve_point(fluid);
    const double width = (warm.ln_p - std::log(SmallestP)) / BoilingCurve::Cells;
    curve->ln_pcr = warm.ln_p;
    curve->cells_per_ln_p = 1.0 / width;
    for (int cell = 0; cell < BoilingCurve::Cells; ++cell) {
        const Saturation at = T_from_curve(fluid, std::exp(curve->ln_pcr - (cell + 1) * width));
        if (!at.found()) return nullptr;
        const double t = reduced_t(at.eos);
        const CurvePoint cold = curve_point(*fluid.saturation, EOSTerme(fluid, at.T), t, Tcr / at.T);
        // Hermite's cubic of u = (ln_p(warm) - ln p)/width
        const double rise = cold.X - warm.X, k0 = -width * warm.slope, k1 = -width * cold.slope;
        auto& c = curve->c[cell];
        c[0] = warm.X;
        c[1] = k0;
        c[2] = 3.0 * rise - 2.0 * k0 - k1;
        c[3] = k0 + k1 - 2.0 * rise;
        warm = cold;
    }
    return curve;
}

}  // namespace quom
