#include "console/sweep_cells.h"

#include <algorithm>

namespace quom {
namespace {

std::string_view between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

const char* find(const char* at, const char* end, char c) {
    const void* const found = at == end ? nullptr : std::memchr(at, c, static_cast<std::size_t>(end - at));
    return found ? static_cast<const char*>(found) : end;
}

// The quote that closes what begins at `at`; the end without.
const char* closing_quote(const char* at, const char* end) {
    for (at = find(at, end, '"'); at != end && at + 1 != end && at[1] == '"';) at = find(at + 2, end, '"');
    return at;
}

}  // namespace

const char* cut_cell(const char* at, const char* end, char delimiter, Cell& cell) {
    cell = {};
    const char* const begin = at;
    at = skip_blanks(at, end, delimiter);
    const char* stop = nullptr;
    if (at != end && *at == '"') {
        cell.quoted = true;
        const char* const closing = closing_quote(at + 1, end);
        cell.text = between(at + 1, closing);
        if (closing == end) {
            cell.fault = CellFault::not_closed;
            stop = end;
        } else {
            at = skip_blanks(closing + 1, end, delimiter);
            stop = find(at, end, delimiter);
            if (at != stop) cell.fault = CellFault::more_behind_quote;
        }
    } else {
        stop = find(at, end, delimiter);
        const char* last = stop;
        while (last != at && (last[-1] == ' ' || last[-1] == '\t')) --last;
        cell.text = between(at, last);
    }
    cell.raw = between(begin, stop);
    return stop == end ? nullptr : stop + 1;
}

std::string cell_content(const Cell& cell) {
    std::string content(cell.text);
    if (!cell.quoted) return content;
    for (std::size_t at = content.find("\"\""); at != std::string::npos; at = content.find("\"\"", at + 1))
        content.erase(at, 1);
    return content;
}

void append_cell(std::string& row, std::string_view content, char delimiter) {
    const bool blank_ends = !content.empty() && (content.front() == ' ' || content.back() == ' ');
    if (!blank_ends && content.find(delimiter) == std::string_view::npos &&
        content.find_first_of("\"\r\n") == std::string_view::npos) {
        row += content;
        return;
    }
    row += '"';
    for (const char c : content) {
        if (c == '"') row += '"';
        row += c == '\n' || c == '\r' ? ' ' : c;
    }
    row += '"';
}

char delimiter_of(std::string_view line, bool may_be_comma, char otherwise) {
    bool quoted = false, tab = false, comma = false;
    for (const char c : line) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == ';') return ';';
        tab = tab || c == '\t';
        comma = comma || c == ',';
    }
    return tab ? '\t' : comma && may_be_comma ? ',' : otherwise;
}

}  // namespace quom
