// The digits of a table: the shortest text that reads back as the same double, letter by letter what
// std::to_chars writes, in a fraction of its time where the build has a library of shortest digits.
#pragma once
#include <cstddef>

namespace quom {

inline constexpr std::size_t number_space = 48;  // bytes that a number may take while it is written

// Writes a finite x to `to`, which has number_space bytes; returns the end of the text. -0 is written as 0.
char* write_shortest(double x, char* to);

}  // namespace quom
