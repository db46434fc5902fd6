#include "ui/main/focus_return.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMdiSubWindow>

#include "ui/main/mdi_area.h"

namespace quom {

FocusReturn::FocusReturn(MdiArea& area) : QObject(&area), area_(area) {}

void FocusReturn::opened(QMdiSubWindow* sub, QWidget* opener) {
    openers_[sub] = opener;
    sub->installEventFilter(this);
    connect(sub, &QObject::destroyed, this, [this](QObject* gone) { openers_.remove(gone); });
}

// In a window of the area that is shown.
bool FocusReturn::has_focus() const {
    const QMdiSubWindow* active = area_.activeSubWindow();
    return active && !active->isHidden() && active->isAncestorOf(QApplication::focusWidget());
}

bool FocusReturn::activate(QWidget* widget) {
    auto* sub = qobject_cast<QMdiSubWindow*>(widget);
    if (!sub || sub->isHidden() || !sub->widget() || !area_.subWindowList().contains(sub)) return false;
    area_.setActiveSubWindow(sub);
    if (has_focus()) return true;
    QWidget* control = sub->widget()->focusWidget();
    if (!control || !control->isEnabled() || !control->isVisibleTo(sub)) control = sub->widget();
    if (control == sub->widget())
        for (QWidget* next = control->nextInFocusChain(); next && next != control;
             next = next->nextInFocusChain())
            if (sub->isAncestorOf(next) && next->isEnabled() && next->isVisibleTo(sub) &&
                (next->focusPolicy() & Qt::TabFocus)) {
                control = next;
                break;
            }
    control->setFocus(Qt::ActiveWindowFocusReason);
    return true;
}

void FocusReturn::gone(QWidget* sub) {
    QPointer<QWidget> opener = openers_.value(sub);
    // What this window has opened goes back to its own opener now.
    for (auto& other : openers_)
        if (other == sub) other = opener;
    if (has_focus()) return;
    for (int step = 0; opener && step < 20; ++step, opener = openers_.value(opener))
        if (activate(opener)) return;
    const auto used = area_.subWindowList(QMdiArea::ActivationHistoryOrder);
    for (auto it = used.rbegin(); it != used.rend(); ++it)
        if (activate(*it)) return;
    area_.setFocus();
}

// Closed by its title bar: hidden once the event is through, if nobody has unloaded it.
bool FocusReturn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        QPointer<QWidget> sub = static_cast<QWidget*>(watched);
        QMetaObject::invokeMethod(
            this,
            [this, sub] {
                if (sub && sub->isHidden()) gone(sub);
            },
            Qt::QueuedConnection);
    }
    return false;
}

}  // namespace quom
