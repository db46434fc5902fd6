// What bounds every curve along isobars, isochores and p(LV): the triple point, and input that makes no
// sense.
#include <gtest/gtest.h>

#include "diagrams/section_curves.h"

namespace quom::test {
namespace {

// Nothing is drawn below the triple point of water (273.16 K), or Status tells; all scans go down to 250 K.
TEST(CurveLimits, TriplePoint) {
    const auto at_X = [](const CurvePoint& point) { return X(point); };
    const struct {
        Kind kind;
        CurveRange range;
        double p, v;
        double (*T)(const CurvePoint&);
    } cases[] = {
        {Kind::h_T, {250, 0, 700, 1}, 100.0, 0.0, at_X},
        {Kind::cp_T, {250, 0, 700, 1}, 100.0, 0.0, at_X},
        {Kind::residual_h_T, {250, 0, 700, 1}, 100.0, 0.0, at_X},
        {Kind::joule_thomson_T, {250, 0, 700, 1}, 100.0, 0.0, at_X},
        {Kind::T_v, {0, 250, 1, 700}, 100.0, 0.0, [](const CurvePoint& point) { return Y(point); }},
        {Kind::h_s_isobar,
         {0, 0, 1, 1},
         100.0,
         0.0,
         [](const CurvePoint& point) { return static_cast<double>(point.Par); }},
        {Kind::p_T, {250, 0, 700, 1}, 0.0, 100.0, at_X},
        {Kind::u_T_isochore, {250, 0, 700, 1}, 0.0, 50000.0, at_X},
        {Kind::sat_p_T, {250, 0, 700, 1}, 0.0, 0.0, at_X},
        {Kind::sat_lnp_invT,
         {0.001f, 0, 0.004f, 1},
         0.0,
         0.0,
         [](const CurvePoint& point) { return 1.0 / X(point); }},
        {Kind::hLV_T, {250, 0, 700, 1}, 0.0, 0.0, at_X},
    };
    const auto fluid = starter_fluid(water, Eos::soave);
    for (const auto& c : cases) {
        for (const bool restricted : {true, false}) {
            SCOPED_TRACE(static_cast<int>(c.kind));
            CurveInput input = input_of(c.kind, c.range, c.p, c.v);
            input.process.From = 250.0;
            input.process.To = 700.0;
            input.options.chkCurveTpRestricted = restricted;
            const CurveResult result = CalcCurve(*fluid, input);
            double lowest = HUGE_VAL;
            for (const CurvePoint& point : result.curve.points) lowest = std::min(lowest, c.T(point));
            EXPECT_NEAR(lowest, restricted ? 273.16 : 250.0, 0.91);
            EXPECT_EQ(lowest >= 273.16 - 1e-5, restricted);
            EXPECT_EQ(result.Status, restricted ? CurveStatus::done : CurveStatus::below_triple);
        }
    }
    // T(LV) below the triple point: the jump is not drawn.
    const CurveResult vapor = CalcCurve(*fluid, input_of(Kind::h_T, {250, -1e6, 700, 1e6}, 1e-6));
    EXPECT_GE(X(vapor.curve.points.front()), 273.15);
}

// Whatever the range and the parameter: an end, and finite points.
TEST(CurveLimits, HostileInput) {
    constexpr float nan = std::numeric_limits<float>::quiet_NaN(),
                    infinite = std::numeric_limits<float>::infinity();
    constexpr CurveRange ranges[] = {{0, 0, 0, 0},
                                     {480, 480, 85, 85},
                                     {-5, -5, 5, 5},
                                     {nan, nan, 480, 480},
                                     {85, 85, nan, nan},
                                     {0, 0, infinite, infinite},
                                     {0, 0, 1e-30f, 1e-30f},
                                     {-1e38f, -1e38f, 1e38f, 1e38f},
                                     {300, 300, 300.0001f, 300.0001f},
                                     {0, 0, 480, 480},
                                     {0.009f, 0, 0.002f, 1}};
    auto nothing = starter_substance(propane);
    nothing.Tcr = 0.0;
    nothing.pcr = 0.0;
    const auto without = make_fluid({.substance = nothing, .models = {}, .eos_input = {}, .reference = {}});
    for (const auto& fluid :
         {starter_fluid(propane, Eos::peng_robinson), starter_fluid(propane, Eos::virial_peng_robinson),
          starter_fluid(propane, Eos::none), without}) {
        const auto pcr = static_cast<float>(fluid->substance.pcr);
        for (const KindInfo& kind : kind_list()) {
            const bool vaporization =
                kind.family == CurveFamily::vapor_pressure || kind.family == CurveFamily::vaporization;
            if (!vaporization && kind.section != Section::isobaric && kind.section != Section::isochoric)
                continue;
            for (const CurveRange& range : ranges) {
                for (const double parameter : {1000.0, 0.1, 0.0, -1.0, absent, 1e-300, 1e300}) {
                    CurveInput input = input_of(kind.kind, range, parameter, parameter);
                    input.SCurve = parameter < 0.0 || parameter == 1000.0;
                    input.options.Dens = 10;
                    input.options.chkPartialKurve = true;
                    input.process.From = static_cast<double>(range.XMin);
                    input.process.To = static_cast<double>(range.XMax);
                    const CurveResult result = CalcCurve(*fluid, input);
                    ASSERT_LE(result.curve.points.size(), input.SCurve ? 40002u : 1203u);
                    for (const CurvePoint& point : result.curve.points) ASSERT_TRUE(finite(point));
                    ASSERT_TRUE(std::isfinite(result.isochore.T + result.isochore.p));
                    // A range the other way round does not draw the critical point again and again.
                    const auto critical = std::ranges::count(result.curve.points, pcr, &CurvePoint::Y);
                    ASSERT_LE(vaporization ? critical : 0, 2);
                }
            }
        }
    }
}

}  // namespace
}  // namespace quom::test
