// The boxes that a calculation shows.
#pragma once
#include <vector>

#include "base/messages.h"
#include "calc/outcome.h"

namespace quom {

// Boxes in the order in which they are shown: triple point, ranges, refusals. WarnTriple: the box on T below
// the triple point is allowed.
std::vector<Message> outcome_messages(const Fluid& fluid, const Outcome& outcome, bool WarnTriple);

}  // namespace quom
