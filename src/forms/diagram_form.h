// Two-dimensional diagrams: what an entry of their menu opens, the box of the parameter, and drawing a curve.
// All of them work on the diagram of the session; what the user is told goes to the messages.
#pragma once
#include <string>

#include "base/messages.h"
#include "diagrams/marks.h"
#include "session/session.h"

namespace quom {

// What the caller shows after an entry of the menu was chosen.
struct DiagramOpening {
    bool open = false;           // the window with the sheet, or the one that is there
    bool parameter_box = false;  // and the box beside it; false: that box is closed
    Changes changes{};           // reduced units that are not possible went back to molar ones
};
// An entry of the menus mnuGraf..: sets up the diagram of the kind. A sheet that it does not share is
// unloaded, after a question where curves are mixed. A sheet in other units than those in force is shared by
// nothing.
DiagramOpening choose_diagram(Session& session, Kind kind, Messages& messages);

// delta(LV)h by Benson's method needs a reference point, which is chosen before its diagram opens.
bool needs_reference_point(const Session& session, Kind kind);

// The diagram on the sheet has a parameter that frmTpVSInputBox asks for.
bool has_parameter(const Session& session);

// frmTpVSInputBox.
inline constexpr std::string_view parameter_title = "Parameter Input";
inline constexpr std::string_view parameter_hint =
    " make your changes before drawing the curve, e.g. curve color";
struct ParameterBox {
    std::string caption;  // " for intersection curve ( p - v)"; empty for a section at constant v
    std::string label;    // "T/K = ", "p(red) = ", "V/(m^3/kmol) = "
    std::string text;     // value that is offered, in the units of the sheet
};
// First T(cr), p(cr) or v(cr), then what was entered last.
ParameterBox parameter_box(const Session& session);
// Takes what was typed. A text that is no number is a fault of the box; values that no curve has are told,
// and so is a v close to b, which is taken.
struct ParameterTaken {
    bool taken = false;
    std::string fault{};  // of the box
};
ParameterTaken take_parameter(Session& session, const std::string& typed, Messages& messages);

// The next curve of the sheet: its kind, range and units, the parameters and options in force.
CurveInput next_curve(const Session& session);

// cmdDraw on the sheet of the session, with everything that the user is told; a coexistence curve is one of
// the liquid and one of the vapor. Returns the slot of the first curve; 0: nothing was added.
int draw_curve(Session& session, Messages& messages);
// The curves of an overlay, with the parameters of the curve drawn last.
void draw_overlay(Session& session, Overlay overlay, Messages& messages);

}  // namespace quom
