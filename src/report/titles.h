// Titles of calculations and labels of the extended rows, for the result window, the lists and the records.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "calc/state_input.h"

namespace quom {

// Name of the calculation of a mode: its list title and, in modes 4, 5, 8, the concept.
std::string CalcTitle(Mode mode, const CalcSetup& setup);

// Caption of the result window; of the tank window in modes 9 and 10.
std::string CalcCaption(Mode mode, const CalcSetup& setup);

// Label of an extended row, 0 to 23 (10 and 11 are empty), with the sign of the square; in text files a
// plain 2.
std::string_view extended_label(std::size_t row);
std::string extended_label_plain(std::size_t row);

}  // namespace quom
