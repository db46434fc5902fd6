#include "forms/input_units.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "forms/refusal.h"

namespace quom {
namespace {

using ::testing::ElementsAre;

constexpr double M = 44.0956;  // propane

std::vector<std::string> names(const std::vector<InputUnit>& units) {
    std::vector<std::string> list;
    for (const InputUnit& unit : units) list.emplace_back(unit.name);
    return list;
}

TEST(InputUnits, begin_with_that_of_the_caption) {
    EXPECT_THAT(names(input_units(Quantity::T, "K", M)), ElementsAre("K", "°C", "°F"));
    EXPECT_THAT(names(input_units(Quantity::p, "kPa", 0)), ElementsAre("kPa", "bar", "MPa", "atm", "psi"));
    EXPECT_THAT(names(input_units(Quantity::mass, "kmol", M)),
                ElementsAre("kmol", "kg", "g", "t", "lb", "mol"));
    // Without M the units of the other base are not offered.
    EXPECT_THAT(names(input_units(Quantity::rho, "kg/m^3", M)), ElementsAre("kg/m^3", "g/cm^3", "kmol/m^3"));
    EXPECT_THAT(names(input_units(Quantity::rho, "kg/m^3", 0)), ElementsAre("kg/m^3", "g/cm^3"));
    EXPECT_THAT(names(input_units(Quantity::v, "m^3/kmol", 0)), ElementsAre("m^3/kmol", "l/mol", "cm^3/mol"));
    // A reduced volume has none.
    EXPECT_THAT(names(input_units(Quantity::v, "(m^3/m^3)", M)), ElementsAre());
}

// By hand: 273.15 K = 0 °C = 32 °F, 1 atm = 101.325 kPa = 14.6959487755 psi, 1 kmol/m^3 = M kg/m^3, 1 lb =
// 0.45359237 kg, 1 ft = 0.3048 m.
TEST(InputUnits, convert_by_hand_figures) {
    struct Case {
        Quantity quantity;
        const char *text, *caption, *other, *there;
    };
    for (const Case& c : {Case{Quantity::T, "293.15", "K", "°C", "20"},
                          {Quantity::T, "293.15", "K", "°F", "68"},
                          {Quantity::T, "350", "K", "°C", "76.85"},
                          {Quantity::T, "0", "K", "°C", "-273.15"},
                          {Quantity::p, "101.325", "kPa", "atm", "1"},
                          {Quantity::p, "101.325", "kPa", "psi", "14.6959487755"},
                          {Quantity::p, "1000", "kPa", "bar", "10"},
                          {Quantity::p, "2500", "kPa", "MPa", "2.5"},
                          {Quantity::rho, "440.956", "kg/m^3", "kmol/m^3", "10"},
                          {Quantity::rho, "500", "kg/m^3", "g/cm^3", "0.5"},
                          {Quantity::v, "2", "m^3/kmol", "cm^3/mol", "2000"},
                          {Quantity::v, "0.1", "m^3/kg", "m^3/kmol", "4.40956"},
                          {Quantity::mass, "0.45359237", "kg", "lb", "1"},
                          {Quantity::mass, "440.956", "kg", "kmol", "10"},
                          {Quantity::mass, "2", "kmol", "kg", "88.1912"},
                          {Quantity::tank_volume, "0.028316846592", "m^3", "ft^3", "1"},
                          {Quantity::tank_volume, "1", "m^3", "l", "1000"}}) {
        const std::vector<InputUnit> units = input_units(c.quantity, c.caption, M);
        const InputUnit& other = units[unit_at(units, c.other)];
        ASSERT_EQ(other.name, c.other);
        EXPECT_EQ(text_in_unit(c.text, units[0], other), c.there) << c.text << c.caption;
        EXPECT_EQ(text_in_unit(c.there, other, units[0]), c.text) << c.there << c.other;
    }
    const std::vector<InputUnit> T = input_units(Quantity::T, "K", M);
    EXPECT_EQ(text_in_unit("20,5", T[1], T[0]), "293.65");
    for (const char* no_number : {"", " ", "-", "1.2.3", "20 °C"})
        EXPECT_EQ(text_in_unit(no_number, T[1], T[0]), "") << no_number;
    EXPECT_EQ(zero_text(T[0], T[0]), "0");
    EXPECT_EQ(zero_text(T[0], T[2]), "-459.67 °F");
    const std::vector<InputUnit> p = input_units(Quantity::p, "kPa", M);
    EXPECT_EQ(zero_text(p[0], p[1]), "0");
    // A density given as a volume: nothing stands for 0.
    const InputUnit volume{"m^3/kg", {.factor = 1, .inverse = true}};
    EXPECT_EQ(text_in_unit("0", volume, input_units(Quantity::rho, "kg/m^3", M)[0]), "");
}

TEST(InputUnits, read_a_number_with_its_unit) {
    const InputUnit K = input_units(Quantity::T, "K", M)[0];
    const InputUnit celsius = input_units(Quantity::T, "K", M)[1];
    const InputUnit rho = input_units(Quantity::rho, "kg/m^3", M)[0];
    EXPECT_EQ(text_without_unit("20 °C", Quantity::T, K, M), "293.15");
    EXPECT_EQ(text_without_unit("68degF", Quantity::T, celsius, M), "20");
    EXPECT_EQ(text_without_unit("0.1 m^3/kg", Quantity::rho, rho, M), "10");
    EXPECT_EQ(text_without_unit("10 kmol/m3", Quantity::rho, rho, M), "440.956");
    for (const char* none : {"20", "20 bar", "K", "", "1 000 K", "0 m^3/kg"})
        EXPECT_EQ(text_without_unit(none, none[0] == '0' ? Quantity::rho : Quantity::T, K, M), std::nullopt)
            << none;
    EXPECT_EQ(text_without_unit("10 kmol/m3", Quantity::rho, rho, 0), std::nullopt);
}

TEST(Captions, hold_name_and_unit) {
    struct Case {
        const char *caption, *name, *unit;
    };
    for (const Case& c : {Case{"      p/kPa = ", "p", "kPa"},
                          {"      T/K     ", "T", "K"},
                          {"  p(LV)/kPa = ", "p(LV)", "kPa"},
                          {"rho(L)/kg/m^3= ", "rho(L)", "kg/m^3"},
                          {"V/m^3/kg  = ", "V", "m^3/kg"},
                          {"at reference temperature To/K =", "To", "K"},
                          {"h /(kJ/kmol)", "h", "(kJ/kmol)"}}) {
        EXPECT_EQ(caption_parts(c.caption).name, c.name);
        EXPECT_EQ(caption_parts(c.caption).unit, c.unit);
    }
}

}  // namespace
}  // namespace quom
