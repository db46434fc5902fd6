// The units in which values come in and go out, in one table: for options, heads of tables, outputs and
// windows.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "quantities/quantity_table.h"

namespace quom {

// From a unit to the workbench's own (K, kPa, kg/m^3, m^3/kmol, kJ/kmol, kJ/(kmol K), m/s, kg, m^3):
//     own = factor x + offset,  or  own = factor / x  where inverse (a density given as a volume, and the
//     reverse).
struct UnitConversion {
    double factor = 1, offset = 0;
    bool inverse = false;
    double to_own(double x) const { return inverse ? factor / x : factor * x + offset; }
    double from_own(double own) const { return inverse ? factor / own : (own - offset) / factor; }
    bool operator==(const UnitConversion&) const = default;
};

// A unit of a quantity, or why there is none.
struct UnitMatch {
    std::string_view name;  // as the workbench writes it: "°C", "kJ/kg"
    UnitConversion conversion{};
    std::string fault{};  // "T has no unit "furlong"; it may be K, °C, °F, °R"; empty when found
};

// The unit of q that `text` calls, in any spelling: "°C", "degC" and "C" are one unit, so are "kg/m^3",
// "kg/m3", "kg m-3" and "kg/m³", and "kJ/kmol/K" and "kJ/(kmol K)". Temperatures in a product or quotient are
// differences. M [kg/kmol]: for units of the other base (mass, amount of substance); a fault where it is
// needed and not above 0.
UnitMatch find_unit(Quantity q, std::string_view text, double M);

// The units that q may have, its own first.
std::vector<std::string_view> units_of(Quantity q);

// Units chosen for an output; a quantity that is not named keeps its own unit.
struct OutputUnits {
    std::map<Quantity, UnitMatch> by_quantity{};
    std::string fault{};  // which name or unit is not possible, and what is
};

// Reads "h=kJ/kg,T=C". A quantity is called by its symbol in tables and keys (T, p, rho, v, h, cp, delta(LV)h
// or hLV,
// ...); "energy" stands for h, g, u, a, eH, eU, delta(LV)h, and "entropy" for s, cp, cV, delta(LV)s, cp(idG)
// where they are not named themselves.
OutputUnits parse_units(std::string_view text, double M);

}  // namespace quom
