#include "forms/table_number.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "forms/table_text.h"

namespace quom {
namespace {

constexpr std::string_view minus_signs[] = {"-", "\u2212", "\u2013"};
constexpr std::string_view blank_signs[] = {" ", "\u00A0", "\u202F", "\u2009"};
constexpr std::string_view apostrophes[] = {"'", "\u2019"};
constexpr std::string_view no_value_texts[] = {"-",   "--", "---",  "\u2013", "\u2014",
                                               "N/A", "NA", "#N/A", "#NV"};

bool is_digit(char c) { return c >= '0' && c <= '9'; }

// Not a digit, and not a sign as in a date or a time.
bool may_begin_unit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '[' || c == '(' ||
           static_cast<unsigned char>(c) > 127;
}

// The sign of the list with which the text begins; empty when there is none.
template <std::size_t n>
std::string_view sign_of(std::string_view text, const std::string_view (&signs)[n]) {
    const auto* const sign =
        std::ranges::find_if(signs, [&](std::string_view s) { return text.starts_with(s); });
    return sign == std::end(signs) ? std::string_view{} : *sign;
}

// Reads a number and writes it in point form.
class Scanner {
 public:
    Scanner(std::string_view text, const NumberStyle& style) : rest_(text), style_(style) {}

    TableNumber read() {
        sign();
        integer();
        if (rest_.starts_with(style_.decimal)) {
            rest_.remove_prefix(1);
            put('.');
            digits();
        }
        if (digits_ == 0) return {};
        exponent();
        const std::string_view unit = trim_cell(rest_);
        if (!unit.empty() && !may_begin_unit(unit.front())) return {};
        const std::optional<double> value =
            full_ ? std::nullopt : read_number(std::string_view(plain_.data(), length_));
        if (!value) return {};
        return {true, *value, grouped_, unit};
    }

 private:
    void put(char c) {
        full_ = full_ || length_ == plain_.size();
        if (!full_) plain_[length_++] = c;
    }
    void sign() {
        const std::string_view minus = sign_of(rest_, minus_signs);
        if (!minus.empty()) put('-');
        rest_.remove_prefix(minus.empty() && rest_.starts_with('+') ? 1 : minus.size());
    }
    std::size_t digits() {
        std::size_t n = 0;
        for (; n < rest_.size() && is_digit(rest_[n]); ++n) put(rest_[n]);
        rest_.remove_prefix(n);
        digits_ += n;
        return n;
    }
    // The sign between two groups, with which the rest begins.
    std::string_view group_sign() const {
        const char other = style_.decimal == '.' ? ',' : '.';
        if (rest_.starts_with(other)) return rest_.substr(0, 1);
        const std::string_view blank = style_.blank_groups ? sign_of(rest_, blank_signs) : std::string_view{};
        return blank.empty() ? sign_of(rest_, apostrophes) : blank;
    }
    void integer() {
        const bool zero = rest_.starts_with('0');
        const std::size_t first = digits();
        if (first == 0 || first > 3 || zero) return;
        const std::string_view sign = group_sign();
        while (!sign.empty() && rest_.starts_with(sign)) {
            const std::string_view group = rest_.substr(sign.size(), 4);
            const auto n = std::ranges::find_if_not(group, is_digit) - group.begin();
            if (n != 3) return;
            rest_.remove_prefix(sign.size());
            digits();
            grouped_ = grouped_ || sign == "." || sign == ",";
        }
    }
    void exponent() {
        if (rest_.empty() || std::string_view("eEdD").find(rest_.front()) == std::string_view::npos) return;
        std::string_view behind = rest_.substr(1);
        const std::string_view minus = sign_of(behind, minus_signs);
        behind.remove_prefix(minus.empty() && behind.starts_with('+') ? 1 : minus.size());
        if (behind.empty() || !is_digit(behind.front())) return;
        put('E');
        if (!minus.empty()) put('-');
        rest_ = behind;
        digits();
    }

    std::string_view rest_;
    NumberStyle style_;
    std::array<char, 64> plain_{};
    std::size_t length_ = 0, digits_ = 0;
    bool grouped_ = false, full_ = false;
};

}  // namespace

TableNumber read_table_number(std::string_view text, const NumberStyle& style) {
    return Scanner(trim_cell(text), style).read();
}

bool says_no_value(std::string_view text) {
    text = trim_cell(text);
    if (text.empty()) return true;
    if (text.size() > 4) return false;
    const std::string upper = upper_text(text);
    return std::ranges::find(no_value_texts, upper) != std::end(no_value_texts);
}

DecimalHint decimal_hint(std::string_view text, bool blank_groups) {
    if (text.find_first_of(".,") == std::string_view::npos) return DecimalHint::none;
    const bool point = read_table_number(text, {'.', blank_groups}).good;
    const bool comma = read_table_number(text, {',', blank_groups}).good;
    if (point && comma) return DecimalHint::either;
    return point ? DecimalHint::point : comma ? DecimalHint::comma : DecimalHint::none;
}

}  // namespace quom
