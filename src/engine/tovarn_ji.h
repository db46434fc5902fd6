// Parameters of the Tovarn/Ji equations as a parameter file gives them.
#pragma once
#include <string>
#include <string_view>

#include "session/session.h"

namespace quom {

// Reads a parameter file of comma-separated values: a line with one field, then a line with a number that is
// ignored, JiP3, JiP4, JiP5, JiZc and, for code 8, JiB1. Returns the fault, empty when good; a fault leaves
// the block as it was.
std::string ReadDjipar(std::string_view bytes, int code, EosBlock& block);

}  // namespace quom
