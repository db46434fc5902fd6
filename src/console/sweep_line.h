// One line of a sweep: numbers in, CalcBatch, a row out. No allocation on the way of a good line.
#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/sweep.h"
#include "report/sweep_columns.h"

namespace quom {

// Bytes into a buffer that keeps its capacity from piece to piece.
class RowWriter {
 public:
    void clear() { used_ = 0; }
    std::string_view text() const { return {bytes_.data(), used_}; }
    void put(std::string_view text);
    void put(char c) {
        *space(1) = c;
        ++used_;
    }
    void number(double x);  // shortest text that reads back as the same double; blank where it is not finite
    void quoted(std::string_view text, char delimiter);

 private:
    // Where the next n bytes go.
    char* space(std::size_t n) {
        if (bytes_.size() - used_ < n) grow(n);
        return bytes_.data() + used_;
    }
    void grow(std::size_t n);
    std::vector<char> bytes_;
    std::size_t used_ = 0;
};

enum class LineKind { blank, good, warned, failed, malformed };

// One worker's buffers over a fluid that all workers share.
class SweepLine {
 public:
    SweepLine(std::shared_ptr<const Fluid> fluid, const SweepSettings& settings, SweepHead head);

    // Calculates row i and appends it to out; fault: of a malformed row.
    LineKind run(const SweepRows& rows, std::size_t i, std::string_view fault, RowWriter& out);
    // Of the last line.
    std::span<const Warning> warnings() const { return warnings_; }

 private:
    void write_front(const SweepRows& rows, std::size_t i, RowWriter& out) const;
    void write(const Outcome& outcome, RowWriter& out) const;
    void write_malformed(std::string_view fault, RowWriter& out) const;

    std::shared_ptr<const Fluid> fluid_;
    SweepHead head_;
    bool line_numbers_;
    bool keeps_;
    std::vector<SweepColumn> columns_;
    Units units_;
    UnitFactors factors_;
    StateInput input_;
    std::vector<Warning> warnings_;
};

}  // namespace quom
