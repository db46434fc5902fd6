// Rows of numbers as spreadsheets put them on the clipboard.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quom {

struct PastedRows {
    std::vector<std::vector<double>> rows;  // none of more than `columns` values
    std::string fault;                      // why there are none, with the line; empty when good
};
// A row a line, values with tabs between them, decimal comma or point; an empty value is 0. Lines without any
// text are left out. A text that is no number, a value that a single cannot hold and more than `columns`
// values are refused.
PastedRows read_pasted_rows(std::string_view text, std::size_t columns);

}  // namespace quom
