// One report as text and as JSON.
#include "console/output.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

namespace quom::console {
namespace {

TEST(Output, numbers_for_people) {
    const struct {
        double x;
        const char* text;
    } cases[] = {{0, "0"},
                 {300, "300"},
                 {-0.5, "-0.5"},
                 {101.325, "101.325"},
                 {1.0 / 3.0, "0.3333333"},
                 {123456.789, "123456.8"},
                 {9999999.7, "10000000"},
                 {1e7, "1E+07"},
                 {-1.23456789e-5, "-1.234568E-05"},
                 {0.00012345678, "0.0001234568"},
                 {6.02214076e26, "6.022141E+26"}};
    for (const auto& c : cases) EXPECT_EQ(shown(c.x), c.text);
}

Report sample() {
    Report report;
    report.command = "sample";
    report.title = "Title";
    report.sections.emplace_back(
        Block{"state",
              "State",
              {{"T", "temperature", 300.0, "K", "given"},
               {"p", "p", 1.0 / 3.0, "kPa", ""},
               {"phase", "Phase ä", "L", "", ""},
               {"gap", "gap", std::numeric_limits<double>::quiet_NaN(), "K", "never"},
               {"hidden", "", true, "", ""}},
              Layout::list});
    report.sections.emplace_back(
        Table{"routes",
              "",
              {{"code", "code", ""}, {"on", "on", ""}, {"p", "p", "kPa"}, {"why", "", ""}},
              {{1, true, 12.5, {}}, {10, false, {}, "no solution"}}});
    report.sections.emplace_back(Grid{
        "functions", "", {"L", "V"}, {{"h", "h", "kJ/kmol", {{}, -1e10}}, {"s", "entropy", "", {{}, 2}}}});
    report.notes.emplace_back("a remark");
    return report;
}

TEST(Output, text_is_aligned) {
    EXPECT_EQ(to_text(sample()),
              "Title\n"
              "\n"
              "State\n"
              "  temperature        300 K  given\n"
              "  p            0.3333333 kPa\n"
              "  Phase ä      L\n"
              "  gap                  -\n"
              "\n"
              "  code  on      p\n"
              "              kPa\n"
              "     1  yes  12.5\n"
              "    10          -  no solution\n"
              "\n"
              "                V\n"
              "  h        -1E+10  kJ/kmol\n"
              "  entropy       2\n"
              "\n"
              "Note: a remark\n");
}

TEST(Output, json_reads_back) {
    const auto json = nlohmann::json::parse(to_json(sample()));
    EXPECT_EQ(json["command"], "sample");
    EXPECT_TRUE(json["message"].is_null());
    EXPECT_EQ(json["state"]["p"].get<double>(), 1.0 / 3.0);
    EXPECT_TRUE(json["state"]["gap"].is_null());
    EXPECT_EQ(json["state"]["hidden"], true);
    EXPECT_EQ(json["routes"][1]["code"], 10);
    EXPECT_EQ(json["routes"][1]["on"], false);
    EXPECT_TRUE(json["functions"]["h"]["L"].is_null());
    EXPECT_EQ(json["functions"]["h"]["V"], -1e10);
    EXPECT_EQ(json["units"]["functions"]["h"], "kJ/kmol");
    EXPECT_EQ(json["notes"][0], "a remark");
}

TEST(Output, long_remarks_are_broken_at_blanks) {
    Report report;
    std::string& note = report.notes.emplace_back();
    for (int i = 0; i < 40; ++i) note += "remark ";
    const std::string text = to_text(report);
    EXPECT_THAT(text, ::testing::StartsWith("Note: remark remark"));
    EXPECT_THAT(text, ::testing::HasSubstr(" remark\nremark "));
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3);
}

}  // namespace
}  // namespace quom::console
