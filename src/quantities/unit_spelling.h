// Units as people spell them.
#pragma once
#include <string>
#include <string_view>

namespace quom {

// One text for all spellings of a unit, with sorted symbols and exponents: "K^-1 kJ^1 kmol^-1" for "kJ/(kmol
// K)", "kJ/kmol/K", "kJ·kmol^-1·K^-1". "/" takes the next symbol or bracket only, so that "kJ/kmol K" is
// another unit. In a product or quotient °C and °F are differences and become K and °R. Empty for a text that
// is no unit.
std::string unit_key(std::string_view text);

}  // namespace quom
