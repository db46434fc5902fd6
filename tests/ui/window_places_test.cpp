// Places of the windows of the whole program in frames of several sizes, and the focus when they close.
#include <QMdiSubWindow>
#include <QRadioButton>

#include "ui/main/calculation_windows.h"
#include "ui/main/mdi_area.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmKessel.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {
namespace {

class WindowPlacesTest : public WindowDriver {
 protected:
    void begin(const QSize& size) {
        frame.resize(size);
        frame.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
        go_to_calculations();
        messages.take();
    }
    void calculate(const char* entry, std::initializer_list<const char*> values) {
        menu(entry)->trigger();
        for (const char* text : values) {
            ASSERT_TRUE(qobject_cast<NumberBox*>(QApplication::focusWidget())) << entry;
            QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        }
        QApplication::processEvents();
    }
    QMdiSubWindow* sub(const char* name) const {
        QWidget* window = frame.child(name);
        return window ? qobject_cast<QMdiSubWindow*>(window->parentWidget()) : nullptr;
    }
    QRect at(const char* name) const { return sub(name) ? sub(name)->geometry() : QRect(); }
    // The upper part of the result, where its state stands.
    QRect strip() const {
        const QRect result = at(frmQCalcOut::Name);
        return {result.topLeft(), QSize(result.width(), 100)};
    }
    void expect_strip_free() const {
        const auto stacked = frame.area->subWindowList(QMdiArea::StackingOrder);
        for (const QMdiSubWindow* other : stacked)
            if (other->isVisible() && stacked.indexOf(other) > stacked.indexOf(sub(frmQCalcOut::Name))) {
                EXPECT_FALSE(other->geometry().intersects(strip()))
                    << other->widget()->objectName().toStdString();
            }
    }
    void expect_focus_in(const char* name) const {
        ASSERT_TRUE(frame.area->activeSubWindow()) << name;
        EXPECT_EQ(frame.area->activeSubWindow()->widget()->objectName().toStdString(), name);
        EXPECT_TRUE(sub(name) && sub(name)->isAncestorOf(QApplication::focusWidget())) << name;
    }
    // Moves a window by its title bar.
    void drag(const char* name, const QPoint& by) {
        QMdiSubWindow* window = sub(name);
        const QPoint grip(window->width() / 2, 12), to = window->mapToGlobal(grip) + by;
        QMouseEvent over(QEvent::MouseMove, grip, window->mapToGlobal(grip), Qt::NoButton, {}, {});
        QApplication::sendEvent(window, &over);
        QTest::mousePress(window, Qt::LeftButton, {}, grip);
        QMouseEvent move(QEvent::MouseMove, window->mapFromGlobal(to), to, Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(window, &move);
        QTest::mouseRelease(window, Qt::LeftButton, {}, window->mapFromGlobal(to));
        QApplication::processEvents();
    }
};

TEST_F(WindowPlacesTest, InputAndResultStandSideBySideAtEverySize) {
    for (const QSize size : {QSize(1600, 1000), QSize(1280, 820), QSize(1024, 768), QSize(960, 640)}) {
        SCOPED_TRACE(std::to_string(size.width()));
        begin(size);
        calculate("mnuCalc_2", {"300", "500"});
        const QRect area(QPoint(0, 0), frame.area->viewport()->size());
        const QRect input = at(frmParinput::Name), result = at(frmQCalcOut::Name),
                    models = at(frmQModell::Name);
        EXPECT_TRUE(area.contains(input) && area.contains(result) && area.contains(models));
        const int least = frame.child<frmQCalcOut>()->minimumSizeHint().width() + 2;
        if (input.width() + least + 30 <= area.width()) {
            EXPECT_FALSE(input.intersects(result));
            EXPECT_FALSE(models.intersects(result));
            EXPECT_EQ(result.height(), area.height() - 20);
        }
        const bool has_room = frame.child<frmQModell>()->sizeHint().width() + least + 32 <= area.width();
        EXPECT_TRUE(!has_room || !sub(frmQModell::Name)->isShaded());
        expect_strip_free();
        expect_focus_in(frmParinput::Name);
        for (const char* button : {"cmdCEOSDiagnose", "cmdIsoCalc"}) {
            press(frame.child<frmQCalcOut>(), button);
            QApplication::processEvents();
            expect_strip_free();
        }
        menu("mnuData_ParameterEOS")->trigger();
        QApplication::processEvents();
        expect_strip_free();
        frame.unload_calculation_windows();
        EXPECT_FALSE(sub(frmQModell::Name)->isShaded()) << "open again after the calculation";
        EXPECT_TRUE(frame.child<frmQModell>()->isVisible());
        frame.unload(frmQTextEdit::Name);
    }
}

TEST_F(WindowPlacesTest, PlaceByHandIsKeptWhileItHidesNothing) {
    begin({1600, 1000});
    calculate("mnuCalc_2", {"300", "500"});
    const QRect by_rule = at(frmParinput::Name);
    drag(frmParinput::Name, {-200, 420});
    const QRect by_hand = at(frmParinput::Name);
    EXPECT_EQ(by_hand.topLeft(), by_rule.topLeft() + QPoint(-200, 420));
    calculate("mnuCalc_2", {"300", "500"});
    EXPECT_EQ(at(frmParinput::Name), by_hand);

    drag(frmParinput::Name, strip().center() - by_hand.center());  // over the state line
    calculate("mnuCalc_2", {"300", "500"});
    EXPECT_EQ(at(frmParinput::Name), by_rule);
    expect_strip_free();

    drag(frmQCalcOut::Name, {-30, 0});
    const QRect result = at(frmQCalcOut::Name);
    frame.resize(1400, 1000);  // in an area of another size the rule holds
    calculate("mnuCalc_2", {"300", "500"});
    EXPECT_NE(at(frmQCalcOut::Name), result);
    frame.resize(1600, 1000);
    frame.unload_calculation_windows();
    menu("mnuCalc_2")->trigger();
    drag(frmParinput::Name, {-220, 430});
    calculate("mnuCalc_2", {"300", "500"});
    EXPECT_EQ(at(frmQCalcOut::Name), result);
}

TEST_F(WindowPlacesTest, ASmallerFrameMovesTheWindowsIn) {
    begin({1600, 1000});
    calculate("mnuCalc_15", {"1", "100", "300"});
    ASSERT_TRUE(frame.child<frmKessel>());
    expect_strip_free();
    for (const QSize size : {QSize(1280, 820), QSize(1024, 768), QSize(960, 640), QSize(1280, 700)}) {
        frame.resize(size);
        QApplication::processEvents();
        const QRect area(QPoint(0, 0), frame.area->viewport()->size());
        for (const QMdiSubWindow* window : frame.area->subWindowList()) {
            if (!window->isVisible()) continue;
            EXPECT_TRUE(area.contains(window->geometry())) << window->widget()->objectName().toStdString();
            if (!window->isShaded()) {
                EXPECT_GE(window->widget()->height(), window->widget()->minimumSizeHint().height());
            }
        }
        expect_strip_free();
    }
}

TEST_F(WindowPlacesTest, TileAndCascadeCutNothingOff) {
    for (const QSize size : {QSize(1280, 820), QSize(1024, 768)}) {
        begin(size);
        calculate("mnuCalc_2", {"300", "500"});
        for (const char* way : {"Tile", "Cascade"}) {
            emit in<QMenu>(&frame, "mnuWindow")->aboutToShow();
            for (QAction* action : in<QMenu>(&frame, "mnuWindow")->actions())
                if (action->text() == QLatin1String(way)) action->trigger();
            QApplication::processEvents();
            const QRect area(QPoint(0, 0), frame.area->viewport()->size());
            for (const QMdiSubWindow* window : frame.area->subWindowList()) {
                if (!window->isVisible()) continue;
                SCOPED_TRACE(way + (' ' + window->widget()->objectName().toStdString()));
                EXPECT_TRUE(area.contains(window->geometry()));
                if (window->isShaded()) continue;
                EXPECT_GE(window->widget()->width(), window->widget()->minimumSizeHint().width());
                EXPECT_GE(window->widget()->height(), window->widget()->minimumSizeHint().height());
            }
            EXPECT_FALSE(sub(frmQCalcOut::Name)->isShaded());
        }
        frame.unload_calculation_windows();
    }
}

TEST_F(WindowPlacesTest, ClosingGivesTheFocusBackToTheOpener) {
    begin({1280, 820});
    messages.answers = {};
    const auto escape = [] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); };
    calculate("mnuCalc_2", {"400", "6000"});
    for (const auto& [button, window] : {std::pair{"cmdCEOSDiagnose", frmCEOSDiagnose::Name},
                                         {"cmdInfoSuperCrit", frmPictureSuperCrit::Name},
                                         {"cmdIsoCalc", frmIsoCalc::Name}}) {
        press(frame.child<frmQCalcOut>(), button);
        expect_focus_in(window);
        escape();
        EXPECT_FALSE(frame.child(window)) << window;
        expect_focus_in(frmQCalcOut::Name);
        press(frame.child<frmQCalcOut>(), button);
        sub(window)->close();  // by its title bar
        QApplication::processEvents();
        expect_focus_in(frmQCalcOut::Name);
        frame.unload(window);
        expect_focus_in(frmQCalcOut::Name);
    }
    frame.show_child(frame.child<frmParinput>());
    expect_focus_in(frmParinput::Name);
    escape();  // ends the calculation
    expect_focus_in(frmQModell::Name);

    menu("mnuData_ParameterEOS")->trigger();
    expect_focus_in(frmQTextEdit::Name);
    escape();
    expect_focus_in(frmQModell::Name);
    menu("mnuStoffwahl")->trigger();
    expect_focus_in(frmQStoffWahl::Name);
    QTest::keyClick(frame.child<frmQStoffWahl>()->StoffListe, Qt::Key_Escape);
    if (frame.child<frmQStoffWahl>()->isVisible()) press(frame.child<frmQStoffWahl>(), "ESC");
    expect_focus_in(frmQModell::Name);

    menu("mnuCalc_5")->trigger();  // with the choice between GLOBAL and PARTIAL
    ASSERT_TRUE(frame.child<frmCalcIn>());
    press(frame.child<frmCalcIn>(), "opt_glob_1");
    const auto click = [](QWidget* option) {
        QTest::mouseClick(option, Qt::LeftButton, {}, QPoint(10, option->height() / 2));
    };
    click(frame.child<frmCalcIn>()->optPartialBenson[0]);
    for (const bool mouse : {true, false}) {
        auto* manual = frame.child<frmCalcIn>()->Ref_opt[2];
        if (mouse) {
            click(manual);
        } else {
            for (int down = 0; down < 2; ++down) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        }
        ASSERT_TRUE(frame.child<frmParinput>()) << mouse << manual->isEnabled() << manual->isChecked();
        QApplication::processEvents();
        expect_focus_in(frmParinput::Name);
        EXPECT_EQ(QApplication::focusWidget(), frame.child<frmParinput>()->par[0]);
        escape();
        expect_focus_in(frmCalcIn::Name);
    }
    escape();
    expect_focus_in(frmQModell::Name);
}

}  // namespace
}  // namespace quom
