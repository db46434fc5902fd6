#include "forms/reference_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "forms/sample_session.h"
#include "support/starter_session.h"

namespace quom {
namespace {

constexpr double M = 44.0956;

Document with_formation() {
    SubstanceConstants x = sample::propane_constants();
    sample::add_formation(x);
    return sample::propane_document(Eos::peng_robinson, x);
}

TEST(ReferenceForm, maps_options_to_codes_and_units_to_molar) {
    Document d = with_formation();
    d.units.EnergyMode = 3;
    EXPECT_EQ(reference_h_label(d.units), "h /(kJ/kg)");
    EXPECT_EQ(reference_s_label(d.units), "s /(kJ/(kg K))");
    const int codes[] = {1, 10, 2};
    for (int option = 0; option < 3; ++option) {
        ReferenceBoxes boxes = reference_boxes(d);
        boxes.T0 = 300.0;
        boxes.p0 = 100.0;
        boxes.h = 2.0;
        boxes.s = 0.5;
        choose_reference_option(boxes, option);
        ASSERT_FALSE(take_reference(d, boxes));
        EXPECT_EQ(d.reference.RefKode, codes[option]);
        EXPECT_NEAR(d.reference.hOffset, option == 0 ? 2.0 * M : 0.0, 1e-4);
        EXPECT_NEAR(d.reference.sOffset, option == 0 ? 0.5 * M : 0.0, 1e-4);
        EXPECT_EQ(d.reference.TRef0, option == 0 ? 300.0f : 298.15f);
        EXPECT_EQ(d.reference.pRef0, option == 0 ? 100.0f : 101.325f);
        EXPECT_NEAR(reference_boxes(d).h, option == 0 ? 2.0 : 0.0, 1e-12);
        EXPECT_NEAR(reference_boxes(d).s, option == 0 ? 0.5 : 0.0, 1e-12);
        EXPECT_EQ(reference_boxes(d).option, option);
    }
    EXPECT_NEAR(reference_values(d, 2).h0, -104680.0 / M, 0.01);
    EXPECT_NEAR(reference_values(d, 2).s0, 270.2 / M, 1e-4);
    EXPECT_NEAR(reference_values(d, 1).s0, (-104680.0 + 24390.0) / 298.15 / M, 1e-4);
}

TEST(ReferenceForm, opened_and_confirmed_nothing_is_another_value) {
    Document d = with_formation();
    d.reference = {
        .TRef0 = 273.15f, .pRef0 = 100.0f, .hOffset = 200.0, .sOffset = 1.0, .TEnv = 288.15, .pEnv = 95.0};
    for (const int RefKode : {1, 2, 10}) {
        d.reference.RefKode = RefKode;
        const ReferenceState before = d.reference;
        ASSERT_FALSE(take_reference(d, reference_boxes(d)));
        EXPECT_EQ(d.reference, before) << RefKode;
    }
    ReferenceBoxes boxes = reference_boxes(d);
    boxes.TEnv = 0.0;
    ASSERT_FALSE(take_reference(d, boxes));
    EXPECT_EQ(d.reference.TEnv, 1e-6);
}

TEST(ReferenceForm, a_refusal_takes_nothing) {
    Document d = with_formation();
    const ReferenceBoxes good = reference_boxes(d);
    struct Case {
        double ReferenceBoxes::*box;
        double value;
    };
    const double nan = NAN;
    for (const Case& c :
         {Case{&ReferenceBoxes::T0, 0.0}, Case{&ReferenceBoxes::T0, -1.0}, Case{&ReferenceBoxes::T0, 1e300},
          Case{&ReferenceBoxes::p0, -1.0}, Case{&ReferenceBoxes::p0, nan}, Case{&ReferenceBoxes::h, INFINITY},
          Case{&ReferenceBoxes::s, nan}, Case{&ReferenceBoxes::TEnv, -1.0}, Case{&ReferenceBoxes::pEnv, -1.0},
          Case{&ReferenceBoxes::pEnv, nan}}) {
        const ReferenceState before = d.reference;
        ReferenceBoxes bad = good;
        bad.TEnv = 290;
        bad.*c.box = c.value;
        EXPECT_EQ(take_reference(d, bad).value_or(Message{}).text, "no valid input") << c.value;
        EXPECT_EQ(d.reference, before) << c.value;
    }
}

// What windows refuse, programs refuse, and in the same words.
TEST(ReferenceForm, a_record_without_formation_data_has_the_free_point_only) {
    struct Case {
        int option, RefKode;
        float SubstanceConstants::*missing;
        const char* name;
    };
    for (const Case& c : {Case{2, 2, &SubstanceConstants::S0abs, "conventional entropy"},
                          Case{2, 2, &SubstanceConstants::dfH0, "enthalpy of formation"},
                          Case{1, 10, &SubstanceConstants::dfG0, "Gibbs energy of formation"},
                          Case{1, 10, &SubstanceConstants::dfH0, "enthalpy of formation"}}) {
        Document d = with_formation();
        d.substance.constants.*c.missing = 0.0f;
        const Document before = d;
        ReferenceBoxes boxes = reference_boxes(d);
        choose_reference_option(boxes, c.option);
        const auto in_window = take_reference(d, boxes);
        ASSERT_TRUE(in_window) << c.name;
        EXPECT_EQ(in_window->text,
                  std::string("This reference state is not possible: the record of Propane has no ") +
                      c.name + ". The free input needs none.");
        EXPECT_EQ(d, before);
        const auto in_program = reference_refusal(d.substance.constants, {.RefKode = c.RefKode});
        EXPECT_EQ(in_program.value_or(Message{}).text, in_window->text);
        EXPECT_FALSE(reference_refusal(d.substance.constants, {.RefKode = 1}));
    }
}

TEST(ReferenceForm, reaches_the_functions_with_the_commit) {
    Session s = test::substance_session(test::propane, Eos::peng_robinson);
    test::change(s, [](Document& d) {
        d.calc.CalcMode = Mode::functions;
        d.exp.points.edit()[0] = {.T = 350, .p = 100};
    });
    const Outcome before = calculate(s, 0);
    ReferenceBoxes boxes = reference_boxes(s.document);
    boxes.h += 1000.0;
    boxes.s += 10.0;
    test::change(s, [&](Document& d) { EXPECT_FALSE(take_reference(d, boxes)); });
    EXPECT_EQ(current_outcome(s), nullptr) << "what can no longer be true is not shown";
    const Outcome& after = calculate(s, 0);
    EXPECT_NEAR(*after.V->h, *before.V->h + 1000.0, 1e-8);
    EXPECT_NEAR(*after.V->s, *before.V->s + 10.0, 1e-10);
}

}  // namespace
}  // namespace quom
