#include "ui/widgets/stale_line.h"

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"

namespace quom {

namespace {

constexpr int Bar = 4, Margin = 6, Icon = 20, Least = 32;
constexpr double Greyed = 0.45;

}  // namespace

StaleLine::StaleLine(std::vector<QWidget*> shown, QWidget* parent)
    : QWidget(parent), shown_(std::move(shown)) {
    setObjectName(QStringLiteral("StaleLine"));
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    hide();
}

void StaleLine::show_reason(const QString& reason) {
    if (reason == reason_) return;
    reason_ = reason;
    setAccessibleName(reason.isEmpty() ? QString() : QStringLiteral("not up to date: ") + reason);
    setVisible(!reason.isEmpty());
    for (QWidget* widget : shown_) {
        if (reason.isEmpty()) {
            widget->setGraphicsEffect(nullptr);
            continue;
        }
        auto* grey = new QGraphicsOpacityEffect(widget);
        grey->setOpacity(Greyed);
        widget->setGraphicsEffect(grey);
    }
    updateGeometry();
    update();
    if (reason.isEmpty() || !isVisible()) return;
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QRect StaleLine::text_rect(int width) const {
    const int left = Bar + Margin + Icon + Margin;
    const int wide = std::max(80, width - left - Margin);
    return fontMetrics().boundingRect(QRect(left, Margin, wide, 1000),
                                      static_cast<int>(Qt::AlignLeft | Qt::TextWordWrap), accessibleName());
}

int StaleLine::heightForWidth(int width) const {
    return std::max(Least, text_rect(width).height() + 2 * Margin);
}

QSize StaleLine::sizeHint() const { return {240, heightForWidth(std::max(width(), 240))}; }

void StaleLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), look_colour(LookColour::WarningGround));
    painter.fillRect(QRect(0, 0, Bar, height()), look_colour(LookColour::WarningIcon));
    svg_icon(QStringLiteral("message-warning"))
        .paint(&painter, QRect(Bar + Margin, (height() - Icon) / 2, Icon, Icon));
    painter.setPen(palette().color(QPalette::Text));
    const int left = Bar + Margin + Icon + Margin;
    painter.drawText(QRect(left, 0, width() - left - Margin, height()),
                     static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap), accessibleName());
}

}  // namespace quom
