// The rule for the places of models, input and result, by rectangles alone.
#include "ui/main/places.h"

#include <gtest/gtest.h>

#include <string>

namespace quom {
namespace {

// Frames measured with a font of 9 pt, and as they grow with 12 and 14 pt.
const PlaceSizes at_9pt{{541, 506}, {290, 222}, {605, 457}, 26, 110, 190};
const PlaceSizes at_12pt{{700, 640}, {370, 280}, {800, 580}, 30, 140, 240};
const PlaceSizes at_14pt{{810, 730}, {430, 320}, {930, 670}, 33, 160, 280};

bool apart(const QRect& a, const QRect& b) { return a.isNull() || b.isNull() || !a.intersects(b); }

TEST(Places, TakesTheFirstArrangementThatHasRoom) {
    const struct {
        const char* what;
        QSize area;
        PlaceSizes sizes;
        int rule;
        QRect models, input, result;
    } rows[] = {
        // 541 + 290 + 605 + 40 = 1476
        {"wide", {1600, 900}, at_9pt, 1, {10, 10, 541, 506}, {561, 10, 290, 222}, {861, 10, 729, 880}},
        {"just wide", {1476, 540}, at_9pt, 1, {10, 10, 541, 506}, {561, 10, 290, 222}, {861, 10, 605, 520}},
        // 541 + 605 + 30 = 1176; the input may cover 40 of the models
        {"usual", {1280, 730}, at_9pt, 2, {10, 10, 541, 506}, {10, 498, 290, 222}, {561, 10, 709, 710}},
        {"tall", {1280, 900}, at_9pt, 2, {10, 10, 541, 506}, {10, 526, 290, 222}, {561, 10, 709, 880}},
        {"just tall", {1176, 718}, at_9pt, 2, {10, 10, 541, 506}, {10, 486, 290, 222}, {561, 10, 605, 698}},
        {"too low", {1280, 717}, at_9pt, 3, {10, 242, 290, 26}, {10, 10, 290, 222}, {310, 10, 900, 697}},
        {"small", {1024, 678}, at_9pt, 3, {10, 242, 290, 26}, {10, 10, 290, 222}, {310, 10, 704, 658}},
        {"least", {960, 550}, at_9pt, 3, {10, 242, 290, 26}, {10, 10, 290, 222}, {310, 10, 640, 530}},
        // 290 + 605 + 30 = 925; 457 + 222 + 30 = 709
        {"narrow", {924, 709}, at_9pt, 4, {310, 477, 541, 26}, {10, 477, 290, 222}, {10, 10, 900, 457}},
        {"too small", {924, 708}, at_9pt, 5, {10, 10, 541, 506}, {624, 476, 290, 222}, {0, 0, 924, 708}},
        {"larger font", {1280, 730}, at_12pt, 3, {10, 300, 370, 30}, {10, 10, 370, 280}, {390, 10, 880, 710}},
        {"and narrow", {1100, 900}, at_12pt, 4, {390, 610, 700, 30}, {10, 610, 370, 280}, {10, 10, 900, 590}},
        {"largest", {1280, 730}, at_14pt, 5, {10, 10, 810, 730}, {840, 400, 430, 320}, {0, 0, 1280, 730}},
        {"no models",
         {924, 678},
         {{}, {290, 222}, {590, 457}, 26, 110, 190},
         1,
         {},
         {10, 10, 290, 222},
         {310, 10, 604, 658}},
        {"no input",
         {1280, 730},
         {{541, 506}, {}, {605, 457}, 26, 110, 190},
         1,
         {10, 10, 541, 506},
         {},
         {561, 10, 709, 710}},
        {"result alone", {700, 500}, {{}, {}, {605, 457}, 26, 110, 190}, 1, {}, {}, {10, 10, 680, 480}},
        {"smaller than the result",
         {400, 300},
         at_9pt,
         5,
         {10, 10, 541, 506},
         {100, 110, 290, 222},
         {0, 0, 605, 457}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Places p = places(row.area, row.sizes);
        EXPECT_EQ(p.rule, row.rule);
        EXPECT_EQ(p.models, row.models);
        EXPECT_EQ(p.input, row.input);
        EXPECT_EQ(p.result, row.result);
        EXPECT_EQ(p.models_rolled, row.rule == 3 || row.rule == 4);
    }
}

// Over all sizes of an area and of windows with and without models and input: each window is there, as large
// as it has to be, in the area, and none lies over the state line or, while there is room, over the result.
TEST(Places, NeverHidesTheStateLine) {
    for (const PlaceSizes& font : {at_9pt, at_12pt, at_14pt})
        for (int without = 0; without < 4; ++without)
            for (int W = 600; W <= 2400; W += 37)
                for (int H = 400; H <= 1400; H += 41) {
                    PlaceSizes sizes = font;
                    if (without & 1) sizes.models = {};
                    if (without & 2) sizes.input = {};
                    SCOPED_TRACE(std::to_string(W) + " x " + std::to_string(H));
                    const QSize area(W, H);
                    const Places p = places(area, sizes);
                    const QRect strip = strip_of(p.result, sizes);
                    ASSERT_TRUE(apart(p.input, strip));
                    if (p.rule < 5) {
                        ASSERT_TRUE(apart(p.models, p.result) && apart(p.input, p.result));
                        if (p.rule != 2) {
                            ASSERT_TRUE(apart(p.models, p.input));
                        }
                        ASSERT_GE(p.result.width(), p.rule == 4 ? 0 : sizes.result.width());
                        ASSERT_TRUE(QRect(QPoint(0, 0), area.expandedTo({0, sizes.result.height() + 20}))
                                        .contains(p.result));
                    }
                    for (const QSize wanted : {QSize(300, 330), QSize(640, 560)}) {
                        const QSize least(wanted.width() - 60, wanted.height() - 80);
                        const QRect more = place_beside(area, sizes, p, wanted, least);
                        ASSERT_TRUE(apart(more, strip));
                        ASSERT_TRUE(more.width() >= least.width() && more.height() >= least.height());
                        ASSERT_TRUE(more.left() >= 0 && more.top() >= 0);
                    }
                }
}

TEST(Places, OneMoreWindowStandsBelowTheInputWhereItFits) {
    const QSize tank(280, 320), least(240, 260);
    Places p = places({1280, 900}, at_9pt);  // models above the input, which ends at 748
    EXPECT_EQ(place_beside({1280, 900}, at_9pt, p, tank, least), QRect(990, 570, 280, 320));
    EXPECT_EQ(place_beside({1280, 900}, at_9pt, p, {280, 130}, {240, 130}), QRect(10, 758, 280, 130));
    p = places({1024, 678}, at_9pt);  // below the models, rolled up at 242
    EXPECT_EQ(place_beside({1024, 678}, at_9pt, p, tank, least), QRect(10, 278, 280, 320));
    p = places({1600, 900}, at_9pt);  // below the input alone
    EXPECT_EQ(place_beside({1600, 900}, at_9pt, p, tank, least), QRect(561, 242, 280, 320));
    // Wider than the column: below input and models.
    EXPECT_EQ(place_beside({1600, 900}, at_9pt, p, {600, 360}, {500, 300}), QRect(10, 526, 600, 360));
}

TEST(Places, KeptPlacesAreTakenUpWhereTheyHideNothing) {
    const QSize area(1280, 730);
    const Places rule = places(area, at_9pt);
    const QRect aside(10, 490, 290, 222), over_list(900, 480, 290, 222), over_strip(900, 90, 290, 222);
    const QRect outside(1100, 480, 290, 222), narrow(600, 20, 610, 460), right(665, 10, 605, 700);
    const struct {
        const char* what;
        KeptPlaces kept;
        Places taken;
    } rows[] = {
        {"none", {}, rule},
        {"input over the list", {{}, over_list, {}}, {2, rule.models, over_list, rule.result, false}},
        {"input over the state line", {{}, over_strip, {}}, rule},
        {"input outside", {{}, outside, {}}, rule},
        {"result", {{}, {}, right}, {2, rule.models, rule.input, right, false}},
        {"result under the input", {{}, {}, QRect(30, 300, 690, 400)}, rule},
        {"both", {{}, aside, right}, {2, rule.models, aside, right, false}},
        {"result under the kept input", {{}, over_list, right}, {2, rule.models, rule.input, right, false}},
        {"both, side by side", {{}, over_list, narrow}, {2, rule.models, over_list, narrow, false}},
        {"models under the input", {rule.models.translated(0, 100), {}, {}}, rule},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const Places p = with_kept(area, at_9pt, rule, row.kept);
        EXPECT_EQ(p.models, row.taken.models);
        EXPECT_EQ(p.input, row.taken.input);
        EXPECT_EQ(p.result, row.taken.result);
    }
    // Models that the rule rolls up stay open where they are in nobody's way.
    const Places small = places({1300, 700}, at_9pt);
    ASSERT_EQ(small.rule, 3);
    const QRect low(10, 250, 290, 400);
    const Places open = with_kept({1300, 700}, at_9pt, small, {low, {}, {}});
    EXPECT_EQ(open.models, low);
    EXPECT_FALSE(open.models_rolled);
}

TEST(Places, MovedInKeepsTheLeastSize) {
    EXPECT_EQ(moved_in({800, 600}, {700, 500, 300, 200}, {300, 200}), QRect(500, 400, 300, 200));
    EXPECT_EQ(moved_in({800, 600}, {100, 50, 900, 700}, {605, 457}), QRect(0, 0, 800, 600));
    EXPECT_EQ(moved_in({500, 400}, {100, 50, 900, 700}, {605, 457}), QRect(0, 0, 605, 457));
    EXPECT_EQ(moved_in({800, 600}, {10, 10, 300, 200}, {300, 200}), QRect(10, 10, 300, 200));
    EXPECT_EQ(moved_in({800, 600}, {-40, 10, 300, 200}, {300, 200}), QRect(0, 10, 300, 200));
}

TEST(Places, TileAndCascadeKeepLeastSizesAndRollUpTheRest) {
    const int title = 26;
    const std::vector<SizeRange> windows{{{605, 457}, {16000, 16000}},
                                         {{290, 222}, {290, 222}},  // cannot be larger
                                         {{541, 506}, {16000, 506}},
                                         {{400, 300}, {16000, 16000}}};
    const struct {
        QSize area;
        std::size_t tiled, cascaded;  // so many are shown open
    } rows[] = {{{1600, 1000}, 4, 4}, {{1280, 730}, 3, 4}, {{940, 550}, 2, 4},
                {{940, 530}, 2, 2},   {{640, 500}, 1, 1},  {{300, 200}, 0, 0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(std::to_string(row.area.width()));
        for (const bool tile : {true, false}) {
            const auto found = tile ? tiled(row.area, windows, title) : cascaded(row.area, windows, title);
            const std::size_t open = tile ? row.tiled : row.cascaded;
            QRect room(QPoint(0, 0), row.area);
            if (open < windows.size()) room.setHeight(room.height() - title);
            ASSERT_EQ(found.size(), windows.size());
            for (std::size_t i = 0; i < found.size(); ++i) {
                ASSERT_EQ(found[i].has_value(), i < open) << tile << i;
                if (!found[i]) continue;
                EXPECT_TRUE(room.contains(*found[i])) << tile << i;
                EXPECT_EQ(found[i]->size().expandedTo(windows[i].least), found[i]->size()) << tile << i;
                EXPECT_EQ(found[i]->size().boundedTo(windows[i].most), found[i]->size()) << tile << i;
                for (std::size_t k = 0; tile && k < i; ++k) EXPECT_FALSE(found[i]->intersects(*found[k]));
            }
            if (!tile && open > 0) {
                EXPECT_EQ(found[open - 1]->topLeft(), QPoint(0, 0));
            }
        }
    }
    const auto row = rolled_row({640, 500}, 3, title);
    for (std::size_t i = 0; i < row.size(); ++i) {
        EXPECT_TRUE(QRect(0, 474, 640, 26).contains(row[i]));
        if (i > 0) {
            EXPECT_FALSE(row[i].intersects(row[i - 1]));
        }
    }
}

}  // namespace
}  // namespace quom
