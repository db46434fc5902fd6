#include "ui/charts/sheet_legend.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "ui/charts/sheet_style.h"

namespace quom {
namespace {

constexpr double key_width = 28, least_row = 14, gap = 8, inset = 8, from_frame = 10;
constexpr double most_share = 0.94;    // of the area of the axes
constexpr double column_share = 0.56;  // of one column alone

}  // namespace

SheetLegend::SheetLegend(QCustomPlot& plot) : QCPAbstractItem(&plot) {
    setClipToAxisRect(false);
    setSelectable(false);
}

void SheetLegend::set(const LegendDesign& design, const SheetColors& colors,
                      std::vector<LegendEntry> entries) {
    design_ = design;
    font_ = sheet_font(design.font);
    ground_ = sheet_color(colors.legend, text_ground_alpha);
    border_ = sheet_color(colors.grid, colors.black ? 0.5 : 1);
    ink_ = sheet_color(colors.text);
    entries_ = std::move(entries);
    setVisible(design.visible && !entries_.empty());
}

SheetLegend::Layout SheetLegend::layout() const {
    const QRectF area = mParentPlot->axisRect()->rect();
    const QFontMetricsF metrics(font_);
    Layout result;
    result.row_height = std::max(least_row, metrics.height()) + 2;
    const double room = most_share * area.height() - 2 * inset;
    const int count = static_cast<int>(entries_.size());
    const int most_rows = std::max(1, static_cast<int>(room / result.row_height));
    const int columns = (count + most_rows - 1) / most_rows;
    result.rows = (count + columns - 1) / columns;
    double widest = 0;
    for (const LegendEntry& entry : entries_)
        widest = std::max(widest, std::ceil(metrics.horizontalAdvance(entry.text)) + 1);
    const double share = columns == 1 ? column_share : most_share;
    const double most_column = (share * area.width() - 2 * inset + gap) / columns - gap;
    result.column_width = std::max(key_width + gap, std::min(key_width + gap + widest, most_column));
    result.text_width = result.column_width - key_width - gap;
    const QSizeF size(2 * inset + columns * (result.column_width + gap) - gap,
                      2 * inset - 4 + result.rows * result.row_height);
    QPointF corner(design_.x * area.width(), design_.y * area.height());
    if (design_.place != LegendPlace::free) {
        const bool left = design_.place == LegendPlace::top_left || design_.place == LegendPlace::bottom_left;
        const bool top = design_.place == LegendPlace::top_left || design_.place == LegendPlace::top_right;
        corner = {left ? from_frame : area.width() - size.width() - from_frame,
                  top ? from_frame : area.height() - size.height() - from_frame};
    }
    const auto kept = [](double at, double most) { return std::clamp(at, 0.0, std::max(0.0, most)); };
    result.box = QRectF(area.topLeft() + QPointF(kept(corner.x(), area.width() - size.width()),
                                                 kept(corner.y(), area.height() - size.height())),
                        size);
    return result;
}

QRectF SheetLegend::box() const { return visible() ? layout().box : QRectF(); }

double SheetLegend::selectTest(const QPointF& pos, bool, QVariant*) const {
    return visible() && box().contains(pos) ? 0 : -1;
}

void SheetLegend::draw(QCPPainter* painter) {
    const Layout place = layout();
    const QFontMetricsF metrics(font_);
    painter->setAntialiasing(true);
    painter->setPen(QPen(border_, 1));
    painter->setBrush(ground_);
    painter->drawRect(place.box);
    painter->setFont(font_);
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const LegendEntry& entry = entries_[i];
        const auto column = static_cast<double>(static_cast<int>(i) / place.rows);
        const auto row = static_cast<double>(static_cast<int>(i) % place.rows);
        const QPointF corner = place.box.topLeft() + QPointF(inset + column * (place.column_width + gap),
                                                             inset - 2 + row * place.row_height);
        const double middle = corner.y() + place.row_height / 2;
        if (entry.pen.style() != Qt::NoPen) {
            painter->setPen(entry.pen);
            painter->drawLine(QPointF(corner.x(), middle), QPointF(corner.x() + key_width, middle));
        }
        if (!entry.symbol.isNone()) {
            entry.symbol.applyTo(painter, entry.pen);
            entry.symbol.drawShape(painter, QPointF(corner.x() + key_width / 2, middle));
        }
        painter->setPen(QPen(ink_));
        painter->drawText(
            QRectF(corner.x() + key_width + gap, corner.y(), place.text_width, place.row_height),
            static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter) | Qt::TextDontClip,
            metrics.elidedText(entry.text, Qt::ElideRight, place.text_width));
    }
}

}  // namespace quom
