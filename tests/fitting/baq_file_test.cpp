// Files of data sets: golden bytes, what a reader has to take, what it has to refuse.
#include "fitting/baq_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/files.h"
#include "fitting/random_data.h"
#include "support/test_paths.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

std::string head(const std::string& count) {
    return "1.1.2026\r\n\r\n67-64-1     ;Acetone\r\n" + count + "\r\n";
}

BaqFile good(std::string_view bytes) {
    BaqResult result = read_baq(bytes, "x.BAQ");
    EXPECT_EQ(result.fault, "");
    EXPECT_TRUE(result.file);
    return result.file.value_or(BaqFile{});
}

TEST(BaqFileTest, golden_file) {
    const std::string bytes = *read_file(test::test_data() + "/data/acetone.BAQ").bytes;
    const BaqFile file = good(bytes);
    EXPECT_EQ(file.date, "31.12.2025");
    EXPECT_EQ(file.comment, "Vapor pressures 20 °C – 100 °C, Müller");
    EXPECT_EQ(file.CAS, "67-64-1");
    EXPECT_EQ(file.name, "Acetone");
    EXPECT_EQ(file.note, "");
    ASSERT_EQ(file.points.size(), 4u);
    const TpRhoPoint first{.T = 293.15, .p = 24.7, .rhoV = 0.59f, .rhoL = 790.5f, .HLV = 31300, .cp = 125.4f};
    const TpRhoPoint third{
        .T = 0.38, .p = 1e15, .rhoV = 1.5e-7f, .rhoL = 1e-7f, .HLV = 12345680, .cp = -1.25f};
    EXPECT_EQ(file.points[1], first);
    EXPECT_EQ(file.points[2], (TpRhoPoint{.T = 329.44, .p = 101.325, .HLV = 29100}));
    EXPECT_EQ(file.points[3], third);

    ExperimentalData data;
    data.points = SharedVector<TpRhoPoint>(file.points);
    data.points.edit()[0].T = 7;     // direct input is no point
    data.points.edit()[2].Aus = -1;  // inactive points are written
    data.file.ExpDate = file.date;
    data.file.ExpComment = file.comment;
    data.file.ExpCAS = file.CAS;
    data.file.ExpName = file.name;
    EXPECT_EQ(baq_bytes(data).bytes, bytes);
    EXPECT_EQ(baq_bytes(data).replaced, 0u);
}

TEST(BaqFileTest, texts_that_no_line_can_hold) {
    ExperimentalData data;
    data.file.ExpDate = "1.1.2026";
    data.file.ExpComment = "two\nlines \xCE\xB1";
    data.file.ExpCAS = "1234567890123";
    data.file.ExpName = std::string(200, 'x');
    const Encoded file = baq_bytes(data);
    EXPECT_EQ(file.replaced, 1u);
    EXPECT_EQ(file.bytes, "1.1.2026\r\ntwo lines ?\r\n123456789012;" + std::string(107, 'x') + "\r\n0\r\n");
}

TEST(BaqFileTest, lines_as_they_come) {
    const TpRhoPoint first{.T = 300, .p = 100, .rhoV = 2, .rhoL = 800, .HLV = 3e4f};
    const std::string values[] = {
        "300\r\n100\r\n800\r\n2\r\n30000\r\n310\r\n0\r\n0\r\n0\r\n0\r\n",             // five values a point
        "300\n100\n800\n2\n30000\n310\n0\n0\n0\n0",                                   // LF, no last line end
        "300,100,800,2,3E4\r\n310,0,0,0,0\r\n",                                       // commas
        " 300 , 100 \r\n\r\n  \r\n800\n 2.0 ,3d4,310\r\n0,0,0,0\r\n\r\n",             // blanks, blank lines
        "300\r\n100\r\n800\r\n2\r\n30000\r\n0\r\n310\r\n0\r\n0\r\n0\r\n0\r\n0\r\n"};  // six
    for (const std::string& text : values) {
        for (const char* end : {"\r\n", "\n"}) {
            std::string start = head("2");
            if (*end == '\n') std::erase(start, '\r');
            const BaqFile file = good(start + text);
            ASSERT_EQ(file.points.size(), 3u) << text;
            EXPECT_EQ(file.points[1], first) << text;
            EXPECT_EQ(file.points[2], TpRhoPoint{.T = 310}) << text;
            EXPECT_EQ(file.note, "");
        }
    }
    EXPECT_EQ(good("\n\nno semicolon\n 1 ,300\n").points[1].T, 300) << "the count ends at a comma, too";
    EXPECT_EQ(good("\n\nno semicolon\n1\n300\n").CAS, "no semicolon");
    EXPECT_EQ(good("\n\na;b;c\n1\n300\n").name, "b;c");
}

// The number of values of a point is that of all values by that of the points, rounded.
TEST(BaqFileTest, values_per_point) {
    struct Case {
        int points, values, per_point;
        const char* note;
    };
    for (const Case& c : {Case{4, 20, 5, ""}, Case{4, 24, 6, ""}, Case{4, 21, 5, "1 value left out"},
                          Case{4, 22, 6, "2 values missing"}, Case{4, 23, 6, "1 value missing"},
                          Case{4, 30, 6, "6 values left out"}, Case{2, 7, 5, "3 values missing"}}) {
        std::string text = head(std::to_string(c.points));
        for (int i = 1; i <= c.values; ++i) text += std::to_string(i) + "\r\n";
        const BaqFile file = good(text);
        EXPECT_EQ(file.values_per_point, c.per_point) << c.values;
        ASSERT_EQ(file.points.size(), static_cast<std::size_t>(c.points) + 1);
        EXPECT_EQ(file.points[2].T, c.per_point + 1);
        EXPECT_EQ(file.points[2].rhoL, c.values < c.per_point + 3 ? 0 : c.per_point + 3) << "missing is 0";
        EXPECT_THAT(file.note, HasSubstr(c.note));
        EXPECT_EQ(file.note.empty(), *c.note == 0);
    }
}

TEST(BaqFileTest, refused_with_file_and_line) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "line 1: the file ends before the date."},
        {"1.1.2026\r\n", "line 2: the file ends before the comment."},
        {"1.1.2026\r\nc\r\n", "line 3: the file ends before the substance."},
        {"1.1.2026\r\nc\r\n67-64-1;A\r\n", "line 4: the number of points is missing."},
        {head("0"), "line 4: \"0\" points: there are no data in the file."},
        {head("-2") + "1\r\n", "line 4: \"-2\" is no number of points."},
        {head("1.5") + "1\r\n", "line 4: \"1.5\" is no number of points."},
        {head("two") + "1\r\n", "line 4: \"two\" is no number."},
        {head("999999") + "1\r\n2\r\n", "line 4: the file promises 999999 points, but holds only 2 values."},
        {head("4E9") + "1\r\n", "line 4: \"4E9\" points are more than the 1000000 possible."},
        {head("1e308") + "1\r\n", "more than the 1000000 possible."},
        {head("1") + "300\r\n\r\n1..5\r\n", "line 7: \"1..5\" is no number."},
        {head("1") + "300,,5\r\n", "line 5: a value is missing between commas."},
        {head("1") + "300,100,\r\n", "line 5: a value is missing between commas."},
        {head("1") + "300\r\n1e999\r\n", "line 6: \"1e999\" is no number."},
        {head("1") + "nan\r\n", "line 5: \"nan\" is no number."},
        {head("1") + "300\r\n100\r\n1e39\r\n", "line 7: \"1e39\" is too large for this column."},
        {head("1") + "300 100\r\n", "line 5: \"300 100\" is no number."},
        {std::string("MZ\x90\0\3\r\n\r\n", 8), "line 1: this is no date of a data file."},
        {std::string(40000, 'x') + "\r\n", "line 1: this is no date of a data file."},
        {"1.1.2026\r\nc\r\n67-64-1;A\r\n" + std::string(100, '7') + "\xC4\r\n",
         "7777777...\" is no number."}};
    for (const auto& [bytes, fault] : cases) {
        const BaqResult result = read_baq(bytes, "bad.BAQ");
        EXPECT_FALSE(result.file) << fault;
        EXPECT_THAT(result.fault, HasSubstr("\"bad.BAQ\", line " + std::to_string(result.line) + ": "));
        EXPECT_THAT(result.fault, HasSubstr(fault));
    }
}

// Every value is a short number without a zero before the point, and what is read is what the text says.
TEST(BaqFileTest, random_sets_come_back) {
    test::RandomData random(20251231);
    const auto is_written = ::testing::MatchesRegex(
        "-?(0|[1-9][0-9]*|[0-9]*\\.[0-9]*[1-9]|[1-9](\\.[0-9]*[1-9])?E[+-][0-9]{2,3})");
    for (int round = 0; round < 200; ++round) {
        ExperimentalData data;
        data.file.ExpDate = "1.1.2026";
        for (int n = random.whole(40) + 1; n > 0; --n) data.points.edit().push_back(random.point());
        const std::string bytes = baq_bytes(data).bytes;
        const std::vector<std::string_view> lines = split_lines(bytes);
        ASSERT_EQ(lines.size(), 4 + 6 * (data.points.size() - 1));
        for (std::size_t i = 4; i < lines.size(); ++i) {
            EXPECT_THAT(std::string(lines[i]), is_written);
            EXPECT_FALSE(lines[i].starts_with("0.")) << lines[i];
        }
        const BaqFile file = good(bytes);
        ASSERT_EQ(file.points.size(), data.points.size());
        for (std::size_t i = 1; i < file.points.size(); ++i) {
            EXPECT_EQ(file.points[i].Aus, 0) << "the file does not know it";
            for (std::size_t column = 0; column < exp_columns; ++column) {
                const double x = exp_value(data.points[i], column);
                EXPECT_NEAR(exp_value(file.points[i], column), x, std::fabs(x) * (column < 2 ? 6e-15 : 6e-7));
            }
        }
        data.points = SharedVector<TpRhoPoint>(file.points);
        EXPECT_EQ(baq_bytes(data).bytes, bytes);
    }
}

TEST(BaqFileTest, a_hundred_thousand_points) {
    ExperimentalData data;
    for (int i = 0; i < 100000; ++i) data.points.edit().push_back({.T = 200 + i / 1000.0, .cp = 75});
    const BaqFile file = good(baq_bytes(data).bytes);
    ASSERT_EQ(file.points.size(), 100001u);
    EXPECT_EQ(file.points.back(), (TpRhoPoint{.T = 299.999, .cp = 75}));
}

}  // namespace
}  // namespace quom
