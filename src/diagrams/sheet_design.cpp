#include "diagrams/sheet_design.h"

#include <algorithm>
#include <cmath>

namespace quom {
namespace {

// clang-format off
constexpr std::array<std::uint32_t, SlotColors> slot_colors = {
    0x0069D2, 0xE16900, 0xA55A87, 0xD2002D, 0x0096B4, 0x00785A, 0xA578FF, 0x87965A,
    0x5A5AE1, 0xB48700, 0xA587B4, 0xC30096, 0x0F96F0, 0xFF4B69, 0x2D965A, 0xC33C00,
    0x009696, 0x96960F, 0xD20F69, 0x964BC3, 0x1E781E, 0x696969, 0xD27869, 0x6987FF};
// clang-format on

constexpr auto line_patterns = std::to_array<std::string_view>(
    {"single points only", "curve solid", "curve dotted", "curve dashed", "Curve dash-dotted"});
constexpr auto symbols = std::to_array<std::string_view>(
    {"dot", "box", "triangle", "diamond", "star", "cross", "circle", "square", "inverted triangle",
     "open triangle", "open Diamond", "open inverted triangle", "hide the point(s)"});
constexpr auto new_symbols =
    std::to_array<Symbol>({Symbol::circle, Symbol::box, Symbol::triangle, Symbol::open_diamond, Symbol::cross,
                           Symbol::inverted_triangle});

constexpr Color black = rgb(0x000000), white = rgb(0xFFFFFF);
constexpr Color ink = rgb(0x1B1F24), axis_ink = rgb(0x3C444D), grid_ink = rgb(0xDDE1E5);

constexpr std::string_view end_mark = "{END}";

std::string_view limits_text(LimitsIn where) {
    constexpr auto texts = std::to_array<std::string_view>(
        {"lower limit has to smaller than upper limit", "Lower limit has to smaller than upper limit.",
         "Lower limit has to be smaller than upper limit.", "lower limit must be smaller than upper limit!"});
    return texts[static_cast<std::size_t>(where)];
}

std::size_t place_in_table(int number, std::size_t size) {
    return static_cast<std::size_t>(std::max(number - 1, 0)) % size;
}

}  // namespace

std::string color_text(Color color) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "#";
    for (const unsigned part : {color.r, color.g, color.b}) {
        text += digits[part / 16];
        text += digits[part % 16];
    }
    return text;
}

std::optional<Color> color_of(std::string_view text) {
    if (text.size() != 7 || text[0] != '#') return std::nullopt;
    std::uint32_t hex = 0;
    for (const char c : text.substr(1)) {
        const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
        const std::size_t digit = std::string_view("0123456789abcdef").find(lower);
        if (digit == std::string_view::npos) return std::nullopt;
        hex = hex << 4 | static_cast<std::uint32_t>(digit);
    }
    return rgb(hex);
}

Color slot_color(int slot) { return rgb(slot_colors[place_in_table(slot, SlotColors)]); }

std::span<const std::string_view> line_pattern_entries() { return line_patterns; }
std::span<const std::string_view> symbol_entries() { return symbols; }

SeriesStyle new_curve_style(int slot, Color color) {
    const LinePattern line = slot <= 8    ? LinePattern::solid
                             : slot <= 16 ? LinePattern::dashed
                                          : LinePattern::dotted;
    return {.line = line, .color = color, .symbol_color = color};
}

SeriesStyle new_points_style(int set, Color color) {
    return {.line = LinePattern::points_only,
            .color = color,
            .symbol = new_symbols[place_in_table(set, new_symbols.size())],
            .symbol_color = color};
}

SeriesStyle mark_line_style(Color color) {
    return {.line = LinePattern::dashed,
            .width = 1,
            .color = color,
            .symbol = Symbol::hidden,
            .symbol_color = color};
}

SeriesStyle critical_point_style(Color color, bool calculated) {
    return {.line = LinePattern::points_only,
            .color = color,
            .symbol = calculated ? Symbol::open_diamond : Symbol::diamond,
            .symbol_size = 9,
            .symbol_color = color};
}

SheetColors new_sheet_colors() {
    constexpr Color paper = rgb(0xFBFBFB);
    return {.sheet = paper,
            .area = paper,
            .legend = paper,
            .axes = axis_ink,
            .grid = grid_ink,
            .labels = ink,
            .text = ink};
}

SheetColors full_black() {
    return {.sheet = black,
            .area = black,
            .legend = black,
            .axes = white,
            .grid = white,
            .labels = white,
            .text = white,
            .grid_alpha = 52.0 / 255.0,
            .black = true};
}

SheetColors full_white() {
    return {.sheet = white,
            .area = white,
            .legend = white,
            .axes = black,
            .grid = black,
            .labels = black,
            .text = black,
            .grid_alpha = 52.0 / 255.0};
}

std::optional<Message> limits_refusal(double low, double high, LimitsIn where) {
    const float least = static_cast<float>(low), largest = static_cast<float>(high);
    if (std::isfinite(least) && std::isfinite(largest) && least < largest) return std::nullopt;
    return Message{
        .title = "INPUT ERROR", .text = std::string(limits_text(where)), .kind = MessageKind::warning};
}

std::string text_with_end(std::string_view text) { return std::string(text) += end_mark; }

std::string text_without_end(std::string_view edited) {
    return std::string(edited.substr(0, edited.find(end_mark)));
}

}  // namespace quom
