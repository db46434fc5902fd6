// A curve of a sheet as it is drawn: fast on the screen, in the words of the format in a vector picture.
#pragma once
#include <qcustomplot.h>

#include <QLineF>
#include <QPolygonF>
#include <vector>

namespace quom {

// The points of a line [pixels] without those that lie on the way between their neighbours to a tolerance;
// ends, turns back and gaps (points that are no number) stay.
QVector<QPointF> thinned(const QVector<QPointF>& line, double tolerance);
// The drawn pieces of a dashed line: pattern of strokes and gaps in widths of the pen, as QPen has it.
QVector<QLineF> dashed(const QVector<QPointF>& line, const QVector<qreal>& pattern, double width);

// On the screen a line is thinned to what a pixel can show, and its dashes are laid here: the painter of
// pixels takes ten times as long for a wide dashed line of many points.
class SheetCurve : public QCPCurve {
 public:
    using QCPCurve::QCPCurve;

 protected:
    void drawCurveLine(QCPPainter* painter, const QVector<QPointF>& lines) const override;
};

}  // namespace quom
