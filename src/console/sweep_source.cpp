#include "console/sweep_source.h"

#include <algorithm>

namespace quom {
namespace {

// Lines of a piece; they end with LF, CR LF or CR, the last one may go without.
std::uint64_t count_lines(std::string_view text) {
    if (text.empty()) return 0;
    auto n = static_cast<std::uint64_t>(std::ranges::count(text, '\n'));
    if (text.find('\r') != std::string_view::npos) {
        for (std::size_t i = 0; i < text.size(); ++i)
            n += text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n') ? 1 : 0;
    }
    return n + (text.back() == '\n' || text.back() == '\r' ? 0 : 1);
}

// Bytes of the first n lines.
std::size_t size_of_lines(std::string_view text, std::size_t n) {
    std::size_t at = 0;
    for (; n > 0 && at < text.size(); --n) {
        at = std::min(text.find_first_of("\r\n", at), text.size() - 1) + 1;
        if (text[at - 1] == '\r' && at < text.size() && text[at] == '\n') ++at;
    }
    return at;
}

}  // namespace

RowRange shard_of(std::uint64_t rows, std::uint64_t k, std::uint64_t n, std::uint64_t unit) {
    // Edge i of N + 1 lies at i/N of the units, without a product that leaves 64 bits.
    const std::uint64_t units = rows / unit + (rows % unit ? 1 : 0);
    const auto edge = [&](std::uint64_t i) {
        return std::min(rows, (units / n * i + units % n * i / n) * unit);
    };
    return {.first = edge(k - 1) + 1, .last = edge(k), .cut = 0};
}

SweepSource::SweepSource(TableInput& table, std::uint64_t head_lines, const RowRange& range,
                         std::size_t part_rows)
    : table_(&table), range_(range), part_rows_(part_rows), line_(head_lines + 1) {}

SweepSource::SweepSource(const SweepGrid& grid, const RowRange& range, std::size_t part_rows)
    : grid_(&grid), range_(range), part_rows_(part_rows), row_(range.first), line_(range.first) {
    range_.last = std::min(range.last, grid.rows());
}

// Rows that a part from this row on may have.
std::size_t SweepSource::most_rows(std::uint64_t row) const {
    if (row > range_.last) return 0;
    std::uint64_t most = std::min<std::uint64_t>(part_rows_, range_.last - row + 1);
    if (range_.cut > 0) most = std::min(most, range_.cut - (row - 1) % range_.cut);
    return static_cast<std::size_t>(most);
}

bool SweepSource::next(SweepPart& part) {
    if (table_) return next_of_table(part);
    part.first_row = row_;
    part.first_line = line_;
    part.rows = most_rows(row_);
    row_ += part.rows;
    line_ += part.rows;
    return part.rows > 0;
}

bool SweepSource::next_piece() {
    taken_ = 0;
    left_ = 0;
    piece_.clear();
    if (!table_->next(piece_)) {
        fault_ = table_->fault();
        return false;
    }
    left_ = count_lines(piece_);
    return true;
}

std::string_view SweepSource::take_lines(std::size_t rows) {
    const std::string_view rest = std::string_view(piece_).substr(taken_);
    const std::size_t size = rows == left_ ? rest.size() : size_of_lines(rest, rows);
    taken_ += size;
    left_ -= rows;
    row_ += rows;
    line_ += rows;
    if (range_.cut > 0) sum_.add(rest.substr(0, size));
    return rest.substr(0, size);
}

// Comes to the first row of the range; false where the table is not what it was.
bool SweepSource::skip_rows() {
    reached_ = true;
    while (row_ < range_.first && (left_ > 0 || next_piece()))
        take_lines(static_cast<std::size_t>(std::min(left_, range_.first - row_)));
    if (!fault_.empty()) return false;
    if (range_.checksum.empty() || (row_ == range_.first && sum_.text() == range_.checksum)) return true;
    fault_ = "the first " + std::to_string(range_.first - 1) + " rows of the table are not those of before";
    return false;
}

bool SweepSource::next_of_table(SweepPart& part) {
    if (!reached_ && !skip_rows()) return false;
    if (most_rows(row_) == 0 || (left_ == 0 && !next_piece())) return false;
    part.first_row = row_;
    part.first_line = line_;
    part.rows = static_cast<std::size_t>(std::min<std::uint64_t>(left_, most_rows(row_)));
    if (taken_ == 0 && part.rows == left_) {
        take_lines(part.rows);
        part.text.swap(piece_);
    } else {
        part.text = take_lines(part.rows);
    }
    part.checksum = (row_ - 1) % std::max<std::uint64_t>(range_.cut, 1) == 0 ? checksum() : std::string();
    return true;
}

RowCount count_rows(TableInput& table) {
    RowCount count;
    Checksum sum;
    for (std::string piece; table.next(piece);) {
        count.rows += count_lines(piece);
        sum.add(piece);
    }
    count.checksum = sum.text();
    count.fault = table.fault();
    return count;
}

}  // namespace quom
