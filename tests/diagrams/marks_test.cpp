// Marks against the figures of the record and the engine, and the plans of overlays.
#include "diagrams/marks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

#include "diagrams/graph_view.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"
#include "sample_sheet.h"
#include "support/starter.h"

namespace quom {
namespace {

using test::p_v_sheet;
using test::starter_fluid;

GraphDocument sheet_of(Kind kind) {
    GraphDocument sheet = p_v_sheet();
    sheet.diagram.kind = kind;
    return sheet;
}

// Where a line stands: "x" or "y" and the value; empty when it is not on the sheet. It runs over the range.
struct Line {
    char axis = ' ';
    double at = 0;
    std::string text;
};
Line line_of(const GraphDocument& sheet, int number) {
    const Mark& mark = sheet.mark(number);
    if (!mark.shown()) return {};
    const auto& points = mark.series.points;
    const CurveRange& range = sheet.diagram.range;
    EXPECT_EQ(points.size(), 2u);
    if (points[0].X == points[1].X) {
        EXPECT_EQ(points[0].Y, range.YMin);
        EXPECT_EQ(points[1].Y, range.YMax);
        EXPECT_FLOAT_EQ(mark.label_at.Y, range.YMin + (range.YMax - range.YMin) / 6);
        return {'x', static_cast<double>(points[0].X), mark.series.label.text};
    }
    EXPECT_EQ(points[0].X, range.XMin);
    EXPECT_EQ(points[1].X, range.XMax);
    EXPECT_FLOAT_EQ(mark.label_at.X, range.XMin + (range.XMax - range.XMin) / 6);
    return {'y', static_cast<double>(points[0].Y), mark.series.label.text};
}

void expect_line(const GraphDocument& sheet, int number, char axis, double at, const char* text) {
    const Line line = line_of(sheet, number);
    EXPECT_EQ(line.axis, axis) << number;
    EXPECT_NEAR(line.at, at, 2e-7 * std::abs(at)) << number;
    EXPECT_EQ(line.text, text);
}

// Published: water T(cr) 647.096 K, p(cr) 22064 kPa, T(tr) 273.16 K, p(tr) 0.61166 kPa (IAPWS R2-83, R7-97),
// T(nb) 373.12 K (IAPWS-95).
TEST(Marks, temperatures_stand_at_their_axis) {
    const auto fluid = starter_fluid(test::water, Eos::peng_robinson);
    const std::tuple<Kind, char> kinds[] = {
        {Kind::T_v, 'y'}, {Kind::T_rho, 'y'}, {Kind::p_T, 'x'}, {Kind::h_T, 'x'}, {Kind::p_v, ' '}};
    for (const auto& [kind, axis] : kinds) {
        GraphDocument sheet = sheet_of(kind);
        mark_T(sheet, *fluid, {}, {});
        const std::tuple<int, double> lines[] = {{mark_Tcr, 647.096}, {mark_Ttr, 273.16}, {mark_TLV, 373.12}};
        for (const auto& [number, T] : lines) {
            EXPECT_EQ(line_of(sheet, number).axis, axis) << number_of(kind);
            if (axis == ' ') continue;
            EXPECT_NEAR(line_of(sheet, number).at, T, 0.06);
        }
    }
    GraphDocument sheet = sheet_of(Kind::sat_lnp_invT);
    mark_T(sheet, *fluid, {}, {});
    expect_line(sheet, mark_Tcr, 'x', 1 / fluid->substance.Tcr, "T(cr)");
    expect_line(sheet, mark_TLV, 'x', 1 / static_cast<double>(fluid->substance.Tnb),
                "                      T(LV) at normal pressure");
    Units reduced;
    reduced.VolumeMode = reduced_volume;
    mark_T(sheet, *fluid, reduced, {});
    expect_line(sheet, mark_Tcr, 'x', 1, "T(cr)");
    sheet = sheet_of(Kind::T_v);
    mark_T(sheet, *fluid, reduced, {});
    expect_line(sheet, mark_Ttr, 'y', 273.16 / 647.096, "T(Trip.P.)");
}

TEST(Marks, an_isobar_of_a_vapor_equation_has_its_own_boiling_point) {
    const auto fluid = starter_fluid(test::water, Eos::virial_peng_robinson);
    GraphDocument sheet = sheet_of(Kind::h_T);
    sheet.last.p = 1000;
    CurveOptions options;
    options.chkPartialKurve = true;
    mark_T(sheet, *fluid, {}, options);
    const Line line = line_of(sheet, mark_TLV);
    EXPECT_EQ(line.text, "                      T(LV) at p");
    EXPECT_NEAR(line.at, 453.03, 0.5);  // boiling point of water at 1 MPa (IAPWS-IF97)
    sheet.diagram.kind = Kind::p_T;     // no isobar
    mark_T(sheet, *fluid, {}, options);
    EXPECT_EQ(line_of(sheet, mark_TLV).text, "                      T(LV) at normal pressure");
}

TEST(Marks, pressures_and_p_LV_by_the_vapor_pressure_equation_under_either_concept) {
    const auto fluid = starter_fluid(test::water, Eos::van_der_waals);
    ASSERT_TRUE(fluid->models.Konzept);
    GraphDocument sheet = sheet_of(Kind::p_v);
    sheet.last.T = 373.15;
    mark_p(sheet, *fluid, {});
    expect_line(sheet, mark_pcr, 'y', fluid->substance.pcr, "p(cr)");
    EXPECT_NEAR(line_of(sheet, mark_pSLV).at, 0.6117, 0.003);
    // 101.42 kPa at 100 C (IAPWS); the van der Waals equation itself is far off.
    EXPECT_NEAR(line_of(sheet, mark_pLV).at, 101.42, 0.5);
    EXPECT_GT(std::abs(pLV_EOS(*fluid, 373.15).p - 101.42), 50);
    EXPECT_EQ(line_of(sheet, mark_pLV).text, "p(LV) at T ");
    sheet.last.T = 700;
    mark_p(sheet, *fluid, {});
    EXPECT_FALSE(sheet.mark(mark_pLV).shown()) << "above T(cr)";
    EXPECT_TRUE(sheet.mark(mark_pcr).shown());
    sheet = sheet_of(Kind::h_T);
    mark_p(sheet, *fluid, {});
    EXPECT_FALSE(has_marks(sheet)) << "no axis of p";
    sheet = sheet_of(Kind::rho_p);
    sheet.last.T = 300;
    mark_p(sheet, *fluid, {});
    EXPECT_EQ(line_of(sheet, mark_pLV).axis, 'x');
}

TEST(Marks, volumes_and_densities) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const SubstanceConstants& substance = fluid->substance;
    // Peng/Robinson: Z(cr) = 0.3074, b = 0.0778 R T(cr)/p(cr), the same at every T.
    const double RT_p = 8.31451 * substance.Tcr / substance.pcr, vcr = 0.3074 * RT_p, b = 0.0778 * RT_p;
    GraphDocument sheet = sheet_of(Kind::p_v);
    mark_v(sheet, *fluid, {});
    mark_b_line(sheet, *fluid, {});
    EXPECT_NEAR(line_of(sheet, mark_vcr).at, vcr, 1e-4 * vcr);
    EXPECT_NEAR(line_of(sheet, mark_b).at, b, 1e-4 * b);
    EXPECT_EQ(line_of(sheet, mark_b).text, "v = b");
    Units mass;
    mass.VolumeMode = volume_per_mass;
    mark_v(sheet, *fluid, mass);
    EXPECT_NEAR(line_of(sheet, mark_vcr).at, vcr / 44.097, 2e-4 * vcr / 44.097);
    sheet = sheet_of(Kind::T_rho);
    mark_v(sheet, *fluid, mass);
    mark_b_line(sheet, *fluid, mass);
    EXPECT_EQ(line_of(sheet, mark_vcr).axis, 'x');
    EXPECT_NEAR(line_of(sheet, mark_vcr).at, 44.097 / vcr, 2e-4 * 44.097 / vcr);
    EXPECT_NEAR(line_of(sheet, mark_b).at, 44.097 / b, 2e-4 * 44.097 / b);
    for (const Kind without : {Kind::cV_v, Kind::rho_p, Kind::h_T}) {
        sheet = sheet_of(without);
        mark_b_line(sheet, *fluid, {});
        EXPECT_FALSE(has_marks(sheet)) << number_of(without);
    }
}

// Propane: 369.83 K, 4247.66 kPa (4.25 MPa), 220 kg/m^3 (Lemmon, McLinden, Wagner 2009: 369.89 K, 4251 kPa).
TEST(Marks, critical_points_by_kind) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const SubstanceConstants& s = fluid->substance;
    const double v = s.vcrDB, rho = s.rhocrDB;
    EXPECT_NEAR(s.Tcr, 369.89, 0.3);
    EXPECT_NEAR(rho, 220.5, 6);
    const std::tuple<Kind, double, double> cases[] = {
        {Kind::p_v, v, s.pcr},          {Kind::sat_p_v, v, s.pcr},
        {Kind::pv_p, s.pcr, s.pcr * v}, {Kind::sat_pv_p, s.pcr, s.pcr * v},
        {Kind::rho_p, s.pcr, rho},      {Kind::sat_rho_p, s.pcr, rho},
        {Kind::T_v, v, s.Tcr},          {Kind::sat_T_v, v, s.Tcr},
        {Kind::T_rho, rho, s.Tcr},      {Kind::p_T, s.Tcr, s.pcr},
        {Kind::sat_p_T, s.Tcr, s.pcr}};
    for (const auto& [kind, x, y] : cases) {
        GraphDocument sheet = sheet_of(kind);
        mark_critical_point(sheet, *fluid, {}, false);
        const auto& points = sheet.mark(mark_crit_measured).series.points;
        ASSERT_EQ(points.size(), 1u) << number_of(kind);
        EXPECT_FLOAT_EQ(points[0].X, static_cast<float>(x)) << number_of(kind);
        EXPECT_FLOAT_EQ(points[0].Y, static_cast<float>(y)) << number_of(kind);
    }
    GraphDocument sheet = sheet_of(Kind::T_rho);
    mark_critical_point(sheet, *fluid, {}, true);
    EXPECT_TRUE(has_critical_point(sheet, true));
    EXPECT_FALSE(has_critical_point(sheet, false));
    // rho(cr) of the equation: M p(cr)/(0.3074 R T(cr)).
    EXPECT_NEAR(static_cast<double>(sheet.mark(mark_crit_calculated).series.points[0].X),
                44.097 * s.pcr / (0.3074 * 8.31451 * s.Tcr), 0.1);
    mark_critical_point(sheet, *starter_fluid(test::propane, Eos::virial_soave), {}, true);
    EXPECT_FALSE(has_critical_point(sheet, true)) << "a virial equation has no v(cr)";
    sheet = sheet_of(Kind::h_T);
    mark_critical_point(sheet, *fluid, {}, false);
    EXPECT_TRUE(is_empty(sheet));
}

TEST(Marks, setting_again_replaces_and_what_is_missing_is_left_out) {
    SubstanceConstants substance = test::starter_substance(test::propane);
    const auto whole = starter_fluid(substance, Eos::peng_robinson);
    substance.Ttr = substance.ptr = substance.Tnb = 0;
    const auto poor = starter_fluid(substance, Eos::peng_robinson);
    GraphDocument sheet = sheet_of(Kind::p_T);
    mark_T(sheet, *whole, {}, {});
    const GraphDocument once = sheet;
    mark_T(sheet, *whole, {}, {});
    EXPECT_EQ(sheet, once);
    mark_T(sheet, *poor, {}, {});
    mark_p(sheet, *poor, {});
    for (const int missing : {mark_Ttr, mark_TLV, mark_pSLV}) EXPECT_FALSE(sheet.mark(missing).shown());
    EXPECT_TRUE(sheet.mark(mark_Tcr).shown());
}

TEST(Marks, marks_turn_with_the_axes_and_go_by_their_group) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = sheet_of(Kind::p_T);
    cmdChangeXY(sheet);
    mark_T(sheet, *fluid, {}, {});
    const auto& points = sheet.mark(mark_Tcr).series.points;
    EXPECT_EQ(shown_point(sheet, points[0]).Y, shown_point(sheet, points[1]).Y) << "T is up now";
    EXPECT_EQ(shown_point(sheet, points[1]).X, shown_range(sheet).XMax);
    mark_p(sheet, *fluid, {});
    mark_critical_point(sheet, *fluid, {}, false);
    mark_critical_point(sheet, *fluid, {}, true);
    hide_mark_labels(sheet);
    EXPECT_FALSE(sheet.mark(mark_pcr).series.label.visible);
    delete_marks(sheet);
    EXPECT_FALSE(has_marks(sheet));
    EXPECT_TRUE(has_critical_point(sheet, false));
    delete_critical_point(sheet, false);
    EXPECT_FALSE(has_critical_point(sheet, false));
    EXPECT_TRUE(has_critical_point(sheet, true));
}

TEST(Marks, validity_of_database_functions_takes_the_place_of_p_marks) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = sheet_of(Kind::db_wagner);
    mark_p(sheet, *fluid, {});
    MarkTGrenzen(sheet, *fluid, {}, 145, 369);
    expect_line(sheet, 29, 'x', 145, "");
    expect_line(sheet, 30, 'x', 369, "");
    EXPECT_TRUE(sheet.mark(mark_pSLV).shown());
    sheet.diagram.kind = Kind::sat_p_T;
    MarkTGrenzen(sheet, *fluid, {}, 145, 369);
    EXPECT_FALSE(sheet.mark(29).shown());
}

TEST(Overlays, plans_by_kind) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    CurveInput last;
    last.kind = Kind::p_v;
    last.T = 300;
    last.VaporFraction = 0.4;
    const OverlayPlan dome = plan_overlay(*fluid, last, Overlay::coexistence);
    ASSERT_EQ(dome.curves.size(), 2u);
    EXPECT_EQ(dome.curves[0].kind, Kind::sat_p_v);
    EXPECT_EQ(dome.curves[0].VaporFraction, 0);
    EXPECT_EQ(dome.curves[1].VaporFraction, 1);
    EXPECT_EQ(plan_overlay(*fluid, last, Overlay::isohygric).curves.at(0).VaporFraction, 0.4);
    EXPECT_TRUE(plan_overlay(*fluid, last, Overlay::loop).curves.at(0).SCurve);
    const CurveInput tie = plan_overlay(*fluid, last, Overlay::tie_line).curves.at(0);
    EXPECT_TRUE(tie.TieLine && !tie.SCurve && tie.kind == Kind::p_v);
    for (const auto& [kind, boundary] :
         {std::pair(Kind::p_T, Kind::sat_p_T), std::pair(Kind::g_T, Kind::sat_g_T),
          std::pair(Kind::g_p, Kind::bnd_g_p)}) {
        last.kind = kind;
        const OverlayPlan once = plan_overlay(*fluid, last, Overlay::coexistence);
        ASSERT_EQ(once.curves.size(), 1u);
        EXPECT_EQ(once.curves[0].kind, boundary);
    }
    last.kind = Kind::db_wagner;
    EXPECT_EQ(plan_overlay(*fluid, last, Overlay::inversion).curves.at(0).kind, Kind::inversion_p_T);
    last.kind = Kind::pv_p;
    EXPECT_EQ(plan_overlay(*fluid, last, Overlay::inversion).curves.at(0).kind, Kind::inversion_pv_p);
    last.kind = Kind::sat_rho_T;
    EXPECT_EQ(plan_overlay(*fluid, last, Overlay::bisector).curves.at(0).kind, Kind::bisector);
    last.kind = Kind::sat_lnp_invT;
    for (const Overlay none : {Overlay::coexistence, Overlay::loop, Overlay::tie_line, Overlay::bisector}) {
        const OverlayPlan plan = plan_overlay(*fluid, last, none);
        EXPECT_TRUE(plan.curves.empty() && !plan.refusal);
    }
}

TEST(Overlays, refusals) {
    const auto cubic = starter_fluid(test::propane, Eos::peng_robinson);
    const auto virial = starter_fluid(test::propane, Eos::virial_soave);
    const double Tcr = cubic->substance.Tcr, pcr = cubic->substance.pcr, vcr = cubic->eos.vcrEOS;
    const char* by_T = "only possible in two-phase area V-L (T < T(cr))";
    const char* by_p = "only possible in two-phase area V-L (p < p(cr))";
    const struct {
        const Fluid& fluid;
        Kind kind;
        Overlay overlay;
        double T, p, v;
        const char* text;  // null: drawn
    } cases[] = {
        {*virial, Kind::p_v, Overlay::coexistence, 300, 0, 0, "V-L coex. curve only possible for cubic EOS"},
        {*virial, Kind::p_v, Overlay::isohygric, 300, 0, 0, "Isohygrics - possible only using cubic EOS"},
        {*virial, Kind::p_T, Overlay::inversion, 0, 0, 1, "Inversion curve only possible with cubic EOS"},
        {*virial, Kind::p_v, Overlay::tie_line, 300, 0, 0, "Tie line V-L only possible using a cubic EOS"},
        {*cubic, Kind::p_v, Overlay::loop, Tcr - 0.1, 0, 0, nullptr},
        {*cubic, Kind::p_v, Overlay::loop, Tcr, 0, 0, by_T},
        {*cubic, Kind::p_v, Overlay::loop, Tcr - 0.004, 0, 0, by_T},  // rounded to two digits
        {*cubic, Kind::p_v, Overlay::tie_line, Tcr - 0.004, 0, 0, nullptr},
        {*cubic, Kind::h_p, Overlay::tie_line, Tcr, 0, 0, by_T},
        {*cubic, Kind::T_v, Overlay::loop, 0, pcr, 0, by_p},
        {*cubic, Kind::h_T, Overlay::tie_line, 0, pcr + 1, 0, by_p},
        {*cubic, Kind::h_T, Overlay::tie_line, 0, pcr - 1, 0, nullptr},
        {*cubic, Kind::u_T_isochore, Overlay::tie_line, 0, 0, vcr * (1 + 5e-7),
         "only possible in the two-phase area V-L (v <> v(cr)) "},
        {*cubic, Kind::u_T_isochore, Overlay::tie_line, 0, 0, vcr * 1.01, nullptr},
    };
    for (const auto& c : cases) {
        CurveInput last;
        last.kind = c.kind;
        last.T = c.T;
        last.p = c.p;
        last.v = c.v;
        const OverlayPlan plan = plan_overlay(c.fluid, last, c.overlay);
        EXPECT_EQ(plan.refusal ? plan.refusal->text : "", c.text ? c.text : "") << number_of(c.kind);
        EXPECT_EQ(plan.curves.empty(), c.text != nullptr) << number_of(c.kind);
        EXPECT_EQ(plan.refusal ? plan.refusal->title : "", c.text ? "Execution not possible" : "");
    }
}

}  // namespace
}  // namespace quom
