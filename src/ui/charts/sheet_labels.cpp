#include "ui/charts/sheet_labels.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>
#include <optional>

namespace quom {
namespace {

constexpr double padding_x = 4, padding_y = 1, above = 3, apart = 2;
constexpr double widest_share = 0.65;  // of the width of the axes
constexpr double step = 7;             // pixels between places that are tried along a series
constexpr double lead_from = 12;       // pixels from which a tag has a line to its point
constexpr double far_away = 1e9;
// What a place is worth in pixels of distance: a line or a symbol that the tag hides, its own line, and each
// line so near to its own that the tag could be that line's.
constexpr double across_line = 16, across_line_mark = 40, on_symbol = 15, on_own = 5, among_lines = 14,
                 near_point = 4;

QRectF grown(const QRectF& box, double by) { return box.adjusted(-by, -by, by, by); }

// Whether a box keeps its distance to all of the others.
bool is_free(const QRectF& box, const std::vector<QRectF>& taken) {
    const QRectF wide = grown(box, apart);
    return std::ranges::none_of(taken, [&](const QRectF& other) {
        return other.left() < wide.right() && other.right() > wide.left() && other.top() < wide.bottom() &&
               other.bottom() > wide.top();
    });
}

QRectF around_point(const QPointF& pixel) { return grown(QRectF(pixel, pixel), near_point); }

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

SheetLabels::SheetLabels(QCustomPlot& plot, QCPLayer& layer, QCPLayer& below)
    : plot_(plot), layer_(layer), below_(below) {}

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

// Points that are tried, a little apart, those next to the wanted one first.
std::vector<SheetLabels::Candidate> SheetLabels::candidates(const LabelWish& wish, const Spot& first) const {
    std::vector<Candidate> result;
    std::optional<QPointF> last;
    for (const SeenPoint& point : wish.points) {
        const QPointF pixel = pixel_of(point);
        const QPointF way = last ? pixel - *last : QPointF(far_away, 0);
        if (point.index != first.at.index && std::abs(way.x()) + std::abs(way.y()) < step) continue;
        last = pixel;
        result.push_back(
            {point, pixel, std::hypot(pixel.x() - first.pixel.x(), pixel.y() - first.pixel.y())});
    }
    std::ranges::stable_sort(result, {}, &Candidate::off);
    return result;
}

// The free place next to the wanted point: along the series, above, below or beside it, rather where it hides
// no other line and where its own line runs alone; where there is none, apart from it at a distance. With no
// free place at all it stays where it is wanted.
SheetLabels::Spot SheetLabels::free_spot(const LabelWish& wish, const QSizeF& size,
                                         const Surroundings& around) const {
    const Spot first = moved_spot(wish, size, around.area);
    Spot best = first;
    best.is_covered = true;
    double best_cost = far_away;
    const bool is_mark = wish.of.part == SheetPart::mark_label;
    const auto try_box = [&](const SeenPoint& at, const QPointF& pixel, const QRectF& box, double cost) {
        if (cost >= best_cost || !around.area.contains(box)) return;
        for (const QPointF& symbol : around.symbols) cost += grown(box, 3).contains(symbol) ? on_symbol : 0;
        if (cost >= best_cost || !is_free(box, around.taken)) return;
        cost += (is_mark ? across_line_mark : across_line) * around.lines.crossed(box, wish.series);
        if (wish.series >= 0 && around.lines.crosses(box.adjusted(1, 1, -1, -1), wish.series)) cost += on_own;
        if (cost >= best_cost) return;
        best_cost = cost;
        best = {box, at, pixel};
    };
    for (const auto& [point, pixel, off] : candidates(wish, first)) {
        if (off >= best_cost) break;
        const double unclear =
            std::min(3, around.lines.crossed(around_point(pixel), wish.series)) * among_lines;
        const QRectF box = first_box(wish, pixel, size);
        const double cost = off + unclear, down = size.height() / 2 + above;
        try_box(point, pixel, box, cost);
        if (wish.beside) {
            try_box(point, pixel, box.translated(-size.width() - 2 * (above + wish.indent), 0), cost + 6);
            continue;
        }
        try_box(point, pixel, box.translated(0, 2 * down), cost + 6);
        if (is_mark) continue;
        // Beside a steep piece, and at the corners.
        const double aside = size.width() / 2 + above;
        try_box(point, pixel, box.translated(aside, down), cost + 9);
        try_box(point, pixel, box.translated(-aside, down), cost + 9);
        try_box(point, pixel, box.translated(aside, 0), cost + 11);
        try_box(point, pixel, box.translated(-aside, 2 * down), cost + 11);
    }
    if (best_cost < far_away) return best;
    for (double far = size.height(); far < 10 * size.height() && best_cost == far_away; far += size.height())
        for (int i = 0; i < 24; ++i) {
            const double angle = i * 3.14159265358979 / 12;
            const QRectF box =
                moved_into(first_box(wish, first.pixel, size)
                               .translated((far + size.width() / 2) * std::cos(angle), far * std::sin(angle)),
                           around.area);
            try_box(first.at, first.pixel, box, distance(first.pixel, box));
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
    if (QCPLayer* layer = spot.is_covered ? &below_ : &layer_; tag.text->layer() != layer)
        tag.text->setLayer(layer);
    const bool has_lead = wish.of.part != SheetPart::mark_label && distance(spot.pixel, spot.box) > lead_from;
    tag.lead->setVisible(has_lead);
    if (has_lead) {
        const QPointF end(std::clamp(spot.pixel.x(), spot.box.left(), spot.box.right()),
                          std::clamp(spot.pixel.y(), spot.box.top(), spot.box.bottom()));
        tag.lead->start->setCoords(0, 0);
        tag.lead->end->setCoords(end - spot.pixel);
    }
    placed_.push_back({wish.of, spot.box, spot.pixel, spot.is_covered});
}

void SheetLabels::place(Surroundings around) {
    placed_.clear();
    const double widest = widest_share * around.area.width();
    around.area.adjust(2, 2, -2, -2);
    // What the user put somewhere stays there, and the others go round it.
    for (const bool moved : {true, false}) {
        for (std::size_t i = 0; i < wishes_.size(); ++i) {
            const LabelWish& wish = wishes_[i];
            if ((wish.dx != 0 || wish.dy != 0) != moved) continue;
            tags_[i].text->setVisible(false);
            tags_[i].lead->setVisible(false);
            if (wish.points.empty()) continue;
            const QSizeF size = box_size(wish, widest);
            const Spot spot = moved ? moved_spot(wish, size, around.area) : free_spot(wish, size, around);
            put(i, spot);
            if (!spot.is_covered) around.taken.push_back(spot.box);
        }
    }
    // Those that lie below the others are found after them.
    std::ranges::stable_partition(placed_, [](const PlacedLabel& label) { return !label.is_covered; });
}

std::vector<PlacedLabel> SheetLabels::placed() const { return placed_; }

}  // namespace quom
