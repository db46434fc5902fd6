#include "forms/shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "support/queued_messages.h"
#include "support/starter_session.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::Pair;
using ::testing::StartsWith;

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
    QueuedMessages user;
    start_session(s, test::starter_data(), true);
    EXPECT_TRUE(s.document.options.Englisch && s.document.options.DezimalKomma);
    EXPECT_EQ(s.document.models.EOSKode, Eos::none);
    EXPECT_FALSE(fulfilled(s, Needs::database));
    EXPECT_EQ(database_panel(s), " Database loaded: none");

    ASSERT_TRUE(open_picked_database(s, 7, "quom.q07", user));  // a name without folder: the program folder
    EXPECT_TRUE(fulfilled(s, Needs::database));
    EXPECT_FALSE(fulfilled(s, Needs::substance));
    EXPECT_EQ(database_panel(s), " Database loaded: quom.q07");
    EXPECT_THAT(database_dialog_title(s, 7), EndsWith("quom.q07)"));
    EXPECT_EQ(database_dialog_title(s, 6), "Database *.Q06 laden ()");
    EXPECT_TRUE(user.asked.empty());

    confirm_substance(s, FindCAS(s.database, test::propane), user);
    EXPECT_TRUE(fulfilled(s, Needs::critical_data));
    EXPECT_EQ(models_panel(s), "");
    for (const Needs later : {Needs::models, Needs::calculation, Needs::equ_rhoL})
        EXPECT_FALSE(fulfilled(s, later));
    test::select_substance(s, test::propane, Eos::peng_robinson);
    EXPECT_THAT(models_panel(s), StartsWith("CEOS Peng / Robinson   Vapor press. equ.: "));
    EXPECT_EQ(next_step_hint(s), "");
    EXPECT_EQ(virial_menu_caption(s), "T => Virial coefficient B, Parameters of the CEOS");
    for (const Needs now : {Needs::models, Needs::calculation, Needs::equ_rhoL, Needs::equ_hLV})
        EXPECT_TRUE(fulfilled(s, now));
    test::change(s, [](Document& d) {
        d.substance.constants.RhoL = {};
        d.substance.constants.WagnerTHi = 0;
        d.substance.constants.pcr = 0;
    });
    EXPECT_FALSE(fulfilled(s, Needs::equ_rhoL));
    EXPECT_FALSE(fulfilled(s, Needs::equ_wagner));
    EXPECT_TRUE(fulfilled(s, Needs::models));
    EXPECT_FALSE(fulfilled(s, Needs::calculation));
    ResetSession(s);
    EXPECT_FALSE(fulfilled(s, Needs::substance) || fulfilled(s, Needs::models));
}

TEST(ShellTest, a_database_that_cannot_be_opened_is_told) {
    QueuedMessages user;
    Session s;
    EXPECT_FALSE(open_picked_database(s, 7, "/nowhere/a.q07", user));
    s = test::substance_session(test::propane, Eos::peng_robinson);
    const Document before = s.document;
    EXPECT_FALSE(open_picked_database(s, 7, "/nowhere/a.q07", user));
    EXPECT_EQ(s.document, before);
    EXPECT_TRUE(s.shell.ModelsConfirmed);
    EXPECT_THAT(
        user.take(),
        ElementsAre(Pair("Execution not possible", "Database /nowhere/a.q07 not found or empty resp."),
                    Pair("WARNING",
                         "Database /nowhere/a.q07not found in the QUOM directory or empty resp.\n"
                         "Already loaded database will be used further.")));
}

TEST(ShellTest, a_batch_needs_data) {
    QueuedMessages user;
    Session s = test::substance_session(test::propane, Eos::pitzer_curl);
    EXPECT_EQ(virial_menu_caption(s), "T => Virial coefficient B");
    EXPECT_FALSE(opening_calculation_menu(s, user));
    EXPECT_TRUE(user.take().empty());
    test::change(s, [](Document& d) { d.options.BatchMode = true; });
    EXPECT_TRUE(opening_calculation_menu(s, user));
    EXPECT_THAT(user.take(),
                ElementsAre(Pair("Execution not possible",
                                 "This type of calculation is possible only if exper. data are available.")));
    test::change(s, [](Document& d) { d.exp.points.edit().resize(2); });
    EXPECT_FALSE(opening_calculation_menu(s, user));
    EXPECT_TRUE(user.take().empty());
}

}  // namespace
}  // namespace quom
