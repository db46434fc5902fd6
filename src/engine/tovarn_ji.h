// Parameters of the Tovarn/Ji equations as a parameter file gives them.
#pragma once
#include <string>
#include <string_view>

#include "engine/models.h"

namespace quom {

// Reads a parameter file of comma-separated values: a line with one field, then a line with a number that is
// ignored, JiP3, JiP4, JiP5, JiZc and, for tovarn_ji_2, JiB1. Returns the fault, empty when good; a fault
// leaves the input as it was.
std::string ReadDjipar(std::string_view bytes, Eos code, EosInput& input);

}  // namespace quom
