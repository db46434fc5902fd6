// The record of a substance beside the equation of state, as a block of a report.
#pragma once
#include "calc/record_comparison.h"
#include "quantities/units.h"
#include "report/calc_record.h"
#include "report/report.h"

namespace quom {

// "comparison": T; p, rhoL, hLV of the equation of state, p_record .. of the record, p_difference .. [%] of
// the first from the second; evp, the code of the vapor pressure equation. In text one line a quantity that
// can be compared; in JSON only where none can.
Block comparison_block(const RecordComparison& comparison, const Units& units, const UnitFactors& factors);
// The same for the state of an outcome.
Block comparison_block(const Fluid& fluid, const Outcome& outcome, const Units& units);

}  // namespace quom
