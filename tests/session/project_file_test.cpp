#include "session/project_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "base/dates.h"
#include "base/files.h"
#include "report/outcome_report.h"
#include "session/data_diagnosis.h"
#include "session/data_files.h"
#include "substance/substance_support.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using test::change;
using ::testing::AllOf;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr const char* ethanol_file = "ethanol.QC6";

// A session with a program folder of its own and no database.
Session empty_session(const test::Folder& folder) {
    Session session;
    start_session(session, folder.path(), false);
    return session;
}
Session propane_session(const test::Folder& folder, Eos code = Eos::peng_robinson) {
    Session session = test::substance_session(test::propane, code);
    session.ProgramPath = folder.path();
    session.shell.ProjectFolder = folder.path();
    session.shell.ExpFolder = folder.path();
    return session;
}
AskComment comment(std::string text) {
    return [text = std::move(text)](const CommentQuestion&) { return text; };
}
// A project of the session under a name in its program folder, with a line replaced.
std::string project_with(const test::Folder& folder, Session& session, const std::string& name, int line = 0,
                         const std::string& text = {}) {
    QueuedMessages user;
    EXPECT_TRUE(SaveProject(session, folder.path(name), {}, user).success);
    const std::string saved = test::bytes_of(folder.path(name));
    std::string bytes;
    int n = 0;
    for (const std::string_view each : split_lines(saved))
        bytes += (++n == line ? text : std::string(each)) + "\r\n";
    return folder.write(name, bytes);
}

// The result of the direct input with every digit.
std::string all_digits(Session& session) {
    const Outcome& outcome = calculate(session, 0);
    const Units& units = session.document.units;
    Report report;
    report.sections = {state_block(*session.fluid, outcome, units),
                       functions_grid(outcome, units, session.factors()), warnings_table(outcome.warnings)};
    return to_json(report);
}

// What a refusal has to leave alone.
struct Before {
    Document document;
    std::shared_ptr<const Fluid> fluid;
    std::string database, folder, project;
    int StoffIndex;
    bool last, confirmed;
    std::size_t outcomes;
    explicit Before(const Session& s)
        : document(s.document),
          fluid(s.fluid),
          database(s.database.path),
          folder(s.shell.ProjectFolder),
          project(s.shell.ProjectPath),
          StoffIndex(s.StoffIndex),
          last(s.shell.LastSessionLoaded),
          confirmed(s.shell.ModelsConfirmed),
          outcomes(s.outcomes.size()) {}
    void expect(const Session& s) const {
        EXPECT_EQ(s.document, document);
        EXPECT_EQ(s.fluid, fluid);
        EXPECT_EQ(s.database.path, database);
        EXPECT_EQ(s.shell.ProjectFolder, folder);
        EXPECT_EQ(s.shell.ProjectPath, project);
        EXPECT_EQ(s.StoffIndex, StoffIndex);
        EXPECT_EQ(s.shell.LastSessionLoaded, last);
        EXPECT_EQ(s.shell.ModelsConfirmed, confirmed);
        EXPECT_EQ(s.outcomes.size(), outcomes);
    }
};

TEST(ProjectFiles, a_saved_session_gives_the_same_numbers_in_another_one) {
    const test::Folder folder;
    for (const bool global : {true, false}) {
        Session session = propane_session(folder, Eos::soave);
        change(session, [global](Document& d) {
            d.models.Konzept = global;
            d.models.EVPKode = Evp::wagner;
            d.models.HLVKode = Hlv::watson;
            d.models.nWat = 0.36f;
            d.reference = {.RefKode = 1,
                           .TRef0 = 273.15f,
                           .pRef0 = 50,
                           .hOffset = 1234.5,
                           .sOffset = -0.125,
                           .TEnv = 288.15,
                           .pEnv = 98};
            d.units.EnergyMode = energy_per_mass;
            d.calc.CalcMode = Mode::T_p;
            d.calc.setup.GlobalCalc = global;
            d.exp.points.edit()[0].T = 300;
            d.exp.points.edit()[0].p = 500;
        });
        QueuedMessages user;
        ASSERT_TRUE(SaveProject(session, "propane.QC6", comment("für später"), user).success);
        EXPECT_EQ(session.document.ProjectComment, "für später");

        Session other = empty_session(folder);
        ASSERT_TRUE(LoadProject(other, "PROPANE.qc6", user).success);  // in any case of letters
        EXPECT_THAT(user.take(), IsEmpty());
        EXPECT_EQ(other.document.models, session.document.models);
        EXPECT_EQ(other.document.reference, session.document.reference);
        EXPECT_EQ(other.document.substance, session.document.substance);
        EXPECT_EQ(other.document.ProjectComment, "für später");
        EXPECT_EQ(other.factors(), session.factors());
        EXPECT_EQ(other.shell.ProjectPath, folder.path("propane.QC6"));
        EXPECT_EQ(other.shell.ProjectTitle, "propane.QC6");
        EXPECT_FALSE(other.shell.ModelsConfirmed);
        change(other, [&session](Document& d) {
            d.calc = session.document.calc;
            d.exp.points = session.document.exp.points;
        });
        ASSERT_TRUE(calculate(session, 0).has_result());
        EXPECT_EQ(all_digits(other), all_digits(session));
    }
}

TEST(ProjectFiles, what_the_file_does_not_hold_is_derived) {
    const test::Folder folder;
    Session session = propane_session(folder);
    change(session, [](Document& d) {
        d.units.EnergyMode = energy_per_mass;
        d.units.TcrStart = 310;
        d.units.vcrStart = 0.21;
    });
    QueuedMessages user;
    // Start values only where they were to be kept; else those of the substance, v(cr) with the next OK.
    for (const bool kept : {false, true}) {
        change(session, [kept](Document& d) { d.options.ParSpeichern = kept; });
        ASSERT_TRUE(SaveProject(session, "x.QC6", {}, user).success);
        Session other = empty_session(folder);
        ASSERT_TRUE(LoadProjectFile(other, "x.QC6", user).success);
        const Units& units = other.document.units;
        EXPECT_EQ(units.TcrStart, kept ? 310 : session.substance().Tcr);
        EXPECT_NEAR(units.pcrStart, session.substance().pcr, 1e-3);
        EXPECT_EQ(units.vcrStart, kept ? 0.21 : 0.0);
        EXPECT_EQ(other.factors().uFactor, 1.0 / static_cast<double>(session.substance().MolMass));
    }
    // Line 10 is superseded by the mode.
    Session other = empty_session(folder);
    ASSERT_TRUE(LoadProjectFile(other, project_with(folder, session, "u.QC6", 10, "77"), user).success);
    EXPECT_EQ(other.factors(), session.factors());
    // A correlated vapor pressure equation has its constants; the concept stays as it was kept.
    ASSERT_TRUE(LoadProjectFile(other, project_with(folder, session, "e.QC6", 16, "7"), user).success);
    EXPECT_NE(other.fluid->substance.KFR[0], 0.0f);
    ASSERT_TRUE(LoadProjectFile(other, project_with(folder, session, "v.QC6", 17, "13"), user).success);
    EXPECT_TRUE(other.fluid->VPhaseOnly);
    EXPECT_TRUE(other.document.models.Konzept);
    // No equation of state comes back as the ideal gas.
    ASSERT_TRUE(LoadProjectFile(other, project_with(folder, session, "n.QC6", 17, "-1"), user).success);
    EXPECT_EQ(other.document.models.EOSKode, Eos::ideal_gas);
    EXPECT_THAT(user.take(), IsEmpty());
}

TEST(ProjectFiles, refusals_tell_why_and_leave_the_session) {
    const test::Folder folder, elsewhere;
    Session session = propane_session(folder);
    struct Case {
        std::string file;
        bool with_database;
        std::string text;
    };
    const std::string last = "\n not found in the QUOM directory";
    const Case cases[] = {
        {folder.path("absent.QC6"), true, folder.path("absent.QC6") + last},
        {"absent.QC6", true, "absent.QC6" + last},
        {folder.write("short.QC6", "22.11.2026\r\n<>\r\n"), true, "it ends before line 3 (database)"},
        {folder.write("large.QC6", std::string(2000000, ' ')), true, "larger than 1 MB"},
        {project_with(folder, session, "base.QC6", 3, "C:\\none\\none.q07"), false,
         "Database C:\\none\\none.q07\nnot found in the QUOM directory "},
        {project_with(folder, session, "kind8.QC6", 3, "C:\\none\\none.q08"), false,
         "Database C:\\none\\none.q08\nnot found in the QUOM directory "},
        {project_with(folder, session, "kind0.QC6", 3, "none"), false,
         "74-98-6 (substance is not available in the present database)"},
        {project_with(folder, session, "cas.QC6", 6, "1-11-1      "), true,
         "1-11-1 (substance is not available in the present database)"},
        {project_with(folder, session, "blank.QC6", 6, "            "), true,
         "The project names no substance."},
        {folder.path(), true, ""},
    };
    for (const Case& c : cases) {
        Session state = c.with_database ? propane_session(folder) : empty_session(folder);
        if (c.with_database) calculate(state, 0);
        const Before before(state);
        for (const auto load : {LoadProjectFile, LoadProject}) {
            QueuedMessages user;
            EXPECT_FALSE(load(state, c.file, user).success) << c.file;
            const auto said = user.take();
            ASSERT_EQ(said.size(), 1u) << c.file;
            EXPECT_EQ(said[0].first, "Execution not possible");
            EXPECT_THAT(said[0].second, HasSubstr(c.text));
            before.expect(state);
        }
    }
    // A database that opens, but lacks the substance, does not stay in force either.
    Session state = empty_session(folder);
    const Before before(state);
    QueuedMessages user;
    EXPECT_FALSE(LoadProject(state, folder.path("cas.QC6"), user).success);
    before.expect(state);
    EXPECT_EQ(state.document.DatabaseKind, 0);
}

TEST(ProjectFiles, the_database_is_found_beside_the_project_or_another_one_stays_in_force) {
    const test::Folder folder;
    QueuedMessages user;
    // The path of another computer: the file of this name beside the project.
    Session session = empty_session(folder);
    ASSERT_TRUE(LoadProjectFile(session, test::golden(ethanol_file), user).success);
    EXPECT_EQ(session.document.DatabasePath, test::golden("two_substances.q07"));
    EXPECT_EQ(session.substance().StoffName, "Ethanol");
    EXPECT_EQ(session.document.options.SepCSV, ',');
    EXPECT_EQ(session.document.calc.ProcessForm, 3);
    EXPECT_EQ(session.document.exp.optFitFunction, 2);
    EXPECT_EQ(session.document.units.TcrStart, 300.5);
    EXPECT_THAT(user.take(), IsEmpty());

    // Missing: the one in force is used further, and has to have the substance.
    Session propane = propane_session(folder);
    const std::string project = project_with(folder, propane, "moved.QC6", 3, "C:\\none\\none.q07");
    ASSERT_TRUE(LoadProjectFile(propane, project, user).success);
    EXPECT_THAT(user.take(),
                ::testing::ElementsAre(Pair("Note",
                                            "Database C:\\none\\none.q07\n not found in the QUOM directory\n"
                                            "The currently loaded database will continue to be used.")));
    EXPECT_THAT(propane.document.DatabasePath, EndsWith("quom.q07"));
    // There, but no database: the reason is told, too.
    folder.write("none.q07", "no database");
    ASSERT_TRUE(LoadProjectFile(propane, project, user).success);
    EXPECT_THAT(user.take().at(0).second,
                AllOf(HasSubstr("not found in the QUOM directory"), HasSubstr("none.q07")));
    // A path without a kind goes on without a word.
    ASSERT_TRUE(LoadProjectFile(propane, project_with(folder, propane, "kind.QC6", 3, "quom"), user).success);
    EXPECT_THAT(user.take(), IsEmpty());
}

TEST(ProjectFiles, values_that_the_substance_cannot_have_are_told) {
    const test::Folder folder;
    Session session = propane_session(folder), other = empty_session(folder);
    QueuedMessages user;
    const ProjectLoad load = LoadProjectFile(other, project_with(folder, session, "d.QC6", 14, "0"), user);
    ASSERT_TRUE(load.success);
    EXPECT_EQ(other.document.options.Dens, 500);
    EXPECT_EQ(load.replaced.size(), 1u);
    EXPECT_THAT(user.take(),
                ::testing::ElementsAre(Pair("WARNING",
                                            "The project file d.QC6 holds values that are not possible:\n"
                                            "line 14 (Dens): 0 is not possible, 500 is taken")));

    // Record 1 of the small database has neither molar mass nor formation data of use.
    folder.write("two.q07", test::bytes_of(test::golden("two_substances.q07")));
    ASSERT_EQ(LoadDatabase(session, 7, folder.path("two.q07")).err, 0);
    ASSERT_EQ(SelectSubstance(session, 2), 0);
    change(session, [](Document& d) { d.reference.RefKode = reference_formation; });
    const bool has_data = missing_formation_data(session.substance(), reference_formation).empty();
    ASSERT_TRUE(LoadProjectFile(other, project_with(folder, session, "r.QC6"), user).success);
    EXPECT_EQ(other.document.reference.RefKode, has_data ? reference_formation : reference_free);
    EXPECT_EQ(user.take().size(), has_data ? 0u : 1u);
}

TEST(ProjectFiles, the_comment) {
    const test::Folder folder;
    Session session = propane_session(folder);
    QueuedMessages user;
    std::vector<CommentQuestion> asked;
    std::optional<std::string> answer = "first";
    const AskComment ask = [&](const CommentQuestion& question) {
        asked.push_back(question);
        return answer;
    };
    ASSERT_TRUE(SaveProject(session, "a.QC6", ask, user).success);
    answer.reset();  // cancelled: none
    ASSERT_TRUE(SaveProject(session, "a.QC6", ask, user).success);
    EXPECT_EQ(session.document.ProjectComment, "<>");
    EXPECT_EQ(asked.at(0).title, " File comment (optional) ");
    EXPECT_THAT(asked[0].prompt, HasSubstr("<Cancel> = No Comment"));
    EXPECT_EQ(asked.at(1).present, "first");
    EXPECT_EQ(split_lines(test::bytes_of(folder.path("a.QC6")))[1], "<>");
    ASSERT_TRUE(LoadProjectFile(session, folder.path("a.QC6"), user).success);
    EXPECT_EQ(session.document.ProjectComment, "<>");

    // Nobody is asked for that of the last session, in any case of letters, and it has a place of its own.
    change(session, [](Document& d) { d.ProjectComment = "kept"; });
    const std::string strange = folder.path("sub/myquomLASTsession.qc6");
    const ProjectSave save = SaveProject(session, strange, ask, user);
    ASSERT_TRUE(save.success);
    EXPECT_EQ(asked.size(), 2u);
    EXPECT_EQ(save.path, folder.path("QuomLastSession.QC6"));
    EXPECT_EQ(split_lines(test::bytes_of(save.path))[1], "kept");
    EXPECT_EQ(split_lines(test::bytes_of(save.path))[0], today_text());
    EXPECT_THAT(user.take(), IsEmpty());
}

TEST(ProjectFiles, the_last_session) {
    const test::Folder folder;
    QueuedMessages user;
    Session nothing = empty_session(folder);
    const Before before(nothing);
    EXPECT_FALSE(LoadLastSession(nothing, user).success);
    EXPECT_THAT(user.take(), ::testing::ElementsAre(Pair(
                                 "Execution not possible",
                                 folder.path("QuomLastSession.QC6") + "\n not found in the QUOM directory")));
    before.expect(nothing);
    EXPECT_TRUE(SaveLastSession(nothing, user).success);  // no database: no last session
    EXPECT_FALSE(std::filesystem::exists(folder.path("QuomLastSession.QC6")));

    Session session = propane_session(folder);
    ASSERT_TRUE(SaveProjectAs(session, "mine.QC6", comment("mine"), user).success);
    ASSERT_TRUE(SaveLastSession(session, user).success);
    ASSERT_TRUE(LoadLastSession(nothing, user).success);
    EXPECT_TRUE(nothing.shell.LastSessionLoaded);
    EXPECT_EQ(nothing.shell.ProjectPath, "");
    EXPECT_EQ(nothing.document.ProjectComment, "mine");
    EXPECT_EQ(nothing.substance().StoffCAS, session.substance().StoffCAS);
    ASSERT_TRUE(LoadProject(nothing, "mine.QC6", user).success);
    EXPECT_FALSE(nothing.shell.LastSessionLoaded);

    // It is written without a substance, too; there is nothing to load from it.
    Session no_substance = test::starter_session();
    no_substance.ProgramPath = folder.path();
    ASSERT_TRUE(SaveLastSession(no_substance, user).success);
    EXPECT_THAT(user.take(), IsEmpty());
    EXPECT_FALSE(LoadLastSession(nothing, user).success);
    EXPECT_EQ(user.take().at(0).second, "The project names no substance.");
}

TEST(ProjectFiles, saving_as_makes_the_project_the_one_in_force) {
    const test::Folder folder;
    Session session = propane_session(folder);
    QueuedMessages user;
    std::filesystem::create_directory(folder.path("sub"));
    ASSERT_TRUE(SaveProjectAs(session, folder.path("sub/a.QC6"), {}, user).success);
    EXPECT_EQ(session.shell.ProjectPath, folder.path("sub/a.QC6"));
    EXPECT_EQ(session.shell.ProjectTitle, "a.QC6");
    EXPECT_EQ(session.shell.ProjectFolder, folder.path("sub/"));
    ASSERT_TRUE(SaveProject(session, "bare.QC6", {}, user).success);  // beside it
    EXPECT_TRUE(std::filesystem::exists(folder.path("sub/bare.QC6")));

    const std::string kept = test::bytes_of(folder.path("sub/a.QC6"));
    const Before before(session);
    EXPECT_FALSE(SaveProjectAs(session, folder.path("absent/b.QC6"), comment("new"), user).success);
    const auto said = user.take();
    ASSERT_EQ(said.size(), 1u);
    EXPECT_EQ(said[0].first, "Execution not possible");
    EXPECT_THAT(said[0].second, HasSubstr("b.QC6"));
    before.expect(session);
    EXPECT_EQ(test::bytes_of(folder.path("sub/a.QC6")), kept);
}

TEST(ProjectFiles, what_could_not_be_found_again_is_told_when_it_is_saved) {
    const test::Folder folder;
    QueuedMessages user;
    // A folder whose name no project file can hold: the bare name does where it is looked for.
    const std::string foreign = folder.path("水");
    std::filesystem::create_directory(foreign);
    for (const char* name : {"two.q07", "水/two.q07"})
        folder.write(name, test::bytes_of(test::golden("two_substances.q07")));
    Session session;
    start_session(session, foreign, false);
    ASSERT_EQ(LoadDatabase(session, 7, "two.q07").err, 0);
    ASSERT_EQ(SelectSubstance(session, 2), 0);
    ASSERT_TRUE(SaveProject(session, folder.path("found.QC6"), comment("水"), user).success);
    EXPECT_THAT(user.take().at(0).second, HasSubstr("\"?\" for 1 character that"));
    EXPECT_EQ(split_lines(test::bytes_of(folder.path("found.QC6")))[2], "two.q07");
    ASSERT_TRUE(LoadProjectFile(session, folder.path("found.QC6"), user).success);
    EXPECT_EQ(session.document.DatabasePath, foreign + "/two.q07");
    session.ProgramPath = folder.path();
    EXPECT_FALSE(SaveProject(session, folder.path("lost.QC6"), {}, user).success);
    EXPECT_THAT(user.take().at(0).second, HasSubstr("characters that a project file cannot hold"));
    EXPECT_FALSE(std::filesystem::exists(folder.path("lost.QC6")));

    // Two substances of one number: the project would find the first.
    const std::string bytes = test::bytes_of(test::golden("two_substances.q07"));
    std::string twice = bytes;
    constexpr std::size_t record = 950;
    twice.replace(record, record, bytes, 2 * record, record);
    ASSERT_EQ(LoadDatabase(session, 7, folder.write("twice.q07", twice)).err, 0);
    ASSERT_EQ(SelectSubstance(session, 2), 0);
    ASSERT_TRUE(SaveProject(session, folder.path("twice.QC6"), {}, user).success);
    EXPECT_THAT(user.take().at(0).second, HasSubstr("Another substance of the database has the CAS number"));
}

// Two points of propane as a data file.
std::string two_points(const std::string& cas = "74-98-6") {
    return "1.2.2003\r\ncomment\r\n" + cas + " ;Propane\r\n2\r\n" +
           "300\r\n997\r\n490\r\n0\r\n0\r\n0\r\n310\r\n1270\r\n470\r\n0\r\n0\r\n0\r\n";
}

TEST(ProjectFiles, measured_data_are_loaded_from_where_they_are) {
    const test::Folder folder;
    for (const char* sub : {"project", "measured", "program"})
        std::filesystem::create_directory(folder.path(sub));
    Session session = propane_session(folder);
    QueuedMessages user;
    const std::string data = folder.write("measured/A.baq", two_points());
    ASSERT_TRUE(LoadExpDataFile(session, data, false, user));
    const std::string project = folder.path("project/p.QC6");
    ASSERT_TRUE(SaveProject(session, project, {}, user).success);
    EXPECT_EQ(split_lines(test::bytes_of(project))[3], "A.baq");
    EXPECT_EQ(split_lines(test::bytes_of(project))[4], " 2 ");
    EXPECT_THAT(user.take(), IsEmpty());

    Session other = propane_session(folder);
    other.ProgramPath = folder.path("program");
    other.shell.ExpFolder = folder.path("measured");
    const auto loaded_from = [&] {
        const ProjectLoad load = LoadProject(other, project, user);
        EXPECT_TRUE(load.success);
        EXPECT_EQ(load.exp_file, "A.baq");
        EXPECT_EQ(data_point_count(other.document.exp), 2);
        EXPECT_FALSE(other.document.exp.ExpGeaendert);
        return other.document.exp.file.ExpFile;
    };
    EXPECT_EQ(loaded_from(), data);  // in the last folder of data
    EXPECT_EQ(loaded_from(), data);
    // Beside the project is first, the program folder last; any case of letters.
    folder.write("program/a.BAQ", two_points());
    EXPECT_EQ(loaded_from(), data);
    folder.write("project/a.BAQ", two_points());
    EXPECT_EQ(loaded_from(), folder.path("project/a.BAQ"));
    std::filesystem::remove(folder.path("project/a.BAQ"));
    other.shell.ExpFolder = folder.path();
    EXPECT_EQ(loaded_from(), folder.path("program/a.BAQ"));
    EXPECT_THAT(user.take(), IsEmpty());
}

TEST(ProjectFiles, loaded_data_stay_or_go_as_the_user_wants) {
    const test::Folder folder;
    Session without = propane_session(folder);
    QueuedMessages user;
    ASSERT_TRUE(SaveProject(without, "none.QC6", {}, user).success);
    const std::pair<std::string, std::string> preserve = {"exper. data",
                                                          "Do you want to preserve the loaded exper. data?"};
    const std::string data = folder.write("a.BAQ", two_points());
    for (const Answer answer : {Answer::yes, Answer::no}) {
        Session session = propane_session(folder);
        ASSERT_TRUE(LoadExpDataFile(session, data, false, user));
        change(session, [](Document& d) {
            d.exp.points.edit()[0].T = 333;
            d.calc.CurrentPoint = 2;
        });
        user.answers = {answer};
        ASSERT_TRUE(LoadProject(session, "none.QC6", user).success);
        EXPECT_THAT(user.take(), ::testing::ElementsAre(preserve));
        EXPECT_EQ(data_point_count(session.document.exp), answer == Answer::yes ? 2 : 0);
        EXPECT_EQ(session.document.exp.file.ExpFile.empty(), answer == Answer::no);
        EXPECT_EQ(session.document.calc.CurrentPoint, answer == Answer::yes ? 2 : 0);
        EXPECT_EQ(session.document.exp.points[0].T, 333);
    }
    Session session = propane_session(folder);
    ASSERT_TRUE(LoadProject(session, "none.QC6", user).success);  // nothing to preserve: no question
    EXPECT_THAT(user.take(), IsEmpty());

    // Another type is dropped, the project stays.
    const ProjectLoad dropped = LoadProject(session, project_with(folder, session, "t.QC6", 4, "a.XY"), user);
    EXPECT_TRUE(dropped.success);
    EXPECT_EQ(dropped.exp_file, "");
    EXPECT_THAT(user.take(),
                ::testing::ElementsAre(
                    Pair("Execution not possible", "file is not of the type .BAQ and cannot be loaded")));
    // One that is missing, or that the user does not want, is told; the project stays, too.
    ASSERT_TRUE(LoadExpDataFile(session, data, false, user));
    EXPECT_TRUE(LoadProject(session, project_with(folder, session, "m.QC6", 4, "gone.BAQ"), user).success);
    auto said = user.take();
    ASSERT_EQ(said.size(), 2u);
    EXPECT_THAT(said[0].second, HasSubstr("gone.BAQ"));
    EXPECT_EQ(said[1], preserve);
    folder.write("other.BAQ", two_points("64-17-5"));
    EXPECT_TRUE(LoadProject(session, project_with(folder, session, "o.QC6", 4, "other.BAQ"), user).success);
    said = user.take();
    ASSERT_EQ(said.size(), 2u);
    EXPECT_THAT(said[0].second, HasSubstr("different substance"));
    EXPECT_EQ(data_point_count(session.document.exp), 2);
}

TEST(ProjectFiles, a_look_at_a_project_changes_nothing) {
    const test::Folder folder;
    const Session session = propane_session(folder);
    const Before before(session);
    const ProjectPreview ethanol = preview_project(test::golden(ethanol_file), session);
    EXPECT_FALSE(ethanol.refusal);
    EXPECT_EQ(ethanol.date, "22.11.2026");
    EXPECT_EQ(ethanol.comment, "Prüfung, 5 µm – Reihe \"B\"");
    EXPECT_EQ(ethanol.database_text, "two_substances.q07");
    EXPECT_FALSE(ethanol.database_missing);
    EXPECT_EQ(ethanol.data_text, "Messwerte.BAQ  (12 exper. points)");
    EXPECT_EQ(ethanol.substance_text, "Ethanol  (64-17-5)");

    // Without its database the substance is looked up in the one in force.
    folder.write("alone.QC6", test::bytes_of(test::golden(ethanol_file)));
    const ProjectPreview alone = preview_project(folder.path("alone.QC6"), session);
    EXPECT_TRUE(alone.database_missing);
    EXPECT_EQ(alone.database_text, "two_substances.q07 not in the QUOM working directory");
    EXPECT_EQ(alone.substance_text, "Ethanol  (64-17-5)");
    EXPECT_EQ(preview_project(folder.path("alone.QC6"), empty_session(folder)).substance_text,
              "64-17-5 (substance is not available in the present database)");

    const auto refused = [&](const std::string& path) {
        const ProjectPreview preview = preview_project(path, session);
        EXPECT_EQ(preview.comment + preview.date + preview.substance_text, "");
        return preview.refusal ? preview.refusal->text : "";
    };
    EXPECT_EQ(refused(folder.write("old.QC5", "")), "Only *.QC6 projects are supported.");
    EXPECT_EQ(refused(folder.write("old.QC6", "1.1.2000\r\nc\r\nC:\\X.Q05\r\n\r\n 0 \r\n64-17-5\r\n")),
              "Databases *.Q04 and *.Q05 are not longer supported.\n"
              "(Change the name to *.Q07 in the project file)");
    EXPECT_THAT(refused(folder.path("absent.QC6")), HasSubstr("absent.QC6"));
    EXPECT_THAT(refused(folder.write("short.QC6", "1.1.2000\r\n")), HasSubstr("line 2 (comment)"));
    before.expect(session);
}

}  // namespace
}  // namespace quom
