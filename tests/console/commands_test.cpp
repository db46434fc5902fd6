// What the commands find, against figures of other origin and identities.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/files.h"
#include "quomc_run.h"

namespace quom::console {
namespace {

using ::testing::HasSubstr;
using Json = nlohmann::json;

Json found(const std::string& line) {
    const Outcome run = quomc(line + " --json");
    EXPECT_EQ(run.status, 0) << line << "\n" << run.err;
    return run.status == 0 ? run.json() : Json();
}
double at(const Json& json, const std::string& pointer) {
    const Json& x = json.at(Json::json_pointer(pointer));
    EXPECT_TRUE(x.is_number()) << pointer;
    return x.is_number() ? x.get<double>() : std::nan("");
}
Json row(const Json& table, const char* key, const Json& value) {
    for (const Json& r : table)
        if (r[key] == value) return r;
    ADD_FAILURE() << "no row with " << key << " " << value;
    return {};
}

TEST(Lists, every_way_to_name_a_substance) {
    for (const char* name : {"Water", "water", "Wasser", "7732-18-5", "#1", "dihydrogen~oxide", "R-718"})
        EXPECT_EQ(found(std::string("show ") + name)["substance"]["StoffName"], "Water") << name;
    EXPECT_EQ(found("show Kohlendioxyd")["substance"]["StoffCAS"], "124-38-9");
    EXPECT_EQ(found("find 7732-18")["substances"][0]["StoffName"], "Water");
    EXPECT_EQ(found("find zyklohexan")["substances"][0]["StoffName"], "Cyclohexane");
    EXPECT_THAT(quomc("show ethnol").err, HasSubstr("Ethanol"));
    EXPECT_GT(found("list")["substances"].size(), 400u);
}

TEST(Show, constants_units_and_ranges) {
    const Json water = found("show water");
    EXPECT_EQ(at(water, "/constants/Tcr"), 647.096);
    EXPECT_EQ(water["units"]["constants"]["pcr"], "kPa");
    EXPECT_EQ(at(water, "/Wagner/TLo"), 274);
    EXPECT_NEAR(at(water, "/constants/vcrDB"), 18.0153 / 322, 1e-7);
    EXPECT_THAT(quomc("show water").out, HasSubstr("T = 274 ... 647 K"));
    // An element has formation data of zero, which are given; helium has no solid under its vapor.
    EXPECT_EQ(at(found("show argon"), "/constants/dfH0"), 0);
    EXPECT_TRUE(found("show helium")["RhoS"]["A"].is_null());
}

TEST(Models, offers_and_selection) {
    const Json water = found("models water --eos 14 --hlv 4 --watson 0.375 --evp 4");
    EXPECT_EQ(row(water["EOS"], "code", 14)["selected"], true);
    EXPECT_EQ(row(water["EVP"], "code", 4)["selected"], true);
    EXPECT_EQ(row(water["HLV"], "code", 4)["selected"], true);
    EXPECT_EQ(row(water["HLV"], "code", 7)["offered"], false) << "a virial equation has no liquid";
    EXPECT_EQ(water["selection"]["Konzept"], "PARTIAL");
    EXPECT_NEAR(at(water, "/selection/nWat"), 0.375, 1e-7);
    const Outcome refused = quomc("models water --eos 14 --hlv 7");
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
    EXPECT_NEAR(at(state, "/state/rhoV"), 1.795, 0.009);
    ASSERT_EQ(write_file_atomic(file, "7\r\n0.1, 0.6\r\n"), "");
    EXPECT_EQ(quomc("state propane --T 300 --p 100 --eos 7 --ji " + file).status, 3);
    EXPECT_EQ(quomc("state propane --T 300 --p 100 --eos 7 --ji " + file + ".none").status, 3);
    std::remove(file.c_str());
}

// The ideal gas: v = R T/p, cp - cV = R, w^2 = (cp/cV) R T/M.
TEST(State, ideal_gas) {
    const Json gas = found("state argon --T 300 --p 100 --eos 0");
    EXPECT_NEAR(at(gas, "/functions/v/V"), RGas * 3, 1e-12);
    EXPECT_NEAR(at(gas, "/functions/cp/V") - at(gas, "/functions/cV/V"), RGas, 1e-9);
    EXPECT_NEAR(at(gas, "/functions/w/V"), 322.6, 0.2) << "sqrt(5/3 8314.51 300/39.948)";
    EXPECT_EQ(at(gas, "/FuncA/fu_h_res/V"), 0);
    EXPECT_NEAR(at(gas, "/CoefA/coef_alpha/V"), 1.0 / 300, 1e-12);
    EXPECT_TRUE(gas["functions"]["v"]["L"].is_null());
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
    const auto number = [](double x) { return Json(x).dump(); };
    const std::string head = std::string("state ") + c.substance + " " + c.models;
    const std::string T = " --T " + number(c.T), p = " --p " + number(c.p);
    const Json given = found(head + T + p);
    const char* phase = given["state"]["rhoL"].is_null() ? "rhoV" : "rhoL";
    const std::string rho = " --rho " + number(at(given, std::string("/state/") + phase));
    const Json by_T = found(head + T + rho), by_p = found(head + p + rho);
    EXPECT_NEAR(at(by_T, "/state/p"), c.p, 1e-6 * c.p);
    EXPECT_NEAR(at(by_p, "/state/T"), c.T, 1e-4 * c.T);
    EXPECT_EQ(by_T["state"]["phase"], given["state"]["phase"]);

    const Json mass = found(head + T + p + " --energy 3 --volume 1");
    const char* column = phase[3] == 'L' ? "/L" : "/V";
    const double M =
        at(given, std::string("/functions/h") + column) / at(mass, std::string("/functions/h") + column);
    EXPECT_NEAR(
        M, at(given, std::string("/functions/v") + column) / at(mass, std::string("/functions/v") + column),
        1e-9 * M);
    EXPECT_EQ(mass["units"]["functions"]["h"], "kJ/kg");
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
    EXPECT_EQ(wet["state"]["phase"], "L and V in equilibrium");
    const double y = at(wet, "/state/y"), M = 44.0956;
    EXPECT_NEAR(at(wet, "/state/p"), at(found("saturation propane --T 300"), "/EOS/p"), 1e-6);
    EXPECT_NEAR(M / 100, (1 - y) * at(wet, "/functions/v/L") + y * at(wet, "/functions/v/V"), 1e-6);
    for (const char* f : {"h", "s", "eU"}) {
        const std::string of = std::string("/functions/") + f;
        EXPECT_NEAR(at(wet, of + "/LV"), (1 - y) * at(wet, of + "/L") + y * at(wet, of + "/V"), 1e-6);
    }
    EXPECT_NEAR(at(wet, "/functions/g/L"), at(wet, "/functions/g/V"), 1.0) << "equal in equilibrium";
    EXPECT_TRUE(wet["functions"]["cp"]["LV"].is_null());
    const Json by_p = found("state propane --p 997 --rho 100");
    EXPECT_NEAR(at(by_p, "/state/T"), 300, 0.5);
}

TEST(State, what_is_not_known_is_told) {
    const Json virial = found("state water --T 300 --p 100 --eos 16");
    EXPECT_THAT(virial["notes"].dump(), HasSubstr("the stable phase is a liquid"));
    EXPECT_THAT(found("state water --T 250 --p 1")["notes"].dump(), HasSubstr("triple point"));
    const Json critical = found("state water --T 647.096 --p 22064");
    EXPECT_TRUE(critical["functions"]["cp"]["V"].is_null());
    EXPECT_THAT(critical["notes"].dump(), HasSubstr("critical point"));
}

TEST(State, formation_reference) {
    // At 298.15 K and 101.325 kPa the ideal gas has the quantities of formation of the record.
    const Json gas = found("state methane --T 298.15 --p 101.325 --eos 0 --ref 2");
    const Json record = found("show methane");
    EXPECT_NEAR(at(gas, "/functions/h/V"), at(record, "/constants/dfH0"), 0.01);
    EXPECT_NEAR(at(gas, "/functions/s/V"), at(record, "/constants/S0abs"), 1e-4);
}

// Vapor pressure and enthalpy of vaporization of water at 373.124 K: 101.325 kPa, 2256.5 kJ/kg (Wagner and
// Pruss, J. Phys. Chem. Ref. Data 31 (2002) 387).
TEST(SaturationLine, water) {
    const Json water = found("saturation water --T 373.124 --energy 3 --concept partial");
    for (const Json& route : water["routes"])
        EXPECT_NEAR(at(route, "/p"), 101.325, route["code"].is_null() ? 6 : 0.5) << route;
    EXPECT_EQ(row(water["routes"], "selected", true)["code"], 3);
    for (const Json& model : water["HLV"]) EXPECT_NEAR(at(model, "/hLV"), 2256.5, 100) << model;
    EXPECT_NEAR(at(row(water["HLV"], "code", 4), "/hLV"), 2256.5, 1);
    EXPECT_NEAR(at(row(water["densities"], "name", "EVP, rho(L) of the database"), "/rhoL"), 958.4, 0.5);

    const Json back = found("saturation water --p 101.325");
    EXPECT_NEAR(at(row(back["routes"], "code", 4), "/T"), 373.124, 0.01);
    EXPECT_NEAR(at(back, "/EOS/p"), 101.325, 0);

    // At T(cr) both volumes are that of the equation, Z(cr) = 0.3074 for Peng and Robinson.
    const Json critical = found("saturation water --T 647.096");
    EXPECT_NEAR(at(critical, "/EOS/vL"), 0.3074 * RGas * 647.096 / 22064, 1e-4);
    EXPECT_EQ(row(critical["routes"], "code", 4)["reason"], "at or above its T(cr)");
}

// B of argon at 273.15 K is -21.5 cm^3/mol (Dymond and Smith 1980); van der Waals: b - a/(R T).
TEST(Virial, argon) {
    const Json B = found("virial argon --T 273.15 --b0 0.03 --b1 2 --b2 0.5")["B"];
    EXPECT_NEAR(at(row(B, "code", 16), "/B"), -0.0215, 0.001);
    const double b = RGas * 150.687 / (8 * 4863), a = 27 * b * b * 4863;
    EXPECT_NEAR(at(row(B, "code", 11), "/B"), b - a / (RGas * 273.15), 2e-5);
    EXPECT_NEAR(at(row(B, "code", 10), "/B"), 0.03 - 2 / std::sqrt(273.15), 1e-12);
    EXPECT_NEAR(at(row(B, "code", 10), "/B1"), 1 / std::pow(273.15, 1.5), 1e-12);
}

TEST(Text, fits_a_terminal_and_holds_no_fault_words) {
    for (const char* line : {"list", "find ane", "find säure", "show water", "show helium", "models ethanol",
                             "state ethanol --T 300 --p 9", "state ethanol --T 300 --rho 50 --energy 3",
                             "saturation ethanol --p 50", "saturation helium --T 5.1",
                             "virial benzene --T 400 --b0 1 --b1 2 --b2 3", "--help", "state --help"}) {
        const Outcome run = quomc(line);
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
}  // namespace quom::console
