// Inversion curves of the Joule-Thomson effect, against van der Waals' closed form and difference quotients.
#include "diagrams/inversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>

#include "diagrams/phase_fixture.h"

namespace quom {
namespace {

using test::Par;
using test::X;
using test::Y;

const EosInput Typed{.JiP3 = 0.6, .JiP4 = 0.1, .JiP5 = 0.2, .JiZc = 0.31, .JiB1 = 0.02};

struct Case {
    std::string_view cas;
    Eos code;
};
const Case cases[] = {
    {test::propane, Eos::peng_robinson}, {test::propane, Eos::soave},
    {test::methane, Eos::redlich_kwong}, {test::nitrogen, Eos::berthelot},
    {test::water, Eos::peng_robinson},   {test::decane, Eos::soave},
    {test::ammonia, Eos::van_der_waals}, {test::propane, Eos::tovarn_ji_1},
    {test::propane, Eos::tovarn_ji_2},
};

// The whole inversion curve inside the range; p over T or pv over p.
CurveInput whole_inversion(const Fluid& fluid, Kind kind, const Units& units = {}) {
    const auto f = test::factors(fluid, units.VolumeMode);
    const double T = 7.5 * fluid.substance.Tcr, p = 25.0 * fluid.substance.pcr;
    CurveInput input;
    input.kind = kind;
    input.units = units;
    input.range = {0.0f, 0.0f, static_cast<float>(T * f.T), static_cast<float>(p * f.p)};
    if (kind == Kind::inversion_pv_p)
        input.range = {0.0f, 0.0f, static_cast<float>(p * f.p),
                       static_cast<float>(10.0 * RGas * T * f.p * f.v)};
    return input;
}

// (dh/dp)_T/v, which is -cp/v times the Joule-Thomson coefficient, by differences of h over p.
double throttling(const Fluid& fluid, double T, double p) {
    const VolumeResult at = VolumeTp(fluid, T, p);
    const bool liquid = at.LFlag && T < fluid.substance.Tcr;
    const auto h = [&](double pressure) {
        const VolumeResult r = VolumeTp(fluid, T, pressure);
        const double v = r.nRoots != 3 ? r.roots.VRoot[0] : liquid ? r.roots.VRoot[0] : r.roots.VRoot[2];
        return ThermoState(fluid, T, pressure, v).h;
    };
    const auto quotient = [&](double step) { return (h(p + step) - h(p - step)) / (2.0 * step); };
    const double step = 0.02 * p;
    const double a = quotient(step), b = quotient(0.5 * step), c = quotient(0.25 * step);
    const double ab = (4.0 * b - a) / 3.0, bc = (4.0 * c - b) / 3.0;
    return (bc + (bc - ab) / 15.0) / (liquid ? at.vL : at.vV);
}

// p_r = 8 T_r/(3 v_r - 1) - 3/v_r^2 with T (dp/dT)_v + v (dp/dv)_T = 0 gives 1/v_r = 3 - 2 s/3, s^2 = 3 T_r,
// and
//     p_r = 24 s - 12 T_r - 27:
// highest at T_r = 3 with p_r = 9, and p_r = 0 at T_r = 0.75 and 6.75.
TEST(Inversion, VanDerWaalsHasAClosedForm) {
    const auto fluid = test::starter_fluid(test::propane, Eos::van_der_waals);
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, vcr = fluid->eos.vcrEOS;
    const auto p_r = [](double Tr) { return 24.0 * std::sqrt(3.0 * Tr) - 12.0 * Tr - 27.0; };
    for (double Tr = 0.76; Tr < 6.75; Tr += 0.07) {
        const InversionPoint at = InversionP(*fluid, Tr * Tcr);
        ASSERT_TRUE(at.found()) << Tr;
        EXPECT_NEAR(at.p / pcr, p_r(Tr), 1e-9 * (1.0 + p_r(Tr))) << Tr;
        EXPECT_NEAR(vcr / at.v, 3.0 - 2.0 / 3.0 * std::sqrt(3.0 * Tr), 1e-9) << Tr;
    }
    EXPECT_FALSE(InversionP(*fluid, 6.7501 * Tcr).found());
    const InversionDome dome = inversion_dome(*fluid);
    ASSERT_TRUE(dome.found());
    EXPECT_NEAR(dome.Thighest / Tcr, 6.75, 1e-9);
    EXPECT_NEAR(dome.top.T / Tcr, 3.0, 1e-4);
    EXPECT_NEAR(dome.top.p / pcr, 9.0, 1e-8);
    for (const Kind kind : {Kind::inversion_p_T, Kind::inversion_pv_p}) {
        const auto points = CalcCurve(*fluid, whole_inversion(*fluid, kind)).curve.points;
        EXPECT_GT(points.size(), 100u);
        for (const CurvePoint& point : points) {
            const bool over_T = kind == Kind::inversion_p_T;
            const double Tr = (over_T ? X(point) : Par(point)) / Tcr;
            EXPECT_NEAR((over_T ? Y(point) : X(point)) / pcr, p_r(Tr), 1e-5);
        }
    }
}

// Inversion temperature of the thin gas, B = T B': Redlich and Kwong (1949), a ~ T^-1/2, have
// (T/Tcr)^1.5 = 2.5 a/(b R T^1.5) = 2.5 * 0.4274802/0.0866404; Berthelot, a ~ 1/T, (T/Tcr)^2 = 3 * 27/64 * 8.
TEST(Inversion, HighestTemperature) {
    const auto highest = [](Eos code) {
        const auto fluid = test::starter_fluid(test::methane, code);
        return inversion_dome(*fluid).Thighest / fluid->substance.Tcr;
    };
    EXPECT_NEAR(highest(Eos::redlich_kwong), std::pow(2.5 * 0.42748023 / 0.08664035, 2.0 / 3.0), 1e-6);
    EXPECT_NEAR(highest(Eos::berthelot), std::sqrt(81.0 / 8.0), 1e-9);
}

TEST(Inversion, ThrottlingLeavesTheTemperatureAtEveryPoint) {
    for (const Case& c : cases) {
        const auto fluid = test::starter_fluid(c.cas, c.code, Typed);
        for (const Kind kind : {Kind::inversion_p_T, Kind::inversion_pv_p}) {
            SCOPED_TRACE(std::string(c.cas) + " " + std::to_string(static_cast<int>(c.code)) + " kind " +
                         std::to_string(static_cast<int>(kind)));
            CurveInput input = whole_inversion(*fluid, kind);
            input.options.Dens = 100;
            input.options.chkCurveTpRestricted = false;
            const CurveResult result = CalcCurve(*fluid, input);
            EXPECT_GT(result.curve.points.size(), 30u);
            EXPECT_FALSE(result.Outside);
            const bool over_T = kind == Kind::inversion_p_T;
            EXPECT_EQ(result.curve.Par, over_T ? par_v : par_T);
            for (const CurvePoint& point : result.curve.points) {
                const double T = over_T ? X(point) : Par(point), p = over_T ? Y(point) : X(point);
                const double v = over_T ? Par(point) : Y(point) / p;
                EXPECT_NEAR(throttling(*fluid, T, p), 0.0, 1e-6) << T << ' ' << p;
                const VolumeResult at = VolumeTp(*fluid, T, p);
                EXPECT_NEAR(at.LFlag ? at.vL : at.vV, v, 1e-5 * v) << T << ' ' << p;
            }
        }
    }
}

TEST(Inversion, EndsOnTheVaporPressureCurve) {
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.cas) + " " + std::to_string(static_cast<int>(c.code)));
        const auto fluid = test::starter_fluid(c.cas, c.code, Typed);
        CurveInput input = whole_inversion(*fluid, Kind::inversion_p_T);
        input.options.chkCurveTpRestricted = false;
        const auto points = CalcCurve(*fluid, input).curve.points;
        const double T = X(points.back());
        EXPECT_LT(T, fluid->substance.Tcr);
        const Saturation sat = pLV_EOS(*fluid, T);
        EXPECT_NEAR(Y(points.back()), sat.p, 1e-5 * sat.p);
        EXPECT_NEAR(Par(points.back()), sat.vL, 1e-5 * sat.vL);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            const double p = X(points[i]) < fluid->substance.Tcr ? pLV_EOS(*fluid, X(points[i])).p : 0.0;
            EXPECT_GT(Y(points[i]), p);
            EXPECT_GT(X(points[i]), X(points[i + 1]));
        }
        // A range that begins below the end has no curve.
        input.range.XMax = static_cast<float>(0.99 * T);
        EXPECT_TRUE(CalcCurve(*fluid, input).curve.points.empty());
        // Both kinds are the same curve.
        const auto other = CalcCurve(*fluid, whole_inversion(*fluid, Kind::inversion_pv_p)).curve.points;
        const InversionPoint top = inversion_dome(*fluid).top;
        bool has_top = false;
        for (const CurvePoint& point : other) {
            const InversionPoint at = InversionP(*fluid, Par(point));
            EXPECT_NEAR(X(point), at.p, 1e-5 * (at.p + fluid->substance.pcr));
            EXPECT_NEAR(Y(point), at.p * at.v, 1e-5 * at.p * at.v);
            has_top = has_top || point.X == static_cast<float>(top.p);
        }
        EXPECT_TRUE(has_top);
        EXPECT_TRUE(std::ranges::is_sorted(other, std::ranges::greater{}, &CurvePoint::Par));
    }
}

TEST(Inversion, Steps) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const auto over_T = CalcCurve(*fluid, whole_inversion(*fluid, Kind::inversion_p_T)).curve.points;
    const double dx = 7.5 * fluid->substance.Tcr / 500.0, dp = 25.0 * fluid->substance.pcr / 500.0;
    EXPECT_NEAR(X(over_T[20]) - X(over_T[21]), dx / 3.0, 1e-3);
    const auto over_p = CalcCurve(*fluid, whole_inversion(*fluid, Kind::inversion_pv_p)).curve.points;
    EXPECT_NEAR(X(over_p[0]), 0.03, 1e-5);
    EXPECT_NEAR(X(over_p[21]) - X(over_p[20]), 2.0 * dp, 1e-3);
    const std::size_t n = over_p.size();
    EXPECT_NEAR(X(over_p[n - 3]) - X(over_p[n - 2]), 2.0 * dp, 1e-2);
}

TEST(Inversion, UnitsScaleTheCurve) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    for (const int mode : {volume_per_mass, reduced_volume}) {
        const Units units{.VolumeMode = mode};
        const auto f = test::factors(*fluid, mode);
        for (const Kind kind : {Kind::inversion_p_T, Kind::inversion_pv_p}) {
            const auto molar = CalcCurve(*fluid, whole_inversion(*fluid, kind)).curve.points;
            const auto scaled = CalcCurve(*fluid, whole_inversion(*fluid, kind, units)).curve.points;
            const bool over_T = kind == Kind::inversion_p_T;
            const double x = over_T ? f.T : f.p, y = over_T ? f.p : f.p * f.v;
            ASSERT_NEAR(static_cast<double>(scaled.size()), static_cast<double>(molar.size()), 1.0);
            for (const std::size_t i : {10, 100, 200}) {
                EXPECT_NEAR(X(scaled[i]), X(molar[i]) * x, 1e-4 * X(molar[i]) * x);
                EXPECT_NEAR(Y(scaled[i]), Y(molar[i]) * y, 1e-4 * Y(molar[i]) * y);
                EXPECT_NEAR(Par(scaled[i]), Par(molar[i]), 1e-4 * Par(molar[i]));
            }
        }
    }
}

TEST(Inversion, TriplePointAndMissingCurves) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    Fluid cold = *fluid;
    cold.substance.Ttr = 350.0f;
    for (const Kind kind : {Kind::inversion_p_T, Kind::inversion_pv_p}) {
        CurveInput input = whole_inversion(*fluid, kind);
        const auto coldest = [&] {
            double T = 1e30;
            for (const CurvePoint& point : CalcCurve(cold, input).curve.points)
                T = std::min(T, kind == Kind::inversion_p_T ? X(point) : Par(point));
            return T;
        };
        EXPECT_GE(coldest(), 350.0);
        input.options.chkCurveTpRestricted = false;
        EXPECT_LT(coldest(), 300.0);
        EXPECT_EQ(CalcCurve(cold, input).Status, CurveStatus::below_triple);
        const auto virial = test::starter_fluid(test::propane, Eos::virial_soave);
        EXPECT_TRUE(CalcCurve(*virial, input).curve.points.empty());
        EXPECT_EQ(InversionP(*virial, 400.0).reason, Reason::vapor_only);
        input.range.XMin = input.range.XMax * 0.9f;  // beyond the curve
        EXPECT_TRUE(CalcCurve(*fluid, input).curve.points.empty());
        EXPECT_TRUE(CalcCurve(*fluid, input).Outside);
    }
    for (const double T : {0.0, -5.0, HUGE_VAL, std::nan("")})
        EXPECT_FALSE(InversionP(*fluid, T).found()) << T;
}

TEST(Inversion, HostileRangesEndWithFinitePoints) {
    std::mt19937 engine(7);
    std::uniform_real_distribution<float> exponent(-8.0f, 8.0f);
    const auto number = [&] {
        const float x = std::pow(10.0f, exponent(engine));
        return engine() % 4 == 0 ? -x : x;
    };
    for (const Case& c : cases) {
        const auto fluid = test::starter_fluid(c.cas, c.code, Typed);
        for (int i = 0; i < 60; ++i) {
            CurveInput input;
            input.kind = i % 2 == 0 ? Kind::inversion_p_T : Kind::inversion_pv_p;
            input.range = {number(), number(), number(), number()};
            input.options.chkCurveTpRestricted = i % 3 == 0;
            const auto start = std::chrono::steady_clock::now();
            const CurveResult r = CalcCurve(*fluid, input);
            const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
            EXPECT_LT(time.count(), 1.0);
            for (const CurvePoint& point : r.curve.points)
                EXPECT_TRUE(std::isfinite(point.X) && std::isfinite(point.Y) && point.Par > 0.0f);
        }
    }
}

}  // namespace
}  // namespace quom
