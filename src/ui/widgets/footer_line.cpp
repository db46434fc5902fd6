#include "ui/widgets/footer_line.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

#include "ui/look/look.h"

namespace quom {

FooterLine::FooterLine(QWidget* parent) : QWidget(parent) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void FooterLine::show_text(const QString& text) {
    text_ = text;
    setToolTip(text);
    setAccessibleName(text);
    update();
}

QSize FooterLine::sizeHint() const { return {200, fontMetrics().height() + 4}; }

QSize FooterLine::minimumSizeHint() const { return {60, sizeHint().height()}; }

void FooterLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(look_colour(hasFocus() ? LookColour::Accent : LookColour::Hint));
    painter.drawText(rect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter),
                     fontMetrics().elidedText(text_, Qt::ElideRight, width()));
}

void FooterLine::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copy();
    QWidget::keyPressEvent(event);
}

void FooterLine::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(QStringLiteral("copy"), this, &FooterLine::copy);
    menu.exec(event->globalPos());
}

void FooterLine::copy() const { QApplication::clipboard()->setText(text_); }

}  // namespace quom
