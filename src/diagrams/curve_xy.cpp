#include "diagrams/curve_xy.h"

namespace quom {
namespace {

// In displayed units. The axis of delta(LV)h shows h.
double coordinate(const CurveRun& run, const LineState& state, AxisQuantity q) {
    const UnitFactors& f = run.f;
    switch (q) {
        case AxisQuantity::T:
            return state.T * f.TFactor;
        case AxisQuantity::p:
            return state.p * f.pFactor;
        case AxisQuantity::v:
            return state.at.v * f.vFactor;
        case AxisQuantity::pv:
            return state.p * f.pFactor * state.at.v * f.vFactor;
        case AxisQuantity::rho:
            return run.M / state.at.v;
        case AxisQuantity::hLV:
            return state.at.h * run.uFactor_at(state.T);
        default:
            return function_value(run.fluid, state.at, q) * run.uFactor_at(state.T);
    }
}

double parameter(const LineState& state, std::int16_t kind) {
    switch (kind) {
        case par_T:
            return state.T;
        case par_p:
            return state.p;
        case par_v:
            return state.at.v;
        case par_fraction:
            return state.fraction;
        default:
            return 0.0;
    }
}

}  // namespace

std::int16_t process_par(const KindInfo& kind, bool Homogen) {
    return kind.process_par == par_none || Homogen ? kind.process_par : std::int16_t{par_fraction};
}

LinePoint CurveXY(const CurveRun& run, const LineState& state, bool Homogen) {
    return {.X = coordinate(run, state, run.kind.x),
            .Y = coordinate(run, state, run.kind.y),
            .Par = parameter(state, process_par(run.kind, Homogen))};
}

}  // namespace quom
