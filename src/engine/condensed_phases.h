// Densities and heat capacities of the L- and S-phase from their own equations, and Benson's method.
#pragma once
#include "engine/fluid.h"

namespace quom {

struct DensityResult {
    double rho = 0;                // [kg/m^3]
    std::int16_t dT = 0;           // how far T lies outside the validity [K], below it negative
    Reason reason = Reason::none;  // no_liquid_density, no_database_equation
    std::int16_t err() const { return err_of(reason); }
};
// Whole kelvin outside the validity that are told of.
inline constexpr int density_warns = 5;

// rho(L) = Fu(T) of the database at T [K] (single); rho 0 without a reason above T(cr) of the Rackett form.
DensityResult rhoL_Fu(const SubstanceConstants& substance, float T);
// rho(S) = Fu(T) at T [K]; the value is a single.
DensityResult rhoS_Fu(const SubstanceConstants& substance, float T);

// cp(L), cp(S) [kJ/(kmol K)] of the database at T [K]; 0 below 1e-6 K.
float cpL_Fu(const SubstanceConstants& substance, double T);
float cpS_Fu(const SubstanceConstants& substance, double T);

// rho(L) [kg/m^3] at T [K] by the law of rectilinear diameters (Cailletet and Mathias 1886) through the
// reference point and the critical point; 0 when the reference point or rho(cr) is missing.
double rhoLBenson(const SubstanceConstants& substance, const BensonReference& benson, double T, double rhoV);
// Benson's rho(L) [kg/m^3] at the normal boiling point (Benson 1948); pcr [kPa], rhocrDB [kg/m^3]. pRef is
// not used.
float rhoLRefBenson(double pRef, double pcr, double rhocrDB);

}  // namespace quom
