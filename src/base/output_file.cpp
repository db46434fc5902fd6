#include "base/output_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include "base/files.h"
#include "base/signals_held.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

// The names of the unfinished files where a handler of signals finds them. It can be handed nothing and may
// ask for no memory, hence fixed places. A file that finds none is removed by its destructor alone.
enum class Use : int { free, changing, taken };
struct Place {
    std::atomic<Use> use{Use::free};
    char name[PATH_MAX] = {};
};
constinit std::array<Place, 32> places;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
static_assert(std::atomic<Use>::is_always_lock_free);

int take_place(const std::string& name) {
    if (name.size() >= PATH_MAX) return -1;
    for (std::size_t i = 0; i < places.size(); ++i) {
        Use expected = Use::free;
        if (!places[i].use.compare_exchange_strong(expected, Use::changing)) continue;
        std::memcpy(places[i].name, name.c_str(), name.size() + 1);
        places[i].use = Use::taken;
        return static_cast<int>(i);
    }
    return -1;
}

// Where the bytes of a path belong.
struct Destination {
    std::string target;  // the file behind the links
    bool exists = false;
    bool direct = false;  // no regular file that could be replaced
    int descriptor = -1;  // of this program, for /dev/stdout and its like
    mode_t mode = 0;      // of the old file
    int fault = 0;        // errno
};

// The descriptor that a path below /proc/self/fd stands for; none else.
std::optional<int> own_descriptor(const fs::path& path) {
    std::error_code none;
    const fs::path folder = fs::canonical(path.parent_path(), none);
    if (none || folder != fs::canonical("/proc/self/fd", none) || none) return std::nullopt;
    const std::string name = path.filename().string();
    int fd = -1;
    const auto [end, fault] = std::from_chars(name.data(), name.data() + name.size(), fd);
    return fault == std::errc() && *end == '\0' ? std::optional(fd) : std::nullopt;
}

Destination destination_of(const std::string& path) {
    Destination to{.target = path};
    struct stat old {};
    to.exists = ::stat(path.c_str(), &old) == 0;
    if (!to.exists && errno != ENOENT) to.fault = errno;
    if (to.exists && S_ISDIR(old.st_mode)) to.fault = EISDIR;
    if (to.exists && to.fault == 0 && ::access(path.c_str(), W_OK) != 0) to.fault = errno;
    to.mode = old.st_mode & 0777;
    to.direct = to.exists && !S_ISREG(old.st_mode);

    // A link stays a link: its target is replaced, or made where it is missing.
    std::error_code no_link;
    for (int hop = 0; hop < 40 && !to.direct && to.fault == 0; ++hop) {
        const fs::path here(to.target), next = fs::read_symlink(here, no_link);
        if (no_link) break;
        to.descriptor = own_descriptor(here).value_or(-1);
        to.direct = to.descriptor >= 0;
        to.target = (here.parent_path() / next).string();
    }
    if (to.direct) to.target = path;
    return to;
}

// Opens what is written as it is.
Descriptor open_direct(const Destination& to) {
    if (to.descriptor >= 0) return Descriptor(::fcntl(to.descriptor, F_DUPFD_CLOEXEC, 0));
    return open_descriptor(to.target, O_WRONLY);
}

constexpr std::string_view Unfinished = ".tmp";  // between a name and "PID-NUMBER"

// The writer in the name of an unfinished file, "PID-NUMBER"; 0: the name is another one.
pid_t writer_of(std::string_view name) {
    pid_t writer = 0;
    unsigned number = 0;
    const char* const end = name.data() + name.size();
    const auto [dash, no_writer] = std::from_chars(name.data(), end, writer);
    if (no_writer != std::errc() || dash == end || *dash != '-' || writer <= 0) return 0;
    const auto [rest, no_number] = std::from_chars(dash + 1, end, number);
    return no_number == std::errc() && rest == end ? writer : 0;
}

// Removes the unfinished files of a path whose writers were killed. A writer holds a lock on its file, also
// where the folder is shared and its number means nothing here.
void remove_abandoned(const std::string& target) {
    const std::string start = name_part(target) + std::string(Unfinished);
    const std::string folder = folder_part(target);
    std::error_code fault;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : fs::path(folder), fault);
    for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(start)) continue;
        const pid_t writer = writer_of(std::string_view(name).substr(start.size()));
        if (writer == 0 || ::kill(writer, 0) == 0 || errno != ESRCH) continue;
        const std::string path = entry->path().string();
        const Descriptor left = open_descriptor(path, O_WRONLY | O_NOFOLLOW | O_NONBLOCK);
        if (left.good() && ::flock(left.get(), LOCK_EX | LOCK_NB) == 0) ::unlink(path.c_str());
    }
}

bool flush_file(int fd) {
    for (;;) {
        if (::fsync(fd) == 0) return true;
        if (errno != EINTR) return false;
    }
}

// The entry of the new name reaches the disk. Folders that cannot be flushed are left to the system.
bool flush_folder(const std::string& target) {
    const std::string folder = folder_part(target);
    const Descriptor open = open_descriptor(folder.empty() ? "." : folder, O_RDONLY | O_DIRECTORY);
    return !open.good() || flush_file(open.get()) || (errno != EIO && errno != ENOSPC && errno != EDQUOT);
}

}  // namespace

UnfinishedFile::UnfinishedFile(UnfinishedFile&& other) noexcept { swap(other); }

UnfinishedFile& UnfinishedFile::operator=(UnfinishedFile&& other) noexcept {
    UnfinishedFile taken(std::move(other));
    swap(taken);
    return *this;
}

void UnfinishedFile::swap(UnfinishedFile& other) noexcept {
    name_.swap(other.name_);
    std::swap(place_, other.place_);
}

UnfinishedFile::~UnfinishedFile() {
    if (!name_.empty()) ::unlink(name_.c_str());
    kept();
}

Descriptor UnfinishedFile::create_beside(const std::string& path) {
    const std::string stem = path + std::string(Unfinished) + std::to_string(::getpid()) + "-";
    const SignalsHeld held;  // a file never stands there without its name in the list
    Descriptor file;
    for (int attempt = 0; attempt < 1000; ++attempt) {
        std::string name = stem + std::to_string(attempt);
        file = open_descriptor(name, O_WRONLY | O_CREAT | O_EXCL);
        if (!file.good() && errno == EEXIST) continue;
        if (!file.good()) break;
        ::flock(file.get(), LOCK_EX | LOCK_NB);  // tells others that it has a writer
        name_ = std::move(name);
        place_ = take_place(name_);
        break;
    }
    return file;
}

void UnfinishedFile::kept() {
    name_.clear();
    if (place_ >= 0) places[static_cast<std::size_t>(place_)].use = Use::free;
    place_ = -1;
}

void remove_unfinished_files() noexcept {
    for (Place& place : places) {
        if (place.use == Use::taken) ::unlink(place.name);
    }
}

OutputFile OutputFile::open(const std::string& path) {
    OutputFile out;
    out.name_ = in_quotes(path);
    const Destination to = destination_of(path);
    out.target_ = to.target;
    if (to.fault != 0) {
        out.fail(to.fault);
        return out;
    }
    if (!to.direct) remove_abandoned(to.target);
    out.file_ = to.direct ? open_direct(to) : out.temporary_.create_beside(to.target);
    const bool ready =
        out.file_.good() && (to.direct || !to.exists || ::fchmod(out.file_.get(), to.mode) == 0);
    if (!ready) out.fail(errno);
    return out;
}

OutputFile OutputFile::append_to_stream(std::ostream& stream) {
    OutputFile out;
    out.stream_ = &stream;
    out.name_ = "the standard output";
    return out;
}

bool OutputFile::write(std::string_view bytes) {
    if (!fault_.empty()) return false;
    errno = 0;
    if (stream_ != nullptr) {
        stream_->write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush();
        return *stream_ ? true : fail(errno);
    }
    return write_all(file_.get(), bytes) ? true : fail(errno);
}

bool OutputFile::finish() {
    if (!fault_.empty()) return false;
    if (stream_ != nullptr) return write({});
    if (temporary_.name().empty()) return file_.close() ? true : fail(errno);
    const bool named =
        flush_file(file_.get()) && file_.close() && ::rename(temporary_.name().c_str(), target_.c_str()) == 0;
    if (!named) return fail(errno);
    temporary_.kept();
    return flush_folder(target_) ? true : fail(errno);
}

// Ends the file with the reason; nothing is left of it. A stream that does not tell its reason has an I/O
// error.
bool OutputFile::fail(int code) {
    if (code == 0) code = EIO;
    fault_ = file_fault("Cannot write", name_, code);
    file_.close();
    temporary_ = UnfinishedFile();
    return false;
}

}  // namespace quom
