// Data files in a session: what is asked, what is refused, and that a failure leaves everything as it was.
#include "session/data_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "base/dates.h"
#include "base/files.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr const char *Acetone = "67-64-1", *Propane = "74-98-6";

class DataFilesTest : public ::testing::Test {
 protected:
    DataFilesTest() {
        std::string form = (fs::temp_directory_path() / "quom-data-XXXXXX").string();
        folder = ::mkdtemp(form.data());
        session = test::starter_session();
        SelectSubstance(session, FindCAS(session.database, Acetone));
        session.document.options.SepXY = ';';
    }
    ~DataFilesTest() override {
        std::error_code fault;
        fs::remove_all(folder, fault);
    }
    std::string path(const std::string& name) const { return (folder / name).string(); }
    std::string put(const std::string& name, const std::string& bytes) const {
        EXPECT_EQ(write_file_atomic(path(name), bytes), "");
        return path(name);
    }
    std::string bytes_of(const std::string& name) const {
        return read_file(path(name)).bytes.value_or("(no file)");
    }
    // A file of n points with the temperatures 101, 102 ...
    std::string set_of(const std::string& name, const std::string& CAS, int n) const {
        std::string bytes =
            "1.2.2026\r\ncomment of " + name + "\r\n" + CAS + ";" + name + "\r\n" + std::to_string(n);
        for (int i = 1; i <= n; ++i) bytes += "\r\n" + std::to_string(100 + i) + ",10,700,1,20000,50";
        return put(name, bytes);
    }
    const ExperimentalData& data() const { return session.document.exp; }
    std::vector<double> temperatures() const {
        std::vector<double> all;
        for (const TpRhoPoint& point : data().points) all.push_back(point.T);
        return all;
    }

    fs::path folder;
    Session session;
    QueuedMessages user;
};

TEST_F(DataFilesTest, loaded_and_joined) {
    test::change(session, [](Document& d) {
        d.exp.points.edit()[0].T = 555;
        d.calc.CurrentPoint = 9;
    });
    ASSERT_TRUE(LoadExpDataFile(session, set_of("four.BAQ", Acetone, 4), false, user));
    EXPECT_THAT(temperatures(), ElementsAre(555, 101, 102, 103, 104));
    EXPECT_EQ(data().points[1],
              (TpRhoPoint{.T = 101, .p = 10, .rhoV = 1, .rhoL = 700, .HLV = 20000, .cp = 50}));
    EXPECT_EQ(data().file.ExpFile, path("four.BAQ"));
    EXPECT_EQ(data().file.ExpTitle, "four.BAQ");
    EXPECT_EQ(data().file.ExpDate, "1.2.2026");
    EXPECT_EQ(data().file.ExpComment, "comment of four.BAQ");
    EXPECT_EQ(data().file.ExpCAS, Acetone);
    EXPECT_EQ(data().file.ExpName, "four.BAQ");
    EXPECT_FALSE(data().ExpGeaendert);
    EXPECT_EQ(session.document.calc.CurrentPoint, 0) << "there is no point 9 any more";

    ASSERT_TRUE(LoadExpDataFile(session, set_of("three.BAQ", Acetone, 3), true, user));
    EXPECT_THAT(temperatures(), ElementsAre(555, 101, 102, 103, 104, 101, 102, 103));
    EXPECT_TRUE(data().ExpGeaendert);
    EXPECT_EQ(data().file.ExpTitle, "four.BAQ") << "what is saved belongs there";
    ASSERT_TRUE(LoadExpDataFile(session, path("three.BAQ"), false, user));
    EXPECT_THAT(temperatures(), ElementsAre(555, 101, 102, 103));
    EXPECT_THAT(user.take(), IsEmpty());
}

TEST_F(DataFilesTest, questions_on_the_substance) {
    const std::string other = set_of("other.BAQ", Propane, 2), unknown = set_of("unknown.BAQ", "1-1-1", 2);
    const auto different = Pair("WARNING",
                                "You are trying to load a data set \nfor a different substance!\n"
                                "Load T-p-rho data anyway?");
    const auto not_found =
        Pair("WARNING", "substance not found in the present database\n    Load data anyway?");
    struct Case {
        const std::string& file;
        bool chosen;  // a substance is in force
        Answer answer;
        bool loaded;
        bool warned;
    };
    for (const Case& c :
         {Case{other, true, Answer::no, false, false}, Case{other, true, Answer::yes, true, false},
          Case{unknown, true, Answer::no, false, false}, Case{unknown, true, Answer::yes, true, false},
          Case{unknown, false, Answer::no, false, false}, Case{unknown, false, Answer::yes, false, true}}) {
        Session s = test::starter_session();
        if (c.chosen) SelectSubstance(s, FindCAS(s.database, Acetone));
        const Document before = s.document;
        user.answers = {c.answer};
        EXPECT_EQ(LoadExpDataFile(s, c.file, false, user), c.loaded);
        EXPECT_EQ(s.document == before, !c.loaded);
        for (const Message& m : user.asked)
            EXPECT_EQ(m.default_button, m.buttons == Buttons::yes_no ? Answer::no : Answer::ok);
        const auto asked = user.take();
        ASSERT_EQ(asked.size(), c.warned ? 2u : 1u);
        EXPECT_THAT(asked[0], c.file == other ? different : not_found);
        if (c.warned) {
            EXPECT_THAT(asked[1], Pair("WARNING", "Load a substance!"));
        }
    }
}

TEST_F(DataFilesTest, what_cannot_be_loaded_leaves_the_session_alone) {
    ASSERT_TRUE(LoadExpDataFile(session, set_of("good.BAQ", Acetone, 2), false, user));
    ASSERT_TRUE(LoadXYFile(session, put("good.XY", "c\r\n1;2\r\n"), user));
    const Document before = session.document;
    const std::string bad[] = {put("zero.BAQ", "d\r\nc\r\n67-64-1;A\r\n0\r\n"),
                               put("word.BAQ", "d\r\nc\r\n67-64-1;A\r\n1\r\n300\r\nabc\r\n"),
                               put("short.BAQ", "d\r\nc\r\n"), path("nowhere.BAQ"), folder.string()};
    const char* why[] = {"\"zero.BAQ\", line 4: ", "\"word.BAQ\", line 6: \"abc\" is no number.",
                         "\"short.BAQ\", line 3: ", "nowhere.BAQ\": No such file", "Is a directory"};
    for (std::size_t i = 0; i < std::size(bad); ++i) {
        for (const bool add : {false, true}) {
            EXPECT_FALSE(LoadExpDataFile(session, bad[i], add, user));
            EXPECT_THAT(user.take(), ElementsAre(Pair("Execution not possible", HasSubstr(why[i]))));
        }
        EXPECT_THAT(ExpDataPreview(bad[i], session).fault, HasSubstr(why[i]));
    }
    EXPECT_FALSE(LoadExpDataFile(session, "", false, user));
    EXPECT_THAT(user.take(), IsEmpty()) << "no file was chosen";
    EXPECT_FALSE(LoadXYFile(session, bad[1], user));
    EXPECT_THAT(user.take(),
                ElementsAre(Pair("Execution not possible", HasSubstr("\"word.BAQ\", line 2: "))));
    EXPECT_EQ(session.document, before);
}

TEST_F(DataFilesTest, a_file_that_ends_early_is_told) {
    const std::string file = put("early.BAQ", "d\r\nc\r\n67-64-1;A\r\n2\r\n1,2,3,4,5,6,7,8,9,10,11\r\n");
    EXPECT_TRUE(LoadExpDataFile(session, file, false, user));
    EXPECT_THAT(user.take(), ElementsAre(Pair("Note", HasSubstr("1 value missing"))));
    EXPECT_EQ(data().points[2].HLV, 11);
    EXPECT_EQ(data().points[2].cp, 0);
}

TEST_F(DataFilesTest, saving) {
    EXPECT_FALSE(SaveExpData(session, path("x.BAQ"), user));
    EXPECT_FALSE(SaveTYAsXY(session, path("x.XY"), user));
    EXPECT_THAT(user.take(), ElementsAre(Pair("Execution not possible", "no data available "),
                                         Pair("Execution not possible", "no data available ")));
    test::change(session, [](Document& d) {
        d.exp.points.edit().push_back({.T = 298.15, .p = 0.38, .rhoV = 1, .rhoL = 2});
        d.exp.points.edit().push_back({.Aus = -1, .T = 300});
        d.exp.file.ExpComment = "20 °C";
        d.exp.ExpGeaendert = true;
    });
    EXPECT_FALSE(SaveExpData(session, path("no/such/folder/x.BAQ"), user));
    EXPECT_TRUE(data().ExpGeaendert && data().file.ExpFile.empty());
    EXPECT_THAT(user.take(), ElementsAre(Pair("Execution not possible", HasSubstr("No such file"))));

    ASSERT_TRUE(SaveExpData(session, path("set"), user));
    const std::string saved =
        today_text() +
        "\r\n20 \xB0"
        "C\r\n67-64-1     ;Acetone" +
        std::string(100, ' ') +
        "\r\n2\r\n298.15\r\n.38\r\n2\r\n1\r\n0\r\n0\r\n300\r\n0\r\n0\r\n0\r\n0\r\n0\r\n";
    EXPECT_EQ(bytes_of("set.BAQ"), saved);
    EXPECT_EQ(data().file.ExpFile, path("set.BAQ"));
    EXPECT_EQ(data().file.ExpTitle, "set.BAQ");
    EXPECT_EQ(data().file.ExpCAS, Acetone);
    EXPECT_FALSE(data().ExpGeaendert);
    EXPECT_EQ(session.shell.ExpFolder, folder.string() + "/");
    EXPECT_THAT(user.take(), IsEmpty());

    test::change(session, [](Document& d) { remove_lines(d.exp, 2, 2); });
    const Document before = session.document;
    user.answers = {Answer::no};
    EXPECT_FALSE(SaveExpData(session, path("set.BAQ"), user));
    EXPECT_THAT(user.take(), ElementsAre(Pair("WARNING", "such a file is already existing\nOverwright?")));
    EXPECT_EQ(bytes_of("set.BAQ"), saved);
    EXPECT_EQ(session.document, before);
    user.answers = {Answer::yes};
    EXPECT_TRUE(SaveExpData(session, path("set.BAQ"), user));
    EXPECT_THAT(bytes_of("set.BAQ"), HasSubstr("\r\n1\r\n298.15\r\n.38\r\n"));

    // The file of a substance that was loaded all the same keeps its name.
    user.answers = {Answer::yes, Answer::yes};
    ASSERT_TRUE(LoadExpDataFile(session, set_of("other.BAQ", Propane, 1), false, user));
    ASSERT_TRUE(SaveExpData(session, path("other.BAQ"), user));
    EXPECT_THAT(bytes_of("other.BAQ"), HasSubstr("\r\n74-98-6     ;other.BAQ  "));
}

TEST_F(DataFilesTest, inactive_points_come_back_active) {
    ASSERT_TRUE(LoadExpDataFile(session, set_of("set.BAQ", Acetone, 3), false, user));
    test::change(session, [](Document& d) { toggle_lines(d.exp, 2, 2); });
    ASSERT_TRUE(SaveTYAsXY(session, path("set.XY"), user));
    EXPECT_EQ(bytes_of("set.XY"),
              "comment of set.BAQ\r\n1.0100000E+02;1.0000000E+01;0.0000000E+00\r\n"
              "1.0300000E+02;1.0000000E+01;0.0000000E+00\r\n");
    user.answers = {Answer::yes};
    ASSERT_TRUE(SaveExpData(session, path("set.BAQ"), user));
    ASSERT_TRUE(LoadExpDataFile(session, path("set.BAQ"), false, user));
    EXPECT_THAT(temperatures(), ElementsAre(0, 101, 102, 103));
    EXPECT_EQ(data().points[2].Aus, 0);
}

TEST_F(DataFilesTest, xy_data) {
    ASSERT_TRUE(LoadXYFile(session, put("in.LRG", "c \xE9\r\n1,5\t2,5\t9\r\n3\t4\r\n"), user));
    EXPECT_THAT(session.document.xy.points.list(), ElementsAre(XYPoint{1.5f, 2.5f}, XYPoint{3, 4}));
    EXPECT_EQ(xy_loaded_text(session.document.xy), "  loaded: in.LRG (2 data lines)");
    test::change(session, [](Document& d) {
        toggle_lines(d.xy, 1, 1);
        d.options.SepXY = '\t';
    });
    EXPECT_TRUE(session.document.xy.XYGeaendert);
    ASSERT_TRUE(SaveXYFile(session, path("out"), user));
    EXPECT_EQ(bytes_of("out.XY"), "c \xE9\r\n3.0000000E+00\t4.0000000E+00\r\n");
    EXPECT_FALSE(session.document.xy.XYGeaendert);
    EXPECT_EQ(session.document.xy.XYFile, path("out.XY"));
    ASSERT_TRUE(LoadXYFile(session, path("out.XY"), user));
    EXPECT_EQ(session.document.xy.points.size(), 1u) << "off points are not in the file";
    EXPECT_FALSE(SaveXYFile(session, path("no/folder/x.XY"), user));
    EXPECT_EQ(session.document.xy.XYFile, path("out.XY"));
    EXPECT_EQ(user.take().size(), 1u);
}

TEST_F(DataFilesTest, preview) {
    const Document before = session.document;
    ExpDataHead head = ExpDataPreview(set_of("p.BAQ", Propane, 3), session);
    EXPECT_EQ(head.fault, "");
    EXPECT_EQ(head.date, "1.2.2026");
    EXPECT_EQ(head.comment, "comment of p.BAQ");
    EXPECT_TRUE(head.in_database);
    EXPECT_EQ(head.substance_text, "p.BAQ  (74-98-6)");
    EXPECT_EQ(head.data_text, "3  experimental points");
    head = ExpDataPreview(set_of("q.BAQ", "1-1-1", 1), session);
    EXPECT_EQ(head.substance_text, "substance not found in the present database");
    EXPECT_EQ(head.ExpAnzahl, 1);
    EXPECT_EQ(session.document, before);
}

}  // namespace
}  // namespace quom
