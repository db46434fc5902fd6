// Curves along the phase equilibrium: every point against the saturated states at its T, and the shapes.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <random>
#include <string>

#include "diagrams/phase_fixture.h"
#include "engine/vapor_pressure.h"

namespace quom {
namespace {

using test::Par;
using test::X;
using test::Y;

const std::shared_ptr<const Fluid>& propane() {
    static const auto fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    return fluid;
}

// Quantities of a boundary kind by letters: v, r density, z pv, p, T, u, h, s, g, a, c cp, C cV, H and U
// exergies, S T(surr) s; what Par is; whether the curve has the critical point.
struct Boundary {
    int kind;
    char x, y, Par;
    bool closes;
};
const Boundary boundaries[] = {
    {6, 'v', 'p', 'T', true},   {7, 'v', 'T', 'p', true},   {8, 'T', 'r', 'p', true},
    {12, 'r', 'T', 'p', true},  {27, 'p', 'r', 'T', true},  {106, 'p', 'z', 'T', true},
    {68, 'p', 'a', 'T', true},  {69, 'p', 'u', 'T', true},  {70, 'p', 'h', 'T', true},
    {71, 'p', 's', 'T', true},  {72, 'p', 'c', 'T', false}, {73, 'p', 'g', 'T', true},
    {74, 'p', 'H', 'T', true},  {75, 'p', 'U', 'T', true},  {88, 'T', 'C', 'p', true},
    {90, 'T', 'h', 'p', true},  {91, 'T', 's', 'p', true},  {92, 'T', 'c', 'p', false},
    {93, 'T', 'g', 'p', true},  {94, 'T', 'H', 'p', true},  {95, 'T', 'U', 'p', true},
    {98, 'T', 'a', 'p', true},  {99, 'T', 'u', 'p', true},  {89, 'v', 'C', 'T', false},
    {97, 'v', 'a', 'T', false}, {100, 'v', 'u', 'T', true}, {101, 'v', 's', 'T', true},
    {102, 'v', 'U', 'T', true}, {96, 'h', 'H', 'p', true},  {120, 's', 'h', 'p', true},
    {121, 'S', 'H', 'p', true},
};

// A quantity of one saturated phase in displayed units.
double quantity(const Fluid& fluid, const Units& units, char q, double T, double p, double v) {
    const auto f = test::factors(fluid, units.VolumeMode);
    const StateFunctions at = ThermoState(fluid, T, p, v);
    const double uFactor = test::energy_factor(fluid, units.EnergyMode, T), Tu = fluid.reference.TEnv;
    switch (q) {
        case 'v':
            return v * f.v;
        case 'r':
            return fluid.M / v;
        case 'z':
            return p * v * f.p * f.v;
        case 'p':
            return p * f.p;
        case 'T':
            return T * f.T;
        case 'u':
            return at.u * uFactor;
        case 'h':
            return at.h * uFactor;
        case 's':
            return at.s * uFactor;
        case 'g':
            return at.g * uFactor;
        case 'a':
            return at.a * uFactor;
        case 'c':
            return at.cp * uFactor;
        case 'C':
            return at.cV * uFactor;
        case 'H':
            return at.eH * uFactor;
        case 'U':
            return at.eU * uFactor;
        default:
            return Tu * at.s * uFactor;
    }
}

// Both phases at T as the roots of the cubic at p(LV), and their mixture by the vapor fraction.
struct Saturated {
    double T, p, L, V;
    double mixed(const Fluid& fluid, const Units& units, char q, double fraction) const {
        const double z = quantity(fluid, units, q, T, p, L);
        if (q == 'r' || q == 'v' || q == 'z')  // of the mixed volume
            return quantity(fluid, units, q, T, p, L + fraction * (V - L));
        return fraction == 0.0 ? z : z + fraction * (quantity(fluid, units, q, T, p, V) - z);
    }
};
Saturated saturated(const Fluid& fluid, double T) {
    const double Tcr = fluid.substance.Tcr;
    if (T >= Tcr * (1.0 - 1e-6)) return {Tcr, fluid.substance.pcr, fluid.eos.vcrEOS, fluid.eos.vcrEOS};
    const Saturation sat = pLV_EOS(fluid, T);
    const CubicRoots roots = CubicV(EOSParT(fluid, T), sat.p);
    if (roots.nRoots != 3) return {T, sat.p, sat.vL, sat.vV};
    return {T, sat.p, roots.VRoot[0], roots.VRoot[2]};
}

// T [K] that a point stands for.
double T_of(const Fluid& fluid, const Units& units, const Boundary& b, const CurvePoint& point) {
    const auto f = test::factors(fluid, units.VolumeMode);
    if (b.Par == 'T') return Par(point);
    if (b.x == 'T') return X(point) / f.T;
    if (b.y == 'T') return Y(point) / f.T;
    const double p = Par(point);
    return p >= fluid.substance.pcr * (1.0 - 1e-6) ? fluid.substance.Tcr : TLV_EOS(fluid, p).T;
}

struct Case {
    std::string_view cas;
    Eos code;
    Units units;
};
const Case cases[] = {
    {test::propane, Eos::peng_robinson, {}},
    {test::ammonia, Eos::soave, {.EnergyMode = energy_per_mass, .VolumeMode = volume_per_mass}},
    {test::methane, Eos::redlich_kwong, {.EnergyMode = energy_per_RT, .VolumeMode = reduced_volume}},
    {test::decane, Eos::van_der_waals, {.EnergyMode = energy_per_R, .VolumeMode = reduced_volume}},
};

TEST(PhaseCurves, EveryPointIsASaturatedState) {
    for (const Case& c : cases) {
        const auto fluid = test::starter_fluid(c.cas, c.code);
        const double Tcr = fluid->substance.Tcr;
        for (const Boundary& b : boundaries) {
            for (const double fraction : {0.0, 1.0, 0.3}) {
                SCOPED_TRACE(std::string(c.cas) + " kind " + std::to_string(b.kind) + " fraction " +
                             std::to_string(fraction));
                CurveInput input = test::whole_curve(*fluid, kind_of(b.kind), fraction, c.units);
                input.options.Dens = 60;
                const CurveResult result = CalcCurve(*fluid, input);
                EXPECT_EQ(result.Status, CurveStatus::done);
                EXPECT_FALSE(result.Outside);
                EXPECT_EQ(result.curve.Par, b.Par == 'T' ? par_T : par_p);
                EXPECT_GT(result.curve.points.size(), 10u);
                int wrong = 0;
                bool closes = false;
                for (const CurvePoint& point : result.curve.points) {
                    const double T = T_of(*fluid, c.units, b, point);
                    closes = closes || T >= Tcr * (1.0 - 1e-6);
                    // Single precision leaves T open by some 1e-7.
                    const Saturated at = saturated(*fluid, T), low = saturated(*fluid, T * (1.0 - 1e-7)),
                                    high = saturated(*fluid, std::min(T * (1.0 + 1e-7), Tcr));
                    for (const auto& [q, value] : {std::pair{b.x, X(point)}, std::pair{b.y, Y(point)}}) {
                        double share = fraction;
                        if (b.kind == 8) share = Y(point) > fluid->M / fluid->eos.vcrEOS ? 0.0 : 1.0;
                        const auto z = [&](const Saturated& s) { return s.mixed(*fluid, c.units, q, share); };
                        const double scale = std::fabs(quantity(*fluid, c.units, q, at.T, at.p, at.L)) +
                                             std::fabs(quantity(*fluid, c.units, q, at.T, at.p, at.V));
                        if (!(std::fabs(value - z(at)) <= std::fabs(z(high) - z(low)) + 1e-6 * scale))
                            ++wrong;
                    }
                }
                EXPECT_EQ(wrong, 0);
                EXPECT_EQ(closes, b.closes);
            }
        }
    }
}

TEST(PhaseCurves, BothPhasesHaveTheSameGibbsEnergyAndPressure) {
    for (const Case& c : cases) {
        const auto fluid = test::starter_fluid(c.cas, c.code);
        const CurveInput input = test::whole_curve(*fluid, Kind::sat_rho_T);
        for (const CurvePoint& point : CalcCurve(*fluid, input).curve.points) {
            const double T = X(point), p = Par(point);
            if (T > 0.999 * fluid->substance.Tcr) continue;
            const CubicRoots roots = CubicV(EOSParT(*fluid, T), p);
            ASSERT_EQ(roots.nRoots, 3);
            const double v = fluid->M / Y(point), vL = roots.VRoot[0], vV = roots.VRoot[2];
            EXPECT_NEAR(v, v < fluid->eos.vcrEOS ? vL : vV, 1e-4 * v);
            EXPECT_NEAR(ThermoFunc(*fluid, T, p, vL).FuncA[fu_lnphi],
                        ThermoFunc(*fluid, T, p, vV).FuncA[fu_lnphi], 1e-5);
        }
    }
}

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
    if (fluid.VPhaseOnly) input.range = test::whole_range(*propane(), kind);
    input.T = T;
    input.p = p;
    input.TieLine = true;
    input.isochore = isochore;
    return CalcCurve(fluid, input);
}

TEST(TieLines, EndOnTheCoexistenceCurveInEveryPlane) {
    for (const Case& c : cases) {
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
    const auto fluid = propane();
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
    const auto fluid = propane();
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

TEST(PhaseCurves, BisectorIsTheMeanOfBothDensities) {
    const auto fluid = propane();
    const auto bisector = CalcCurve(*fluid, test::whole_curve(*fluid, Kind::bisector)).curve.points;
    const auto both = CalcCurve(*fluid, test::whole_curve(*fluid, Kind::sat_rho_T)).curve.points;
    const auto range = test::whole_range(*fluid, Kind::bisector);
    EXPECT_NEAR(X(bisector[1]) - X(bisector[2]), 3.0 * static_cast<double>(range.XMax - range.XMin) / 500.0,
                1e-3);
    int compared = 0;
    for (std::size_t i = 1; i < bisector.size(); ++i) {
        double sum = 0;
        int found = 0;
        for (const CurvePoint& at : both) {
            if (std::fabs(X(at) - X(bisector[i])) > 1e-4) continue;
            sum += Y(at);
            ++found;
        }
        ASSERT_EQ(found, 2) << X(bisector[i]);
        EXPECT_NEAR(Y(bisector[i]), 0.5 * sum, 1e-4);
        ++compared;
    }
    EXPECT_GT(compared, 100);
}

TEST(PhaseCurves, DensitiesRiseFromVaporToLiquidThroughTheCriticalPoint) {
    const auto fluid = propane();
    CurveInput input = test::whole_curve(*fluid, Kind::sat_rho_T);
    const CurveRange range = input.range;
    const auto points = CalcCurve(*fluid, input).curve.points;
    EXPECT_TRUE(std::ranges::is_sorted(points, {}, &CurvePoint::Y));
    EXPECT_EQ(std::ranges::max(points, {}, &CurvePoint::X).Y, static_cast<float>(fluid->eos.rhocrEOS));
    // The smaller one of both steps runs over T, whatever its unit.
    const auto step = [](const std::vector<CurvePoint>& curve) { return X(curve[1]) - X(curve[0]); };
    EXPECT_NEAR(step(points), static_cast<double>(range.XMax - range.XMin) / 500.0, 1e-3);
    input.range.YMax = 100.0f;
    EXPECT_NEAR(step(CalcCurve(*fluid, input).curve.points), 0.2, 1e-3);
    Fluid without = *fluid;
    without.eos.vcrEOS = 0.0;
    const CurveResult none = CalcCurve(without, input);
    EXPECT_EQ(none.Status, CurveStatus::no_critical_density);
    EXPECT_TRUE(none.curve.points.empty());
}

TEST(PhaseCurves, UpperEndInThePVPlane) {
    const auto fluid = propane();
    const double pcr = fluid->substance.pcr, vcr = fluid->eos.vcrEOS;
    CurveInput input = test::whole_curve(*fluid, Kind::sat_p_v);
    input.range.YMax = 2000.0f;
    for (const double fraction : {0.0, 1.0}) {
        input.VaporFraction = fraction;
        const auto points = CalcCurve(*fluid, input).curve.points;
        EXPECT_EQ(points[0].X, static_cast<float>(vcr));
        EXPECT_EQ(points[0].Y, static_cast<float>(pcr));
        EXPECT_LT(Y(points[1]), 2000.0);
        EXPECT_GT(Y(points[1]), 1995.0);
    }
    input.VaporFraction = 0.0;
    const auto status = [&](float YMin, float YMax) {
        input.range.YMin = YMin;
        input.range.YMax = YMax;
        return CalcCurve(*fluid, input);
    };
    const CurveResult above = status(static_cast<float>(pcr) + 1.0f, 9000.0f);
    EXPECT_EQ(above.Status, CurveStatus::outside);
    EXPECT_TRUE(above.Outside);
    EXPECT_TRUE(above.curve.points.empty());
    // A span of 1 kPa makes ln(span) vanish; the walk still falls.
    const CurveResult narrow = status(1000.0f, 1001.0f);
    EXPECT_FALSE(narrow.Outside);
    const auto visible = [](const CurvePoint& p) { return p.Y > 1000.0f && p.Y < 1001.0f; };
    EXPECT_GT(std::ranges::count_if(narrow.curve.points, visible), 20);
}

// Where each scan begins and ends, and its step.
TEST(PhaseCurves, Steps) {
    const auto fluid = propane();
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr;
    const auto span = [](float low, float high) { return static_cast<double>(high - low); };
    const struct {
        int kind;
        double fraction, of_x, of_y, kelvin;  // step as share of the spans over Dens, or in K
        char over;                            // coordinate that runs: X, Y, or P for Par
    } rows[] = {
        {27, 0, 0.75, 0, 0, 'X'},      {106, 1, 0.75, 0, 0, 'X'}, {7, 0, 0, 0.5, 0, 'Y'},
        {7, 0.49, 0, 0.5, 0, 'Y'},     {7, 0.5, 0, 2.0, 0, 'Y'},  {12, 1, 0, 2.0, 0, 'Y'},
        {70, 0, 1, 0, 0, 'X'},         {90, 1, 1, 0, 0, 'X'},     {101, 1, 0, 0, Tcr / 200, 'P'},
        {89, 0, 0, 0, Tcr / 200, 'P'},
    };
    for (const auto& row : rows) {
        CurveInput input = test::whole_curve(*fluid, kind_of(row.kind), row.fraction);
        input.options.Dens = 200;
        const CurveRange& r = input.range;
        const double step =
            row.of_x * span(r.XMin, r.XMax) / 200.0 + row.of_y * span(r.YMin, r.YMax) / 200.0 + row.kelvin;
        const auto points = CalcCurve(*fluid, input).curve.points;
        const auto at = [&](std::size_t i) {
            return row.over == 'X' ? X(points[i]) : row.over == 'Y' ? Y(points[i]) : Par(points[i]);
        };
        for (std::size_t i = 10; i < 15; ++i)
            EXPECT_NEAR(std::fabs(at(i + 1) - at(i)), step, 1e-3 * step) << row.kind;
    }
    const auto along_p = CalcCurve(*fluid, test::whole_curve(*fluid, Kind::sat_rho_p)).curve.points;
    EXPECT_FLOAT_EQ(along_p.front().X, 0.1f);
    EXPECT_FLOAT_EQ(along_p.back().X, static_cast<float>(pcr));
    const double before = X(along_p[along_p.size() - 2]);
    EXPECT_LT(before, pcr - 5.0);
    EXPECT_GT(before, pcr - 5.0 - 0.75 * 1.5 * pcr / 500.0);
}

// The walk in the p-v plane begins 0.05 K and ln(span)/1000 K below T(cr). Its step is doubled until p or v
// moves by 1/800 of the range, and never falls.
TEST(PhaseCurves, StepInThePVPlaneIsDoubledOnly) {
    const auto fluid = propane();
    const double Tcr = fluid->substance.Tcr;
    for (const double fraction : {0.0, 1.0}) {
        const CurveInput input = test::whole_curve(*fluid, Kind::sat_p_v, fraction);
        const double dp = static_cast<double>(input.range.YMax) / 800.0,
                     dv = static_cast<double>(input.range.XMax) / 800.0;
        const auto points = CalcCurve(*fluid, input).curve.points;
        const double first = std::log(800.0 * dp) / 1000.0;
        EXPECT_NEAR(Par(points[1]), Tcr - 0.05 - first, 1e-4);
        double last = first;
        for (std::size_t i = 2; i < points.size(); ++i) {
            EXPECT_TRUE(std::fabs(Y(points[i]) - Y(points[i - 1])) > 0.999 * dp ||
                        std::fabs(X(points[i]) - X(points[i - 1])) > 0.999 * dv)
                << i;
            const double step = Par(points[i - 1]) - Par(points[i]);
            EXPECT_GT(step, last - 1e-4) << i;
            last = std::max(last, 0.5 * step);  // a step with doublings is longer than the next one
        }
        const bool vapor = fraction == 1.0;
        EXPECT_EQ(points.back().X > input.range.XMax, vapor);
    }
}

TEST(PhaseCurves, HeatCapacitiesRiseToTheCriticalPointAndAreCutThere) {
    for (const auto cas : {test::propane, test::decane, test::water}) {
        const auto fluid = test::starter_fluid(cas, Eos::peng_robinson);
        for (const int kind : {92, 72}) {
            for (const double fraction : {0.0, 1.0}) {
                const auto cp =
                    CalcCurve(*fluid, test::whole_curve(*fluid, kind_of(kind), fraction)).curve.points;
                const auto h =
                    CalcCurve(*fluid, test::whole_curve(*fluid, kind_of(kind - 2), fraction)).curve.points;
                // Only what lies above 5000 kJ/(kmol K) next to the critical point is left out.
                EXPECT_GT(cp.size() + 7, h.size()) << cas << kind;
                EXPECT_LE(cp[0].Y, 5000.0f);
                EXPECT_GT(cp[0].Y, cp[1].Y);
            }
        }
    }
}

TEST(PhaseCurves, TriplePointEndsTheCurvesOrIsTold) {
    const auto fluid = propane();
    Fluid cold = *fluid, none = *fluid;
    cold.substance.Ttr = 250.0f;
    none.substance.Ttr = 0.0f;
    for (const Boundary& b : boundaries) {
        SCOPED_TRACE(b.kind);
        CurveInput input = test::whole_curve(*fluid, kind_of(b.kind));
        const auto coldest = [&](const Fluid& f) {
            double T = 1e30;
            for (const CurvePoint& point : CalcCurve(f, input).curve.points)
                T = std::min(T, T_of(f, {}, b, point));
            return T;
        };
        input.options.chkCurveTpRestricted = true;
        EXPECT_GE(coldest(cold), 250.0 - 1e-4);
        EXPECT_EQ(CalcCurve(cold, input).Status, CurveStatus::done);
        input.options.chkCurveTpRestricted = false;
        EXPECT_LT(coldest(cold), 250.0);
        EXPECT_EQ(CalcCurve(cold, input).Status, CurveStatus::below_triple);
    }
    // Without a triple point the p-v curve runs down to 1e-6 kPa.
    const CurveInput input = test::whole_curve(none, Kind::sat_p_v);
    const auto points = CalcCurve(none, input).curve.points;
    EXPECT_GE(Y(points.back()), 1e-6);
    EXPECT_LT(Y(points.back()), 1e-2);
}

TEST(PhaseCurves, LimitsOfTheVolumePlane) {
    const auto fluid = propane();
    const double b = EOSParT(*fluid, 300.0).b;
    CurveInput input = test::whole_curve(*fluid, Kind::bnd_u_v);
    input.options.chkCurveTpRestricted = false;
    const double XMax = static_cast<double>(input.range.XMax);
    for (const double fraction : {0.0, 1.0}) {
        input.VaporFraction = fraction;
        const auto points = CalcCurve(*fluid, input).curve.points;
        for (const CurvePoint& point : points) {
            EXPECT_GT(X(point), 1.08 * b);
            EXPECT_LE(X(point), 50.0 * XMax);
            EXPECT_LE(pLV_EOS(*fluid, Par(point)).vV, 50.0 * XMax);
        }
        EXPECT_TRUE(fraction != 0.0 || std::ranges::is_sorted(points, {}, &CurvePoint::Y));
    }
    input.range.XMax = 1e6f;  // now the covolume ends the curve
    input.VaporFraction = 0.0;
    EXPECT_LT(X(CalcCurve(*fluid, input).curve.points.front()), 1.09 * b);
}

TEST(PhaseCurves, FunctionPairsFollowTheConcept) {
    const auto global = propane();
    ModelSelection models = global->models;
    models.Konzept = false;
    models.EVPKode = Evp::august;
    const auto partial = with_models(*global, models);
    CurveInput input = test::whole_curve(*global, Kind::bnd_h_s, 1.0);
    input.process.From = 500.0;
    input.process.To = 1500.0;
    for (const auto& fluid : {global, partial}) {
        const auto points = CalcCurve(*fluid, input).curve.points;
        ASSERT_EQ(points.size(), 1667u);  // the critical point is none of this part
        const double p = Par(points[1000]), T = fluid == global
                                                    ? TLV_EOS(*fluid, p).T
                                                    : TLV_EVP(fluid->substance, p, Evp::august).value;
        EXPECT_NEAR(p, 500.0 + 1000 * 0.6, 1e-3);
        EXPECT_NEAR(Y(points[1000]), ThermoSat(*fluid, T).V.h, 1e-5 * std::fabs(Y(points[1000])));
    }
    EXPECT_GT(std::fabs(TLV_EVP(partial->substance, 1100.0, Evp::august).value - TLV_EOS(*global, 1100.0).T),
              0.05);
}

TEST(PhaseCurves, NoneForAnEquationOfTheVPhaseOnly) {
    const auto virial = test::starter_fluid(test::propane, Eos::virial_peng_robinson);
    for (const Boundary& b : boundaries) {
        const CurveResult r = CalcCurve(*virial, test::whole_curve(*propane(), kind_of(b.kind)));
        EXPECT_TRUE(r.curve.points.empty()) << b.kind;
        EXPECT_TRUE(r.Outside);
    }
}

// A range far below the critical point is reached, however narrow it is.
TEST(PhaseCurves, NarrowRangesAreReached) {
    const auto fluid = propane();
    for (const int kind : {7, 12, 8, 80}) {
        for (const double span : {1.0, 1e-3}) {
            SCOPED_TRACE(std::to_string(kind) + " " + std::to_string(span));
            CurveInput input = test::whole_curve(*fluid, kind_of(kind));
            const bool over_T = input.range.XMax < 500.0f && kind != 7 && kind != 12;
            (over_T ? input.range.XMin : input.range.YMin) = 200.0f;
            (over_T ? input.range.XMax : input.range.YMax) = static_cast<float>(200.0 + span);
            const CurveResult r = CalcCurve(*fluid, input);
            EXPECT_FALSE(r.Outside);
            EXPECT_LE(r.curve.points.size(), 2u * (20u * 500u + 1000u) + 1u);
        }
    }
}

TEST(PhaseCurves, HostileRangesEndWithFinitePoints) {
    std::mt19937 engine(11);
    std::uniform_real_distribution<float> exponent(-8.0f, 8.0f);
    const auto number = [&] {
        const float x = std::pow(10.0f, exponent(engine));
        return engine() % 4 == 0 ? -x : x;
    };
    const auto fluid = propane();
    for (const Boundary& b : boundaries) {
        for (int i = 0; i < 40; ++i) {
            CurveInput input = test::whole_curve(*fluid, kind_of(b.kind), i % 3 == 0 ? 0.5 : 0.0);
            input.range = {number(), number(), number(), number()};
            input.options.chkCurveTpRestricted = i % 2 == 0;
            input.units.VolumeMode = i % 3;
            const auto start = std::chrono::steady_clock::now();
            const CurveResult r = CalcCurve(*fluid, input);
            const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
            EXPECT_LT(time.count(), 1.0) << b.kind;
            for (const CurvePoint& point : r.curve.points)
                EXPECT_TRUE(std::isfinite(point.X) && std::isfinite(point.Y) && std::isfinite(point.Par));
        }
    }
}

}  // namespace
}  // namespace quom
