// What the tank window shows of a tank calculation.
#pragma once
#include <string>

#include "calc/outcome.h"

namespace quom {

enum class TankFilling { nothing, vapor, liquid, both, supercritical, fault };

struct TankView {
    std::string caption;
    TankFilling filling = TankFilling::nothing;
    double share = 0;      // L-phase [vol.-%], 0 to 100: height of the drawn level
    std::string level;     // "Filling level 45.2vol.-%"; empty without phases or above T(cr)
    std::string L, V;      // labels of the phases that exist; V holds "  supercritical" above T(cr)
    std::string pressure;  // with its unit; empty when it is not known
    std::string fault;     // two lines: what is wrong and where to read on; or why there is no result
};

// View of an outcome of mode 9 or 10. A share of 99.999 or above counts as full.
TankView tank_view(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup);

}  // namespace quom
