#include "substance/set_marks.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <span>
#include <utility>

#include "base/csv_rows.h"
#include "substance/record.h"

namespace quom {
namespace {

constexpr MarkedSet sets[] = {
    {"rhocr", "rhocrDB", "rho(cr)", 8, 8},
    {"Tnb", "Tnb", "T(nb)", 10, 10},
    {"rhoL", "RhoL", "rho(L)", 13, 22},
    {"kf", "KFDB", "p(LV), Frost/Kalkwarf", 24, 34},
    {"antlo", "AntLo", "p(LV), Antoine, low pressure", 36, 40},
    {"anthi", "AntHi", "p(LV), Antoine, high pressure", 42, 46},
    {"wagner", "Wagner", "p(LV), Wagner", 48, 59},
    {"cppoly", "cpPoly", "cp(idG), polynomial", 61, 67},
    {"cpsinh", "cpDIPPR", "cp(idG), sinh/cosh", 69, 75},
    {"cpL", "cpL", "cp(L)", 77, 83},
    {"hlv", "HLV", "delta(LV)h", 96, 104},
    {"cpS", "cpS", "cp(S)", 110, 116},
    {"rhoS", "RhoS", "rho(S)", 118, 123},
};

constexpr std::array<std::string_view, 3> words = {"estimate", "fit", "extrapolated"};

constexpr std::array<std::string_view, 5> header = {"cas", "set", "mark", "figures", "source"};

std::optional<std::uint32_t> from_hex(std::string_view text) {
    std::uint32_t value = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (fault != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::string to_hex(std::uint32_t value) {
    char digits[8];
    const auto end = std::to_chars(digits, std::end(digits), value, 16).ptr;
    return {digits, end};
}

std::string quoted(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) result += c == '"' ? std::string("\"\"") : std::string(1, c);
    return result + "\"";
}

bool same_fields(const CsvRow& row) { return std::ranges::equal(row.fields, header); }

bool boils_below_triple_point(const SubstanceConstants& substance) {
    return substance.Tnb > 0.0f && substance.Tnb < substance.Ttr;
}

}  // namespace

std::string_view mark_word(MarkKind kind) { return words[static_cast<std::size_t>(kind)]; }

std::optional<MarkKind> mark_kind(std::string_view word) {
    const auto found = std::ranges::find(words, word);
    if (found == words.end()) return std::nullopt;
    return static_cast<MarkKind>(found - words.begin());
}

const MarkedSet* marked_set(std::string_view column) {
    const auto found = std::ranges::find(sets, column, &MarkedSet::column);
    return found == std::end(sets) ? nullptr : &*found;
}

MarkTable read_marks(std::string_view csv) {
    const std::vector<CsvRow> rows = csv_rows(csv);
    const std::string name = std::string("\"") + MarksFile + "\"";
    if (rows.empty() || !same_fields(rows.front()))
        return {.rows = {},
                .fault = name + " is no file of marks: it does not begin with cas,set,mark,figures,source."};
    MarkTable table;
    for (const CsvRow& row : std::span(rows).subspan(1)) {
        const auto bad = [&](const std::string& what) {
            std::string fault = name;
            fault.append(", line ").append(std::to_string(row.line)).append(": ").append(what).append(".");
            return MarkTable{.rows = {}, .fault = std::move(fault)};
        };
        if (row.fields.size() != header.size())
            return bad(std::to_string(row.fields.size()) + " fields in place of " +
                       std::to_string(header.size()));
        const MarkedSet* set = marked_set(row.fields[1]);
        if (set == nullptr) return bad("there is no set \"" + row.fields[1] + "\"");
        const std::optional<MarkKind> kind = mark_kind(row.fields[2]);
        if (!kind) return bad("there is no mark \"" + row.fields[2] + "\"");
        const std::optional<std::uint32_t> figures = from_hex(row.fields[3]);
        if (!figures) return bad("\"" + row.fields[3] + "\" is no checksum");
        table.rows.push_back({row.fields[0], set, *kind, *figures, row.fields[4]});
    }
    return table;
}

std::string marks_text(const std::vector<MarkRow>& rows) {
    std::string text;
    for (const std::string_view column : header) text.append(text.empty() ? "" : ",").append(column);
    text += '\n';
    for (const MarkRow& row : rows)
        text.append(row.cas)
            .append(",")
            .append(row.set->column)
            .append(",")
            .append(mark_word(row.kind))
            .append(",")
            .append(to_hex(row.figures))
            .append(",")
            .append(quoted(row.source))
            .append("\n");
    return text;
}

std::uint32_t figures_of(const SubstanceConstants& substance, const MarkedSet& set) {
    const RecordLayout& layout = *record_layout(7);
    std::string record(layout.length, '\0');
    pack_cells(substance, layout, record);
    const std::size_t from = layout.F + 4 * static_cast<std::size_t>(set.first);
    const std::size_t to = layout.F + 4 * static_cast<std::size_t>(set.last + 1);
    std::uint32_t sum = 2166136261u;
    for (const char c : std::string_view(record).substr(from, to - from))
        sum = (sum ^ static_cast<unsigned char>(c)) * 16777619u;
    return sum;
}

std::vector<SetMark> marks_on(const SubstanceConstants& substance, const MarkTable& table) {
    std::vector<SetMark> marks;
    for (const MarkRow& row : table.rows)
        if (row.cas == substance.StoffCAS && row.figures == figures_of(substance, *row.set))
            marks.push_back({row.set, row.kind, row.source});
    const MarkedSet* const Tnb = marked_set("Tnb");
    if (boils_below_triple_point(substance) && std::ranges::find(marks, Tnb, &SetMark::set) == marks.end())
        marks.push_back({Tnb, MarkKind::extrapolated, "below the triple point"});
    std::ranges::stable_sort(marks, {}, [](const SetMark& mark) { return mark.set->first; });
    return marks;
}

std::string mark_sentence(const SetMark& mark) {
    return std::string(mark.set->label) + ": " + std::string(mark_word(mark.kind)) + ", " + mark.source;
}

}  // namespace quom
