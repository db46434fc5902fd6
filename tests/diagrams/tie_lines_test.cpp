// Tie lines of every section.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "diagrams/phase_fixture.h"

namespace quom {
namespace {

using test::cases;
using test::Par;
using test::propane_fluid;
using test::X;
using test::Y;

// Distance of a point from a curve, in shares of the spans of the curve.
double distance(const std::vector<CurvePoint>& curve, double x, double y) {
    const auto [x1, x2] = std::ranges::minmax(curve, {}, &CurvePoint::X);
    const auto [y1, y2] = std::ranges::minmax(curve, {}, &CurvePoint::Y);
    const double width = X(x2) - X(x1), height = Y(y2) - Y(y1);
    double nearest = 1e30;
    for (std::size_t i = 1; i < curve.size(); ++i) {
        const double ax = (X(curve[i - 1]) - x) / width, ay = (Y(curve[i - 1]) - y) / height;
        const double bx = (X(curve[i]) - x) / width, by = (Y(curve[i]) - y) / height;
        const double ex = bx - ax, ey = by - ay, length = ex * ex + ey * ey;
        const double share = length > 0.0 ? std::clamp(-(ax * ex + ay * ey) / length, 0.0, 1.0) : 0.0;
        nearest = std::min(nearest, std::hypot(ax + share * ex, ay + share * ey));
    }
    return nearest;
}

CurveResult tie_line(const Fluid& fluid, Kind kind, double T, double p, const Units& units = {},
                     const IsochoreEnd& isochore = {}) {
    CurveInput input = test::whole_curve(fluid, kind, 0.0, units);
    if (fluid.VPhaseOnly) input.range = test::whole_range(*propane_fluid(), kind);
    input.T = T;
    input.p = p;
    input.TieLine = true;
    input.isochore = isochore;
    return CalcCurve(fluid, input);
}

TEST(TieLines, EndOnTheCoexistenceCurveInEveryPlane) {
    for (const test::PhaseCase& c : cases) {
        const auto fluid = test::starter_fluid(c.cas, c.code);
        const double T = 0.9 * fluid->substance.Tcr, p = pLV_EOS(*fluid, T).p;
        int kinds = 0;
        for (const KindInfo& kind : kind_list()) {
            const int number = static_cast<int>(kind.kind);
            const bool isochore = number >= 180 && number <= 184;
            const bool plane = kind.section == Section::isothermal || kind.section == Section::isobaric;
            if (kind.boundary == Kind::none || (!plane && !isochore)) continue;
            SCOPED_TRACE(std::string(c.cas) + " kind " + std::to_string(number));
            ++kinds;
            const IsochoreEnd end{.T = T, .p = p, .v = 2.0 * fluid->eos.vcrEOS};
            const CurveResult line = tie_line(*fluid, kind.kind, T, p, c.units, end);
            ASSERT_EQ(line.Status, CurveStatus::done);
            const auto& points = line.curve.points;
            ASSERT_EQ(points.size(), 51u);
            for (const double fraction : {0.0, 1.0}) {
                CurveInput boundary = test::whole_curve(*fluid, kind.boundary, fraction, c.units);
                boundary.options.Dens = 1000;
                const auto coexistence = CalcCurve(*fluid, boundary).curve.points;
                const CurvePoint& at = fraction == 0.0 ? points.front() : points.back();
                EXPECT_LT(distance(coexistence, X(at), Y(at)), 5e-4) << fraction;
            }
            EXPECT_NEAR(X(points[25]), 0.5 * (X(points[0]) + X(points[50])),
                        1e-6 * (std::fabs(X(points[0])) + std::fabs(X(points[50]))));
            EXPECT_NEAR(Y(points[10]), 0.8 * Y(points[0]) + 0.2 * Y(points[50]),
                        1e-6 * (std::fabs(Y(points[0])) + std::fabs(Y(points[50]))));
            const double Par_of = isochore ? end.v : kind.section == Section::isothermal ? T : p;
            EXPECT_NEAR(Par(points[7]), Par_of, 1e-6 * Par_of);
            const auto head = isochore ? par_v : kind.section == Section::isothermal ? par_T : par_p;
            EXPECT_EQ(line.curve.Par, head);
        }
        EXPECT_EQ(kinds, 37);
    }
}

// The ideal gas at T, p is the same for both phases: residual functions jump by as much as the functions.
TEST(TieLines, ResidualFunctionsJumpLikeTheFunctions) {
    const auto fluid = propane_fluid();
    const double T = 300.0, p = pLV_EOS(*fluid, T).p;
    const Units units{.EnergyMode = energy_per_mass};
    const auto ends = [&](int kind) { return tie_line(*fluid, kind_of(kind), T, p, units).curve.points; };
    const struct {
        int residual, function;
    } pairs[] = {{40, 151}, {41, 150}, {43, 154}, {30, 16}, {31, 15}, {33, 19}};
    for (const auto& [residual, function] : pairs) {
        const auto r = ends(residual), f = ends(function);
        ASSERT_EQ(r.size(), 51u) << residual;
        EXPECT_EQ(r[0].X, f[0].X);
        const double jump = Y(f[50]) - Y(f[0]);
        EXPECT_NEAR(Y(r[50]) - Y(r[0]), jump, 1e-6 * (std::fabs(Y(r[0])) + std::fabs(Y(f[0])))) << residual;
        EXPECT_GT(std::fabs(jump), 0.01) << residual;
    }
    for (const int g : {42, 32}) {  // R T ln phi of both phases is the same
        const auto r = ends(g);
        const double v = pLV_EOS(*fluid, T).vV;
        EXPECT_NEAR(Y(r[50]), Y(r[0]), 1e-6 * std::fabs(Y(r[0])));
        EXPECT_NEAR(Y(r[50]), RGas * T * ThermoFunc(*fluid, T, p, v).FuncA[fu_lnphi] / fluid->M,
                    1e-6 * std::fabs(Y(r[0])));
    }
}

TEST(TieLines, ThereIsNoneElsewhere) {
    const auto fluid = propane_fluid();
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, vcr = fluid->eos.vcrEOS;
    const auto virial = test::starter_fluid(test::propane, Eos::virial_peng_robinson);
    const IsochoreEnd end{.T = 300.0, .p = 1000.0, .v = 2.0 * vcr};
    const struct {
        const char* what;
        const Fluid& fluid;
        int kind;
        double T, p;
        IsochoreEnd end;
    } none[] = {
        {"T(cr)", *fluid, 1, Tcr, 0, {}},
        {"above T(cr)", *fluid, 150, 1.2 * Tcr, 0, {}},
        {"p(cr)", *fluid, 3, 0, pcr, {}},
        {"above p(cr)", *fluid, 15, 0, 1.2 * pcr, {}},
        {"no T", *fluid, 107, 0, 1000, {}},
        {"no p", *fluid, 24, 300, 0, {}},
        {"isochore p-T", *fluid, 5, 300, 1000, end},
        {"isochore cV", *fluid, 185, 300, 1000, end},
        {"Joule-Thomson", *fluid, 34, 300, 1000, {}},
        {"no isochore yet", *fluid, 183, 300, 1000, {}},
        {"isochore of v(cr)", *fluid, 183, 300, 1000, {.T = 300, .p = 1000, .v = vcr * (1.0 + 9e-7)}},
        {"isochore above T(cr)", *fluid, 183, 300, 1000, {.T = 1.01 * Tcr, .p = 1000, .v = 2 * vcr}},
        {"projection", *fluid, 6, 300, 1000, {}},
        {"V-phase only", *virial, 1, 300, 1000, {}},
        {"V-phase only, function", *virial, 15, 300, 1000, {}},
    };
    for (const auto& c : none) {
        const CurveResult r = tie_line(c.fluid, kind_of(c.kind), c.T, c.p, {}, c.end);
        EXPECT_EQ(r.Status, CurveStatus::no_tie_line) << c.what;
        EXPECT_TRUE(r.curve.points.empty()) << c.what;
    }
    const IsochoreEnd near{.T = 300.0, .p = 1000.0, .v = vcr * (1.0 + 2e-6)};
    EXPECT_EQ(tie_line(*fluid, Kind::u_T_isochore, 0, 0, {}, near).Status, CurveStatus::done);
}

}  // namespace
}  // namespace quom
