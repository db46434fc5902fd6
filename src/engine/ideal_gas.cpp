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

// cp of a form at T, and its integrals h and s up to a constant that is the same at every T.
struct Terms {
    double cp = 0, h = 0, s = 0;
    Reason reason = Reason::none;
};

double polynomial_cp(const std::array<float, 5>& k, double T) {
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4];
    switch (shape_of(k)) {
        case Shape::quartic:
            return A + (B + (C + (D + E * T) * T) * T) * T;
        case Shape::inverse_square:
            return A + (B + (C + D * T) * T) * T + E / (T * T);
        case Shape::without_A:
            return B + (C + D * T) * T + E / (T * T);
    }
    return 0.0;
}

// The E term of s stands without a factor 1/2 where cp has E/T^2, so that values agree with older results.
Terms polynomial_terms(const std::array<float, 5>& k, double T) {
    const double A = k[0], B = k[1], C = k[2], D = k[3], E = k[4];
    const double ln = std::log(T);
    Terms t{.cp = polynomial_cp(k, T)};
    switch (shape_of(k)) {
        case Shape::quartic:  // cp = A + B T + C T^2 + D T^3 + E T^4
            t.h = (A + (B / 2 + (C / 3 + (D / 4 + E / 5 * T) * T) * T) * T) * T;
            t.s = A * ln + (B + (C / 2 + (D / 3 + E / 4 * T) * T) * T) * T;
            break;
        case Shape::inverse_square:  // cp = A + B T + C T^2 + D T^3 + E/T^2
            t.h = (A + (B / 2 + (C / 3 + D / 4 * T) * T) * T) * T - E / T;
            t.s = A * ln + (B + (C / 2 + D / 3 * T) * T) * T - E / (T * T);
            break;
        case Shape::without_A:  // cp = B + C T + D T^2 + E/T^2
            t.h = (B + (C / 2 + D / 3 * T) * T) * T - E / T;
            t.s = B * ln + (C + D / 2 * T) * T - E / (T * T);
            break;
    }
    return t;
}

// The two hyperbolic terms of cp at T: e = exp(-2 x), x1 = C/T, x2 = E/T.
//     (x1/sinh x1)^2 = 4 x1^2 e1/(1 - e1)^2,    (x2/cosh x2)^2 = 4 x2^2 e2/(1 + e2)^2
struct Hyperbolic {
    double x1, x2;  // sizes
    double e1, e2;  // exp(-2 x)
    double r1, r2;  // 1/(1 - e1), 1/(1 + e2)
    Hyperbolic(const std::array<float, 5>& k, double T)
        : x1(std::fabs(static_cast<double>(k[2])) / T), x2(std::fabs(static_cast<double>(k[4])) / T) {
        e1 = std::exp(-2.0 * x1);
        e2 = std::exp(-2.0 * x2);
        r1 = 1.0 / (1.0 - e1);
        r2 = 1.0 / (1.0 + e2);
    }
    bool in_range() const { return x1 > 0.0 && x1 <= LargestArgument && x2 <= LargestArgument; }
    // cp = A + B (x1/sinh x1)^2 + D (x2/cosh x2)^2
    double cp(const std::array<float, 5>& k) const {
        const double q1 = 2.0 * x1 * r1, q2 = 2.0 * x2 * r2;
        return static_cast<double>(k[0]) + static_cast<double>(k[1]) * q1 * q1 * e1 +
               static_cast<double>(k[3]) * q2 * q2 * e2;
    }
};

// With coth x = 1 + 2 e/(1 - e) and tanh x = 1 - 2 e/(1 + e), less the constants:
//     h = A T + B C coth x1 - D E tanh x2,
//     s = A ln T + B (x1 coth x1 - ln sinh x1) - D (x2 tanh x2 - ln cosh x2)
Terms hyperbolic_terms(const std::array<float, 5>& k, double T) {
    if (T < 0.1 || !(k[2] > 0.0f)) return {.reason = Reason::ideal_gas_range};
    const Hyperbolic at(k, T);
    if (!at.in_range()) return {.reason = Reason::ideal_gas_range};
    const double A = k[0], B = k[1], D = k[3];
    const double y1 = 2.0 * at.x1 * at.e1 * at.r1, y2 = 2.0 * at.x2 * at.e2 * at.r2;
    return {.cp = at.cp(k),
            .h = (A + B * y1 + D * y2) * T,
            .s = A * std::log(T) + B * (y1 - std::log(1.0 - at.e1)) + D * (y2 + std::log(1.0 + at.e2))};
}

Terms terms_of(const SubstanceConstants& substance, CpForm form, double T) {
    return form == CpForm::polynomial ? polynomial_terms(substance.cpPoly, T)
                                      : hyperbolic_terms(substance.cpDIPPR, T);
}

// Whether the record has constants of the form.
bool has_cp(const SubstanceConstants& substance, CpForm form) {
    if (form == CpForm::none) return false;
    const auto& k = form == CpForm::polynomial ? substance.cpPoly : substance.cpDIPPR;
    if (form == CpForm::sinh_cosh) return k[0] != 0.0f || k[1] != 0.0f || k[3] != 0.0f;
    for (const float constant : k) {
        if (constant != 0.0f) return true;
    }
    return false;
}

}  // namespace

CpResult cpIdG(const SubstanceConstants& substance, double T, CpForm form) {
    if (!has_cp(substance, form)) return {};
    if (!(T >= TinyT)) return {.cp = 0, .reason = Reason::ideal_gas_range};
    double cp = 0.0;
    if (form == CpForm::polynomial) {
        cp = polynomial_cp(substance.cpPoly, T);
    } else {
        const Hyperbolic at(substance.cpDIPPR, T);
        if (!at.in_range()) return {.cp = 0, .reason = Reason::ideal_gas_range};
        cp = at.cp(substance.cpDIPPR);
    }
    const float rounded = static_cast<float>(cp);
    if (!std::isfinite(rounded)) return {.cp = 0, .reason = Reason::ideal_gas_range};
    return {.cp = rounded};
}

ReferenceConstants RefConst(const SubstanceConstants& substance, const ReferenceState& reference, double p) {
    ReferenceConstants r{.TRef0 = reference.TRef0, .pRef0 = reference.pRef0};
    if (reference.RefKode == reference_formation || reference.RefKode == reference_from_gibbs) {
        const double dfH0 = substance.dfH0, dfG0 = substance.dfG0;
        r.TRef0 = static_cast<float>(TNorm);
        r.pRef0 = static_cast<float>(pNorm);
        r.h0 = dfH0;
        r.s0 = reference.RefKode == reference_formation ? static_cast<double>(substance.S0abs)
                                                        : (dfH0 - dfG0) / TNorm;
    }
    if (r.pRef0 == 0.0f) r.pRef0 = static_cast<float>(pNorm);
    if (p > 0.0) r.s0 -= RGas * std::log(p / static_cast<double>(r.pRef0));
    return r;
}

IdealGasReference ideal_gas_reference(const SubstanceConstants& substance, CpForm form,
                                      const ReferenceState& reference) {
    const ReferenceConstants zero = RefConst(substance, reference, 0.0);
    IdealGasReference r{.T0 = zero.TRef0,
                        .p0 = zero.pRef0,
                        .h0 = reference.hOffset,
                        .s0 = reference.sOffset,
                        .reason = Reason::none};
    if (!has_cp(substance, form)) {
        r.reason = Reason::no_ideal_gas_cp;
        return r;
    }
    if (!(r.T0 >= TinyT)) {
        r.reason = Reason::T_not_positive;
        return r;
    }
    const Terms at = terms_of(substance, form, r.T0);
    r.h0 += zero.h0;
    r.s0 += zero.s0;
    r.h0 -= at.h;
    r.s0 -= at.s;
    r.reason = at.reason;
    if (r.reason == Reason::none && !(std::isfinite(r.h0) && std::isfinite(r.s0)))
        r.reason = Reason::not_finite;
    return r;
}

IdealGas IdGasFunc(const Fluid& fluid, double T, double p) {
    const IdealGasReference& zero = fluid.ideal_gas;
    IdealGas r;
    if (!(T >= TinyT)) {
        r.reason = Reason::T_not_positive;
        return r;
    }
    if (zero.reason == Reason::no_ideal_gas_cp) {
        r.h = zero.h0;
        r.s = zero.s0;
        return r;
    }
    r.reason = zero.reason;
    if (r.reason != Reason::none) return r;
    const Terms at = terms_of(fluid.substance, fluid.models.cpKode, T);
    if (at.reason != Reason::none) {
        r.reason = at.reason;
        return r;
    }
    r.h = at.h + zero.h0;
    r.s = at.s + zero.s0;
    if (p > 0.0) r.s -= RGas * std::log(p / zero.p0);
    r.cp = static_cast<double>(static_cast<float>(at.cp));
    if (!(std::isfinite(r.h) && std::isfinite(r.s) && std::isfinite(r.cp)))
        return {.reason = Reason::not_finite};
    return r;
}

}  // namespace quom
