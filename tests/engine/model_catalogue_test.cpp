// Lists of models by the data of a substance, what a choice changes, and the OK of the selection.
#include "engine/model_catalogue.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "calc/sample_substances.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "support/starter.h"

namespace quom {
namespace {

using Codes = std::vector<int>;

Codes codes(const ModelList& list) {
    Codes all;
    for (const auto& entry : list.entries) all.push_back(entry.code);
    return all;
}

// Propane, changed by a row: it has Frost/Kalkwarf, Wagner, Antoine below T(nb), delta(LV)h, rho(L), a Watson
// pair.
using Constants = SubstanceConstants;
struct Offer {
    const char* record;
    void (*change)(Constants& c);
    Codes eos, evp, hlv;
};
const Codes Eos = {0, 2, 3, 4, 5, 6, 7, 8, 10, 16, 11, 12, 13, 14, 15},
            Plain = {0, 2, 3, 4, 7, 8, 10, 11, 12, 13}, Evp = {3, 4, 1, 5, 6, 7, 8},
            EvpHigh = {3, 4, 1, 2, 5, 6, 7, 8}, Hlv = {1, 2, 3, 4, 5, 6, 7}, HlvPlain = {1, 2, 4, 5, 6};
const Offer Offers[] = {
    {"as it is", [](Constants&) {}, Eos, Evp, Hlv},
    {"with Antoine above T(nb)", [](Constants& c) { c.AntHi[0] = 6.0f; }, Eos, EvpHigh, Hlv},
    {"a limit below 0 K counts", [](Constants& c) { c.KFTLo = -1; }, Eos, Evp, Hlv},
    {"without omega", [](Constants& c) { c.omega = 0.0; }, Plain, Evp, HlvPlain},
    {"omega for the EOS alone", [](Constants& c) { c.omega = 1e-7; }, Eos, Evp, HlvPlain},
    {"without T(cr)", [](Constants& c) { c.Tcr = 0.0; }, {0}, {3, 4, 1}, {1, 5, 7}},
    {"without p(cr)", [](Constants& c) { c.pcr = 0.0; }, {0}, {3, 4, 1}, {1, 3, 4, 5, 6, 7}},
    {"without T(nb)", [](Constants& c) { c.Tnb = 0.0f; }, Eos, {3, 4, 1}, Hlv},
    {"without equations",
     [](Constants& c) { c.KFTLo = c.WagnerTLo = c.HLVTLo = c.RhoLTLo = 0; },
     Eos,
     {1, 5, 6, 7, 8},
     {2, 3, 4, 6, 7}},
    {"without a Watson pair", [](Constants& c) { c.WatsonHLV = 0.0f; }, Eos, Evp, {1, 2, 3, 5, 6, 7}},
    {"with nothing", [](Constants& c) { c = {}; }, {0}, {0}, {0}},
};

TEST(ModelLists, OfferWhatTheRecordAllows) {
    const Session propane = test::substance_session(test::propane, eos_peng_robinson);
    for (const Offer& row : Offers) {
        Session s = propane;
        row.change(s.substance);
        EXPECT_EQ(codes(AktualisiereEOSKombi(s)), row.eos) << row.record;
        EXPECT_EQ(codes(AktualisierepKombi(s)), row.evp) << row.record;
        EXPECT_EQ(codes(AktualisiereHLVKombi(s)), row.hlv) << row.record;
    }
    for (int code = 0; code <= 16; ++code) {
        EXPECT_EQ(eos_name(code).empty(), code == 1 || code == 9) << code;
    }
    EXPECT_EQ(evp_name(7), "Fro/Kalk (Redl./Kwong correlated)  ");
    EXPECT_EQ(hlv_name(6), "using vapor press. equ. + Benson's method ");
    EXPECT_EQ(eos_name(17), "");
}

TEST(ModelLists, Selection) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    const double omega = s.substance.omega;
    for (const auto& [w, code] : {std::pair{omega, 6}, {0.0, 4}}) {  // no EOS yet
        s.substance.omega = w;
        s.models.EOSKode = eos_none;
        EXPECT_EQ(AktualisiereEOSKombi(s).selected_code(), code);
        EXPECT_EQ(s.models.EOSKode, code);
    }
    s.models.EOSKode = 14,
    s.models.EVPKode = evp_antoine_high;  // not offered: the first, and the record stays
    EXPECT_EQ(AktualisiereEOSKombi(s).selected_code(), 0);
    EXPECT_EQ(AktualisierepKombi(s).selected_code(), 3);
    EXPECT_EQ(s.models.EOSKode, 14);
    s.substance.omega = omega;
    // The delta(LV)h list selects by the code of the vapor pressure equation: required as it stands.
    const struct {
        int HLVKode, EVPKode, selected;
    } rows[] = {{3, 4, 4}, {2, 7, 7}, {7, 1, 1}, {2, 8, 1}, {5, 0, 1}, {0, 4, 1}};
    for (const auto& row : rows) {
        s.models.HLVKode = row.HLVKode, s.models.EVPKode = row.EVPKode;
        EXPECT_EQ(AktualisiereHLVKombi(s).selected_code(), row.selected) << row.HLVKode << " " << row.EVPKode;
        EXPECT_EQ(s.models.HLVKode, row.HLVKode);
    }
    s.substance.HLVTLo = 0;
    s.models.HLVKode = hlv_equation, s.models.EVPKode = 4;
    EXPECT_EQ(AktualisiereHLVKombi(s).selected_code(), hlv_chen);  // no longer by EVPKode
    EXPECT_EQ(s.models.HLVKode, hlv_none);
}

// Steps of one user at the window, and what the record and the delta(LV)h list are after each.
struct Step {
    const char* action;
    int eos, option;  // the choice made: a code, or with -1 the option of the concept
    bool VPhaseOnly, Konzept;
    int last_hlv, HLVKode;
};
const Step Steps[] = {
    {"Redlich/Kwong", 4, 0, false, true, 7, 7},
    {"PARTIAL", -1, 1, false, false, 7, 7},
    {"another cubic keeps the concept", 6, 0, false, false, 7, 7},
    {"virial: 7 leaves, the first is taken", 16, 0, true, false, 6, 1},
    {"another virial", 12, 0, true, false, 6, 1},
    {"no GLOBAL now", -1, 0, true, false, 6, 1},
    {"back to a cubic: GLOBAL, 7 returns", 5, 0, false, true, 7, 1},
    {"once only", 6, 0, false, true, 7, 1},
    {"ideal gas", 0, 0, true, false, 6, 1},
};

TEST(Choice, EquationOfStateAndConcept) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    ModelList hlv = AktualisiereHLVKombi(s);
    HLVKombi_Click(s, hlv_eos);
    for (const Step& step : Steps) {
        if (step.eos < 0) {
            PriorOpt_Click(s, step.option);
        } else {
            EOSKombi_Click(s, step.eos, hlv);
        }
        EXPECT_EQ(s.models.VPhaseOnly, step.VPhaseOnly) << step.action;
        EXPECT_EQ(s.models.Konzept, step.Konzept) << step.action;
        EXPECT_EQ(hlv.entries.back().code, step.last_hlv) << step.action;
        EXPECT_EQ(hlv.entries.size(), step.last_hlv == 7 ? 7u : 6u) << step.action;
        EXPECT_EQ(s.models.HLVKode, step.HLVKode) << step.action;
    }
    pkombi_click(s, evp_kfr);
    EXPECT_EQ(s.models.EVPTag, "KFR");
    pkombi_click(s, evp_none);
    EXPECT_EQ(s.models.EVPTag, "000");
}

TEST(Choice, HeatCapacityAtTheOpening) {
    Session s;
    // after[polynomial there][sinh/cosh there]
    const struct {
        int before, after[2][2];
    } rows[] = {{0, {{0, 2}, {1, 2}}}, {1, {{0, 2}, {1, 1}}}, {2, {{0, 2}, {1, 2}}}};
    for (const auto& row : rows) {
        for (int i = 0; i < 4; ++i) {
            s.substance.havePoly = i / 2, s.substance.haveSinh = i % 2;
            s.models.cpKode = row.before;
            EXPECT_EQ(opening_cp_code(s), row.after[i / 2][i % 2]) << row.before << " " << i;
            EXPECT_EQ(cp_list(s).selected_code(), row.after[i / 2][i % 2]);
        }
    }
}

TEST(Choice, WatsonExponent) {
    Session s;
    const struct {
        double Tcr;
        float Tnb;
        const char* second;
    } rows[] = {{400, 228, "0.30"}, {400, 240, "0.328"}, {400, 280, "0.402"},
                {400, 284, "0.41"}, {400, 0, "0.30"},    {0, 240, nullptr}};
    for (const auto& row : rows) {
        s.substance.Tcr = row.Tcr, s.substance.Tnb = row.Tnb;
        std::vector<std::string> texts{"0.38"};
        if (row.second) texts.emplace_back(row.second);
        EXPECT_EQ(watson_list(s), texts) << row.Tnb;
    }
    for (const auto& [text, n] :
         {std::pair{"0.30", 0.30f}, {"0,35", 0.35f}, {"", 0.35f}, {"x", 0.35f}, {"0", 0.35f}}) {
        WatsonKombi_Change(s, text);
        EXPECT_EQ(s.models.nWat, n) << text;
    }
}

TEST(ModelOk, WarnsOfOmegaZero) {
    const struct {
        int HLVKode, EOSKode;
        double omega;
        bool box;
    } rows[] = {{2, 4, 0, false},   {3, 4, 0, true},    {2, 5, 0, true},  {2, 6, 0, true},
                {2, 13, 0, false},  {2, 14, 0, true},   {2, 16, 0, true}, {2, 10, 0, false},
                {3, 6, 0.1, false}, {3, 0, -0.2, false}};
    for (const auto& row : rows) {
        Session s = test::substance_session(test::propane, row.EOSKode);
        QueuedMessages user;
        s.messages = &user;
        s.substance.omega = row.omega;
        s.models.HLVKode = row.HLVKode;
        EXPECT_EQ(cmdOKModell_Click(s).err, 0);  // it stops nothing
        ASSERT_EQ(user.asked.size(), row.box ? 1u : 0u) << row.HLVKode << " " << row.EOSKode;
        if (!row.box) continue;
        EXPECT_EQ(user.asked[0].title, "WARNING");
        EXPECT_EQ(user.asked[0].text,
                  "no acentric factor available.\nCalculated using omega = 0\n(Input => database editor)");
    }
}

TEST(ModelOk, FillsTheRecord) {
    Session s = test::substance_session(test::propane, eos_redlich_kwong);
    s.eos = {};
    s.substance.KFR = {};
    s.models.EVPKode = evp_kfr;
    ModelOk ok = cmdOKModell_Click(s);
    EXPECT_TRUE(ok.needs_critical_available);
    EXPECT_EQ(ok.ModelStatus, "CEOS Redlich / Kwong (GLOBAL concept)");
    EXPECT_NEAR(s.eos.vcrEOS, RGas * s.substance.Tcr / s.substance.pcr / 3.0, 1e-4);
    EXPECT_NE(s.substance.KFR[0], 0.0f);
    PriorOpt_Click(s, 1);
    EXPECT_EQ(cmdOKModell_Click(s).ModelStatus, "Fro/Kalk (Redl./Kwong correlated) (PARTIAL concept)");

    // constants of the manual virial equation are cleared by choosing it, not by the OK
    ModelList hlv = AktualisiereHLVKombi(s);
    EOSKombi_Click(s, eos_virial_manual, hlv);
    EXPECT_EQ(s.eos.EOSb, 0.0);
    s.eos.EOSb = 0.1, s.eos.EOSnb = 900.0, s.eos.EOSm = 1.4;
    EOSKombi_Click(s, eos_virial_manual, hlv);  // chosen once more
    EXPECT_EQ(cmdOKModell_Click(s).err, 0);
    EXPECT_EQ(s.eos.EOSb, 0.1);
    EXPECT_EQ(s.eos.EOSnb, 900.0);
    EXPECT_EQ(s.eos.EOSm, 1.4);
    EXPECT_EQ(s.eos.vcrEOS, 0.0);  // not that of the cubic before

    // Tovarn/Ji without its parameters stops the OK
    EOSKombi_Click(s, eos_tovarn_ji_1, hlv);
    s.eos.JiZc = 0.0;
    ok = cmdOKModell_Click(s);
    EXPECT_GT(ok.err, 0);
    EXPECT_EQ(ok.ModelStatus, "");
}

TEST(ModelOk, SubstanceWithoutCriticalPoint) {
    Session s = test::substance_session(test::propane, eos_peng_robinson);
    s.substance.Tcr = 0.0;
    const ModelOk ok = select_models(s);
    EXPECT_FALSE(ok.needs_critical_available);
    EXPECT_EQ(s.models.EOSKode, eos_ideal_gas);
    EXPECT_FALSE(s.models.Konzept);
    EXPECT_EQ(s.models.EVPTag, "FRO");
    EXPECT_EQ(ok.ModelStatus, "Frost/Kalkwarf (MDB equ.) (PARTIAL concept)");
}

}  // namespace
}  // namespace quom
