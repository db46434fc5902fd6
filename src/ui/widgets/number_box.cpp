#include "ui/widgets/number_box.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QValidator>

#include "base/number_text.h"
#include "ui/look/look.h"

namespace quom {

namespace {

// Drops every character that is none of a number, typed or pasted.
class NumberFilter : public QValidator {
 public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override {
        QString kept;
        int at = cursor;
        for (int i = 0; i < text.size(); ++i) {
            const QChar c = text[i] == QLatin1Char(',') ? QLatin1Char('.') : text[i];
            if (QStringLiteral("0123456789Ee-.").contains(c))
                kept += c;
            else if (i < cursor)
                --at;
        }
        text = kept;
        cursor = at;
        return Acceptable;
    }
};

}  // namespace

NumberBox::NumberBox(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
    setValidator(new NumberFilter(this));
    setAlignment(Qt::AlignRight);
    setTextMargins(4, 0, 4, 0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

double NumberBox::value() const { return Val(text().toStdString()); }

void NumberBox::set_value(double value) { setText(QString::fromStdString(genNum(value))); }

QSize NumberBox::sizeHint() const {
    return {text_width(*this, digits_) + 24, QLineEdit::sizeHint().height()};
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (button_)
            button_->click();
        else
            focusNextChild();
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) selectAll();
}

}  // namespace quom
