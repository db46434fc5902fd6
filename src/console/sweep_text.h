// Rows of a sweep as text: numbers with all their digits, cells in quotes where they need it.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "console/sweep_block.h"

namespace quom {

// Bytes into a buffer that keeps its capacity from piece to piece.
class TextBuffer {
 public:
    void clear() { used_ = 0; }
    std::string_view text() const { return {bytes_.data(), used_}; }
    void put(std::string_view text);
    void put(char c) {
        *space(1) = c;
        ++used_;
    }
    // Shortest text that reads back as the same double, with this decimal sign; nothing where it is not
    // finite.
    void number(double x, char decimal);
    void quoted(std::string_view text, char delimiter);

    // Where the next n bytes go, and how far they were used.
    char* space(std::size_t n) {
        if (bytes_.size() - used_ < n) grow(n);
        return bytes_.data() + used_;
    }
    void used_to(const char* end) { used_ = static_cast<std::size_t>(end - bytes_.data()); }

 private:
    void grow(std::size_t n);
    std::vector<char> bytes_;
    std::size_t used_ = 0;
};

// The form of a table that goes out.
struct SweepTextForm {
    char delimiter = ';';
    char decimal = '.';
    bool line_numbers = false;
    bool kept = false;  // whether rows have kept cells
};

// "line;note;T/K;p/kPa;...": line number, kept columns (as kept_names has them), results.
std::string sweep_head_line(const SweepPlan& plan, const SweepTextForm& form, std::string_view kept);

// Appends the rows [begin, begin + results.size()) of rows with their results. A blank row is an empty line.
void write_rows(const SweepPlan& plan, const SweepTextForm& form, const SweepRows& rows, std::size_t begin,
                const SweepResults& results, TextBuffer& out);

}  // namespace quom
