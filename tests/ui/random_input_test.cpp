// Random clicks, keys, choices, resizes and closings over all windows. Nothing may crash or hang;
// the run under the sanitizers also shows what leaks.
//
// QUOM_RANDOM_INPUT sets the number of actions (default 1500), QUOM_RANDOM_INPUT_SEED repeats a run by its
// printed seed.
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMdiSubWindow>
#include <QMenu>
#include <QRandomGenerator>
#include <QTimer>
#include <functional>
#include <iostream>
#include <random>

#include "ui/window_driver.h"

namespace quom {
namespace {

class RandomInput : public WindowDriver {
 protected:
    int pick(int n) { return n < 1 ? 0 : static_cast<int>(random() % static_cast<unsigned>(n)); }

    // The window that takes input now: an open menu, a modal window, a window of the area, or the frame.
    QWidget* front() {
        if (QWidget* popup = QApplication::activePopupWidget()) return popup;
        if (QWidget* modal = QApplication::activeModalWidget()) return modal;
        const auto windows = frame.findChildren<QMdiSubWindow*>();
        if (windows.empty() || pick(6) == 0) return &frame;
        return windows[pick(static_cast<int>(windows.size()))];
    }

    QWidget* some_control(QWidget* window) {
        QList<QWidget*> controls;
        for (QWidget* w : window->findChildren<QWidget*>()) {
            if (w->isVisible() && w->window() == window->window() && !w->size().isEmpty()) controls.append(w);
        }
        return controls.empty() ? window : controls[pick(static_cast<int>(controls.size()))];
    }

    void click(QWidget* w) {
        const QPoint at(pick(w->width()), pick(w->height()));
        const bool twice = pick(8) == 0;
        twice ? QTest::mouseDClick(w, Qt::LeftButton, {}, at) : QTest::mouseClick(w, Qt::LeftButton, {}, at);
    }

    void key(QWidget* w) {
        static constexpr Qt::Key keys[] = {
            Qt::Key_Return, Qt::Key_Escape,    Qt::Key_Tab,   Qt::Key_Backtab, Qt::Key_Space, Qt::Key_Down,
            Qt::Key_Up,     Qt::Key_Left,      Qt::Key_Right, Qt::Key_Delete,  Qt::Key_Home,  Qt::Key_End,
            Qt::Key_F1,     Qt::Key_0,         Qt::Key_9,     Qt::Key_Comma,   Qt::Key_Minus, Qt::Key_E,
            Qt::Key_P,      Qt::Key_Backspace, Qt::Key_Plus,  Qt::Key_F2};
        if (pick(25) == 0)
            return QTest::keyClick(w, Qt::Key_Z,
                                   pick(3) == 0 ? Qt::ControlModifier | Qt::ShiftModifier
                                                : Qt::KeyboardModifiers(Qt::ControlModifier));
        QTest::keyClick(w, keys[pick(std::size(keys))]);
    }

    void type(QWidget* w) {
        static const char* const texts[] = {"300",    "1E5",  "500",     "-1", "0",
                                            "1E-300", "9E99", "propane", "100"};
        QTest::keyClicks(w, QLatin1String(texts[pick(std::size(texts))]));
    }

    void trigger_some_action() {
        QList<QAction*> actions;
        for (QAction* a : frame.findChildren<QAction*>()) {
            if (a->isEnabled() && !a->menu() && !a->objectName().isEmpty()) actions.append(a);
        }
        if (pick(12) == 0) dialogs->files.push_back(folder.filePath(QStringLiteral("quom.q07")));
        if (pick(12) == 0) {
            static const char* const files[] = {"points.BAQ", "pairs.XY"};
            dialogs->files.push_back(folder.filePath(QLatin1String(files[pick(2)])));
        }
        if (pick(12) == 0) QApplication::clipboard()->setText(QStringLiteral("300\t1,5\n310\t2\n320\t2.5"));
        if (!actions.empty()) actions[pick(static_cast<int>(actions.size()))]->trigger();
    }

    void one_action() {
        if (!QApplication::activeModalWidget() && !QApplication::activePopupWidget() && pick(250) == 0) {
            dialogs->files.clear();
            return go_to_calculations();  // back to where most windows can open
        }
        QWidget* window = front();
        if (qobject_cast<QMenu*>(window) && pick(3) == 0) return QTest::keyClick(window, Qt::Key_Escape);
        if (QApplication::activeModalWidget() && pick(12) == 0) {
            return QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        }
        switch (pick(20)) {
            case 0:
                return void(window != &frame && window->close());
            case 1:
                return window->resize(80 + pick(1500), 60 + pick(1000));
            case 2:
            case 3:
                return QApplication::activeModalWidget() ? click(some_control(window))
                                                         : trigger_some_action();
            case 4: {
                auto* box = qobject_cast<QComboBox*>(some_control(window));
                return box ? box->setCurrentIndex(pick(box->count())) : key(some_control(window));
            }
            case 5:
            case 6:
                return type(some_control(window));
            case 7:
            case 8:
            case 9:
            case 10:
                return key(some_control(window));
            default:
                return click(some_control(window));
        }
    }

    std::mt19937 random;
};

TEST_F(RandomInput, LeavesTheProgramStanding) {
    const int wanted = qEnvironmentVariableIntValue("QUOM_RANDOM_INPUT") > 0
                           ? qEnvironmentVariableIntValue("QUOM_RANDOM_INPUT")
                           : 1500;
    const unsigned seed = qEnvironmentVariableIsSet("QUOM_RANDOM_INPUT_SEED")
                              ? qEnvironmentVariable("QUOM_RANDOM_INPUT_SEED").toUInt()
                              : QRandomGenerator::global()->generate();
    random.seed(seed);
    // Leaving the program would end the run, by a click in the menu too.
    QObject::disconnect(menu("mnuData_Exit"), &QAction::triggered, nullptr, nullptr);
    std::cout << "random input of " << wanted << " actions, seed " << seed << std::endl;
    go_to_calculations();

    // Each action asks for the next one before it is played, so that it goes on inside modal windows.
    QEventLoop loop;
    int done = 0;
    std::function<void()> tick = [&] {
        messages.asked.clear();
        if (done++ < wanted) {
            QTimer::singleShot(0, &loop, tick);
            return one_action();
        }
        QWidget* popup = QApplication::activePopupWidget();
        QWidget* modal = QApplication::activeModalWidget();
        if (!popup && !modal) return loop.quit();
        QTimer::singleShot(0, &loop, tick);
        popup ? popup->close() : modal->close();
    };
    QTimer::singleShot(0, &loop, tick);
    QTimer::singleShot(600000, &loop, [&loop] { loop.exit(1); });
    EXPECT_EQ(loop.exec(), 0) << "the run did not end, seed " << seed;
    EXPECT_GT(done, wanted) << "the run was left early, seed " << seed;
    EXPECT_TRUE(frame.isVisible() || frame.isMinimized()) << "seed " << seed;

    // What a user does next still works.
    messages.asked.clear();
    dialogs->files.clear();
    open_starter_database();
    EXPECT_EQ(session().database.StoffAnzahl(), 496) << "seed " << seed;
}

}  // namespace
}  // namespace quom
