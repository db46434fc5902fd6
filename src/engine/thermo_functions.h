// Derivatives of the equation of state, residual and absolute thermodynamic functions of one phase.
#pragma once
#include <optional>

#include "engine/eos_parameters.h"
#include "engine/fluid.h"
#include "engine/volume_solver.h"

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

// Result arrays of one phase, by the entries above. An entry that does not exist there is NaN: functions of
// ln p at p <= 0, cp, w and what is built on them where (dp/dv)_T is 0 within rounding, 7 to 10 without
// cp(idG), w where cp or cV is not above 0. Index 0 of DerivA, Deriv2A, CoefA and 2, 3 of Deriv2A are not in
// use.
struct PhaseArrays {
    double DerivA[7];
    double Deriv2A[6];
    double CoefA[4];
    double FuncA[11];
    PhaseArrays();  // all NaN
};

// One phase at T [K], v [m^3/kmol]; p [kPa] is that of the state.
//
// All arrays are filled, CoefA (ExpansionKoeff) too: alpha = (dv/dT)_p/v, chi = -(dv/dp)_T/v,
// beta = (dp/dT)_v/p.
PhaseArrays ThermoFunc(const Fluid& fluid, double T, double p, double v);

// Absolute functions of one phase. A function that does not exist there is NaN; reason tells the first cause.
// Where it is p_not_positive, s, g, a, the exergies and ln phi are absent alone; critical_point: cp and w;
// unstable, cp_not_positive: w; ideal_gas_range with h: cp, cV and w.
struct StateFunctions {
    double v, h, u, s, g, a;  // [m^3/kmol], [kJ/kmol], [kJ/(kmol K)]
    double eH, eU;            // exergies of h and u [kJ/kmol]
    double cp, cV, cpId, w;   // [kJ/(kmol K)], w [m/s]
    double lnphi;
    Reason reason = Reason::none;         // why h .. w are absent
    Reason exergy_reason = Reason::none;  // why eH, eU are absent
    StateFunctions();                     // all NaN
    std::int16_t err() const { return err_of(reason); }
};

// Absolute functions with exergies at T [K], p [kPa], v [m^3/kmol]. Where the environment has both phases its
// V-phase stands for it.
//     h = h_idG + R k4, u = h - p v, s = s_idG + R k3, g = h - T s, a = g - p v
//     eH = (h - hE) - (s - sE) TEnv, eU = (u - uE) - (s - sE) TEnv + (v - vE) pEnv
StateFunctions ThermoState(const Fluid& fluid, double T, double p, double v);

// The same from arrays that are there already.
StateFunctions state_functions(const Fluid& fluid, double T, double p, double v, const PhaseArrays& arrays);

// The phase of the environment that single states are compared with.
inline const EnvironmentPhase& environment_phase(const Environment& environment) {
    return environment.hasV ? environment.V : environment.L;
}
// eH and eU [kJ/kmol] of h, u, s, v against a phase of the environment, as above.
inline double exergy_of_h(const Environment& environment, const EnvironmentPhase& at, double h, double s) {
    return (h - at.h) - (s - at.s) * environment.T;
}
inline double exergy_of_u(const Environment& environment, const EnvironmentPhase& at, double u, double s,
                          double v) {
    return (u - at.u) - (s - at.s) * environment.T + (v - at.v) * environment.p;
}

// Both saturated phases at T [K] under the GLOBAL concept: exergies of L by the L-phase of the environment,
// of V by its V-phase. w is NaN.
struct SaturatedFunctions {
    StateFunctions L, V;
    double p = 0;  // p(LV) [kPa]
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
SaturatedFunctions ThermoSat(const Fluid& fluid, double T);

// State of the environment of a fluid whose other fields are set; called by make_fluid.
Environment make_environment(const Fluid& fluid);

}  // namespace quom
