// Files: finding them by the path rule, reading whole, writing so that no half file is left, random access,
// lines, and the free-format field reader.
#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/descriptor.h"

namespace quom {

// The folder part with its separator ("" when there is none) and the name behind the last "/" or "\".
std::string folder_part(std::string_view path);
std::string name_part(std::string_view path);
inline bool has_folder_part(std::string_view path) { return !folder_part(path).empty(); }
std::string join_path(std::string_view folder, std::string_view name);
// The path from the root, without "." and ".."; as it stands where the current folder is not known.
std::string absolute_path(const std::string& path);

// An existing file of this name in the folder, compared without regard to upper and lower case (an exact
// match is preferred); empty when there is none.
std::string find_in_folder(std::string_view folder, std::string_view name);

// A path as users and stored files give it, made real. A name without a folder part is taken from
// program_path (case-blind). A path that does not exist as it stands is looked for by its name
// beside beside_file (may be empty) and in program_path. When nothing exists: the place where it would be
// written.
std::string resolve_path(std::string_view path, std::string_view program_path,
                         std::string_view beside_file = {});

// True when the path, resolved, names a readable regular file. False for an empty path or any error.
bool FileExists(std::string_view path, std::string_view program_path);

struct FileBytes {
    std::optional<std::string> bytes;
    std::string fault;  // why it could not be read, with the file's name
};
// The whole file; one that has more than `largest` bytes is refused.
FileBytes read_file(const std::string& path, std::size_t largest = std::size_t{1} << 40);

// Writes all at once as OutputFile does: on failure the old file stays whole and nothing else is left.
// Returns the fault, empty when good.
std::string write_file_atomic(const std::string& path, std::string_view bytes);

// A file open for reading records at any place, safe for several threads. Copies share the file.
class RandomFile {
 public:
    static RandomFile open(const std::string& path);  // is_open() tells
    bool is_open() const { return file_ != nullptr; }
    std::uint64_t size() const { return size_; }
    // Fills the span from the byte offset; false when the file ends before.
    bool read_at(std::uint64_t offset, std::span<char> into) const;

 private:
    std::shared_ptr<const Descriptor> file_;
    std::uint64_t size_ = 0;
};

// Lines of a text: CR LF or LF, a last line without an end counts; no line ends inside the views.
std::vector<std::string_view> split_lines(std::string_view text);

// Free-format fields: each field ends at a comma or a line end, surrounding blanks dropped; a field in double
// quotes keeps commas. Numbers in any of the forms of number_text, booleans -1/0, True/False, #TRUE#/#FALSE#.
class FieldReader {
 public:
    explicit FieldReader(std::string_view text) : text_(text) {}
    bool at_end() const { return pos_ >= text_.size(); }
    int line() const { return line_; }  // 1-based, of the next field
    std::optional<std::string> text_field();
    std::optional<double> number_field();  // none at the end or when the field is no number
    std::optional<std::string> whole_line();
    std::optional<std::string_view> line_view();  // the same as a part of the text

 private:
    std::string_view text_;
    std::size_t pos_ = 0;
    int line_ = 1;
};

}  // namespace quom
