// Zero points of h and s that a chart may choose.
#pragma once
#include <memory>
#include <string>

#include "engine/fluid.h"

namespace quom {

enum class ChartReference {
    session,               // as selected for the fluid
    liquid_0C,             // h = 200 kJ/kg, s = 1 kJ/(kg K) of the saturated liquid at 0 °C
    liquid_minus_40C,      // h = 0, s = 0 of the saturated liquid at -40 °C
    normal_boiling_point,  // ... where the equation has p(LV) = 101.325 kPa
    triple_point,          // u = 0, s = 0 of the saturated liquid at T(tr)
};

// A fluid whose h and s count from the chosen state, or why there is none.
struct ReferencedFluid {
    std::shared_ptr<const Fluid> fluid;  // null with a fault
    double T = 0;                        // of the reference state [K]; 0 for that of the session
    // "Water has no saturated liquid at −40 °C: that is below the triple point."
    std::string fault;
};
// The same fluid with other offsets of h and s, computed once. It needs saturation, cp(idG) and M. Refused:
// states below the triple point (by more than 0.05 K, which water at 0 °C needs) or not below T(cr).
ReferencedFluid with_reference(const Fluid& fluid, ChartReference reference);

}  // namespace quom
