// Constants of the equations of state, and a(T) .. d(T) with their T-derivatives.
//
//     p = R T/(v - b) - a/((v + c)(v + d))
#pragma once
#include "engine/fluid.h"

namespace quom {

// Block, vcrEOS [m^3/kmol] and rhocrEOS [kg/m^3] of an equation of state for T(cr), p(cr), omega of the
// substance. van der Waals (1873), Berthelot (1899), Redlich and Kwong (1949), Soave (1972), Peng and
// Robinson (1976).
struct EosConstants {
    EosBlock block;
    Reason reason = Reason::none;  // no_equation, no_critical_data; not_finite: JiZc gives no block
};
EosConstants InitEOSPar(const SubstanceConstants& substance, Eos code, const EosInput& input);

// v(cr) = Zc R Tcr/pcr [m^3/kmol].
double vCritZ(const SubstanceConstants& substance, double Zc);

// a, b, c, d at one T [K]: a [kPa m^6/kmol^2], the others [m^3/kmol].
struct EosAtT {
    double T = 0;
    double a = 0, b = 0, c = 0, d = 0;
};
// For an equation of the V-phase only: a(T), b(T) of the cubic equation behind it. T below 1e-6 K: all 0.
EosAtT EOSParT(const Fluid& fluid, double T);
// The law of codes 7 and 8 for a block of parameters.
EosAtT EOSParT_Ji(const SubstanceConstants& substance, const EosBlock& block, bool form_2, double T);

// First and second T-derivatives of a, b, c, d.
struct CubicDerivatives {
    double a1 = 0, a2 = 0, b1 = 0, b2 = 0, c1 = 0, c2 = 0, d1 = 0, d2 = 0;
};
CubicDerivatives CubicTerme(const Fluid& fluid, const EosAtT& at);
// Both at T [K], at or above 1e-6 K.
struct EosTerms {
    EosAtT at;
    CubicDerivatives k;
};
EosTerms EOSTerme(const Fluid& fluid, double T);

// The constant of the second bracket of alpha(T) of codes 7 and 8, the same for every substance: 0.7^0.75.
inline constexpr double JiBracket = 0.76528558;

// JiCd of the Tovarn/Ji block from JiZc and JiOb.
inline double JiCdOf(double JiZc, double JiOb) { return (1.0 - 3.0 * JiZc + JiOb) / JiOb; }

}  // namespace quom
