// Texts of the axes, by the units chosen, and the text of a curve's parameter.
#pragma once
#include <string>
#include <string_view>

#include "diagrams/diagram_kinds.h"
#include "quantities/units.h"

namespace quom {

struct AxisTexts {
    std::string X, Y;
    bool operator==(const AxisTexts&) const = default;
};
// Texts of both axes of a kind; empty for a kind without axes of its own (process lines).
AxisTexts axis_texts(Kind kind, const Units& units);

// Unit of the values on an axis: "kJ/kmol", "kPa*m^3/kmol"; empty for a pure number.
std::string_view axis_unit(AxisQuantity quantity, const Units& units);
// Symbol of a quantity: "v", "delta(LV)h", "T(surr)*s".
std::string_view axis_symbol(AxisQuantity quantity);

// Heading of a kind; that of a pair of functions has the unit of energies between its parts.
std::string kind_title(Kind kind, const Units& units);

// Value of the parameter of a section, T [K], p [kPa] or v [m^3/kmol], as labels of curves show it:
// "300.00 K", "101.325 kPa", "0.2016 m^3/kmol"; a pure number where quantities are reduced. Empty for a
// section without a parameter.
std::string parameter_text(Section section, double value, const Units& units, const UnitFactors& factors);

}  // namespace quom
