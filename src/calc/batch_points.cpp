#include "calc/batch_points.h"

namespace quom {
namespace {

bool is_deleted(const Session& s, int point) {
    return s.exp.points[static_cast<std::size_t>(point)].Aus != 0;
}

}  // namespace

int data_point_count(const Session& s) { return static_cast<int>(s.exp.points.size()) - 1; }

int first_active_point(const Session& s) {
    for (int point = 1; point <= data_point_count(s); ++point) {
        if (!is_deleted(s, point)) return point;
    }
    return 0;
}

int stepped_point(const Session& s, int point, int step) {
    const int last = data_point_count(s);
    const auto inside = [last](int at) { return at >= 1 && at <= last; };
    int next = point + step;
    if (inside(next) && is_deleted(s, next)) next += step;
    return inside(next) ? next : point;
}

void clear_results(Session& s) { s.calc.BatchResults.assign(s.exp.points.size(), {}); }

}  // namespace quom
