// Units of outputs: what the user chose, and the factors that follow.
#pragma once
#include <string_view>

namespace quom {

// Numbers of EnergyMode and VolumeMode, as project files keep them.
enum EnergyUnit : int { energy_molar = 0, energy_per_R = 1, energy_per_RT = 2, energy_per_mass = 3 };
enum VolumeUnit : int { volume_molar = 0, volume_per_mass = 1, reduced_volume = 2 };

// Chosen units. Written by the options and the project file.
struct Units {
    int EnergyMode = energy_molar;  // 0 kJ/kmol, 1 K (per R), 2 per (R T), 3 kJ/kg
    int VolumeMode = volume_molar;  // 0 m^3/kmol, 1 m^3/kg, 2 reduced
    double TcrStart = 0, pcrStart = 0,
           vcrStart = 0;  // start values of diagrams and of reduced units [K], [kPa], [m^3/kmol]
    bool operator==(const Units&) const = default;
};

// From molar energies, molar volumes, K and kPa to displayed values.
struct UnitFactors {
    double uFactor = 1;  // energies, entropies, heat capacities
    double vFactor = 1;  // volumes
    double TFactor = 1, pFactor = 1;
    bool operator==(const UnitFactors&) const = default;
};
// Factors for a substance of molar mass M [kg/kmol] at T [K] (EnergyMode 2; a T below 1e-6 takes TcrStart). A
// factor whose constants are missing is 1.
UnitFactors unit_factors(const Units& units, double M, double T);

// "m^3/kmol", "m^3/kg" or "v(red)".
std::string_view VolumeName(const Units& units);

}  // namespace quom
