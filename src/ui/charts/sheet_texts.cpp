#include "ui/charts/sheet_texts.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/charts/sheet_style.h"

namespace quom {
namespace {

constexpr double margin = 10;  // of texts to the edges of the picture

// Draws the lines into a box, each in the middle or at the left.
void draw_lines(QCPPainter& painter, const QStringList& lines, const QRectF& box, double line_height,
                Qt::Alignment alignment) {
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const QRectF line(box.left(), box.top() + static_cast<double>(i) * line_height, box.width(),
                          line_height);
        painter.drawText(line, static_cast<int>(alignment) | Qt::AlignVCenter | Qt::TextDontClip, lines[i]);
    }
}

QSizeF size_of(const QStringList& lines, const QFont& font) {
    const QFontMetricsF metrics(font);
    double width = 0;
    for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
    return {width, static_cast<double>(lines.size()) * metrics.height()};
}

// The lines of a free text, broken where they are wider than the picture.
QStringList lines_in(const QRectF& picture, const QStringList& lines, const QFont& font) {
    return wrapped(lines.join(QLatin1Char('\n')), font, std::max(picture.width() - 4, 20.0));
}

}  // namespace

SheetLine::SheetLine(QCustomPlot& plot, int gap, const QCPAxisRect* over)
    : QCPLayoutElement(&plot), gap_(gap), over_(over) {}

void SheetLine::set(const QString& text, const QFont& font, const QColor& color, TextTurn turn,
                    Qt::Alignment alignment) {
    text_ = text;
    font_ = font;
    color_ = color;
    turn_ = turn;
    alignment_ = alignment;
}

double SheetLine::line_height() const { return QFontMetricsF(font_).height(); }

QSizeF SheetLine::text_size() const { return lines_.isEmpty() ? QSizeF(0, 0) : size_of(lines_, font_); }

void SheetLine::update(UpdatePhase phase) {
    QCPLayoutElement::update(phase);
    if (phase != upPreparation) return;
    const QRectF picture = mParentPlot->viewport();
    const double length = turn_ == TextTurn::horizontal ? picture.width() : 0.8 * picture.height();
    lines_.clear();
    if (!text_.trimmed().isEmpty()) lines_ = wrapped(text_, font_, std::max(length - 2 * margin, 20.0));
}

QSize SheetLine::minimumOuterSizeHint() const {
    if (lines_.isEmpty()) return {0, 0};
    const int across = static_cast<int>(std::ceil(text_size().height())) + gap_;
    return turn_ == TextTurn::horizontal ? QSize(0, across) : QSize(across, 0);
}

QSize SheetLine::maximumOuterSizeHint() const {
    const QSize least = minimumOuterSizeHint();
    return turn_ == TextTurn::horizontal ? QSize(QWIDGETSIZE_MAX, least.height())
                                         : QSize(least.width(), QWIDGETSIZE_MAX);
}

QRectF SheetLine::text_box() const {
    if (lines_.isEmpty()) return {};
    const QRectF place = outerRect(), picture = mParentPlot->viewport();
    const QRectF under = over_ ? QRectF(over_->rect()) : picture;
    QSizeF size = text_size();
    if (turn_ != TextTurn::horizontal) {
        size.transpose();
        const double top = under.center().y() - size.height() / 2;
        return {
            QPointF(place.left(), std::clamp(top, 2.0, std::max(2.0, picture.bottom() - size.height() - 2))),
            size};
    }
    double left = under.center().x() - size.width() / 2;
    if (alignment_ & Qt::AlignLeft) left = margin;
    return {QPointF(std::clamp(left, margin, std::max(margin, picture.right() - size.width() - margin)),
                    place.top()),
            size};
}

void SheetLine::draw(QCPPainter* painter) {
    if (lines_.isEmpty()) return;
    const QRectF box = text_box();
    painter->setFont(font_);
    painter->setPen(QPen(color_));
    if (turn_ == TextTurn::horizontal) {
        draw_lines(*painter, lines_, box, line_height(), alignment_);
        return;
    }
    painter->save();
    painter->translate(box.center());
    painter->rotate(turn_ == TextTurn::upwards ? -90 : 90);
    const QSizeF size = text_size();
    draw_lines(*painter, lines_, QRectF(QPointF(-size.width() / 2, -size.height() / 2), size), line_height(),
               alignment_);
    painter->restore();
}

SheetFreeText::SheetFreeText(QCustomPlot& plot) : QCPAbstractItem(&plot) {
    setClipToAxisRect(false);
    setSelectable(false);
}

void SheetFreeText::set(const SheetText& text, const QFont& font, const QColor& color) {
    x_ = text.x;
    y_ = text.y;
    lines_ = text.text.empty() ? QStringList() : sheet_text(text.text).split(QLatin1Char('\n'));
    font_ = font;
    color_ = color;
    setVisible(text.visible && !lines_.isEmpty());
}

QRectF SheetFreeText::box() const {
    const QRectF picture = mParentPlot->viewport();
    const QSizeF size = size_of(lines_in(picture, lines_, font_), font_);
    const auto kept = [](double at, double length) { return std::clamp(at, 2.0, std::max(2.0, length - 2)); };
    return {QPointF(kept(x_ * picture.width(), picture.width() - size.width()),
                    kept(y_ * picture.height(), picture.height() - size.height())),
            size};
}

double SheetFreeText::selectTest(const QPointF& pos, bool, QVariant*) const {
    return visible() && box().contains(pos) ? 0 : -1;
}

void SheetFreeText::draw(QCPPainter* painter) {
    painter->setFont(font_);
    painter->setPen(QPen(color_));
    draw_lines(*painter, lines_in(mParentPlot->viewport(), lines_, font_), box(),
               QFontMetricsF(font_).height(), Qt::AlignLeft);
}

}  // namespace quom
