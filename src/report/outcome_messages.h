// The boxes that a calculation shows.
#pragma once
#include <optional>
#include <vector>

#include "base/messages.h"
#include "calc/outcome.h"

namespace quom {

// Boxes in the order in which they are shown: triple point, ranges, refusals. WarnTriple: the box on T below
// the triple point is allowed.
std::vector<Message> outcome_messages(const Fluid& fluid, const Outcome& outcome, bool WarnTriple);

// The same as one box, for a user who would have to answer them one after the other: one alone stays as it
// is; of several each text stands under its title. None when there is nothing to say.
std::optional<Message> outcome_message(const Fluid& fluid, const Outcome& outcome, bool WarnTriple);

}  // namespace quom
