#include "console/table_input.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"

namespace quom {
namespace {

constexpr std::size_t SmallestPiece = 64;

struct Mark {
    std::string_view bytes;
    int encoding;  // of TableInput: 0 UTF-8, 1 UTF-16 little-endian, 2 big-endian
};
constexpr Mark marks[] = {{"\xEF\xBB\xBF", 0}, {"\xFF\xFE", 1}, {"\xFE\xFF", 2}};

std::uint64_t count_lines(std::string_view text) {
    std::uint64_t n = 0;
    if (text.find('\r') == std::string_view::npos) {
        n = static_cast<std::uint64_t>(std::ranges::count(text, '\n'));
        return n + (!text.empty() && text.back() != '\n');
    }
    LineCutter lines(text);
    for (std::string_view line; lines.next(line);) ++n;
    return n;
}

// The text with its lines that are no UTF-8 taken as Windows-1252. All lines then end with LF.
std::string as_utf8(std::string_view text) {
    std::string utf8;
    LineCutter lines(text);
    for (std::string_view line; lines.next(line);) {
        utf8 += is_utf8(line) ? std::string(line) : utf8_from_1252(line);
        if (lines.at() < text.size() || text.ends_with('\n') || text.ends_with('\r')) utf8 += '\n';
    }
    return utf8;
}

}  // namespace

LineCutter::LineCutter(std::string_view text)
    : text_(text),
      line_feed_(std::min(text.find('\n'), text.size())),
      has_returns_(text.find('\r') != std::string_view::npos) {}

bool LineCutter::next(std::string_view& line) {
    if (at_ >= text_.size()) return false;
    if (line_feed_ < at_) line_feed_ = std::min(text_.find('\n', at_), text_.size());
    line = text_.substr(at_, line_feed_ - at_);
    const std::size_t end = has_returns_ ? line.find('\r') : std::string_view::npos;
    if (end == std::string_view::npos) {
        at_ = line_feed_ + 1;
        return true;
    }
    const bool both = at_ + end + 1 == line_feed_ && line_feed_ < text_.size();
    at_ += end + (both ? 2 : 1);
    line = line.substr(0, end);
    return true;
}

TableInput::TableInput(Read read, std::size_t piece_bytes)
    : read_(std::move(read)), piece_bytes_(std::max(piece_bytes, SmallestPiece)) {}

// Appends what one read gives: the number of bytes, 0 at the end and with a fault.
std::ptrdiff_t TableInput::read_into(std::string& bytes, std::size_t space) {
    const std::size_t before = bytes.size();
    bytes.resize(before + space);
    const std::ptrdiff_t got = read_(bytes.data() + before, space);
    bytes.resize(before + static_cast<std::size_t>(std::max<std::ptrdiff_t>(got, 0)));
    if (got < 0) fault_ = "line " + std::to_string(line_) + " could not be read";
    if (got <= 0) ended_ = true;
    return std::max<std::ptrdiff_t>(got, 0);
}

// Reads until the first bytes tell the encoding, and drops the mark.
void TableInput::recognize() {
    const auto undecided = [this] {
        return std::ranges::any_of(marks, [this](const Mark& m) {
            return raw_.size() < m.bytes.size() && m.bytes.starts_with(raw_);
        });
    };
    while (!ended_ && undecided()) read_into(raw_, piece_bytes_ / 3 * 2);
    encoding_ = Encoding::utf8;
    for (const Mark& mark : marks) {
        if (!raw_.starts_with(mark.bytes)) continue;
        raw_.erase(0, mark.bytes.size());
        encoding_ = mark.encoding == 0   ? Encoding::utf8
                    : mark.encoding == 1 ? Encoding::utf16_le
                                         : Encoding::utf16_be;
        break;
    }
    if (encoding_ == Encoding::utf8) text_ = std::exchange(raw_, {});
}

// Moves whole characters from raw_ to text_. A surrogate without its other half becomes U+FFFD.
void TableInput::decode_utf16() {
    const auto unit = [this](std::size_t i) {
        const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(raw_[k]); };
        const bool little = encoding_ == Encoding::utf16_le;
        return static_cast<char32_t>(little ? byte(i) | byte(i + 1) << 8 : byte(i) << 8 | byte(i + 1));
    };
    std::size_t i = 0;
    while (i + 1 < raw_.size()) {
        char32_t code = unit(i);
        const bool high = code >= 0xD800 && code < 0xDC00;
        if (high && i + 3 >= raw_.size() && !ended_) break;
        if (high && i + 3 < raw_.size()) {
            const char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        append_character(text_, code);
        i += 2;
    }
    raw_.erase(0, i);
    if (ended_ && !raw_.empty() && fault_.empty()) fault_ = "the table ends within a character";
}

// One read more into text_.
void TableInput::fill() {
    const std::size_t before = text_.size();
    const std::size_t space = piece_bytes_ - std::min(before, piece_bytes_);
    if (encoding_ == Encoding::unknown) {
        recognize();
    } else if (encoding_ == Encoding::utf8) {
        read_into(text_, space);
    } else {
        read_into(raw_, std::max<std::size_t>(space / 3 * 2, 2));  // two bytes become three at most
    }
    if (encoding_ != Encoding::utf8) decode_utf16();
    if (text_.size() == before) return;
    if (std::exchange(after_return_, false) && text_[before] == '\n') text_.erase(before, 1);
    const std::size_t last = std::string_view(text_).substr(before).find_last_of("\r\n");
    if (last != std::string_view::npos) whole_ = before + last + 1;
}

// Reads until text_ holds the end of a line, or all that is left. False with a fault, and when nothing is
// left.
bool TableInput::reach_line_end() {
    while (whole_ == 0 && !ended_ && fault_.empty()) {
        fill();
        if (whole_ == 0 && text_.size() >= piece_bytes_ && fault_.empty()) {
            fault_ = "line " + std::to_string(line_) + " is longer than " + std::to_string(piece_bytes_) +
                     " characters";
        }
    }
    return fault_.empty() && !text_.empty();
}

// Hands out the first bytes of text_.
std::string TableInput::take(std::size_t size) {
    std::string rest = text_.substr(size);
    text_.resize(size);
    std::string taken = std::exchange(text_, std::move(rest));
    whole_ -= std::min(whole_, size);
    after_return_ = text_.empty() && taken.ends_with('\r');
    return taken;
}

std::string TableInput::peek_line() {
    std::string_view line;
    if (!reach_line_end() || !LineCutter(text_).next(line)) return {};
    return is_utf8(line) ? std::string(line) : utf8_from_1252(line);
}

std::string TableInput::first_line() {
    std::string first = peek_line();
    if (!fault_.empty() || text_.empty()) return {};
    LineCutter lines(text_);
    std::string_view line;
    lines.next(line);
    take(std::min(lines.at(), text_.size()));
    ++line_;
    return first;
}

bool TableInput::next(std::string& piece) {
    piece.clear();
    if (!reach_line_end()) return false;
    piece = take(whole_ > 0 ? whole_ : text_.size());
    line_ += count_lines(piece);
    if (encoding_ == Encoding::utf8 && !is_utf8(piece)) piece = as_utf8(piece);
    return true;
}

}  // namespace quom
