#include "ui/widgets/choice_box.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace quom {

namespace {

// Keys that look through the entries, or say what becomes of the one that is shown.
bool stays_in_box(const QKeyEvent& key) {
    const bool up_or_down = key.key() == Qt::Key_Up || key.key() == Qt::Key_Down;
    if (key.key() == Qt::Key_F4 || (up_or_down && key.modifiers() == Qt::AltModifier))
        return true;  // the list
    if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return false;
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_Escape:
            return true;
        default:
            return !key.text().isEmpty();  // letters find an entry; Enter and Tab have their own ways
    }
}

bool is_modifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr;
}

}  // namespace

ChoiceBox::ChoiceBox(QWidget* parent) : QComboBox(parent) {
    connect(this, &QComboBox::currentIndexChanged, this, [this] {
        if (looking_)
            emit shown();
        else
            take();
    });
    // The entry clicked may be the one that is shown already.
    connect(this, &QComboBox::activated, this, [this] {
        if (!looking_) take();
    });
}

void ChoiceBox::show_taken(int index) {
    {
        const QSignalBlocker quiet(this);
        setCurrentIndex(index);
    }
    taken_ = currentIndex();
}

void ChoiceBox::take(bool left) {
    if (!passing()) return;
    taken_ = currentIndex();
    emit chosen(taken_, left);
}

// A command by its keys acts on what the window shows.
bool ChoiceBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (!stays_in_box(*key) && !is_modifier(key->key())) take(true);
    }
    return QComboBox::event(event);
}

void ChoiceBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (passing() && enter) {
        take();
        return;
    }
    if (passing() && event->key() == Qt::Key_Escape) {
        show_taken(taken_);
        emit shown();
        return;
    }
    const QScopedValueRollback looking(looking_, true);
    QComboBox::keyPressEvent(event);
}

void ChoiceBox::wheelEvent(QWheelEvent* event) {
    const QScopedValueRollback looking(looking_, true);
    QComboBox::wheelEvent(event);
}

// Neither its own list nor another program takes the focus away for good; a menu does.
void ChoiceBox::focusOutEvent(QFocusEvent* event) {
    QComboBox::focusOutEvent(event);
    const QWidget* popup = QApplication::activePopupWidget();
    const bool own_list = event->reason() == Qt::PopupFocusReason && popup && popup == view()->window();
    if (!own_list && event->reason() != Qt::ActiveWindowFocusReason) take(true);
}

}  // namespace quom
