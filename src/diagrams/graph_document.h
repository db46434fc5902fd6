// A sheet: everything that a two-dimensional diagram shows, as one value. Windows, pictures and files are
// made from it; what the user does to a sheet are the functions here, in marks.h and in graph_view.h.
//
// Points are kept as the kind of the diagram has them, x before y. Interchanged axes are a view: the flag
// turns what is shown, and what a mouse or a box says comes back through graph_view.h.
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "base/shared_vector.h"
#include "diagrams/curve.h"
#include "diagrams/diagram_setup.h"
#include "diagrams/sheet_design.h"

namespace quom {

inline constexpr int CurveSlots = 24, PointSlots = 12;
inline constexpr std::size_t HiddenPoints = 1200;  // of a curve keep what the mouse shows

// Series of the marks, by the numbers of the chart's first group.
enum MarkSeries : int {
    mark_spare = 25,
    mark_Tcr = 26,
    mark_Ttr = 27,
    mark_TLV = 28,
    mark_pcr = 29,
    mark_pLV = 30,
    mark_pSLV = 31,
    mark_validity_low = mark_pcr,
    mark_validity_high = mark_pLV,  // of a database function
    mark_b = mark_pSLV,
    mark_vcr = 32,
    mark_crit_measured = 33,
    mark_crit_calculated = 34,
};
inline constexpr int FirstMark = mark_spare, LastMark = mark_crit_calculated;
inline constexpr std::size_t MarkSlots = LastMark - FirstMark + 1;

struct SheetPoint {
    float X = 0, Y = 0;
    bool operator==(const SheetPoint&) const = default;
};

struct HiddenValues {
    float Par = 0, Tag = 0;
    bool operator==(const HiddenValues&) const = default;
};

// Text beside a point of its series.
struct SeriesLabel {
    std::string text{};
    bool visible = true;
    int point = 1;          // from 1
    double dx = 0, dy = 0;  // moved by hand [pixels], right and down
    bool operator==(const SeriesLabel&) const = default;
};

struct Series {
    SharedVector<SheetPoint> points{};
    SeriesStyle style{};
    SeriesLabel label{};
    std::string legend{};
    bool in_legend = true;
    std::string unknown{};  // what a file said of it beyond this, as JSON
    bool operator==(const Series&) const = default;
};

struct CurveSlot {
    bool CurveFree = true;
    Series series{};
    SharedVector<HiddenValues> CurveHidden{};     // of the first 1200 points; empty after loading
    std::int16_t Par = par_none, Tag = par_none;  // ParKind of the hidden values
    bool operator==(const CurveSlot&) const = default;
};

struct PointSlot {
    bool PointFree = true;
    Series series{};
    bool operator==(const PointSlot&) const = default;
};

// A line of two points or a symbol of one; none: it is not on the sheet. Its text stands at a place of its
// own.
struct Mark {
    Series series{};
    SheetPoint label_at{};
    bool shown() const { return !series.points.empty(); }
    bool operator==(const Mark&) const = default;
};

// Parameters of the curve drawn last, for marks and overlays; 0 not known.
struct LastParameter {
    double T = 0, p = 0, v = 0;  // [K], [kPa], [m^3/kmol]
    bool operator==(const LastParameter&) const = default;
};

struct GraphDocument {
    DiagramRec diagram{};  // kind, titles of the axes, ranges
    std::array<CurveSlot, CurveSlots> curves{};
    std::array<PointSlot, PointSlots> sets{};
    std::array<Mark, MarkSlots> marks{};
    AxisDesign x{}, y{.title_turn = TextTurn::upwards}, y2{};
    SheetText header{}, footer{};
    std::vector<SheetText> texts{};
    LegendDesign legend{};
    SheetColors colors = new_sheet_colors();
    std::optional<Color> NextColor{};  // picked for the next action; none: that of the slot
    bool Interchanged = false;
    LastParameter last{};
    std::string unknown{};  // what a file said of the sheet beyond this, as JSON
    bool operator==(const GraphDocument&) const = default;

    CurveSlot& curve(int slot) { return curves[static_cast<std::size_t>(slot - 1)]; }
    const CurveSlot& curve(int slot) const { return curves[static_cast<std::size_t>(slot - 1)]; }
    PointSlot& set(int number) { return sets[static_cast<std::size_t>(number - 1)]; }
    const PointSlot& set(int number) const { return sets[static_cast<std::size_t>(number - 1)]; }
    Mark& mark(int number) { return marks[static_cast<std::size_t>(number - FirstMark)]; }
    const Mark& mark(int number) const { return marks[static_cast<std::size_t>(number - FirstMark)]; }
};

// An empty sheet for a diagram, with its heading.
GraphDocument new_sheet(const DiagramRec& diagram);
// " 2D-Diagram, Propane".
std::string sheet_caption(std::string_view substance);

int CurveCount(const GraphDocument& sheet);
int PointCount(const GraphDocument& sheet);
int free_curve_slot(const GraphDocument& sheet);  // the first one, 0 when all are taken
int free_point_slot(const GraphDocument& sheet);
bool is_empty(const GraphDocument& sheet);  // neither curve, set of points nor mark

// Colour of the next curve or set of points; picked by the user, or that of the slot that it will take.
Color next_curve_color(const GraphDocument& sheet);
Color next_points_color(const GraphDocument& sheet);

// What became of a curve or a set of points. slot 0: nothing was added, and the sheet is as it was.
struct Added {
    int slot = 0;
    std::optional<Message> message{};  // why not, or a note
};

// Texts of a curve; the sheet puts its number before them: "C.3 300.00 K".
struct CurveText {
    std::string label, legend;
};
// Puts a curve into the first free slot. The label of slot s stands at point i/1.2 - 0.03 i s (rounded, at
// least 1), i being the last point with X below the upper limit of x, so that the labels of a family stagger.
// A 25th curve is refused; one without points is not added, without a message.
Added AddCurve(GraphDocument& sheet, const CurvePoints& curve, const CurveText& text);

// Where curves and points of other windows come from.
enum class CurveSource { xy_editor, data_editor, fitting, polytropic };
Added cmdExternKurve(GraphDocument& sheet, const CurvePoints& curve, CurveSource source);
enum class PointSource { xy_editor, data_editor, fitting, insertion };
Added cmdExternPoints(GraphDocument& sheet, std::span<const SheetPoint> points, PointSource source);

// Other text of a series in its label and the legend.
void rename_curve(GraphDocument& sheet, int slot, const CurveText& text);
void rename_points(GraphDocument& sheet, int set, const CurveText& text);
// mnuAddLabels, mnuDelLabels: the labels of all curves and sets of points.
void show_labels(GraphDocument& sheet, bool visible);
// mnuAddLegend. Refused while no series has a text for it; mnuDelLegend: off.
std::optional<Message> show_legend(GraphDocument& sheet);
void hide_legend(GraphDocument& sheet);

void delete_curve(GraphDocument& sheet, int slot);  // the others keep their numbers
void delete_points(GraphDocument& sheet, int set);
void delete_all_points(GraphDocument& sheet);
// mnuDelTotal: every slot, mark, label, legend and text; axes, ranges and design stay.
void delete_all(GraphDocument& sheet);

// One point of a curve or of a set, index from 1.
struct PointRef {
    bool of_set = false;
    int slot = 0;
    int point = 0;
    bool operator==(const PointRef&) const = default;
};
// Asked before a single point is deleted.
Message delete_point_question(const GraphDocument& sheet, const PointRef& ref);
// Its hidden values go with it; the last point frees the slot.
void delete_point(GraphDocument& sheet, const PointRef& ref);
Message delete_point_help();

void set_log_x(GraphDocument& sheet, bool on);
void set_log_y(GraphDocument& sheet, bool on);  // y2 follows

}  // namespace quom
