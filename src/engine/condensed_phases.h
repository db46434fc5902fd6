// Densities and heat capacities of the L- and S-phase from their own equations, and Benson's method.
#pragma once
#include <cstdint>

#include "session/session.h"

namespace quom {

struct DensityResult {
    double rho = 0;       // [kg/m^3]
    std::int16_t dT = 0;  // how far T lies outside the validity [K], below it negative
    std::int16_t err = 0;
};
// rho(L) = Fu(T) of the database at T [K] (single); warn allows the box when T is more than 5 K outside.
// err -1: no density above 0 from the polynomial form, or no coefficients for any form.
DensityResult rhoL_Fu(Session& s, float T, bool warn = false);
// rho(S) = Fu(T) at T [K]; the value is a single. rho 0: no equation.
DensityResult rhoS_Fu(Session& s, float T, bool warn = false);

// cp(L), cp(S) [kJ/(kmol K)] of the database at T [K]; 0 below 1e-6 K.
float cpL_Fu(const Session& s, double T);
float cpS_Fu(const Session& s, double T);

// rho(L) [kg/m^3] at T [K] by the law of rectilinear diameters (Cailletet and Mathias 1886) through the
// reference point of the record and the critical point; 0 when the reference point or rho(cr) is missing.
double rhoLBenson(const Session& s, double T, double rhoV);
// Benson's rho(L) [kg/m^3] at the normal boiling point; pcr [kPa], rhocrDB [kg/m^3]. pRef is not used.
float rhoLRefBenson(double pRef, double pcr, double rhocrDB);

}  // namespace quom
