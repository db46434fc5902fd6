#include "calc/calc_input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "calc/calc_partial.h"
#include "calc/reference_input.h"
#include "calc/reference_point.h"
#include "engine/condensed_phases.h"
#include "engine/volume_solver.h"
#include "sample_substances.h"
#include "session/options.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

// ---- Which way a mode goes ----

struct Way {
    const char* name;
    int mode, EOSKode, HLVKode;
    bool batch;
    std::vector<Answer> answers;
    const char* opens;  // S selection, W process, R result, P boxes; X refused
    int ParInputKind;
    bool GlobalCalc;
};

TEST(CalcDispatch, decides_the_inputs_of_each_mode) {
    const Way ways[] = {
        {"no mode is mode 1", 0, 6, 7, false, {}, "RP", 101, true},
        {"T, rho", 1, 6, 7, false, {}, "RP", 101, true},
        {"T, rho(L) needs a cubic EOS", 2, 16, 7, false, {}, "X", 0, true},
        {"T, p", 3, 6, 7, false, {Answer::no}, "RP", 103, true},
        {"T, p of an equilibrium", 3, 6, 7, false, {Answer::yes}, "SRP", 103, true},
        {"T, p in a batch asks nothing", 3, 6, 7, true, {Answer::yes}, "R", 0, true},
        {"T, p of a virial equation", 3, 16, 6, false, {Answer::no}, "RP", 103, false},
        {"equilibrium", 4, 6, 7, false, {}, "SRP", 104, true},
        {"equilibrium in a batch", 5, 6, 7, true, {}, "SR", 0, true},
        {"delta(LV)h by the EOS", 6, 6, 7, false, {}, "RP", 106, true},
        {"delta(LV)h by Benson", 7, 6, 6, false, {}, "SRP", 107, true},
        {"functions", 8, 6, 7, false, {}, "RP", 108, true},
        {"tank, GLOBAL", 9, 6, 7, true, {}, "RP", 33, true},
        {"tank, PARTIAL", 10, 6, 7, true, {}, "SRP", 33, false},
        {"virial coefficients", 11, 6, 7, true, {}, "R", 0, true},
        {"process", 12, 6, 7, true, {}, "W", 112, true},
        {"p, rho", 13, 16, 6, false, {}, "RP", 113, false},
        {"database function", 24, 6, 7, false, {}, "RP", 124, true},
        {"unknown", 25, 6, 7, false, {}, "X", 0, true},
    };
    for (const Way& w : ways) {
        Session s = sample::propane(w.EOSKode);
        QueuedMessages user;
        user.answers.assign(w.answers.begin(), w.answers.end());
        s.messages = &user;
        s.models.HLVKode = w.HLVKode;
        s.options.BatchMode = w.batch;
        s.calc.CalcMode = w.mode;
        const Dispatch d = CalcDispatch(s);
        std::string opens;
        if (d.refused) opens += 'X';
        if (d.selection) opens += 'S';
        if (d.process_input) opens += 'W';
        if (d.result_window) opens += 'R';
        if (d.parameter_input) opens += 'P';
        EXPECT_EQ(opens, w.opens) << w.name;
        EXPECT_EQ(s.calc.ParInputKind, w.ParInputKind) << w.name;
        EXPECT_EQ(s.calc.GlobalCalc, w.GlobalCalc) << w.name;
        EXPECT_EQ(s.calc.VLEAssumed, opens == "SRP" && w.mode == 3) << w.name;
        if (w.mode == 2) {
            EXPECT_EQ(user.asked.at(0).text, "possible only using a cubic EOS");
        }
    }
}

// ---- Boxes ----

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
    for (const Case& c : cases) {
        Session s = sample::propane();
        s.units.VolumeMode = c.VolumeMode;
        ASSERT_TRUE(set_unit_factors(s));
        const InputForm form = input_form(s, c.kind, c.options);
        ASSERT_EQ(form.par.size(), c.labels.size()) << c.kind;
        for (std::size_t i = 0; i < c.labels.size(); ++i) EXPECT_EQ(form.par[i].label, c.labels[i]);
        const InputTaken taken = take_input(s, c.kind, c.options, c.boxes);
        ASSERT_FALSE(taken.refusal) << c.kind;
        EXPECT_EQ(taken.calculate, c.kind != 4);
        const BoxValues shown = input_boxes(s, c.kind, c.options);
        for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(shown[i], c.boxes[i], 1e-6 * c.boxes[i]) << c.kind;

        // Each box in turn without a valid value: refused, and the former values stay.
        for (std::size_t i = 0; i < c.labels.size(); ++i) {
            for (const double bad : {0.0, -1.0, static_cast<double>(NAN), 1e300}) {
                BoxValues boxes = c.boxes;
                boxes[i] = bad;
                EXPECT_EQ(take_input(s, c.kind, c.options, boxes).refusal.value_or(Message{}).text,
                          "no valid input");
            }
        }
        EXPECT_EQ(input_boxes(s, c.kind, c.options), shown);
    }
}

// 1 kmol of propane is 44.0956 kg, its v(cr) by the EOS 0.3074 R Tcr/pcr.
TEST(InputBoxes, turn_volumes_into_densities) {
    Session s = sample::propane();
    const double M = 44.0956, vcr = 0.307401 * 8.31451 * 369.83 / 4248.0;
    struct Case {
        int VolumeMode;
        double volume, rho;
    };
    for (const Case& c : {Case{0, 0.5, M / 0.5}, Case{1, 0.01, 100.0}, Case{2, 2.0, M / (2.0 * vcr)}}) {
        s.units.VolumeMode = c.VolumeMode;
        ASSERT_TRUE(set_unit_factors(s));
        EXPECT_NEAR(density_of_volume(s, c.volume), c.rho, 1e-5 * c.rho) << c.VolumeMode;
        EXPECT_NEAR(volume_of_density(s, c.rho), c.volume, 1e-5 * c.volume) << c.VolumeMode;
    }
    // A new direct input leaves nothing of the one before.
    take_input(s, 103, {}, {300, 500});
    take_input(s, 101, {}, {310, 5});
    EXPECT_EQ(s.exp.points[0].p, 0.0);
    s.substance.MolMass = 0;
    EXPECT_TRUE(take_input(s, 101, {.volume = true}, {300, 5}).refusal);
}

TEST(InputBoxes, read_numbers_whole_or_not_at_all) {
    struct Case {
        const char* text;
        std::optional<double> value;
    };
    for (const Case& c : {Case{"1,5", 1.5}, Case{" 1.5e3 ", 1500.0}, Case{"", 0.0}, Case{"1.2.3", {}},
                          Case{"12a", {}}, Case{"1e999", {}}, Case{"-", {}}}) {
        EXPECT_EQ(box_number(c.text), c.value) << c.text;
    }
}

// Without a vapor pressure equation p(LV) of a PARTIAL calculation can be typed, and may be left out.
TEST(InputBoxes, offer_the_vapor_pressure_that_no_equation_gives) {
    Session s = sample::propane();
    s.models.EVPKode = 0, s.calc.GlobalCalc = false;
    ASSERT_EQ(input_form(s, 104, {}).par.size(), 2u);
    EXPECT_FALSE(take_input(s, 104, {}, {300, 0}).refusal);
    EXPECT_FALSE(take_input(s, 104, {}, {300, 990}).refusal);
    EXPECT_EQ(s.exp.points[0].p, 990.0);
    s.calc.GlobalCalc = true;
    EXPECT_EQ(input_form(s, 104, {}).par.size(), 1u);
}

TEST(VirialInput, goes_into_the_equation) {
    Session s = sample::propane(eos_virial_manual);
    EXPECT_TRUE(take_virial_input(s, {0.1, INFINITY, 1.0}));
    ASSERT_FALSE(take_virial_input(s, {0.1, 150.0, 1.0}));
    EXPECT_NEAR(VirialB(s, eos_virial_manual, 300.0), 0.1 - 150.0 / 300.0, 1e-12);
}

// ---- Reference point ----

// Where the values come from is told in the text; each case leaves out what the one before has used.
TEST(ReferencePoint, takes_what_the_record_has) {
    struct Case {
        const char* name;
        void (*change)(Session&);
        double T, p, rhoL;
        std::int16_t err;
        const char* says;
    };
    const Case cases[] = {
        {"equation",
         [](Session& s) {
             // Perry, 7th ed., table 2-30, times M
             s.substance.RhoL = {0.0f, 60.662f, 0.27453f, 0.29359f};
             s.substance.RhoLTcr = 369.83f;
             s.substance.RhoLTLo = 85, s.substance.RhoLTHi = 369;
         },
         231.02, 101.3, 582.6, 0, "(from database equ. rho(T))"},
        {"slope",
         [](Session& s) {
             s.substance.RhoL = {493.0f, -1.3f, 298.15f};
         },
         231.02, 101.3, 493.0 + 1.3 * (298.15 - 231.02), 0, "(calculated from drho/dT)"},
        {"point only",
         [](Session& s) {
             s.substance.RhoL = {493.0f, 0.0f, 298.15f};
         },
         298.15, -1.0, 493.0, 0, "(database: single point for density)"},
        {"point without boiling T",
         [](Session& s) {
             s.substance.RhoL = {493.0f, -1.3f, 298.15f};
             s.substance.Tnb = 0.0f;
         },
         298.15, -1.0, 493.0, 0, "-equation)"},
        {"boiling T only", [](Session&) {}, 231.02, 101.3, 0.0, 0, "(normal boiling T)"},
        {"nothing", [](Session& s) { s.substance.Tnb = 0.0f; }, 0.0, 0.0, 0.0, -1, ""},
    };
    for (const Case& c : cases) {
        Session s = sample::propane();
        c.change(s);
        const ReferencePointResult r = ReferencePoint(s);
        EXPECT_EQ(r.err, c.err) << c.name;
        EXPECT_NEAR(r.T, c.T, 1e-4) << c.name;
        const double p = c.p >= 0.0 ? c.p : pLV_EVP(s, 298.15, s.models.EVPKode).value;
        EXPECT_NEAR(r.p, p, 0.01) << c.name;
        EXPECT_NEAR(r.rhoL, c.rhoL, 0.05) << c.name;
        EXPECT_THAT(r.text, HasSubstr(c.says)) << c.name;
        if (c.err == 0) {
            const double ideal = 44.0956 * r.p / (8.31451 * r.T);
            EXPECT_GT(r.rhoV, ideal) << c.name;  // attraction: denser than the ideal gas
            EXPECT_LT(r.rhoV, 1.3 * ideal) << c.name;
        }
        EXPECT_EQ(s.benson.TRefL, 0.0f);
    }
}

TEST(ReferencePoint, has_a_vapor_density_without_an_equation_of_state) {
    Session s = sample::propane();
    s.models.EOSKode = eos_none;
    s.eos = {};
    const double ideal = 44.0956 * 101.3 / (8.31451 * 231.02);
    const ReferencePointResult virial = ReferencePoint(s);
    EXPECT_THAT(virial.text, HasSubstr("(using Virial-EOS, PITZER/CURL)"));
    EXPECT_NEAR(virial.rhoV, 2.42, 0.02);  // saturated vapor at the boiling point, NIST: 2.416 kg/m^3
    s.substance.omega = 0.0;
    const ReferencePointResult gas = ReferencePoint(s);
    EXPECT_THAT(gas.text, HasSubstr("(using idealgas EOS)"));
    EXPECT_NEAR(gas.rhoV, ideal, 1e-4);
}

TEST(ReferencePoint, of_benson_keeps_its_own_normal_pressure) {
    Session s = sample::propane();
    const ReferencePointResult r = BensonReferencePoint(s);
    ASSERT_EQ(r.err, 0);
    EXPECT_EQ(static_cast<float>(r.p), 101.335f);
    EXPECT_NEAR(r.rhoL, (1.981 + 0.18327 * std::log(4248.0 / 101.3)) * 44.0956 / 0.2, 0.01);
    EXPECT_THAT(r.text, HasSubstr("101.325  (normal pressure)"));
    s.substance.rhocrDB = 0.0;
    EXPECT_EQ(BensonReferencePoint(s).err, -1);
}

// ---- GLOBAL or PARTIAL ----

TEST(PartialSelection, follows_the_situation) {
    struct Case {
        const char* name;
        int mode, EOSKode;
        bool Konzept, VLE;
        PartialSituation situation;
        bool free, GlobalCalc;
    };
    using P = PartialSituation;
    const Case cases[] = {
        {"free", 4, 6, true, false, P::free_choice, true, true},
        {"virial", 5, 16, false, false, P::vapor_only, false, false},
        {"assumed", 3, 6, true, true, P::assumed_state, true, false},
        {"partial", 4, 6, false, false, P::partial_concept, false, false},
        {"tank", 10, 6, true, false, P::benson_only, false, false},
        {"delta(LV)h", 6, 6, true, false, P::benson_only, false, false},
    };
    for (const Case& c : cases) {
        Session s = sample::propane(c.EOSKode);
        s.models.Konzept = c.Konzept;
        s.calc.CalcMode = c.mode, s.calc.VLEAssumed = c.VLE, s.calc.RhoLWanted = true;
        const PartialSelection open = OpenPartial(s);
        EXPECT_EQ(open.view.situation, c.situation) << c.name;
        EXPECT_EQ(open.view.opt_glob_enabled, c.free) << c.name;
        EXPECT_EQ(s.calc.GlobalCalc, c.GlobalCalc) << c.name;
        EXPECT_FALSE(s.calc.RhoLWanted) << c.name;
        EXPECT_EQ(s.calc.ParInputKind, 4) << c.name;
    }
}

TEST(PartialSelection, refuses_continues_and_sets_the_switches) {
    Session s = sample::propane(eos_pitzer_curl);
    s.calc.CalcMode = 4;
    PartialSelection open = OpenPartial(s);
    EXPECT_TRUE(ChooseConcept(s, open, true));
    EXPECT_FALSE(s.calc.GlobalCalc);
    EXPECT_TRUE(open.view.OK_enabled);  // the boiling T is there
    EXPECT_THAT(open.view.range, "(no database function available)");
    // No liquid density is known: rho(L) is not wanted. Benson's formula gives one.
    ContinuePartial(s, open);
    EXPECT_FALSE(s.calc.RhoLWanted);
    open = OpenPartial(s);
    EXPECT_FALSE(ChooseReference(s, open, ref_benson));
    const PartialContinue next = ContinuePartial(s, open);
    EXPECT_TRUE(s.calc.RhoLWanted);
    EXPECT_TRUE(next.result_window && next.parameter_input);
    EXPECT_EQ(s.calc.ParInputKind, 104);

    // The database equation needs no reference point.
    s.substance.Tnb = 0.0f;
    s.substance.RhoL = {0.0f, 60.662f, 0.27453f, 0.29359f};
    s.substance.RhoLTcr = 369.83f;
    s.substance.RhoLTLo = 85, s.substance.RhoLTHi = 369;
    open = OpenPartial(s);
    EXPECT_FALSE(open.view.OK_enabled);
    EXPECT_TRUE(ChooseReference(s, open, ref_manual));
    ChooseDensity(s, open, false);
    EXPECT_TRUE(open.view.OK_enabled);
    EXPECT_EQ(open.view.range, "valid in the range T/K = 85...369");
    EXPECT_THAT(open.view.status, HasSubstr(" database equation rho(L)= Fu(T), V density"));
    ContinuePartial(s, open);
    EXPECT_TRUE(s.calc.RhoLWanted);

    s.calc.CalcMode = 10;
    open = OpenPartial(s);
    EXPECT_FALSE(ContinuePartial(s, open).result_window);
    EXPECT_EQ(s.calc.ParInputKind, 33);
}

// ---- Reference state ----

TEST(ReferenceInput, maps_options_to_codes_and_units_to_molar) {
    Session s = sample::propane();
    s.substance.dfH0 = -104680.0f, s.substance.dfG0 = -24390.0f, s.substance.S0abs = 270.2f;
    s.units.EnergyMode = 3;
    set_unit_factors(s);
    const double M = 44.0956;
    const int codes[] = {1, 10, 2};
    for (int option = 0; option < 3; ++option) {
        ReferenceBoxes boxes = reference_boxes(s);
        boxes.T0 = 300.0, boxes.p0 = 100.0, boxes.h = 2.0, boxes.s = 0.5;
        choose_reference_option(boxes, option);
        ASSERT_FALSE(take_reference(s, boxes));
        EXPECT_EQ(s.reference.RefKode, codes[option]);
        EXPECT_NEAR(s.reference.hOffset, option == 0 ? 2.0 * M : 0.0, 1e-4);
        EXPECT_NEAR(s.reference.sOffset, option == 0 ? 0.5 * M : 0.0, 1e-4);
        EXPECT_EQ(s.reference.TRef0, option == 0 ? 300.0f : 298.15f);
        EXPECT_NEAR(reference_boxes(s).h, option == 0 ? 2.0 : 0.0, 1e-12);
        EXPECT_EQ(reference_boxes(s).option, option);
    }
    EXPECT_NEAR(reference_values(s, 2).h0, -104680.0 / M, 0.01);
    EXPECT_NEAR(reference_values(s, 2).s0, 270.2 / M, 1e-4);
    EXPECT_NEAR(reference_values(s, 1).s0, (-104680.0 + 24390.0) / 298.15 / M, 1e-4);

    ReferenceBoxes boxes = reference_boxes(s);
    const ReferenceState before = s.reference;
    for (double ReferenceBoxes::*box :
         {&ReferenceBoxes::T0, &ReferenceBoxes::p0, &ReferenceBoxes::TEnv, &ReferenceBoxes::pEnv}) {
        ReferenceBoxes bad = boxes;
        bad.*box = -1.0;
        EXPECT_TRUE(take_reference(s, bad));
    }
    EXPECT_EQ(s.reference, before);
    boxes.TEnv = 0.0;
    EXPECT_FALSE(take_reference(s, boxes));
    EXPECT_EQ(s.reference.TEnv, 1e-6);
}

// ---- Options ----

TEST(Options, set_units_or_refuse) {
    struct Case {
        const char* name;
        void (*change)(Session&);
        bool specific, reduced, taken;
        int EnergyMode, VolumeMode;
        double uFactor, vFactor;
    };
    const double M = 44.0956, vcr = 0.307401 * 8.31451 * 369.83 / 4248.0;
    const auto none = [](Session&) {};
    const Case cases[] = {
        {"molar", none, false, false, true, 0, 0, 1.0, 1.0},
        {"specific", none, true, false, true, 3, 1, 1 / M, 1 / M},
        {"reduced", none, false, true, true, 0, 2, 1.0, 1 / vcr},
        {"specific, reduced", none, true, true, true, 3, 2, 1 / M, 1 / vcr},
        {"no M", [](Session& s) { s.substance.MolMass = 0; }, true, false, false, 0, 0, 1.0, 1.0},
        {"no T(cr)", [](Session& s) { s.substance.Tcr = 0; }, false, true, false, 0, 0, 1.0, 1.0},
        {"no v(cr)", [](Session& s) { s.eos.vcrEOS = 0; }, false, true, false, 0, 0, 1.0, 1.0},
    };
    for (const Case& c : cases) {
        Session s = sample::propane();
        c.change(s);
        QueuedMessages user;
        s.messages = &user;
        OptionsInput input = open_options(s);
        input.specific = c.specific, input.chkReduziert = c.reduced, input.Dens = 7000;
        const OptionsResult r = apply_options(s, input);
        EXPECT_EQ(r.taken, c.taken) << c.name;
        EXPECT_EQ(user.asked.size(), c.taken ? 0u : 1u) << c.name;
        EXPECT_EQ(s.units.EnergyMode, c.EnergyMode) << c.name;
        EXPECT_EQ(s.units.VolumeMode, c.VolumeMode) << c.name;
        EXPECT_NEAR(s.units.uFactor, c.uFactor, 1e-6) << c.name;
        EXPECT_NEAR(s.units.vFactor, c.vFactor, 1e-4 * c.vFactor) << c.name;
        EXPECT_EQ(r.unload_diagram, c.taken && (c.specific || c.reduced)) << c.name;
        EXPECT_EQ(s.options.Dens, c.taken ? 1000 : 500) << c.name;
    }
}

TEST(Options, keep_specific_units_on_opening_and_drop_reduced_ones) {
    Session s = sample::propane(eos_pitzer_curl);
    s.units.VolumeMode = 1;
    EXPECT_FALSE(open_options(s).chkReduziert_enabled);
    EXPECT_EQ(s.units.VolumeMode, 1);
    s.units.VolumeMode = 2;
    open_options(s);
    EXPECT_EQ(s.units.VolumeMode, 0);
    EXPECT_EQ(s.units.vFactor, 1.0);
}

TEST(Options, ask_about_a_comma_only_where_it_is_the_decimal_sign) {
    for (const bool decimal_comma : {false, true}) {
        Session s = sample::propane();
        s.options.DezimalKomma = decimal_comma;
        QueuedMessages user;
        user.answers = {Answer::yes, Answer::no};
        s.messages = &user;
        OptionsInput input = open_options(s);
        input.SepCSV = input.SepXY = ',';
        apply_options(s, input);
        EXPECT_EQ(user.asked.size(), decimal_comma ? 2u : 0u);
        EXPECT_EQ(s.options.SepCSV, decimal_comma ? ';' : ',');
        EXPECT_EQ(s.options.SepXY, ',');
    }
}

}  // namespace
}  // namespace quom
