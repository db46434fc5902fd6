// Shapes of curves: jumps at saturation, ends at the critical point, tie lines between the branches of the
// coexistence curve, order of the points, and where nothing is drawn.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "diagrams/curve_support.h"
#include "diagrams/point_claims.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

using test::Setting;
using Points = std::vector<CurvePoint>;

std::vector<Setting> settings() {
    const SubstanceConstants propane = test::starter_substance(test::propane);
    return {
        {"propane, Peng/Robinson", test::starter_fluid(propane, Eos::peng_robinson), test::molar},
        {"propane, Peng/Robinson, reduced", test::starter_fluid(propane, Eos::peng_robinson), test::reduced},
        {"water, Soave", test::starter_fluid(test::water, Eos::soave), test::specific}};
}

std::string name_of(const Setting& s, Kind kind) {
    return s.name + ", kind " + std::to_string(static_cast<int>(kind));
}

bool in_section(const KindInfo& kind) {
    return kind.section == Section::isothermal || kind.section == Section::isobaric ||
           kind.section == Section::isochoric;
}
// A call below the critical point.
CurveInput call(const Setting& s, Kind kind, int Dens = 200) {
    CurveInput in = test::curve_input(s, kind, Dens);
    in.T = 0.85 * s.Tcr();
    in.p = 0.4 * s.pcr();
    in.v = 3.0 * s.vcr();
    return in;
}

bool same_point(const CurvePoint& a, const CurvePoint& b) { return a.X == b.X && a.Y == b.Y; }

// Neighbours are in order, no point stands twice, and one pair at most, the saturated states, shares its x.
TEST(Shapes, OrderAndRepetition) {
    for (const Setting& s : settings())
        for (const KindInfo& kind : kind_list()) {
            if (!in_section(kind)) continue;
            const CurveResult r = CalcCurve(*s.fluid, call(s, kind.kind));
            const Points& points = r.curve.points;
            ASSERT_GT(points.size(), 50u) << name_of(s, kind.kind);
            EXPECT_EQ(r.curve.Par, kind.par) << name_of(s, kind.kind);
            EXPECT_EQ(r.curve.Tag, kind.tag) << name_of(s, kind.kind);
            EXPECT_EQ(r.Status, CurveStatus::done) << name_of(s, kind.kind);
            const bool pairs =
                kind.family == CurveFamily::isotherm_pairs || kind.family == CurveFamily::isobar_pairs;
            const bool falls = kind.section == Section::isochoric || kind.kind == Kind::joule_thomson_T;
            std::size_t equal = 0, twice = 0;
            for (std::size_t i = 1; i < points.size(); ++i) {
                const CurvePoint &a = points[i - 1], &b = points[i];
                // g of both phases is the same; over v the vapor is met by the scan and added as its end.
                twice += same_point(a, b);
                const float from = pairs ? a.Par : a.X, to = pairs ? b.Par : b.X;
                equal += from == to;
                if (falls && points.front().X > points.back().X) {
                    EXPECT_LE(to, from) << name_of(s, kind.kind) << ", point " << i;
                } else {
                    EXPECT_GE(to, from) << name_of(s, kind.kind) << ", point " << i;
                }
            }
            EXPECT_LE(equal, 1u) << name_of(s, kind.kind);
            const bool may = kind.y == AxisQuantity::g || kind.y == AxisQuantity::residual_g ||
                             kind.family == CurveFamily::isotherm_functions_v;
            EXPECT_LE(twice, may ? 1u : 0u) << name_of(s, kind.kind);
        }
}

// The jump at saturation: the ends are the last point of the one phase and the first of the other.
struct Jump {
    Kind kind;
    double (*expected)(const Fluid&, const Saturation&);  // V less L, molar; along y
};
double hLV_of(const Fluid& fluid, const Saturation& s) {
    return hLV(fluid, {.model = Hlv::eos, .T = s.T}).value;
}
constexpr Jump jumps[] = {
    {Kind::h_T, hLV_of},
    {Kind::h_p, hLV_of},
    {Kind::residual_h_T, hLV_of},
    {Kind::residual_h_p, hLV_of},
    {Kind::g_T, [](const Fluid&, const Saturation&) { return 0.0; }},
    {Kind::g_p, [](const Fluid&, const Saturation&) { return 0.0; }},
    {Kind::residual_g_T, [](const Fluid&, const Saturation&) { return 0.0; }},
    {Kind::s_T, [](const Fluid& f, const Saturation& s) { return hLV_of(f, s) / s.T; }},
    {Kind::s_p, [](const Fluid& f, const Saturation& s) { return hLV_of(f, s) / s.T; }},
    {Kind::residual_s_T, [](const Fluid& f, const Saturation& s) { return hLV_of(f, s) / s.T; }},
    {Kind::u_T, [](const Fluid& f, const Saturation& s) { return hLV_of(f, s) - s.p * (s.vV - s.vL); }},
    {Kind::u_v, [](const Fluid& f, const Saturation& s) { return hLV_of(f, s) - s.p * (s.vV - s.vL); }},
    {Kind::a_T, [](const Fluid&, const Saturation& s) { return -s.p * (s.vV - s.vL); }},
    {Kind::a_v, [](const Fluid&, const Saturation& s) { return -s.p * (s.vV - s.vL); }},
};

TEST(Shapes, JumpsAtSaturation) {
    for (const Setting& s : settings())
        for (const Jump& row : jumps) {
            const CurveInput in = call(s, row.kind);
            const KindInfo& kind = kind_info(row.kind);
            const bool isotherm = kind.section == Section::isothermal;
            const Saturation at = isotherm ? pLV_EOS(*s.fluid, in.T) : TLV_EOS(*s.fluid, in.p);
            const test::DisplayFactors f = test::display_factors(*s.fluid, s.units);
            const double x1 = kind.x == AxisQuantity::v ? at.vL * f.v : isotherm ? at.p * f.p : at.T * f.T;
            const double x2 = kind.x == AxisQuantity::v ? at.vV * f.v : x1;
            const auto end = [&](const Points& points, double x, bool last) {
                const auto is = [&](const CurvePoint& c) { return c.X == static_cast<float>(x); };
                const auto found = last ? std::ranges::find_if(points.rbegin(), points.rend(), is).base() - 1
                                        : std::ranges::find_if(points, is);
                return found == points.end() ? std::numeric_limits<double>::quiet_NaN()
                                             : static_cast<double>(found->Y);
            };
            const Points points = CalcCurve(*s.fluid, in).curve.points;
            const double u = f.u(at.T), first = end(points, x1, false), second = end(points, x2, true);
            // Along p the vapor comes first.
            const double jump = isotherm && kind.x == AxisQuantity::p ? first - second : second - first;
            // A whole number of kJ/kmol, and two singles.
            const double slack = 0.6 * u + 0x1p-22 * (std::fabs(first) + std::fabs(second));
            EXPECT_NEAR(jump, row.expected(*s.fluid, at) * u, slack) << name_of(s, row.kind);
        }
}

// Between v(L) and v(V) the isotherm has no point, and both neighbours are at p(LV).
TEST(Shapes, FlatPartOfTheIsotherm) {
    for (const Setting& s : settings()) {
        const CurveInput in = call(s, Kind::p_v);
        const Saturation at = pLV_EOS(*s.fluid, in.T);
        const test::DisplayFactors f = test::display_factors(*s.fluid, s.units);
        const Points points = CalcCurve(*s.fluid, in).curve.points;
        const auto V = std::ranges::find(points, static_cast<float>(at.vV * f.v), &CurvePoint::X);
        ASSERT_TRUE(V != points.end() && V != points.begin()) << s.name;
        EXPECT_EQ(V->Y, static_cast<float>(at.p * f.p));
        EXPECT_EQ((V - 1)->X, static_cast<float>(at.vL * f.v));
        EXPECT_EQ((V - 1)->Y, static_cast<float>(at.p * f.p));
        // At T(cr) there is none.
        CurveInput critical = in;
        critical.T = s.Tcr();
        const Points above = CalcCurve(*s.fluid, critical).curve.points;
        EXPECT_EQ(std::ranges::count(above, static_cast<float>(s.pcr() * f.p), &CurvePoint::Y) > 1, false)
            << s.name;
    }
}

// Par of a point of a boundary: T or p of the saturated state.
CurvePoint boundary_point(const KindInfo& boundary, double X, double Y, const Saturation& at) {
    return {static_cast<float>(X), static_cast<float>(Y),
            static_cast<float>(boundary.par == par_T ? at.T : at.p), 0.0f};
}

std::int16_t par_of_section(Section section) {
    return section == Section::isothermal ? par_T : section == Section::isobaric ? par_p : par_v;
}

// Both ends lie on the coexistence curve of the same axes, the points between them on the straight line.
TEST(Shapes, TieLines) {
    for (const Setting& s : settings())
        for (const KindInfo& kind : kind_list()) {
            if (!in_section(kind)) continue;
            CurveInput in = call(s, kind.kind);
            Saturation at =
                kind.section == Section::isobaric ? TLV_EOS(*s.fluid, in.p) : pLV_EOS(*s.fluid, in.T);
            if (kind.section == Section::isochoric) {
                in.isochore = CalcCurve(*s.fluid, in).isochore;
                at = pLV_EOS(*s.fluid, in.isochore.T);
            }
            in.TieLine = true;
            const CurveResult r = CalcCurve(*s.fluid, in);
            const Points& points = r.curve.points;
            if (kind.kind == Kind::p_T || kind.kind == Kind::cV_T_isochore ||
                kind.kind == Kind::joule_thomson_T) {
                EXPECT_EQ(r.Status, CurveStatus::no_tie_line) << name_of(s, kind.kind);
                EXPECT_TRUE(points.empty());
                continue;
            }
            ASSERT_EQ(points.size(), 51u) << name_of(s, kind.kind);
            EXPECT_EQ(r.curve.Par, par_of_section(kind.section)) << name_of(s, kind.kind);
            const CurvePoint &L = points.front(), &V = points.back();
            for (int i = 0; i <= 50; ++i) {
                const double share = i / 50.0;
                const auto near = [&](float value, float from, float to) {
                    const double expected = (1.0 - share) * from + share * to;
                    EXPECT_NEAR(value, expected, 0x1p-22 * (std::fabs(from) + std::fabs(to)))
                        << name_of(s, kind.kind) << ", point " << i;
                };
                near(points[static_cast<std::size_t>(i)].X, L.X, V.X);
                near(points[static_cast<std::size_t>(i)].Y, L.Y, V.Y);
            }
            for (const double fraction : {0.0, 1.0}) {
                const CurvePoint& end = fraction == 0.0 ? L : V;
                CurveInput of = in;
                of.VaporFraction = fraction;
                CurvePoint point = boundary_point(kind_info(kind.boundary), end.X, end.Y, at);
                of.kind = kind.boundary;
                if (kind.boundary == Kind::none) {  // residual functions: a point of the section itself
                    of.kind = kind.kind;
                    point.Par = static_cast<float>(kind.section == Section::isothermal ? in.T : in.p);
                }
                EXPECT_EQ(test::broken_claim(*s.fluid, of, point), "")
                    << name_of(s, kind.kind) << ", " << fraction;
            }
        }
}

// No tie line from the critical point on.
TEST(Shapes, NoTieLine) {
    for (const Setting& s : settings())
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::isothermal && kind.section != Section::isobaric) continue;
            for (const double factor : {1.0, 1.2}) {
                CurveInput in = call(s, kind.kind);
                in.T = factor * s.Tcr();
                in.p = factor * s.pcr();
                in.TieLine = true;
                const CurveResult r = CalcCurve(*s.fluid, in);
                EXPECT_EQ(r.Status, CurveStatus::no_tie_line) << name_of(s, kind.kind);
                EXPECT_TRUE(r.curve.points.empty()) << name_of(s, kind.kind);
            }
        }
}

// Both branches come together at the critical point: what is left between their ends is small against the
// distance of the branches in their middle.
TEST(Shapes, BranchesMeetAtTheCriticalPoint) {
    for (const Setting& s : settings())
        for (const KindInfo& kind : kind_list()) {
            if (kind.section != Section::projection || kind.boundary != kind.kind) continue;
            if (kind.kind == Kind::sat_p_T || kind.kind == Kind::sat_rho_T) continue;  // one curve
            if (kind.y == AxisQuantity::cp || kind.y == AxisQuantity::cV) continue;    // a pole, a cusp
            if (kind.y == AxisQuantity::g) continue;                                   // equal everywhere
            CurveInput in = call(s, kind.kind, 500);
            in.process.To = s.pcr();
            const Points L = CalcCurve(*s.fluid, in).curve.points;
            in.VaporFraction = 1.0;
            const Points V = CalcCurve(*s.fluid, in).curve.points;
            ASSERT_GT(L.size(), 50u) << name_of(s, kind.kind);
            ASSERT_GT(V.size(), 50u) << name_of(s, kind.kind);
            // The nearest and the widest distance over the spans of both branches.
            const auto spread = [&](float CurvePoint::*q) {
                const auto [l1, l2] = std::ranges::minmax(L, {}, q);
                const auto [v1, v2] = std::ranges::minmax(V, {}, q);
                return static_cast<double>(std::max(l2.*q, v2.*q) - std::min(l1.*q, v1.*q));
            };
            const double wide = spread(&CurvePoint::X), high = spread(&CurvePoint::Y);
            double nearest = 1e300;
            for (const CurvePoint& a : L)
                for (const CurvePoint& b : V)
                    nearest = std::min(nearest, std::hypot((a.X - b.X) / wide, (a.Y - b.Y) / high));
            // A branch ends a step below the critical point at the latest: sqrt(step) of its width is left.
            EXPECT_LT(nearest, 0.08) << name_of(s, kind.kind);
        }
}

TEST(Shapes, SaturatedDensitiesInOneCurve) {
    for (const Setting& s : settings()) {
        const Points points = CalcCurve(*s.fluid, call(s, Kind::sat_rho_T)).curve.points;
        ASSERT_GT(points.size(), 100u);
        EXPECT_TRUE(std::ranges::is_sorted(points, {}, &CurvePoint::Y)) << s.name;
        const auto top = std::ranges::max_element(points, {}, &CurvePoint::X);
        EXPECT_FLOAT_EQ(top->Y, static_cast<float>(s.fluid->M / s.vcr())) << s.name;
        EXPECT_EQ(2 * (top - points.begin()) + 1, std::ssize(points)) << s.name;
    }
}

// Nothing is drawn below the triple point, or Status tells that it is: exactly when a point lies there.
TEST(Shapes, TriplePoint) {
    const Setting s{"water", test::starter_fluid(test::water, Eos::soave), test::molar};
    const double Ttr = static_cast<double>(s.fluid->substance.Ttr);
    ASSERT_GT(Ttr, 273.0);
    for (const KindInfo& kind : kind_list()) {
        const bool over_T = kind.x == AxisQuantity::T;
        if ((!over_T && kind.y != AxisQuantity::T) || kind.section == Section::database) continue;
        for (const bool restricted : {true, false}) {
            CurveInput in = call(s, kind.kind);
            in.options.chkCurveTpRestricted = restricted;
            in.p = 100.0;
            in.v = 500.0 * s.vcr();
            (over_T ? in.range.XMin : in.range.YMin) = 230.0f;
            const CurveResult r = CalcCurve(*s.fluid, in);
            const auto below = [&](const CurvePoint& c) {
                return static_cast<double>(over_T ? c.X : c.Y) < Ttr;
            };
            const bool any = std::ranges::any_of(r.curve.points, below);
            ASSERT_GT(r.curve.points.size(), 20u) << name_of(s, kind.kind);
            EXPECT_EQ(r.Status, any ? CurveStatus::below_triple : CurveStatus::done) << name_of(s, kind.kind);
            // The isochores of functions and the inversion curve end before, at the phase boundary.
            const bool ends =
                kind.family == CurveFamily::isochore_functions || kind.section == Section::inversion;
            EXPECT_EQ(any, !restricted && !ends) << name_of(s, kind.kind);
        }
    }
}

// A span of 0 has no point; a loop needs three roots.
TEST(Shapes, NothingToDraw) {
    const Setting s = settings().front();
    for (const KindInfo& kind : kind_list()) {
        if (!in_section(kind)) continue;
        CurveInput in = call(s, kind.kind);
        in.range.YMax = in.range.YMin;
        const CurveResult none = CalcCurve(*s.fluid, in);
        EXPECT_TRUE(none.curve.points.empty() && none.Outside && none.Status == CurveStatus::done);
    }
    for (const Kind kind :
         {Kind::pv_p, Kind::rho_p, Kind::h_p, Kind::s_v, Kind::T_v, Kind::h_T, Kind::cp_T}) {
        CurveInput in = call(s, kind);
        in.SCurve = true;
        in.T = 1.1 * s.Tcr();
        in.p = 1.1 * s.pcr();
        const CurveResult r = CalcCurve(*s.fluid, in);
        EXPECT_EQ(r.Status, CurveStatus::no_tie_line) << name_of(s, kind);
        EXPECT_TRUE(r.curve.points.empty()) << name_of(s, kind);
    }
}

// The curves of an equation of the V-phase end at the saturation of the vapor pressure equation.
TEST(Shapes, VaporOnlyUpToSaturation) {
    const Setting s{"propane, virial", test::starter_fluid(test::propane, Eos::virial_peng_robinson),
                    test::molar};
    const SubstanceConstants& substance = s.fluid->substance;
    const Evp code = s.fluid->models.EVPKode;
    for (const Kind kind : {Kind::pv_p, Kind::rho_p, Kind::h_p, Kind::h_T}) {
        CurveInput in = call(s, kind);
        in.options.chkPartialKurve = true;
        const Points points = CalcCurve(*s.fluid, in).curve.points;
        const bool over_p = kind_info(kind).x == AxisQuantity::p;
        const double limit =
            over_p ? pLV_EVP(substance, in.T, code).value : TLV_EVP(substance, in.p, code).value;
        const auto [low, high] = std::ranges::minmax(points, {}, &CurvePoint::X);
        const double end = static_cast<double>(over_p ? high.X : low.X);
        EXPECT_NEAR(end, limit, 1e-6 * limit) << name_of(s, kind);
        in.options.chkPartialKurve = false;
        const auto [a, b] = std::ranges::minmax(CalcCurve(*s.fluid, in).curve.points, {}, &CurvePoint::X);
        EXPECT_GT(std::fabs(static_cast<double>(over_p ? b.X : a.X) - limit), 1e-2 * limit)
            << name_of(s, kind);
    }
}

}  // namespace
}  // namespace quom
