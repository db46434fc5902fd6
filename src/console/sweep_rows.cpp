#include "console/sweep_rows.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>

#include "base/code_page.h"
#include "base/number_text.h"
#include "console/sweep_cells.h"

namespace quom {
namespace {

constexpr double Absent = std::numeric_limits<double>::quiet_NaN();
constexpr std::size_t ShownCharacters = 40;

// The text as one that has "." as decimal sign; none where it holds another sign.
std::optional<std::string> with_point(std::string_view text, char decimal) {
    std::string point(text);
    if (decimal == '.') return point;
    if (point.find('.') != std::string::npos) return std::nullopt;
    std::ranges::replace(point, decimal, '.');
    return point;
}

std::optional<double> number_of(std::string_view text, char decimal) {
    const std::optional<std::string> point = with_point(text, decimal);
    return point ? read_number(*point) : std::nullopt;
}

// What a text may have been meant to be that is no number as it stands; empty when nothing is likely.
std::string number_hint(std::string_view text, char decimal) {
    const char other = decimal == '.' ? ',' : '.';
    if (text.find(decimal) == std::string_view::npos && std::ranges::count(text, other) == 1 &&
        number_of(text, other))
        return decimal == '.' ? " (decimal commas are read with --decimal ,)"
                              : " (the decimal sign is a comma)";
    std::string joined(text);
    for (const std::string_view space : {"\xC2\xA0", "\xE2\x80\xAF"}) {  // no-break spaces
        for (std::size_t at = joined.find(space); at != std::string::npos; at = joined.find(space))
            joined.erase(at, space.size());
    }
    std::erase_if(joined, [other](char c) { return c == ' ' || c == '\'' || c == other; });
    return number_of(joined, decimal) ? " (thousands separators are not read)" : "";
}

// Reads the rows of one table.
class RowReader {
 public:
    RowReader(const SweepHead& head, char decimal) : head_(head), decimal_(decimal) {
        for (std::size_t i = 0; i < head.columns.size(); ++i) {
            const SweepHead::Column& column = head.columns[i];
            if (!column.name.empty()) required_ = i + 1;
            if (!column.kept) continue;
            if (kept_++ == 0) first_kept_ = i;
            last_kept_ = i;
        }
        side_by_side_ = kept_ > 0 && last_kept_ - first_kept_ + 1 == kept_;
    }

    // Reads a line; a malformed one leaves its reason in fault().
    RowKind read(std::string_view line) {
        const char* const end = line.data() + line.size();
        const char* at = line.data();
        if (skip_blanks(at, end, '\0') == end) return RowKind::blank;
        direct_ = side_by_side_;
        for (std::size_t i = 0; i < head_.columns.size(); ++i) {
            if (!at) return i < required_ ? missing_columns(i) : RowKind::good;
            if (!read_column(i, at, end)) return RowKind::malformed;
        }
        for (Cell extra; at;) {
            at = cut_cell(at, end, head_.delimiter, extra);
            if (!extra.text.empty()) return malformed("more columns than the head");
        }
        return RowKind::good;
    }

    const double* values() const { return value_; }
    const std::string& fault() const { return fault_; }
    std::size_t kept() const { return kept_; }
    // Can the kept cells of a good row be handed on as they stand in the line?
    bool direct() const { return direct_; }
    std::string_view kept_direct() const { return kept_direct_; }

    // The kept cells of any line, missing ones blank, appended to text.
    void append_kept(std::string_view line, std::string& text) const {
        const char* const end = line.data() + line.size();
        const char* at = line.data();
        for (std::size_t i = 0; i <= last_kept_; ++i) {
            Cell cell;
            if (at) at = cut_cell(at, end, head_.delimiter, cell);
            if (!head_.columns[i].kept) continue;
            if (i != first_kept_) text += head_.delimiter;
            append_cell(text, cell.fault == CellFault::none ? cell_content(cell) : std::string(cell.raw),
                        head_.delimiter);
        }
    }

 private:
    RowKind malformed(std::string reason) {
        fault_ = std::move(reason);
        return RowKind::malformed;
    }

    RowKind missing_columns(std::size_t there) {
        std::string reason =
            "only " + std::to_string(there) + " of " + std::to_string(head_.columns.size()) + " columns";
        const char* sign = "; ";
        for (std::size_t i = there; i < head_.columns.size(); ++i) {
            const int field = head_.columns[i].field;
            if (field < 0) continue;
            reason += sign + std::string(field_name(static_cast<SweepField>(field))) + " is missing";
            sign = ", ";
        }
        return malformed(std::move(reason));
    }

    // Reads the cell of column i at `at` and moves on to the next; false with a fault.
    bool read_column(std::size_t i, const char*& at, const char* end) {
        const SweepHead::Column& column = head_.columns[i];
        const char* const begin = at;
        if (column.field >= 0 && read_plain_number(column, at, end)) {
            if (column.kept) keep(i, begin, at ? at - 1 : end);
            return true;
        }
        Cell cell;
        at = cut_cell(at, end, head_.delimiter, cell);
        if (cell.fault != CellFault::none) {
            fault_ = "column " + std::to_string(i + 1) + ": " +
                     (cell.fault == CellFault::not_closed ? "quotes are not closed in the line"
                                                          : "characters stand behind the closing quote");
            return false;
        }
        if (column.kept) {
            const bool as_it_stands = cell.quoted ? cell.raw.front() == '"' && cell.raw.back() == '"'
                                                  : cell.raw.find('"') == std::string_view::npos;
            direct_ = direct_ && as_it_stands;
            keep(i, cell.raw.data(), cell.raw.data() + cell.raw.size());
        }
        return column.field < 0 || read_number_cell(column, cell);
    }

    // The usual number: no quotes, no "+", a decimal point.
    bool read_plain_number(const SweepHead::Column& column, const char*& at, const char* end) {
        if (decimal_ != '.') return false;
        double x = 0;
        const auto [behind, error] = std::from_chars(skip_blanks(at, end, head_.delimiter), end, x);
        if (error != std::errc() || !std::isfinite(x)) return false;
        const char* const stop = skip_blanks(behind, end, head_.delimiter);
        if (stop != end && *stop != head_.delimiter) return false;
        const double own = column.unit.to_own(x);
        if (!std::isfinite(own)) return false;
        value_[column.field] = own;
        at = stop == end ? nullptr : stop + 1;
        return true;
    }

    bool read_number_cell(const SweepHead::Column& column, const Cell& cell) {
        const auto refuse = [&](const std::string& what) {
            fault_ = std::string(field_name(static_cast<SweepField>(column.field))) + what;
            return false;
        };
        const std::string content = cell_content(cell);
        const std::string_view text = trim(content);
        const auto shown = [&] { return '"' + text_left(text, ShownCharacters) + '"'; };
        if (text.empty()) return refuse(" is missing");
        const std::optional<double> x = number_of(text, decimal_);
        if (!x) return refuse(" is no number: " + shown() + number_hint(text, decimal_));
        const double own = column.unit.to_own(*x);
        if (!std::isfinite(own)) return refuse(" has no finite value in its own unit: " + shown());
        value_[column.field] = own;
        return true;
    }

    void keep(std::size_t i, const char* begin, const char* end) {
        if (i == first_kept_) kept_begin_ = begin;
        kept_direct_ = {kept_begin_, static_cast<std::size_t>(end - kept_begin_)};
    }

    const SweepHead& head_;
    const char decimal_;
    std::size_t required_ = 0;  // columns that every row must have
    std::size_t kept_ = 0, first_kept_ = 0, last_kept_ = 0;
    bool side_by_side_ = false;
    double value_[field_count] = {};
    std::string fault_;
    bool direct_ = false;
    const char* kept_begin_ = nullptr;
    std::string_view kept_direct_;
};

// Makes room for n bytes in kept_text; what points into it moves along.
void reserve_kept(SweepRows& rows, std::size_t n) {
    if (rows.kept_text.capacity() - rows.kept_text.size() >= n) return;
    std::string larger;
    larger.reserve(std::max(2 * rows.kept_text.capacity(), rows.kept_text.size() + n));
    larger = rows.kept_text;
    const char* const begin = rows.kept_text.data();
    const char* const end = begin + rows.kept_text.size();
    const std::less<const char*> before;
    for (std::string_view& text : rows.kept) {
        if (text.data() && !before(text.data(), begin) && !before(end, text.data()))
            text = {larger.data() + (text.data() - begin), text.size()};
    }
    rows.kept_text.swap(larger);
}

void add_kept(const RowReader& reader, RowKind kind, std::string_view line, SweepRows& rows) {
    if (reader.kept() == 0) {
        rows.kept.emplace_back();
        return;
    }
    if (kind == RowKind::good && reader.direct()) {
        rows.kept.push_back(reader.kept_direct());
        return;
    }
    reserve_kept(rows, 4 * line.size() + 2 * reader.kept());  // a quote alone becomes four
    const std::size_t begin = rows.kept_text.size();
    reader.append_kept(line, rows.kept_text);
    rows.kept.push_back(std::string_view(rows.kept_text).substr(begin));
}

}  // namespace

void SweepRows::clear() {
    for (std::vector<double>& column : value) column.clear();
    kind.clear();
    line.clear();
    kept.clear();
    kept_text.clear();
    faults.clear();
}

void read_rows(std::string_view piece, std::uint64_t first_line, const SweepHead& head,
               const TableOptions& options, SweepRows& rows) {
    std::array<bool, field_count> needed{};
    for (const SweepHead::Column& column : head.columns) {
        if (column.field >= 0) needed[static_cast<std::size_t>(column.field)] = true;
    }
    RowReader reader(head, options.decimal);
    LineCutter lines(piece);
    std::uint64_t number = first_line;
    for (std::string_view line; lines.next(line); ++number) {
        const RowKind kind = reader.read(line);
        for (std::size_t f = 0; f < field_count; ++f) {
            if (needed[f]) rows.value[f].push_back(kind == RowKind::good ? reader.values()[f] : Absent);
        }
        rows.kind.push_back(kind);
        rows.line.push_back(number);
        add_kept(reader, kind, line, rows);
        if (kind == RowKind::malformed)
            rows.faults.push_back("line " + std::to_string(number) + ": " + reader.fault());
    }
    for (std::vector<double>& column : rows.value) column.resize(rows.size(), Absent);
}

}  // namespace quom
