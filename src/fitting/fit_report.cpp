#include "fitting/fit_report.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "fitting/start_values.h"

namespace quom {
namespace {

// Probability that Student's variable of so many degrees of freedom lies between -t and t: finite sums in the
// angle atan(t / sqrt(degrees)). Abramowitz and Stegun (1964), 26.7.3 and 26.7.4.
double student_between(double t, std::size_t degrees) {
    const double n = static_cast<double>(degrees), angle = std::atan(t / std::sqrt(n));
    const double cosine = std::cos(angle), sine = std::sin(angle);
    const bool odd = degrees % 2 == 1;
    double term = odd ? cosine : 1.0, sum = degrees > 1 ? term : 0.0;
    for (std::size_t k = odd ? 3 : 2; k + 1 < degrees; k += 2) {
        term *= cosine * cosine * static_cast<double>(k - 1) / static_cast<double>(k);
        sum += term;
    }
    return odd ? 2.0 / std::numbers::pi * (angle + sine * sum) : sine * sum;
}

// Cornish and Fisher's expansion about the normal quantile, for many degrees of freedom.
double student_of_many(double n) {
    const double z = 1.959963984540054, z3 = z * z * z, z5 = z3 * z * z;
    return z + (z3 + z) / (4.0 * n) + (5.0 * z5 + 16.0 * z3 + 3.0 * z) / (96.0 * n * n);
}

bool is_held_by_record(FitModel model) { return model != FitModel::august_rankine; }

void add_deviations(const FitResult& result, FitReport& report) {
    std::size_t count = 0, with_percent = 0;
    double sum = 0.0, sum_percent = 0.0, largest_percent = 0.0;
    for (const FittedPoint& point : result.points) {
        if (!point.active || !point.deviation) continue;
        const double deviation = std::fabs(*point.deviation);
        ++count;
        sum += deviation;
        if (!report.largest_at || deviation > report.largest_deviation) {
            report.largest_deviation = deviation;
            report.largest_at = point.point;
        }
        if (!point.percent) continue;
        ++with_percent;
        sum_percent += std::fabs(*point.percent);
        largest_percent = std::max(largest_percent, std::fabs(*point.percent));
    }
    if (count > 0) report.average_deviation = sum / static_cast<double>(count);
    if (count > 0 && with_percent == count) {
        report.average_percent = sum_percent / static_cast<double>(count);
        report.largest_percent = largest_percent;
    }
}

double quality(const ModelTrial& trial) {
    if (!trial.result.has_parameters()) return std::numeric_limits<double>::infinity();
    if (trial.result.SS == 0.0) return -std::numeric_limits<double>::infinity();
    return trial.report.AICc ? *trial.report.AICc : std::numeric_limits<double>::max();
}

}  // namespace

double student_95(std::size_t degrees) {
    if (degrees > 200) return student_of_many(static_cast<double>(degrees));
    double low = 1.9, high = 13.0;
    for (int i = 0; i < 60; ++i) {
        const double middle = 0.5 * (low + high);
        (student_between(middle, std::max<std::size_t>(degrees, 1)) < 0.95 ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

FitReport fit_report(const FitResult& result) {
    FitReport report;
    if (!result.has_parameters()) return report;
    const std::size_t n = result.covariance.size();
    report.correlation.assign(n, std::vector<std::optional<double>>(n));
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            const double deviations = std::sqrt(result.covariance[i][i]) * std::sqrt(result.covariance[j][j]);
            if (deviations > 0.0)
                report.correlation[i][j] =
                    i == j ? 1.0 : std::clamp(result.covariance[i][j] / deviations, -1.0, 1.0);
        }
    add_deviations(result, report);
    if (result.Sigma2 > 0.0) report.standard_error = std::sqrt(result.Sigma2);
    if (result.SS > 0.0 && result.N > 0) {
        const double N = static_cast<double>(result.N), k = static_cast<double>(result.FreeCount) + 1.0;
        report.AIC = N * std::log(result.SS / N) + 2.0 * k;
        if (N > k + 1.0) report.AICc = *report.AIC + 2.0 * k * (k + 1.0) / (N - k - 1.0);
    }
    return report;
}

std::optional<double> band_95(const FitInput& input, const FitResult& result, double x) {
    if (result.covariance.empty() || result.N <= result.FreeCount) return std::nullopt;
    const std::vector<double> slopes = fitted_derivatives(input, result.values(), x);
    if (slopes.empty()) return std::nullopt;
    const std::vector<FittedParameter>& parameters = result.parameters;
    const std::optional<std::size_t> follows = fit_model(input.model).follows;
    double variance = 0.0;
    for (std::size_t i = 0; i < parameters.size(); ++i)
        for (std::size_t j = 0; j < parameters.size(); ++j)
            if (follows != i && follows != j) variance += slopes[i] * result.covariance[i][j] * slopes[j];
    const double width = student_95(result.N - result.FreeCount) * std::sqrt(std::max(0.0, variance));
    return std::isfinite(width) ? std::optional(width) : std::nullopt;
}

std::vector<ModelTrial> try_all_models(const FitInput& input, FitQuantity quantity) {
    std::vector<ModelTrial> trials;
    for (const FitModelRow& row : fit_catalogue()) {
        if (row.quantity != quantity || row.NPar == 0 || !is_held_by_record(row.model)) continue;
        ModelTrial trial;
        trial.model = row.model;
        FitInput one = input;
        one.model = row.model;
        one.FitFix = {};
        one.bounds.clear();
        one.start.clear();
        if (!check_fit(one)) one.start = estimate_start(one).value_or(std::vector<double>{});
        trial.result = fit(one);
        trial.report = fit_report(trial.result);
        trials.push_back(std::move(trial));
    }
    std::ranges::stable_sort(trials, [](const ModelTrial& a, const ModelTrial& b) {
        if (quality(a) != quality(b)) return quality(a) < quality(b);
        return a.result.SS < b.result.SS;
    });
    return trials;
}

}  // namespace quom
