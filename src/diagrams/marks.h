// Reference lines and points laid over a diagram, and the overlays, which are curves of their own kind.
//
// A mark stands in a series of its own, so that setting it again replaces it. What is not known of the
// substance (no triple point, no T(nb), no v(cr) of the equation) leaves its mark out, without a message.
// Marks take the colour of the next action; lines run across the range in force.
#pragma once
#include <optional>
#include <vector>

#include "diagrams/graph_document.h"
#include "quantities/units.h"

namespace quom {

// mnuMarkT: T(cr), T(tr), and T(LV) at normal pressure; on an isobar of an equation of the V-phase only that
// is cut at saturation (chkPartialKurve) T(LV) at the p of the last curve. Also in diagrams against 1/T.
void mark_T(GraphDocument& sheet, const Fluid& fluid, const Units& units, const CurveOptions& options);
// mnuMarkP: p(cr), the triple pressure, and on isotherms below T(cr) p(LV) at the T of the last curve, always
// by the vapor pressure equation.
void mark_p(GraphDocument& sheet, const Fluid& fluid, const Units& units);
// mnuMarkV: v(cr), or rho(cr), of the equation of state.
void mark_v(GraphDocument& sheet, const Fluid& fluid, const Units& units);
// mnuMarkB: v = b(T), or rho = M/b(T), at the T of the last curve, T(cr) without one.
void mark_b_line(GraphDocument& sheet, const Fluid& fluid, const Units& units);
// mnuMarkCritPointEx, mnuMarkCritPointCalc: T(cr), p(cr) with v(cr) of the record or of the equation of
// state, in diagrams of T, p, v, rho, pv.
void mark_critical_point(GraphDocument& sheet, const Fluid& fluid, const Units& units, bool calculated);
// MarkTGrenzen: validity [K] of a database function; in other diagrams the lines are taken away.
void MarkTGrenzen(GraphDocument& sheet, const Fluid& fluid, const Units& units, float TMin, float TMax);

// Whether a diagram of this kind can show the mark v = b, and the critical points.
bool has_b_line(Kind kind);
bool has_critical_mark(Kind kind);

// mnuDelMarkTP: lines and texts, not the critical points; mnuDelMarkLabels: the texts alone;
// mnuDelCritPointEx, mnuDelCritPointCalc.
void delete_marks(GraphDocument& sheet);
void hide_mark_labels(GraphDocument& sheet);
void delete_critical_point(GraphDocument& sheet, bool calculated);
// Which delete entries there are: for lines, and for either critical point.
bool has_marks(const GraphDocument& sheet);
bool has_critical_point(const GraphDocument& sheet, bool calculated);

// Curves laid over a diagram.
enum class Overlay { coexistence, isohygric, inversion, loop, tie_line, bisector };

// What an overlay draws: the inputs of its curves in their order; or why it cannot.
struct OverlayPlan {
    std::vector<CurveInput> curves{};
    std::optional<Message> refusal{};
};
// last: input of the last curve, or of the parameter box, with kind, range, units and options; its
// VaporFraction is that of an isohygric. Neither curves nor a refusal: the diagram has no such overlay.
OverlayPlan plan_overlay(const Fluid& fluid, const CurveInput& last, Overlay overlay);
// Whether the diagram of this kind has such an overlay at all.
bool has_overlay(Kind kind, Overlay overlay);

}  // namespace quom
