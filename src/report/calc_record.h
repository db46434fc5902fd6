// The result vector of a calculation: 42 named slots, as records and tables keep them; a projection of the
// outcome.
#pragma once
#include <array>
#include <bitset>
#include <cstddef>
#include <optional>
#include <string_view>

#include "calc/batch_result.h"
#include "quantities/quantity_table.h"

namespace quom {

// Order and numbers are design: records, tables and searches use them. (V) block 9 to 18, (L) block 19 to 28.
enum CalcSlot : int {
    slot_T = 0,     // [K]
    slot_p = 1,     // [kPa]
    slot_rho = 2,   // specified rho [kg/m^3]
    slot_v = 3,     // specified volume, displayed unit
    slot_rhoL = 4,  // rho(L): specified in mode 2, result of mode 14 [kg/m^3]
    slot_cpS = 5,
    slot_x6 = 6,  // not in use
    slot_cpId = 7,
    slot_x8 = 8,  // not in use
    slot_vV = 9,
    slot_hV = 10,
    slot_sV = 11,
    slot_gV = 12,
    slot_uV = 13,
    slot_aV = 14,
    slot_eHV = 15,
    slot_eUV = 16,
    slot_cpV = 17,
    slot_cVV = 18,
    slot_vL = 19,
    slot_hL = 20,
    slot_sL = 21,
    slot_gL = 22,
    slot_uL = 23,
    slot_aL = 24,
    slot_eHL = 25,
    slot_eUL = 26,
    slot_cpL = 27,
    slot_cVL = 28,
    slot_hLV = 29,     // delta(LV)h
    slot_sLV = 30,     // delta(LV)s
    slot_alphaV = 31,  // [1/K]
    slot_chiV = 32,    // [1/kPa]
    slot_betaV = 33,   // [1/K]
    slot_deltaV = 34,  // [K/kPa]
    slot_alphaL = 35,
    slot_chiL = 36,
    slot_betaL = 37,
    slot_deltaL = 38,
    slot_wL = 39,  // [m/s]
    slot_wV = 40,  // [m/s]
    slot_B = 41,   // [m^3/kmol]
    slot_count = 42
};

// Values in displayed units (volumes times vFactor, energies and heat capacities times uFactor); a slot
// without a value is 0 and not set.
struct CalcResult {
    std::array<double, slot_count> values{};
    std::bitset<slot_count> present;
    double operator[](int slot) const { return values[static_cast<std::size_t>(slot)]; }
    bool has(int slot) const { return present[static_cast<std::size_t>(slot)]; }
    void set(int slot, double x) {
        values[static_cast<std::size_t>(slot)] = x;
        present.set(static_cast<std::size_t>(slot));
    }
};
CalcResult calc_result(const Outcome& outcome, const UnitFactors& factors);

// Factors of the displayed values of an outcome: those at its T.
UnitFactors outcome_factors(const Fluid& fluid, const Outcome& outcome, const Units& units);

// A function (v to w, cp(idG), rho) of a phase; absent where it does not exist.
std::optional<double> function_value(const PhaseOutcome& phase, Quantity q);

// Name of a slot in the head of the record, its key in JSON ("h_V"; "" for slots "x"), and what it holds
// (slots "x": Quantity::T, never set).
std::string_view slot_name(CalcSlot slot);
std::string_view slot_key(CalcSlot slot);
Quantity slot_quantity(CalcSlot slot);
// Slot of a function (v to w) of a phase: 0 L, 1 V.
CalcSlot function_slot(Quantity q, int phase);

}  // namespace quom
