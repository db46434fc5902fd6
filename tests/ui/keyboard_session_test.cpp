// A whole session by keyboard alone and by mouse alone, at 1024 x 768: every key goes to what has the focus,
// every press to what lies at that place of the screen.
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include "ui/main/mdi_area.h"
#include "ui/main/start_page.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmKessel.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class KeyboardSession : public WindowDriver {
 protected:
    KeyboardSession() {
        frame.resize(1024, 768);
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    static QWidget* focus() {
        if (QWidget* popup = QApplication::activePopupWidget()) return popup;
        QWidget* widget = QApplication::focusWidget();
        EXPECT_TRUE(widget) << "nothing has the focus";
        return widget ? widget : QApplication::activeWindow();
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(focus(), key, with);
        QApplication::processEvents();
    }
    static void type(const char* text) {
        QTest::keyClicks(focus(), QString::fromUtf8(text));
        QApplication::processEvents();
    }
    static void type_values(std::initializer_list<const char*> values) {
        for (const char* value : values) {
            ASSERT_TRUE(qobject_cast<NumberBox*>(QApplication::focusWidget())) << value;
            type(value);
            key(Qt::Key_Return);
        }
    }
    // Down in the menu in front to the entry of this name, and Enter.
    void choose_entry(const char* name) {
        auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(popup) << name;
        for (int i = 0; i < 60 && popup->activeAction() != menu(name); ++i) key(Qt::Key_Down);
        ASSERT_EQ(popup->activeAction(), menu(name));
        key(Qt::Key_Return);
    }
    void calculation(const char* name) {
        key(Qt::Key_C, Qt::AltModifier);
        choose_entry(name);
    }
    // Ctrl+Tab: the next window comes to the front when Ctrl is let go.
    static void next_window() {
        QTest::keyPress(focus(), Qt::Key_Control, Qt::ControlModifier);
        key(Qt::Key_Tab, Qt::ControlModifier);
        QTest::keyRelease(focus(), Qt::Key_Control);
        QApplication::processEvents();
    }
    // What a window manager does when the window in front closes.
    void frame_in_front() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &frame; }));
    }
    // What a modal window that opens by the key holds, closed by Esc.
    QString modal_by(Qt::Key opening, Qt::KeyboardModifiers with) {
        QString name;
        QTimer::singleShot(0, &frame, [&name] {
            QWidget* modal = QApplication::activeModalWidget();
            if (!modal) return;
            name = modal->objectName();
            EXPECT_TRUE(QTest::qWaitFor([modal] { return QApplication::activeWindow() == modal; }));
            EXPECT_TRUE(modal->isAncestorOf(QApplication::focusWidget())) << name.toStdString();
            key(Qt::Key_Escape);
            if (modal->isVisible()) modal->close();
        });
        key(opening, with);
        frame_in_front();
        return name;
    }
    std::string state() const { return frame.child<frmQCalcOut>()->strip->accessibleName().toStdString(); }
    QString list() const { return frame.child<frmQCalcOut>()->Liste->toPlainText(); }
};

TEST_F(KeyboardSession, FromTheStartPageToResultsTankInverseSearchSettingsAndHelp) {
    // Database and substance, by its German name.
    ASSERT_TRUE(frame.start_page->isAncestorOf(QApplication::focusWidget()));
    key(Qt::Key_Return);
    ASSERT_TRUE(frame.child<frmQStoffWahl>());
    type("Wasser");
    key(Qt::Key_Return);
    ASSERT_TRUE(frame.child<frmQModell>());
    EXPECT_EQ(session().substance().StoffName, "Water");
    key(Qt::Key_Return);
    ASSERT_TRUE(enabled("mnuCalcMain"));

    // Steam at 400 K and 100 kPa: T(LV) is 372.76 K; by the equation of state within a kelvin of it.
    calculation("mnuCalc_2");
    ASSERT_TRUE(frame.child<frmParinput>());
    type_values({"400", "100"});
    ASSERT_TRUE(frame.child<frmQCalcOut>());
    EXPECT_THAT(state(), HasSubstr("superheated vapor"));
    EXPECT_TRUE(frame.area->viewport()->rect().contains(
        frame.child<frmQCalcOut>()->parentWidget()->geometry().topLeft()));
    // 0.5476 kg/m^3 (IAPWS); Peng/Robinson within half a per cent.
    const QString first = list();
    EXPECT_TRUE(first.contains(QRegularExpression(QStringLiteral("\\.5(4[5-9]|50)\\d+"))))
        << first.toStdString();
    // The boxes have the focus again: the next values can be typed.
    type_values({"300", "100"});
    EXPECT_THAT(state(), HasSubstr("compressed liquid"));

    // Reference state and options on top of the result; both give the focus back.
    QWidget* const box = QApplication::focusWidget();
    EXPECT_EQ(modal_by(Qt::Key_Comma, Qt::ControlModifier).toStdString(), "frmQOptions");
    EXPECT_EQ(QApplication::focusWidget(), box);
    key(Qt::Key_K, Qt::ControlModifier);
    type("reference state");
    EXPECT_EQ(modal_by(Qt::Key_Return, {}).toStdString(), "frmReferenz");
    EXPECT_EQ(QApplication::focusWidget(), box);

    // Help on the window in front, and back.
    key(Qt::Key_F1);
    auto* help = frame.findChild<HelpWindow*>();
    ASSERT_TRUE(help && help->isVisible());
    key(Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    frame_in_front();
    EXPECT_EQ(QApplication::focusWidget(), box);
    key(Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmQCalcOut>());
    EXPECT_TRUE(frame.child<frmQModell>()->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(KeyboardSession, TankAndInverseSearch) {
    key(Qt::Key_Return);
    type("Propan");
    key(Qt::Key_Return);
    key(Qt::Key_Return);

    // 100 kg in 1 m^3 at 300 K: two phases.
    key(Qt::Key_K, Qt::ControlModifier);
    type("tank");
    key(Qt::Key_Return);
    type_values({"1", "100", "300"});
    ASSERT_TRUE(frame.child<frmKessel>());
    EXPECT_THAT(state(), HasSubstr("two phases"));
    key(Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmKessel>());

    // The volume is kept while T rises: from the functions by the letter of the Iso Calculator.
    calculation("mnuCalc_11");
    type_values({"300", "500"});
    ASSERT_TRUE(frame.child<frmQCalcOut>());
    for (int i = 0; i < 5 && !frame.child<frmQCalcOut>()->isAncestorOf(QApplication::focusWidget()); ++i)
        next_window();
    ASSERT_TRUE(frame.child<frmQCalcOut>()->isAncestorOf(QApplication::focusWidget()));
    key(Qt::Key_A, Qt::AltModifier);
    EXPECT_EQ(frame.child<frmQCalcOut>()->tabs->currentIndex(), 1);
    key(Qt::Key_S, Qt::AltModifier);
    // A letter presses its button a moment later.
    ASSERT_TRUE(QTest::qWaitFor([this] { return frame.child<frmIsoCalc>(); }));
    QApplication::processEvents();
    ASSERT_EQ(QApplication::focusWidget()->objectName().toStdString(), "txtFuConst");
    key(Qt::Key_Backtab);
    ASSERT_EQ(QApplication::focusWidget()->objectName().toStdString(), "txtTpVorgabe");
    type_values({"320"});
    key(Qt::Key_Return);
    // p = R T/v (1 + B/v) with v = 4.562 m^3/kmol of 300 K, 500 kPa and B = -0.36 m^3/kmol at 320 K: 537 kPa.
    EXPECT_NEAR(document().exp.points[0].T, 320.0, 1e-9);
    EXPECT_NEAR(document().exp.points[0].p, 537.0, 3.0);
    EXPECT_EQ(frame.child<frmQCalcOut>()->par1->text().simplified().toStdString(), "T = 320.000 K");
    key(Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmIsoCalc>());
    EXPECT_TRUE(frame.child<frmQCalcOut>()->isAncestorOf(QApplication::focusWidget()));
}

// Presses at places of the main window; what lies on top there gets them.
class MouseSession : public KeyboardSession {
 protected:
    static void press_at(QWidget* control, const QPoint& place) {
        QWidget* window = control->window();
        const QPoint at = control->mapTo(window, place);
        ASSERT_TRUE(window->rect().contains(at)) << control->objectName().toStdString();
        QTest::mouseClick(window->windowHandle(), Qt::LeftButton, {}, at);
        QApplication::processEvents();
    }
    static void press_on(QWidget* control) {
        ASSERT_TRUE(control && control->isVisible());
        press_at(control, control->rect().center());
    }
    void press_button(const QWidget* window, const char* name) { press_on(in<QWidget>(window, name)); }
    void press_entry(const char* menu_name, const char* entry) {
        QMenuBar* bar = frame.menuBar();
        press_at(bar, bar->actionGeometry(menu(menu_name)).center());
        auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(popup) << menu_name;
        press_at(popup, popup->actionGeometry(menu(entry)).center());
    }
};

TEST_F(MouseSession, FromTheStartPageToAResultAndATank) {
    press_on(QApplication::focusWidget());  // the first row of the start page
    auto* substances = frame.child<frmQStoffWahl>();
    ASSERT_TRUE(substances);
    press_on(substances->NameCombo);
    type("propan");
    press_button(substances, "StoffOK");
    EXPECT_EQ(session().substance().StoffName, "Propane");
    press_button(frame.child<frmQModell>(), "cmdOKModell");

    press_entry("mnuCalcMain", "mnuCalc_0");
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    const char* const values[] = {"300", "100"};
    for (int i = 0; i < 2; ++i) {
        press_on(input->par[i]);
        type(values[i]);
    }
    press_on(input->cmdParameter_OK);
    ASSERT_TRUE(frame.child<frmQCalcOut>());
    EXPECT_THAT(state(), HasSubstr("two phases"));
    // Tabs and the closing button of the result are not covered by the input.
    auto* result = frame.child<frmQCalcOut>();
    QTabBar* tabs = result->tabs->tabBar();
    press_at(tabs, tabs->tabRect(1).center());
    EXPECT_EQ(result->tabs->currentIndex(), 1);
    press_on(result->cmdCalc_OK);
    EXPECT_FALSE(frame.child<frmQCalcOut>());

    press_on(in<QToolButton>(&frame, "Toolbar1_15"));
    ASSERT_TRUE(frame.child<frmParinput>());
}

}  // namespace
}  // namespace quom
