// The paint engine of vector files: what a QPainter draws becomes lines, areas, ellipses, texts and images of
// a VectorSink.
#pragma once
#include <QPaintEngine>
#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>
#include <optional>

#include "ui/charts/vector_sink.h"

namespace quom {

// Curves are flattened, lines and areas are cut at the clip, points that are not finite are left out,
// gradients and textures become their mean colour. For a sink without opacity colours are blended with the
// ground: white, or the colour of the last area that covered the whole picture.
class VectorEngine : public QPaintEngine {
 public:
    VectorEngine(VectorSink& sink, const VectorFrame& frame);

    bool begin(QPaintDevice* device) override;
    bool end() override;
    Type type() const override { return QPaintEngine::User; }
    void updateState(const QPaintEngineState& painter) override;

    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    void drawLines(const QLineF* lines, int count) override;
    void drawEllipse(const QRectF& box) override;
    void drawPoints(const QPointF* points, int count) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawPath(const QPainterPath& path) override;
    void drawPixmap(const QRectF& where, const QPixmap& pixmap, const QRectF& part) override;
    void drawImage(const QRectF& where, const QImage& image, const QRectF& part,
                   Qt::ImageConversionFlags flags) override;
    void drawTextItem(const QPointF& at, const QTextItem& item) override;

 private:
    struct Outline {
        QPolygonF points;  // [units]
        bool closed = false;
    };
    void draw(const std::vector<Outline>& outlines, Qt::FillRule rule);
    void stroke(const Outline& outline);
    void set_clip(const QPaintEngineState& painter);
    void set_pen();
    void set_brush();
    QColor seen(
        QColor color) const;  // with the opacity in force, on the ground where the sink has no opacity
    bool hidden();            // makes ready for drawing; is everything cut away?
    void write_text();        // the text that waits
    bool joins(const VectorText& text, const QPointF& start) const;  // the text that waits
    double scale() const;                                            // units of a length of 1
    QRectF cutting_box() const;                                      // what can be seen, wider by a line
    void notice_ground(const std::vector<Outline>& outlines);
    void place_image(QRectF where, QImage image);

    VectorSink& sink_;
    VectorFrame frame_;
    QRectF sheet_;         // [units]
    QTransform to_units_;  // of the painter's coordinates
    QPen qpen_;
    QBrush qbrush_;
    VectorPen pen_;
    VectorBrush brush_;
    double opacity_ = 1;
    QColor ground_ = Qt::white;
    bool clip_on_ = false;
    QPainterPath clip_path_;  // [units]
    QRectF clip_box_;         // [units], of the clip in force
    VectorClip clip_, told_;  // in force, and what the sink knows
    // Qt hands a line of text out by scripts; the sink gets it whole.
    std::optional<VectorText> waiting_;
    QPointF waiting_end_;
};

}  // namespace quom
