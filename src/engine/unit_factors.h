// From molar units to those that a fluid is shown in.
#pragma once
#include "engine/fluid.h"
#include "quantities/units.h"

namespace quom {

// Factors of the units for a fluid at T [K], which energies per (R T) ask for; 0: TcrStart of the units.
// Reduced quantities refer to T(cr), p(cr) of the substance and to v(cr) of the equation of state in force,
// whatever start values the units hold.
UnitFactors unit_factors(const Fluid& fluid, Units units, double T = 0);

}  // namespace quom
