// The one search: ranking, spellings of both languages, formulas, near names, over the starter database and
// over hand-made rows.
#include "substance/name_index.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "substance/database.h"
#include "substance/identity.h"
#include "substance/name_spelling.h"
#include "substance/search.h"
#include "substance/synonyms.h"
#include "substance_support.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string ProgramPath = test::starter_data();

// Main names of hits.
std::vector<std::string> names_of(const DatabaseFile& file, const std::vector<NameHit>& hits) {
    std::vector<std::string> names;
    for (const NameHit& hit : hits)
        names.push_back(main_name(file.rows.at(static_cast<std::size_t>(hit.index - 1)).SubstanceName));
    return names;
}

class StarterNames : public ::testing::Test {
 protected:
    StarterNames()
        : file(open_database(7, ProgramPath + "/quom.q07", true).file),
          index(file, read_synonym_file(ProgramPath).bytes) {}
    std::vector<std::string> found(std::string_view text) const { return names_of(file, index.find(text)); }
    std::vector<std::string> named(std::string_view text) const { return names_of(file, index.named(text)); }
    std::vector<std::string> proposed(std::string_view text) const {
        return names_of(file, index.proposals(text, 3));
    }
    DatabaseFile file;
    NameIndex index;
};

// What the window's Enter and the console's SUBSTANCE find is never behind another hit.
TEST_F(StarterNames, the_hit_of_a_look_up_comes_first_for_every_name) {
    std::vector<std::string> names = {"CO2", "co", "no such thing", "7732 - 18-5",
                                      "END", " ",  "Äthan",         "7732-18-5 "};
    for (const SubstanceRow& row : file.rows) {
        names.push_back(main_name(row.SubstanceName));
        names.push_back(row.SubstanceFormula);
        names.push_back(row.SubstanceCAS);
        names.push_back(main_name(row.OtherName));
    }
    for (const SynonymBlock& block : read_synonym_blocks(read_synonym_file(ProgramPath).bytes))
        names.insert(names.end(), block.synonyms.begin(), block.synonyms.end());
    for (const std::string& name : names) {
        const SubstanceHit hit = FindSubstance(file, ProgramPath, name);
        EXPECT_EQ(index.exact(name), hit.index) << name;
        const std::vector<NameHit> hits = index.find(name);
        if (hit.found) {
            ASSERT_FALSE(hits.empty()) << name;
            EXPECT_EQ(hits.front().index, hit.index) << name;
            ASSERT_EQ(index.named(name).size(), 1u) << name;
        }
    }
}

TEST_F(StarterNames, whole_names_then_beginnings_then_words_then_the_rest) {
    const auto butan = found("butan");
    ASSERT_GT(butan.size(), 6u);
    EXPECT_THAT((std::vector(butan.begin(), butan.begin() + 3)),
                ElementsAre("Butane", "Butanal", "2-Butanone"));
    EXPECT_GT(std::ranges::find(butan, "Isopentane") - butan.begin(), 4) << "by a synonym with Butane in it";
    EXPECT_EQ(found("CO").front(), "Carbon monoxide");
    EXPECT_EQ(found("benz").front(), "Benzene");
    EXPECT_EQ(found("wasser").front(), "Water");
    NameMatch last = NameMatch::whole;
    for (const NameHit& hit : index.find("ethyl")) {
        EXPECT_GE(hit.match, last) << hit.name;
        last = hit.match;
    }
}

TEST_F(StarterNames, spellings_marks_and_umlauts_do_not_matter) {
    const struct {
        const char* name;
        std::vector<const char*> typed;
    } rows[] = {
        {"Ethanol", {"ethanol", "Äthanol", "Aethanol", "ätha-nol", "ETHANOL."}},
        {"Acetic acid", {"Essigsäure", "essigsaeure", "ESSIGSÄURE", "acetic-acid", "aceticacid"}},
        {"Cyclohexane", {"zyklohexan", "Cyklohexan", "cyclo hexane"}},
        {"1,3-Butadiene", {"1,3 butadien", "13-Butadiene", "(1,3)butadiene"}},
        {"Carbon dioxide", {"Kohlendioxyd", "kohlen-dioxid", "CO2", "co2"}},
        {"Methanol", {"CH3OH", "methylalkohol"}},
    };
    for (const auto& row : rows)
        for (const char* typed : row.typed) EXPECT_THAT(named(typed), ElementsAre(row.name)) << typed;
    // While it is being typed: ZYKL is on its way to ZYKLO, which is CYCLO.
    EXPECT_THAT(found("zyklohe"), testing::Contains("Cyclohexane"));
    EXPECT_THAT(found("zyk"), testing::Contains("Cyclohexane"));
}

TEST_F(StarterNames, a_formula_of_several_substances_names_none_of_them) {
    EXPECT_THAT(named("C4H10"), testing::UnorderedElementsAre("Butane", "Isobutane"));
    EXPECT_THAT(named("CO"), ElementsAre("Carbon monoxide"));
    EXPECT_THAT(named("co"), ElementsAre("Carbon monoxide"));
    EXPECT_THAT(named("butan-"), ElementsAre("Butane")) << "not what begins so";
    EXPECT_THAT(named("buta"), IsEmpty());
    EXPECT_THAT(found("-"), IsEmpty());
    EXPECT_THAT(found(""), IsEmpty());
    // Digits are those of a CAS number only where they begin it.
    for (const NameHit& hit : index.find("106-97"))
        EXPECT_TRUE(hit.kind != NameKind::casrn || hit.name.starts_with("106-97")) << hit.name;
    EXPECT_EQ(found("106-97").front(), "Butane");
}

TEST_F(StarterNames, near_names) {
    EXPECT_EQ(proposed("propan3").front(), "Propane");
    EXPECT_EQ(proposed("watre").front(), "Water");
    EXPECT_EQ(proposed("Etanol").front(), "Ethanol");
    EXPECT_EQ(proposed("Tolulo").front(), "Toluene");
    EXPECT_EQ(proposed("7732-18-4").front(), "Water");
    EXPECT_THAT(proposed("qqqqqqqq"), IsEmpty());
    EXPECT_THAT(proposed("xq"), IsEmpty());
    EXPECT_THAT(index.near("ab", 3), IsEmpty());
    EXPECT_LE(index.near("methan", 2).size(), 2u);
    EXPECT_THAT(proposed("cyclohex"), ::testing::Each(::testing::StartsWith("Cyclohex")))
        << "what begins so, where nothing is near";
    EXPECT_GE(proposed("cyclohex").size(), 2u);
}

TEST(NameSpelling, distance_by_hand) {
    EXPECT_EQ(letters_apart("PROPAN", "PROPAN", 2), 0);
    EXPECT_EQ(letters_apart("ETANOL", "ETHANOL", 2), 1);
    EXPECT_EQ(letters_apart("WATRE", "WATER", 1), 1);
    EXPECT_EQ(letters_apart("ABCD", "BADC", 3), 2);
    EXPECT_EQ(letters_apart("KITTEN", "SITTING", 3), 3);
    EXPECT_EQ(letters_apart("KITTEN", "SITTING", 2), 3);
    EXPECT_EQ(letters_apart("", "ABC", 3), 3);
    EXPECT_EQ(letters_apart("ABCDEFGH", "", 3), 4);
}

TEST(NameSpelling, keys_and_beginnings_of_words) {
    EXPECT_EQ(compared_name("Straße").key, "STRASSE");
    EXPECT_EQ(compared_name("Tetraethylblei").key, "TETRAETHYLBLEI");
    EXPECT_EQ(compared_name("Tetraäthylblei").key, "TETRAETHYLBLEI");
    EXPECT_EQ(compared_name("2-Me-propan").key, "2METHYLPROPAN");
    EXPECT_EQ(compared_name("Chrome-gas").key, "CHROMEGAS");
    const ComparedName name = compared_name("1,2-Äthan diol");
    EXPECT_EQ(name.key, "12ETHANDIOL");
    EXPECT_EQ(name.begins, std::string({1, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0}));
    EXPECT_THAT(unfinished_spellings("ZYKL"), ElementsAre("CYCL"));
    EXPECT_THAT(unfinished_spellings("BENZ"), IsEmpty());
}

TEST(NameSpelling, parts_of_names_as_they_are_written) {
    const struct {
        const char *name, *typed, *part;
    } rows[] = {
        {"2-Methylpropane", "methylprop", "Methylprop"},
        {"4-Methyl-2-pentanone", "4methyl2", "4-Methyl-2"},
        {"Essigsäure", "saeu", "säu"},
        {"Äthanol", "eth", "Äth"},
        {"Aethanol", "ethan", "Aethan"},
        {"Zyklohexan", "cyclo", "Zyklo"},
        {"Phenyl-Me-keton", "methyl", "Me-"},
        {"Butylbutan", "butan", "butan"},
        {"Diethylamin, N-ethyl", "ethyl", "ethyl"},  // the word, not the "ethyl" inside before it
        {"Water", "fire", ""},
    };
    for (const auto& row : rows) {
        const TextPart part = part_of_name(row.name, compared_name(row.typed).key);
        EXPECT_EQ(std::string(row.name).substr(part.begin, part.length), row.part) << row.name;
    }
    EXPECT_EQ(part_of_name("Diethylamin, N-ethyl", "ETHYL").begin, 15u);
    EXPECT_EQ(part_of_name("Water", "").length, 0u);
}

TEST(Formulas, same_atoms) {
    for (const auto& [typed, hill] : {std::pair{"CH3OH", "CH4O"},
                                      {"Ca(OH)2", "CaH2O2"},
                                      {"(CH3)3COH", "C4H10O"},
                                      {"O2", "O2"},
                                      {"HOH", "H2O"}})
        EXPECT_EQ(hill_formula(typed), hill) << typed;
    for (const char* wrong : {"", "c2h6", "C2H6)", "(C2H6", "()", "Xx3", "C99999", "C((H9999)9999)", "C 2"})
        EXPECT_EQ(hill_formula(wrong), std::nullopt) << wrong;
}

// A database without synonyms, and synonyms of a substance that it lacks.
TEST(NameIndexOfRows, other_language_and_substances_that_are_not_there) {
    DatabaseFile file;
    file.rows = {{1, "CO", "Carbon monoxide; Carbonic oxide", "Kohlenmonoxid", "630-08-0"},
                 {2, "Co", "Cobalt", "Kobalt", "7440-48-4"},
                 {3, "", "", "", ""}};
    const NameIndex index(
        file, "99-99-9\r\n#X\r\nUNOBTAINIUM\r\n\r\n7440-48-4\r\n#Cobalt\r\nCOBALTUM\r\n\r\nEND\r\n");
    EXPECT_EQ(index.find("kobalt").front().kind, NameKind::other_language);
    EXPECT_EQ(index.find("carbonic").front().kind, NameKind::further);
    EXPECT_THAT(index.find("unobtainium"), IsEmpty());
    EXPECT_EQ(index.exact("unobtainium"), 0);
    EXPECT_EQ(index.missing_casrn("Unobtainium"), "99-99-9");
    for (const char* known : {"cobaltum", "Cobalt", "no such thing", ""})
        EXPECT_EQ(index.missing_casrn(known), "") << known;
    // Distance 4 of 14 letters; one digit of a CAS number.
    EXPECT_EQ(index.near("kerbin monixide", 5).front().index, 1);
    EXPECT_EQ(index.near("630-08-1", 5).front().index, 1);
    EXPECT_THAT(index.near("630-18-1", 5), IsEmpty());
    EXPECT_EQ(index.exact("cobaltum"), 2);
    EXPECT_EQ(index.named("co").size(), 2u);
    EXPECT_EQ(index.named("CO").front().index, 1);
    EXPECT_EQ(index.named("Co").front().index, 2);
    EXPECT_EQ(index.named("Co").size(), 1u);
    EXPECT_THAT(NameIndex().find("water"), IsEmpty());
    EXPECT_THAT(NameIndex(DatabaseFile(), "END").near("water", 3), IsEmpty());
}

TEST(SynonymFile, what_is_wrong_with_it_is_said) {
    const test::Folder folder;
    using ::testing::HasSubstr;
    EXPECT_THAT(read_synonym_file(folder.path()).fault, HasSubstr("has no file of synonyms SYNOM7.TXT"));
    const std::string path = folder.write(SynonymFile, "Dear friend,\r\nthis is a letter.\r\n");
    EXPECT_THAT(read_synonym_file(folder.path()).fault, HasSubstr("is no file of synonyms"));
    EXPECT_FALSE(FindSynonym(folder.path(), "this is a letter").found);
    folder.write(SynonymFile, "");
    EXPECT_THAT(read_synonym_file(folder.path()).fault, HasSubstr("is empty"));
    folder.write(SynonymFile, "64-17-5\r\n#Ethanol\r\nETHANOL\r\n");
    EXPECT_THAT(read_synonym_file(folder.path()).fault, HasSubstr("no line END"));
    EXPECT_TRUE(FindSynonym(folder.path(), "ethanol").found) << "what is there is used";
    folder.write(SynonymFile, "END");
    EXPECT_EQ(read_synonym_file(folder.path()).fault, "");
    std::filesystem::resize_file(path, MostSynonymBytes + 1);  // a hole, no bytes on the disk
    EXPECT_THAT(read_synonym_file(folder.path()).fault, HasSubstr("(64 MB)"));
    EXPECT_EQ(read_synonym_file(folder.path()).bytes, "");
    EXPECT_EQ(read_synonym_file(ProgramPath).fault, "");
}

}  // namespace
}  // namespace quom
