// The file of a state chart (.json): UTF-8 JSON with the mark "format": "QUOM-CHART" and "version": 1. It
// holds all that a picture of the chart is drawn from, and the states along its lines in the units of the
// chart.
#pragma once
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "diagrams/state_chart.h"

namespace quom {

inline constexpr std::size_t LargestChartFile = std::size_t{64} << 20;  // bytes

// A chart with the sheet that it is drawn on.
struct ChartFile {
    StateChart chart;
    bool black = false;
};

// The bytes of a chart that exists; of a chart that was read, the same bytes each time.
std::string chart_bytes(const ChartFile& file);

struct ChartRead {
    std::optional<ChartFile> file;
    std::string fault;  // why there is none, with the name of the file and the line or the field
};
// A chart to be drawn: it has neither fluid nor nodes nor span, so that no state can be asked for, and its
// own units are those shown (conversions of 1). Each field has to be there and no other may be; a vertex
// outside the axes, lists of different lengths, a legend that is not that of the lines, a file that is nested
// deeper than 32 levels or larger than 64 MB are faults. Never allocates more than a small multiple of the
// bytes.
ChartRead read_chart(std::string_view bytes, std::string_view name);

// The same with files. Writing returns the fault, empty when good, and leaves no half file.
ChartRead load_chart(const std::string& path);
std::string save_chart(const std::string& path, const ChartFile& file);

// Words of files and of the command line, in the order of the choices.
std::span<const std::string_view> chart_kind_words();       // "ph", "ts", "hs"
std::span<const std::string_view> chart_family_words();     // "x", "v", ..., "limit", "saturation"
std::span<const std::string_view> chart_reference_words();  // "session", "0C", "-40C", "nbp", "triple"

}  // namespace quom
