#include "forms/substance_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "session/substance_names.h"
#include "substance/substance_support.h"
#include "substance/synonyms.h"
#include "support/starter_session.h"
#include "support/test_paths.h"

namespace quom {
namespace {

TEST(SubstanceForm, boxes_tell_of_the_row) {
    const Session s = test::starter_session();
    const int index = FindCAS(s.database, test::ethanol);
    const SubstanceBoxes boxes = substance_boxes(s.database, index);
    EXPECT_EQ(boxes.NameCombo, "Ethanol");
    EXPECT_EQ(boxes.tex4, "CAS-RN:   64-17-5");
    EXPECT_TRUE(boxes.Text2.starts_with("structure: "));
    EXPECT_EQ(FindSystemNo(s.database, std::stoi(boxes.Text1)), index);
    EXPECT_EQ(substance_boxes(s.database, 0).NameCombo, "");
    EXPECT_EQ(substance_boxes(s.database, 0).tex4, "CAS-RN:   ");
    EXPECT_EQ(substance_boxes(s.database, 100000).NameCombo, "");
    EXPECT_EQ(substance_caption(s.database), "Select a substance (in total  496)");
}

TEST(SubstanceForm, remarks_tell_what_is_no_printed_figure) {
    const Session s = test::starter_session();
    const SubstanceRemarks acid = substance_remarks(s, FindCAS(s.database, "79-11-8"));  // chloroacetic acid
    EXPECT_THAT(acid.line, ::testing::StartsWith("estimate: cp(idG), polynomial, rho(S); fit: "));
    EXPECT_THAT(
        acid.sentences,
        ::testing::HasSubstr("cp(idG), polynomial: estimate, by group contributions (Joback, Reid 1987)"));
    EXPECT_EQ(substance_remarks(s, 0).line, "");
}

// The part of the line that is marked, and what stands at its right end with its match in brackets.
struct Shown {
    std::string name, in_line, beside;
};
class SubstanceSearching : public ::testing::Test {
 protected:
    SubstanceSearch search(const char* text) {
        return search_substances(s.database, substance_names(s).index, true, text);
    }
    Shown shown(const FoundSubstance& row) const {
        const SubstanceRow& of = s.database.rows.at(static_cast<std::size_t>(row.index) - 1);
        Shown shown{main_name(of.SubstanceName),
                    substance_list_line(row.index, of).substr(row.part.begin, row.part.length), row.found};
        if (row.found.empty()) return shown;
        shown.beside.insert(row.found_part.begin + row.found_part.length, "]");
        shown.beside.insert(row.found_part.begin, row.kind + " [");
        return shown;
    }
    std::vector<Shown> found(const char* text) {
        std::vector<Shown> all;
        for (const FoundSubstance& row : search(text).rows) all.push_back(shown(row));
        return all;
    }
    Session s = test::starter_session();
};

TEST_F(SubstanceSearching, matches_are_told_in_the_line_or_beside_it) {
    const struct {
        const char *typed, *name, *in_line, *beside;
    } best[] = {
        {"isobut", "Isobutane", "Isobut", ""},
        {"wasser", "Water", "", "german [Wasser]"},
        {"74-98", "Propane", "", "CAS [74-98]-6"},
        {"c3h8", "Propane", "C3H8", ""},
        {"2-Methylprop", "Isobutane", "2-Methylprop", ""},
        {"Äthanol", "Ethanol", "Ethanol", ""},
        {"essigsaeure", "Acetic acid", "", "german [Essigsäure]"},
        {"CH3OH", "Methanol", "CH4O", ""},
        {"zykl", "Cyclo", "Cycl", ""},  // on its way to ZYKLO
    };
    for (const auto& row : best) {
        const std::vector<Shown> rows = found(row.typed);
        ASSERT_FALSE(rows.empty()) << row.typed;
        EXPECT_THAT(rows[0].name, testing::StartsWith(row.name)) << row.typed;
        EXPECT_EQ(rows[0].in_line, row.in_line) << row.typed;
        EXPECT_THAT(rows[0].beside, testing::StartsWith(row.beside)) << row.typed;
    }
    // Every row of a text shows the match once.
    for (const Shown& row : found("isobut")) {
        EXPECT_NE(row.in_line.empty(), row.beside.empty()) << row.name;
        EXPECT_THAT(row.in_line + row.beside,
                    testing::AnyOf(testing::HasSubstr("sobut"), testing::HasSubstr("[ISOBUT]")))
            << row.name;
    }
}

TEST_F(SubstanceSearching, counts_and_the_empty_text) {
    const SubstanceSearch all = search("  ");
    EXPECT_FALSE(all.filtered);
    EXPECT_EQ(all.rows.size(), 496u);
    EXPECT_EQ(all.rows[9].index, 10);
    EXPECT_EQ(all.count + all.notice, "");
    const SubstanceSearch water = search("wasser");
    EXPECT_EQ(water.count, std::to_string(water.rows.size()) + " of 496, best first");
    EXPECT_EQ(search("74-98-6").count, "1 of 496");
    EXPECT_TRUE(water.sure && water.notice.empty());
}

TEST_F(SubstanceSearching, what_is_not_found_is_told_with_close_spellings) {
    const SubstanceSearch guess = search("Etanol");
    ASSERT_THAT(guess.rows.size(), testing::AllOf(testing::Ge(2u), testing::Le(5u)));
    EXPECT_EQ(shown(guess.rows[0]).name, "Ethanol");
    EXPECT_EQ(guess.rows[0].part.length, 0u);
    EXPECT_FALSE(guess.sure);
    EXPECT_EQ(guess.notice,
              "Nothing found. No name, synonym, formula or CAS number contains \"Etanol\".\n"
              "Did you mean one of these? <Down> goes to the list, <Enter> takes the marked one.");
    for (const char* nothing : {"qqqqqqqq", "xq", "-"}) {
        EXPECT_TRUE(search(nothing).rows.empty()) << nothing;
        EXPECT_THAT(search(nothing).notice, testing::StartsWith("Nothing found.")) << nothing;
        EXPECT_THAT(search(nothing).notice, testing::Not(testing::HasSubstr("mean"))) << nothing;
    }
    EXPECT_LT(search(std::string(5000, 'x').c_str()).notice.size(), 200u);
}

TEST_F(SubstanceSearching, a_substance_that_the_database_lacks_is_said) {
    const test::Folder folder;
    folder.write(SynonymFile,
                 "99-99-9\r\n#X\r\nUNOBTAINIUM\r\nPROPAN\r\n\r\n7732-18-5\r\n#Water\r\nAQUA\r\n\r\nEND\r\n");
    s.ProgramPath = folder.path();
    for (const char* text : {"unobtainium", "99-99-9", "Propan"}) {
        const SubstanceSearch lacking = search(text);
        EXPECT_EQ(lacking.notice, "CASRN 99-99-9 This substance is not involved in the database ") << text;
        EXPECT_FALSE(lacking.sure) << "another one is not taken in its place";
    }
    EXPECT_TRUE(search("unobtainium").rows.empty());
    EXPECT_EQ(found("aqua").front().beside, "synonym [AQUA]");
    // The names are those of the database until another one is loaded.
    folder.write(SynonymFile, "END\r\n");
    EXPECT_EQ(found("aqua").front().name, "Water");
    ASSERT_EQ(LoadDatabase(s, 7, test::starter_data() + "/quom.q07").err, 0);
    EXPECT_FALSE(search("aqua").sure);
    EXPECT_EQ(found("Propan").front().name, "Propane");
}

}  // namespace
}  // namespace quom
