// What reading and writing files have in common: open descriptors, waiting for them, the words of a fault.
#pragma once
#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace quom {

// An open file descriptor, closed at the end of its life; below 0: none.
class Descriptor {
 public:
    Descriptor() = default;
    explicit Descriptor(int fd) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(other.release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor() { close(); }
    bool good() const { return fd_ >= 0; }
    int get() const { return fd_; }
    int release();
    bool close();  // false, with errno, when the system could not write what was left

 private:
    int fd_ = -1;
};

// open(2) with O_CLOEXEC, tried again when a signal comes in between.
Descriptor open_descriptor(const std::string& path, int flags);

// The bytes that are there, at most `space`: waits for the first only. 0 at the end, -1 with errno.
ssize_t read_some(int fd, char* into, std::size_t space);

// Writes all of it; false with errno. What was written before a failure stays written.
bool write_all(int fd, std::string_view bytes);

// The name of a file in the words of a fault.
std::string in_quotes(std::string_view path);

// "Cannot read "states.csv": No such file or directory", with the code of errno.
std::string file_fault(std::string_view what, std::string_view name, int code);

}  // namespace quom
