// Rows of a table for a sweep, by column. With the head (sweep_head.h), the bytes (table_input.h) and the
// grid in place of a table (sweep_grid.h) all that a sweep reads.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "console/sweep_grid.h"
#include "console/sweep_head.h"
#include "console/table_input.h"

namespace quom {

enum class RowKind : std::uint8_t { good, blank, malformed };

// Rows of a piece of the input.
struct SweepRows {
    // In the workbench's own units; NaN where the mode does not need the value and in rows that are not good.
    // Each of full length.
    std::vector<double> value[field_count];
    std::vector<RowKind> kind;
    std::vector<std::uint64_t> line;  // of the input, from 1
    // Text of the kept cells of a row, quoted and delimited as the output wants it, without a trailing
    // delimiter; as many cells as the head keeps, in a blank row too. Points into kept_text or into the
    // piece.
    std::vector<std::string_view> kept;
    std::string kept_text;
    std::vector<std::string> faults;  // of the malformed rows in their order: "line 17: p is missing"
    void clear();
    std::size_t size() const { return kind.size(); }
};

// Appends the rows of a piece of whole lines in UTF-8. first_line: number of its first line. A row that
// cannot be read is malformed and carries its reason; it leaves the others alone.
//
// A cell may stand in quotes ("" is a quote within them) and then hold the delimiter, but no line end.
// Numbers: "20", "+20", "2e1", "2D1", with options.decimal; no thousands separators. Cells behind the last
// column of the head are no fault while they are empty; a line of blanks is a blank row.
void read_rows(std::string_view piece, std::uint64_t first_line, const SweepHead& head,
               const TableOptions& options, SweepRows& rows);

}  // namespace quom
