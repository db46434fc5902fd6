// The tables of controls.
#include <algorithm>
#include <cmath>
#include <type_traits>

#include "base/number_text.h"
#include "diagrams/graph_view.h"
#include "diagrams/ticks.h"
#include "forms/design_form.h"
#include "forms/refusal.h"

namespace quom {
namespace {

using S = GraphDocument;
using T = DesignTarget;
using V = DesignValue;
using A = DesignAnswer;
using C = ControlType;
using Entries = std::vector<std::string> (*)();

bool always(const S&, const T&) { return true; }
// The design of interchanged axes is restricted to their limits and the grid.
bool not_interchanged(const S& sheet, const T&) { return !sheet.Interchanged; }

// A value that the sheet holds as it is, or as the number of an entry counted from Least. Field names it, of
// a sheet that is read or written.
template <int Least = 0, class Field>
DesignControl field(std::string name, std::string_view caption, C type, Entries entries, Field,
                    bool (*enabled)(const S&, const T&) = always, std::string_view group = {}) {
    const auto shown = [](const S& sheet, const T& target) -> V {
        const auto& x = Field()(sheet, target);
        using X = std::remove_cvref_t<decltype(x)>;
        if constexpr (std::is_enum_v<X>)
            return static_cast<int>(x);
        else if constexpr (std::is_same_v<X, int>)
            return x - Least;
        else
            return x;
    };
    const auto set = [](S& sheet, const T& target, const V& value) -> A {
        auto& x = Field()(sheet, target);
        using X = std::remove_cvref_t<decltype(x)>;
        if constexpr (std::is_enum_v<X>)
            x = static_cast<X>(std::get<int>(value));
        else if constexpr (std::is_same_v<X, int>)
            x = std::get<int>(value) + Least;
        else
            x = std::get<X>(value);
        return {};
    };
    return {std::move(name), group, caption, type, entries, shown, set, enabled};
}

DesignControl action(std::string name, std::string_view caption, A (*set)(S&, const T&, const V&),
                     bool (*enabled)(const S&, const T&) = always, std::string_view group = {}) {
    return {std::move(name), group, caption, C::action, nullptr, nullptr, set, enabled};
}

std::vector<std::string> texts_of(std::span<const std::string_view> entries) {
    return {entries.begin(), entries.end()};
}
std::vector<std::string> numbers_between(int first, int last) {
    std::vector<std::string> entries;
    for (int i = first; i <= last; ++i) entries.push_back(genNum(i));
    return entries;
}
std::vector<std::string> line_entries() { return texts_of(line_pattern_entries()); }
std::vector<std::string> symbols() { return texts_of(symbol_entries()); }
std::vector<std::string> widths() { return numbers_between(LeastWidth, LargestWidth); }
std::vector<std::string> sizes() { return numbers_between(LeastSymbolSize, LargestSymbolSize); }
std::vector<std::string> digit_entries() {
    std::vector<std::string> entries = numbers_between(0, 15);
    entries[0] = "as needed";
    return entries;
}
// On the right numbers are an addition: none without digits.
std::vector<std::string> y2_digit_entries() {
    std::vector<std::string> entries = digit_entries();
    entries[0] = "no numbers";
    return entries;
}
std::vector<std::string> turns() { return {"horizontal", "upwards", "downwards"}; }
std::vector<std::string> off_on() { return {"off", "on"}; }
std::vector<std::string> origins() { return {"at the lower limit", "at"}; }
std::vector<std::string> scalings() { return {"automatic", "step"}; }
std::vector<std::string> places() { return {"top right", "top left", "bottom right", "bottom left", "free"}; }

// ---- curves, points ------------------------------------------------------------------------------------

constexpr auto curve = [](auto& sheet, const T& target) -> auto& {
    return sheet.curve(target.number).series;
};
constexpr auto points = [](auto& sheet, const T& target) -> auto& { return sheet.set(target.number).series; };

template <class Of>
void add_series_end(std::vector<DesignControl>& all, const char* legend, const char* label, const char* text,
                    Of) {
    all.push_back(field(
        legend, "Legend", C::flag, nullptr,
        [](auto& s, const T& t) -> auto& { return Of()(s, t).in_legend; }));
    all.push_back(field(
        label, "Label", C::flag, nullptr,
        [](auto& s, const T& t) -> auto& { return Of()(s, t).label.visible; }));
    all.push_back(field(
        text, "Legend text", C::line, nullptr,
        [](auto& s, const T& t) -> auto& { return Of()(s, t).legend; }));
}

// Line and symbols of a series have one colour.
template <class Of>
DesignControl series_color(const char* name, Of) {
    DesignControl control = field(
        name, "Color", C::color, nullptr,
        [](auto& s, const T& t) -> auto& { return Of()(s, t).style.symbol_color; });
    control.set = [](S& sheet, const T& target, const V& value) -> A {
        SeriesStyle& style = Of()(sheet, target).style;
        style.color = style.symbol_color = std::get<Color>(value);
        return {};
    };
    return control;
}

std::vector<DesignControl> curve_controls() {
    std::vector<DesignControl> all = {
        series_color("cmdKurvenFarbe", curve),
        field(
            "cmbKStil", "Line", C::choice, line_entries,
            [](auto& s, const T& t) -> auto& { return curve(s, t).style.line; }),
        field<LeastWidth>(
            "cmbKBreite", "Width", C::choice, widths,
            [](auto& s, const T& t) -> auto& { return curve(s, t).style.width; }),
    };
    add_series_end(all, "chkLegend1", "chkEinzelLabelSichtbar", "txtLegende", curve);
    return all;
}

std::vector<DesignControl> point_controls() {
    std::vector<DesignControl> all = {
        series_color("cmdPunktFarbe", points),
        field(
            "cmbPunktStil", "Symbol", C::choice, symbols,
            [](auto& s, const T& t) -> auto& { return points(s, t).style.symbol; }),
        field<LeastSymbolSize>(
            "cmbPunktGroesse", "Size", C::choice, sizes,
            [](auto& s, const T& t) -> auto& { return points(s, t).style.symbol_size; }),
    };
    add_series_end(all, "chkPunktLegende", "chkPunktLabel", "txtPunktLegende", points);
    all.push_back(action("cmdDelPointSet", "Delete", [](S& sheet, const T& target, const V&) -> A {
        delete_points(sheet, target.number);
        return {};
    }));
    return all;
}

// ---- sheet ---------------------------------------------------------------------------------------------

template <class Field>
DesignControl sheet_color(const char* name, std::string_view caption, Field of) {
    return field(name, caption, C::color, nullptr, of, always, "Colors");
}

std::vector<DesignControl> sheet_controls() {
    std::vector<DesignControl> all = {
        action(
            "cmdFullBlack", "FullBlack",
            [](S& sheet, const T&, const V&) -> A { return sheet.colors = full_black(), A(); }, always,
            "Color presets"),
        action(
            "cmdFullWhite", "FullWhite",
            [](S& sheet, const T&, const V&) -> A { return sheet.colors = full_white(), A(); }, always,
            "Color presets"),
        action(
            "cmdStandardFarben", "As a new sheet",
            [](S& sheet, const T&, const V&) -> A { return sheet.colors = new_sheet_colors(), A(); }, always,
            "Color presets"),
        sheet_color(
            "cmdBlattFarbe", "Sheet", [](auto& s, const T&) -> auto& { return s.colors.sheet; }),
        sheet_color(
            "cmdFlaecheFarbe", "Chart area", [](auto& s, const T&) -> auto& { return s.colors.area; }),
        sheet_color(
            "cmdLegendeFarbe", "Legend", [](auto& s, const T&) -> auto& { return s.colors.legend; }),
        sheet_color(
            "cmdAchsenFarbe", "Axes", [](auto& s, const T&) -> auto& { return s.colors.axes; }),
        sheet_color(
            "cmdLabelFarbe", "Labels, numbers", [](auto& s, const T&) -> auto& { return s.colors.labels; }),
        sheet_color(
            "cmdSchriftFarbe", "Texts", [](auto& s, const T&) -> auto& { return s.colors.text; }),
    };
    // A sheet that is no longer black is printed without a question, one made black by hand is not.
    const auto of_sheet = std::ranges::find(all, "cmdBlattFarbe", &DesignControl::name);
    of_sheet->set = [](S& sheet, const T&, const V& value) -> A {
        sheet.colors.sheet = std::get<Color>(value);
        sheet.colors.black = sheet.colors.sheet == full_black().sheet;
        return {};
    };
    return all;
}

// ---- axes ----------------------------------------------------------------------------------------------

// The axis of a page, as shown; turned texts belong to a place.
constexpr auto axis = [](auto& sheet, const T& target) -> auto& {
    if (target.axis == DesignPage::y2_axis) return sheet.y2;
    return target.axis == DesignPage::x_axis ? shown_x(sheet) : shown_y(sheet);
};
constexpr auto placed_axis = [](auto& sheet, const T& target) -> auto& {
    if (target.axis == DesignPage::y2_axis) return sheet.y2;
    return target.axis == DesignPage::x_axis ? sheet.x : sheet.y;
};

struct Limits {
    double low = 0, high = 0;
};
Limits limits_of(const S& sheet, const T& target) {
    const CurveRange range = shown_range(sheet);
    const bool x = target.axis == DesignPage::x_axis;
    return {static_cast<double>(x ? range.XMin : range.YMin),
            static_cast<double>(x ? range.XMax : range.YMax)};
}

A set_log(S& sheet, const T& target, const V& value) {
    const bool on = std::get<bool>(value);
    if (auto refused = log_refusal(on, limits_of(sheet, target).high)) return {.message = std::move(refused)};
    target.axis == DesignPage::x_axis ? set_log_x(sheet, on) : set_log_y(sheet, on);
    return {.message = on ? log_note(sheet) : std::nullopt};
}

std::string number_shown(const std::optional<double>& x) { return x ? genNum(*x) : std::string(); }

// The other axis crosses at a value between the limits; first at 0, or at a round value of the range.
A set_origin(S& sheet, const T& target, const std::optional<double>& origin) {
    const Limits limits = limits_of(sheet, target);
    if (origin && !(*origin >= limits.low && *origin <= limits.high))
        return {.fault = "The origin must lie between the limits."};
    axis(sheet, target).origin = origin;
    return {};
}
double first_origin(const Limits& limits) {
    if (limits.low < 0.0 && limits.high > 0.0) return 0.0;
    const Ticks ticks = linear_ticks(limits.low, limits.high);
    return ticks.at.empty() ? (limits.low + limits.high) / 2 : ticks.at[ticks.at.size() / 2];
}

A set_step(S& sheet, const T& target, const std::optional<double>& step) {
    const Limits limits = limits_of(sheet, target);
    if (step && !(*step > 0.0)) return {.fault = "The step must be above 0."};
    if (step && step_ticks(limits.low, limits.high, *step).at.size() < 2)
        return {.fault = "The step must give 2 to 1000 numbers."};
    axis(sheet, target).step = step;
    return {};
}

// A number that may be missing: empty takes it away.
template <auto Set>
A set_number(S& sheet, const T& target, const V& value) {
    const auto& typed = std::get<std::string>(value);
    if (typed.find_first_not_of(' ') == std::string::npos) return Set(sheet, target, std::nullopt);
    const BoxNumber number = read_box("the value", typed, NumberRule::any);
    if (!number.fault.empty()) return {.fault = number.fault};
    return Set(sheet, target, number.value);
}

bool has_linear_scale(const S& sheet, const T& target) {
    return !sheet.Interchanged && !axis(sheet, target).log;
}

void add_scale(std::vector<DesignControl>& all, const std::string& letter) {
    all.push_back({"opt" + letter + "Origin", "The other axis crosses", "Origin", C::options, origins,
                   [](const S& s, const T& t) -> V { return axis(s, t).origin ? 1 : 0; },
                   [](S& s, const T& t, const V& value) -> A {
                       if (std::get<int>(value) == 0) return set_origin(s, t, std::nullopt);
                       return set_origin(s, t, axis(s, t).origin.value_or(first_origin(limits_of(s, t))));
                   },
                   not_interchanged});
    all.push_back({"txt" + letter + "Origin", "The other axis crosses", "Origin at", C::number, nullptr,
                   [](const S& s, const T& t) -> V { return number_shown(axis(s, t).origin); },
                   set_number<set_origin>, not_interchanged});
    all.push_back({"optScaling", "Numbers", "Scaling", C::options, scalings,
                   [](const S& s, const T& t) -> V { return axis(s, t).step ? 1 : 0; },
                   [](S& s, const T& t, const V& value) -> A {
                       if (std::get<int>(value) == 0) return set_step(s, t, std::nullopt);
                       const Limits limits = limits_of(s, t);
                       return set_step(s, t, axis(s, t).step.value_or(round_step(limits.low, limits.high)));
                   },
                   has_linear_scale});
    all.push_back({"txtScaling", "Numbers", "Step", C::number, nullptr,
                   [](const S& s, const T& t) -> V { return number_shown(axis(s, t).step); },
                   set_number<set_step>, has_linear_scale});
}

void add_grid(std::vector<DesignControl>& all, const std::string& letter) {
    DesignControl log = field(
        "cmd" + letter + "Log", "logarithmic scale", C::flag, nullptr,
        [](auto& s, const T& t) -> auto& { return axis(s, t).log; }, not_interchanged);
    log.set = set_log;
    all.push_back(std::move(log));
    all.push_back({"opt1Gitter",
                   {},
                   "Grid",
                   C::options,
                   off_on,
                   [](const S& s, const T& t) -> V { return axis(s, t).grid ? 1 : 0; },
                   [](S& s, const T& t, const V& value) -> A {
                       axis(s, t).grid = std::get<int>(value) == 1;
                       return {};
                   },
                   always});
    all.push_back({"cmdGitterFarbe",
                   {},
                   "Grid color",
                   C::color,
                   nullptr,
                   [](const S& s, const T&) -> V { return s.colors.grid; },
                   [](S& s, const T&, const V& value) -> A {
                       s.colors.grid = std::get<Color>(value);
                       s.colors.grid_alpha = 1;
                       return {};
                   },
                   always});
}

std::vector<DesignControl> axis_controls(DesignPage page) {
    const std::string letter = page == DesignPage::x_axis ? "X" : page == DesignPage::y_axis ? "Y" : "Y2";
    std::vector<DesignControl> all;
    if (page != DesignPage::y2_axis) {
        add_grid(all, letter);
        add_scale(all, letter);
    }
    constexpr std::string_view numbers = "Numbers";
    all.push_back(field(
        "opt" + letter + "Ziffern", "Digits", C::choice,
        page == DesignPage::y2_axis ? y2_digit_entries : digit_entries,
        [](auto& s, const T& t) -> auto& { return axis(s, t).digits; }, not_interchanged, numbers));
    all.push_back(field(
        "optOrient" + letter + "AxZiff", "Orientation of the numbers", C::options, turns,
        [](auto& s, const T& t) -> auto& { return placed_axis(s, t).number_turn; }, not_interchanged,
        numbers));
    all.push_back(field(
        "cmdFont_1", "Font of the numbers", C::font, nullptr,
        [](auto& s, const T& t) -> auto& { return axis(s, t).number_font; }, not_interchanged, numbers));
    if (page == DesignPage::y_axis)
        all.push_back(field(
            "optOrientYAxText", "Orientation of the text", C::options, turns,
            [](auto& s, const T& t) -> auto& { return placed_axis(s, t).title_turn; }, not_interchanged,
            "Annotation"));
    if (page != DesignPage::y2_axis)
        all.push_back(field(
            "cmdFont_0", "Font of the annotation", C::font, nullptr,
            [](auto& s, const T& t) -> auto& { return axis(s, t).title_font; }, not_interchanged,
            "Annotation"));
    return all;
}

// ---- texts ---------------------------------------------------------------------------------------------

// A text of its own on the sheet; none: a title or a label.
template <class Sheet>
auto free_text(Sheet& sheet, const T& target) -> decltype(&sheet.header) {
    if (target.text.part == DesignText::header) return &sheet.header;
    if (target.text.part == DesignText::footer) return &sheet.footer;
    if (target.text.part != DesignText::text || !has_text(sheet, target.text)) return nullptr;
    return &sheet.texts[static_cast<std::size_t>(target.text.number)];
}
template <class Sheet>
auto label_of(Sheet& sheet, const T& target) -> decltype(&sheet.curve(1).series.label) {
    if (!has_text(sheet, target.text)) return nullptr;
    if (target.text.part == DesignText::curve_label) return &sheet.curve(target.text.number).series.label;
    if (target.text.part == DesignText::points_label) return &sheet.set(target.text.number).series.label;
    if (target.text.part == DesignText::mark_label) return &sheet.mark(target.text.number).series.label;
    return nullptr;
}
// The string itself; none where the text has gone.
template <class Sheet>
auto string_of(Sheet& sheet, const T& target) -> decltype(&sheet.header.text) {
    if (auto* text = free_text(sheet, target)) return &text->text;
    if (auto* label = label_of(sheet, target)) return &label->text;
    const bool x = target.text.part == DesignText::x_title;
    if (!x && target.text.part != DesignText::y_title) return nullptr;
    return x != sheet.Interchanged ? &sheet.diagram.XTitle : &sheet.diagram.YTitle;
}

bool is_title(const T& target) {
    return target.text.part == DesignText::x_title || target.text.part == DesignText::y_title;
}
bool has_place(const S&, const T& target) { return !is_title(target); }
bool has_color(const S& sheet, const T& target) { return free_text(sheet, target) != nullptr; }
bool has_font(const S& sheet, const T& target) {
    return free_text(sheet, target) || (is_title(target) && !sheet.Interchanged);
}
bool is_added(const S&, const T& target) { return target.text.part == DesignText::text; }

template <class Sheet>
auto& title_font(Sheet& sheet, const T& target) {
    return target.text.part == DesignText::x_title ? shown_x(sheet).title_font : shown_y(sheet).title_font;
}

std::string share_shown(double share) { return genNum(std::round(share * 1000) / 10); }

// Of a text in percent of the sheet, of a label in pixels from its place.
template <bool IsX>
V shown_place(const S& sheet, const T& target) {
    if (const SheetText* text = free_text(sheet, target)) return share_shown(IsX ? text->x : text->y);
    if (const SeriesLabel* label = label_of(sheet, target))
        return genNum(std::round(IsX ? label->dx : label->dy));
    return std::string();
}
template <bool IsX>
A set_place(S& sheet, const T& target, const V& value) {
    constexpr double most_pixels = 5000;
    const BoxNumber number = read_box("the place", std::get<std::string>(value), NumberRule::any);
    if (!number.fault.empty()) return {.fault = number.fault};
    const double x = number.value;
    if (SheetText* text = free_text(sheet, target)) {
        if (x < 0.0 || x > 100.0) return {.fault = "The place must be from 0 to 100 % of the sheet."};
        (IsX ? text->x : text->y) = x / 100;
    } else if (SeriesLabel* label = label_of(sheet, target)) {
        if (std::abs(x) > most_pixels) return {.fault = "The label would leave the sheet."};
        (IsX ? label->dx : label->dy) = x;
    }
    return {};
}

A put_back(S& sheet, const T& target, const V&) {
    if (SheetText* text = free_text(sheet, target)) text->x = text->y = 0;
    if (SeriesLabel* label = label_of(sheet, target)) label->dx = label->dy = 0;
    return {};
}
bool can_go_back(const S& sheet, const T& target) {
    if (target.text.part == DesignText::text) return false;
    if (const SheetText* text = free_text(sheet, target)) return text->x != 0 || text->y != 0;
    const SeriesLabel* label = label_of(sheet, target);
    return label && (label->dx != 0 || label->dy != 0);
}

std::vector<DesignControl> text_controls() {
    return {
        {"schrift",
         {},
         "Text",
         C::text,
         nullptr,
         [](const S& s, const T& t) -> V {
             const std::string* text = string_of(s, t);
             return text_with_end(text ? *text : std::string());
         },
         [](S& s, const T& t, const V& value) -> A {
             if (std::string* text = string_of(s, t)) *text = text_without_end(std::get<std::string>(value));
             return {};
         },
         always},
        {"chkTextSichtbar",
         {},
         "shown",
         C::flag,
         nullptr,
         [](const S& s, const T& t) -> V {
             if (const SheetText* text = free_text(s, t)) return text->visible;
             const SeriesLabel* label = label_of(s, t);
             return !label || label->visible;
         },
         [](S& s, const T& t, const V& value) -> A {
             if (SheetText* text = free_text(s, t)) text->visible = std::get<bool>(value);
             if (SeriesLabel* label = label_of(s, t)) label->visible = std::get<bool>(value);
             return {};
         },
         has_place},
        {"cmdFont",
         {},
         "Font",
         C::font,
         nullptr,
         [](const S& s, const T& t) -> V {
             if (const SheetText* text = free_text(s, t)) return text->font;
             return is_title(t) ? title_font(s, t) : Font();
         },
         [](S& s, const T& t, const V& value) -> A {
             if (SheetText* text = free_text(s, t)) text->font = std::get<Font>(value);
             if (is_title(t)) title_font(s, t) = std::get<Font>(value);
             return {};
         },
         has_font},
        {"cmdTextFarbe",
         {},
         "Color",
         C::color,
         nullptr,
         [](const S& s, const T& t) -> V {
             const SheetText* text = free_text(s, t);
             return text ? text->color.value_or(s.colors.text) : s.colors.text;
         },
         [](S& s, const T& t, const V& value) -> A {
             if (SheetText* text = free_text(s, t)) text->color = std::get<Color>(value);
             return {};
         },
         has_color},
        action(
            "cmdTextFarbeAlle", "Color of all texts",
            [](S& s, const T& t, const V&) -> A {
                if (SheetText* text = free_text(s, t)) text->color.reset();
                return {};
            },
            [](const S& s, const T& t) {
                const SheetText* text = free_text(s, t);
                return text && text->color.has_value();
            }),
        {"txtTextX", "Place", "from left", C::number, nullptr, shown_place<true>, set_place<true>, has_place},
        {"txtTextY", "Place", "from top", C::number, nullptr, shown_place<false>, set_place<false>,
         has_place},
        action("cmdTextZurueck", "Back to its place", put_back, can_go_back, "Place"),
        action(
            "cmdDelText", "Delete text",
            [](S& s, const T& t, const V&) -> A {
                if (is_added(s, t) && has_text(s, t.text)) s.texts.erase(s.texts.begin() + t.text.number);
                return {};
            },
            is_added, "Place"),
    };
}

// ---- legend --------------------------------------------------------------------------------------------

bool is_free(const S& sheet, const T&) { return sheet.legend.place == LegendPlace::free; }

template <bool IsX>
A set_legend_place(S& sheet, const T&, const V& value) {
    const BoxNumber number = read_box("the place", std::get<std::string>(value), NumberRule::any);
    if (!number.fault.empty()) return {.fault = number.fault};
    if (number.value < 0.0 || number.value > 100.0)
        return {.fault = "The place must be from 0 to 100 % of the axes."};
    (IsX ? sheet.legend.x : sheet.legend.y) = number.value / 100;
    return {};
}

std::vector<DesignControl> legend_controls() {
    return {
        {"chkLegende",
         {},
         "legend shown",
         C::flag,
         nullptr,
         [](const S& s, const T&) -> V { return s.legend.visible; },
         [](S& s, const T&, const V& value) -> A {
             if (std::get<bool>(value)) return {.message = show_legend(s)};
             return hide_legend(s), A();
         },
         always},
        field(
            "cmbLegende", "Position", C::choice, places,
            [](auto& s, const T&) -> auto& { return s.legend.place; }),
        {"txtLegendeX",
         {},
         "from left / %",
         C::number,
         nullptr,
         [](const S& s, const T&) -> V { return share_shown(s.legend.x); },
         set_legend_place<true>,
         is_free},
        {"txtLegendeY",
         {},
         "from top / %",
         C::number,
         nullptr,
         [](const S& s, const T&) -> V { return share_shown(s.legend.y); },
         set_legend_place<false>,
         is_free},
        field(
            "cmdFont", "Font", C::font, nullptr, [](auto& s, const T&) -> auto& { return s.legend.font; }),
    };
}

}  // namespace

std::vector<DesignControl> design_controls(DesignPage page) {
    switch (page) {
        case DesignPage::sheet:
            return sheet_controls();
        case DesignPage::curves:
            return curve_controls();
        case DesignPage::points:
            return point_controls();
        case DesignPage::texts:
            return text_controls();
        case DesignPage::legend:
            return legend_controls();
        default:
            return axis_controls(page);
    }
}

}  // namespace quom
