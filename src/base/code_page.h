// Windows-1252 at file borders, UTF-8 inside the program.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>

namespace quom {

// UTF-8 text of Windows-1252 bytes. The five unused bytes (0x81, 0x8D, 0x8F, 0x90, 0x9D) become U+0081 etc.,
// so that every byte survives a round trip.
std::string utf8_from_1252(std::string_view bytes);

struct Encoded {
    std::string bytes;
    std::size_t replaced = 0;  // characters outside the code page, written as "?"
};
// Windows-1252 bytes of UTF-8 text; a character outside the code page, or a malformed byte, becomes "?".
Encoded cp1252_from_utf8(std::string_view text);

// Is the text UTF-8 throughout: characters in their shortest form, no surrogates?
bool is_utf8(std::string_view text);
// Appends the UTF-8 of a character; one beyond U+10FFFF or of a surrogate becomes U+FFFD.
void append_character(std::string& utf8, char32_t code);

// Upper case by the letters of Windows-1252 (a to z, à to þ except ÷, š, œ, ž); ß and all others stay.
std::string upper_text(std::string_view utf8);

// Number of characters of UTF-8 text (= its bytes in Windows-1252).
std::size_t text_length(std::string_view utf8);
// The first n characters.
std::string text_left(std::string_view utf8, std::size_t n);
// The first n characters, padded with blanks to n.
std::string text_padded(std::string_view utf8, std::size_t n);

std::string_view trim_left(std::string_view text);   // blanks only
std::string_view trim_right(std::string_view text);  // blanks only
std::string_view trim(std::string_view text);        // blanks at both ends

}  // namespace quom
