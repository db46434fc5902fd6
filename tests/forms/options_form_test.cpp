#include "forms/options_form.h"

#include <gtest/gtest.h>

#include "engine/unit_factors.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

constexpr double M = 44.0956;

TEST(OptionsForm, sets_units_or_refuses) {
    struct Case {
        const char* name;
        void (*change)(SubstanceConstants&);
        Eos EOSKode;
        bool specific, reduced;
        const char* refused;  // "" taken
        int EnergyMode, VolumeMode;
        double uFactor, vFactor;
    };
    const double vcr = 0.307401 * 8.31451 * 369.83 / 4248.0;
    const auto none = [](SubstanceConstants&) {};
    const char* const no_vcr =
        "The selected EOS does not provide V(cr) (critical molar volume).\n"
        "The desired option \"reduced quantities for T, p, v\" is thus not possible.";
    constexpr Eos pr = Eos::peng_robinson;
    const Case cases[] = {
        {"molar", none, pr, false, false, "", 0, 0, 1.0, 1.0},
        {"specific", none, pr, true, false, "", 3, 1, 1 / M, 1 / M},
        {"reduced", none, pr, false, true, "", 0, 2, 1.0, 1 / vcr},
        {"specific, reduced", none, pr, true, true, "", 3, 2, 1 / M, 1 / vcr},
        {"no M", [](SubstanceConstants& x) { x.MolMass = 0; }, pr, true, false,
         "For this substance the molar mass is missing.", 0, 0, 1.0, 1.0},
        {"no T(cr)", [](SubstanceConstants& x) { x.Tcr = 0; }, pr, false, true,
         "For this substance the critical temperature is missing.", 0, 0, 1.0, 1.0},
        {"no v(cr)", none, Eos::pitzer_curl, false, true, no_vcr, 0, 0, 1.0, 1.0},
    };
    for (const Case& c : cases) {
        SubstanceConstants x = sample::propane_constants();
        c.change(x);
        const Session s = sample::propane(c.EOSKode, x);
        Document d = s.document;
        QueuedMessages user;
        OptionsInput input = open_options(d, *s.fluid);
        input.specific = c.specific;
        input.chkReduziert = c.reduced;
        input.Dens = 7000;
        const OptionsResult r = apply_options(d, *s.fluid, input, user);
        const bool taken = *c.refused == '\0';
        EXPECT_EQ(r.taken, taken) << c.name;
        ASSERT_EQ(user.asked.size(), taken ? 0u : 1u) << c.name;
        const auto in_program = unit_refusal(*s.fluid, c.specific ? 3 : 0,
                                             c.reduced    ? 2
                                             : c.specific ? 1
                                                          : 0);
        EXPECT_EQ(in_program.value_or(Message{}).text, c.refused) << c.name;
        if (!taken) {
            EXPECT_EQ(user.asked[0].text, c.refused);
            EXPECT_EQ(d, s.document) << c.name;
            continue;
        }
        EXPECT_EQ(d.units.EnergyMode, c.EnergyMode) << c.name;
        EXPECT_EQ(d.units.VolumeMode, c.VolumeMode) << c.name;
        EXPECT_NEAR(unit_factors(*s.fluid, d.units).uFactor, c.uFactor, 1e-6) << c.name;
        EXPECT_NEAR(unit_factors(*s.fluid, d.units).vFactor, c.vFactor, 1e-4 * c.vFactor) << c.name;
        EXPECT_EQ(r.units_changed, c.specific || c.reduced) << c.name;
        EXPECT_EQ(r.unload_diagram, c.specific || c.reduced) << c.name;
        EXPECT_EQ(d.options.Dens, 1000) << c.name;
    }
}

TEST(OptionsForm, shows_reduced_quantities_off_where_they_cannot_be_had) {
    const Session s = sample::propane(Eos::pitzer_curl);
    Document d = s.document;
    d.units.EnergyMode = 3;
    for (const int VolumeMode : {1, 2}) {
        d.units.VolumeMode = VolumeMode;
        const OptionsInput input = open_options(d, *s.fluid);
        EXPECT_FALSE(input.chkReduziert_enabled || input.chkReduziert);
        EXPECT_TRUE(input.specific && input.chkPartialKurve_enabled);
        EXPECT_EQ(d.units.VolumeMode, VolumeMode) << "opening changes nothing";
        Document confirmed = d;
        SilentMessages nobody;
        EXPECT_TRUE(apply_options(confirmed, *s.fluid, input, nobody).taken);
        EXPECT_EQ(confirmed.units.VolumeMode, 1);
    }
}

TEST(OptionsForm, gives_back_what_was_taken) {
    const Session s = sample::propane();
    Document d = s.document;
    SilentMessages nobody;
    OptionsInput input = open_options(d, *s.fluid);
    input.chkUnloadGraph2D = false;
    input.specific = true;
    input.chkParSpeichern = true;
    input.chkPartialKurve = true;
    input.chkSKurveOhneKonnode = true;
    input.chkCurveTpRestricted = false;
    input.KurvenMischen = true;
    input.Dens = 550;
    input.batch = true;
    input.SepCSV = '\t';
    input.SepXY = ',';
    const OptionsResult r = apply_options(d, *s.fluid, input, nobody);
    EXPECT_TRUE(r.units_changed);
    EXPECT_FALSE(r.unload_diagram) << "the diagram keeps its units";
    EXPECT_EQ(calc_menu_captions(true).at(1).caption, "columns T, rho(L) => p, state L/V     + thermod. Fu.");
    EXPECT_EQ(d.options, (Options{.BatchMode = true,
                                  .ResetOnClose = false,
                                  .ParSpeichern = true,
                                  .chkPartialKurve = true,
                                  .chkSKurveOhneKonnode = true,
                                  .chkCurveTpRestricted = false,
                                  .KurvenMischen = true,
                                  .Dens = 550,
                                  .SepCSV = '\t',
                                  .SepXY = ','}));
    Document again = d;
    EXPECT_FALSE(apply_options(again, *s.fluid, open_options(d, *s.fluid), nobody).units_changed);
    EXPECT_EQ(again, d) << "opened and confirmed, nothing is another value";
    for (std::size_t i = 0; i < delimiters.size(); ++i)
        EXPECT_EQ(delimiter_index(delimiters[i].sign), static_cast<int>(i));
    EXPECT_EQ(delimiter_index('x'), 0);
}

TEST(OptionsForm, asks_about_a_comma_only_where_it_is_the_decimal_sign) {
    const Session s = sample::propane();
    for (const bool decimal_comma : {false, true}) {
        Document d = s.document;
        d.options.DezimalKomma = decimal_comma;
        QueuedMessages user;
        user.answers = {Answer::yes, Answer::no};
        OptionsInput input = open_options(d, *s.fluid);
        input.SepCSV = ',';
        input.SepXY = ',';
        apply_options(d, *s.fluid, input, user);
        ASSERT_EQ(user.asked.size(), decimal_comma ? 2u : 0u);
        if (decimal_comma) {
            EXPECT_EQ(user.asked[1].title, "Warning for XY file");
        }
        EXPECT_EQ(d.options.SepCSV, decimal_comma ? ';' : ',');
        EXPECT_EQ(d.options.SepXY, ',');
    }
}

}  // namespace
}  // namespace quom
