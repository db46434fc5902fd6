#include "ui/main/draw_sheet.h"

#include <QApplication>
#include <cstdio>

#include "base/files.h"
#include "diagrams/chart_file.h"
#include "diagrams/diagram_file.h"
#include "ui/charts/sheet_picture.h"
#include "ui/charts/state_chart_picture.h"

namespace quom {

namespace {

constexpr int status_usage = 2, status_file = 3;

int refused(int status, const std::string& sentence) {
    std::fprintf(stderr, "quom: %s\n", sentence.c_str());
    return status;
}

std::string extension_of(const std::string& path) {
    const std::string name = name_part(path);
    const std::size_t point = name.rfind('.');
    return point == std::string::npos ? std::string() : name.substr(point);
}

// What the file holds: a sheet, or a state chart, which says so at its beginning.
struct DrawnFile {
    std::optional<GraphDocument> sheet{};
    std::optional<ChartFile> chart{};
    std::string fault{};
};

DrawnFile read_drawn(const std::string& path) {
    constexpr std::size_t Beginning = 64;
    const FileBytes file = read_file(path, LargestChartFile);
    if (!file.bytes) return {.fault = file.fault};
    if (std::string_view(*file.bytes).substr(0, Beginning).find("\"QUOM-CHART\"") == std::string::npos) {
        Oc2Read read = load_oc2(path, GraphDocument());
        return {.sheet = std::move(read.sheet), .fault = std::move(read.fault)};
    }
    ChartRead read = read_chart(*file.bytes, name_part(path));
    return {.chart = std::move(read.file), .fault = std::move(read.fault)};
}

// A chart has a size of its own, which its resolution may go with.
PictureSize chart_size(const CommandLine& line) {
    if (line.draw_size_given) return line.draw_size;
    return {.width = state_chart_size.width, .height = state_chart_size.height, .dpi = line.draw_size.dpi};
}

PictureBytes picture_of(const DrawnFile& drawn, const CommandLine& line) {
    const std::string format = extension_of(line.draw_out);
    if (!drawn.chart) return sheet_picture_bytes(*drawn.sheet, format, line.draw_size);
    const bool black = drawn.chart->black || line.draw_black;
    return state_chart_bytes(drawn.chart->chart, format, chart_size(line), black);
}

}  // namespace

int draw_sheet(int argc, char** argv, const CommandLine& line) {
    const DrawnFile drawn = read_drawn(line.draw);
    if (!drawn.sheet && !drawn.chart) return refused(status_file, drawn.fault);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const DisplayGuard quiet;  // nothing but our own sentence
    const QApplication app(argc, argv);
    const PictureBytes picture = picture_of(drawn, line);
    if (!picture.fault.empty()) return refused(status_usage, picture.fault);
    const std::string fault = write_file_atomic(
        line.draw_out, {picture.bytes.constData(), static_cast<std::size_t>(picture.bytes.size())});
    return fault.empty() ? 0 : refused(status_file, fault);
}

}  // namespace quom
