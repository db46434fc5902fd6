#include "ui/charts/sheet_series.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "diagrams/graph_view.h"
#include "diagrams/ticks.h"

namespace quom {
namespace {

ShownAxis shown_axis(float low, float high, bool log) {
    ShownAxis axis{static_cast<double>(low), static_cast<double>(high), log};
    if (log) {
        const double first = log_low(axis.low, axis.high);
        axis.log = first > 0.0 && first < axis.high;
        if (axis.log) axis.low = first;
    }
    return axis;
}

struct Place {
    double x = 0, y = 0;
};

Place place_of(const GraphDocument& document, const SheetPoint& point) {
    const SheetPoint shown = shown_point(document, point);
    return {static_cast<double>(shown.X), static_cast<double>(shown.Y)};
}

bool contains(const ShownAxes& axes, const Place& at) {
    return axes.x.contains(at.x) && axes.y.contains(at.y);
}

// Whether the point has a place on the sheet at all, in sight or not.
bool has_place(const ShownAxes& axes, const Place& at) {
    return !(axes.x.log && !(at.x > 0.0)) && !(axes.y.log && !(at.y > 0.0));
}

// The part [begin, end] of the way from a to b in shares of the axes that lies in the unit square.
bool cut(const Place& a, const Place& b, double& begin, double& end) {
    begin = 0;
    end = 1;
    const auto cut_at = [&](double from, double to) {
        const double way = to - from;
        if (way == 0.0) return from >= 0.0 && from <= 1.0;
        double enters = -from / way, leaves = (1.0 - from) / way;
        if (enters > leaves) std::swap(enters, leaves);
        begin = std::max(begin, enters);
        end = std::min(end, leaves);
        return begin <= end;
    };
    return cut_at(a.x, b.x) && cut_at(a.y, b.y);
}

class LineCutter {
 public:
    explicit LineCutter(const ShownAxes& axes) : axes_(axes) {}

    void add(const Place& at, std::size_t index) {
        const bool inside = contains(axes_, at);
        if (!has_place(axes_, at)) {
            has_last_ = false;
            return;
        }
        if (has_last_ && !(inside && last_inside_)) add_cut(at, index);
        if (inside) {
            if (!has_last_) break_line();
            push(at, index);
        }
        last_ = at;
        last_inside_ = inside;
        has_last_ = true;
    }
    std::vector<SeenPoint> take() { return std::move(line_); }

 private:
    void push(const Place& at, std::size_t index) { line_.push_back({at.x, at.y, index}); }
    void break_line() {
        constexpr double none = std::numeric_limits<double>::quiet_NaN();
        if (!line_.empty()) line_.push_back({none, none, line_.back().index});
    }
    Place share(const Place& at) const { return {axes_.x.share(at.x), axes_.y.share(at.y)}; }
    // The point on the frame, so many shares on the way from a to b.
    void push_cut(const Place& a, const Place& b, double part, std::size_t index) {
        push({axes_.x.at(std::clamp(a.x + part * (b.x - a.x), 0.0, 1.0)),
              axes_.y.at(std::clamp(a.y + part * (b.y - a.y), 0.0, 1.0))},
             index);
    }
    // The ends on the frame of the way from the last point to this one, of which one at least is outside.
    void add_cut(const Place& at, std::size_t index) {
        const Place a = share(last_), b = share(at);
        double begin = 0, end = 1;
        if (!cut(a, b, begin, end)) return;
        if (!last_inside_) {
            break_line();
            push_cut(a, b, begin, index);
        }
        if (!contains(axes_, at)) push_cut(a, b, end, index);
    }

    const ShownAxes& axes_;
    std::vector<SeenPoint> line_;
    Place last_;
    bool has_last_ = false, last_inside_ = false;
};

}  // namespace

double ShownAxis::share(double x) const {
    return log ? std::log(x / low) / std::log(high / low) : (x - low) / (high - low);
}

double ShownAxis::at(double share) const {
    const double x = log ? low * std::pow(high / low, share) : low + share * (high - low);
    return std::clamp(x, low, high);
}

ShownAxes shown_axes(const GraphDocument& document) {
    const CurveRange range = shown_range(document);
    return {shown_axis(range.XMin, range.XMax, shown_x(document).log),
            shown_axis(range.YMin, range.YMax, shown_y(document).log)};
}

std::vector<SeenPoint> points_in_sight(const GraphDocument& document, const Series& series,
                                       const ShownAxes& axes) {
    std::vector<SeenPoint> seen;
    for (std::size_t i = 0; i < series.points.size(); ++i) {
        const Place at = place_of(document, series.points[i]);
        if (contains(axes, at)) seen.push_back({at.x, at.y, i});
    }
    return seen;
}

std::vector<SeenPoint> line_in_sight(const GraphDocument& document, const Series& series,
                                     const ShownAxes& axes) {
    LineCutter cutter(axes);
    for (std::size_t i = 0; i < series.points.size(); ++i)
        cutter.add(place_of(document, series.points[i]), i);
    return cutter.take();
}

void set_points(QCPCurve& curve, const std::vector<SeenPoint>& points) {
    QVector<QCPCurveData> data;
    data.reserve(static_cast<qsizetype>(points.size()));
    for (const SeenPoint& point : points)
        data.push_back({static_cast<double>(data.size()), point.x, point.y});
    curve.data()->set(data, true);
}

}  // namespace quom
