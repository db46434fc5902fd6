#include "ui/widgets/value_box.h"

#include <QEvent>
#include <algorithm>

#include "ui/look/look.h"

namespace quom {

ValueBox::ValueBox(QWidget* parent, int least_characters)
    : QLineEdit(parent), least_characters_(least_characters) {
    setReadOnly(true);
    setFrame(false);
    setFont(fixed_font());
    setTextMargins(8, 0, 8, 0);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    take_colours();
    connect(this, &QLineEdit::textChanged, this, [this] { updateGeometry(); });
}

void ValueBox::show_text(const QString& text, const QColor& on_light) {
    on_light_ = on_light;
    take_colours();
    setText(text);
    setCursorPosition(0);
}

void ValueBox::set_stale(bool stale) {
    stale_ = stale;
    take_colours();
}

QSize ValueBox::sizeHint() const {
    const int characters = std::max<int>(least_characters_, text().size() + 1);
    return {text_width(*this, characters) + 20, std::max(24, QLineEdit::sizeHint().height())};
}

QSize ValueBox::minimumSizeHint() const { return sizeHint(); }

void ValueBox::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) take_colours();
    if (event->type() == QEvent::FontChange) updateGeometry();
}

void ValueBox::take_colours() {
    QPalette palette;
    palette.setColor(QPalette::Base, look_colour(LookColour::ResultGround));
    palette.setColor(QPalette::Text, stale_ ? look_colour(LookColour::Hint) : shown_text_colour(on_light_));
    setPalette(palette);
}

}  // namespace quom
