#include "forms/iso_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "forms/sample_session.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;

Session at(double T, double p) {
    Session s = sample::propane();
    change(s, [&](Document& d) { d.exp.points.edit()[0] = {.T = T, .p = p}; });
    return s;
}

TEST(IsoCalculator, opens_calculates_and_resets) {
    Session s = sample::propane();
    EXPECT_EQ(open_iso_calculator(s).refusal.value_or(Message{}).text, "not yet a T|p value available!");
    s = at(320.0, 800.0);
    IsoOpened opened = open_iso_calculator(s);
    ASSERT_FALSE(opened.refusal);
    IsoCalculator& c = opened.calculator;
    EXPECT_EQ(c.txtTpVorgabe, 320.0);
    EXPECT_EQ(c.optIsoPhase, phase_V);
    EXPECT_EQ(iso_given_label(c), "  T/K = ");
    EXPECT_EQ(iso_unit(s, c), "m^3/kmol");
    iso_reset(s, c);
    EXPECT_EQ(c.txtTpCalc, "No solution");

    c.IsoFu = iso_h;
    c.IsoIn = iso_find_T;
    show_current_state(s, c);
    EXPECT_EQ(c.txtTpVorgabe, 800.0);
    EXPECT_EQ(iso_given_label(c), "p/kPa = ");
    const double h = c.txtFuConst;
    EXPECT_NEAR(h, *iso_state(s).V->h, 1e-9);
    c.txtTpVorgabe = 400.0;  // throttled to 400 kPa
    ASSERT_TRUE(iso_calculate(s, c));
    EXPECT_EQ(c.result_label, "T/K =");
    const double T = s.document.exp.points[0].T;
    EXPECT_EQ(s.document.exp.points[0].p, 400.0);
    EXPECT_NEAR(*iso_state(s).V->h, h, 1e-6 * std::fabs(h));
    EXPECT_LT(T, 320.0);  // Joule-Thomson: below the inversion the gas cools
    EXPECT_GT(T, 310.0);

    const IsoCalculator kept = c;
    for (const auto& [given, function, box, rule] : {std::tuple{"0", "1", 0u, "p must be above 0."},
                                                     {"400", "", 1u, "H is missing."},
                                                     {"4.0.0", "-", 0u, "4.0.0 is no number."}}) {
        const auto refused = take_iso_boxes(c, given, function);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->box, box);
        EXPECT_EQ(refused->rule, rule);
        EXPECT_EQ(c.txtTpVorgabe, kept.txtTpVorgabe);
        EXPECT_EQ(c.txtFuConst, kept.txtFuConst);
    }
    EXPECT_FALSE(take_iso_boxes(c, "400", "-1.5e3"));
    EXPECT_EQ(c.txtFuConst, -1500.0);

    const Document before = s.document;
    c.txtFuConst = -1e9;
    EXPECT_FALSE(iso_calculate(s, c));
    EXPECT_EQ(c.txtTpCalc, "No solution found");
    EXPECT_EQ(s.document, before);
    change(s, [](Document& d) { d.exp.points.edit()[0].T = 500; });
    iso_reset(s, c);
    EXPECT_EQ(s.document.exp.points[0].T, T);
    EXPECT_EQ(c.txtFuConst, h);
    EXPECT_EQ(c.txtTpVorgabe, 400.0);
}

TEST(IsoCalculator, opens_on_the_phase_that_is_there) {
    EXPECT_EQ(open_iso_calculator(at(300.0, 3000.0)).calculator.optIsoPhase, phase_L);
    EXPECT_EQ(open_iso_calculator(at(300.0, 300.0)).calculator.optIsoPhase, phase_V);
}

// A state, one of its functions in the displayed unit, and back.
TEST(IsoSearchDisplayed, finds_the_state_again_in_every_unit) {
    for (const int EnergyMode : {0, 1, 2, 3}) {
        for (const int VolumeMode : {0, 1, 2}) {
            for (const int column : {iso_v, iso_h, iso_s, iso_u}) {
                Session s = at(400.0, 1500.0);
                change(s, [&](Document& d) {
                    d.units.EnergyMode = EnergyMode;
                    d.units.VolumeMode = VolumeMode;
                    d.reference.hOffset = 20000.0;
                });
                const Outcome state = iso_state(s);
                const double shown = *function_of(*state.V, column) * iso_factor(s, column, 400.0);
                for (const int what : {iso_find_p, iso_find_T}) {
                    const IsoResult found = iso_search(s, {.What = what,
                                                           .Column = column,
                                                           .Target = shown,
                                                           .phase = phase_V,
                                                           .given = what == iso_find_p ? 400.0 : 1500.0,
                                                           .start = what == iso_find_p ? 1200.0 : 380.0});
                    const double expected = what == iso_find_p ? 1500.0 : 400.0;
                    ASSERT_EQ(found.err(), 0) << EnergyMode << VolumeMode << column << what;
                    EXPECT_NEAR(found.value, expected, 3e-6 * expected)
                        << EnergyMode << VolumeMode << column << what;
                }
            }
        }
    }
}

TEST(IsoSearchDisplayed, factors_are_those_of_the_units) {
    Session s = at(400.0, 1500.0);
    change(s, [](Document& d) {
        d.units.EnergyMode = 3;
        d.units.VolumeMode = 1;
    });
    for (const int column : {iso_v, iso_h, iso_eU})
        EXPECT_NEAR(1.0 / iso_factor(s, column, 400.0), 44.0956, 1e-4);
    change(s, [](Document& d) { d.units.EnergyMode = 2; });
    EXPECT_NEAR(1.0 / iso_factor(s, iso_h, 400.0), 400.0 * 8.31451, 1e-6);
}

}  // namespace
}  // namespace quom
