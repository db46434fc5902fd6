#include "engine/thermo_functions.h"

#include <cmath>

#include "engine/eos_parameters.h"
#include "engine/ideal_gas.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

bool is_ji(int code) { return code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2; }

// a(T) of the Tovarn/Ji equations and, for code 8, b(T), c(T), d(T).
void ji_terms(const Session& s, double T, CubicDerivatives& k) {
    const EosBlock& e = s.eos;
    const double Tcr = s.substance.Tcr, Tr = T / Tcr;
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
    if (s.models.EOSKode != eos_tovarn_ji_2) return;
    // b = b0 (1 - JiB1 (1 - Tr)^2), the same for c and d
    const double JiCd = JiCdOf(e.JiZc, e.JiOb), q = std::sqrt(JiCd * JiCd + 4.0 * JiCd);
    const double b0 = e.JiOb * RGas * Tcr / s.substance.pcr;
    const double c0 = 0.5 * (JiCd - q) * b0, d0 = 0.5 * (JiCd + q) * b0;
    const double first = 2.0 * e.JiB1 * (1.0 - Tr) / Tcr, second = -2.0 * e.JiB1 / (Tcr * Tcr);
    k.b1 = first * b0, k.c1 = first * c0, k.d1 = first * d0;
    k.b2 = second * b0, k.c2 = second * c0, k.d2 = second * d0;
}

// B1 = dB/dT, B2 = d2B/dT2 of the virial family.
VirialDerivatives virial_derivatives(const Session& s, double T, const CubicDerivatives& k) {
    const int code = s.models.EOSKode;
    VirialDerivatives r;
    if (code == eos_virial_manual) {  // B = b0 - b1/T^m
        const double m = s.eos.EOSm;
        r.B1 = m * s.eos.EOSnb / std::pow(T, m + 1.0);
        r.B2 = -(m + 1.0) * r.B1 / T;
    } else if (code == eos_pitzer_curl) {
        const double pcr = s.substance.pcr, omega = s.substance.omega;
        const double Tr = T / s.substance.Tcr, u = 1.0 / Tr;
        const double u2 = u * u, u3 = u2 * u, u8 = u3 * u3 * u2;
        const double f0s = 0.33 * u + 0.277 * u2 + 0.0363 * u3;
        const double f0t = 0.66 * u + 0.831 * u2 + 0.1452 * u3;
        const double f1s = -0.46 * u + u2 + 0.291 * u3 + 0.0584 * u8;
        const double f1t = -0.92 * u + 3.0 * u2 + 1.164 * u3 + 0.5256 * u8;
        r.B1 = RGas / (Tr * pcr) * (f0s + omega * f1s);
        r.B2 = -RGas / (Tr * pcr * T) * (f0t + omega * f1t);
    } else {  // B = b - a/(R T)
        const double aT = s.scratch.aT;
        r.B1 = (aT / T - k.a1) / (RGas * T) + k.b1;
        r.B2 = k.b2 - (2.0 * (aT / T - k.a1) + T * k.a2) / (RGas * T) / T;
    }
    return r;
}

void virial_real(const Session& s, int phase, double T, double p, double v, const VirialDerivatives& b,
                 PhaseArrays& out) {
    double* D = out.DerivA[phase];
    double* D2 = out.Deriv2A[phase];
    const double D1 = v - s.scratch.Bvirial;
    D[dpdv_T] = -p * p / (RGas * T);
    D[dpdT_v] = RGas * (T * b.B1 + D1) / (D1 * D1);
    D[dvdp_T] = 1.0 / D[dpdv_T];
    D[dvdT_p] = RGas / p + b.B1;
    D[dTdv_p] = p / (p * b.B1 + RGas);
    D[dTdp_v] = 1.0 / D[dpdT_v];
    D2[d2pdv2] = 2.0 * RGas * T / (D1 * D1 * D1);
    D2[d2vdT2] = b.B2;
    // This form is the definition here; it is not the exact second derivative.
    const double q = p / (p * b.B1 + RGas);
    D2[d2Tdv2] = q * q * b.B2;
}

void cubic_real(const Session& s, int phase, double T, double v, const CubicDerivatives& k,
                PhaseArrays& out) {
    double* D = out.DerivA[phase];
    double* D2 = out.Deriv2A[phase];
    const double aT = s.scratch.aT, cT = s.scratch.cT, dT = s.scratch.dT;
    const double Dv = v - s.scratch.bT, N = (v + cT) * (v + dT), M = 2.0 * v + cT + dT;
    const double iD = 1.0 / Dv, iN = 1.0 / N;
    const double iD2 = iD * iD, iD3 = iD2 * iD, iN2 = iN * iN, iN3 = iN2 * iN;
    const double K = (v + dT) * k.c1 + (v + cT) * k.d1;
    D[dpdv_T] = aT * M * iN2 - RGas * T * iD2;
    D[dpdT_v] = aT * K * iN2 + RGas * (T * k.b1 + Dv) * iD2 - k.a1 * iN;
    D[dvdp_T] = 1.0 / D[dpdv_T];
    D[dvdT_p] = -D[dpdT_v] * D[dvdp_T];
    D[dTdv_p] = 1.0 / D[dvdT_p];
    D[dTdp_v] = 1.0 / D[dpdT_v];
    D2[d2pdv2] =
        2.0 * (RGas * T * iD3 - aT * (3.0 * v * (v + cT + dT) + (cT + dT) * (cT + dT) - cT * dT) * iN3);
    const double w = D[dvdT_p], Q = 2.0 * w * v + K + w * (cT + dT);
    const double G1 = RGas * ((T * k.b2 + w) * iD2 - 2.0 * (T * k.b1 + Dv) * (w - k.b1) * iD3) - k.a2 * iN +
                      (((v + dT) * k.c2 + (v + cT) * k.d2 + w * (k.c1 + k.d1) + 2.0 * k.c1 * k.d1) * aT +
                       (2.0 * (w * v + K) + w * (cT + dT)) * k.a1) *
                          iN2 -
                      Q * 2.0 * aT * K * iN3;
    const double G2 = -RGas * (Dv - 2.0 * T * (w - k.b1)) * iD3 +
                      ((2.0 * w + k.c1 + k.d1) * aT + M * k.a1) * iN2 - Q * 2.0 * aT * M * iN3;
    D2[d2vdT2] = -(w * G2 + G1) * D[dvdp_T];
    D2[d2Tdv2] = -(G1 * D[dTdv_p] + G2) * D[dTdp_v] * D[dTdv_p];
}

// ln phi and its first and second T-derivative at constant p.
struct LnPhi {
    double k0, k1, k2;
};

LnPhi virial_lnphi(const Session& s, double T, double p, const VirialDerivatives& b) {
    const double B = s.scratch.Bvirial, RT = RGas * T, slope = b.B1 - B / T;
    return {.k0 = B * p / RT, .k1 = p / RT * slope, .k2 = p / RT / T * (T * b.B2 - 2.0 * slope)};
}

// The logarithms are formed from differences that keep their digits where v is far above b:
// R T/(p (v - b)) = 1 + a/(p N) on the isotherm, (v + d)/(v + c) = 1 + (d - c)/(v + c).
LnPhi cubic_lnphi(const Session& s, double T, double p, double v, double w, double z,
                  const CubicDerivatives& k) {
    const Scratch& x = s.scratch;
    const double b = x.bT, c = x.cT, d = x.dT, aR = x.aT / (RGas * T);
    const double D = v - b, y = w - k.b1, iD = 1.0 / D, iD2 = iD * iD;
    const double ratio = RGas * T / (p * D);
    const double ln_ratio =
        std::fabs(ratio - 1.0) < 1e-3 ? std::log1p(x.aT / (p * (v + c) * (v + d))) : std::log(ratio);
    const double P0 = ln_ratio + b * iD;
    const double P1 = 1.0 / T - (v * y - k.b1 * D) * iD2;
    const double P2 =
        -1.0 / (T * T) - (y * y + (z - k.b2) * v - k.b2 * D) * iD2 + 2.0 * (v * y - k.b1 * D) * y * iD2 * iD;
    if (c == d) {
        const double C = v + c, U = 2.0 * v + c, V = 2.0 * w + k.c1, Y = w + k.c1;
        const double iC2 = 1.0 / (C * C), iC3 = iC2 / C;
        LnPhi r;
        r.k0 = P0 - aR * U * iC2;
        r.k1 = P1 - (k.E1 * U + aR * V) * iC2 + 2.0 * aR * U * Y * iC3;
        r.k2 = P2 - (k.E2 * U + 2.0 * k.E1 * V + aR * (2.0 * z + k.c2)) * iC2 +
               2.0 * (k.E1 * U + aR * V) * Y * iC3 +
               2.0 * (k.E1 * U * Y + aR * V * Y + aR * U * (z + k.c2)) * iC3 - 6.0 * aR * U * Y * Y * iC3 / C;
        return r;
    }
    const double e = c - d, e1 = k.c1 - k.d1, e2 = k.c2 - k.d2;
    const double C = v + c, Dd = v + d, iC = 1.0 / C, iDd = 1.0 / Dd, iC2 = iC * iC, iDd2 = iDd * iDd;
    const double L = std::log1p(-e * iC) - c * iC + d * iDd, Q = aR / e, F = (k.E1 * e - aR * e1) / (e * e);
    const double qa = k.d1 * (2.0 * v + d) + v * w, qb = k.c1 * (2.0 * v + c) + v * w;
    const double Qab = qa * iDd2 - qb * iC2;
    const double Ra = (z * v + w * w + k.d2 * (2.0 * v + d) + (2.0 * w + k.d1) * k.d1) * iDd2;
    const double Rb = -2.0 * qa * (w + k.d1) * iDd2 * iDd;
    const double Rc = -(z * v + w * w + k.c2 * (2.0 * v + c) + (2.0 * w + k.c1) * k.c1) * iC2;
    const double Rd = 2.0 * qb * (w + k.c1) * iC2 * iC;
    LnPhi r;
    r.k0 = P0 + Q * L;
    r.k1 = P1 + F * L + Q * Qab;
    r.k2 = P2 + ((k.E2 * e - aR * e2) / (e * e) - 2.0 * F * e1 / e) * L + 2.0 * F * Qab +
           Q * (Ra + Rb + Rc + Rd);
    return r;
}

// Entries 7 to 10: what needs the ideal gas heat capacity.
void real_heat_capacities(const Session& s, int phase, double T, double v, double cpId, PhaseArrays& out) {
    const double* D = out.DerivA[phase];
    double* F = out.FuncA[phase];
    const double M = s.substance.MolMass;
    F[fu_cp] = F[fu_cp_res] * RGas + cpId;
    F[fu_dTdp_h] = (T * D[dvdT_p] - v) / F[fu_cp];
    F[fu_cV] = F[fu_cp] - T * D[dpdT_v] * D[dvdT_p];
    // w^2 = -v^2 (cp/cV) (dp/dv)_T/M, p in kPa: factor 1000
    const double w2 = -F[fu_cp] / F[fu_cV] * D[dpdv_T] * 1000.0 * M;
    F[fu_w] = F[fu_cV] != 0.0 && w2 > 0.0 && std::isfinite(w2) ? v / M * std::sqrt(w2) : 0.0;
}

// ThermoFunc with the ideal gas heat capacity at T already known; false when v is at b or B.
bool residual_functions(Session& s, int phase, double T, double p, double v, double cpId, PhaseArrays& out) {
    const bool virial = s.models.VPhaseOnly;
    EOSParT(s, T);
    if (virial) s.scratch.Bvirial = VirialB(s, s.models.EOSKode, T);
    const CubicDerivatives terms = CubicTerme(s, T);
    const VirialDerivatives B = ThermoReal(s, phase, T, p, v, terms, out);
    if (!virial && std::fabs(v - s.scratch.bT) < 1e-17) return false;
    const double w = out.DerivA[phase][dvdT_p], z = out.Deriv2A[phase][d2vdT2];
    const LnPhi k = virial ? virial_lnphi(s, T, p, B) : cubic_lnphi(s, T, p, v, w, z, terms);
    double* F = out.FuncA[phase];
    F[fu_lnphi] = k.k0;
    F[fu_dlnphidT] = k.k1;
    F[fu_d2lnphidT2] = k.k2;
    F[fu_s_res] = -k.k0 - T * k.k1;
    F[fu_h_res] = -T * T * k.k1;
    F[fu_g_res] = T * k.k0;
    F[fu_cp_res] = -T * (2.0 * k.k1 + T * k.k2);
    if (cpId > 0.0) real_heat_capacities(s, phase, T, v, cpId, out);
    return true;
}

bool finite(const StateFunctions& f) {
    return std::isfinite(f.h) && std::isfinite(f.s) && std::isfinite(f.u) && std::isfinite(f.cp) &&
           std::isfinite(f.cV);
}

EnvironmentPhase environment_phase(Session& s, int phase, double v) {
    const double T = s.reference.TEnv, p = s.reference.pEnv;
    PhaseArrays arrays;
    const StateFunctions f = phase_functions(s, phase, T, p, v, arrays);
    return {.h = f.h, .u = f.u, .s = f.s, .v = v};
}

// The two cp(idG) sets and the constants of the substance that an environment state depends on.
std::array<float, 14> substance_key(const SubstanceConstants& k) {
    std::array<float, 14> key{};
    for (std::size_t i = 0; i < 5; ++i) key[i] = k.cpPoly[i], key[i + 5] = k.cpDIPPR[i];
    key[10] = k.MolMass, key[11] = k.dfH0, key[12] = k.dfG0, key[13] = k.S0abs;
    return key;
}

bool same_selection(const EnvironmentCache& c, const Session& s) {
    const SubstanceConstants& k = s.substance;
    return c.valid && c.Tcr == k.Tcr && c.pcr == k.pcr && c.omega == k.omega &&
           c.EOSKode == s.models.EOSKode && c.cpKode == s.models.cpKode &&
           c.VPhaseOnly == s.models.VPhaseOnly && c.eos == s.eos && c.reference == s.reference &&
           c.substance == substance_key(k);
}

// eH = (h - hE) - (s - sE) TEnv, eU = (u - uE) - (s - sE) TEnv + (v - vE) pEnv
void add_exergies(const Session& s, const EnvironmentPhase& env, StateFunctions& f) {
    const double T = s.reference.TEnv, p = s.reference.pEnv;
    f.eH = (f.h - env.h) - (f.s - env.s) * T;
    f.eU = (f.u - env.u) - (f.s - env.s) * T + (f.v - env.v) * p;
}

}  // namespace

CubicDerivatives CubicTerme(const Session& s, double T) {
    const EosBlock& e = s.eos;
    const Scratch& x = s.scratch;
    CubicDerivatives k;
    if (is_ji(s.models.EOSKode)) {
        ji_terms(s, T, k);
    } else if (s.models.EOSKode != eos_virial_manual) {
        if (e.AlphaForm == 2) {
            const double Tcr = s.substance.Tcr, m = e.EOSna;
            const double A = 1.0 + m * (1.0 - std::sqrt(T / Tcr));
            const double A1 = -0.5 * m * std::sqrt(1.0 / (Tcr * T)), A2 = -0.5 * A1 / T;
            k.a1 = 2.0 * e.EOSa * A * A1;
            k.a2 = 2.0 * e.EOSa * (A2 * A + A1 * A1);
        } else {
            k.a1 = e.EOSna * x.aT / T, k.a2 = (e.EOSna - 1.0) * k.a1 / T;
        }
        k.b1 = e.EOSnb * x.bT / T, k.b2 = (e.EOSnb - 1.0) * k.b1 / T;
        k.c1 = e.EOSnc * x.cT / T, k.c2 = (e.EOSnc - 1.0) * k.c1 / T;
        k.d1 = e.EOSnd * x.dT / T, k.d2 = (e.EOSnd - 1.0) * k.d1 / T;
    }
    // a/(R T): first and second T-derivative
    const double lag = T * k.a1 - x.aT;
    k.E1 = lag / (RGas * T * T);
    k.E2 = (T * T * k.a2 - 2.0 * lag) / (RGas * T * T * T);
    return k;
}

VirialDerivatives ThermoReal(Session& s, int phase, double T, double p, double v,
                             const CubicDerivatives& terms, PhaseArrays& out) {
    if (s.models.VPhaseOnly) {
        if (std::fabs(v - s.scratch.Bvirial) < 1e-11) return {};
        const VirialDerivatives b = virial_derivatives(s, T, terms);
        virial_real(s, phase, T, p, v, b, out);
        return b;
    }
    if (std::fabs(v - s.scratch.bT) < 1e-11) return {};
    cubic_real(s, phase, T, v, terms, out);
    return {};
}

void ThermoFunc(Session& s, int phase, double T, double p, double v, PhaseArrays& out) {
    const CpResult cp = cpIdG(s, T, s.models.cpKode);
    residual_functions(s, phase, T, p, v, cp.err ? 0.0 : static_cast<double>(cp.cp), out);
}

void ExpansionKoeff(int phase, double p, double v, PhaseArrays& out) {
    const double* D = out.DerivA[phase];
    double* C = out.CoefA[phase];
    C[coef_alpha] = D[dvdT_p] / v;
    C[coef_chi] = -D[dvdp_T] / v;
    C[coef_beta] = D[dpdT_v] / p;
}

StateFunctions phase_functions(Session& s, int phase, double T, double p, double v, PhaseArrays& arrays) {
    StateFunctions f;
    const IdealGas id = IdGasFunc(s, T, p);
    if (id.err) {
        f.err = -1;
        return f;
    }
    residual_functions(s, phase, T, p, v, id.cp, arrays);
    const double* F = arrays.FuncA[phase];
    f.v = v;
    f.cpId = id.cp;
    f.h = id.h + RGas * F[fu_h_res];
    f.s = id.s + RGas * F[fu_s_res];
    f.u = f.h - p * v;
    f.g = f.h - T * f.s;
    f.a = f.g - p * v;
    f.cp = F[fu_cp], f.cV = F[fu_cV], f.w = F[fu_w];
    if (!finite(f)) {
        f = {};
        f.err = -1;
    }
    return f;
}

const EnvironmentCache& environment_state(Session& s) {
    if (same_selection(s.environment, s)) return s.environment;
    EnvironmentCache c;
    const Scratch before = s.scratch;
    const double T = s.reference.TEnv, p = s.reference.pEnv;
    const IdealGas id = IdGasFunc(s, T, p);
    const VolumeResult volume = VolumeTp(s, T, p);
    c.err = id.err || volume.err ? std::int16_t{-1} : std::int16_t{0};
    c.hasL = volume.LFlag, c.hasV = volume.VFlag;
    if (c.err == 0) {
        if (c.hasL) c.L = environment_phase(s, phase_L, volume.vL);
        if (c.hasV) c.V = environment_phase(s, phase_V, volume.vV);
        if (!c.hasL) c.L = c.V;
        if (!c.hasV) c.V = c.L;
    }
    s.scratch = before;
    c.EOSKode = s.models.EOSKode, c.cpKode = s.models.cpKode, c.VPhaseOnly = s.models.VPhaseOnly;
    c.eos = s.eos, c.reference = s.reference;
    c.Tcr = s.substance.Tcr, c.pcr = s.substance.pcr, c.omega = s.substance.omega;
    c.substance = substance_key(s.substance);
    c.valid = true;
    s.environment = c;
    return s.environment;
}

StateFunctions state_functions(Session& s, int phase, double T, double p, double v, PhaseArrays& arrays) {
    StateFunctions f = phase_functions(s, phase, T, p, v, arrays);
    if (f.err) return f;
    const EnvironmentCache& env = environment_state(s);
    if (env.err) {
        f.err = -1;
        f.environment_failed = true;
    } else {
        add_exergies(s, env.hasV ? env.V : env.L, f);
    }
    return f;
}

StateFunctions ThermoState(Session& s, double T, double p, double v, int phase) {
    PhaseArrays arrays;
    const StateFunctions f = state_functions(s, phase, T, p, v, arrays);
    if (f.err && !f.environment_failed) return f;
    EOSParT(s, T);
    pLV_EOS(s, T);
    return f;
}

SaturatedFunctions ThermoSat(Session& s, double T) {
    SaturatedFunctions r;
    const double Tcr = s.substance.Tcr;
    EOSParT(s, T);
    const Saturation sat = pLV_EOS(s, T);
    r.p = sat.value;
    if (sat.err) {
        r.err = -1;
        return r;
    }
    double vL = 0.0, vV = 0.0;
    if (T == Tcr && s.eos.rhocrEOS > 0.0) {
        vL = vV = static_cast<double>(s.substance.MolMass) / s.eos.rhocrEOS;
    } else {
        const VolumeResult volume = VolumeTp(s, T, r.p);
        if (volume.err || !(volume.vL > 0.0) || !(volume.vV > 0.0)) {
            r.err = -1;
            return r;
        }
        vL = volume.vL, vV = volume.vV;
    }
    PhaseArrays arrays;
    r.L = phase_functions(s, phase_L, T, r.p, vL, arrays);
    r.V = phase_functions(s, phase_V, T, r.p, vV, arrays);
    if (r.L.err || r.V.err) {
        r.err = -1;
        return r;
    }
    const EnvironmentCache& env = environment_state(s);
    if (env.err) {
        r.err = -1;
        r.L.environment_failed = r.V.environment_failed = true;
    } else {
        add_exergies(s, env.L, r.L);
        add_exergies(s, env.V, r.V);
    }
    EOSParT(s, T);
    return r;
}

}  // namespace quom
