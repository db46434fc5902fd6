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

namespace quom {
namespace {

namespace fs = std::filesystem;

std::string fault_text(std::string_view what, const std::string& path, int code) {
    return std::string(what) + " \"" + path + "\": " + std::generic_category().message(code);
}

// An open file descriptor, closed at the end of its life.
class Descriptor {
 public:
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }
    bool good() const { return fd_ >= 0; }
    int get() const { return fd_; }
    bool close() {
        const int fd = fd_;
        fd_ = -1;
        return fd < 0 || ::close(fd) == 0;
    }

 private:
    int fd_;
};

bool is_regular(const std::string& path) {
    std::error_code fault;
    return fs::is_regular_file(path, fault);
}

bool write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(n));
    }
    return true;
}

// A new file beside path under a name that nobody has; its name is left in temporary.
int open_beside(const std::string& path, std::string& temporary) {
    for (int attempt = 0; attempt < 1000; ++attempt) {
        temporary = path + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(attempt);
        const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

// Pipes and devices are written as they are: there is nothing that could be left half written.
std::string write_through(const std::string& path, std::string_view bytes) {
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file.good() || !write_all(file.get(), bytes)) return fault_text("Cannot write", path, errno);
    return {};
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

FileBytes read_file(const std::string& path) {
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file.good()) return {std::nullopt, fault_text("Cannot open", path, errno)};
    struct stat about {};
    if (::fstat(file.get(), &about) != 0) return {std::nullopt, fault_text("Cannot read", path, errno)};
    if (!S_ISREG(about.st_mode) && !S_ISFIFO(about.st_mode)) {
        return {std::nullopt, fault_text("Cannot read", path, S_ISDIR(about.st_mode) ? EISDIR : EINVAL)};
    }
    constexpr std::size_t kPiece = 65536;
    std::string bytes;
    std::size_t filled = 0;
    for (;;) {
        const std::size_t known = about.st_size > 0 ? static_cast<std::size_t>(about.st_size) : 0;
        if (filled == bytes.size()) bytes.resize(filled < known ? known + 1 : filled + kPiece);
        const ssize_t n = ::read(file.get(), bytes.data() + filled, bytes.size() - filled);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) return {std::nullopt, fault_text("Cannot read", path, errno)};
        if (n == 0) break;
        filled += static_cast<std::size_t>(n);
    }
    bytes.resize(filled);
    return {std::move(bytes), {}};
}

std::string write_file_atomic(const std::string& path, std::string_view bytes) {
    std::error_code ignored;
    const fs::path link = fs::canonical(path, ignored);  // a link stays a link: its target is replaced
    const std::string target = ignored ? path : link.string();

    struct stat old {};
    const bool replaces = ::stat(target.c_str(), &old) == 0;
    if (replaces && S_ISDIR(old.st_mode)) return fault_text("Cannot write", path, EISDIR);
    if (replaces && ::access(target.c_str(), W_OK) != 0) return fault_text("Cannot write", path, errno);
    if (replaces && !S_ISREG(old.st_mode)) return write_through(target, bytes);

    std::string temporary;
    Descriptor file(open_beside(target, temporary));
    if (!file.good()) return fault_text("Cannot write", path, errno);
    const bool written = (!replaces || ::fchmod(file.get(), old.st_mode & 0777) == 0) &&
                         write_all(file.get(), bytes) && ::fsync(file.get()) == 0 && file.close() &&
                         ::rename(temporary.c_str(), target.c_str()) == 0;
    if (written) return {};
    const int code = errno;
    ::unlink(temporary.c_str());
    return fault_text("Cannot write", path, code);
}

RandomFile RandomFile::open(const std::string& path) {
    RandomFile out;
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return out;
    std::shared_ptr<int> shared(new int(fd), [](int* held) {
        ::close(*held);
        delete held;
    });
    struct stat about {};
    if (::fstat(fd, &about) != 0 || !S_ISREG(about.st_mode)) return out;
    out.fd_ = std::move(shared);
    out.size_ = static_cast<std::uint64_t>(about.st_size);
    return out;
}

bool RandomFile::read_at(std::uint64_t offset, std::span<char> into) const {
    if (!is_open() || offset > size_ || into.size() > size_ - offset) return false;
    while (!into.empty()) {
        const ssize_t n = ::pread(*fd_, into.data(), into.size(), static_cast<off_t>(offset));
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

std::optional<std::string> FieldReader::whole_line() {
    if (at_end()) return std::nullopt;
    const std::size_t end = std::min(text_.find('\n', pos_), text_.size());
    std::string_view line = text_.substr(pos_, end - pos_);
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (end < text_.size()) ++line_;
    pos_ = std::min(end + 1, text_.size());
    return std::string(line);
}

}  // namespace quom
