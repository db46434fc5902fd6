#include "console/sweep_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "console/shortest_number.h"

namespace quom {
namespace {

constexpr std::string_view malformed_name = "malformed";  // reason of a row that could not be read

void put_cell(const SweepPlan::Column& column, const std::vector<double>& numbers,
              const SweepResults& results, std::size_t i, const SweepResults::Remark* remark,
              const SweepTextForm& form, TextBuffer& out) {
    switch (column.source.cell) {
        case SweepCell::number:
            out.number(numbers[i], form.decimal);
            break;
        case SweepCell::phase:
            out.put(phase_text(results.phase[i]));
            break;
        case SweepCell::reason:
            if (!remark) break;
            if (results.reason[i] != Reason::none) out.put(reason_name(results.reason[i]));
            if (results.kind[i] == RowKind::malformed) out.put(malformed_name);
            break;
        case SweepCell::warnings:
            if (remark) out.quoted(remark->warnings, form.delimiter);
            break;
        case SweepCell::message:
            if (remark) out.quoted(remark->message, form.delimiter);
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
    char* const begin = space(number_space);
    char* const end = write_shortest(x, begin);
    if (decimal != '.') std::replace(begin, end, '.', decimal);
    used_ += static_cast<std::size_t>(end - begin);
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
            bool first = true;
            for (std::size_t c = 0; c < plan.columns.size(); ++c) {
                if (!first) out.put(form.delimiter);
                first = false;
                put_cell(plan.columns[c], results.numbers[c], results, i, remarked ? &*remark : nullptr, form,
                         out);
            }
        }
        out.put('\n');
        if (remarked) ++remark;
    }
}

}  // namespace quom
