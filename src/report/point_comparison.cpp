#include "report/point_comparison.h"

#include <algorithm>
#include <cmath>

namespace quom {
namespace {

struct Row {
    std::string_view key, name, unit;
};
constexpr Compared<Row> rows = {{{"T", "T", "K"},
                                 {"p", "p", "kPa"},
                                 {"rho_V", "rho(V)", "kg/m^3"},
                                 {"rho_L", "rho(L)", "kg/m^3"},
                                 {"hLV", "delta(LV)h", "kJ/kmol"}}};

}  // namespace

std::string_view compared_key(std::size_t q) { return rows[q].key; }
std::string_view compared_name(std::size_t q) { return rows[q].name; }
std::string_view compared_unit(std::size_t q) { return rows[q].unit; }

PointComparison compare_point(const TpRhoPoint& point, const BatchResult& result) {
    PointComparison c;
    c.measured = {static_cast<float>(point.T), static_cast<float>(point.p), point.rhoV, point.rhoL,
                  point.HLV};
    if (!result.has_result()) return c;
    c.calculated = {result.TCalc, result.pCalc, result.rhoVCalc, result.rhoLCalc, result.hLVCalc};
    for (std::size_t q = 0; q < compared_count; ++q) {
        const auto measured = static_cast<double>(c.measured[q]);
        const auto calculated = static_cast<double>(c.calculated[q]);
        c.both[q] = measured > compared_least && calculated > compared_least;
        if (!c.both[q]) continue;
        c.difference[q] = static_cast<float>(calculated - measured);
        c.deviation[q] = (calculated / measured - 1.0) * 100.0;
    }
    return c;
}

void DeviationMeans::add(const PointComparison& point) {
    for (std::size_t q = 0; q < compared_count; ++q) {
        if (!point.both[q]) continue;
        ++count[q];
        sum[q] += std::fabs(point.deviation[q]);
    }
}

void DeviationMeans::add(const DeviationMeans& others) {
    for (std::size_t q = 0; q < compared_count; ++q) {
        count[q] += others.count[q];
        sum[q] += others.sum[q];
    }
}

std::optional<double> DeviationMeans::mean(std::size_t q) const {
    if (count[q] == 0) return std::nullopt;
    return sum[q] / count[q];
}

DeviationMeans deviation_means(std::span<const TpRhoPoint> points, std::span<const BatchResult> results) {
    DeviationMeans means;
    for (std::size_t i = 1; i < std::min(points.size(), results.size()); ++i) {
        if (results[i].has_result()) means.add(compare_point(points[i], results[i]));
    }
    return means;
}

}  // namespace quom
