// The points of a sheet's series that are in sight, for the chart library.
#pragma once
#include <qcustomplot.h>

#include <vector>

#include "diagrams/graph_document.h"

namespace quom {

// An axis as it is shown. A logarithmic one begins above 0; where that is not possible the axis is linear.
struct ShownAxis {
    double low = 0, high = 1;
    bool log = false;
    bool operator==(const ShownAxis&) const = default;
    bool contains(double x) const { return x >= low && x <= high; }
    // Share of the way from low to high; of a logarithmic axis for x above 0 alone.
    double share(double x) const;
    double at(double share) const;
};
struct ShownAxes {
    ShownAxis x, y;
    bool operator==(const ShownAxes&) const = default;
};
ShownAxes shown_axes(const GraphDocument& document);

// The points as shown, those outside the axes left out; index of each in the series, from 0.
struct SeenPoint {
    double x = 0, y = 0;
    std::size_t index = 0;
};
std::vector<SeenPoint> points_in_sight(const GraphDocument& document, const Series& series,
                                       const ShownAxes& axes);
// The line through the points, cut at the limits of the axes: pieces separated by a point that is no number.
// The chart library would lead the parts outside along the frame, where a picture shows them.
std::vector<SeenPoint> line_in_sight(const GraphDocument& document, const Series& series,
                                     const ShownAxes& axes);

void set_points(QCPCurve& curve, const std::vector<SeenPoint>& points);

}  // namespace quom
