#include "diagrams/curve_support.h"

#include <cmath>
#include <utility>

#include "diagrams/point_claims.h"

namespace quom::test {
namespace {

std::pair<double, double> span_of(const Setting& s, const DisplayFactors& f, AxisQuantity q) {
    const double Tcr = s.Tcr(), pcr = s.pcr(), vcr = s.vcr(), M = s.fluid->M;
    switch (q) {
        case AxisQuantity::T:
            return {0.5 * Tcr * f.T, 1.3 * Tcr * f.T};
        case AxisQuantity::p:
            return {0.0, 1.5 * pcr * f.p};
        case AxisQuantity::v:
            return {0.0, 16.0 * vcr * f.v};
        case AxisQuantity::rho:
            return {0.0, 3.5 * M / vcr};
        case AxisQuantity::pv:
            return {0.0, 1.5 * RGas * Tcr * f.p * f.v};
        case AxisQuantity::inverse_T:
            return {1.0 / (1.02 * Tcr * f.T), 2.0 / (Tcr * f.T)};
        case AxisQuantity::ln_p:
            return {-12.0, 12.0};
        default:
            return {-2e5, 2e5};
    }
}

}  // namespace

CurveInput curve_input(const Setting& s, Kind kind, int Dens) {
    const DisplayFactors f = display_factors(*s.fluid, s.units);
    const auto [x1, x2] = span_of(s, f, kind_info(kind).x);
    const auto [y1, y2] = span_of(s, f, kind_info(kind).y);
    CurveInput in;
    in.kind = kind;
    in.range = {static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                static_cast<float>(y2)};
    in.units = s.units;
    in.options.Dens = Dens;
    // Limits of the curves of function pairs.
    in.process.From = 0.02 * s.pcr();
    in.process.To = 1.2 * s.pcr();
    if (kind_info(kind).family == CurveFamily::isobar_pairs) {
        in.process.From = 0.55 * s.Tcr();
        in.process.To = 1.2 * s.Tcr();
    }
    return in;
}

}  // namespace quom::test
