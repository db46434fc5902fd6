// Curves along an isotherm: every point against the state it claims by the single calls, and the curves
// against relations of thermodynamics between their points.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <string>

#include "diagrams/curve_generator.h"
#include "diagrams/curve_run.h"
#include "engine/vapor_pressure.h"
#include "support/starter.h"

namespace quom {
namespace {

using Points = std::vector<CurvePoint>;

constexpr Kind over_p[] = {Kind::a_p, Kind::u_p,  Kind::h_p,  Kind::s_p,
                           Kind::g_p, Kind::eH_p, Kind::cp_p, Kind::eU_p};
constexpr Kind over_v[] = {Kind::a_v, Kind::u_v, Kind::s_v, Kind::cV_v, Kind::eU_v};
constexpr Kind residual[] = {Kind::residual_s_p, Kind::residual_h_p, Kind::residual_g_p, Kind::residual_cp_p};
constexpr Kind pairs[] = {Kind::eH_h_isotherm, Kind::h_s_isotherm, Kind::eH_s_isotherm};
constexpr Kind plain[] = {Kind::p_v, Kind::pv_p, Kind::rho_p};

std::vector<Kind> all_kinds() {
    std::vector<Kind> all;
    for (const std::span<const Kind> some :
         {std::span<const Kind>(plain), std::span<const Kind>(over_p), std::span<const Kind>(over_v),
          std::span<const Kind>(residual), std::span<const Kind>(pairs)})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

// Constants of the equations that are typed or read from a file, of usual size.
const EosInput Typed{
    .b0 = 0.1, .b1 = 1e4, .b2 = 1.8, .JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 0.2, .JiZc = 0.31, .JiB1 = 0.02};

bool runs_over_v(Kind kind) { return kind_info(kind).x == AxisQuantity::v; }

struct Units4 {
    double v = 1, p = 1, u = 1;
};
// The factors as they are defined.
Units4 factors(const Fluid& fluid, const Units& units, double T) {
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
CurveInput make_input(const Fluid& fluid, Kind kind, double T, const Units& units = {}) {
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

Points points_of(const Fluid& fluid, const CurveInput& in) { return CalcCurve(fluid, in).curve.points; }
double X(const CurvePoint& point) { return static_cast<double>(point.X); }
double Y(const CurvePoint& point) { return static_cast<double>(point.Y); }
double Par(const CurvePoint& point) { return static_cast<double>(point.Par); }

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

double span_of(const Points& points) {
    double largest = 0.0;
    for (const CurvePoint& point : points) largest = std::max(largest, std::fabs(Y(point)));
    return largest;
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
    std::shared_ptr<const Fluid> fluid = test::starter_fluid(GetParam().cas, GetParam().eos, Typed);
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

INSTANTIATE_TEST_SUITE_P(Fluids, Isotherms,
                         testing::Values(FluidCase{test::propane, Eos::peng_robinson},
                                         FluidCase{test::water, Eos::soave},
                                         FluidCase{test::decane, Eos::berthelot},
                                         FluidCase{test::carbon_dioxide, Eos::tovarn_ji_2},
                                         FluidCase{test::methane, Eos::van_der_waals},
                                         FluidCase{test::ammonia, Eos::virial_peng_robinson},
                                         FluidCase{test::nitrogen, Eos::pitzer_curl},
                                         FluidCase{test::benzene, Eos::virial_manual}),
                         [](const auto& info) {
                             return "eos" + std::to_string(static_cast<int>(info.param.eos));
                         });

// The flat part is where the areas under the isotherm are equal: integral of p dv = p(LV) (v(V) - v(L)),
// taken from the points of the curve with its loop.
TEST(IsothermOfVolume, FlatPartLiesAtEqualAreas) {
    for (const double Tr : {0.75, 0.9, 0.98}) {
        const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
        CurveInput in = make_input(*fluid, Kind::p_v, Tr * fluid->substance.Tcr);
        const Points stable = points_of(*fluid, in);
        // The widest gap is the flat part.
        std::size_t widest = 0;
        for (std::size_t i = 0; i + 1 < stable.size(); ++i)
            if (stable[i + 1].X - stable[i].X > stable[widest + 1].X - stable[widest].X) widest = i;
        const CurvePoint L = stable[widest], V = stable[widest + 1];
        EXPECT_EQ(L.Y, V.Y);
        in.options.chkSKurveOhneKonnode = true;
        in.range.XMin = 0.9f * L.X;
        in.range.XMax = 1.1f * V.X;
        in.options.Dens = 20000;
        const Points whole = points_of(*fluid, in);
        EXPECT_EQ(std::ranges::count(whole, L), 1);
        EXPECT_EQ(std::ranges::count(whole, V), 1);
        double area = 0.0;
        for (std::size_t i = 0; i + 1 < whole.size(); ++i)
            if (whole[i].X >= L.X && whole[i + 1].X <= V.X)
                area += 0.5 * (Y(whole[i]) + Y(whole[i + 1])) * (X(whole[i + 1]) - X(whole[i]));
        EXPECT_NEAR(area / ((X(V) - X(L)) * Y(L)), 1.0, 2e-5) << Tr;
        const auto [low, high] = std::ranges::minmax(whole, {}, &CurvePoint::Y);
        EXPECT_LT(low.Y, 0.999f * L.Y);
    }
}

// p(LV) of propane at 300 K: 997.8 kPa, rho(V) 21.6 kg/m^3 (Lemmon, McLinden and Wagner, J. Chem. Eng. Data
// 54 (2009) 3141); Peng and Robinson's equation meets both within 1.5 %,
// the liquid of 489.5 kg/m^3 within 5 %.
TEST(IsothermOfVolume, PropaneBoilsWhereItWasMeasured) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const Points points = points_of(*fluid, make_input(*fluid, Kind::rho_p, 300.0));
    std::size_t jump = 0;
    for (std::size_t i = 0; i + 1 < points.size(); ++i)
        if (points[i + 1].Y - points[i].Y > points[jump + 1].Y - points[jump].Y) jump = i;
    EXPECT_NEAR(X(points[jump]), 997.8, 15.0);
    EXPECT_EQ(points[jump].X, points[jump + 1].X);
    EXPECT_NEAR(Y(points[jump]), 21.6, 0.33);
    EXPECT_NEAR(Y(points[jump + 1]), 489.5, 25.0);
}

TEST(IsothermOfVolume, CriticalTemperatureHasNoFlatPart) {
    const auto fluid = test::starter_fluid(test::propane, Eos::soave);
    CurveInput in = make_input(*fluid, Kind::p_v, fluid->substance.Tcr);
    in.range.XMin = 0.15f;
    const CurveRun run(*fluid, in);
    // T(cr) counts as above: nothing but the scan.
    EXPECT_EQ(points_of(*fluid, in).size(),
              scan_values(run.XMin, run.XMax, run.dx, 0.0, false, run.round_limit()).size());
    in.T = std::nextafter(in.T, 0.0);
    EXPECT_EQ(points_of(*fluid, in).size(),
              scan_values(run.XMin, run.XMax, run.dx, 0.0, false, run.round_limit()).size() + 2);
}

TEST(IsothermOfVolume, ScanOverPStartsAboveZeroAndEndsAtItsLimit) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (const Kind kind : {Kind::pv_p, Kind::rho_p})
        for (const double T : {300.0, 400.0}) {
            CurveInput in = make_input(*fluid, kind, T);
            in.range.XMax = 5000.25f;
            in.options.Dens = 77;
            const CurveResult r = CalcCurve(*fluid, in);
            EXPECT_FLOAT_EQ(r.curve.points.front().X, T < fluid->substance.Tcr ? 0.01f : 1e-10f);
            EXPECT_EQ(r.curve.points.back().X, in.range.XMax);
            EXPECT_FALSE(r.Outside);
            // pv goes to R T.
            if (kind == Kind::pv_p) {
                EXPECT_NEAR(Y(r.curve.points.front()), RGas * T, 1e-4 * RGas * T);
            }
        }
}

TEST(IsothermFunctions, HoldTheRelationsOfThermodynamics) {
    for (const auto cas : {test::propane, test::water}) {
        const auto fluid = test::starter_fluid(cas, Eos::peng_robinson);
        const double TEnv = fluid->environment.T;
        for (const double Tr : {0.8, 1.1}) {
            const double T = Tr * fluid->substance.Tcr, RT = RGas * T;
            const auto of = [&](Kind kind) {
                CurveInput in = make_input(*fluid, kind, T);
                in.range.XMin = in.range.XMax / 500.0f;  // the scans of all kinds end alike
                Points points = points_of(*fluid, in);
                const float last = in.range.XMin * 1.5f;
                std::erase_if(points, [&](const CurvePoint& point) { return point.X < last; });
                return points;
            };
            const Points a = of(Kind::a_p), u = of(Kind::u_p), h = of(Kind::h_p), s = of(Kind::s_p),
                         g = of(Kind::g_p), eH = of(Kind::eH_p), eU = of(Kind::eU_p), cp = of(Kind::cp_p),
                         sr = of(Kind::residual_s_p), hr = of(Kind::residual_h_p),
                         gr = of(Kind::residual_g_p), cr = of(Kind::residual_cp_p);
            const std::size_t n = h.size();
            for (const Points* other : {&a, &u, &s, &g, &eH, &eU, &cp, &sr, &hr, &gr, &cr})
                ASSERT_EQ(other->size(), n);
            const double tolerance = 1e-6 * (span_of(h) + T * span_of(s) + span_of(g));
            for (std::size_t i = 0; i < n; ++i) {
                const double p = X(h[i]);
                ASSERT_EQ(h[i].X, gr[i].X);
                const double pv = Y(h[i]) - Y(u[i]);
                EXPECT_GT(pv, 0.0);
                EXPECT_NEAR(Y(g[i]), Y(h[i]) - T * Y(s[i]), tolerance);
                EXPECT_NEAR(Y(a[i]), Y(u[i]) - T * Y(s[i]), tolerance);
                EXPECT_NEAR(Y(gr[i]), Y(hr[i]) - T * Y(sr[i]), tolerance);
                // against the first point: exergies, ideal gas parts
                EXPECT_NEAR(Y(eH[i]) - Y(eH[0]), Y(h[i]) - Y(h[0]) - TEnv * (Y(s[i]) - Y(s[0])), tolerance);
                const double pEnv_v = fluid->environment.p / p * pv,
                             pEnv_v0 = fluid->environment.p / X(h[0]) * (Y(h[0]) - Y(u[0]));
                EXPECT_NEAR(Y(eU[i]) - Y(eU[0]),
                            Y(u[i]) - Y(u[0]) - TEnv * (Y(s[i]) - Y(s[0])) + pEnv_v - pEnv_v0,
                            tolerance * (1.0 + 10.0 * fluid->environment.p / p));
                EXPECT_NEAR(Y(hr[i]) - Y(hr[0]), Y(h[i]) - Y(h[0]), tolerance);
                EXPECT_NEAR(Y(sr[i]) - Y(sr[0]), Y(s[i]) - Y(s[0]) + RGas * std::log(p / X(h[0])),
                            tolerance / T);
                EXPECT_NEAR(Y(cr[i]) - Y(cr[0]), Y(cp[i]) - Y(cp[0]), 1e-6 * span_of(cp));
                EXPECT_LT(Y(sr[0]), 0.0);
                // (dg/dp)_T = v: the step is a chord of the curve
                if (i == 0 || h[i].X == h[i - 1].X) continue;
                const double v = pv / p, before = (Y(h[i - 1]) - Y(u[i - 1])) / X(h[i - 1]);
                const double chord = (Y(g[i]) - Y(g[i - 1])) / (p - X(h[i - 1]));
                const double slack = 3.0 * tolerance / (p - X(h[i - 1])) + 1e-6 * RT / p;
                EXPECT_GE(chord, std::min(v, before) - slack);
                EXPECT_LE(chord, std::max(v, before) + slack);
            }
        }
    }
}

// At p(LV) g is the same, h jumps by T ds, which is T dv dp(LV)/dT (Clapeyron).
TEST(IsothermFunctions, JumpAtSaturation) {
    for (const auto cas : {test::propane, test::water, test::carbon_dioxide}) {
        const auto fluid = test::starter_fluid(cas, Eos::soave);
        const double T = 0.85 * fluid->substance.Tcr;
        // ends of the vertical step: vapor, then liquid
        const auto jump = [&](Kind kind) {
            const Points points = points_of(*fluid, make_input(*fluid, kind, T));
            for (std::size_t i = 0; i + 1 < points.size(); ++i)
                if (points[i].X == points[i + 1].X) return std::pair{points[i], points[i + 1]};
            return std::pair{CurvePoint{}, CurvePoint{}};
        };
        const auto p_of = [&](double at) {
            CurveInput in = make_input(*fluid, Kind::p_v, at);
            in.TieLine = true;
            return Y(points_of(*fluid, in).front());
        };
        const auto [hV, hL] = jump(Kind::h_p);
        const auto [sV, sL] = jump(Kind::s_p);
        const auto [gV, gL] = jump(Kind::g_p);
        const auto [rV, rL] = jump(Kind::rho_p);
        const auto [grV, grL] = jump(Kind::residual_g_p);
        const double dh = Y(hV) - Y(hL), ds = Y(sV) - Y(sL), dv = fluid->M / Y(rV) - fluid->M / Y(rL);
        EXPECT_GT(dh, 0.0) << cas;
        EXPECT_NEAR(dh, T * ds, 2e-5 * dh);
        EXPECT_NEAR(Y(gV), Y(gL), 1e-5 * dh);
        EXPECT_NEAR(Y(grV), Y(grL), 1e-5 * dh);
        const double slope = (p_of(1.001 * T) - p_of(0.999 * T)) / (0.002 * T);
        EXPECT_NEAR(dh, T * dv * slope, 2e-4 * dh);
        EXPECT_NEAR(X(hV), p_of(T), 1e-6 * X(hV));
    }
}

// a over v: (da/dv)_T = -p, (da/dT)_v = -s, u = a + T s, T (ds/dT)_v = cV.
TEST(IsothermFunctions, OverVHoldTheRelations) {
    const auto fluid = test::starter_fluid(test::ammonia, Eos::peng_robinson);
    const double T = 1.15 * fluid->substance.Tcr, dT = 1.0;
    const auto of = [&](Kind kind, double at) {
        CurveInput in = make_input(*fluid, kind, at);
        in.range.XMin = 0.05f;
        return CalcCurve(*fluid, in).curve;
    };
    const CurvePoints a = of(Kind::a_v, T);
    EXPECT_EQ(a.Par, par_p);
    EXPECT_EQ(a.Tag, par_T);
    const Points u = of(Kind::u_v, T).points, s = of(Kind::s_v, T).points, cV = of(Kind::cV_v, T).points,
                 s1 = of(Kind::s_v, T - dT).points, s2 = of(Kind::s_v, T + dT).points;
    ASSERT_GT(a.points.size(), 900u);
    EXPECT_EQ(a.points.back().X, make_input(*fluid, Kind::a_v, T).range.XMax);
    const double scale = span_of(u) + T * span_of(s);
    for (std::size_t i = 1; i < a.points.size(); ++i) {
        const CurvePoint &here = a.points[i], &before = a.points[i - 1];
        EXPECT_EQ(here.Tag, static_cast<float>(T));
        EXPECT_NEAR(Y(u[i]), Y(here) + T * Y(s[i]), 1e-6 * scale);
        EXPECT_NEAR(Y(cV[i]), T * (Y(s2[i]) - Y(s1[i])) / (2.0 * dT),
                    1e-3 * Y(cV[i]) + 1e-7 * T * span_of(s));
        const double dv = X(here) - X(before), chord = (Y(before) - Y(here)) / dv,
                     slack = 2.5e-7 * span_of(a.points) / dv;
        EXPECT_GE(chord, std::min(Par(here), Par(before)) - slack);
        EXPECT_LE(chord, std::max(Par(here), Par(before)) + slack);
    }
}

TEST(IsothermFunctions, ScanOverVJumpsFromLiquidToVapor) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    CurveInput in = make_input(*fluid, Kind::s_v, 300.0);
    const Saturation sat = pLV_EOS(*fluid, in.T);
    in.range.XMax = static_cast<float>(1.5 * sat.vV);
    in.options.Dens = 5000;
    const double b = EOSParT(*fluid, in.T).b;
    const auto between = [&](const CurvePoint& x) {
        return X(x) > 1.0001 * sat.vL && X(x) < 0.9999 * sat.vV;
    };
    Points points = points_of(*fluid, in);
    EXPECT_EQ(std::ranges::count_if(points, between), 0);
    EXPECT_GE(X(points.front()), 1.04 * b);
    EXPECT_LT(X(points.front()), 1.04 * b + 1.1 * X(points.back()) / 10000.0);
    // A scan that starts in the vapor does not go back to v(V).
    in.range.XMin = static_cast<float>(1.2 * sat.vV);
    points = points_of(*fluid, in);
    EXPECT_EQ(
        std::ranges::count_if(points, [&](const CurvePoint& x) { return X(x) < X(points.back()) * 0.79; }),
        2);  // the saturated states
    // One that starts between them goes to v(V).
    in.range.XMin = static_cast<float>(0.5 * (sat.vL + sat.vV));
    EXPECT_EQ(std::ranges::count_if(points_of(*fluid, in), between), 0);
}

TEST(IsothermFunctions, CVIsShownWithoutItsSign) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    substance.cpPoly = {5.0f, 0.0f, 0.0f, 0.0f, 0.0f};  // below R: cV of the ideal gas is negative
    ModelSelection models = test::proposed_models(substance, Eos::peng_robinson);
    models.cpKode = CpForm::polynomial;
    const auto fluid =
        make_fluid({.substance = substance, .models = models, .eos_input = {}, .reference = {}});
    const Points points = points_of(*fluid, make_input(*fluid, Kind::cV_v, 450.0));
    ASSERT_FALSE(points.empty());
    const double cV = ThermoState(*fluid, 450.0, Par(points.back()), X(points.back())).cV;
    EXPECT_LT(cV, 0.0);
    EXPECT_NEAR(Y(points.back()), -cV, 1e-4);
}

// An equation that falls below p = 0 above T(cr): the functions are those at 0.01 kPa.
TEST(IsothermFunctions, PressureBelowZeroIsReplaced) {
    EosInput odd = Typed;
    odd.JiP3 = -5.0;
    const auto fluid = test::starter_fluid(test::propane, Eos::tovarn_ji_1, odd);
    const double T = 1.3 * fluid->substance.Tcr;
    int replaced = 0;
    for (const CurvePoint& point : points_of(*fluid, make_input(*fluid, Kind::s_v, T))) {
        const double p = pTv(*fluid, T, X(point)).p,
                     s = ThermoState(*fluid, T, p > 0.0 ? p : 0.01, X(point)).s;
        EXPECT_NEAR(Par(point), p > 0.0 ? p : 0.01, 1e-4 * std::fabs(p));
        EXPECT_NEAR(Y(point), s, 1e-3);
        replaced += p < 0.0;
    }
    EXPECT_GT(replaced, 10);
}

// Without cp(idG) the residual functions stand, the absolute ones are absent.
TEST(IsothermFunctions, ResidualFunctionsNeedNoHeatCapacity) {
    const auto full = test::starter_fluid(test::propane, Eos::peng_robinson);
    ModelSelection models = full->models;
    models.cpKode = CpForm::none;
    const auto fluid = with_models(*full, models);
    for (const double T : {300.0, 400.0})
        for (const Kind kind : residual) {
            const CurveInput in = make_input(*fluid, kind, T);
            const Points bare = points_of(*fluid, in), with_cp = points_of(*full, in);
            ASSERT_EQ(bare.size(), with_cp.size());
            for (std::size_t i = 0; i < bare.size(); ++i)
                EXPECT_NEAR(Y(bare[i]), Y(with_cp[i]), 1e-7 * std::fabs(Y(bare[i])) + 1e-12);
        }
    EXPECT_TRUE(points_of(*fluid, make_input(*fluid, Kind::h_p, 300.0)).empty());
}

TEST(IsothermOfTheVPhase, PartialCurveEndsAtSaturation) {
    const auto fluid = test::starter_fluid(test::propane, Eos::virial_peng_robinson);
    const double T = 300.0, pLV = pLV_EVP(fluid->substance, T, fluid->models.EVPKode).value;
    ASSERT_NEAR(pLV, 998.0, 15.0);
    for (const Units& units : {Units{}, Units{.VolumeMode = volume_per_mass}})
        for (const Kind kind : {Kind::pv_p, Kind::rho_p, Kind::h_p, Kind::cp_p, Kind::residual_h_p}) {
            CurveInput in = make_input(*fluid, kind, T, units);
            const auto last = [&] { return X(points_of(*fluid, in).back()); };
            const double whole = last();
            EXPECT_GT(whole, 3000.0);
            in.options.chkPartialKurve = true;
            EXPECT_NEAR(last(), pLV, 1e-6 * pLV) << static_cast<int>(kind);
            in.range.XMax = 500.0f;  // the range ends before
            EXPECT_EQ(last(), 500.0);
            in.range.XMax = static_cast<float>(make_input(*fluid, kind, T, units).range.XMax);
            in.T = 400.0;  // above T(cr) nothing is cut
            EXPECT_GT(last(), whole - 1.0);
        }
}

// v = R T/p + B leads to volumes that are none: no point there.
TEST(IsothermOfTheVPhase, NoPointWithoutAVolume) {
    const auto fluid = test::starter_fluid(test::propane, Eos::virial_peng_robinson);
    const double T = 250.0, B = VirialB(*fluid, T);
    ASSERT_LT(B, 0.0);
    for (const Kind kind : {Kind::pv_p, Kind::rho_p}) {
        CurveInput in = make_input(*fluid, kind, T);
        in.range.XMax = static_cast<float>(-3.0 * RGas * T / B);
        const Points points = points_of(*fluid, in);
        EXPECT_LT(X(points.back()), -RGas * T / B);
        EXPECT_TRUE(std::ranges::all_of(points, [](const CurvePoint& x) { return x.Y > 0.0f; }));
    }
}

TEST(IsothermLoops, FlagOfTheRange) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const auto outside = [&](Kind kind, bool in_range) {
        CurveInput in = make_input(*fluid, kind, 330.0);
        in.SCurve = true;
        if (!in_range) in.range.YMin = 9.9e6f;
        return CalcCurve(*fluid, in).Outside;
    };
    // pv and rho over p never tell that they lie outside; functions over p do so when their end lies inside.
    for (const Kind kind : {Kind::pv_p, Kind::rho_p}) EXPECT_FALSE(outside(kind, false));
    for (const Kind kind : over_p) EXPECT_TRUE(outside(kind, true));
    EXPECT_FALSE(outside(Kind::s_v, true));
    EXPECT_TRUE(outside(Kind::s_v, false));
    CurveInput in = make_input(*fluid, Kind::h_p, 330.0);
    in.SCurve = true;
    const double pLV = pLV_EOS(*fluid, in.T).p;
    in.range.XMin = static_cast<float>(0.5 * pLV);
    in.range.XMax = static_cast<float>(0.95 * pLV);  // the loop passes through, its end lies outside
    EXPECT_FALSE(CalcCurve(*fluid, in).Outside);
}

TEST(IsothermLoops, PointsAreSpacedAndFunctionsOfLnPKeepAbove) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (const Kind kind : over_p) {
        CurveInput in = make_input(*fluid, kind, 280.0);  // cold: the loop goes below p = 0
        in.SCurve = true;
        const double dx = static_cast<double>(in.range.XMax) / in.options.Dens;
        const Points points = points_of(*fluid, in);
        ASSERT_GT(points.size(), 60u);
        for (std::size_t i = 1; i + 1 < points.size(); ++i)
            EXPECT_GE(std::fabs(X(points[i]) - X(points[i - 1])), 1.499 * dx);
        const float lowest = std::ranges::min(points, {}, &CurvePoint::X).X;
        const bool both_signs = kind == Kind::u_p || kind == Kind::h_p || kind == Kind::cp_p;
        EXPECT_EQ(lowest < 0.0f, both_signs) << static_cast<int>(kind);
    }
    // rho over p keeps all of its 200 steps, pv over p those half a step apart.
    CurveInput in = make_input(*fluid, Kind::rho_p, 300.0);
    in.SCurve = true;
    EXPECT_EQ(points_of(*fluid, in).size(), 201u);
    in.kind = Kind::pv_p;
    const Points points = points_of(*fluid, in);
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        EXPECT_GE(std::fabs(X(points[i]) - X(points[i - 1])),
                  0.499 * static_cast<double>(in.range.XMax) / 500);
}

TEST(IsothermPairs, LimitsMayBeSwappedAndMustDiffer) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (const Kind kind : pairs) {
        CurveInput in = make_input(*fluid, kind, 330.0);
        const CurveResult forward = CalcCurve(*fluid, in);
        EXPECT_EQ(forward.curve.Par, par_p);
        EXPECT_EQ(forward.curve.Tag, par_T);
        EXPECT_NEAR(static_cast<double>(forward.curve.points.size()), 501.0, 1.0);
        std::swap(in.process.From, in.process.To);
        EXPECT_EQ(points_of(*fluid, in), forward.curve.points);
        in.process.From = in.process.To;
        EXPECT_EQ(CalcCurve(*fluid, in).Status, CurveStatus::outside);
        EXPECT_TRUE(points_of(*fluid, in).empty());
    }
    // h over s: the slope of the two-phase part is T.
    const Points points = points_of(*fluid, make_input(*fluid, Kind::h_s_isotherm, 330.0));
    std::size_t jump = 1;
    for (std::size_t i = 1; i < points.size(); ++i)
        if (std::fabs(X(points[i]) - X(points[i - 1])) > std::fabs(X(points[jump]) - X(points[jump - 1])))
            jump = i;
    const double slope = (Y(points[jump]) - Y(points[jump - 1])) / (X(points[jump]) - X(points[jump - 1]));
    EXPECT_NEAR(slope, 330.0, 0.5);
}

TEST(IsothermRules, BelowTheTriplePoint) {
    const auto fluid = test::starter_fluid(test::water, Eos::peng_robinson);
    for (const Kind kind : all_kinds()) {
        CurveInput in = make_input(*fluid, kind, 260.0);
        EXPECT_EQ(CalcCurve(*fluid, in).Status, CurveStatus::below_triple);
        EXPECT_FALSE(points_of(*fluid, in).empty());
        in.options.chkCurveTpRestricted = true;
        const CurveResult r = CalcCurve(*fluid, in);
        EXPECT_EQ(r.Status, CurveStatus::done);
        EXPECT_TRUE(r.curve.points.empty());
    }
}

}  // namespace
}  // namespace quom
