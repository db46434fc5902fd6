#include "ui/charts/sheet_labels.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <optional>

namespace quom {
namespace {

constexpr double padding_x = 4, padding_y = 1, above = 3, apart = 2;
constexpr double widest_share = 0.5;  // of the width of the axes
constexpr double step = 7;            // pixels between places that are tried along a series
constexpr double lead_from = 12;      // pixels from which a tag has a line to its point
constexpr double far_away = 1e9;

QRectF grown(const QRectF& box, double by) { return box.adjusted(-by, -by, by, by); }

double overlap(const QRectF& box, const std::vector<QRectF>& taken) {
    double sum = 0;
    for (const QRectF& other : taken) {
        const QRectF common = grown(box, apart / 2).intersected(grown(other, apart / 2));
        if (!common.isEmpty()) sum += common.width() * common.height();
    }
    return sum;
}

QRectF moved_into(QRectF box, const QRectF& area) {
    box.moveLeft(std::clamp(box.left(), area.left(), std::max(area.left(), area.right() - box.width())));
    box.moveTop(std::clamp(box.top(), area.top(), std::max(area.top(), area.bottom() - box.height())));
    return box;
}

// The tag above its point; of a mark along y right of it.
QRectF first_box(const LabelWish& wish, const QPointF& at, const QSizeF& size) {
    if (wish.beside) return {QPointF(at.x() + above + wish.indent, at.y() - size.height() / 2), size};
    if (wish.of.part == SheetPart::mark_label)
        return {QPointF(at.x() + above + wish.indent, at.y() - above / 2 - size.height()), size};
    return {QPointF(at.x() - size.width() / 2, at.y() - above - size.height()), size};
}

double distance(const QPointF& point, const QRectF& box) {
    const double dx = std::max({box.left() - point.x(), 0.0, point.x() - box.right()});
    const double dy = std::max({box.top() - point.y(), 0.0, point.y() - box.bottom()});
    return std::hypot(dx, dy);
}

}  // namespace

SheetLabels::SheetLabels(QCustomPlot& plot, QCPLayer& layer) : plot_(plot), layer_(layer) {}

SheetLabels::Tag SheetLabels::new_tag() {
    Tag tag{new QCPItemTracer(&plot_), new QCPItemText(&plot_), new QCPItemLine(&plot_)};
    tag.lead->setLayer(&layer_);
    tag.point->setLayer(&layer_);
    tag.text->setLayer(&layer_);
    tag.point->setStyle(QCPItemTracer::tsNone);
    tag.text->position->setParentAnchor(tag.point->position);
    tag.text->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
    tag.text->setPadding(QMargins(static_cast<int>(padding_x), static_cast<int>(padding_y),
                                  static_cast<int>(padding_x), static_cast<int>(padding_y)));
    tag.lead->start->setParentAnchor(tag.point->position);
    tag.lead->end->setParentAnchor(tag.point->position);
    for (QCPAbstractItem* item :
         {static_cast<QCPAbstractItem*>(tag.point), static_cast<QCPAbstractItem*>(tag.text),
          static_cast<QCPAbstractItem*>(tag.lead)}) {
        item->setSelectable(false);
        item->setClipToAxisRect(false);
    }
    return tag;
}

void SheetLabels::set(std::vector<LabelWish> wishes, const QFont& font) {
    wishes_ = std::move(wishes);
    font_ = font;
    while (tags_.size() < wishes_.size()) tags_.push_back(new_tag());
    for (std::size_t i = 0; i < tags_.size(); ++i) {
        const Tag& tag = tags_[i];
        tag.text->setVisible(false);
        tag.lead->setVisible(false);
        if (i >= wishes_.size()) continue;
        const LabelWish& wish = wishes_[i];
        tag.text->setFont(font);
        tag.text->setColor(wish.ink);
        tag.text->setPen(wish.border);
        tag.text->setBrush(wish.ground);
        tag.lead->setPen(QPen(wish.border.color(), 1));
    }
}

QPointF SheetLabels::pixel_of(const SeenPoint& at) const {
    return {plot_.xAxis->coordToPixel(at.x), plot_.yAxis->coordToPixel(at.y)};
}

QSizeF SheetLabels::box_size(const LabelWish& wish, double widest) const {
    const QFontMetricsF metrics(font_);
    return {std::ceil(std::min(metrics.horizontalAdvance(wish.text), widest)) + 2 * padding_x + 1,
            std::ceil(metrics.height()) + 2 * padding_y};
}

// Of a label that was moved by hand: where it would stand first, and the way from there.
SheetLabels::Spot SheetLabels::moved_spot(const LabelWish& wish, const QSizeF& size,
                                          const QRectF& area) const {
    const auto nearest = std::ranges::min_element(wish.points, {}, [&](const SeenPoint& point) {
        return std::abs(static_cast<double>(point.index) - static_cast<double>(wish.wanted));
    });
    const QPointF pixel = pixel_of(*nearest);
    return {moved_into(first_box(wish, pixel, size).translated(wish.dx, wish.dy), area), *nearest, pixel};
}

// The free place next to the wanted point: along the series, above or below it; where there is none, beside
// it at a distance. With no free place at all the one that is covered least.
SheetLabels::Spot SheetLabels::free_spot(const LabelWish& wish, const QSizeF& size, const QRectF& area,
                                         const std::vector<QRectF>& taken,
                                         const std::vector<QPointF>& symbols) const {
    const Spot first = moved_spot(wish, size, area);
    Spot best = first;
    double best_cost = far_away;
    const auto try_box = [&](const SeenPoint& at, const QPointF& pixel, const QRectF& box, double cost) {
        if (cost >= best_cost || !area.contains(box)) return;
        for (const QPointF& symbol : symbols) cost += grown(box, 3).contains(symbol) ? 15 : 0;
        const double covered = overlap(box, taken);
        if (covered > 0) cost += 1e4 + covered;
        if (cost >= best_cost) return;
        best_cost = cost;
        best = {box, at, pixel};
    };
    std::optional<QPointF> last;
    for (const SeenPoint& point : wish.points) {
        const QPointF pixel = pixel_of(point);
        const QPointF way = last ? pixel - *last : QPointF(far_away, 0);
        if (point.index != first.at.index && std::hypot(way.x(), way.y()) < step) continue;
        last = pixel;
        const double off = std::hypot(pixel.x() - first.pixel.x(), pixel.y() - first.pixel.y());
        const QRectF box = first_box(wish, pixel, size);
        try_box(point, pixel, box, off);
        if (wish.beside) {
            try_box(point, pixel, box.translated(-size.width() - 2 * above, 0), off + 6);
        } else {
            try_box(point, pixel, box.translated(0, size.height() + 2 * above), off + 6);
            // Beside a steep piece.
            try_box(point, pixel, box.translated(size.width() / 2 + above, size.height() / 2 + above),
                    off + 9);
            try_box(point, pixel, box.translated(-size.width() / 2 - above, size.height() / 2 + above),
                    off + 9);
        }
    }
    if (best_cost < 1e4) return best;
    for (double far = size.height(); far < 14 * size.height(); far += size.height() / 2)
        for (int i = 0; i < 24; ++i) {
            const double angle = i * 3.14159265358979 / 12;
            const QRectF box =
                moved_into(first_box(wish, first.pixel, size)
                               .translated((far + size.width() / 2) * std::cos(angle), far * std::sin(angle)),
                           area);
            try_box(first.at, first.pixel, box, 500 + distance(first.pixel, box));
        }
    return best;
}

void SheetLabels::put(std::size_t number, const Spot& spot) {
    const LabelWish& wish = wishes_[number];
    const Tag& tag = tags_[number];
    const QFontMetricsF metrics(font_);
    tag.point->position->setCoords(spot.at.x, spot.at.y);
    tag.text->setText(metrics.elidedText(wish.text, Qt::ElideRight, spot.box.width() - 2 * padding_x));
    tag.text->position->setCoords(spot.box.topLeft() - spot.pixel);
    tag.text->setVisible(true);
    const bool has_lead = wish.of.part != SheetPart::mark_label && distance(spot.pixel, spot.box) > lead_from;
    tag.lead->setVisible(has_lead);
    if (has_lead) {
        const QPointF end(std::clamp(spot.pixel.x(), spot.box.left(), spot.box.right()),
                          std::clamp(spot.pixel.y(), spot.box.top(), spot.box.bottom()));
        tag.lead->start->setCoords(0, 0);
        tag.lead->end->setCoords(end - spot.pixel);
    }
    placed_.push_back({wish.of, spot.box, spot.pixel});
}

void SheetLabels::place(const QRectF& area, const std::vector<QRectF>& blocked,
                        const std::vector<QPointF>& symbols) {
    placed_.clear();
    std::vector<QRectF> taken = blocked;
    const QRectF inside = area.adjusted(2, 2, -2, -2);
    // What the user put somewhere stays there, and the others go round it.
    for (const bool moved : {true, false}) {
        for (std::size_t i = 0; i < wishes_.size(); ++i) {
            const LabelWish& wish = wishes_[i];
            if ((wish.dx != 0 || wish.dy != 0) != moved) continue;
            tags_[i].text->setVisible(false);
            tags_[i].lead->setVisible(false);
            if (wish.points.empty()) continue;
            const QSizeF size = box_size(wish, widest_share * area.width());
            const Spot spot =
                moved ? moved_spot(wish, size, inside) : free_spot(wish, size, inside, taken, symbols);
            put(i, spot);
            taken.push_back(spot.box);
        }
    }
}

std::vector<PlacedLabel> SheetLabels::placed() const { return placed_; }

}  // namespace quom
