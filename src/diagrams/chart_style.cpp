#include "diagrams/chart_style.h"

#include <algorithm>

namespace quom {
namespace {

const std::array line_styles = {
    LineStyle{ChartFamily::x, 0x6A737D, 0xA9B1BA, 0.9, {1.5, 3}},
    LineStyle{ChartFamily::v, 0x00755A, 0x48C79C, 1.0, {9, 4}},
    LineStyle{ChartFamily::h, 0xA85A00, 0xF0A850, 1.0, {9, 3, 1.5, 3}},
    LineStyle{ChartFamily::s, 0x7433B5, 0xC79BFF, 1.0, {9, 3, 1.5, 3}},
    LineStyle{ChartFamily::p, 0x005FC0, 0x6CB0F0, 1.15},
    LineStyle{ChartFamily::T, 0xC0281C, 0xFF7A6B, 1.15},
    LineStyle{ChartFamily::limit, 0x1B1F24, 0xFFFFFF, 1.2},
    LineStyle{ChartFamily::saturation, 0x1B1F24, 0xFFFFFF, 2.2},
};

}  // namespace

std::span<const LineStyle> chart_line_styles() { return line_styles; }

const LineStyle& line_style(ChartFamily family) {
    return *std::find_if(line_styles.begin(), line_styles.end(),
                         [&](const LineStyle& style) { return style.family == family; });
}

}  // namespace quom
