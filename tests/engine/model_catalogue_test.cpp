// Lists of models by the data of a substance, what a choice changes, and the selection proposed for a
// substance.
#include "engine/model_catalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "support/starter.h"

namespace quom {
namespace {

using Codes = std::vector<int>;

Codes codes(const ModelList& list) {
    Codes all;
    for (const auto& entry : list.entries) all.push_back(entry.code);
    return all;
}

SubstanceConstants propane() { return test::starter_substance(test::propane); }

ModelSelection selection(Eos eos, Evp evp = Evp::wagner, Hlv hlv = Hlv::none) {
    ModelSelection models;
    models.EOSKode = eos;
    models.EVPKode = evp;
    models.HLVKode = hlv;
    return models;
}

// Propane, changed by a row: it has Frost/Kalkwarf, Wagner, Antoine below T(nb), delta(LV)h, rho(L), a Watson
// pair.
using Constants = SubstanceConstants;
struct Offer {
    const char* record;
    void (*change)(Constants& c);
    Codes eos, evp, hlv;
};
const Codes AllEos = {0, 2, 3, 4, 5, 6, 7, 8, 10, 16, 11, 12, 13, 14, 15},
            PlainEos = {0, 2, 3, 4, 7, 8, 10, 11, 12, 13}, AllEvp = {3, 4, 1, 5, 6, 7, 8},
            EvpHigh = {3, 4, 1, 2, 5, 6, 7, 8}, AllHlv = {1, 2, 3, 4, 5, 6, 7}, PlainHlv = {1, 2, 4, 5, 6};
const Offer Offers[] = {
    {"as it is", [](Constants&) {}, AllEos, AllEvp, AllHlv},
    {"with Antoine above T(nb)", [](Constants& c) { c.AntHi[0] = 6.0f; }, AllEos, EvpHigh, AllHlv},
    {"a limit below 0 K counts", [](Constants& c) { c.KFTLo = -1; }, AllEos, AllEvp, AllHlv},
    {"without omega", [](Constants& c) { c.omega = 0.0; }, PlainEos, AllEvp, PlainHlv},
    {"omega for the EOS alone", [](Constants& c) { c.omega = 1e-7; }, AllEos, AllEvp, PlainHlv},
    {"omega below 0", [](Constants& c) { c.omega = -0.2; }, AllEos, AllEvp, AllHlv},
    {"without T(cr)", [](Constants& c) { c.Tcr = 0.0; }, {0}, {3, 4, 1}, {1, 5, 7}},
    {"without p(cr)", [](Constants& c) { c.pcr = 0.0; }, {0}, {3, 4, 1}, {1, 3, 4, 5, 6, 7}},
    {"without T(nb)", [](Constants& c) { c.Tnb = 0.0f; }, AllEos, {3, 4, 1}, AllHlv},
    {"without equations",
     [](Constants& c) { c.KFTLo = c.WagnerTLo = c.HLVTLo = c.RhoLTLo = 0; },
     AllEos,
     {1, 5, 6, 7, 8},
     {2, 3, 4, 6, 7}},
    {"without a Watson pair", [](Constants& c) { c.WatsonHLV = 0.0f; }, AllEos, AllEvp, {1, 2, 3, 5, 6, 7}},
    {"with nothing", [](Constants& c) { c = {}; }, {0}, {0}, {0}},
};

TEST(ModelLists, OfferWhatTheRecordAllows) {
    const ModelSelection models = selection(Eos::peng_robinson);
    for (const Offer& row : Offers) {
        SubstanceConstants substance = propane();
        row.change(substance);
        EXPECT_EQ(codes(AktualisiereEOSKombi(substance, models)), row.eos) << row.record;
        EXPECT_EQ(codes(AktualisierepKombi(substance, models)), row.evp) << row.record;
        const Codes hlv = codes(AktualisiereHLVKombi(substance, models));
        EXPECT_EQ(hlv, row.hlv) << row.record;
        Codes without_eos = row.hlv;  // an equation of the V-phase only has no delta(LV)h
        std::erase(without_eos, 7);
        EXPECT_EQ(codes(AktualisiereHLVKombi(substance, selection(Eos::virial_berthelot))), without_eos)
            << row.record;
        for (int code = -1; code <= 17; ++code) {
            const bool listed = std::ranges::find(row.eos, code) != row.eos.end();
            EXPECT_EQ(AktualisiereEOSKombi(substance, models).offers(code), listed) << row.record << code;
        }
    }
}

TEST(ModelLists, Texts) {
    const SubstanceConstants substance = propane();
    const ModelSelection models = selection(Eos::peng_robinson);
    const auto text = [](const ModelList& list, std::size_t i) { return list.entries[i].text; };
    EXPECT_EQ(text(AktualisiereEOSKombi(substance, models), 9), "VIRIAL-EOS Pitzer / Curl           ");
    EXPECT_EQ(text(AktualisierepKombi(substance, models), 5), "Fro/Kalk (Redl./Kwong correlated)  ");
    EXPECT_EQ(text(AktualisiereHLVKombi(substance, models), 5), "using vapor press. equ. + Benson's method ");
    EXPECT_EQ(text(AktualisierepKombi({}, models), 0), "none                               ");
    EXPECT_EQ(text(AktualisiereHLVKombi({}, selection(Eos::ideal_gas)), 0),
              "none                               ");
    EXPECT_EQ(text(cp_list({}, models), 0), "(no equation available)            ");
}

TEST(ModelLists, SelectedEquationOfState) {
    SubstanceConstants substance = propane();
    const struct {
        double omega;
        Eos wanted;
        int selected;
        Eos after;
    } rows[] = {
        {0.15, Eos::none, 6, Eos::peng_robinson},
        {0.0, Eos::none, 4, Eos::redlich_kwong},
        {0.15, Eos::virial_soave, 14, Eos::virial_soave},
        {0.0, Eos::virial_soave, 0, Eos::virial_soave},  // not offered: the first, the selection stays
        {0.0, Eos::berthelot, 3, Eos::berthelot}};
    for (const auto& row : rows) {
        substance.omega = row.omega;
        const ModelList list = AktualisiereEOSKombi(substance, selection(row.wanted));
        EXPECT_EQ(list.selected_code(), row.selected) << number_of(row.wanted);
        EXPECT_EQ(list.models, selection(row.after)) << number_of(row.wanted);
    }
    EXPECT_EQ(AktualisierepKombi(substance, selection(Eos::none, Evp::antoine_low)).selected_code(), 1);
    EXPECT_EQ(AktualisierepKombi(substance, selection(Eos::none, Evp::antoine_high)).selected_code(), 3);
}

// The list of delta(LV)h selects by the code of the vapor pressure equation.
TEST(ModelLists, SelectedEnthalpyOfVaporization) {
    SubstanceConstants substance = propane();
    const struct {
        Hlv HLVKode;
        Evp EVPKode;
        int selected;
    } rows[] = {{Hlv::carruth_kobayashi, Evp::wagner, 4},
                {Hlv::chen, Evp::kfr, 7},
                {Hlv::eos, Evp::antoine_low, 1},
                {Hlv::chen, Evp::thompson, 1},
                {Hlv::evp_rhoL, Evp::none, 1},
                {Hlv::none, Evp::wagner, 1}};
    for (const auto& row : rows) {
        const ModelSelection models = selection(Eos::peng_robinson, row.EVPKode, row.HLVKode);
        const ModelList list = AktualisiereHLVKombi(substance, models);
        EXPECT_EQ(list.selected_code(), row.selected) << number_of(row.HLVKode);
        EXPECT_EQ(list.models, models);
    }
    substance.HLVTLo = 0;  // the equation is gone: no model, so that the first is selected
    const ModelList list = AktualisiereHLVKombi(substance, selection(Eos::soave, Evp::wagner, Hlv::equation));
    EXPECT_EQ(list.selected_code(), 2);
    EXPECT_EQ(list.models, selection(Eos::soave, Evp::wagner, Hlv::none));
}

// Steps of one user at the window, and what the selection and the list of delta(LV)h are after each.
struct Step {
    const char* action;
    Eos eos;  // the choice made; none: the option of the concept
    int option;
    bool VPhaseOnly, Konzept;
    int last_hlv;
    Hlv HLVKode;
};
const Step Steps[] = {
    {"Redlich/Kwong", Eos::redlich_kwong, 0, false, true, 7, Hlv::eos},
    {"PARTIAL", Eos::none, 1, false, false, 7, Hlv::eos},
    {"another cubic keeps the concept", Eos::peng_robinson, 0, false, false, 7, Hlv::eos},
    {"virial: the EOS leaves, the first is taken", Eos::pitzer_curl, 0, true, false, 6, Hlv::equation},
    {"another virial", Eos::virial_berthelot, 0, true, false, 6, Hlv::equation},
    {"no GLOBAL now", Eos::none, 0, true, false, 6, Hlv::equation},
    {"back to a cubic: GLOBAL, the EOS returns", Eos::soave, 0, false, true, 7, Hlv::equation},
    {"once only", Eos::peng_robinson, 0, false, true, 7, Hlv::equation},
    {"ideal gas", Eos::ideal_gas, 0, true, false, 6, Hlv::equation},
};

TEST(Choice, EquationOfStateAndConcept) {
    ModelSelection models = selection(Eos::peng_robinson, Evp::wagner, Hlv::eos);
    ModelList hlv = AktualisiereHLVKombi(propane(), models);
    for (const Step& step : Steps) {
        models = step.eos == Eos::none ? PriorOpt_Click(models, step.option)
                                       : EOSKombi_Click(models, step.eos, hlv);
        EXPECT_EQ(models.VPhaseOnly(), step.VPhaseOnly) << step.action;
        EXPECT_EQ(models.Konzept, step.Konzept) << step.action;
        EXPECT_EQ(hlv.entries.back().code, step.last_hlv) << step.action;
        EXPECT_EQ(hlv.entries.size(), step.last_hlv == 7 ? 7u : 6u) << step.action;
        EXPECT_EQ(models.HLVKode, step.HLVKode) << step.action;
    }
    EXPECT_EQ(pkombi_click(models, Evp::kfr).EVPKode, Evp::kfr);
    EXPECT_EQ(HLVKombi_Click(models, Hlv::watson).HLVKode, Hlv::watson);
    EXPECT_EQ(cpKombi_Click(models, CpForm::polynomial).cpKode, CpForm::polynomial);
    ModelList alone;  // of a record with nothing else
    alone.entries = {{7, "using CEOS"}};
    models = EOSKombi_Click(selection(Eos::soave, Evp::none, Hlv::eos), Eos::ideal_gas, alone);
    EXPECT_EQ(codes(alone), Codes{0});
    EXPECT_EQ(models.HLVKode, Hlv::none);
}

TEST(Choice, HeatCapacityAtTheOpening) {
    // after[polynomial there][sinh/cosh there]
    const struct {
        int before, after[2][2];
    } rows[] = {{0, {{0, 2}, {1, 2}}}, {1, {{0, 2}, {1, 1}}}, {2, {{0, 2}, {1, 2}}}};
    for (const auto& row : rows) {
        for (int i = 0; i < 4; ++i) {
            SubstanceConstants substance;
            substance.havePoly = i / 2;
            substance.haveSinh = i % 2;
            const int after = row.after[i / 2][i % 2];
            ModelSelection models;
            models.cpKode = cp_form_of(row.before);
            EXPECT_EQ(number_of(opening_cp_code(substance, models.cpKode)), after) << row.before << " " << i;
            EXPECT_EQ(cp_list(substance, models).selected_code(), after) << row.before << " " << i;
        }
    }
}

TEST(Choice, WatsonExponent) {
    const struct {
        double Tcr;
        float Tnb;
        const char* second;
    } rows[] = {{400, 228, "0.30"}, {400, 240, "0.328"}, {400, 280, "0.402"},
                {400, 284, "0.41"}, {400, 0, "0.30"},    {0, 240, nullptr}};
    for (const auto& row : rows) {
        SubstanceConstants substance;
        substance.Tcr = row.Tcr;
        substance.Tnb = row.Tnb;
        std::vector<std::string> texts{"0.38"};
        if (row.second) texts.emplace_back(row.second);
        EXPECT_EQ(watson_list(substance), texts) << row.Tnb;
    }
    ModelSelection models;
    for (const auto& [text, n] : {std::pair{"0.30", 0.30f},
                                  {"0,35", 0.35f},
                                  {"", 0.35f},
                                  {"x", 0.35f},
                                  {"0", 0.35f},
                                  {"10", 0.35f},
                                  {"9.5", 9.5f},
                                  {"-1", 9.5f}}) {
        models = WatsonKombi_Change(models, text);
        EXPECT_EQ(models.nWat, n) << text;
    }
}

// An exponent that was chosen is found again, though its text is no single; one that was typed is none of the
// list.
TEST(Choice, WatsonExponentSurvivesTheNextOpening) {
    int typed = 0;
    for (const float Tnb : {228.0f, 239.3f, 240.0f, 277.7f, 284.0f}) {
        SubstanceConstants substance;
        substance.Tcr = 400;
        substance.Tnb = Tnb;
        const std::vector<std::string> texts = watson_list(substance);
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const float nWat = WatsonKombi_Change({}, texts[i]).nWat;
            EXPECT_EQ(selected_watson(texts, nWat), static_cast<int>(i)) << texts[i];
        }
        typed += selected_watson(texts, 0.355f) == -1;
    }
    EXPECT_EQ(typed, 5);
    EXPECT_EQ(selected_watson({"0.38"}, ModelSelection{}.nWat), 0);
}

TEST(RhoLState, Words) {
    SubstanceConstants substance;
    EXPECT_EQ(rhoL_state(substance).availability, "Parameters not available");
    EXPECT_EQ(rhoL_state(substance).validity, "");
    substance.RhoL[1] = 80.0f;
    substance.RhoLTLo = 100;
    substance.RhoLTHi = 400;
    EXPECT_EQ(rhoL_state(substance).availability, "Parameters available from database");
    EXPECT_EQ(rhoL_state(substance).validity, "validity T/K = 100 ...400 K");
}

TEST(Proposal, MissingOmegaIsTold) {
    const struct {
        Hlv HLVKode;
        Eos EOSKode;
        double omega;
        bool told;
    } rows[] = {{Hlv::chen, Eos::redlich_kwong, 0, false},
                {Hlv::carruth_kobayashi, Eos::redlich_kwong, 0, true},
                {Hlv::chen, Eos::soave, 0, true},
                {Hlv::chen, Eos::peng_robinson, 0, true},
                {Hlv::chen, Eos::tovarn_ji_1, 0, true},
                {Hlv::chen, Eos::tovarn_ji_2, 0, true},
                {Hlv::chen, Eos::virial_redlich_kwong, 0, false},
                {Hlv::chen, Eos::virial_soave, 0, true},
                {Hlv::chen, Eos::virial_peng_robinson, 0, true},
                {Hlv::chen, Eos::pitzer_curl, 0, true},
                {Hlv::chen, Eos::virial_manual, 0, false},
                {Hlv::carruth_kobayashi, Eos::peng_robinson, 0.1, false},
                {Hlv::carruth_kobayashi, Eos::ideal_gas, -0.2, false}};
    for (const auto& row : rows) {
        SubstanceConstants substance = propane();
        substance.omega = row.omega;
        EXPECT_EQ(warns_of_omega(substance, selection(row.EOSKode, Evp::wagner, row.HLVKode)), row.told)
            << number_of(row.HLVKode) << " " << number_of(row.EOSKode);
    }
}

struct Missing {
    double Tcr, pcr, omega;
    Eos code;
    const char* text;
};
const Missing Missings[] = {
    {370, 4250, 0.15, Eos::peng_robinson, ""},
    {0, 0, 0, Eos::ideal_gas, ""},
    {0, 0, 0, Eos::pitzer_curl, "the record has no T(cr), p(cr), omega"},
    {370, 4250, 0, Eos::soave, "the record has no omega"},
    {370, 4250, 0, Eos::virial_soave, "the record has no omega"},
    {370, 4250, 0, Eos::tovarn_ji_1, ""},
    {370, 4250, 0, Eos::virial_redlich_kwong, ""},
    {370, 0, 0.15, Eos::van_der_waals, "the record has no p(cr)"},
};

TEST(Proposal, MissingConstantsInWords) {
    for (const Missing& row : Missings) {
        SubstanceConstants substance;
        substance.Tcr = row.Tcr;
        substance.pcr = row.pcr;
        substance.omega = row.omega;
        EXPECT_EQ(missing_constants(substance, row.code), row.text) << number_of(row.code);
        EXPECT_EQ(has_critical_data(substance), row.Tcr * row.pcr > 0.0);
    }
}

// What the model window makes of a selection that is wanted, for propane changed by the row. A model of
// delta(LV)h that is not offered falls back to the entry with the number of the vapor pressure equation.
struct Proposed {
    const char* what;
    void (*change)(Constants& c);
    ModelSelection wanted;
    Eos eos;
    Evp evp;
    Hlv hlv;
    bool Konzept;
    const char* status;
};
ModelSelection with_concept(ModelSelection models, bool Konzept) {
    models.Konzept = Konzept;
    return models;
}
const Proposed Proposals[] = {
    {"nothing yet",
     [](Constants&) {},
     {},
     Eos::peng_robinson,
     Evp::frost_kalkwarf,
     Hlv::equation,
     true,
     "CEOS Peng / Robinson (GLOBAL concept)"},
    {"all offered", [](Constants&) {}, selection(Eos::soave, Evp::kfr, Hlv::chen), Eos::soave, Evp::kfr,
     Hlv::chen, true, "CEOS Soave / Redlich / Kwong (GLOBAL concept)"},
    {"PARTIAL stays", [](Constants&) {}, with_concept(selection(Eos::soave, Evp::kfr, Hlv::eos), false),
     Eos::soave, Evp::kfr, Hlv::eos, false, "Fro/Kalk (Redl./Kwong correlated) (PARTIAL concept)"},
    {"V-phase only", [](Constants&) {}, selection(Eos::pitzer_curl, Evp::wagner, Hlv::eos), Eos::pitzer_curl,
     Evp::wagner, Hlv::watson, false, "Wagner (MDB equ.) (PARTIAL concept)"},
    {"without omega",
     [](Constants& c) { c.omega = 0; },
     {},
     Eos::redlich_kwong,
     Evp::frost_kalkwarf,
     Hlv::equation,
     true,
     "CEOS Redlich / Kwong (GLOBAL concept)"},
    {"a code that needs omega", [](Constants& c) { c.omega = 0; },
     selection(Eos::soave, Evp::wagner, Hlv::eos), Eos::ideal_gas, Evp::wagner, Hlv::watson, false,
     "Wagner (MDB equ.) (PARTIAL concept)"},
    {"without T(cr)", [](Constants& c) { c.Tcr = 0; }, selection(Eos::peng_robinson, Evp::august),
     Eos::ideal_gas, Evp::frost_kalkwarf, Hlv::equation, false,
     "Frost/Kalkwarf (MDB equ.) (PARTIAL concept)"},
    {"an equation that is not there", [](Constants& c) { c.WagnerTLo = c.KFTLo = 0; },
     selection(Eos::peng_robinson, Evp::wagner, Hlv::watson), Eos::peng_robinson, Evp::antoine_low,
     Hlv::watson, true, "CEOS Peng / Robinson (GLOBAL concept)"},
    {"with nothing", [](Constants& c) { c = {}; }, selection(Eos::soave, Evp::wagner, Hlv::chen),
     Eos::ideal_gas, Evp::none, Hlv::none, false, "none (PARTIAL concept)"},
};

TEST(Proposal, SelectionAtTheOpening) {
    for (const Proposed& row : Proposals) {
        SubstanceConstants substance = propane();
        row.change(substance);
        const ModelSelection models = proposed_models(substance, row.wanted);
        EXPECT_EQ(models.EOSKode, row.eos) << row.what;
        EXPECT_EQ(models.EVPKode, row.evp) << row.what;
        EXPECT_EQ(models.HLVKode, row.hlv) << row.what;
        EXPECT_EQ(models.Konzept, row.Konzept) << row.what;
        EXPECT_EQ(models.cpKode, opening_cp_code(substance, CpForm::none)) << row.what;
        EXPECT_EQ(models.nWat, row.wanted.nWat) << row.what;
        EXPECT_EQ(ModelStatus(models), row.status) << row.what;
        EXPECT_EQ(proposed_models(substance, models), models)
            << row.what << ": the next opening changes nothing";
    }
}

}  // namespace
}  // namespace quom
