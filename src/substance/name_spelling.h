// Names as the search compares them: one spelling for both languages, whatever the keyboard.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quom {

// A name in the one spelling: upper case, ä ö ü ß as AE OE UE SS, other accents dropped, without blanks and
// - ( ) [ ] . , ' and with the stems of one language (CYCLO for ZYKLO, ETH for ÄTH and AETH, SULF for SULPH
// ..).
struct ComparedName {
    // The bytes of the name that a letter of the key stands for.
    struct Origin {
        std::uint32_t begin = 0, end = 0;
    };
    std::string key;
    std::string begins;           // as long as key: 1 where a word of the name begins, else 0
    std::vector<Origin> origins;  // as long as key
};
ComparedName compared_name(std::string_view name);

// A part of a text, in bytes; of length 0 where there is none.
struct TextPart {
    std::size_t begin = 0, length = 0;
};
// Where a name, as it is written, holds a key: at its beginning, else at the first word that begins so, else
// anywhere.
TextPart part_of_name(std::string_view name, std::string_view key);

// Other keys of a text that is still being typed: its end may be the beginning of a stem ("ZYKL" for "CYCL").
// The key itself is not among them.
std::vector<std::string> unfinished_spellings(std::string_view key);

// Letters to be changed, put in, left out or exchanged with the next one to make b of a (Damerau 1964);
// limit + 1 when it takes more.
int letters_apart(std::string_view a, std::string_view b, int limit);

}  // namespace quom
