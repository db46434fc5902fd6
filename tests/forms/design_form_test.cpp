// The design of a sheet: every control sets what it shows, in the sheet and in its file; refusals; places.
#include "forms/design_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagrams/diagram_file.h"
#include "diagrams/graph_view.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using P = DesignPage;

GraphDocument sample() {
    DiagramRec rec;
    rec.XTitle = "v / m3/kmol";
    rec.YTitle = "p / kPa";
    rec.range = rec.initial = {.XMin = 0.5F, .YMin = 0, .XMax = 2, .YMax = 6000};
    GraphDocument sheet = new_sheet(rec);
    CurvePoints curve;
    curve.points = {{0.6F, 5000, 0, 0}, {1.5F, 2000, 0, 0}};
    AddCurve(sheet, curve, {"300 K", "isotherm 300 K"});
    AddCurve(sheet, curve, {"400 K", "isotherm 400 K"});
    const SheetPoint points[] = {{1, 3000}, {1.2F, 2500}};
    cmdExternPoints(sheet, points, PointSource::data_editor);
    insert_text(sheet, "measured");
    return sheet;
}

const DesignControl& control(DesignPage page, std::string_view name) {
    static std::vector<std::vector<DesignControl>> pages = [] {
        std::vector<std::vector<DesignControl>> all;
        for (const DesignPageInfo& info : design_pages()) all.push_back(design_controls(info.page));
        return all;
    }();
    for (const DesignControl& one : pages[static_cast<std::size_t>(page)])
        if (one.name == name) return one;
    ADD_FAILURE() << name;
    return pages[0][0];
}
DesignAnswer set(GraphDocument& sheet, DesignPage page, std::string_view name, const DesignValue& value,
                 const DesignTarget& at = {}) {
    DesignTarget target = at;
    target.axis = page;
    const DesignControl& one = control(page, name);
    EXPECT_TRUE(one.enabled(sheet, target)) << name;
    return one.set(sheet, target, value);
}

// A value other than the one shown.
DesignValue another(DesignPage page, const DesignControl& control, const DesignValue& shown) {
    switch (control.type) {
        case ControlType::flag:
            return !std::get<bool>(shown);
        case ControlType::choice:
        case ControlType::options:
            return (std::get<int>(shown) + 1) % static_cast<int>(control.entries().size());
        case ControlType::color:
            return rgb(0x123456);
        case ControlType::text:
            return text_with_end("two\nlines");
        case ControlType::number:
            if (page == P::x_axis) return control.name == "txtScaling" ? "0.25" : "1.25";
            return page == P::y_axis ? "500" : "12";
        case ControlType::font:
            return Font{.family = "Serif", .size = 14, .bold = true, .italic = true};
        default:
            return std::string("other");
    }
}

TEST(DesignForm, every_control_shows_what_it_sets_and_the_file_keeps_it) {
    int tried = 0;
    for (const DesignPageInfo& info : design_pages())
        for (const DesignControl& one : design_controls(info.page)) {
            if (one.type == ControlType::action) continue;
            for (const TextRef& text : {TextRef{DesignText::header},
                                        {DesignText::text, 0},
                                        {DesignText::y_title},
                                        {DesignText::curve_label, 2},
                                        {DesignText::points_label, 1}}) {
                GraphDocument sheet = sample();
                sheet.diagram.range.YMin = 10;
                sheet.legend.place = LegendPlace::free;
                const DesignTarget target{.number = 1, .axis = info.page, .text = text};
                if (!one.enabled(sheet, target)) continue;
                SCOPED_TRACE(one.name + " of " + std::string(info.caption));
                const GraphDocument before = sheet;
                const DesignValue value = another(info.page, one, one.shown(sheet, target));
                const DesignAnswer answer = one.set(sheet, target, value);
                EXPECT_TRUE(answer.fault.empty() && !answer.message) << answer.fault;
                EXPECT_FALSE(sheet == before);
                EXPECT_TRUE(one.shown(sheet, target) == value);
                const Oc2Read read = read_oc2(oc2_bytes(sheet), "sheet.oc2", GraphDocument());
                ASSERT_TRUE(read.sheet) << read.fault;
                EXPECT_TRUE(one.shown(*read.sheet, target) == value);
                ++tried;
                if (info.page != P::texts) break;
            }
        }
    EXPECT_GT(tried, 60);
}

// What each control sets is looked for where the drawing reads it.
TEST(DesignForm, sets_the_right_attribute_of_the_right_axis_and_series) {
    GraphDocument sheet = sample();
    const DesignTarget second{.number = 2}, first{.number = 1};
    set(sheet, P::curves, "cmdKurvenFarbe", rgb(0xC30096), second);
    set(sheet, P::curves, "cmbKStil", 4, second);
    set(sheet, P::curves, "cmbKBreite", 5, second);
    set(sheet, P::curves, "chkLegend1", false, second);
    EXPECT_EQ(sheet.curve(2).series.style.color, rgb(0xC30096));
    EXPECT_EQ(sheet.curve(2).series.style.symbol_color, rgb(0xC30096));
    EXPECT_EQ(sheet.curve(2).series.style.line, LinePattern::dash_dotted);
    EXPECT_EQ(sheet.curve(2).series.style.width, 6);
    EXPECT_FALSE(sheet.curve(2).series.in_legend);
    EXPECT_EQ(sheet.curve(1), sample().curve(1));
    set(sheet, P::points, "cmbPunktStil", 12, first);
    set(sheet, P::points, "cmbPunktGroesse", 13, first);
    EXPECT_EQ(sheet.set(1).series.style.symbol, Symbol::hidden);
    EXPECT_EQ(sheet.set(1).series.style.symbol_size, 14);

    set(sheet, P::x_axis, "cmdXLog", true);
    EXPECT_TRUE(sheet.x.log && !sheet.y.log && !sheet.y2.log);
    sheet.diagram.range.YMin = 1;
    set(sheet, P::y_axis, "cmdYLog", true);
    EXPECT_TRUE(sheet.y.log && sheet.y2.log);
    set(sheet, P::x_axis, "opt1Gitter", 0);
    set(sheet, P::y_axis, "optYZiffern", 3);
    set(sheet, P::y_axis, "optOrientYAxText", 0);
    set(sheet, P::x_axis, "optOrientXAxZiff", 1);
    set(sheet, P::x_axis, "txtXOrigin", "1.5");
    EXPECT_TRUE(!sheet.x.grid && sheet.y.grid);
    EXPECT_TRUE(sheet.y.digits == 3 && sheet.x.digits == 0);
    EXPECT_EQ(sheet.y.title_turn, TextTurn::horizontal);
    EXPECT_EQ(sheet.x.number_turn, TextTurn::upwards);
    EXPECT_EQ(sheet.x.origin, 1.5);
    EXPECT_FALSE(sheet.y.origin);
    EXPECT_FALSE(control(P::x_axis, "optScaling").enabled(sheet, {.axis = P::x_axis})) << "logarithmic";
    set(sheet, P::x_axis, "cmdXLog", false);
    set(sheet, P::x_axis, "optScaling", 1);
    EXPECT_EQ(sheet.x.step, 0.2) << "the step that is shown: 1.5 in at most nine";
    set(sheet, P::x_axis, "txtScaling", "");
    EXPECT_FALSE(sheet.x.step);
}

TEST(DesignForm, presets_and_colors) {
    GraphDocument sheet = sample();
    set(sheet, P::sheet, "cmdFullBlack", true);
    EXPECT_TRUE(sheet.colors.black && print_question(sheet));
    for (const Color ground : {sheet.colors.sheet, sheet.colors.area, sheet.colors.legend})
        EXPECT_EQ(ground, rgb(0));
    for (const Color ink : {sheet.colors.axes, sheet.colors.grid, sheet.colors.labels, sheet.colors.text})
        EXPECT_EQ(ink, rgb(0xFFFFFF));
    set(sheet, P::sheet, "cmdFullWhite", true);
    EXPECT_TRUE(sheet.colors.sheet == rgb(0xFFFFFF) && sheet.colors.text == rgb(0) && !print_question(sheet));
    set(sheet, P::sheet, "cmdBlattFarbe", rgb(0));
    EXPECT_TRUE(print_question(sheet));
    set(sheet, P::sheet, "cmdStandardFarben", true);
    EXPECT_EQ(sheet.colors.sheet, rgb(0xFBFBFB));
    // The colour of a text of its own outlives a preset, until it has that of all again.
    set(sheet, P::texts, "cmdTextFarbe", rgb(0xD2002D));
    EXPECT_EQ(sheet.header.color, rgb(0xD2002D));
    set(sheet, P::texts, "cmdTextFarbeAlle", true);
    EXPECT_FALSE(sheet.header.color);
}

TEST(DesignForm, refuses_limits_in_the_words_of_the_place) {
    struct Row {
        CoordinateTexts texts;
        LimitsIn where;
        const char* refusal;  // empty: taken
        int box = -1;
    };
    const Row rows[] = {
        {{"2", "0.5", "0", "6000"}, LimitsIn::design_tab, "Lower limit has to be smaller than upper limit."},
        {{"1", "1", "0", "6000"}, LimitsIn::design_short, "lower limit must be smaller than upper limit!"},
        {{"0.5", "2", "6000", "0"}, LimitsIn::design_short, "lower limit must be smaller than upper limit!"},
        {{"0.5", "2", "-9", "-1"},
         LimitsIn::design_tab,
         "The upper limit of a logarithmic axis has to be above 0."},
        {{"0.5", "-", "0", "6000"}, LimitsIn::design_tab, "- is no number.", 1},
        {{"0.5", "2", "", "6000"}, LimitsIn::design_tab, "Y minimum is missing.", 2},
        {{"0.25", "2", "0", "6000"}, LimitsIn::design_tab, ""},
    };
    for (const Row& row : rows) {
        GraphDocument sheet = sample();
        set_log_y(sheet, true);
        const GraphDocument before = sheet;
        const CoordinatesRefused refused = take_design_limits(sheet, row.texts, row.where);
        SCOPED_TRACE(row.refusal);
        EXPECT_EQ(refused.any(), *row.refusal != '\0');
        EXPECT_EQ(sheet == before, refused.any());
        if (refused.box) {
            EXPECT_EQ(refused.box->rule, row.refusal);
            EXPECT_EQ(static_cast<int>(refused.box->box), row.box);
        } else if (refused.message) {
            EXPECT_EQ(refused.message->title, "INPUT ERROR");
            EXPECT_EQ(refused.message->text, row.refusal);
        } else {
            EXPECT_EQ(sheet.diagram.range.XMin, 0.25F);
        }
    }
}

TEST(DesignForm, a_logarithmic_axis_is_never_empty_without_a_word) {
    GraphDocument sheet = sample();  // y from 0 to 6000
    const DesignAnswer noted = set(sheet, P::y_axis, "cmdYLog", true);
    EXPECT_TRUE(sheet.y.log);
    ASSERT_TRUE(noted.message);
    EXPECT_THAT(noted.message->text, HasSubstr("The logarithmic y-axis begins at 6."));
    sheet.diagram.range.YMin = 10;
    EXPECT_FALSE(log_note(sheet));
    sheet = sample();
    sheet.diagram.range = {.XMin = 0.5F, .YMin = -600, .XMax = 2, .YMax = 0};
    const DesignAnswer refused = set(sheet, P::y_axis, "cmdYLog", true);
    ASSERT_TRUE(refused.message);
    EXPECT_THAT(refused.message->text, HasSubstr("has to be above 0"));
    EXPECT_FALSE(sheet.y.log || sheet.y2.log);
}

TEST(DesignForm, numbers_that_the_axis_cannot_have_are_refused) {
    struct Row {
        const char *name, *typed, *fault;
    };
    const Row rows[] = {
        {"txtXOrigin", "2.5", "The origin must lie between the limits."},
        {"txtXOrigin", "x", "x is no number."},
        {"txtScaling", "0", "The step must be above 0."},
        {"txtScaling", "-1", "The step must be above 0."},
        {"txtScaling", "0.001", "The step must give 2 to 1000 numbers."},
        {"txtScaling", "5", "The step must give 2 to 1000 numbers."},
    };
    for (const Row& row : rows) {
        GraphDocument sheet = sample();
        EXPECT_EQ(set(sheet, P::x_axis, row.name, std::string(row.typed)).fault, row.fault) << row.typed;
        EXPECT_TRUE(sheet == sample()) << row.typed;
    }
    GraphDocument sheet = sample();
    EXPECT_FALSE(set(sheet, P::texts, "txtTextX", "101").fault.empty());
    EXPECT_FALSE(set(sheet, P::texts, "txtTextX", "-1").fault.empty());
}

TEST(DesignForm, interchanged_axes_keep_limits_grid_and_titles) {
    GraphDocument sheet = sample();
    cmdChangeXY(sheet);
    EXPECT_THAT(std::string(axes_hint(sheet)), HasSubstr("restricted possibilities"));
    for (const char* name : {"cmdXLog", "optXZiffern", "optXOrigin", "optScaling", "cmdFont_0"})
        EXPECT_FALSE(control(P::x_axis, name).enabled(sheet, {.axis = P::x_axis})) << name;
    set(sheet, P::x_axis, "opt1Gitter", 0);
    EXPECT_TRUE(!sheet.y.grid && sheet.x.grid) << "x shows p";
    EXPECT_FALSE(take_design_limits(sheet, {"100", "6000", "0.5", "2"}, LimitsIn::design_tab).any());
    EXPECT_EQ(sheet.diagram.range.YMin, 100.0F);
    const DesignTarget x_title{.text = {DesignText::x_title}};
    set(sheet, P::texts, "schrift", std::string("pressure{END}"), x_title);
    EXPECT_EQ(sheet.diagram.YTitle, "pressure");
    EXPECT_EQ(sheet.diagram.XTitle, "v / m3/kmol");
}

TEST(DesignForm, texts_have_titles_end_marks_and_places) {
    GraphDocument sheet = sample();
    EXPECT_EQ(design_title(P::texts, {DesignText::header}), "Design Header");
    EXPECT_EQ(design_title(P::texts, {DesignText::text, 0}), "Design Additional text");
    EXPECT_EQ(design_title(P::texts, {DesignText::x_title}), "Design X-Axis Annotation");
    EXPECT_EQ(design_title(P::texts, {DesignText::y_title}), "Design Y-Axis Annotation");
    // Heading, titles, footer, the text, two labels of curves and one of points.
    EXPECT_EQ(design_texts(sheet).size(), 8u);
    const DesignTarget added{.text = {DesignText::text, 0}};
    EXPECT_TRUE(control(P::texts, "schrift").shown(sheet, added) == DesignValue("measured{END}"));
    set(sheet, P::texts, "schrift", std::string("of 1987\nand 1990{END} left over"), added);
    EXPECT_EQ(sheet.texts[0].text, "of 1987\nand 1990");

    place_text(sheet, {DesignText::header}, 0.25, 0.5);
    EXPECT_TRUE(control(P::texts, "txtTextX").shown(sheet, {}) == DesignValue("25"));
    EXPECT_TRUE(control(P::texts, "txtTextY").shown(sheet, {}) == DesignValue("50"));
    set(sheet, P::texts, "cmdTextZurueck", true);
    EXPECT_TRUE(sheet.header.x == 0 && sheet.header.y == 0);
    place_text(sheet, {DesignText::text, 7}, 0.5, 0.5);  // there is none
    const TextRef label{DesignText::curve_label, 2};
    shift_label(sheet, label, 12, -7);
    shift_label(sheet, label, 1, 0);
    EXPECT_TRUE(sheet.curve(2).series.label.dx == 13 && sheet.curve(2).series.label.dy == -7);
    EXPECT_EQ(sheet.curve(1), sample().curve(1));
    set(sheet, P::texts, "txtTextY", "30", {.text = label});
    EXPECT_EQ(sheet.curve(2).series.label.dy, 30);
    place_legend(sheet, 1.5, -0.2);
    EXPECT_EQ(sheet.legend.place, LegendPlace::free);
    EXPECT_TRUE(sheet.legend.x == 1 && sheet.legend.y == 0);

    set(sheet, P::texts, "cmdDelText", true, added);
    EXPECT_TRUE(sheet.texts.empty());
    EXPECT_FALSE(has_text(sheet, added.text));
    set(sheet, P::texts, "schrift", std::string("gone"), added);  // changes nothing
    EXPECT_TRUE(sheet.texts.empty());
}

TEST(DesignForm, the_legend_needs_a_text) {
    GraphDocument sheet = sample();
    EXPECT_FALSE(set(sheet, P::legend, "chkLegende", true).message);
    EXPECT_TRUE(sheet.legend.visible);
    set(sheet, P::legend, "chkLegende", false);
    for (int slot : {1, 2}) set(sheet, P::curves, "chkLegend1", false, {.number = slot});
    set(sheet, P::points, "txtPunktLegende", std::string(), {.number = 1});
    const DesignAnswer refused = set(sheet, P::legend, "chkLegende", true);
    ASSERT_TRUE(refused.message);
    EXPECT_EQ(refused.message->title, "Execution not possible");
    EXPECT_FALSE(sheet.legend.visible);
    set(sheet, P::points, "cmdDelPointSet", true, {.number = 1});
    EXPECT_EQ(PointCount(sheet), 0);
}

}  // namespace
}  // namespace quom
