// Bytes of a file, device, pipe or descriptor as they come.
#pragma once
#include <array>
#include <cstddef>
#include <istream>
#include <streambuf>
#include <string>

#include "base/descriptor.h"

namespace quom {

// Reads a descriptor for a stream: what is there when something is there. An error is thrown as
// std::system_error, which leaves the stream bad, not at its end. The descriptor stays open.
class DescriptorBuffer : public std::streambuf {
 public:
    explicit DescriptorBuffer(int fd) : fd_(fd) {}

 protected:
    int_type underflow() override;

 private:
    int fd_;
    std::array<char, 65536> bytes_{};
};

class InputFile {
 public:
    static InputFile open(const std::string& path);    // fault() tells; a folder is refused
    static InputFile of_stream(std::istream& stream);  // of the standard input
    // At most `space` bytes, waits for the first only. 0 at the end, -1 with a fault.
    std::ptrdiff_t read(char* into, std::size_t space);
    const std::string& fault() const { return fault_; }  // with the file's name; empty when good

 private:
    std::ptrdiff_t read_stream(char* into, std::size_t space);
    std::ptrdiff_t fail(int code);
    std::string name_;  // for the fault
    std::istream* stream_ = nullptr;
    Descriptor file_;
    std::string fault_;
};

}  // namespace quom
