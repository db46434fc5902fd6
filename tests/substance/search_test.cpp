// Finding substances by name in both languages, synonym and CAS number, over the starter database and over a
// hand-made file of synonyms.
#include "substance/search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/code_page.h"
#include "substance/database.h"
#include "substance/synonyms.h"
#include "substance_support.h"

namespace quom {
namespace {

Session starter(QueuedMessages& listener) {
    Session s;
    s.database.ProgramPath = QUOM_STARTER_DATA;
    EXPECT_EQ(LoadDatabase(s, 7, "quom.q07").err, 0);
    s.messages = &listener;
    return s;
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
    QueuedMessages listener;
    Session s = starter(listener);
    const std::string bytes = test::bytes_of(std::string(QUOM_STARTER_DATA) + "/" + SynonymFile);
    const std::vector<SynonymBlock> blocks = read_synonym_blocks(bytes);
    ASSERT_GE(s.database.file.StoffAnzahl(), 480);
    ASSERT_EQ(blocks.size(), s.database.file.rows.size());
    for (int i = 1; i <= s.database.file.StoffAnzahl(); ++i) {
        const SubstanceRow& row = s.database.file.rows[static_cast<std::size_t>(i - 1)];
        EXPECT_EQ(FindSubstance(s, main_name(row.SubstanceName)).index, i) << row.SubstanceName;
        EXPECT_EQ(FindSubstance(s, row.SubstanceCAS + "  ").index, i) << row.SubstanceName;
        EXPECT_EQ(FindSystemNo(s, row.SubstanceNo), i);
    }
    for (const SynonymBlock& block : blocks) {
        const int index = FindCAS(s, block.casrn);
        ASSERT_GT(index, 0) << block.casrn;
        for (const std::string& name : block.synonyms) {
            EXPECT_EQ(FindSubstance(s, name).index, index) << name << " of " << block.casrn;
        }
    }
    EXPECT_TRUE(listener.asked.empty());
    s.options.Englisch = false;  // the same file with the German names
    ASSERT_EQ(LoadDatabase(s, 7, "quom.q07").err, 0);
    for (const auto& [name, cas] : {std::pair{"wasser", "7732-18-5"},
                                    {"Kohlendioxyd", "124-38-9"},
                                    {"Äthanol", "64-17-5"},
                                    {"Ammoniak", "7664-41-7"},
                                    {"Benzol", "71-43-2"},
                                    {"Cyklohexan", "110-82-7"},
                                    {"water", "7732-18-5"}}) {
        EXPECT_EQ(FindSubstance(s, name).index, FindCAS(s, cas)) << name;
    }
}

TEST(Search, NothingFoundTellsWhyAndKeepsTheRow) {
    QueuedMessages listener;
    Session s = starter(listener);
    s.database.StoffIndex = 7;
    EXPECT_EQ(FindSubstance(s, "no such thing").index, 7);
    EXPECT_FALSE(FindSubstance(s, "").found);
    ASSERT_FALSE(listener.asked.empty());
    EXPECT_EQ(listener.asked[0].title, "ERROR: Selection of a substance");
    EXPECT_EQ(listener.asked[0].text, "Nothing found.");
    // a substance of the synonym file that the database does not hold
    test::Folder folder;
    folder.write(SynonymFile, "99-99-9\r\n#X\r\nUNOBTAINIUM\r\n\r\nEND\r\n");
    s.database.ProgramPath = folder.path();
    listener.asked.clear();
    EXPECT_FALSE(FindSubstance(s, "Unobtainium").found);
    ASSERT_EQ(listener.asked.size(), 1u);
    EXPECT_EQ(listener.asked[0].text, "CASRN 99-99-9 This substance is not involved in the database ");
    // no file at all
    s.database.ProgramPath = folder.path("nowhere");
    listener.asked.clear();
    EXPECT_FALSE(FindSubstance(s, "Unobtainium").found);
    EXPECT_EQ(listener.asked.at(0).text, "Nothing found.");
}

TEST(Search, ListOfSynonyms) {
    QueuedMessages listener;
    const Session s = starter(listener);
    EXPECT_GT(ShowSynonyms(s, "7732-18-5").count, 3);
    for (const char* none : {"", "   ", "<>"}) EXPECT_EQ(ShowSynonyms(s, none).err, -1);
    ASSERT_EQ(listener.asked.size(), 3u);
    EXPECT_EQ(listener.asked[0].title, "WARNING");
    EXPECT_EQ(listener.asked[0].text, "CASRN not given/ not correct");
    EXPECT_EQ(ShowSynonyms(s, "00-00-0").err, -1);  // passes the test of the number, is not in the file
    EXPECT_EQ(listener.asked.back().title, "Execution not possible");
    EXPECT_TRUE(listener.asked.back().text.starts_with("CASRN is still lacking in the list of synonyms\n"));
}

TEST(Search, SystemNumberAndMemory) {
    QueuedMessages listener;
    Session s = starter(listener);
    s.database.StoffIndex = 3;
    const int number = s.database.file.rows[9].SubstanceNo;
    EXPECT_EQ(enter_system_no(s, std::to_string(number)).index, 10);
    EXPECT_EQ(enter_system_no(s, "9999").index, 3);
    EXPECT_TRUE(enter_system_no(s, "0").clear);
    EXPECT_FALSE(enter_system_no(s, "12345").found);  // five digits do nothing
    EXPECT_FALSE(enter_system_no(s, "12345").clear);
    NameMemory memory;
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g", "h", "b", "i"}) memory.add(name);
    ASSERT_EQ(memory.names().size(), 8u);
    EXPECT_EQ(memory.names().front(), "b");
    EXPECT_EQ(memory.names().back(), "i");
}

}  // namespace
}  // namespace quom
