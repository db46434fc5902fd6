// Texts of axes and labels by the units chosen.
#include "diagrams/axis_texts.h"

#include <gmock/gmock.h>

namespace quom {
namespace {

constexpr Units molar{}, specific{.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass},
    reduced{.VolumeMode = reduced_volume}, per_R{.EnergyMode = energy_per_R},
    per_RT{.EnergyMode = energy_per_RT},
    per_R_reduced{.EnergyMode = energy_per_R, .VolumeMode = reduced_volume};

struct Case {
    int kind;
    Units units;
    const char *X, *Y;
};

TEST(AxisTexts, follow_the_units) {
    const Case cases[] = {
        {1, molar, "v / (m^3/kmol)", "p / kPa"},
        {1, specific, "v / (m^3/kg)", "p / kPa"},
        {1, reduced, "V(red)", "p / p(cr)"},
        {2, molar, "p / kPa", "pv / (kPa*m^3/kmol)"},
        {2, specific, "p / kPa", "pv / (kPa*m^3/kg)"},
        {190, reduced, "p / p(cr)", "p(red) * v(red)"},
        {26, reduced, "p / p(cr)", "rho / (kg/m^3)"},
        {4, reduced, "rho / (kg/m^3)", "T / T(cr)"},
        {8, specific, "T / K", "rho / (kg/m^3)"},
        {9, reduced, "T / T(cr)", "p / p(cr)"},
        {10, molar, "1/T / (1/K) ", "ln(p/kPa) "},
        {10, reduced, "1 / T(red)", "ln (p/p(cr))"},
        {11, molar, "1/T / (1/K)", "dln(p/kPa) / d(1/T) "},
        {11, reduced, "1 / T(red)", "dln(p/kPa) / d(1/T) "},
        {13, per_RT, "T / K", "delta(LV)h / (R T)"},
        {14, molar, "T / K", "u / (kJ/kmol) "},
        {15, per_R_reduced, "T / T(cr)", "h / K"},
        {16, specific, "T / K", "s / (kJ/kg/K)) "},
        {16, per_R, "T / K", "s / R "},
        {17, per_RT, "T / K", "g / (R T)"},
        {18, molar, "T / K", "eH / (kJ/kmol) "},
        {25, reduced, "T / T(cr)", "a / (kJ/kmol) "},
        {94, molar, "T / K", "e / (kJ/kmol) "},
        {95, specific, "T / K", "e / (kJ/kg) "},
        {19, per_RT, "T / K", "cp / (1/K) "},
        {92, specific, "T / K", "cp / (kJ/kg/K)) "},
        {185, per_R, "T / K", "cp / R "},
        {185, molar, "T / K", "cV / (kJ/kmol/K) "},
        {159, per_R, "v / (m^3/kmol)", "cV / R "},
        {30, molar, "T / K", "delta s / (kJ/kmol/K) "},
        {33, specific, "T / K", "delta cp /(kJ/ (kg K)) "},
        {42, per_RT, "p / kPa", "delta g / (R T)"},
        {34, per_R, "T / K", "delta / (K/kPa)"},
        {107, specific, "s / (kJ/kg/K)) ", "h / (kJ/kg) "},
        {22, molar, "h / (kJ/kmol) ", "e / (kJ/kmol) "},
        {109, molar, "(T(surr) * s) / (kJ/kmol) ", "e / (kJ/kmol) "},
        {23, specific, "T(surr) * s / (kJ/kg) ", "e / (kJ/kg) "},
        {300, reduced, "T / T(cr)", "rho / (kg/m^3)"},
        {301, specific, "T / K", "v / (m^3/kg)"},
        {301, reduced, "T / T(cr)", "v / v(cr), calc."},
        {302, specific, "T / K", "cp / (kJ/kg/K) "},
        {304, per_R, "T / K", "cp / R "},
        {305, specific, "T / K", "delta(LV)h / (kJ/kg) "},
        {314, reduced, "T / T(cr)", "p / p(cr)"},
        {201, molar, "", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(axis_texts(kind_of(c.kind), c.units), (AxisTexts{c.X, c.Y}))
            << c.kind << " in modes " << c.units.EnergyMode << ", " << c.units.VolumeMode;
    // The label of a volume follows the unit of the volume where that of energies is another one.
    EXPECT_EQ(axis_texts(Kind::db_vL, {.EnergyMode = energy_per_mass}).Y, "v / (m^3/kmol)");
}

TEST(AxisTexts, titles_of_pairs_name_the_energy_unit) {
    EXPECT_EQ(kind_title(Kind::h_s_isotherm, molar),
              "Enthalpy H vs. (kJ/kmol) Entropy S (isothermal section)");
    EXPECT_EQ(kind_title(Kind::h_s_isobar, specific), "Enthalpy H vs. (kJ/kg) Entropie S (isobaric section)");
    EXPECT_EQ(kind_title(Kind::eH_T_isochore, molar), "Exergy of the Enthalpy E(H) (isochoric sectiont)");
}

TEST(AxisTexts, of_parameters) {
    const UnitFactors own, of_propane{.vFactor = 5.0, .TFactor = 1 / 369.8, .pFactor = 1 / 4248.0};
    EXPECT_EQ(parameter_text(Section::isothermal, 300, molar, own), "300.00 K");
    EXPECT_EQ(parameter_text(Section::isobaric, 101.325, molar, own), "101.325 kPa");
    EXPECT_EQ(parameter_text(Section::isobaric, 500, molar, own), "500.0 kPa");
    EXPECT_EQ(parameter_text(Section::isochoric, 0.2, molar, own), "0.2000 m^3/kmol");
    EXPECT_EQ(parameter_text(Section::isochoric, 2.2047, specific, {.vFactor = 0.5}), "1.10235 m^3/kg");
    EXPECT_EQ(parameter_text(Section::isothermal, 184.9, reduced, of_propane), "0.5");
    EXPECT_EQ(parameter_text(Section::isochoric, 0.2, reduced, of_propane), "1.0");
    EXPECT_EQ(parameter_text(Section::projection, 300, molar, own), "");
}

}  // namespace
}  // namespace quom
