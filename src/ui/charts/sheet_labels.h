// Labels of curves, sets of points and marks: tags that stand at a point, keep inside the axes and do not
// cover each other.
#pragma once
#include <qcustomplot.h>

#include <QColor>
#include <QFont>
#include <QPen>
#include <vector>

#include "ui/charts/sheet_cells.h"
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
    int series = -1;                // its own among the lines of the surroundings
};

// What labels keep clear of, or rather do not hide.
struct Surroundings {
    QRectF area;
    std::vector<QRectF> taken;     // legend, texts
    std::vector<QPointF> symbols;  // critical points, measured points
    LineCells lines;
};

class SheetLabels {
 public:
    // The labels stand in a layer of their own; below it those that found no free place.
    SheetLabels(QCustomPlot& plot, QCPLayer& layer, QCPLayer& below);

    void set(std::vector<LabelWish> wishes, const QFont& font);
    // Places all of them for the layout in force.
    void place(Surroundings around);
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
        bool is_covered = false;  // no free place
    };
    struct Candidate {
        SeenPoint at;
        QPointF pixel;
        double off = 0;  // from where it is wanted [pixels]
    };
    Tag new_tag();
    QPointF pixel_of(const SeenPoint& at) const;
    QSizeF box_size(const LabelWish& wish, double widest) const;
    Spot moved_spot(const LabelWish& wish, const QSizeF& size, const QRectF& area) const;
    std::vector<Candidate> candidates(const LabelWish& wish, const Spot& first) const;
    Spot free_spot(const LabelWish& wish, const QSizeF& size, const Surroundings& around) const;
    void put(std::size_t number, const Spot& spot);

    QCustomPlot& plot_;
    QCPLayer &layer_, &below_;
    QFont font_;
    std::vector<LabelWish> wishes_;
    std::vector<Tag> tags_;
    std::vector<PlacedLabel> placed_;
};

}  // namespace quom
