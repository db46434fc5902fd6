#include "base/input_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace quom {

DescriptorBuffer::int_type DescriptorBuffer::underflow() {
    const ssize_t n = read_some(fd_, bytes_.data(), bytes_.size());
    if (n < 0) throw std::system_error(errno, std::generic_category());
    setg(bytes_.data(), bytes_.data(), bytes_.data() + n);
    return n == 0 ? traits_type::eof() : traits_type::to_int_type(bytes_[0]);
}

InputFile InputFile::open(const std::string& path) {
    InputFile in;
    in.name_ = in_quotes(path);
    in.file_ = open_descriptor(path, O_RDONLY);
    struct stat about {};
    if (!in.file_.good() || ::fstat(in.file_.get(), &about) != 0) {
        in.fail(errno);
    } else if (S_ISDIR(about.st_mode)) {
        in.fail(EISDIR);
    }
    return in;
}

InputFile InputFile::of_stream(std::istream& stream) {
    InputFile in;
    in.stream_ = &stream;
    in.name_ = "the standard input";
    return in;
}

std::ptrdiff_t InputFile::read(char* into, std::size_t space) {
    if (!fault_.empty()) return -1;
    if (stream_ != nullptr) return read_stream(into, space);
    const ssize_t n = read_some(file_.get(), into, space);
    return n < 0 ? fail(errno) : n;
}

// From the buffer of the stream, which knows what is there and says why it has nothing.
std::ptrdiff_t InputFile::read_stream(char* into, std::size_t space) {
    if (stream_->bad() || stream_->rdbuf() == nullptr) return fail(EIO);
    std::streambuf& buffer = *stream_->rdbuf();
    try {
        if (buffer.sgetc() == std::streambuf::traits_type::eof()) return 0;
        const std::streamsize there = std::max<std::streamsize>(buffer.in_avail(), 1);
        return buffer.sgetn(into, std::min(there, static_cast<std::streamsize>(space)));
    } catch (const std::system_error& error) {
        return fail(error.code().value());
    }
}

std::ptrdiff_t InputFile::fail(int code) {
    fault_ = file_fault("Cannot read", name_, code);
    file_.close();
    return -1;
}

}  // namespace quom
