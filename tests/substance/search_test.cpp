// Finding substances by name in both languages, synonym and CAS number, over the starter database and over a
// hand-made file of synonyms.
#include "substance/search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/code_page.h"
#include "substance/database.h"
#include "substance/synonyms.h"
#include "substance_support.h"
#include "support/test_paths.h"

namespace quom {
namespace {

const std::string ProgramPath = test::starter_data();

DatabaseFile starter(bool Englisch = true) {
    OpenedDatabase opened = open_database(7, ProgramPath + "/quom.q07", Englisch);
    EXPECT_EQ(opened.fault, "");
    return opened.file;
}

// Index that a text is found at; 0 when nothing is found.
int found(const DatabaseFile& file, std::string_view text) {
    const SubstanceHit hit = FindSubstance(file, ProgramPath, text);
    EXPECT_EQ(hit.found, !hit.message) << text;
    return hit.index;
}

// A key is what the file is searched for: NormalizeName, the spellings of the file, no marks.
std::string key_of(std::string name) {
    NormalizeName(name);
    return without_marks(normal_spelling(name));
}

TEST(Synonyms, SpellingsOfBothLanguagesMeet) {
    const struct {
        const char* typed;
        const char* key;
    } rows[] = {
        {"Äthanol", "ETHANOL"},
        {"äthanol", "ETHANOL"},
        {"Aethanol", "AETHANOL"},  // only the umlaut is a spelling of its own
        {"Cyklohexan", "CYCLOHEXAN"},
        {"Zyklohexan", "CYCLOHEXAN"},
        {"Zyclohexan", "CYCLOHEXAN"},
        {"Kohlendioxyd", "KOHLENDIOXID"},
        {"Oxydianilin", "OXYDIANILIN"},  // OXYDI keeps its Y
        {"1,2-Butandiol", "1,2BUTANDIOL"},
        {"1,2Butandiol", "1,2BUTANDIOL"},
        {"Me-Chlorid", "METHYLCHLORID"},
        {"Essigsaeure", "ESSIGSÄURE"},
        {"Azeton", "ACETON"},
        {"n - Dekan", "NDECAN"},
        {"(R)-Kresol [x].", "RCRESOLX"},
        {"sek-Butanol", "SECBUTANOL"},
    };
    for (const auto& row : rows) EXPECT_EQ(key_of(row.typed), row.key) << row.typed;
}

const char* const File =
    "64-17-5\r\n#Ethanol_(Alkohol)_(Weingeist)_C2H6O\r\nETHANOL\r\nETHYL-ALCOHOL\r\n\r\n"
    "110-82-7\r\n#Cyclohexane\r\nCYCLOHEXAN\r\n\r\nEND\r\n";

TEST(Synonyms, BlocksHeadsAndEnds) {
    EXPECT_EQ(find_synonym(File, "Äthyl alcohol").casrn, "64-17-5");
    EXPECT_EQ(find_synonym(File, " 110 - 82-7 ").casrn, "110-82-7");
    EXPECT_FALSE(find_synonym(File, "ETHAN").found);  // a part of a line is no hit
    EXPECT_FALSE(find_synonym(File, "END").found);
    EXPECT_FALSE(find_synonym("", "ETHANOL").found);
    EXPECT_FALSE(find_synonym("64-17-5\r\n#Ethanol", "ETHANOL").found);  // cut off within a block
    const SynonymList list = list_synonyms(File, "64-17-5 ");
    EXPECT_EQ(list.count, 2);
    EXPECT_EQ(list.head, "Ethanol\nWeingeist\nC2H6O\nCAS-RN: 64-17-5");
    EXPECT_EQ(list.synonyms, "ETHANOL\nETHYL-ALCOHOL\n");
    EXPECT_EQ(list_synonyms(File, "71-43-2").err, -1);
    const SynonymHead bare = split_head("#");
    EXPECT_EQ(bare.Kopf1 + bare.Kopf2 + bare.Kopf5, "");
    EXPECT_EQ(split_head("#A_B").Kopf5, "B");
    EXPECT_EQ(synonym_file_text(read_synonym_blocks(File)), File);
}

// Every substance is found by its English name, its German name, each of its synonyms and its CAS number.
TEST(Search, EverySubstanceByEveryName) {
    const DatabaseFile file = starter();
    const std::string bytes = test::bytes_of(ProgramPath + "/" + SynonymFile);
    const std::vector<SynonymBlock> blocks = read_synonym_blocks(bytes);
    ASSERT_GE(file.StoffAnzahl(), 480);
    ASSERT_EQ(blocks.size(), file.rows.size());
    for (int i = 1; i <= file.StoffAnzahl(); ++i) {
        const SubstanceRow& row = file.rows[static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(found(file, main_name(row.SubstanceName)), i) << row.SubstanceName;
        EXPECT_EQ(found(file, row.SubstanceCAS + "  "), i) << row.SubstanceName;
        EXPECT_EQ(FindSystemNo(file, row.SubstanceNo), i);
    }
    for (const SynonymBlock& block : blocks) {
        const int index = FindCAS(file, block.casrn);
        ASSERT_GT(index, 0) << block.casrn;
        for (const std::string& name : block.synonyms) EXPECT_EQ(found(file, name), index) << name;
    }
    const DatabaseFile german = starter(false);
    for (const auto& [name, cas] : {std::pair{"wasser", "7732-18-5"},
                                    {"Kohlendioxyd", "124-38-9"},
                                    {"Äthanol", "64-17-5"},
                                    {"Ammoniak", "7664-41-7"},
                                    {"Benzol", "71-43-2"},
                                    {"Cyklohexan", "110-82-7"},
                                    {"water", "7732-18-5"}}) {
        EXPECT_EQ(found(german, name), FindCAS(german, cas)) << name;
    }
}

TEST(Search, NothingFoundTellsWhyAndKeepsTheRow) {
    const DatabaseFile file = starter();
    const test::Folder folder;
    // a substance of the synonym file that the database does not hold
    folder.write(SynonymFile, "99-99-9\r\n#X\r\nUNOBTAINIUM\r\n\r\nEND\r\n");
    struct Case {
        std::string ProgramPath;
        const char *text, *told;
    };
    for (const Case& c :
         {Case{ProgramPath, "no such thing", "Nothing found."}, Case{ProgramPath, "", "Nothing found."},
          Case{folder.path(), "Unobtainium", "CASRN 99-99-9 This substance is not involved in the database "},
          Case{folder.path("nowhere"), "Unobtainium", "Nothing found."}}) {
        const SubstanceHit hit = FindSubstance(file, c.ProgramPath, c.text, 7);
        EXPECT_FALSE(hit.found) << c.text;
        EXPECT_EQ(hit.index, 7) << c.text;
        ASSERT_TRUE(hit.message) << c.text;
        EXPECT_EQ(hit.message->title, "ERROR: Selection of a substance");
        EXPECT_EQ(hit.message->text, c.told);
    }
}

TEST(Search, ListOfSynonyms) {
    const SynonymList water = ShowSynonyms(ProgramPath, "7732-18-5");
    EXPECT_GT(water.count, 3);
    EXPECT_FALSE(water.message);
    for (const char* none : {"", "   ", "<>"}) {
        const SynonymList list = ShowSynonyms(ProgramPath, none);
        EXPECT_EQ(list.err, -1);
        ASSERT_TRUE(list.message);
        EXPECT_EQ(list.message->title, "WARNING");
        EXPECT_EQ(list.message->text, "CASRN not given/ not correct");
    }
    // The placeholder passes the test of the number and is not in the file.
    const SynonymList placeholder = ShowSynonyms(ProgramPath, "00-00-0");
    EXPECT_EQ(placeholder.err, -1);
    ASSERT_TRUE(placeholder.message);
    EXPECT_EQ(placeholder.message->title, "Execution not possible");
    EXPECT_EQ(placeholder.message->text,
              "CASRN is still lacking in the list of synonyms\nATTENTION!\n"
              "In this situation you cannot find this substance\nvia input of the name.");
}

TEST(Search, SystemNumberAndMemory) {
    const DatabaseFile file = starter();
    EXPECT_EQ(enter_system_no(file, std::to_string(file.rows[9].SubstanceNo), 3).index, 10);
    EXPECT_EQ(enter_system_no(file, "9999", 3).index, 3);
    EXPECT_TRUE(enter_system_no(file, "0", 3).clear);
    EXPECT_FALSE(enter_system_no(file, "12345", 3).found);  // five digits do nothing
    EXPECT_FALSE(enter_system_no(file, "12345", 3).clear);
    NameMemory memory;
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h", "b", "i"}) memory.add(name);
    ASSERT_EQ(memory.names().size(), 8u);
    EXPECT_EQ(memory.names().front(), "b");
    EXPECT_EQ(memory.names().back(), "i");
}

}  // namespace
}  // namespace quom
