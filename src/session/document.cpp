#include "session/document.h"

#include <cmath>

#include "base/constants.h"

namespace quom {
namespace {

// A value of a data point; below 1e-6 it counts as not given.
std::optional<double> given(double x) {
    if (x >= TinyT && std::isfinite(x)) return x;
    return std::nullopt;
}
std::optional<double> given(float x) { return given(static_cast<double>(x)); }

void take_point(const TpRhoPoint& point, const ModeInfo& mode, StateInput& input) {
    // The value that a mode of saturation does not specify stands in where no equation gives it.
    const bool both = mode.family == ModeFamily::equilibrium || mode.family == ModeFamily::vaporization;
    if (both || (mode.specified & spec_T)) input.T = given(point.T);
    if (both || (mode.specified & spec_p)) input.p = given(point.p);
    if (mode.specified & spec_rhoV) input.rho = given(point.rhoV);
    if (mode.specified & spec_rhoL) input.rho = given(point.rhoL);
}

}  // namespace

StateInput state_input(const CalculationInput& calc, const TpRhoPoint& point) {
    const ModeInfo& mode = mode_info(calc.CalcMode);
    StateInput input;
    input.mode = calc.CalcMode;
    input.setup = calc.setup;
    input.coefficients = calc.ExtLevel > 1;
    input.inflection = calc.ExtLevel > 1;
    if (mode.specified & spec_tank) {
        input.T = given(calc.tank.T);
        input.m = given(calc.tank.m);
        input.V = given(calc.tank.V);
    } else if (mode.specified & spec_process) {
        input.T = given(calc.ProcessT);
        input.p = given(calc.ProcessP);
    } else {
        take_point(point, mode, input);
    }
    return input;
}

StateInput state_input(const Document& document, int point) {
    const SharedVector<TpRhoPoint>& points = document.exp.points;
    const bool there = point >= 0 && static_cast<std::size_t>(point) < points.size();
    return state_input(document.calc, there ? points[static_cast<std::size_t>(point)] : TpRhoPoint{});
}

}  // namespace quom
