// calc, tank and iso over the starter database.
#include <gmock/gmock.h>

#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

TEST(Commands, calc_delivers_slots_by_name) {
    const CommandRun run = quomc("calc propane --mode 4 --T 300 --functions --ext 4 --json");
    ASSERT_EQ(run.status, 0) << run.err;
    const auto json = run.json();
    EXPECT_NEAR(json["slots"]["p"].get<double>(), 997.426, 0.01);
    EXPECT_EQ(json["state"]["phase"], "V+L");
    EXPECT_TRUE(json["slots"]["B"].is_null());
    EXPECT_LT(json["state"]["VRoot1"].get<double>(), json["state"]["VRoot3"].get<double>());
    EXPECT_LT(json["derivatives"]["(dp/dV) at T"]["V"].get<double>(), 0.0);  // mechanically stable
    EXPECT_EQ(json["units"]["slots"]["h(V)"], "kJ/kmol");
}

struct Refusal {
    const char* line;
    int status;
    const char* says;
};
TEST(Commands, say_what_is_wrong) {
    const Refusal cases[] = {
        {"calc propane --mode 3 --T 300", 2, "needs --p [kPa]"},
        {"calc propane --mode 3 --T 300 --p 500 --rho 5", 2, "--rho is no value of mode 3"},
        {"calc propane --mode 12", 2, "process line"},
        {"calc propane --mode 25", 2, "no mode of calculation"},
        {"calc propane --mode 2 --T 300 --rho 500 --eos 16", 1, "possible only using a cubic EOS"},
        {"calc propane --mode 4 --T 500", 1, "T(cr)"},
        {"calc propane --mode 3 --T 300 --p -1", 2, "above 0"},
        {"tank propane --T 300 --V 1", 2, "--m kg or --n kmol"},
        {"tank propane --T 300 --V 1 --m 9000", 1, ""},
        {"iso propane --T 300 --hold h", 2, "--value"},
        {"iso propane --T 300 --p 5 --hold h --value 1", 2, "one of --T and --p"},
        {"iso propane --T 300 --hold x --value 1", 2, "no function"},
        {"iso propane --T 300 --hold v --value 50 --phase L", 1, "No solution found"},
        {"sweep propane --mode 3 --in no_such_file --out -", 3, "Cannot read"},
        {"sweep propane --mode 3 --in - --out -", 3, "no column T, p"},
    };
    for (const Refusal& c : cases) {
        const CommandRun run = quomc(c.line);
        EXPECT_EQ(run.status, c.status) << c.line << "\n" << run.out << run.err;
        EXPECT_THAT(run.err, HasSubstr(c.says)) << c.line;
    }
}

// m and n of a tank, phases that add up, and each phase with the density that it has on the saturation line.
TEST(Commands, tank_balances) {
    const auto json = found("tank propane --T 300 --V 0.1 --n 0.4535601");
    EXPECT_NEAR(at(json, "/contents/V/L") + at(json, "/contents/V/V"), 0.1, 1e-12);
    EXPECT_NEAR(at(json, "/contents/m/L") + at(json, "/contents/m/V"), 20.0, 1e-4);
    EXPECT_NEAR(at(json, "/tank/LPercent"), 100 * at(json, "/contents/V/L") / 0.1, 1e-9);
    EXPECT_NEAR(at(json, "/tank/y"),
                at(json, "/contents/m/V") / at(json, "/contents/m/V") * at(json, "/contents/n/V") / 0.4535601,
                1e-9);
    const auto line = row(found("saturation propane --T 300")["densities"], "name", "EOS");
    EXPECT_NEAR(at(json, "/contents/m/L") / at(json, "/contents/V/L"), at(line, "/rhoL"), 1e-6);
    EXPECT_NEAR(at(json, "/contents/m/V") / at(json, "/contents/V/V"), at(line, "/rhoV"), 1e-6);
    EXPECT_NEAR(at(json, "/contents/m/L") / at(json, "/contents/n/L"), 44.0956, 1e-4);
    EXPECT_EQ(json["tank"]["phase"], "V+L");
    EXPECT_EQ(found("tank propane --T 300 --V 0.1 --m 1")["tank"]["phase"], "V");
    EXPECT_EQ(found("tank propane --T 300 --V 0.1 --m 52")["tank"]["phase"], "L");
    const auto partial = found("tank propane --T 300 --V 0.1 --m 20 --concept partial");
    EXPECT_NEAR(at(partial, "/contents/m/L"), at(json, "/contents/m/L"), 0.5);
}

// A throttle there and back ends at the same T.
TEST(Commands, iso_goes_there_and_back) {
    const auto there = quomc("iso propane --p 100 --hold h --T0 320 --p0 800 --json").json();
    const double T = there["iso"]["T"].get<double>();
    EXPECT_LT(T, 320.0);
    const auto back = quomc("iso propane --p 800 --hold h --T0 " + number(T) + " --p0 100 --json").json();
    EXPECT_NEAR(back["iso"]["T"].get<double>(), 320.0, 1e-6);
}

// h along an isotherm above T(cr) falls and rises again: both states are told, and both have it.
TEST(Commands, iso_names_further_solutions) {
    const auto json = found("iso propane --T 450 --hold h --value 5000");
    ASSERT_EQ(json["others"].size(), 1u);
    EXPECT_FALSE(row(json["warnings"], "name", "several_solutions").is_null());
    for (const double p : {at(json, "/iso/p"), at(json, "/others/0/p")})
        EXPECT_NEAR(at(found("state propane --T 450 --p " + number(p)), "/functions/h/V"), 5000.0, 1e-6) << p;
    // What is searched is a vapor: no compressed liquid at hundreds of MPa.
    const auto water = found("iso water --T 373.15 --hold h --value 2498.75");
    EXPECT_LT(at(water, "/iso/p"), 96.3);  // p(LV) of the equation
}

}  // namespace
}  // namespace quom
