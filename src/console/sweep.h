// Many calculations of one mode, one a row of a table or of a grid: read, calculated and written in pieces,
// so that the memory does not grow with the length. The bytes that are written depend on the rows and
// settings alone, not on jobs, pieces or pauses.
#pragma once
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "console/sweep_block.h"
#include "console/sweep_source.h"

namespace quom {

enum class SweepFormat : std::uint8_t { csv, bin };

inline constexpr int most_jobs = 1024;

struct SweepSettings {
    SweepCalculation calculation{};
    SweepPlan plan{};
    TableOptions table{};
    SweepFormat format = SweepFormat::csv;
    int jobs = 1;  // threads; they share the fluid. Those that the system does not give are done without
    RowRange range{};
    bool with_head = true;
    std::optional<std::uint64_t> rows{};  // of the whole, for the head of a binary table
    nlohmann::ordered_json about{};       // substance and models, for the same
};

// Where the bytes come from and go to.
struct SweepStreams {
    TableInput::Read read{};  // not needed with a grid
    std::function<bool(std::string_view bytes)> write{};
    // After the bytes of a part; may be empty. The sweep ends when one of them returns false.
    std::function<bool(const SweepPart& part)> part_written{};
};

// The longest line of a table, and what is read at once [bytes].
inline constexpr std::size_t table_piece_bytes = 64 * 1024;

// Runs the mode on every row of the table that `streams` reads, or of the grid where there is one. The order
// is kept. A row without a result carries the reason, a row that cannot be read its line too. Throws what the
// workers throw, std::bad_alloc among it.
SweepTotals run_sweep(const std::shared_ptr<const Fluid>& fluid, const SweepSettings& settings,
                      const SweepGrid* grid, const SweepStreams& streams);

}  // namespace quom
