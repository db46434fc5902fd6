// Writing files piece by piece so that no half file is left.
#pragma once
#include <ostream>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace quom {

// The name of a file that is being written. The file is removed at the end of its life, unless it was kept,
// and by remove_unfinished_files.
class UnfinishedFile {
 public:
    UnfinishedFile() = default;
    UnfinishedFile(UnfinishedFile&& other) noexcept;
    UnfinishedFile& operator=(UnfinishedFile&& other) noexcept;
    ~UnfinishedFile();
    // Makes a new file beside path under a name that nobody has and opens it for writing; on a fault the
    // descriptor is not good, with errno.
    Descriptor create_beside(const std::string& path);
    const std::string& name() const { return name_; }
    void kept();  // it has its place: nothing is removed any more

 private:
    void swap(UnfinishedFile& other) noexcept;
    std::string name_;
    int place_ = -1;  // in the list for remove_unfinished_files
};

// Removes the files of all UnfinishedFile there are. Safe in a handler of signals, for a program that ends.
void remove_unfinished_files() noexcept;

// A file written piece by piece. A regular file, or a new one, is written under a temporary name beside its
// place and gets its name in finish(); until then what was there before stays whole. The mode of the old file
// is kept; a link stays a link and its target is replaced. Devices, pipes and the descriptors of the program
// (/dev/stdout) are written as they are. Without finish() nothing is left of a file; what a killed program
// left is removed when the same path is written again.
class OutputFile {
 public:
    static OutputFile open(const std::string& path);           // fault() tells
    static OutputFile append_to_stream(std::ostream& stream);  // of the standard output
    // Hands the bytes to the system before it returns; false when that fails, and after an earlier fault.
    bool write(std::string_view bytes);
    // Flushes file and folder to the disk and gives the file its name; false when that fails.
    bool finish();
    const std::string& fault() const { return fault_; }  // with the file's name; empty when good

 private:
    bool fail(int code);
    std::string name_;    // for the fault
    std::string target_;  // behind the links
    std::ostream* stream_ = nullptr;
    UnfinishedFile temporary_;
    Descriptor file_;
    std::string fault_;
};

}  // namespace quom
