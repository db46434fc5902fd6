#include "ui/windows/frmPhantom.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>

#include "ui/look/look.h"
#include "ui/look/svg_icons.h"

namespace quom {

frmPhantom::frmPhantom() : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmPhantom"));
    setFixedSize(440, 150);
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        move(screen->availableGeometry().center() - rect().center());
}

void frmPhantom::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(look_colour(LookColour::ListFrame));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    svg_icon(QStringLiteral("app")).paint(&painter, QRect(24, 39, 72, 72));
    painter.setPen(palette().color(QPalette::WindowText));
    QFont font = head_font();
    font.setPointSizeF(font.pointSizeF() * 2);
    painter.setFont(font);
    painter.drawText(QRect(120, 30, 300, 40), Qt::AlignLeft | Qt::AlignVCenter, QStringLiteral("QUOM-6"));
    painter.setFont(this->font());
    painter.drawText(
        QRect(120, 74, 300, 50), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
        QStringLiteral("Thermodynamic Calculations of States and Processes for Pure Substances"));
}

}  // namespace quom
