// How a sheet looks: colours, lines, symbols, fonts, axes, and the presets. Plain values; nothing is drawn
// here.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/messages.h"

namespace quom {

struct Color {
    std::uint8_t r = 0, g = 0, b = 0;
    bool operator==(const Color&) const = default;
};
constexpr Color rgb(std::uint32_t hex) {
    return {static_cast<std::uint8_t>(hex >> 16 & 0xFF), static_cast<std::uint8_t>(hex >> 8 & 0xFF),
            static_cast<std::uint8_t>(hex & 0xFF)};
}
std::string color_text(Color color);                   // "#RRGGBB"
std::optional<Color> color_of(std::string_view text);  // of "#RRGGBB" alone

// The colour of a curve slot, 1 to 24, and of a set of points, 1 to 12: all are 3:1 or more against a white
// and a black sheet, so that a preset leaves them as they are.
Color slot_color(int slot);
inline constexpr std::size_t SlotColors = 24;

// Entries of cmbKStil.
enum class LinePattern { points_only, solid, dotted, dashed, dash_dotted };
std::span<const std::string_view> line_pattern_entries();
// Entries of cmbPunktStil.
enum class Symbol {
    dot,
    box,
    triangle,
    diamond,
    star,
    cross,
    circle,
    square,
    inverted_triangle,
    open_triangle,
    open_diamond,
    open_inverted_triangle,
    hidden
};
std::span<const std::string_view> symbol_entries();

inline constexpr int LeastWidth = 1, LargestWidth = 6;             // entries of the line width
inline constexpr int LeastSymbolSize = 1, LargestSymbolSize = 50;  // pixels
inline constexpr float LeastFont = 4, LargestFont = 96;            // points

struct SeriesStyle {
    LinePattern line = LinePattern::solid;
    int width = 2;
    Color color;
    Symbol symbol = Symbol::dot;
    int symbol_size = 8;
    Color symbol_color;
    bool operator==(const SeriesStyle&) const = default;
};
// Of a new curve in a slot, 1 to 24: the lines of 1 to 8 are solid, 9 to 16 dashed, 17 to 24 dotted, so that
// two like colours differ in their dash.
SeriesStyle new_curve_style(int slot, Color color);
// Of a new set of points, 1 to 12: no line, each of the first six its own symbol.
SeriesStyle new_points_style(int set, Color color);
// Of a mark: a thin dashed line; of a critical point: filled when it is measured, open when calculated.
SeriesStyle mark_line_style(Color color);
SeriesStyle critical_point_style(Color color, bool calculated);

struct Font {
    std::string family{};  // empty: that of the program
    float size = 9;        // points
    bool bold = false, italic = false;
    bool operator==(const Font&) const = default;
};

// Turned by 0, 90, 270 degrees.
enum class TextTurn { horizontal, upwards, downwards };

struct AxisDesign {
    bool log = false;
    bool grid = true;
    int digits = 0;  // significant digits of the numbers, 0 as many as needed
    TextTurn title_turn = TextTurn::horizontal, number_turn = TextTurn::horizontal;
    std::optional<double> origin{};  // where the other axis crosses; none: at the lower limit
    std::optional<double> step{};    // of the numbers; none: chosen for the range
    Font title_font{.size = 10}, number_font{};
    bool operator==(const AxisDesign&) const = default;
};

// A text of the sheet that is moved and designed by itself.
struct SheetText {
    std::string text{};  // lines separated by '\n'
    bool visible = true;
    double x = 0, y = 0;  // of its upper left corner, shares of the width and the height of the sheet
    Font font{};
    std::optional<Color> color{};  // none: that of all texts
    std::string unknown{};         // what a file said of it beyond this, as JSON
    bool operator==(const SheetText&) const = default;
};

enum class LegendPlace { top_right, top_left, bottom_right, bottom_left, free };
struct LegendDesign {
    bool visible = false;
    LegendPlace place = LegendPlace::top_right;
    double x = 0, y = 0;  // of a free one: upper left corner, shares of the area of the axes
    Font font{};
    bool operator==(const LegendDesign&) const = default;
};

struct SheetColors {
    Color sheet, area, legend;  // grounds
    Color axes, grid, labels, text;
    double grid_alpha = 1;
    bool black = false;  // before such a sheet is printed the user is asked
    bool operator==(const SheetColors&) const = default;
};
SheetColors new_sheet_colors();  // ground 0xFBFBFB, dark ink
SheetColors full_black();        // cmdFullBlack
SheetColors full_white();        // cmdFullWhite

// Where limits are typed in: each place refuses in its own words.
enum class LimitsIn { coordinates, coordinates_second, design_tab, design_short };
// Refuses a lower limit that is not below the upper one, and limits that are no single-precision numbers.
std::optional<Message> limits_refusal(double low, double high, LimitsIn where);

// A text as it stands in its editor: with the mark "{END}" behind it; and the text of the editor without it.
std::string text_with_end(std::string_view text);
std::string text_without_end(std::string_view edited);

}  // namespace quom
