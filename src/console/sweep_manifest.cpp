#include "console/sweep_manifest.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "base/descriptor.h"
#include "base/files.h"
#include "base/input_file.h"

namespace quom {
namespace {

using Json = nlohmann::ordered_json;

std::string line_of(const SweepChunk& chunk) {
    const Json json = {
        {"rows", chunk.rows}, {"bytes", chunk.bytes}, {"checksum", chunk.checksum}, {"input", chunk.input}};
    return json.dump() + "\n";
}

// A line of a chunk; nothing for any other.
std::optional<SweepChunk> chunk_of(const Json& json) {
    if (!json.is_object()) return std::nullopt;
    const auto has = [&json](const char* key, bool number) {
        return json.contains(key) && (number ? json[key].is_number_unsigned() : json[key].is_string());
    };
    if (!has("rows", true) || !has("bytes", true) || !has("checksum", false) || !has("input", false))
        return std::nullopt;
    return SweepChunk{
        .rows = json["rows"], .bytes = json["bytes"], .checksum = json["checksum"], .input = json["input"]};
}

// Whether the file of a chunk has the bytes that it should have.
bool is_whole(const std::string& path, const SweepChunk& chunk) {
    InputFile file = InputFile::open(path);
    Checksum sum;
    std::uint64_t bytes = 0;
    std::string piece(1 << 16, '\0');
    for (;;) {
        const std::ptrdiff_t got = file.fault().empty() ? file.read(piece.data(), piece.size()) : -1;
        if (got < 0) return false;
        if (got == 0) break;
        sum.add({piece.data(), static_cast<std::size_t>(got)});
        bytes += static_cast<std::uint64_t>(got);
    }
    return bytes == chunk.bytes && sum.text() == chunk.checksum;
}

// The first setting that differs, as "functions (false, now true)"; empty when none does.
std::string difference(const Json& before, const Json& now) {
    for (const auto& [key, value] : now.items()) {
        if (!before.contains(key)) return key;
        if (before[key] == value) continue;
        const std::string a = before[key].dump(), b = value.dump();
        return a.size() + b.size() > 100 ? key : key + " (" + a + ", now " + b + ")";
    }
    return before.size() == now.size() ? "" : "their number";
}

}  // namespace

std::string manifest_name(const std::string& out) { return out + ".manifest"; }

std::string chunk_name(const std::string& out, std::uint64_t number) {
    const std::string digits = std::to_string(number);
    return out + "." + std::string(digits.size() < 6 ? 6 - digits.size() : 0, '0') + digits;
}

std::uint64_t SweepManifest::rows() const {
    std::uint64_t sum = 0;
    for (const SweepChunk& chunk : chunks) sum += chunk.rows;
    return sum;
}

SweepManifest read_manifest(const std::string& path) {
    SweepManifest manifest;
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return manifest;
    const FileBytes file = read_file(path);
    if (!file.bytes) {
        manifest.fault = file.fault;
        return manifest;
    }
    bool first = true;
    for (const std::string_view line : split_lines(*file.bytes)) {
        const Json json = Json::parse(line, nullptr, false);
        if (json.is_discarded()) break;
        if (first) {
            manifest.settings = json;
        } else if (const std::optional<SweepChunk> chunk = chunk_of(json)) {
            manifest.chunks.push_back(*chunk);
        } else {
            manifest.whole = json.is_object() && json.value("state", "") == "whole";
            break;
        }
        first = false;
    }
    if (!manifest.settings.is_object()) manifest.fault = "\"" + path + "\" is no manifest of a sweep";
    return manifest;
}

SweepManifest take_over(const std::string& out, const Json& settings) {
    SweepManifest manifest = read_manifest(manifest_name(out));
    if (!manifest.fault.empty()) return manifest;
    if (manifest.settings.is_null()) {
        manifest.settings = settings;
        return manifest;
    }
    if (const std::string other = difference(manifest.settings, settings); !other.empty()) {
        manifest.fault = "the chunks of \"" + out + "\" were calculated with other settings: " + other;
        return manifest;
    }
    for (std::size_t k = 0; k < manifest.chunks.size(); ++k) {
        if (is_whole(chunk_name(out, k + 1), manifest.chunks[k])) continue;
        manifest.chunks.resize(k);
        manifest.whole = false;
    }
    return manifest;
}

ChunkedOutput::ChunkedOutput(std::string out, std::uint64_t chunk_rows, const SweepManifest& before)
    : out_(std::move(out)), chunk_rows_(chunk_rows), number_(before.chunks.size()) {
    std::string lines = before.settings.dump() + "\n";
    for (const SweepChunk& chunk : before.chunks) lines += line_of(chunk);
    fault_ = write_file_atomic(manifest_name(out_), lines);
}

bool ChunkedOutput::open_chunk() {
    if (++number_ > most_chunks) {
        fault_ =
            "there are more than " + std::to_string(most_chunks) + " chunks: more rows a chunk are needed";
        return false;
    }
    file_ = OutputFile::open(chunk_name(out_, number_));
    chunk_ = {};
    sum_ = {};
    fault_ = file_->fault();
    return fault_.empty();
}

bool ChunkedOutput::write(std::string_view bytes) {
    if (!fault_.empty()) return false;
    if (bytes.empty()) return true;
    if (!file_ && !open_chunk()) return false;
    sum_.add(bytes);
    chunk_.bytes += bytes.size();
    if (!file_->write(bytes)) fault_ = file_->fault();
    return fault_.empty();
}

bool ChunkedOutput::rows_written(std::uint64_t rows, std::uint64_t last_row, const std::string& input) {
    chunk_.rows += rows;
    return last_row % chunk_rows_ == 0 ? close_chunk(input) : fault_.empty();
}

bool ChunkedOutput::close_chunk(const std::string& input) {
    if (!file_) return fault_.empty();
    if (fault_.empty() && !file_->finish()) fault_ = file_->fault();
    file_.reset();
    chunk_.checksum = sum_.text();
    chunk_.input = input;
    return fault_.empty() && append_line(line_of(chunk_));
}

bool ChunkedOutput::append_line(const std::string& line) {
    const std::string name = manifest_name(out_);
    Descriptor file = open_descriptor(name, O_WRONLY | O_APPEND);
    const bool good = file.good() && write_all(file.get(), line) && ::fsync(file.get()) == 0;
    if (!good) fault_ = file_fault("Cannot write", name, errno);
    return good;
}

bool ChunkedOutput::finish(const std::string& input) {
    return fault_.empty() && close_chunk(input) && append_line("{\"state\":\"whole\"}\n");
}

}  // namespace quom
