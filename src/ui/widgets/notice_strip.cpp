#include "ui/widgets/notice_strip.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"

namespace quom {

NoticeStrip::NoticeStrip(QWidget* parent) : QFrame(parent), text_(new QLabel(this)) {
    constexpr int IconSize = 20;
    auto* icon = new QLabel(this);
    icon->setPixmap(svg_icon(QStringLiteral("message-warning")).pixmap(IconSize, IconSize));
    text_->setTextFormat(Qt::PlainText);
    text_->setWordWrap(true);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(10, 6, 10, 6);
    layout->addWidget(icon, 0, Qt::AlignVCenter);
    layout->addWidget(text_, 1);
    QFrame::hide();
}

QString NoticeStrip::text() const { return text_->text(); }

void NoticeStrip::show_text(const QString& text) {
    if (text == text_->text()) return;
    text_->setText(text);
    setAccessibleName(text);
    setVisible(!text.isEmpty());
    if (text.isEmpty()) return;
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void NoticeStrip::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), look_colour(LookColour::WarningGround));
}

}  // namespace quom
