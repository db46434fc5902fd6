#include "base/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace quom {
namespace {

constexpr std::string_view kNotFinite = "(Error)";
constexpr int kFloatDigits = 7;
constexpr int kDoubleDigits = 15;

// |x| = d1.d2..dk * 10^exponent; digits are characters, without trailing zeros. Zero has no digits.
struct Decimal {
    char digit[kDoubleDigits + 1] = {};
    int count = 0;
    int exponent = 0;

    std::string_view digits(int from, int to) const {
        from = std::min(from, count);
        return {digit + from, static_cast<std::size_t>(std::max(0, std::min(to, count) - from))};
    }
    void strip_zeros() {
        while (count > 0 && digit[count - 1] == '0') --count;
        if (count == 0) exponent = 0;
    }
};

// The finite |x| rounded to significant decimal digits, 1 to 15.
Decimal decimal_of(double x, int significant) {
    Decimal d;
    if (x == 0.0) return d;
    char text[32];
    const auto end =
        std::to_chars(text, text + sizeof text, std::fabs(x), std::chars_format::scientific, significant - 1);
    const char* p = text;
    for (; *p != 'e'; ++p) {
        if (*p != '.') d.digit[d.count++] = *p;
    }
    p += p[1] == '+' ? 2 : 1;
    std::from_chars(p, end.ptr, d.exponent);
    d.strip_zeros();
    return d;
}

// Keeps the first n digits, the rest rounded half away from zero. n may be 0 or negative.
void round_half_away(Decimal& d, int n) {
    if (n >= d.count) return;
    const bool up = n >= 0 && d.digit[n] >= '5';
    d.count = std::max(n, 0);
    if (up) {
        int i = d.count - 1;
        while (i >= 0 && d.digit[i] == '9') --i;
        d.count = std::max(i + 1, 1);
        if (i >= 0) {
            ++d.digit[i];
        } else {
            d.digit[0] = '1';
            ++d.exponent;
        }
    }
    d.strip_zeros();
}

void append_exponent(std::string& out, int exponent, std::size_t width, bool plus) {
    if (exponent < 0) out += '-';
    if (exponent >= 0 && plus) out += '+';
    char text[8];
    const auto end = std::to_chars(text, text + sizeof text, std::abs(exponent)).ptr;
    const auto length = static_cast<std::size_t>(end - text);
    if (length < width) out.append(width - length, '0');
    out.append(text, length);
}

// Integer part of the digits with at least min_digits digits; nothing for 0 when min_digits is 0.
void append_integer(std::string& out, const Decimal& d, int min_digits) {
    const int places = d.count == 0 ? 0 : std::max(d.exponent + 1, 0);
    if (places < min_digits) out.append(static_cast<std::size_t>(min_digits - places), '0');
    const std::string_view given = d.digits(0, places);
    out += given;
    out.append(static_cast<std::size_t>(places) - given.size(), '0');
}

// Digits behind the point, filled up with zeros to min_digits.
void append_decimals(std::string& out, const Decimal& d, int min_digits) {
    std::size_t written = 0;
    if (d.count > 0) {
        const int zeros = std::max(-d.exponent - 1, 0);
        const std::string_view given = d.digits(std::max(d.exponent + 1, 0), d.count);
        if (!given.empty()) {
            out.append(static_cast<std::size_t>(zeros), '0');
            out += given;
            written = static_cast<std::size_t>(zeros) + given.size();
        }
    }
    const auto wanted = static_cast<std::size_t>(min_digits);
    if (written < wanted) out.append(wanted - written, '0');
}

void append_plain(std::string& out, const Decimal& d, bool zero_before_point) {
    append_integer(out, d, zero_before_point || d.count == 0 ? 1 : 0);
    if (d.count <= d.exponent + 1) return;
    out += '.';
    append_decimals(out, d, 0);
}

void append_scientific(std::string& out, const Decimal& d) {
    out += d.digit[0];
    if (d.count > 1) {
        out += '.';
        out += d.digits(1, d.count);
    }
    out += 'E';
    append_exponent(out, d.exponent, 2, true);
}

// The digits of |x| as every short form shows them: plain where they fit into the significant digits, else
// with an exponent.
void append_core(std::string& out, double x, int significant, bool zero_before_point) {
    const Decimal d = decimal_of(x, significant);
    const bool plain = d.exponent >= 0 ? d.exponent < significant : d.count - 1 - d.exponent <= significant;
    plain ? append_plain(out, d, zero_before_point) : append_scientific(out, d);
}

std::string general(double x, int significant, bool zero_before_point, std::string_view positive_sign) {
    if (!std::isfinite(x)) return std::string(kNotFinite);
    std::string out(x < 0.0 ? "-" : positive_sign);
    append_core(out, x, significant, zero_before_point);
    return out;
}

std::string printed(std::string text) {
    text += ' ';
    return text;
}

// One section of a mask, cut into what stands before, in and behind the number.
struct Section {
    std::string_view before, behind;
    int min_integer = 0;   // digits before the point that are always shown
    int decimals = 0;      // placeholders behind the point
    int min_decimals = 0;  // of these, always shown
    bool number = false, point = false, exponent = false, exponent_plus = false;
    int exponent_digits = 0;
};

bool is_place(char c) { return c == '0' || c == '#'; }

// "E+00" at the place at: its length, 0 when there is none.
std::size_t read_exponent_mask(std::string_view mask, std::size_t at, Section& s) {
    if (at + 2 >= mask.size() || (mask[at] != 'E' && mask[at] != 'e')) return 0;
    if ((mask[at + 1] != '+' && mask[at + 1] != '-') || mask[at + 2] != '0') return 0;
    s.exponent = true;
    s.exponent_plus = mask[at + 1] == '+';
    std::size_t end = at + 2;
    while (end < mask.size() && mask[end] == '0') ++end;
    s.exponent_digits = std::max(2, static_cast<int>(end - at - 2));
    return end - at;
}

Section read_section(std::string_view mask) {
    Section s;
    std::size_t i = 0;
    while (i < mask.size() && !is_place(mask[i]) &&
           !(mask[i] == '.' && i + 1 < mask.size() && is_place(mask[i + 1]))) {
        ++i;
    }
    s.before = mask.substr(0, i);
    s.number = i < mask.size();
    for (bool fixed = false; i < mask.size() && is_place(mask[i]); ++i) {
        fixed = fixed || mask[i] == '0';
        if (fixed) ++s.min_integer;
    }
    if (s.number && i < mask.size() && mask[i] == '.') {
        s.point = true;
        for (++i; i < mask.size() && is_place(mask[i]); ++i) {
            ++s.decimals;
            if (mask[i] == '0') s.min_decimals = s.decimals;
        }
    }
    if (s.number) i += read_exponent_mask(mask, i, s);
    s.behind = mask.substr(i);
    return s;
}

// The section with this index; a missing or empty one gives the first.
std::string_view section_text(std::string_view mask, int index, bool& found) {
    std::string_view rest = mask;
    for (int i = 0; i < index; ++i) {
        const std::size_t end = rest.find(';');
        rest = end == std::string_view::npos ? std::string_view{} : rest.substr(end + 1);
    }
    rest = rest.substr(0, rest.find(';'));
    found = index == 0 || !rest.empty();
    return found ? rest : mask.substr(0, mask.find(';'));
}

void append_by_section(std::string& out, const Section& s, const Decimal& d) {
    out += s.before;
    if (s.number && s.exponent) {
        out += d.count > 0 ? d.digit[0] : '0';
        if (s.point) {
            out += '.';
            const std::string_view rest = d.digits(1, d.count);
            out += rest;
            const auto wanted = static_cast<std::size_t>(s.min_decimals);
            if (rest.size() < wanted) out.append(wanted - rest.size(), '0');
        }
        out += 'E';
        append_exponent(out, d.exponent, static_cast<std::size_t>(s.exponent_digits), s.exponent_plus);
    } else if (s.number) {
        append_integer(out, d, s.min_integer);
        if (s.point) {
            out += '.';
            append_decimals(out, d, s.min_decimals);
        }
    }
    out += s.behind;
}

std::size_t blanks_before(std::string_view text) {
    return std::min(text.find_first_not_of(" \t"), text.size());
}

struct LeadingNumber {
    double value = 0.0;
    std::size_t length = 0;  // 0 when the text does not begin with a number
    bool in_range = true;    // false when it is beyond what a double holds; value is 0 then
};

LeadingNumber leading_number(std::string_view text) {
    const auto digits_end = [&](std::size_t k) {
        while (k < text.size() && text[k] >= '0' && text[k] <= '9') ++k;
        return k;
    };
    const auto is_any_of = [&](std::size_t k, std::string_view set) {
        return k < text.size() && set.find(text[k]) != std::string_view::npos;
    };
    const std::size_t sign = is_any_of(0, "+-") ? 1 : 0;
    std::size_t end = digits_end(sign);
    bool has_digits = end > sign;
    if (is_any_of(end, ".")) {
        const std::size_t point = end++;
        end = digits_end(end);
        has_digits = has_digits || end > point + 1;
    }
    if (!has_digits) return {};

    const std::size_t exponent = end;
    if (is_any_of(end, "EeDd")) {
        const std::size_t first = end + (is_any_of(end + 1, "+-") ? 2u : 1u);
        if (digits_end(first) > first) end = digits_end(first);
    }
    const std::size_t from = is_any_of(0, "+") ? 1 : 0;  // from_chars knows no "+"
    std::string_view form = text.substr(from, end - from);
    std::string with_e;
    if (exponent < end && is_any_of(exponent, "Dd")) {
        with_e = form;
        with_e[exponent - from] = 'E';
        form = with_e;
    }
    LeadingNumber n{.value = 0.0, .length = end};
    n.in_range = std::from_chars(form.data(), form.data() + form.size(), n.value).ec == std::errc{};
    if (!n.in_range) n.value = 0.0;
    return n;
}

}  // namespace

double round_half_even(double x) { return std::nearbyint(x); }

std::int16_t to_i16(double x) {
    const double r = std::nearbyint(x);
    return r >= -32768.0 && r <= 32767.0 ? static_cast<std::int16_t>(r) : std::int16_t{0};
}

std::int32_t to_i32(double x) {
    const double r = std::nearbyint(x);
    return r >= -2147483648.0 && r <= 2147483647.0 ? static_cast<std::int32_t>(r) : 0;
}

double Val(std::string_view text) { return leading_number(text.substr(blanks_before(text))).value; }

std::optional<double> read_number(std::string_view text) {
    text.remove_prefix(blanks_before(text));
    const LeadingNumber n = leading_number(text);
    const bool whole = n.length > 0 && blanks_before(text.substr(n.length)) == text.size() - n.length;
    return whole && n.in_range ? std::optional<double>(n.value) : std::nullopt;
}

std::string strNum(double x) { return general(x, kDoubleDigits, false, " "); }
std::string strNum(float x) { return general(static_cast<double>(x), kFloatDigits, false, " "); }
std::string printNum(double x) { return printed(strNum(x)); }
std::string printNum(float x) { return printed(strNum(x)); }
std::string writeNum(double x) { return general(x, kDoubleDigits, false, ""); }
std::string writeNum(float x) { return general(static_cast<double>(x), kFloatDigits, false, ""); }
std::string genNum(double x) { return general(x, kDoubleDigits, true, ""); }
std::string genNum(float x) { return general(static_cast<double>(x), kFloatDigits, true, ""); }
std::string genNum(double x, int digits) {
    return general(x, std::clamp(digits, 1, kDoubleDigits), true, "");
}

namespace {

double in_single(double x) {
    const auto f = static_cast<float>(x);
    return std::isnormal(f) || x == 0.0 ? static_cast<double>(f) : x;
}

}  // namespace

std::string strSingle(double x) { return general(in_single(x), kFloatDigits, false, " "); }
std::string genSingle(double x) { return general(in_single(x), kFloatDigits, true, ""); }

std::string formatMask(double x, std::string_view mask) {
    if (!std::isfinite(x)) return std::string(kNotFinite);
    if (mask.empty()) return genNum(x);

    enum { kPositive, kNegative, kZero };
    int index = x > 0.0 ? kPositive : x < 0.0 ? kNegative : kZero;
    for (;;) {
        bool own_section = false;
        const Section s = read_section(section_text(mask, index, own_section));
        Decimal d = decimal_of(x, kDoubleDigits);
        if (s.number) round_half_away(d, s.exponent ? 1 + s.decimals : d.exponent + 1 + s.decimals);
        if (index != kZero && s.number && d.count == 0) {  // rounded to zero: shown as a zero, never with "-"
            index = kZero;
            x = 0.0;
            continue;
        }
        std::string out(index == kNegative && !own_section ? "-" : "");
        append_by_section(out, s, d);
        return out;
    }
}

std::string digitsNum(double x, int digits) {
    if (!std::isfinite(x)) return std::string(kNotFinite);
    const Decimal d = decimal_of(x, std::clamp(digits, 1, kDoubleDigits));
    std::string out(x < 0.0 ? "-" : "");
    const bool plain = d.exponent >= -3 && d.exponent < 6;
    plain ? append_plain(out, d, true) : append_scientific(out, d);
    return out;
}

std::string exactNum(double x) {
    if (!std::isfinite(x)) return std::string(kNotFinite);
    char text[40];
    return {text, std::to_chars(text, text + sizeof text, x).ptr};
}

}  // namespace quom
