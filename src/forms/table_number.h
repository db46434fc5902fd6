// Numbers of tables as people and programs of any country write them.
#pragma once
#include <cstddef>
#include <string_view>

namespace quom {

struct NumberStyle {
    char decimal = '.';        // or ','
    bool blank_groups = true;  // "1 234,5": not where blanks delimit the cells
};

struct TableNumber {
    bool good = false;
    double value = 0;
    bool grouped = false;   // by "." or ",": "1.234,5"
    std::string_view unit;  // what stands behind the number, "°C" of "20 °C"; it may be any text
};

// The number with which a cell begins: thousands in groups of three by the other of "." and ",", by blanks or
// by apostrophes; exponents with e, E, d or D; the signs "-", "+" and the minus of typesetters. Not good for
// a text without one, with more digits or signs behind it as in a date, and for a number that is not finite.
TableNumber read_table_number(std::string_view text, const NumberStyle& style);

// Does the cell say that there is no value: empty, "-", "n/a", "NA"?
bool says_no_value(std::string_view text);

// What a number tells about the decimal sign.
enum class DecimalHint { none, point, comma, either };
DecimalHint decimal_hint(std::string_view text, bool blank_groups);

}  // namespace quom
