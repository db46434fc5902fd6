// The rows of a sweep in parts for the workers: of a table or of a grid, all of them or a range.
#pragma once
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "console/checksum.h"
#include "console/sweep_rows.h"

namespace quom {

// Rows behind the head, counted from 1; blank and malformed ones count.
struct RowRange {
    std::uint64_t first = 1, last = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t cut = 0;  // no part goes over a multiple of it, counted from row 1; 0: anywhere
    // That the rows of a table in front of `first` must have; needs a cut. Empty: they are not looked at.
    std::string checksum{};
};

// The K-th of N ranges of as equal a length as their edges on multiples of `unit` allow.
RowRange shard_of(std::uint64_t rows, std::uint64_t k, std::uint64_t n, std::uint64_t unit);

struct SweepPart {
    std::string text;  // whole lines of a table; of a grid empty
    std::uint64_t first_line = 0, first_row = 0;
    std::size_t rows = 0;
    std::string checksum;  // of a table from row 1 to the end of the part, where that is a cut
};

class SweepSource {
 public:
    // part_rows: the most rows of a part. The head of the table is read already; head_lines: how many lines
    // it was.
    SweepSource(TableInput& table, std::uint64_t head_lines, const RowRange& range, std::size_t part_rows);
    SweepSource(const SweepGrid& grid, const RowRange& range, std::size_t part_rows);

    bool next(SweepPart& part);  // false at the end or with a fault
    // Why the rows ended early; empty when they did not.
    std::string_view fault() const { return fault_; }
    // Of the rows of a table up to here, where the range has a cut; empty of a grid.
    std::string checksum() const { return grid_ || range_.cut == 0 ? std::string() : sum_.text(); }

 private:
    bool next_piece();
    bool skip_rows();
    bool next_of_table(SweepPart& part);
    std::size_t most_rows(std::uint64_t row) const;
    std::string_view take_lines(std::size_t rows);

    TableInput* table_ = nullptr;
    const SweepGrid* grid_ = nullptr;
    RowRange range_;
    std::size_t part_rows_;
    std::uint64_t row_ = 1, line_ = 1;  // of the next row
    std::string piece_;                 // of the table
    std::size_t taken_ = 0;             // bytes of it
    std::uint64_t left_ = 0;            // rows of it that are not taken
    Checksum sum_;
    std::string fault_;
    bool reached_ = false;  // the first row of the range
};

// Rows of a table behind its head, and their checksum; its fault when it cannot be read to the end.
struct RowCount {
    std::uint64_t rows = 0;
    std::string checksum, fault;
};
RowCount count_rows(TableInput& table);

}  // namespace quom
