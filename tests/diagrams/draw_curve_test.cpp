// The draw command with real curves, and measured points on a sheet.
#include "diagrams/draw_curve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "diagrams/graph_view.h"
#include "diagrams/marks.h"
#include "diagrams/measured_points.h"
#include "engine/saturation.h"
#include "sample_sheet.h"
#include "support/starter.h"

namespace quom {
namespace {

using test::p_v_sheet;
using test::starter_fluid;
using ::testing::HasSubstr;
using ::testing::StartsWith;

CurveInput isotherm(double T) {
    CurveInput input;
    input.kind = Kind::p_v;
    input.T = T;
    return input;
}

// Steps of equal size would draw no liquid, and a critical isotherm of straight pieces.
TEST(DrawCurve, a_logarithmic_axis_has_points_in_each_of_its_decades) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const double Tcr = fluid->substance.Tcr;
    GraphDocument sheet = p_v_sheet();
    sheet.diagram.range = {.XMin = 0.05F, .YMin = 1, .XMax = 200, .YMax = 20000};
    set_log_x(sheet, true);
    for (const double T : {200.0, Tcr, 500.0}) {
        cmdDraw(sheet, *fluid, isotherm(T));
        const Series& curve = sheet.curve(CurveCount(sheet)).series;
        ASSERT_GT(curve.points.size(), 300u) << T;
        const Saturation sat = pLV_EOS(*fluid, T);
        float before = 0;
        for (const SheetPoint& point : curve.points) {
            const bool tie = T < Tcr && before > 0 && static_cast<double>(before) < 1.001 * sat.vL;
            EXPECT_TRUE(before == 0 || tie || point.X < 1.03F * before)
                << T << ' ' << before << ' ' << point.X;
            EXPECT_GE(point.X, before);
            before = point.X;
        }
        const double first = static_cast<double>(curve.points[0].X);
        EXPECT_TRUE(T >= Tcr || first < 0.999 * sat.vL) << "liquid " << first;
    }
    // Functions over log p reach down to where the axis begins.
    CurveInput h_p = isotherm(400);
    h_p.kind = Kind::h_p;
    h_p.range = {.XMin = 0, .YMin = -30000, .XMax = 5000, .YMax = 30000};
    h_p.LogX = true;
    const CurveResult drawn = CalcCurve(*fluid, h_p);
    EXPECT_NEAR(static_cast<double>(drawn.curve.points.front().X), 5.0, 0.1);
}

TEST(DrawCurve, a_family_of_isotherms_with_its_dome) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet();
    for (const double T : {300.0, 350.0, 400.0}) {
        const DrawnCurve drawn = cmdDraw(sheet, *fluid, isotherm(T));
        EXPECT_TRUE(drawn.messages.empty());
        EXPECT_EQ(sheet.last.T, T);
    }
    EXPECT_EQ(sheet.curve(3).series.label.text, "C.3 400.00 K");
    EXPECT_THAT(sheet.curve(3).series.legend, StartsWith("C.3 400.00 K, Propane, "));
    // Peng and Robinson (1976) at each point of the 400 K isotherm.
    const double Tcr = fluid->substance.Tcr, pcr = fluid->substance.pcr, R = 8.31451;
    const double omega = fluid->substance.omega, kappa = 0.37464 + 1.54226 * omega - 0.26992 * omega * omega;
    const double root = 1 + kappa * (1 - std::sqrt(400 / Tcr)), b = 0.07780 * R * Tcr / pcr;
    const double a = 0.45724 * R * R * Tcr * Tcr / pcr * root * root;
    ASSERT_GT(sheet.curve(3).series.points.size(), 100u);
    for (const SheetPoint& point : sheet.curve(3).series.points) {
        const double v = static_cast<double>(point.X);
        const double p = R * 400 / (v - b) - a / (v * (v + b) + b * (v - b));
        EXPECT_NEAR(static_cast<double>(point.Y), p, 2e-3 * p + 1) << v;
    }
    const OverlayPlan dome = plan_overlay(*fluid, isotherm(300), Overlay::coexistence);
    for (const CurveInput& branch : dome.curves) cmdDraw(sheet, *fluid, branch);
    EXPECT_EQ(CurveCount(sheet), 5);
    EXPECT_THAT(sheet.curve(4).series.label.text, StartsWith("C.4 (L) p-V projection"));
    EXPECT_THAT(sheet.curve(5).series.label.text, StartsWith("C.5 (V) p-V projection"));
    EXPECT_EQ(sheet.curve(4).series.style.width, 3);
    // T is shown at its points.
    EXPECT_THAT(point_text(sheet, {false, 5, 20}), HasSubstr(" T/K = "));
}

TEST(DrawCurve, interchanged_axes_and_a_zoom_change_the_view_alone) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet(), turned = p_v_sheet();
    cmdChangeXY(turned);
    cmdDraw(sheet, *fluid, isotherm(350));
    cmdDraw(turned, *fluid, isotherm(350));
    EXPECT_EQ(turned.curve(1), sheet.curve(1));
    cmdChangeXY(turned);
    EXPECT_EQ(turned, sheet);
    // Within a zoom the steps are finer.
    zoom(sheet, {.XMin = 0.4F, .YMin = 0, .XMax = 0.6F, .YMax = 6000});
    cmdDraw(sheet, *fluid, isotherm(350));
    const auto points_between = [&](int slot) {
        int count = 0;
        for (const SheetPoint& point : sheet.curve(slot).series.points)
            count += point.X > 0.4F && point.X < 0.6F;
        return count;
    };
    EXPECT_GT(points_between(2), 5 * points_between(1));
}

TEST(DrawCurve, what_is_dropped_leaves_the_sheet_as_it_was) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet();
    for (int slot = 1; slot <= 24; ++slot) cmdDraw(sheet, *fluid, isotherm(350));
    const GraphDocument full = sheet;
    const DrawnCurve refused = cmdDraw(sheet, *fluid, isotherm(300));
    EXPECT_EQ(refused.slot, 0);
    ASSERT_EQ(refused.messages.size(), 1u);
    EXPECT_THAT(refused.messages[0].text, StartsWith("Maximum 24 curves possible"));
    EXPECT_EQ(sheet, full);
    // The tie line of an isotherm above T(cr) has no points.
    sheet = p_v_sheet();
    CurveInput tie = isotherm(400);
    tie.TieLine = true;
    const DrawnCurve none = cmdDraw(sheet, *fluid, tie);
    EXPECT_EQ(none.slot, 0);
    EXPECT_FALSE(none.messages.empty());
    EXPECT_EQ(sheet, p_v_sheet());
}

TEST(DrawCurve, a_database_function_brings_the_marks_of_its_validity) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    GraphDocument sheet = p_v_sheet();
    sheet.diagram.kind = Kind::db_wagner;
    sheet.diagram.range = {.XMin = 100, .YMin = 0, .XMax = 400, .YMax = 5000};
    CurveInput input;
    input.kind = Kind::db_wagner;
    const DrawnCurve drawn = cmdDraw(sheet, *fluid, input);
    EXPECT_EQ(drawn.slot, 1);
    ASSERT_TRUE(sheet.mark(mark_validity_low).shown() && sheet.mark(mark_validity_high).shown());
    EXPECT_EQ(sheet.mark(mark_validity_low).series.points[0].X, fluid->substance.WagnerTLo);
    EXPECT_EQ(sheet.mark(mark_validity_high).series.points[0].X, fluid->substance.WagnerTHi);
    EXPECT_THAT(sheet.curve(1).series.label.text, HasSubstr("Vapor pressure equation"));
}

TEST(MeasuredPoints, only_those_of_the_section_and_the_range) {
    const auto fluid = starter_fluid(test::propane, Eos::peng_robinson);
    const double M = fluid->M;
    const MeasuredPoint measured[] = {
        {.T = 300, .p = 500, .rhoV = 10},                 // v = M/10
        {.T = 300.01, .p = 500, .rhoV = 10},              // another isotherm
        {.T = 300, .p = 997, .rhoV = 21.6, .rhoL = 490},  // saturated: two points
        {.T = 300, .p = 7000, .rhoL = 510},               // above the range
        {.T = 300, .p = 800},                             // no density
    };
    GraphDocument sheet = p_v_sheet();
    sheet.diagram.range.XMax = 5;
    sheet.last.T = 300;
    const std::vector<SheetPoint> points = points_in_diagram(sheet, *fluid, {}, measured);
    ASSERT_EQ(points.size(), 3u);
    EXPECT_FLOAT_EQ(points[0].X, static_cast<float>(M / 10));
    EXPECT_FLOAT_EQ(points[1].X, static_cast<float>(M / 490));
    EXPECT_FLOAT_EQ(points[2].Y, 997);
    Units mass;
    mass.VolumeMode = volume_per_mass;
    EXPECT_FLOAT_EQ(points_in_diagram(sheet, *fluid, mass, measured).at(0).X, 0.1F);
    sheet.diagram.kind = Kind::sat_lnp_invT;
    sheet.diagram.range = {.XMin = 0, .YMin = 0, .XMax = 1, .YMax = 20};
    const std::vector<SheetPoint> logs = points_in_diagram(sheet, *fluid, {}, measured);
    ASSERT_EQ(logs.size(), 5u);
    EXPECT_FLOAT_EQ(logs[0].X, 1.0F / 300);
    EXPECT_FLOAT_EQ(logs[0].Y, std::log(500.0F));
    sheet.diagram.kind = Kind::p_v;
    sheet.last.T = 299;
    const GraphDocument before = sheet;
    const Added none = mnuAddPunkte(sheet, *fluid, {}, measured);
    ASSERT_TRUE(none.message);
    EXPECT_THAT(none.message->text,
                StartsWith("No exper. points in this range of diagram / for this parameter;\n"));
    EXPECT_EQ(sheet, before);
    sheet.last.T = 300;
    sheet.diagram.range = {.XMin = 0, .YMin = 0, .XMax = 5, .YMax = 6000};
    for (int set = 1; set <= 12; ++set) EXPECT_EQ(mnuAddPunkte(sheet, *fluid, {}, measured).slot, set);
    EXPECT_EQ(mnuAddPunkte(sheet, *fluid, {}, measured).message->text,
              "Maximum 12 sets of experimental points possible\nDelete the experimental points if existing");
}

}  // namespace
}  // namespace quom
