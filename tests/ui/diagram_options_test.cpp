// What reaches a sheet from beside it: the slider of the parameter, the options, the project, other windows.
#include <QElapsedTimer>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QSlider>
#include <QTimer>
#include <QWheelEvent>
#include <cmath>
#include <functional>
#include <iostream>

#include "base/number_text.h"
#include "diagrams/graph_view.h"
#include "forms/diagram_form.h"
#include "session/project_file.h"
#include "ui/diagram_driver.h"
#include "ui/main/mdi_area.h"
#include "ui/widgets/colour_grid.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmQOptions.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class DiagramBeside : public DiagramDriver {
 protected:
    void open_box() {
        press(window(), "cmdZInput");
        ASSERT_TRUE(box());
        box()->txtParameter->setFocus();
    }
    void turn_wheel(QWidget* over, int notches) {
        QWheelEvent wheel(QPointF(5, 5), over->mapToGlobal(QPointF(5, 5)), {}, {0, 120 * notches},
                          Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(over, &wheel);
    }
    // The options as a user sets them.
    void set_options(const std::function<void(frmQOptions&)>& set) {
        QTimer::singleShot(0, &frame, [set] {
            auto* options = qobject_cast<frmQOptions*>(QApplication::activeModalWidget());
            ASSERT_TRUE(options);
            set(*options);
            QTest::mouseClick(options->cmdOK, Qt::LeftButton);
        });
        trigger("mnuOptions");
    }
    std::size_t points(int slot) { return sheet().curve(slot).series.points.size(); }
};

TEST_F(DiagramBeside, a_curve_follows_the_slider_until_it_is_drawn_or_given_up) {
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    go_to_diagram();
    draw("400");
    open_box();
    const GraphDocument before = sheet();
    EXPECT_NEAR(box()->sldParameter->value(), 1000 * (400 - 85.5) / (2 * 369.89 - 85.5), 2);
    // The wheel turns what has the focus.
    turn_wheel(box()->sldParameter, 1);
    EXPECT_EQ(CurveCount(sheet()), 1);
    turn_wheel(box()->txtParameter, -2);
    ASSERT_EQ(CurveCount(sheet()), 2);
    const double T = box()->txtParameter->text().toDouble();
    EXPECT_LT(T, 400);
    EXPECT_THAT(sheet().curve(2).series.label.text, HasSubstr(box()->txtParameter->text().toStdString()));
    QTest::keyClick(box()->txtParameter, Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), box()->sldParameter);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    EXPECT_LT(box()->txtParameter->text().toDouble(), T - 25);
    EXPECT_EQ(CurveCount(sheet()), 2);
    const SheetPoint at = sheet().curve(2).series.points[200];
    QApplication::processEvents();
    hover(place(at.X, at.Y));
    EXPECT_THAT(window()->lblPoint->text().toStdString(), HasSubstr("C.2 X= "));
    // It takes the colour that is picked.
    emit window()->colours->picked(QColor(18, 52, 86));
    EXPECT_EQ(sheet().curve(2).series.style.color, rgb(0x123456));
    // What cannot be drawn leaves it, with the reason in the window.
    const GraphDocument moving = sheet();
    box()->txtParameter->setFocus();
    box()->txtParameter->selectAll();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("-1"));
    EXPECT_THAT(box()->lblReason->text().toStdString(), HasSubstr("must be greater than zero"));
    EXPECT_EQ(sheet(), moving);
    // Draw keeps it, and the next one begins.
    box()->sldParameter->setValue(300);
    const std::string drawn = sheet().curve(2).series.label.text;
    press(window(), "cmdDraw");
    EXPECT_EQ(CurveCount(sheet()), 2);
    EXPECT_EQ(sheet().curve(2).series.label.text, drawn);
    EXPECT_TRUE(menu("mnuSubDelKurv_2"));
    box()->sldParameter->setValue(320);
    EXPECT_EQ(CurveCount(sheet()), 3);
    QTest::keyClick(box()->txtParameter, Qt::Key_Escape);
    EXPECT_FALSE(box());
    EXPECT_EQ(CurveCount(sheet()), 2);
    // Another diagram, another box: nothing of it is left.
    open_box();
    box()->sldParameter->setValue(100);
    change([](Document& d) { d.options.KurvenMischen = true; });
    trigger("mnuGraf_sub_cut_5");  // asks first; no answer keeps the sheet
    EXPECT_EQ(CurveCount(sheet()), 2);
    EXPECT_EQ(messages.take().size(), 1u);
}

TEST_F(DiagramBeside, the_slider_is_followed_while_it_is_dragged) {
    go_to_diagram();
    for (const char* T : {"300", "320", "340", "360", "400"}) draw(T);
    open_box();
    constexpr int Moves = 100;
    QElapsedTimer time;
    time.start();
    for (int i = 0; i < Moves; ++i) {
        box()->sldParameter->setValue(250 + 3 * i);
        QApplication::processEvents();
    }
    const double each = static_cast<double>(time.elapsed()) / Moves;
    std::cout << "a move of the slider: " << each << " ms" << std::endl;
    EXPECT_LT(each, 330) << "ten times what a drag may take";
    EXPECT_EQ(CurveCount(sheet()), 6);
}

TEST_F(DiagramBeside, options_reach_the_curves) {
    struct Row {
        const char* what;
        const char* entry;
        const char* parameter;
        std::function<void(frmQOptions&)> set;
        std::function<bool(const Series& before, const Series& after)> changed;
    };
    const auto rises_somewhere = [](const Series& s) {
        for (std::size_t i = 1; i < s.points.size(); ++i)
            if (s.points[i].Y > s.points[i - 1].Y && s.points[i].X > s.points[i - 1].X) return true;
        return false;
    };
    const auto least_X = [](const Series& s) { return std::ranges::min(s.points, {}, &SheetPoint::X).X; };
    const Row rows[] = {
        {"points", p_v, "400", [](frmQOptions& o) { o.Slider1_punktdichte->setValue(100); },
         [](const Series& a, const Series& b) { return b.points.size() < a.points.size() / 2; }},
        {"loop", p_v, "330", [](frmQOptions& o) { o.chkSKurveOhneKonnode->click(); },
         [&](const Series& a, const Series& b) { return !rises_somewhere(a) && rises_somewhere(b); }},
        {"triple temperature", "mnuGraf_sub_FuT_5", "1000",
         [](frmQOptions& o) { o.chkCurveTpRestricted->click(); },
         [&](const Series& a, const Series& b) { return least_X(a) >= 85.4F && least_X(b) < 85.4F; }},
        {"partial curve", "mnuGraf_sub_Fup_2", "330", [](frmQOptions& o) { o.chkPartialKurve->click(); },
         [](const Series& a, const Series& b) {
             const auto largest = [](const Series& s) {
                 return std::ranges::max(s.points, {}, &SheetPoint::X).X;
             };
             return largest(a) > 2500.0F && largest(b) < 2500.0F;  // p(LV) of 330 K: 2100 kPa
         }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        go_to_calculations();
        if (row.what == std::string("partial curve"))
            change([](Document& d) { d.models.EOSKode = Eos::pitzer_curl; });
        trigger(row.entry);
        draw(row.parameter);
        messages.take();
        set_options(row.set);
        press(window(), "cmdDraw");
        ASSERT_EQ(CurveCount(sheet()), 2);
        EXPECT_TRUE(row.changed(sheet().curve(1).series, sheet().curve(2).series));
        messages.take();
        change([](Document& d) { d.options = {}; });
        unload_sheet(session().diagram);
    }
}

TEST_F(DiagramBeside, options_decide_what_becomes_of_a_sheet) {
    go_to_diagram("mnuGraf_sub_FuT_5");
    draw("4000");
    set_options([](frmQOptions& o) { o.optKurvenMischen[1]->click(); });
    trigger("mnuGraf_sub_FuT_7");
    EXPECT_EQ(CurveCount(sheet()), 1);
    set_options([](frmQOptions& o) { o.chkUnloadGraph2D->click(); });
    set_options([](frmQOptions& o) { o.optMolarSpez[1]->click(); });
    ASSERT_TRUE(window());
    set_options([](frmQOptions& o) { o.chkUnloadGraph2D->click(); });
    set_options([](frmQOptions& o) { o.optMolarSpez[0]->click(); });
    EXPECT_FALSE(window() || box() || session().diagram.sheet);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(DiagramBeside, parameters_go_into_the_project_where_they_are_to_be_kept) {
    for (const bool kept : {false, true}) {
        go_to_diagram();
        draw("345");
        if (kept) set_options([](frmQOptions& o) { o.chkParSpeichern->click(); });
        const std::string file = folder.filePath(QStringLiteral("p.QC6")).toStdString();
        ASSERT_TRUE(SaveProject(session(), file, {}, messages).success);
        const double Tcr = session().substance().Tcr;
        choose_substance("Water");
        dialogs->files = {QString::fromStdString(file)};
        ASSERT_TRUE(LoadProjectFile(session(), file, messages).success);
        ASSERT_TRUE(choose_diagram(session(), Kind::p_v, messages).open);
        EXPECT_EQ(parameter_box(session()).text, kept ? "345" : genNum(Tcr));
        unload_sheet(session().diagram);
        messages.take();
    }
}

TEST_F(DiagramBeside, logarithmic_axes_from_zero_zoom_read_and_come_back) {
    go_to_diagram();
    draw("400");
    const CurveRange before = sheet().diagram.range;
    ASSERT_EQ(before.XMin, 0.0F);
    set_log_x(sheet(), true);
    set_log_y(sheet(), true);
    window()->refresh();
    QApplication::processEvents();
    const SheetPoint point = sheet().curve(1).series.points[250];
    hover(place(point.X, point.Y));
    EXPECT_THAT(window()->lblPoint->text().toStdString(), HasSubstr("C.1 X= "));
    press(window(), "cmdZoom");
    const QRectF area = window()->chart->area();
    const double width = area.width();
    drag((area.topLeft() + QPointF(width / 3, 0)).toPoint(),
         (area.bottomLeft() + QPointF(width * 2 / 3, 0)).toPoint());
    // Three decades: the middle one.
    EXPECT_NEAR(sheet().diagram.range.XMin, before.XMax / 100, 0.03 * before.XMax / 100);
    EXPECT_NEAR(sheet().diagram.range.XMax, before.XMax / 10, 0.03 * before.XMax / 10);
    press(window(), "cmdZoomReset");
    EXPECT_EQ(sheet().diagram.range, before);
    EXPECT_FALSE(window()->cmdZoom->isChecked());
}

TEST_F(DiagramBeside, marks_stand_in_interchanged_axes) {
    go_to_diagram();
    draw("330");
    press(window(), "cmdChangeXY");
    trigger("mnuMarkP");
    QApplication::processEvents();
    const double pcr = session().substance().pcr;
    int upright = 0;
    for (int i = 0; i < plot()->plottableCount(); ++i) {
        const auto* curve = qobject_cast<QCPCurve*>(plot()->plottable(i));
        if (!curve || !curve->visible() || curve->data()->size() < 2) continue;
        const auto is_at = [&](const QCPCurveData& data) { return std::abs(data.key - pcr) < 0.01; };
        upright += std::all_of(curve->data()->constBegin(), curve->data()->constEnd(), is_at) ? 1 : 0;
    }
    EXPECT_EQ(upright, 1);
}

TEST_F(DiagramBeside, a_13th_set_of_points_is_refused) {
    go_to_calculations();
    change([](Document& d) { insert_rows(d.xy, 1, "1\t1000\n2\t2000\n"); });
    trigger(p_v);
    for (int i = 1; i <= 12; ++i) trigger("mnuManuXY");
    EXPECT_TRUE(messages.take().empty());
    trigger("mnuManuXY");
    EXPECT_THAT(messages.take().at(0).second, HasSubstr("A maximum of 12 sets of points may be loaded."));
    trigger("mnuSubDelPointSet_5");
    trigger("mnuManuXY");
    EXPECT_EQ(PointCount(sheet()), 12);
    EXPECT_THAT(sheet().set(5).series.legend, HasSubstr("P.5   from X-Y-editor"));
}

TEST_F(DiagramBeside, vaporization_by_benson_needs_its_reference_first) {
    go_to_calculations();
    change([](Document& d) { d.models.HLVKode = Hlv::evp_benson; });
    trigger("mnuGraf_sub_proj_11");
    EXPECT_FALSE(window());
    auto* selection = frame.child<frmCalcIn>();
    ASSERT_TRUE(selection);
    selection->opt_glob[1]->click();
    press(selection, "OK");
    ASSERT_TRUE(window());
    EXPECT_EQ(sheet().diagram.kind, Kind::hLV_T);
    EXPECT_FALSE(frame.child<frmCalcIn>());
}

TEST_F(DiagramBeside, a_letter_of_the_window_in_use_is_its_own) {
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    go_to_diagram();
    press(box(), "cmdAbbrechen");
    window()->cmdDraw->setFocus();
    const auto opened = [this]() -> QString {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_D, Qt::AltModifier);
        QApplication::processEvents();
        QWidget* popup = QApplication::activePopupWidget();
        const QString name = popup ? popup->objectName() : QString();
        while (QWidget* shown = QApplication::activePopupWidget()) shown->close();
        return name;
    };
    EXPECT_EQ(menu("mnuData")->text().trimmed(), QStringLiteral("Data..."));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(opened(), QStringLiteral("mnuDelete"));
    menu("mnuData_EditXY")->trigger();
    EXPECT_EQ(menu("mnuData")->text().trimmed(), QStringLiteral("&Data..."));
    for (int i = 0; i < 2; ++i) EXPECT_EQ(opened(), QStringLiteral("mnuData"));
}

TEST_F(DiagramBeside, an_empty_sheet_says_what_to_do_and_a_closed_one_comes_back) {
    go_to_diagram();
    const auto* hint = in<QLabel>(window(), "lblEmpty");
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), QStringLiteral("No curve yet: enter a value and press Draw curve"));
    draw("400");
    EXPECT_FALSE(hint->isVisible());
    open_box();
    window()->parentWidget()->close();
    ASSERT_FALSE(window()->isVisible());
    press(box(), "cmdOKAndDraw");
    EXPECT_TRUE(window()->isVisible());
    EXPECT_EQ(CurveCount(sheet()), 2);
}

TEST_F(DiagramBeside, its_size_is_kept) {
    go_to_diagram();
    auto* sub = qobject_cast<QMdiSubWindow*>(window()->parentWidget());
    QTest::mousePress(sub, Qt::LeftButton, {}, QPoint(40, 8));
    sub->setGeometry(30, 40, 760, 560);
    QTest::mouseRelease(sub, Qt::LeftButton, {}, QPoint(40, 8));
    const QRect kept = sub->geometry();
    choose_substance("Water");
    press(frame.child("frmQModell"), "cmdOKModell");
    ASSERT_FALSE(window());
    trigger(p_v);
    EXPECT_EQ(window()->parentWidget()->geometry(), kept);
    EXPECT_GT(window()->chart->area().width(), 500);
    // Down to half a small screen; the commands take more lines then.
    EXPECT_LE(window()->minimumSizeHint().width(), 520);
    window()->parentWidget()->resize(1000, 700);
    QApplication::processEvents();
    EXPECT_GT(window()->chart->area().width(), 740);
}

}  // namespace
}  // namespace quom
