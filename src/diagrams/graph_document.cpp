#include "diagrams/graph_document.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "diagrams/draw_curve.h"
#include "diagrams/graph_view.h"

namespace quom {
namespace {

constexpr auto curve_sources = std::to_array<std::string_view>(
    {"   from X-Y editor", "   from editor for exp. Daten ", "   from Fitting", "   Polytropic"});
constexpr auto point_sources =
    std::to_array<std::string_view>({"   from X-Y-editor  ", "   from editor for exp. data",
                                     "   from Fitting", "   \"Insertion\", Editor for exp. data  "});

template <class Source, std::size_t Size>
std::string source_text(const std::array<std::string_view, Size>& texts, Source source) {
    return std::string(texts[static_cast<std::size_t>(source)]);
}

Message refusal(std::string title, std::string text) {
    return {.title = std::move(title), .text = std::move(text), .kind = MessageKind::warning};
}

Message too_many_sets() {
    return refusal("Execution not possible", "A maximum of " + genNum(PointSlots) +
                                                 " sets of points may be loaded.\n"
                                                 "If necessary, delete the existing measuring points.");
}

std::string numbered(std::string_view letter, int number, const std::string& text) {
    return std::string(letter) + genNum(number) + (text.empty() || text.starts_with(' ') ? "" : " ") + text;
}

CurveText numbered(std::string_view letter, int number, const CurveText& text) {
    return {numbered(letter, number, text.label), numbered(letter, number, text.legend)};
}

template <class Slots, class Free>
int first_free(const Slots& slots, Free is_free) {
    const auto found = std::ranges::find_if(slots, is_free);
    return found == slots.end() ? 0 : static_cast<int>(found - slots.begin()) + 1;
}

template <class Points>
std::vector<SheetPoint> finite_points(const Points& points) {
    std::vector<SheetPoint> kept;
    kept.reserve(points.size());
    for (const auto& point : points)
        if (std::isfinite(point.X) && std::isfinite(point.Y)) kept.push_back({point.X, point.Y});
    return kept;
}

// i/1.2 - 0.03 i s, at least 1.
int label_point(const std::vector<SheetPoint>& points, float XMax, int slot) {
    const auto below = [XMax](const SheetPoint& point) { return point.X < XMax; };
    const auto last = std::ranges::find_if(points.rbegin(), points.rend(), below);
    const double i = static_cast<double>(points.rend() - last);
    return std::max(1, static_cast<int>(round_half_even(i / 1.2 - 0.03 * i * slot)));
}

void take_out(Series& series, int point) {
    auto& points = series.points.edit();
    points.erase(points.begin() + (point - 1));
    if (series.label.point > point) --series.label.point;
    series.label.point = std::clamp(series.label.point, 1, std::max(1, static_cast<int>(points.size())));
}

const Series& series_of(const GraphDocument& sheet, const PointRef& ref) {
    return ref.of_set ? sheet.set(ref.slot).series : sheet.curve(ref.slot).series;
}

}  // namespace

GraphDocument new_sheet(const DiagramRec& diagram) {
    GraphDocument sheet;
    sheet.diagram = diagram;
    sheet.header.text = diagram.title + diagram.TitleSuffix;
    sheet.header.font = {.size = 11, .bold = true};
    return sheet;
}

std::string sheet_caption(std::string_view substance) {
    return std::string(" 2D-Diagram, ").append(substance);
}

int CurveCount(const GraphDocument& sheet) {
    return static_cast<int>(std::ranges::count(sheet.curves, false, &CurveSlot::CurveFree));
}
int PointCount(const GraphDocument& sheet) {
    return static_cast<int>(std::ranges::count(sheet.sets, false, &PointSlot::PointFree));
}
int free_curve_slot(const GraphDocument& sheet) { return first_free(sheet.curves, &CurveSlot::CurveFree); }
int free_point_slot(const GraphDocument& sheet) { return first_free(sheet.sets, &PointSlot::PointFree); }

bool is_empty(const GraphDocument& sheet) {
    return CurveCount(sheet) == 0 && PointCount(sheet) == 0 &&
           std::ranges::none_of(sheet.marks, &Mark::shown);
}

Color next_curve_color(const GraphDocument& sheet) {
    return sheet.NextColor.value_or(slot_color(free_curve_slot(sheet)));
}
Color next_points_color(const GraphDocument& sheet) {
    return sheet.NextColor.value_or(slot_color(free_point_slot(sheet)));
}

Message too_many_curves() {
    return refusal("WARNING", "Maximum " + genNum(CurveSlots) + " curves possible\n\nDelete existing curves");
}

Added AddCurve(GraphDocument& sheet, const CurvePoints& curve, const CurveText& text) {
    const int slot = free_curve_slot(sheet);
    if (slot == 0) return {0, too_many_curves()};
    CurveSlot taken;
    taken.CurveFree = false;
    taken.Par = curve.Par;
    taken.Tag = curve.Tag;
    std::vector<SheetPoint> points = finite_points(curve.points);
    if (points.empty()) return {};
    std::vector<HiddenValues> hidden;
    for (const CurvePoint& point : curve.points) {
        if (hidden.size() == HiddenPoints) break;
        if (std::isfinite(point.X) && std::isfinite(point.Y)) hidden.push_back({point.Par, point.Tag});
    }
    const CurveText texts = numbered("C.", slot, text);
    taken.CurveHidden = std::move(hidden);
    taken.series.style = new_curve_style(slot, next_curve_color(sheet));
    taken.series.label.text = texts.label;
    taken.series.label.point = label_point(points, sheet.diagram.range.XMax, slot);
    taken.series.legend = texts.legend;
    taken.series.points = std::move(points);
    sheet.curve(slot) = std::move(taken);
    sheet.NextColor.reset();
    return {slot, std::nullopt};
}

Added cmdExternKurve(GraphDocument& sheet, const CurvePoints& curve, CurveSource source) {
    const std::string text = source_text(curve_sources, source);
    Added added = AddCurve(sheet, curve, {text, text});
    if (added.message) return added;
    const bool seen = std::ranges::any_of(curve.points, [&](const CurvePoint& point) {
        return inside(sheet.diagram.range, {point.X, point.Y});
    });
    if (!seen)
        added.message = Message{.title = "Note",
                                .text =
                                    "Curve is not within range of the coordinates\n"
                                    "Do enlarge the range of coordinates."};
    return added;
}

Added cmdExternPoints(GraphDocument& sheet, std::span<const SheetPoint> points, PointSource source) {
    const int number = free_point_slot(sheet);
    if (number == 0) return {0, too_many_sets()};
    std::vector<SheetPoint> kept = finite_points(points);
    if (kept.empty()) return {};
    const std::string text = numbered("P.", number, source_text(point_sources, source));
    PointSlot taken;
    taken.PointFree = false;
    taken.series.style = new_points_style(number, next_points_color(sheet));
    taken.series.label.text = text;
    taken.series.label.visible = false;
    taken.series.legend = text;
    taken.series.points = std::move(kept);
    sheet.set(number) = std::move(taken);
    sheet.NextColor.reset();
    return {number, std::nullopt};
}

void rename_curve(GraphDocument& sheet, int slot, const CurveText& text) {
    sheet.curve(slot).series.label.text = text.label;
    sheet.curve(slot).series.legend = text.legend;
}

void rename_points(GraphDocument& sheet, int set, const CurveText& text) {
    sheet.set(set).series.label.text = text.label;
    sheet.set(set).series.legend = text.legend;
}

void show_labels(GraphDocument& sheet, bool visible) {
    for (CurveSlot& slot : sheet.curves) slot.series.label.visible = visible;
    for (PointSlot& slot : sheet.sets) slot.series.label.visible = visible;
}

std::optional<Message> show_legend(GraphDocument& sheet) {
    const auto has_text = [](const auto& slot) {
        return slot.series.in_legend && !slot.series.legend.empty();
    };
    if (std::ranges::none_of(sheet.curves, has_text) && std::ranges::none_of(sheet.sets, has_text))
        return refusal("Execution not possible", "No legend text given\n=> design curve\n=> design points");
    sheet.legend.visible = true;
    return std::nullopt;
}

void hide_legend(GraphDocument& sheet) { sheet.legend.visible = false; }

void delete_curve(GraphDocument& sheet, int slot) { sheet.curve(slot) = CurveSlot(); }
void delete_points(GraphDocument& sheet, int set) { sheet.set(set) = PointSlot(); }
void delete_all_points(GraphDocument& sheet) { sheet.sets = {}; }

void delete_all(GraphDocument& sheet) {
    sheet.curves = {};
    sheet.sets = {};
    sheet.marks = {};
    sheet.texts.clear();
    sheet.legend.visible = false;
    sheet.last = {};
}

Message delete_point_question(const GraphDocument& sheet, const PointRef& ref) {
    const Series& series = series_of(sheet, ref);
    Message question;
    question.buttons = Buttons::yes_no;
    question.default_button = Answer::no;
    question.kind = MessageKind::question;
    const std::string point = genNum(ref.point), slot = genNum(ref.slot);
    if (ref.of_set) {
        question.title = "Delete a single measuring point";
        if (series.points.size() == 1) question.text = "This set of meas. points contains 1 single point. \n";
        question.text += "Point  " + point + " of the pointset #" + slot + "\nReally delete?";
        return question;
    }
    const SheetPoint at = shown_point(sheet, series.points[static_cast<std::size_t>(ref.point - 1)]);
    question.title = "Deleting a single curve point";
    question.text = "Delete point #" + point + " from the curve #" + slot +
                    "\n with the coordinates x = " + genNum(at.X) + ",  y =" + strNum(at.Y) + "\nreally?";
    return question;
}

void delete_point(GraphDocument& sheet, const PointRef& ref) {
    const auto index = static_cast<std::size_t>(ref.point - 1);
    if (ref.point < 1 || index >= series_of(sheet, ref).points.size()) return;
    if (ref.of_set) {
        take_out(sheet.set(ref.slot).series, ref.point);
        if (sheet.set(ref.slot).series.points.empty()) delete_points(sheet, ref.slot);
        return;
    }
    CurveSlot& slot = sheet.curve(ref.slot);
    take_out(slot.series, ref.point);
    if (index < slot.CurveHidden.size()) {
        auto& hidden = slot.CurveHidden.edit();
        hidden.erase(hidden.begin() + (ref.point - 1));
    }
    if (slot.series.points.empty()) delete_curve(sheet, ref.slot);
}

Message delete_point_help() {
    return {.title = "How to delete a single curve point",
            .text =
                "1st) Switch the the curve style from\n     \"Solid curve\" to \"single points\".\n"
                "2nd) Left-Click on the point of the curve\n     to be deleted"};
}

void set_log_x(GraphDocument& sheet, bool on) { sheet.x.log = on; }
void set_log_y(GraphDocument& sheet, bool on) { sheet.y.log = sheet.y2.log = on; }

}  // namespace quom
