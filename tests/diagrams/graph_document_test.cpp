// What the user does to a sheet: curves and points in slots, labels, single points, zoom, interchanged axes.
#include "diagrams/graph_document.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tuple>

#include "diagrams/curve_labels.h"
#include "diagrams/graph_view.h"
#include "sample_sheet.h"
#include "support/starter.h"

namespace quom {
namespace {

using test::hyperbola;
using test::p_v_sheet;
using ::testing::HasSubstr;

TEST(GraphDocument, the_25th_curve_is_refused_and_a_freed_slot_is_taken_first) {
    GraphDocument sheet = p_v_sheet();
    for (int slot = 1; slot <= 24; ++slot) {
        const Added added = AddCurve(sheet, hyperbola(10, 1), {"300.00 K", "legend"});
        EXPECT_EQ(added.slot, slot);
        EXPECT_FALSE(added.message);
        EXPECT_EQ(CurveCount(sheet), slot);
    }
    EXPECT_EQ(sheet.curve(7).series.label.text, "C.7 300.00 K");
    const GraphDocument full = sheet;
    const Added refused = AddCurve(sheet, hyperbola(10, 1), {"a", "b"});
    EXPECT_EQ(refused.slot, 0);
    ASSERT_TRUE(refused.message);
    EXPECT_EQ(refused.message->title, "WARNING");
    EXPECT_EQ(refused.message->text, "Maximum 24 curves possible\n\nDelete existing curves");
    EXPECT_EQ(sheet, full);
    for (const int freed : {17, 3}) delete_curve(sheet, freed);
    EXPECT_EQ(CurveCount(sheet), 22);
    EXPECT_EQ(sheet.curve(4), full.curve(4)) << "the others keep their numbers";
    for (const int slot : {3, 17}) {
        EXPECT_EQ(AddCurve(sheet, hyperbola(10, 1), {"300.00 K", "legend"}).slot, slot);
        EXPECT_EQ(sheet.curve(slot), full.curve(slot));
    }
    EXPECT_EQ(AddCurve(sheet, {}, {"", ""}).slot, 0);
}

TEST(GraphDocument, the_13th_set_of_points_is_refused) {
    GraphDocument sheet = p_v_sheet();
    const SheetPoint points[] = {{1, 100}, {NAN, 5}, {1.5F, 90}};
    for (int set = 1; set <= 12; ++set)
        EXPECT_EQ(cmdExternPoints(sheet, points, PointSource::insertion).slot, set);
    EXPECT_EQ(sheet.set(2).series.legend, "P.2   \"Insertion\", Editor for exp. data  ");
    EXPECT_EQ(sheet.set(2).series.points.size(), 2u);
    const Added refused = cmdExternPoints(sheet, points, PointSource::fitting);
    ASSERT_TRUE(refused.message);
    EXPECT_EQ(refused.message->text,
              "A maximum of 12 sets of points may be loaded.\n"
              "If necessary, delete the existing measuring points.");
    delete_points(sheet, 5);
    EXPECT_EQ(cmdExternPoints(sheet, points, PointSource::xy_editor).slot, 5);
    EXPECT_EQ(PointCount(sheet), 12);
    EXPECT_EQ(CurveCount(sheet), 0);
}

TEST(GraphDocument, hidden_values_end_at_point_1200) {
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet, hyperbola(1500, 1), {"", ""});
    EXPECT_EQ(sheet.curve(1).series.points.size(), 1500u);
    EXPECT_EQ(sheet.curve(1).CurveHidden.size(), 1200u);
    EXPECT_THAT(point_text(sheet, {false, 1, 1200}), HasSubstr(" T/K = 1499.00"));
    EXPECT_THAT(point_text(sheet, {false, 1, 1201}), ::testing::Not(HasSubstr("T/K")));
    // Points and hidden values stay together when one is deleted.
    delete_point(sheet, {false, 1, 5});
    EXPECT_THAT(point_text(sheet, {false, 1, 5}), HasSubstr(" T/K = 305.00"));
    EXPECT_THAT(point_text(sheet, {false, 1, 1199}), HasSubstr(" T/K = 1499.00"));
    EXPECT_THAT(point_text(sheet, {false, 1, 1200}), ::testing::Not(HasSubstr("T/K")));
}

// The label of slot s at point i/1.2 - 0.03 i s, i the last point below the limit.
TEST(GraphDocument, labels_stagger_along_the_curves) {
    GraphDocument sheet = p_v_sheet();
    // 800 of 1000 points lie below XMax = 2: x runs to 2.5 in steps of 0.00249.
    const CurvePoints curve = hyperbola(1000, 2.5F);
    const int expected[] = {643, 619, 595, 571};  // 0.8033, 0.7733, 0.7433, 0.7133 of 800, by hand
    for (int slot = 1; slot <= 24; ++slot) AddCurve(sheet, curve, {"", ""});
    for (int slot = 1; slot <= 4; ++slot) EXPECT_EQ(sheet.curve(slot).series.label.point, expected[slot - 1]);
    EXPECT_EQ(sheet.curve(24).series.label.point, 91);  // 0.11333 of 800
    sheet.diagram.range.XMax = 0.001F;                  // no point below the limit
    delete_curve(sheet, 1);
    AddCurve(sheet, curve, {"", ""});
    EXPECT_EQ(sheet.curve(1).series.label.point, 1);
}

TEST(GraphDocument, a_picked_colour_serves_one_action) {
    GraphDocument sheet = p_v_sheet();
    sheet.NextColor = rgb(0x123456);
    for (int i = 0; i < 3; ++i) AddCurve(sheet, hyperbola(5, 1), {"", ""});
    EXPECT_EQ(color_text(sheet.curve(1).series.style.color), "#123456");
    EXPECT_EQ(color_text(sheet.curve(2).series.style.color), "#E16900");
    EXPECT_EQ(color_text(sheet.curve(3).series.style.symbol_color), "#A55A87");
    EXPECT_EQ(new_curve_style(16, {}).line, LinePattern::dashed);
    EXPECT_EQ(new_curve_style(17, {}).line, LinePattern::dotted);
    for (const char* text : {"#12345", "#12345G", "123456#", "#1234567"})
        EXPECT_FALSE(color_of(text)) << text;
    EXPECT_EQ(color_of("#a0B1c2"), rgb(0xA0B1C2));
}

TEST(GraphDocument, curves_of_other_windows_tell_when_they_are_not_in_sight) {
    GraphDocument sheet = p_v_sheet();
    const Added seen = cmdExternKurve(sheet, hyperbola(10, 1), CurveSource::fitting);
    EXPECT_FALSE(seen.message);
    EXPECT_EQ(sheet.curve(1).series.label.text, "C.1   from Fitting");
    CurvePoints far = hyperbola(10, 1);
    for (CurvePoint& point : far.points) point.Y += 1e5F;
    const Added added = cmdExternKurve(sheet, far, CurveSource::data_editor);
    EXPECT_EQ(added.slot, 2);
    ASSERT_TRUE(added.message);
    EXPECT_EQ(added.message->title, "Note");
    EXPECT_EQ(sheet.curve(2).series.legend, "C.2   from editor for exp. Daten ");
}

TEST(GraphDocument, deleting) {
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet, hyperbola(5, 1), {"a", "b"});
    const SheetPoint points[] = {{1, 100}};
    cmdExternPoints(sheet, points, PointSource::xy_editor);
    sheet.curve(1).series.points.edit()[1] = {0.25F, 1600};
    sheet.curve(1).series.label.point = 3;
    EXPECT_EQ(delete_point_question(sheet, {false, 1, 2}).text,
              "Delete point #2 from the curve #1\n with the coordinates x = 0.25,  y = 1600\nreally?");
    EXPECT_THAT(delete_point_question(sheet, {true, 1, 1}).text,
                HasSubstr("This set of meas. points contains 1 single point. "));
    delete_point(sheet, {false, 1, 2});
    EXPECT_EQ(sheet.curve(1).series.label.point, 2) << "the label stays at its point";
    for (const int no_point : {0, 5, -7}) delete_point(sheet, {false, 1, no_point});
    EXPECT_EQ(sheet.curve(1).series.points.size(), 4u);
    delete_point(sheet, {false, 1, 3});
    EXPECT_EQ(sheet.curve(1).series.label.point, 2) << "a point behind it does not move it";
    delete_point(sheet, {true, 1, 1});
    EXPECT_EQ(PointCount(sheet), 0) << "the last point frees the slot";
    ASSERT_FALSE(show_legend(sheet));
    delete_all(sheet);
    EXPECT_TRUE(is_empty(sheet));
    ASSERT_TRUE(show_legend(sheet));
    EXPECT_EQ(show_legend(sheet)->text, "No legend text given\n=> design curve\n=> design points");
    EXPECT_FALSE(sheet.legend.visible);
    EXPECT_EQ(sheet.diagram, p_v_sheet().diagram);
}

TEST(GraphDocument, zoom_reset_and_interchange_restore_exactly) {
    GraphDocument sheet = p_v_sheet();
    AddCurve(sheet, hyperbola(100, 1.7F), {"300.00 K", "b"});
    set_log_y(sheet, true);
    const GraphDocument before = sheet;
    cmdChangeXY(sheet);
    EXPECT_EQ(shown_x_title(sheet), "p / kPa");
    EXPECT_EQ(shown_range(sheet).XMax, 6000);
    EXPECT_TRUE(shown_x(sheet).log);
    EXPECT_FALSE(shown_y(sheet).log);
    EXPECT_EQ(shown_point(sheet, {1, 2}), (SheetPoint{2, 1}));
    // A zoom of what is seen: p from 1000 to 2000, v from 0.3 to 0.9.
    EXPECT_TRUE(zoom(sheet, {.XMin = 1000, .YMin = 0.3F, .XMax = 2000, .YMax = 0.9F}));
    EXPECT_EQ(sheet.diagram.range, (CurveRange{.XMin = 0.3F, .YMin = 1000, .XMax = 0.9F, .YMax = 2000}));
    EXPECT_EQ(sheet.diagram.initial, before.diagram.initial);
    cmdChangeXY(sheet);
    EXPECT_FALSE(zoom(sheet, {.XMin = 1, .YMin = 0, .XMax = 1, .YMax = 1}));
    EXPECT_FALSE(zoom(sheet, {.XMin = 0, .YMin = 0, .XMax = INFINITY, .YMax = 1}));
    EXPECT_EQ(shown_range(sheet).XMax, 0.9F);
    zoom_reset(sheet);
    EXPECT_EQ(sheet, before);
}

TEST(GraphDocument, limits_are_refused_in_the_words_of_their_place) {
    GraphDocument sheet = p_v_sheet();
    const std::tuple<LimitsIn, const char*> places[] = {
        {LimitsIn::coordinates, "lower limit has to smaller than upper limit"},
        {LimitsIn::coordinates_second, "Lower limit has to smaller than upper limit."},
        {LimitsIn::design_tab, "Lower limit has to be smaller than upper limit."},
        {LimitsIn::design_short, "lower limit must be smaller than upper limit!"}};
    for (const auto& [where, text] : places) {
        const auto refused = set_coordinates(sheet, {.XMin = 0, .YMin = 9, .XMax = 1, .YMax = 8}, where);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->text, text);
        EXPECT_EQ(refused->title, "INPUT ERROR");
    }
    EXPECT_EQ(sheet, p_v_sheet());
}

TEST(GraphDocument, the_mouse_reads_numbers_by_their_magnitude) {
    const std::tuple<double, const char*> cases[] = {
        {0.05, "0.05"},          {9.999994, "9.99999"},   {10.12346, "10.1235"},        {999.5, "999.50"},
        {4247.66, "4247.66"},    {123456.7, "123456.70"}, {1234567, "1234567.00"},      {0, "0.00"},
        {-0.123456, "-0.12346"}, {3.2e-7, "3.2E-07"},     {-1234567.891, "-1234567.89"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(mouse_number(value), text) << value;
    GraphDocument sheet = p_v_sheet();
    Units units;
    MouseTexts texts = mouse_texts(sheet, units, 0.05, 4247.66);
    EXPECT_EQ(texts.x, "v = 0.05 m^3/kmol");
    EXPECT_EQ(texts.y, "p = 4247.66 kPa");
    cmdChangeXY(sheet);
    units.VolumeMode = reduced_volume;
    texts = mouse_texts(sheet, units, 0.9, 3.5);
    EXPECT_EQ(texts.x, "p(red) = 0.90");
    EXPECT_EQ(texts.y, "v(red) = 3.50");
    sheet.diagram.kind = Kind::none;
    EXPECT_EQ(mouse_texts(sheet, units, 0.5, 1).x, "x = 0.50");
    sheet.diagram.kind = Kind::h_T;
    EXPECT_EQ(mouse_texts(sheet, units, -5, 1).x, "h = -5.00 kJ/kmol");
    EXPECT_EQ(mouse_texts(sheet, units, -5, 1).y, " T(red) = 1.00");
}

TEST(GraphDocument, the_point_next_to_the_mouse) {
    GraphDocument sheet = p_v_sheet();
    CurvePoints curve{
        {{0.5F, 3000, 300, 0.25F}, {1, 1500, 310, 0.5F}, {5, 1500, 320, 1}}, par_T, par_fraction};
    AddCurve(sheet, curve, {"", ""});
    const SheetPoint measured[] = {{1, 1500}, {1.5F, 600}};
    cmdExternPoints(sheet, measured, PointSource::xy_editor);
    const SheetArea area{.width = 800, .height = 600};
    // Linear: v 0.5 is at 200, p 3000 at 300 pixels from the top.
    EXPECT_EQ(nearest_point(sheet, area, {203, 296}), (PointRef{false, 1, 1}));
    EXPECT_FALSE(nearest_point(sheet, area, {207, 300}));
    EXPECT_EQ(nearest_point(sheet, area, {400, 450}), (PointRef{false, 1, 2})) << "the curve before the set";
    EXPECT_EQ(nearest_point(sheet, area, {600, 540}), (PointRef{true, 1, 2}));
    EXPECT_FALSE(nearest_point(sheet, area, {2000, 450}, 10)) << "not in sight";
    EXPECT_EQ(point_text(sheet, {false, 1, 1}), "C.1 X= 0.50 Y= 3000.00 T/K = 300.00 eta(V) = 0.25");
    EXPECT_EQ(point_text(sheet, {true, 1, 2}), "P.1 X = 1.50 Y = 600.00");
    cmdChangeXY(sheet);
    EXPECT_EQ(nearest_point(sheet, area, {400, 450}), (PointRef{false, 1, 1}))
        << "p 3000 half way, v 0.5 a quarter up";
    EXPECT_EQ(point_text(sheet, {true, 1, 2}), "P.1 X = 600.00 Y = 1.50");
    // Logarithmic p from 60 to 6000: 600 lies half way. From 0 the axis begins three decades
    // below its end: 600 lies at two thirds.
    sheet.diagram.range.YMin = 60;
    set_log_y(sheet, true);
    EXPECT_EQ(nearest_point(sheet, area, {400, 150}), (PointRef{true, 1, 2}));
    sheet.diagram.range.YMin = 0;
    EXPECT_EQ(nearest_point(sheet, area, {533, 150}), (PointRef{true, 1, 2}));
    EXPECT_FALSE(nearest_point(sheet, area, {400, 150}, 60));
}

TEST(GraphDocument, presets_and_edited_texts) {
    EXPECT_EQ(color_text(p_v_sheet().colors.sheet), "#FBFBFB");
    EXPECT_TRUE(full_black().black);
    EXPECT_FALSE(full_white().black);
    for (const Color ground : {full_black().sheet, full_black().area, full_black().legend, full_white().text,
                               full_white().axes, full_white().labels})
        EXPECT_EQ(ground, rgb(0));
    for (const Color ink : {full_black().text, full_black().axes, full_black().grid, full_black().labels,
                            full_white().sheet, full_white().area, full_white().legend})
        EXPECT_EQ(ink, rgb(0xFFFFFF));
    EXPECT_EQ(text_with_end("Propane\n2"), "Propane\n2{END}");
    EXPECT_EQ(text_without_end("Propane{END}\r\n"), "Propane");
    EXPECT_EQ(text_without_end("Propane"), "Propane");
    EXPECT_EQ(line_pattern_entries()[4], "Curve dash-dotted");
    EXPECT_EQ(symbol_entries()[12], "hide the point(s)");
}

TEST(CurveLabels, sections_by_their_parameter_and_projections_by_their_model) {
    const auto global = test::starter_fluid(test::propane, Eos::peng_robinson);
    ModelSelection partial_models = global->models;
    partial_models.Konzept = false;
    partial_models.EVPKode = Evp::august;
    const auto partial = with_models(*global, partial_models);
    CurveInput input;
    input.kind = Kind::p_v;
    input.T = 300;
    EXPECT_EQ(curve_text(*global, input, {}).label, "300.00 K");
    input.units.VolumeMode = reduced_volume;
    EXPECT_EQ(curve_text(*global, input, {}).label, "T(red) = 0.8111");  // 300/369.89 = 0.81105
    input.units.VolumeMode = volume_molar;
    input.kind = Kind::h_T;
    input.p = 101.325;
    CurveResult noted;
    noted.Msg = "note";
    EXPECT_THAT(curve_text(*global, input, noted).legend, ::testing::StartsWith("note, 101.325 kPa, "));
    input.kind = Kind::sat_p_v;
    EXPECT_EQ(curve_text(*global, input, {}).label,
              "(L) p-V projection (coexistence curve V - L); Peng / Robinson");
    input.VaporFraction = 1;
    EXPECT_THAT(curve_text(*global, input, {}).label, ::testing::StartsWith("(V) "));
    input.VaporFraction = 0.25;
    EXPECT_THAT(curve_text(*global, input, {}).label, HasSubstr("Peng / Robinson, eta(V) = 0.25"));
    input.kind = Kind::sat_g_T;
    EXPECT_THAT(curve_text(*global, input, {}).label, ::testing::StartsWith("(V-L) "));
    input.kind = Kind::sat_p_T;
    EXPECT_THAT(curve_text(*global, input, {}).legend,
                ::testing::StartsWith("p(LV) calculated from Peng / Robinson (according to setting "
                                      "\"Models\"). GOBAL concept, "));
    const std::string august = curve_text(*partial, input, {}).legend;
    EXPECT_THAT(august, ::testing::StartsWith("p(LV)according to EVP setting (=> \"Models\")"));
    EXPECT_THAT(august, HasSubstr(", PARTIAL concept; AUGUST-Par: A = "));
}

}  // namespace
}  // namespace quom
