// Marks of sets: the file, what they hold for, and the tables they are made from.
#include "substance/set_marks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

#include "base/csv_rows.h"
#include "substance/database.h"
#include "substance/starter_marks.h"
#include "substance_support.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

std::string starter_table(const char* name) { return test::bytes_of(test::test_data() + "/../data/" + name); }

SubstanceConstants starter(std::string_view cas) {
    const OpenedDatabase opened = open_database(7, test::starter_data() + "/quom.q07", true);
    return unpack_substance(opened.file, FindCAS(opened.file, cas), true).constants;
}

MarkTable starter_marks() { return read_marks(test::bytes_of(test::starter_data() + "/" + MarksFile)); }

std::map<std::string, std::string> words_on(const SubstanceConstants& substance, const MarkTable& table) {
    std::map<std::string, std::string> words;
    for (const SetMark& mark : marks_on(substance, table)) words[mark.set->column] = mark_word(mark.kind);
    return words;
}

TEST(SetMarks, hold_for_these_figures_only) {
    const MarkTable table = starter_marks();
    ASSERT_EQ(table.fault, "");
    SubstanceConstants diol = starter("504-63-2");  // 1,3-propanediol
    EXPECT_EQ(words_on(diol, table)["cppoly"], "estimate");
    diol.cpPoly[1] += 1e-6f;
    EXPECT_EQ(words_on(diol, table).count("cppoly"), 0u) << "edited";
    diol = starter("504-63-2");
    diol.cpPolyTHi = 1100;
    EXPECT_EQ(words_on(diol, table).count("cppoly"), 0u) << "limits belong to the set";
    EXPECT_EQ(words_on(diol, {}).size(), 0u);

    const SubstanceConstants propane = starter("74-98-6");
    const auto marks = words_on(propane, table);
    EXPECT_EQ(marks.at("wagner"), "fit");
    EXPECT_EQ(marks.count("kf"), 0u) << "as printed";
    EXPECT_EQ(marks.count("Tnb"), 0u);
}

TEST(SetMarks, a_boiling_point_below_the_triple_point_is_extrapolated) {
    const MarkTable table = starter_marks();
    SubstanceConstants carbon_dioxide = starter("124-38-9");
    EXPECT_EQ(words_on(carbon_dioxide, table).at("Tnb"), "extrapolated");
    EXPECT_THAT(mark_sentence(marks_on(carbon_dioxide, table).front()),
                HasSubstr("sublimation point is 194.686 K"));
    carbon_dioxide.StoffCAS = "00-00-0";  // another database
    ASSERT_EQ(marks_on(carbon_dioxide, table).size(), 1u);
    EXPECT_EQ(mark_sentence(marks_on(carbon_dioxide, table).front()),
              "T(nb): extrapolated, below the triple point");
    carbon_dioxide.Tnb = carbon_dioxide.Ttr;
    EXPECT_TRUE(marks_on(carbon_dioxide, table).empty());
    carbon_dioxide.Tnb = 0;
    EXPECT_TRUE(marks_on(carbon_dioxide, table).empty());
}

TEST(SetMarks, a_foreign_file_is_named_with_its_line) {
    const std::string head = "cas,set,mark,figures,source\n";
    for (const auto& [text, fault] :
         {std::pair{std::string(), "does not begin with"},
          {"A letter.", "does not begin with"},
          {head + "1,kf,fit,ff\n", "line 2: 4 fields in place of 5"},
          {head + "1,kf,fit,ff,x\n1,density,fit,ff,x\n", "line 3: there is no set \"density\""},
          {head + "1,kf,guess,ff,x\n", "there is no mark \"guess\""},
          {head + "1,kf,fit,,x\n", "\"\" is no checksum"},
          {head + "1,kf,fit,123456789,x\n", "\"123456789\" is no checksum"}}) {
        const MarkTable table = read_marks(text);
        EXPECT_THAT(table.fault, HasSubstr(fault));
        EXPECT_TRUE(table.rows.empty()) << fault;
    }
    const std::vector<MarkRow> rows{{"74-98-6", marked_set("kf"), MarkKind::fit, 0xdeadbeef, "a, \"b\""}};
    const MarkTable back = read_marks(marks_text(rows));
    ASSERT_EQ(back.rows.size(), 1u) << back.fault;
    EXPECT_EQ(back.rows[0].source, "a, \"b\"");
    EXPECT_EQ(back.rows[0].figures, 0xdeadbeef);
    EXPECT_EQ(back.rows[0].set, marked_set("kf"));
}

// The tool refuses sources that do not belong to the figures.
TEST(StarterMarks, refuses_what_does_not_fit) {
    const std::string database = test::bytes_of(test::starter_data() + "/quom.q07");
    const std::string list = "no,mark,source\n1,,Book\n2,fit,fitted here\n3,guess,?\n";
    for (const auto& [row, fault] : {std::pair{"74-98-5,1,1", "lacks it"},
                                     {"74-98-6,1", "has 2 fields, the header 3"},
                                     {"74-98-6,1,9", "no such number"},
                                     {"74-98-6,2,1", "M cannot bear the mark \"fit\""},
                                     {"7732-18-5,1,3", "cannot bear the mark \"guess\""},
                                     {"540-67-0,1,2", "wagner cannot bear"}}) {
        const std::string sources = std::string("cas,M,wagner\n") + row + "\n";
        const StarterMarks made = build_starter_marks({.sources = sources, .source_list = list}, database);
        EXPECT_THAT(made.faults, ::testing::ElementsAre(HasSubstr(fault))) << row;
        EXPECT_EQ(made.text, "");
    }
    const StarterMarks made =
        build_starter_marks({.sources = "cas,M,wagner\n74-98-6,1,2:0.1\n", .source_list = list}, database);
    EXPECT_THAT(made.text, ::testing::EndsWith(",\"fitted here (max 0.1 %)\"\n"));
}

// Every set of figures of the starter tables has its source, and every source its figures.
TEST(StarterMarks, tables_are_in_step) {
    const std::vector<CsvRow> figures = csv_rows(starter_table("substances.csv"));
    const std::vector<CsvRow> sources = csv_rows(starter_table("sources.csv"));
    ASSERT_EQ(figures.size(), sources.size());
    for (std::size_t row = 1; row < figures.size(); ++row) {
        ASSERT_EQ(figures[row].fields.front(), sources[row].fields.front());
        std::set<std::string> given, named;
        for (std::size_t k = 5; k < figures.front().fields.size(); ++k) {
            const std::string& column = figures.front().fields[k];
            if (!figures[row].fields[k].empty() && column != "tnb_mark")
                given.insert(column.substr(0, column.find('_')));
        }
        for (std::size_t k = 1; k < sources.front().fields.size(); ++k)
            if (!sources[row].fields[k].empty()) named.insert(sources.front().fields[k]);
        EXPECT_EQ(given, named) << figures[row].fields.front();
    }
}

}  // namespace
}  // namespace quom
