#include "console/sweep_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "console/shortest_number.h"

namespace quom {
namespace {

constexpr std::string_view malformed_name = "malformed";  // reason of a row that could not be read

char* write_number(double x, char decimal, char* to) {
    char* const end = write_shortest(x, to);
    if (decimal != '.') std::replace(to, end, '.', decimal);
    return end;
}

// A cell of a row without a remark: a number, a phase, or nothing.
struct PlainCell {
    SweepCell cell;
    const double* numbers;  // of the block
};
std::vector<PlainCell> plain_cells(const SweepPlan& plan, const SweepResults& results) {
    std::vector<PlainCell> cells;
    for (std::size_t c = 0; c < plan.columns.size(); ++c)
        cells.push_back({plan.columns[c].source.cell, results.numbers[c].data()});
    return cells;
}

void put_plain_row(const std::vector<PlainCell>& cells, PhaseWord phase, std::size_t i,
                   const SweepTextForm& form, TextBuffer& out) {
    char* to = out.space(cells.size() * (number_space + 1));
    for (const PlainCell& cell : cells) {
        if (cell.cell == SweepCell::number) {
            const double x = cell.numbers[i];
            if (std::isfinite(x)) to = write_number(x, form.decimal, to);
        } else if (cell.cell == SweepCell::phase) {
            to = std::ranges::copy(phase_text(phase), to).out;
        }
        *to++ = form.delimiter;
    }
    out.used_to(to - 1);
}

// A cell of a row that has a remark.
void put_cell(const SweepPlan::Column& column, const std::vector<double>& numbers,
              const SweepResults& results, std::size_t i, const SweepResults::Remark& remark,
              const SweepTextForm& form, TextBuffer& out) {
    switch (column.source.cell) {
        case SweepCell::number:
            out.number(numbers[i], form.decimal);
            break;
        case SweepCell::phase:
            out.put(phase_text(results.phase[i]));
            break;
        case SweepCell::reason:
            if (results.reason[i] != Reason::none) out.put(reason_name(results.reason[i]));
            if (results.kind[i] == RowKind::malformed) out.put(malformed_name);
            break;
        case SweepCell::warnings:
            out.quoted(remark.warnings, form.delimiter);
            break;
        case SweepCell::message:
            out.quoted(remark.message, form.delimiter);
            break;
    }
}

}  // namespace

void TextBuffer::put(std::string_view text) {
    text.copy(space(text.size()), text.size());
    used_ += text.size();
}

void TextBuffer::grow(std::size_t n) { bytes_.resize(std::max(2 * bytes_.size(), used_ + n + 4096)); }

void TextBuffer::number(double x, char decimal) {
    if (!std::isfinite(x)) return;
    used_to(write_number(x, decimal, space(number_space)));
}

void TextBuffer::quoted(std::string_view text, char delimiter) {
    if (text.find(delimiter) == std::string_view::npos &&
        text.find_first_of("\"\r\n") == std::string_view::npos)
        return put(text);
    put('"');
    for (const char c : text) {
        if (c == '"') put('"');
        put(c == '\n' || c == '\r' ? ' ' : c);
    }
    put('"');
}

std::string sweep_head_line(const SweepPlan& plan, const SweepTextForm& form, std::string_view kept) {
    TextBuffer out;
    if (form.line_numbers) {
        out.put("line");
        out.put(form.delimiter);
    }
    if (form.kept) {
        out.put(kept);
        out.put(form.delimiter);
    }
    for (const SweepPlan::Column& column : plan.columns) {
        if (&column != &plan.columns.front()) out.put(form.delimiter);
        out.quoted(column.head, form.delimiter);
    }
    out.put('\n');
    return std::string(out.text());
}

void write_rows(const SweepPlan& plan, const SweepTextForm& form, const SweepRows& rows, std::size_t begin,
                const SweepResults& results, TextBuffer& out) {
    const std::vector<PlainCell> cells = plain_cells(plan, results);
    auto remark = results.remarks.begin();
    for (std::size_t i = 0; i < results.size(); ++i) {
        const bool remarked = remark != results.remarks.end() && remark->row == i;
        if (results.kind[i] != RowKind::blank) {
            if (form.line_numbers) {
                out.number(static_cast<double>(rows.line[begin + i]), form.decimal);
                out.put(form.delimiter);
            }
            if (form.kept) {
                out.put(rows.kept[begin + i]);
                out.put(form.delimiter);
            }
            if (!remarked) put_plain_row(cells, results.phase[i], i, form, out);
            for (std::size_t c = 0; remarked && c < plan.columns.size(); ++c) {
                if (c > 0) out.put(form.delimiter);
                put_cell(plan.columns[c], results.numbers[c], results, i, *remark, form, out);
            }
        }
        out.put('\n');
        if (remarked) ++remark;
    }
}

}  // namespace quom
