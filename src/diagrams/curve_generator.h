// Curves of diagrams as lists of points: one operation over all kinds.
#pragma once
#include <optional>
#include <vector>

#include "base/messages.h"
#include "diagrams/curve.h"

namespace quom {

// The curve of a kind at a parameter, in the range and the units given. The saturation of sections is always
// that of the cubic equation (pLV_EOS, TLV_EOS); p(LV), ln p(LV), its slope, delta(LV)h and the boundaries of
// function pairs follow the concept. Every point is finite. Ends after 20 Dens + 1000 points of a scan at
// the latest.
CurveResult CalcCurve(const Fluid& fluid, const CurveInput& input);

// What the user is told of a result, in the order of the boxes; empty when there is nothing to tell.
std::vector<Message> curve_messages(const Fluid& fluid, const CurveResult& result);
// Whether a curve with this status goes onto the sheet.
bool keeps_curve(const CurveResult& result);

}  // namespace quom
