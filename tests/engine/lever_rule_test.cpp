// Mixtures of the saturated phases.
#include "engine/lever_rule.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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

}  // namespace
}  // namespace quom::test
