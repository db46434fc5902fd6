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
    explicit LineCutter(std::string_view text) : text_(text) {}
    bool next(std::string_view& line);  // without its end; false behind the last

 private:
    std::string_view text_;
    std::size_t at_ = 0, line_feed_ = 0;  // line_feed_: first LF not before at_
    bool looked_ = false;
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

    void look_for_mark();
    bool fill();
    bool read_more(std::string& into, std::size_t space);
    void decode_utf16();
    void drop_line_feed();
    std::size_t whole_lines() const;
    std::string take(std::size_t size);

    Read read_;
    std::size_t piece_bytes_;
    std::string text_, raw_;  // read but not handed out: as UTF-8, and as it came
    Encoding encoding_ = Encoding::unknown;
    bool ended_ = false;
    bool paused_ = false;  // the last read gave less than there was space for
    bool after_return_ =
        false;  // a line ended with CR at the end of a piece: a LF that follows belongs to it
    std::uint64_t line_ = 1;
    std::string fault_;
};

}  // namespace quom
