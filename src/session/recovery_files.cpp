#include "session/recovery_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "base/files.h"

namespace quom {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Head = "session-", CopyEnd = ".copy", LockEnd = ".lock";
constexpr int MostPlaces = 1000;  // of one process number

bool remove_file(const std::string& path) {
    std::error_code ignored;
    return fs::remove(path, ignored);
}

// Whether the process whose number a lock file holds is there, for file systems that cannot lock.
bool holder_lives(int file) {
    char text[24] = {};
    const ssize_t size = ::pread(file, text, sizeof text - 1, 0);
    long pid = 0;
    if (size <= 0 || std::from_chars(text, text + size, pid).ec != std::errc() || pid <= 0) return false;
    return pid != ::getpid() && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM);
}

// Takes a lock; not good where another program has it or the file cannot be written.
HeldLock take_lock(const std::string& path) {
    HeldLock lock{open_descriptor(path, O_RDWR | O_CREAT), path};
    if (!lock.good()) return {};
    const int file = lock.file.get();
    if (::flock(file, LOCK_EX | LOCK_NB) != 0 && (errno == EWOULDBLOCK || holder_lives(file))) return {};
    const std::string pid = std::to_string(::getpid()) + '\n';
    if (::ftruncate(file, 0) != 0 || ::pwrite(file, pid.data(), pid.size(), 0) < 0) return {};
    return lock;
}

std::string lock_of(const std::string& copy) {
    return copy.substr(0, copy.size() - CopyEnd.size()) + std::string(LockEnd);
}

// The copies in a folder, the newest first.
std::vector<std::string> copies_in(const std::string& folder) {
    std::vector<std::pair<fs::file_time_type, std::string>> found;
    std::error_code ec;
    for (fs::directory_iterator at(folder, ec), end; !ec && at != end; at.increment(ec)) {
        const std::string name = at->path().filename().string();
        std::error_code none;
        if (name.starts_with(Head) && name.ends_with(CopyEnd) && at->is_regular_file(none))
            found.emplace_back(fs::last_write_time(at->path(), none), at->path().string());
    }
    std::ranges::sort(found, std::greater<>());
    std::vector<std::string> paths;
    paths.reserve(found.size());
    for (auto& [time, path] : found) paths.push_back(std::move(path));
    return paths;
}

Message offer(const SessionCopy& copy) {
    return {.title = "Copy of a session",
            .text = "The program did not end as it should. What it had on " + copy.written +
                    " was kept:\n\n" + copy_preview(copy) + "\nLoad it now? \"No\" deletes the copy.",
            .buttons = Buttons::yes_no,
            .default_button = Answer::yes,
            .kind = MessageKind::question};
}

// Puts a copy aside that cannot be read, so that it is not met again.
void put_aside(const LeftCopy& left, const std::string& fault, Messages& messages) {
    const std::string aside = left.path + ".unreadable";
    std::error_code ec;
    fs::rename(left.path, aside, ec);
    left.remove();
    messages.ask({.title = "WARNING",
                  .text = "A copy of a session was left behind and cannot be read:\n" + fault +
                          (ec ? "\nIt was removed." : "\nIt was put aside as " + aside + '.'),
                  .kind = MessageKind::warning});
}

}  // namespace

RecoveryPlace::RecoveryPlace(const std::string& folder) {
    if (folder.empty()) return;
    const std::string head = join_path(folder, std::string(Head) + std::to_string(::getpid()));
    for (int i = 1; i < MostPlaces && !good(); ++i) {
        const std::string name = i == 1 ? head : head + '-' + std::to_string(i);
        std::error_code ignored;
        if (fs::exists(name + std::string(CopyEnd), ignored))
            continue;  // of a program with our number before
        lock_ = take_lock(name + std::string(LockEnd));
        path_ = name + std::string(CopyEnd);
        if (!good() && !fs::exists(name + std::string(LockEnd), ignored)) return;  // no file can be made here
    }
}

RecoveryPlace::~RecoveryPlace() {
    std::error_code ignored;
    if (good() && !fs::exists(path_, ignored)) remove_file(lock_.path);
}

std::string RecoveryPlace::write(const SessionCopy& copy) const {
    const std::string bytes = session_copy_bytes(copy);
    if (bytes.size() > LargestCopy) return "The session is too large for a copy.";
    return write_file_atomic(path_, bytes);
}

void RecoveryPlace::remove() const { remove_file(path_); }

void LeftCopy::remove() const {
    remove_file(path);
    remove_file(lock.path);
}

std::optional<LeftCopy> take_left_copy(const std::string& folder) {
    for (const std::string& path : copies_in(folder)) {
        LeftCopy left{path, take_lock(lock_of(path))};
        if (!left.lock.good()) continue;
        std::error_code ignored;
        if (fs::exists(path, ignored)) return left;
        left.remove();  // it ended as it should in between
    }
    return std::nullopt;
}

bool offer_left_copies(Session& session, const RecoveryPlace& own, const std::string& folder,
                       Messages& messages) {
    std::string before;
    while (std::optional<LeftCopy> left = take_left_copy(folder)) {
        if (left->path == std::exchange(before, left->path)) break;  // it can be neither read nor removed
        const FileBytes file = read_file(left->path, LargestCopy);
        const SessionCopyRead read =
            file.bytes ? read_session_copy(*file.bytes) : SessionCopyRead{{}, file.fault};
        if (!read.copy) {
            put_aside(*left, read.fault, messages);
            continue;
        }
        const bool load = messages.ask(offer(*read.copy)) == Answer::yes;
        if (!load) {
            left->remove();
            continue;
        }
        restore_session(session, *read.copy, messages);
        if (own.good() && own.write(copy_of(session)).empty()) left->remove();
        return true;
    }
    return false;
}

}  // namespace quom
