// A fluid: one substance under one selection of models, with everything that is computed once for them.
//
// Immutable; a shared_ptr<const Fluid> goes to any thread. Every routine of the engine takes a const Fluid&
// and numbers and returns a struct; an answer depends on its arguments alone. Another equation is another
// Fluid. Units throughout: T [K], p [kPa], v [m^3/kmol], rho [kg/m^3], h, u, g, a [kJ/kmol], s, cp, cV
// [kJ/(kmol K)], M [kg/kmol], w [m/s]. A constant of the record that is not known is 0.
#pragma once
#include <memory>

#include "base/constants.h"
#include "engine/models.h"
#include "engine/reason.h"
#include "substance/substance_constants.h"

namespace quom {

struct SaturationTable;  // engine/reduced_saturation.h
struct BoilingCurve;     // engine/saturation.h

// Constants of p = R T/(v - b) - a/((v + c)(v + d)) by the temperature laws of engine/eos_parameters.h.
struct EosBlock {
    double EOSa = 0, EOSb = 0, EOSc = 0, EOSd = 0;      // a, b, c, d; manual virial: EOSb = b0 [m^3/kmol]
    double EOSna = 0, EOSnb = 0, EOSnc = 0, EOSnd = 0;  // exponents of T; EOSna is the slope m when AlphaForm
                                                        // is 2; manual virial: EOSnb = b1
    double EOSm = 0;                                    // manual virial: exponent b2 of T
    std::int16_t AlphaForm = 1;                         // 1 a T^na, 2 a (1 + m (1 - sqrt(T/Tcr)))^2
    double inverse_root_Tcr = 0;                        // 1/sqrt(Tcr) [K^-1/2]
    double JiAc = 0, JiB1 = 0, JiZc = 0, JiP3 = 0, JiP4 = 0, JiP5 = 0, JiOa = 0, JiOb = 0, JiCd = 0;  // JiPar
    double vcrEOS = 0;    // critical volume that the EOS implies [m^3/kmol]
    double rhocrEOS = 0;  // critical density that the EOS implies [kg/m^3]
    bool operator==(const EosBlock&) const = default;
};

// The half of the ideal gas functions that belongs to the reference point.
struct IdealGasReference {
    double T0 = 0, p0 = 0;  // reference point in force [K], [kPa]
    double h0 = 0, s0 = 0;  // zero points with offsets, less the integrals at T0 [kJ/kmol], [kJ/(kmol K)]
    Reason reason = Reason::none;
};

// Residual and ideal gas functions of one phase of the environment, for the exergies.
struct EnvironmentPhase {
    double h = 0, u = 0, s = 0, v = 0;
};
struct Environment {
    double T = 0, p = 0;  // [K], [kPa]
    EnvironmentPhase L, V;
    bool hasL = false, hasV = false;
    Reason reason = Reason::no_environment;
};

struct Fluid {
    SubstanceConstants substance;  // with the correlated sets of vapor pressure equations
    ModelSelection models;
    EosInput eos_input;
    ReferenceState reference;
    EosBlock eos;
    bool VPhaseOnly = true;                   // the equation knows the V-phase alone
    Reason eos_reason = Reason::no_equation;  // why the equation of state cannot be evaluated; none: it can
    double M = 0;                             // MolMass as double
    IdealGasReference ideal_gas;
    Environment environment;
    std::shared_ptr<const SaturationTable>
        saturation;                               // reduced saturation curve of the shape; null without one
    std::shared_ptr<const BoilingCurve> boiling;  // start values of T(LV); null: the search starts without

    bool has_eos() const { return eos_reason == Reason::none; }
    const EosInfo& eos_row() const { return eos_info(models.EOSKode); }
};

// What a fluid is made of.
struct FluidInput {
    SubstanceConstants substance;
    ModelSelection models;
    EosInput eos_input;
    ReferenceState reference;
};

// Builds the fluid: constants of the equation of state, correlated vapor pressure sets, reference point,
// environment, saturation curve. Never null; where the equation of state has no constants, eos_reason tells,
// and what does not need it (database equations, ideal gas functions) works.
std::shared_ptr<const Fluid> make_fluid(FluidInput input);

// The same substance, reference and input with other models.
std::shared_ptr<const Fluid> with_models(const Fluid& fluid, const ModelSelection& models);
std::shared_ptr<const Fluid> with_eos(const Fluid& fluid, Eos code);

}  // namespace quom
