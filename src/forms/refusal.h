// What the dialogs share: the refusal of an input, and the number of a box.
#pragma once
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

}  // namespace quom
