// A table as it is seen, written for other programs: comma-separated, tab-separated, HTML.
#pragma once
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quom {

// A cell in the digits that are shown. A number has "." as decimal sign and "-" as minus.
struct ExportCell {
    std::string text;
    bool number = false;

    ExportCell() = default;
    ExportCell(std::string shown, bool is_number = false) : text(std::move(shown)), number(is_number) {}
    bool operator==(const ExportCell&) const = default;
};

struct ExportTable {
    std::vector<std::string> title;  // lines above the table
    std::string comment{};           // before each of them in CSV, for programs that skip such lines: "# "
    std::vector<std::string> heads;
    std::vector<std::string> units{};  // below the heads; empty: none
    // Rows in the order in which they are seen; one of a single cell is the title of those below it.
    std::vector<std::vector<ExportCell>> rows{};
};

// Lines end with CR LF; a cell that holds the delimiter, a quote or a line end stands in double quotes.
std::string to_csv(const ExportTable& table, char delimiter, char decimal);
// Lines end with LF; a tab or a line end in a cell becomes a blank.
std::string to_tsv(const ExportTable& table, char decimal = '.');
// A whole page, well-formed.
std::string to_html(const ExportTable& table);

}  // namespace quom
