// Curves along an isobar: jumps, slopes, loops, and what the options cut.
#include <gtest/gtest.h>

#include <map>

#include "diagrams/section_curves.h"
#include "engine/vapor_pressure.h"

namespace quom::test {
namespace {

constexpr CurveRange propane_T{85, -100000, 480, 100000};

struct Case {
    const char* name;
    std::string_view substance;
    Eos code;
    double p;  // [kPa], below p(cr)
    CurveRange range;
};
constexpr Case cases[] = {
    {"propane, Peng/Robinson", propane, Eos::peng_robinson, 1000.0, propane_T},
    {"propane, low p", propane, Eos::peng_robinson, 5.0, propane_T},
    {"propane, near p(cr)", propane, Eos::peng_robinson, 4200.0, {340, -100000, 400, 100000}},
    {"water, Soave", water, Eos::soave, 101.325, {280, -100000, 700, 100000}},
    {"methane, Berthelot", methane, Eos::berthelot, 500.0, {91, -100000, 230, 100000}},
    {"benzene, Redlich/Kwong", benzene, Eos::redlich_kwong, 800.0, {300, -100000, 650, 100000}},
};

// Y by X, one of a jump.
std::map<double, double> values(const CurveResult& result) {
    std::map<double, double> r;
    for (const CurvePoint& point : result.curve.points) r[X(point)] = Y(point);
    return r;
}

// How far T is from the temperature at which the equation has v at p: (p - p(T, v))/(dp/dT)_v.
double temperature_error(const Fluid& fluid, double T, double v, double p) {
    const double slope = (pTv(fluid, T + 0.01, v).p - pTv(fluid, T - 0.01, v).p) / 0.02;
    return (p - pTv(fluid, T, v).p) / slope;
}

CurveResult curve(const Fluid& fluid, Kind kind, const Case& c, bool SCurve = false) {
    CurveInput input = input_of(kind, c.range, c.p);
    input.SCurve = SCurve;
    return CalcCurve(fluid, input);
}

// Across T(LV) the functions jump by what Clapeyron's equation makes of v(L), v(V): delta h = T delta s,
// delta g = 0, delta u = delta h - p delta v, delta a = -p delta v, exergies with TEnv delta s, pEnv delta v.
TEST(IsobarCurve, JumpsByTheHeatOfVaporization) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto fluid = starter_fluid(c.substance, c.code);
        const Saturation boiling = TLV_EOS(*fluid, c.p);
        const double dh = clapeyron(*fluid, boiling.T), ds = dh / boiling.T, dv = boiling.vV - boiling.vL;
        const double TEnv = fluid->reference.TEnv, pEnv = fluid->reference.pEnv;
        const struct {
            Kind kind;
            double jump;
        } jumps[] = {
            {Kind::h_T, dh},
            {Kind::s_T, ds},
            {Kind::g_T, 0.0},
            {Kind::u_T, dh - c.p * dv},
            {Kind::a_T, -c.p * dv},
            {Kind::eH_T, dh - TEnv * ds},
            {Kind::eU_T, dh - c.p * dv - TEnv * ds + pEnv * dv},
            {Kind::residual_h_T, dh},
            {Kind::residual_s_T, ds},
            {Kind::residual_g_T, 0.0},
        };
        for (const auto& [kind, jump] : jumps) {
            const Jump found = jump_at(curve(*fluid, kind, c), boiling.T);
            ASSERT_EQ(found.count, 2) << static_cast<int>(kind);
            const double size = std::max({std::fabs(Y(found.first)), std::fabs(Y(found.second)), 1.0});
            EXPECT_NEAR(Y(found.second) - Y(found.first), jump, 1e-5 * std::fabs(jump) + 4e-7 * size)
                << static_cast<int>(kind);
        }
    }
}

// (dh/dT)_p = cp, (ds/dT)_p = cp/T, (dg/dT)_p = -s, each between neighbours on one side of T(LV).
TEST(IsobarCurve, SlopesAreTheNextFunction) {
    const struct {
        Kind kind, slope;
        double (*factor)(double T);
    } relations[] = {
        {Kind::h_T, Kind::cp_T, [](double) { return 1.0; }},
        {Kind::s_T, Kind::cp_T, [](double T) { return 1.0 / T; }},
        {Kind::g_T, Kind::s_T, [](double) { return -1.0; }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto fluid = starter_fluid(c.substance, c.code);
        const double boiling = TLV_EOS(*fluid, c.p).T,
                     step = static_cast<double>(c.range.XMax - c.range.XMin) / 500.0;
        for (const auto& [kind, slope, factor] : relations) {
            const auto y = values(curve(*fluid, kind, c)), k = values(curve(*fluid, slope, c));
            int compared = 0;
            for (auto at = y.begin(); std::next(at) != y.end(); ++at) {
                const auto next = std::next(at);
                const double T1 = at->first, T2 = next->first, T = 0.5 * (T1 + T2);
                const auto k1 = k.find(at->first), k2 = k.find(next->first);
                // cp is no straight line over a step near the critical point.
                if (std::fabs(T - boiling) < 12.0 * step || k1 == k.end() || k2 == k.end()) continue;
                if (T2 - T1 < 0.5 * step) continue;
                const double mean = 0.5 * (k1->second + k2->second) * factor(T);
                const double noise = 3e-7 * (std::fabs(at->second) + 1.0) / (T2 - T1);
                EXPECT_NEAR((next->second - at->second) / (T2 - T1), mean, 2e-3 * std::fabs(mean) + noise)
                    << static_cast<int>(kind) << " at " << T;
                ++compared;
            }
            EXPECT_GT(compared, 350);
        }
    }
}

// h - h(idG), s - s(idG), g - g(idG), cp - cp(idG) against the same substance as an ideal gas; at T(LV) the
// scan stops for both ends and goes on 0.0001 K below.
TEST(IsobarCurve, ResidualsAreTheDistanceFromTheIdealGas) {
    using Function = double StateFunctions::*;
    const struct {
        Kind kind;
        Function function;
    } residuals[] = {{Kind::residual_h_T, &StateFunctions::h},
                     {Kind::residual_s_T, &StateFunctions::s},
                     {Kind::residual_g_T, &StateFunctions::g},
                     {Kind::residual_cp_T, &StateFunctions::cp}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto fluid = starter_fluid(c.substance, c.code), ideal = with_eos(*fluid, Eos::ideal_gas);
        const Saturation boiling = TLV_EOS(*fluid, c.p);
        const double step = static_cast<double>(c.range.XMax - c.range.XMin) / 500.0;
        for (const auto& [kind, function] : residuals) {
            const CurveResult result = curve(*fluid, kind, c);
            EXPECT_EQ(jump_at(result, boiling.T - 0.0001).count, 1);
            for (const CurvePoint& point : result.curve.points) {
                const double T = X(point);
                if (std::fabs(T - boiling.T) < 1e-3) continue;
                EXPECT_FALSE(T > boiling.T && T < boiling.T + 0.99 * step);
                const VolumeResult v = VolumeTp(*fluid, T, c.p);
                const StateFunctions real = ThermoState(*fluid, T, c.p, T < boiling.T ? v.vL : v.vV),
                                     gas = ThermoState(*ideal, T, c.p, RGas * T / c.p);
                const double y = real.*function - gas.*function;
                const double near = kind == Kind::residual_cp_T ? 1e-3 : 1e-5;
                EXPECT_NEAR(Y(point), y, near * std::fabs(y) + 1e-6 * std::fabs(gas.*function)) << T;
            }
        }
    }
}

// (dT/dp)_h = -(dh/dp)_T/(dh/dT)_p by difference quotients; at low p (T B' - B)/cp(idG) with B = b - a/(R T).
TEST(IsobarCurve, JouleThomsonCoefficient) {
    const auto fluid = starter_fluid(methane, Eos::peng_robinson);
    const CurveResult result = CalcCurve(*fluid, input_of(Kind::joule_thomson_T, {150, -1, 400, 1}, 1000.0));
    ASSERT_GT(result.curve.points.size(), 490u);
    const auto h = [&](double T, double p) {
        const VolumeResult at = VolumeTp(*fluid, T, p);
        return ThermoState(*fluid, T, p, at.VFlag ? at.vV : at.vL).h;
    };
    for (const CurvePoint& point : result.curve.points) {
        const double T = X(point), p = 1000.0;
        const double by_p = (h(T, p + 1.0) - h(T, p - 1.0)) / 2.0;
        const double by_T = (h(T + 0.01, p) - h(T - 0.01, p)) / 0.02;
        EXPECT_NEAR(Y(point), -by_p / by_T, 1e-4 * std::fabs(by_p / by_T)) << T;
    }
    const VirialDerivatives B = virial_derivatives(*starter_fluid(methane, Eos::virial_peng_robinson), 300.0);
    const auto thin = values(CalcCurve(*fluid, input_of(Kind::joule_thomson_T, {299, -1, 301, 1}, 0.1)));
    const double cpId = ThermoState(*fluid, 300.0, 0.1, RGas * 300.0 / 0.1).cpId;
    EXPECT_NEAR(thin.lower_bound(299.999)->second / ((300.0 * B.B1 - B.B) / cpId), 1.0, 1e-4);
}

// T over v and rho: L below T(LV), V above, both ends there, every point a volume of the equation.
TEST(IsobarCurve, VolumesOnBothSidesOfBoiling) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const auto fluid = starter_fluid(c.substance, c.code);
        const Saturation boiling = TLV_EOS(*fluid, c.p);
        const CurveRange range{0, c.range.XMin, 1000, c.range.XMax};
        for (const Kind kind : {Kind::T_v, Kind::T_rho}) {
            const CurveResult result = CalcCurve(*fluid, input_of(kind, range, c.p));
            const auto volume = [&](const CurvePoint& point) {
                return kind == Kind::T_v ? X(point) : fluid->M / X(point);
            };
            const Jump jump = jump_at(result, boiling.T, &CurvePoint::Y);
            ASSERT_EQ(jump.count, 2);
            EXPECT_NEAR(std::min(volume(jump.first), volume(jump.second)) / boiling.vL, 1.0, 2e-7);
            EXPECT_NEAR(std::max(volume(jump.first), volume(jump.second)) / boiling.vV, 1.0, 2e-7);
            EXPECT_TRUE(std::ranges::is_sorted(result.curve.points, {}, &CurvePoint::X));
            EXPECT_GT(result.curve.points.size(), 495u);
            for (const CurvePoint& point : result.curve.points) {
                const double T = Y(point), v = volume(point);
                EXPECT_NEAR(temperature_error(*fluid, T, v, c.p), 0.0, 2e-3) << T;
                if (std::fabs(T - boiling.T) < 1e-3) continue;
                EXPECT_EQ(v <= boiling.vL, T < boiling.T) << T << " " << v;
            }
        }
    }
}

// Where a point of the scan falls into the band that counts as saturated, h still rises with T.
TEST(IsobarCurve, RisesThroughTheBandOfSaturation) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const double p = 100.0;
    const auto T = static_cast<float>(TLV_EOS(*fluid, p).T);
    ASSERT_TRUE(VolumeTp(*fluid, static_cast<double>(T) + 0.01, p).LFlag);
    for (const Kind kind : {Kind::h_T, Kind::T_v}) {
        const CurveRange range{T - 0.11f, T - 0.11f, T + 0.1f, T + 0.1f};
        const CurveResult result = CalcCurve(*fluid, input_of(kind, range, p));
        EXPECT_TRUE(std::ranges::is_sorted(result.curve.points, {}, &CurvePoint::Y));
        EXPECT_TRUE(std::ranges::is_sorted(result.curve.points, {}, &CurvePoint::X));
    }
}

// Between v(L) and v(V): the equation's own T(p, v), up to the spinodal, down to the other one and up again.
TEST(IsobarLoop, VolumesSatisfyTheEquation) {
    for (const Case& c : cases) {
        if (c.p < 50.0) continue;  // so wide that the steps leave out the spinodals
        SCOPED_TRACE(c.name);
        const auto fluid = starter_fluid(c.substance, c.code);
        const Saturation boiling = TLV_EOS(*fluid, c.p);
        CurveInput input = input_of(Kind::T_v, c.range, c.p);
        input.SCurve = true;
        input.options.chkCurveTpRestricted = false;
        const CurveResult result = CalcCurve(*fluid, input);
        const auto& points = result.curve.points;
        ASSERT_GE(points.size(), 100u);
        EXPECT_FLOAT_EQ(points.front().X, static_cast<float>(boiling.vL));
        EXPECT_NEAR(Y(points.front()), boiling.T, 1e-4 * boiling.T);
        EXPECT_FLOAT_EQ(points.back().X, static_cast<float>(boiling.vV));
        EXPECT_FLOAT_EQ(points.back().Y, static_cast<float>(boiling.T));
        int turns = 0;
        for (std::size_t i = 0; i < points.size(); ++i) {
            EXPECT_NEAR(temperature_error(*fluid, Y(points[i]), X(points[i]), c.p), 0.0, 2e-3) << i;
            if (i < 2) continue;
            turns += (Y(points[i]) - Y(points[i - 1])) * (Y(points[i - 1]) - Y(points[i - 2])) < 0.0;
        }
        EXPECT_EQ(turns, 2);
    }
}

// Along the loop too dg = -s dT, g = h - T s, and eH = h - TEnv s up to a constant; kind 24 draws the same
// h, s.
TEST(IsobarLoop, FunctionsBelongTogether) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const Case c{"", propane, Eos::peng_robinson, 1000.0, propane_T};
    const double TEnv = fluid->reference.TEnv;
    const auto h = curve(*fluid, Kind::h_T, c, true).curve.points,
               s = curve(*fluid, Kind::s_T, c, true).curve.points,
               g = curve(*fluid, Kind::g_T, c, true).curve.points,
               e = curve(*fluid, Kind::eH_T, c, true).curve.points,
               hs = curve(*fluid, Kind::h_s_isobar, c, true).curve.points;
    ASSERT_GE(h.size(), 801u);
    ASSERT_EQ(hs.size(), h.size());
    const double constant = Y(e[0]) - Y(h[0]) + TEnv * Y(s[0]);
    for (std::size_t i = 0; i < h.size(); ++i) {
        EXPECT_EQ(hs[i].X, s[i].Y);
        EXPECT_EQ(hs[i].Y, h[i].Y);
        EXPECT_EQ(hs[i].Par, h[i].X);
        EXPECT_NEAR(Y(g[i]), Y(h[i]) - X(h[i]) * Y(s[i]), 0.01) << i;
        EXPECT_NEAR(Y(e[i]), Y(h[i]) - TEnv * Y(s[i]) + constant, 0.01) << i;
        if (i == 0) continue;
        const double dg = -0.5 * (Y(s[i]) + Y(s[i - 1])) * (X(h[i]) - X(h[i - 1]));
        EXPECT_NEAR(Y(g[i]) - Y(g[i - 1]), dg, 0.01 + 1e-3 * std::fabs(dg)) << i;
    }
    const Saturation boiling = TLV_EOS(*fluid, 1000.0);
    EXPECT_NEAR(Y(h.back()) - Y(h.front()), clapeyron(*fluid, boiling.T), 0.1);
}

// cp keeps a point where T moved by a step of the axis: it is cp of one of the three roots there.
TEST(IsobarLoop, HeatCapacity) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const Case c{"", propane, Eos::peng_robinson, 1000.0, propane_T};
    const double step = (480.0 - 85.0) / 500.0;
    const auto points = curve(*fluid, Kind::cp_T, c, true).curve.points;
    ASSERT_GT(points.size(), 100u);
    bool negative = false;
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const double T = X(points[i]);
        const double moved = i > 0 ? std::fabs(T - X(points[i - 1])) : step;
        EXPECT_GE(moved, step - 1e-4);
        EXPECT_LT(T, fluid->substance.Tcr);
        negative = negative || points[i].Y < 0.0f;
        double nearest = HUGE_VAL;
        for (const double v : CubicV(EOSParT(*fluid, T), c.p).VRoot) {
            const double cp = v > 0.0 ? ThermoState(*fluid, T, c.p, v).cp : HUGE_VAL;
            if (std::fabs(cp - Y(points[i])) < std::fabs(nearest - Y(points[i]))) nearest = cp;
        }
        EXPECT_NEAR(Y(points[i]) / nearest, 1.0, std::fabs(nearest) < 2000.0 ? 0.01 : 1.0) << T;
    }
    EXPECT_TRUE(negative) << "between the spinodals cp is below 0";
    EXPECT_FLOAT_EQ(points.back().X, static_cast<float>(TLV_EOS(*fluid, 1000.0).T));
}

// No loop above p(cr), at it, and for an equation of the V-phase only.
TEST(IsobarLoop, NeedsTwoPhases) {
    const auto cubic = starter_fluid(propane, Eos::peng_robinson),
               virial = starter_fluid(propane, Eos::virial_peng_robinson);
    for (const Kind kind :
         {Kind::T_v, Kind::T_rho, Kind::h_T, Kind::cp_T, Kind::residual_h_T, Kind::h_s_isobar}) {
        for (const double p : {cubic->substance.pcr, 6000.0, 1000.0}) {
            const Fluid& fluid = p == 1000.0 ? *virial : *cubic;
            const CurveResult result =
                curve(fluid, kind, {"", propane, Eos::none, p, {85, 85, 480, 480}}, true);
            EXPECT_EQ(result.Status, CurveStatus::no_tie_line) << static_cast<int>(kind) << " at " << p;
            EXPECT_TRUE(result.curve.points.empty());
        }
    }
}

// Functions over functions between T1 and T2: Par T, Tag p; the limits in either order.
TEST(IsobarPairs, RunBetweenTheirLimits) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const double TEnv = fluid->reference.TEnv, p = 1000.0;
    for (const Kind kind : {Kind::eH_h_isobar, Kind::eH_s_isobar, Kind::h_s_isobar}) {
        CurveInput input = input_of(kind, {-300, -100000, 300, 100000}, p);
        input.process.From = 450.0;
        input.process.To = 250.0;
        const CurveResult falling = CalcCurve(*fluid, input);
        std::swap(input.process.From, input.process.To);
        const CurveResult rising = CalcCurve(*fluid, input);
        EXPECT_EQ(falling.curve, rising.curve);
        const auto& points = rising.curve.points;
        ASSERT_GE(points.size(), 500u);
        EXPECT_EQ(points.front().Par, 250.0f);
        EXPECT_NEAR(static_cast<double>(points.back().Par), 450.0, 0.41);
        for (const CurvePoint& point : points) {
            const double T = static_cast<double>(point.Par);
            const VolumeResult at = VolumeTp(*fluid, T, p);
            const StateFunctions f = ThermoState(*fluid, T, p, at.LFlag ? at.vL : at.vV);
            const double x = kind == Kind::eH_h_isobar ? f.h : kind == Kind::eH_s_isobar ? TEnv * f.s : f.s;
            EXPECT_NEAR(X(point), x, 0.01 + 1e-6 * std::fabs(x)) << T;
            EXPECT_NEAR(Y(point), kind == Kind::h_s_isobar ? f.h : f.eH, 0.02) << T;
            EXPECT_EQ(point.Tag, 1000.0f);
        }
        input.process.From = input.process.To;
        const CurveResult none = CalcCurve(*fluid, input);
        EXPECT_EQ(none.Status, CurveStatus::outside);
        EXPECT_TRUE(none.curve.points.empty());
    }
}

// v = R T/p + B; the option cuts functions over T at T(LV) of the vapor pressure equation, not T over v.
TEST(IsobarVaporOnly, EndsAtBoilingWhenAsked) {
    const auto fluid = starter_fluid(propane, Eos::virial_peng_robinson);
    const double p = 500.0, boiling = TLV_EVP(fluid->substance, p, fluid->models.EVPKode).value;
    ASSERT_GT(boiling, 250.0);
    for (const bool partial : {false, true}) {
        for (const Kind kind : {Kind::h_T, Kind::residual_s_T, Kind::T_v}) {
            CurveInput input = input_of(kind, {200, -100000, 480, 100000}, p);
            if (kind == Kind::T_v) input.range = {0, 200, 20, 480};
            input.options.chkPartialKurve = partial;
            const CurveResult result = CalcCurve(*fluid, input);
            const auto T = kind == Kind::T_v ? &CurvePoint::Y : &CurvePoint::X;
            const float lowest = std::ranges::min(result.curve.points, {}, T).*T;
            const double end = partial && kind != Kind::T_v ? boiling : 200.0;
            EXPECT_NEAR(static_cast<double>(lowest), end, kind == Kind::residual_s_T ? 0.56 : 1e-3);
        }
    }
    for (const CurvePoint& point :
         CalcCurve(*fluid, input_of(Kind::T_rho, {0, 200, 20, 480}, p)).curve.points) {
        const double v = RGas * Y(point) / p + VirialB(*fluid, Y(point));
        EXPECT_NEAR(X(point) * v / fluid->M, 1.0, 3e-7);
    }
}

// Displayed values over molar ones, as they follow from the units.
TEST(IsobarCurve, Units) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const double Tcr = fluid->substance.Tcr, vcr = fluid->eos.vcrEOS, M = fluid->M;
    const Case c{"", propane, Eos::peng_robinson, 1000.0, {200, -100000, 480, 100000}};
    const auto scaled = [](CurveRange range, double x, double y) {
        return CurveRange{static_cast<float>(range.XMin * x), static_cast<float>(range.YMin * y),
                          static_cast<float>(range.XMax * x), static_cast<float>(range.YMax * y)};
    };
    for (const Kind kind : {Kind::h_T, Kind::cp_T, Kind::residual_g_T}) {
        const auto molar = curve(*fluid, kind, c).curve.points;
        for (const int mode : {energy_per_R, energy_per_RT, energy_per_mass}) {
            CurveInput input = input_of(kind, scaled(c.range, 1.0 / Tcr, 1.0), c.p);
            input.units.EnergyMode = mode;
            input.units.VolumeMode = reduced_volume;
            const auto points = CalcCurve(*fluid, input).curve.points;
            ASSERT_NEAR(static_cast<double>(points.size()), static_cast<double>(molar.size()), 2.0);
            for (std::size_t i = 10; i < 100; ++i) {
                // The scans of both units differ by rounding.
                const double T = X(points[i]) * Tcr, part = Y(molar[i + 1]) - Y(molar[i]);
                const double y = Y(molar[i]) + part * (T - X(molar[i])) / (X(molar[i + 1]) - X(molar[i]));
                const double factor = mode == energy_per_R    ? 1.0 / RGas
                                      : mode == energy_per_RT ? 1.0 / (RGas * T)
                                                              : 1.0 / M;
                EXPECT_NEAR(Y(points[i]), y * factor, 2e-5 * std::fabs(y * factor)) << mode << ' ' << T;
            }
        }
    }
    const Saturation boiling = TLV_EOS(*fluid, c.p);
    for (const int mode : {volume_per_mass, reduced_volume}) {
        CurveInput input = input_of(Kind::T_v, {0, 200, 2, 480}, c.p);
        input.units.VolumeMode = mode;
        const double T = mode == reduced_volume ? Tcr : 1.0, v = mode == reduced_volume ? vcr : M;
        input.range = scaled(input.range, 1.0 / v, 1.0 / T);
        const auto points = CalcCurve(*fluid, input).curve.points;
        EXPECT_NEAR(Y(points.front()) * T, 200.0, 1e-4);
        EXPECT_NEAR(static_cast<double>(points.front().Par), c.p, 0.0) << "Par stays in kPa";
        const auto end = std::ranges::find(points, static_cast<float>(boiling.T / T), &CurvePoint::Y);
        ASSERT_NE(end, points.end());
        EXPECT_NEAR(X(*end) * v / boiling.vL, 1.0, 1e-6);
    }
}

// Below the triple point (85.5 K) nothing is drawn, or Status tells.
TEST(IsobarCurve, TriplePoint) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const auto Ttr = fluid->substance.Ttr;
    for (const Kind kind :
         {Kind::h_T, Kind::cp_T, Kind::residual_h_T, Kind::joule_thomson_T, Kind::T_v, Kind::h_s_isobar}) {
        for (const bool restricted : {true, false}) {
            CurveInput input = input_of(kind, {40, 40, 480, 480}, 1000.0);
            input.process.From = 40.0;
            input.process.To = 480.0;
            input.options.chkCurveTpRestricted = restricted;
            const CurveResult result = CalcCurve(*fluid, input);
            const auto T = kind == Kind::T_v          ? &CurvePoint::Y
                           : kind == Kind::h_s_isobar ? &CurvePoint::Par
                                                      : &CurvePoint::X;
            const double lowest = static_cast<double>(std::ranges::min(result.curve.points, {}, T).*T);
            EXPECT_EQ(result.Status, restricted ? CurveStatus::done : CurveStatus::below_triple);
            EXPECT_NEAR(lowest, restricted ? static_cast<double>(Ttr) : 40.0, 0.9) << static_cast<int>(kind);
            EXPECT_EQ(lowest >= static_cast<double>(Ttr), restricted);
        }
    }
    // At 1e-9 kPa T(LV) lies below the triple point: its jump is not drawn.
    const CurveResult vapor = CalcCurve(*fluid, input_of(Kind::h_T, {40, -1e6, 480, 1e6}, 1e-9));
    EXPECT_GE(vapor.curve.points.front().X, static_cast<float>(Ttr));
}

// Functions are inside by y alone, T over v below p(cr) by x alone: a scan of two points lies on the border.
TEST(IsobarCurve, InsideByOneCoordinate) {
    const auto fluid = starter_fluid(propane, Eos::peng_robinson);
    const auto outside = [&](Kind kind, CurveRange range, double p) {
        CurveInput input = input_of(kind, range, p);
        input.options.Dens = 1;
        return CalcCurve(*fluid, input).Outside;
    };
    EXPECT_FALSE(outside(Kind::h_T, {250, -1e6, 251, 1e6}, 6000.0));
    EXPECT_TRUE(outside(Kind::h_T, {250, 1e6, 251, 2e6}, 6000.0));
    EXPECT_TRUE(outside(Kind::residual_h_T, {250, -1e6, 251, 1e6}, 6000.0));
    EXPECT_FALSE(outside(Kind::T_v, {0, 250, 1, 251}, 1000.0));
    EXPECT_TRUE(outside(Kind::T_v, {0, 250, 1, 251}, 6000.0));
}

// Whatever the range and the parameter: an end, and finite points.
TEST(IsobarCurve, HostileInput) {
    const float nan = std::numeric_limits<float>::quiet_NaN(),
                infinite = std::numeric_limits<float>::infinity();
    const CurveRange ranges[] = {{0, 0, 0, 0},
                                 {480, 480, 85, 85},
                                 {-5, -5, 5, 5},
                                 {nan, nan, 480, 480},
                                 {85, 85, nan, nan},
                                 {0, 0, infinite, infinite},
                                 {-1e38f, -1e38f, 1e38f, 1e38f},
                                 {300, 300, 300.0001f, 300.0001f},
                                 {0, 0, 1e-30f, 1e-30f}};
    const auto cubic = starter_fluid(propane, Eos::peng_robinson),
               virial = starter_fluid(propane, Eos::virial_peng_robinson),
               none = starter_fluid(propane, Eos::none);
    for (const auto& fluid : {cubic, virial, none}) {
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::isobaric) continue;
            for (const CurveRange& range : ranges) {
                for (const double p : {1000.0, 0.0, -1.0, absent, 1e-300, 1e300}) {
                    CurveInput input = input_of(kind.kind, range, p);
                    input.SCurve = p < 0.0 || p == 1000.0;
                    input.options.Dens = 10;
                    input.options.chkPartialKurve = true;
                    input.process.From = static_cast<double>(range.XMin);
                    input.process.To = static_cast<double>(range.XMax);
                    for (const CurvePoint& point : CalcCurve(*fluid, input).curve.points)
                        ASSERT_TRUE(finite(point));
                }
            }
        }
    }
}

}  // namespace
}  // namespace quom::test
