// The quantities of results, in one table: symbol, names, unit texts and factors. Result lists, records and
// diagram axes take their labels from here.
#pragma once
#include <array>
#include <string>
#include <string_view>

#include "quantities/units.h"

namespace quom {

enum class Quantity {
    T,
    p,
    rho,
    v,
    h,
    s,
    g,
    u,
    a,
    eH,
    eU,
    cp,
    cV,
    w,
    hLV,
    sLV,
    cpId,
    alpha,
    chi,
    beta,
    delta,
    B,
    mass,        // in a tank
    tank_volume  // of a tank or of a phase in it
};
inline constexpr std::size_t quantity_count = 24;

// What decides the factor and the unit.
enum class UnitKind {
    temperature,  // K
    pressure,     // kPa
    density,      // kg/m^3
    volume,       // by VolumeMode, vFactor
    energy,       // by EnergyMode, uFactor: kJ/kmol, K, per (R T), kJ/kg
    entropy,      // by EnergyMode, uFactor: kJ/(kmol K), per R, 1/K, kJ/(kg K)
    speed,        // m/s
    fixed,        // as in `unit`
};

struct QuantityInfo {
    Quantity quantity;
    UnitKind kind;
    std::string_view symbol;                // "h"
    std::string_view unit;                  // of the kinds that no mode changes
    std::string_view table_name;            // row of the table of mode 8
    std::string_view list_name;             // row of the functions table in the list
    std::string_view mixture;               // line of the two-phase mean, with "= "
    std::array<std::string_view, 4> label;  // "h/ (kJ/kmol) " by EnergyMode; others: the first for all modes
    std::string_view name;                  // "enthalpy h": of the console and of axes
    std::string_view value_mask;            // number form on a value line or an axis; "" the general form
};
const QuantityInfo& quantity_info(Quantity q);

// Rows of the tables of functions, in their order: v, h, s, g, u, a, eH, eU, cp, cV, w.
inline constexpr std::array<Quantity, 11> function_rows = {
    Quantity::v,  Quantity::h,  Quantity::s,  Quantity::g,  Quantity::u, Quantity::a,
    Quantity::eH, Quantity::eU, Quantity::cp, Quantity::cV, Quantity::w};

// Unit of displayed values by EnergyMode and VolumeMode: "kJ/kmol", "m^3/kg"; "" for a pure number.
std::string_view unit_text(const Units& units, Quantity q);
// "h/ (kJ/kmol) ", "v/ (m^3/kmol) ": label with unit of a list row.
std::string label_text(const Units& units, Quantity q);
// Text of an axis: "h / (kJ/kmol)", "T / K".
std::string axis_text(const Units& units, Quantity q);
// From molar, K and kPa to displayed values.
double display_factor(const UnitFactors& factors, Quantity q);

}  // namespace quom
