// Which equation of the record a diagram of database functions shows, and in which units.
#pragma once
#include "diagrams/diagram_kinds.h"
#include "engine/database_functions.h"
#include "quantities/units.h"

namespace quom {

// The equation of a kind; none for a kind of another section.
DatabaseFunction database_function(Kind kind);

// A value of the equation in molar units as the kind displays it: times the factor of its axis; a volume
// M/rho.
double database_displayed(Kind kind, double M, const UnitFactors& factors, double value);

}  // namespace quom
