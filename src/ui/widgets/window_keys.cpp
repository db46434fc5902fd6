#include "ui/widgets/window_keys.h"

#include <QKeyEvent>
#include <QPushButton>

namespace quom {

namespace {

QPushButton* find_button(const QWidget* window, bool (*wanted)(const QPushButton&)) {
    for (QPushButton* button : window->findChildren<QPushButton*>())
        if (button->isVisibleTo(window) && button->isEnabled() && wanted(*button)) return button;
    return nullptr;
}

}  // namespace

WindowKeys::WindowKeys(QWidget* window) : QObject(window) { window->installEventFilter(this); }

// Only keys that the control in focus has left arrive here.
bool WindowKeys::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto* window = static_cast<QWidget*>(watched);
    const int key = static_cast<QKeyEvent*>(event)->key();
    QPushButton* button = nullptr;
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        button = qobject_cast<QPushButton*>(window->focusWidget());
        if (!button) button = find_button(window, [](const QPushButton& b) { return b.isDefault(); });
    } else if (key == Qt::Key_Escape) {
        button = find_button(window,
                             [](const QPushButton& b) { return b.text().contains(QStringLiteral("<Esc>")); });
    }
    if (!button) return false;
    button->click();
    return true;
}

}  // namespace quom
