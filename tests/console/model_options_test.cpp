// Every option that chooses models, reference state or units: what it must change, by a figure of another
// origin, and what it must leave alone.
#include <gmock/gmock.h>

#include <cstdio>
#include <functional>

#include "base/constants.h"
#include "base/files.h"
#include "quomc_run.h"

namespace quom {
namespace {

using Json = nlohmann::json;

constexpr double M = 44.0956;  // propane [kg/kmol]
constexpr double T0 = 320, p0 = 800;

Json state(const std::string& options) { return found("state propane --T 320 --p 800 " + options); }
double function(const Json& json, const std::string& name) { return at(json, "/functions/" + name + "_V"); }

struct Option {
    const char* options;
    const char* name;  // the function that changes
    std::function<double(const Json& plain)> expected;
    const char* untouched;  // another one that does not
    double tolerance;       // relative
};

double of_plain(const Json& plain, const char* name) { return function(plain, name); }

// Reference state, environment and units shift or scale the functions of the plain state.
TEST(ModelOptions, reference_and_units) {
    const auto plus = [](const char* name, double d) {
        return [name, d](const Json& plain) { return of_plain(plain, name) + d; };
    };
    const auto times = [](const char* name, double f) {
        return [name, f](const Json& plain) { return of_plain(plain, name) * f; };
    };
    const Option options[] = {
        {"--href 1000", "h", plus("h", 1000), "s", 1e-12},
        {"--href 1000", "u", plus("u", 1000), "cp", 1e-12},
        {"--sref 2", "s", plus("s", 2), "h", 1e-12},
        {"--sref 2", "g", plus("g", -2 * T0), "u", 1e-12},
        {"--energy 1", "h", times("h", 1 / RGas), "v", 1e-12},
        {"--energy 2", "h", times("h", 1 / (RGas * T0)), "v", 1e-12},
        {"--energy 2", "s", times("s", 1 / (RGas * T0)), "w", 1e-12},
        {"--energy 3", "s", times("s", 1 / M), "v", 2e-6},
        {"--volume 1", "v", times("v", 1 / M), "h", 2e-6},
        // Z(cr) of Peng and Robinson is 0.30740.
        {"--volume 2", "v", times("v", 4251.2 / (0.30740 * RGas * 369.89)), "h", 2e-5},
    };
    const Json plain = state("");
    for (const Option& o : options) {
        const Json json = state(o.options);
        const double expected = o.expected(plain);
        EXPECT_NEAR(function(json, o.name), expected, o.tolerance * std::fabs(expected))
            << o.options << o.name;
        EXPECT_NE(function(json, o.name), function(plain, o.name)) << o.options;
        EXPECT_EQ(function(json, o.untouched), function(plain, o.untouched)) << o.options << o.untouched;
    }
}

// eH of the environment's own state is 0, and differences follow eH = h - TEnv s, eU = u - TEnv s + pEnv v.
TEST(ModelOptions, environment) {
    EXPECT_NEAR(function(found("state propane --T 280 --p 101.325 --tenv 280"), "eH"), 0.0, 1e-6);
    EXPECT_NEAR(function(found("state propane --T 298.15 --p 90 --penv 90"), "eH"), 0.0, 1e-6);
    EXPECT_NEAR(function(found("state propane --T 280 --p 90 --tenv 280 --penv 90"), "eU"), 0.0, 1e-6);
    EXPECT_GT(std::fabs(function(found("state propane --T 298.15 --p 90"), "eH")), 100.0);
    const std::string environment = " --tenv 285 --penv 95";
    const Json a = state(environment);
    const Json b = found("state propane --T 400 --p 300" + environment);
    const auto change = [&](const char* name) { return function(b, name) - function(a, name); };
    EXPECT_NEAR(change("eH"), change("h") - 285 * change("s"), 1e-7);
    EXPECT_NEAR(change("eU"), change("u") - 285 * change("s") + 95 * change("v"), 1e-7);
}

// h and s of the ideal gas are 0 at the reference point.
TEST(ModelOptions, reference_point) {
    const Json both = found("state propane --T 250 --p 50 --eos 0 --tref 250 --pref 50");
    EXPECT_NEAR(function(both, "h"), 0.0, 1e-9);
    EXPECT_NEAR(function(both, "s"), 0.0, 1e-9);
    EXPECT_NEAR(function(found("state propane --T 250 --p 101.325 --eos 0 --tref 250"), "s"), 0.0, 1e-6);
    const Json p_alone = found("state propane --T 298.1499938964844 --p 50 --eos 0 --pref 50");
    EXPECT_NEAR(function(p_alone, "s"), 0.0, 1e-9);
    // At 298.15 K and 101.325 kPa the ideal gas has the quantities of formation of the record.
    const Json record = found("show propane");
    const Json formation = found("state propane --T 298.15 --p 101.325 --eos 0 --ref 2");
    EXPECT_NEAR(function(formation, "h"), at(record, "/constants/dfH0"), 0.01);
    EXPECT_NEAR(function(formation, "s"), at(record, "/constants/S0abs"), 1e-4);
    const Json gibbs = found("state propane --T 298.15 --p 101.325 --eos 0 --ref 10");
    EXPECT_NEAR(function(gibbs, "g"), at(record, "/constants/dfG0"), 0.05);
}

// Each equation of state holds at the T, p, v that it gives: p = R T/(v - b) - a/((v + c)(v + d)).
TEST(ModelOptions, equations_of_state) {
    const double Tcr = 369.89, pcr = 4251.2, T = T0;
    const double b_vdw = RGas * Tcr / (8 * pcr), a_vdw = 27 * b_vdw * b_vdw * pcr;
    const double rk = std::cbrt(2.0) - 1;
    const double b_rk = rk / 3 * RGas * Tcr / pcr;
    const double a_rk = RGas * RGas * Tcr * Tcr / (9 * rk * pcr);
    const auto v_of = [](const char* options) { return function(state(options), "v"); };
    const auto expect_p = [](double p, const char* text) { EXPECT_NEAR(p, p0, 1e-5 * p0) << text; };
    const double v2 = v_of("--eos 2");
    expect_p(RGas * T / (v2 - b_vdw) - a_vdw / (v2 * v2), "van der Waals");
    const double v3 = v_of("--eos 3");
    expect_p(RGas * T / (v3 - b_vdw) - a_vdw * Tcr / T / (v3 * v3), "Berthelot");
    const double v4 = v_of("--eos 4");
    expect_p(RGas * T / (v4 - b_rk) - a_rk * std::sqrt(Tcr / T) / (v4 * (v4 + b_rk)), "Redlich and Kwong");
    expect_p(RGas * T / (v_of("--eos 11") - b_vdw + a_vdw / (RGas * T)), "virial, van der Waals");
    expect_p(RGas * T / v_of("--eos 0"), "ideal gas");
    expect_p(RGas * T / (v_of("--eos 10 --b0 0.1 --b1 3 --b2 0.4") - 0.1 + 3 / std::pow(T, 0.4)), "manual");
    // Soave, Peng and Robinson: no two of them alike.
    EXPECT_GT(std::fabs(v_of("--eos 5") - v_of("--eos 6")), 1e-3);
    EXPECT_GT(std::fabs(v_of("--eos 14") - v_of("--eos 15")), 1e-3);
    EXPECT_GT(std::fabs(v_of("--eos 16") - v_of("--eos 13")), 1e-3);
}

TEST(ModelOptions, parameters_of_a_file) {
    const std::string file = ::testing::TempDir() + "quom_options_ji.dat";
    double v[2];
    int k = 0;
    for (const char* third : {"0.08", "0.12"}) {
        ASSERT_EQ(write_file_atomic(file, std::string("7\r\n0.1, 0.6, ") + third + ", -0.02, 0.31\r\n"), "");
        v[k++] = function(state("--eos 7 --ji " + file), "v");
    }
    EXPECT_NE(v[0], v[1]);
    EXPECT_NEAR(v[0], function(state(""), "v"), 0.05 * v[0]);
    std::remove(file.c_str());
}

// Coefficients of the record give cp(idG), p(LV) and delta(LV)h of the models that the options choose.
TEST(ModelOptions, equations_of_the_record) {
    const Json record = found("show water");
    const double T = 400;
    const auto c = [&](const char* k) { return at(record, std::string("/cpPoly/") + k); };
    const double poly =
        c("C0") + c("C1") * T + c("C2") * T * T + c("C3") * T * T * T + c("C4") * T * T * T * T;
    const Json by_poly = found("state water --T 400 --p 100 --cp 1"),
               by_sinh = found("state water --T 400 --p 100 --cp 2");
    EXPECT_NEAR(function(by_poly, "cpId"), poly, 1e-5 * poly);
    EXPECT_NEAR(function(by_sinh, "cpId"), poly, 0.1);
    EXPECT_NE(function(by_sinh, "cpId"), function(by_poly, "cpId"));

    const Json routes = found("saturation water --T 400")["routes"];
    for (const int evp : {1, 2, 3, 4, 5, 6, 7, 8}) {
        const Json calc = found("calc water --mode 4 --T 400 --concept partial --evp " + std::to_string(evp));
        EXPECT_EQ(at(calc, "/slots/p"), at(row(routes, "code", evp), "/p")) << evp;
    }
    const auto w = [&](const char* k) { return at(record, std::string("/Wagner/") + k); };
    const double u = 1 - T / w("Tcr");
    const double ln_p = w("Tcr") / T *
                        (w("a1") * u + w("a2") * std::pow(u, 1.5) + w("a3") * std::pow(u, w("e3")) +
                         w("a4") * std::pow(u, w("e4")) + w("a5") * std::pow(u, w("e5")));
    EXPECT_NEAR(at(row(routes, "code", 4), "/p"), w("pcr") * std::exp(ln_p), 0.01);
    EXPECT_EQ(at(found("calc water --mode 4 --T 400 --concept global --evp 4"), "/slots/p"),
              at(found("saturation water --T 400"), "/equilibrium/p"));
}

TEST(ModelOptions, enthalpy_of_vaporization) {
    const Json record = found("show water");
    const Json table = found("saturation water --T 400")["vaporization"];
    for (const int hlv : {1, 2, 3, 4, 5, 6, 7}) {
        const Json calc = found("calc water --mode 6 --T 400 --hlv " + std::to_string(hlv));
        EXPECT_EQ(at(calc, "/slots/hLV"), at(row(table, "code", hlv), "/hLV")) << hlv;
        EXPECT_EQ(calc["models"]["HLVKode"], hlv);
    }
    // Watson (1943): delta(LV)h = h1 ((Tcr - T)/(Tcr - T1))^n.
    const double h1 = at(record, "/constants/WatsonHLV"), T1 = at(record, "/constants/WatsonT"),
                 Tcr = 647.096;
    for (const double n : {0.38, 0.32}) {
        const Json calc = found("calc water --mode 6 --T 400 --hlv 4 --watson " + number(n));
        EXPECT_NEAR(at(calc, "/slots/hLV"), h1 * std::pow((Tcr - 400) / (Tcr - T1), n), 0.6) << n;
    }
}

// rho(L) of a PARTIAL equilibrium by the way that is asked for.
TEST(ModelOptions, liquid_density) {
    const Json table = found("saturation ethanol --T 400 --concept partial")["densities"];
    const double benson = at(row(table, "name", "EVP, rho(L) by Benson"), "/rho_L");
    const double database = at(row(table, "name", "EVP, rho(L) of the database"), "/rho_L");
    EXPECT_GT(std::fabs(benson - database), 0.1);
    const double M_ethanol = 46.0684;
    const auto rhoL = [&](const char* option) {
        return M_ethanol / at(found(std::string("calc ethanol --mode 4 --T 400 --concept partial ") + option),
                              "/slots/v_L");
    };
    EXPECT_NEAR(rhoL("--benson"), benson, 1e-4 * benson);
    EXPECT_NEAR(rhoL("--database-rhol"), database, 1e-4 * database);
}

}  // namespace
}  // namespace quom
