#include "forms/diagram_form.h"

#include <optional>

#include "base/number_text.h"
#include "diagrams/axis_texts.h"
#include "diagrams/draw_curve.h"
#include "diagrams/unload_question.h"
#include "engine/unit_factors.h"
#include "forms/diagram_parameter.h"
#include "forms/refusal.h"

namespace quom {
namespace {

bool same_units(const Units& a, const Units& b) {
    return a.EnergyMode == b.EnergyMode && a.VolumeMode == b.VolumeMode;
}

// A sheet that stays shows the new diagram; a heading of the user's own stays too.
void show_on(GraphDocument& sheet, const DiagramRec& rec) {
    if (sheet.header.text == sheet.diagram.title + sheet.diagram.TitleSuffix)
        sheet.header.text = rec.title + rec.TitleSuffix;
    sheet.diagram = rec;
}

CurveOptions curve_options(const Options& options) {
    return {.Dens = options.Dens,
            .chkCurveTpRestricted = options.chkCurveTpRestricted,
            .chkSKurveOhneKonnode = options.chkSKurveOhneKonnode,
            .chkPartialKurve = options.chkPartialKurve};
}

// Limits of a curve of two functions: the pair of the table of ranges.
void take_limits(const Session& session, CurveInput& input) {
    const CurveFamily family = kind_info(input.kind).family;
    const bool over_T = family == CurveFamily::isobar_pairs;
    if (!over_T && family != CurveFamily::isotherm_pairs) return;
    const UnitFactors f = unit_factors(*session.fluid, input.units, input.T);
    const RangeLimits& pair = session.diagram.state.ranges[over_T ? RangePair::T : RangePair::p];
    input.process.From = pair.min / (over_T ? f.TFactor : f.pFactor);
    input.process.To = pair.max / (over_T ? f.TFactor : f.pFactor);
}

void tell_all(const std::vector<Message>& told, Messages& messages) {
    for (const Message& message : told) messages.ask(message);
}

int put_on_sheet(Session& session, const CurveInput& input, Messages& messages) {
    const DrawnCurve drawn = cmdDraw(*session.diagram.sheet, *session.fluid, input);
    if (drawn.slot > 0) session.diagram.isochore = drawn.result.isochore;
    tell_all(drawn.messages, messages);
    return drawn.slot;
}

// The first slot taken; ends with the first curve that is not added.
int put_all(Session& session, const std::vector<CurveInput>& curves, Messages& messages) {
    int first = 0;
    for (const CurveInput& input : curves) {
        const int slot = put_on_sheet(session, input, messages);
        if (slot == 0) break;
        if (first == 0) first = slot;
    }
    return first;
}

}  // namespace

DiagramOpening choose_diagram(Session& session, Kind kind, Messages& messages) {
    DiagramSession& d = session.diagram;
    const Units units = session.document.units;
    const bool mixed = session.document.options.KurvenMischen, there = d.sheet.has_value();
    const bool other_units = there && !same_units(d.units, units);
    SetupResult setup = DiagramSetup(*session.fluid, units, d.state, kind, mixed, there);
    DiagramOpening opening;
    if (setup.refusal) {
        messages.ask(*setup.refusal);
        if (setup.to_molar_volumes) {
            Document document = session.document;
            document.units.VolumeMode = volume_molar;
            opening.changes = commit(session, std::move(document));
        }
        return opening;
    }
    if (mixed && other_units && setup.open_sheet) setup.question = unload_question();
    if (setup.question) {
        if (messages.ask(*setup.question) == Answer::yes) unload_sheet(d);
        return opening;
    }
    if (!setup.open_sheet) return opening;
    d.state = std::move(setup.state);
    if (!there || setup.unload_sheet || other_units) {
        unload_sheet(d);
        d.sheet = new_sheet(d.state.rec);
        d.units = units;
    } else {
        show_on(*d.sheet, d.state.rec);
    }
    opening.open = true;
    opening.parameter_box = has_parameter(session);
    return opening;
}

bool needs_reference_point(const Session& session, Kind kind) {
    return kind == Kind::hLV_T && session.document.models.HLVKode == Hlv::evp_benson &&
           !kind_refusal(*session.fluid, session.document.units, kind);
}

bool has_parameter(const Session& session) { return section_parameter(session) != nullptr; }

ParameterBox parameter_box(const Session& session) {
    const SectionParameter* const row = section_parameter(session);
    if (!row) return {};
    const DiagramSession& d = session.diagram;
    const KindInfo& kind = kind_info(d.sheet->diagram.kind);
    const bool reduced = d.units.VolumeMode == reduced_volume, isochoric = row->section == Section::isochoric;
    ParameterBox box;
    if (!isochoric)
        box.caption = " for intersection curve ( " + std::string(axis_symbol(kind.y)) + " - " +
                      std::string(axis_symbol(kind.x)) + ")";
    box.label = reduced ? row->reduced_label : row->label;
    if (isochoric && !reduced) box.label += "(" + std::string(VolumeName(d.units)) + ") = ";
    box.text = genNum(d.state.*row->value * factor_of(session, *row));
    return box;
}

ParameterTaken take_parameter(Session& session, const std::string& typed, Messages& messages) {
    const SectionParameter* const row = section_parameter(session);
    if (!row) return {};
    DiagramState& state = session.diagram.state;
    const BoxNumber number = read_box(row->name, typed, NumberRule::any);
    if (!number.fault.empty()) return {false, number.fault};
    // What is offered stays as exact as it was.
    const bool offered = typed == parameter_box(session).text;
    const double value = offered ? state.*row->value : number.value / factor_of(session, *row);
    if (const auto refusal = parameter_refusal(*session.fluid, *row, value)) {
        messages.ask(*refusal);
        return {};
    }
    if (const auto note = close_to_b_note(*session.fluid, *row, value)) messages.ask(*note);
    state.*row->value = value;
    return {.taken = true};
}

CurveInput next_curve(const Session& session) {
    const DiagramSession& d = session.diagram;
    CurveInput input;
    if (!d.sheet) return input;
    input.kind = d.sheet->diagram.kind;
    input.range = d.sheet->diagram.range;
    input.T = d.state.T;
    input.p = d.state.p;
    input.v = d.state.v;
    input.options = curve_options(session.document.options);
    input.units = d.units;
    input.benson = session.document.calc.setup.benson;
    input.isochore = d.isochore;
    take_limits(session, input);
    return input;
}

int draw_curve(Session& session, Messages& messages) {
    DiagramSession& d = session.diagram;
    if (!d.sheet || d.sheet->diagram.kind == Kind::none) return 0;
    const SectionParameter* const row = section_parameter(session);
    if (row && row->section == Section::isochoric && d.TellIsochores) {
        d.TellIsochores = false;
        messages.ask(isochore_notice());
    }
    if (const auto refusal =
            row ? parameter_refusal(*session.fluid, *row, d.state.*row->value) : std::nullopt) {
        messages.ask(*refusal);
        return 0;
    }
    if (const auto refusal = kind_refusal(*session.fluid, d.units, d.sheet->diagram.kind)) {
        messages.ask(*refusal);  // other models since the sheet was set up
        return 0;
    }
    const CurveInput input = next_curve(session);
    const KindInfo& kind = kind_info(input.kind);
    if (kind.boundary != kind.kind) return put_on_sheet(session, input, messages);
    return put_all(session, plan_overlay(*session.fluid, input, Overlay::coexistence).curves, messages);
}

void draw_overlay(Session& session, Overlay overlay, Messages& messages) {
    DiagramSession& d = session.diagram;
    if (!d.sheet || d.sheet->diagram.kind == Kind::none) return;
    CurveInput last = next_curve(session);
    last.process = {};  // the whole boundary of a diagram of two functions
    const LastParameter drawn = d.sheet->last;
    if (drawn.T > 0.0) last.T = drawn.T;
    if (drawn.p > 0.0) last.p = drawn.p;
    if (drawn.v > 0.0) last.v = drawn.v;
    const OverlayPlan plan = plan_overlay(*session.fluid, last, overlay);
    if (plan.refusal) {
        messages.ask(*plan.refusal);
        return;
    }
    put_all(session, plan.curves, messages);
}

}  // namespace quom
