// The design of the sheet by its window and by the mouse: what is set is drawn at once.
#include <qcustomplot.h>

#include <QComboBox>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTabWidget>

#include "forms/diagram_form.h"
#include "ui/charts/sheet_view.h"
#include "ui/main/diagram_windows.h"
#include "ui/main/mdi_area.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmQGraph2D_Gestaltung.h"
#include "ui/windows/schrift_edit.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class DesignWindow : public WindowDriver {
 protected:
    void SetUp() override {
        go_to_calculations();
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
        menu("mnuGraf_sub_cut_1")->trigger();
        ASSERT_TRUE(window());
        show_parameter_box(frame, false);
        for (const double T : {330.0, 400.0}) {
            session().diagram.state.T = T;
            ASSERT_GT(draw_curve(session(), messages), 0);
        }
        ASSERT_FALSE(show_legend(sheet()));
        insert_text(sheet(), "measured");
        window()->refresh();
        QApplication::processEvents();
        messages.take();
    }
    frmQGraph2D* window() const { return frame.child<frmQGraph2D>(); }
    frmQGraph2D_Gestaltung* design() const { return frame.child<frmQGraph2D_Gestaltung>(); }
    GraphDocument& sheet() { return *session().diagram.sheet; }
    QCustomPlot* plot() const { return window()->findChild<QCustomPlot*>(); }
    QPoint middle_of(const SheetHit& part) const { return window()->chart->box_of(part).center().toPoint(); }
    // The entry of the menu that a right click opens there.
    QAction* right_click(const QPoint& at, const char* entry) {
        for (QMenu* old : window()->findChildren<QMenu*>(QStringLiteral("mnuContext"))) delete old;
        QContextMenuEvent click(QContextMenuEvent::Mouse, at, plot()->mapToGlobal(at));
        QApplication::sendEvent(plot(), &click);
        auto* opened = window()->findChild<QMenu*>(QStringLiteral("mnuContext"));
        auto* action = opened ? opened->findChild<QAction*>(QLatin1String(entry)) : nullptr;
        EXPECT_TRUE(action && action->isEnabled()) << entry;
        return action;
    }
    void choose_design(const QPoint& at, const char* entry) {
        if (QAction* action = right_click(at, entry)) action->trigger();
        if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
        ASSERT_TRUE(design());
    }
    void move_to(const QPoint& at) {
        QMouseEvent move(QEvent::MouseMove, at, plot()->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(plot(), &move);
        QApplication::processEvents();
    }
    // From the middle of a part, with the button down.
    void drag(const SheetHit& part, const QPoint& by, bool release = true) {
        const QPoint from = middle_of(part);
        QTest::mousePress(plot(), Qt::LeftButton, {}, from);
        for (int i = 1; i <= 3; ++i) move_to(from + by * i / 3);
        if (release) QTest::mouseRelease(plot(), Qt::LeftButton, {}, from + by);
        QApplication::processEvents();
    }
    void type(QWidget* box, const char* text) {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(box, QLatin1String(text));
    }
    QCPCurve* drawn_with(const QColor& color) const {
        for (int i = 0; i < plot()->plottableCount(); ++i)
            if (auto* curve = qobject_cast<QCPCurve*>(plot()->plottable(i));
                curve && curve->visible() && curve->pen().color() == color)
                return curve;
        return nullptr;
    }
};

TEST_F(DesignWindow, a_right_click_on_a_curve_opens_its_row) {
    const SheetPoint point = sheet().curve(2).series.points[200];
    const QPoint at = window()->chart->place_of(point).value_or(QPointF()).toPoint();
    EXPECT_EQ(right_click(at, "mnuKurvenDesign")->text(), QStringLiteral("Design curve C.2"));
    choose_design(at, "mnuKurvenDesign");
    EXPECT_EQ(design()->tabs->currentWidget()->objectName(), QStringLiteral("tabKurven"));
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design Curves"));
    auto* color = in<QPushButton>(design(), "cmdKurvenFarbe_2");
    EXPECT_TRUE(color->hasFocus());
    EXPECT_FALSE(in<QPushButton>(design(), "cmdKurvenFarbe_3")->isVisible()) << "no such curve";
    // By the keys: the grid of colours, then style and width.
    QTest::keyClick(color, Qt::Key_Space);
    auto* grid = in<QMenu>(design(), "colours");
    ASSERT_TRUE(grid->isVisible());
    in<QAbstractButton>(grid, "colour_12")->click();
    ASSERT_TRUE(drawn_with(QColor(0xC3, 0, 0x96)));
    auto* style = in<QComboBox>(design(), "cmbKStil_2");
    style->setFocus();
    for (int i = 0; i < 2; ++i) QTest::keyClick(style, Qt::Key_Down);
    EXPECT_EQ(style->currentText(), QStringLiteral("curve dashed"));
    choose(in<QComboBox>(design(), "cmbKBreite_2"), "5");
    const QPen pen = drawn_with(QColor(0xC3, 0, 0x96))->pen();
    EXPECT_EQ(pen.style(), Qt::CustomDashLine);
    EXPECT_DOUBLE_EQ(pen.widthF(), 4);  // 0.8 pixels an entry
    EXPECT_FALSE(window()->chart->box_of({SheetPart::curve_label, 2}).isEmpty());
    QTest::mouseClick(in<QAbstractButton>(design(), "chkEinzelLabelSichtbar_2"), Qt::LeftButton, {},
                      QPoint(6, 8));
    EXPECT_TRUE(window()->chart->box_of({SheetPart::curve_label, 2}).isEmpty());
    // Escape closes, and nothing is taken back.
    QTest::keyClick(style, Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(design());
    EXPECT_EQ(sheet().curve(2).series.style.width, 5);
    EXPECT_EQ(sheet().curve(1).series.style.width, 2);
}

TEST_F(DesignWindow, limits_and_scale_of_the_axes) {
    choose_design(window()->chart->area().center().toPoint(), "mnuDesignMore");
    EXPECT_EQ(design()->tabs->currentWidget()->objectName(), QStringLiteral("tabXAxis"));
    NumberBox* const* limits = design()->txtTabCoord[0];
    type(limits[0], "0.2");
    QTest::keyClick(limits[0], Qt::Key_Return);
    EXPECT_TRUE(limits[1]->hasFocus());
    type(limits[1], "0.1");
    QTest::keyClick(limits[1], Qt::Key_Return);
    const auto told = messages.take();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].second, "Lower limit has to be smaller than upper limit.");
    EXPECT_EQ(told[0].first, "INPUT ERROR");
    type(limits[1], "1.2");
    QTest::keyClick(limits[1], Qt::Key_Return);
    EXPECT_NEAR(plot()->xAxis->range().lower, 0.2, 1e-6);
    EXPECT_NEAR(plot()->xAxis->range().upper, 1.2, 1e-6);
    // A step of its own, then an origin that cannot be.
    auto* step = in<NumberBox>(design()->tabs->currentWidget(), "txtScaling");
    type(step, "0.25");
    QTest::keyClick(step, Qt::Key_Return);
    EXPECT_EQ(plot()->xAxis->tickVector().size(), 4);  // 0.25 0.5 0.75 1
    auto* origin = in<NumberBox>(design()->tabs->currentWidget(), "txtXOrigin");
    type(origin, "7");
    QTest::keyClick(origin, Qt::Key_Return);
    EXPECT_TRUE(origin->refused());
    EXPECT_FALSE(sheet().x.origin);
    // p from 0 on cannot be logarithmic from there: told, and drawn from the first place that it can.
    sheet().diagram.range.YMin = 0;
    window()->refresh();
    design()->show_page(DesignPage::y_axis, {});
    press(design(), "cmdYLog");
    EXPECT_EQ(plot()->yAxis->scaleType(), QCPAxis::stLogarithmic);
    EXPECT_EQ(plot()->yAxis2->scaleType(), QCPAxis::stLogarithmic);
    EXPECT_GT(plot()->yAxis->range().lower, 0);
    const auto note = messages.take();
    ASSERT_EQ(note.size(), 1u);
    EXPECT_THAT(note[0].second, HasSubstr("begins at"));
    // Numbers on the right.
    design()->show_page(DesignPage::y2_axis, {});
    choose(in<QComboBox>(design(), "optY2Ziffern"), "4");
    EXPECT_TRUE(plot()->yAxis2->tickLabels());
    press(window(), "cmdChangeXY");
    EXPECT_FALSE(in<QAbstractButton>(design(), "cmdXLog")->isEnabled());
}

TEST_F(DesignWindow, texts_are_edited_in_place) {
    choose_design(middle_of({SheetPart::header}), "mnuTextDesign");
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design Header"));
    auto* edit = in<SchriftEdit>(design(), "schrift");
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_TRUE(edit->toPlainText().endsWith(QStringLiteral("{END}")));
    const std::string before = sheet().header.text;
    QTest::keyClicks(edit, QStringLiteral(" of"));
    QTest::keyClick(edit, Qt::Key_Return, Qt::ControlModifier);
    QTest::keyClicks(edit, QStringLiteral("Propane"));
    EXPECT_EQ(sheet().header.text, before + " of\nPropane");
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_FALSE(edit->hasFocus());
    EXPECT_EQ(sheet().header.text, before + " of\nPropane");
    // The place by keys, in percent of the sheet.
    auto* x = in<NumberBox>(design()->tabs->currentWidget(), "txtTextX");
    type(x, "25");
    QTest::keyClick(x, Qt::Key_Return);
    EXPECT_EQ(sheet().header.x, 0.25);
    EXPECT_NEAR(window()->chart->box_of({SheetPart::header}).left(), 0.25 * plot()->width(), 1);

    choose_design(middle_of({SheetPart::x_title}), "mnuTextDesign");
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design X-Axis Annotation"));
    EXPECT_FALSE(x->isEnabled());
    choose_design(middle_of({SheetPart::curve_label, 1}), "mnuMove");
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design Curve Label"));
    EXPECT_TRUE(x->hasFocus());
    choose_design(middle_of({SheetPart::text, 0}), "mnuTextDesign");
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design Additional text"));
    press(design(), "cmdDelText");
    EXPECT_TRUE(sheet().texts.empty());
    EXPECT_EQ(design()->windowTitle(), QStringLiteral("Design Header"));
}

TEST_F(DesignWindow, the_mouse_moves_texts_labels_and_legend_and_escape_puts_them_back) {
    const QPoint by(-60, 70);
    for (const SheetHit& part : {SheetHit{SheetPart::header},
                                 {SheetPart::text, 0},
                                 {SheetPart::legend},
                                 {SheetPart::curve_label, 1}}) {
        SCOPED_TRACE(static_cast<int>(part.part));
        const GraphDocument before = sheet();
        const QPointF from = window()->chart->box_of(part).topLeft();
        drag(part, by, false);
        EXPECT_FALSE(sheet() == before);
        QTest::keyClick(plot(), Qt::Key_Escape);
        EXPECT_TRUE(sheet() == before);
        EXPECT_TRUE(window()->isVisible());
        QTest::mouseRelease(plot(), Qt::LeftButton, {}, from.toPoint());
        EXPECT_TRUE(sheet() == before);
        QApplication::processEvents();
        drag(part, by);
        const QPointF to = window()->chart->box_of(part).topLeft();
        EXPECT_NEAR(to.x() - from.x(), by.x(), 2);
        EXPECT_NEAR(to.y() - from.y(), by.y(), 2);
    }
    EXPECT_EQ(sheet().legend.place, LegendPlace::free);
    EXPECT_TRUE(messages.take().empty()) << "a drag is no click on a point";
}

TEST_F(DesignWindow, presets_color_the_sheet) {
    choose_design(window()->chart->area().center().toPoint(), "mnuDesign");
    const auto corner = [&] { return window()->chart->grab().toImage().pixelColor(2, 2); };
    press(design(), "cmdFullBlack");
    EXPECT_EQ(corner(), QColor(Qt::black));
    EXPECT_EQ(plot()->xAxis->tickLabelColor(), QColor(Qt::white));
    press(design(), "cmdFullWhite");
    EXPECT_EQ(corner(), QColor(Qt::white));
    EXPECT_FALSE(sheet().colors.black);
}

TEST_F(DesignWindow, one_point_of_a_line_is_deleted_while_armed) {
    choose_design(window()->chart->area().center().toPoint(), "mnuKurvenDesign");
    press(design(), "cmdDelSinglePoint");
    const SheetPoint point = sheet().curve(1).series.points[200];
    const std::size_t count = sheet().curve(1).series.points.size();
    frame.unload(frmQGraph2D_Gestaltung::Name);
    const auto click = [&] {
        QTest::mouseClick(plot(), Qt::LeftButton, {},
                          window()->chart->place_of(point).value_or(QPointF()).toPoint());
    };
    messages.answers = {Answer::yes};
    click();
    EXPECT_EQ(sheet().curve(1).series.points.size(), count - 1);
    messages.take();
    click();
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(DesignWindow, goes_with_its_sheet) {
    choose_design(window()->chart->area().center().toPoint(), "mnuDesign");
    choose_substance("Methane");
    QApplication::processEvents();
    EXPECT_FALSE(design());
    EXPECT_FALSE(window());
}

}  // namespace
}  // namespace quom
