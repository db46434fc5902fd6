// The command that calculates a curve and puts it onto the sheet.
#pragma once
#include <vector>

#include "diagrams/curve_generator.h"
#include "diagrams/graph_document.h"

namespace quom {

struct DrawnCurve {
    int slot = 0;  // where the curve stands, 0: it was not added
    CurveResult result{};
    std::vector<Message> messages{};  // in the order in which the user is told
};

// cmdDraw. The range of the input is that of the sheet, as the kind has it, whether the axes are interchanged
// or not. A curve that is dropped, empty or the 25th leaves the sheet as it was. A database function brings
// the marks of its validity.
DrawnCurve cmdDraw(GraphDocument& sheet, const Fluid& fluid, CurveInput input);

// Refuses the 25th curve.
Message too_many_curves();

// Shown once in a session before the first isochore is drawn.
Message isochore_notice();

}  // namespace quom
