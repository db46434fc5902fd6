#include "forms/sheet_form.h"

#include <algorithm>
#include <cmath>

#include "base/files.h"
#include "base/number_text.h"
#include "diagrams/diagram_file.h"
#include "diagrams/graph_view.h"
#include "diagrams/unload_question.h"
#include "forms/active_points.h"
#include "forms/diagram_form.h"

namespace quom {
namespace {

using I = Insertion;
using Q = AxisQuantity;

// clang-format off
constexpr InsertEntry entries[] = {
    {I::T, "mnuMarkT", "T Marker (triple point, normal boil. point, crit. point)"},
    {I::p, "mnuMarkP", "p Marker (triple point, crit. point)"},
    {I::v, "mnuMarkV", "V Markrt (V(cr) calculated)"},
    {I::b, "mnuMarkB", "Marker v = B"},
    {I::crit_measured, "mnuMarkCritPointEx", "Critical point (experimental)"},
    {I::crit_calculated, "mnuMarkCritPointCalc", "Critical point (calculated)"},
    {I::T, "", ""},
    {I::coexistence, "mnuMarkKoex", "V-L coexistence curve (projection)"},
    {I::isohygric, "mnuMarkIsohygre", "Line of constant vapor fraction \"Isohygric\" (= Projection L - V)"},
    {I::inversion, "mnuMarkInversion", "Inversion Curve (Joule-Thomson effect)"},
    {I::loop, "mnuMarkSKurve", "instable/metastable region"},
    {I::tie_line, "mnuMarkKonnode", "Tie line Vapor-Liquid"},
    {I::bisector, "mnuMarkHalbierende", "rho-bisection line (CAILLETET/MATHIAS)"},
    {I::T, "", ""},
    {I::legend, "mnuAddLegend", "Legend"},
    {I::labels, "mnuAddLabels", "all curve labels"},
    {I::text, "mnuAddText", "additional text"},
    {I::T, "", ""},
    {I::process_line, "mnuAddProcessLine_0", "Process line: Straight Line (x1,y1)-(x2,y2)"},
    {I::process_line, "mnuAddProcessLine_1", "Process line: Isothermal"},
    {I::process_line, "mnuAddProcessLine_2", "Process line: Isobaric"},
    {I::process_line, "mnuAddProcessLine_3", "Process line: Isochoric"},
    {I::process_line, "mnuAddProcessLine_4", "Process line: Isentropic (=adiabat.-reversible)"},
    {I::process_line, "mnuAddProcessLine_5", "Process line: Isenthalpic"},
    {I::process_line, "mnuAddProcessLine_6", "Process line: Polytropic"},
    {I::T, "", ""},
    {I::measured_points, "mnuAddPunkte", "Measuring points from the editot for exp. data (with data check)"},
    {I::xy_data, "mnuManuXY", "poin(s)/ curve from the XY editor"},
};
// clang-format on

struct OverlayEntry {
    Insertion what;
    Overlay overlay;
};
constexpr OverlayEntry overlays[] = {{I::coexistence, Overlay::coexistence},
                                     {I::inversion, Overlay::inversion},
                                     {I::loop, Overlay::loop},
                                     {I::tie_line, Overlay::tie_line},
                                     {I::bisector, Overlay::bisector}};

bool shows(const KindInfo& kind, Q quantity) { return kind.x == quantity || kind.y == quantity; }

bool has_measured(const Session& session) { return first_active_point(session.document.exp) > 0; }

// Active points of the X-Y data, as singles.
std::vector<SheetPoint> xy_points(const Session& session) {
    std::vector<SheetPoint> points;
    for (const XYPoint& point : session.document.xy.points)
        if (point.Aus == 0) points.push_back({point.x, point.y});
    return points;
}

CurvePoints as_curve(std::span<const SheetPoint> points) {
    CurvePoints curve;
    for (const SheetPoint& point : points) curve.points.push_back({point.X, point.Y, 0.0F, 0.0F});
    return curve;
}

// Before any curve is drawn the section is that of the parameter that is offered.
Added add_measured(Session& session) {
    DiagramSession& d = session.diagram;
    GraphDocument& sheet = *d.sheet;
    const LastParameter last = sheet.last;
    if (last == LastParameter{}) sheet.last = {d.state.T, d.state.p, d.state.v};
    Added added = mnuAddPunkte(sheet, *session.fluid, d.units, measured_points(session));
    sheet.last = last;
    return added;
}

Added add_xy(GraphDocument& sheet, std::span<const SheetPoint> points, bool curve) {
    return curve ? cmdExternKurve(sheet, as_curve(points), CurveSource::xy_editor)
                 : cmdExternPoints(sheet, points, PointSource::xy_editor);
}

std::optional<Message> set_mark(Session& session, Insertion what) {
    GraphDocument& sheet = *session.diagram.sheet;
    const Fluid& fluid = *session.fluid;
    const Units& units = session.diagram.units;
    switch (what) {
        case I::T:
            mark_T(sheet, fluid, units, next_curve(session).options);
            break;
        case I::p:
            mark_p(sheet, fluid, units);
            break;
        case I::v:
            mark_v(sheet, fluid, units);
            break;
        case I::b:
            mark_b_line(sheet, fluid, units);
            break;
        case I::crit_measured:
        case I::crit_calculated:
            mark_critical_point(sheet, fluid, units, what == I::crit_calculated);
            break;
        case I::legend:
            return show_legend(sheet);
        case I::labels:
            show_labels(sheet, true);
            break;
        default:
            break;
    }
    return std::nullopt;
}

bool any_label_shown(const GraphDocument& sheet) {
    const auto labelled = [](const Series& series) {
        return series.label.visible && !series.label.text.empty() && !series.points.empty();
    };
    return std::ranges::any_of(sheet.curves, labelled, &CurveSlot::series) ||
           std::ranges::any_of(sheet.sets, labelled, &PointSlot::series);
}

bool any_mark_label(const GraphDocument& sheet) {
    return std::ranges::any_of(sheet.marks, [](const Mark& mark) {
        return mark.shown() && mark.series.label.visible && !mark.series.label.text.empty();
    });
}

// Limits around the points, a twentieth of the span wider on each side.
std::pair<float, float> limits_around(std::span<const SheetPoint> points, float SheetPoint::*at) {
    const auto [least, most] = std::ranges::minmax(points, {}, at);
    const float span = most.*at - least.*at;
    const float margin = span > 0.0F ? span / 20.0F : std::max(std::abs(most.*at) / 20.0F, 1e-6F);
    return {least.*at - margin, most.*at + margin};
}

struct GraphTexts {
    ControlGraph graph;
    std::string_view title, x, y;
};
constexpr GraphTexts graph_texts[] = {
    {ControlGraph::y_T, "experimental points y(T)", "T / K", "y"},
    {ControlGraph::ln_p, "Experimental points ln{p} = f(1/T)", "1/ (T/K)", "ln {p}"},
    {ControlGraph::xy_points, "Points x - y", "x", "y"},
    {ControlGraph::xy_curve, "Points x - y", "x", "y"},
};

struct GraphPoints {
    std::vector<SheetPoint> points{};
    std::optional<Message> refusal{};
};

GraphPoints graph_points(const Session& session, ControlGraph graph) {
    GraphPoints found;
    if (graph == ControlGraph::xy_points || graph == ControlGraph::xy_curve) {
        found.points = xy_points(session);
        if (found.points.empty()) found.refusal = refusal_message("at least one active point required!");
        return found;
    }
    std::vector<DataPair> pairs;
    if (graph == ControlGraph::ln_p) {
        LnPPoints ln_p = ln_p_points(session.document.exp);
        found.refusal = ln_p.refusal;
        pairs = std::move(ln_p.pairs);
    } else {
        pairs = T_y_points(session.document.exp);
    }
    for (const DataPair& pair : pairs)
        found.points.push_back({static_cast<float>(pair.x), static_cast<float>(pair.y)});
    if (!found.refusal && found.points.empty()) found.refusal = refusal_message("no data available ");
    return found;
}

// The sheet is one of the same graph; its points are shown anew.
bool is_control_graph(const GraphDocument& sheet, const GraphTexts& texts) {
    return sheet.diagram.kind == Kind::none && sheet.diagram.title == texts.title;
}

std::string shown_number(float x) { return genNum(x); }

}  // namespace

std::vector<MeasuredPoint> measured_points(const Session& session) {
    std::vector<MeasuredPoint> measured;
    const auto& points = session.document.exp.points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const TpRhoPoint& x = points[i];
        if (x.Aus != 0) continue;
        measured.push_back({.T = x.T,
                            .p = x.p,
                            .rhoV = static_cast<double>(x.rhoV),
                            .rhoL = static_cast<double>(x.rhoL),
                            .hLV = static_cast<double>(x.HLV),
                            .cp = static_cast<double>(x.cp)});
    }
    return measured;
}

std::span<const InsertEntry> insert_entries() { return entries; }

bool can_insert(const Session& session, Insertion what) {
    const DiagramSession& d = session.diagram;
    if (!d.sheet) return false;
    const GraphDocument& sheet = *d.sheet;
    const KindInfo& kind = kind_info(sheet.diagram.kind);
    const auto* overlay = std::ranges::find(overlays, what, &OverlayEntry::what);
    if (overlay != std::end(overlays)) return has_overlay(kind.kind, overlay->overlay);
    switch (what) {
        case I::T:
            return shows(kind, Q::T) || shows(kind, Q::inverse_T);
        case I::p:
            return shows(kind, Q::p);
        case I::v:
            return shows(kind, Q::v) || shows(kind, Q::rho);
        case I::b:
            return has_b_line(kind.kind);
        case I::crit_measured:
        case I::crit_calculated:
            return has_critical_mark(kind.kind);
        case I::isohygric:
        case I::process_line:
            return false;
        case I::measured_points:
            return kind.kind != Kind::none && has_measured(session);
        case I::xy_data:
            return !xy_points(session).empty();
        default:
            return true;
    }
}

void insert(Session& session, Insertion what, bool xy_curve, Messages& messages) {
    if (!can_insert(session, what)) return;
    const auto* overlay = std::ranges::find(overlays, what, &OverlayEntry::what);
    if (overlay != std::end(overlays)) return draw_overlay(session, overlay->overlay, messages);
    std::optional<Message> told;
    if (what == I::measured_points)
        told = add_measured(session).message;
    else if (what == I::xy_data)
        told = add_xy(*session.diagram.sheet, xy_points(session), xy_curve).message;
    else
        told = set_mark(session, what);
    if (told) messages.ask(*told);
}

void insert_text(GraphDocument& sheet, const std::string& text) {
    constexpr double first_x = 0.25, first_y = 0.2, step = 0.05;
    constexpr std::size_t rows = 12;
    if (text.empty()) return;
    SheetText& added = sheet.texts.emplace_back();
    added.text = text;
    added.x = first_x;
    added.y = first_y + step * static_cast<double>((sheet.texts.size() - 1) % rows);
}

std::vector<DeleteEntry> delete_entries(const GraphDocument& sheet) {
    std::vector<DeleteEntry> there = {{Deletion::total, 0, "mnuDelTotal", "entire drawing area"}};
    const auto add = [&](bool is_there, Deletion what, const char* name, const char* caption) {
        if (is_there) there.push_back({what, 0, name, caption});
    };
    add(has_marks(sheet), Deletion::marks, "mnuDelMarkTP", "all markers (lines + texts)");
    add(any_mark_label(sheet), Deletion::mark_labels, "mnuDelMarkLabels", "all marking texts");
    add(has_critical_point(sheet, false), Deletion::crit_measured, "mnuDelCritPointEx",
        "Critical point (experimental)");
    add(has_critical_point(sheet, true), Deletion::crit_calculated, "mnuDelCritPointCalc",
        "Critical point (calculated)");
    add(sheet.legend.visible, Deletion::legend, "mnuDelLegend", "complete legend");
    add(any_label_shown(sheet), Deletion::labels, "mnuDelLabels", "all curve labels");
    add(PointCount(sheet) > 0, Deletion::points, "mnuDelPoints", "all sets of points");
    for (int slot = 1; slot <= CurveSlots; ++slot)
        if (!sheet.curve(slot).CurveFree)
            there.push_back(
                {Deletion::curve, slot, "mnuSubDelKurv_" + genNum(slot), sheet.curve(slot).series.legend});
    for (int set = 1; set <= PointSlots; ++set)
        if (!sheet.set(set).PointFree)
            there.push_back(
                {Deletion::point_set, set, "mnuSubDelPointSet_" + genNum(set), sheet.set(set).series.legend});
    return there;
}

void remove_from(GraphDocument& sheet, const DeleteEntry& entry) {
    switch (entry.what) {
        case Deletion::total:
            return delete_all(sheet);
        case Deletion::marks:
            return delete_marks(sheet);
        case Deletion::mark_labels:
            return hide_mark_labels(sheet);
        case Deletion::crit_measured:
        case Deletion::crit_calculated:
            return delete_critical_point(sheet, entry.what == Deletion::crit_calculated);
        case Deletion::legend:
            return hide_legend(sheet);
        case Deletion::labels:
            return show_labels(sheet, false);
        case Deletion::points:
            return delete_all_points(sheet);
        case Deletion::curve:
            return delete_curve(sheet, entry.number);
        case Deletion::point_set:
            return delete_points(sheet, entry.number);
    }
}

CoordinateTexts coordinate_texts(const GraphDocument& sheet) {
    const CurveRange range = shown_range(sheet);
    return {shown_number(range.XMin), shown_number(range.XMax), shown_number(range.YMin),
            shown_number(range.YMax)};
}

CoordinatesRefused take_coordinates(GraphDocument& sheet, const CoordinateTexts& texts) {
    constexpr std::string_view names[] = {"X minimum", "X maximum", "Y minimum", "Y maximum"};
    std::array<double, 4> limits{};
    for (std::size_t i = 0; i < limits.size(); ++i) {
        const BoxNumber number = read_box(names[i], texts[i], NumberRule::any);
        if (!number.fault.empty()) return {.box = BoxRefusal{i, number.fault}};
        limits[i] = number.value;
    }
    if (auto refused = limits_refusal(limits[coord_x_min], limits[coord_x_max], LimitsIn::coordinates))
        return {.message = std::move(refused)};
    if (auto refused = limits_refusal(limits[coord_y_min], limits[coord_y_max], LimitsIn::coordinates_second))
        return {.message = std::move(refused)};
    const auto single = [&](std::size_t i) { return static_cast<float>(limits[i]); };
    return {.message = set_coordinates(sheet,
                                       {.XMin = single(coord_x_min),
                                        .YMin = single(coord_y_min),
                                        .XMax = single(coord_x_max),
                                        .YMax = single(coord_y_max)},
                                       LimitsIn::coordinates)};
}

bool show_control_graph(Session& session, ControlGraph graph, Messages& messages) {
    const GraphTexts& texts = *std::ranges::find(graph_texts, graph, &GraphTexts::graph);
    const GraphPoints found = graph_points(session, graph);
    if (found.refusal) {
        messages.ask(*found.refusal);
        return false;
    }
    DiagramSession& d = session.diagram;
    if (d.sheet && !is_empty(*d.sheet) && !is_control_graph(*d.sheet, texts) &&
        messages.ask(unload_question()) != Answer::yes)
        return false;
    DiagramRec rec;
    rec.title = texts.title;
    rec.XTitle = texts.x;
    rec.YTitle = texts.y;
    std::tie(rec.range.XMin, rec.range.XMax) = limits_around(found.points, &SheetPoint::X);
    std::tie(rec.range.YMin, rec.range.YMax) = limits_around(found.points, &SheetPoint::Y);
    rec.initial = rec.range;
    unload_sheet(d);
    d.state.rec = rec;
    d.sheet = new_sheet(rec);
    d.units = session.document.units;
    const bool exp = graph == ControlGraph::y_T || graph == ControlGraph::ln_p;
    const Added added = exp ? cmdExternPoints(*d.sheet, found.points, PointSource::data_editor)
                            : add_xy(*d.sheet, found.points, graph == ControlGraph::xy_curve);
    if (added.message) messages.ask(*added.message);
    return true;
}

bool may_save_sheet(const Session& session, Messages& messages) {
    if (!session.diagram.sheet) return false;
    const auto question = save_question(*session.diagram.sheet);
    return !question || messages.ask(*question) == Answer::yes;
}

void tell_before_loading(Session& session, Messages& messages) {
    if (session.diagram.sheet) session.diagram.sheet->Interchanged = false;
    if (!session.diagram.TellLoading) return;
    session.diagram.TellLoading = false;
    messages.ask(load_notice());
}

bool save_sheet(Session& session, const std::string& path, Messages& messages) {
    if (!session.diagram.sheet) return false;
    const std::string fault = save_oc2(path, *session.diagram.sheet);
    if (fault.empty()) return true;
    messages.ask(refusal_message(fault));
    return false;
}

bool load_sheet(Session& session, const std::string& path, Messages& messages) {
    DiagramSession& d = session.diagram;
    if (!d.sheet) return false;
    Oc2Read read = load_oc2(path, *d.sheet);
    if (!read.sheet) {
        messages.ask(refusal_message(read.fault));
        return false;
    }
    d.sheet = std::move(read.sheet);
    d.isochore = {};
    d.LastFile = name_part(path);
    return true;
}

}  // namespace quom
