// Places and numbers of ticks, and round values of families.
#include "diagrams/ticks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <tuple>

#include "diagrams/chart_families.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Ticks, linear_steps_are_1_2_or_5) {
    EXPECT_THAT(linear_ticks(0, 4700, 5).numbers, ElementsAre("0", "1000", "2000", "3000", "4000"));
    EXPECT_THAT(linear_ticks(-0.3, 0.62, 10).numbers, ElementsAre("\u22120.3", "\u22120.2", "\u22120.1", "0",
                                                                  "0.1", "0.2", "0.3", "0.4", "0.5", "0.6"));
    // A step of 2 has three ticks between, others four.
    EXPECT_THAT(linear_ticks(0, 4, 2).between, ElementsAre(0.5, 1, 1.5, 2.5, 3, 3.5));
    EXPECT_THAT(linear_ticks(0, 5, 1).between, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(step_ticks(270, 330, 25).at, ElementsAre(275, 300, 325));
    EXPECT_THAT(step_ticks(0, 1, 0.3).at, ElementsAre(0, 0.3, 0.6, 0.9));
    EXPECT_THAT(step_ticks(0, 1, 1e-4).at, IsEmpty());
    EXPECT_EQ(round_step(0, 4700, 5), 1000);
}

// Whatever the range: few ticks, all inside, evenly apart, rising, no two with the same number.
TEST(Ticks, random_ranges) {
    std::mt19937 engine(12);
    std::uniform_real_distribution<double> share(-1, 1);
    for (int round = 0; round < 4000; ++round) {
        const double size = std::pow(10.0, 12 * share(engine)), low = size * share(engine);
        const double high = low + std::abs(size * share(engine)) + size * 1e-3;
        for (const int most : {1, 4, 9, 20}) {
            const Ticks ticks = linear_ticks(low, high, most, 12);
            ASSERT_LE(ticks.at.size(), static_cast<std::size_t>(most) + 1) << low << " " << high;
            ASSERT_GE(ticks.at.size(), static_cast<std::size_t>(most * 2 / 5)) << low << " " << high;
            for (std::size_t i = 0; i < ticks.at.size(); ++i) {
                ASSERT_TRUE(ticks.at[i] >= low && ticks.at[i] <= high);
                if (i == 0) continue;
                ASSERT_NEAR(ticks.at[i] - ticks.at[i - 1], round_step(low, high, most), 1e-6 * size);
                ASSERT_NE(ticks.numbers[i], ticks.numbers[i - 1]);
            }
        }
        if (low <= 0) continue;
        const Ticks logs = log_ticks(low, high, 6, 9, 12);
        ASSERT_GE(logs.at.size(), 2u) << low << " " << high;
        ASSERT_LE(logs.at.size(), 20u);
        for (const double x : logs.at) ASSERT_TRUE(x >= low && x <= high);
        for (const double x : logs.between) ASSERT_FALSE(std::ranges::binary_search(logs.at, x));
    }
}

TEST(Ticks, logarithmic_axes_of_any_width) {
    EXPECT_THAT(log_ticks(0.05, 3).numbers, ElementsAre("0.05", "0.1", "0.2", "0.5", "1", "2"));
    EXPECT_THAT(log_ticks(0.5, 2e6, 3).numbers,
                ElementsAre("1", "10", "100", "1000", "10\u2009000", "100\u2009000", "10\u2076"));
    EXPECT_THAT(log_ticks(1, 10).at, ElementsAre(1, 2, 5, 10));
    EXPECT_THAT(log_ticks(1, 10).between, ElementsAre(3, 4, 6, 7, 8, 9));
    // Less than a decade, without three of 1, 2, 5: as on a linear axis.
    EXPECT_THAT(log_ticks(300, 380, 6, 5).at, ElementsAre(300, 320, 340, 360, 380));
    EXPECT_THAT(log_ticks(4, 9, 6, 5).at, ElementsAre(4, 5, 6, 7, 8, 9));
    // So many decades that not every power has room.
    EXPECT_THAT(log_ticks(1e-12, 1e12, 6, 9).at,
                ElementsAre(1e-12, 1e-9, 1e-6, 1e-3, 1, 1e3, 1e6, 1e9, 1e12));
    EXPECT_EQ(log_low(5, 10), 5);
    EXPECT_EQ(log_low(0, 5000), 5);
    EXPECT_EQ(log_low(-2, -1), 0);
}

TEST(Ticks, a_range_that_is_none_has_no_ticks) {
    constexpr double infinite = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const std::tuple<double, double> ranges[] = {{1, 1},   {2, 1},   {0, infinite},
                                                 {nan, 1}, {0, nan}, {-infinite, infinite}};
    for (const auto& [low, high] : ranges) {
        EXPECT_THAT(linear_ticks(low, high).at, IsEmpty()) << low << " " << high;
        EXPECT_THAT(log_ticks(low, high).at, IsEmpty()) << low << " " << high;
        EXPECT_THAT(linear_family(low, high, {10, 8, 12}), IsEmpty());
        EXPECT_THAT(log_family(low, high, {10, 8, 12}), IsEmpty());
    }
    EXPECT_THAT(log_ticks(0, 1).at, IsEmpty());
    EXPECT_THAT(log_ticks(-1, 1).at, IsEmpty());
    for (const double step : {0.0, -1.0, nan, infinite}) EXPECT_THAT(step_ticks(0, 1, step).at, IsEmpty());
    EXPECT_THAT(linear_ticks(1e300, 1e300 * (1 + 1e-15)).at, IsEmpty());
    linear_ticks(-1e308, 7e307);
    linear_ticks(0, 5e-324);
    log_ticks(5e-324, 1e308);
}

TEST(Ticks, numbers_are_short_and_whole) {
    const std::tuple<double, const char*> cases[] = {{0, "0"},
                                                     {-0.0, "0"},
                                                     {-1.5, "\u22121.5"},
                                                     {1234, "1234"},
                                                     {-12345, "\u221212\u2009345"},
                                                     {12345.6, "12\u2009345.6"},
                                                     {0.001, "0.001"},
                                                     {0.0001, "0.0001"},
                                                     {0.00002, "2\u00B710\u207B\u2075"},
                                                     {0.00001, "10\u207B\u2075"},
                                                     {999999, "999\u2009999"},
                                                     {999999.7, "10\u2076"},
                                                     {-2.5e12, "\u22122.5\u00B710\u00B9\u00B2"}};
    for (const auto& [x, text] : cases) EXPECT_EQ(tick_number(x), text) << x;
    EXPECT_EQ(tick_number(1.0 / 3, 3), "0.333");
}

TEST(Ticks, families_have_the_wanted_number_of_round_values) {
    // 300 to 460 K by 10: 17 values are nearer to 14 than 9 by 20; 25 is dearer by 0.12.
    EXPECT_EQ(linear_family(300, 460, {14, 8, 18}).size(), 17u);
    EXPECT_THAT(linear_family(0, 1, {6, 2, 8}), ElementsAre(0, 0.2, 0.4, 0.6, 0.8, 1));
    // Wish 4: three values by 5 cost ln(4/3) = 0.288, five by 2.5 ln(5/4) + 0.12 = 0.343; wish 5: 0.12.
    EXPECT_THAT(linear_family(0, 10, {4, 2, 8}), ElementsAre(0, 5, 10));
    EXPECT_THAT(linear_family(0, 10, {5, 2, 8}), ElementsAre(0, 2.5, 5, 7.5, 10));
    // Three values are too few now.
    EXPECT_THAT(linear_family(0, 10, {4, 4, 8}), ElementsAre(0, 2.5, 5, 7.5, 10));
    // Over two and a half decades 1 2 5 is nearest to 8, over one decade six a decade.
    EXPECT_THAT(log_family(1, 300, {8, 5, 10}), ElementsAre(1, 2, 5, 10, 20, 50, 100, 200));
    EXPECT_THAT(log_family(1, 9, {6, 4, 8}), ElementsAre(1, 1.5, 2, 3, 5, 7));
    EXPECT_EQ(up_125(2300), 5000);
    EXPECT_EQ(up_125(5000), 5000);
    EXPECT_EQ(up_125(0.51), 1);
    EXPECT_EQ(down_125(2300), 2000);
    EXPECT_EQ(down_125(0.2), 0.2);
    EXPECT_EQ(down_125(0.199), 0.1);
}

}  // namespace
}  // namespace quom
