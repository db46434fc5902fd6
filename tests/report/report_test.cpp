// One report as text and as JSON.
#include "report/report.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>

namespace quom {
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
    report.sections.emplace_back(Table{"routes",
                                       "",
                                       {{"code", "code", ""},
                                        {"on", "on", ""},
                                        {"for_programs", "no", "K", Layout::json},
                                        {"p", "p", "kPa"},
                                        {"why", "", ""}},
                                       {{1, true, 7, 12.5, {}}, {10, false, 8, {}, "no solution"}}});
    report.sections.emplace_back(Grid{
        "functions", "", {"L", "V"}, {{"h", "h", "kJ/kmol", {{}, -1e10}}, {"s", "entropy", "", {{}, 2}}}});
    report.notes.emplace_back("a remark");
    report.footer = {"Water, GLOBAL", {{"h", "h", {}, "kJ/kg", ""}, {"v", "v", {}, "m^3/kg", ""}}};
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
              "Note: a remark\n"
              "\n"
              "Water, GLOBAL; h in kJ/kg, v in m^3/kg\n");
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
    EXPECT_TRUE(json["functions"]["h_L"].is_null());
    EXPECT_EQ(json["functions"]["h_V"], -1e10);
    EXPECT_EQ(json["units"]["h_V"], "kJ/kmol");
    EXPECT_EQ(json["units"]["p"], "kPa");
    EXPECT_EQ(json["routes"][0]["for_programs"], 7);
    EXPECT_EQ(json["status"], 0);
    EXPECT_FALSE(json.contains("footer"));
    EXPECT_EQ(json["notes"][0], "a remark");
}

// Every double reads back to itself; what is no number is null.
TEST(Output, numbers_survive_json) {
    constexpr double cases[] = {0.0,
                                1.0 / 3.0,
                                -1e-300,
                                5e-324,
                                1.7976931348623157e308,
                                369.89,
                                4251.2002,
                                0.1 + 0.2,
                                123456789012345678.0,
                                2.2250738585072014e-308};
    Block block{"x", "", {}, Layout::json};
    for (std::size_t i = 0; i < std::size(cases); ++i)
        block.fields.push_back({std::to_string(i), "", cases[i], "", ""});
    block.fields.push_back({"nan", "", std::nan(""), "", ""});
    block.fields.push_back({"inf", "", std::numeric_limits<double>::infinity(), "", ""});
    block.fields.push_back({"minus zero", "", -0.0, "", ""});
    block.fields.push_back({"absent", "", if_present(std::nullopt), "", ""});
    block.fields.push_back({"zero", "", if_present(0.0), "", ""});
    block.fields.push_back({"unknown", "", if_known(0.0), "", ""});
    Report report;
    report.sections.emplace_back(block);
    const std::string text = to_json(report);
    const auto json = nlohmann::json::parse(text)["x"];
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(json[std::to_string(i)].get<double>(), cases[i]) << text;
    for (const char* key : {"nan", "inf", "absent", "unknown"}) EXPECT_TRUE(json[key].is_null()) << key;
    EXPECT_EQ(json["zero"], 0.0);
    EXPECT_EQ(text.find("-0"), std::string::npos) << text;
}

// Words of any length, quotes, line ends and letters outside ASCII leave the columns aligned and JSON
// readable.
TEST(Output, awkward_values_in_tables) {
    Report report;
    report.sections.emplace_back(Table{"t",
                                       "",
                                       {{"name", "näme", ""}, {"x", "x", "m³"}, {"why", "", ""}},
                                       {{"a \"b\" \\", 1e-300, {}},
                                        {"two\nlines", -1e308, "é"},
                                        {"", {}, "\xff"},
                                        {std::string(30, 'w'), 0.0, ""}},
                                       Layout::list});
    report.sections.emplace_back(Table{"empty", "", {{"name", "name", ""}}, {}, Layout::json});
    EXPECT_EQ(to_text(report),
              "  näme                                  x\n"
              "                                       m³\n"
              "  a \"b\" \\                          1E-300\n"
              "  two lines                       -1E+308  é\n"
              "                                        -  \xff\n"
              "  " +
                  std::string(30, 'w') + "        0\n");
    const auto json = nlohmann::json::parse(to_json(report));
    EXPECT_EQ(json["t"][0]["name"], "a \"b\" \\");
    EXPECT_EQ(json["t"][1]["name"], "two\nlines");
    EXPECT_EQ(json["t"][1]["x"], -1e308);
    EXPECT_TRUE(json["t"][2]["x"].is_null());
    EXPECT_EQ(json["t"][3]["x"], 0.0);
    EXPECT_TRUE(json["empty"].is_array());
    EXPECT_TRUE(json["empty"].empty());
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
}  // namespace quom
