// Every point of a curve along an isotherm against the state it claims, by the single calls.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "diagrams/curve_run.h"
#include "support/isotherms.h"

namespace quom {
namespace {

using namespace test;

// What an axis shows of the state T, p, v, by the single calls.
double shown(const Fluid& fluid, AxisQuantity q, double T, double p, double v, const Units4& f) {
    switch (q) {
        case AxisQuantity::v:
            return v * f.v;
        case AxisQuantity::p:
            return p * f.p;
        case AxisQuantity::pv:
            return p * v * f.p * f.v;
        case AxisQuantity::rho:
            return fluid.M / v;
        case AxisQuantity::residual_s:
        case AxisQuantity::residual_h:
        case AxisQuantity::residual_g:
        case AxisQuantity::residual_cp:
            return residual_value(ThermoFunc(fluid, T, p, v), q) * f.u;
        case AxisQuantity::cV:
            return std::fabs(ThermoState(fluid, T, p, v).cV) * f.u;
        default:
            return function_value(fluid, ThermoState(fluid, T, p, v), q) * f.u;
    }
}

// Volumes that a point at p may have: the stable one; at p(LV), within the digits of a point, both; of a
// loop, any root.
std::vector<double> volumes_at(const Fluid& fluid, double T, double p, bool loop) {
    const VolumeResult r = VolumeTp(fluid, T, p);
    if (r.reason != Reason::none) return {};
    if (loop) return {r.roots.VRoot.begin(), r.roots.VRoot.begin() + r.roots.nRoots};
    const Saturation sat = pLV_EOS(fluid, T);
    if (r.nRoots == 3 && sat.found()) {
        if (std::fabs(p / sat.p - 1.0) < 1e-6) return {sat.vL, sat.vV};
        return {p < sat.p ? r.vV : r.vL};
    }
    return {r.VFlag ? r.vV : r.vL};
}

// Why a point is not on its curve; empty: it is.
std::string fault(const Fluid& fluid, const CurveInput& in, const CurvePoint& point, double scale) {
    const KindInfo& kind = kind_info(in.kind);
    const Units4 f = factors(fluid, in.units, in.T);
    // At a spinodal volume goes with the root of p.
    const bool pair = kind.family == CurveFamily::isotherm_pairs;
    const double tolerance = (pair && in.SCurve ? 4e-4 : 2e-5) * scale + 2e-6 * std::fabs(Y(point));
    double p = X(point) / f.p;
    std::vector<double> volumes;
    if (pair) p = Par(point);
    if (runs_over_v(in.kind)) {
        volumes = {X(point) / f.v};
        p = kind.y == AxisQuantity::p ? Y(point) / f.p : Par(point);
        // At the saturated liquid the digits of v are not enough for p.
        const double slope =
            volumes[0] / 1e6 * std::fabs(ThermoFunc(fluid, in.T, p, volumes[0]).DerivA[dpdv_T]);
        const double off = std::fabs(pTv(fluid, in.T, volumes[0]).p - p);
        if (off > 1e-5 * std::fabs(p) + slope + 1e-6 * fluid.substance.pcr) return "p(T, v)";
        if (kind.y == AxisQuantity::p) return "";
    } else {
        volumes = volumes_at(fluid, in.T, p, in.SCurve);
    }
    if (in.SCurve && !(p > 0.1)) return "";
    if (p == 0.0 && kind.y == AxisQuantity::pv)
        return std::fabs(Y(point) / (RGas * in.T * f.p * f.v) - 1.0) < 1e-6 ? "" : "R T";
    // The digits of X or Par leave p open by 1e-7.
    const bool p_is_known = runs_over_v(in.kind);
    for (std::size_t k = 0; k < volumes.size(); ++k) {
        double low[2] = {HUGE_VAL, HUGE_VAL}, high[2] = {-HUGE_VAL, -HUGE_VAL};
        for (const double share : {1.0 - 1.2e-7, 1.0 + 1.2e-7, 1.0}) {
            const double at = p_is_known ? p : p * share;
            const std::vector<double> near = p_is_known ? volumes : volumes_at(fluid, in.T, at, in.SCurve);
            if (near.size() != volumes.size()) continue;
            const double xy[] = {shown(fluid, kind.x, in.T, at, near[k], f),
                                 shown(fluid, kind.y, in.T, at, near[k], f)};
            for (int axis = 0; axis < 2; ++axis) {
                low[axis] = std::min(low[axis], xy[axis]);
                high[axis] = std::max(high[axis], xy[axis]);
            }
        }
        const double x_off = 1e-6 * std::fabs(X(point)) + (kind.x == AxisQuantity::p ? 0.0 : tolerance);
        if (X(point) > low[0] - x_off && X(point) < high[0] + x_off && Y(point) > low[1] - tolerance &&
            Y(point) < high[1] + tolerance)
            return "";
    }
    return "no such state";
}

void expect_states(const Fluid& fluid, const CurveInput& in, std::size_t least) {
    const CurveResult r = CalcCurve(fluid, in);
    const Points& points = r.curve.points;
    const std::string where = fluid.substance.StoffName + ", EOS " +
                              std::to_string(static_cast<int>(fluid.models.EOSKode)) + ", kind " +
                              std::to_string(static_cast<int>(in.kind)) + ", T " + std::to_string(in.T) +
                              (in.SCurve ? ", loop" : "");
    EXPECT_GE(points.size(), least) << where;
    // cp and cV grow without limit in the loop and near the critical point.
    const AxisQuantity q = kind_info(in.kind).y;
    const bool heat = q == AxisQuantity::cp || q == AxisQuantity::cV || q == AxisQuantity::residual_cp;
    const double scale = heat ? RGas * factors(fluid, in.units, in.T).u : span_of(points);
    int shown = 0;
    for (const CurvePoint& point : points) {
        const std::string what = fault(fluid, in, point, scale);
        if (what.empty()) continue;
        ADD_FAILURE() << where << ": " << what << " at " << point.X << ", " << point.Y;
        if (++shown == 2) break;
    }
}

struct FluidCase {
    std::string_view cas;
    Eos eos;
};

class Isotherms : public testing::TestWithParam<FluidCase> {
 protected:
    std::shared_ptr<const Fluid> fluid = starter_fluid(GetParam().cas, GetParam().eos, Typed);
    double Tcr = fluid->substance.Tcr;
};

TEST_P(Isotherms, PointsAreTheStatesTheyClaim) {
    ASSERT_TRUE(fluid->has_eos());
    const Units all_units[] = {{},
                               {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass},
                               {.EnergyMode = energy_per_RT, .VolumeMode = reduced_volume},
                               {.EnergyMode = energy_per_R}};
    for (const Kind kind : all_kinds())
        for (const double Tr : {0.7, 0.97, 1.0, 1.2})
            for (const Units& units : all_units) {
                if (units.VolumeMode == reduced_volume && !(fluid->eos.vcrEOS > 0.0)) continue;
                CurveInput in = make_input(*fluid, kind, Tr * Tcr, units);
                in.options.Dens = 60;
                expect_states(*fluid, in, runs_over_v(kind) && Tr < 1.0 && !fluid->VPhaseOnly ? 2 : 30);
            }
}

// Within 1e-4 of p(LV) the vapor is below it, the liquid above.
TEST_P(Isotherms, PhasesChangeAtSaturation) {
    if (fluid->VPhaseOnly) return;
    for (const Kind kind : {Kind::pv_p, Kind::rho_p, Kind::h_p, Kind::s_p, Kind::residual_h_p})
        for (const double Tr : {0.7, 0.95}) {
            CurveInput in = make_input(*fluid, kind, Tr * Tcr);
            const double pLV = pLV_EOS(*fluid, in.T).p;
            in.range.XMin = static_cast<float>(pLV * (1.0 - 1e-4));
            in.range.XMax = static_cast<float>(pLV * (1.0 + 1e-4));
            in.options.Dens = 40;
            expect_states(*fluid, in, 40);
        }
}

TEST_P(Isotherms, LoopsLieBetweenTheSaturatedVolumes) {
    for (const Kind kind : all_kinds())
        for (const double Tr : {0.8, 0.95}) {
            CurveInput in = make_input(*fluid, kind, Tr * Tcr);
            in.SCurve = true;
            const CurveResult r = CalcCurve(*fluid, in);
            if (fluid->VPhaseOnly) {
                EXPECT_EQ(r.Status, CurveStatus::no_tie_line);
                EXPECT_TRUE(r.curve.points.empty());
                continue;
            }
            expect_states(*fluid, in, 20);
            const Saturation sat = pLV_EOS(*fluid, in.T);
            const Points& points = r.curve.points;
            const AxisQuantity x = kind_info(kind).x;
            if (runs_over_v(kind)) {
                EXPECT_FLOAT_EQ(points.front().X, static_cast<float>(sat.vL));
                EXPECT_FLOAT_EQ(points.back().X, static_cast<float>(sat.vV));
            } else if (x == AxisQuantity::p) {
                EXPECT_NEAR(X(points.front()), sat.p, 1e-5 * sat.p);
                EXPECT_NEAR(X(points.back()), sat.p, 1e-5 * sat.p);
                const auto highest = std::ranges::max_element(points, {}, &CurvePoint::X);
                EXPECT_GT(X(*highest), 1.001 * sat.p) << static_cast<int>(kind);
                const auto lowest = std::ranges::min_element(points, {}, &CurvePoint::X);
                EXPECT_LT(X(*lowest), 0.999 * sat.p) << static_cast<int>(kind);
            }
            if (kind != Kind::rho_p) continue;
            for (const CurvePoint& point : points) {
                const double v = fluid->M / Y(point);
                EXPECT_GE(v, sat.vL * (1.0 - 1e-6));
                EXPECT_LE(v, sat.vV * (1.0 + 1e-6));
            }
        }
}

// Ranges that make no sense, and parameters: no crash, no endless scan, no number that is none.
TEST_P(Isotherms, HostileInputEnds) {
    constexpr float inf = std::numeric_limits<float>::infinity(),
                    nan = std::numeric_limits<float>::quiet_NaN();
    const CurveRange ranges[] = {
        {0, 0, 0, 0},          {5, 0, 5, 1},           {-1e3f, -1, 1e3f, 1}, {1e3f, 1, -1e3f, -1},
        {nan, 0, 1, 1},        {0, 0, nan, 1},         {-inf, 0, inf, 1},    {1e9f, 0, 1.0000001e9f, 1},
        {-1e30f, 0, 1e30f, 1}, {1e-30f, 0, 1e-29f, 1}, {-5, 0, -1, 1},       {0, 0, 1e-6f, 1}};
    const double temperatures[] = {0.0,       -1.0, 1e-3, 1.0,
                                   0.3 * Tcr, Tcr,  1e9,  std::numeric_limits<double>::quiet_NaN()};
    for (const Kind kind : all_kinds())
        for (const CurveRange& range : ranges)
            for (const double T : temperatures)
                for (const bool loop : {false, true}) {
                    CurveInput in = make_input(*fluid, kind, T);
                    in.range = range;
                    in.SCurve = loop;
                    in.options.Dens = 20;
                    in.process.From = static_cast<double>(range.XMin);
                    in.process.To = static_cast<double>(range.XMax);
                    const Points points = points_of(*fluid, in);
                    EXPECT_LE(points.size(), 30002u);
                    for (const CurvePoint& point : points)
                        ASSERT_TRUE(std::isfinite(point.X) && std::isfinite(point.Y) &&
                                    std::isfinite(point.Par) && std::isfinite(point.Tag));
                    if (T < Tcr && T > 0.2 * Tcr) continue;
                    if (loop) {
                        EXPECT_TRUE(points.empty() || T == 1.0);  // 1 K may be hot for helium
                    }
                }
}

INSTANTIATE_TEST_SUITE_P(
    Fluids, Isotherms,
    testing::Values(FluidCase{propane, Eos::peng_robinson}, FluidCase{water, Eos::soave},
                    FluidCase{decane, Eos::berthelot}, FluidCase{carbon_dioxide, Eos::tovarn_ji_2},
                    FluidCase{methane, Eos::van_der_waals}, FluidCase{ammonia, Eos::virial_peng_robinson},
                    FluidCase{nitrogen, Eos::pitzer_curl}, FluidCase{benzene, Eos::virial_manual}),
    [](const auto& info) { return "eos" + std::to_string(static_cast<int>(info.param.eos)); });

}  // namespace
}  // namespace quom
