// A fluid of the starter database with the setup of its calculations.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "calc/outcome.h"
#include "support/starter.h"

namespace quom::test {

struct Bench {
    std::shared_ptr<const Fluid> fluid;
    CalcSetup setup;
    bool coefficients = false;

    explicit Bench(std::string_view cas = propane, Eos eos = Eos::peng_robinson)
        : Bench(starter_substance(cas), eos) {}
    // Wagner's vapor pressure equation, delta(LV)h of the equation of state.
    Bench(const SubstanceConstants& substance, Eos eos, const EosInput& input = {}) {
        ModelSelection models = proposed_models(substance, eos);
        models.EVPKode = Evp::wagner;
        models.HLVKode = Hlv::eos;
        models.cpKode = substance.haveSinh   ? CpForm::sinh_cosh
                        : substance.havePoly ? CpForm::polynomial
                                             : CpForm::none;
        fluid = make_fluid({.substance = substance, .models = models, .eos_input = input, .reference = {}});
        setup.GlobalCalc = models.Konzept;
    }
    // The same with something changed.
    template <class Change>
    void change(Change make) {
        FluidInput input{fluid->substance, fluid->models, fluid->eos_input, fluid->reference};
        make(input);
        fluid = make_fluid(std::move(input));
    }
    const SubstanceConstants& substance() const { return fluid->substance; }

    static std::optional<double> given(double x) {
        return x != 0.0 ? std::optional<double>(x) : std::nullopt;
    }
    // 0 for a value that is not given.
    Outcome run(Mode mode, double T, double p, double rho = 0.0) const {
        return CalcBatch(*fluid, {.mode = mode,
                                  .T = given(T),
                                  .p = given(p),
                                  .rho = given(rho),
                                  .setup = setup,
                                  .coefficients = coefficients});
    }
    Outcome tank(Mode mode, double m, double V, double T) const {
        return CalcBatch(*fluid, {.mode = mode, .T = given(T), .m = given(m), .V = given(V), .setup = setup});
    }
};

inline bool warned(const Outcome& outcome, WarningKind kind) {
    return std::any_of(outcome.warnings.begin(), outcome.warnings.end(),
                       [kind](const Warning& warning) { return warning.kind == kind; });
}

inline void expect_relative(double actual, double expected, double tolerance, std::string_view what = {}) {
    EXPECT_NEAR(actual, expected, tolerance * std::max(1e-12, std::fabs(expected))) << what;
}

}  // namespace quom::test
