// Curves along an isotherm against relations of thermodynamics between their points, and their rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <span>

#include "diagrams/curve_run.h"
#include "engine/vapor_pressure.h"
#include "support/isotherms.h"

namespace quom {
namespace {

using namespace test;

// The flat part is where the areas under the isotherm are equal: integral of p dv = p(LV) (v(V) - v(L)),
// taken from the points of the curve with its loop.
TEST(IsothermOfVolume, FlatPartLiesAtEqualAreas) {
    for (const double Tr : {0.75, 0.9, 0.98}) {
        const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::soave);
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
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    for (const Kind kind : {Kind::pv_p, Kind::rho_p})
        for (const double T : {300.0, 400.0}) {
            CurveInput in = make_input(*fluid, kind, T);
            in.range.XMax = 5000.25f;
            in.options.Dens = 77;
            const CurveResult r = CalcCurve(*fluid, in);
            EXPECT_FLOAT_EQ(r.curve.points.front().X, T < fluid->substance.Tcr ? 0.01f : 1e-10f);
            EXPECT_EQ(r.curve.points.back().X, in.range.XMax);
            EXPECT_FALSE(r.Outside);
            in.kind = Kind::h_p;  // falls to 0, which is left out
            const Points down = points_of(*fluid, in);
            EXPECT_NEAR(X(down.front()), 5000.25 / 77, 1e-3);
            EXPECT_EQ(down.back().X, in.range.XMax);
            // pv goes to R T.
            if (kind == Kind::pv_p) {
                EXPECT_NEAR(Y(r.curve.points.front()), RGas * T, 1e-4 * RGas * T);
            }
        }
}

TEST(IsothermFunctions, HoldTheRelationsOfThermodynamics) {
    for (const auto cas : {propane, water}) {
        const auto fluid = starter_fluid(cas, Eos::peng_robinson);
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
    for (const auto cas : {propane, water, carbon_dioxide}) {
        const auto fluid = starter_fluid(cas, Eos::soave);
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
    const auto fluid = starter_fluid(ammonia, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    for (const int Dens : {77, 333, 500, 1000}) {
        in.options.Dens = Dens;
        EXPECT_EQ(points_of(*fluid, in).back().X, in.range.XMax) << Dens;
    }
    in.options.Dens = 5000;
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
    SubstanceConstants substance = starter_substance(propane);
    substance.cpPoly = {5.0f, 0.0f, 0.0f, 0.0f, 0.0f};  // below R: cV of the ideal gas is negative
    ModelSelection models = proposed_models(substance, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::tovarn_ji_1, odd);
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
    const auto full = starter_fluid(propane, Eos::peng_robinson);
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
    const auto proposed = starter_fluid(propane, Eos::virial_peng_robinson);
    ModelSelection models = proposed->models;
    models.EVPKode = Evp::august;  // it has values above T(cr)
    const auto fluid = with_models(*proposed, models);
    const double T = 300.0, pLV = pLV_EVP(fluid->substance, T, fluid->models.EVPKode).value;
    ASSERT_NEAR(pLV, 998.0, 60.0);
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
            in.T = 375.0;  // above T(cr) nothing is cut
            EXPECT_GT(last(), whole - 1.0);
        }
}

// v = R T/p + B leads to volumes that are none: no point there.
TEST(IsothermOfTheVPhase, NoPointWithoutAVolume) {
    const auto fluid = starter_fluid(propane, Eos::virial_peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    // In a narrow range the walk shows all of its steps, and how far down it goes.
    for (const Kind kind : over_p) {
        CurveInput in = make_input(*fluid, kind, 280.0);
        in.SCurve = true;
        in.range.XMax = 0.5f;
        const Points points = points_of(*fluid, in);
        EXPECT_GT(points.size(), 1000u);
        const bool all = kind == Kind::u_p || kind == Kind::h_p || kind == Kind::cp_p;
        if (all) {
            EXPECT_NEAR(static_cast<double>(points.size()), 30001.0, 300.0);
        } else {
            EXPECT_GE(std::ranges::min(points, {}, &CurvePoint::X).X, 0.1f);
        }
    }
    // rho over p keeps all of its 200 steps, pv over p those half a step apart.
    CurveInput in = make_input(*fluid, Kind::rho_p, 300.0);
    in.SCurve = true;
    EXPECT_EQ(points_of(*fluid, in).size(), 201u);
    in.kind = Kind::h_s_isotherm;
    in.T = 360.0;
    EXPECT_EQ(points_of(*fluid, in).size(), 801u);
    in.T = 300.0;
    in.kind = Kind::pv_p;
    const Points points = points_of(*fluid, in);
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        EXPECT_GE(std::fabs(X(points[i]) - X(points[i - 1])),
                  0.499 * static_cast<double>(in.range.XMax) / 500);
}

TEST(IsothermPairs, LimitsMayBeSwappedAndMustDiffer) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
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
    const auto fluid = starter_fluid(water, Eos::peng_robinson);
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
