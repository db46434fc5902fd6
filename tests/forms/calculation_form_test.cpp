#include "forms/calculation_form.h"

#include <gtest/gtest.h>

#include <cmath>

#include "engine/unit_factors.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

struct Way {
    const char* name;
    Mode mode;
    Eos EOSKode;
    Hlv HLVKode;
    bool batch;
    std::vector<Answer> answers;
    const char* opens;  // S selection, W process, R result, P boxes; X refused
    int ParInputKind;
    bool GlobalCalc;
};

TEST(CalcDispatch, decides_the_inputs_of_each_mode) {
    constexpr Eos pr = Eos::peng_robinson;
    constexpr Eos pc = Eos::pitzer_curl;
    const Way ways[] = {
        {"no mode is mode 1", Mode::none, pr, Hlv::eos, false, {}, "RP", 101, true},
        {"T, rho", Mode::T_rho, pr, Hlv::eos, false, {}, "RP", 101, true},
        {"T, rho(L)", Mode::T_rhoL, pr, Hlv::eos, false, {}, "RP", 102, true},
        {"T, rho(L) needs a cubic EOS", Mode::T_rhoL, pc, Hlv::eos, false, {}, "X", 0, true},
        {"T, p", Mode::T_p, pr, Hlv::eos, false, {Answer::no}, "RP", 103, true},
        {"T, p of an equilibrium", Mode::T_p, pr, Hlv::eos, false, {Answer::yes}, "SRP", 103, true},
        {"T, p in a batch asks nothing", Mode::T_p, pr, Hlv::eos, true, {Answer::yes}, "R", 0, true},
        {"T, p of a virial equation", Mode::T_p, pc, Hlv::evp_benson, false, {Answer::no}, "RP", 103, false},
        {"equilibrium", Mode::equilibrium_T, pr, Hlv::eos, false, {}, "SRP", 104, true},
        {"equilibrium in a batch", Mode::equilibrium_p, pr, Hlv::eos, true, {}, "SR", 0, true},
        {"delta(LV)h by the EOS", Mode::vaporization_T, pr, Hlv::eos, false, {}, "RP", 106, true},
        {"delta(LV)h by Benson", Mode::vaporization_p, pr, Hlv::evp_benson, false, {}, "SRP", 107, true},
        {"functions", Mode::functions, pr, Hlv::eos, false, {}, "RP", 108, true},
        {"tank, GLOBAL", Mode::tank_global, pr, Hlv::eos, true, {}, "RP", 33, true},
        {"tank, PARTIAL", Mode::tank_partial, pr, Hlv::eos, true, {}, "SRP", 33, false},
        {"virial coefficients", Mode::virial, pr, Hlv::eos, true, {}, "R", 0, true},
        {"process", Mode::process, pr, Hlv::eos, true, {}, "W", 112, true},
        {"p, rho", Mode::p_rho, pc, Hlv::evp_benson, false, {}, "RP", 113, false},
        {"database function", Mode::fn_rhoS, pr, Hlv::eos, false, {}, "RP", 124, true},
        {"unknown", static_cast<Mode>(25), pr, Hlv::eos, false, {}, "X", 0, true},
    };
    for (const Way& w : ways) {
        Document d = sample::propane_document(w.EOSKode);
        d.models.HLVKode = w.HLVKode;
        d.options.BatchMode = w.batch;
        const Document before = d;
        QueuedMessages user;
        user.answers.assign(w.answers.begin(), w.answers.end());
        const Dispatch way = CalcDispatch(d, w.mode, user);
        EXPECT_EQ(d, before);
        std::string opens;
        if (way.refused) opens += 'X';
        if (way.selection) opens += 'S';
        if (way.process_input) opens += 'W';
        if (way.result_window) opens += 'R';
        if (way.parameter_input) opens += 'P';
        EXPECT_EQ(opens, w.opens) << w.name;
        EXPECT_EQ(way.ParInputKind, w.ParInputKind) << w.name;
        EXPECT_EQ(way.calc.setup.GlobalCalc, w.GlobalCalc) << w.name;
        EXPECT_EQ(way.calc.setup.VLEAssumed, opens == "SRP" && w.mode == Mode::T_p) << w.name;
        const Mode expected = way.refused ? Mode::none : w.mode == Mode::none ? Mode::T_rho : w.mode;
        EXPECT_EQ(way.calc.CalcMode, expected) << w.name;
        const bool asked = way.refused ? w.mode == Mode::T_rhoL : w.mode == Mode::T_p && !w.batch;
        ASSERT_EQ(user.asked.size(), asked ? 1u : 0u) << w.name;
        if (way.refused && asked) {
            EXPECT_EQ(user.asked[0].text, "possible only using a cubic EOS");
        }
        if (w.mode == Mode::T_p && asked) {
            EXPECT_EQ(user.asked[0].text,
                      "Do you intend to describe a VLE?\n"
                      "Selecting \"Yes\" => the existence of a L-phase is assumed\n"
                      "and a \"PATIAL calulation\" is carried out");
        }
    }
}

TEST(InputBoxes, hold_what_each_kind_needs_and_give_it_back) {
    struct Case {
        int kind, VolumeMode;
        InputOptions options;
        BoxValues boxes;
        std::vector<std::string_view> labels;
    };
    const Case cases[] = {
        {101, 0, {}, {300, 5}, {"      T/K     ", "rho/kg/m^3 = "}},
        {101, 0, {.volume = true}, {300, 4.0}, {"      T/K     ", "V/m^3/kmol = "}},
        {102, 1, {.volume = true}, {300, 0.002}, {"      T/K     ", "V/m^3/kg  = "}},
        {113, 2, {.volume = true}, {500, 10}, {"      p/kPa = ", "V/(m^3/m^3)= "}},
        {103, 0, {}, {300, 500}, {"      T/K     ", "      p/kPa = "}},
        {105, 0, {}, {500}, {"      p/kPa = "}},
        {33, 0, {}, {1, 10, 300}, {"      V/m^3   ", "      m/kg    ", "      T/K     "}},
        {33, 0, {.amount = true}, {1, 0.25, 300}, {"      V/m^3   ", "      n/kmol  ", "      T/K     "}},
        {4,
         0,
         {},
         {231, 101.3, 580, 2.4},
         {"        T/K = ", "  p(LV)/kPa = ", "rho(L)/kg/m^3= ", "rho_V/kg/m^3= "}},
    };
    const Session s = sample::propane();
    for (const Case& c : cases) {
        Document d = s.document;
        d.units.VolumeMode = c.VolumeMode;
        d.calc.CurrentPoint = 3;
        const UnitFactors factors = unit_factors(*s.fluid, d.units);
        const InputForm form = input_form(d, c.kind, c.options);
        ASSERT_EQ(form.par.size(), c.labels.size()) << c.kind;
        for (std::size_t i = 0; i < c.labels.size(); ++i) EXPECT_EQ(form.par[i].label, c.labels[i]);
        const InputTaken taken = take_input(d, factors, c.kind, c.options, c.boxes);
        ASSERT_FALSE(taken.refusal) << c.kind;
        EXPECT_EQ(taken.calculate, c.kind != 4);
        EXPECT_EQ(d.calc.CurrentPoint, c.kind > 100 ? 0 : 3);
        const BoxValues shown = input_boxes(d, factors, c.kind, c.options);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(shown[i], c.boxes[i], 1e-6 * c.boxes[i]) << c.kind;

        // Each box in turn without a valid value: refused, the box is named, and the former values stay.
        const Document before = d;
        for (std::size_t i = 0; i < c.labels.size(); ++i) {
            for (const double bad : {0.0, -1.0, static_cast<double>(NAN), 1e300}) {
                BoxValues boxes = c.boxes;
                boxes[i] = bad;
                const InputTaken refused = take_input(d, factors, c.kind, c.options, boxes);
                EXPECT_EQ(refused.refusal.value_or(Message{}).text, "no valid input");
                EXPECT_EQ(refused.box, i);
                EXPECT_EQ(refused.rule,
                          std::string(caption_parts(c.labels[i]).name) + (std::isnan(bad) ? " is no number."
                                                                          : bad > 0       ? " is too large."
                                                                                    : " must be above 0."));
                EXPECT_EQ(d, before);
            }
        }
    }
    EXPECT_TRUE(input_form(s.document, 7, {}).par.empty());
    EXPECT_TRUE(input_form(s.document, 125, {}).par.empty());
}

// 1 kmol of propane is 44.0956 kg, its v(cr) by the EOS 0.3074 R Tcr/pcr.
TEST(InputBoxes, turn_volumes_into_densities) {
    Session s = sample::propane();
    const double M = 44.0956;
    const double vcr = 0.307401 * 8.31451 * 369.83 / 4248.0;
    struct Case {
        int VolumeMode;
        double volume, rho;
    };
    for (const Case& c : {Case{0, 0.5, M / 0.5}, Case{1, 0.01, 100.0}, Case{2, 2.0, M / (2.0 * vcr)}}) {
        Document d = s.document;
        d.units.VolumeMode = c.VolumeMode;
        const UnitFactors factors = unit_factors(*s.fluid, d.units);
        ASSERT_FALSE(take_input(d, factors, 101, {.volume = true}, {300, c.volume}).refusal);
        EXPECT_NEAR(static_cast<double>(d.exp.points[0].rhoV), c.rho, 1e-5 * c.rho) << c.VolumeMode;
        EXPECT_EQ(d.exp.points[0].rhoL, 0.0f);
        const BoxValues as_volume = convert_boxes(d, factors, 101, {}, {.volume = true}, {300, c.rho});
        EXPECT_NEAR(as_volume[1], c.volume, 1e-5 * c.volume);
        const BoxValues as_rho = convert_boxes(d, factors, 101, {.volume = true}, {}, {300, c.volume});
        EXPECT_NEAR(as_rho[1], c.rho, 1e-5 * c.rho);
        EXPECT_EQ(as_rho[0], 300);
    }
    Document d = s.document;
    EXPECT_NEAR(convert_boxes(d, {}, 33, {}, {.amount = true}, {1, M, 300})[1], 1.0, 1e-6);
    EXPECT_NEAR(convert_boxes(d, {}, 33, {.amount = true}, {}, {1, 2, 300})[1], 2 * M, 1e-4);
    // A new direct input leaves nothing of the one before.
    take_input(d, {}, 103, {}, {300, 500});
    take_input(d, {}, 101, {}, {310, 5});
    EXPECT_EQ(d.exp.points[0], (TpRhoPoint{.T = 310, .rhoV = 5}));
    d.substance.constants.MolMass = 0;
    const auto rule = [&](int kind, const InputOptions& options, const BoxValues& boxes) {
        return take_input(d, {}, kind, options, boxes).rule;
    };
    EXPECT_EQ(rule(101, {.volume = true}, {300, 5}),
              "V needs the molar mass, which the substance does not have.");
    EXPECT_EQ(rule(33, {.amount = true}, {1, 1, 300}),
              "n needs the molar mass, which the substance does not have.");
}

TEST(InputBoxes, read_numbers_whole_or_not_at_all) {
    struct Case {
        const char* text;
        std::optional<double> value;
    };
    for (const Case& c : {Case{"1,5", 1.5}, Case{" 1.5e3 ", 1500.0}, Case{"", 0.0}, Case{"1.2.3", {}},
                          Case{"12a", {}}, Case{"1e999", {}}, Case{"-", {}}, Case{"1 000", {}}}) {
        EXPECT_EQ(box_number(c.text), c.value) << c.text;
    }
    EXPECT_EQ(box_text(103, BoxValue::T, 298.123456789), "298.123456789");
    EXPECT_EQ(box_text(33, BoxValue::T, 298.123456789), "298.1234");  // the nearest single is 298.12344
    EXPECT_EQ(box_text(103, BoxValue::T, 0.0), "");
}

TEST(InputBoxes, tell_the_first_box_that_cannot_be_taken) {
    const Document before = sample::propane_document();
    struct Case {
        BoxTexts texts;  // T, p
        std::size_t box;
        const char* rule;
    };
    const std::string long_text(300, '1');
    for (const Case& c :
         {Case{{{{""}, {""}}}, 0, "T is missing."}, Case{{{{"300"}, {" "}}}, 1, "p is missing."},
          Case{{{{"-5"}, {""}}}, 0, "T must be above 0."}, Case{{{{"300"}, {"-"}}}, 1, "- is no number."},
          Case{{{{"-5", "-273.15 °C"}, {"1"}}}, 0, "T must be above -273.15 °C."},
          Case{{{{"1e39"}, {"1"}}}, 0, "T is too large."}, Case{{{{"1e-400"}, {"1"}}}, 0, "T is too small."},
          Case{{{{"1e-50"}, {"1"}}}, 0, "T is too small."},
          Case{{{{long_text}, {"1"}}}, 0, "The text of T is too long."},
          Case{{{{"5 furlong"}, {"1"}}}, 0, "furlong is no unit of T."},
          Case{{{{"a text that never comes to an end"}, {"1"}}},
               0,
               "a text that never comes ... is no number."}}) {
        Document d = before;
        const InputTaken taken = take_input(d, {}, 103, {}, c.texts);
        EXPECT_EQ(taken.refusal.value_or(Message{}).text, "no valid input") << c.rule;
        EXPECT_EQ(taken.box, c.box) << c.rule;
        EXPECT_EQ(taken.rule, c.rule);
        EXPECT_EQ(d, before);
    }
    Document d = before;
    ASSERT_FALSE(take_input(d, {}, 103, {}, BoxTexts{{{"293,15"}, {" 1e2"}}}).refusal);
    EXPECT_EQ(d.exp.points[0], (TpRhoPoint{.T = 293.15, .p = 100}));
}

// Without a vapor pressure equation p(LV) of a PARTIAL calculation can be typed, and may be left out.
TEST(InputBoxes, offer_the_vapor_pressure_that_no_equation_gives) {
    Document d = sample::propane_document();
    d.models.EVPKode = Evp::none;
    d.calc.setup.GlobalCalc = false;
    ASSERT_EQ(input_form(d, 104, {}).par.size(), 2u);
    EXPECT_FALSE(take_input(d, {}, 104, {}, {300, 0}).refusal);
    EXPECT_TRUE(take_input(d, {}, 104, {}, {300, -1}).refusal);
    EXPECT_FALSE(take_input(d, {}, 104, {}, {300, 990}).refusal);
    EXPECT_EQ(d.exp.points[0].p, 990.0);
    d.calc.CalcMode = Mode::equilibrium_T;
    EXPECT_EQ(state_input(d, 0).p, 990.0);
    d.calc.setup.GlobalCalc = true;
    EXPECT_EQ(input_form(d, 104, {}).par.size(), 1u);
    for (const auto& [model, boxes] : {std::pair{Hlv::chen, 2u}, {Hlv::eos, 1u}, {Hlv::evp_benson, 2u}}) {
        d.models.HLVKode = model;
        EXPECT_EQ(input_form(d, 107, {}).par.size(), boxes) << number_of(model);
    }
}

// Inputs work on a copy: what is left without "Calculate" has changed nothing.
TEST(Calculation, goes_from_the_menu_to_its_outcome) {
    Session s = sample::propane();
    const Document before = s.document;
    QueuedMessages user;
    const Dispatch way = CalcDispatch(s.document, Mode::T_p, user);
    Document d = s.document;
    d.calc = way.calc;
    EXPECT_TRUE(take_input(d, s.factors(), way.ParInputKind, {}, {300, 0}).refusal);
    ASSERT_FALSE(take_input(d, s.factors(), way.ParInputKind, {}, {300, 500}).refusal);
    EXPECT_EQ(s.document, before);
    EXPECT_TRUE(commit(s, d).inputs);
    const Outcome& outcome = calculate(s, s.document.calc.CurrentPoint);
    ASSERT_TRUE(outcome.V);
    EXPECT_EQ(outcome.phase, PhaseWord::V);
    EXPECT_EQ(outcome.T, 300);
    EXPECT_EQ(current_outcome(s), &outcome);
}

}  // namespace
}  // namespace quom
