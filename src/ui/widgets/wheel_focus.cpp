#include "ui/widgets/wheel_focus.h"

#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QScrollBar>
#include <QTabBar>

namespace quom {

namespace {

bool turns_by_wheel(const QWidget* widget) {
    if (qobject_cast<const QScrollBar*>(widget)) return false;
    return qobject_cast<const QComboBox*>(widget) || qobject_cast<const QAbstractSpinBox*>(widget) ||
           qobject_cast<const QAbstractSlider*>(widget) || qobject_cast<const QTabBar*>(widget);
}

// The control that a wheel over the widget would turn: itself, or the one that it is a part of. The list that
// drops down from a box is a window of its own.
QWidget* turned_control(QWidget* widget) {
    for (; widget; widget = widget->parentWidget()) {
        if (turns_by_wheel(widget)) return widget;
        if (widget->isWindow()) return nullptr;
    }
    return nullptr;
}

bool has_focus(const QWidget* control) {
    const QWidget* focus = QApplication::focusWidget();
    return focus && (focus == control || control->isAncestorOf(focus));
}

}  // namespace

WheelFocus::WheelFocus(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

bool WheelFocus::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Polish) {
        // By itself a box takes the focus when a wheel turns over it.
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget && widget->focusPolicy() == Qt::WheelFocus && turns_by_wheel(widget))
            widget->setFocusPolicy(Qt::StrongFocus);
        return false;
    }
    if (event->type() != QEvent::Wheel || !watched->isWidgetType()) return false;
    const QWidget* control = turned_control(static_cast<QWidget*>(watched));
    if (!control || has_focus(control)) return false;
    event->ignore();  // what the control lies in has it next
    return true;
}

}  // namespace quom
