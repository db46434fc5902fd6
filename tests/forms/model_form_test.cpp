#include "forms/model_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "engine/volume_solver.h"
#include "forms/virial_form.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

// A substance that was just confirmed, its models not yet.
Session chosen(std::string_view cas) {
    SilentMessages nobody;
    Session s = test::starter_session();
    confirm_substance(s, FindCAS(s.database, cas), nobody);
    return s;
}

TEST(ModelForm, opens_with_a_proposal_and_leaves_the_session_alone) {
    Session s = chosen(test::propane);
    const Document before = s.document;
    ModelForm form = open_model_form(s.document);
    EXPECT_EQ(form.models.EOSKode, Eos::peng_robinson);
    EXPECT_TRUE(form.models.Konzept);
    EXPECT_TRUE(form.global_enabled());
    EXPECT_EQ(form.EOSKombi.selected_code(), number_of(Eos::peng_robinson));
    EXPECT_EQ(form.pkombi.selected_code(), number_of(form.models.EVPKode));
    EXPECT_EQ(form.HLVKombi.selected_code(), number_of(form.models.HLVKode));
    EXPECT_EQ(form.rhoL.availability, "Parameters available from database");
    EXPECT_TRUE(differs(form, s.document));

    EOSKombi_Click(form, Eos::soave);
    PriorOpt_Click(form, 1);
    EXPECT_EQ(s.document, before) << "closed without OK, nothing has changed";
    EXPECT_FALSE(s.shell.ModelsConfirmed);
}

TEST(ModelForm, ok_takes_it_over) {
    Session s = chosen(test::propane);
    QueuedMessages user;
    const ModelForm form = open_model_form(s.document);
    const ModelOk ok = confirm_models(s, form, user);
    EXPECT_EQ(ok.err, 0);
    EXPECT_TRUE(ok.needs_critical_available && ok.changes.models && ok.changes.units);
    EXPECT_EQ(ok.ModelStatus, "CEOS Peng / Robinson (GLOBAL concept)");
    EXPECT_EQ(s.shell.ModelStatus, ok.ModelStatus);
    EXPECT_TRUE(s.shell.ModelsConfirmed);
    EXPECT_FALSE(differs(form, s.document));
    EXPECT_EQ(s.fluid->models, form.models);
    EXPECT_TRUE(user.asked.empty());
    // v(cr) = 0.3074 R T(cr)/p(cr)
    EXPECT_NEAR(s.document.units.vcrStart, 0.307401 * 8.31451 * s.substance().Tcr / s.substance().pcr, 1e-6);
    // The start value of diagrams is that of the first equation; a second OK leaves it.
    const double vcr = s.document.units.vcrStart;
    ModelForm other = open_model_form(s.document);
    other.models.HLVKode = form.models.HLVKode;  // the list of delta(LV)h follows the vapor pressure equation
    EXPECT_FALSE(differs(other, s.document));
    EOSKombi_Click(other, Eos::soave);
    unconfirm_models(s);
    EXPECT_FALSE(s.shell.ModelsConfirmed);
    EXPECT_EQ(confirm_models(s, other, user).err, 0);
    EXPECT_EQ(s.document.units.vcrStart, vcr);
}

TEST(ModelForm, an_equation_of_the_vapor_allows_the_partial_concept_only) {
    const Session s = chosen(test::propane);
    ModelForm form = open_model_form(s.document);
    EXPECT_TRUE(form.HLVKombi.offers(number_of(Hlv::eos)));
    EOSKombi_Click(form, Eos::virial_peng_robinson);
    EXPECT_FALSE(form.models.Konzept || form.global_enabled() || form.HLVKombi.offers(number_of(Hlv::eos)));
    PriorOpt_Click(form, 0);
    EXPECT_FALSE(form.models.Konzept);
    EOSKombi_Click(form, Eos::soave);
    EXPECT_TRUE(form.models.Konzept && form.global_enabled() && form.HLVKombi.offers(number_of(Hlv::eos)));
    HLVKombi_Click(form, Hlv::eos);
    EOSKombi_Click(form, Eos::ideal_gas);
    EXPECT_NE(form.models.HLVKode, Hlv::eos);
    EXPECT_EQ(form.HLVKombi.selected_code(), number_of(form.models.HLVKode));
}

TEST(ModelForm, a_typed_watson_exponent_is_there_when_the_window_opens_again) {
    QueuedMessages user;
    Session s = chosen(test::propane);
    ModelForm form = open_model_form(s.document);
    HLVKombi_Click(form, Hlv::watson);
    EXPECT_TRUE(form.watson_shown());
    EXPECT_EQ(form.WatsonKombi[static_cast<std::size_t>(form.watson_selected)], "0.38");
    struct Case {
        const char* typed;
        float nWat;
    };
    for (const Case& c : {Case{"0,41", 0.41F}, Case{"0.375", 0.375F}, Case{"", 0.375F}, Case{"0.38", 0.38F},
                          Case{"0.4567", 0.4567F}}) {
        WatsonKombi_Change(form, c.typed);
        ASSERT_EQ(confirm_models(s, form, user).err, 0);
        form = open_model_form(s.document);
        EXPECT_EQ(form.models.nWat, c.nWat) << c.typed;
        HLVKombi_Click(form, Hlv::watson);
    }
    EXPECT_EQ(form.watson_selected, -1);
}

TEST(ModelForm, constants_of_the_manual_virial_equation_are_typed_and_kept) {
    QueuedMessages user;
    Session s = test::substance_session(test::propane, Eos::peng_robinson);
    ModelForm form = open_model_form(s.document);
    EOSKombi_Click(form, Eos::virial_manual);
    EXPECT_TRUE(form.needs_virial_input());
    EXPECT_EQ(take_virial_input(form.eos_input, {0.1, INFINITY, 1.0}).value_or(Message{}).text,
              "no valid input");
    EXPECT_EQ(form.eos_input, EosInput{});
    const EosInput before = form.eos_input;
    for (const auto& [b1, rule] : {std::pair{"", "b1 is missing."}, {"1e", "1e is no number."}}) {
        const auto refused = take_virial_input(form.eos_input, {"0.1", b1, "1e"});
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->box, 1u);
        EXPECT_EQ(refused->rule, rule);
        EXPECT_EQ(form.eos_input, before);
    }
    ASSERT_FALSE(take_virial_input(form.eos_input, {0.1, 150.0, 1.0}));
    EXPECT_EQ(s.document.eos_input, EosInput{});
    ASSERT_EQ(confirm_models(s, form, user).err, 0);
    EXPECT_NEAR(VirialB(*s.fluid, 300.0), 0.1 - 150.0 / 300.0, 1e-12);

    form = open_model_form(s.document);
    EXPECT_EQ(virial_input(form.eos_input).b1, 150.0) << "opened again, they are there";
    EOSKombi_Click(form, Eos::virial_manual);
    EXPECT_EQ(form.eos_input.b0, 0.1) << "chosen over itself";
    EOSKombi_Click(form, Eos::peng_robinson);
    EOSKombi_Click(form, Eos::virial_manual);
    EXPECT_EQ(form.eos_input.b0, 0.0) << "chosen over another one";
    EXPECT_EQ(s.document.eos_input.b0, 0.1);
}

TEST(ModelForm, parameters_that_give_no_equation_are_refused_and_change_nothing) {
    QueuedMessages user;
    Session s = test::substance_session(test::propane, Eos::peng_robinson);
    const Document before = s.document;
    const auto fluid = s.fluid;
    ModelForm form = open_model_form(s.document);
    EOSKombi_Click(form, Eos::tovarn_ji_1);
    for (const double JiZc : {0.0, 0.4}) {  // none, and above that of van der Waals
        form.eos_input.JiZc = JiZc;
        EXPECT_TRUE(check(form));
        EXPECT_GT(confirm_models(s, form, user).err, 0);
        EXPECT_THAT(user.take(), ElementsAre(Pair("Execution not possible",
                                                  "Error - EOS-parameter calculation (Tovarn-Ji model)")));
        EXPECT_EQ(s.document, before);
        EXPECT_EQ(s.fluid, fluid);
        EXPECT_FALSE(s.shell.ModelsConfirmed);
    }
    form.eos_input = {.JiP3 = 0.5, .JiP4 = 0.1, .JiP5 = 0.1, .JiZc = 0.3};
    EXPECT_EQ(confirm_models(s, form, user).err, 0);
    EXPECT_TRUE(s.fluid->has_eos());
}

TEST(ModelForm, without_omega_the_user_is_told) {
    Session s = test::substance_session(test::propane, Eos::peng_robinson);
    change(s, [](Document& d) { d.substance.constants.omega = 0; });
    QueuedMessages user;
    ModelForm form = open_model_form(s.document);
    for (const Eos code : {Eos::soave, Eos::peng_robinson, Eos::virial_peng_robinson, Eos::pitzer_curl})
        EXPECT_FALSE(form.EOSKombi.offers(number_of(code))) << number_of(code);
    EXPECT_EQ(confirm_models(s, form, user).err, 0);
    EXPECT_TRUE(user.take().empty());
    // A selection that was confirmed while omega was there.
    form.models.EOSKode = Eos::peng_robinson;
    EXPECT_EQ(confirm_models(s, form, user).err, 0);
    EXPECT_THAT(user.take(), ElementsAre(Pair("WARNING",
                                              "no acentric factor available.\nCalculated using omega = 0\n"
                                              "(Input => database editor)")));
}

TEST(ModelForm, without_critical_data_only_the_ideal_gas_is_left) {
    Session s = chosen(test::propane);
    change(s, [](Document& d) { d.substance.constants.Tcr = d.substance.constants.pcr = 0; });
    QueuedMessages user;
    const ModelForm form = open_model_form(s.document);
    EXPECT_EQ(form.EOSKombi.entries.size(), 1u);
    EXPECT_EQ(form.models.EOSKode, Eos::ideal_gas);
    EXPECT_FALSE(form.models.Konzept);
    const ModelOk ok = confirm_models(s, form, user);
    EXPECT_EQ(ok.err, 0);
    EXPECT_FALSE(ok.needs_critical_available);
    EXPECT_TRUE(s.shell.ModelsConfirmed);
}

TEST(ModelForm, reduced_units_end_where_the_equation_has_no_critical_volume) {
    QueuedMessages user;
    Session s = test::substance_session(test::propane, Eos::peng_robinson);
    change(s, [](Document& d) {
        d.units.EnergyMode = 3;
        d.units.VolumeMode = 2;
    });
    ModelForm form = open_model_form(s.document);
    EOSKombi_Click(form, Eos::pitzer_curl);
    confirm_models(s, form, user);
    EXPECT_EQ(s.document.units.VolumeMode, 0);
    EXPECT_EQ(s.document.units.EnergyMode, 3);
}

TEST(ModelWishes, are_chosen_or_refused_in_a_sentence) {
    Session s = chosen(test::propane);
    ModelForm form = open_model_form(s.document);
    ASSERT_FALSE(choose_models(form, {.eos = Eos::soave, .hlv = Hlv::watson, .Konzept = false, .nWat = 0.4}));
    EXPECT_EQ(form.models.EOSKode, Eos::soave);
    EXPECT_EQ(form.models.HLVKode, Hlv::watson);
    EXPECT_EQ(form.models.nWat, 0.4F);
    EXPECT_FALSE(form.models.Konzept);

    struct Case {
        ModelWishes wishes;
        ModelBox box;
        const char* text;
    };
    const Case cases[] = {
        {{.eos = Eos::peng_robinson, .hlv = Hlv::eos, .Konzept = true, .nWat = 10.0},
         ModelBox::WatsonKombi,
         "below 10"},
        {{.nWat = 0.0}, ModelBox::WatsonKombi, "0.38"},
        {{.eos = Eos::pitzer_curl, .Konzept = true},
         ModelBox::Konzept,
         "needs a cubic equation of state; VIRIAL-EOS Pitzer / Curl holds for the vapor alone."},
        {{.eos = Eos::pitzer_curl, .hlv = Hlv::eos},
         ModelBox::HLVKombi,
         "Propane does not offer 7 (using CEOS ('GLOBAL calculation')): it needs a cubic equation of state. "
         "It offers 1, "},
        {{.eos = Eos::tovarn_ji_2}, ModelBox::constants, "equation of state 8 give no equation"},
        {{.evp = Evp::none},
         ModelBox::pkombi,
         "does not offer 0 (none): its constants are not in the record."},
    };
    const ModelSelection before = form.models;
    for (const Case& c : cases) {
        const auto refusal = choose_models(form, c.wishes);
        ASSERT_TRUE(refusal) << c.text;
        EXPECT_EQ(refusal->box, c.box) << c.text;
        EXPECT_THAT(refusal->text, HasSubstr(c.text));
        EXPECT_EQ(form.models, before) << c.text;
    }
    change(s, [](Document& d) {
        d.substance.constants.omega = 0;
        d.substance.constants.haveSinh = d.substance.constants.havePoly = false;
    });
    form = open_model_form(s.document);
    EXPECT_THAT(choose_models(form, {.eos = Eos::soave})->text,
                HasSubstr("does not offer 5 (CEOS Soave / Redlich / Kwong): the record has no omega. "
                          "It offers 0, 2, 3, 4, 7, 8, 10, 11, 12, 13."));
    EXPECT_THAT(choose_models(form, {.cp = CpForm::polynomial})->text, HasSubstr("There is none."));
}

}  // namespace
}  // namespace quom
