#include "forms/refusal.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {

Message refusal_message(std::string text) {
    return {.title = "Execution not possible", .text = std::move(text), .kind = MessageKind::warning};
}

Message no_valid_input() { return refusal_message("no valid input"); }

std::optional<double> box_number(std::string_view text) {
    std::string number(trim(text));
    if (number.empty()) return 0.0;
    std::ranges::replace(number, ',', '.');
    const std::optional<double> value = read_number(number);
    return value && std::isfinite(*value) ? value : std::nullopt;
}

}  // namespace quom
