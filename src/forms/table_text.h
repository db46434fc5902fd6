// Any text that may hold a table: its encoding, lines, cells, and what delimits them.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quom {

// The text of a file or of the clipboard in UTF-8, lines ended by LF.
struct TableText {
    std::string text;
    std::string encoding;  // as people call it: "UTF-8", "UTF-16", "Windows-1252"
    std::string fault;     // why the bytes are no text; empty when they are
};
// UTF-8 and UTF-16 are known by their mark, UTF-8 also by its bytes; all else is Windows-1252. Lines may end
// with CR LF, LF or CR.
TableText table_text(std::string_view bytes);

enum class TableDelimiter { one_column, tab, semicolon, comma, bar, blanks };
inline constexpr std::size_t table_delimiter_count = 6;
// "tab", ";", ",", "|", "blanks", "none".
std::string_view delimiter_name(TableDelimiter delimiter);
// The delimiter written into a row; a blank for blanks.
char delimiter_sign(TableDelimiter delimiter);

struct TableLine {
    enum class Kind { content, empty, comment, ruler };
    int number = 0;         // 1-based
    std::string_view text;  // more than one line where a cell in quotes holds a line end
    Kind kind = Kind::content;
};
// The lines of a text that table_text gave. Comments begin with "#", "%", "!" or "//"; a ruler has only signs
// such as "-", "=", "+", "|".
std::vector<TableLine> table_lines(std::string_view text);

struct TableCell {
    std::string_view text;  // without its quotes and the blanks around
    bool quoted = false;    // doubled quotes inside are still doubled
};
// Cuts a line into `cells`, which is emptied before. Runs of blanks and tabs are one delimiter of kind
// blanks.
void cut_cells(std::string_view line, TableDelimiter delimiter, std::vector<TableCell>& cells);
// What the cell says.
std::string cell_content(const TableCell& cell);
// Blanks, tabs, line ends and blanks that do not break taken away at both ends.
std::string_view trim_cell(std::string_view text);

struct DelimiterProposal {
    TableDelimiter delimiter = TableDelimiter::one_column;
    std::size_t columns = 1;    // of most lines with numbers
    bool may_be_comma = false;  // "20,5" may be one number as well as two
};
// The delimiter that makes the most numbers of the lines, and the same count of cells in each.
DelimiterProposal propose_delimiter(const std::vector<TableLine>& lines);

}  // namespace quom
