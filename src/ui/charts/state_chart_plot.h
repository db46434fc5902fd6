// The one drawing routine of state charts: a plot of the chart library is brought to what a chart says, for
// screen, files and paper. Labels stand where the size of the plot leaves room for them.
#pragma once
#include <QObject>
#include <QPointF>
#include <QRectF>
#include <memory>
#include <vector>

#include "diagrams/label_placing.h"
#include "diagrams/state_chart.h"

class QCustomPlot;

namespace quom {

class StateChartPlot : public QObject {
 public:
    // Takes the plot over: axes, layout, layers. The plot outlives it or owns it.
    explicit StateChartPlot(QCustomPlot& plot);
    ~StateChartPlot() override;

    // Brings the plot to the chart, on a light or a black sheet. The picture follows at once, or with the
    // next event when queued.
    void draw(const StateChart& chart, bool black, bool queued = false);
    // States with a ring around them; drawn with the next picture.
    void mark(std::vector<ChartState> states);
    // Takes fonts of the program anew.
    void fonts_changed();

    // Shows the cross at a pixel and the state beside it; nothing for a state that does not exist.
    void show_cross(const QPointF& pixel, const ChartState& state);
    void hide_cross();
    // Shows the chart moved by so many pixels, lines and labels as they are, until it is drawn anew.
    void drag(const QPointF& by);

    // The area of the axes in pixels of the plot, as it was drawn last.
    QRectF area() const;
    // The labels in sight; boxes in pixels from the corner of the area.
    const std::vector<PlacedLineLabel>& labels() const;
    // Boxes of the texts around the area in pixels of the plot: header, entries of the legend, titles,
    // footer.
    std::vector<QRectF> texts_around() const;

 private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace quom
