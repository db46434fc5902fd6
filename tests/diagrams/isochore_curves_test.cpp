// Curves along an isochore: where they meet p(LV), what holds along them, and where they end.
#include <gtest/gtest.h>

#include "diagrams/section_curves.h"

namespace quom::test {
namespace {

struct Case {
    const char* name;
    std::string_view substance;
    Eos code;
    double part;  // v as part of v(cr) of the equation
};
constexpr Case cases[] = {
    {"propane, dense", propane, Eos::peng_robinson, 0.35},
    {"propane, liquid", propane, Eos::peng_robinson, 0.7},
    {"propane, just below v(cr)", propane, Eos::peng_robinson, 0.99},
    {"propane, just above v(cr)", propane, Eos::peng_robinson, 1.002},
    {"propane, vapor", propane, Eos::peng_robinson, 5.0},
    {"propane, thin", propane, Eos::peng_robinson, 200.0},
    {"water, Soave", water, Eos::soave, 1.5},
    {"water, liquid", water, Eos::soave, 0.45},
    {"nitrogen, van der Waals", nitrogen, Eos::van_der_waals, 3.0},
    {"benzene, Redlich/Kwong", benzene, Eos::redlich_kwong, 0.6},
};

struct Isochore {
    std::shared_ptr<const Fluid> fluid;
    double v = 0, Tcr = 0;
    CurveRange range;  // 0.3 to 1.5 T(cr)
    double step = 0;   // [K]

    explicit Isochore(const Case& c)
        : fluid(starter_fluid(c.substance, c.code)),
          v(c.part * fluid->eos.vcrEOS),
          Tcr(fluid->substance.Tcr),
          range{static_cast<float>(0.3 * Tcr), -1e6f, static_cast<float>(1.5 * Tcr), 1e6f},
          step(1.2 * Tcr / 500.0) {}

    CurveInput input(Kind kind, int Dens = 500) const {
        CurveInput input = input_of(kind, range, 0.0, v);
        input.options.Dens = Dens;
        return input;
    }
    bool two_phases(double T) const {
        const Saturation at = pLV_EOS(*fluid, T);
        return at.found() && v > at.vL && v < at.vV;
    }
    // T [K] at which v is one of the saturated volumes, by halving.
    double boundary() const {
        double low = 0.2 * Tcr, high = Tcr;
        for (int round = 0; round < 60; ++round) {
            const double middle = 0.5 * (low + high);
            (two_phases(middle) ? low : high) = middle;
        }
        return high;
    }
};

// p(T, v) outside of the dome, p(LV) within: also where a step leads past the part of the loop with p >
// p(LV).
TEST(IsochoreP, FollowsTheVaporPressureWithinTheDome) {
    for (const Case& c : cases) {
        for (const int Dens : {500, 10}) {
            SCOPED_TRACE(std::string(c.name) + ", " + std::to_string(Dens));
            const Isochore isochore(c);
            const CurveResult result = CalcCurve(*isochore.fluid, isochore.input(Kind::p_T, Dens));
            ASSERT_GT(static_cast<int>(result.curve.points.size()), Dens / 3);
            EXPECT_EQ(result.curve.Par, par_v);
            int on_boundary = 0;
            double last = HUGE_VAL;
            for (const CurvePoint& point : result.curve.points) {
                const double T = X(point), outside = pTv(*isochore.fluid, T, isochore.v).p;
                const bool two_phases = isochore.two_phases(T);
                const double p = two_phases ? pLV_EOS(*isochore.fluid, T).p : outside;
                // T in single precision: some 3e-5 K of a slope below 4000 kPa/K.
                EXPECT_NEAR(Y(point), p, 0.1 + 3e-6 * p) << T;
                EXPECT_LT(Y(point), last) << T;
                EXPECT_FLOAT_EQ(point.Par, static_cast<float>(isochore.v));
                on_boundary += two_phases;
                last = Y(point);
            }
            EXPECT_GT(on_boundary, Dens / 500);
        }
    }
}

// Within 0.1 % of v(cr) p(LV) goes over into the critical isochore without a bend; other isochores have one
// where they meet the boundary.
TEST(IsochoreP, HasNoBendAtTheCriticalVolume) {
    const auto bend = [](double part) {  // slope above the boundary over slope below
        const Isochore isochore({"", propane, Eos::peng_robinson, part});
        CurveInput input = isochore.input(Kind::p_T);
        const bool critical = std::fabs(part - 1.0) < 1e-3;
        const auto T = static_cast<float>(critical ? isochore.Tcr : isochore.boundary());
        input.range = {T - 1.0f, 0, T + 1.0f, 10000};
        const auto& points = CalcCurve(*isochore.fluid, input).curve.points;
        const auto slope = [&](std::size_t i, std::size_t k) {
            return (Y(points.at(k)) - Y(points.at(i))) / (X(points.at(k)) - X(points.at(i)));
        };
        return slope(0, 240) / slope(260, 500);
    };
    for (const double part : {0.9993, 1.0, 1.0007}) EXPECT_NEAR(bend(part), 1.0, 0.02) << part;
    EXPECT_GT(bend(0.7), 1.5);
    EXPECT_LT(bend(3.0), 0.7);
}

TEST(IsochoreP, Units) {
    const Isochore isochore({"", propane, Eos::peng_robinson, 0.7});
    CurveInput input = isochore.input(Kind::p_T);
    input.units.VolumeMode = reduced_volume;
    input.range = {0.3f, 0, 1.5f, 10};
    const auto points = CalcCurve(*isochore.fluid, input).curve.points;
    ASSERT_GT(points.size(), 300u);
    for (const CurvePoint& point : points) {
        const double T = X(point) * isochore.Tcr, pcr = isochore.fluid->substance.pcr;
        const double p =
            isochore.two_phases(T) ? pLV_EOS(*isochore.fluid, T).p : pTv(*isochore.fluid, T, isochore.v).p;
        EXPECT_NEAR(Y(point) * pcr, p, 0.1 + 3e-6 * p) << T;
    }
}

// Along v: (du/dT)_v = cV, (ds/dT)_v = cV/T, a = u - T s, eH - eU = (p - pEnv) v + pEnv vE - hE + uE, a
// constant apart from v p.
TEST(IsochoreFunctions, BelongTogether) {
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Isochore isochore(c);
        const auto points = [&](Kind kind) {
            return CalcCurve(*isochore.fluid, isochore.input(kind)).curve.points;
        };
        const auto u = points(Kind::u_T_isochore), s = points(Kind::s_T_isochore),
                   a = points(Kind::a_T_isochore), cV = points(Kind::cV_T_isochore),
                   eH = points(Kind::eH_T_isochore), eU = points(Kind::eU_T_isochore);
        ASSERT_GT(u.size(), 150u);
        for (const auto* other : {&s, &a, &cV, &eH, &eU}) ASSERT_EQ(other->size(), u.size());
        const auto vp = [&](std::size_t i) {
            return isochore.v * pTv(*isochore.fluid, X(u[i]), isochore.v).p;
        };
        const double offset = Y(eH[0]) - Y(eU[0]) - vp(0);
        for (std::size_t i = 0; i < u.size(); ++i) {
            const double size = std::fabs(Y(u[i])) + std::fabs(X(u[i]) * Y(s[i]));
            EXPECT_NEAR(Y(a[i]), Y(u[i]) - X(u[i]) * Y(s[i]), 1e-6 * size);
            EXPECT_NEAR(Y(eH[i]) - Y(eU[i]) - vp(i), offset, 1e-6 * (std::fabs(Y(eH[i])) + vp(i)) + 0.02);
            if (i == 0) continue;
            const double dT = X(u[i]) - X(u[i - 1]), T = 0.5 * (X(u[i]) + X(u[i - 1]));
            const double mean = 0.5 * (Y(cV[i]) + Y(cV[i - 1])), noise = 2e-7 / std::fabs(dT);
            EXPECT_NEAR((Y(u[i]) - Y(u[i - 1])) / dT, mean, 1e-3 * mean + noise * std::fabs(Y(u[i]))) << T;
            EXPECT_NEAR((Y(s[i]) - Y(s[i - 1])) / dT, mean / T, 1e-3 * mean / T + noise * std::fabs(Y(s[i])))
                << T;
        }
        const StateFunctions first = ThermoState(*isochore.fluid, X(u[0]), vp(0) / isochore.v, isochore.v);
        EXPECT_NEAR(Y(u[0]), first.u, 1e-6 * std::fabs(first.u) + 0.01);
        EXPECT_NEAR(Y(eH[0]), first.eH, 1e-6 * std::fabs(first.eH) + 0.01);
    }
}

// They end above the phase boundary, less than a step from it; the pair of the tie line is the next T of the
// scan, on the vapor side 0.3 steps back.
TEST(IsochoreFunctions, EndAtThePhaseBoundary) {
    for (const Case& c : cases) {
        for (const double hotter : {1.0, 7.0}) {  // steep isochores step to p < 0 at once
            SCOPED_TRACE(c.name);
            const Isochore isochore(c);
            const double boundary = isochore.boundary(), step = hotter * isochore.step;
            const CurveInput input =
                isochore.input(Kind::s_T_isochore, static_cast<int>(std::lround(500 / hotter)));
            const CurveResult result = CalcCurve(*isochore.fluid, input);
            const double last = X(result.curve.points.back());
            EXPECT_GE(last, boundary - 1e-4);
            EXPECT_LE(last, boundary + 1.02 * step);
            EXPECT_NEAR(result.isochore.T, last - (c.part > 1.0 ? 0.7 : 1.0) * step, 0.02 * step);
            EXPECT_EQ(result.isochore.v, isochore.v);
            EXPECT_GT(result.isochore.p, 0.0);
            EXPECT_EQ(result.curve.Par, par_v);
            EXPECT_FLOAT_EQ(result.curve.points.back().Par, static_cast<float>(isochore.v));
        }
    }
}

// The tie line there: from s(L) to s(V), which differ by delta(LV)h/T of Clapeyron's equation.
TEST(IsochoreFunctions, TieLineAtTheEnd) {
    const Isochore isochore({"", propane, Eos::peng_robinson, 5.0});
    CurveInput input = isochore.input(Kind::s_T_isochore);
    input.isochore = CalcCurve(*isochore.fluid, input).isochore;
    input.TieLine = true;
    const CurveResult line = CalcCurve(*isochore.fluid, input);
    ASSERT_EQ(line.curve.points.size(), 51u);
    const double T = input.isochore.T, ds = clapeyron(*isochore.fluid, T) / T;
    EXPECT_NEAR(Y(line.curve.points.back()) - Y(line.curve.points.front()), ds, 1e-5 * ds);
    EXPECT_FLOAT_EQ(line.curve.points.front().X, static_cast<float>(T));
    // An isochore that does not come down to the boundary leaves the pair alone.
    input.TieLine = false;
    input.range.XMin = static_cast<float>(1.1 * isochore.Tcr);
    EXPECT_EQ(CalcCurve(*isochore.fluid, input).isochore, input.isochore);
}

// The last T is XMin: the scan runs on for 0.8 steps and is clamped.
TEST(IsochoreFunctions, EndOnTheLimit) {
    const auto fluid = starter_fluid(propane, Eos::virial_peng_robinson);
    for (const Kind kind : {Kind::p_T, Kind::u_T_isochore}) {
        CurveInput input = input_of(kind, {200, -1e6, 400.55f, 1e6}, 0.0, 20.0);
        input.options.Dens = 300;
        const auto points = CalcCurve(*fluid, input).curve.points;
        EXPECT_EQ(points.front().X, 400.55f);
        EXPECT_EQ(points.back().X, 200.0f) << "an equation of the V-phase only has no boundary";
        EXPECT_NEAR(static_cast<double>(points.size()), 301.0, 1.0);
        if (kind != Kind::p_T) continue;
        for (const CurvePoint& point : points) {
            const double p = RGas * X(point) / (20.0 - VirialB(*fluid, X(point)));
            EXPECT_NEAR(Y(point) / p, 1.0, 3e-7);
        }
    }
}

TEST(IsochoreCurve, TriplePoint) {
    const auto fluid = starter_fluid(water, Eos::soave);
    for (const Kind kind : {Kind::p_T, Kind::u_T_isochore}) {
        for (const bool restricted : {true, false}) {
            CurveInput input = input_of(kind, {260, -1e7, 300, 1e7}, 0.0, 20000.0);
            input.options.chkCurveTpRestricted = restricted;
            const CurveResult result = CalcCurve(*fluid, input);
            ASSERT_GT(result.curve.points.size(), 300u);
            EXPECT_EQ(result.Status, restricted ? CurveStatus::done : CurveStatus::below_triple);
            EXPECT_NEAR(X(result.curve.points.back()), restricted ? 273.16 : 260.0, 0.09);
            EXPECT_EQ(result.curve.points.back().X >= 273.16f, restricted) << static_cast<int>(kind);
        }
    }
}

TEST(IsochoreCurve, HostileInput) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const CurveRange ranges[] = {{0, 0, 0, 0},     {480, 1, 85, 0},       {-5, 0, 5, 1},
                                 {nan, 0, 5, 1},   {-1e38f, 0, 1e38f, 1}, {300, 0, 300.0001f, 1},
                                 {0, 0, 480, 6000}};
    const auto cubic = starter_fluid(propane, Eos::peng_robinson),
               virial = starter_fluid(propane, Eos::virial_peng_robinson),
               none = starter_fluid(propane, Eos::none);
    for (const auto& fluid : {cubic, virial, none}) {
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::isochoric) continue;
            for (const CurveRange& range : ranges) {
                for (const double v : {1.0, 0.0, -1.0, absent, 1e-300, 1e300, fluid->eos.vcrEOS}) {
                    const CurveResult result = CalcCurve(*fluid, input_of(kind.kind, range, 0.0, v));
                    ASSERT_LE(result.curve.points.size(), 11002u);
                    for (const CurvePoint& point : result.curve.points) ASSERT_TRUE(finite(point));
                    ASSERT_TRUE(std::isfinite(result.isochore.T + result.isochore.p + result.isochore.v));
                }
            }
        }
    }
}

}  // namespace
}  // namespace quom::test
