// The quantities of results, in one table: symbol, names, unit texts and factors. Result lists, records and
// diagram axes take their labels from here.
#pragma once
#include <array>
#include <string>
#include <string_view>

#include "calc/calc_slots.h"
#include "session/session.h"

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
    B
};

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
};
const QuantityInfo& quantity_info(Quantity q);

// Rows of the tables of functions, in their order: v, h, s, g, u, a, eH, eU, cp, cV, w.
inline constexpr std::array<Quantity, 11> function_rows = {
    Quantity::v,  Quantity::h,  Quantity::s,  Quantity::g,  Quantity::u, Quantity::a,
    Quantity::eH, Quantity::eU, Quantity::cp, Quantity::cV, Quantity::w};

// Unit of displayed values by EnergyMode and VolumeMode: "kJ/kmol", "m^3/kg"; "" for a pure number.
std::string_view unit_text(const Session& s, Quantity q);
// "h/ (kJ/kmol) ", "v/ (m^3/kmol) ": label with unit of a list row.
std::string label_text(const Session& s, Quantity q);
// From molar, K and kPa to displayed values, with the uFactor and vFactor in force.
double display_factor(const Session& s, Quantity q);

// Factor of energies and heat capacities at T [K]: 1, 1/R, 1/(R T), 1/M. A T below 1e-6 takes TcrStart;
// without that, or without M, the factor is 1.
double unitFactor(const Session& s, double T);
// "m^3/kmol", "m^3/kg" or "v(red)".
std::string_view VolumeName(const Session& s);

// Name of a slot in the head of the record, and what it holds (slots "x": Quantity::T, always 0).
std::string_view slot_name(CalcSlot slot);
Quantity slot_quantity(CalcSlot slot);
// Slot of a function (v to w) of a phase: 0 L, 1 V.
CalcSlot function_slot(Quantity q, int phase);

}  // namespace quom
