// Any bytes as a chart: one that is written and read again as the same, to the byte, and whose lines and
// labels lie in the picture; or a fault that names the file, and nothing else.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "diagrams/chart_file.h"
#include "diagrams/chart_labels.h"
#include "diagrams/chart_texts.h"

namespace {

using namespace quom;

void require(bool holds) {
    if (!holds) std::abort();
}

void draw(const StateChart& chart) {
    constexpr double width = 600, height = 400, rounding = 1e-6;
    const auto measure = [](const std::string& text) {
        return TextSize{6.0 * static_cast<double>(text.size()), 12.0};
    };
    const LabelInput input = chart_label_input(chart, width, height, measure);
    for (const LabelLine& line : input.lines)
        for (const PixelPoint& point : line.points)
            require(std::isnan(point.x) || (point.x > -rounding && point.x < width + rounding &&
                                            point.y > -rounding && point.y < height + rounding));
    require(place_labels(input).size() <= input.lines.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const ChartRead first = read_chart(bytes, "fuzz.json");
    require(first.file.has_value() == first.fault.empty());
    if (!first.file) {
        require(first.fault.starts_with("\"fuzz.json\": "));
        return 0;
    }
    const std::string written = chart_bytes(*first.file);
    const ChartRead second = read_chart(written, "again.json");
    require(second.file.has_value() && chart_bytes(*second.file) == written);
    draw(first.file->chart);
    return 0;
}
