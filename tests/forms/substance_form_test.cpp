#include "forms/substance_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "substance/synonyms.h"
#include "support/queued_messages.h"
#include "support/starter_session.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

TEST(SubstanceForm, boxes_tell_of_the_row) {
    const Session s = test::starter_session();
    const int index = FindCAS(s.database, test::ethanol);
    const SubstanceBoxes boxes = substance_boxes(s.database, index);
    EXPECT_EQ(boxes.NameCombo, "Ethanol");
    EXPECT_EQ(boxes.tex4, "CAS-RN:   64-17-5");
    EXPECT_TRUE(boxes.Text2.starts_with("structure: "));
    EXPECT_EQ(FindSystemNo(s.database, std::stoi(boxes.Text1)), index);
    EXPECT_EQ(substance_boxes(s.database, 0).NameCombo, "");
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

TEST(SubstanceForm, the_filter_shows_rows_that_hold_the_text) {
    const Session s = test::starter_session();
    const NameIndex names(s.database, read_synonym_file(s.ProgramPath).bytes);
    EXPECT_TRUE(filtered_rows(names, "").empty());
    EXPECT_TRUE(filtered_rows(names, "no such thing").empty());
    EXPECT_THAT(filtered_rows(names, "64-17-5"), ElementsAre(FindCAS(s.database, test::ethanol)));
    EXPECT_EQ(filtered_rows(names, "BUTAN").front(), FindCAS(s.database, "106-97-8"));
    EXPECT_EQ(filtered_rows(names, "Äthanol").front(), FindCAS(s.database, test::ethanol));
    EXPECT_EQ(filtered_rows(names, "Etanol").front(), FindCAS(s.database, test::ethanol))
        << "a close spelling";
}

TEST(SubstanceForm, what_is_not_found_is_told_and_keeps_the_row) {
    QueuedMessages user;
    Session s = test::starter_session();
    s.StoffIndex = 7;
    const NameIndex names(s.database, read_synonym_file(s.ProgramPath).bytes);
    for (const char* nothing : {"no such thing", "Etanol", "C4H10"})
        EXPECT_EQ(look_up_substance(s, names, nothing, user).index, 7) << "no guess is taken";
    EXPECT_EQ(look_up_substance(s, names, "CO2", user).index, FindCAS(s.database, "124-38-9"));
    EXPECT_THAT(user.take(),
                testing::AllOf(testing::SizeIs(3),
                               testing::Each(Pair("ERROR: Selection of a substance", "Nothing found."))));
    EXPECT_TRUE(look_up_substance(s, names, "Äthanol", user).found);
    EXPECT_TRUE(user.take().empty());
}

}  // namespace
}  // namespace quom
