#include "base/descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace quom {
namespace {

// After a call that failed: true when it is to be tried again. A descriptor that somebody else has set not to
// wait is waited for.
bool try_again(int fd, short wanted) {
    if (errno == EINTR) return true;
    if (errno != EAGAIN && errno != EWOULDBLOCK) return false;
    pollfd waiting{fd, wanted, 0};
    return ::poll(&waiting, 1, -1) >= 0 || errno == EINTR;
}

}  // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this == &other) return *this;
    close();
    fd_ = other.release();
    return *this;
}

int Descriptor::release() { return std::exchange(fd_, -1); }

bool Descriptor::close() {
    const int fd = release();
    // After EINTR the descriptor is closed all the same.
    return fd < 0 || ::close(fd) == 0 || errno == EINTR;
}

Descriptor open_descriptor(const std::string& path, int flags) {
    int fd = -1;
    do fd = ::open(path.c_str(), flags | O_CLOEXEC, 0666);
    while (fd < 0 && errno == EINTR);
    return Descriptor(fd);
}

ssize_t read_some(int fd, char* into, std::size_t space) {
    for (;;) {
        const ssize_t n = ::read(fd, into, space);
        if (n >= 0 || !try_again(fd, POLLIN)) return n;
    }
}

bool write_all(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(n));
        } else if (!try_again(fd, POLLOUT)) {
            return false;
        }
    }
    return true;
}

std::string in_quotes(std::string_view path) { return '"' + std::string(path) + '"'; }

std::string file_fault(std::string_view what, std::string_view name, int code) {
    return std::string(what) + " " + std::string(name) + ": " + std::generic_category().message(code);
}

}  // namespace quom
