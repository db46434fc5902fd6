// Mixtures of the saturated phases, and the factors of displayed units.
#include "engine/lever_rule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "engine/database_functions.h"
#include "engine/unit_factors.h"
#include "support/starter.h"

namespace quom::test {
namespace {

LeverTable table_of(double gap_v, double gap_h, double mix) {
    LeverTable table;
    table.fill({.L = 5.0, .V = 5.0});
    table[lever_v] = {.L = 0.1, .V = 0.1 + gap_v, .mix = mix};
    table[lever_h] = {.L = -200.0, .V = -200.0 + gap_h};
    return table;
}

TEST(LeverRule, fraction_and_mixtures) {
    const struct {
        double gap_v, gap_h, mix;
        double fraction;
        int err;
        double h;  // of the mixture
    } cases[] = {
        {3.9, 400.0, 1.075, 0.25, 0, -100.0},  // (1.075 - 0.1)/3.9 = 1/4
        {3.9, 400.0, 4.0, 1.0, 0, 200.0},     {3.9, 400.0, 0.1, 0.0, 0, -200.0},
        {3.9, 400.0, 4.39, 1.1, 0, 240.0},  // beyond the vapor: told, not refused
        {0.0, 400.0, 0.1, 1.0, 2, 200.0},   // both phases agree in v alone
        {0.0, 0.0, 0.1, 1.0, 0, -200.0},    // they are one
        {0.0, 400.0, 0.2, 0.0, 1, 0.0},     // no mixture has this v
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.gap_v << " " << c.mix);
        const LeverResult r = LeverRule(lever_v, table_of(c.gap_v, c.gap_h, c.mix));
        EXPECT_NEAR(r.Fraction, c.fraction, 1e-12);
        EXPECT_EQ(r.Err, c.err);
        EXPECT_NEAR(r.Table[lever_h].mix, c.h, 1e-9);
    }
    EXPECT_EQ(LeverRule(lever_count, table_of(3.9, 400.0, 1.0)).Err, 1);
    EXPECT_EQ(LeverRule(-1, table_of(3.9, 400.0, 1.0)).Err, 1);
    EXPECT_EQ(LeverRule(lever_v, table_of(3.9, 400.0, std::numeric_limits<double>::quiet_NaN())).Err, 1);
}

// Half vapor of a fluid: each quantity of the state is its own mean, g is equal in both phases.
TEST(LeverRule, state_of_a_mixture) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const SaturatedFunctions both = ThermoSat(*fluid, 300.0);
    LeverTable table = lever_table(both.L, both.V);
    table[lever_v].mix = 0.5 * (both.L.v + both.V.v);
    const StateFunctions mean = lever_state(LeverRule(lever_v, table).Table);
    EXPECT_NEAR(mean.h, mean.u + both.p * mean.v, 1e-8 * std::fabs(mean.h));
    EXPECT_NEAR(mean.g, mean.h - 300.0 * mean.s, 1e-8 * std::fabs(mean.h));
    EXPECT_NEAR(mean.a, mean.u - 300.0 * mean.s, 1e-8 * std::fabs(mean.h));
    EXPECT_NEAR(mean.g, both.V.g, 1e-7 * std::fabs(mean.h));
    EXPECT_NEAR(mean.cp, 0.5 * (both.L.cp + both.V.cp), 1e-9 * mean.cp);
    EXPECT_NEAR(mean.cV, 0.5 * (both.L.cV + both.V.cV), 1e-9 * mean.cV);
    EXPECT_NEAR(mean.eH, 0.5 * (both.L.eH + both.V.eH), 1e-9 * std::fabs(mean.eH));
    EXPECT_NEAR(mean.eU, 0.5 * (both.L.eU + both.V.eU), 1e-9 * std::fabs(mean.eU));
}

// Reduced quantities are those of the fluid, whatever start values the units hold.
TEST(UnitFactorsOfFluid, reduced_by_the_fluid) {
    const auto fluid = starter_fluid(propane, Eos::soave);
    const UnitFactors f = unit_factors(*fluid,
                                       {.EnergyMode = energy_per_RT,
                                        .VolumeMode = reduced_volume,
                                        .TcrStart = 1.0,
                                        .pcrStart = 2.0,
                                        .vcrStart = 3.0},
                                       400.0);
    EXPECT_DOUBLE_EQ(f.TFactor, 1.0 / fluid->substance.Tcr);
    EXPECT_DOUBLE_EQ(f.pFactor, 1.0 / fluid->substance.pcr);
    EXPECT_DOUBLE_EQ(f.vFactor, 1.0 / fluid->eos.vcrEOS);
    EXPECT_DOUBLE_EQ(f.uFactor, 1.0 / (8.31451 * 400.0));
    const UnitFactors mass =
        unit_factors(*fluid, {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass});
    EXPECT_NEAR(mass.uFactor * 44.1, 1.0, 1e-3);  // M of propane: 44.1 kg/kmol
    EXPECT_DOUBLE_EQ(mass.vFactor, mass.uFactor);
    EXPECT_DOUBLE_EQ(mass.TFactor, 1.0);
}

// Limits of equations with and without their own.
TEST(DatabaseFunctions, limits) {
    SubstanceConstants k = starter_substance(propane);
    const auto limits = [&k](DatabaseFunction function) {
        const DatabaseLimits r = database_limits(
            *make_fluid({.substance = k, .models = {}, .eos_input = {}, .reference = {}}), function);
        return std::pair(r.TLo, r.THi);
    };
    k.WagnerTLo = 100;
    k.WagnerTHi = 370;
    k.RhoLTLo = k.RhoLTHi = 0;
    k.RhoL = {600.0f, -1.2f, 255.4f};
    k.HLVTLo = 0;
    k.Ttr = 85.5f;
    k.Tcr = 369.8;
    k.Tnb = 231.1f;
    EXPECT_EQ(limits(DatabaseFunction::wagner), std::pair(100.0, 370.0));
    EXPECT_EQ(limits(DatabaseFunction::rhoL), std::pair(245.0, 265.0));
    EXPECT_EQ(limits(DatabaseFunction::hLV), std::pair(76.0, 380.0));  // 75.5 goes to the even number
    k.Ttr = 0.0f;
    EXPECT_EQ(limits(DatabaseFunction::hLV), std::pair(221.0, 380.0));
    const auto august = limits(DatabaseFunction::august);
    EXPECT_FLOAT_EQ(static_cast<float>(august.first), 231.1f);
    EXPECT_DOUBLE_EQ(august.second, 369.8);
    EXPECT_EQ(limits(DatabaseFunction::none), std::pair(0.0, 0.0));
}

// What a function without a value is refused with.
TEST(DatabaseFunctions, refusals) {
    SubstanceConstants k = starter_substance(propane);
    k.havePoly = k.HasCpS = false;
    k.KFTLo = 0;
    k.Tnb = 0.0f;
    const auto fluid = make_fluid({.substance = k, .models = {}, .eos_input = {}, .reference = {}});
    const auto reason = [&](DatabaseFunction function, double T) {
        const DatabaseValue r = database_value(*fluid, function, T);
        EXPECT_EQ(r.value > 0.0, r.reason == Reason::none);
        return r.reason;
    };
    EXPECT_EQ(reason(DatabaseFunction::none, 300.0), Reason::no_function);
    EXPECT_EQ(reason(DatabaseFunction::cpId_polynomial, 300.0), Reason::no_ideal_gas_cp);
    EXPECT_EQ(reason(DatabaseFunction::cpId_sinh, 300.0), Reason::none);
    EXPECT_EQ(reason(DatabaseFunction::cpId_sinh, -300.0), Reason::T_not_positive);
    EXPECT_EQ(reason(DatabaseFunction::frost_kalkwarf, 300.0), Reason::no_database_equation);
    EXPECT_EQ(reason(DatabaseFunction::cpS, 80.0), Reason::no_database_equation);
    EXPECT_EQ(reason(DatabaseFunction::wagner, 300.0), Reason::none);
    EXPECT_EQ(reason(DatabaseFunction::kfw, 300.0), Reason::no_vapor_pressure_equation);
}

}  // namespace
}  // namespace quom::test
