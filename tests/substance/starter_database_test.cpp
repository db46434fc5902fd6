// The tool behind the starter database refuses a row that breaks a rule, and says which and why.
#include "substance/starter_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

#include "base/constants.h"
#include "base/csv_rows.h"
#include "substance/record.h"
#include "substance_support.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

using Fields = std::map<std::string, std::string>;

const Fields propane = {{"cas", "74-98-6"},     {"formula", "C3H8"}, {"name_en", "Propane; R290"},
                        {"name_de", "Propan"},  {"M", "44.0956"},    {"structure", "CH3-CH2-CH3"},
                        {"Tcr", "369.89"},      {"pcr", "4251.2"},   {"rhocr", "220"},
                        {"omega", "0.1521"},    {"Tnb", "231.036"},  {"rhoL_A", "0"},
                        {"rhoL_B", "60.6"},     {"rhoL_C", "0.276"}, {"rhoL_D", "0.287"},
                        {"rhoL_E", "0"},        {"rhoL_F", "0"},     {"rhoL_G", "0"},
                        {"rhoL_Tcr", "369.89"}, {"rhoL_TLo", "86"},  {"rhoL_THi", "369"},
                        {"dfH", "0"},           {"Ttr", "85.525"}};
const Fields butane = {{"cas", "106-97-8"},  {"formula", "C4H10"}, {"name_en", "Butane"},
                       {"name_de", "Butan"}, {"M", "58.1222"},     {"structure", "CH3-CH2-CH2-CH3"}};
const char* const Synonyms =
    "cas,name_en,name_de,synonyms\n74-98-6,Propane,Propan,\"n-Propan|\"\"di\"\" Äthyloxyd, x\"\n";

// A table of these rows with the header of the starter tables.
std::string table(const std::vector<Fields>& rows) {
    const std::string all = test::bytes_of(test::test_data() + "/../data/substances.csv");
    std::string text = all.substr(0, all.find('\n'));
    const std::vector<std::string> columns = csv_rows(text).front().fields;
    for (const Fields& row : rows) {
        text += '\n';
        for (const std::string& column : columns) {
            const auto field = row.find(column);
            text += (&column == &columns.front() ? "" : ",") + (field == row.end() ? "" : field->second);
        }
    }
    return text;
}

StarterDatabase build(const std::vector<Fields>& rows, std::string_view synonyms = Synonyms) {
    return build_starter_database({.substances = table(rows), .synonyms = synonyms, .date = "01.01.2026"});
}

TEST(StarterDatabase, WritesBothFiles) {
    const StarterDatabase made = build({propane, butane});
    ASSERT_TRUE(made.faults.empty()) << made.faults.front();
    const RecordLayout& layout = *record_layout(7);
    ASSERT_EQ(made.database.size(), 3 * layout.length);
    EXPECT_EQ(record_text(made.database, layout.Formula), "01.01.2026");
    EXPECT_EQ(record_i16(made.database, layout.SystemNo), 2);
    const std::string record = made.database.substr(layout.length, layout.length);
    EXPECT_EQ(record_i16(record, layout.SystemNo), 1);
    EXPECT_EQ(record_text(record, layout.NameE), "Propane; R290");
    EXPECT_EQ(record_cell(record, layout, 14), 60.6f);
    EXPECT_EQ(record_cell(record, layout, 85), TrueZero);  // a written 0 of a formation
    EXPECT_EQ(record_cell(record, layout, 87), 0.0f);      // an empty field
    EXPECT_EQ(made.synonyms,
              "74-98-6\r\n#Propane_(Propan)_C3H8\r\nPROPANE\r\nPROPAN\r\nR290\r\nN-"
              "PROPAN\r\n\"DI\"ETHYLOXID,X\r\n\r\n"
              "106-97-8\r\n#Butane_(Butan)_C4H10\r\nBUTANE\r\nBUTAN\r\n\r\nEND\r\n");
}

TEST(StarterDatabase, RefusesWhatBreaksARule) {
    const struct {
        Fields change;
        const char* reason;
    } bad[] = {
        {{{"M", ""}}, "M is missing"},
        {{{"M", "44.15"}}, "M 44.15 does not agree with 44.097 of formula C3H8"},
        {{{"formula", "C3Xx8"}}, "formula C3Xx8 cannot be read"},
        {{{"formula", "C3H8C3H8C3H8C"}}, "longer than 12 characters"},
        {{{"cas", "74-98-5"}}, "line 2 (74-98-5): CAS number is malformed or its check digit is wrong"},
        {{{"cas", "7498-6"}}, "CAS number is malformed"},
        {{{"rhoL_THi", "40000"}}, "rhoL_THi 40000 is not a whole number from 1 to 32767"},
        {{{"rhoL_TLo", "0"}}, "rhoL_TLo 0 is not a whole number"},
        {{{"rhoL_TLo", "86.5"}}, "rhoL_TLo 86.5 is not a whole number"},
        {{{"rhoL_TLo", "369"}}, "rhoL_TLo 369 is not below THi 369"},
        {{{"rhoL_THi", ""}}, "the set rhoL_.. is not complete"},
        {{{"rhoL_C", "sixty"}}, "rhoL_C \"sixty\" is no number"},
        {{{"rhoL_C", "1e39"}}, "rhoL_C \"1e39\" is no number of single precision"},
        {{{"Ttr", "231.036"}}, "Ttr 231.036 is not below Tnb 231.036"},
        {{{"Ttr", "187"}}, "rhoL_TLo 86 lies more than 100 K below Ttr 187"},
        {{{"name_en", "Propane ♥"}}, "outside Windows-1252"},
        {{{"name_en", "Pro_pane"}}, "separates the fields"},
        {{{"name_en", ""}}, "name_en is missing"},
        {{{"name_en", std::string(61, 'x')}}, "longer than 60 characters"},
        {{{"name_de", "106-97-8"}}, "cannot stand in a file of synonyms"},
        {{{"name_de", "end"}}, "cannot stand in a file of synonyms"},
        {{{"name_de", "but-an"}}, "\"Butan\" leads to 74-98-6 too"},
        {{{"cas", "106-97-8"}}, "line 3 (106-97-8): the CAS number stands in line 2 already"},
    };
    for (const auto& [change, reason] : bad) {
        Fields row = propane;
        for (const auto& [column, value] : change) row[column] = value;
        const StarterDatabase result = build({row, butane});
        EXPECT_TRUE(result.database.empty() && result.synonyms.empty()) << reason;
        EXPECT_THAT(result.faults, ::testing::Contains(HasSubstr(reason)));
    }
    EXPECT_THAT(build({propane}, "cas,synonyms\n106-97-8,x\n").faults.at(0), HasSubstr("lacks"));
    EXPECT_THAT(build({propane}, "cas,names\n").faults.at(0), HasSubstr("column \"synonyms\" is missing"));
    EXPECT_THAT(build({}).faults, ::testing::Contains(HasSubstr("1 to 32767 rows are needed, there are 0")));
}

}  // namespace
}  // namespace quom
