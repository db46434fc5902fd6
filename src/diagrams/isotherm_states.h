// States along an isotherm, as its curves need them: the saturation, the stable states over p, the loop
// between the saturated volumes.
#pragma once
#include <limits>
#include <span>
#include <vector>

#include "diagrams/curve_run.h"

namespace quom {

// Saturation at the parameter T; not found at T(cr) and above, and for an equation of the V-phase only.
Saturation isotherm_saturation(const CurveRun& run);

// Upper end of a scan over p in displayed units: XMax, or below it the saturation that cuts an equation of
// the V-phase only.
double upper_p(const CurveRun& run);

// Stable states at p [kPa]: up to p(LV) the vapor, above it the liquid.
StateColumns stable_states(const CurveRun& run, const Saturation& sat, std::span<const double> p);

// Whether there is a loop; if not, Status tells so.
bool has_loop(CurveRun& run, const Saturation& sat);

// How the loop is walked.
struct LoopWalk {
    double from = 0, to = 0;  // the saturated volumes [m^3/kmol], in either order
    int steps = 0;
    double moved = 0;  // p [kPa] by which a point differs from the one before
    double lowest_p = -std::numeric_limits<double>::infinity();  // no point below it [kPa]
};
// Volumes of the loop from one saturated volume towards the other, which is not among them, in equal steps.
std::vector<double> loop_volumes(const EosAtT& eos, const LoopWalk& walk);

// States at volumes of the isotherm with p [kPa], stable or not.
struct VolumeStates {
    std::vector<double> v, p;
    StateColumns columns;
};
VolumeStates states_at_volumes(const CurveRun& run, std::vector<double> v);

}  // namespace quom
