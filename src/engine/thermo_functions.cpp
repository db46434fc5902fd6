#include "engine/thermo_functions.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/ideal_gas.h"
#include "engine/saturation.h"

namespace quom {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double InvR = 1.0 / RGas;
constexpr double SmallestD = 1e-11;  // smallest v - b (v - B) [m^3/kmol]
// Smallest |(dp/dv)_T| (v - b)^2/(R T): nearer to 0 rounding decides cp and the coefficients. Along the
// critical isochore it is reached within 3e-7 of T(cr).
constexpr double SmallestY = 3e-7;

// J = integral of dv/((v + c)(v + d)) from v to infinity = ln((v + d)/(v + c))/(d - c), and its T-derivatives
// at v.
struct AttractionIntegral {
    double J = 0, J1 = 0, J2 = 0;
};

// Series in q = ((d - c)/(2 w))^2 about w = v + (c + d)/2, which holds for c = d too:
//     J = f(q)/w,  f = 1 + q/3 + q^2/5 + ...
AttractionIntegral series_integral(const EosAtT& at, const CubicDerivatives& k, double v) {
    const double e = at.d - at.c, iw = 1.0 / (v + 0.5 * (at.c + at.d)), half = 0.5 * e * iw, q = half * half;
    const double f = 1.0 + q * (1.0 / 3.0 + q * (1.0 / 5.0 + q * (1.0 / 7.0 + q * (1.0 / 9.0 + q / 11.0))));
    AttractionIntegral r{.J = f * iw};
    if (k.c1 == 0.0 && k.d1 == 0.0 && k.c2 == 0.0 && k.d2 == 0.0) return r;
    const double fq = 1.0 / 3.0 + q * (2.0 / 5.0 + q * (3.0 / 7.0 + q * (4.0 / 9.0 + q * 5.0 / 11.0)));
    const double fqq = 2.0 / 5.0 + q * (6.0 / 7.0 + q * (12.0 / 9.0 + q * 20.0 / 11.0));
    const double e1 = k.d1 - k.c1, e2 = k.d2 - k.c2;
    const double w1 = 0.5 * (k.c1 + k.d1) * iw, w2 = 0.5 * (k.c2 + k.d2) * iw;  // of ln w
    const double square1 = 0.5 * e * e1 * iw * iw;                              // of e^2/4 at w
    const double square2 = 0.5 * (e1 * e1 + e * e2) * iw * iw;
    const double q1 = square1 - 2.0 * q * w1;
    const double q2 = square2 - 2.0 * square1 * w1 - 2.0 * q1 * w1 - 2.0 * q * (w2 - w1 * w1);
    r.J1 = (fq * q1 - f * w1) * iw;
    r.J2 = (fqq * q1 * q1 + fq * q2 - 2.0 * fq * q1 * w1 - f * w2 + 2.0 * f * w1 * w1) * iw;
    return r;
}

AttractionIntegral attraction_integral(const EosAtT& at, const CubicDerivatives& k, double v) {
    const double e = at.d - at.c, C = v + at.c, D = v + at.d;
    if (4e-3 * (C + D) * (C + D) > 4.0 * e * e) return series_integral(at, k, v);
    const double ie = 1.0 / e;
    AttractionIntegral r{.J = std::log(D / C) * ie};
    if (k.c1 == 0.0 && k.d1 == 0.0 && k.c2 == 0.0 && k.d2 == 0.0) return r;
    const double c1 = k.c1 / C, d1 = k.d1 / D, c2 = k.c2 / C, d2 = k.d2 / D;
    const double e1 = k.d1 - k.c1, e2 = k.d2 - k.c2;
    r.J1 = (d1 - c1 - r.J * e1) * ie;
    r.J2 = (d2 - d1 * d1 - c2 + c1 * c1 - 2.0 * r.J1 * e1 - r.J * e2) * ie;
    return r;
}

// What an equation of state says of one phase. Residual functions are differences to the ideal gas at T, p.
struct Residual {
    Reason reason = Reason::none;
    bool critical = false;    // (dp/dv)_T is 0 within rounding
    double p_v = 0, p_T = 0;  // (dp/dv)_T, (dp/dT)_v
    double v_T = 0;           // (dv/dT)_p
    double lnphi = 0;
    double h = 0, s = 0;    // h_res/R [K], s_res/R
    double cp = 0, cV = 0;  // cp_res/R, cV_res/R
    double throttle = 0;    // T (dv/dT)_p - v
};

Residual without_residual(Reason reason) {
    Residual r;
    r.reason = reason;
    return r;
}

// The cubic equation at T, v in parts that keep their digits where v is far above b: with D = v - b,
// N = (v + c)(v + d)
//     (dp/dT)_v = R (1 + x)/D,    (dp/dv)_T = -R T Y/D^2,  Y = 1 - y
struct CubicParts {
    double iT, iRT;
    double D, iD, iN, M, K;  // M = dN/dv, K = dN/dT at v
    double aN;               // a/N
    double x, y, Y;
    CubicParts(const EosAtT& at, const CubicDerivatives& k, double v)
        : iT(1.0 / at.T),
          iRT(InvR * iT),
          D(v - at.b),
          iD(1.0 / D),
          iN(1.0 / ((v + at.c) * (v + at.d))),
          M(2.0 * v + at.c + at.d),
          K((v + at.d) * k.c1 + (v + at.c) * k.d1),
          aN(at.a * iN) {
        x = at.T * k.b1 * iD + (aN * K - k.a1) * iN * D * InvR;
        y = aN * M * iN * D * D * iRT;
        Y = 1.0 - y;
    }
};

// From the residual Helmholtz energy A(T, v) = -R T ln((v - b)/v) - a J:
//     h_res = p v - R T + T (a J)' - a J - R T^2 b'/(v - b)
//     s_res = R ln(p (v - b)/(R T)) + (a J)' - R T b'/(v - b)
//     cV_res = T (a J)'' - R T (2 b' + T b'')/(v - b) - R (T b'/(v - b))^2
//     cp - cV = -T (dp/dT)_v^2/(dp/dv)_T
Residual cubic_residual(const EosAtT& at, const CubicDerivatives& k, const CubicParts& q, double p,
                        double v) {
    const double T = at.T, RT = RGas * T;
    const AttractionIntegral J = attraction_integral(at, k, v);
    const double aJ = at.a * J.J, aJ1 = k.a1 * J.J + at.a * J.J1;
    const double aJ2 = k.a2 * J.J + 2.0 * k.a1 * J.J1 + at.a * J.J2;
    const double Tb = T * k.b1 * q.iD;
    // Z - 1: of a thin gas from terms that keep their digits, of a dense fluid, whose v - b has lost some,
    // from p v
    const bool dense = p > 0.0 && v < 8.0 * at.b;
    const double excess = dense ? p * v * q.iRT - 1.0 : at.b * q.iD - v * q.aN * q.iRT;
    Residual r;
    r.p_T = RGas * (1.0 + q.x) * q.iD;
    r.p_v = -RT * q.Y * q.iD * q.iD;
    r.h = T * (excess - Tb) + (T * aJ1 - aJ) * InvR;
    r.cV = T * aJ2 * InvR - Tb * (2.0 + Tb) - T * T * k.b2 * q.iD;
    if (p > 0.0) {
        // R T/(p (v - b)) = 1 + a/(p N) on the isotherm
        const double ip = 1.0 / p, small = q.aN * ip;
        const double ln_ratio = small < 1e-3 ? std::log1p(small) : std::log(RT * q.iD * ip);
        r.lnphi = excess + ln_ratio - aJ * q.iRT;
        r.s = aJ1 * InvR - ln_ratio - Tb;
    } else {
        r.lnphi = NaN;
        r.s = NaN;
    }
    r.critical = std::fabs(q.Y) < SmallestY;
    if (r.critical) {
        r.cp = NaN;
        r.v_T = NaN;
        r.throttle = NaN;
    } else {
        const double iY = 1.0 / q.Y;
        r.cp = r.cV + (q.x * (2.0 + q.x) + q.y) * iY;
        r.v_T = (1.0 + q.x) * q.D * iY * q.iT;
        r.throttle = (q.x * q.D + v * q.y - at.b) * iY;
    }
    return r;
}

// v = R T/p + B:  ln phi = B p/(R T) and its T-derivatives.
Residual virial_residual(const VirialDerivatives& B, double T, double p, double v) {
    if (!(v - B.B > SmallestD)) return without_residual(Reason::volume_below_B);
    if (!(p > 0.0)) return without_residual(Reason::p_not_positive);
    const double D = v - B.B, TB = T * B.B1, pRT = p / (RGas * T), pR = p / RGas;
    const double X = 1.0 + TB / D;
    Residual r;
    r.p_v = -p * pRT;
    r.p_T = RGas * X / D;
    r.v_T = RGas / p + B.B1;
    r.lnphi = B.B * pRT;
    r.h = (B.B - TB) * pR;
    r.s = -B.B1 * pR;
    r.cp = -T * B.B2 * pR;
    r.cV = r.cp + 1.0 - T * r.p_T * r.v_T / RGas;
    r.throttle = TB - B.B;
    return r;
}

Reason refusal(const Fluid& fluid, double T, double v) {
    if (!fluid.has_eos()) return fluid.eos_reason;
    if (!(T >= TinyT) || !std::isfinite(T)) return Reason::T_not_positive;
    if (!(v > 0.0) || !std::isfinite(v)) return Reason::volume_not_positive;
    return Reason::none;
}

Residual cubic_residual(const EosTerms& terms, double p, double v) {
    const auto& [at, k] = terms;
    if (!(v - at.b > SmallestD)) return without_residual(Reason::volume_below_b);
    return cubic_residual(at, k, CubicParts(at, k, v), p, v);
}

Residual residual_of(const Fluid& fluid, double T, double p, double v) {
    const Reason reason = refusal(fluid, T, v);
    if (reason != Reason::none) return without_residual(reason);
    return fluid.VPhaseOnly ? virial_residual(virial_derivatives(fluid, T), T, p, v)
                            : cubic_residual(EOSTerme(fluid, T), p, v);
}

// cp, cV [kJ/(kmol K)] and w [m/s] from the residual heat capacities and cp(idG).
struct HeatCapacities {
    double cp = NaN, cV = NaN, w = NaN;
};

// w^2 = -v^2 (cp/cV) (dp/dv)_T/M, p in kPa: factor 1000
HeatCapacities heat_capacities(const Fluid& fluid, const Residual& res, double v, double cpId) {
    HeatCapacities r;
    if (!(cpId > 0.0)) return r;
    r.cV = cpId - RGas + RGas * res.cV;
    if (res.critical) return r;
    r.cp = cpId + RGas * res.cp;
    if (r.cp > 0.0 && r.cV > 0.0 && res.p_v < 0.0 && fluid.M > 0.0)
        r.w = v / fluid.M * std::sqrt(-r.cp / r.cV * res.p_v * 1000.0 * fluid.M);
    return r;
}

// Why one of them is absent.
Reason absence(const HeatCapacities& heat, double p_v) {
    if (!std::isnan(heat.w)) return Reason::none;
    if (std::isnan(heat.cV)) return Reason::ideal_gas_range;
    if (std::isnan(heat.cp)) return Reason::critical_point;
    if (p_v >= 0.0) return Reason::unstable;
    return heat.cp > 0.0 && heat.cV > 0.0 ? Reason::no_molar_mass : Reason::cp_not_positive;
}

// Second derivatives of the cubic equation, in the parts of CubicParts:
//     (d2p/dT2)_v = R u1/(T D),  d2p/(dv dT) = -R (1 + u2)/D^2,  (d2p/dv2)_T = 2 R T (1 - u3)/D^3
//     (d2v/dT2)_p = -(p_TT + 2 p_vT v_T + p_vv v_T^2)/p_v
//     (d2T/dv2)_p = -(p_vv + 2 p_vT T_v + p_TT T_v^2)/p_T
void cubic_second(const EosAtT& at, const CubicDerivatives& k, const CubicParts& q, bool critical, double v,
                  PhaseArrays& out) {
    const double T = at.T, iT = q.iT, a = at.a, iN = q.iN, iN2 = iN * iN, sum = at.c + at.d;
    const double Tb = T * k.b1 * q.iD, Kt = (v + at.d) * k.c2 + (v + at.c) * k.d2 + 2.0 * k.c1 * k.d1;
    const double attraction = -k.a2 + (2.0 * k.a1 * q.K + a * Kt) * iN - 2.0 * a * q.K * q.K * iN2;
    const double u1 = 2.0 * Tb * (1.0 + Tb) + T * T * k.b2 * q.iD + attraction * iN * T * q.D * InvR;
    const double mixed = k.a1 * q.M + a * (k.c1 + k.d1) - 2.0 * a * q.M * q.K * iN;
    const double u2 = 2.0 * Tb - mixed * iN2 * q.D * q.D * InvR;
    const double bend = a * (3.0 * v * (v + sum) + sum * sum - at.c * at.d) * iN2 * iN;
    const double u3 = bend * q.D * q.D * q.D * q.iRT;
    const double X = 1.0 + q.x, iD2 = q.iD * q.iD, RD = RGas * iD2;
    const double p_vv = 2.0 * RD * T * q.iD * (1.0 - u3), p_vT = -RD * (1.0 + u2),
                 p_TT = RGas * u1 * q.iD * iT;
    out.Deriv2A[d2pdv2] = p_vv;
    const double T_v = T * q.Y / (q.D * X), p_T = RGas * X * q.iD;
    out.Deriv2A[d2Tdv2] = -(p_vv + (2.0 * p_vT + p_TT * T_v) * T_v) / p_T;
    if (critical) return;
    // (1 - u3) X/Y - 1 - u2 without the terms that cancel
    const double iY = 1.0 / q.Y, rest = (q.x - u3 * X + q.y - u2 * q.Y) * iY;
    out.Deriv2A[d2vdT2] = q.D * iY * iT * iT * (u1 + 2.0 * X * iY * rest);
}

void drop_infinite(double* first, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        if (std::isinf(first[i])) first[i] = NaN;
    }
}

// Absolute functions of one phase without exergies, cp, cV and w, with cp(idG).
StateFunctions absolute_functions(const Fluid& fluid, double T, double p, double v, const Residual& res) {
    StateFunctions f;
    f.reason = res.reason;
    if (f.reason != Reason::none) return f;
    f.v = v;
    f.lnphi = res.lnphi;
    f.reason = fluid.ideal_gas.reason;
    if (f.reason != Reason::none) return f;
    const IdealGas id = IdGasFunc(fluid, T, p);
    f.reason = id.reason;
    if (f.reason != Reason::none) return f;
    f.cpId = id.cp;
    f.h = id.h + RGas * res.h;
    f.u = f.h - p * v;
    f.s = id.s + RGas * res.s;
    f.g = f.h - T * f.s;
    f.a = f.g - p * v;
    return f;
}

void add_heat_capacities(const HeatCapacities& heat, double p, double p_v, StateFunctions& f) {
    if (f.reason != Reason::none) return;
    f.cp = heat.cp;
    f.cV = heat.cV;
    f.w = heat.w;
    f.reason = p > 0.0 ? absence(heat, p_v) : Reason::p_not_positive;
}

StateFunctions phase_functions(const Fluid& fluid, double T, double p, double v) {
    const Residual res = residual_of(fluid, T, p, v);
    StateFunctions f = absolute_functions(fluid, T, p, v, res);
    add_heat_capacities(heat_capacities(fluid, res, v, f.cpId), p, res.p_v, f);
    return f;
}

void add_exergies(const Environment& environment, const EnvironmentPhase& at, StateFunctions& f) {
    f.exergy_reason = environment.reason;
    if (f.exergy_reason != Reason::none) return;
    f.eH = exergy_of_h(environment, at, f.h, f.s);
    f.eU = exergy_of_u(environment, at, f.u, f.s, f.v);
    if (std::isnan(f.eH)) f.exergy_reason = f.reason;
}

}  // namespace

// Filled here, not set to 0 before. NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
PhaseArrays::PhaseArrays() {
    std::fill_n(DerivA, 7, NaN);
    std::fill_n(Deriv2A, 6, NaN);
    std::fill_n(CoefA, 4, NaN);
    std::fill_n(FuncA, 11, NaN);
}

StateFunctions::StateFunctions()
    : v(NaN),
      h(NaN),
      u(NaN),
      s(NaN),
      g(NaN),
      a(NaN),
      eH(NaN),
      eU(NaN),
      cp(NaN),
      cV(NaN),
      cpId(NaN),
      w(NaN),
      lnphi(NaN) {}

PhaseArrays ThermoFunc(const Fluid& fluid, double T, double p, double v) {
    PhaseArrays out;
    if (refusal(fluid, T, v) != Reason::none) return out;
    const bool virial = fluid.VPhaseOnly;
    const VirialDerivatives B = virial ? virial_derivatives(fluid, T) : VirialDerivatives{};
    const EosTerms terms = virial ? EosTerms{} : EOSTerme(fluid, T);
    const Residual res = virial ? virial_residual(B, T, p, v) : cubic_residual(terms, p, v);
    if (res.reason != Reason::none) return out;
    double* D = out.DerivA;
    D[dpdv_T] = res.p_v;
    D[dpdT_v] = res.p_T;
    D[dTdp_v] = 1.0 / res.p_T;
    D[dTdv_p] = -res.p_v / res.p_T;
    if (!res.critical) {
        D[dvdp_T] = 1.0 / res.p_v;
        D[dvdT_p] = res.v_T;
    }
    if (virial) {
        const double v_B = v - B.B, slope = p / (p * B.B1 + RGas);
        D[dTdv_p] = slope;
        out.Deriv2A[d2pdv2] = 2.0 * RGas * T / (v_B * v_B * v_B);
        out.Deriv2A[d2vdT2] = B.B2;
        // This form is the definition here; it is not the exact second derivative.
        out.Deriv2A[d2Tdv2] = slope * slope * B.B2;
    } else {
        cubic_second(terms.at, terms.k, CubicParts(terms.at, terms.k, v), res.critical, v, out);
    }
    out.CoefA[coef_alpha] = D[dvdT_p] / v;
    out.CoefA[coef_chi] = -D[dvdp_T] / v;
    out.CoefA[coef_beta] = D[dpdT_v] / p;
    double* F = out.FuncA;
    F[fu_lnphi] = res.lnphi;
    F[fu_dlnphidT] = -res.h / (T * T);
    F[fu_d2lnphidT2] = (2.0 * res.h / T - res.cp) / (T * T);
    F[fu_s_res] = res.s;
    F[fu_h_res] = res.h;
    F[fu_g_res] = T * res.lnphi;
    F[fu_cp_res] = res.cp;
    const CpResult cpId = cpIdG(fluid.substance, T, fluid.models.cpKode);
    if (cpId.reason == Reason::none && cpId.cp > 0.0f) {
        const HeatCapacities heat = heat_capacities(fluid, res, v, static_cast<double>(cpId.cp));
        F[fu_cp] = heat.cp;
        F[fu_cV] = heat.cV;
        F[fu_w] = heat.w;
        F[fu_dTdp_h] = res.throttle / heat.cp;
    }
    drop_infinite(out.DerivA, 7);
    drop_infinite(out.Deriv2A, 6);
    drop_infinite(out.CoefA, 4);
    drop_infinite(out.FuncA, 11);
    return out;
}

StateFunctions ThermoState(const Fluid& fluid, double T, double p, double v) {
    StateFunctions f = phase_functions(fluid, T, p, v);
    add_exergies(fluid.environment, environment_phase(fluid.environment), f);
    return f;
}

StateFunctions state_functions(const Fluid& fluid, double T, double p, double v, const PhaseArrays& arrays) {
    const double* F = arrays.FuncA;
    Residual res;
    res.reason = refusal(fluid, T, v);
    if (res.reason == Reason::none && std::isnan(F[fu_h_res]))
        res.reason = fluid.VPhaseOnly ? Reason::volume_below_B : Reason::volume_below_b;
    res.lnphi = F[fu_lnphi];
    res.h = F[fu_h_res];
    res.s = F[fu_s_res];
    StateFunctions f = absolute_functions(fluid, T, p, v, res);
    add_heat_capacities({.cp = F[fu_cp], .cV = F[fu_cV], .w = F[fu_w]}, p, arrays.DerivA[dpdv_T], f);
    add_exergies(fluid.environment, environment_phase(fluid.environment), f);
    return f;
}

SaturatedFunctions ThermoSat(const Fluid& fluid, double T) {
    SaturatedFunctions r;
    const Saturation sat = pLV_EOS(fluid, T);
    r.reason = sat.reason;
    if (!sat.found()) return r;
    r.p = sat.p;
    const bool critical = T == fluid.substance.Tcr;
    const auto phase = [&](double v, const EnvironmentPhase& environment) {
        StateFunctions f = phase_functions(fluid, T, r.p, critical ? fluid.eos.vcrEOS : v);
        f.w = NaN;
        add_exergies(fluid.environment, environment, f);
        return f;
    };
    r.L = phase(sat.vL, fluid.environment.L);
    r.V = phase(sat.vV, fluid.environment.V);
    r.reason = r.L.reason != Reason::none ? r.L.reason : r.V.reason;
    return r;
}

Environment make_environment(const Fluid& fluid) {
    Environment r;
    r.T = fluid.reference.TEnv;
    r.p = fluid.reference.pEnv;
    const VolumeResult volume = VolumeTp(fluid, r.T, r.p);
    if (volume.reason != Reason::none) return r;
    r.hasL = volume.LFlag;
    r.hasV = volume.VFlag;
    r.reason = Reason::none;
    const auto phase = [&](double v) {
        const StateFunctions f = phase_functions(fluid, r.T, r.p, v);
        if (std::isnan(f.h) || std::isnan(f.s)) r.reason = Reason::no_environment;
        return EnvironmentPhase{.h = f.h, .u = f.u, .s = f.s, .v = v};
    };
    if (r.hasL) r.L = phase(volume.vL);
    if (r.hasV) r.V = phase(volume.vV);
    if (!r.hasL) r.L = r.V;
    if (!r.hasV) r.V = r.L;
    return r;
}

}  // namespace quom
