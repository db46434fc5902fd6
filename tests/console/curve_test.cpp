// curve and kinds over the starter database.
#include <gmock/gmock.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>

#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

struct CurveCsv {
    std::vector<std::string> head;   // lines of comments without "# "
    std::vector<std::string> names;  // of the columns
    std::vector<std::vector<double>> rows;
    std::string comment(const std::string& name) const {
        for (const std::string& line : head)
            if (line.starts_with(name + ": ")) return line.substr(name.size() + 2);
        return {};
    }
};
std::vector<std::string> cells(const std::string& line) {
    std::vector<std::string> found;
    std::istringstream in(line);
    for (std::string cell; std::getline(in, cell, ';');) found.push_back(cell);
    return found;
}
CurveCsv csv(const std::string& line) {
    const CommandRun run = quomc(line);
    EXPECT_EQ(run.status, 0) << line << "\n" << run.err;
    CurveCsv table;
    std::istringstream in(run.out);
    for (std::string text; std::getline(in, text);) {
        if (text.starts_with("# ")) {
            table.head.push_back(text.substr(2));
        } else if (table.names.empty()) {
            table.names = cells(text);
        } else {
            std::vector<double>& row = table.rows.emplace_back();
            for (const std::string& cell : cells(text)) row.push_back(std::stod(cell));
            EXPECT_EQ(row.size(), table.names.size()) << line;
        }
    }
    return table;
}

using Names = std::vector<std::string>;

TEST(Curve, table_names_what_it_shows) {
    const CurveCsv isotherm = csv("curve propane --kind 1 --T 340 --x 0.05:2 --y 0:5000");
    EXPECT_EQ(isotherm.comment("diagram"), "1, p - v (isothermal section)");
    EXPECT_EQ(isotherm.comment("substance"), "Propane  C3H8  74-98-6");
    EXPECT_THAT(isotherm.comment("models"), HasSubstr("Peng / Robinson, GLOBAL concept"));
    EXPECT_EQ(isotherm.comment("parameter"), "T = 340.00 K");
    EXPECT_EQ(isotherm.comment("x"), "v / (m^3/kmol)");
    EXPECT_EQ(isotherm.comment("y"), "p / kPa");
    EXPECT_EQ(isotherm.comment("status"), "0");
    EXPECT_EQ(isotherm.comment("points"), std::to_string(isotherm.rows.size()));
    EXPECT_EQ(isotherm.names, (Names{"v/(m^3/kmol)", "p/kPa", "T/K"}));
    EXPECT_EQ(csv("curve propane --kind 1 --T 340 --volume 2").names, (Names{"v/v(cr)", "p/p(cr)", "T/K"}));
    EXPECT_EQ(csv("curve propane --kind 1 --T 340 --volume 2").comment("parameter"), "T = 0.9192");
    EXPECT_EQ(csv("curve propane --kind 15 --p 500 --energy 3").names, (Names{"T/K", "h/(kJ/kg)", "p/kPa"}));
    EXPECT_EQ(csv("curve propane --kind 156 --T 400").names,
              (Names{"v/(m^3/kmol)", "a/(kJ/kmol)", "p/kPa", "T/K"}));
    EXPECT_EQ(csv("curve propane --kind 300").names, (Names{"T/K", "rho/(kg/m^3)"}));
    EXPECT_EQ(csv("curve propane --kind 10").names, (Names{"1/T/(1/K)", "ln(p/kPa)"}));
}

// Figures of other commands, which go another way.
TEST(Curve, meets_what_other_commands_calculate) {
    const double pLV = at(row(found("saturation propane --T 340")["densities"], "name", "EOS"), "/p");
    const CurveCsv isotherm = csv("curve propane --kind 1 --T 340 --x 0.05:2 --y 0:5000");
    EXPECT_EQ(
        std::ranges::count_if(isotherm.rows, [&](const auto& r) { return std::fabs(r[1] / pLV - 1) < 1e-6; }),
        2)
        << "the ends of the flat part at " << pLV;
    const double v = isotherm.rows.back()[0], M = 44.0956;
    EXPECT_NEAR(
        at(found("state propane --T 340 --rho " + number(M / v)), "/state/p") / isotherm.rows.back()[1], 1,
        1e-5);

    const CurveCsv enthalpy = csv("curve propane --kind 150 --T 400 --x 100:8000 --y -80000:80000 --dens 10");
    for (const auto& point : enthalpy.rows) {
        const auto state = found("state propane --T 400 --p " + number(point[0]))["functions"];
        const double h =
            state.contains("h_V") && state["h_V"].is_number() ? at(state, "/h_V") : at(state, "/h_L");
        EXPECT_NEAR(point[1], h, 0.02) << point[0];
    }
    const CurveCsv density = csv("curve propane --kind 300 --x 299:301 --dens 10");
    for (const auto& point : density.rows)
        EXPECT_NEAR(point[1], at(found("calc propane --mode 14 --T " + number(point[0])), "/slots/rho_L"),
                    1e-3);
}

TEST(Curve, json_is_the_table) {
    for (const std::string& line : {std::string("curve propane --kind 3 --p 2000"),
                                    std::string("curve propane --kind 156 --T 300 --energy 1"),
                                    std::string("curve propane --kind 300 --volume 2")}) {
        const auto json = found(line);
        const CurveCsv table = csv(line);
        ASSERT_EQ(json["points"].size(), table.rows.size()) << line;
        EXPECT_EQ(json["header"]["n"], table.rows.size());
        const char* const keys[] = {"x", "y", "par", "tag"};
        for (std::size_t i = 0; i < table.rows.size(); ++i) {
            for (std::size_t k = 0; k < 4; ++k) {
                const auto& value = json["points"][i][keys[k]];
                if (k < table.names.size())
                    EXPECT_EQ(value.get<double>(), table.rows[i][k]);
                else
                    EXPECT_TRUE(value.is_null());
            }
        }
    }
    const auto json = found("curve propane --kind 3 --p 2000");
    EXPECT_EQ(json["header"]["Par"], -2);
    EXPECT_EQ(json["axes"][0]["text"], "v / (m^3/kmol)");
    EXPECT_EQ(json["axes"][1]["unit"], "K");
    EXPECT_EQ(json["axes"][2]["quantity"], "p");
    EXPECT_TRUE(json["axes"][3]["unit"].is_null());
    EXPECT_NEAR(at(json, "/ranges/YMax"), 1.1 * 369.89, 1e-3);
    EXPECT_EQ(json["curve"]["p"], 2000.0);
    EXPECT_TRUE(json["curve"]["T"].is_null());
}

TEST(Curve, converts_ranges_points_and_parameters) {
    const std::string own = "curve propane --kind 3 --p 2000 --x 0.05:1 --y 293.15:393.15";
    const std::string other =
        "curve propane --kind 3 --p 20bar --x 50cm3/mol:1000cm3/mol --y 20C:120C --units T=C,p=MPa,v=cm3/mol";
    const auto a = found(own), b = found(other);
    ASSERT_EQ(a["points"].size(), b["points"].size());
    for (std::size_t i = 0; i < a["points"].size(); ++i) {
        const auto &x = a["points"][i], &y = b["points"][i];
        EXPECT_NEAR(at(y, "/x"), 1000 * at(x, "/x"), 1e-4 * at(y, "/x"));
        EXPECT_NEAR(at(y, "/y"), at(x, "/y") - 273.15, 1e-3);
        EXPECT_NEAR(at(y, "/par"), 2, 1e-9);
    }
    EXPECT_EQ(b["axes"][1]["text"], "T/°C");
    EXPECT_NEAR(at(b, "/ranges/YMin"), 20, 1e-4);
    // A number alone is in the unit of the axis.
    const auto c =
        found("curve propane --kind 3 --p 2000 --x 50:1000 --y 20:120 --units T=C,p=MPa,v=cm3/mol");
    EXPECT_EQ(c["points"].size(), b["points"].size());
}

TEST(Curve, draws_loops_tie_lines_fractions_and_processes) {
    const CurveCsv loop = csv("curve propane --kind 1 --T 340 --s-curve --x 0.05:2 --y 0:5000");
    EXPECT_EQ(loop.comment("drawn"), "metastable and unstable loop");
    const CurveCsv tie = csv("curve propane --kind 3 --p 2000 --tie-line");
    ASSERT_EQ(tie.rows.size(), 51u);
    EXPECT_DOUBLE_EQ(tie.rows.front()[1], tie.rows.back()[1]);  // at T(LV)
    EXPECT_NEAR(tie.rows.front()[1], at(found("calc propane --mode 5 --p 2000"), "/slots/T"), 1e-3);
    const CurveCsv liquid = csv("curve propane --kind 90"),
                   vapor = csv("curve propane --kind 90 --vapor-fraction 1");
    EXPECT_EQ(vapor.comment("vapor fraction"), "1");
    EXPECT_LT(liquid.rows.back()[1] + 15000, vapor.rows.back()[1]);  // delta(LV)h of the coldest point
    const auto throttle =
        found("curve propane --kind 15 --process isenthalpe --T1 400 --p1 2000 --p2 500 --dens 50");
    const double h = at(throttle, "/points/0/y");
    for (const auto& point : throttle["points"]) EXPECT_NEAR(at(point, "/y"), h, 0.5);
    const double T = at(found("iso propane --p 500 --hold h --T0 400 --p0 2000"), "/state/T");
    EXPECT_NEAR(at(throttle, "/curve/p_end"), 500, 20);
    EXPECT_NEAR(at(throttle, "/curve/T_end"), T, 1.0);
}

struct Refusal {
    const char* line;
    int status;
    const char* says;
};
TEST(Curve, refuses_with_a_sentence) {
    const Refusal cases[] = {
        {"curve propane", 2, "--kind"},
        {"curve propane --kind 44", 2, "\"44\" is no kind of diagram; \"quomc kinds\" lists them."},
        {"curve propane --kind 1.5", 2, "no kind"},
        {"curve propane --kind x", 2, "no kind"},
        {"curve propane --kind 202", 2, "process line"},
        {"curve propane --kind 1 --p 500", 2,
         "kind 1 takes no --p; it is an isothermal section and takes --T."},
        {"curve propane --kind 5 --T 300", 2, "takes --v"},
        {"curve propane --kind 9 --T 300", 2, "no section and takes no parameter"},
        {"curve propane --kind 1 --tie-line", 2, "give --T"},
        {"curve propane --kind 1 --T -5", 2, "above 0"},
        {"curve propane --kind 1 --from 1 --to 2", 2, "function pairs"},
        {"curve propane --kind 107 --T 400 --from 100", 2, "belong together"},
        {"curve propane --kind 107 --T 400 --from 100 --to 100", 2,
         "specification of the range is not valid"},
        {"curve propane --kind 107 --T 400 --from 100K --to 200", 2, "--from, --to: p has no unit"},
        {"curve propane --kind 1 --vapor-fraction 0.5", 2, "no vapor fraction"},
        {"curve propane --kind 6 --vapor-fraction 1.5", 2, "between 0"},
        {"curve propane --kind 6 --s-curve", 2, "has no loop"},
        {"curve propane --kind 6 --tie-line", 2, "no tie lines"},
        {"curve propane --kind 1 --T 340 --tie-line --s-curve", 2, "one of them"},
        {"curve propane --kind 1 --x 5", 2, "A:B"},
        {"curve propane --kind 1 --x 5:5", 2, "smaller than the upper limit"},
        {"curve propane --kind 1 --x 1K:2K", 2, "--x: v has no unit"},
        {"curve propane --kind 10 --x 1K:2K", 2, "takes no unit"},
        {"curve propane --kind 1 --dens 5", 2, "--dens"},
        {"curve propane --kind 1 --triple-rule maybe", 2, "--triple-rule"},
        {"curve propane --kind 15 --process melt", 2, "no line"},
        {"curve propane --kind 15 --T2 300", 2, "add --process"},
        {"curve propane --kind 15 --process isotherm --T1 300 --p1 100 --T2 400", 2, "runs to --p2"},
        {"curve propane --kind 15 --process isentrope --T1 300 --p1 100", 2, "one of --T2 and --p2"},
        {"curve propane --kind 15 --p 500 --process isobar --T1 300 --p1 100 --T2 400", 2, "start and end"},
        {"curve propane --kind 15 --process straight --T1 300", 2, "--x1 --y1"},
        {"curve propane --kind 10 --process isotherm --T1 300 --p1 100 --p2 200", 1,
         "not possible in this diagram"},
        {"curve propane --kind 1 --T 400 --tie-line", 1, "only possible in two-phase area V-L (T < T(cr))"},
        {"curve propane --kind 3 --p 5000 --s-curve", 1, "only possible in two-phase area V-L (p < p(cr))"},
        {"curve propane --kind 1 --T 340 --tie-line --eos 16", 1, "only possible using a cubic EOS"},
        {"curve propane --kind 6 --eos 16", 1,
         "Phase equlilibria calculations are only possible using a cubic EOS"},
        {"curve propane --kind 105 --eos 16", 1, "Inversion curve only possible with cubic EOS"},
        {"curve propane --kind 11", 1, "change to PARTIAL concept"},
        {"curve propane --kind 310", 1, "no function rho(S)=Fu(T) available"},
        {"curve qqqqqq --kind 1", 1, "qqqqqq"},
        {"curve propane --kind 1 --db nowhere.q07", 3, "nowhere.q07"},
    };
    for (const Refusal& c : cases) {
        const CommandRun run = quomc(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << "\n" << run.out << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says)) << c.line;
        EXPECT_EQ(run.out, "") << c.line;
    }
}

// Every kind of the list can be asked for; what it lacks is told in a sentence.
TEST(Curve, of_every_kind) {
    const auto kinds = found("kinds")["kinds"];
    EXPECT_GT(kinds.size(), 85u);
    for (const auto& kind : kinds) {
        const std::string option = kind["parameter"].is_null() ? "" : kind["parameter"].get<std::string>();
        const std::string value = option == "--T"   ? " --T 400"
                                  : option == "--p" ? " --p 500"
                                  : option == "--v" ? " --v 0.5"
                                                    : "";
        const std::string line = "curve propane --dens 50 --concept partial --kind " +
                                 std::to_string(kind["kind"].get<int>()) + value;
        const CommandRun run = quomc(line + " --json");
        EXPECT_TRUE(run.status == 0 || (run.status == 1 && kind["section"] == "database")) << line << run.err;
        if (run.status != 0) continue;
        const auto json = run.json();
        EXPECT_GT(json["points"].size(), 3u) << line;
        EXPECT_FALSE(json["curve"]["outside"].get<bool>()) << line;
    }
}

TEST(Curve, from_the_shell) {
    if (test::console().empty()) GTEST_SKIP();
    const std::string call =
        test::console() + " --program-folder " + test::starter_data() + " curve propane --kind 9 2>/dev/null";
    std::FILE* const pipe = popen(call.c_str(), "r");
    ASSERT_NE(pipe, nullptr);
    std::string out;
    std::array<char, 4096> block;
    while (const std::size_t n = std::fread(block.data(), 1, block.size(), pipe)) out.append(block.data(), n);
    EXPECT_EQ(WEXITSTATUS(pclose(pipe)), 0);
    EXPECT_TRUE(out.starts_with("# diagram: 9, Vapor pressure p(LV):  p(LV) vs. T\n"));
    EXPECT_THAT(out, HasSubstr("\nT/K;p/kPa\n"));
}

}  // namespace
}  // namespace quom
