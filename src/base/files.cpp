#include "base/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "base/code_page.h"
#include "base/number_text.h"
#include "base/output_file.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

bool is_regular(const std::string& path) {
    std::error_code fault;
    return fs::is_regular_file(path, fault);
}

// "64 MB", or in bytes what is no whole number of them.
std::string size_text(std::size_t bytes) {
    constexpr std::size_t mega = 1024 * 1024;
    return bytes % mega == 0 ? std::to_string(bytes / mega) + " MB" : std::to_string(bytes) + " bytes";
}

}  // namespace

std::string folder_part(std::string_view path) {
    const std::size_t at = path.find_last_of("/\\");
    return std::string(at == std::string_view::npos ? std::string_view{} : path.substr(0, at + 1));
}

std::string name_part(std::string_view path) {
    const std::size_t at = path.find_last_of("/\\");
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string join_path(std::string_view folder, std::string_view name) {
    std::string out(folder);
    if (!out.empty() && out.back() != '/' && out.back() != '\\') out += '/';
    out += name;
    return out;
}

std::string absolute_path(const std::string& path) {
    std::error_code fault;
    const fs::path real = fs::absolute(path, fault);
    return fault ? path : real.lexically_normal().string();
}

std::string find_in_folder(std::string_view folder, std::string_view name) {
    if (name.empty()) return {};
    std::string exact = join_path(folder, name);
    if (is_regular(exact)) return exact;

    const std::string wanted = upper_text(name);
    std::string found;  // the first by name, so that the answer does not hang on the order of the folder
    std::error_code fault;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : fs::path(folder), fault);
    for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
        const std::string here = entry->path().filename().string();
        if (upper_text(here) != wanted || (!found.empty() && found < here)) continue;
        if (is_regular(join_path(folder, here))) found = here;
    }
    return found.empty() ? std::string{} : join_path(folder, found);
}

std::string resolve_path(std::string_view path, std::string_view program_path, std::string_view beside_file) {
    if (path.empty()) return {};
    const std::string name = name_part(path);
    const auto in_program = [&] { return find_in_folder(program_path, name); };
    const auto beside = [&] {
        return beside_file.empty() ? std::string() : find_in_folder(folder_part(beside_file), name);
    };
    if (!has_folder_part(path)) {
        std::string found = in_program();
        if (found.empty()) found = beside();
        return found.empty() ? join_path(program_path, name) : found;
    }
    std::string native(path);
    if (is_regular(native)) return native;
    std::replace(native.begin(), native.end(), '\\', '/');
    std::string found = find_in_folder(folder_part(native), name);
    if (found.empty()) found = beside();
    if (found.empty()) found = in_program();
    if (!found.empty()) return found;
    // A folder written in the other system's way may not exist here at all.
    std::error_code fault;
    const bool has_place = native == path || fs::is_directory(folder_part(native), fault);
    return has_place ? native : join_path(program_path, name);
}

bool FileExists(std::string_view path, std::string_view program_path) {
    if (path.empty()) return false;
    const std::string real = resolve_path(path, program_path);
    return is_regular(real) && ::access(real.c_str(), R_OK) == 0;
}

FileBytes read_file(const std::string& path, std::size_t largest) {
    const auto fault = [&path](int code) {
        return FileBytes{std::nullopt, file_fault("Cannot read", in_quotes(path), code)};
    };
    const Descriptor file = open_descriptor(path, O_RDONLY);
    if (!file.good()) return {std::nullopt, file_fault("Cannot open", in_quotes(path), errno)};
    struct stat about {};
    if (::fstat(file.get(), &about) != 0) return fault(errno);
    if (!S_ISREG(about.st_mode) && !S_ISFIFO(about.st_mode))
        return fault(S_ISDIR(about.st_mode) ? EISDIR : EINVAL);

    constexpr std::size_t kPiece = 65536;
    const std::size_t known = about.st_size > 0 ? static_cast<std::size_t>(about.st_size) : 0;
    std::string bytes;
    std::size_t filled = 0;
    while (known <= largest && filled <= largest) {
        if (filled == bytes.size()) bytes.resize(filled < known ? known + 1 : filled + kPiece);
        const ssize_t n = read_some(file.get(), bytes.data() + filled, bytes.size() - filled);
        if (n < 0) return fault(errno);
        filled += static_cast<std::size_t>(n);
        if (n > 0) continue;
        bytes.resize(filled);
        return {std::move(bytes), {}};
    }
    return {std::nullopt, "Cannot read " + in_quotes(path) + ": it is larger than " + size_text(largest)};
}

std::string write_file_atomic(const std::string& path, std::string_view bytes) {
    OutputFile file = OutputFile::open(path);
    if (file.write(bytes)) file.finish();
    return file.fault();
}

RandomFile RandomFile::open(const std::string& path) {
    RandomFile out;
    const auto file = std::make_shared<const Descriptor>(open_descriptor(path, O_RDONLY));
    struct stat about {};
    if (!file->good() || ::fstat(file->get(), &about) != 0 || !S_ISREG(about.st_mode)) return out;
    out.file_ = file;
    out.size_ = static_cast<std::uint64_t>(about.st_size);
    return out;
}

bool RandomFile::read_at(std::uint64_t offset, std::span<char> into) const {
    if (!is_open() || offset > size_ || into.size() > size_ - offset) return false;
    while (!into.empty()) {
        const ssize_t n = ::pread(file_->get(), into.data(), into.size(), static_cast<off_t>(offset));
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return false;
        into = into.subspan(static_cast<std::size_t>(n));
        offset += static_cast<std::uint64_t>(n);
    }
    return true;
}

std::vector<std::string_view> split_lines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        lines.push_back(line);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::optional<std::string> FieldReader::text_field() {
    if (at_end()) return std::nullopt;
    std::size_t begin = std::min(text_.find_first_not_of(' ', pos_), text_.size());
    std::size_t end = begin;
    std::size_t stop = begin;  // where to look for the comma or the line end
    const bool quoted = begin < text_.size() && text_[begin] == '"';
    if (quoted) {
        end = std::min(text_.find_first_of("\"\n", ++begin), text_.size());
        stop = end;
    }
    stop = std::min(text_.find_first_of(",\n", stop), text_.size());
    if (!quoted) end = stop;

    std::string_view field = text_.substr(begin, end - begin);
    const bool at_line_end = end == text_.size() || text_[end] == '\n';
    if (at_line_end && field.ends_with('\r')) field.remove_suffix(1);
    if (stop < text_.size() && text_[stop] == '\n') ++line_;
    pos_ = std::min(stop + 1, text_.size());
    return std::string(quoted ? field : trim(field));
}

std::optional<double> FieldReader::number_field() {
    const std::optional<std::string> field = text_field();
    if (!field) return std::nullopt;
    if (const std::optional<double> number = read_number(*field)) return number;
    const std::string word = upper_text(trim(*field));
    if (word == "TRUE" || word == "#TRUE#") return -1.0;
    if (word == "FALSE" || word == "#FALSE#") return 0.0;
    return std::nullopt;
}

std::optional<std::string_view> FieldReader::line_view() {
    if (at_end()) return std::nullopt;
    const std::size_t end = std::min(text_.find('\n', pos_), text_.size());
    std::string_view line = text_.substr(pos_, end - pos_);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (end < text_.size()) ++line_;
    pos_ = std::min(end + 1, text_.size());
    return line;
}

std::optional<std::string> FieldReader::whole_line() {
    const std::optional<std::string_view> line = line_view();
    return line ? std::optional(std::string(*line)) : std::nullopt;
}

}  // namespace quom
