// Words, ranks and marks of the search over everything.
#include "forms/palette_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<PaletteEntry> sample() {
    return {{.kind = PaletteKind::help, .id = "h1", .text = "Equilibrium of L and V"},
            {.kind = PaletteKind::graph_2d,
             .id = "g1",
             .text = "Phase equilibrium",
             .reason = "not yet available"},
            {.kind = PaletteKind::calculation, .id = "c1", .text = "L-V Equilibrium: T => p(LV)"},
            {.kind = PaletteKind::models, .id = "m1", .text = "Equation of State: Peng / Robinson"},
            {.kind = PaletteKind::help, .id = "h2", .text = "Tips", .detail = "inequality"},
            {.kind = PaletteKind::calculation, .id = "c2", .text = "Tank (T, m, v => p)"}};
}

std::vector<std::string> ids(std::string_view typed, const std::vector<std::string>& used = {}) {
    std::vector<std::string> list;
    for (const PaletteHit& hit : palette_hits(sample(), typed, used)) list.push_back(hit.entry.id);
    return list;
}

TEST(PaletteForm, beginnings_of_words_then_what_can_run_then_the_last_used_then_kinds) {
    EXPECT_THAT(ids("equ"), ElementsAre("c1", "m1", "h1", "g1", "h2"));
    EXPECT_THAT(ids("equ", {"h1", "g1"}), ElementsAre("h1", "c1", "m1", "g1", "h2"));
    EXPECT_THAT(ids("librium"), ElementsAre("c1", "h1", "g1"));
    EXPECT_THAT(ids("rob STATE"), ElementsAre("m1"));  // words in any order and case
    EXPECT_THAT(ids("state nothing"), IsEmpty());
    EXPECT_THAT(ids("(T"), ElementsAre("c2"));
    EXPECT_THAT(ids("  "), IsEmpty());
    EXPECT_THAT(ids("", {"c2", "h1", "gone"}), ElementsAre("c2", "h1"));
}

TEST(PaletteForm, marks_are_what_was_typed) {
    const auto marked = [](std::string_view typed) {
        const std::vector<PaletteHit> hits = palette_hits(sample(), typed, {});
        std::vector<std::string> parts;
        for (const TextPart& part : hits.at(0).marks)
            parts.push_back(hits[0].entry.text.substr(part.begin, part.length));
        return parts;
    };
    EXPECT_THAT(marked("equ p("), ElementsAre("Equ", "p("));
    EXPECT_THAT(marked("robinson peng"), ElementsAre("Peng", "Robinson"));
    EXPECT_THAT(marked("equation equ"), ElementsAre("Equation"));  // no overlap
    const std::vector<PaletteEntry> umlaut = {{.id = "u", .text = "Größe für μ"}};
    EXPECT_EQ(palette_hits(umlaut, "FÜR", {}).size(), 1u);
    const std::vector<PaletteHit> detail = palette_hits(sample(), "equality", {});
    ASSERT_EQ(detail.size(), 1u);
    EXPECT_TRUE(detail[0].marks.empty());
    EXPECT_EQ(detail[0].detail_marks.size(), 1u);
}

TEST(PaletteForm, substances_by_any_name_at_most_four_and_their_identity_comes_back) {
    DatabaseFile file;
    file.path = "/somewhere/a b.q07";
    const auto add = [&](const char* name, const char* other, const char* formula, const char* casrn) {
        SubstanceRow row;
        row.SubstanceName = name;
        row.OtherName = other;
        row.SubstanceFormula = formula;
        row.SubstanceCAS = casrn;
        file.rows.push_back(row);
    };
    add("Water", "Wasser", "H2O", "7732-18-5");
    for (const char* name : {"Butane", "Butanal", "Butanol", "Butanone", "Butadiene"})
        add(name, name, "C4", "1");
    const NameIndex names(file, {});
    EXPECT_EQ(palette_substances(file, names, "buta").size(), PaletteSubstances);
    const std::vector<PaletteEntry> water = palette_substances(file, names, "wass");
    ASSERT_EQ(water.size(), 1u);
    EXPECT_EQ(water[0].text, "Water");
    EXPECT_EQ(water[0].detail, "Wasser");
    const std::vector<PaletteHit> hits = palette_hits(water, "wass", {});
    EXPECT_EQ(hits[0].entry.detail.substr(hits[0].detail_marks.at(0).begin, hits[0].detail_marks[0].length),
              "Wass");
    const RecentSubstance wanted{"Water", "H2O", "7732-18-5", file.path};
    EXPECT_EQ(substance_of_id(water[0].id), wanted);
    EXPECT_TRUE(substance_of_id("menu:mnuModel").name.empty());
    EXPECT_EQ(find_recent(file, wanted), 1);
    EXPECT_EQ(find_recent(file, {"Butanol", "C4", "1", file.path}), 4);
    EXPECT_EQ(find_recent(file, {"Nothing", "", "99", file.path}), 0);
}

TEST(PaletteForm, eight_are_remembered_the_last_one_first) {
    std::vector<std::string> used;
    for (const char* id : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "3"}) used = with_used(used, id);
    EXPECT_THAT(used, ElementsAre("3", "9", "8", "7", "6", "5", "4", "2"));
}

}  // namespace
}  // namespace quom
