#include "ui/main/status_panel.h"

#include <QPainter>

#include "ui/look/look.h"

namespace quom {

StatusPanel::StatusPanel(bool line_before, QWidget* parent) : QLabel(parent), line_before_(line_before) {
    setTextFormat(Qt::PlainText);
}

void StatusPanel::show_text(const std::string& text) {
    setText(QString::fromStdString(text));
    setToolTip(this->text().trimmed());
}

QSize StatusPanel::minimumSizeHint() const { return {40, fontMetrics().height() + 6}; }

void StatusPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (line_before_) {
        painter.setPen(look_colour(LookColour::ListFrame));
        painter.drawLine(0, 2, 0, height() - 3);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect text_rect = rect().adjusted(12, 0, -6, 0);
    painter.drawText(text_rect, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text().trimmed(), Qt::ElideRight, text_rect.width()));
}

}  // namespace quom
