// Ideal gas heat capacity, enthalpy and entropy, and the reference state.
#pragma once
#include <cstdint>

#include "session/session.h"

namespace quom {

// sinh, cosh of x; err is 0, or -1 with the value 0 where exp overflows (|x| above 709).
double sinh(double x, std::int16_t& err);
double cosh(double x, std::int16_t& err);

struct CpResult {
    float cp = 0;  // [kJ/(kmol K)]
    std::int16_t err = 0;
};
// cp(idG) at T [K]; form 1 polynomial, 2 sinh/cosh (Aly and Lee 1981), any other gives 0.
CpResult cpIdG(const Session& s, double T, int form);

struct ReferenceConstants {
    double h0 = 0;  // [kJ/kmol]
    double s0 = 0;  // [kJ/(kmol K)], with -R ln(p/pRef0) when p > 0
};
// Zero points of h and s at p [kPa] for the reference selection. Writes TRef0, pRef0 of the record for
// RefKode 2 and 10, and pRef0 101.325 in place of 0.
ReferenceConstants RefConst(Session& s, double p);

struct IdealGas {
    double h = 0;   // [kJ/kmol]
    double s = 0;   // [kJ/(kmol K)]
    double cp = 0;  // [kJ/(kmol K)]
    std::int16_t err = 0;
};
// Ideal gas h, s, cp at T [K], p [kPa] from the reference point, with hOffset, sOffset.
// err -1: T or TRef0 below 1e-6 K, sinh/cosh form below 0.1 K, or a step that is not finite.
IdealGas IdGasFunc(Session& s, double T, double p);

}  // namespace quom
