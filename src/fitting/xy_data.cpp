#include "fitting/xy_data.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "fitting/exp_data.h"
#include "fitting/pasted_rows.h"

namespace quom {
namespace {

int line_count(const XYData& data) { return static_cast<int>(data.points.size()); }

template <class Key>
void sort_points(XYData& data, Key key) {
    if (data.points.empty()) return;
    std::ranges::stable_sort(data.points.edit(), {}, key);
    data.XYGeaendert = true;
}

XYPoint converted(XYPoint point, XYConversion conversion, double W) {
    const double x = static_cast<double>(point.x), y = static_cast<double>(point.y);
    switch (conversion) {
        case XYConversion::exp_y:
            point.y = static_cast<float>(std::exp(y));
            break;
        case XYConversion::ln_y:
            point.y = static_cast<float>(y > 0 ? std::log(y) : std::nan(""));
            break;
        case XYConversion::y_times_W:
            point.y = static_cast<float>(y * W);
            break;
        case XYConversion::y_plus_W:
            point.y = static_cast<float>(y + W);
            break;
        case XYConversion::reciprocal_y:
            point.y = static_cast<float>(1 / y);
            break;
        case XYConversion::one_minus_x:
            point.x = static_cast<float>(1 - x);
            break;
    }
    return point;
}

}  // namespace

void remove_lines(XYData& data, int first, int last) {
    first = std::max(first, 1);
    last = std::min(last, line_count(data));
    if (first > last) return;
    std::vector<XYPoint>& points = data.points.edit();
    points.erase(points.begin() + (first - 1), points.begin() + last);
    data.XYGeaendert = true;
}

void toggle_lines(XYData& data, int first, int last) {
    first = std::max(first, 1);
    last = std::min(last, line_count(data));
    if (first > last) return;
    std::vector<XYPoint>& points = data.points.edit();
    for (int line = first; line <= last; ++line) {
        XYPoint& point = points[static_cast<std::size_t>(line) - 1];
        point.Aus = point.Aus == 0 ? std::int16_t{-1} : std::int16_t{0};
    }
    data.XYGeaendert = true;  // the file holds active points only
}

void sort_by_x(XYData& data) { sort_points(data, &XYPoint::x); }
void sort_by_y(XYData& data) { sort_points(data, &XYPoint::y); }

void change_xy(XYData& data) {
    if (data.points.empty()) return;
    for (XYPoint& point : data.points.edit()) std::swap(point.x, point.y);
    data.XYGeaendert = true;
}

std::string insert_rows(XYData& data, int at, std::string_view text) {
    const PastedRows pasted = read_pasted_rows(text, 2);
    if (!pasted.fault.empty()) return pasted.fault;
    if (pasted.rows.empty()) return "There are no values to insert.";
    if (pasted.rows.size() + data.points.size() > MaxDataPoints)
        return "More than " + std::to_string(MaxDataPoints) + " points are not possible.";
    std::vector<XYPoint> added;
    added.reserve(pasted.rows.size());
    for (const std::vector<double>& row : pasted.rows)
        added.push_back({static_cast<float>(row[0]), row.size() > 1 ? static_cast<float>(row[1]) : 0.0f});
    std::vector<XYPoint>& points = data.points.edit();
    const int place = std::clamp(at, 1, static_cast<int>(points.size()) + 1) - 1;
    points.insert(points.begin() + place, added.begin(), added.end());
    data.XYGeaendert = true;
    return {};
}

bool convert(XYData& data, XYConversion conversion, double W) {
    std::vector<XYPoint> results = data.points.list();
    bool any = false;
    for (XYPoint& point : results) {
        if (point.Aus != 0) continue;
        any = true;
        point = converted(point, conversion, W);
        if (!std::isfinite(point.x) || !std::isfinite(point.y)) return false;
    }
    if (!any) return true;
    data.points = SharedVector<XYPoint>(std::move(results));
    data.XYGeaendert = true;
    return true;
}

Message conversion_refusal() {
    return {.title = "Execution not possible",
            .text =
                "Action is not possible using the present data\n"
                "(The problematic points can be set \"inactive\" (activate checkbox)\n or deleted.)",
            .kind = MessageKind::stop};
}

}  // namespace quom
