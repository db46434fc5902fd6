// A sweep in chunks of so many rows, each in a file of its own, and the manifest that says which of them are
// whole: OUT.manifest, OUT.000001, OUT.000002 ... Put one behind the other the chunks are the table.
//
// The manifest has one JSON object a line: the settings, then a line for each chunk with rows, bytes and
// checksum, at the end {"state":"whole"}. A line is written when its chunk lies on the disk.
#pragma once
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/output_file.h"
#include "console/checksum.h"

namespace quom {

inline constexpr std::uint64_t most_chunks = 999999;
std::string manifest_name(const std::string& out);
std::string chunk_name(const std::string& out, std::uint64_t number);  // from 1

struct SweepChunk {
    std::uint64_t rows = 0, bytes = 0;
    std::string checksum;  // of its bytes
    std::string input;     // of the table from its first row to the end of the chunk; empty of a grid
};

struct SweepManifest {
    nlohmann::ordered_json settings;
    std::vector<SweepChunk> chunks;
    bool whole = false;
    std::uint64_t rows() const;
    std::string fault;  // why it cannot be gone on with; empty when good
};
// What stands in a manifest as far as its lines are whole. A file that is not there gives no settings and no
// fault.
SweepManifest read_manifest(const std::string& path);

// What a sweep with these settings can take over: chunks whose files have the bytes they should have, up to
// the first that has not. A fault names the setting that differs.
SweepManifest take_over(const std::string& out, const nlohmann::ordered_json& settings);

// Writes chunk by chunk.
class ChunkedOutput {
 public:
    // Starts behind the chunks of `before`, with a manifest that names these alone.
    ChunkedOutput(std::string out, std::uint64_t chunk_rows, const SweepManifest& before);

    bool write(std::string_view bytes);
    // Rows that these bytes were, up to row last_row of the table; input: checksum of the table up to there.
    bool rows_written(std::uint64_t rows, std::uint64_t last_row, const std::string& input);
    bool finish(const std::string& input);
    std::uint64_t chunks() const { return number_; }
    const std::string& fault() const { return fault_; }

 private:
    bool open_chunk();
    bool close_chunk(const std::string& input);
    bool append_line(const std::string& line);

    std::string out_;
    std::uint64_t chunk_rows_, number_;
    std::optional<OutputFile> file_;
    SweepChunk chunk_;
    Checksum sum_;
    std::string fault_;
};

}  // namespace quom
