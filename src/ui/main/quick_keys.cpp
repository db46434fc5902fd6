#include "ui/main/quick_keys.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>

#include <QKeyEvent>
#include <QLineEdit>
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

// Keys before they reach a window: a box keeps Ctrl+Z and Ctrl+Shift+Z for what was typed in it, with nothing
// typed they are those of the program; F1 opens the page of a modal window, where shortcuts of the main
// window do not reach.
class KeysFirst : public QObject {
 public:
    explicit KeysFirst(mdiQUOM& frame) : QObject(&frame), frame_(frame) {}
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress) return help_of_modal(watched, *static_cast<QKeyEvent*>(event));
        if (event->type() != QEvent::ShortcutOverride) return false;
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool undo = key->matches(QKeySequence::Undo), redo = key->matches(QKeySequence::Redo);
        if (!undo && !redo) return false;
        const auto* combo = qobject_cast<QComboBox*>(watched);
        const auto* box = combo ? combo->lineEdit() : qobject_cast<QLineEdit*>(watched);
        return box && !(undo ? box->isUndoAvailable() : box->isRedoAvailable());
    }

 private:
    bool help_of_modal(QObject* watched, const QKeyEvent& key) {
        if (key.key() != Qt::Key_F1 || key.modifiers() != Qt::NoModifier) return false;
        const QWidget* modal = QApplication::activeModalWidget();
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (!modal || !widget || widget->window() != modal) return false;
        const WindowRow& row = window_row(modal->objectName());
        if (row.name[0] != '\0') frame_.show_help(row.help);
        return row.name[0] != '\0';
    }
    mdiQUOM& frame_;
};

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
    menus.action(QStringLiteral("mnuUndo"))->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    menus.action(QStringLiteral("mnuRedo"))->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    QCoreApplication::instance()->installEventFilter(new KeysFirst(frame));
    add_key(frame, "keyFind", "Find", QKeySequence(Qt::CTRL | Qt::Key_K),
            [](mdiQUOM& f) { f.toggle_palette(); });
    add_key(frame, "keyCalculate", "Calculate", QKeySequence(Qt::Key_F5), calculate_now);
    add_key(frame, "keyHelp", "Help on the window in front", QKeySequence(Qt::Key_F1), help_in_front);
}

}  // namespace quom
