// Units of quantities by name: of tables that come in and of outputs.
#pragma once
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "quantities/quantity_table.h"

namespace quom {

// x in the workbench's own unit (K, kPa, kg/m^3, m^3/kmol, kJ/kmol, kJ/(kmol K), m/s, kg, m^3) from a
// table's: own = factor x + offset, or factor/x where inverse (a volume named for a density, or the other way
// round).
struct UnitConversion {
    double factor = 1, offset = 0;
    bool inverse = false;
    double to_own(double x) const;
    double from_own(double own) const;
    bool operator==(const UnitConversion&) const = default;
};
struct UnitMatch {
    std::string_view name;  // as it is written: "°C", "kJ/kg"
    UnitConversion conversion;
    std::string fault;  // "T has no unit \"furlong\"; it may be K, C, F"; empty when found
};
// The unit called by `text` for values of q; M [kg/kmol] is for units of the other base (mass, amount); where
// it is needed and not above 0: fault. "C", "°C", "degC" are one unit.
UnitMatch find_unit(Quantity q, std::string_view text, double M);
// Units that q may have, own unit first.
std::vector<std::string_view> units_of(Quantity q);
// Output units by quantity, "h=kJ/kg,T=C".
struct OutputUnits {
    std::map<Quantity, UnitMatch> by_quantity;  // what is not named keeps its own unit
    std::string fault;
};
OutputUnits parse_units(std::string_view text, double M);

}  // namespace quom
