#include "ui/main/traffic_lights.h"

#include <QPainter>
#include <algorithm>

#include "session/data_diagnosis.h"
#include "ui/look/look.h"

namespace quom {

TrafficLights::TrafficLights(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(QStringLiteral(" \"Traffic lights\" green - yellow - orange - red   "));
    SetzeAmpel(0);
}

void TrafficLights::SetzeAmpel(int level) {
    level_ = level;
    const AmpelColour colour = ampel_colour(level);
    setAccessibleName(colour.given
                          ? QStringLiteral("Traffic lights: %1, level %2 of 4").arg(colour.word).arg(level)
                          : QStringLiteral("Traffic lights: no substance"));
    update();
}

QColor TrafficLights::colour() const {
    const AmpelColour colour = ampel_colour(level_);
    return colour.given ? QColor(colour.red, colour.green, colour.blue) : palette().color(QPalette::Button);
}

QSize TrafficLights::sizeHint() const {
    return {38 + fontMetrics().horizontalAdvance(QStringLiteral("orange")) + 10,
            std::max(24, fontMetrics().height() + 6)};
}

void TrafficLights::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const AmpelColour word = ampel_colour(level_);
    painter.setPen(word.given ? QColor(Qt::black) : look_colour(LookColour::GroupFrame));
    painter.setBrush(colour());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    if (!word.given) return;
    for (int bar = 0; bar < 4; ++bar) {
        painter.setBrush(bar < 5 - level_ ? QBrush(Qt::black) : QBrush(Qt::NoBrush));
        painter.drawRect(QRectF(7.5 + bar * 7, (height() - 12) / 2 + 0.5, 4, 11));
    }
    painter.drawText(rect().adjusted(38, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft,
                     QString::fromLatin1(word.word));
}

}  // namespace quom
