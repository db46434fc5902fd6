#include "ui/main/mdi_area.h"

#include <QEvent>
#include <QMdiSubWindow>
#include <QPainter>

#include "ui/look/look.h"

namespace quom {

MdiArea::MdiArea(QWidget* parent) : QMdiArea(parent) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setFrameShape(QFrame::NoFrame);
    setBackground(look_colour(LookColour::MdiGround));
}

void MdiArea::set_hint(const QString& hint) {
    hint_ = hint;
    setAccessibleDescription(hint);
    viewport()->update();
}

void MdiArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    for (const QMdiSubWindow* sub : subWindowList())
        if (!sub->isHidden()) return;
    if (hint_.isEmpty()) return;
    QPainter painter(viewport());
    QFont font = painter.font();
    font.setPointSizeF(font.pointSizeF() * 10.5 / 9.0);
    painter.setFont(font);
    painter.setPen(look_colour(LookColour::MdiHint));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, hint_);
}

void MdiArea::changeEvent(QEvent* event) {
    QMdiArea::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange) setBackground(look_colour(LookColour::MdiGround));
}

// A window that goes uncovers a part of the hint: it is painted anew as a whole.
bool MdiArea::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide || event->type() == QEvent::Show) viewport()->update();
    return QMdiArea::eventFilter(watched, event);
}

}  // namespace quom
