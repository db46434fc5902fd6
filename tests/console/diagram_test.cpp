// diagram and chart over the starter database, through files.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "base/files.h"
#include "console/curve_list.h"
#include "diagrams/chart_file.h"
#include "diagrams/diagram_file.h"
#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class Drawn : public ::testing::Test {
 protected:
    Drawn()
        : folder_(std::filesystem::path(::testing::TempDir()) /
                  ("quomc_drawn_" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder_);
    }
    ~Drawn() override { std::filesystem::remove_all(folder_); }
    std::string path(const std::string& name) const { return (folder_ / name).string(); }
    bool there(const std::string& name) const { return std::filesystem::exists(path(name)); }
    std::string bytes(const std::string& name) const { return read_file(path(name)).bytes.value_or(""); }
    CommandRun run(const std::string& line, const std::string& name) const {
        return quomc(line + " --out " + path(name));
    }

    // Rows of a CSV file as texts, the lines of the head aside: first the names of the columns, then units.
    std::vector<std::vector<std::string>> rows(const std::string& name) const {
        std::vector<std::vector<std::string>> found;
        std::istringstream in(bytes(name));
        for (std::string line; std::getline(in, line);) {
            if (line.starts_with("#")) continue;
            if (line.ends_with('\r')) line.pop_back();
            std::vector<std::string>& row = found.emplace_back();
            std::istringstream cells(line);
            for (std::string cell; std::getline(cells, cell, ';');) row.push_back(cell);
            if (found.size() > 1) row.resize(found.front().size());
        }
        return found;
    }
    std::filesystem::path folder_;
};

std::string listed(const std::string& text) {
    const CurveList list = read_curve_list(text);
    std::ostringstream out;
    for (const CurveValue& v : list.values) out << v.symbol << '=' << v.value.number << v.value.unit << ' ';
    return list.fault.empty() ? out.str() : list.fault;
}

TEST(CurveList, groups_units_and_ranges) {
    const std::pair<const char*, const char*> cases[] = {
        {"T=300,320,340", "T=300 T=320 T=340 "},
        {"T = 300 : 400 : 50", "T=300 T=350 T=400 "},
        {"T=0.1:0.4:0.1", "T=0.1 T=0.2 T=0.3 T=0.4 "},
        {"T=400:300:-40", "T=400 T=360 T=320 "},
        {"T=300:300:1", "T=300 "},
        {"T=27degC,50 degC,300", "T=27degC T=50degC T=300 "},
        {"T/degC=27,300K", "T=27degC T=300K "},
        {"v/(m^3/kg)=0.1", "v=0.1m^3/kg "},
        {"p=1:3:1bar;p/MPa=1", "p=1bar p=2bar p=3bar p=1MPa "},
        {"T=1:24:1",
         "T=1 T=2 T=3 T=4 T=5 T=6 T=7 T=8 T=9 T=10 T=11 T=12 T=13 T=14 T=15 T=16 T=17 T=18 T=19 "
         "T=20 T=21 T=22 T=23 T=24 "},
    };
    for (const auto& [text, values] : cases) EXPECT_EQ(listed(text), values) << text;
    const std::pair<const char*, const char*> faults[] = {
        {"", "no list of curves"},         {"300,320", "no list of curves"},
        {"T=", "no value of T"},           {"T=300,,320", "no value of T"},
        {"T=300;", "no list of curves"},   {"T=a", "no value of T"},
        {"T=300:400", "no value of T"},    {"T=300:400:0", "does not lead"},
        {"T=300:400:-5", "does not lead"}, {"T=1:2:3:4", "no value of T"},
        {"T=1:25:1", "24 curves"},         {"T=1:1e300:1e-300", "does not lead"},
        {"T=1C:300K:5", "two units"},      {"T=1:x:5", "no FROM:TO:STEP"},
        {"T=nan", "no value of T"},        {"T=1:20:1;T=1:5:1", "24 curves"}};
    for (const auto& [text, fault] : faults) EXPECT_THAT(listed(text), HasSubstr(fault)) << text;
}

// Points of the curves against states at the same T and p or v, which do not come from the drawing of curves.
TEST_F(Drawn, csv_holds_states_of_the_isotherms) {
    const CommandRun done =
        run("diagram propane --kind 1 --curves T=300,127degC --x 0.05:4 --y 0:6000 --coexistence", "pv.csv");
    ASSERT_EQ(done.status, 0) << done.err;
    const auto table = rows("pv.csv");
    ASSERT_GT(table.size(), 100u);
    EXPECT_THAT(std::vector<std::string>(table[0].begin(), table[0].begin() + 5),
                ElementsAre("C.1 v", "C.1 p", "C.1 T", "C.2 v", "C.2 p"));
    EXPECT_EQ(table[1][0], "m^3/kmol");
    int compared = 0;
    for (std::size_t i = 10; i < table.size(); i += 60) {
        for (const auto& [column, T] : {std::pair<std::size_t, double>(0, 300), {3, 400.15}}) {
            if (table[i][column].empty()) continue;
            const double v = std::stod(table[i][column]), p = std::stod(table[i][column + 1]);
            const double rho = 44.097 / v;  // M of propane
            const auto state = found("state propane --T " + number(T) + " --rho " + number(rho));
            EXPECT_NEAR(p, at(state, "/state/p"), 2e-3 * p) << T << " K, " << v;
            ++compared;
        }
    }
    EXPECT_GT(compared, 8);
    EXPECT_THAT(bytes("pv.csv"), HasSubstr("# substance: Propane"));
    EXPECT_THAT(bytes("pv.csv"), HasSubstr("# C.1: 300.00 K"));
}

TEST_F(Drawn, sheet_has_all_that_was_asked_for) {
    const CommandRun done =
        run("diagram propane --kind 1 --curves T=300,340 --coexistence --tie-line --s-curve --x 0.05:2 --y "
            "0:6000 "
            "--marks p,crit,crit-calc,v --log-x --legend --black --interchange --title A~sheet",
            "all.oc2");
    ASSERT_EQ(done.status, 0) << done.err;
    const Oc2Read read = load_oc2(path("all.oc2"), GraphDocument());
    ASSERT_TRUE(read.sheet) << read.fault;
    const GraphDocument& sheet = *read.sheet;
    EXPECT_EQ(CurveCount(sheet), 6) << "two isotherms, both branches, tie line, loop";
    EXPECT_THAT(sheet.curve(1).series.label.text, StartsWith("C.1 300.00 K"));
    EXPECT_THAT(sheet.curve(2).series.label.text, StartsWith("C.2 340.00 K"));
    for (const int mark : {+mark_pcr, +mark_crit_measured, +mark_crit_calculated, +mark_vcr})
        EXPECT_TRUE(sheet.mark(mark).shown()) << mark;
    EXPECT_TRUE(sheet.x.log && !sheet.y.log && sheet.legend.visible && sheet.colors.black &&
                sheet.Interchanged);
    EXPECT_EQ(sheet.header.text, "A sheet");
    EXPECT_EQ(sheet.diagram.range, (CurveRange{.XMin = 0.05F, .YMin = 0, .XMax = 2, .YMax = 6000}));
    // The tie line lies at p(LV) of the last curve.
    const double p = at(found("saturation propane --T 340"), "/state/p");
    for (int slot = 1; slot <= 6; ++slot) {
        const auto& points = sheet.curve(slot).series.points;
        if (points.size() == 2) {
            EXPECT_NEAR(points[0].Y, p, 1e-4 * p);
        }
    }
}

TEST_F(Drawn, json_and_curve_agree) {
    ASSERT_EQ(run("diagram water --kind 13", "hlv.json").status, 0);
    const auto drawn = nlohmann::json::parse(bytes("hlv.json"));
    const auto curve = found("curve water --kind 13");
    ASSERT_EQ(drawn["sheet_points"].size(), curve["points"].size());
    for (std::size_t i = 0; i < curve["points"].size(); ++i)
        ASSERT_EQ(drawn["sheet_points"][i]["y"], curve["points"][i]["y"]) << i;
    EXPECT_EQ(drawn["diagram"]["file"], path("hlv.json"));
}

TEST_F(Drawn, what_cannot_be_drawn) {
    const CommandRun some = run("diagram propane --kind 1 --curves T=50,300", "some.csv");
    EXPECT_EQ(some.status, 0);
    EXPECT_THAT(some.err, HasSubstr("The curve T = 50 was not drawn"));
    EXPECT_THAT(bytes("some.csv"), HasSubstr("# C.1: 300.00 K"));
    const CommandRun marks = run("diagram propane --kind 1 --curves T=300 --marks T,p", "marks.csv");
    EXPECT_EQ(marks.status, 0);
    EXPECT_THAT(marks.err, HasSubstr("kind 1 does not show the marks of T"));
    EXPECT_THAT(bytes("marks.csv"), HasSubstr("M.29"));
    struct Case {
        const char* line;
        const char* name;
        int status;
        const char* said;
    };
    const Case cases[] = {
        {"diagram propane --kind 1 --curves T=50", "x.oc2", 1, "The curve T = 50 was not drawn"},
        {"diagram propane --kind 1", "x.oc2", 2, "name its curves by --curves \"T=...\""},
        {"diagram propane --kind 1 --curves p=300", "x.oc2", 2, "not p"},
        {"diagram propane --kind 300 --curves T=300", "x.oc2", 2, "leave out --curves"},
        {"diagram propane --kind 1 --curves T=1:99:1", "x.oc2", 2, "24 curves"},
        {"diagram propane --kind 1 --curves T=300furlong", "x.oc2", 2, "furlong"},
        {"diagram propane --kind 1 --curves T=300 --inversion", "x.oc2", 2,
         "does not show the inversion curve"},
        {"diagram propane --kind 1 --curves T=300 --marks T,q", "x.oc2", 2, "\"q\" is no mark"},
        {"diagram propane --kind 1 --curves T=300 --x 2:2", "x.oc2", 2, "lower limit"},
        {"diagram propane --kind 1 --curves T=300 --units T=C", "x.oc2", 2, "--energy and --volume"},
        {"diagram propane --kind 1 --curves T=300 --points nowhere.BAQ", "x.oc2", 3, "were not loaded"},
        {"diagram propane --kind 1 --curves T=300", "x.gif", 2, "svg, pdf"},
        {"diagram propane --kind 1 --curves T=300", "no/x.oc2", 3, "No such file"},
        {"diagram propane --kind 1 --curves T=300 --size 160", "x.oc2", 2, "160x110 is right"},
        {"diagram propane --kind 1 --curves T=300 --size -1x5", "x.oc2", 2, "160x110 is right"},
        {"diagram argon --kind 1 --eos 0 --curves T=300 --tie-line --dens 20", "x.oc2", 0,
         "tie line was not drawn"},
        {"chart argon --kind ph --eos 16", "x.json", 1, "chart:"},
        {"chart water --kind ph --ref -40C", "x.json", 1, "no saturated liquid at"},
        {"chart water --kind ph --ref 40C", "x.json", 2, "-40C|nbp|triple or 1, 2, 10"},
        {"chart water --kind pv", "x.json", 2, "ph|ts|hs"},
        {"chart water --kind ph --energy 3", "x.json", 2, "--units"},
        {"chart water --kind ph", "x.oc2", 2, "json, csv"},
        {"chart water --kind ph", "no/x.csv", 3, "No such file"},
    };
    for (const Case& c : cases) {
        const CommandRun done = run(c.line, c.name);
        EXPECT_EQ(done.status, c.status) << c.line << "\n" << done.err;
        EXPECT_THAT(done.err, HasSubstr(c.said)) << c.line;
        EXPECT_EQ(there(c.name), c.status == 0) << c.line;
        std::filesystem::remove(path(c.name));
    }
}

// Pictures come from a program that does not lie beside the tests.
TEST_F(Drawn, pictures_need_quom) {
    for (const char* name : {"x.svg", "x.PNG"}) {
        const CommandRun done = run("diagram propane --kind 1 --curves T=300", name);
        EXPECT_EQ(done.status, 3);
        EXPECT_THAT(done.err, HasSubstr("pictures need the program quom beside quomc"));
        EXPECT_FALSE(there(name));
    }
}

// States of a chart against those of "state" with the same reference.
TEST_F(Drawn, chart_csv_holds_states) {
    ASSERT_EQ(run("chart CO2 --kind ph --units T=C,p=bar", "co2.csv").status, 0);
    const auto table = rows("co2.csv");
    EXPECT_THAT(table[0], ElementsAre("line", "part", "family", "value", "T", "p", "v", "h", "s", "x"));
    EXPECT_THAT(table[1], ElementsAre("", "", "", "", "°C", "bar", "m³/kg", "kJ/kg", "kJ/(kg K)", ""));
    int compared = 0;
    for (std::size_t i = 2; i < table.size(); i += 97) {
        const auto& row = table[i];
        if (!row[9].empty()) continue;
        const double T = std::stod(row[4]), p = std::stod(row[5]);
        const auto state =
            found("state CO2 --energy 3 --volume 1 --T " + number(T) + "C --p " + number(p) + "bar");
        // Near the saturation line the phase is open to rounding.
        const bool liquid = state["state"]["phase"] == "L";
        const double v = at(state, liquid ? "/functions/v_L" : "/functions/v_V");
        if (std::abs(std::stod(row[6]) / v - 1) > 1e-5) continue;
        EXPECT_NEAR(std::stod(row[7]), at(state, liquid ? "/functions/h_L" : "/functions/h_V"), 1e-3) << i;
        EXPECT_NEAR(std::stod(row[8]), at(state, liquid ? "/functions/s_L" : "/functions/s_V"), 1e-5) << i;
        ++compared;
    }
    EXPECT_GT(compared, 20);
}

TEST_F(Drawn, chart_file_and_report) {
    for (const auto& [kind, axes] :
         {std::pair("ph", "h / (kJ/kg)"), {"ts", "s / (kJ/(kg K))"}, {"hs", "s / (kJ/(kg K))"}}) {
        const CommandRun done =
            run("chart propane --ref -40C --black --json --kind " + std::string(kind), "c.json");
        ASSERT_EQ(done.status, 0) << done.err;
        const ChartRead read = load_chart(path("c.json"));
        ASSERT_TRUE(read.file) << read.fault;
        EXPECT_TRUE(read.file->black);
        EXPECT_EQ(read.file->chart.x.text, axes);
        EXPECT_EQ(read.file->chart.reference, ChartReference::liquid_minus_40C);
        EXPECT_EQ(done.json()["chart"]["lines"], read.file->chart.lines.size());
    }
}

}  // namespace
}  // namespace quom
