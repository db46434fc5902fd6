// Rows through the batches against CalcBatch, one by one.
#include "calc/state_rows.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/starter_session.h"

namespace quom {
namespace {

// States about the saturation curve, the critical point and the triple point, and some that cannot be.
struct States {
    std::vector<double> T, p;
    explicit States(const Fluid& fluid) {
        std::mt19937_64 random(20260712);
        std::uniform_real_distribution<> Tr(0.2, 2.5), ln_p(std::log(1e-3), std::log(1e5));
        for (int i = 0; i < 3000; ++i) add(fluid.substance.Tcr * Tr(random), std::exp(ln_p(random)));
        for (const double x : {0.0, -1.0, std::nan(""), 1e300, HUGE_VAL}) {
            add(x, 100);
            add(300, x);
        }
        add(fluid.substance.Tcr, fluid.substance.pcr);
        add(fluid.substance.Tcr * (1 + 1e-9), fluid.substance.pcr * (1 - 1e-9));
    }
    void add(double T_new, double p_new) {
        T.push_back(T_new);
        p.push_back(p_new);
    }
};

std::shared_ptr<const Fluid> fluid_of(std::string_view substance, Eos code) {
    return test::substance_session(substance, code).fluid;
}

TEST(StateRows, are_those_of_single_calculations) {
    int batched = 0, all = 0;
    for (const Eos code : {Eos::van_der_waals, Eos::redlich_kwong, Eos::soave, Eos::peng_robinson}) {
        for (const std::string_view substance : {test::propane, test::water}) {
            const std::shared_ptr<const Fluid> fluid = fluid_of(substance, code);
            const States states(*fluid);
            for (const bool functions : {true, false}) {
                StateInput input{.mode = Mode::T_p, .functions = functions};
                ASSERT_TRUE(has_state_rows(*fluid, input));
                StateRows rows;
                calc_state_rows(*fluid, input, states.T, states.p, rows);
                for (std::size_t i = 0; i < states.T.size(); ++i) {
                    ++all;
                    if (rows.single[i]) continue;
                    ++batched;
                    input.T = states.T[i];
                    input.p = states.p[i];
                    const Outcome outcome = CalcBatch(*fluid, input);
                    ASSERT_TRUE(outcome.has_result());
                    EXPECT_TRUE(outcome.warnings.empty());
                    ASSERT_EQ(outcome.phase, rows.word[i]) << states.T[i] << " " << states.p[i];
                    EXPECT_EQ(outcome.region, rows.region[i]);
                    const PhaseOutcome& phase = outcome.phase == PhaseWord::L ? *outcome.L : *outcome.V;
                    EXPECT_NEAR(rows.columns.v[i], phase.v, 1e-12 * phase.v);
                    EXPECT_NEAR(rows.columns.rho[i], *phase.rho, 1e-12 * *phase.rho);
                    if (!functions) continue;
                    const double scale = 10 * 8.314 * std::max(states.T[i], 300.0);
                    EXPECT_NEAR(rows.eH[i], *phase.eH, 1e-12 * std::max(scale, std::fabs(*phase.eH)));
                    EXPECT_NEAR(rows.eU[i], *phase.eU, 1e-12 * std::max(scale, std::fabs(*phase.eU)));
                    EXPECT_NEAR(rows.columns.w[i], *phase.w, 1e-12 * *phase.w);
                }
            }
        }
    }
    EXPECT_GT(batched, all * 6 / 10);
}

// Bit by bit, wherever in a block a state stands and whatever stands beside it.
TEST(StateRows, do_not_depend_on_their_neighbours) {
    for (const Eos code : {Eos::van_der_waals, Eos::peng_robinson}) {
        const std::shared_ptr<const Fluid> fluid = fluid_of(test::propane, code);
        const States states(*fluid);
        const StateInput input{.mode = Mode::T_p};
        StateRows together, alone;
        calc_state_rows(*fluid, input, states.T, states.p, together);
        for (std::size_t i = 0; i < states.T.size(); ++i) {
            calc_state_rows(*fluid, input, std::span(&states.T[i], 1), std::span(&states.p[i], 1), alone);
            ASSERT_EQ(alone.single[0], together.single[i]);
            if (together.single[i]) continue;
            EXPECT_EQ(alone.columns.v[0], together.columns.v[i]) << states.T[i] << " " << states.p[i];
            EXPECT_EQ(alone.columns.s[0], together.columns.s[i]);
            EXPECT_EQ(alone.columns.w[0], together.columns.w[i]);
            EXPECT_EQ(alone.eH[0], together.eH[i]);
        }
    }
}

// Fluids of which each row needs more than the equation of state go one by one.
TEST(StateRows, are_left_where_every_row_is_a_case_of_its_own) {
    const StateInput input{.mode = Mode::T_p};
    EXPECT_FALSE(has_state_rows(*fluid_of(test::water, Eos::pitzer_curl), input));
    EXPECT_FALSE(has_state_rows(*fluid_of(test::propane, Eos::peng_robinson), {.mode = Mode::T_rho}));
    Fluid fluid = *fluid_of(test::propane, Eos::peng_robinson);
    fluid.models.Konzept = false;
    EXPECT_FALSE(has_state_rows(fluid, input));
    fluid.models.Konzept = true;
    fluid.ideal_gas.reason = Reason::no_ideal_gas_cp;
    EXPECT_FALSE(has_state_rows(fluid, input));
    EXPECT_TRUE(has_state_rows(fluid, {.mode = Mode::T_p, .functions = false}));
}

}  // namespace
}  // namespace quom
