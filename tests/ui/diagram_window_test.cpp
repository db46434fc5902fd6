// The window of two-dimensional diagrams, driven by its menus, the mouse and the keys.
#include <QLabel>
#include <QMdiSubWindow>
#include <QTimer>
#include <algorithm>
#include <cmath>

#include "diagrams/marks.h"
#include "engine/saturation.h"
#include "forms/diagram_form.h"
#include "ui/diagram_driver.h"
#include "ui/main/mdi_area.h"
#include "ui/main/traffic_lights.h"
#include "ui/widgets/colour_grid.h"
#include "ui/windows/coordinates_dialog.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class DiagramWindow : public DiagramDriver {};

TEST_F(DiagramWindow, three_isotherms_with_dome_and_tie_line_of_propane) {
    go_to_diagram();
    EXPECT_EQ(window()->windowTitle(), QStringLiteral(" 2D-Diagram, Propane"));
    ASSERT_TRUE(box());
    EXPECT_EQ(box()->windowTitle(), QStringLiteral("Parameter Input"));
    EXPECT_EQ(box()->lblSection->text(), QStringLiteral(" for intersection curve ( p - v)"));
    EXPECT_EQ(box()->lblParameter->text(), QStringLiteral("T/K = "));
    EXPECT_NEAR(box()->txtParameter->text().toDouble(), session().substance().Tcr, 1e-9);
    for (const char* T : {"400", "369.89", "330"}) draw(T);
    EXPECT_FALSE(box());
    trigger("mnuMarkKoex");
    trigger("mnuMarkKonnode");
    EXPECT_EQ(CurveCount(sheet()), 6);
    // The tie line joins the saturated states of 330 K.
    const Fluid& fluid = *session().fluid;
    const Saturation at = pLV_EOS(fluid, 330);
    const auto& tie = sheet().curve(6).series.points;
    ASSERT_GE(tie.size(), 2u);
    const auto [liquid, vapor] = std::ranges::minmax(tie, {}, &SheetPoint::X);
    EXPECT_NEAR(liquid.X, at.vL, 1e-4 * at.vL);
    EXPECT_NEAR(vapor.X, at.vV, 1e-4 * at.vV);
    EXPECT_NEAR(liquid.Y, at.p, 1e-4 * at.p);
    EXPECT_TRUE(messages.take().empty());
    EXPECT_GE(window()->txtFarbeStatusbar2->level(), 1);
    // Every command of the sheet stands in the menus of the window.
    for (const char* name : {"mnuMarkP", "mnuMarkV", "mnuMarkB", "mnuMarkCritPointEx", "mnuMarkCritPointCalc",
                             "mnuMarkSKurve", "mnuAddLegend", "mnuAddLabels"})
        trigger(name);
    EXPECT_TRUE(has_marks(sheet()));
    EXPECT_TRUE(has_critical_point(sheet(), true));
    EXPECT_TRUE(sheet().legend.visible);
    for (const char* name : {"mnuAddProcessLine_0", "mnuAddProcessLine_6", "mnuMarkIsohygre", "mnuAddPunkte",
                             "mnuMarkHalbierende", "mnuBild_0", "mnuManuXY"})
        EXPECT_FALSE(enabled(name)) << name;
}

TEST_F(DiagramWindow, zooms_by_the_rubber_band_and_back) {
    go_to_diagram();
    draw("330");
    const CurveRange before = sheet().diagram.range;
    press(window(), "cmdZoom");
    const QRectF area = window()->chart->area();
    const QPoint from(static_cast<int>(area.left() + area.width() / 4),
                      static_cast<int>(area.top() + area.height() / 4));
    const QPoint to(static_cast<int>(area.left() + area.width() / 2),
                    static_cast<int>(area.top() + area.height() / 2));
    drag(from, to);
    const CurveRange zoomed = sheet().diagram.range;
    const float width = before.XMax - before.XMin, height = before.YMax - before.YMin;
    EXPECT_NEAR(zoomed.XMin, before.XMin + width / 4, 0.01 * width);
    EXPECT_NEAR(zoomed.XMax, before.XMin + width / 2, 0.01 * width);
    EXPECT_NEAR(zoomed.YMax, before.YMin + height * 3 / 4, 0.01 * height);
    EXPECT_NEAR(zoomed.YMin, before.YMin + height / 2, 0.01 * height);
    EXPECT_EQ(sheet().diagram.initial, before);
    // What is drawn now is drawn inside it.
    draw("350");
    drag(from, from + QPoint(2, 2));  // no area
    EXPECT_EQ(sheet().diagram.range, zoomed);
    // Escape lets the mouse go, then the window.
    QTest::keyClick(plot(), Qt::Key_Escape);
    EXPECT_FALSE(window()->cmdZoom->isChecked());
    drag(from, to);
    EXPECT_EQ(sheet().diagram.range, zoomed);
    press(window(), "cmdZoomReset");
    EXPECT_EQ(sheet().diagram.range, before);
    EXPECT_EQ(CurveCount(sheet()), 2);
}

TEST_F(DiagramWindow, interchanged_axes_are_a_view) {
    go_to_diagram();
    draw("330");
    const GraphDocument before = sheet();
    press(window(), "cmdChangeXY");
    EXPECT_TRUE(sheet().Interchanged);
    EXPECT_THAT(window()->cmdChangeXY->toolTip().toStdString(), HasSubstr("restricted possibilities"));
    EXPECT_EQ(window()->cmdChangeXY->palette().color(QPalette::Button), QColor(255, 180, 180));
    EXPECT_NEAR(plot()->xAxis->range().upper, before.diagram.range.YMax, 1e-3);
    EXPECT_EQ(sheet().curve(1), before.curve(1));
    draw("350");
    EXPECT_EQ(CurveCount(sheet()), 2);
    // Zooming goes by what is seen: half of p, all of v.
    press(window(), "cmdZoom");
    const QRect area = window()->chart->area().toRect();
    drag(area.topLeft(), QPoint(area.center().x(), area.bottom()));
    EXPECT_NEAR(sheet().diagram.range.YMax, before.diagram.range.YMax / 2, 0.01 * before.diagram.range.YMax);
    EXPECT_NEAR(sheet().diagram.range.XMax, before.diagram.range.XMax, 0.01 * before.diagram.range.XMax);
    press(window(), "cmdChangeXY");
    EXPECT_EQ(window()->cmdChangeXY->toolTip(), QStringLiteral(" interchanging x- and y-axis "));
    press(window(), "cmdZoomReset");
    EXPECT_EQ(sheet().diagram.range, before.diagram.range);
}

TEST_F(DiagramWindow, the_mouse_reads_axes_and_hidden_values) {
    go_to_diagram();
    draw("400");
    const SheetPoint point = sheet().curve(1).series.points[300];
    hover(place(point.X, point.Y));
    EXPECT_THAT(window()->lblX->text().toStdString(), StartsWith("v = "));
    EXPECT_THAT(window()->lblX->text().toStdString(), HasSubstr("m^3/kmol"));
    EXPECT_THAT(window()->lblY->text().toStdString(), StartsWith("p = "));
    EXPECT_THAT(window()->lblPoint->text().toStdString(), StartsWith("C.1 X= "));
    EXPECT_THAT(window()->lblPoint->text().toStdString(), HasSubstr(" T/K = 400.00"));
    hover(QPoint(1, 1));  // beside the axes
    EXPECT_TRUE(window()->lblX->text().isEmpty() && window()->lblPoint->text().isEmpty());
}

TEST_F(DiagramWindow, a_click_deletes_a_single_point_after_a_question) {
    go_to_diagram();
    draw("400");
    const auto point = [&] { return sheet().curve(1).series.points[300]; };
    const auto click = [&] { QTest::mouseClick(plot(), Qt::LeftButton, {}, place(point().X, point().Y)); };
    const std::size_t count = sheet().curve(1).series.points.size();
    click();  // on a line
    EXPECT_TRUE(messages.take().empty());
    sheet().curve(1).series.style.line = LinePattern::points_only;
    window()->refresh();
    messages.answers = {Answer::no};
    click();
    EXPECT_EQ(sheet().curve(1).series.points.size(), count);
    messages.answers = {Answer::yes};
    click();
    const auto asked = messages.take();
    ASSERT_EQ(asked.size(), 2u);
    EXPECT_EQ(asked[0].first, "Deleting a single curve point");
    EXPECT_THAT(asked[0].second, HasSubstr("Delete point #"));
    EXPECT_EQ(sheet().curve(1).series.points.size(), count - 1);
}

TEST_F(DiagramWindow, deletes_what_is_there_and_draws_into_the_freed_slot) {
    go_to_diagram();
    for (const char* T : {"330", "350", "400"}) draw(T);
    EXPECT_FALSE(enabled("mnuMarkT"));  // a p-v sheet has no axis of T
    EXPECT_FALSE(menu("mnuDelMarkTP"));
    trigger("mnuMarkP");
    trigger("mnuMarkCritPointEx");
    for (const char* name : {"mnuDelMarkLabels", "mnuDelCritPointEx", "mnuDelLabels", "mnuDelMarkTP"}) {
        trigger(name);
        EXPECT_FALSE(menu(name)) << name;
    }
    EXPECT_THAT(menu("mnuSubDelKurv_2")->text().toStdString(), StartsWith("C.2 350.00 K"));
    trigger("mnuSubDelKurv_2");
    EXPECT_FALSE(menu("mnuSubDelKurv_2"));
    EXPECT_EQ(sheet().curve(3).series.label.text, "C.3 400.00 K");
    draw("420");
    EXPECT_EQ(sheet().curve(2).series.label.text, "C.2 420.00 K");
    trigger("mnuDelTotal");
    EXPECT_TRUE(is_empty(sheet()));
    QApplication::processEvents();
    EXPECT_TRUE(window());
}

TEST_F(DiagramWindow, a_25th_curve_is_refused) {
    go_to_diagram();
    draw("400");
    for (int i = 2; i <= 24; ++i) press(window(), "cmdDraw");
    EXPECT_TRUE(messages.take().empty());
    press(window(), "cmdDraw");
    const auto told = messages.take();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0], std::pair(std::string("WARNING"),
                                 std::string("Maximum 24 curves possible\n\nDelete existing curves")));
    EXPECT_EQ(CurveCount(sheet()), 24);
}

TEST_F(DiagramWindow, the_box_refuses_and_keeps_what_is_typed) {
    go_to_diagram();
    draw("-1");
    ASSERT_TRUE(box());
    EXPECT_EQ(messages.take().at(0).second, " The default temperature must be greater than zero! ");
    EXPECT_EQ(box()->txtParameter->text(), QStringLiteral("-1"));
    box()->txtParameter->setText(QString());
    press(box(), "cmdOK");
    EXPECT_TRUE(box()->txtParameter->refused());
    box()->txtParameter->setText(QStringLiteral("345"));
    press(box(), "cmdOK");
    EXPECT_FALSE(box());
    EXPECT_EQ(CurveCount(sheet()), 0);
    press(window(), "cmdDraw");
    EXPECT_EQ(sheet().curve(1).series.label.text, "C.1 345.00 K");
    press(window(), "cmdZInput");
    ASSERT_TRUE(box());
    QTest::keyClick(box()->txtParameter, Qt::Key_Escape);
    EXPECT_FALSE(box());
}

TEST_F(DiagramWindow, another_family_of_axes_asks_where_curves_are_mixed) {
    go_to_calculations();
    change([](Document& d) { d.options.KurvenMischen = true; });
    trigger("mnuGraf_sub_FuT_5");  // enthalpy
    draw("4000");
    trigger("mnuGraf_sub_FuT_7");  // Gibbs energy joins it
    EXPECT_EQ(CurveCount(sheet()), 1);
    messages.take();
    messages.answers = {Answer::no, Answer::yes};
    trigger("mnuGraf_sub_FuT_6");
    EXPECT_EQ(messages.take().at(0).second,
              "The units of the diagram axes do not fit together.\n\nDelete the existing diagram?");
    EXPECT_TRUE(window());
    trigger("mnuGraf_sub_FuT_6");
    EXPECT_FALSE(window() || box());
    trigger("mnuGraf_sub_FuT_6");
    EXPECT_EQ(sheet().diagram.kind, Kind::s_T);
    EXPECT_TRUE(window() && box());
    trigger("mnuGraf_sub_proj_8");  // on Yes, and then a kind without a parameter
    trigger("mnuGraf_sub_proj_8");
    EXPECT_TRUE(window());
    EXPECT_FALSE(box());
    EXPECT_FALSE(window()->cmdZInput->isEnabled());
}

TEST_F(DiagramWindow, goes_with_units_and_substance) {
    go_to_diagram();
    draw("400");
    change([](Document& d) { d.units.VolumeMode = volume_per_mass; });
    EXPECT_FALSE(window() || session().diagram.sheet);
    change([](Document& d) {
        d.units.VolumeMode = volume_molar;
        d.options.ResetOnClose = false;
    });
    trigger(p_v);
    draw("400");
    change([](Document& d) { d.units.VolumeMode = volume_per_mass; });
    ASSERT_TRUE(window());
    const SheetPoint point = sheet().curve(1).series.points[300];
    hover(place(point.X, point.Y));
    EXPECT_THAT(window()->lblX->text().toStdString(), HasSubstr("m^3/kmol"));  // as it was drawn
    choose_substance("Water");
    EXPECT_FALSE(window() || session().diagram.sheet);
}

TEST_F(DiagramWindow, every_entry_of_its_menu_opens_a_sheet_or_says_why_not) {
    go_to_calculations();
    int opened = 0;
    for (QAction* action : frame.findChildren<QAction*>()) {
        const QString name = action->objectName();
        if (!name.startsWith(QStringLiteral("mnuGraf_sub_")) || action->isSeparator() || action->menu())
            continue;
        if (!action->isEnabled()) continue;
        unload_sheet(session().diagram);
        action->trigger();
        const auto told = messages.take();
        EXPECT_TRUE(session().diagram.sheet || !told.empty()) << qPrintable(name);
        if (!session().diagram.sheet) continue;
        ++opened;
        EXPECT_EQ(box() != nullptr, has_parameter(session())) << qPrintable(name);
        EXPECT_EQ(window()->cmdZInput->isEnabled(), has_parameter(session())) << qPrintable(name);
        press(window(), "cmdDraw");
        EXPECT_GE(CurveCount(sheet()), 1) << qPrintable(name);
        messages.take();
    }
    EXPECT_GE(opened, 60);
}

TEST_F(DiagramWindow, limits_are_typed_in_and_refused) {
    go_to_diagram();
    const CurveRange before = sheet().diagram.range;
    const auto with_dialog = [&](auto&& use) {
        QTimer::singleShot(0, window(), [use] {
            auto* dialog = qobject_cast<CoordinatesDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            use(*dialog);
            if (dialog->isVisible()) dialog->reject();
        });
        trigger("mnuCoord");
    };
    with_dialog([this](CoordinatesDialog& dialog) {
        dialog.limit[0]->setText(QStringLiteral("5"));
        dialog.cmdOK->click();
        EXPECT_EQ(messages.take().at(0),
                  std::pair(std::string("INPUT ERROR"),
                            std::string("lower limit has to smaller than upper limit")));
        dialog.limit[0]->setText(QStringLiteral("0.1"));
        dialog.limit[3]->setText(QStringLiteral("0"));
        dialog.cmdOK->click();
        EXPECT_EQ(messages.take().at(0).second, "Lower limit has to smaller than upper limit.");
        dialog.limit[3]->setText(QStringLiteral("e"));
        dialog.cmdOK->click();
        EXPECT_TRUE(dialog.limit[3]->refused());
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_EQ(sheet().diagram.range, before);
    with_dialog([](CoordinatesDialog& dialog) {
        dialog.limit[1]->setText(QStringLiteral("2"));
        dialog.limit[3]->setText(QStringLiteral("3000"));
        dialog.cmdOK->click();
    });
    EXPECT_EQ(sheet().diagram.range.XMax, 2.0F);
    EXPECT_EQ(plot()->yAxis->range().upper, 3000);
}

TEST_F(DiagramWindow, the_next_colour_is_picked_from_the_grid) {
    go_to_diagram();
    draw("330");
    press(window(), "cmdFarbVorwahl");
    QTest::mouseClick(window()->colours->colour[4], Qt::LeftButton);
    draw("350");
    EXPECT_EQ(sheet().curve(2).series.style.color, slot_color(5));
    draw("400");
    EXPECT_EQ(sheet().curve(3).series.style.color, slot_color(3));  // for one action
}

TEST_F(DiagramWindow, a_file_keeps_the_sheet) {
    go_to_diagram();
    for (const char* T : {"330", "400"}) draw(T);
    const std::vector<SheetPoint> points(sheet().curve(2).series.points.begin(),
                                         sheet().curve(2).series.points.end());
    press(window(), "cmdChangeXY");
    messages.answers = {Answer::no};
    trigger("mnuSaveOC2");
    EXPECT_THAT(messages.take().at(0).second, HasSubstr("Do not save the diagram in the rotated state"));
    EXPECT_TRUE(dialogs->asked.empty() ||
                dialogs->asked.back().title != QStringLiteral("Save this 2D-diagram design"));
    press(window(), "cmdChangeXY");
    const QString file = folder.filePath(QStringLiteral("family.oc2"));
    dialogs->files = {file, file};
    trigger("mnuSaveOC2");
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Save this 2D-diagram design"));
    trigger("mnuDelTotal");
    trigger("mnuLoadOC2");
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Load a saved pattern (*.oc3)"));
    EXPECT_EQ(messages.take().at(0).first, "one-time note");
    ASSERT_EQ(CurveCount(sheet()), 2);
    EXPECT_TRUE(std::ranges::equal(sheet().curve(2).series.points, points));
    EXPECT_EQ(window()->lblStatus->text(), QStringLiteral("picture file: family.oc2"));
    EXPECT_TRUE(menu("mnuSubDelKurv_2"));
    // One that cannot be read leaves the sheet.
    QFile broken(file);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("{");
    broken.close();
    dialogs->files = {file};
    trigger("mnuLoadOC2");
    EXPECT_EQ(messages.take().size(), 1u);
    EXPECT_EQ(CurveCount(sheet()), 2);
}

TEST_F(DiagramWindow, data_of_the_editors_come_onto_the_sheet) {
    go_to_calculations();
    change([](Document& d) {
        insert_rows(d.exp, 1, "400\t3000\t51\n400\t4000\t78\n330\t1500\t60\n");
        insert_rows(d.xy, 1, "1\t1000\n2\t2000\n3\t500\n");
        toggle_lines(d.xy, 3, 3);
    });
    trigger(p_v);
    draw("400");
    trigger("mnuAddPunkte");
    ASSERT_EQ(PointCount(sheet()), 1);
    ASSERT_EQ(sheet().set(1).series.points.size(), 2u);  // 330 K is no point of the isotherm
    EXPECT_NEAR(sheet().set(1).series.points[0].X, session().substance().MolMass / 51.0F, 1e-3);
    EXPECT_EQ(sheet().set(1).series.points[0].Y, 3000.0F);
    trigger("mnuManuXY");
    EXPECT_EQ(sheet().set(2).series.points.size(), 2u);  // one line is off
    trigger("mnuSubDelPointSet_1");
    EXPECT_TRUE(sheet().set(1).PointFree);
    draw("350");
    trigger("mnuAddPunkte");
    EXPECT_THAT(messages.take().at(0).second, HasSubstr("No exper. points in this range"));
}

TEST_F(DiagramWindow, control_graphs_stand_on_a_sheet_of_their_own) {
    go_to_calculations();
    change([](Document& d) {
        insert_rows(d.exp, 1, "300\t997\n320\t1599\n340\t2430\n");
        d.exp.optFitFunction = 1;
    });
    menu("mnuData_BatchEdit")->trigger();
    press(frame.child("frmTpRhoEdit"), "cmdlogGraf");
    ASSERT_TRUE(window());
    EXPECT_EQ(sheet().header.text, "Experimental points ln{p} = f(1/T)");
    EXPECT_NEAR(sheet().set(1).series.points[1].X, 1 / 320.0, 1e-9);
    EXPECT_NEAR(sheet().set(1).series.points[1].Y, std::log(1599.0), 1e-6);
    EXPECT_FALSE(window()->cmdDraw->isEnabled());
    messages.answers = {Answer::no};
    press(frame.child("frmTpRhoEdit"), "cmdGraphFunction");
    EXPECT_EQ(sheet().diagram.XTitle, "1/ (T/K)");
    messages.answers = {Answer::yes};
    press(frame.child("frmTpRhoEdit"), "cmdGraphFunction");
    EXPECT_EQ(sheet().diagram.XTitle, "T / K");
    EXPECT_EQ(sheet().set(1).series.points[2], (SheetPoint{340, 2430}));
    messages.take();
    menu("mnuData_EditXY")->trigger();
    press(frame.child("frmQXYEdit"), "cmdDrawXY");
    EXPECT_EQ(messages.take().at(0).second, "at least one active point required!");
    change([](Document& d) { insert_rows(d.xy, 1, "1\t5\n2\t6\n"); });
    press(frame.child("frmQXYEdit"), "optIsPoints_1");
    messages.answers = {Answer::yes};
    press(frame.child("frmQXYEdit"), "cmdDrawXY");
    EXPECT_EQ(sheet().header.text, "Points x - y");
    EXPECT_EQ(CurveCount(sheet()), 1);
}

TEST_F(DiagramWindow, escape_brings_the_window_behind) {
    go_to_diagram();
    press(box(), "cmdAbbrechen");
    QMdiSubWindow* sub = qobject_cast<QMdiSubWindow*>(window()->parentWidget());
    menu("mnuData_EditXY")->trigger();
    frame.show_child(window());
    ASSERT_EQ(frame.area->activeSubWindow(), sub);
    press(window(), "cmdEscGraph");
    EXPECT_NE(frame.area->activeSubWindow(), sub);
    EXPECT_TRUE(sub->isVisible());
    EXPECT_TRUE(session().diagram.sheet);
}

}  // namespace
}  // namespace quom
