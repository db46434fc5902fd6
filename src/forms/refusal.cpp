#include "forms/refusal.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "quantities/unit_table.h"

namespace quom {
namespace {

constexpr std::size_t longest_number = 200;  // characters
constexpr std::size_t longest_quoted = 24;

// A number in point form, too large or too small for a double: +1 or -1; 0 for any other text.
int beyond_doubles(std::string_view number) {
    if (number.starts_with('-')) number.remove_prefix(1);
    double value = 0;
    const auto end = number.data() + number.size();
    const auto [at, fault] = std::from_chars(number.data(), end, value);
    if (at != end || fault != std::errc::result_out_of_range) return 0;
    return number.find("e-") == number.npos && number.find("E-") == number.npos ? 1 : -1;
}

std::string no_number(std::string_view name, std::string_view text) {
    if (text.size() > longest_number) return "The text of " + std::string(name) + " is too long.";
    if (const int beyond = beyond_doubles(text))
        return std::string(name) + (beyond > 0 ? " is too large." : " is too small.");
    const auto given = read_given_value(text);
    // "1e" is a number begun and not a unit "e".
    const bool unit = given && given->unit.find_first_not_of("eE.-+0123456789") != std::string::npos;
    std::string quoted(unit ? given->unit : text);
    if (quoted.size() > longest_quoted) {
        std::size_t cut = longest_quoted;
        while (cut > 0 && (static_cast<unsigned char>(quoted[cut]) & 0xC0) == 0x80) --cut;
        quoted = quoted.substr(0, cut) + "...";
    }
    return unit ? quoted + " is no unit of " + std::string(name) + "." : quoted + " is no number.";
}

}  // namespace

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

std::string broken_rule(std::string_view name, double value, NumberRule rule, std::string_view zero) {
    const std::string who(name);
    if (std::isnan(value)) return who + " is no number.";
    if (rule == NumberRule::above_zero && !(value > 0.0))
        return who + " must be above " + std::string(zero) + ".";
    if (rule != NumberRule::any && value < 0.0) return who + " must not be below " + std::string(zero) + ".";
    const bool beyond = rule == NumberRule::any
                            ? !std::isfinite(value)
                            : value > static_cast<double>(std::numeric_limits<float>::max());
    if (beyond) return who + " is too large.";
    if (rule == NumberRule::above_zero && static_cast<float>(value) == 0.0f) return who + " is too small.";
    return {};
}

BoxNumber read_box(std::string_view name, std::string_view text, NumberRule rule, std::string_view zero) {
    const std::string_view typed = trim(text);
    if (typed.empty()) {
        if (rule == NumberRule::optional) return {};
        return {.fault = std::string(name) + " is missing."};
    }
    const std::optional<double> value = typed.size() > longest_number ? std::nullopt : box_number(typed);
    if (!value) return {.fault = no_number(name, typed)};
    return {.value = *value, .fault = broken_rule(name, *value, rule, zero)};
}

CaptionParts caption_parts(std::string_view caption) {
    const std::size_t slash = caption.find('/');
    std::string_view name = trim(caption.substr(0, slash));
    name.remove_prefix(name.find_last_of(' ') + 1);
    std::string_view unit = slash == caption.npos ? std::string_view() : caption.substr(slash + 1);
    unit = trim(unit.substr(0, unit.find('=')));
    return {name, unit};
}

}  // namespace quom
