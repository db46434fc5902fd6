// Tie lines: the straight line between the two saturated states, in any diagram of a section.
#include <cmath>
#include <limits>
#include <optional>

#include "diagrams/curve_run.h"

namespace quom {
namespace {

constexpr int TieLineSteps = 50;
constexpr double CriticalVolume = 1e-6;  // nearer to v(cr), as part of it, an isochore has no tie line

// One phase in the coordinates of a diagram.
class PhaseState {
 public:
    PhaseState(const CurveRun& run, double T, double p, double v) : run_(run), T_(T), p_(p), v_(v) {}

    // In displayed units; NaN where it does not exist.
    double coordinate(AxisQuantity q) {
        switch (q) {
            case AxisQuantity::v:
                return v_ * run_.f.vFactor;
            case AxisQuantity::rho:
                return run_.M / v_;
            case AxisQuantity::p:
                return p_ * run_.f.pFactor;
            case AxisQuantity::pv:
                return p_ * run_.f.pFactor * v_ * run_.f.vFactor;
            case AxisQuantity::T:
                return T_ * run_.f.TFactor;
            case AxisQuantity::residual_s:
            case AxisQuantity::residual_h:
            case AxisQuantity::residual_g:
            case AxisQuantity::residual_cp:
                return residual_value(ThermoFunc(run_.fluid, T_, p_, v_), q) * run_.uFactor_at(T_);
            case AxisQuantity::joule_thomson:
                return ThermoFunc(run_.fluid, T_, p_, v_).FuncA[fu_dTdp_h];
            case AxisQuantity::cV:  // the isotherm shows |cV|
                return std::fabs(function(q));
            default:
                return function(q);
        }
    }

 private:
    double function(AxisQuantity q) {
        if (!functions_) functions_ = ThermoState(run_.fluid, T_, p_, v_);
        return function_value(run_.fluid, *functions_, q) * run_.uFactor_at(T_);
    }

    const CurveRun& run_;
    double T_, p_, v_;
    std::optional<StateFunctions> functions_;
};

bool plain_section(CurveFamily family) {
    return family == CurveFamily::isotherm_v || family == CurveFamily::isotherm_p ||
           family == CurveFamily::isobar_volume;
}

TieLine without_tie_line(std::int16_t Err) {
    TieLine none;
    none.Err = Err;
    return none;
}

// Whether the isochore that ended on the phase boundary has a tie line there.
bool isochore_has_tie_line(const CurveRun& run) {
    const IsochoreEnd& end = run.in.isochore;
    if (!(end.T > 0.0) || !(end.v > 0.0)) return false;
    return !(run.vcr > 0.0) || std::fabs(end.v / run.vcr - 1.0) > CriticalVolume;
}

}  // namespace

double residual_value(const PhaseArrays& arrays, AxisQuantity q) {
    const double* F = arrays.FuncA;
    switch (q) {
        case AxisQuantity::residual_s:
            return RGas * F[fu_s_res];
        case AxisQuantity::residual_h:
            return RGas * F[fu_h_res];
        case AxisQuantity::residual_g:
            return RGas * F[fu_g_res];
        case AxisQuantity::residual_cp:
            return RGas * F[fu_cp_res];
        default:
            return std::numeric_limits<double>::quiet_NaN();
    }
}

double quantity_of_phase(const CurveRun& run, double T, double p, double v, AxisQuantity q) {
    return PhaseState(run, T, p, v).coordinate(q);
}

TieLine TieLineEnds(const CurveRun& run, double T, double p) {
    const KindInfo& kind = run.kind;
    const CurveFamily family = kind.family;
    Saturation sat;
    if (kind.section == Section::isothermal) {
        if (!(T > 0.0) || !(T < run.Tcr)) return without_tie_line(plain_section(family) ? -1 : 0);
        sat = pLV_EOS(run.fluid, T);
    } else if (kind.section == Section::isobaric && family != CurveFamily::joule_thomson) {
        if (!(p > 0.0) || !(p < run.pcr)) return without_tie_line(plain_section(family) ? -1 : 0);
        sat = TLV_EOS(run.fluid, p);
    } else if (family == CurveFamily::isochore_functions && kind.y != AxisQuantity::cV) {
        if (!isochore_has_tie_line(run)) return without_tie_line(-1);
        sat = pLV_EOS(run.fluid, run.in.isochore.T);
    } else {
        return without_tie_line(-1);
    }
    if (!sat.found()) return without_tie_line(-1);

    PhaseState L(run, sat.T, sat.p, sat.vL), V(run, sat.T, sat.p, sat.vV);
    TieLine line{.X1 = L.coordinate(kind.x),
                 .Y1 = L.coordinate(kind.y),
                 .X2 = V.coordinate(kind.x),
                 .Y2 = V.coordinate(kind.y)};
    for (const double end : {line.X1, line.Y1, line.X2, line.Y2})
        if (!std::isfinite(end)) return without_tie_line(-1);
    line.Step1 = (line.X2 - line.X1) / TieLineSteps;
    line.Step2 = (line.Y2 - line.Y1) / TieLineSteps;
    return line;
}

void tie_line_curve(CurveRun& run) {
    const TieLine line = TieLineEnds(run, run.in.T, run.in.p);
    if (!line.found()) {
        run.out.Status = CurveStatus::no_tie_line;
        return;
    }
    double Par = run.in.isochore.v;
    run.out.curve.Par = par_v;
    run.out.curve.Tag = par_none;
    if (run.kind.section == Section::isothermal) {
        run.out.curve.Par = par_T;
        Par = run.in.T;
    } else if (run.kind.section == Section::isobaric) {
        run.out.curve.Par = par_p;
        Par = run.in.p;
    }
    for (int i = 0; i < TieLineSteps; ++i) run.add(line.X1 + i * line.Step1, line.Y1 + i * line.Step2, Par);
    run.add(line.X2, line.Y2, Par);
}

}  // namespace quom
