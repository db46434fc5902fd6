// What a curve is called on the sheet and in the legend.
#pragma once
#include "diagrams/graph_document.h"

namespace quom {

// Label and legend text of a curve, without its number. Sections are called by their parameter, curves of the
// phase equilibrium by what they show and the model behind it, with "(L) ", "(V) " or "(V-L) " before a
// branch. The legend adds substance and equation of state; a note of the calculation comes first.
CurveText curve_text(const Fluid& fluid, const CurveInput& input, const CurveResult& result);

}  // namespace quom
