// Places and numbers of ticks.
#include "ui/charts/chart_ticks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> numbers(const ChartTicks& ticks) {
    std::vector<std::string> texts;
    for (const QString& text : ticks.numbers) texts.push_back(text.toStdString());
    return texts;
}

TEST(ChartTicks, linear_steps_are_1_2_or_5) {
    EXPECT_THAT(numbers(ticks_of(*linear_ticker(5), 0, 4700)),
                ElementsAre("0", "1000", "2000", "3000", "4000"));
    EXPECT_THAT(
        numbers(ticks_of(*linear_ticker(10), -0.3, 0.62)),
        ElementsAre("\u22120.3", "\u22120.2", "\u22120.1", "0", "0.1", "0.2", "0.3", "0.4", "0.5", "0.6"));
    for (const double high : {1e-7, 0.031, 0.97, 8.0, 4247.66, 2.2e4, 3e9})
        for (const int most : {1, 3, 9, 20}) {
            const ChartTicks ticks = ticks_of(*linear_ticker(most), 0, high);
            EXPECT_LE(ticks.at.size(), static_cast<std::size_t>(most) + 1) << high;
            EXPECT_GT(ticks.at.size(), static_cast<std::size_t>(most) / 3) << high;
            for (const double tick : ticks.at) EXPECT_TRUE(tick >= 0 && tick <= high * (1 + 1e-12));
        }
    // A step of 2 has three ticks between, others four.
    EXPECT_THAT(ticks_of(*linear_ticker(2), 0, 4).between, ElementsAre(0.5, 1, 1.5, 2.5, 3, 3.5));
    EXPECT_THAT(ticks_of(*linear_ticker(1), 0, 5).between, ElementsAre(1, 2, 3, 4));
}

TEST(ChartTicks, logarithmic_ticks_are_dense_within_three_decades) {
    EXPECT_THAT(numbers(ticks_of(*log_ticker(), 0.05, 3)),
                ElementsAre("0.05", "0.1", "0.2", "0.5", "1", "2"));
    EXPECT_THAT(numbers(ticks_of(*log_ticker(), 0.5, 2e6)),
                ElementsAre("1", "10", "100", "1000", "10\u2009000", "100\u2009000", "1E+06"));
    const ChartTicks one = ticks_of(*log_ticker(), 1, 10);
    EXPECT_THAT(one.at, ElementsAre(1, 2, 5, 10));
    EXPECT_THAT(one.between, ElementsAre(3, 4, 6, 7, 8, 9));
}

TEST(ChartTicks, a_range_that_is_none_has_no_ticks) {
    EXPECT_THAT(ticks_of(*linear_ticker(5), 1, 1).at, IsEmpty());
    EXPECT_THAT(ticks_of(*linear_ticker(5), 0, INFINITY).at, IsEmpty());
    EXPECT_THAT(ticks_of(*linear_ticker(5), NAN, 1).at, IsEmpty());
}

TEST(ChartTicks, numbers_are_short_and_whole) {
    const struct {
        double x;
        const char* text;
    } cases[] = {{0, "0"},
                 {-1.5, "\u22121.5"},
                 {1234, "1234"},
                 {-12345, "\u221212\u2009345"},
                 {0.001, "0.001"},
                 {0.0005, "5E\u221204"},
                 {1e6, "1E+06"},
                 {999999, "999\u2009999"},
                 {12345.6, "12\u2009345.6"}};
    for (const auto& c : cases) EXPECT_EQ(tick_number(c.x).toStdString(), c.text) << c.x;
}

}  // namespace
}  // namespace quom
