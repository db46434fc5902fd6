// A state as a point of a diagram.
#pragma once
#include "diagrams/curve_run.h"

namespace quom {

// A state of a process line: T [K], p [kPa], its volume and functions in molar units; between the saturated
// states the mean of both phases with the vapor fraction.
struct LineState {
    double T = 0, p = 0;
    StateFunctions at;
    double fraction = 0;
};

// Coordinates in displayed units, and the value by which the point is told from others.
struct LinePoint {
    double X = 0, Y = 0, Par = 0;
};

// ParKind of the points of a process line in a diagram of the kind; par_none: the kind has no process lines.
std::int16_t process_par(const KindInfo& kind, bool Homogen);

// The point of a state in the diagram of the run; a coordinate that does not exist there is NaN.
LinePoint CurveXY(const CurveRun& run, const LineState& state, bool Homogen);

}  // namespace quom
