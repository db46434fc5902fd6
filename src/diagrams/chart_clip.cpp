#include "diagrams/chart_clip.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quom {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// A point in shares of the axes, 0 to 1 inside.
struct Place {
    double X = 0, Y = 0, fraction = -1;
};

// Part of a piece from t = first to t = last that lies inside (Liang and Barsky 1984); none: first > last.
struct Inside {
    double first = 0, last = 1;
    // 0 <= start + t step <= 1
    void cut(double start, double step) {
        if (step == 0.0) {
            if (start < 0.0 || start > 1.0) first = 2.0;
            return;
        }
        const double t0 = -start / step, t1 = (1.0 - start) / step;
        first = std::max(first, std::min(t0, t1));
        last = std::min(last, std::max(t0, t1));
    }
};

}  // namespace

std::vector<ChartVertex> clipped_line(const StateChart& chart, const ChartStates& states) {
    std::vector<ChartVertex> line;
    const auto gap = [&] {
        if (!line.empty() && !std::isnan(line.back().x)) line.push_back({NaN, NaN});
    };
    const auto vertex = [&](const Place& a, const Place& b, double t) {
        // The ends stay within the axes in spite of rounding.
        const double X = std::clamp(a.X + t * (b.X - a.X), 0.0, 1.0);
        const double Y = std::clamp(a.Y + t * (b.Y - a.Y), 0.0, 1.0);
        const bool two = a.fraction >= 0.0 && b.fraction >= 0.0;
        const double fraction = two ? a.fraction + t * (b.fraction - a.fraction) : -1.0;
        const auto held = [](const ChartAxis& axis, double place) {
            return std::clamp(axis.shown_at(place), axis.low, axis.high);
        };
        line.push_back({held(chart.x, X), held(chart.y, Y), fraction});
    };
    Place last;
    bool connected = false;
    for (const ChartState& state : states) {
        const Place here{chart.x.place(chart.shown(state, chart.x.quantity)),
                         chart.y.place(chart.shown(state, chart.y.quantity)), state.x};
        const bool there = state.exists() && std::isfinite(here.X) && std::isfinite(here.Y);
        if (!there || !connected) {
            gap();
            connected = there;
            last = here;
            continue;
        }
        Inside inside;
        inside.cut(last.X, here.X - last.X);
        inside.cut(last.Y, here.Y - last.Y);
        if (inside.first <= inside.last) {
            if (inside.first > 0.0 || line.empty() || std::isnan(line.back().x)) {
                gap();
                vertex(last, here, inside.first);
            }
            vertex(last, here, inside.last);
            if (inside.last < 1.0) gap();
        } else {
            gap();
        }
        last = here;
    }
    if (!line.empty() && std::isnan(line.back().x)) line.pop_back();
    return line;
}

}  // namespace quom
