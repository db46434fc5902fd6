// Calculated against measured values of data points: differences, deviations and their means.
#pragma once
#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "calc/batch_result.h"
#include "fitting/exp_data.h"

namespace quom {

// The quantities that a point may have measured and calculated, in the order of lists.
enum ComparedQuantity : std::size_t { compared_T, compared_p, compared_rhoV, compared_rhoL, compared_hLV };
inline constexpr std::size_t compared_count = 5;
template <class Value>
using Compared = std::array<Value, compared_count>;

// Below it a value counts as not there, and a difference as none.
inline constexpr double compared_least = 1e-6;

// Key in JSON ("rho_V"), name for people ("rho(V)"), and unit of a compared quantity.
std::string_view compared_key(std::size_t q);
std::string_view compared_name(std::size_t q);
std::string_view compared_unit(std::size_t q);

// One point. Values are singles, as lists keep them; T and p are rounded to single for it.
struct PointComparison {
    Compared<float> measured{}, calculated{};  // 0: none
    Compared<bool> both{};                     // a measured and a calculated value
    Compared<float> difference{};              // calculated - measured
    Compared<double> deviation{};              // (calculated/measured - 1) 100 [%]
};
// Of a point; one without a result has no calculated values.
PointComparison compare_point(const TpRhoPoint& point, const BatchResult& result);

// Means of the absolute deviations [%] with how many points they are of.
struct DeviationMeans {
    Compared<double> sum{};
    Compared<int> count{};
    void add(const PointComparison& point);
    void add(const DeviationMeans& others);
    std::optional<double> mean(std::size_t q) const;  // none without a point
};
// Of points 1..n that have a result.
DeviationMeans deviation_means(std::span<const TpRhoPoint> points, std::span<const BatchResult> results);

}  // namespace quom
