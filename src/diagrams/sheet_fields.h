// Every field of a sheet that a diagram file keeps, once, for writing and for reading.
#pragma once
#include <array>
#include <limits>
#include <string_view>

#include "diagrams/graph_document.h"

namespace quom {

// An archive has flag, whole(name, x, least, largest), number, number_or_none, single(name, x, least,
// largest), text, color, color_or_none, choice(name, x, words), points(series points), limits(range, names)
// and part(name, x, fields), which opens the object of that name. Sheets are const for writing.

// clang-format off
inline constexpr auto line_words = std::to_array<std::string_view>(
    {"points", "solid", "dotted", "dashed", "dash-dotted"});
inline constexpr auto symbol_words = std::to_array<std::string_view>(
    {"dot", "box", "triangle", "diamond", "star", "cross", "circle", "square", "inverted triangle",
     "open triangle", "open diamond", "open inverted triangle", "hidden"});
inline constexpr auto turn_words = std::to_array<std::string_view>({"horizontal", "upwards", "downwards"});
inline constexpr auto place_words = std::to_array<std::string_view>(
    {"top right", "top left", "bottom right", "bottom left", "free"});
// clang-format on
inline constexpr int MostDigits = 15;
inline constexpr int AnyWhole = std::numeric_limits<int>::max();

template <class Archive, class FontValue>
void font_fields(Archive& a, FontValue& font) {
    a.text("family", font.family);
    a.single("size", font.size, LeastFont, LargestFont);
    a.flag("bold", font.bold);
    a.flag("italic", font.italic);
}

template <class Archive, class Style>
void style_fields(Archive& a, Style& style) {
    a.choice("line", style.line, line_words);
    a.whole("width", style.width, LeastWidth, LargestWidth);
    a.color("color", style.color);
    a.choice("symbol", style.symbol, symbol_words);
    a.whole("symbol_size", style.symbol_size, LeastSymbolSize, LargestSymbolSize);
    a.color("symbol_color", style.symbol_color);
}

template <class Archive, class Label>
void label_fields(Archive& a, Label& label) {
    a.text("text", label.text);
    a.flag("visible", label.visible);
    a.whole("point", label.point, 1, AnyWhole);
    a.number("dx", label.dx);
    a.number("dy", label.dy);
}

template <class Archive, class SeriesValue>
void series_fields(Archive& a, SeriesValue& series) {
    a.points(series.points);
    a.text("legend", series.legend);
    a.flag("in_legend", series.in_legend);
    a.part("style", series.style, [](auto& sub, auto& x) { style_fields(sub, x); });
    a.part("label", series.label, [](auto& sub, auto& x) { label_fields(sub, x); });
}

template <class Archive, class MarkValue>
void mark_fields(Archive& a, MarkValue& mark) {
    series_fields(a, mark.series);
    a.single("label_x", mark.label_at.X);
    a.single("label_y", mark.label_at.Y);
}

template <class Archive, class Axis>
void axis_fields(Archive& a, Axis& axis) {
    a.flag("log", axis.log);
    a.flag("grid", axis.grid);
    a.whole("digits", axis.digits, 0, MostDigits);
    a.choice("title_turn", axis.title_turn, turn_words);
    a.choice("number_turn", axis.number_turn, turn_words);
    a.number_or_none("origin", axis.origin);
    a.number_or_none("step", axis.step);
    a.part("title_font", axis.title_font, [](auto& sub, auto& x) { font_fields(sub, x); });
    a.part("number_font", axis.number_font, [](auto& sub, auto& x) { font_fields(sub, x); });
}

template <class Archive, class Text>
void text_fields(Archive& a, Text& text) {
    a.text("text", text.text);
    a.flag("visible", text.visible);
    a.number("x", text.x);
    a.number("y", text.y);
    a.color_or_none("color", text.color);
    a.part("font", text.font, [](auto& sub, auto& x) { font_fields(sub, x); });
}

template <class Archive, class Legend>
void legend_fields(Archive& a, Legend& legend) {
    a.flag("visible", legend.visible);
    a.choice("place", legend.place, place_words);
    a.number("x", legend.x);
    a.number("y", legend.y);
    a.part("font", legend.font, [](auto& sub, auto& x) { font_fields(sub, x); });
}

template <class Archive, class Colors>
void color_fields(Archive& a, Colors& colors) {
    a.color("sheet", colors.sheet);
    a.color("area", colors.area);
    a.color("legend", colors.legend);
    a.color("axes", colors.axes);
    a.color("grid", colors.grid);
    a.color("labels", colors.labels);
    a.color("text", colors.text);
    a.number("grid_alpha", colors.grid_alpha);
    a.flag("black", colors.black);
}

// Everything but the lists of series and texts, which go by their numbers.
template <class Archive, class Sheet>
void sheet_fields(Archive& a, Sheet& sheet) {
    a.flag("interchanged", sheet.Interchanged);
    a.part("header", sheet.header, [](auto& sub, auto& x) { text_fields(sub, x); });
    a.part("footer", sheet.footer, [](auto& sub, auto& x) { text_fields(sub, x); });
    a.part("axes", sheet, [](auto& axes, auto& all) {
        axes.part("x", all, [](auto& sub, auto& x) {
            sub.text("title", x.diagram.XTitle);
            sub.limits(x.diagram.range.XMin, x.diagram.range.XMax);
            axis_fields(sub, x.x);
        });
        axes.part("y", all, [](auto& sub, auto& x) {
            sub.text("title", x.diagram.YTitle);
            sub.limits(x.diagram.range.YMin, x.diagram.range.YMax);
            axis_fields(sub, x.y);
        });
        axes.part("y2", all.y2, [](auto& sub, auto& x) { axis_fields(sub, x); });
    });
    a.part("legend", sheet.legend, [](auto& sub, auto& x) { legend_fields(sub, x); });
    a.part("colors", sheet.colors, [](auto& sub, auto& x) { color_fields(sub, x); });
}

}  // namespace quom
