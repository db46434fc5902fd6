#include "forms/design_form.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "diagrams/graph_view.h"
#include "diagrams/ticks.h"
#include "forms/refusal.h"

namespace quom {
namespace {

constexpr auto pages = std::to_array<DesignPageInfo>({{DesignPage::sheet, "tabBlatt", "Sheet"},
                                                      {DesignPage::curves, "tabKurven", "Curves"},
                                                      {DesignPage::points, "tabPunkte", "Points"},
                                                      {DesignPage::x_axis, "tabXAxis", "X axis"},
                                                      {DesignPage::y_axis, "tabYAxis", "Y axis"},
                                                      {DesignPage::y2_axis, "tabY2Axis", "Y2 axis"},
                                                      {DesignPage::texts, "tabTexte", "Texts"},
                                                      {DesignPage::legend, "tabLegende", "Legend"}});
static_assert(pages.size() == DesignPages);

struct TextTitle {
    DesignText part;
    std::string_view title;  // of the window
};
constexpr auto text_titles = std::to_array<TextTitle>({
    {DesignText::header, "Design Header"},
    {DesignText::footer, "Design Footer"},
    {DesignText::text, "Design Additional text"},
    {DesignText::x_title, "Design X-Axis Annotation"},
    {DesignText::y_title, "Design Y-Axis Annotation"},
    {DesignText::curve_label, "Design Curve Label"},
    {DesignText::points_label, "Design Label of Points"},
    {DesignText::mark_label, "Design Label of a Mark"},
});

constexpr std::size_t LongestCaption = 32;  // of a text in its list

// The first line of a text, cut where it is long; bytes of a letter stay together.
std::string short_text(const std::string& text) {
    std::size_t end = std::min(text.find('\n'), text.size());
    if (end > LongestCaption) {
        end = LongestCaption;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
        return text.substr(0, end) + "...";
    }
    return text.substr(0, end);
}

std::string captioned(std::string_view what, const std::string& text) {
    return std::string(what) + (text.empty() ? "" : ": " + short_text(text));
}

// The axis as it is drawn with a logarithmic scale begins elsewhere than its range.
std::string begins_at(std::string_view name, bool log, float low, float high) {
    if (!log || low > 0.0F || !(high > 0.0F)) return "";
    return "The logarithmic " + std::string(name) + "-axis begins at " +
           tick_number(log_low(static_cast<double>(low), static_cast<double>(high))) + ".\n";
}

SheetText* sheet_text(GraphDocument& sheet, const TextRef& ref) {
    if (ref.part == DesignText::header) return &sheet.header;
    if (ref.part == DesignText::footer) return &sheet.footer;
    if (ref.part == DesignText::text && has_text(sheet, ref))
        return &sheet.texts[static_cast<std::size_t>(ref.number)];
    return nullptr;
}

}  // namespace

std::span<const DesignPageInfo> design_pages() { return pages; }

std::vector<TextEntry> design_texts(const GraphDocument& sheet) {
    std::vector<TextEntry> all = {{{DesignText::header}, "Header"},
                                  {{DesignText::x_title}, "X-Axis Annotation"},
                                  {{DesignText::y_title}, "Y-Axis Annotation"},
                                  {{DesignText::footer}, "Footer"}};
    for (int i = 0; i < static_cast<int>(sheet.texts.size()); ++i)
        all.push_back(
            {{DesignText::text, i},
             captioned("Additional text " + genNum(i + 1), sheet.texts[static_cast<std::size_t>(i)].text)});
    for (int slot = 1; slot <= CurveSlots; ++slot)
        if (!sheet.curve(slot).CurveFree)
            all.push_back(
                {{DesignText::curve_label, slot}, captioned("Label", sheet.curve(slot).series.label.text)});
    for (int set = 1; set <= PointSlots; ++set)
        if (!sheet.set(set).PointFree)
            all.push_back(
                {{DesignText::points_label, set}, captioned("Label", sheet.set(set).series.label.text)});
    for (int number = FirstMark; number <= LastMark; ++number) {
        const Mark& mark = sheet.mark(number);
        const std::string& text = mark.series.label.text;
        const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
        if (mark.shown() && !text.empty())
            all.push_back({{DesignText::mark_label, number}, captioned("Mark", text.substr(first))});
    }
    return all;
}

bool has_text(const GraphDocument& sheet, const TextRef& ref) {
    const auto in = [&](int first, int last) { return ref.number >= first && ref.number <= last; };
    switch (ref.part) {
        case DesignText::text:
            return in(0, static_cast<int>(sheet.texts.size()) - 1);
        case DesignText::curve_label:
            return in(1, CurveSlots) && !sheet.curve(ref.number).CurveFree;
        case DesignText::points_label:
            return in(1, PointSlots) && !sheet.set(ref.number).PointFree;
        case DesignText::mark_label:
            return in(FirstMark, LastMark) && sheet.mark(ref.number).shown();
        default:
            return true;
    }
}

std::string design_title(DesignPage page, const TextRef& text) {
    if (page == DesignPage::texts)
        return std::string(std::ranges::find(text_titles, text.part, &TextTitle::part)->title);
    return "Design " + std::string(std::ranges::find(pages, page, &DesignPageInfo::page)->caption);
}

CoordinatesRefused take_design_limits(GraphDocument& sheet, const CoordinateTexts& texts, LimitsIn where) {
    constexpr std::array<std::string_view, 4> names = {"X minimum", "X maximum", "Y minimum", "Y maximum"};
    const CoordinateTexts before = coordinate_texts(sheet);
    CurveRange range = shown_range(sheet);
    const std::array<float*, 4> limits = {&range.XMin, &range.XMax, &range.YMin, &range.YMax};
    for (std::size_t i = 0; i < limits.size(); ++i) {
        if (texts[i] == before[i]) continue;
        const BoxNumber number = read_box(names[i], texts[i], NumberRule::any);
        if (!number.fault.empty()) return {.box = BoxRefusal{i, number.fault}};
        *limits[i] = static_cast<float>(number.value);
    }
    return {.message = set_coordinates(sheet, range, where)};
}

std::optional<Message> log_note(const GraphDocument& sheet) {
    const CurveRange range = shown_range(sheet);
    const std::string text = begins_at("x", shown_x(sheet).log, range.XMin, range.XMax) +
                             begins_at("y", shown_y(sheet).log, range.YMin, range.YMax);
    if (text.empty()) return std::nullopt;
    return Message{
        .title = "Note",
        .text = text + "Its lower limit is not above 0; points below the first number are not shown."};
}

void place_text(GraphDocument& sheet, const TextRef& ref, double x, double y) {
    SheetText* text = sheet_text(sheet, ref);
    if (!text || !std::isfinite(x) || !std::isfinite(y)) return;
    text->x = std::clamp(x, 0.0, 1.0);
    text->y = std::clamp(y, 0.0, 1.0);
}

void shift_label(GraphDocument& sheet, const TextRef& ref, double by_x, double by_y) {
    if (!has_text(sheet, ref) || !std::isfinite(by_x) || !std::isfinite(by_y)) return;
    const auto shift = [&](SeriesLabel& label) {
        label.dx += by_x;
        label.dy += by_y;
    };
    if (ref.part == DesignText::curve_label) shift(sheet.curve(ref.number).series.label);
    if (ref.part == DesignText::points_label) shift(sheet.set(ref.number).series.label);
    if (ref.part == DesignText::mark_label) shift(sheet.mark(ref.number).series.label);
}

void place_legend(GraphDocument& sheet, double x, double y) {
    if (!std::isfinite(x) || !std::isfinite(y)) return;
    sheet.legend.place = LegendPlace::free;
    sheet.legend.x = std::clamp(x, 0.0, 1.0);
    sheet.legend.y = std::clamp(y, 0.0, 1.0);
}

std::string_view axes_hint(const GraphDocument& sheet) {
    return sheet.Interchanged ? "Note: in the changed state there are restricted possibilities for designing"
                              : "";
}

}  // namespace quom
