#include "session/shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "session/data_diagnosis.h"
#include "session/start_up.h"
#include "support/starter.h"

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
        {"no vapor pressure, no omega", [](SubstanceConstants& c) { c.WagnerTLo = 0, c.omega = 0; }, 2},
        {"August line alone",
         [](SubstanceConstants& c) { c.WagnerTLo = 0, c.AugustA = 15, c.AugustB = -2000; }, 1},
        {"limits that cancel", [](SubstanceConstants& c) { c.AntLoTLo = -86; }, 3},
        {"limits beyond 16 bits", [](SubstanceConstants& c) { c.KFTLo = c.WagnerTLo = 32767; }, 1},
        {"no T(cr)", [](SubstanceConstants& c) { c.Tcr = 0; }, 4},
        {"nothing", [](SubstanceConstants& c) { c = {}; }, 4},
    };
    for (const auto& c : cases) {
        Session s;
        s.substance = complete();
        c.change(s.substance);
        const DataSituation d = DatenSituation(s);
        EXPECT_EQ(d.AmpelStufe, c.level) << c.what;
        EXPECT_EQ(d.RechnungMoeglich(), c.level != 4) << c.what;
    }
}

TEST(DataDiagnosisTest, words) {
    Session s;
    s.substance = complete();
    s.substance.HLVTLo = 0;
    EXPECT_EQ(data_diagnosis_text(DatenSituation(s)).text,
              "- critical data available;\n"
              "- acentric factor omega available\n"
              "- vapor pressure equations p(T) available\n"
              "- normal boiling temperature available\n"
              "- no enthalpy of vaporization equ. delta(LV)H = f(T)\n"
              "  available\n"
              "  no delta(LV)h diagrams and calculations possible\n"
              "\n"
              "WITH THIS DATA SITUATION, THERE ARE NO LIMITATIONS");
    s.substance = {};
    const Message red = data_diagnosis_text(DatenSituation(s));
    EXPECT_EQ(red.title, "Substance data situation (\"traffic lights\")");
    EXPECT_THAT(red.text, StartsWith("- no critical data available\n  no calculations possible\n"));
    EXPECT_THAT(red.text, HasSubstr("\n\nNO CALCULATIONS ARE POSSIBLE WITH THIS DATA SITUATIONH\n"));
    EXPECT_THAT(red.text, EndsWith("(Click on icon \"db\""));
}

TEST(ShellTest, the_command_line_is_one_path) {
    EXPECT_EQ(command_line_project({}), "");
    EXPECT_EQ(command_line_project({"\"C:\\my", "work\\a b.QC6\""}), "C:\\my work\\a b.QC6");
    EXPECT_EQ(command_line_project({"/home/a b.QC6"}), "/home/a b.QC6");
    EXPECT_EQ(command_line_project({"\"\""}), "");
}

TEST(ShellTest, external_programs_by_name_and_by_short_name) {
    std::string form = (std::filesystem::temp_directory_path() / "quom-shell-XXXXXX").string();
    const std::string folder = ::mkdtemp(form.data());
    EXPECT_EQ(find_external_program(folder, "Konv3X_E.EXE"), "");
    std::ofstream(folder + "/konv3x_e");
    EXPECT_EQ(find_external_program(folder, "Konv3X_E.EXE"), folder + "/konv3x_e");
    std::ofstream(folder + "/Konv3X_E.EXE");
    EXPECT_EQ(find_external_program(folder, "Konv3X_E.EXE"), folder + "/Konv3X_E.EXE");
    std::filesystem::remove_all(folder);
}

TEST(ShellTest, what_a_command_needs) {
    Session s;
    start_session(s, QUOM_STARTER_DATA, true);
    EXPECT_TRUE(s.options.Englisch && s.options.DezimalKomma);
    EXPECT_EQ(s.models.EOSKode, -1);
    EXPECT_FALSE(fulfilled(s, Needs::database));
    EXPECT_EQ(database_panel(s), " Database loaded: none");

    ASSERT_TRUE(open_picked_database(s, 7, "quom.q07"));  // a name without folder: the program folder
    EXPECT_TRUE(fulfilled(s, Needs::database));
    EXPECT_FALSE(fulfilled(s, Needs::substance));
    EXPECT_EQ(database_panel(s), " Database loaded: quom.q07");
    EXPECT_THAT(database_dialog_title(s, 7), EndsWith("quom.q07)"));
    EXPECT_EQ(database_dialog_title(s, 6), "Database *.Q06 laden ()");

    test::select_substance(s, test::propane, 6);
    EXPECT_TRUE(fulfilled(s, Needs::critical_data));
    for (const Needs later : {Needs::models, Needs::calculation, Needs::equ_rhoL})
        EXPECT_FALSE(fulfilled(s, later));
    s.shell.ModelsConfirmed = true;
    for (const Needs now : {Needs::models, Needs::calculation, Needs::equ_rhoL, Needs::equ_hLV})
        EXPECT_TRUE(fulfilled(s, now));
    s.substance.RhoL = {};
    s.substance.WagnerTHi = 0;
    EXPECT_FALSE(fulfilled(s, Needs::equ_rhoL));
    EXPECT_FALSE(fulfilled(s, Needs::equ_wagner));
    s.substance.pcr = 0;
    EXPECT_TRUE(fulfilled(s, Needs::models));
    EXPECT_FALSE(fulfilled(s, Needs::calculation));
    ResetSession(s);
    EXPECT_FALSE(fulfilled(s, Needs::substance) || fulfilled(s, Needs::models));
}

}  // namespace
}  // namespace quom
