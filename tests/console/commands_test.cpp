// What the commands find, against figures of other origin and identities.
#include <gmock/gmock.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/files.h"
#include "quomc_run.h"
#include "support/reduced_database.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

TEST(Lists, every_way_to_name_a_substance) {
    for (const char* name : {"Water", "water", "Wasser", "7732-18-5", "#1", "dihydrogen~oxide", "R-718"})
        EXPECT_EQ(found(std::string("show ") + name)["substance"]["StoffName"], "Water") << name;
    EXPECT_EQ(found("show Kohlendioxyd")["substance"]["StoffCAS"], "124-38-9");
    EXPECT_EQ(found("find 7732-18")["substances"][0]["StoffName"], "Water");
    EXPECT_EQ(found("find zyklohexan")["substances"][0]["StoffName"], "Cyclohexane");
    for (const char* name : {"CO2", "co2", "kohlen-dioxid", "124-38-9"})
        EXPECT_EQ(found(std::string("show ") + name)["substance"]["StoffCAS"], "124-38-9") << name;
    EXPECT_EQ(found("show CH3OH")["substance"]["StoffName"], "Methanol");
    EXPECT_EQ(found("find butan")["substances"][1]["StoffName"], "Butanal");
    const Json water = found("find wasser")["substances"][0];
    EXPECT_EQ(water["found_in"], "german");
    EXPECT_EQ(water["synonym"], "Wasser");
    EXPECT_EQ(found("find C3H8")["substances"][0]["found_in"], "formula");
    EXPECT_GT(found("list")["substances"].size(), 400u);
}

TEST(Lists, proposals_for_programs) {
    const Json near = quomc("show propan3 --json").json();
    EXPECT_EQ(near["proposals"][0]["StoffCAS"], "74-98-6");
    EXPECT_LE(near["proposals"].size(), 3u);
    EXPECT_EQ(quomc("show C4H10 --json").json()["proposals"].size(), 2u);
    EXPECT_EQ(quomc("find qqqqqqqq --json").json()["proposals"], Json::array());
    EXPECT_EQ(quomc("show propan3").out, "");
}

// Without its file of synonyms the program says so, once, and finds the names of the database all the same.
TEST(Lists, a_missing_or_foreign_file_of_synonyms_is_said) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("quomc-names-" + std::to_string(::getpid()));
    fs::create_directories(folder);
    fs::copy_file(fs::path(test::starter_data()) / "quom.q07", folder / "quom.q07",
                  fs::copy_options::overwrite_existing);
    const std::string here = "--program-folder " + folder.string() + " ";
    for (const char* said : {"has no file of synonyms SYNOM7.TXT", "is no file of synonyms"}) {
        for (const char* line : {"find wasser", "show Wasser", "show H2O", "state Wasser --T 300 --p 100"}) {
            const CommandRun run = quomc(here + line);
            EXPECT_EQ(run.status, 0) << line << run.err;
            const std::size_t at = run.err.find(said);
            EXPECT_NE(at, std::string::npos) << line;
            EXPECT_EQ(run.err.find(said, at + 1), std::string::npos) << "once";
        }
        EXPECT_EQ(quomc(here + "show water").err, "") << "needs no synonyms";
        EXPECT_EQ(quomc(here + "show dihydrogen~oxide").status, 1);
        EXPECT_EQ(write_file_atomic((folder / "SYNOM7.TXT").string(), "Dear friend,\n"), "");
    }
    fs::remove_all(folder);
}

// A newer starter database of the installation is told, and copied beside the user's own on request.
TEST(Lists, a_newer_starter_database) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("quomc-starter-" + std::to_string(::getpid()));
    fs::create_directories(folder / "own");
    fs::create_directories(folder / "share/quom");
    std::string bytes = *read_file(test::starter_data() + "/quom.q07").bytes;
    const std::string own = (folder / "own/quom.q07").string(),
                      newer = (folder / "own/quom-2999-01-31.q07").string();
    ASSERT_EQ(write_file_atomic(own, bytes), "");
    ASSERT_EQ(
        write_file_atomic((folder / "share/quom/quom.q07").string(), bytes.replace(0, 10, "2999-01-31")), "");
    const char* before = std::getenv("XDG_DATA_DIRS");
    const std::string kept = before == nullptr ? "" : before;
    ::setenv("XDG_DATA_DIRS", (folder / "share").c_str(), 1);
    const std::string here = "--program-folder " + (folder / "own").string() + " ";
    EXPECT_THAT(quomc(here + "list --json").json()["notes"].dump(), HasSubstr("quomc starter"));
    EXPECT_EQ(quomc(here + "starter --json").json()["starter"]["newer"], true);
    EXPECT_FALSE(fs::exists(newer)) << "only told";
    EXPECT_EQ(quomc(here + "starter --copy").status, 0);
    EXPECT_TRUE(fs::exists(newer));
    EXPECT_NE(read_file(own).bytes->substr(0, 10), "2999-01-31");
    EXPECT_EQ(quomc(here + "show water --db " + newer).status, 0);
    ::setenv("XDG_DATA_DIRS", "/nowhere", 1);
    EXPECT_EQ(quomc(here + "starter --copy").status, 1);
    ::setenv("XDG_DATA_DIRS", kept.c_str(), 1);
    fs::remove_all(folder);
}

TEST(Show, constants_units_and_ranges) {
    const Json water = found("show water");
    EXPECT_EQ(at(water, "/constants/Tcr"), 647.096);
    EXPECT_EQ(water["units"]["pcr"], "kPa");
    EXPECT_EQ(at(water, "/Wagner/TLo"), 274);
    EXPECT_NEAR(at(water, "/constants/vcrDB"), 18.0153 / 322, 1e-7);
    EXPECT_THAT(quomc("show water").out, HasSubstr("T = 274 ... 647 K"));
    // An element has formation data of zero, which are given; helium has no solid under its vapor.
    EXPECT_EQ(at(found("show argon"), "/constants/dfH0"), 0);
    EXPECT_TRUE(found("show helium")["RhoS"]["A"].is_null());
}

TEST(Show, estimates_fits_and_extrapolated_boiling_points) {
    const Json diol = found("show 1,3-Propanediol");
    EXPECT_EQ(diol["cpPoly"]["mark"], "estimate");
    EXPECT_TRUE(diol["KFDB"]["mark"].is_null()) << "as printed";
    EXPECT_EQ(row(diol["marks"], "set", "cpPoly")["source"], "by group contributions (Joback, Reid 1987)");
    EXPECT_THAT(quomc("show 1,3-Propanediol").out, HasSubstr("(cp 1), T = 250 ... 1000 K, estimate\n"));
    EXPECT_EQ(found("show propane")["Wagner"]["mark"], "fit");
    EXPECT_EQ(row(found("show carbon~dioxide")["marks"], "set", "Tnb")["mark"], "extrapolated");
    EXPECT_THAT(quomc("show carbon~dioxide").out, HasSubstr("185.32 K  extrapolated\n"));
    EXPECT_THAT(quomc("show nitrogen").out, ::testing::Not(HasSubstr("extrapolated")));

    // Figures of the record that are not those of the tables, as after an edit, are not marked.
    const test::ReducedDatabase other("504-63-2", {65});
    EXPECT_EQ(found("show #1 --db " + other.path())["cpPoly"]["mark"], "estimate") << "C4 was empty before";
    const test::ReducedDatabase edited("504-63-2", {64});
    EXPECT_TRUE(found("show #1 --db " + edited.path())["cpPoly"]["mark"].is_null());
}

// Limits of a correlated set that cross are no range.
TEST(SaturationLine, crossed_limits_are_not_shown) {
    const Json routes = found("saturation carbon~dioxide --T 250 --eos 3")["routes"];
    for (const Json& route : routes)
        if (!route["TLo"].is_null()) {
            EXPECT_LT(at(route, "/TLo"), at(route, "/THi")) << route;
        }
    const Json shown = found("calc carbon~dioxide --mode 4 --T 250 --concept partial --evp 8");
    EXPECT_TRUE(row(shown["validity"], "name", "EVP")["TLo"].is_null());
    EXPECT_TRUE(row(shown["validity"], "name", "EVP")["THi"].is_null());
}

TEST(Models, offers_and_selection) {
    const Json water = found("models water --eos 14 --hlv 4 --watson 0.375 --evp 4");
    EXPECT_EQ(row(water["eos"], "code", 14)["selected"], true);
    EXPECT_EQ(row(water["evp"], "code", 4)["selected"], true);
    EXPECT_EQ(row(water["hlv"], "code", 4)["selected"], true);
    EXPECT_EQ(row(water["hlv"], "code", 7)["offered"], false) << "a virial equation has no liquid";
    EXPECT_EQ(water["selection"]["Konzept"], "PARTIAL");
    EXPECT_NEAR(at(water, "/selection/nWat"), 0.375, 1e-7);
    const CommandRun refused = quomc("models water --eos 14 --hlv 7");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("It offers 1, 2, 3, 4, 5, 6."));
}

// The vapor of propane at 300 K and 100 kPa is 1.787 kg/m^3 (NIST Chemistry WebBook) by any sensible
// parameters.
TEST(State, tovarn_ji_with_a_file_of_parameters) {
    const std::string file = ::testing::TempDir() + "quom_PARAM_JI.DAT";
    ASSERT_EQ(write_file_atomic(file, "7\r\n0.1, 0.6, 0.08, -0.02, 0.31\r\n"), "");
    const Json state = found("state propane --T 300 --p 100 --eos 7 --ji " + file);
    EXPECT_EQ(state["models"]["EOSKode"], 7);
    EXPECT_NEAR(at(state, "/state/rho_V"), 1.795, 0.009);
    ASSERT_EQ(write_file_atomic(file, "7\r\n0.1, 0.6\r\n"), "");
    EXPECT_EQ(quomc("state propane --T 300 --p 100 --eos 7 --ji " + file).status, 3);
    EXPECT_EQ(quomc("state propane --T 300 --p 100 --eos 7 --ji " + file + ".none").status, 3);
    std::remove(file.c_str());
}

// The ideal gas: v = R T/p, cp - cV = R, w^2 = (cp/cV) R T/M.
TEST(State, ideal_gas) {
    const Json gas = found("state argon --T 300 --p 100 --eos 0");
    EXPECT_NEAR(at(gas, "/functions/v_V"), RGas * 3, 1e-12);
    EXPECT_NEAR(at(gas, "/functions/cp_V") - at(gas, "/functions/cV_V"), RGas, 1e-9);
    EXPECT_NEAR(at(gas, "/functions/w_V"), 322.6, 0.2) << "sqrt(5/3 8314.51 300/39.948)";
    EXPECT_EQ(at(gas, "/FuncA/h_res_V"), 0);
    EXPECT_NEAR(at(gas, "/CoefA/alpha_V"), 1.0 / 300, 1e-12);
    EXPECT_TRUE(gas["functions"]["v_L"].is_null());
}

struct Point {
    const char* substance;
    const char* models;
    double T, p;
};
class RoundTrips : public ::testing::TestWithParam<Point> {};
// T, p gives rho; T, rho gives p; p, rho gives T; per kg and per kmol agree.
TEST_P(RoundTrips, density) {
    const Point& c = GetParam();
    const std::string head = std::string("state ") + c.substance + " " + c.models;
    const std::string T = " --T " + number(c.T), p = " --p " + number(c.p);
    const Json given = found(head + T + p);
    const char* phase = given["state"]["rho_L"].is_null() ? "rho_V" : "rho_L";
    const std::string rho = " --rho " + number(at(given, std::string("/state/") + phase));
    const Json by_T = found(head + T + rho), by_p = found(head + p + rho);
    EXPECT_NEAR(at(by_T, "/state/p"), c.p, 1e-6 * c.p);
    EXPECT_NEAR(at(by_p, "/state/T"), c.T, 1e-4 * c.T);
    EXPECT_EQ(by_T["state"]["phase"], given["state"]["phase"]);

    const Json mass = found(head + T + p + " --energy 3 --volume 1");
    const char* column = phase[4] == 'L' ? "_L" : "_V";
    const double M =
        at(given, std::string("/functions/h") + column) / at(mass, std::string("/functions/h") + column);
    EXPECT_NEAR(
        M, at(given, std::string("/functions/v") + column) / at(mass, std::string("/functions/v") + column),
        1e-9 * M);
    EXPECT_EQ(mass["units"]["h_V"], "kJ/kg");
}
INSTANTIATE_TEST_SUITE_P(
    points, RoundTrips,
    ::testing::Values(Point{"water", "", 300, 101.325}, Point{"water", "--eos 5", 800, 30000},
                      Point{"water", "--eos 16", 500, 100}, Point{"ethanol", "--eos 4", 400, 100},
                      Point{"methane", "--eos 2", 250, 5000}, Point{"helium", "", 20, 300},
                      Point{"propane", "--eos 3", 300, 2000},
                      Point{"carbon~dioxide", "--eos 15", 320, 1000}));

TEST(State, two_phases_by_the_lever_rule) {
    const Json wet = found("state propane --T 300 --rho 100");
    EXPECT_EQ(wet["state"]["phase"], "V+L");
    const double y = at(wet, "/state/y"), M = 44.0956;
    EXPECT_NEAR(at(wet, "/state/p"), at(found("saturation propane --T 300"), "/equilibrium/p"), 1e-6);
    EXPECT_NEAR(M / 100, (1 - y) * at(wet, "/functions/v_L") + y * at(wet, "/functions/v_V"), 1e-6);
    for (const char* f : {"h", "s", "eU"}) {
        const std::string of = std::string("/functions/") + f;
        EXPECT_NEAR(at(wet, of + "_mean"), (1 - y) * at(wet, of + "_L") + y * at(wet, of + "_V"), 1e-6);
    }
    EXPECT_NEAR(at(wet, "/functions/g_L"), at(wet, "/functions/g_V"), 1e-7) << "equal in equilibrium";
    EXPECT_TRUE(wet["functions"]["w_mean"].is_null());
    const Json by_p = found("state propane --p 997 --rho 100");
    EXPECT_NEAR(at(by_p, "/state/T"), 300, 0.02);
}

// A reservation is a note for people and a row of "warnings" for programs, in every command.
TEST(Warnings, reach_people_and_programs) {
    struct Case {
        const char* line;
        const char* name;
        double value, low;  // what was met, and the limit
        const char* note;
    };
    const Case cases[] = {
        {"state water --T 300 --p 100 --eos 16", "beyond_pLV", 100, 3.537, "V-phase alone"},
        {"calc water --mode 3 --T 300 --p 100 --eos 16", "beyond_pLV", 100, 3.537, "V-phase alone"},
        {"state water --T 250 --p 1", "below_triple_point", 250, 273.16, "Triple Point"},
        {"calc water --mode 3 --T 250 --p 1", "below_triple_point", 250, 273.16, "Triple Point"},
        {"saturation propane --T 80", "below_triple_point", 80, 85.525, "Triple Point"},
        {"tank propane --T 80 --V 1 --m 1", "below_triple_point", 80, 85.525, "Triple Point"},
        {"calc propane --mode 14 --T 60", "function_range", 60, 86, "26 K outside"},
        {"calc ethanol --mode 4 --T 100 --concept partial", "evp_range", 100, 160, "vapor pressure equation"},
        {"iso water --p 1 --hold h --T0 250 --p0 1", "below_triple_point", 250, 273.16, "Triple Point"},
    };
    for (const Case& c : cases) {
        const Json json = found(c.line);
        const Json warning = row(json["warnings"], "name", c.name);
        ASSERT_FALSE(warning.is_null()) << c.line << json["warnings"];
        EXPECT_NEAR(at(warning, "/value"), c.value, 1e-5 * c.value) << c.line;
        const double limit = warning["low"].is_null() ? at(warning, "/high") : at(warning, "/low");
        EXPECT_NEAR(limit, c.low, 1e-3 * c.low) << c.line << warning;
        EXPECT_THAT(json["notes"].dump(), HasSubstr(c.note)) << c.line;
        const CommandRun text = quomc(c.line);
        std::string said = text.out + text.err;
        std::replace(said.begin(), said.end(), '\n', ' ');
        EXPECT_TRUE(said.find("outside") != std::string::npos || said.find(c.note) != std::string::npos)
            << said;
    }
    for (const char* line : {"list", "find butane", "show water", "models water", "virial argon --T 300",
                             "state water --T 400 --p 100", "saturation water --T 400", "show watre",
                             "calc water --mode 3 --T 400 --p 100", "tank water --T 400 --V 1 --m 1",
                             "iso water --p 100 --hold h --T0 400 --p0 200"}) {
        const Json json = quomc(std::string(line) + " --json").json();
        EXPECT_EQ(json["warnings"], Json::array()) << line;
        EXPECT_TRUE(json["validity"].is_array()) << line;
        EXPECT_TRUE(json.contains("reason")) << line;
    }
}

TEST(Warnings, ranges_are_told_where_nothing_is_wrong) {
    const Json cp = row(found("state water --T 400 --p 100 --cp 1")["validity"], "name", "cpId");
    EXPECT_EQ(cp["TLo"], 109);
    EXPECT_EQ(cp["THi"], 1000);
    const Json evp =
        row(found("calc water --mode 4 --T 400 --concept partial --evp 4")["validity"], "name", "EVP");
    EXPECT_EQ(evp["TLo"], 274);
    EXPECT_EQ(evp["THi"], 647);
}

TEST(State, what_does_not_exist_is_absent) {
    const Json critical = found("state water --T 647.096 --p 22064");
    EXPECT_TRUE(critical["functions"]["cp_V"].is_null());
    EXPECT_FALSE(row(critical["warnings"], "name", "critical_point").is_null());
    // No equation of cp(idG) in the record: residual functions stand, absolute ones are absent.
    const test::ReducedDatabase without_cp(test::propane,
                                           {61, 62, 63, 64, 65, 66, 67, 69, 70, 71, 72, 73, 74, 75});
    const Json propane = found("state propane --T 400 --p 100 --db " + without_cp.path());
    EXPECT_TRUE(propane["functions"]["h_V"].is_null());
    EXPECT_LT(at(propane, "/FuncA/h_res_V"), 0.0);
    EXPECT_FALSE(row(propane["warnings"], "name", "no_ideal_gas_cp").is_null());
}

// One fluid above the critical point has one word, the same in every command.
TEST(State, one_word_for_the_phase) {
    struct Case {
        double T, p;
        const char* phase;
        int region;
    };
    for (const Case& c : {Case{400, 500, "V", 3}, Case{369.89001, 6000, "L", 1}, Case{300, 8000, "L", 1},
                          Case{450, 6000, "V", 2}, Case{300, 500, "V", 0}, Case{300, 2000, "L", 0}}) {
        const std::string values = " --T " + number(c.T) + " --p " + number(c.p);
        for (const std::string& line : {"state propane" + values, "calc propane --mode 3" + values}) {
            const Json json = found(line);
            EXPECT_EQ(json["state"]["phase"], c.phase) << line;
            EXPECT_EQ(json["state"]["PhaseRegion"], c.region) << line;
        }
        const CommandRun run =
            quomc("sweep propane --mode 3 --in - --out -", "T;p\n" + number(c.T) + ";" + number(c.p) + "\n");
        EXPECT_THAT(run.out, HasSubstr(std::string(";") + c.phase + ";" + std::to_string(c.region) + ";"));
    }
}

TEST(State, formation_reference) {
    // At 298.15 K and 101.325 kPa the ideal gas has the quantities of formation of the record.
    const Json gas = found("state methane --T 298.15 --p 101.325 --eos 0 --ref 2");
    const Json record = found("show methane");
    EXPECT_NEAR(at(gas, "/functions/h_V"), at(record, "/constants/dfH0"), 0.01);
    EXPECT_NEAR(at(gas, "/functions/s_V"), at(record, "/constants/S0abs"), 1e-4);
}

// Vapor pressure and enthalpy of vaporization of water at 373.124 K: 101.325 kPa, 2256.5 kJ/kg (Wagner and
// Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387).
TEST(SaturationLine, water) {
    const Json water = found("saturation water --T 373.124 --energy 3 --concept partial");
    for (const Json& route : water["routes"])
        EXPECT_NEAR(at(route, "/p"), 101.325, route["code"].is_null() ? 6 : 0.5) << route;
    EXPECT_EQ(row(water["routes"], "selected", true)["code"], 3);
    for (const Json& model : water["vaporization"]) EXPECT_NEAR(at(model, "/hLV"), 2256.5, 100) << model;
    EXPECT_NEAR(at(row(water["vaporization"], "code", 4), "/hLV"), 2256.5, 1);
    EXPECT_NEAR(at(row(water["densities"], "name", "EVP, rho(L) of the database"), "/rho_L"), 958.4, 0.5);

    const Json back = found("saturation water --p 101.325");
    EXPECT_NEAR(at(row(back["routes"], "code", 4), "/T"), 373.124, 0.01);
    EXPECT_NEAR(at(back, "/equilibrium/p"), 101.325, 0);

    // At T(cr) both volumes are that of the equation, Z(cr) = 0.3074 for Peng and Robinson.
    const Json critical = found("saturation water --T 647.096");
    EXPECT_NEAR(at(critical, "/equilibrium/v_L"), 0.3074 * RGas * 647.096 / 22064, 1e-4);
    EXPECT_THAT(row(critical["routes"], "code", 4)["reason"].get<std::string>(),
                HasSubstr("T(cr) of the Wagner"));
}

// p(LV) where the walk of the areas finds none: ln p is nearly linear in 1/T between 180 K and 240 K there.
TEST(SaturationLine, very_low_pressure) {
    const auto ln_p = [](double T) {
        return std::log(at(found("saturation 2-Ethylhexanoic~acid --T " + number(T)), "/equilibrium/p"));
    };
    EXPECT_NEAR(std::exp(ln_p(171.87)) / 1.04e-13, 1.0, 5e-3);
    const double slope = (ln_p(175.0) - ln_p(171.87)) / (1 / 175.0 - 1 / 171.87);
    EXPECT_NEAR(slope, (ln_p(178.2) - ln_p(175.0)) / (1 / 178.2 - 1 / 175.0), 0.005 * std::fabs(slope));
    const CommandRun none = quomc("saturation water --T 650 --json");
    EXPECT_EQ(none.json()["reason"], "above_critical_T");
}

// B of argon at 273.15 K is -21.5 cm^3/mol (Dymond and Smith 1980); van der Waals: b - a/(R T).
TEST(Virial, argon) {
    const Json B = found("virial argon --T 273.15 --b0 0.03 --b1 2 --b2 0.5")["virial"];
    EXPECT_NEAR(at(row(B, "code", 16), "/B"), -0.0215, 0.001);
    const double b = RGas * 150.687 / (8 * 4863), a = 27 * b * b * 4863;
    EXPECT_NEAR(at(row(B, "code", 11), "/B"), b - a / (RGas * 273.15), 2e-5);
    EXPECT_NEAR(at(row(B, "code", 10), "/B"), 0.03 - 2 / std::sqrt(273.15), 1e-12);
    EXPECT_NEAR(at(row(B, "code", 10), "/dBdT"), 1 / std::pow(273.15, 1.5), 1e-12);
}

// Every text with numbers of h and s ends with the line that tells what they rest on.
TEST(Text, ends_with_substance_models_reference_and_units) {
    for (const char* line : {"state propane --T 300 --p 100", "saturation propane --T 300",
                             "calc propane --mode 8 --T 300 --p 100", "tank propane --T 300 --V 1 --m 1",
                             "iso propane --T 450 --hold h --value 110"}) {
        const CommandRun run = quomc(std::string(line) + " --energy 3 --tref 300 --cp 1");
        std::string end = run.out.substr(run.out.rfind("\n\n") + 2);
        std::replace(end.begin(), end.end(), '\n', ' ');
        EXPECT_TRUE(end.starts_with("Propane, 74-98-6; CEOS Peng / Robinson, GLOBAL concept, ")) << run.out;
        for (const char* fact :
             {"cp(idG): Polynomial approach", "; h = s = 0 of the ideal gas at 300 K, 101.325 kPa; ",
              "; h in kJ/kg, s in kJ/(kg K), v in m^3/kmol "})
            EXPECT_THAT(end, HasSubstr(fact)) << line;
    }
    EXPECT_THAT(quomc("state propane --T 300 --p 100 --energy 2 --volume 2").out,
                HasSubstr("h in R T, s in 1/K, v in v(cr)\n"));
    EXPECT_EQ(quomc("state propane --T 300 --rho 5000").out, "") << "no numbers, no line";
}

// One key has one unit in an answer, whatever units are chosen.
TEST(Units, of_volumes) {
    const Json line = found("saturation propane --T 300 --volume 1");
    EXPECT_EQ(at(line, "/equilibrium/v_V"), at(line, "/densities/0/v_V"));
    EXPECT_EQ(line["units"]["v_V"], "m^3/kg");
    const Json state = found("state propane --T 300 --rho 8 --volume 1");
    EXPECT_NEAR(at(state, "/state/v"), 0.125, 1e-12);
    EXPECT_EQ(state["units"]["v"], "m^3/kg");
}

TEST(Text, fits_a_terminal_and_holds_no_fault_words) {
    for (const char* line : {"list", "find ane", "find säure", "show water", "show helium", "models ethanol",
                             "state ethanol --T 300 --p 9", "state ethanol --T 300 --rho 50 --energy 3",
                             "saturation ethanol --p 50", "saturation helium --T 5.1",
                             "virial benzene --T 400 --b0 1 --b1 2 --b2 3", "--help", "state --help"}) {
        const CommandRun run = quomc(line);
        EXPECT_EQ(run.status, 0) << line;
        EXPECT_EQ(run.err, "") << line;
        for (const char* word : {"(Error)", " nan", " inf ", " -0 "})
            EXPECT_THAT(run.out, Not(HasSubstr(word)));
        std::istringstream lines(run.out);
        for (std::string one; std::getline(lines, one);) {
            EXPECT_LE(text_length(one), 100u) << line << "\n" << one;
            EXPECT_FALSE(one.ends_with(' ')) << line << "\n" << one;
        }
    }
}

}  // namespace
}  // namespace quom
