// Files of X-Y data: golden bytes, delimiters, what is refused.
#include "fitting/xy_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "base/files.h"
#include "fitting/random_data.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

XYFile good(std::string_view bytes) {
    XYResult result = read_xy(bytes, "x.XY");
    EXPECT_EQ(result.fault, "");
    return result.file.value_or(XYFile{});
}

TEST(XYFileTest, golden_files) {
    const std::string bytes = *read_file(test::test_data() + "/data/points.XY").bytes;
    const XYFile file = good(bytes);
    EXPECT_EQ(file.comment, "Größe x, y²");
    EXPECT_EQ(file.delimiter, ';');
    EXPECT_FALSE(file.more_columns);
    EXPECT_THAT(file.points,
                ElementsAre(XYPoint{123.45678f, -0.5f}, XYPoint{0, 1e10f}, XYPoint{-2.5e-7f, 0.99609375f}));
    XYData data;
    data.points = SharedVector<XYPoint>(file.points);
    data.comment = file.comment;
    EXPECT_EQ(xy_bytes(data, ';').bytes, bytes);
    data.points.edit().insert(data.points.edit().begin(), {9, 9, -1});
    EXPECT_EQ(xy_bytes(data, ';').bytes, bytes) << "points that are off are not written";

    const XYFile measured = good(*read_file(test::test_data() + "/data/measured.LRG").bytes);
    EXPECT_EQ(measured.delimiter, '\t');
    EXPECT_TRUE(measured.more_columns);
    EXPECT_THAT(measured.points, ElementsAre(XYPoint{1.5f, 2.5f}, XYPoint{-3, 0.01f}, XYPoint{2, 4}));
}

// The last hit of blank, comma, semicolon, tab in the first line behind the comment.
TEST(XYFileTest, delimiters) {
    struct Case {
        const char* line;
        char delimiter;
        XYPoint point;
    };
    for (const Case& c :
         {Case{"1 2", ' ', {1, 2}}, Case{"1,2", ',', {1, 2}}, Case{"1, 2", ',', {1, 2}},
          Case{"1;2", ';', {1, 2}}, Case{"1,5;2,5", ';', {1.5f, 2.5f}}, Case{"1,5 ; 2,5", ';', {1.5f, 2.5f}},
          Case{"1,5\t2;5", '\t', {1.5f, 0}}, Case{"1\t2", '\t', {1, 2}}, Case{"1,5", ',', {1, 5}},
          Case{"1,5,2,5", ',', {1, 5}},  // comma for both: nothing can tell
          Case{"1;2;3;4", ';', {1, 2}}, Case{"1;2;", ';', {1, 2}}, Case{"1.5", 0, {1.5f, 0}},
          Case{"  1.5 ", 0, {1.5f, 0}}, Case{" 1   2  3", ' ', {1, 2}},
          Case{" 1e3;-.5E-2 ", ';', {1000, -.005f}}}) {
        const XYResult result = read_xy("comment\r\n" + std::string(c.line) + "\r\n", "x.XY");
        if (std::string_view(c.line).find("2;5") != std::string_view::npos) {
            EXPECT_THAT(result.fault, HasSubstr("line 2: \"2;5\" is no number."));
            continue;
        }
        ASSERT_TRUE(result.file) << c.line << result.fault;
        EXPECT_EQ(result.file->delimiter, c.delimiter) << c.line;
        EXPECT_THAT(result.file->points, ElementsAre(c.point)) << c.line;
    }
    EXPECT_THAT(good("a;b\n\n 1 2\n\n3 4").points, ElementsAre(XYPoint{1, 2}, XYPoint{3, 4}))
        << "the comment has no say, empty lines are none";
    EXPECT_TRUE(good("only a comment").points.empty());
    EXPECT_EQ(good("only a comment\r\n").delimiter, 0);
    EXPECT_EQ(good("\r\n1;2\r\n").comment, "");
}

TEST(XYFileTest, refused_with_file_and_line) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "line 1: the file is empty."},
        {"c\r\nx;y\r\n", "line 2: \"x\" is no number."},
        {"c\r\n1;2\r\n\r\n3\r\n", "line 4: \"3\" is no pair of x and y."},
        {"c\r\n1;2\r\n3;\r\n", "line 3: \"\" is no number."},
        {"c\r\n1\r\n1;2\r\n", "line 3: \"1;2\" is no number."},
        {"c\r\n1,5 2,5\r\n", "line 2: \"5 2\" is no number."},
        {"c\r\n1;1e39\r\n", "line 2: \"1e39\" is too large."},
        {"c\r\n1;inf\r\n", "line 2: \"inf\" is no number."},
        {std::string("c\r\n1;\0;2\r\n", 10), "line 2: this is no line of X-Y data."},
        {"c\r\n1;" + std::string(40000, '1') + "\r\n", "line 2: this is no line of X-Y data."}};
    for (const auto& [bytes, fault] : cases) {
        const XYResult result = read_xy(bytes, "bad.XY");
        EXPECT_FALSE(result.file) << fault;
        EXPECT_EQ(result.fault, "\"bad.XY\", " + fault);
        EXPECT_THAT(fault, HasSubstr("line " + std::to_string(result.line) + ":"));
    }
}

TEST(XYFileTest, random_tables_come_back_with_every_delimiter) {
    test::RandomData random(4711);
    for (int round = 0; round < 200; ++round) {
        XYData data;
        data.comment = "c";
        for (int n = random.whole(40); n > 0; --n) data.points.edit().push_back(random.pair());
        std::vector<XYPoint> active;
        for (const XYPoint& point : data.points)
            if (point.Aus == 0) active.push_back(point);
        const char delimiter = ";,\t"[round % 3];
        const std::string bytes = xy_bytes(data, delimiter).bytes;
        const XYFile file = good(bytes);
        ASSERT_EQ(file.points.size(), active.size());
        for (std::size_t i = 0; i < active.size(); ++i) {
            EXPECT_NEAR(file.points[i].x, active[i].x, std::fabs(active[i].x) * 1e-7f);
            EXPECT_NEAR(file.points[i].y, active[i].y, std::fabs(active[i].y) * 1e-7f);
        }
        data.points = SharedVector<XYPoint>(file.points);
        EXPECT_EQ(xy_bytes(data, delimiter).bytes, bytes);
    }
}

// T and the chosen column, with a third one of 0 that readers drop.
TEST(XYFileTest, columns_of_a_data_set) {
    ExperimentalData data;
    data.points.edit().push_back({.T = 300, .p = 1, .rhoV = 3, .rhoL = 2, .HLV = 4, .cp = 5});
    data.points.edit().push_back({.Aus = -1, .T = 400});
    data.points.edit().push_back({.T = 273.15, .p = 101.325});
    data.file.ExpComment = "vapor";
    const char* y[] = {"1.0000000E+00", "2.0000000E+00", "3.0000000E+00", "4.0000000E+00", "5.0000000E+00"};
    for (int column = 1; column <= 5; ++column) {
        data.optFitFunction = column;
        const std::string bytes = T_y_bytes(data, ';').bytes;
        EXPECT_EQ(bytes, "vapor\r\n3.0000000E+02;" + std::string(y[column - 1]) +
                             ";0.0000000E+00\r\n2.7315000E+02;" +
                             (column == 1 ? "1.0132500E+02" : "0.0000000E+00") + ";0.0000000E+00\r\n");
        EXPECT_THAT(good(bytes).points[0], (XYPoint{300, static_cast<float>(column)}));
    }
}

}  // namespace
}  // namespace quom
