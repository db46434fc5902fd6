#include "ui/charts/sheet_curve.h"

#include <algorithm>
#include <cmath>

namespace quom {
namespace {

constexpr double tolerance_on_screen = 0.15;  // pixels
constexpr double seam = 0.4;                  // pixels that strokes overlap
constexpr double least_cosine = 0.97;         // between strokes that need no corner, 14 degrees
constexpr double endless = 1e9;               // stroke of a solid line

double cross(const QPointF& a, const QPointF& b) { return a.x() * b.y() - a.y() * b.x(); }
bool is_gap(const QPointF& point) { return !std::isfinite(point.x()) || !std::isfinite(point.y()); }

// Strokes one by one, which the painter of pixels draws far faster than a line of many points. Where one
// begins at the end of the other they overlap a little, so that no seam is seen; a corner is drawn as one.
void draw_strokes(QCPPainter& painter, QVector<QLineF> strokes) {
    const double width = painter.pen().widthF();
    std::vector<QPolygonF> corners;
    for (qsizetype i = 1; i < strokes.size(); ++i) {
        QLineF &before = strokes[i - 1], &after = strokes[i];
        if (before.p2() != after.p1()) continue;
        const double first = before.length(), second = after.length();
        if (!(first > 0) || !(second > 0)) continue;
        const QPointF in = (before.p2() - before.p1()) / first, out = (after.p2() - after.p1()) / second;
        const QPointF corner = after.p1();
        if (in.x() * out.x() + in.y() * out.y() < least_cosine) {
            corners.push_back(QPolygonF(
                {corner - in * std::min(first, width), corner, corner + out * std::min(second, width)}));
        } else {
            before.setP2(corner + in * seam);
            after.setP1(corner - out * seam);
        }
    }
    painter.drawLines(strokes);
    for (const QPolygonF& corner : corners) painter.drawPolyline(corner);
}

// The directions from one point in which a line may go on so that it passes all points met since then.
class Sleeve {
 public:
    explicit Sleeve(double tolerance) : tolerance_(tolerance) {}
    // Whether the point can still be reached past all before it; then it narrows the directions.
    bool take(const QPointF& way) {
        const double length = std::sqrt(QPointF::dotProduct(way, way));
        if (length <= tolerance_ && !is_open_) return true;
        if (length < farthest_) return false;
        if (is_open_ && (cross(low_, way) < 0 || cross(way, high_) < 0)) return false;
        farthest_ = length;
        const double sine = tolerance_ / length, cosine = std::sqrt(1 - sine * sine);
        const QPointF across(-way.y(), way.x());
        const QPointF low = way * cosine - across * sine, high = way * cosine + across * sine;
        if (!is_open_ || cross(low_, low) > 0) low_ = low;
        if (!is_open_ || cross(high_, high) < 0) high_ = high;
        is_open_ = true;
        return true;
    }

 private:
    double tolerance_, farthest_ = 0;
    bool is_open_ = false;
    QPointF low_, high_;
};

}  // namespace

QVector<QPointF> thinned(const QVector<QPointF>& line, double tolerance) {
    QVector<QPointF> kept;
    Sleeve sleeve(tolerance);
    for (qsizetype i = 0; i < line.size(); ++i) {
        const bool begins = i == 0 || is_gap(line[i]) || is_gap(line[i - 1]);
        if (begins) {
            if (i > 0 && !is_gap(line[i - 1]) && kept.last() != line[i - 1]) kept.push_back(line[i - 1]);
            kept.push_back(line[i]);
            sleeve = Sleeve(tolerance);
        } else if (!sleeve.take(line[i] - kept.last())) {
            kept.push_back(line[i - 1]);
            sleeve = Sleeve(tolerance);
            sleeve.take(line[i] - kept.last());
        }
    }
    if (!line.isEmpty() && !is_gap(line.last()) && kept.last() != line.last()) kept.push_back(line.last());
    return kept;
}

QVector<QLineF> dashed(const QVector<QPointF>& line, const QVector<qreal>& pattern, double width) {
    QVector<QLineF> strokes;
    qsizetype part = 0;
    double left = pattern[0] * width;  // of the stroke or gap that is being laid
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QPointF from = line[i - 1], way = line[i] - from;
        if (is_gap(way)) {
            part = 0;
            left = pattern[0] * width;
            continue;
        }
        const double length = std::sqrt(QPointF::dotProduct(way, way));
        double at = 0;
        while (at < length) {
            const double end = std::min(length, at + left);
            if (part % 2 == 0) strokes.push_back({from + way * (at / length), from + way * (end / length)});
            left -= end - at;
            at = end;
            if (left > 1e-9) break;
            part = (part + 1) % pattern.size();
            left = pattern[part] * width;
        }
    }
    return strokes;
}

void SheetCurve::drawCurveLine(QCPPainter* painter, const QVector<QPointF>& lines) const {
    if (painter->modes().testFlag(QCPPainter::pmVectorized)) {
        QCPCurve::drawCurveLine(painter, lines);
        return;
    }
    const QPen own = painter->pen();
    if (own.style() == Qt::NoPen || own.color().alpha() == 0) return;
    const QVector<QPointF> line = thinned(lines, tolerance_on_screen);
    if (own.style() == Qt::SolidLine) {
        draw_strokes(*painter, dashed(line, {endless}, 1));
        return;
    }
    QPen solid = own;
    solid.setStyle(Qt::SolidLine);
    painter->setPen(solid);
    draw_strokes(*painter, dashed(line, own.dashPattern(), own.widthF()));
    painter->setPen(own);
}

}  // namespace quom
