// Inversion of the Joule-Thomson effect: states at which throttling leaves the temperature unchanged.
//
//     (dT/dp)_h = 0,   T (dv/dT)_p = v,   T (dp/dT)_v + v (dp/dv)_T = 0
//
// Cubic equations only.
#pragma once
#include "engine/fluid.h"

namespace quom {

struct InversionPoint {
    double T = 0, p = 0, v = 0;           // [K], [kPa], [m^3/kmol]
    Reason reason = Reason::no_solution;  // vapor_only, T_not_positive ...: why there is none
    bool found() const { return reason == Reason::none; }
};

// The inversion point at T [K]. start: a volume near it [m^3/kmol], 0 without one. p may come out at or below
// 0, or below p(LV): the equation of state inverts there in the metastable or stretched liquid.
InversionPoint InversionP(const Fluid& fluid, double T, double start = 0.0);

// The curve from where it leaves the vapor pressure curve, over its highest pressure, to p = 0.
struct InversionDome {
    InversionPoint boiling;  // liquid at p(LV)
    InversionPoint top;      // highest pressure
    double Thighest = 0;     // inversion temperature of the thin gas [K]
    Reason reason = Reason::no_solution;
    bool found() const { return reason == Reason::none; }
};
InversionDome inversion_dome(const Fluid& fluid);

// The inversion point at p [kPa] between two temperatures [K] at which the inversion pressures lie on either
// side of p; a T without an inversion point counts as one at p = 0. start: a volume near it, 0 without one.
InversionPoint InversionT(const Fluid& fluid, double p, double T1, double T2, double start = 0.0);

// The inversion point on the vapor pressure curve between two temperatures [K] below T(cr), of which one has
// an inversion pressure above and the other one below p(LV).
InversionPoint boiling_inversion(const Fluid& fluid, double T1, double T2, double start = 0.0);

}  // namespace quom
