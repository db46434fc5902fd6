// A table as pieces of whole lines, whatever its bytes are like.
#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quom {

// Lines of a text one by one; they end with LF, CR LF or CR.
class LineCutter {
 public:
    explicit LineCutter(std::string_view text);
    bool next(std::string_view& line);      // without its end; false behind the last
    std::size_t at() const { return at_; }  // where the next line begins

 private:
    std::string_view text_;
    std::size_t at_ = 0;
    std::size_t line_feed_;  // the first one that is not before at_; the end of the text without
    bool has_returns_;
};

// Bytes of a table -> pieces of whole lines in UTF-8. A byte order mark is dropped, UTF-16 with a mark
// decoded; a line that is no UTF-8 is taken as Windows-1252. A piece ends with a line end, but the last one
// may go without. It ends early when the input pauses, so that nothing waits for rows to come.
class TableInput {
 public:
    // Fills up to `space` bytes and blocks for the first only; 0 at the end, -1 on an error.
    using Read = std::function<std::ptrdiff_t(char* into, std::size_t space)>;
    // piece_bytes: the longest piece, and the longest line [bytes], at least 64.
    TableInput(Read read, std::size_t piece_bytes);

    std::string first_line();       // of the head, without its end; consumes it
    std::string peek_line();        // the same, left where it is
    bool next(std::string& piece);  // false at the end or with a fault
    // "line 17 is longer than 65536 bytes", "the table could not be read behind line 17"; empty when good.
    const std::string& fault() const { return fault_; }
    std::uint64_t line() const { return line_; }  // number of the next piece's first line, from 1

 private:
    enum class Encoding : std::uint8_t { unknown, utf8, utf16_le, utf16_be };

    std::ptrdiff_t read_into(std::string& bytes, std::size_t space);
    void recognize();
    void decode_utf16();
    void fill();
    bool reach_line_end();
    std::string take(std::size_t size);

    Read read_;
    std::size_t piece_bytes_;
    std::string raw_;        // as it came, not decoded yet: the first bytes, and UTF-16
    std::string text_;       // decoded, not handed out yet
    std::size_t whole_ = 0;  // bytes of text_ up to its last line end
    Encoding encoding_ = Encoding::unknown;
    bool ended_ = false;
    bool after_return_ = false;  // what was handed out ends with CR: a LF that follows belongs to it
    std::uint64_t line_ = 1;
    std::string fault_;
};

}  // namespace quom
