#include "ui/charts/state_chart_parts.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/charts/sheet_style.h"

namespace quom {
namespace {

constexpr double key_width = 33, key_gap = 7;           // of the legend
constexpr double least_between = 14, most_pitch = 194;  // of its entries
constexpr double legend_margin = 10;
constexpr double cross_arm = 12, box_off = 14, box_inset = 6;
constexpr double ring = 15, ring_width = 1.8, ring_point = 5;
constexpr double halo = 2;  // sheet around points

}  // namespace

QColor chart_color(std::uint32_t rgb, int alpha) {
    QColor color = QColor::fromRgb(static_cast<QRgb>(rgb));
    color.setAlpha(alpha);
    return color;
}

QFont chart_font(double points, bool bold) {
    return sheet_font({.size = static_cast<float>(points), .bold = bold});
}

QPen chart_pen(const LineStyle& style, bool black) {
    QPen pen(chart_color(black ? style.black : style.light), style.width, Qt::SolidLine, Qt::FlatCap,
             Qt::RoundJoin);
    QVector<qreal> pattern;
    for (const double length : style.dashes()) pattern << length / style.width;
    if (!pattern.isEmpty()) pen.setDashPattern(pattern);
    return pen;
}

void ChartLegendRow::set(std::vector<Entry> entries, const QFont& font, const QColor& ink) {
    entries_ = std::move(entries);
    font_ = font;
    ink_ = ink;
}

double ChartLegendRow::entry_width(const Entry& entry) const {
    return key_width + key_gap + std::ceil(QFontMetricsF(font_).horizontalAdvance(entry.text)) + 1;
}

double ChartLegendRow::row_height() const { return QFontMetricsF(font_).height() + 2; }

void ChartLegendRow::update(UpdatePhase phase) {
    QCPLayoutElement::update(phase);
    if (phase != upPreparation) return;
    const double room = mParentPlot->viewport().width() - 2 * legend_margin;
    row_ends_.clear();
    double widest = 0;
    for (const Entry& entry : entries_) widest = std::max(widest, entry_width(entry));
    const auto count = static_cast<double>(entries_.size());
    const double pitch = std::min(most_pitch, room / std::max(1.0, count));
    pitch_ = pitch >= widest + least_between ? pitch : 0;
    double used = 0;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const double width = pitch_ > 0 ? pitch_ : entry_width(entries_[i]) + least_between;
        if (used > 0 && used + width > room + least_between) {
            row_ends_.push_back(i);
            used = 0;
        }
        used += width;
    }
    if (!entries_.empty()) row_ends_.push_back(entries_.size());
}

QSize ChartLegendRow::minimumOuterSizeHint() const {
    const double height = static_cast<double>(row_ends_.size()) * row_height();
    return {0, static_cast<int>(std::ceil(height)) + 6};
}

QSize ChartLegendRow::maximumOuterSizeHint() const {
    return {QWIDGETSIZE_MAX, minimumOuterSizeHint().height()};
}

std::vector<QRectF> ChartLegendRow::boxes() const {
    std::vector<QRectF> boxes;
    const QRectF place = outerRect();
    std::size_t begin = 0;
    for (std::size_t row = 0; row < row_ends_.size(); ++row) {
        const auto width_of = [&](std::size_t i) {
            return pitch_ > 0 ? pitch_ : entry_width(entries_[i]) + least_between;
        };
        double length = -least_between;
        for (std::size_t i = begin; i < row_ends_[row]; ++i) length += width_of(i);
        // Equal columns end with the blank of the last entry, which does not count.
        if (pitch_ > 0) length += least_between - (pitch_ - entry_width(entries_[row_ends_[row] - 1]));
        double x = mParentPlot->viewport().center().x() - length / 2;
        const double y = place.top() + static_cast<double>(row) * row_height();
        for (std::size_t i = begin; i < row_ends_[row]; ++i) {
            boxes.emplace_back(x, y, entry_width(entries_[i]), row_height());
            x += width_of(i);
        }
        begin = row_ends_[row];
    }
    return boxes;
}

void ChartLegendRow::draw(QCPPainter* painter) {
    painter->setAntialiasing(true);
    painter->setFont(font_);
    const std::vector<QRectF> places = boxes();
    for (std::size_t i = 0; i < places.size(); ++i) {
        const QRectF& box = places[i];
        painter->setPen(entries_[i].pen);
        painter->drawLine(QLineF(box.left(), box.center().y(), box.left() + key_width, box.center().y()));
        painter->setPen(QPen(ink_));
        painter->drawText(box.adjusted(key_width + key_gap, 0, 0, 0),
                          static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip,
                          entries_[i].text);
    }
}

ChartInk::ChartInk(QCustomPlot& plot, const QString& layer) : QCPLayerable(&plot, layer) {}

void ChartInk::applyDefaultAntialiasingHint(QCPPainter* painter) const { painter->setAntialiasing(true); }

void ChartInk::draw_label(QCPPainter& painter, const Label& label) const {
    const LabelBox& box = label.place.box;
    painter.save();
    painter.translate(corner + QPointF(box.centre.x, box.centre.y));
    painter.rotate(box.angle);
    const QRectF at(-box.width / 2, -box.height / 2, box.width, box.height);
    if (!label.place.beside) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(ground);
        painter.drawRect(at);
    }
    painter.setPen(QPen(label.color));
    painter.drawText(at, static_cast<int>(Qt::AlignCenter) | Qt::TextDontClip,
                     QString::fromStdString(label.place.text));
    painter.restore();
}

void ChartInk::draw(QCPPainter* painter) {
    painter->setFont(font);
    for (const Label& label : labels) draw_label(*painter, label);
    const auto disc = [&](const QPointF& at, double size, const QColor& color) {
        painter->setPen(Qt::NoPen);
        painter->setBrush(color);
        painter->drawEllipse(corner + at, size / 2, size / 2);
    };
    for (const QPointF& at : critical) disc(at, critical_point_size, ink);
    for (const QPointF& at : marked) {
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(ground, ring_width + 2 * halo));
        painter->drawEllipse(corner + at, ring / 2, ring / 2);
        painter->setPen(QPen(ink, ring_width));
        painter->drawEllipse(corner + at, ring / 2, ring / 2);
        disc(at, ring_point + 2 * halo, ground);
        disc(at, ring_point, ink);
    }
}

ChartReadOut::ChartReadOut(QCustomPlot& plot, const QString& layer) : QCPLayerable(&plot, layer) {}

void ChartReadOut::applyDefaultAntialiasingHint(QCPPainter* painter) const { painter->setAntialiasing(true); }

void ChartReadOut::show(const QPointF& pixel, QStringList text) {
    at = pixel;
    lines = std::move(text);
}

QRectF ChartReadOut::box() const {
    if (lines.isEmpty()) return {};
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
    const QSizeF size(std::ceil(width) + 2 * box_inset + 2,
                      static_cast<double>(lines.size()) * metrics.height() + 2 * box_inset - 2);
    const QRectF area = mParentPlot->axisRect()->rect();
    // Above and to the right, on the other side where there is no room.
    double left = at.x() + box_off, top = at.y() - box_off - size.height();
    if (left + size.width() > area.right() - 2) left = at.x() - box_off - size.width();
    if (top < area.top() + 2) top = at.y() + box_off;
    left = std::clamp(left, area.left() + 2, std::max(area.left() + 2, area.right() - size.width() - 2));
    top = std::clamp(top, area.top() + 2, std::max(area.top() + 2, area.bottom() - size.height() - 2));
    return {QPointF(left, top), size};
}

void ChartReadOut::draw(QCPPainter* painter) {
    if (lines.isEmpty()) return;
    const QRectF where = box();
    for (const bool under : {true, false}) {
        painter->setPen(under ? QPen(ground, 4.5) : QPen(ink, 1.5));
        painter->drawLine(QLineF(at.x() - cross_arm, at.y(), at.x() + cross_arm, at.y()));
        painter->drawLine(QLineF(at.x(), at.y() - cross_arm, at.x(), at.y() + cross_arm));
    }
    painter->setPen(QPen(ink, 1));
    painter->setBrush(ground);
    painter->drawRect(where);
    painter->setFont(font);
    const double height = QFontMetricsF(font).height();
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF row(where.left() + box_inset,
                         where.top() + box_inset - 1 + static_cast<double>(i) * height, where.width(),
                         height);
        painter->drawText(row, static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip,
                          lines[i]);
    }
}

}  // namespace quom
