// Inputs of isotherms, for tests.
#pragma once
#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "diagrams/curve_generator.h"
#include "support/starter.h"

namespace quom::test {

using Points = std::vector<CurvePoint>;

inline constexpr Kind over_p[] = {Kind::a_p, Kind::u_p,  Kind::h_p,  Kind::s_p,
                                  Kind::g_p, Kind::eH_p, Kind::cp_p, Kind::eU_p};
inline constexpr Kind over_v[] = {Kind::a_v, Kind::u_v, Kind::s_v, Kind::cV_v, Kind::eU_v};
inline constexpr Kind residual[] = {Kind::residual_s_p, Kind::residual_h_p, Kind::residual_g_p,
                                    Kind::residual_cp_p};
inline constexpr Kind pairs[] = {Kind::eH_h_isotherm, Kind::h_s_isotherm, Kind::eH_s_isotherm};
inline constexpr Kind plain[] = {Kind::p_v, Kind::pv_p, Kind::rho_p};

inline std::vector<Kind> all_kinds() {
    std::vector<Kind> all;
    for (const std::span<const Kind> some :
         {std::span<const Kind>(plain), std::span<const Kind>(over_p), std::span<const Kind>(over_v),
          std::span<const Kind>(residual), std::span<const Kind>(pairs)})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

// Constants of the equations that are typed or read from a file, of usual size.
inline const EosInput Typed{
    .b0 = 0.1, .b1 = 1e4, .b2 = 1.8, .JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 0.2, .JiZc = 0.31, .JiB1 = 0.02};

inline bool runs_over_v(Kind kind) { return kind_info(kind).x == AxisQuantity::v; }

struct Units4 {
    double v = 1, p = 1, u = 1;
};
// The factors as they are defined.
inline Units4 factors(const Fluid& fluid, const Units& units, double T) {
    Units4 f;
    if (units.VolumeMode == volume_per_mass) f.v = 1.0 / fluid.M;
    if (units.VolumeMode == reduced_volume) {
        f.v = 1.0 / fluid.eos.vcrEOS;
        f.p = 1.0 / fluid.substance.pcr;
    }
    const double by_mode[] = {1.0, 1.0 / RGas, 1.0 / (RGas * T), 1.0 / fluid.M};
    f.u = by_mode[units.EnergyMode];
    return f;
}

// A curve over p up to 1.47 p(cr), none of whose points is p(cr), over v up to 8 v(cr); y wide open.
inline CurveInput make_input(const Fluid& fluid, Kind kind, double T, const Units& units = {}) {
    CurveInput in;
    in.kind = kind;
    in.T = T;
    in.units = units;
    const Units4 f = factors(fluid, units, T);
    const double pcr = fluid.substance.pcr, vcr = RGas * fluid.substance.Tcr / pcr * 0.3;
    in.range = {0.0f, -1e7f, static_cast<float>(runs_over_v(kind) ? 8.0 * vcr * f.v : 1.47 * pcr * f.p),
                1e7f};
    in.process.From = 0.01 * pcr;
    in.process.To = 1.5 * pcr;
    in.options.chkCurveTpRestricted = false;
    return in;
}

inline Points points_of(const Fluid& fluid, const CurveInput& in) {
    return CalcCurve(fluid, in).curve.points;
}
inline double X(const CurvePoint& point) { return static_cast<double>(point.X); }
inline double Y(const CurvePoint& point) { return static_cast<double>(point.Y); }
inline double Par(const CurvePoint& point) { return static_cast<double>(point.Par); }

inline double span_of(const Points& points) {
    double largest = 0.0;
    for (const CurvePoint& point : points) largest = std::max(largest, std::fabs(Y(point)));
    return largest;
}

}  // namespace quom::test
