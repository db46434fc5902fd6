#include "fitting/akima_spline.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace quom {
namespace {

constexpr double EqualX = 1e-30;
constexpr std::size_t HalfWindow = 3;  // of the smoothing

// Slopes of the chords between the points, and of two more at each end, which go on with the change of slope
// of the two before them: m[i + 2] from point i to i + 1.
struct Chords {
    std::vector<double> m;

    Chords(const std::vector<double>& x, const std::vector<double>& y) : m(x.size() + 3) {
        const std::size_t n = x.size();
        for (std::size_t i = 0; i + 1 < n; ++i) m[i + 2] = (y[i + 1] - y[i]) / (x[i + 1] - x[i]);
        for (std::size_t i = 2; i-- > 0;) m[i] = 2.0 * m[i + 1] - m[i + 2];
        for (std::size_t i = n + 1; i < n + 3; ++i) m[i] = 2.0 * m[i - 1] - m[i - 2];
    }

    double at(std::size_t i) const { return m[i + 2]; }

    // Slope in a point, from the four chords around it.
    double slope(std::size_t point) const {
        const std::size_t i = point + 2;
        const double w1 = std::fabs(m[i + 1] - m[i]), w2 = std::fabs(m[i - 1] - m[i - 2]);
        return w1 + w2 != 0.0 ? (w1 * m[i - 1] + w2 * m[i]) / (w1 + w2) : (m[i - 1] + m[i]) / 2.0;
    }
};

bool all_finite(const std::vector<double>& values) {
    return std::ranges::all_of(values, [](double v) { return std::isfinite(v); });
}

}  // namespace

bool SplineOrder(std::vector<double>& x, std::vector<double>& y) {
    std::vector<std::size_t> order(x.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return x[i]; });
    std::vector<double> sorted_x, sorted_y;
    for (const std::size_t i : order) {
        sorted_x.push_back(x[i]);
        sorted_y.push_back(y[i]);
    }
    x = std::move(sorted_x);
    y = std::move(sorted_y);
    for (std::size_t i = 1; i < x.size(); ++i)
        if (!(std::fabs(x[i] - x[i - 1]) >= EqualX)) return true;
    return false;
}

std::vector<double> smoothed(const std::vector<double>& x, const std::vector<double>& y, double Sm) {
    if (Sm == 0.0 || x.empty()) return y;
    const std::size_t n = x.size();
    const double w0 = x.back() - x.front();
    std::vector<double> result(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t h = std::min({HalfWindow, i, n - 1 - i});
        double weights = 0.0, sum = 0.0;
        for (std::size_t k = i - h; k <= i + h; ++k) {
            const double weight =
                k == i ? 1.0 : std::max(0.0, 1.0 - std::pow(std::fabs(x[i] - x[k]) / w0 / 3.0, Sm));
            weights += weight;
            sum += weight * y[k];
        }
        result[i] = sum / weights;
    }
    return result;
}

AkimaSpline SplineCoefficients(const std::vector<double>& x, const std::vector<double>& y, double Sm) {
    const std::size_t n = x.size();
    if (n < 3 || y.size() != n || !all_finite(x) || !all_finite(y) || !(Sm >= SmallestSm && Sm <= LargestSm))
        return {};
    for (std::size_t i = 1; i < n; ++i)
        if (!(x[i] - x[i - 1] >= EqualX)) return {};

    AkimaSpline spline{x, smoothed(x, y, Sm), std::vector<double>(n), std::vector<double>(n),
                       std::vector<double>(n)};
    const Chords chords(x, spline.SplineA);
    for (std::size_t i = 0; i < n; ++i) spline.SplineB[i] = chords.slope(i);
    for (std::size_t i = 0; i + 1 < n; ++i) {
        const double h = x[i + 1] - x[i], m = chords.at(i), t = spline.SplineB[i],
                     next = spline.SplineB[i + 1];
        spline.SplineC[i] = (3.0 * m - 2.0 * t - next) / h;
        spline.SplineD[i] = (t + next - 2.0 * m) / (h * h);
    }
    const bool finite = all_finite(spline.SplineA) && all_finite(spline.SplineB) &&
                        all_finite(spline.SplineC) && all_finite(spline.SplineD);
    return finite ? spline : AkimaSpline{};
}

std::optional<double> SplineValue(const AkimaSpline& spline, double t, SplineDerivative mode) {
    const std::vector<double>& x = spline.SplineX;
    if (x.empty() || !std::isfinite(t)) return std::nullopt;
    const auto above = std::ranges::upper_bound(x, t);
    const std::size_t i = above == x.begin() ? 0 : static_cast<std::size_t>(above - x.begin()) - 1;
    const double u = t - x[i], A = spline.SplineA[i], B = spline.SplineB[i];
    const bool line = t < x.front() || i + 1 == x.size();
    const double C = line ? 0.0 : spline.SplineC[i], D = line ? 0.0 : spline.SplineD[i];
    const double value =
        mode == SplineDerivative::value ? ((D * u + C) * u + B) * u + A : (3.0 * D * u + 2.0 * C) * u + B;
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<Message> check_spline(std::vector<double>& x, std::vector<double>& y, SplineData data) {
    const auto message = [](std::string title, std::string text) {
        return Message{std::move(title), std::move(text), Buttons::ok, Answer::ok, MessageKind::warning};
    };
    const bool experimental = data == SplineData::experimental;
    if (x.size() < 3)
        return message("Execution not possible",
                       std::string("for spline at least 3 active points!\n") +
                           (experimental ? "Go to the experimental data editor (icon 8)"
                                         : "Go to the XY editor (icon 9)"));
    if (SplineOrder(x, y))
        return message("Test for spline applicability of exper. data",
                       std::string("For this spline application the x-values of all active points have to be "
                                   "different.\nGo to the ") +
                           (experimental ? "experimental data editor (icon 8)" : "XY editor (icon 9)") +
                           "\nLeave only one value.");
    return std::nullopt;
}

}  // namespace quom
