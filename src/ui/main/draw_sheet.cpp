#include "ui/main/draw_sheet.h"

#include <QApplication>
#include <cstdio>

#include "base/files.h"
#include "diagrams/diagram_file.h"
#include "ui/charts/sheet_picture.h"

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

}  // namespace

int draw_sheet(int argc, char** argv, const CommandLine& line) {
    const Oc2Read read = load_oc2(line.draw, GraphDocument());
    if (!read.sheet) return refused(status_file, read.fault);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const PictureBytes picture =
        sheet_picture_bytes(*read.sheet, extension_of(line.draw_out), line.draw_size);
    if (!picture.fault.empty()) return refused(status_usage, picture.fault);
    const std::string fault = write_file_atomic(
        line.draw_out, {picture.bytes.constData(), static_cast<std::size_t>(picture.bytes.size())});
    return fault.empty() ? 0 : refused(status_file, fault);
}

}  // namespace quom
