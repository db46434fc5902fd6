// What the numbers of a window rest on, in one line.
#pragma once
#include <string>

#include "engine/fluid.h"
#include "engine/model_catalogue.h"

namespace quom {

// "Propane · Peng / Robinson, GLOBAL concept · h = s = 0 at 298.15 K, 101.325 kPa, ideal gas · cp(idG):
// sinh/cosh".
std::string basis_line(const Fluid& fluid);

}  // namespace quom
