// Many calculations of mode 3 or 8 at once: the numbers that CalcBatch gives, within 1e-12 of their scale,
// through the batches of states.
#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "calc/outcome.h"
#include "engine/state_columns.h"

namespace quom {

struct StateRows {
    StateColumns columns;         // [m^3/kmol], [kg/m^3], [kJ/kmol], [kJ/(kmol K)], [m/s]
    std::vector<double> eH, eU;   // [kJ/kmol]
    std::vector<PhaseWord> word;  // L or V: the one phase that the columns are of
    std::vector<std::int16_t> region;
    // 1: left to CalcBatch, because the state is saturated or critical, has no result, lacks a function, or
    // carries a warning; what stands in the columns has no meaning.
    std::vector<std::uint8_t> single;
};

// Whether rows of this input can go through calc_state_rows; T and p of the input are not looked at. False
// where each row would carry a warning or needs more than the equation of state.
bool has_state_rows(const Fluid& fluid, const StateInput& input);

// States at T[i] [K], p[i] [kPa], for an input that has_state_rows takes. Both spans of one length.
void calc_state_rows(const Fluid& fluid, const StateInput& input, std::span<const double> T,
                     std::span<const double> p, StateRows& out);

}  // namespace quom
