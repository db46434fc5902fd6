// What is done with lists of measured points and of pairs.
#include "fitting/exp_data.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "fitting/xy_data.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

ExperimentalData points_at(std::initializer_list<double> temperatures) {
    ExperimentalData data;
    data.points.edit()[0].T = 1;  // the direct input never takes part
    for (const double T : temperatures) data.points.edit().push_back({.T = T});
    return data;
}
std::vector<double> temperatures(const ExperimentalData& data) {
    std::vector<double> all;
    for (const TpRhoPoint& point : data.points) all.push_back(point.T);
    return all;
}

TEST(ExpDataTest, lines_are_removed_and_toggled) {
    ExperimentalData data = points_at({10, 20, 30, 40});
    toggle_lines(data, 2, 3);
    EXPECT_FALSE(data.ExpGeaendert);
    EXPECT_EQ(data.points[1].Aus, 0);
    EXPECT_EQ(data.points[2].Aus, -1);
    EXPECT_EQ(data.points[3].Aus, -1);
    toggle_lines(data, 3, 99);
    EXPECT_EQ(data.points[3].Aus, 0);
    EXPECT_EQ(data.points[4].Aus, -1);
    remove_lines(data, 5, 9);
    remove_lines(data, 3, 2);
    EXPECT_FALSE(data.ExpGeaendert) << "nothing was there to be removed";
    remove_lines(data, 2, 3);
    EXPECT_THAT(temperatures(data), ElementsAre(1, 10, 40));
    EXPECT_TRUE(data.ExpGeaendert);
    remove_lines(data, 0, 99);
    EXPECT_THAT(temperatures(data), ElementsAre(1));
}

TEST(ExpDataTest, sorting_keeps_equal_keys_in_order) {
    ExperimentalData data;
    const int count = 100000;
    for (int i = 0; i < count; ++i)
        data.points.edit().push_back({.T = static_cast<double>((i * 7919) % 1000), .p = 2.0 * i});
    data.points.edit()[0].T = 1e9;
    const ExperimentalData before = data;
    sort_by_T(data);
    EXPECT_EQ(data.points[0].T, 1e9);
    for (std::size_t i = 2; i < data.points.size(); ++i) {
        const TpRhoPoint &a = data.points[i - 1], &b = data.points[i];
        ASSERT_TRUE(a.T < b.T || (a.T == b.T && a.p < b.p)) << i;
    }
    sort_by_p(data);
    EXPECT_EQ(data.points, before.points) << "whole points were moved";
}

TEST(ExpDataTest, rows_of_a_spreadsheet) {
    ExperimentalData data = points_at({10, 20});
    EXPECT_EQ(insert_rows(data, 2, "1,5\t2.5\t3\t4\t5\t6\t\r\n\r\n 7 \n"), "");
    EXPECT_THAT(temperatures(data), ElementsAre(1, 10, 1.5, 7, 20));
    EXPECT_EQ(data.points[2], (TpRhoPoint{.T = 1.5, .p = 2.5, .rhoV = 3, .rhoL = 4, .HLV = 5, .cp = 6}));
    EXPECT_TRUE(data.ExpGeaendert);
    EXPECT_EQ(insert_rows(data, 5, "\t101,325"), "") << "behind the last";
    EXPECT_EQ(data.points[5], TpRhoPoint{.p = 101.325});

    const ExperimentalData before = data;
    const std::pair<const char*, const char*> refused[] = {{"T\tp\n300\t100", "Line 1: \"T\""},
                                                           {"300\t100\n310\tx1", "Line 2: \"x1\""},
                                                           {"1\t2\t3\t4\t5\t6\t7", "more than 6"},
                                                           {"300\n-1", "Row 2: T cannot be negative"},
                                                           {"300\t1e999", "no number"},
                                                           {"300\t100\t1e39", "no number"},
                                                           {"1.234,5", "no number that can be stored"},
                                                           {" \r\n\t\r\n", "no values"}};
    for (const auto& [text, why] : refused) {
        EXPECT_THAT(insert_rows(data, 1, text), HasSubstr(why)) << text;
        EXPECT_EQ(data, before) << text;
    }
}

TEST(ExpDataTest, pairs_for_graphs_and_fits) {
    ExperimentalData data;
    EXPECT_THAT(T_y_points(data), IsEmpty());
    data.points.edit().push_back({.T = 200, .p = 1, .rhoV = 3, .rhoL = 2, .HLV = 4, .cp = 5});
    data.points.edit().push_back({.Aus = -1});
    for (int column = 1; column <= 5; ++column) {
        data.optFitFunction = column;
        EXPECT_THAT(T_y_points(data), ElementsAre(DataPair{200, static_cast<double>(column)}));
        EXPECT_EQ(fit_title(data), column == 1 ? "p = f(T)" : "y = f(T)");
    }
    EXPECT_THAT(ln_p_points(data).pairs, ElementsAre(DataPair{0.005, 0.0})) << "an inactive zero is none";
    data.points.edit().push_back({.T = 300});
    const LnPPoints refused = ln_p_points(data);
    EXPECT_THAT(refused.pairs, IsEmpty());
    ASSERT_TRUE(refused.refusal);
    EXPECT_EQ(refused.refusal->title, "Execution not possible");
    EXPECT_EQ(refused.refusal->text, "T and p columns cannot contain zero values!");
}

TEST(ExpDataTest, cleared_data_keep_the_direct_input) {
    ExperimentalData data = points_at({10});
    data.file.ExpFile = "/x.BAQ";
    data.ExpGeaendert = true;
    clear_points(data);
    EXPECT_EQ(data, points_at({}));
}

XYData table() {
    XYData data;
    data.points = {{1, 2, 0}, {0, 0, -1}, {3, 0.5f, 0}};
    return data;
}

TEST(XYDataTest, conversions_of_active_points) {
    struct Case {
        XYConversion conversion;
        double W;
        XYPoint first, last;
    };
    const auto e = [](double y) { return static_cast<float>(y); };
    for (const Case& c : {Case{XYConversion::exp_y, 0, {1, e(std::exp(2.0))}, {3, e(std::exp(0.5))}},
                          Case{XYConversion::ln_y, 0, {1, e(std::log(2.0))}, {3, e(std::log(0.5))}},
                          Case{XYConversion::y_times_W, -3, {1, -6}, {3, -1.5f}},
                          Case{XYConversion::y_plus_W, 0.25, {1, 2.25f}, {3, 0.75f}},
                          Case{XYConversion::reciprocal_y, 0, {1, 0.5f}, {3, 2}},
                          Case{XYConversion::one_minus_x, 0, {0, 2}, {-2, 0.5f}}}) {
        XYData data = table();
        EXPECT_TRUE(convert(data, c.conversion, c.W));
        EXPECT_THAT(data.points.list(), ElementsAre(c.first, XYPoint{0, 0, -1}, c.last));
        EXPECT_TRUE(data.XYGeaendert);
    }
}

TEST(XYDataTest, a_conversion_that_fails_anywhere_changes_nothing) {
    struct Case {
        XYConversion conversion;
        double W;
        float y;
    };
    for (const Case& c : {Case{XYConversion::ln_y, 0, 0}, Case{XYConversion::ln_y, 0, -1},
                          Case{XYConversion::reciprocal_y, 0, 0}, Case{XYConversion::exp_y, 0, 89},
                          Case{XYConversion::y_times_W, 1e30, 1e30f}, Case{XYConversion::y_plus_W, 1e39, 1},
                          Case{XYConversion::reciprocal_y, 0, 1e-40f}}) {
        XYData data = table();
        data.points.edit()[2].y = c.y;
        const XYData before = data;
        EXPECT_FALSE(convert(data, c.conversion, c.W)) << c.y;
        EXPECT_EQ(data, before);
        toggle_lines(data, 3, 3);
        EXPECT_TRUE(convert(data, c.conversion, std::min(c.W, 1.0))) << "an off point does no harm";
    }
    EXPECT_EQ(conversion_refusal().text,
              "Action is not possible using the present data\n"
              "(The problematic points can be set \"inactive\" (activate checkbox)\n or deleted.)");
}

TEST(XYDataTest, lines) {
    XYData data = table();
    change_xy(data);
    EXPECT_THAT(data.points.list(), ElementsAre(XYPoint{2, 1}, XYPoint{0, 0, -1}, XYPoint{0.5f, 3}));
    sort_by_x(data);
    EXPECT_THAT(data.points.list(), ElementsAre(XYPoint{0, 0, -1}, XYPoint{0.5f, 3}, XYPoint{2, 1}));
    EXPECT_EQ(insert_rows(data, 4, "1,5\t2.5\n9"), "");
    sort_by_y(data);
    EXPECT_THAT(data.points.list(), ElementsAre(XYPoint{0, 0, -1}, XYPoint{9, 0}, XYPoint{2, 1},
                                                XYPoint{1.5f, 2.5f}, XYPoint{0.5f, 3}));
    remove_lines(data, 1, 3);
    EXPECT_EQ(insert_rows(data, 1, "-7\t8"), "");
    EXPECT_THAT(data.points.list(), ElementsAre(XYPoint{-7, 8}, XYPoint{1.5f, 2.5f}, XYPoint{0.5f, 3}));
    EXPECT_THAT(insert_rows(data, 1, "1\t2\t3"), HasSubstr("more than 2"));
    EXPECT_EQ(data.points.size(), 3u);
}

}  // namespace
}  // namespace quom
