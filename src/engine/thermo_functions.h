// Derivatives of the equation of state, residual and absolute thermodynamic functions of one phase.
#pragma once
#include <cstdint>

#include "session/session.h"

namespace quom {

enum Phase : int { phase_L = 0, phase_V = 1 };

// Entries of the result arrays; result lists, diagram axes and the diagnosis use these numbers.
enum DerivEntry : int { dpdv_T = 1, dpdT_v = 2, dvdp_T = 3, dvdT_p = 4, dTdv_p = 5, dTdp_v = 6 };
enum CoefEntry : int { coef_alpha = 1, coef_chi = 2, coef_beta = 3 };  // [1/K], [1/kPa], [1/K]
enum Deriv2Entry : int { d2pdv2 = 1, d2vdT2 = 4, d2Tdv2 = 5 };
enum FuncEntry : int {
    fu_lnphi = 0,       // ln phi
    fu_dlnphidT = 1,    // [1/K] at p
    fu_d2lnphidT2 = 2,  // [1/K^2] at p
    fu_s_res = 3,       // (s - s_idG)/R
    fu_h_res = 4,       // (h - h_idG)/R [K]
    fu_g_res = 5,       // (g - g_idG)/R [K]
    fu_cp_res = 6,      // (cp - cp_idG)/R
    fu_dTdp_h = 7,      // Joule-Thomson coefficient [K/kPa]
    fu_cV = 8,          // [kJ/(kmol K)]
    fu_cp = 9,          // [kJ/(kmol K)]
    fu_w = 10,          // speed of sound [m/s]
};

// Result arrays, first index the phase. The caller owns and zeroes them (value initialisation does).
struct PhaseArrays {
    double DerivA[2][7]{};
    double Deriv2A[2][6]{};
    double CoefA[2][4]{};
    double FuncA[2][11]{};
};

// First and second T-derivatives of a, b, c, d, and of a/(R T): E1, E2. Needs EOSParT(T) before.
struct CubicDerivatives {
    double a1 = 0, a2 = 0, b1 = 0, b2 = 0, c1 = 0, c2 = 0, d1 = 0, d2 = 0, E1 = 0, E2 = 0;
};
CubicDerivatives CubicTerme(const Session& s, double T);

struct VirialDerivatives {
    double B1 = 0, B2 = 0;  // dB/dT [m^3/(kmol K)], d2B/dT2
};
// Fills DerivA and Deriv2A of the phase at T [K], p [kPa], v [m^3/kmol]; leaves them where v is at b or B.
VirialDerivatives ThermoReal(Session& s, int phase, double T, double p, double v,
                             const CubicDerivatives& terms, PhaseArrays& out);

// Fills DerivA, Deriv2A and FuncA of the phase; entries 7 to 10 of FuncA stay without a cp(idG).
// Leaves aT .. dT (and Bvirial) of T.
void ThermoFunc(Session& s, int phase, double T, double p, double v, PhaseArrays& out);

// Fills CoefA of the phase from DerivA.
void ExpansionKoeff(int phase, double p, double v, PhaseArrays& out);

// Absolute functions of one phase: [kJ/kmol], [kJ/(kmol K)], w [m/s], v [m^3/kmol].
struct StateFunctions {
    double v = 0, h = 0, u = 0, s = 0, g = 0, a = 0;
    double eH = 0, eU = 0;  // exergies of h and u
    double cp = 0, cV = 0, cpId = 0, w = 0;
    std::int16_t err = 0;             // -1: no ideal gas function here, or no environment state
    bool environment_failed = false;  // h to w are set, only eH, eU are missing
};

// Absolute functions of one phase without exergies and without touching the roots of the scratch; the arrays
// of the phase are filled.
StateFunctions phase_functions(Session& s, int phase, double T, double p, double v, PhaseArrays& arrays);

// The same with exergies.
StateFunctions state_functions(Session& s, int phase, double T, double p, double v, PhaseArrays& arrays);

// Absolute functions with exergies of one phase at T [K], p [kPa], v [m^3/kmol]. Leaves the scratch valid for
// T: a(T) .. d(T), and the saturation roots below Tcr.
StateFunctions ThermoState(Session& s, double T, double p, double v, int phase);

// Both saturated phases at T [K] under the GLOBAL concept. w is 0.
struct SaturatedFunctions {
    StateFunctions L, V;
    double p = 0;  // p(LV) [kPa]
    std::int16_t err = 0;
};
SaturatedFunctions ThermoSat(Session& s, double T);

// State of the environment TEnv, pEnv by the models in force, evaluated once per selection.
const EnvironmentCache& environment_state(Session& s);

}  // namespace quom
