#include "base/code_page.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace quom {
namespace {

// Unicode of the bytes 0x80 to 0x9F; all others are their own code.
constexpr std::array<char32_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t kMalformed = 0xFFFFFFFF;

struct Character {
    char32_t code;       // kMalformed for a byte that belongs to no character
    std::size_t length;  // bytes taken, 1 for a malformed byte
};

// The character at the front of a text that is not empty (RFC 3629: shortest form, no surrogates).
Character first_character(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80) return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || length > text.size()) return {kMalformed, 1};
    char32_t code = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return {kMalformed, 1};
        code = (code << 6) | (byte(i) & 0x3Fu);
    }
    constexpr std::array<char32_t, 5> smallest = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < smallest[length] || code > 0x10FFFF || surrogate) return {kMalformed, 1};
    return {code, length};
}

// The byte of a character, -1 when the code page has none.
int byte_of(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code <= 0xFF)) return static_cast<int>(code);
    const auto at = std::find(kHigh.begin(), kHigh.end(), code);
    return at == kHigh.end() ? -1 : 0x80 + static_cast<int>(at - kHigh.begin());
}

char32_t upper(char32_t code) {
    if ((code >= U'a' && code <= U'z') || (code >= 0xE0 && code <= 0xFE && code != 0xF7)) return code - 32;
    if (code == 0x161 || code == 0x153 || code == 0x17E) return code - 1;  // š œ ž
    return code;
}

}  // namespace

std::string utf8_from_1252(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        append_character(out, byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80u] : byte);
    }
    return out;
}

Encoded cp1252_from_utf8(std::string_view text) {
    Encoded out;
    out.bytes.reserve(text.size());
    while (!text.empty()) {
        const Character c = first_character(text);
        const int byte = byte_of(c.code);
        out.bytes += byte < 0 ? '?' : static_cast<char>(static_cast<unsigned char>(byte));
        if (byte < 0) ++out.replaced;
        text.remove_prefix(c.length);
    }
    return out;
}

bool is_utf8(std::string_view text) {
    constexpr std::size_t block = 64;
    while (!text.empty()) {
        unsigned char any = 0;
        if (text.size() >= block) {
            for (std::size_t i = 0; i < block; ++i) any |= static_cast<unsigned char>(text[i]);
            if (any < 0x80) {
                text.remove_prefix(block);
                continue;
            }
        }
        const Character c = first_character(text);
        if (c.code == kMalformed) return false;
        text.remove_prefix(c.length);
    }
    return true;
}

void append_character(std::string& utf8, char32_t code) {
    constexpr char32_t replacement = 0xFFFD;
    if (code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) code = replacement;
    const auto put = [&](char32_t byte) { utf8 += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto put_rest = [&](int shift) { put(0x80 | ((code >> shift) & 0x3F)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put_rest(0);
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put_rest(6);
        put_rest(0);
    } else {
        put(0xF0 | (code >> 18));
        put_rest(12);
        put_rest(6);
        put_rest(0);
    }
}

std::string upper_text(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const Character c = first_character(utf8);
        const char32_t code = upper(c.code);
        if (code == c.code) {
            out += utf8.substr(0, c.length);
        } else {
            append_character(out, code);
        }
        utf8.remove_prefix(c.length);
    }
    return out;
}

std::size_t text_length(std::string_view utf8) {
    std::size_t n = 0;
    for (; !utf8.empty(); ++n) utf8.remove_prefix(first_character(utf8).length);
    return n;
}

std::string text_left(std::string_view utf8, std::size_t n) {
    std::string_view rest = utf8;
    for (; n > 0 && !rest.empty(); --n) rest.remove_prefix(first_character(rest).length);
    return std::string(utf8.substr(0, utf8.size() - rest.size()));
}

std::string text_padded(std::string_view utf8, std::size_t n) {
    std::string out = text_left(utf8, n);
    out.append(n - text_length(out), ' ');
    return out;
}

std::string_view trim_left(std::string_view text) {
    const std::size_t at = text.find_first_not_of(' ');
    return at == std::string_view::npos ? std::string_view{} : text.substr(at);
}

std::string_view trim_right(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

std::string_view trim(std::string_view text) { return trim_left(trim_right(text)); }

}  // namespace quom
