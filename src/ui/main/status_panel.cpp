#include "ui/main/status_panel.h"

#include <QPainter>
#include <algorithm>
#include <vector>

#include "ui/look/look.h"

namespace quom {

namespace {

constexpr int Before = 12, Behind = 6;  // room before and behind the text

}  // namespace

StatusPanel::StatusPanel(bool line_before, QWidget* parent) : QLabel(parent), line_before_(line_before) {
    setTextFormat(Qt::PlainText);
}

void StatusPanel::show_text(const std::string& text) {
    setText(QString::fromStdString(text));
    setToolTip(this->text().trimmed());
    setAccessibleDescription(this->text().simplified());
}

QSize StatusPanel::minimumSizeHint() const { return {40, fontMetrics().height() + 6}; }

int StatusPanel::needed_width() const {
    return fontMetrics().horizontalAdvance(text().trimmed()) + Before + Behind + 1;
}

void share_width(std::span<StatusPanel* const> panels, int width) {
    std::vector<StatusPanel*> by_need(panels.begin(), panels.end());
    std::stable_sort(by_need.begin(), by_need.end(), [](const StatusPanel* a, const StatusPanel* b) {
        return a->needed_width() < b->needed_width();
    });
    int left = std::max(0, width), shares = static_cast<int>(by_need.size());
    for (StatusPanel* panel : by_need) {
        const int room =
            std::max(panel->minimumSizeHint().width(), std::min(panel->needed_width(), left / shares--));
        panel->setMinimumWidth(room);
        left = std::max(0, left - room);
    }
}

void StatusPanel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (line_before_) {
        painter.setPen(look_colour(LookColour::ListFrame));
        painter.drawLine(0, 2, 0, height() - 3);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const QRect text_rect = rect().adjusted(Before, 0, -Behind, 0);
    painter.drawText(text_rect, Qt::AlignVCenter | Qt::AlignLeft,
                     fontMetrics().elidedText(text().trimmed(), Qt::ElideRight, text_rect.width()));
}

}  // namespace quom
