#include "ui/widgets/number_box.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QValidator>

#include "base/number_text.h"
#include "forms/refusal.h"
#include "ui/look/look.h"

namespace quom {

namespace {

bool is_key_of_number(QChar c) { return QStringLiteral("0123456789Ee-.,").contains(c); }

// Makes one form of what may stand for the same: a comma is a point, the minus of printed texts a "-", every
// kind of blank a blank; none is kept at the ends. It drops nothing of a number: a text that is none stays
// one that is none.
class NumberText : public QValidator {
 public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override {
        for (QChar& c : text) {
            if (c == QLatin1Char(',')) c = QLatin1Char('.');
            if (c == QChar(0x2212)) c = QLatin1Char('-');
            if (c.isSpace() || c.category() == QChar::Other_Control) c = QLatin1Char(' ');
        }
        const QString kept = text.trimmed();
        if (kept.size() != text.size()) {
            int before = 0;
            while (before < text.size() && text[before] == QLatin1Char(' ')) ++before;
            cursor = qBound(0, cursor - before, static_cast<int>(kept.size()));
            text = kept;
        }
        return Acceptable;
    }
};

// The window of a box within the main window, or its dialog.
const QWidget* form_of(const QWidget* box) {
    const QWidget* form = box;
    while (!form->isWindow() && form->parentWidget() && !form->parentWidget()->inherits("QMdiSubWindow"))
        form = form->parentWidget();
    return form;
}

}  // namespace

NumberBox::NumberBox(int digits, QWidget* parent) : QLineEdit(parent), digits_(digits) {
    setValidator(new NumberText(this));
    setAlignment(Qt::AlignRight);
    setTextMargins(4, 0, 4, 0);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textEdited, this, &NumberBox::convert_pasted);
    connect(this, &QLineEdit::textChanged, this, &NumberBox::take_back_refusal);
}

void NumberBox::set_value(double value) { setText(QString::fromStdString(genNum(value))); }

void NumberBox::set_unit(std::optional<Quantity> quantity, const InputUnit& unit, double M) {
    quantity_ = quantity;
    unit_ = unit;
    M_ = M;
}

void NumberBox::set_unit(Quantity quantity, std::string_view unit, double M) {
    const std::vector<InputUnit> units = input_units(quantity, unit, M);
    set_unit(units.empty() ? std::nullopt : std::optional(quantity),
             units.empty() ? InputUnit{} : units.front(), M);
}

void NumberBox::convert_pasted() {
    if (!quantity_ || box_number(typed())) return;
    if (const auto number = text_without_unit(typed(), *quantity_, unit_, M_))
        setText(QString::fromStdString(*number));
}

void NumberBox::press_on_enter(QAbstractButton* button) {
    if (button)
        enter_ = [button] { button->click(); };
    else
        enter_ = nullptr;
}

// To the next number box of the window that can be typed in; without one, to whatever comes next.
void NumberBox::go_on() {
    const QWidget* form = form_of(this);
    for (QWidget* at = nextInFocusChain(); at && at != this; at = at->nextInFocusChain()) {
        auto* box = qobject_cast<NumberBox*>(at);
        if (!box || !form->isAncestorOf(box) || !box->isVisible() || !box->isEnabled()) continue;
        return box->setFocus(Qt::TabFocusReason);
    }
    focusNextChild();
}

void NumberBox::refuse(const std::string& rule) {
    for (NumberBox* box : form_of(this)->findChildren<NumberBox*>())
        if (box != this) box->take_back_refusal();
    set_rule(QString::fromStdString(rule));
    setFocus();
    selectAll();
}

void NumberBox::take_back_refusal() { set_rule({}); }

void NumberBox::set_rule(const QString& rule) {
    if (rule == rule_) return;
    if (rule_.isEmpty()) {
        description_ = accessibleDescription();
        tool_tip_ = toolTip();
    }
    rule_ = rule;
    setAccessibleDescription(refused() ? rule_ : description_);
    setToolTip(refused() ? QString::fromStdString(no_valid_input().text) : tool_tip_);
    setProperty("invalid", refused());
    update();
    emit refusal_changed(rule_);
}

QSize NumberBox::sizeHint() const {
    return {text_width(*this, digits_) + 24, QLineEdit::sizeHint().height()};
}

void NumberBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        if (const auto enter = enter_)
            enter();
        else
            go_on();
        return;
    }
    const bool modifier_alone = event->key() == Qt::Key_Shift || event->key() == Qt::Key_Control ||
                                event->key() == Qt::Key_Alt || event->key() == Qt::Key_AltGr ||
                                event->key() == Qt::Key_Meta;
    if (!modifier_alone) take_back_refusal();
    const QString typed = event->text();
    const bool command = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    if (!command && !typed.isEmpty() && typed[0].isPrint() && !is_key_of_number(typed[0])) {
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void NumberBox::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) selectAll();
}

void NumberBox::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (!refused()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(look_colour(LookColour::ErrorText), 2));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2.5, 2.5);
}

}  // namespace quom
