// What a vector file is made of: lines, areas, ellipses, texts and images in whole units, and the writers of
// the formats that take them.
#pragma once
#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <memory>
#include <vector>

namespace quom {

enum class VectorFormat { emf, wmf, svg };

using UnitPoints = std::vector<QPoint>;
using UnitPolygons = std::vector<UnitPoints>;

// The size of a picture and its units: x to the right, y down, from (0, 0) to size.
struct VectorFrame {
    QSize size;                // [units]
    double units_per_px = 20;  // of pixels of 1/96 inch
    double units_per_mm() const { return units_per_px * 96 / 25.4; }
};

enum class Dash { solid, dash, dot, dash_dot, dash_dot_dot };

struct VectorPen {
    bool drawn = false;
    QColor color;
    int width = 0;  // [units], at least 1
    Dash dash = Dash::solid;
    std::vector<double> pattern;  // [units], line and gap in turn; empty for a solid line
    double pattern_offset = 0;    // [units]
    Qt::PenCapStyle cap = Qt::FlatCap;
    Qt::PenJoinStyle join = Qt::BevelJoin;
};

struct VectorBrush {
    bool drawn = false;
    QColor color;
    Qt::BrushStyle style = Qt::SolidPattern;  // or one of the six hatchings
};

// One line of text in one font, from the left end of its base line.
struct VectorText {
    QPoint at;
    QString text;               // UTF-16, no half surrogates and no control characters
    std::vector<int> advances;  // [units], one of each UTF-16 unit, along the base line
    QFont font;                 // weight and slant
    QString family;             // of the letters on this machine, where the font has only a generic name
    int height = 0;             // of the letter m [units]
    double angle = 0;           // [degrees], counter-clockwise
    QColor color;
};

// What is drawn is seen inside the outline, and inside the box where there is no outline.
struct VectorClip {
    bool whole = true;  // nothing is cut away
    QRect box;
    UnitPolygons outline;  // of a clip that is no upright rectangle
    Qt::FillRule rule = Qt::OddEvenFill;
    bool operator==(const VectorClip& other) const = default;
};

// Writes one format. Coordinates may lie beyond the picture by the width of a line.
class VectorSink {
 public:
    virtual ~VectorSink() = default;
    // Can colours be transparent? If not, they arrive opaque.
    virtual bool keeps_opacity() const { return false; }
    virtual void clip(const VectorClip& clip) = 0;
    virtual void polyline(const UnitPoints& points, const VectorPen& pen) = 0;  // two points or more
    virtual void polygons(const UnitPolygons& polygons, const VectorPen& pen, const VectorBrush& brush,
                          Qt::FillRule rule) = 0;
    virtual void ellipse(const QRect& box, const VectorPen& pen, const VectorBrush& brush) = 0;
    virtual void text(const VectorText& text) = 0;
    virtual void image(const QRect& where, const QImage& image) = 0;
    // The whole file. Nothing is drawn afterwards.
    virtual QByteArray finish() = 0;
};

std::unique_ptr<VectorSink> make_emf_sink(const VectorFrame& frame);
std::unique_ptr<VectorSink> make_wmf_sink(const VectorFrame& frame);  // sizes below 2^15 units
std::unique_ptr<VectorSink> make_svg_sink(const VectorFrame& frame);

}  // namespace quom
