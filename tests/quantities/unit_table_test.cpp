// Units of the table: figures by definition, spellings, round trips, refusals.
#include "quantities/unit_table.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <set>

#include "quantities/unit_spelling.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

constexpr double M_water = 18.0153, M_propane = 44.0956;

constexpr Quantity quantity(std::size_t i) { return static_cast<Quantity>(i); }

struct Figure {
    Quantity q;
    const char* unit;
    double M, x, own;
};

// x of the unit in the workbench's own, each worked out from the definitions of the units alone.
TEST(UnitTable, figures_by_definition) {
    using enum Quantity;
    const Figure figures[] = {
        {T, "°C", 0, 0, 273.15},
        {T, "°C", 0, -273.15, 0},
        {T, "°F", 0, 32, 273.15},
        {T, "°F", 0, 212, 373.15},
        {T, "°F", 0, -459.67, 0},
        {T, "°R", 0, 491.67, 273.15},
        {p, "Pa", 0, 101325, 101.325},
        {p, "bar", 0, 1.01325, 101.325},
        {p, "mbar", 0, 1013.25, 101.325},
        {p, "hPa", 0, 1013.25, 101.325},
        {p, "MPa", 0, 0.101325, 101.325},
        {p, "atm", 0, 1, 101.325},
        {p, "Torr", 0, 760, 101.325},
        {p, "mmHg", 0, 760, 101.325 * 1.00000014246632},  // 1 mmHg is 1.4e-7 above 1 Torr
        {p, "psi", 0, 14.69594877551345, 101.325},        // 101325 in^2/(lb g)
        {p, "at", 0, 1.0332274527998859, 101.325},        // 101325/98066.5
        {rho, "g/cm^3", 0, 1, 1000},
        {rho, "mol/l", M_water, 55.5083734381331, 1000},  // 1000/18.0153
        {rho, "mol/cm^3", M_water, 0.055508373438133, 1000},
        {rho, "m^3/kg", 0, 0.001, 1000},
        {rho, "cm^3/g", 0, 1, 1000},
        {rho, "l/kg", 0, 1, 1000},
        {rho, "cm^3/mol", M_water, 18.0153, 1000},
        {rho, "m^3/mol", M_water, 18.0153e-6, 1000},
        {rho, "lb/ft^3", 0, 62.42796057614462, 1000},  // 1000 0.3048^3/0.45359237
        {rho, "ft^3/lb", 0, 1 / 62.42796057614462, 1000},
        {v, "m^3/kg", M_water, 0.001, 0.0180153},
        {v, "cm^3/mol", 0, 18.0153, 0.0180153},
        {v, "m^3/mol", 0, 18.0153e-6, 0.0180153},
        {v, "kg/m^3", M_water, 1000, 0.0180153},
        {v, "g/cm^3", M_water, 1, 0.0180153},
        {v, "mol/l", 0, 55.5083734381331, 0.0180153},
        {B, "cm^3/mol", 0, -1158, -1.158},
        {B, "cm^3/g", M_water, -100, -1.80153},
        {h, "J/mol", 0, 16, 16},
        {h, "kJ/mol", 0, 0.016, 16},
        {h, "kJ/kg", M_propane, 425, 18740.63},  // 425 44.0956
        {h, "J/kg", M_propane, 425e3, 18740.63},
        {h, "BTU/lb", M_propane, 182.7171109200344, 18740.63},        // 425/2.326
        {h, "kcal_IT/kg", M_propane, 101.509506066685774, 18740.63},  // 425/4.1868
        {h, "kcal_th/mol", 0, 1, 4184},
        {hLV, "kJ/kg", M_water, 2256.5, 40651.52445},  // 2256.5 18.0153
        {s, "J/(mol K)", 0, 188.8, 188.8},
        {cp, "kJ/(kg K)", M_water, 4.1868, 75.42645804},  // 4.1868 18.0153
        {cp, "BTU/(lb °F)", M_water, 1, 75.42645804},
        {cp, "kcal_IT/(kg K)", M_water, 1, 75.42645804},
        {w, "km/h", 0, 1234.8, 343},
        {w, "ft/s", 0, 1000, 304.8},
        {mass, "t", 0, 0.02, 20},
        {mass, "g", 0, 20e3, 20},
        {mass, "lb", 0, 1, 0.45359237},
        {mass, "kmol", M_propane, 2, 88.1912},
        {tank_volume, "l", 0, 100, 0.1},
        {tank_volume, "ft^3", 0, 1, 0.028316846592},
        {alpha, "1/°F", 0, 1, 1.8},
        {chi, "1/bar", 0, 1, 0.01},
        {delta, "K/bar", 0, 1, 0.01},
        {delta, "°F/psi", 0, 1, 0.0805765209612273},
    };
    for (const Figure& f : figures) {
        const UnitMatch unit = find_unit(f.q, f.unit, f.M);
        ASSERT_EQ(unit.fault, "") << f.unit;
        constexpr double digits = 1e-13;
        EXPECT_NEAR(unit.conversion.to_own(f.x), f.own, digits * std::max(std::fabs(f.own), 1.0))
            << f.x << " " << f.unit;
        EXPECT_NEAR(unit.conversion.from_own(f.own), f.x, digits * std::max(std::fabs(f.x), 1.0))
            << f.own << " in " << f.unit;
    }
}

TEST(UnitTable, every_unit_of_every_quantity_goes_there_and_back) {
    for (std::size_t i = 0; i < quantity_count; ++i) {
        const Quantity q = quantity(i);
        const std::vector<std::string_view> units = units_of(q);
        ASSERT_FALSE(units.empty());
        EXPECT_EQ(find_unit(q, units.front(), 0.0).conversion, UnitConversion{}) << quantity_info(q).name;
        if (const std::string_view own = unit_text(Units{}, q); !own.empty()) {
            EXPECT_EQ(units.front(), own);
        }
        std::set<std::string> keys;
        for (const std::string_view name : units) {
            const UnitMatch unit = find_unit(q, name, M_water);
            EXPECT_EQ(unit.fault, "") << name;
            EXPECT_EQ(unit.name, name);
            EXPECT_TRUE(keys.insert(unit_key(name)).second) << name << " stands twice";
            for (const double own : {0.37, 300.0, 81234.5})
                EXPECT_NEAR(unit.conversion.to_own(unit.conversion.from_own(own)), own, 1e-12 * own) << name;
        }
    }
}

TEST(UnitTable, spellings_of_one_unit) {
    const struct {
        Quantity q;
        const char* name;
        std::vector<const char*> spellings;
    } units[] = {
        {Quantity::T, "°C", {"C", "degC", "°C", " C ", "[°C]", "(C)", "℃"}},
        {Quantity::T, "°F", {"F", "degF", "°F"}},
        {Quantity::rho, "kg/m^3", {"kg/m3", "kg/m³", "kg/m**3", "kg m^-3", "kg m-3", "kg·m⁻³", "kg / m ^3"}},
        {Quantity::rho, "kg/l", {"kg/L", "kg/dm3", "Kg/l"}},
        {Quantity::rho, "g/cm^3", {"g/cc", "g/ml", "g/mL", "g/cm³"}},
        {Quantity::s,
         "kJ/(kmol K)",
         {"kJ/kmol/K", "kJ/(kmol*K)", "kJ/(kmol·K)", "kJ kmol^-1 K^-1", "kJ/(K kmol)", "kJ/(kmol °C)",
          "KJ/(kmol K)", "(kJ/kmol)/K"}},
        {Quantity::cp, "BTU/(lb °F)", {"BTU/lb/F", "Btu/(lbm °R)", "BTU/(lb F)"}},
        {Quantity::p, "MPa", {"MPa", "MPA"}},
        {Quantity::p, "psi", {"psia", "PSI"}},
        {Quantity::alpha, "1/K", {"K^-1", "1/°C", "1 / K"}},
        {Quantity::delta, "K/bar", {"°C/bar", "K bar-1"}},
    };
    for (const auto& unit : units)
        for (const char* spelling : unit.spellings)
            EXPECT_EQ(find_unit(unit.q, spelling, M_water).name, unit.name) << spelling;
}

TEST(UnitTable, refuses_what_is_no_unit_of_the_quantity) {
    const struct {
        Quantity q;
        const char* text;
        double M;
        const char* fault;
    } refusals[] = {
        {Quantity::T, "furlong", 18, "T has no unit \"furlong\"; it may be K, °C, °F, °R"},
        {Quantity::T, "", 18, "T has no unit \"\""},
        {Quantity::T, "C^2", 18, "T has no unit"},
        {Quantity::T, "1/K", 18, "T has no unit"},
        {Quantity::p, "K", 18, "p has no unit \"K\"; it may be kPa, Pa"},
        {Quantity::p, "mPa", 18, "p has no unit \"mPa\""},  // millipascal is not MPa
        {Quantity::p, "mpa", 18, "p has no unit"},
        {Quantity::p, "barg", 18, "p has no unit"},  // above the atmosphere
        {Quantity::p, "psig", 18, "p has no unit"},
        {Quantity::p, "bar bar", 18, "p has no unit"},
        {Quantity::h, "kcal/kg", 18, "kcal_IT/kg, kcal_th/kg"},  // of two calories
        {Quantity::s, "kJ/kmol K", 18, "s has no unit"},         // K stands above the line
        {Quantity::s, "kJ/(kmol K", 18, "s has no unit"},
        {Quantity::s, "kJ/kmol", 18, "s has no unit"},
        {Quantity::B, "mol/l", 18, "B has no unit"},  // it goes through 0
        {Quantity::rho, "kg/m^", 18, "rho has no unit"},
        {Quantity::rho, "kg/m^33", 18, "rho has no unit"},
        {Quantity::rho, "((((((((((kg/m^3))))))))))", 18, "rho has no unit"},
        {Quantity::h, "kJ/kg", 0, "h in kJ/kg needs the molar mass"},
        {Quantity::h, "kJ/kg", std::numeric_limits<double>::quiet_NaN(), "needs the molar mass"},
        {Quantity::rho, "mol/l", -1, "rho in mol/l needs the molar mass"},
    };
    for (const auto& r : refusals)
        EXPECT_THAT(find_unit(r.q, r.text, r.M).fault, HasSubstr(r.fault)) << r.text;
}

TEST(OutputUnits, by_symbol_key_and_word) {
    const OutputUnits units =
        parse_units(" h = kJ/kg, T=C ,energy=J/mol,entropy=J/(g K),delta(LV)h=MJ/kg,V=l,m=g", M_propane);
    ASSERT_EQ(units.fault, "");
    const auto name = [&](Quantity q) {
        const auto it = units.by_quantity.find(q);
        return it == units.by_quantity.end() ? std::string_view("own") : it->second.name;
    };
    EXPECT_EQ(name(Quantity::h), "kJ/kg");  // named itself, whatever the word says
    for (const Quantity q : {Quantity::g, Quantity::u, Quantity::a, Quantity::eH, Quantity::eU})
        EXPECT_EQ(name(q), "J/mol");
    EXPECT_EQ(name(Quantity::hLV), "MJ/kg");
    for (const Quantity q : {Quantity::s, Quantity::cp, Quantity::cV, Quantity::sLV, Quantity::cpId})
        EXPECT_EQ(name(q), "J/(g K)");
    EXPECT_EQ(name(Quantity::T), "°C");
    EXPECT_EQ(name(Quantity::tank_volume), "l");
    EXPECT_EQ(name(Quantity::mass), "g");
    for (const Quantity q : {Quantity::p, Quantity::rho, Quantity::v, Quantity::w, Quantity::B})
        EXPECT_EQ(name(q), "own");
    EXPECT_EQ(parse_units("hLV=kJ/kg,cpId=kJ/(kg K)", 18).by_quantity.size(), 2u);

    EXPECT_THAT(parse_units("x=K", 18).fault, HasSubstr("\"x\" is no quantity; there are T, p, rho, v, h"));
    EXPECT_THAT(parse_units("t=C", 18).fault, HasSubstr("\"t\" is no quantity"));
    EXPECT_THAT(parse_units("T=bar", 18).fault, HasSubstr("T has no unit \"bar\""));
    EXPECT_THAT(parse_units("T=C,T=F", 18).fault, HasSubstr("T has two units"));
    EXPECT_THAT(parse_units("energy=K", 18).fault, HasSubstr("h has no unit \"K\""));
    EXPECT_THAT(parse_units("h=kJ/kg", 0).fault, HasSubstr("molar mass"));
    for (const char* text : {"", "T", "T=C,", ",", "T C"})
        EXPECT_THAT(parse_units(text, 18).fault, HasSubstr("names no unit")) << text;
}

}  // namespace
}  // namespace quom
