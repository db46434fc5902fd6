// Ticks of axes of the chart library.
#include "ui/charts/chart_ticks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <qcustomplot.h>

#include <cmath>

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ChartTicks, pictures_and_axes_have_the_same_ticks) {
    const ChartTicks ticks = ticks_of(*linear_ticker(5), 0, 4700);
    EXPECT_THAT(ticks.at, ElementsAre(0, 1000, 2000, 3000, 4000));
    EXPECT_EQ(ticks.numbers.at(4), "4000");
    EXPECT_THAT(ticks_of(*log_ticker(), 1, 10).between, ElementsAre(3, 4, 6, 7, 8, 9));
    QCustomPlot plot;
    plot.resize(400, 300);
    plot.xAxis->setTicker(linear_ticker(5));
    plot.xAxis->setRange(0, 4700);
    plot.replot();
    QVector<double> at;
    plot.xAxis->ticker()->generate(plot.xAxis->range(), QLocale::c(), 'g', 6, at, nullptr, nullptr);
    EXPECT_EQ(at.size(), 5);
}

TEST(ChartTicks, a_range_that_is_none_has_no_ticks) {
    EXPECT_THAT(ticks_of(*linear_ticker(5), 1, 1).at, IsEmpty());
    EXPECT_THAT(ticks_of(*log_ticker(), 10, 1).at, IsEmpty());
    EXPECT_THAT(ticks_of(*linear_ticker(5), 0, INFINITY).at, IsEmpty());
    EXPECT_THAT(ticks_of(*linear_ticker(5), NAN, 1).at, IsEmpty());
}

}  // namespace
}  // namespace quom
