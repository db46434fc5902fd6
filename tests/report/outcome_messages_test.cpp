// The boxes of a calculation and the view of a tank.
#include "report/outcome_messages.h"

#include <gtest/gtest.h>

#include "report/sample_outcome.h"
#include "report/tank_view.h"

namespace quom::test {
namespace {

std::string boxes(const Fluid& fluid, const Outcome& outcome, bool WarnTriple = true) {
    std::string text;
    for (const Message& m : outcome_messages(fluid, outcome, WarnTriple))
        text += "[" + m.title + "] " + m.text + "|";
    return text;
}

TEST(OutcomeMessages, of_warnings) {
    const struct {
        Mode mode;
        Warning warning;
        const char* box;
    } cases[] = {
        {Mode::T_p,
         {.kind = WarningKind::below_triple_point, .value = 80},
         "[Remark] T < T(TP) (Triple Point)|"},
        {Mode::tank_global,
         {.kind = WarningKind::below_triple_point, .value = 80},
         "[WARNING] T < T(TP) (Triple Point)|"},
        {Mode::equilibrium_T,
         {.kind = WarningKind::evp_range, .value = 70, .low = 86, .high = 369, .offset = -16},
         "[Warning concerning vapor pressure equation]  Temperature-16 K outside parameter validity\n"
         "(cf. Data/Parameters vapor pressure equ.)|"},
        {Mode::equilibrium_p,
         {.kind = WarningKind::evp_range, .value = 70, .low = 86, .high = 369, .offset = 16},
         "[Warning concerning vapor pressure equation] Temperature 16 K outside parameter validity\n"
         "(cf. Data/Parameters vapor pressure equ.)|"},
        {Mode::equilibrium_T,
         {.kind = WarningKind::rhoL_range, .value = 70, .low = 86, .high = 369, .offset = 7},
         "[Warning concerning the equation rho(L) = Fu(T)]  Temperature 7 K outside parameter validity\n"
         "(for temperature range cf. window \"Models\")|"},
        {Mode::fn_rhoS,
         {.kind = WarningKind::rhoS_range, .value = 300, .low = 150, .high = 273, .offset = 27},
         "[Warning concerning the equ. rho(S) = Fu(T)]  Temperature 27 K outside T-range of the parameters\n"
         "(range of validity: 150 ... 273 K)|"},
        {Mode::vaporization_T,
         {.kind = WarningKind::hlv_range, .value = 70, .low = 86, .high = 369, .offset = 16},
         "[Warning concerning equation delta(LV)h = Fu(T)] Temperature 16 K outside parameter validity\n"
         "(cf. Data/Parameters delta(LV)h = Fu(T))|"},
        {Mode::fn_cpL,
         {.kind = WarningKind::function_range, .value = 80.5, .low = 274, .high = 533},
         "[WARNING] T more than 10 K outside the T limits of the equation\n(T/K = 80.5; 274 ... 533)|"},
        {Mode::T_p, {.kind = WarningKind::no_omega}, ""},
        {Mode::T_p, {.kind = WarningKind::beyond_pLV, .value = 1200, .low = 998}, ""},
    };
    const Fluid fluid;
    for (const auto& c : cases) {
        Outcome outcome;
        outcome.mode = c.mode;
        outcome.warnings = {c.warning};
        EXPECT_EQ(boxes(fluid, outcome), c.box);
        const bool optional = c.warning.kind == WarningKind::below_triple_point;
        EXPECT_EQ(boxes(fluid, outcome, false), optional ? "" : c.box);
    }
}

// One temperature that is too low for everything is told once.
TEST(OutcomeMessages, come_as_one) {
    const Fluid fluid;
    Outcome outcome;
    outcome.mode = Mode::vaporization_T;
    EXPECT_FALSE(outcome_message(fluid, outcome, true));
    outcome.warnings = {{.kind = WarningKind::below_triple_point, .value = 70}};
    EXPECT_EQ(outcome_message(fluid, outcome, true)->title, "Remark");
    outcome.warnings.push_back(
        {.kind = WarningKind::hlv_range, .value = 70, .low = 86, .high = 369, .offset = 16});
    const Message both = outcome_message(fluid, outcome, true).value();
    EXPECT_EQ(both.title, "WARNING");
    EXPECT_EQ(both.kind, MessageKind::warning);
    EXPECT_EQ(both.text,
              "Remark:\nT < T(TP) (Triple Point)\n\n"
              "Warning concerning equation delta(LV)h = Fu(T):\n"
              "Temperature 16 K outside parameter validity\n(cf. Data/Parameters delta(LV)h = Fu(T))");
    outcome.failure = {Reason::no_reference_point};
    const Message refused = outcome_message(fluid, outcome, true).value();
    EXPECT_EQ(refused.title, "Execution not possible");
    EXPECT_EQ(refused.kind, MessageKind::stop);
    EXPECT_TRUE(refused.text.starts_with("no reference data for PARTIAL method calculable\n"));
    EXPECT_TRUE(refused.text.ends_with("\n\n" + both.text));
}

TEST(OutcomeMessages, of_refusals) {
    Fluid fluid;
    fluid.substance.StoffName = "Propane";
    fluid.substance.Tcr = 369.89;
    fluid.substance.Tnb = 231.0f;
    Outcome outcome;
    outcome.mode = Mode::tank_partial;
    outcome.failure = {Reason::partial_above_critical, 400, 369.89};
    EXPECT_EQ(boxes(fluid, outcome),
              "[Execution not possible] \"PARTIAL Calculation\" - to use only for phase equilibria, i.e. T < "
              "T(cr)\n"
              "(T(cr)/K = 369.89)|");
    outcome.failure = {Reason::no_reference_point};
    EXPECT_EQ(boxes(fluid, outcome),
              "[Execution not possible] no reference data for PARTIAL method calculable|");
    fluid.substance.Tnb = 0.0f;
    EXPECT_EQ(boxes(fluid, outcome),
              "[Execution not possible] no reference data for PARTIAL method calculable\n\nFor Propane\n"
              "no normal boiling temperature is available in the database!\n\n"
              "Use the GLOBAL calculation concept (=> \"Models\").|");
    outcome.failure = {Reason::volume_below_b, 0.02, 0.05};
    EXPECT_EQ(boxes(fluid, outcome), "");
    outcome.mode = Mode::fn_cpL;
    outcome.failure = {Reason::no_database_equation};
    EXPECT_EQ(boxes(fluid, outcome), "[Execution not possible] error occured during the calculation\n" +
                                         failure_text(outcome.failure) + "|");
    outcome.failure = {Reason::no_T_given};
    EXPECT_EQ(boxes(fluid, outcome), "");
}

TEST(TankView, by_filling) {
    Fluid fluid;
    fluid.substance.Tcr = 369.89;
    struct Case {
        PhaseWord word;
        double T, p, fill;
        const char* shown;  // level | L | V | pressure
    };
    const Case cases[] = {
        {PhaseWord::VL, 300, 997.43, 0.452, "Filling level 45.2vol.-%|  L-phase|  V-phase|997.43 kPa"},
        {PhaseWord::VL, 300, 997.43, 0.9994, "Filling level 99.94vol.-%|  L-phase|  V-phase|997.43 kPa"},
        {PhaseWord::VL, 300, 997.43, 0.999991, "Filling level 100.0vol.-%|  L-phase||997.43 kPa"},
        {PhaseWord::V, 300, 0.0052, 0, "Filling level 0.0vol.-%||  V-phase|0.0052 kPa"},
        {PhaseWord::L, 300, 32000.25, 1, "Filling level 100.0vol.-%|  L-phase||32000.25 kPa"},
        {PhaseWord::L, 300, 0, 1,
         "Filling level 100.0vol.-%|  L-phase||"},  // full of liquid: no pressure is known
        {PhaseWord::V, 400, 6000, 0, "||  supercritical|6000.0 kPa"},
    };
    for (const Case& c : cases) {
        Outcome outcome = sample_outcome(Mode::tank_global, c.word);
        outcome.T = c.T;
        outcome.p = c.p > 0 ? std::optional<double>(c.p) : std::nullopt;
        outcome.tank = TankContents{.fill = c.fill};
        const TankView view = tank_view(fluid, outcome, {});
        EXPECT_EQ(view.level + "|" + view.L + "|" + view.V + "|" + view.pressure, c.shown);
        EXPECT_EQ(view.caption, "Tank Calculation (GLOBAL method) ");
        EXPECT_EQ(view.fault, "");
    }
    Outcome failed;
    failed.mode = Mode::tank_partial;
    failed.failure = {Reason::volume_below_B, 0.02, 0.05};
    EXPECT_EQ(tank_view(fluid, failed, {.GlobalCalc = false}).fault,
              " Error: v < B\n Error (cf. help \"Tank\")");
    failed.failure = {Reason::no_liquid_density, 300};
    const TankView view = tank_view(fluid, failed, {.GlobalCalc = false});
    EXPECT_EQ(view.fault, failure_text(failed.failure));
    EXPECT_EQ(view.filling, TankFilling::nothing);
    EXPECT_EQ(view.caption, "Tank Calculation (PARTIAL method) ");
}

}  // namespace
}  // namespace quom::test
