#include "engine/ideal_gas.h"

#include <cmath>

namespace quom {
namespace {

constexpr double LargestArgument = 709.0;  // exp overflows above it

// Shapes of the polynomial set A..E; told by the size of A and E, deliberately not by a stored flag.
enum class Shape { quartic, inverse_square, without_A };
Shape shape_of(const std::array<float, 5>& k) {
    if (std::fabs(k[0]) < 1e-8f) return Shape::without_A;
    return std::fabs(k[4]) < 1.0f ? Shape::quartic : Shape::inverse_square;
}

// h and s of a cp equation between T0 and T, without the zero points.
struct Integral {
    double h = 0, s = 0;
    std::int16_t err = 0;
};

Integral polynomial_integral(const std::array<float, 5>& k, double T, double T0) {
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4];
    const double d1 = T - T0, d2 = T * T - T0 * T0, d3 = T * T * T - T0 * T0 * T0;
    const double d4 = d2 * (T * T + T0 * T0), ln = std::log(T / T0);
    switch (shape_of(k)) {
        case Shape::quartic: {  // cp = A + B T + C T^2 + D T^3 + E T^4
            const double d5 = std::pow(T, 5) - std::pow(T0, 5);
            return {.h = A * d1 + B / 2 * d2 + C / 3 * d3 + D / 4 * d4 + E / 5 * d5,
                    .s = A * ln + B * d1 + C / 2 * d2 + D / 3 * d3 + E / 4 * d4};
        }
        // The E term of s stands without a factor 1/2, so that values agree with older results.
        case Shape::inverse_square:  // cp = A + B T + C T^2 + D T^3 + E/T^2
            return {.h = A * d1 + B / 2 * d2 + C / 3 * d3 + D / 4 * d4 + E * (1 / T0 - 1 / T),
                    .s = A * ln + B * d1 + C / 2 * d2 + D / 3 * d3 - E * (1 / (T * T) - 1 / (T0 * T0))};
        case Shape::without_A:  // cp = B + C T + D T^2 + E/T^2
            return {.h = B * d1 + C / 2 * d2 + D / 3 * d3 + E * (1 / T0 - 1 / T),
                    .s = B * ln + C * d1 + D / 2 * d2 - E * (1 / (T * T) - 1 / (T0 * T0))};
    }
    return {};
}

// x coth x - ln sinh x and coth x; x > 0. x tanh x - ln cosh x and tanh x.
struct HyperbolicTerm {
    double h, s;
};
HyperbolicTerm sinh_term(double x) {
    const double e = std::exp(-2.0 * x);
    const double coth_x = (1.0 + e) / (1.0 - e);
    return {.h = coth_x, .s = x * coth_x - (x + std::log((1.0 - e) * 0.5))};
}
HyperbolicTerm cosh_term(double x) {
    const double size = std::fabs(x), e = std::exp(-2.0 * size);
    const double tanh_x = (1.0 - e) / (1.0 + e);
    return {.h = std::copysign(tanh_x, x), .s = size * tanh_x - (size + std::log((1.0 + e) * 0.5))};
}

// cp = A + B (x1/sinh x1)^2 + D (x2/cosh x2)^2 with x1 = C/T, x2 = E/T.
Integral sinh_integral(const std::array<float, 5>& k, double T, double T0) {
    if (T < 0.1) return {.err = -1};
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4];
    const double x1 = C / T, x2 = E / T, y1 = C / T0, y2 = E / T0;
    const double largest = std::fmax(std::fmax(x1, y1), std::fmax(std::fabs(x2), std::fabs(y2)));
    if (!(x1 > 0.0) || !(y1 > 0.0) || largest > LargestArgument) return {.err = -1};
    const HyperbolicTerm a1 = sinh_term(x1), b1 = sinh_term(y1), a2 = cosh_term(x2), b2 = cosh_term(y2);
    return {.h = A * (T - T0) + B * C * (a1.h - b1.h) - D * E * (a2.h - b2.h),
            .s = A * std::log(T / T0) + B * (a1.s - b1.s) - D * (a2.s - b2.s)};
}

}  // namespace

double sinh(double x, std::int16_t& err) {
    err = std::fabs(x) > LargestArgument ? std::int16_t{-1} : std::int16_t{0};
    return err ? 0.0 : 0.5 * (std::exp(x) - std::exp(-x));
}

double cosh(double x, std::int16_t& err) {
    err = std::fabs(x) > LargestArgument ? std::int16_t{-1} : std::int16_t{0};
    return err ? 0.0 : 0.5 * (std::exp(x) + std::exp(-x));
}

CpResult cpIdG(const Session& s, double T, int form) {
    if (form != 1 && form != 2) return {};
    if (!(T >= TinyT)) return {.err = -1};
    double cp = 0.0;
    CpResult r;
    if (form == 1) {
        const auto& k = s.substance.cpPoly;
        const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4];
        switch (shape_of(k)) {
            case Shape::quartic:
                cp = A + (B + (C + (D + E * T) * T) * T) * T;
                break;
            case Shape::inverse_square:
                cp = A + (B + (C + D * T) * T) * T + E / (T * T);
                break;
            case Shape::without_A:
                cp = B + (C + D * T) * T + E / (T * T);
                break;
        }
    } else {
        const auto& k = s.substance.cpDIPPR;
        const double x1 = static_cast<double>(k[2]) / T, x2 = static_cast<double>(k[4]) / T;
        const double sh = sinh(x1, r.err);
        if (r.err || sh == 0.0) return {.err = -1};
        const double ch = cosh(x2, r.err);
        if (r.err) return r;
        const double q1 = x1 / sh, q2 = x2 / ch;
        cp = static_cast<double>(k[0]) + static_cast<double>(k[1]) * q1 * q1 +
             static_cast<double>(k[3]) * q2 * q2;
    }
    r.cp = static_cast<float>(cp);
    if (!std::isfinite(r.cp)) return {.err = -1};
    return r;
}

ReferenceConstants RefConst(Session& s, double p) {
    ReferenceState& ref = s.reference;
    const SubstanceConstants& k = s.substance;
    ReferenceConstants r;
    if (ref.RefKode == 2 || ref.RefKode == 10) {
        ref.TRef0 = static_cast<float>(TNorm);
        ref.pRef0 = static_cast<float>(pNorm);
        r.h0 = k.dfH0;
        r.s0 = ref.RefKode == 2 ? static_cast<double>(k.S0abs)
                                : (static_cast<double>(k.dfH0) - static_cast<double>(k.dfG0)) / TNorm;
    }
    if (ref.pRef0 == 0.0f) ref.pRef0 = static_cast<float>(pNorm);
    if (p > 0.0) r.s0 -= RGas * std::log(p / static_cast<double>(ref.pRef0));
    return r;
}

IdealGas IdGasFunc(Session& s, double T, double p) {
    IdealGas r;
    const ReferenceConstants zero = RefConst(s, p);
    const CpResult cp = cpIdG(s, T, s.models.cpKode);
    const double T0 = s.reference.TRef0;
    r.cp = cp.cp;
    if (cp.err || !(T >= TinyT) || !(T0 >= TinyT)) return {.err = -1};
    if (s.models.cpKode == 1 || s.models.cpKode == 2) {
        const Integral k = s.models.cpKode == 1 ? polynomial_integral(s.substance.cpPoly, T, T0)
                                                : sinh_integral(s.substance.cpDIPPR, T, T0);
        if (k.err) return {.err = -1};
        r.h = k.h + zero.h0;
        r.s = k.s + zero.s0;
    }
    r.h += s.reference.hOffset;
    r.s += s.reference.sOffset;
    if (!std::isfinite(r.h) || !std::isfinite(r.s)) return {.err = -1};
    return r;
}

}  // namespace quom
