#include "engine/eos_parameters.h"

#include <cmath>

namespace quom {
namespace {

// One row of the table of cubic forms; a virial equation takes the row of its cubic one.
struct CubicRow {
    Eos code;
    double omega_a;          // a = omega_a R^2 Tcr^(2 - na)/pcr
    double omega_b;          // b = omega_b R Tcr/pcr
    double c_of_b, d_of_b;   // c/b, d/b
    std::int16_t AlphaForm;  // 1: na is the exponent of T; 2: the slope m follows from omega
    double na;
    double m0, m1, m2;  // m = m0 + m1 omega + m2 omega^2
    double Zc;
};

// Redlich/Kwong: Wa = 1/(9 (2^(1/3) - 1)), Wb = (2^(1/3) - 1)/3.
const double Wa = 1.0 / (9.0 * (std::cbrt(2.0) - 1.0));
const double Wb = (std::cbrt(2.0) - 1.0) / 3.0;
// Peng/Robinson: s = (2^4.5 + 13)^(1/3), Yb = -1/32 - 21/(32 s) + 3 s/32, Ya = (10/3) Yb^2 + (4/3) Yb + 1/3.
const double PRs = std::cbrt(std::pow(2.0, 4.5) + 13.0);
const double Yb = -1.0 / 32.0 - 21.0 / (32.0 * PRs) + 3.0 * PRs / 32.0;
const double Ya = 10.0 / 3.0 * Yb * Yb + 4.0 / 3.0 * Yb + 1.0 / 3.0;
const double Sqrt2 = std::sqrt(2.0);

const CubicRow Rows[] = {
    {Eos::van_der_waals, 27.0 / 64.0, 1.0 / 8.0, 0, 0, 1, 0.0, 0, 0, 0, 3.0 / 8.0},
    {Eos::berthelot, 27.0 / 64.0, 1.0 / 8.0, 0, 0, 1, -1.0, 0, 0, 0, 3.0 / 8.0},
    {Eos::redlich_kwong, Wa, Wb, 0, 1, 1, -0.5, 0, 0, 0, 1.0 / 3.0},
    {Eos::soave, Wa, Wb, 0, 1, 2, 0, 0.48, 1.574, -0.176, 1.0 / 3.0},
    {Eos::peng_robinson, Ya, Yb, 1.0 - Sqrt2, 1.0 + Sqrt2, 2, 0, 0.37464, 1.54226, -0.26992, 0.3074},
};

const CubicRow* row_of(const EosInfo& info) {
    const Eos code = info.family == EosFamily::virial ? info.cubic : info.code;
    for (const CubicRow& row : Rows) {
        if (row.code == code) return &row;
    }
    return nullptr;
}

EosBlock cubic_block(const SubstanceConstants& substance, const CubicRow& row) {
    const double Tcr = substance.Tcr, pcr = substance.pcr, omega = substance.omega;
    EosBlock e;
    e.AlphaForm = row.AlphaForm;
    const double exponent = row.AlphaForm == 2 ? 2.0 : 2.0 - row.na;
    e.EOSa = row.omega_a * RGas * RGas * std::pow(Tcr, exponent) / pcr;
    e.EOSna = row.AlphaForm == 2 ? row.m0 + (row.m1 + row.m2 * omega) * omega : row.na;
    e.EOSb = row.omega_b * RGas * Tcr / pcr;
    e.inverse_root_Tcr = 1.0 / std::sqrt(Tcr);
    e.EOSc = row.c_of_b * e.EOSb;
    e.EOSd = row.d_of_b * e.EOSb;
    e.vcrEOS = vCritZ(substance, row.Zc);
    return e;
}

// The block of the Tovarn/Ji equations from Z = JiZc; false when c and d are no numbers or b is not above 0.
//
// With c + d = JiCd b and c d = -JiCd b^2 the critical point, where the cubic in the compressibility factor
// is (z - Z)^3 = 0, gives for JiOb = b pcr/(R Tcr), JiOa = a pcr/(R Tcr)^2
//     JiOb^3 + (1 - 3 Z) JiOb^2 + 3 Z^2 JiOb - Z^3 = 0      (its real root by Cardano's formula)
//     JiCd = (1 - 3 Z + JiOb)/JiOb
//     JiOa = 3 Z^2 + JiCd JiOb + 2 JiCd JiOb^2
bool complete_ji(const SubstanceConstants& substance, EosBlock& e) {
    const double Z = e.JiZc;
    if (!(Z > TinyT)) return false;
    const double linear = 6.0 * Z - 1.0, square = 1.0 - 3.0 * Z;
    const double constant = 27.0 * square * Z * Z - 2.0 * square * square * square + 27.0 * Z * Z * Z;
    const double discriminant = constant * constant + 4.0 * linear * linear * linear;
    const double cardano = std::cbrt(constant + std::sqrt(discriminant));
    const double cbrt2 = std::cbrt(2.0);
    e.JiOb = -square / 3.0 - cbrt2 * linear / (3.0 * cardano) + cardano / (3.0 * cbrt2);
    e.JiCd = JiCdOf(Z, e.JiOb);
    e.JiOa = 3.0 * Z * Z + e.JiCd * e.JiOb + 2.0 * e.JiCd * e.JiOb * e.JiOb;
    e.JiAc = RGas * RGas * e.JiOa * substance.Tcr * substance.Tcr / substance.pcr;
    e.vcrEOS = vCritZ(substance, Z);
    // c and d are formed with sqrt(JiCd^2 + 4 JiCd): above Z = 3/8 (van der Waals) there is none.
    return std::isfinite(e.JiAc) && std::isfinite(e.JiOb) && e.JiOb > 0.0 &&
           std::isfinite(std::sqrt(e.JiCd * e.JiCd + 4.0 * e.JiCd));
}

// T^n; the exponents of the table without a call of pow.
double power(double T, double n) {
    if (n == 0.0) return 1.0;
    if (n == -1.0) return 1.0 / T;
    if (n == -0.5) return 1.0 / std::sqrt(T);
    return std::pow(T, n);
}

// T-derivatives of a(T) of the Tovarn/Ji equations and, for form 2, of b(T), c(T), d(T). Tr = T/Tcr, x =
// Tr^0.75, u = 1 - x.
CubicDerivatives ji_terms(const Fluid& fluid, double T) {
    CubicDerivatives k;
    const EosBlock& e = fluid.eos;
    const double Tcr = fluid.substance.Tcr, Tr = T / Tcr;
    const double root4 = std::sqrt(std::sqrt(Tr)), root = root4 * root4, Tr125 = Tr * root4;
    const double x = root4 * root, u = 1.0 - x;
    if (T <= Tcr) {
        const double alpha = 1.0 + e.JiP3 * u + (e.JiP4 + e.JiP5 * u) * u * (JiBracket - x);
        const double S = (2.53057116 - 3.0 * x) * e.JiP5 * u + (1.76528558 - 2.0 * x) * e.JiP4 + e.JiP3;
        k.a1 = e.JiAc * (-1.5 * alpha * S) / root4 / Tcr;
        k.a2 = e.JiAc *
               (1.125 * (S * S + alpha * ((5.53057116 - 6.0 * x) * e.JiP5 + 2.0 * e.JiP4)) / root +
                0.375 * alpha * S / Tr125) /
               (Tcr * Tcr);
    } else {
        const double alpha = 1.0 + e.JiP3 * u;
        k.a1 = e.JiAc * (-1.5 * e.JiP3 * alpha) / root4 / Tcr;
        k.a2 = e.JiAc * (0.375 * e.JiP3 * alpha / Tr125 + 1.125 * e.JiP3 * e.JiP3 / root) / (Tcr * Tcr);
    }
    if (fluid.models.EOSKode != Eos::tovarn_ji_2) return k;
    // b = b0 (1 - JiB1 (1 - Tr)^2), the same for c and d
    const double JiCd = JiCdOf(e.JiZc, e.JiOb), q = std::sqrt(JiCd * JiCd + 4.0 * JiCd);
    const double b0 = e.JiOb * RGas * Tcr / fluid.substance.pcr;
    const double c0 = 0.5 * (JiCd - q) * b0, d0 = 0.5 * (JiCd + q) * b0;
    const double first = 2.0 * e.JiB1 * (1.0 - Tr) / Tcr, second = -2.0 * e.JiB1 / (Tcr * Tcr);
    k.b1 = first * b0;
    k.c1 = first * c0;
    k.d1 = first * d0;
    k.b2 = second * b0;
    k.c2 = second * c0;
    k.d2 = second * d0;
    return k;
}

// First and second T-derivative of k T^n.
void power_terms(double n, double value, double iT, double& first, double& second) {
    if (n == 0.0) return;
    first = n * value * iT;
    second = (n - 1.0) * first * iT;
}

// Whether b, c or d depend on T.
bool moves(const EosBlock& e) { return e.EOSnb != 0.0 || e.EOSnc != 0.0 || e.EOSnd != 0.0; }

// a(T) .. d(T) of the equations with constant exponents:
//     a = EOSa (1 + m (1 - sqrt(T/Tcr)))^2 or EOSa T^EOSna,
//     b = EOSb T^EOSnb, c = EOSc T^EOSnc, d = EOSd T^EOSnd
EosAtT power_law(const EosBlock& e, double T) {
    const double A = 1.0 + e.EOSna * (1.0 - std::sqrt(T) * e.inverse_root_Tcr);
    EosAtT at{.T = T,
              .a = e.AlphaForm == 2 ? e.EOSa * A * A : e.EOSa * power(T, e.EOSna),
              .b = e.EOSb,
              .c = e.EOSc,
              .d = e.EOSd};
    if (!moves(e)) return at;
    at.b *= power(T, e.EOSnb);
    at.c *= power(T, e.EOSnc);
    at.d *= power(T, e.EOSnd);
    return at;
}

CubicDerivatives power_law_derivatives(const EosBlock& e, double T) {
    const double iT = 1.0 / T;
    CubicDerivatives k;
    if (e.AlphaForm == 2) {  // a = EOSa A^2
        const double m = e.EOSna, root = std::sqrt(T) * e.inverse_root_Tcr, A = 1.0 + m * (1.0 - root);
        const double A1 = -0.5 * m * root * iT, A2 = -0.5 * A1 * iT;
        k.a1 = 2.0 * e.EOSa * A * A1;
        k.a2 = 2.0 * e.EOSa * (A2 * A + A1 * A1);
    } else {
        power_terms(e.EOSna, power_law(e, T).a, iT, k.a1, k.a2);
    }
    if (!moves(e)) return k;
    const EosAtT at = power_law(e, T);
    power_terms(e.EOSnb, at.b, iT, k.b1, k.b2);
    power_terms(e.EOSnc, at.c, iT, k.c1, k.c2);
    power_terms(e.EOSnd, at.d, iT, k.d1, k.d2);
    return k;
}

// B = b0 - b1/T^b2 of the manual virial equation, held by b.
EosAtT manual_law(const EosBlock& e, double T) {
    EosAtT at;
    at.T = T;
    at.b = e.EOSb - e.EOSnb / std::pow(T, e.EOSm);
    return at;
}

}  // namespace

double vCritZ(const SubstanceConstants& substance, double Zc) {
    return Zc * RGas * substance.Tcr / substance.pcr;
}

EosConstants InitEOSPar(const SubstanceConstants& substance, Eos code, const EosInput& input) {
    const EosInfo& info = eos_info(code);
    EosConstants r;
    if (info.family == EosFamily::none) return {.block = {}, .reason = Reason::no_equation};
    if (info.family == EosFamily::ideal_gas) return r;
    if (info.family == EosFamily::manual) {
        r.block.EOSb = input.b0;
        r.block.EOSnb = input.b1;
        r.block.EOSm = input.b2;
        return r;
    }
    if (substance.Tcr < TinyT || substance.pcr < TinyT || substance.Tcr * substance.pcr < TinyT)
        return {.block = {}, .reason = Reason::no_critical_data};
    if (const CubicRow* row = row_of(info)) r.block = cubic_block(substance, *row);
    if (info.family == EosFamily::tovarn_ji) {
        r.block.JiP3 = input.JiP3;
        r.block.JiP4 = input.JiP4;
        r.block.JiP5 = input.JiP5;
        r.block.JiZc = input.JiZc;
        r.block.JiB1 = code == Eos::tovarn_ji_2 ? input.JiB1 : 0.0;
        if (!complete_ji(substance, r.block)) {
            r.reason = Reason::not_finite;
            r.block.vcrEOS = 0.0;
        }
    }
    if (info.is_vapor_only()) r.block.vcrEOS = 0.0;
    if (r.block.vcrEOS > TinyT) r.block.rhocrEOS = static_cast<double>(substance.MolMass) / r.block.vcrEOS;
    return r;
}

EosAtT EOSParT(const Fluid& fluid, double T) {
    if (!(T >= TinyT)) return {};
    if (fluid.eos.AlphaForm == 2) return power_law(fluid.eos, T);  // needs no look into the table
    const EosInfo& info = fluid.eos_row();
    if (info.family == EosFamily::tovarn_ji)
        return EOSParT_Ji(fluid.substance, fluid.eos, info.code == Eos::tovarn_ji_2, T);
    if (info.family == EosFamily::manual) return manual_law(fluid.eos, T);
    return power_law(fluid.eos, T);
}

EosAtT EOSParT_Ji(const SubstanceConstants& substance, const EosBlock& block, bool form_2, double T) {
    const double Tcr = substance.Tcr, pcr = substance.pcr;
    const double Tr = T / Tcr, root = std::sqrt(Tr), x = root * std::sqrt(root), u = 1.0 - x;
    // alpha = 1 + P3 u + (P4 + P5 u) u (0.76528558 - x), x = Tr^0.75, without the last term above Tcr
    double alpha = 1.0 + block.JiP3 * u;
    if (T <= Tcr) alpha += (block.JiP4 + block.JiP5 * u) * u * (JiBracket - x);
    // b = F JiOb R Tcr/pcr; c, d = F (JiCd -+ sqrt(JiCd^2 + 4 JiCd))/2 JiOb R Tcr/pcr
    const double F = form_2 ? 1.0 - block.JiB1 * (1.0 - Tr) * (1.0 - Tr) : 1.0;
    const double scale = F * block.JiOb * RGas * Tcr / pcr;
    const double half = std::sqrt(block.JiCd * block.JiCd + 4.0 * block.JiCd);
    return {.T = T,
            .a = block.JiAc * alpha * alpha,
            .b = scale,
            .c = 0.5 * (block.JiCd - half) * scale,
            .d = 0.5 * (block.JiCd + half) * scale};
}

EosTerms EOSTerme(const Fluid& fluid, double T) {
    const EosBlock& e = fluid.eos;
    if (e.AlphaForm == 2) return {.at = power_law(e, T), .k = power_law_derivatives(e, T)};
    const EosInfo& info = fluid.eos_row();
    if (info.family == EosFamily::tovarn_ji)
        return {.at = EOSParT_Ji(fluid.substance, e, info.code == Eos::tovarn_ji_2, T),
                .k = ji_terms(fluid, T)};
    if (info.family == EosFamily::manual) return {.at = manual_law(e, T), .k = {}};
    return {.at = power_law(e, T), .k = power_law_derivatives(e, T)};
}

CubicDerivatives CubicTerme(const Fluid& fluid, const EosAtT& at) { return EOSTerme(fluid, at.T).k; }

}  // namespace quom
