// The file of a state chart: what comes back draws the same picture, and what is refused.
#include "diagrams/chart_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "chart_fixture.h"
#include "diagrams/chart_labels.h"
#include "diagrams/chart_texts.h"

namespace quom {
namespace {

using test::chart_kinds;
using ::testing::HasSubstr;
using Json = nlohmann::json;

ChartFile chart_of(ChartKind kind, const std::string& units = "T=C,p=bar") {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    ChartOptions options;
    options.units = parse_units(units, fluid->M);
    options.reference = ChartReference::liquid_0C;
    return {make_state_chart(*fluid, kind, options), true};
}

// Everything that a picture takes from a chart, as text.
std::string drawn(const StateChart& chart) {
    std::ostringstream out;
    out.precision(17);
    out << chart.header << chart.footer << chart.x.text << chart.y.text << chart.x.major << chart.y.minor
        << chart.x.log << chart.y.log;
    for (const LegendRow& row : chart_legend(chart)) out << static_cast<int>(row.family) << row.text;
    const auto measure = [](const std::string& text) {
        return TextSize{6.0 * static_cast<double>(text.size()), 12.0};
    };
    const LabelInput input = chart_label_input(chart, 1208, 786, measure);
    for (const LabelLine& line : input.lines) {
        out << '\n' << line.family << line.keep_clear << line.text << line.long_text << line.rule.target;
        for (std::size_t i = 0; i < line.points.size(); ++i)
            out << ' ' << line.points[i].x << ',' << line.points[i].y << ',' << line.fraction[i];
    }
    out << input.blocked.front().centre.x << ' ' << input.blocked.front().centre.y;
    return out.str();
}

TEST(ChartFile, what_comes_back_draws_the_same) {
    for (const ChartKind kind : chart_kinds) {
        const ChartFile file = chart_of(kind);
        ASSERT_TRUE(file.chart.exists());
        const std::string bytes = chart_bytes(file);
        const ChartRead back = read_chart(bytes, "c.json");
        ASSERT_TRUE(back.file) << back.fault;
        EXPECT_TRUE(back.file->black);
        EXPECT_EQ(back.file->chart.reference, ChartReference::liquid_0C);
        EXPECT_EQ(drawn(back.file->chart), drawn(file.chart));
        EXPECT_EQ(chart_bytes(*back.file), bytes);
    }
}

// Lists of the states of a line, in shown units.
TEST(ChartFile, states_stand_in_the_units_of_the_chart) {
    const ChartFile file = chart_of(ChartKind::log_ph);
    const Json root = Json::parse(chart_bytes(file));
    EXPECT_EQ(root["units"]["T"], "°C");
    // 369.83 K, 42.48 bar (Younglove and Ely 1987); other sources differ by so much.
    EXPECT_NEAR(root["critical_point"]["T"].get<double>(), 369.83 - 273.15, 0.1);
    EXPECT_NEAR(root["critical_point"]["p"].get<double>(), 42.48, 0.05);
    std::size_t isotherms = 0;
    for (const Json& line : root["lines"]) {
        const Json& states = line["states"];
        if (line["family"] != "T") continue;
        ++isotherms;
        for (std::size_t i = 0; i < states["T"].size(); ++i) {
            if (states["T"][i].is_null()) continue;
            EXPECT_NEAR(states["T"][i].get<double>(), line["value"].get<double>(), 1e-9);
            EXPECT_GT(states["v"][i].get<double>(), 0.001);
        }
    }
    EXPECT_GE(isotherms, 8U);
}

TEST(ChartFile, faults_name_the_field) {
    const Json good = Json::parse(chart_bytes(chart_of(ChartKind::Ts)));
    ASSERT_TRUE(read_chart(good.dump(), "c.json").file);
    struct Case {
        const char* pointer;
        Json value;  // discarded: the field is taken out
        const char* said;
    };
    const Json gone(Json::value_t::discarded);
    const Case cases[] = {
        {"/format", "QUOM-OC2", "QUOM-CHART"},
        {"/version", 2, "version"},
        {"/kind", "ph", "axes: are not those"},
        {"/black", gone, "black: is missing"},
        {"/glow", 1, "glow: is no field"},
        {"/axes/x/high", -1e9, "axes.x: low must be below high"},
        {"/axes/x/low", -1e308, "axes.x.major: is no step"},
        {"/axes/y/minor", 0, "axes.y.minor: is no step"},
        {"/axes/y/log", true, "axes.y.low: must be above 0"},
        {"/units/T", 7, "units.T: must be a text"},
        {"/header", std::string(2000, 'x'), "header: is too long"},
        {"/critical_point/h", nullptr, "critical_point.h: must be a number"},
        {"/legend/0/text", "saturated", "legend: is not that of the lines"},
        {"/lines/0/family", "w", "lines[1].family: must be one of"},
        {"/lines/2/x/0", 1e12, "lines[3]: vertex 1 lies outside"},
        {"/lines/2/x", Json::array(), "lines[3]: the lists"},
        {"/lines/2/y/0", nullptr, "lines[3]: vertex 1 lies outside"},
        {"/lines/0/fraction/0", 1.5, "lines[1].fraction: must lie between"},
        {"/lines/1/states/h/0", nullptr, "lines[2].states: state 1 is not whole"},
    };
    for (const Case& c : cases) {
        Json bad = good;
        const Json::json_pointer at(c.pointer);
        if (c.value.is_discarded()) {
            bad.at(at.parent_pointer()).erase(at.back());
        } else {
            bad[at] = c.value;
        }
        const ChartRead read = read_chart(bad.dump(), "c.json");
        EXPECT_FALSE(read.file) << c.pointer;
        EXPECT_THAT(read.fault, HasSubstr(c.said)) << c.pointer;
        EXPECT_TRUE(read.fault.starts_with("\"c.json\": ")) << read.fault;
    }
}

}  // namespace
}  // namespace quom
