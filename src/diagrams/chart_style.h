// Colours, widths and dashes of the lines of a chart, for a light and a black sheet.
//
// The colour belongs to the quantity, the dash to the family, so that a chart reads in grey as well. Contrast
// of label texts with their sheet: 4.7:1 and 8.2:1 at least.
#pragma once
#include <array>
#include <cstdint>
#include <span>

#include "diagrams/state_chart.h"

namespace quom {

struct LineStyle {
    ChartFamily family{};
    std::uint32_t light = 0, black = 0;  // 0xRRGGBB
    double width = 1;                    // px
    std::array<double, 4> dash{};        // px on and off, as many as are not 0; none: solid
    std::span<const double> dashes() const {
        std::size_t n = 0;
        while (n < dash.size() && dash[n] > 0.0) ++n;
        return {dash.data(), n};
    }
};
// In the order in which families are drawn.
std::span<const LineStyle> chart_line_styles();
const LineStyle& line_style(ChartFamily family);

// What is not a family: texts, grid, process lines, sizes.
struct SheetStyle {
    std::uint32_t ground, ink, axis, hint, grid_major, grid_minor, process;
    int grid_major_alpha, grid_minor_alpha;  // 0 to 255
};
inline constexpr SheetStyle light_sheet{0xFBFBFB, 0x1B1F24, 0x3C444D, 0x6A737D, 0xDDE1E5,
                                        0xEEF0F2, 0x1B1F24, 255,      255};
inline constexpr SheetStyle black_sheet{0x000000, 0xFFFFFF, 0xFFFFFF, 0xA9B1BA, 0xFFFFFF,
                                        0xFFFFFF, 0xFFD24A, 52,       24};
inline constexpr double label_points = 8.5, header_points = 11, footer_points = 8.5;  // pt
inline constexpr double critical_point_size = 7;                                      // px, ink disc
inline constexpr double process_width = 2.8, process_ground_width = 4.6;              // px
inline constexpr double process_point_size = 7, process_ring_size = 18, process_ring_distance = 17;  // px
inline constexpr double process_arrow_at = 0.55, process_arrow_from = 40;  // share of a leg, px of its length

}  // namespace quom
