// Labels: boxes, places on lines, and that nothing overlaps on charts.
#include "diagrams/label_placing.h"

#include <gtest/gtest.h>

#include <cmath>

#include "chart_fixture.h"
#include "diagrams/chart_labels.h"

namespace quom {
namespace {

using namespace test;

constexpr double Width = 1208.0, Height = 786.0;

// Texts as a font of 8.5 pt has them, with 3 px of ground on both sides.
TextSize measured(const std::string& text) {
    int signs = 0;
    for (const char c : text) signs += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return {6.6 * signs + 6.0, 14.0};
}

TEST(LabelBoxes, MeetWhenTheyAreNearerThanTheGap) {
    const LabelBox level{.centre = {0, 0}, .width = 40, .height = 10, .angle = 0};
    const struct {
        LabelBox box;
        double gap;
        bool meet;
    } rows[] = {
        {{{41, 0}, 40, 10, 0}, 0, false},
        {{{39, 0}, 40, 10, 0}, 0, true},
        {{{43, 0}, 40, 10, 0}, 5, true},
        {{{46, 0}, 40, 10, 0}, 5, false},
        {{{0, 26}, 40, 10, 90}, 0, false},
        {{{0, 24}, 40, 10, 90}, 0, true},
        // Corner to corner: level boxes around both would meet.
        {{{22, 9}, 40, 10, -45}, 0, true},
        {{{24, 11}, 40, 10, -45}, 0, false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(boxes_meet(level, row.box, row.gap), row.meet)
            << row.box.centre.x << ' ' << row.box.centre.y;
        EXPECT_EQ(boxes_meet(row.box, level, row.gap), row.meet);
    }
    EXPECT_TRUE(box_meets_piece(level, {-50, 4}, {50, 4}));
    EXPECT_FALSE(box_meets_piece(level, {-50, 6}, {50, 6}));
    EXPECT_FALSE(box_meets_piece(level, {10, 30}, {50, -10}));
}

LabelLine straight(int family, PixelPoint a, PixelPoint b, const std::string& text) {
    LabelLine line;
    line.family = family;
    line.points = {a, b};
    line.fraction = {-1, -1};
    line.text = text;
    return line;
}

TEST(LabelPlacing, TakesTheWantedPlaceAlongTheLine) {
    LabelInput input{.width = 400, .height = 300, .lines = {}, .blocked = {}, .measure = measured};
    input.lines = {straight(1, {0, 300}, {400, 0}, "1"), straight(2, {0, 150}, {400, 150}, "\u22125")};
    input.lines[0].rule = {PlaceRule::Along::X, 8, 0.8};
    input.lines[1].rule = {PlaceRule::Along::X, 8, 0.25};
    input.lines[1].beside = true;
    const std::vector<PlacedLineLabel> labels = place_labels(input);
    ASSERT_EQ(labels.size(), 2u);
    EXPECT_NEAR(labels[0].box.centre.x, 320.0, 9.0);
    EXPECT_NEAR(labels[0].box.centre.y, 300.0 - 0.75 * labels[0].box.centre.x, 1e-9);  // on the line
    EXPECT_NEAR(labels[0].box.angle, -std::atan(0.75) * 180.0 / M_PI, 1e-9);
    EXPECT_TRUE(labels[1].beside);
    EXPECT_NEAR(labels[1].box.centre.x, 100.0, 9.0);
    EXPECT_NEAR(labels[1].box.centre.y, 150.0 - 7.0 - 3.5, 1e-9);  // above
}

TEST(LabelPlacing, KeepsOffBlockedBoxesKinksAndTheFrame) {
    LabelInput input{.width = 400, .height = 300, .lines = {}, .blocked = {}, .measure = measured};
    LabelLine bent = straight(1, {0, 150}, {200, 150}, "10");
    bent.points.push_back({200, 0});
    bent.fraction.push_back(-1);
    bent.rule = {PlaceRule::Along::X, 8, 0.5};
    input.lines = {bent};
    input.blocked = {{.centre = {150, 150}, .width = 30, .height = 30, .angle = 0}};
    const std::vector<PlacedLineLabel> labels = place_labels(input);
    ASSERT_EQ(labels.size(), 1u);
    EXPECT_FALSE(boxes_meet(labels[0].box, input.blocked[0], 4.0));
    EXPECT_FALSE(box_meets_piece(labels[0].box, {200, 150}, {200, 140}) &&
                 box_meets_piece(labels[0].box, {190, 150}, {200, 150}));
    // A line along the frame has no place.
    input.lines = {straight(1, {0, 5}, {400, 5}, "10")};
    EXPECT_TRUE(place_labels(input).empty());
    // Two lines at one place: the second moves along.
    input.blocked.clear();
    input.lines = {straight(1, {0, 100}, {400, 100}, "10"), straight(1, {0, 104}, {400, 104}, "20")};
    for (LabelLine& line : input.lines) line.rule = {PlaceRule::Along::X, 8, 0.5};
    const std::vector<PlacedLineLabel> two = place_labels(input);
    ASSERT_EQ(two.size(), 2u);
    EXPECT_FALSE(boxes_meet(two[0].box, two[1].box, 4.99));
}

TEST(LabelPlacing, OneLineOfAFamilyTakesTheLongText) {
    LabelInput input{.width = 400, .height = 300, .lines = {}, .blocked = {}, .measure = measured};
    for (int i = 0; i < 5; ++i) {
        const double y = 50.0 * (i + 1);
        input.lines.push_back(straight(1, {0, y}, {400, y}, std::to_string(i)));
        input.lines.back().long_text = "T = " + std::to_string(i) + " K";
    }
    int longs = 0;
    for (const PlacedLineLabel& label : place_labels(input)) {
        if (label.text.size() < 4) continue;
        ++longs;
        EXPECT_EQ(label.line, 2u);  // the middle one, all else being equal
    }
    EXPECT_EQ(longs, 1);
}

TEST(LabelPlacing, ABoxGoesWhereFewLinesAre) {
    LabelInput input{.width = 600, .height = 400, .lines = {}, .blocked = {}, .measure = measured};
    for (int i = 0; i < 20; ++i) input.lines.push_back(straight(1, {0, 20.0 * i}, {330, 20.0 * i}, ""));
    const auto corner = place_box(input, {200, 100});
    ASSERT_TRUE(corner.has_value());
    EXPECT_GT(corner->x, 330.0);
    EXPECT_LE(corner->x + 200.0, 600.0);
    EXPECT_FALSE(place_box(input, {700, 100}).has_value());
}

// Thirteen substances, three charts: nothing overlaps, hardly a line is without a label, and a second run
// gives the same places.
TEST(LabelPlacing, ChartsHaveLabelsThatNeverOverlap) {
    for (const char* units : {"", "T=C,p=bar"}) {
        each_chart(
            [](const StateChart& chart, const std::string& name) {
                const LabelInput input = chart_label_input(chart, Width, Height, measured);
                const std::vector<PlacedLineLabel> labels = place_labels(input);
                std::vector<bool> labelled(input.lines.size());
                for (std::size_t i = 0; i < labels.size(); ++i) {
                    const LabelBox& box = labels[i].box;
                    labelled[labels[i].line] = true;
                    for (std::size_t k = 0; k < i; ++k)
                        EXPECT_FALSE(boxes_meet(box, labels[k].box, 4.99))
                            << name << ": " << labels[i].text << " and " << labels[k].text;
                    for (std::size_t k = 0; k < input.lines.size(); ++k) {
                        if (!input.lines[k].keep_clear || k == labels[i].line) continue;
                        const auto& points = input.lines[k].points;
                        for (std::size_t n = 1; n < points.size(); ++n)
                            ASSERT_FALSE(box_meets_piece(box, points[n - 1], points[n]))
                                << name << ": " << labels[i].text << " on the dome";
                    }
                    const double reach = 0.5 * std::hypot(box.width, box.height),
                                 a = box.angle * M_PI / 180.0;
                    const double dx = 0.5 * (box.width * std::cos(a) + box.height * std::fabs(std::sin(a))),
                                 dy = 0.5 * (box.width * std::fabs(std::sin(a)) + box.height * std::cos(a));
                    EXPECT_LE(dx, reach + 1e-9);
                    EXPECT_TRUE(box.centre.x - dx > 0 && box.centre.x + dx < Width && box.centre.y - dy > 0 &&
                                box.centre.y + dy < Height)
                        << name << ": " << labels[i].text << " at the frame";
                    EXPECT_FALSE(boxes_meet(box, input.blocked[0], 0.0)) << name << ": on the critical point";
                }
                std::string missing;
                int count = 0;
                for (std::size_t i = 0; i < input.lines.size(); ++i) {
                    if (input.lines[i].text.empty() || labelled[i] || visible_length(input.lines[i]) < 80.0)
                        continue;
                    ++count;
                    missing += chart.lines[i].long_label + ", ";
                }
                EXPECT_LE(count, 2) << name << ": " << missing;
                const std::vector<PlacedLineLabel> again =
                    place_labels(chart_label_input(chart, Width, Height, measured));
                ASSERT_EQ(again.size(), labels.size());
                for (std::size_t i = 0; i < labels.size(); ++i) {
                    EXPECT_EQ(again[i].text, labels[i].text);
                    EXPECT_EQ(again[i].box.centre.x, labels[i].box.centre.x);
                    EXPECT_EQ(again[i].box.centre.y, labels[i].box.centre.y);
                    EXPECT_EQ(again[i].box.angle, labels[i].box.angle);
                }
            },
            units);
    }
}

}  // namespace
}  // namespace quom
