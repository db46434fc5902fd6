// Any text with a table in it -> points of a data set or X-Y data: what is recognised is shown with its
// reason and can be corrected, rows that cannot be taken are listed, and nothing is dropped in silence.
#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fitting/exp_data.h"
#include "fitting/xy_data.h"
#include "forms/import_columns.h"
#include "forms/table_text.h"
#include "session/document.h"

namespace quom {

// What the user decided; what is not named is recognised.
struct ImportOptions {
    ImportTarget target = ImportTarget::data_points;
    std::optional<TableDelimiter> delimiter{};
    std::optional<char> decimal{};    // '.' or ','
    std::optional<int> head_lines{};  // lines at the top that hold no values
    ColumnChoices columns{};
    double M = 0;  // molar mass of the substance [kg/kmol]; 0: not known
    std::size_t preview_lines = 100;
};

struct ImportLine {
    enum class Kind { head, good, bad, comment, empty };
    int number = 0;  // 1-based, in the text
    Kind kind = Kind::empty;
    std::vector<std::string> cells;
    std::string fault{};  // of a bad one: "p: "abc" is no number."
    int column = -1;      // ... and the column that is at fault; -1: the whole row
};

struct BadRow {
    int line = 0;
    std::string fault;
};

struct TextImport {
    std::string encoding;
    TableDelimiter delimiter = TableDelimiter::one_column;
    char decimal = '.';
    int head_lines = 0;  // lines above the first row, of every kind
    std::vector<ImportColumn> columns;
    std::vector<ImportLine> preview;  // the first lines

    std::vector<TpRhoPoint> points;  // K, kPa, kg/m^3, kJ/kmol, kJ/(kmol K); 0: no value
    std::vector<XYPoint> xy;
    std::vector<BadRow> bad_rows;
    int good_rows = 0;
    int head_rows = 0, empty_lines = 0, comment_lines = 0;
    std::vector<std::string> warnings;  // sentences: what is ambiguous and how it is read
    std::string fault;                  // nothing can be taken: why

    int rows() const { return good_rows + static_cast<int>(bad_rows.size()); }
    bool can_be_taken() const { return fault.empty() && good_rows > 0; }
};

// Reads the bytes of a file or of the clipboard. A fault leaves no points.
TextImport import_text(std::string_view bytes, const ImportOptions& options);

// "20 of 22 rows will be taken, 3 head lines, 1 empty line, 2 comments"; a fault where nothing can be.
std::string import_summary(const TextImport& import);

// Takes the points into the document: behind those that are there, or in their place; a replaced list has no
// file and no comment any more. False, and nothing changed, where nothing can be taken.
bool take_import(Document& document, const TextImport& import, ImportTarget target, bool replace);

}  // namespace quom
