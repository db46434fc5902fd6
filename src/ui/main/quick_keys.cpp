#include "ui/main/quick_keys.h"

#include <QAbstractButton>
#include <QAction>
#include <QMdiSubWindow>

#include "ui/main/mdiQUOM.h"
#include "ui/main/mdi_area.h"
#include "ui/main/mdi_menus.h"
#include "ui/main/window_table.h"

namespace quom {

namespace {

QWidget* window_in_front(const mdiQUOM& frame) {
    const QMdiSubWindow* sub = frame.area->activeSubWindow();
    return sub && !sub->isHidden() ? sub->widget() : nullptr;
}

// A button of a child that is shown and on.
QAbstractButton* button_of(const QWidget* window, const char* name) {
    if (!window || !window->isVisible()) return nullptr;
    auto* button = window->findChild<QAbstractButton*>(QLatin1String(name));
    return button && button->isVisible() && button->isEnabled() ? button : nullptr;
}

void add_key(mdiQUOM& frame, const char* name, const char* text, const QKeySequence& key,
             void (*run)(mdiQUOM&)) {
    auto* action = new QAction(QLatin1String(text), &frame);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    QObject::connect(action, &QAction::triggered, &frame, [&frame, run] { run(frame); });
    frame.addAction(action);
}

}  // namespace

void calculate_now(mdiQUOM& frame) {
    QAbstractButton* button = button_of(frame.child("frmQCalcOut"), "cmdCalculateAgain");
    QWidget* front = window_in_front(frame);
    if (!button && front && front->objectName() == QStringLiteral("frmIsoCalc"))
        button = button_of(front, "cmdCalc");
    if (!button) button = button_of(frame.child("frmParinput"), "cmdParameter_OK");
    if (button) button->click();
}

void help_in_front(mdiQUOM& frame) {
    const QWidget* front = window_in_front(frame);
    frame.show_help(window_row(front ? front->objectName() : frame.objectName()).help);
}

void add_quick_keys(mdiQUOM& frame, const mdiMenus& menus) {
    menus.action(QStringLiteral("mnuData_OpenBank_0"))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_O));
    menus.action(QStringLiteral("mnuOptions"))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Comma));
    add_key(frame, "keyFind", "Find", QKeySequence(Qt::CTRL | Qt::Key_K),
            [](mdiQUOM& f) { f.toggle_palette(); });
    add_key(frame, "keyCalculate", "Calculate", QKeySequence(Qt::Key_F5), calculate_now);
    add_key(frame, "keyHelp", "Help on the window in front", QKeySequence(Qt::Key_F1), help_in_front);
}

}  // namespace quom
