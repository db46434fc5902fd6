#include "diagrams/graph_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "diagrams/axis_texts.h"
#include "diagrams/ticks.h"

namespace quom {
namespace {

struct MagnitudeMask {
    double below;
    std::string_view mask;
};
constexpr auto mouse_masks = std::to_array<MagnitudeMask>(
    {{10, "####0.00###"}, {1000, "##0.00##"}, {1e4, "###0.00##"}, {1e6, "######0.00##"}});
constexpr std::string_view largest_mask = "#######.00";
constexpr double least_masked = 1e-4;  // smaller numbers would be shown as 0

// Text before and behind a number, in own units and reduced.
struct ReadoutText {
    AxisQuantity quantity;
    std::string_view before, reduced;
};
constexpr auto readouts = std::to_array<ReadoutText>({{AxisQuantity::v, "v = ", "v(red) = "},
                                                      {AxisQuantity::p, "p = ", "p(red) = "},
                                                      {AxisQuantity::T, " T = ", " T(red) = "}});

std::string axis_readout(AxisQuantity quantity, std::string_view other, const Units& units, double value) {
    const bool reduced = units.VolumeMode == reduced_volume;
    const auto row = std::ranges::find(readouts, quantity, &ReadoutText::quantity);
    std::string text(other);
    if (row != readouts.end())
        text = reduced ? row->reduced : row->before;
    else if (!axis_symbol(quantity).empty())
        text = std::string(axis_symbol(quantity)) + " = ";
    const std::string_view unit = axis_unit(quantity, units);
    const bool with_unit = !unit.empty() && !(reduced && row != readouts.end());
    return text + mouse_number(value) + (with_unit ? " " : "") + std::string(with_unit ? unit : "");
}

std::string hidden_text(std::int16_t kind, float value) {
    constexpr auto texts = std::to_array<std::pair<std::int16_t, std::string_view>>(
        {{par_T, " T/K = "}, {par_p, " p/kPa= "}, {par_v, "   v = "}, {par_fraction, " eta(V) = "}});
    const auto found = std::ranges::find(texts, kind, &std::pair<std::int16_t, std::string_view>::first);
    if (found == texts.end()) return "";
    return std::string(found->second) + mouse_number(static_cast<double>(value));
}

// Share of the way from low to high.
std::optional<double> share(double value, double low, double high, bool log) {
    if (log && !(value > 0.0 && low > 0.0 && high > 0.0)) return std::nullopt;
    const double part = log ? std::log(value / low) / std::log(high / low) : (value - low) / (high - low);
    return std::isfinite(part) ? std::optional(part) : std::nullopt;
}

}  // namespace

bool inside(const CurveRange& range, const SheetPoint& point) {
    return point.X > range.XMin && point.X < range.XMax && point.Y > range.YMin && point.Y < range.YMax;
}

CurveRange interchanged(const CurveRange& range) {
    return {.XMin = range.YMin, .YMin = range.XMin, .XMax = range.YMax, .YMax = range.XMax};
}

CurveRange shown_range(const GraphDocument& sheet) {
    return sheet.Interchanged ? interchanged(sheet.diagram.range) : sheet.diagram.range;
}

SheetPoint shown_point(const GraphDocument& sheet, const SheetPoint& point) {
    return sheet.Interchanged ? SheetPoint{point.Y, point.X} : point;
}

const AxisDesign& shown_x(const GraphDocument& sheet) { return sheet.Interchanged ? sheet.y : sheet.x; }
const AxisDesign& shown_y(const GraphDocument& sheet) { return sheet.Interchanged ? sheet.x : sheet.y; }
AxisDesign& shown_x(GraphDocument& sheet) { return sheet.Interchanged ? sheet.y : sheet.x; }
AxisDesign& shown_y(GraphDocument& sheet) { return sheet.Interchanged ? sheet.x : sheet.y; }

const std::string& shown_x_title(const GraphDocument& sheet) {
    return sheet.Interchanged ? sheet.diagram.YTitle : sheet.diagram.XTitle;
}
const std::string& shown_y_title(const GraphDocument& sheet) {
    return sheet.Interchanged ? sheet.diagram.XTitle : sheet.diagram.YTitle;
}

std::optional<Message> set_coordinates(GraphDocument& sheet, const CurveRange& shown, LimitsIn where) {
    const auto as_double = [](float x) { return static_cast<double>(x); };
    for (const auto& [low, high] : {std::pair(shown.XMin, shown.XMax), std::pair(shown.YMin, shown.YMax)})
        if (auto refused = limits_refusal(as_double(low), as_double(high), where)) return refused;
    sheet.diagram.range = sheet.Interchanged ? interchanged(shown) : shown;
    return std::nullopt;
}

bool zoom(GraphDocument& sheet, const CurveRange& shown) {
    return !set_coordinates(sheet, shown, LimitsIn::coordinates);
}

void zoom_reset(GraphDocument& sheet) { sheet.diagram.range = sheet.diagram.initial; }

void cmdChangeXY(GraphDocument& sheet) { sheet.Interchanged = !sheet.Interchanged; }

std::string_view interchange_hint(const GraphDocument& sheet) {
    return sheet.Interchanged ? "interchanging of the axes (Note: in the changed state there are restricted "
                                "possibilities for designing)"
                              : " interchanging x- and y-axis ";
}

std::string mouse_number(double value) {
    if (value != 0.0 && std::abs(value) < least_masked) return digitsNum(value, 4);
    for (const MagnitudeMask& row : mouse_masks)
        if (std::abs(value) < row.below) return formatMask(value, row.mask);
    return formatMask(value, largest_mask);
}

MouseTexts mouse_texts(const GraphDocument& sheet, const Units& units, double x, double y) {
    const KindInfo& kind = kind_info(sheet.diagram.kind);
    const AxisQuantity of_x = sheet.Interchanged ? kind.y : kind.x,
                       of_y = sheet.Interchanged ? kind.x : kind.y;
    return {axis_readout(of_x, "x = ", units, x), axis_readout(of_y, "y = ", units, y)};
}

std::optional<Pixel> pixel_of(const GraphDocument& sheet, const SheetArea& area, const SheetPoint& shown) {
    const CurveRange range = shown_range(sheet);
    const auto at = [](float value, float low, float high, bool log) {
        const double end = static_cast<double>(high), wanted = static_cast<double>(low);
        // Drawn logarithmic only where it can be, from a limit above 0.
        const double first = log ? log_low(wanted, end) : wanted;
        const bool is_log = log && first > 0.0 && first < end;
        return share(static_cast<double>(value), is_log ? first : wanted, end, is_log);
    };
    const auto x = at(shown.X, range.XMin, range.XMax, shown_x(sheet).log);
    const auto y = at(shown.Y, range.YMin, range.YMax, shown_y(sheet).log);
    if (!x || !y) return std::nullopt;
    return Pixel{*x * area.width, (1.0 - *y) * area.height};
}

std::optional<PointRef> nearest_point(const GraphDocument& sheet, const SheetArea& area, const Pixel& mouse,
                                      double tolerance) {
    std::optional<PointRef> nearest;
    double least = tolerance;
    const auto search = [&](const Series& series, bool of_set, int slot) {
        for (std::size_t i = 0; i < series.points.size(); ++i) {
            const auto at = pixel_of(sheet, area, shown_point(sheet, series.points[i]));
            if (!at || at->x < 0 || at->x > area.width || at->y < 0 || at->y > area.height) continue;
            const double distance = std::hypot(at->x - mouse.x, at->y - mouse.y);
            if (distance > least || (nearest && distance == least)) continue;
            least = distance;
            nearest = {of_set, slot, static_cast<int>(i) + 1};
        }
    };
    for (int slot = 1; slot <= CurveSlots; ++slot) search(sheet.curve(slot).series, false, slot);
    for (int set = 1; set <= PointSlots; ++set) search(sheet.set(set).series, true, set);
    return nearest;
}

std::string point_text(const GraphDocument& sheet, const PointRef& ref) {
    const auto index = static_cast<std::size_t>(ref.point - 1);
    const Series& series = ref.of_set ? sheet.set(ref.slot).series : sheet.curve(ref.slot).series;
    const SheetPoint at = shown_point(sheet, series.points[index]);
    const std::string x = mouse_number(static_cast<double>(at.X)),
                      y = mouse_number(static_cast<double>(at.Y));
    if (ref.of_set) return "P." + genNum(ref.slot) + " X = " + x + " Y = " + y;
    std::string text = "C." + genNum(ref.slot) + " X= " + x + " Y= " + y;
    const CurveSlot& slot = sheet.curve(ref.slot);
    if (index < slot.CurveHidden.size())
        text += hidden_text(slot.Par, slot.CurveHidden[index].Par) +
                hidden_text(slot.Tag, slot.CurveHidden[index].Tag);
    return text;
}

}  // namespace quom
