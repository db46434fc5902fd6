// What the head of a table says of its columns: which quantity, in which unit.
#pragma once
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "quantities/quantity_table.h"

namespace quom {

// What a column is taken as.
enum class ImportQuantity { skip, T, p, rhoV, rhoL, hLV, cp, x, y };
inline constexpr std::size_t import_quantity_count = 9;
// "not used", "T", "p", "rho(V)", "rho(L)", "delta(LV)h", "cp", "x", "y".
std::string_view import_name(ImportQuantity q);
// The quantity whose units it has; none for x, y and a column that is not used.
std::optional<Quantity> quantity_of(ImportQuantity q);
// In the order of a data set, and of X-Y data.
inline constexpr std::array data_set_order = {ImportQuantity::T,    ImportQuantity::p,   ImportQuantity::rhoV,
                                              ImportQuantity::rhoL, ImportQuantity::hLV, ImportQuantity::cp};
inline constexpr std::array xy_order = {ImportQuantity::x, ImportQuantity::y};

// One cell of a head.
struct HeadCell {
    ImportQuantity quantity = ImportQuantity::skip;
    std::string unit{};        // as the table of units calls it; empty: none stands there
    bool volume = false;       // a volume in the place of the density
    bool any_density = false;  // a density that names no phase
    std::string other{};       // a quantity that no data set holds: "enthalpy h"
    std::string wrong_unit{};  // stands behind the name, and is no unit of it
};
// The names by which quantities are called in heads.
class HeadNames {
 public:
    HeadNames();
    // "T / °C", "p [bar]", "rhoL (g/cm3)", "Dampfdruck in kPa", "Temp., °C".
    HeadCell read(std::string_view text) const;

    using Map = std::map<std::string, HeadCell, std::less<>>;

 private:
    const HeadCell* find(std::string_view name) const;
    Map names_;
};

// The unit of q that stands in the text behind a name or alone: "K" of "Messwert (K)", "[K]"; its name in the
// table of units, empty where there is none.
std::string unit_in_head(std::string_view text, Quantity q);
// The quantity that can only be meant by a unit: K and °C are temperatures, bar is a pressure.
ImportQuantity quantity_of_unit(std::string_view text);

}  // namespace quom
