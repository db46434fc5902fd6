#include "diagrams/chart_families.h"

#include <array>
#include <cmath>
#include <limits>
#include <span>

namespace quom {
namespace {

constexpr double Slack = 1e-9;  // of a step: values on the ends count

constexpr double set_1[] = {1}, set_13[] = {1, 3}, set_125[] = {1, 2, 5}, set_6[] = {1, 1.5, 2, 3, 5, 7},
                 set_10[] = {1, 1.2, 1.5, 2, 2.5, 3, 4, 5, 6, 8};
struct LogSet {
    std::span<const double> digits;
    double bonus;
};
const std::array log_sets = {LogSet{set_1, 0.0}, LogSet{set_13, 0.0}, LogSet{set_125, 0.35},
                             LogSet{set_6, 0.0}, LogSet{set_10, 0.0}};

// m 10^k with one rounding alone.
double scaled(double m, int k) { return k < 0 ? m / std::pow(10.0, -k) : m * std::pow(10.0, k); }
int decade_of(double x) { return static_cast<int>(std::floor(std::log10(x) + Slack)); }

bool inside(double n, const FamilyCount& count) { return n >= count.low && n <= count.high; }

double score(double n, const FamilyCount& count) {
    if (n < 1.0) return 1e6;
    return std::fabs(std::log(n / count.wish)) + (inside(n, count) ? 0.0 : 5.0);
}

std::vector<double> log_values(double low, double high, std::span<const double> digits) {
    std::vector<double> values;
    for (int k = decade_of(low); k <= decade_of(high); ++k) {
        for (const double digit : digits) {
            const double value = scaled(digit, k);
            if (value >= low * (1.0 - Slack) && value <= high * (1.0 + Slack)) values.push_back(value);
        }
    }
    return values;
}

}  // namespace

std::vector<double> linear_family(double low, double high, const FamilyCount& count) {
    if (!(low < high) || !std::isfinite(high - low)) return {};
    double best = std::numeric_limits<double>::infinity(), best_m = 1.0;
    int best_k = 0;
    const int decade = decade_of((high - low) / count.wish);
    for (int k = decade - 1; k <= decade + 1; ++k) {
        for (const double m : {1.0, 2.0, 2.5, 5.0}) {
            const double step = scaled(m, k);
            const double n = std::floor(high / step + Slack) - std::ceil(low / step - Slack) + 1.0;
            const double here = score(n, count) + (m == 2.5 ? 0.12 : 0.0);
            if (!(here < best)) continue;
            best = here;
            best_m = m;
            best_k = k;
        }
    }
    const double step = scaled(best_m, best_k), last = std::floor(high / step + Slack);
    std::vector<double> values;
    for (double i = std::ceil(low / step - Slack); i <= last && values.size() < 1000; i += 1.0)
        values.push_back(scaled(i * best_m, best_k) + 0.0);
    return values;
}

std::vector<double> log_family(double low, double high, const FamilyCount& count) {
    if (!(low > 0.0) || !(low < high) || !std::isfinite(high)) return {};
    double best = std::numeric_limits<double>::infinity();
    std::vector<double> values;
    for (const LogSet& set : log_sets) {
        std::vector<double> list = log_values(low, high, set.digits);
        const double here = score(static_cast<double>(list.size()), count) - set.bonus;
        if (!(here < best)) continue;
        best = here;
        values = std::move(list);
    }
    if (static_cast<int>(values.size()) >= count.low) return values;
    return high < 5.0 * low ? linear_family(low, high, count) : values;
}

AxisSteps axis_steps(double low, double high, int about) {
    const double wish = (high - low) / about;
    const int decade = decade_of(wish);
    AxisSteps r;
    double best = std::numeric_limits<double>::infinity();
    for (int k = decade; k <= decade + 1; ++k) {
        for (const double m : set_125) {
            const double here = std::fabs(std::log(scaled(m, k) / wish));
            if (!(here < best)) continue;
            best = here;
            r = {.major = scaled(m, k), .minor = scaled(m == 2.0 ? 0.5 : 0.2 * m, k)};
        }
    }
    return r;
}

}  // namespace quom
