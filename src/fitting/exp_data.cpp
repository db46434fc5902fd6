#include "fitting/exp_data.h"

namespace quom {
namespace {

bool is_deleted(const ExperimentalData& data, int point) {
    return data.points[static_cast<std::size_t>(point)].Aus != 0;
}

}  // namespace

int data_point_count(const ExperimentalData& data) {
    return data.points.empty() ? 0 : static_cast<int>(data.points.size()) - 1;
}

int first_active_point(const ExperimentalData& data) {
    for (int point = 1; point <= data_point_count(data); ++point) {
        if (!is_deleted(data, point)) return point;
    }
    return 0;
}

int stepped_point(const ExperimentalData& data, int point, int step) {
    const int last = data_point_count(data);
    const auto inside = [last](int at) { return at >= 1 && at <= last; };
    int next = point + step;
    if (inside(next) && is_deleted(data, next)) next += step;
    return inside(next) ? next : point;
}

}  // namespace quom
