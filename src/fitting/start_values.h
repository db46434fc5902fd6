// Start values of a fit, estimated from the points.
#pragma once
#include <optional>
#include <vector>

#include "fitting/fit.h"

namespace quom {

// Parameters in plain units by a form of the equation that is linear in them (its logarithm, where that is
// linear), for the best of a few values of those parameters that stay inside powers and functions. Held
// parameters keep the start values of the input. None where the points do not determine the parameters.
std::optional<std::vector<double>> estimate_start(const FitInput& input);

}  // namespace quom
