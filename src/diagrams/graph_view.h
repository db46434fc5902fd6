// What of a sheet is in sight: ranges, zoom, interchanged axes, and what the mouse is told. "Shown" is what
// the user sees: with interchanged axes shown x is the y of the kind.
#pragma once
#include <optional>
#include <string>

#include "diagrams/graph_document.h"
#include "quantities/units.h"

namespace quom {

// Strictly inside all four limits.
bool inside(const CurveRange& range, const SheetPoint& point);
CurveRange interchanged(const CurveRange& range);

CurveRange shown_range(const GraphDocument& sheet);
SheetPoint shown_point(const GraphDocument& sheet, const SheetPoint& point);
const AxisDesign& shown_x(const GraphDocument& sheet);
const AxisDesign& shown_y(const GraphDocument& sheet);
AxisDesign& shown_x(GraphDocument& sheet);
AxisDesign& shown_y(GraphDocument& sheet);
const std::string& shown_x_title(const GraphDocument& sheet);
const std::string& shown_y_title(const GraphDocument& sheet);

// mnuCoord and the design: other limits, as shown. Refused in the words of the place; curves stay as they
// are, and so does the range that a reset returns to.
std::optional<Message> set_coordinates(GraphDocument& sheet, const CurveRange& shown, LimitsIn where);
// Refuses a logarithmic axis that would end at 0 or below.
std::optional<Message> log_refusal(bool log, double high);
// The limits that a rubber band left, as shown. False, and nothing changes: they are no range.
bool zoom(GraphDocument& sheet, const CurveRange& shown);
void zoom_reset(GraphDocument& sheet);

// cmdChangeXY; its tool tip, and its colour while interchanged.
void cmdChangeXY(GraphDocument& sheet);
std::string_view interchange_hint(const GraphDocument& sheet);
inline constexpr Color interchanged_button = {255, 180, 180};

// A number under the mouse, by its magnitude: "0.05", "316.25", "4247.66".
std::string mouse_number(double value);

// The place of the mouse with symbol and unit of each axis: "v = 0.05 m^3/kmol", " T(red) = 0.9"; "x = ", "y
// = " where the diagram has no quantities.
struct MouseTexts {
    std::string x, y;
};
MouseTexts mouse_texts(const GraphDocument& sheet, const Units& units, double shown_x, double shown_y);

// The area of the axes in pixels, from its upper left corner, and where a shown point lies in it.
struct SheetArea {
    double width = 0, height = 0;
};
struct Pixel {
    double x = 0, y = 0;
};
// None where an axis is drawn logarithmic and the point is not above 0; such an axis begins above 0
// (log_low).
std::optional<Pixel> pixel_of(const GraphDocument& sheet, const SheetArea& area, const SheetPoint& shown);

// The point in sight next to the mouse, within so many pixels. Of points equally near that of the curve
// before that of a set, and the lower number before the higher.
std::optional<PointRef> nearest_point(const GraphDocument& sheet, const SheetArea& area, const Pixel& mouse,
                                      double tolerance = 6);
// "C.3 X= 0.05 Y= 4247.66 T/K = 300.0": coordinates as shown, then the hidden values; "P.1 X = .. Y = ..".
std::string point_text(const GraphDocument& sheet, const PointRef& ref);

}  // namespace quom
