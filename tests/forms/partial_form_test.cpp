#include "forms/partial_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "forms/calculation_form.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

std::shared_ptr<const Fluid> fluid_of(Eos code, const SubstanceConstants& x = sample::propane_constants(),
                                      bool Konzept = true) {
    const Document d = sample::propane_document(code, x);
    ModelSelection models = d.models;
    models.Konzept = models.Konzept && Konzept;
    return make_fluid({x, models, d.eos_input, d.reference});
}

TEST(PartialForm, follows_the_situation) {
    struct Case {
        const char* name;
        Mode mode;
        Eos EOSKode;
        bool Konzept, diagram;
        PartialSituation situation;
        bool free, GlobalCalc;
    };
    using P = PartialSituation;
    constexpr Eos pr = Eos::peng_robinson;
    const Case cases[] = {
        {"free", Mode::equilibrium_T, pr, true, false, P::free_choice, true, true},
        {"virial", Mode::equilibrium_p, Eos::pitzer_curl, false, false, P::vapor_only, false, false},
        {"assumed", Mode::T_p, pr, true, false, P::assumed_state, true, false},
        {"partial", Mode::equilibrium_T, pr, false, false, P::partial_concept, false, false},
        {"tank", Mode::tank_partial, pr, true, false, P::benson_only, false, false},
        {"delta(LV)h", Mode::vaporization_T, pr, true, false, P::benson_only, false, false},
        {"diagram", Mode::tank_partial, pr, true, true, P::free_choice, true, true},
    };
    for (const Case& c : cases) {
        const auto fluid = fluid_of(c.EOSKode, sample::propane_constants(), c.Konzept);
        const CalcSetup setup{.BensonRhoL = false, .RhoLWanted = true};
        const PartialSelection open = OpenPartial(*fluid, c.mode, setup, c.diagram);
        EXPECT_EQ(open.view.situation, c.situation) << c.name;
        EXPECT_EQ(open.view.opt_glob_enabled, c.free) << c.name;
        EXPECT_EQ(open.setup.GlobalCalc, c.GlobalCalc) << c.name;
        EXPECT_EQ(open.setup.BensonRhoL, c.mode == Mode::vaporization_T) << c.name;
        EXPECT_FALSE(open.setup.RhoLWanted) << c.name;
        EXPECT_FALSE(open.view.assumption.empty()) << c.name;
        EXPECT_EQ(open.view.second_title.empty(), c.situation != P::partial_concept) << c.name;
    }
}

TEST(PartialForm, refuses_continues_and_sets_the_switches) {
    const auto fluid = fluid_of(Eos::pitzer_curl);
    PartialSelection open = OpenPartial(*fluid, Mode::equilibrium_T, {});
    const CalcSetup before = open.setup;
    EXPECT_EQ(ChooseConcept(*fluid, open, true).value_or(Message{}).text,
              "GLOBAL calculation is only possible with a cubic EOS (=> window \"Models\")");
    EXPECT_EQ(open.setup, before);
    EXPECT_TRUE(open.view.OK_enabled);  // the boiling T is there
    EXPECT_EQ(open.view.range, "(no database function available)");
    EXPECT_THAT(open.view.status, HasSubstr("BENSON's method (Mathias/Cailletet),  V density"));
    // No liquid density is known: rho(L) is not wanted. Benson's formula gives one.
    EXPECT_FALSE(ContinuePartial(*fluid, open, true).setup.RhoLWanted);
    open = OpenPartial(*fluid, Mode::equilibrium_T, {});
    EXPECT_FALSE(ChooseReference(*fluid, open, ref_benson));
    // (1.981 + 0.18327 ln(p(cr)/101.3)) rho(cr)
    EXPECT_NEAR(static_cast<double>(open.setup.benson.rhoLRef),
                (1.981 + 0.18327 * std::log(4248.0 / 101.3)) * 44.0956 / 0.2, 0.01);
    const PartialContinue next = ContinuePartial(*fluid, open, true);
    EXPECT_TRUE(next.setup.RhoLWanted && next.result_window && next.parameter_input);
    EXPECT_EQ(next.ParInputKind, 104);
    EXPECT_FALSE(ContinuePartial(*fluid, open, false).parameter_input) << "values come from the data points";
    open.diagram_pending = true;
    const PartialContinue diagram = ContinuePartial(*fluid, open, true);
    EXPECT_TRUE(diagram.diagram_setup && !diagram.result_window && !diagram.parameter_input);

    PartialSelection tank = OpenPartial(*fluid, Mode::tank_partial, {});
    EXPECT_FALSE(ContinuePartial(*fluid, tank, true).result_window);
    EXPECT_EQ(ContinuePartial(*fluid, tank, true).ParInputKind, 33);
}

TEST(PartialForm, the_database_equation_needs_no_reference_point) {
    SubstanceConstants x = sample::propane_constants();
    x.Tnb = 0.0f;
    sample::add_liquid_density(x);
    const auto fluid = fluid_of(Eos::pitzer_curl, x);
    PartialSelection open = OpenPartial(*fluid, Mode::equilibrium_T, {});
    EXPECT_FALSE(open.view.OK_enabled);
    ChooseDensity(*fluid, open, false);
    EXPECT_TRUE(open.view.OK_enabled);
    EXPECT_EQ(open.view.range, "valid in the range T/K = 85...369");
    EXPECT_THAT(open.view.status, HasSubstr(" database equation rho(L)= Fu(T), V density"));
    EXPECT_TRUE(ContinuePartial(*fluid, open, true).setup.RhoLWanted);
}

// The window keeps a copy of the selection while a point is typed: leaving the input is taking the copy
// again.
TEST(PartialForm, takes_a_typed_reference_point) {
    Session s = sample::propane();
    QueuedMessages user;
    const Dispatch way = CalcDispatch(s.document, Mode::equilibrium_T, user);
    PartialSelection open = OpenPartial(*s.fluid, way.calc.CalcMode, way.calc.setup);
    ASSERT_FALSE(ChooseConcept(*s.fluid, open, false));
    const PartialSelection proposed = open;
    EXPECT_TRUE(ChooseReference(*s.fluid, open, ref_manual));
    EXPECT_FALSE(open.view.OK_enabled) << "no point yet";
    EXPECT_TRUE(proposed.view.OK_enabled);

    Document typed = s.document;
    typed.calc = way.calc;
    typed.calc.setup = open.setup;
    ASSERT_FALSE(take_input(typed, s.factors(), input_reference_point, {}, {231, 101.3, 580, 2.4}).refusal);
    ReferenceTaken(*s.fluid, open, typed.calc.setup.benson);
    EXPECT_TRUE(open.view.OK_enabled);
    EXPECT_THAT(open.view.reference_text, HasSubstr("rho(L)(ref)/kg/m^3 = 580"));
    const PartialContinue next = ContinuePartial(*s.fluid, open, true);
    EXPECT_EQ(next.setup.benson, (BensonReference{231, 101.3f, 580, 2.4f}));
    EXPECT_TRUE(next.setup.RhoLWanted);
    EXPECT_EQ(s.document.calc, CalculationInput{});
}

TEST(PartialForm, chooses_without_a_window) {
    SubstanceConstants x = sample::propane_constants();
    const auto vapor_only = fluid_of(Eos::pitzer_curl, x);
    const auto cubic = fluid_of(Eos::peng_robinson, x);
    const CalcSetup setup{.VLEAssumed = true};
    const PartialChoice refused = SelectPartial(*vapor_only, Mode::equilibrium_T, setup, true, true);
    ASSERT_TRUE(refused.refusal);
    EXPECT_EQ(refused.setup, setup);
    EXPECT_EQ(
        SelectPartial(*cubic, Mode::equilibrium_T, setup, false, false).refusal.value_or(Message{}).text,
        "no database function rho(L) = Fu(T) available");
    const PartialChoice benson = SelectPartial(*cubic, Mode::equilibrium_T, setup, false, true);
    ASSERT_FALSE(benson.refusal);
    EXPECT_TRUE(benson.setup.benson.complete() && benson.setup.RhoLWanted && benson.setup.VLEAssumed);
    EXPECT_FALSE(benson.setup.GlobalCalc);
    EXPECT_TRUE(SelectPartial(*cubic, Mode::equilibrium_T, setup, true, true).setup.GlobalCalc);
    sample::add_liquid_density(x);
    const PartialChoice database =
        SelectPartial(*fluid_of(Eos::pitzer_curl, x), Mode::equilibrium_T, setup, false, false);
    ASSERT_FALSE(database.refusal);
    EXPECT_FALSE(database.setup.BensonRhoL);
}

}  // namespace
}  // namespace quom
