#include "engine/vapor_pressure.h"

#include <cmath>

#include "engine/validity.h"

namespace quom {
namespace {

constexpr int MaxRounds = 900;        // of a Newton search
constexpr double Step = 1e-4;         // relative step that ends a search
constexpr double SmallestP = 1e-35;   // [kPa]
constexpr double SmallestU = 1e-6;    // smallest 1 - T/Tc of a Wagner set
constexpr double LargestWagner = 50;  // bracket of a Wagner set
constexpr double SmallestSlope = 1e-35;

// x^n; whole and half exponents, which nearly all sets have, without a call of pow.
double power(double x, double n) {
    const double twice = 2.0 * n;
    if (!(std::fabs(twice) <= 40.0) || twice != std::floor(twice)) return std::pow(x, n);
    unsigned k = static_cast<unsigned>(std::fabs(twice));
    double result = k & 1u ? std::sqrt(x) : 1.0;
    for (k >>= 1; k; k >>= 1) {
        if (k & 1u) result *= x;
        x *= x;
    }
    return n < 0.0 ? 1.0 / result : result;
}

// Antoine (1888): log10 p = A - B/(C + T - 273.15). C here is that of the set less 273.15.
struct Antoine {
    double A, B, C;
    bool missing() const { return A == 0.0 && B == 0.0; }
};
Antoine antoine_set(const SubstanceConstants& substance, Evp code) {
    const auto& k = code == Evp::antoine_low    ? substance.AntLo
                    : code == Evp::antoine_high ? substance.AntHi
                                                : substance.THO;
    return {k[0], k[1], static_cast<double>(k[2]) - TZeroC};
}

// Frost and Kalkwarf (1953), extended by two terms:
//     log10 p = A + B/(C + T) + D log10 T + E p/T^F + G T + H T^I
// with C and F as the equation uses them: those of a database set less 273.15 and plus 2.
struct Frost {
    double A, B, C, D, E, F, G, H, I;
    bool missing() const { return A == 0.0 && B == 0.0; }
    double terms_without_p(double T) const {
        double y = A + B / (C + T) + D * std::log10(T);
        if (G != 0.0) y += G * T;
        if (H != 0.0) y += H * power(T, I);
        return y;
    }
};
Frost frost_set(const SubstanceConstants& substance, Evp code) {
    const auto& k = code == Evp::frost_kalkwarf ? substance.KFDB
                    : code == Evp::kfw          ? substance.KFW
                                                : substance.KFR;
    Frost set{k[0], k[1], k[2], k[3], k[4], k[5], k[6], k[7], k[8]};
    if (code == Evp::frost_kalkwarf) {
        set.C -= TZeroC;
        set.F += 2.0;
    }
    return set;
}

// Wagner (1973), with u = 1 - T/Tc:
//     ln(p/pc) = (Tc/T) s,   s = a1 u + a2 u^1.5 + a3 u^e3 + a4 u^e4 + a5 u^e5
// The slope is ds/du.
struct WagnerSum {
    double s = 0.0, slope = 0.0;
};
WagnerSum wagner_sum(const SubstanceConstants& substance, double u, bool with_slope) {
    const auto& k = substance.Wagner;
    const double a1 = k[0], a2 = k[1], root = std::sqrt(u);
    WagnerSum sum{a1 * u + a2 * u * root, a1 + 1.5 * a2 * root};
    for (std::size_t i = 2; i < 8; i += 2) {
        const double a = k[i], e = k[i + 1];
        if (a == 0.0) continue;
        sum.s += a * power(u, e);
        if (with_slope) sum.slope += e * a * power(u, e - 1.0);
    }
    return sum;
}

// August (1828): ln p = A + B/T, through the normal boiling point and the critical point:
//     B = Tcr Tnb ln(pcr/101.325)/(Tnb - Tcr),   A = ln pcr - B/Tcr
// None when one of the three constants is missing.
struct August {
    double A, B;
};
std::optional<August> august_line(const SubstanceConstants& substance) {
    const double Tcr = substance.Tcr, pcr = substance.pcr, Tnb = substance.Tnb;
    if (!(Tcr > TinyT) || !(pcr > TinyT) || !(Tnb > TinyT) || Tnb == Tcr) return std::nullopt;
    const double B = Tcr * Tnb * std::log(pcr / pNorm) / (Tnb - Tcr);
    return August{std::log(pcr) - B / Tcr, B};
}
// T of the line at p; 0 when there is none.
double august_T(const SubstanceConstants& substance, double p) {
    const auto line = august_line(substance);
    return line ? line->B / (std::log(p) - line->A) : 0.0;
}

double p_antoine(const Antoine& set, double T) {
    if (set.missing() || set.C + T <= 0.0) return 0.0;  // at and below the pole
    return std::exp(LnTen * (set.A - set.B / (set.C + T)));
}

// The equation is implicit in p: Newton on f(p) = E p/T^F + terms without p - log10 p.
double p_frost(const Frost& set, double T) {
    if (set.missing() || set.C + T <= 0.0) return 0.0;
    const double terms = set.terms_without_p(T);
    double p = std::exp(LnTen * terms);
    if (std::fabs(set.E) < 1e-35) return p;
    const double e = set.E / power(T, set.F);
    for (int round = 0; round < MaxRounds; ++round) {
        if (!(p >= 1e-120)) return 0.0;
        const double f = e * p + terms - std::log10(p);
        const double slope = e - 1.0 / (p * LnTen);
        if (std::fabs(slope) < 1e-50) return 0.0;
        const double dp = -f / slope;
        p += dp;
        if (!std::isfinite(p)) return 0.0;
        if (std::fabs(dp / p) < Step) return p;
    }
    return 0.0;
}

double p_wagner(const SubstanceConstants& substance, double T) {
    const double Tc = substance.WagnerTcr, u = 1.0 - T / Tc;
    if (!(u >= SmallestU)) return 0.0;
    const double s = wagner_sum(substance, u, false).s;
    if (std::fabs(static_cast<float>(s)) > static_cast<float>(LargestWagner)) return 0.0;
    return static_cast<double>(substance.Wagnerpcr) * std::exp(s * Tc / T);
}

// With A and B of the record.
double p_august(const SubstanceConstants& substance, double T) {
    const double A = substance.AugustA, B = substance.AugustB;
    return B == 0.0 ? 0.0 : std::exp(B / T + A);
}

double p_of(const SubstanceConstants& substance, double T, Evp code) {
    switch (evp_info(code).form) {
        case EvpForm::antoine:
            return p_antoine(antoine_set(substance, code), T);
        case EvpForm::frost_kalkwarf:
            return p_frost(frost_set(substance, code), T);
        case EvpForm::wagner:
            return p_wagner(substance, T);
        case EvpForm::august:
            return p_august(substance, T);
        case EvpForm::none:
            break;
    }
    return 0.0;
}

// No set of this equation in the record.
bool has_no_set(const SubstanceConstants& substance, Evp code) {
    switch (evp_info(code).form) {
        case EvpForm::antoine:
            return antoine_set(substance, code).missing();
        case EvpForm::frost_kalkwarf:
            return frost_set(substance, code).missing();
        case EvpForm::wagner:
            return !(substance.WagnerTcr > 0.0f);
        case EvpForm::august:
            return substance.AugustB == 0.0f;
        case EvpForm::none:
            break;
    }
    return true;
}

// Why an equation has no p at T.
Reason reason_at_T(const SubstanceConstants& substance, double T, Evp code) {
    if (has_no_set(substance, code)) return Reason::no_vapor_pressure_equation;
    if (evp_info(code).form == EvpForm::wagner &&
        !(1.0 - T / static_cast<double>(substance.WagnerTcr) >= SmallestU))
        return Reason::above_wagner_T;
    return Reason::no_vapor_pressure;
}

// Both Antoine equations of the database test their limits always, so that a missing THi of 0 counts as
// exceeded.
std::int16_t range_offset(const SubstanceConstants& substance, double T, Evp code) {
    const double Tnb = substance.Tnb;
    const TLimits limits = evp_limits(substance, code);
    switch (code) {
        case Evp::antoine_low:
        case Evp::antoine_high:
            return outside_by(T, limits.TLo, limits.THi);
        case Evp::frost_kalkwarf:
        case Evp::wagner:
            return limits.TLo > 0 && limits.THi > 0 ? outside_by(T, limits.TLo, limits.THi) : std::int16_t{0};
        case Evp::august:
            return T < Tnb ? whole_kelvin(T - Tnb) : std::int16_t{0};
        default:
            return 0;
    }
}

// A correlated set reaches from T(tr) to T(nb) or T(cr). Where T(nb) lies below T(tr) the limits cross: there
// is no range.
TLimits correlated_limits(TLimits limits) { return limits.TLo > limits.THi ? TLimits{} : limits; }

struct Value {
    double f = 0.0, slope = 0.0;
};

// Root of f from a start by Newton; 0 when the search leaves T > 0, meets no slope or does not settle.
template <class F>
double newton_T(F f, double T) {
    for (int round = 0; round < MaxRounds; ++round) {
        if (!(T > 0.0) || !std::isfinite(T)) return 0.0;
        const Value at = f(T);
        if (!std::isfinite(at.f) || !(std::fabs(at.slope) >= SmallestSlope)) return 0.0;
        const double dT = -at.f / at.slope;
        T += dT;
        if (std::fabs(dT / T) < Step) return T > 0.0 ? T : 0.0;
    }
    return 0.0;
}

// Root of a rising f between lo and hi by bisection; 0 when there is none.
template <class F>
double bisect_T(F f, double lo, double hi) {
    if (!(f(lo).f <= 0.0) || !(f(hi).f >= 0.0)) return 0.0;
    for (int round = 0; round < MaxRounds && hi - lo > 1e-10 * hi; ++round) {
        const double T = 0.5 * (lo + hi);
        (f(T).f < 0.0 ? lo : hi) = T;
    }
    return 0.5 * (lo + hi);
}

// T = B/(A - log10 p) - C, with C less 273.15.
double T_antoine(const Antoine& set, double p) {
    const double x = set.A - std::log10(p);
    if (set.missing() || !(set.B / x > 0.0)) return 0.0;  // the branch below the pole is none
    return set.B / x - set.C;
}

// Newton in T on the implicit equation at fixed p,
//     df/dT = -B/(T + C)^2 + D/(ln10 T) - F E p/T^(F + 1) + G + H I T^(I - 1)
double T_frost(const SubstanceConstants& substance, Evp code, double p) {
    const Frost set = frost_set(substance, code);
    if (set.missing()) return 0.0;
    const double lg = std::log10(p);
    const auto f = [&](double T) {
        const double e = set.E == 0.0 ? 0.0 : set.E * p / power(T, set.F);
        Value at{set.terms_without_p(T) + e - lg};
        at.slope = -set.B / ((T + set.C) * (T + set.C)) + set.D / (LnTen * T) - set.F * e / T + set.G;
        if (set.H != 0.0) at.slope += set.H * set.I * power(T, set.I - 1.0);
        return at;
    };
    // A root of the vapor pressure curve lies on its rising part (far above T(cr) it falls again) and gives p
    // back.
    const auto holds = [&](double T) {
        return T > 0.0 && f(T).slope > 0.0 && std::fabs(p_frost(set, T) / p - 1.0) < 1e-2;
    };
    if (const double T = newton_T(f, set.B / (lg - set.A) - set.C); holds(T)) return T;
    if (const double T = newton_T(f, august_T(substance, p)); holds(T)) return T;
    const double T = bisect_T(f, 0.3 * substance.Tcr, substance.Tcr);
    return holds(T) ? T : 0.0;
}

// Newton on F(T) = (Tc/T) s - ln(p/pc), dF/dT = -(Tc s/T + ds/du)/T, from the August line.
double T_wagner(const SubstanceConstants& substance, double p) {
    const double Tc = substance.WagnerTcr, pc = substance.Wagnerpcr;
    double start = static_cast<double>(substance.Tnb) > 0.0001 ? august_T(substance, p) : 0.0;
    if (!(start >= 0.0001 && start < Tc)) start = 0.8 * substance.Tcr;
    const double lnpr = std::log(p / pc);
    const auto f = [&](double T) -> Value {
        const double u = 1.0 - T / Tc;
        if (!(u >= SmallestU)) return {};
        const WagnerSum sum = wagner_sum(substance, u, true);
        return {Tc / T * sum.s - lnpr, -(Tc * sum.s / T + sum.slope) / T};
    };
    if (const double T = newton_T(f, start); T > 0.0 || !(Tc > 0.0)) return T;
    const double lo = std::max(0.3 * Tc, static_cast<double>(substance.WagnerTLo));
    return bisect_T(f, lo, (1.0 - 2.0 * SmallestU) * Tc);
}

double T_of(const SubstanceConstants& substance, double p, Evp code) {
    switch (evp_info(code).form) {
        case EvpForm::antoine:
            return T_antoine(antoine_set(substance, code), p);
        case EvpForm::frost_kalkwarf:
            return T_frost(substance, code, p);
        case EvpForm::wagner:
            return T_wagner(substance, p);
        case EvpForm::august:
            return august_T(substance, p);
        case EvpForm::none:
            break;
    }
    return 0.0;
}

// d(ln p)/d(1/T) = -T n4/n5 of the Frost/Kalkwarf equation:
//     n1 = -B ln10/(C - T)^2 + G ln10,   n2 = H I T^(I - 1) ln10 + n1,   n3 = n2 T + D
//     n4 = T^F n3 - F E ln10 p,          n5 = T^F - E ln10 p
// The square in n1 is of (C - T), while the equation has C + T; the two agree for C = 0, which every
// correlated set has, and with C = 273.15 the database sets.
double slope_frost(const Frost& set, double T, double p) {
    const double n1 = -set.B * LnTen / ((set.C - T) * (set.C - T)) + set.G * LnTen;
    const double n2 = set.H == 0.0 ? n1 : power(T, set.I - 1.0) * set.I * set.H * LnTen + n1;
    const double n3 = n2 * T + set.D;
    const double TF = power(T, set.F);
    const double n4 = TF * n3 - set.F * set.E * LnTen * p;
    const double n5 = TF - set.E * LnTen * p;
    return -T * n4 / n5;
}

// d(ln p)/d(1/T) = -T^2 d(Tc s/T)/dT = T ds/du + Tc s
double slope_wagner(const SubstanceConstants& substance, double T) {
    const double Tc = substance.WagnerTcr;
    const WagnerSum sum = wagner_sum(substance, 1.0 - T / Tc, true);
    return T * sum.slope + Tc * sum.s;
}

// d(ln p)/d(1/T) = -ln10 B T^2/(C + T)^2
double slope_antoine(const Antoine& set, double T) {
    return -LnTen * set.B * T * T / ((set.C + T) * (set.C + T));
}

// NaN where the line has no slope.
double slope_august(const SubstanceConstants& substance) {
    const auto line = august_line(substance);
    return line ? line->B : std::nan("");
}

double slope_of(const SubstanceConstants& substance, double T, double p, Evp code) {
    switch (evp_info(code).form) {
        case EvpForm::antoine:
            return slope_antoine(antoine_set(substance, code), T);
        case EvpForm::frost_kalkwarf:
            return slope_frost(frost_set(substance, code), T, p);
        case EvpForm::wagner:
            return slope_wagner(substance, T);
        case EvpForm::august:
            return slope_august(substance);
        case EvpForm::none:
            break;
    }
    return std::nan("");
}

// The three constants that a set is correlated from, as singles. The two functions over them are not inlined:
// GCC 12 would let the double constants of the record through, because its vectoriser drops pairs of
// conversions to single and back.
struct BoilingAndCritical {
    float Tcr, pcr, Tnb;
};

// Frost/Kalkwarf through the normal boiling point and the critical point. E is a/(R^2 ln 10) of the equation
// of state that gives the set its name, with k = (27/64)/ln10 and n = 2 (van der Waals) or k = 0.42748/ln10
// and n = 2.5 (Redlich/Kwong); D follows from B by Thodos, in natural logarithms D = 0.7816 B + 2.67 (Reid,
// Prausnitz and Sherwood 1977):
//     E = k Tcr^n/pcr,   F = n,   D = 1.8 B/Tcr + 2.67
//     B = Tcr (log10(pnb/pcr) - 2.67 log10(Tnb/Tcr) - k X)/(Tcr/Tnb - 1 + 1.8 log10(Tnb/Tcr))
//     X = (pnb/pcr)/(Tnb/Tcr)^n - 1,   pnb = 101.325 kPa
//     A = log10 pcr - B/Tcr - D log10 Tcr - E pcr/Tcr^n
[[gnu::noinline]] std::array<float, 9> correlated_frost(const BoilingAndCritical& at, double k, double n) {
    const double Tcr = at.Tcr, pcr = at.pcr, Tnb = at.Tnb;
    const double Tr = Tnb / Tcr, pr = pNorm / pcr, Tn = power(Tcr, n);
    const double E = k * Tn / pcr;
    const double X = pr / power(Tr, n) - 1.0;
    const double Y = std::log10(pr) - 2.67 * std::log10(Tr) - k * X;
    const double W = Tcr / Tnb - 1.0 + 1.8 * std::log10(Tr);
    const double B = Tcr * Y / W;
    const double D = 1.8 / Tcr * B + 2.67;
    const double A = std::log10(pcr) - B / Tcr - D * std::log10(Tcr) - E * pcr / Tn;
    std::array<float, 9> set{};
    set[0] = static_cast<float>(A);
    set[1] = static_cast<float>(B);
    set[3] = static_cast<float>(D);
    set[4] = static_cast<float>(E);
    set[5] = static_cast<float>(n);
    return set;
}

// Antoine through the same two points, with C of Thomson (1946), Tnb in K:
//     C = 18 - 0.19 Tnb + 273.15
//     B = -log10(pcr/101.325)/(1/(C + Tcr - 273.15) - 1/(C + Tnb - 273.15))
//     A = log10 pcr + B/(C + Tcr - 273.15)
[[gnu::noinline]] std::array<float, 3> correlated_antoine(const BoilingAndCritical& at) {
    const double Tcr = at.Tcr, pcr = at.pcr, Tnb = at.Tnb;
    const double C = 18.0 - 0.19 * Tnb + TZeroC;
    const double critical = C + Tcr - TZeroC, boiling = C + Tnb - TZeroC;
    const double B = -std::log10(pcr / pNorm) / (1.0 / critical - 1.0 / boiling);
    const double A = std::log10(pcr) + B / critical;
    return {static_cast<float>(A), static_cast<float>(B), static_cast<float>(C)};
}

}  // namespace

EvpResult pLV_EVP(const SubstanceConstants& substance, double T, Evp code) {
    if (!(T >= TinyT)) return {.reason = Reason::T_not_positive};
    EvpResult r{.value = p_of(substance, T, code), .dT = range_offset(substance, T, code)};
    if (!(r.value >= SmallestP) || !std::isfinite(r.value)) {
        r.value = 0.0;
        r.reason = reason_at_T(substance, T, code);
    }
    return r;
}

EvpSlope dpLVdT_EVP(const SubstanceConstants& substance, double T, Evp code) {
    const EvpResult at = pLV_EVP(substance, T, code);
    if (at.err()) return {.reason = at.reason};
    const float value = static_cast<float>(slope_of(substance, T, at.value, code));
    if (!std::isfinite(value)) return {.reason = Reason::not_finite};
    return {.value = value};
}

EvpResult TLV_EVP(const SubstanceConstants& substance, double p, Evp code) {
    if (!(p > 0.0)) return {.reason = Reason::p_not_positive};
    if (!(p <= substance.pcr)) {
        const bool known = substance.pcr >= TinyT;
        return {.reason = known ? Reason::above_critical_p : Reason::no_critical_data};
    }
    if (!(p >= SmallestP)) return {.reason = Reason::p_too_low};
    const double T = T_of(substance, p, code);
    if (!(T >= TinyT) || !std::isfinite(T)) {
        const bool missing = has_no_set(substance, code);
        return {.reason = missing ? Reason::no_vapor_pressure_equation : Reason::no_T_of_vapor_pressure};
    }
    return {.value = T, .dT = range_offset(substance, T, code)};
}

TLimits evp_limits(const SubstanceConstants& substance, Evp code) {
    switch (code) {
        case Evp::antoine_low:
            return {substance.AntLoTLo, substance.AntLoTHi};
        case Evp::antoine_high:
            return {substance.AntHiTLo, substance.AntHiTHi};
        case Evp::frost_kalkwarf:
            return {substance.KFTLo, substance.KFTHi};
        case Evp::wagner:
            return {substance.WagnerTLo, substance.WagnerTHi};
        case Evp::kfw:
            return correlated_limits(substance.KFWLimits);
        case Evp::kfr:
            return correlated_limits(substance.KFRLimits);
        case Evp::thompson:
            return correlated_limits(substance.THOLimits);
        case Evp::august:
        case Evp::none:
            break;
    }
    return {};
}

std::optional<Warning> evp_warning(const SubstanceConstants& substance, double T, Evp code, std::int16_t dT,
                                   int allowed) {
    std::optional<Warning> warning =
        range_warning(WarningKind::evp_range, T, evp_limits(substance, code), dT, allowed);
    if (warning && evp_info(code).form == EvpForm::august) {
        warning->low = static_cast<double>(substance.Tnb);
        warning->high = substance.Tcr;
    }
    return warning;
}

void KorreliereEVP(SubstanceConstants& substance, Evp code) {
    const BoilingAndCritical at{static_cast<float>(substance.Tcr), static_cast<float>(substance.pcr),
                                substance.Tnb};
    const auto given = [](float x) { return static_cast<double>(x) >= TinyT; };
    if (!given(at.Tcr) || !given(at.pcr) || !given(at.Tnb) || at.Tnb >= at.Tcr) return;
    const std::int16_t melting = to_i16(static_cast<double>(substance.Ttr));
    const std::int16_t critical = to_i16(static_cast<double>(at.Tcr));
    switch (code) {
        case Evp::kfw:
            substance.KFW = correlated_frost(at, 0.183218, 2.0);
            substance.KFWLimits = {melting, critical};
            break;
        case Evp::kfr:
            substance.KFR = correlated_frost(at, 0.185652, 2.5);
            substance.KFRLimits = {melting, critical};
            break;
        case Evp::thompson:
            substance.THO = correlated_antoine(at);
            substance.THOLimits = {melting, to_i16(static_cast<double>(at.Tnb))};
            break;
        default:
            break;
    }
}

}  // namespace quom
