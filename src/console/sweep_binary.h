// Rows of a sweep as doubles by column, for programs: one line of JSON, then chunks of 4096 rows, in each one
// column after the other. Described in docs/sweep_binary.md.
#pragma once
#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/sweep_block.h"

namespace quom {

inline constexpr std::size_t binary_chunk_rows = 4096;

// Doubles of some rows, by column of the file.
using BinaryColumns = std::vector<std::vector<double>>;

// Names, units and words of the columns, rows (null where they are not known beforehand) and what the caller
// knows of substance and models; ends with a line feed on a multiple of 8 bytes.
std::string binary_head(const SweepPlan& plan, bool line_numbers, std::optional<std::uint64_t> rows,
                        const nlohmann::ordered_json& about);

// Appends the rows [begin, begin + results.size()) of rows with their results.
void append_binary(const SweepPlan& plan, bool line_numbers, const SweepRows& rows, std::size_t begin,
                   const SweepResults& results, BinaryColumns& out);

// Cuts rows, in whatever pieces they come, into chunks.
class BinaryChunks {
 public:
    using Write = std::function<bool(std::string_view bytes)>;
    explicit BinaryChunks(Write write) : write_(std::move(write)) {}
    bool take(const BinaryColumns& columns);  // false when a chunk could not be written
    bool finish();                            // the last chunk, with the rows that are left

 private:
    Write write_;
    BinaryColumns chunk_;
    std::size_t rows_ = 0;
};

}  // namespace quom
