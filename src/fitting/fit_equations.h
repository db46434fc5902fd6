// The equations that are fitted to measured points, and their derivatives by the parameters.
#pragma once
#include "fitting/fit_catalogue.h"

namespace quom {

// What an equation takes beside abscissa and parameters.
struct FitConstants {
    bool UseLg = false;  // vapor pressure equations: A, B, E, H belong to the common logarithm
    double TcFit = 0;    // T(cr) [K]
    double pcFit = 0;    // p(cr) [kPa]

    double f() const;  // ln 10 with UseLg, else 1
};

// An abscissa (x, or T in K) with the terms of it that no parameter changes.
struct Abscissa {
    double x = 0, lnx = 0;
    double z = 0, lnz = 0;  // 1 - T/T(cr), where there is a T(cr)

    Abscissa(double abscissa, const FitConstants& constants);
};

// y at an abscissa; not finite where the equation has no value. par: the parameters in plain units.
using FitEquation = double (*)(const FitConstants&, const Abscissa&, const double* par);
// dy/dpar(j) into slopes, for the y of the equation there.
using FitDerivatives = void (*)(const FitConstants&, const Abscissa&, const double* par, double y,
                                double* slopes);

// Vapor pressure [kPa] of an equation that is not explicit or has no value everywhere; 0 where it fails.
struct FitPressure {
    double p = 0;
    bool fail = false;
};

// Frost and Kalkwarf (1953), implicit in p, par: A B C D E
//     ln p / f = A + B/(C + T - 273.15) + (D/f) ln T + E p/T^2
// correlated: D = 1.8 B/T(cr) + 2.67 with the B of the common logarithm, by Thodos (1950), instead of par[3].
FitPressure p0_FRO(double T, const double* par, bool correlated, const FitConstants& constants);
// That D; B as constants.UseLg has it.
double thodos_D(double B, const FitConstants& constants);

// Wagner (1973), par: A B C D, with z = 1 - T/T(cr)
//     p = p(cr) exp((T(cr)/T) (A z + B z^1.5 + C z^3 + D z^6))
// 0 without fail for T at or above T(cr) or below 1e-6 K; fails where |A z + ...| reaches 50.
FitPressure p0_WAG(double T, const double* par, double TcFit, double pcFit);

// Aly and Lee (1981), par: A B C D E [kJ/(kmol K)], [K]
//     cp = A + B ((C/T)/sinh(C/T))^2 + D ((E/T)/cosh(E/T))^2
// A alone where |B C D E| is below 1e-35; infinite where C/T or E/T reaches 709.78.
double cpSinh(double T, const double* par);

struct FitFunctions {
    FitEquation value;
    FitDerivatives derivatives;
};
// The functions of a model that has an equation.
FitFunctions fit_functions(FitModel model);

}  // namespace quom
