#include "ui/charts/vector_cutting.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>
#include <utility>

namespace quom {

namespace {

bool finite(const QPointF& point) { return std::isfinite(point.x()) && std::isfinite(point.y()); }

// The part of a stretch that is kept, from 0 to 1, cut by the border where start + t * step crosses it.
struct Part {
    double from = 0, to = 1;
    // Keeps what satisfies start + t step >= 0.
    void keep_above_0(double start, double step) {
        if (step > 0)
            from = std::max(from, -start / step);
        else if (step < 0)
            to = std::min(to, -start / step);
        else if (start < 0)
            to = -1;
    }
};

// Liang and Barsky (1984); coordinates are halved so that a difference cannot overflow.
Part part_inside(const QPointF& a, const QPointF& b, const QRectF& box) {
    const QPointF step = b / 2 - a / 2;
    Part part;
    part.keep_above_0(a.x() / 2 - box.left() / 2, step.x());
    part.keep_above_0(box.right() / 2 - a.x() / 2, -step.x());
    part.keep_above_0(a.y() / 2 - box.top() / 2, step.y());
    part.keep_above_0(box.bottom() / 2 - a.y() / 2, -step.y());
    return part;
}

// Between a and b, held inside the box against rounding of far points.
QPointF between(const QPointF& a, const QPointF& b, double t, const QRectF& box) {
    if (t <= 0) return a;
    if (t >= 1) return b;
    const QPointF at = a * (1 - t) + b * t;
    return {std::clamp(at.x(), box.left(), box.right()), std::clamp(at.y(), box.top(), box.bottom())};
}

// A half of the plane: sign * coordinate >= border.
struct Half {
    bool vertical;  // the border is a vertical line
    double sign, border;
    double depth(const QPointF& p) const { return sign * (vertical ? p.x() : p.y()) / 2 - border / 2; }
    QPointF crossing(const QPointF& a, const QPointF& b) const {
        const double t = depth(a) / (depth(a) - depth(b));
        QPointF at = a * (1 - t) + b * t;
        (vertical ? at.rx() : at.ry()) = sign * border;
        return at;
    }
};

}  // namespace

std::vector<QPolygonF> line_inside(const QPolygonF& line, const QRectF& box) {
    std::vector<QPolygonF> parts;
    bool joined = false;  // the last part ends at the point before
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF &a = line[i - 1], &b = line[i];
        if (!finite(a) || !finite(b)) {
            joined = false;
            continue;
        }
        const Part part = part_inside(a, b, box);
        if (!(part.from <= part.to)) {
            joined = false;
            continue;
        }
        if (!joined || part.from > 0) parts.push_back(QPolygonF{between(a, b, part.from, box)});
        parts.back().append(between(a, b, part.to, box));
        joined = part.to >= 1;
    }
    return parts;
}

// Sutherland and Hodgman (1974).
QPolygonF polygon_inside(const QPolygonF& polygon, const QRectF& box) {
    QPolygonF kept;
    kept.reserve(polygon.size());
    for (const QPointF& point : polygon)
        if (finite(point)) kept.append(point);
    const Half halves[] = {
        {true, 1, box.left()}, {true, -1, -box.right()}, {false, 1, box.top()}, {false, -1, -box.bottom()}};
    for (const Half& half : halves) {
        QPolygonF next;
        next.reserve(kept.size());
        for (qsizetype i = 0; i < kept.size(); ++i) {
            const QPointF &a = kept[i == 0 ? kept.size() - 1 : i - 1], &b = kept[i];
            const bool a_inside = half.depth(a) >= 0, b_inside = half.depth(b) >= 0;
            if (a_inside != b_inside) next.append(half.crossing(a, b));
            if (b_inside) next.append(b);
        }
        kept = std::exchange(next, {});
    }
    return kept;
}

namespace {

QPolygonF closed_polygon(const UnitPoints& points) {
    QPolygonF polygon;
    for (const QPoint& point : points) polygon.append(point);
    polygon.append(polygon.front());
    return polygon;
}

QPainterPath path_of(const UnitPolygons& polygons, Qt::FillRule rule) {
    QPainterPath path;
    path.setFillRule(rule);
    for (const UnitPoints& points : polygons) path.addPolygon(closed_polygon(points));
    return path;
}

// Where, from 0 to 1, the stretch meets the borders; with 0 and 1, from the lowest up.
std::vector<double> crossings(const QPointF& a, const QPointF& b, const UnitPolygons& outlines) {
    std::vector<double> at{0, 1};
    const QPointF step = b - a;
    for (const UnitPoints& points : outlines)
        for (std::size_t i = 0; i < points.size(); ++i) {
            const QPointF p = points[i], side = QPointF(points[(i + 1) % points.size()]) - p;
            const double cross = step.x() * side.y() - step.y() * side.x();
            if (cross == 0) continue;
            const double t = ((p.x() - a.x()) * side.y() - (p.y() - a.y()) * side.x()) / cross;
            if (t > 0 && t < 1) at.push_back(t);
        }
    std::sort(at.begin(), at.end());
    return at;
}

}  // namespace

std::vector<QPolygonF> line_inside(const QPolygonF& line, const UnitPolygons& outlines, Qt::FillRule rule) {
    const QPainterPath inside = path_of(outlines, rule);
    std::vector<QPolygonF> parts;
    bool joined = false;
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF &a = line[i - 1], &b = line[i];
        const std::vector<double> at = crossings(a, b, outlines);
        for (std::size_t k = 1; k < at.size(); ++k) {
            if (at[k] <= at[k - 1]) continue;
            const double middle = (at[k - 1] + at[k]) / 2;
            if (!inside.contains(a * (1 - middle) + b * middle)) {
                joined = false;
                continue;
            }
            if (!joined) parts.push_back(QPolygonF{a * (1 - at[k - 1]) + b * at[k - 1]});
            parts.back().append(a * (1 - at[k]) + b * at[k]);
            joined = true;
        }
    }
    return parts;
}

UnitPolygons polygons_inside(const UnitPolygons& polygons, Qt::FillRule rule, const UnitPolygons& outlines,
                             Qt::FillRule outline_rule) {
    UnitPolygons inside;
    const QPainterPath path = path_of(polygons, rule).intersected(path_of(outlines, outline_rule));
    for (const QPolygonF& polygon : path.toSubpathPolygons()) {
        UnitPoints points = rounded_polygon(polygon);
        if (!points.empty()) inside.push_back(std::move(points));
    }
    return inside;
}

UnitPoints rounded_line(const QPolygonF& line) {
    UnitPoints points;
    points.reserve(static_cast<std::size_t>(line.size()));
    for (const QPointF& point : line) {
        const QPoint rounded = point.toPoint();
        if (points.empty() || points.back() != rounded) points.push_back(rounded);
    }
    if (points.size() == 1) points.push_back(points.front());
    return points;
}

UnitPoints rounded_polygon(const QPolygonF& polygon) {
    if (polygon.isEmpty()) return {};
    UnitPoints points = rounded_line(polygon);
    while (points.size() > 1 && points.back() == points.front()) points.pop_back();
    if (points.size() < 3) points.clear();
    return points;
}

}  // namespace quom
