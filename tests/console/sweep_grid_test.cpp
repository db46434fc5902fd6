#include "console/sweep_grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "console/sweep_rows.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

SweepRows rows_of(const SweepGrid& grid, std::uint64_t first = 1, std::size_t count = 1 << 20) {
    SweepRows rows;
    grid_rows(grid, first, count, rows);
    for (const auto& column : rows.value) EXPECT_EQ(column.size(), rows.size());
    EXPECT_EQ(rows.kept.size(), rows.size());
    return rows;
}

TEST(SweepGrid, meets_its_ends_and_whole_steps_exactly) {
    const SweepRows T = rows_of(parse_grid("T=250:550:301", Mode::equilibrium_T, 44));
    ASSERT_EQ(T.size(), 301u);
    for (int i = 0; i <= 300; ++i) EXPECT_EQ(T.value[field_T][static_cast<std::size_t>(i)], 250.0 + i);
    EXPECT_TRUE(std::isnan(T.value[field_p][0]));

    EXPECT_THAT(rows_of(parse_grid("p=1:10000:5,log", Mode::equilibrium_p, 44)).value[field_p],
                ElementsAre(1, 10, 100, 1000, 10000));
    const SweepRows p = rows_of(parse_grid("p=100:8000:80,log", Mode::equilibrium_p, 44));
    ASSERT_EQ(p.size(), 80u);
    EXPECT_EQ(p.value[field_p].front(), 100.0);
    EXPECT_EQ(p.value[field_p].back(), 8000.0);
    const double ratio = std::pow(80.0, 1.0 / 79.0);
    for (std::size_t i = 1; i < 80; ++i)
        EXPECT_NEAR(p.value[field_p][i] / p.value[field_p][i - 1], ratio, 1e-13);

    EXPECT_THAT(rows_of(parse_grid("T=0.3:0.1:3", Mode::equilibrium_T, 44)).value[field_T],
                ElementsAre(0.3, ::testing::DoubleEq(0.2), 0.1));
    EXPECT_THAT(rows_of(parse_grid("T/C=0:100:3", Mode::equilibrium_T, 44)).value[field_T],
                ElementsAre(273.15, 323.15, 373.15));
    EXPECT_THAT(rows_of(parse_grid("T=300 v/(m^3/kg)=0.25:0.5:2", Mode::T_rho, 44)).value[field_rho],
                ElementsAre(4, 2));
}

// Any cut of the rows is that of the whole; the last variable runs fastest.
TEST(SweepGrid, gives_every_combination_from_any_row) {
    const SweepGrid grid = parse_grid(" p=100:300:3  T=10:40:4 ", Mode::T_p, 44);
    EXPECT_EQ(grid.fault, "");
    EXPECT_EQ(grid.rows(), 12u);
    const SweepRows all = rows_of(grid);
    EXPECT_THAT(all.value[field_T], ElementsAre(10, 20, 30, 40, 10, 20, 30, 40, 10, 20, 30, 40));
    EXPECT_THAT(all.value[field_p], ElementsAre(100, 100, 100, 100, 200, 200, 200, 200, 300, 300, 300, 300));
    for (std::uint64_t first = 1; first <= 13; ++first) {
        for (std::size_t count = 0; count <= 13; ++count) {
            const SweepRows part = rows_of(grid, first, count);
            ASSERT_EQ(part.size(), std::min<std::size_t>(count, 13 - first));
            for (std::size_t i = 0; i < part.size(); ++i) {
                EXPECT_EQ(part.line[i], first + i);
                EXPECT_EQ(part.value[field_T][i], all.value[field_T][first - 1 + i]);
                EXPECT_EQ(part.value[field_p][i], all.value[field_p][first - 1 + i]);
            }
        }
    }
    EXPECT_EQ(rows_of(grid, 0, 5).size(), 0u);
}

TEST(SweepGrid, is_refused_with_the_reason) {
    struct Refusal {
        const char* text;
        const char* reason;
    };
    const Refusal cases[] = {
        {"", "there is no T, p"},
        {"T=250:550:301", "there is no p"},
        {"T=1:2:3 T=4", "T stands twice"},
        {"T=1 p=1 rho=1", "does not take rho, but T, p"},
        {"T=1 p=1 x=1", "\"x\" is no variable"},
        {"T 250:550:301", "\"T\" is no variable with its values"},
        {"T=250:550:0 p=1", "\"250:550:0\" has no value"},
        {"T=250:550:1 p=1", "two ends, but one value"},
        {"T=250:550 p=1", "is no range"},
        {"T=250:550:3.5 p=1", "is no range"},
        {"T=250:550:-3 p=1", "is no range"},
        {"T=250:550:3:4 p=1", "is no range"},
        {"T=250::3 p=1", "is no range"},
        {"T=abc p=1", "is no range"},
        {"T=nan p=1", "is no range"},
        {"T=300 p=1:2:3,lin", "is no range"},
        {"T=300 p=1:2:3,", "is no range"},
        {"T=300 p=0:2:3,log", "above 0"},
        {"T=300 p=-1:2:3,log", "above 0"},
        {"T=300 p=-1e308:1e308:3", "too wide"},
        {"T/furlong=300 p=1", "T has no unit \"furlong\""},
        {"T=1:2:99999999999999999999 p=1", "too many values"},
        {"T=1:2:4294967296 p=1:2:4294967296", "too many rows"},
    };
    for (const Refusal& c : cases) {
        const SweepGrid grid = parse_grid(c.text, Mode::T_p, 44);
        EXPECT_THAT(grid.fault, HasSubstr(c.reason)) << c.text;
        EXPECT_EQ(grid.rows(), 0u) << c.text;
    }
    EXPECT_THAT(parse_grid("T=300 v=0:1:5", Mode::T_rho, 44).fault, HasSubstr("above 0"));
}

}  // namespace
}  // namespace quom
