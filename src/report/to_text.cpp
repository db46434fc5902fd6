#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "report/report.h"

namespace quom {
namespace {

constexpr int ShownDigits = 7;
constexpr std::string_view Indent = "  ";
constexpr std::string_view Absent = "-";
constexpr std::string_view FlowGap = "   ";
constexpr std::size_t LineWidth = 98;

std::string text_of(const Value& value) {
    switch (value.kind) {
        case Value::Kind::truth:
            return value.whole ? "yes" : "no";
        case Value::Kind::whole:
            return std::to_string(value.whole);
        case Value::Kind::number:
            return shown(value.number);
        case Value::Kind::text: {
            std::string line = value.text;
            std::ranges::replace(line, '\n', ' ');
            return line;
        }
        case Value::Kind::absent:
            break;
    }
    return std::string(Absent);
}

std::string right(std::string_view text, std::size_t width) {
    const std::size_t length = text_length(text);
    return std::string(width > length ? width - length : 0, ' ') + std::string(text);
}

// Appends a line without blanks at its end.
void append_line(std::string& out, std::string_view line) {
    out += trim_right(line);
    out += '\n';
}

// Appends a text in lines of LineWidth characters at most, broken at blanks.
void append_wrapped(std::string& out, std::string_view text) {
    while (text_length(text) > LineWidth) {
        const std::size_t end = text.rfind(' ', LineWidth);
        if (end == std::string_view::npos) break;
        append_line(out, text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    append_line(out, text);
}

// Cells of one section, aligned column by column.
class Lines {
 public:
    enum class Side { left, right };
    explicit Lines(std::vector<Side> sides) : sides_(std::move(sides)), widths_(sides_.size(), 0) {}

    void add(std::vector<std::string> cells) {
        for (std::size_t k = 0; k < cells.size(); ++k)
            widths_[k] = std::max(widths_[k], text_length(cells[k]));
        rows_.push_back(std::move(cells));
    }
    void append_to(std::string& out) const {
        for (const auto& cells : rows_) {
            std::string line(Indent);
            for (std::size_t k = 0; k < cells.size(); ++k) {
                if (widths_[k] == 0) continue;
                if (line.size() > Indent.size()) line += Indent;
                line +=
                    sides_[k] == Side::left ? text_padded(cells[k], widths_[k]) : right(cells[k], widths_[k]);
            }
            append_line(out, line);
        }
    }

 private:
    std::vector<Side> sides_;
    std::vector<std::size_t> widths_;
    std::vector<std::vector<std::string>> rows_;
};
using Side = Lines::Side;

// "A = 1 K   B = 2   ..." in lines of LineWidth characters.
void render_flow(const Block& block, std::string& out) {
    std::string line(Indent);
    for (const Field& field : block.fields) {
        if (field.label.empty()) continue;
        std::string item = field.label + " = " + text_of(field.value);
        if (!field.unit.empty() && !field.value.absent()) item += " " + field.unit;
        if (line.size() > Indent.size()) {
            if (text_length(line) + FlowGap.size() + text_length(item) > LineWidth) {
                append_line(out, line);
                line = Indent;
            } else {
                line += FlowGap;
            }
        }
        line += item;
    }
    append_line(out, line);
}

void render(const Block& block, std::string& out) {
    if (block.layout == Layout::flow) return render_flow(block, out);
    // Texts stand at the left of the column of values, numbers at its right; a long text would push them
    // apart.
    std::size_t width = 0;
    for (const Field& field : block.fields)
        if (field.value.kind != Value::Kind::text) width = std::max(width, text_length(text_of(field.value)));
    Lines lines({Side::left, Side::left});
    for (const Field& field : block.fields) {
        if (field.label.empty() || (field.value.absent() && block.layout == Layout::known)) continue;
        std::string value = text_of(field.value);
        if (field.value.is_number() || field.value.absent()) value = right(value, width);
        for (const std::string* tail : {&field.unit, &field.note}) {
            if (tail->empty() || field.value.absent()) continue;
            value += tail == &field.unit ? " " : "  ";
            value += *tail;
        }
        lines.add({field.label, std::move(value)});
    }
    lines.append_to(out);
}

void render(const Table& table, std::string& out) {
    std::vector<std::size_t> shown_columns;
    for (std::size_t k = 0; k < table.columns.size(); ++k)
        if (table.columns[k].layout != Layout::json) shown_columns.push_back(k);
    std::vector<Side> sides;
    std::vector<std::string> labels, units;
    bool any_unit = false;
    for (const std::size_t k : shown_columns) {
        const bool numbers = std::any_of(table.rows.begin(), table.rows.end(),
                                         [k](const auto& row) { return row[k].is_number(); });
        sides.push_back(numbers ? Side::right : Side::left);
        labels.push_back(table.columns[k].label);
        units.push_back(table.columns[k].unit);
        any_unit = any_unit || !units.back().empty();
    }
    Lines lines(std::move(sides));
    lines.add(std::move(labels));
    if (any_unit) lines.add(std::move(units));
    for (const auto& row : table.rows) {
        std::vector<std::string> cells;
        // In a table only what is true is marked.
        for (const std::size_t k : shown_columns) {
            const bool blank = row[k].is_false() || (row[k].absent() && table.columns[k].label.empty());
            cells.push_back(blank ? "" : text_of(row[k]));
        }
        lines.add(std::move(cells));
    }
    lines.append_to(out);
}

void render(const Grid& grid, std::string& out) {
    std::vector<std::size_t> shown_columns;
    for (std::size_t k = 0; k < grid.columns.size(); ++k)
        if (std::any_of(grid.rows.begin(), grid.rows.end(),
                        [k](const GridRow& row) { return !row.values[k].absent(); }))
            shown_columns.push_back(k);
    std::vector<Side> sides{Side::left};
    sides.insert(sides.end(), shown_columns.size(), Side::right);
    sides.push_back(Side::left);
    Lines lines(std::move(sides));
    std::vector<std::string> head{""};
    for (const std::size_t k : shown_columns) head.push_back(grid.columns[k]);
    head.emplace_back();
    lines.add(std::move(head));
    for (const GridRow& row : grid.rows) {
        std::vector<std::string> cells{row.label};
        for (const std::size_t k : shown_columns) cells.push_back(text_of(row.values[k]));
        cells.push_back(row.unit);
        lines.add(std::move(cells));
    }
    lines.append_to(out);
}

// "Propane, 74-98-6; ...; h in kJ/kmol, v in m^3/kmol."
std::string footer_line(const Footer& footer) {
    std::string line = footer.basis;
    const char* between = "; ";
    for (const Field& quantity : footer.quantities) {
        line += between + quantity.label + " in " + quantity.unit;
        between = ", ";
    }
    return line;
}

bool is_for_programs(const ReportSection& section) {
    if (const auto* block = std::get_if<Block>(&section)) return block->layout == Layout::json;
    if (const auto* table = std::get_if<Table>(&section)) return table->layout == Layout::json;
    return false;
}

}  // namespace

Value if_known(double x) { return x != 0.0 ? Value(x) : Value(); }

Value if_present(const std::optional<double>& x) { return x ? Value(*x) : Value(); }

Value remark(std::string text) { return text.empty() ? Value() : Value(std::move(text)); }

Report refusal(std::string command, Fault fault) {
    Report report;
    report.command = std::move(command);
    report.status = fault.status;
    report.message = std::move(fault.message);
    report.sections = std::move(fault.sections);
    return report;
}

std::string shown(double x) {
    if (x == 0.0) return "0";
    const double size = std::fabs(x);
    std::string text;
    if (size >= 1e-4 && size < 1e7) {
        const int exponent = static_cast<int>(std::floor(std::log10(size)));
        std::string mask = "0.";
        mask.append(static_cast<std::size_t>(ShownDigits - 1 - exponent), '#');
        text = formatMask(x, mask);
    } else {
        text = formatMask(x, "0." + std::string(ShownDigits - 1, '#') + "E+00");
    }
    // The point of a mask is always printed; no number ends with it here.
    if (const std::size_t at = text.find(".E"); at != std::string::npos) text.erase(at, 1);
    if (text.ends_with('.')) text.pop_back();
    return text;
}

std::string to_text(const Report& report) {
    std::string out;
    if (!report.title.empty()) append_line(out, report.title);
    for (const ReportSection& section : report.sections) {
        if (is_for_programs(section)) continue;
        if (!out.empty()) out += '\n';
        std::visit(
            [&](const auto& part) {
                if (!part.title.empty()) append_line(out, part.title);
                render(part, out);
            },
            section);
    }
    if (!report.notes.empty() && !out.empty()) out += '\n';
    for (const std::string& note : report.notes) append_wrapped(out, "Note: " + note);
    if (!report.footer.basis.empty()) {
        if (!out.empty()) out += '\n';
        append_wrapped(out, footer_line(report.footer));
    }
    return out;
}

}  // namespace quom
