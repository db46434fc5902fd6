#include "engine/vapor_pressure.h"

#include <cmath>
#include <cstdlib>
#include <optional>

#include "engine/validity.h"

namespace quom {
namespace {

constexpr int MaxRounds = 900;        // of a Newton search
constexpr double Step = 1e-4;         // relative step that ends a search
constexpr double SmallestP = 1e-35;   // [kPa]
constexpr double SmallestU = 1e-6;    // smallest 1 - T/Tc' of a Wagner set
constexpr double LargestWagner = 50;  // bracket of a Wagner set
constexpr double SmallestSlope = 1e-35;
constexpr int WarnForward = 10, WarnInverse = 5;  // [K] outside the validity without a box
constexpr const char* WarnTitle = "Warning concerning vapor pressure equation";

constexpr std::string_view Tags[] = {"ALP", "AHP", "FRO", "WAG", "AUG", "KFW", "KFR", "THO"};

// x^n; whole and half exponents, which nearly all sets have, without a call of pow.
double power(double x, double n) {
    const double twice = 2.0 * n;
    if (!(std::fabs(twice) <= 40.0) || twice != std::floor(twice)) return std::pow(x, n);
    unsigned k = static_cast<unsigned>(std::fabs(twice));
    double result = k & 1u ? std::sqrt(x) : 1.0;
    for (k >>= 1; k; k >>= 1, x *= x) {
        if (k & 1u) result *= x;
    }
    return n < 0.0 ? 1.0 / result : result;
}

bool is_antoine(int code) {
    return code == evp_antoine_low || code == evp_antoine_high || code == evp_thompson;
}
bool is_frost(int code) { return code == evp_frost_kalkwarf || code == evp_kfw || code == evp_kfr; }

// log10 p = A - B/(C + T - 273.15)
struct Antoine {
    double A, B, C;
    bool missing() const { return A == 0.0 && B == 0.0; }
};
Antoine antoine_set(const SubstanceConstants& c, int code) {
    const auto& k = code == evp_antoine_low ? c.AntLo : code == evp_antoine_high ? c.AntHi : c.THO;
    return {k[0], k[1], static_cast<double>(k[2]) - TZeroC};
}

// log10 p = A + B/(C + T) + D log10 T + E p/T^F + G T + H T^I, with C and F as the equation uses them.
struct Frost {
    double A, B, C, D, E, F, G, H, I;
    bool missing() const { return A == 0.0 && B == 0.0; }
    double p_free(double T) const {  // the terms without p
        double y = A + B / (C + T) + D * std::log10(T);
        if (G != 0.0) y += G * T;
        if (H != 0.0) y += H * power(T, I);
        return y;
    }
};
Frost frost_set(const SubstanceConstants& c, int code) {
    const auto& k = code == evp_frost_kalkwarf ? c.KFDB : code == evp_kfw ? c.KFW : c.KFR;
    Frost f{k[0], k[1], k[2], k[3], k[4], k[5], k[6], k[7], k[8]};
    if (code == evp_frost_kalkwarf) {
        f.C -= TZeroC;
        f.F += 2.0;
    }
    return f;
}

// s = a1 u + a2 u^1.5 + a3 u^e3 + a4 u^e4 + a5 u^e5 and s' = ds/du, u = 1 - T/Tc'.
struct WagnerSum {
    double s = 0.0, s1 = 0.0;
};
WagnerSum wagner_sum(const SubstanceConstants& c, double u, bool with_slope) {
    const auto& k = c.Wagner;
    const double a1 = k[0], a2 = k[1], root = std::sqrt(u);
    WagnerSum w{a1 * u + a2 * u * root, a1 + 1.5 * a2 * root};
    for (std::size_t i = 2; i < 8; i += 2) {
        const double a = k[i], e = k[i + 1];
        if (a == 0.0) continue;
        w.s += a * power(u, e);
        if (with_slope) w.s1 += e * a * power(u, e - 1.0);
    }
    return w;
}

// ln p = A + B/T through the normal boiling point and the critical point; none when one of the three is
// missing.
struct August {
    double A, B;
};
std::optional<August> august_line(const SubstanceConstants& c) {
    const double Tnb = c.Tnb;
    if (!(c.Tcr > TinyT) || !(c.pcr > TinyT) || !(Tnb > TinyT) || Tnb == c.Tcr) return std::nullopt;
    const double B = c.Tcr * Tnb * std::log(c.pcr / pNorm) / (Tnb - c.Tcr);
    return August{std::log(c.pcr) - B / c.Tcr, B};
}
// T of the line at p; 0 when there is none.
double august_T(const SubstanceConstants& c, double p) {
    const auto line = august_line(c);
    return line ? line->B / (std::log(p) - line->A) : 0.0;
}

double p_antoine(const Antoine& k, double T) {
    if (k.missing() || k.C + T <= 0.0) return 0.0;  // at and below the pole
    return std::exp(LnTen * (k.A - k.B / (k.C + T)));
}

double p_frost(const Frost& k, double T) {
    if (k.missing() || k.C + T <= 0.0) return 0.0;
    const double free = k.p_free(T);
    double p = std::exp(LnTen * free);
    if (std::fabs(k.E) < 1e-35) return p;
    const double e = k.E / power(T, k.F);
    for (int round = 0; round < MaxRounds; ++round) {  // Newton on f(p) = E p/T^F + ... - log10 p
        if (!(p >= 1e-120)) return 0.0;
        const double f = e * p + free - std::log10(p);
        const double slope = e - 1.0 / (p * LnTen);
        if (std::fabs(slope) < 1e-50) return 0.0;
        const double dp = -f / slope;
        p += dp;
        if (!std::isfinite(p)) return 0.0;
        if (std::fabs(dp / p) < Step) return p;
    }
    return 0.0;
}

double p_wagner(const SubstanceConstants& c, double T) {
    const double Tc = c.WagnerTcr, u = 1.0 - T / Tc;
    if (!(u >= SmallestU)) return 0.0;
    const double s = wagner_sum(c, u, false).s;
    if (std::fabs(static_cast<float>(s)) > static_cast<float>(LargestWagner)) return 0.0;
    return static_cast<double>(c.Wagnerpcr) * std::exp(s * Tc / T);
}

double p_august(const SubstanceConstants& c, double T) {
    const double A = c.AugustA, B = c.AugustB;
    return B == 0.0 ? 0.0 : std::exp(B / T + A);
}

double p_of(const SubstanceConstants& c, double T, int code) {
    if (is_antoine(code)) return p_antoine(antoine_set(c, code), T);
    if (is_frost(code)) return p_frost(frost_set(c, code), T);
    if (code == evp_wagner) return p_wagner(c, T);
    return code == evp_august ? p_august(c, T) : 0.0;
}

// Codes 1 and 2 test their limits always, so that a missing THi of 0 counts as exceeded.
std::int16_t range_offset(const SubstanceConstants& c, double T, int code) {
    switch (code) {
        case evp_antoine_low:
            return outside_by(T, c.AntLoTLo, c.AntLoTHi);
        case evp_antoine_high:
            return outside_by(T, c.AntHiTLo, c.AntHiTHi);
        case evp_frost_kalkwarf:
            return c.KFTLo > 0 && c.KFTHi > 0 ? outside_by(T, c.KFTLo, c.KFTHi) : std::int16_t{0};
        case evp_wagner:
            return c.WagnerTLo > 0 && c.WagnerTHi > 0 ? outside_by(T, c.WagnerTLo, c.WagnerTHi)
                                                      : std::int16_t{0};
        case evp_august:
            return T < static_cast<double>(c.Tnb) ? whole_kelvin(T - static_cast<double>(c.Tnb))
                                                  : std::int16_t{0};
        default:
            return 0;
    }
}

void tell_range(const Session& s, const std::string& text) {
    s.tell({.title = WarnTitle,
            .text = text + " K outside parameter validity\n(cf. Data/Parameters vapor pressure equ.)",
            .kind = MessageKind::warning});
}

// --- T(LV) -------------------------------------------------------------------------------------------------

struct Value {
    double f = 0.0, slope = 0.0;
};

// Root of f from a start by Newton; 0 when the search leaves T > 0, meets no slope or does not settle.
template <class F>
double newton_T(F f, double T) {
    for (int round = 0; round < MaxRounds; ++round) {
        if (!(T > 0.0) || !std::isfinite(T)) return 0.0;
        const Value v = f(T);
        if (!std::isfinite(v.f) || !(std::fabs(v.slope) >= SmallestSlope)) return 0.0;
        const double dT = -v.f / v.slope;
        T += dT;
        if (std::fabs(dT / T) < Step) return T > 0.0 ? T : 0.0;
    }
    return 0.0;
}

// Root of a rising f between lo and hi by bisection; 0 when there is none.
template <class F>
double bisect_T(F f, double lo, double hi) {
    if (!(f(lo).f <= 0.0) || !(f(hi).f >= 0.0)) return 0.0;
    while (hi - lo > 1e-10 * hi) {
        const double T = 0.5 * (lo + hi);
        (f(T).f < 0.0 ? lo : hi) = T;
    }
    return 0.5 * (lo + hi);
}

double T_antoine(const Antoine& k, double p) {
    const double x = k.A - std::log10(p);
    if (k.missing() || !(k.B / x > 0.0)) return 0.0;  // the branch below the pole is none
    return k.B / x - k.C;
}

double T_frost(const SubstanceConstants& c, int code, double p) {
    const Frost k = frost_set(c, code);
    if (k.missing()) return 0.0;
    const double lg = std::log10(p);
    const auto f = [&](double T) {
        const double e = k.E == 0.0 ? 0.0 : k.E * p / power(T, k.F);
        Value v{k.p_free(T) + e - lg};
        v.slope = -k.B / ((T + k.C) * (T + k.C)) + k.D / (LnTen * T) - k.F * e / T + k.G;
        if (k.H != 0.0) v.slope += k.H * k.I * power(T, k.I - 1.0);
        return v;
    };
    // A root of the vapor pressure curve lies on its rising part (far above T(cr) it falls again) and gives p
    // back.
    const auto holds = [&](double T) {
        return T > 0.0 && f(T).slope > 0.0 && std::fabs(p_frost(k, T) / p - 1.0) < 1e-2;
    };
    if (const double T = newton_T(f, k.B / (lg - k.A) - k.C); holds(T)) return T;
    if (const double T = newton_T(f, august_T(c, p)); holds(T)) return T;
    const double T = bisect_T(f, 0.3 * c.Tcr, c.Tcr);
    return holds(T) ? T : 0.0;
}

double T_wagner(const SubstanceConstants& c, double p) {
    const double Tc = c.WagnerTcr, pc = c.Wagnerpcr;
    double start = static_cast<double>(c.Tnb) > 0.0001 ? august_T(c, p) : 0.0;
    if (!(start >= 0.0001 && start < Tc)) start = 0.8 * c.Tcr;
    const double lnpr = std::log(p / pc);
    const auto f = [&](double T) -> Value {  // F = (Tc'/T) s - ln(p/pc')
        const double u = 1.0 - T / Tc;
        if (!(u >= SmallestU)) return {};
        const WagnerSum w = wagner_sum(c, u, true);
        return {Tc / T * w.s - lnpr, -(Tc * w.s / T + w.s1) / T};
    };
    if (const double T = newton_T(f, start); T > 0.0 || !(Tc > 0.0)) return T;
    return bisect_T(f, std::max(0.3 * Tc, static_cast<double>(c.WagnerTLo)), (1.0 - 2.0 * SmallestU) * Tc);
}

double T_of(const SubstanceConstants& c, double p, int code) {
    if (is_antoine(code)) return T_antoine(antoine_set(c, code), p);
    if (is_frost(code)) return T_frost(c, code, p);
    if (code == evp_wagner) return T_wagner(c, p);
    return code == evp_august ? august_T(c, p) : 0.0;
}

// --- slope -------------------------------------------------------------------------------------------------

// L = -T n4/n5. The square of (C - T) in n1, not of (C + T) as in the equation, belongs to it.
double slope_frost(const Frost& k, double T, double p) {
    const double n1 = -k.B * LnTen / ((k.C - T) * (k.C - T)) + k.G * LnTen;
    const double n2 = k.H == 0.0 ? n1 : power(T, k.I - 1.0) * k.I * k.H * LnTen + n1;
    const double n3 = n2 * T + k.D;
    const double TF = power(T, k.F);
    const double n4 = TF * n3 - k.F * k.E * LnTen * p;
    const double n5 = TF - k.E * LnTen * p;
    return -T * n4 / n5;
}

double slope_wagner(const SubstanceConstants& c, double T) {
    const double Tc = c.WagnerTcr;
    const WagnerSum w = wagner_sum(c, 1.0 - T / Tc, true);
    return T * w.s1 + Tc * w.s;  // -T^2 d/dT (Tc' s/T)
}

}  // namespace

std::string_view evp_tag(int code) {
    return code >= 1 && code <= 8 ? Tags[code - 1] : std::string_view("000");
}

int evp_code(std::string_view tag) {
    for (int code = 1; code <= 8; ++code) {
        if (Tags[code - 1] == tag) return code;
    }
    return evp_none;
}

EvpResult pLV_EVP(Session& s, double T, int code, bool warn) {
    if (!(T >= TinyT)) return {.err = -1};
    const SubstanceConstants& c = s.substance;
    EvpResult r{p_of(c, T, code), range_offset(c, T, code), 0};
    if (warn && std::abs(r.dT) > WarnForward) tell_range(s, " Temperature" + strNum(r.dT));
    if (!(r.value >= SmallestP) || !std::isfinite(r.value)) {
        r.value = 0.0;
        r.err = -1;
    }
    return r;
}

EvpSlope dpLVdT_EVP(Session& s, double T, int code) {
    const EvpResult at = pLV_EVP(s, T, code);
    if (at.err) return {.err = -1};
    const SubstanceConstants& c = s.substance;
    double L = 0.0;
    if (is_antoine(code)) {  // L = -ln10 B T^2/(C - 273.15 + T)^2
        const Antoine k = antoine_set(c, code);
        L = -LnTen * k.B * T * T / ((k.C + T) * (k.C + T));
    } else if (is_frost(code)) {
        L = slope_frost(frost_set(c, code), T, at.value);
    } else if (code == evp_wagner) {
        L = slope_wagner(c, T);
    } else if (const auto line = august_line(c)) {
        L = line->B;
    } else {
        return {.err = -1};
    }
    const float value = static_cast<float>(L);
    if (!std::isfinite(value)) return {.err = -1};
    return {.value = value};
}

EvpResult TLV_EVP(Session& s, double p, int code, bool warn) {
    const SubstanceConstants& c = s.substance;
    if (!(p <= c.pcr) || !(p >= SmallestP)) return {.err = -1};
    const double T = T_of(c, p, code);
    if (!(T >= TinyT) || !std::isfinite(T)) return {.err = -1};
    EvpResult r{T, range_offset(c, T, code), 0};
    if (warn && std::abs(r.dT) > WarnInverse) tell_range(s, "Temperature " + genNum(r.dT));
    return r;
}

void KorreliereEVP(Session& s, int code, float Tcr, float pcr, float Tnb) {
    const double Tc = Tcr, pc = pcr, Tb = Tnb;
    if (!(Tc >= TinyT) || !(Tb >= TinyT) || !(pc >= TinyT) || Tb >= Tc) return;
    SubstanceConstants& c = s.substance;
    const auto single = [](double x) { return static_cast<float>(x); };
    const std::int16_t melting = to_i16(static_cast<double>(c.Ttr));
    if (code == evp_kfw || code == evp_kfr) {
        const double k = code == evp_kfw ? 0.183218 : 0.185652, n = code == evp_kfw ? 2.0 : 2.5;
        const double E = k * power(Tc, n) / pc;
        const double X = pNorm / pc / power(Tb / Tc, n) - 1.0;
        const double Y = std::log10(pNorm / pc) - 2.67 * std::log10(Tb / Tc) - k * X;
        const double W = Tc / Tb - 1.0 + 1.8 * std::log10(Tb / Tc);
        const double B = Tc * Y / W;
        const double D = 1.8 / Tc * B + 2.67;
        const double A = std::log10(pc) - B / Tc - D * std::log10(Tc) - E * pc / power(Tc, n);
        (code == evp_kfw ? c.KFW : c.KFR) = {single(A), single(B), 0, single(D), single(E),
                                             single(n), 0,         0, 0};
        (code == evp_kfw ? c.KFWLimits : c.KFRLimits) = {melting, to_i16(Tc)};
    } else if (code == evp_thompson) {
        const double C = 18.0 - 0.19 * Tb + TZeroC;
        const double B = -std::log10(pc / pNorm) / (1.0 / (C + Tc - TZeroC) - 1.0 / (C + Tb - TZeroC));
        const double A = std::log10(pc) + B / (C + Tc - TZeroC);
        c.THO = {single(A), single(B), single(C)};
        c.THOLimits = {melting, to_i16(Tb)};
    }
}

}  // namespace quom
