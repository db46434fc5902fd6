#include "ui/windows/input_window.h"

#include <QCloseEvent>
#include <QMdiSubWindow>
#include <QPushButton>
#include <algorithm>
#include <utility>

namespace quom {

void InputWindow::leave_by(QPushButton* button) {
    connect(button, &QPushButton::clicked, this, &InputWindow::leave);
}

void InputWindow::leave() {
    if (std::exchange(done_, true)) return;
    emit left();
    close();
}

void InputWindow::closeEvent(QCloseEvent* event) {
    leave();
    QWidget::closeEvent(event);
}

bool InputWindow::event(QEvent* event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) fit_frame();
    return handled;
}

// The frame follows the size hint: a box or a line more and nothing is cut off; it stays whole in the area.
void InputWindow::fit_frame() {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!frame || !isVisible() || frame->isMinimized() || frame->isMaximized() || frame->isShaded()) return;
    // The hint counts what its groups have not told yet.
    for (const QWidget* group : findChildren<QWidget*>())
        if (QLayout* inner = group->layout()) inner->activate();
    const QSize wanted = sizeHint().expandedTo(minimumSize()).grownBy(frame->contentsMargins());
    if (frame->minimumSize() == frame->maximumSize())
        frame->setFixedSize(wanted);
    else
        frame->resize(wanted.expandedTo(frame->size()));
    if (const QWidget* area = frame->parentWidget()) {
        const int below = frame->geometry().bottom() + 1 - area->height();
        if (below > 0) frame->move(frame->x(), std::max(0, frame->y() - below));
    }
}

}  // namespace quom
