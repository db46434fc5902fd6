// What a process record draws in a diagram, or why it is refused.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "diagrams/curve.h"

namespace quom {

struct ProcessCheck {
    CurveInput input;  // ready for CalcCurve; unchanged where it is refused
    std::optional<Message> refusal;
    std::optional<Message> note;  // told, and the curve is drawn
    std::string label;            // of a section line: "T = 300 K"
    bool polytropic = false;      // the curve is that of the polytropic solver, not of CalcCurve
    bool refused() const { return refusal.has_value(); }
};

// Completes in.kind, in.process to the input of the curve: in.line, the limits From and To of the running
// quantity from the start and the end point, T(LV) of the ends of a line between the saturated states, the
// parameter T or p of an isotherm, isobar or section line; for a line of constant vapor fraction in.kind
// becomes the coexistence curve of the axes.
ProcessCheck check_process(const Fluid& fluid, const CurveInput& in);

}  // namespace quom
