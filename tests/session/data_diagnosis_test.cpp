#include "session/data_diagnosis.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/queued_messages.h"
#include "support/starter.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// A substance with nothing missing.
SubstanceConstants complete() {
    SubstanceConstants c;
    c.Tcr = 369.8;
    c.pcr = 4250;
    c.omega = 0.15;
    c.WagnerTLo = 86;
    c.Tnb = 231.0F;
    c.HLVTLo = 86;
    return c;
}

TEST(DataDiagnosisTest, levels) {
    using Change = void (*)(SubstanceConstants&);
    const struct {
        const char* what;
        Change change;
        int level;
    } cases[] = {
        {"complete", [](SubstanceConstants&) {}, 1},
        {"no delta(LV)h", [](SubstanceConstants& c) { c.HLVTLo = 0; }, 1},
        {"omega 0", [](SubstanceConstants& c) { c.omega = 0; }, 2},
        {"omega a true zero", [](SubstanceConstants& c) { c.omega = 1e-37; }, 1},
        {"omega 0 as a single", [](SubstanceConstants& c) { c.omega = 1e-60; }, 2},
        {"no T(nb)", [](SubstanceConstants& c) { c.Tnb = 0; }, 2},
        {"no vapor pressure", [](SubstanceConstants& c) { c.WagnerTLo = 0; }, 3},
        {"no vapor pressure, no omega",
         [](SubstanceConstants& c) {
             c.WagnerTLo = 0;
             c.omega = 0;
         },
         2},
        {"August line alone",
         [](SubstanceConstants& c) {
             c.WagnerTLo = 0;
             c.AugustA = 15;
             c.AugustB = -2000;
         },
         1},
        {"limits that cancel", [](SubstanceConstants& c) { c.AntLoTLo = -86; }, 3},
        {"limits beyond 16 bits",
         [](SubstanceConstants& c) {
             c.KFTLo = 32767;
             c.WagnerTLo = 32767;
         },
         1},
        {"no T(cr)", [](SubstanceConstants& c) { c.Tcr = 0; }, 4},
        {"nothing", [](SubstanceConstants& c) { c = {}; }, 4},
    };
    for (const auto& c : cases) {
        SubstanceConstants constants = complete();
        c.change(constants);
        const DataSituation d = DatenSituation(constants);
        EXPECT_EQ(d.AmpelStufe, c.level) << c.what;
        EXPECT_EQ(d.RechnungMoeglich(), c.level != 4) << c.what;
    }
}

TEST(DataDiagnosisTest, words) {
    SubstanceConstants c = complete();
    c.HLVTLo = 0;
    EXPECT_EQ(data_diagnosis_text(DatenSituation(c)).text,
              "- critical data available;\n"
              "- acentric factor omega available\n"
              "- vapor pressure equations p(T) available\n"
              "- normal boiling temperature available\n"
              "- no enthalpy of vaporization equ. delta(LV)H = f(T)\n"
              "  available\n"
              "  no delta(LV)h diagrams and calculations possible\n"
              "\n"
              "WITH THIS DATA SITUATION, THERE ARE NO LIMITATIONS");
    QueuedMessages user;
    EXPECT_EQ(DataDiagnosis({}, {}, user).AmpelStufe, 4);
    const Message red = user.asked.at(0);
    EXPECT_EQ(red.title, "Substance data situation (\"traffic lights\")");
    EXPECT_THAT(red.text, StartsWith("- no critical data available\n  no calculations possible\n"));
    EXPECT_THAT(red.text, HasSubstr("\n\nNO CALCULATIONS ARE POSSIBLE WITH THIS DATA SITUATIONH\n"));
    EXPECT_THAT(red.text, EndsWith("(Click on icon \"db\""));
}

// Estimates, fits and extrapolated boiling points follow what is there.
TEST(DataDiagnosisTest, marks) {
    const SubstanceConstants c = test::starter_substance(test::carbon_dioxide);
    const std::string text =
        data_diagnosis_text(DatenSituation(c), substance_marks(test::starter_data(), c)).text;
    EXPECT_THAT(
        text, HasSubstr("  available\n- T(nb): extrapolated, root of the liquid's vapor pressure equation"));
    EXPECT_THAT(text, HasSubstr("194.686 K\n- cp(idG), polynomial: fit, fitted here to JANAF 1998 (max "));
    EXPECT_THAT(text, EndsWith("\n\nWITH THIS DATA SITUATION, THERE ARE NO LIMITATIONS"));

    // Without the file the mark that follows from the record stays, and the user hears why.
    const SubstanceMarks none = substance_marks(test::test_data(), c);
    EXPECT_EQ(
        one_line(none),
        "extrapolated: T(nb); There is no marks.csv in the program folder: estimates and fits are not told "
        "apart.");
    EXPECT_TRUE(sentences(substance_marks(test::test_data(), {})).empty()) << "no substance";
}

// A zero that was given is stored as 1E-37.
TEST(DataDiagnosisTest, what_a_reference_state_lacks) {
    SubstanceConstants element;
    element.dfH0 = 1e-37F;
    element.dfG0 = 1e-37F;
    EXPECT_EQ(missing_formation_data(element, 10), "");
    EXPECT_EQ(missing_formation_data(element, 2), "conventional entropy");
    element.S0abs = 205.0F;
    EXPECT_EQ(missing_formation_data(element, 2), "");
    for (const int code : {2, 10}) EXPECT_EQ(missing_formation_data({}, code), "enthalpy of formation");
    element.dfG0 = 0.0F;
    EXPECT_EQ(missing_formation_data(element, 10), "Gibbs energy of formation");
    EXPECT_EQ(missing_formation_data({}, 1), "") << "the free point needs no data";
}

}  // namespace
}  // namespace quom
