// Mixtures of the two saturated phases.
#pragma once
#include <array>
#include <cstdint>

#include "engine/thermo_functions.h"

namespace quom {

// Quantities of the table, in the order of the result columns; the first ones are those of IsoFunction.
enum LeverQuantity : int {
    lever_v,
    lever_h,
    lever_s,
    lever_g,
    lever_u,
    lever_a,
    lever_eH,
    lever_eU,
    lever_cp,
    lever_cV,
    lever_count
};

struct LeverRow {
    double L = 0, V = 0, mix = 0;
};
using LeverTable = std::array<LeverRow, lever_count>;

// Table of the saturated phases; the mixtures are 0.
LeverTable lever_table(const StateFunctions& L, const StateFunctions& V);
// The mixtures as a state; phase functions that do not mix (w, ln phi, cp(idG)) are NaN.
StateFunctions lever_state(const LeverTable& table);

// Vapor fraction at which a mixture of both phases has the value mix of the quantity Index:
//     fraction = (mix - L)/(V - L),   z = L + fraction (V - L) for every other quantity.
// Err 1: the phases agree in it, within 1e-10, and the value is another one. Err 2: they agree in it and
// not in another quantity, so that the fraction is open. Where all of them agree the fraction is 1.
struct LeverResult {
    double Fraction = 0;
    LeverTable Table{};    // with the mixtures
    std::int16_t Err = 0;  // 0, 1, 2
};
LeverResult LeverRule(int Index, const LeverTable& Table);

}  // namespace quom
