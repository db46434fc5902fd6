// Many calculations of one mode, one a line of a table: read, calculated and written in pieces, so that the
// memory does not grow with the length.
#pragma once
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "calc/outcome.h"
#include "console/sweep_rows.h"
#include "engine/fluid.h"
#include "quantities/units.h"

namespace quom {

// Head of the output of a mode: "T;p;phase;...;message".
std::string sweep_head_line(Mode mode, bool functions, char delimiter);

struct SweepTotals {
    std::uint64_t lines = 0;          // calculations, without head and empty lines
    std::uint64_t failed = 0;         // lines without a result
    std::uint64_t warned = 0;         // lines with a result and a warning
    std::uint64_t malformed = 0;      // lines that could not be read
    std::vector<Warning> warnings;    // of each kind the first that was met
    std::vector<std::string> faults;  // "line 17: ...", of the first malformed lines
    std::string broken;               // why the sweep ended early; empty when it did not
};

// Where the bytes come from and go to; write returns false when it failed.
struct SweepStreams {
    TableInput::Read read;
    std::function<bool(std::string_view bytes)> write;
};

struct SweepSettings {
    Mode mode = Mode::none;
    CalcSetup setup{};
    Units units{};
    UnitFactors factors{};  // at a T that is not known; of the mode per (R T) those of the line are taken
    bool functions = false;
    TableOptions table{};
    int jobs = 1;  // threads; they share the fluid
};

// Runs the mode on every line. The order is kept. A line without a result carries the reason in its last
// columns, a line that cannot be read its number too.
SweepTotals run_sweep(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings,
                      const SweepStreams& streams);

}  // namespace quom
