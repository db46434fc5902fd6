// The spline: Akima's own example, what the rule reproduces exactly, smoothing, what is refused.
#include "fitting/akima_spline.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace quom {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

double value(const AkimaSpline& spline, double t) { return *SplineValue(spline, t, SplineDerivative::value); }
double slope(const AkimaSpline& spline, double t) { return *SplineValue(spline, t, SplineDerivative::first); }

// Points of Akima (1970), table 1; the slopes follow from his rule by hand.
TEST(AkimaSplineTest, published_example) {
    const std::vector<double> x = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10},
                              y = {10, 10, 10, 10, 10, 10, 10.5, 15, 50, 60, 85};
    const AkimaSpline spline = SplineCoefficients(x, y, 0);
    const double slopes[] = {0, 0, 0, 0, 0, 0, 17.5 / 31, 252.5 / 29, 830 / 45.5, 775.0 / 40, 32.5};
    for (std::size_t i = 0; i < x.size(); ++i) {
        EXPECT_NEAR(slope(spline, x[i]), slopes[i], 1e-12) << i;
        EXPECT_EQ(value(spline, x[i]), y[i]) << i;
    }
    for (double t = 0; t <= 5; t += 0.25) EXPECT_EQ(value(spline, t), 10) << "no wiggle before the rise";
    // Hermite's cubic in the middle of an interval: the mean and an eighth of the difference of the slopes.
    EXPECT_NEAR(value(spline, 7.5), 32.5 + (slopes[7] - slopes[8]) / 8, 1e-12);
    EXPECT_NEAR(slope(spline, 7.5), 1.5 * 35 - (slopes[7] + slopes[8]) / 4, 1e-12);
    // Straight lines outside.
    EXPECT_NEAR(value(spline, 12), 85 + 2 * 32.5, 1e-12);
    EXPECT_NEAR(slope(spline, 12), 32.5, 1e-12);
    EXPECT_EQ(value(spline, -3), 10);
}

TEST(AkimaSplineTest, reproduces_lines_and_equally_spaced_parabolas) {
    const std::vector<double> uneven = {-2, -1.5, 0, 0.25, 3, 7}, even = {1, 1.5, 2, 2.5, 3, 3.5},
                              three = {0, 1, 2};
    for (const auto& [x, square] : {std::pair{uneven, 0.0}, {even, 0.75}, {three, -2.0}}) {
        const auto f = [&](double t) { return 3 - 2 * t + square * t * t; };
        std::vector<double> y;
        for (const double t : x) y.push_back(f(t));
        const AkimaSpline spline = SplineCoefficients(x, y, 0);
        for (int i = 0; i <= 50; ++i) {
            const double t = x.front() + (x.back() - x.front()) * i / 50;
            EXPECT_NEAR(value(spline, t), f(t), 1e-13 * 30) << square << " " << t;
            EXPECT_NEAR(slope(spline, t), -2 + 2 * square * t, 1e-12) << square << " " << t;
        }
    }
}

TEST(AkimaSplineTest, smooth_curve_with_a_continuous_derivative) {
    std::vector<double> x, y;
    for (int i = 0; i <= 40; ++i) {
        x.push_back(0.15 * i + 0.03 * std::sin(5.0 * i));
        y.push_back(std::sin(x.back()));
    }
    const AkimaSpline spline = SplineCoefficients(x, y, 0);
    for (double t = 0.3; t < 5.7; t += 0.0371) {
        EXPECT_NEAR(value(spline, t), std::sin(t), 4e-4) << t;
        EXPECT_NEAR(slope(spline, t), (value(spline, t + 1e-6) - value(spline, t - 1e-6)) / 2e-6, 1e-4) << t;
    }
    for (const double t : x) EXPECT_NEAR(slope(spline, t - 1e-9), slope(spline, t + 1e-9), 1e-6) << t;
}

TEST(AkimaSplineTest, smoothing) {
    const std::vector<double> x = {0, 1, 2, 3, 4, 5, 6, 7}, y = {7, 1, 4, 0, 3, 9, 2, 5};
    EXPECT_EQ(smoothed(x, y, 0), y);
    // The larger Sm, the more equal the weights: means of 1, 3, 5, 7 points.
    EXPECT_THAT(smoothed(x, y, 5000),
                ElementsAre(7, DoubleNear(4, 1e-12), DoubleNear(3, 1e-12), DoubleNear(26.0 / 7, 1e-12),
                            DoubleNear(24.0 / 7, 1e-12), DoubleNear(19.0 / 5, 1e-12),
                            DoubleNear(16.0 / 3, 1e-12), 5));
    const std::vector<double> slightly = smoothed(x, y, 1e-6);
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(slightly[i], y[i], 1e-4) << i;
    // Sm = 1, by hand: neighbours at half of the range weigh 1 - 1/2/3.
    EXPECT_THAT(smoothed({0, 1, 2}, {0, 3, 0}, 1),
                ElementsAre(0, DoubleNear(3 / (1 + 2 * 5.0 / 6), 1e-12), 0));
    // The curve goes through the smoothed points.
    const AkimaSpline spline = SplineCoefficients(x, y, 10);
    const std::vector<double> through = smoothed(x, y, 10);
    for (std::size_t i = 0; i < x.size(); ++i) EXPECT_NEAR(value(spline, x[i]), through[i], 1e-12) << i;
}

TEST(AkimaSplineTest, order_and_refusals) {
    std::vector<double> x = {3, 1, 2}, y = {30, 10, 20};
    EXPECT_FALSE(check_spline(x, y, SplineData::xy));
    EXPECT_THAT(x, ElementsAre(1, 2, 3));
    EXPECT_THAT(y, ElementsAre(10, 20, 30));
    x = {3, 1, 3};
    EXPECT_THAT(check_spline(x, y, SplineData::xy)->text,
                HasSubstr("Go to the XY editor (icon 9)\nLeave only one value."));
    x = {3, 1};
    y = {1, 1};
    EXPECT_THAT(
        check_spline(x, y, SplineData::experimental)->text,
        HasSubstr("for spline at least 3 active points!\nGo to the experimental data editor (icon 8)"));

    EXPECT_THAT(SplineCoefficients({1, 2}, {1, 2}, 0).SplineX, IsEmpty());
    EXPECT_THAT(SplineCoefficients({1, 1, 2}, {1, 2, 3}, 0).SplineX, IsEmpty());
    EXPECT_THAT(SplineCoefficients({1, 2, 3}, {1, 2, 3}, 5001).SplineX, IsEmpty());
    EXPECT_THAT(SplineCoefficients({1, 2, 3}, {1, 2, 3}, NAN).SplineX, IsEmpty());
    EXPECT_THAT(SplineCoefficients({0, 1, 2}, {0, 1e308, -1e308}, 0).SplineX, IsEmpty());
    EXPECT_FALSE(SplineValue(AkimaSpline{}, 1, SplineDerivative::value));
    EXPECT_FALSE(SplineValue(SplineCoefficients({1, 2, 3}, {1, 2, 3}, 0), INFINITY, SplineDerivative::value));
}

}  // namespace
}  // namespace quom
