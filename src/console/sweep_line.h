// One line of a sweep: numbers in, CalcBatch, a row out. No allocation on the way of a good line.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "calc/calc_batch.h"
#include "console/sweep.h"
#include "session/session.h"

namespace quom::console {

// Bytes into a buffer that keeps its capacity from block to block.
class RowWriter {
 public:
    void clear() { used_ = 0; }
    std::string_view text() const { return {bytes_.data(), used_}; }
    void put(std::string_view text);
    void put(char c) { put(std::string_view(&c, 1)); }
    void number(double x);  // shortest text that reads back as the same double
    void quoted(std::string_view text, char delimiter);

 private:
    char* space(std::size_t n);
    std::vector<char> bytes_;
    std::size_t used_ = 0;
};

// What a column of the output holds.
enum class SweepColumn {
    slot,
    phase,
    region,
    rhoV,
    rhoL,
    rhoS,
    eta,
    fill,
    tank_VL,
    tank_VV,
    tank_mL,
    tank_mV,
    tank_nL,
    tank_nV,
    message
};
struct SweepColumnSpec {
    SweepColumn kind;
    int slot;
    std::string name;
    int phase = -1;  // 0 L, 1 V, -1 of no phase
};
std::vector<SweepColumnSpec> sweep_column_table(int mode, bool functions);

enum class LineKind { empty, good, warned, failed, malformed };

// A worker's own record and buffers.
class SweepLine {
 public:
    SweepLine(const Session& s, const SweepSettings& settings, SweepHead head);

    // Calculates one line (without its end) and appends a row to out. fault is set for a malformed line.
    LineKind run(std::string_view line, std::uint64_t number, RowWriter& out, std::string& fault);

 private:
    // Reads the line into fields_; the reason when it cannot be read, empty when good.
    std::string read(std::string_view line);
    void store();
    std::string_view message_of(const CalcBatchResult& r);
    void write(const CalcBatchResult& r, std::string_view message, RowWriter& out);
    void cell(const SweepColumnSpec& column, const CalcBatchResult& r, RowWriter& out);
    void find_phases(const CalcBatchResult& r);
    double vapor_fraction(const CalcBatchResult& r) const;

    Session s_;
    SweepSettings settings_;
    SweepHead head_;
    CalcRequest request_;
    std::vector<SweepColumnSpec> columns_;
    double fields_[field_count]{};
    double M_, per_volume_;       // [kg/kmol]; M vFactor
    bool L_ = false, V_ = false;  // phases of the line; a fluid above the critical point is one of them
    const char* phase_ = "";
};

}  // namespace quom::console
