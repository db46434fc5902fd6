#include "fitting/exp_data.h"

#include <algorithm>
#include <cmath>

#include "fitting/pasted_rows.h"

namespace quom {
namespace {

bool is_deleted(const ExperimentalData& data, int point) {
    return data.points[static_cast<std::size_t>(point)].Aus != 0;
}

// The measured points first to last as places in the list; empty where there are none.
struct Places {
    std::ptrdiff_t begin = 1, end = 1;
};
Places places_of(const ExperimentalData& data, int first, int last) {
    first = std::max(first, 1);
    last = std::min(last, data_point_count(data));
    return first > last ? Places{} : Places{first, std::ptrdiff_t{last} + 1};
}

template <class Key>
void sort_points(ExperimentalData& data, Key key) {
    std::vector<TpRhoPoint>& points = data.points.edit();
    if (points.size() < 2) return;
    std::ranges::stable_sort(points.begin() + 1, points.end(), {}, key);
    data.ExpGeaendert = true;
}

// The columns of the table that optFitFunction chooses.
std::size_t fit_column(const ExperimentalData& data) {
    constexpr std::size_t columns[] = {1, 3, 2, 4, 5};
    return columns[std::clamp(data.optFitFunction, 1, 5) - 1];
}

constexpr std::string_view column_names[exp_columns] = {"T", "p", "rho(V)", "rho(L)", "delta(LV)h", "cp"};

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

double exp_value(const TpRhoPoint& point, std::size_t column) {
    if (column == 0) return point.T;
    if (column == 1) return point.p;
    constexpr float TpRhoPoint::*singles[] = {&TpRhoPoint::rhoV, &TpRhoPoint::rhoL, &TpRhoPoint::HLV,
                                              &TpRhoPoint::cp};
    return static_cast<double>(point.*singles[column - 2]);
}

void set_exp_value(TpRhoPoint& point, std::size_t column, double value) {
    constexpr float TpRhoPoint::*singles[] = {&TpRhoPoint::rhoV, &TpRhoPoint::rhoL, &TpRhoPoint::HLV,
                                              &TpRhoPoint::cp};
    if (column == 0) {
        point.T = value;
    } else if (column == 1) {
        point.p = value;
    } else {
        point.*singles[column - 2] = static_cast<float>(value);
    }
}

void clear_points(ExperimentalData& data) {
    data.points.edit().resize(1);
    data.file = {};
    data.ExpGeaendert = false;
}

void remove_lines(ExperimentalData& data, int first, int last) {
    const Places places = places_of(data, first, last);
    if (places.begin == places.end) return;
    std::vector<TpRhoPoint>& points = data.points.edit();
    points.erase(points.begin() + places.begin, points.begin() + places.end);
    data.ExpGeaendert = true;
}

void toggle_lines(ExperimentalData& data, int first, int last) {
    const Places places = places_of(data, first, last);
    if (places.begin == places.end) return;
    std::vector<TpRhoPoint>& points = data.points.edit();
    for (std::ptrdiff_t i = places.begin; i < places.end; ++i) {
        TpRhoPoint& point = points[static_cast<std::size_t>(i)];
        point.Aus = point.Aus == 0 ? std::int16_t{-1} : std::int16_t{0};
    }
}

void sort_by_T(ExperimentalData& data) { sort_points(data, &TpRhoPoint::T); }
void sort_by_p(ExperimentalData& data) { sort_points(data, &TpRhoPoint::p); }

std::string insert_rows(ExperimentalData& data, int at, std::string_view text) {
    const PastedRows pasted = read_pasted_rows(text, exp_columns);
    if (!pasted.fault.empty()) return pasted.fault;
    if (pasted.rows.empty()) return "There are no values to insert.";
    if (pasted.rows.size() + data.points.size() > MaxDataPoints + 1)  // [0] is no measured point
        return "More than " + std::to_string(MaxDataPoints) + " points are not possible.";
    std::vector<TpRhoPoint> added;
    added.reserve(pasted.rows.size());
    for (const std::vector<double>& row : pasted.rows) {
        TpRhoPoint& point = added.emplace_back();
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (row[column] < 0)
                return "Row " + std::to_string(added.size()) + ": " + std::string(column_names[column]) +
                       " cannot be negative.";
            set_exp_value(point, column, row[column]);
        }
    }
    std::vector<TpRhoPoint>& points = data.points.edit();
    const int place = std::clamp(at, 1, data_point_count(data) + 1);
    points.insert(points.begin() + place, added.begin(), added.end());
    data.ExpGeaendert = true;
    return {};
}

std::vector<DataPair> T_y_points(const ExperimentalData& data) {
    std::vector<DataPair> pairs;
    const std::size_t column = fit_column(data);
    for (int i = 1; i <= data_point_count(data); ++i) {
        const TpRhoPoint& point = data.points[static_cast<std::size_t>(i)];
        if (point.Aus == 0) pairs.push_back({point.T, exp_value(point, column)});
    }
    return pairs;
}

std::string_view fit_title(const ExperimentalData& data) {
    return fit_column(data) == 1 ? "p = f(T)" : "y = f(T)";
}

LnPPoints ln_p_points(const ExperimentalData& data) {
    LnPPoints curve;
    for (int i = 1; i <= data_point_count(data); ++i) {
        const TpRhoPoint& point = data.points[static_cast<std::size_t>(i)];
        if (point.Aus != 0) continue;
        if (!(point.T > 0) || !(point.p > 0))
            return {{},
                    Message{.title = "Execution not possible",
                            .text = "T and p columns cannot contain zero values!",
                            .kind = MessageKind::stop}};
        curve.pairs.push_back({1 / point.T, std::log(point.p)});
    }
    return curve;
}

}  // namespace quom
