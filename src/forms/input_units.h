// The units in which the numbers of the input windows may be typed, beside the one of their caption.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quantities/unit_table.h"

namespace quom {

struct InputUnit {
    std::string_view name;
    UnitConversion conversion{};
};

// The units offered for a quantity, first that of the caption. Units that need the molar mass M [kg/kmol] are
// left out where it is not above 0. None when the caption's is no unit of the quantity (a reduced volume).
std::vector<InputUnit> input_units(Quantity q, std::string_view caption_unit, double M);

// The unit of this name among those offered; the first for any other name.
std::size_t unit_at(const std::vector<InputUnit>& units, std::string_view name);

// What a choice of a unit is remembered for: "temperature", "pressure", "density", ...; values of one word
// share the choice.
std::string_view unit_choice_of(Quantity q);

// A number in another unit, with 12 digits; empty for a text that is no number, or has no value there.
std::string text_in_unit(std::string_view text, const InputUnit& from, const InputUnit& to);

// A number with a unit behind it ("20 °C") as a number in the unit `to`, with 12 digits. None for a text
// without a unit, with one that q does not have, or that has no value there.
std::optional<std::string> text_without_unit(std::string_view text, Quantity q, const InputUnit& to,
                                             double M);

// How 0 of the caption's unit reads in another: "-273.15 °C"; "0" where it is 0 there too.
std::string zero_text(const InputUnit& caption, const InputUnit& typed);

}  // namespace quom
