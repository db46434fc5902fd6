// What identifies a substance: its formula and its CAS registry number.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quom {

// Atoms of one element in a formula.
struct ElementCount {
    std::string_view symbol;
    int count = 0;
};
// Elements of a formula such as "C2H6O" or "SO2Cl2" as they stand in it, D for deuterium; none for a formula
// that is malformed or names an element that is not in the table of atomic weights.
std::optional<std::vector<ElementCount>> elements_of(std::string_view formula);

// Molar mass [kg/kmol] of a formula; none where elements_of has none.
// Abridged standard atomic weights 2021: Prohaska et al., Pure Appl. Chem. 94 (2022) 573; D is the mass of
// the nuclide: Wang et al., Chinese Phys. C 45 (2021) 030003.
std::optional<double> molar_mass(std::string_view formula);

// The same atoms in the order of Hill (1900): C, H, then the alphabet; without C the alphabet. "CH3OH" and
// "Ca(OH)2" become "CH4O" and "CaH2O2"; none for what is no formula.
std::optional<std::string> hill_formula(std::string_view formula);

// True for a CAS registry number: 2 to 7 digits, 2 digits and the check digit, joined by hyphens. The check
// digit is the sum of the others, each times its place counted from the right, modulo 10.
bool is_cas_number(std::string_view text);

}  // namespace quom
