// What the dialogs share: the refusal of an input, the number of a box, and the rules that numbers break.
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"

namespace quom {

// A refusal as the windows show it: title "Execution not possible". Programs take its text.
Message refusal_message(std::string text);
// "no valid input".
Message no_valid_input();

// Number of a box text: "," counts as ".", blanks around are dropped; an empty box is 0. None when the text
// as a whole is no number.
std::optional<double> box_number(std::string_view text);

// What the number of a box has to be. Only an optional one may be missing, and is 0 then.
enum class NumberRule { any, not_negative, above_zero, optional };

// The rule that a number breaks, as a sentence: "p must be above 0.", "p is too large."; empty for a number
// that can be taken. States are stored as singles: what overflows one is too large, what becomes 0 too small;
// numbers of rule "any" are stored as doubles.
// zero: how 0 reads in the unit of the box, "-273.15 °C".
std::string broken_rule(std::string_view name, double value, NumberRule rule, std::string_view zero = "0");

// Number of the text of a box, or the rule that the text breaks: "T is missing.", "- is no number.".
struct BoxNumber {
    double value = 0;
    std::string fault{};
};
BoxNumber read_box(std::string_view name, std::string_view text, NumberRule rule,
                   std::string_view zero = "0");

// The first box of a window that cannot be taken, by its index, and why.
struct BoxRefusal {
    std::size_t box = 0;
    std::string rule{};
};

// Name and unit in the caption of a box: "p" and "kPa" of "      p/kPa = ", "To" and "K" of "at reference
// temperature To/K =".
struct CaptionParts {
    std::string_view name, unit;
};
CaptionParts caption_parts(std::string_view caption);

}  // namespace quom
