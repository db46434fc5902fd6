#include "ui/charts/vector_engine.h"

#include <QFontInfo>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

#include "ui/charts/vector_cutting.h"

namespace quom {

namespace {

constexpr double flattening = 4;           // curves are flattened to a quarter of a quarter of a pixel
constexpr double tallest_letters = 30000;  // [units]

bool finite(const QPointF& point) { return std::isfinite(point.x()) && std::isfinite(point.y()); }

// An upright rectangle, where the path is one.
std::optional<QRectF> as_rectangle(const QPainterPath& path) {
    const QList<QPolygonF> polygons = path.toSubpathPolygons();
    if (polygons.size() != 1) return std::nullopt;
    const QPolygonF& p = polygons.front();
    if (p.size() != 5 || p[0] != p[4]) return std::nullopt;
    for (qsizetype i = 0; i < 4; ++i)
        if (p[i].x() != p[i + 1].x() && p[i].y() != p[i + 1].y()) return std::nullopt;
    return p.boundingRect();
}

QPainterPath rectangle(const QRectF& box) {
    QPainterPath path;
    if (!box.isEmpty()) path.addRect(box);
    return path;
}

QPainterPath intersection(const QPainterPath& a, const QPainterPath& b) {
    const std::optional<QRectF> box_a = as_rectangle(a), box_b = as_rectangle(b);
    return box_a && box_b ? rectangle(*box_a & *box_b) : a.intersected(b);
}

QColor mean_color(const QBrush& brush) {
    if (const QGradient* gradient = brush.gradient()) {
        double r = 0, g = 0, b = 0, a = 0;
        const QGradientStops stops = gradient->stops();
        for (const QGradientStop& stop : stops) {
            r += stop.second.redF();
            g += stop.second.greenF();
            b += stop.second.blueF();
            a += stop.second.alphaF();
        }
        const double n = std::max<double>(1, static_cast<double>(stops.size()));
        return QColor::fromRgbF(static_cast<float>(r / n), static_cast<float>(g / n),
                                static_cast<float>(b / n), static_cast<float>(a / n));
    }
    if (brush.style() == Qt::TexturePattern && !brush.textureImage().isNull())
        return brush.textureImage()
            .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
            .pixelColor(0, 0);
    return brush.color();
}

// Share of the area that a pattern of dots covers.
double density(Qt::BrushStyle style) {
    switch (style) {
        case Qt::Dense1Pattern:
            return 0.94;
        case Qt::Dense2Pattern:
            return 0.88;
        case Qt::Dense3Pattern:
            return 0.63;
        case Qt::Dense4Pattern:
            return 0.50;
        case Qt::Dense5Pattern:
            return 0.37;
        case Qt::Dense6Pattern:
            return 0.12;
        case Qt::Dense7Pattern:
            return 0.06;
        default:
            return 1;
    }
}

// The native style nearest to a pen: strokes up to two widths long are dots.
Dash native_dash(const QPen& pen) {
    switch (pen.style()) {
        case Qt::DashLine:
            return Dash::dash;
        case Qt::DotLine:
            return Dash::dot;
        case Qt::DashDotLine:
            return Dash::dash_dot;
        case Qt::DashDotDotLine:
            return Dash::dash_dot_dot;
        case Qt::CustomDashLine:
            break;
        default:
            return Dash::solid;
    }
    const QList<qreal> pattern = pen.dashPattern();
    int dots = 0, dashes = 0;
    for (qsizetype i = 0; i < pattern.size(); i += 2) ++(pattern[i] <= 2 ? dots : dashes);
    if (dashes == 0) return Dash::dot;
    if (dots == 0) return Dash::dash;
    return dots == 1 ? Dash::dash_dot : Dash::dash_dot_dot;
}

// The pattern of a pen in units; empty where it has none that can be drawn.
std::vector<double> pattern_of(const QPen& pen, double width) {
    std::vector<double> pattern;
    double sum = 0;
    if (pen.style() == Qt::SolidLine) return pattern;
    for (const qreal entry : pen.dashPattern()) {
        pattern.push_back(std::max(0.0, entry * width));
        sum += pattern.back();
    }
    if (!(sum > 1 && std::isfinite(sum))) pattern.clear();
    return pattern;
}

// Blanks in the place of control characters, U+FFFD in the place of half surrogates; the length stays.
QString cleaned(QString text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            ++i;
        else if (c.isSurrogate() || c.unicode() >= 0xFFFE)
            text[i] = QChar::ReplacementCharacter;
        else if (c.category() == QChar::Other_Control)
            text[i] = QLatin1Char(' ');
    }
    return text;
}

// What every UTF-16 unit of a line takes of `width`.
std::vector<int> advances_of(const QString& text, const QFont& font, QPaintDevice* device, double width) {
    QTextLayout layout(text, font, device);
    layout.setCacheEnabled(false);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e7);
    layout.endLayout();
    std::vector<double> edges{0};
    for (int i = 0; i < text.size(); ++i) {
        const double step = line.isValid() ? std::fabs(line.cursorToX(i + 1) - line.cursorToX(i)) : 0;
        edges.push_back(edges.back() + step);
    }
    const double stretch = edges.back() > 0 ? width / edges.back() : 0;
    std::vector<int> advances;
    for (std::size_t i = 1; i < edges.size(); ++i)
        advances.push_back(qRound(edges[i] * stretch) - qRound(edges[i - 1] * stretch));
    return advances;
}

// The family asked for; of a generic one what stands for it here, so that readers with this font need no
// other.
QString family_of(const QFont& font) {
    static constexpr const char* generic[] = {"", "sans", "sans serif", "sans-serif", "serif", "monospace"};
    const QString family = font.family();
    const bool named = std::none_of(std::begin(generic), std::end(generic), [&family](const char* name) {
        return family.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    });
    return named ? family : QFontInfo(font).family();
}

// Font sizes in points are of 1/96 inch a pixel.
double pixel_size(const QFont& font) {
    return font.pixelSize() > 0 ? font.pixelSize() : font.pointSizeF() * 96 / 72;
}

double length(const QPointF& vector) { return std::hypot(vector.x(), vector.y()); }

}  // namespace

VectorEngine::VectorEngine(VectorSink& sink, const VectorFrame& frame)
    : QPaintEngine(AllFeatures), sink_(sink), frame_(frame), sheet_(QPointF(0, 0), QSizeF(frame.size)) {
    to_units_.scale(frame.units_per_px, frame.units_per_px);
    clip_box_ = sheet_;
}

bool VectorEngine::begin(QPaintDevice*) {
    setActive(true);
    set_pen();  // what is not set arrives in no updateState
    set_brush();
    return true;
}

bool VectorEngine::end() {
    write_text();
    setActive(false);
    return true;
}

void VectorEngine::updateState(const QPaintEngineState& painter) {
    const DirtyFlags dirty = painter.state();
    if (dirty & DirtyTransform)
        to_units_ = painter.transform() * QTransform::fromScale(frame_.units_per_px, frame_.units_per_px);
    if (dirty & DirtyOpacity) opacity_ = painter.opacity();
    if (dirty & DirtyPen) qpen_ = painter.pen();
    if (dirty & DirtyBrush) qbrush_ = painter.brush();
    if (dirty & (DirtyTransform | DirtyOpacity | DirtyPen)) set_pen();
    if (dirty & (DirtyOpacity | DirtyBrush)) set_brush();
    if (dirty & (DirtyClipPath | DirtyClipRegion | DirtyClipEnabled)) set_clip(painter);
}

void VectorEngine::set_clip(const QPaintEngineState& painter) {
    const DirtyFlags dirty = painter.state();
    if (dirty & (DirtyClipPath | DirtyClipRegion)) {
        QPainterPath path = painter.clipPath();
        if (dirty & DirtyClipRegion) {
            path = QPainterPath();
            path.addRegion(painter.clipRegion());
        }
        path =
            (painter.transform() * QTransform::fromScale(frame_.units_per_px, frame_.units_per_px)).map(path);
        const bool cuts_before = clip_on_ && painter.clipOperation() == Qt::IntersectClip;
        clip_path_ = intersection(path, cuts_before ? clip_path_ : rectangle(sheet_));
        clip_on_ = painter.clipOperation() != Qt::NoClip;
    } else {
        clip_on_ = painter.isClipEnabled();
    }
    clip_ = VectorClip();
    clip_box_ = sheet_;
    if (!clip_on_) return;
    clip_box_ = clip_path_.boundingRect() & sheet_;
    const bool upright = as_rectangle(clip_path_).has_value();
    clip_.whole = upright && clip_box_ == sheet_;
    if (clip_.whole) return;
    const QPoint corner = clip_box_.topLeft().toPoint(), opposite = clip_box_.bottomRight().toPoint();
    clip_.box = QRect(corner, QSize(opposite.x() - corner.x(), opposite.y() - corner.y()));
    if (upright) return;
    clip_.rule = clip_path_.fillRule();
    for (const QPolygonF& polygon : clip_path_.toSubpathPolygons()) {
        const UnitPoints points = rounded_polygon(polygon);
        if (!points.empty()) clip_.outline.push_back(points);
    }
    if (clip_.outline.empty()) clip_.box = QRect();
}

void VectorEngine::set_pen() {
    pen_ = VectorPen();
    pen_.color = seen(mean_color(qpen_.brush()));
    pen_.drawn = qpen_.style() != Qt::NoPen && pen_.color.alpha() > 0;
    const bool hairline = qpen_.isCosmetic() || qpen_.widthF() <= 0;
    const double width =
        std::max(qpen_.widthF(), hairline ? 1.0 : 0.0) * (hairline ? frame_.units_per_px : scale());
    pen_.width = qRound(std::clamp(std::isfinite(width) ? width : 1.0, 1.0, 30000.0));
    pen_.cap = qpen_.capStyle();
    pen_.join = qpen_.joinStyle();
    pen_.pattern = pattern_of(qpen_, pen_.width);
    if (pen_.pattern.empty()) return;
    pen_.dash = native_dash(qpen_);
    pen_.pattern_offset = std::isfinite(qpen_.dashOffset()) ? qpen_.dashOffset() * pen_.width : 0;
}

void VectorEngine::set_brush() {
    brush_ = VectorBrush();
    QColor color = mean_color(qbrush_);
    color.setAlphaF(color.alphaF() * static_cast<float>(density(qbrush_.style())));
    brush_.color = seen(color);
    brush_.drawn = qbrush_.style() != Qt::NoBrush && brush_.color.alpha() > 0;
    if (qbrush_.style() >= Qt::HorPattern && qbrush_.style() <= Qt::DiagCrossPattern)
        brush_.style = qbrush_.style();
}

QColor VectorEngine::seen(QColor color) const {
    color = color.toRgb();
    const double alpha = color.alphaF() * opacity_;
    if (sink_.keeps_opacity() || alpha <= 0) {
        color.setAlphaF(static_cast<float>(alpha));
        return color;
    }
    const auto mixed = [alpha](int over, int under) { return qRound(under + (over - under) * alpha); };
    return {mixed(color.red(), ground_.red()), mixed(color.green(), ground_.green()),
            mixed(color.blue(), ground_.blue())};
}

bool VectorEngine::hidden() {
    write_text();
    if (clip_on_ && clip_.box.isEmpty() && !clip_.whole) return true;
    if (clip_ != told_) {
        sink_.clip(clip_);
        told_ = clip_;
    }
    return false;
}

double VectorEngine::scale() const { return std::sqrt(std::fabs(to_units_.determinant())); }

QRectF VectorEngine::cutting_box() const {
    const double more = 2.0 * (pen_.drawn ? pen_.width : 0) + frame_.units_per_px;
    return clip_box_.adjusted(-more, -more, more, more);
}

void VectorEngine::drawLines(const QLineF* lines, int count) {
    if (!pen_.drawn || hidden()) return;
    for (int i = 0; i < count; ++i)
        stroke({QPolygonF{to_units_.map(lines[i].p1()), to_units_.map(lines[i].p2())}, false});
}

void VectorEngine::stroke(const Outline& outline) {
    QPolygonF line = outline.points;
    if (outline.closed && !line.isEmpty()) line.append(line.front());
    for (const QPolygonF& part : line_inside(line, cutting_box())) sink_.polyline(rounded_line(part), pen_);
}

void VectorEngine::drawEllipse(const QRectF& box) {
    const QRectF mapped = to_units_.mapRect(box);
    const bool upright = to_units_.type() <= QTransform::TxScale && cutting_box().contains(mapped);
    if (!upright) return QPaintEngine::drawEllipse(box);
    if (!hidden() && (pen_.drawn || brush_.drawn))
        sink_.ellipse(QRect(mapped.topLeft().toPoint(), mapped.size().toSize()), pen_, brush_);
}

// The dot of a pen.
void VectorEngine::drawPoints(const QPointF* points, int count) {
    if (!pen_.drawn || hidden()) return;
    const VectorBrush ink{true, pen_.color};
    for (int i = 0; i < count; ++i) {
        const QPointF at = to_units_.map(points[i]);
        if (!finite(at) || !cutting_box().contains(at)) continue;
        const int width = pen_.width;
        const QRect box(qRound(at.x() - width / 2.0), qRound(at.y() - width / 2.0), width, width);
        if (pen_.cap == Qt::RoundCap) {
            sink_.ellipse(box, {}, ink);
            continue;
        }
        const QPoint right(width, 0), down(0, width), corner = box.topLeft();
        sink_.polygons({{corner, corner + right, corner + right + down, corner + down}}, {}, ink,
                       Qt::OddEvenFill);
    }
}

void VectorEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) {
    if (count < 2 || hidden()) return;
    Outline outline;
    outline.points.reserve(count);
    for (int i = 0; i < count; ++i) outline.points.append(to_units_.map(points[i]));
    if (mode == PolylineMode) {
        if (pen_.drawn) stroke(outline);
        return;
    }
    outline.closed = true;
    draw({outline}, mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
}

void VectorEngine::drawPath(const QPainterPath& path) {
    if (hidden()) return;
    const double finer = frame_.units_per_px / flattening;
    const QTransform coarse = to_units_ * QTransform::fromScale(1 / finer, 1 / finer);
    std::vector<Outline> outlines;
    for (const QPolygonF& polygon : path.toSubpathPolygons(coarse)) {
        Outline outline;
        for (const QPointF& point : polygon) outline.points.append(point * finer);
        outline.closed = polygon.size() > 2 && polygon.isClosed();
        if (outline.closed) outline.points.removeLast();
        outlines.push_back(outline);
    }
    draw(outlines, path.fillRule());
}

void VectorEngine::draw(const std::vector<Outline>& outlines, Qt::FillRule rule) {
    notice_ground(outlines);
    const QRectF box = cutting_box();
    bool as_they_are = true;  // closed outlines that need no cutting
    UnitPolygons areas;
    for (const Outline& outline : outlines) {
        const bool inside = std::all_of(outline.points.begin(), outline.points.end(),
                                        [&box](const QPointF& point) { return box.contains(point); });
        UnitPoints area = rounded_polygon(inside ? outline.points : polygon_inside(outline.points, box));
        as_they_are = as_they_are && inside && outline.closed && !area.empty();
        if (!area.empty()) areas.push_back(std::move(area));
    }
    if (!areas.empty() && (brush_.drawn || (pen_.drawn && as_they_are)))
        sink_.polygons(areas, as_they_are ? pen_ : VectorPen(), brush_, rule);
    if (!as_they_are && pen_.drawn)
        for (const Outline& outline : outlines) stroke(outline);
}

// An opaque area over the whole picture is what later colours are seen on.
void VectorEngine::notice_ground(const std::vector<Outline>& outlines) {
    if (clip_on_ || outlines.size() != 1 || !brush_.drawn || brush_.style != Qt::SolidPattern) return;
    const QPolygonF& points = outlines.front().points;
    if (points.size() < 4 || points.size() > 5 || brush_.color.alpha() < 255) return;
    QPolygonF closed = points;
    if (!closed.isClosed()) closed.append(closed.front());
    QPainterPath path;
    path.addPolygon(closed);
    const std::optional<QRectF> box = as_rectangle(path);
    const double px = frame_.units_per_px;  // sizes in whole pixels may miss the rim
    if (!box || !box->adjusted(-px, -px, px, px).contains(sheet_)) return;
    ground_ = brush_.color;
    set_pen();
}

void VectorEngine::drawPixmap(const QRectF& where, const QPixmap& pixmap, const QRectF& part) {
    drawImage(where, pixmap.toImage(), part, Qt::AutoColor);
}

void VectorEngine::drawImage(const QRectF& where, const QImage& image, const QRectF& part,
                             Qt::ImageConversionFlags) {
    if (image.isNull() || hidden()) return;
    const QRect pixels = part.toAlignedRect() & image.rect();
    if (pixels.isEmpty()) return;
    QImage seen_part = image.copy(pixels);
    // Turned and mirrored images are turned pixel by pixel.
    const QTransform turn(to_units_.m11(), to_units_.m12(), to_units_.m21(), to_units_.m22(), 0, 0);
    if (turn.type() > QTransform::TxScale || turn.m11() < 0 || turn.m22() < 0) {
        const double size = scale();
        if (!(size > 0)) return;
        seen_part.setDevicePixelRatio(1);
        seen_part = seen_part.transformed(turn * QTransform::fromScale(1 / size, 1 / size));
    }
    place_image(to_units_.mapRect(where), std::move(seen_part));
}

void VectorEngine::place_image(QRectF where, QImage image) {
    if (!finite(where.topLeft()) || !finite(where.bottomRight()) || !where.intersects(sheet_)) return;
    image.setDevicePixelRatio(1);
    // Only the pixels that can be seen.
    const double across = where.width() / image.width(), down = where.height() / image.height();
    const QRectF seen_box = where & sheet_;
    const QRect pixels =
        QRectF((seen_box.left() - where.left()) / across, (seen_box.top() - where.top()) / down,
               seen_box.width() / across, seen_box.height() / down)
            .toAlignedRect() &
        image.rect();
    if (pixels.isEmpty()) return;
    where = QRectF(where.left() + pixels.left() * across, where.top() + pixels.top() * down,
                   pixels.width() * across, pixels.height() * down);
    QImage opaque(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    opaque.fill(sink_.keeps_opacity() ? QColor(Qt::transparent) : ground_);
    QPainter painter(&opaque);
    painter.setOpacity(opacity_);
    painter.drawImage(QPoint(0, 0), image, pixels);
    painter.end();
    const QPoint corner = where.topLeft().toPoint(), opposite = where.bottomRight().toPoint();
    sink_.image(QRect(corner, QSize(opposite.x() - corner.x(), opposite.y() - corner.y())), opaque);
}

void VectorEngine::drawTextItem(const QPointF& at, const QTextItem& item) {
    const QPointF along = to_units_.map(QPointF(1, 0)) - to_units_.map(QPointF(0, 0));
    const QPointF down = to_units_.map(QPointF(0, 1)) - to_units_.map(QPointF(0, 0));
    const QPointF start = to_units_.map(at), end = start + along * item.width();
    const double height = length(down) * pixel_size(item.font());
    if (!pen_.drawn || !finite(start) || !finite(end) || !(height >= 1 && height < tallest_letters)) return;
    VectorText text;
    text.text = cleaned(item.text());
    text.at = start.toPoint();
    text.font = item.font();
    text.family = family_of(text.font);
    text.height = qRound(height);
    text.angle = along.isNull() ? 0 : -std::atan2(along.y(), along.x()) * 180 / 3.14159265358979323846;
    text.color = pen_.color;
    const bool joined = joins(text, start) && !(item.renderFlags() & QTextItem::RightToLeft);
    const QRectF around = QRectF(start, end).normalized().adjusted(-height, -height, height, height);
    if (!around.intersects(clip_box_) || (!joined && (text.text.trimmed().isEmpty() || hidden()))) return;
    text.advances = advances_of(text.text, text.font, paintDevice(), length(along) * item.width());
    waiting_end_ = end;
    if (joined) {
        waiting_->text += text.text;
        waiting_->advances.insert(waiting_->advances.end(), text.advances.begin(), text.advances.end());
    } else if (item.renderFlags() & QTextItem::RightToLeft) {
        sink_.text(text);
    } else {
        waiting_ = text;
    }
}

bool VectorEngine::joins(const VectorText& text, const QPointF& start) const {
    return waiting_ && clip_ == told_ && length(start - waiting_end_) <= frame_.units_per_px / 4 &&
           text.angle == waiting_->angle && text.height == waiting_->height &&
           text.color == waiting_->color && text.font == waiting_->font;
}

void VectorEngine::write_text() {
    if (!waiting_) return;
    sink_.text(*waiting_);
    waiting_.reset();
}

}  // namespace quom
