#include "ui/windows/schrift_edit.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTextCursor>

#include "diagrams/sheet_design.h"

namespace quom {

namespace {

constexpr int Lines = 4, Characters = 44;

std::string without_end(const QString& text) { return text_without_end(text.toStdString()); }

}  // namespace

SchriftEdit::SchriftEdit(QWidget* parent) : QPlainTextEdit(parent) {
    setTabChangesFocus(true);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { emit edited(toPlainText()); });
}

QSize SchriftEdit::sizeHint() const {
    return {fontMetrics().averageCharWidth() * Characters, fontMetrics().lineSpacing() * Lines + 12};
}

void SchriftEdit::show_text(const QString& text) {
    shown_ = text;
    if (toPlainText() == text || (hasFocus() && without_end(toPlainText()) == without_end(text))) return;
    const QSignalBlocker quiet(this);
    setPlainText(text);
    go_to_end();
}

void SchriftEdit::go_to_end() {
    QTextCursor at = textCursor();
    at.setPosition(static_cast<int>(QString::fromStdString(without_end(toPlainText())).size()));
    setTextCursor(at);
}

void SchriftEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QPlainTextEdit::keyPressEvent(event);
    if (event->modifiers() & Qt::ControlModifier)
        textCursor().insertBlock();
    else
        focusNextChild();
}

// The end mark is back when the text has been left.
void SchriftEdit::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason || toPlainText() == shown_) return;
    const QSignalBlocker quiet(this);
    setPlainText(shown_);
}

}  // namespace quom
