// Labels of curves, sets of points and marks: tags that stand at a point, keep inside the axes and do not
// cover each other.
#pragma once
#include <qcustomplot.h>

#include <QColor>
#include <QFont>
#include <QPen>
#include <vector>

#include "ui/charts/sheet_plot.h"
#include "ui/charts/sheet_series.h"

namespace quom {

struct LabelWish {
    SheetHit of;
    QString text;
    QPen border{Qt::NoPen};
    QColor ink, ground;
    std::vector<SeenPoint> points;  // that it may stand at, along its series
    std::size_t wanted = 0;         // index in the series
    double dx = 0, dy = 0;          // moved by hand [pixels], from where it stands first
    double indent = 0;              // text beyond the point, to the right
    bool beside = false;            // of a mark along y: right of its line
};

class SheetLabels {
 public:
    // The labels stand in a layer of their own.
    SheetLabels(QCustomPlot& plot, QCPLayer& layer);

    void set(std::vector<LabelWish> wishes, const QFont& font);
    // Places all of them for the layout in force; blocked: boxes that they keep clear of.
    void place(const QRectF& area, const std::vector<QRectF>& blocked, const std::vector<QPointF>& symbols);
    std::vector<PlacedLabel> placed() const;

 private:
    struct Tag {
        QCPItemTracer* point = nullptr;
        QCPItemText* text = nullptr;
        QCPItemLine* lead = nullptr;  // to the point, where the tag stands apart from it
    };
    struct Spot {
        QRectF box;
        SeenPoint at;
        QPointF pixel;
    };
    Tag new_tag();
    QPointF pixel_of(const SeenPoint& at) const;
    QSizeF box_size(const LabelWish& wish, double widest) const;
    Spot moved_spot(const LabelWish& wish, const QSizeF& size, const QRectF& area) const;
    Spot free_spot(const LabelWish& wish, const QSizeF& size, const QRectF& area,
                   const std::vector<QRectF>& taken, const std::vector<QPointF>& symbols) const;
    void put(std::size_t number, const Spot& spot);

    QCustomPlot& plot_;
    QCPLayer& layer_;
    QFont font_;
    std::vector<LabelWish> wishes_;
    std::vector<Tag> tags_;
    std::vector<PlacedLabel> placed_;
};

}  // namespace quom
