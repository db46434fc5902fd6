// What curves along an isobar share: scans over T, the stable states, the volumes of the loop.
#pragma once
#include <span>
#include <vector>

#include "diagrams/curve_run.h"

namespace quom {

// T [K] of a scan that falls from `from` to `to` (displayed units) by dx, down to the triple point where no
// curve goes below it. beyond, clamp: as of scan_values.
std::vector<double> falling_T(CurveRun& run, double from, double to, double beyond, bool clamp);

// States at T[i] [K], p [kPa]. In the narrow band around T(LV) in which both phases pass as saturated it is L
// below T(LV) and V from there on; boiling is TLV_EOS of p.
void stable_states(const Fluid& fluid, const Saturation& boiling, std::span<const double> T, double p,
                   StateColumns& out);

// Volumes [m^3/kmol] of the loop from v(L) towards v(V) in equal steps; v(V) itself may fall short. Without
// two phases there is none, and Status tells.
std::vector<double> loop_volumes(CurveRun& run, const Saturation& boiling, int steps);

}  // namespace quom
