// Cells of a line of a table.
#pragma once
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quom {

enum class CellFault : std::uint8_t { none, not_closed, more_behind_quote };

struct Cell {
    std::string_view raw;   // from delimiter to delimiter
    std::string_view text;  // without blanks around and without the quotes; doubled quotes stay doubled
    bool quoted = false;
    CellFault fault = CellFault::none;
};

inline const char* skip_blanks(const char* at, const char* end, char delimiter) {
    while (at != end && (*at == ' ' || (*at == '\t' && delimiter != '\t'))) ++at;
    return at;
}

// Reads the cell that begins at `at`, in quotes ("" is a quote within them) or plain. Returns where the next
// one begins, null behind the last of the line.
const char* cut_cell(const char* at, const char* end, char delimiter, Cell& cell);

// Text of a cell with single quotes in place of doubled ones.
std::string cell_content(const Cell& cell);

// Appends a text as a cell that cut_cell reads back: in quotes where it needs them.
void append_cell(std::string& row, std::string_view content, char delimiter);

// The delimiter of a line: the first of ";", tab and "," that stands outside of quotes; `otherwise` without.
char delimiter_of(std::string_view line, bool may_be_comma, char otherwise);

}  // namespace quom
