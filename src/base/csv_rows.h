// Tables as text: comma-separated rows, fields in double quotes may hold commas, line ends and doubled
// quotes.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quom {

struct CsvRow {
    int line = 0;  // 1-based line on which the row begins
    std::vector<std::string> fields;
};
// All rows that are not empty. CR LF or LF; an unclosed quote runs to the end of the text.
std::vector<CsvRow> csv_rows(std::string_view text);

}  // namespace quom
