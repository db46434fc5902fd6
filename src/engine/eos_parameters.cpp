#include "engine/eos_parameters.h"

#include <cmath>

namespace quom {
namespace {

// One row of the table of cubic forms; the virial codes 11 to 15 take the rows of 2 to 6.
struct CubicRow {
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
    {27.0 / 64.0, 1.0 / 8.0, 0, 0, 1, 0.0, 0, 0, 0, 3.0 / 8.0},                    // van der Waals
    {27.0 / 64.0, 1.0 / 8.0, 0, 0, 1, -1.0, 0, 0, 0, 3.0 / 8.0},                   // Berthelot
    {Wa, Wb, 0, 1, 1, -0.5, 0, 0, 0, 1.0 / 3.0},                                   // Redlich/Kwong
    {Wa, Wb, 0, 1, 2, 0, 0.48, 1.574, -0.176, 1.0 / 3.0},                          // Soave
    {Ya, Yb, 1.0 - Sqrt2, 1.0 + Sqrt2, 2, 0, 0.37464, 1.54226, -0.26992, 0.3074},  // Peng/Robinson
};

const CubicRow* row_of(int code) {
    if (code >= eos_van_der_waals && code <= eos_peng_robinson) return &Rows[code - eos_van_der_waals];
    if (code >= eos_virial_first && code <= eos_virial_last) return &Rows[code - eos_virial_first];
    return nullptr;
}

void apply(Session& s, const CubicRow& row) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr, omega = s.substance.omega;
    EosBlock& e = s.eos;
    e.AlphaForm = row.AlphaForm;
    const double exponent = row.AlphaForm == 2 ? 2.0 : 2.0 - row.na;
    e.EOSa = row.omega_a * RGas * RGas * std::pow(Tcr, exponent) / pcr;
    e.EOSna = row.AlphaForm == 2 ? row.m0 + (row.m1 + row.m2 * omega) * omega : row.na;
    e.EOSb = row.omega_b * RGas * Tcr / pcr;
    e.EOSc = row.c_of_b * e.EOSb;
    e.EOSd = row.d_of_b * e.EOSb;
    e.vcrEOS = vCritZ(s, row.Zc);
}

// The Tovarn/Ji block from Z = JiZc; false when it does not come out finite.
bool apply_ji(Session& s) {
    EosBlock& e = s.eos;
    const double Z = e.JiZc;
    if (!(Z > TinyT)) return false;
    const double h1 = 6.0 * Z - 1.0, h2 = 1.0 - 3.0 * Z;
    const double G = 27.0 * h2 * Z * Z - 2.0 * h2 * h2 * h2 + 27.0 * Z * Z * Z;
    const double S = G * G + 4.0 * h1 * h1 * h1;
    const double W = std::cbrt(G + std::sqrt(S));
    const double root = std::cbrt(2.0);
    e.JiOb = -h2 / 3.0 - root * h1 / (3.0 * W) + W / (3.0 * root);
    e.JiCd = JiCdOf(Z, e.JiOb);
    e.JiOa = 3.0 * Z * Z + e.JiCd * e.JiOb + 2.0 * e.JiCd * e.JiOb * e.JiOb;
    e.JiAc = RGas * RGas * e.JiOa * s.substance.Tcr * s.substance.Tcr / s.substance.pcr;
    e.vcrEOS = vCritZ(s, Z);
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

}  // namespace

void ClearEOSPar(Session& s) {
    EosBlock& e = s.eos;
    e.EOSa = e.EOSb = e.EOSc = e.EOSd = 0.0;
    e.EOSna = e.EOSnb = e.EOSnc = e.EOSnd = 0.0;
    e.EOSm = 0.0;
}

double vCritZ(const Session& s, double Zc) { return Zc * RGas * s.substance.Tcr / s.substance.pcr; }

std::int16_t InitEOSPar(Session& s, int code) {
    if (s.substance.Tcr * s.substance.pcr < TinyT || code < 0) return 0;
    EosBlock& e = s.eos;
    e.AlphaForm = 1;
    e.vcrEOS = 0.0;
    if (code != 1) ClearEOSPar(s);
    if (code == eos_ideal_gas) {
        e.vcrEOS = vCritZ(s, 1.0);
    } else if (const CubicRow* row = row_of(code)) {
        apply(s, *row);
    } else if (code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2) {
        if (code == eos_tovarn_ji_1) e.JiB1 = 0.0;
        if (!apply_ji(s)) {
            s.tell({.title = "Execution not possible",
                    .text = "Error - EOS-parameter calculation (Tovarn-Ji model)",
                    .kind = MessageKind::stop});
            return 1;
        }
    }
    e.rhocrEOS = 0.0;
    if (s.models.VPhaseOnly) e.vcrEOS = 0.0;
    if (e.vcrEOS > TinyT) e.rhocrEOS = static_cast<double>(s.substance.MolMass) / e.vcrEOS;
    return 0;
}

void EOSParT(Session& s, double T) {
    if (!(T >= TinyT)) return;
    const EosBlock& e = s.eos;
    Scratch& x = s.scratch;
    const int code = s.models.EOSKode;
    if (code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2) {
        const CubicParameters k = EOSParT_Ji(s, T, e);
        x.aT = k.a, x.bT = k.b, x.cT = k.c, x.dT = k.d;
        return;
    }
    if (code == eos_virial_manual) {  // EOSnb is b1 here, no exponent
        x.aT = x.cT = x.dT = 0.0;
        x.bT = e.EOSb - e.EOSnb / std::pow(T, e.EOSm);
        return;
    }
    // b = EOSb T^EOSnb, c = EOSc T^EOSnc, d = EOSd T^EOSnd
    x.bT = e.EOSb * power(T, e.EOSnb);
    x.cT = e.EOSc * power(T, e.EOSnc);
    x.dT = e.EOSd * power(T, e.EOSnd);
    if (e.AlphaForm == 2) {  // a = EOSa (1 + m (1 - sqrt(T/Tcr)))^2
        const double alpha = 1.0 + e.EOSna * (1.0 - std::sqrt(T / s.substance.Tcr));
        x.aT = e.EOSa * alpha * alpha;
    } else {  // a = EOSa T^EOSna
        x.aT = e.EOSa * power(T, e.EOSna);
    }
}

CubicParameters EOSParT_Ji(const Session& s, double T, const EosBlock& block) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    const double Tr = T / Tcr, x = std::pow(Tr, 0.75), u = 1.0 - x;
    // alpha = 1 + P3 u + (P4 + P5 u) u (0.76528558 - x), without the last term above Tcr
    double alpha = 1.0 + block.JiP3 * u;
    if (T <= Tcr) alpha += (block.JiP4 + block.JiP5 * u) * u * (JiBracket - x);
    // b = F JiOb R Tcr/pcr; c, d = F (JiCd -+ sqrt(JiCd^2 + 4 JiCd))/2 JiOb R Tcr/pcr
    const double F = s.models.EOSKode == eos_tovarn_ji_2 ? 1.0 - block.JiB1 * (1.0 - Tr) * (1.0 - Tr) : 1.0;
    const double scale = F * block.JiOb * RGas * Tcr / pcr;
    const double root = std::sqrt(block.JiCd * block.JiCd + 4.0 * block.JiCd);
    return {.a = block.JiAc * alpha * alpha,
            .b = scale,
            .c = 0.5 * (block.JiCd - root) * scale,
            .d = 0.5 * (block.JiCd + root) * scale};
}

}  // namespace quom
