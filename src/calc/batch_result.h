// The result of one data point of a batch: what lists keep of an outcome.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "calc/outcome.h"
#include "quantities/units.h"

namespace quom {

// The phases that fill slots, columns and lists: those of the phase word, so that a fluid above the critical
// point stands once. Null for a phase that is not there.
const PhaseOutcome* phase_of(const Outcome& outcome, Phase phase);
// Rows of the extended output, by the number of their label: 0 to 5 first derivatives, 6 to 8 mechanical
// coefficients, 9 to 13 second derivatives (10 and 11 stay empty), 14 to 23 fugacity and residual functions,
// Joule-Thomson coefficient, cV, cp.
inline constexpr std::size_t ExtendedRows = 24;
// L and V value of one row, side by side; 0 where the phase does not exist.
struct PhasePair {
    float L = 0, V = 0;
    bool operator==(const PhasePair&) const = default;
};
enum class PointState : std::uint8_t { open, done, failed };  // not calculated; with and without a result

// Result of one data point as lists and the record keep it: singles, 0 for "no value".
struct BatchResult {
    std::array<char, 3> Phase{' ', ' ', ' '};  // " V ", " L ", "V+L", blanks: no result
    PointState state = PointState::open;
    float TCalc = 0;                   // [K], calculated or specified
    float pCalc = 0;                   // [kPa], calculated or specified
    float rhoVCalc = 0, rhoLCalc = 0;  // [kg/m^3]
    float hLVCalc = 0;                 // [kJ/kmol], modes 4 to 7
    std::array<PhasePair, ExtendedRows>
        Extended{};                             // by label number, molar units; only with extended output
    float h = 0, s = 0, g = 0, eH = 0, eU = 0;  // mode 8, V-phase if there is one, else L; displayed units
    std::string_view phase() const { return {Phase.data(), Phase.size()}; }
    bool has_result() const { return phase() != "   "; }
    bool operator==(const BatchResult&) const = default;
};
// Of an outcome; state is done or failed.
BatchResult batch_result(const Outcome& outcome, const UnitFactors& factors);

// One row of the extended output of a phase in molar units; NaN where it does not exist.
double extended_value(const PhaseArrays& arrays, std::size_t row);
static_assert(sizeof(BatchResult) == 236);

}  // namespace quom
