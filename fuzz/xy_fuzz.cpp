// Any bytes as X-Y data, as a file and as rows of a spreadsheet. What is read is written and read again
// alike.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "fitting/xy_file.h"

namespace {

using namespace quom;

void require(bool holds) {
    if (!holds) std::abort();
}

void read_and_write(std::string_view bytes) {
    const XYResult first = read_xy(bytes, "fuzz.XY");
    require(first.file.has_value() == first.fault.empty());
    if (!first.file) {
        require(first.line > 0 && first.fault.starts_with("\"fuzz.XY\", line " + std::to_string(first.line)));
        return;
    }
    require(first.file->points.size() <= bytes.size());
    XYData data;
    data.points = SharedVector<XYPoint>(first.file->points);
    data.comment = first.file->comment;
    for (const char delimiter : {';', ',', '\t'}) {
        const std::string written = xy_bytes(data, delimiter).bytes;
        const XYResult second = read_xy(written, "again.XY");
        require(second.file.has_value() && second.file->points.size() == data.points.size());
        XYData again;
        again.points = SharedVector<XYPoint>(second.file->points);
        again.comment = second.file->comment;
        require(xy_bytes(again, delimiter).bytes == written);
    }
}

void paste(std::string_view text) {
    XYData data;
    require(insert_rows(data, 1, text).empty() == !data.points.empty());
    for (const XYPoint& point : data.points) require(std::isfinite(point.x) && std::isfinite(point.y));
    ExperimentalData set;
    require(insert_rows(set, 1, text).empty() == (data_point_count(set) > 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    read_and_write(bytes);
    paste(bytes);
    return 0;
}
