// The program with a sheet: curves drawn by the parameter box, the mouse on the diagram.
#pragma once
#include <qcustomplot.h>

#include "ui/charts/sheet_view.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQGraph2D.h"
#include "ui/windows/frmTpVSInputBox.h"

namespace quom {

inline constexpr const char* p_v = "mnuGraf_sub_cut_1";

class DiagramDriver : public WindowDriver {
 protected:
    frmQGraph2D* window() const { return frame.child<frmQGraph2D>(); }
    frmTpVSInputBox* box() const { return frame.child<frmTpVSInputBox>(); }
    GraphDocument& sheet() { return *session().diagram.sheet; }
    QCustomPlot* plot() const { return window()->findChild<QCustomPlot*>(); }
    void trigger(const char* name) {
        QAction* action = menu(name);
        ASSERT_TRUE(action) << name;
        ASSERT_TRUE(action->isEnabled()) << name;
        action->trigger();
    }
    void go_to_diagram(const char* entry = p_v) {
        go_to_calculations();
        trigger(entry);
        ASSERT_TRUE(window());
        QApplication::processEvents();
    }
    // By the box of the parameter, with keys.
    void draw(const char* parameter) {
        if (!box()) press(window(), "cmdZInput");
        ASSERT_TRUE(box());
        box()->txtParameter->setFocus();
        box()->txtParameter->selectAll();
        QTest::keyClicks(box()->txtParameter, QLatin1String(parameter));
        press(box(), "cmdOKAndDraw");
        QApplication::processEvents();
    }
    QPoint place(float shown_x, float shown_y) {
        const auto at = window()->chart->place_of({shown_x, shown_y});
        EXPECT_TRUE(at) << shown_x << ' ' << shown_y;
        return at.value_or(QPointF()).toPoint();
    }
    void drag(const QPoint& from, const QPoint& to) {
        QTest::mousePress(plot(), Qt::LeftButton, {}, from);
        for (int i = 1; i <= 4; ++i) {
            QMouseEvent move(QEvent::MouseMove, from + (to - from) * i / 4, plot()->mapToGlobal(from),
                             Qt::NoButton, Qt::LeftButton, {});
            QApplication::sendEvent(plot(), &move);
        }
        QTest::mouseRelease(plot(), Qt::LeftButton, {}, to);
    }
    void hover(const QPoint& at) {
        QMouseEvent move(QEvent::MouseMove, at, plot()->mapToGlobal(at), Qt::NoButton, Qt::NoButton, {});
        QApplication::sendEvent(plot(), &move);
    }
};

}  // namespace quom
