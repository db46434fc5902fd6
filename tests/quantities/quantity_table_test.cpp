// Units of outputs: factors, unit texts, labels of list rows, texts of axes.
#include "quantities/quantity_table.h"

#include <gtest/gtest.h>

#include "base/constants.h"

namespace quom {
namespace {

constexpr double M = 44.0, Tcr = 370.0, pcr = 4250.0, vcr = 0.2;
Units units(int energy, int volume) {
    return {.EnergyMode = energy, .VolumeMode = volume, .TcrStart = Tcr, .pcrStart = pcr, .vcrStart = vcr};
}

TEST(UnitFactors, by_mode) {
    const struct {
        int energy, volume;
        double T;
        UnitFactors factors;
    } cases[] = {
        {energy_molar, volume_molar, 300, {1, 1, 1, 1}},
        {energy_per_R, volume_molar, 300, {1 / 8.31451, 1, 1, 1}},
        {energy_per_RT, volume_molar, 300, {1 / (8.31451 * 300), 1, 1, 1}},
        {energy_per_RT, volume_molar, 0, {1 / (8.31451 * 370), 1, 1, 1}},  // no T yet: that of the start
        {energy_per_mass, volume_per_mass, 300, {1 / 44.0, 1 / 44.0, 1, 1}},
        {energy_molar, reduced_volume, 300, {1, 5, 1 / 370.0, 1 / 4250.0}},
        {7, 9, 300, {1, 1, 1, 1}},  // no such units
    };
    for (const auto& c : cases) {
        const UnitFactors f = unit_factors(units(c.energy, c.volume), M, c.T);
        EXPECT_DOUBLE_EQ(f.uFactor, c.factors.uFactor) << c.energy << " at " << c.T;
        EXPECT_DOUBLE_EQ(f.vFactor, c.factors.vFactor) << c.volume;
        EXPECT_DOUBLE_EQ(f.TFactor, c.factors.TFactor) << c.volume;
        EXPECT_DOUBLE_EQ(f.pFactor, c.factors.pFactor) << c.volume;
    }
}

TEST(UnitFactors, are_1_without_their_constants) {
    for (const int energy : {energy_per_RT, energy_per_mass})
        for (const int volume : {volume_per_mass, reduced_volume})
            EXPECT_EQ(unit_factors({.EnergyMode = energy, .VolumeMode = volume}, 0.0, 0.0), UnitFactors{});
}

TEST(Quantities, texts_by_mode) {
    const struct {
        Quantity q;
        int energy, volume;
        const char* unit;
        const char* label;
        const char* axis;
    } cases[] = {
        {Quantity::T, 0, 0, "K", "T/ K", "T / K"},
        {Quantity::p, 3, 1, "kPa", "p/ kPa", "p / kPa"},
        {Quantity::rho, 0, 2, "kg/m^3", "rho/ (kg/m^3) ", "rho / (kg/m^3)"},
        {Quantity::v, 0, 0, "m^3/kmol", "v/ (m^3/kmol) ", "v / (m^3/kmol)"},
        {Quantity::v, 0, 1, "m^3/kg", "v/ (m^3/kg) ", "v / (m^3/kg)"},
        {Quantity::v, 0, 2, "v(red)", "v/ (v(red)) ", "v(red)"},
        {Quantity::h, 0, 0, "kJ/kmol", "h/ (kJ/kmol) ", "h / (kJ/kmol)"},
        {Quantity::h, 1, 0, "K", "h/ K", "h / K"},
        {Quantity::h, 2, 0, "", "h/ (R T)", "h / (R T)"},
        {Quantity::h, 3, 0, "kJ/kg", "h/ (kJ/kg) ", "h / (kJ/kg)"},
        {Quantity::s, 0, 0, "kJ/(kmol K)", "s/ (kJ/kmol/K) ", "s / (kJ/(kmol K))"},
        {Quantity::s, 1, 0, "", "s/ R ", "s / R"},
        {Quantity::s, 2, 0, "1/K", "s / (1/K) ", "s / (1/K)"},
        {Quantity::s, 3, 0, "kJ/(kg K)", "s / (kJ/(kg K)) ", "s / (kJ/(kg K))"},
        {Quantity::eU, 3, 0, "kJ/kg", "e/ (kJ/kg) ", "eU / (kJ/kg)"},
        {Quantity::cV, 0, 0, "kJ/(kmol K)", "cV/(kJ/kmol/K)", "cV / (kJ/(kmol K))"},
        {Quantity::w, 3, 1, "m/s", "as/ (m/s)", "w / (m/s)"},
        {Quantity::hLV, 2, 0, "", "delta(LV)h/(R T)", "delta(LV)h / (R T)"},
        {Quantity::sLV, 2, 0, "1/K", "delta(LV)s/(1/K))", "delta(LV)s / (1/K)"},
        {Quantity::B, 3, 1, "m^3/kmol", "B/ (m^3/kmol) ", "B / (m^3/kmol)"},
    };
    for (const auto& c : cases) {
        const Units u = units(c.energy, c.volume);
        EXPECT_EQ(unit_text(u, c.q), c.unit) << c.axis;
        EXPECT_EQ(label_text(u, c.q), c.label);
        EXPECT_EQ(axis_text(u, c.q), c.axis);
    }
}

TEST(Quantities, factor_by_kind) {
    const UnitFactors factors{.uFactor = 3, .vFactor = 5, .TFactor = 7, .pFactor = 11};
    const struct {
        Quantity q;
        double factor;
    } cases[] = {{Quantity::T, 1},    {Quantity::p, 1},     {Quantity::rho, 1}, {Quantity::v, 5},
                 {Quantity::h, 3},    {Quantity::s, 3},     {Quantity::g, 3},   {Quantity::u, 3},
                 {Quantity::a, 3},    {Quantity::eH, 3},    {Quantity::eU, 3},  {Quantity::cp, 3},
                 {Quantity::cV, 3},   {Quantity::w, 1},     {Quantity::hLV, 3}, {Quantity::sLV, 3},
                 {Quantity::cpId, 3}, {Quantity::alpha, 1}, {Quantity::B, 1}};
    for (const auto& c : cases) EXPECT_EQ(display_factor(factors, c.q), c.factor) << quantity_info(c.q).name;
}

}  // namespace
}  // namespace quom
