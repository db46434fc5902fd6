// Values with units in the arguments, and outputs in the units of --units.
#include <gmock/gmock.h>

#include <map>
#include <set>

#include "quomc_run.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

void expect_near(double x, double right, const std::string& what) {
    EXPECT_NEAR(x, right, 1e-11 * std::max(1.0, std::fabs(right))) << what;
}

// Key and unit of everything that "units" names, in whatever section.
void collect_units(const nlohmann::json& units, std::map<std::string, std::string>& into) {
    for (const auto& [key, value] : units.items()) {
        if (value.is_object())
            collect_units(value, into);
        else
            into[key] = value.get<std::string>();
    }
}

// The first number of this key, of the state or in whatever section.
double first(const nlohmann::json& json, const std::string& key) {
    if (json.is_object() && json.contains(key) && json[key].is_number()) return json[key].get<double>();
    if (json.is_object() && json.contains("state") && json["state"].contains(key))
        return first(json["state"], key);
    for (const auto& part : json) {
        if (!part.is_structured()) continue;
        if (const double x = first(part, key); !std::isnan(x)) return x;
    }
    return std::nan("");
}

// h of the vapor, V of the liquid ...
double of_phase(const nlohmann::json& section, const std::string& quantity, const char* phase) {
    return at(section, "/" + quantity + "_" + phase);
}

// Mass of 1 kmol in 1 m^3 [kg].
double molar_mass_of_propane() {
    const double M = first(found("tank propane --T 300 --V 1 --n 1"), "rho");
    EXPECT_NEAR(M, 44.096, 0.002);  // 3 C, 8 H
    return M;
}

TEST(ArgumentsWithUnits, are_the_numbers_in_own_units) {
    const double M = molar_mass_of_propane();
    const std::string rho = number(0.5 * M);  // kg/m^3 of 0.5 mol/l
    const struct {
        std::string with, without;
        std::vector<std::string> keys;
    } pairs[] = {
        {"state propane --T 26.85C --p 5bar", "state propane --T 300 --p 500", {"T", "p"}},
        {"state propane --T 26.85~°C --p 0.5MPa", "state propane --T 300 --p 500", {"T", "p"}},
        {"state propane --T 80.33F --p 500000~Pa", "state propane --T 300 --p 500", {"T", "p"}},
        {"state propane --T 300K --rho 0.5mol/l", "state propane --T 300 --rho " + rho, {"T", "p"}},
        {"state propane --T 300 --rho 2000cm3/mol", "state propane --T 300 --rho " + rho, {"T", "p"}},
        {"saturation propane --T -42C", "saturation propane --T 231.15", {"T", "p"}},
        {"saturation propane --p 1atm", "saturation propane --p 101.325", {"T", "p"}},
        {"virial argon --T 0degC", "virial argon --T 273.15", {"B"}},
        {"calc propane --mode 4 --T 540°R", "calc propane --mode 4 --T 300", {"T", "p"}},
        {"tank propane --T 300 --V 100l --m 500mol", "tank propane --T 300 --V 0.1 --n 0.5", {"rho", "p"}},
        {"tank propane --T 300 --V 100l --m 20000g", "tank propane --T 300 --V 0.1 --m 20", {"rho", "p"}},
        {"state propane --T 300 --p 500 --ref 1 --tref 25C --pref 1.01325bar --href 100kJ/kg",
         "state propane --T 300 --p 500 --ref 1 --tref 298.15 --pref 101.325 --href " + number(100 * M),
         {"T", "p"}},
    };
    for (const auto& pair : pairs) {
        const nlohmann::json with = found(pair.with), without = found(pair.without);
        for (const std::string& key : pair.keys)
            expect_near(first(with, key), first(without, key), pair.with + ": " + key);
    }
    const std::string to_offset = "state propane --T 300 --p 500 --href ";
    expect_near(of_phase(found(to_offset + "100kJ/kg")["functions"], "h", "V"),
                of_phase(found(to_offset + number(100 * M))["functions"], "h", "V"), "h with its offset");
}

TEST(OutputUnits, of_a_state) {
    const std::string line = "state propane --T 300 --p 500";
    const nlohmann::json own = found(line);
    const nlohmann::json units =
        found(line + " --units T=C,p=bar,h=kJ/kg,s=J/(mol~K),cp=kJ/(kg~K),w=km/h,v=cm3/mol,rho=mol/l");
    const double M = molar_mass_of_propane();
    expect_near(first(units, "T"), 26.85, "T");
    expect_near(first(units, "p"), 5, "p");
    const auto value = [](const nlohmann::json& json, const char* q) {
        return of_phase(json["functions"], q, "V");
    };
    expect_near(value(units, "h"), value(own, "h") / M, "h");
    expect_near(value(units, "s"), value(own, "s"), "s");
    expect_near(value(units, "cp"), value(own, "cp") / M, "cp");
    expect_near(value(units, "g"), value(own, "g"), "g keeps its unit");
    expect_near(value(units, "w"), value(own, "w") * 3.6, "w");
    expect_near(value(units, "v"), value(own, "v") * 1000, "v");
    const CommandRun text = quomc(line + " --units T=C,h=kJ/kg,rho=mol/l");
    EXPECT_EQ(text.status, 0);
    EXPECT_THAT(text.out, HasSubstr("26.85 °C"));
    EXPECT_THAT(text.out, HasSubstr("mol/l"));
    EXPECT_THAT(text.out, HasSubstr("kJ/kg"));
    expect_near(first(own, "p"), 500, "p without --units");
}

// Whatever has the workbench's own unit in an answer is converted when its quantity is named.
TEST(OutputUnits, leave_no_value_behind) {
    const std::string all =
        " --units T=F,p=psi,rho=g/cm3,v=cm3/mol,energy=kJ/kg,entropy=J/(g~K),w=ft/s,B=cm3/mol,m=g,V=l,"
        "alpha=1/F,beta=1/F,chi=1/bar,delta=K/bar";
    const std::set<std::string> own = {"K",           "kPa", "kg/m^3", "m^3/kmol", "kJ/kmol",
                                       "kJ/(kmol K)", "m/s", "kg",     "m^3"};
    const std::set<std::string> differences = {"dT", "offset", "h_res", "g_res"};
    for (const char* line :
         {"state propane --T 300 --p 500", "state water --p 101.325 --rho 10", "saturation propane --T 300",
          "saturation ethanol --p 101.325 --concept partial", "virial argon --T 273.15",
          "calc propane --mode 3 --T 300 --p 500 --functions", "calc propane --mode 4 --T 300 --functions",
          "calc water --mode 8 --T 300 --p 101.325", "tank propane --T 300 --V 0.1 --m 20",
          "iso propane --p 100 --hold h --T0 320 --p0 800",
          "iso propane --T 320 --hold v --T0 320 --p0 100"}) {
        std::map<std::string, std::string> units;
        collect_units(found(line + all)["units"], units);
        EXPECT_GT(units.size(), 2u) << line;
        for (const auto& [key, unit] : units) {
            // Residual functions are differences and pure numbers of R.
            const bool stays = key.find("_res") != std::string::npos || differences.contains(key);
            EXPECT_TRUE(stays || !own.contains(unit)) << line << ": " << key << " in " << unit;
        }
    }
}

TEST(OutputUnits, of_tank_virial_and_saturation) {
    const nlohmann::json tank = found("tank propane --T 300 --V 0.1 --m 20 --units m=g,V=l,T=C,rho=g/cm3");
    expect_near(first(tank, "T"), 26.85, "T");
    expect_near(first(tank, "rho"), 0.2, "20 kg in 0.1 m^3");
    expect_near(of_phase(tank["contents"], "V", "L") + of_phase(tank["contents"], "V", "V"), 100,
                "V of both phases");
    expect_near(of_phase(tank["contents"], "m", "L") + of_phase(tank["contents"], "m", "V"), 20000,
                "m of both phases");
    const std::string virial = "virial argon --T 273.15";
    expect_near(first(found(virial + " --units B=cm3/mol"), "B"), first(found(virial), "B") * 1000, "B");
    const nlohmann::json boiling = found("saturation water --p 1atm --units T=C,p=atm,hLV=kJ/kg --hlv 2");
    EXPECT_NEAR(first(boiling["routes"], "T"), 100, 3);  // by the equation of state
}

TEST(OutputUnits, of_iso_hold_for_its_value_too) {
    const nlohmann::json own = found("iso propane --p 100 --hold h --T0 320 --p0 800");
    const double M = molar_mass_of_propane();
    const double h = first(own, "target");
    const double T = first(own["state"], "T");
    for (const std::string& line :
         {"--value " + number(h / M) + "kJ/kg", "--units h=kJ/kg --value " + number(h / M),
          "--units h=kJ/kg --value " + number(h) + "J/mol", "--energy 3 --value " + number(h / M)}) {
        const nlohmann::json iso = found("iso propane --p 1bar --hold h --phase V " + line);
        EXPECT_NEAR(first(iso["state"], "T"), T, 1e-6) << line;
        const bool mass = line.find("--units") != std::string::npos || line.find("--energy") == 0;
        expect_near(first(iso, "target"), mass ? h / M : h, line);
    }
}

}  // namespace
}  // namespace quom
