// Any bytes as a diagram file: a sheet that is written and read again as the same, to the byte, and that can
// be worked on; or a fault that names the file, and nothing else.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "diagrams/diagram_file.h"
#include "diagrams/graph_view.h"

namespace {

using namespace quom;

void require(bool holds) {
    if (!holds) std::abort();
}

std::size_t points_of(const GraphDocument& sheet) {
    std::size_t count = 0;
    for (const CurveSlot& slot : sheet.curves) {
        count += slot.series.points.size();
        require(slot.CurveFree == slot.series.points.empty());
        for (const SheetPoint& point : slot.series.points) require(std::isfinite(point.X + 0 * point.Y));
    }
    for (const PointSlot& slot : sheet.sets) count += slot.series.points.size();
    return count;
}

void work_on(GraphDocument sheet) {
    const SheetArea area{.width = 800, .height = 600};
    while (const auto ref = nearest_point(sheet, area, {400, 300}, 1e4)) {
        require(!point_text(sheet, *ref).empty() && !delete_point_question(sheet, *ref).text.empty());
        const std::size_t before = points_of(sheet);
        if (before > 100) break;
        delete_point(sheet, *ref);
        require(points_of(sheet) == before - 1);
    }
    cmdChangeXY(sheet);
    delete_all(sheet);
    require(is_empty(sheet) && CurveCount(sheet) == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    DiagramRec diagram;
    diagram.range = diagram.initial = {.XMin = 0, .YMin = 0, .XMax = 1, .YMax = 1};
    const GraphDocument before = new_sheet(diagram);
    const Oc2Read first = read_oc2(bytes, "fuzz.oc2", before);
    require(first.sheet.has_value() == first.fault.empty());
    if (!first.sheet) {
        require(first.fault.starts_with("\"fuzz.oc2\": "));
        return 0;
    }
    require(points_of(*first.sheet) <= size);
    const std::string written = oc2_bytes(*first.sheet);
    const Oc2Read second = read_oc2(written, "again.oc2", before);
    require(second.sheet.has_value() && *second.sheet == *first.sheet && oc2_bytes(*second.sheet) == written);
    work_on(*first.sheet);
    return 0;
}
