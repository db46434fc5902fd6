// Values of curves at abscissas: against every point that is drawn, and against single calls of the engine.
#include "diagrams/curve_values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "diagrams/curve_support.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

using test::Setting;

constexpr double single = 1.3e-7;  // what x and y of a point are rounded to

// Whether the curve goes on at both sides of x, with the same branches; ends and jumps cannot be told from
// the rounded x of a point.
bool goes_on(const CurveValues& curve, double x) {
    const auto a = curve.at(x * (1.0 - single)), b = curve.at(x * (1.0 + single));
    return !a.empty() && std::ranges::equal(a, b, same_branch);
}

// How far y lies from the nearest value of the curve at x, as part of what rounding moves it by.
double misfit(const CurveValues& curve, double x, double y) {
    double least = 1e9;
    for (const CurveValue& value : curve.at(x)) {
        double moved = 0.0;
        for (const double near : {x * (1.0 - single), x * (1.0 + single)})
            for (const CurveValue& other : curve.at(near))
                if (same_branch(value, other)) moved = std::max(moved, std::fabs(other.y - value.y));
        least = std::min(least, std::fabs(value.y - y) / (2.0 * single * std::fabs(y) + 2.0 * moved + 1e-9));
    }
    return least;
}

// The first two points that are not values of the curve.
void check(const Setting& setting, const CurveInput& in) {
    const CurveResult drawn = CalcCurve(*setting.fluid, in);
    const CurveValues curve(setting.fluid, in);
    const auto& points = drawn.curve.points;
    const std::string what = setting.name + ", kind " + std::to_string(static_cast<int>(in.kind)) + ", T " +
                             std::to_string(in.T) + ", p " + std::to_string(in.p) + ", v " +
                             std::to_string(in.v) + ", fraction " + std::to_string(in.VaporFraction);
    std::size_t wrong = 0, checked = 0, seen = 0;
    const std::size_t step = std::max<std::size_t>(points.size() / 25, 1);
    for (std::size_t i = 1; i + 1 < points.size(); i += step) {
        const double x = static_cast<double>(points[i].X), y = static_cast<double>(points[i].Y);
        ++seen;
        if (!goes_on(curve, x)) continue;
        ++checked;
        if (misfit(curve, x, y) > 1.0 && ++wrong <= 2)
            ADD_FAILURE() << what << ", point " << i << " of " << points.size() << ": x " << x << ", y " << y
                          << ", value " << curve.at(x).front().y;
    }
    EXPECT_GE(5 * checked, 4 * seen) << what;
}

std::vector<CurveInput> inputs_of(const Setting& s, Kind kind) {
    std::vector<CurveInput> inputs;
    const CurveInput in = test::curve_input(s, kind, 60);
    const auto add = [&](double T, double p, double v, double fraction) {
        inputs.push_back(in);
        inputs.back().T = T;
        inputs.back().p = p;
        inputs.back().v = v;
        inputs.back().VaporFraction = fraction;
    };
    switch (kind_info(kind).section) {
        case Section::isothermal:
            for (const double share : {0.8, 1.15}) add(share * s.Tcr(), 0, 0, 0);
            break;
        case Section::isobaric:
            for (const double share : {0.3, 1.2}) add(0, share * s.pcr(), 0, 0);
            break;
        case Section::isochoric:
            for (const double share : {0.45, 2.0}) add(0, 0, share * s.vcr(), 0);
            break;
        default:
            for (const double fraction : {0.0, 1.0}) add(0, 0, 0, fraction);
    }
    return inputs;
}

TEST(CurveValues, every_point_that_is_drawn_is_a_value) {
    const Setting settings[] = {
        {"propane", test::starter_fluid(test::propane, Eos::peng_robinson), test::molar},
        {"water", test::starter_fluid(test::water, Eos::soave), test::reduced},
        {"benzene", test::starter_fluid(test::benzene, Eos::virial_soave), test::specific}};
    for (const Setting& setting : settings)
        for (const KindInfo& kind : kind_list()) {
            if (kind.family == CurveFamily::process_line || kind.section == Section::database) continue;
            for (const CurveInput& in : inputs_of(setting, kind.kind)) check(setting, in);
        }
}

// Functions of a state, each by the call of the engine that has it.
TEST(CurveValues, sections_are_those_of_single_states) {
    const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    const Setting s{"propane", fluid, test::molar};
    const double T = 320.0, sat = pLV_EOS(*fluid, T).p;
    struct Case {
        double p;
        CurvePart part;
    };
    CurveInput in = test::curve_input(s, Kind::h_p, 500);
    in.T = T;
    const CurveValues h(fluid, in);
    in.kind = Kind::rho_p;
    const CurveValues rho(fluid, in);
    for (const Case& c : {Case{0.3 * sat, CurvePart::vapor}, Case{sat * (1.0 - 1e-6), CurvePart::vapor},
                          Case{sat * (1.0 + 1e-6), CurvePart::liquid}, Case{2.0 * sat, CurvePart::liquid},
                          Case{1.3 * fluid->substance.pcr, CurvePart::liquid}}) {
        const CubicRoots roots = CubicV(EOSParT(*fluid, T), c.p);
        const double v = c.part == CurvePart::liquid || roots.nRoots == 1 ? roots.VRoot[0] : roots.VRoot[2];
        const auto values = h.at(c.p), densities = rho.at(c.p);
        ASSERT_EQ(values.size(), 1u) << c.p;
        EXPECT_EQ(values[0].part, c.part) << c.p;
        EXPECT_NEAR(values[0].y, ThermoState(*fluid, T, c.p, v).h, 1e-6 * std::fabs(values[0].y)) << c.p;
        EXPECT_NEAR(densities[0].y, fluid->M / v, 1e-9 * fluid->M / v) << c.p;
    }
}

// A curve that turns back has two values, on branches that are told apart.
TEST(CurveValues, a_curve_that_turns_back) {
    const Setting s{"propane", test::starter_fluid(test::propane, Eos::peng_robinson), test::molar};
    const CurveInput in = test::curve_input(s, Kind::inversion_pv_p, 500);
    const CurveValues curve(s.fluid, in);
    const auto values = curve.at(5.0 * s.pcr());
    ASSERT_EQ(values.size(), 2u);
    EXPECT_FALSE(same_branch(values[0], values[1]));
    EXPECT_LT(values[0].y, values[1].y);  // the cold branch is dense
    EXPECT_TRUE(curve.at(50.0 * s.pcr()).empty());
}

}  // namespace
}  // namespace quom
