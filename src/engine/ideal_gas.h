// Ideal gas heat capacity, enthalpy and entropy, and the reference state.
#pragma once
#include "engine/fluid.h"

namespace quom {

struct CpResult {
    float cp = 0;                  // [kJ/(kmol K)]
    Reason reason = Reason::none;  // ideal_gas_range
    std::int16_t err() const { return err_of(reason); }
};
// cp(idG) at T [K] by a form; CpForm::none gives 0. Sinh/cosh form: Aly and Lee (1981).
CpResult cpIdG(const SubstanceConstants& substance, double T, CpForm form);

// Zero points of h and s at p [kPa] for the reference selection, and the reference point they belong to.
struct ReferenceConstants {
    double h0 = 0;               // [kJ/kmol]
    double s0 = 0;               // [kJ/(kmol K)], with -R ln(p/pRef0) when p > 0
    float TRef0 = 0, pRef0 = 0;  // 298.15 K, 101.325 kPa for RefKode 2 and 10; a stored pRef0 of 0 is 101.325
};
ReferenceConstants RefConst(const SubstanceConstants& substance, const ReferenceState& reference, double p);

struct IdealGas {
    double h = 0;                  // [kJ/kmol]
    double s = 0;                  // [kJ/(kmol K)]
    double cp = 0;                 // [kJ/(kmol K)], as cpIdG rounds it; 0 without an equation
    Reason reason = Reason::none;  // T_not_positive, ideal_gas_range, not_finite
    std::int16_t err() const { return err_of(reason); }
};
// Ideal gas h, s, cp at T [K], p [kPa] from the reference point, with hOffset, sOffset. Without cp(idG) h and
// s are the offsets alone.
IdealGas IdGasFunc(const Fluid& fluid, double T, double p);

// The part of the fluid that IdGasFunc reads; called by make_fluid.
IdealGasReference ideal_gas_reference(const SubstanceConstants& substance, CpForm form,
                                      const ReferenceState& reference);

}  // namespace quom
