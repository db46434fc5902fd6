// The tool behind the starter database refuses a row that breaks a rule, and says which and why.
#include "substance/starter_database.h"

#include <gtest/gtest.h>

#include "substance_support.h"

namespace quom {
namespace {

const char* const Synonyms = "cas,name_en,name_de,synonyms\n74-98-6,Propane,Propan,R290|n-Propan\n";
const char* const Header =
    "cas,formula,name_en,name_de,structure,M,Tcr,pcr,rhocr,omega,Tnb,rhoL_A,rhoL_B,rhoL_C,rhoL_D,rhoL_E,"
    "rhoL_F,rhoL_G,rhoL_Tcr,rhoL_TLo,rhoL_THi";

std::string tail_of_header() {
    const std::string all = test::bytes_of(std::string(QUOM_TEST_DATA) + "/../data/substances.csv");
    const std::string first = all.substr(0, all.find('\n'));
    EXPECT_TRUE(first.starts_with(Header)) << first.substr(0, 200);
    return first.substr(std::string(Header).size());
}

StarterDatabase build(const std::string& row) {
    const std::string tail = tail_of_header();
    const std::string blanks(static_cast<std::size_t>(std::count(tail.begin(), tail.end(), ',')), ',');
    const std::string table = std::string(Header) + tail + "\n" + row + blanks + "\n";
    return build_starter_database({.substances = table, .synonyms = Synonyms, .date = "01.01.2026"});
}

TEST(StarterDatabase, RefusesWhatBreaksARule) {
    const std::string good =
        "74-98-6,C3H8,Propane,Propan,CH3-CH2-CH3,44.0956,369.89,4251.2,220,0.1521,231.036";
    const std::string density = ",0,60.6,0.276,0.287,0,0,0,369.89,86,369";
    const std::string none = ",,,,,,,,,,";
    const StarterDatabase fine = build(good + density);
    EXPECT_TRUE(fine.faults.empty()) << fine.faults.front();
    EXPECT_EQ(fine.database.size(), 2u * 950u);
    const struct {
        std::string row, reason;
    } bad[] = {
        {"74-98-6,C3H8,Propane,Propan,x,,369.89,4251.2,220,0.1521,231.036" + none, "M"},
        {"74-98-6,C3H8,Propane,Propan,x,46.1,369.89,4251.2,220,0.1521,231.036" + none, "C3H8"},
        {"74-98-6,C3Xx8,Propane,Propan,x,44.0956,369.89,4251.2,220,0.1521,231.036" + none, "C3Xx8"},
        {"74-98-5,C3H8,Propane,Propan,x,44.0956,369.89,4251.2,220,0.1521,231.036" + none, "74-98-5"},
        {good + ",0,60.6,0.276,0.287,0,0,0,369.89,86,40000", "40000"},
        {good + ",0,60.6,0.276,0.287,0,0,0,369.89,369,86", "369"},
        {good + ",0,60.6,0.276,0.287,0,0,0,369.89,86.5,369", "86.5"},
        {good + ",0,sixty,0.276,0.287,0,0,0,369.89,86,369", "sixty"},
        {"74-98-6,C3H8,Propane \xE2\x99\xA5,Propan,x,44.0956,369.89,4251.2,220,0.1521,231.036" + none, ""},
        {"74-98-6,C3H8," + std::string(61, 'x') + ",Propan,x,44.0956,369.89,4251.2,220,0.1521,231.036" + none,
         ""},
        {good + density + std::string("\n") + good + density, "74-98-6"},  // the same substance twice
    };
    for (const auto& row : bad) {
        const StarterDatabase result = build(row.row);
        ASSERT_FALSE(result.faults.empty()) << row.row;
        EXPECT_TRUE(result.database.empty() && result.synonyms.empty());
        EXPECT_NE(result.faults.front().find("ine "), std::string::npos) << result.faults.front();
        EXPECT_NE(result.faults.front().find(row.reason), std::string::npos) << result.faults.front();
    }
}

}  // namespace
}  // namespace quom
