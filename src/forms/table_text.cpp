#include "forms/table_text.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/code_page.h"
#include "forms/table_number.h"

namespace quom {
namespace {

constexpr std::size_t sampled_lines = 300;
constexpr std::size_t most_joined_lines = 10;  // of a cell in quotes

struct DelimiterInfo {
    TableDelimiter delimiter;
    std::string_view name;
    char sign;
};
// Of equally good ones the first is taken.
constexpr std::array<DelimiterInfo, table_delimiter_count> delimiters = {
    {{TableDelimiter::tab, "tab", '\t'},
     {TableDelimiter::semicolon, ";", ';'},
     {TableDelimiter::bar, "|", '|'},
     {TableDelimiter::comma, ",", ','},
     {TableDelimiter::blanks, "blanks", ' '},
     {TableDelimiter::one_column, "none", '\0'}}};

const DelimiterInfo& info(TableDelimiter delimiter) {
    return *std::ranges::find(delimiters, delimiter, &DelimiterInfo::delimiter);
}

// Characters of UTF-16; a surrogate without its other half becomes U+FFFD.
std::string utf8_from_utf16(std::string_view bytes, bool little_endian) {
    const auto unit = [&](std::size_t i) {
        const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(bytes[k]); };
        return static_cast<char32_t>(little_endian ? byte(i) | byte(i + 1) << 8 : byte(i) << 8 | byte(i + 1));
    };
    std::string utf8;
    utf8.reserve(bytes.size());
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t code = unit(i);
        if (code >= 0xD800 && code < 0xDC00 && i + 3 < bytes.size()) {
            const char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        append_character(utf8, code);
    }
    return utf8;
}

// CR LF and CR become LF.
void unify_line_ends(std::string& text) {
    std::size_t to = text.find('\r');
    if (to == std::string::npos) return;
    for (std::size_t from = to; from < text.size(); ++from) {
        const bool both = text[from] == '\r' && from + 1 < text.size() && text[from + 1] == '\n';
        if (!both) text[to++] = text[from] == '\r' ? '\n' : text[from];
    }
    text.resize(to);
}

// Does a cell in quotes begin in the line and not end in it?
bool has_open_quotes(std::string_view line) {
    if (std::ranges::count(line, '"') % 2 == 0) return false;
    for (std::size_t at = line.find('"'); at != std::string_view::npos; at = line.find('"', at + 1)) {
        if (at == 0 || std::string_view("\t;,|").find(line[at - 1]) != std::string_view::npos) return true;
    }
    return false;
}

// End of the line that begins at `begin`, where a cell in quotes may hold line ends.
std::size_t line_end(std::string_view text, std::size_t begin, std::size_t& joined) {
    joined = 1;
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    if (!has_open_quotes(text.substr(begin, end - begin))) return end;
    std::size_t last = end;
    for (std::size_t n = 2; n <= most_joined_lines && last < text.size(); ++n) {
        const std::size_t next = std::min(text.find('\n', last + 1), text.size());
        if (std::ranges::count(text.substr(last, next - last), '"') % 2 != 0) {
            joined = n;
            return next;
        }
        last = next;
    }
    return end;
}

TableLine::Kind kind_of(std::string_view line) {
    const std::string_view text = trim_cell(line);
    if (text.empty()) return TableLine::Kind::empty;
    for (const std::string_view sign : {"#", "%", "!", "//"}) {
        if (text.starts_with(sign) && !says_no_value(text.substr(0, text.find_first_of("\t;,| "))))
            return TableLine::Kind::comment;
    }
    const bool ruler =
        text.size() > 2 && text.find_first_not_of("-=+|:_* \t") == std::string_view::npos &&
        (text.find("--") != std::string_view::npos || text.find_first_of("=_") != std::string_view::npos ||
         text.find("**") != std::string_view::npos);
    return ruler ? TableLine::Kind::ruler : TableLine::Kind::content;
}

// A cell from its first character to the delimiter; the quotes that hold delimiters are taken away.
std::size_t cell_end(std::string_view line, std::size_t begin, char delimiter, TableCell& cell) {
    const std::size_t first = line.find_first_not_of(' ', begin);
    if (first != std::string_view::npos && line[first] == '"') {
        std::size_t close = line.find('"', first + 1);
        while (close != std::string_view::npos && close + 1 < line.size() && line[close + 1] == '"')
            close = line.find('"', close + 2);
        const std::size_t end =
            close == std::string_view::npos ? close : std::min(line.find(delimiter, close), line.size());
        if (end != std::string_view::npos && trim_cell(line.substr(close + 1, end - close - 1)).empty()) {
            cell = {trim_cell(line.substr(first + 1, close - first - 1)), true};
            return end;
        }
    }
    const std::size_t end = std::min(line.find(delimiter, begin), line.size());
    cell = {trim_cell(line.substr(begin, end - begin)), false};
    return end;
}

void cut_at_blanks(std::string_view line, std::vector<TableCell>& cells) {
    for (std::size_t at = line.find_first_not_of(" \t\n"); at != std::string_view::npos;) {
        if (line[at] == '"') {
            const std::size_t close = line.find('"', at + 1);
            if (close != std::string_view::npos &&
                (close + 1 == line.size() || line[close + 1] == ' ' || line[close + 1] == '\t')) {
                cells.push_back({trim_cell(line.substr(at + 1, close - at - 1)), true});
                at = line.find_first_not_of(" \t\n", close + 1);
                continue;
            }
        }
        const std::size_t end = std::min(line.find_first_of(" \t\n", at), line.size());
        cells.push_back({line.substr(at, end - at), false});
        at = line.find_first_not_of(" \t\n", end);
    }
}

bool is_number(std::string_view text, TableDelimiter delimiter) {
    const bool blank_groups = delimiter != TableDelimiter::blanks && delimiter != TableDelimiter::comma;
    return read_table_number(text, {'.', blank_groups}).good ||
           read_table_number(text, {',', blank_groups}).good;
}

struct Score {
    double numbers = 0;  // mean share of numbers in the lines with the usual count of cells
    std::size_t columns = 1;
};

Score score_of(const std::vector<TableLine>& lines, TableDelimiter delimiter) {
    struct Same {
        std::size_t lines = 0;
        double numbers = 0;
    };
    std::map<std::size_t, Same> by_count;
    std::vector<TableCell> cells;
    std::size_t sampled = 0;
    for (const TableLine& line : lines) {
        if (line.kind != TableLine::Kind::content) continue;
        if (++sampled > sampled_lines) break;
        cut_cells(line.text, delimiter, cells);
        std::size_t filled = 0, numbers = 0;
        for (const TableCell& cell : cells) {
            if (says_no_value(cell.text)) continue;
            ++filled;
            numbers += is_number(cell.text, delimiter);
        }
        if (numbers == 0) continue;
        Same& same = by_count[cells.size()];
        ++same.lines;
        same.numbers += static_cast<double>(numbers) / static_cast<double>(filled);
    }
    Score best;
    for (const auto& [count, same] : by_count) {
        const double numbers = same.numbers / static_cast<double>(std::min(sampled, sampled_lines));
        if (numbers > best.numbers) best = {numbers, count};
    }
    return best;
}

// Does each line with numbers read as one number with a decimal comma?
bool all_one_number(const std::vector<TableLine>& lines) {
    std::size_t numbers = 0, sampled = 0;
    for (const TableLine& line : lines) {
        if (line.kind != TableLine::Kind::content || ++sampled > sampled_lines) continue;
        const TableNumber number = read_table_number(line.text, {',', false});
        if (number.good) ++numbers;
        if (!number.good && is_number(line.text.substr(0, line.text.find(',')), TableDelimiter::comma))
            return false;
    }
    return numbers > 0;
}

}  // namespace

TableText table_text(std::string_view bytes) {
    TableText table;
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        table.text = bytes.substr(3);
        table.encoding = "UTF-8";
    } else if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        table.text = utf8_from_utf16(bytes.substr(2), bytes.front() == '\xFF');
        table.encoding = "UTF-16";
    } else {
        table.encoding = "UTF-8";
        table.text = bytes;
    }
    if (!is_utf8(table.text)) {
        table.text = utf8_from_1252(table.text);
        table.encoding = "Windows-1252";
    }
    if (table.text.find('\0') != std::string::npos) {
        return {{}, {}, "This is no text: it holds bytes that no text has."};
    }
    unify_line_ends(table.text);
    return table;
}

std::string_view delimiter_name(TableDelimiter delimiter) { return info(delimiter).name; }
char delimiter_sign(TableDelimiter delimiter) { return info(delimiter).sign; }

std::vector<TableLine> table_lines(std::string_view text) {
    std::vector<TableLine> lines;
    lines.reserve(static_cast<std::size_t>(std::ranges::count(text, '\n')) + 1);
    int number = 1;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t joined = 1;
        const std::size_t end = line_end(text, begin, joined);
        const std::string_view line = text.substr(begin, end - begin);
        lines.push_back({number, line, kind_of(line)});
        number += static_cast<int>(joined);
        begin = end + 1;
    }
    return lines;
}

void cut_cells(std::string_view line, TableDelimiter delimiter, std::vector<TableCell>& cells) {
    cells.clear();
    if (delimiter == TableDelimiter::blanks) return cut_at_blanks(line, cells);
    const char sign = delimiter == TableDelimiter::one_column ? '\n' : delimiter_sign(delimiter);
    for (std::size_t begin = 0; begin <= line.size();) {
        TableCell cell;
        begin = cell_end(line, begin, sign, cell) + 1;
        cells.push_back(cell);
    }
}

std::string cell_content(const TableCell& cell) {
    std::string content;
    content.reserve(cell.text.size());
    for (std::size_t i = 0; i < cell.text.size(); ++i) {
        content += cell.text[i] == '\n' ? ' ' : cell.text[i];
        if (cell.quoted && cell.text.substr(i).starts_with("\"\"")) ++i;
    }
    return content;
}

std::string_view trim_cell(std::string_view text) {
    constexpr std::string_view hard_blanks[] = {"\u00A0", "\u202F", "\u2009", "\uFEFF"};
    for (bool again = true; again;) {
        again = false;
        const std::size_t first = text.find_first_not_of(" \t\n");
        if (first == std::string_view::npos) return {};
        text = text.substr(first, text.find_last_not_of(" \t\n") - first + 1);
        if (static_cast<signed char>(text.front()) > 0 && static_cast<signed char>(text.back()) > 0) break;
        for (const std::string_view blank : hard_blanks) {
            if (text.starts_with(blank)) {
                text.remove_prefix(blank.size());
                again = true;
            }
            if (text.ends_with(blank)) {
                text.remove_suffix(blank.size());
                again = true;
            }
        }
    }
    return text;
}

DelimiterProposal propose_delimiter(const std::vector<TableLine>& lines) {
    DelimiterProposal best;
    double most = 0;
    for (const DelimiterInfo& candidate : delimiters) {
        const Score score = score_of(lines, candidate.delimiter);
        const bool one = candidate.delimiter == TableDelimiter::one_column;
        if (score.columns < 2 && !one) continue;
        if (one && best.delimiter != TableDelimiter::one_column && most * 2 >= score.numbers) continue;
        if (score.numbers <= most) continue;
        most = score.numbers;
        best = {candidate.delimiter, score.columns, false};
    }
    best.may_be_comma = best.delimiter == TableDelimiter::comma && best.columns == 2 && all_one_number(lines);
    return best;
}

}  // namespace quom
