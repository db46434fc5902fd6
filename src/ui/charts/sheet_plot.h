// The one drawing routine of two-dimensional sheets: a plot of the chart library is brought to what a
// document says. The plot holds nothing of its own and can be thrown away.
#pragma once
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <memory>
#include <vector>

#include "diagrams/graph_document.h"

class QCustomPlot;

namespace quom {

// What of a sheet lies under the mouse.
enum class SheetPart {
    none,
    header,
    footer,
    text,
    x_title,
    y_title,
    legend,
    curve_label,
    points_label,
    mark_label,
    area
};
struct SheetHit {
    SheetPart part = SheetPart::none;
    int number = 0;  // of the text from 0; slot, set or mark of a label
    bool operator==(const SheetHit&) const = default;
};

// A label as it stands, in pixels of the plot.
struct PlacedLabel {
    SheetHit of;
    QRectF box;
    QPointF point;            // that it belongs to
    bool is_covered = false;  // found no free place and lies below the others
};

class SheetPlot : public QObject {
 public:
    // Takes the plot over: axes, layout, layers. The plot outlives it or owns it.
    explicit SheetPlot(QCustomPlot& plot);
    ~SheetPlot() override;

    // Brings the plot to the document; what is as it was is left alone. The picture follows at once, or with
    // the next event when queued.
    void draw(const GraphDocument& document, bool queued = false);
    // Lines without smoothing, while something is dragged.
    void draw_fast(bool on);
    // Takes fonts of the program anew.
    void fonts_changed();

    // The area of the axes in pixels of the plot, as it was drawn last.
    QRectF area() const;
    SheetHit part_at(const QPointF& pixel) const;
    QRectF box_of(const SheetHit& part) const;  // of a text, a label or the legend; empty when not in sight
    std::vector<PlacedLabel> labels() const;    // those in sight
    QRectF legend_box() const;                  // empty without a legend

 private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quom
