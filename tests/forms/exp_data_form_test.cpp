// Boxes of experimental data in their units, against figures worked out by hand; the printed table.
#include "forms/exp_data_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(ExpDataForm, takes_and_shows_values_in_the_units_chosen) {
    struct Case {
        ExpInputUnits units;
        std::size_t box;
        const char *typed, *shown;
        double stored;
    };
    const ExpInputUnits celsius{.T = TUnit::celsius}, atm{.p = PUnit::atm}, torr{.p = PUnit::torr},
        volume{.rho = RhoInput::volume, .n = 2, .MolMass = 50};
    for (const Case& c : {Case{{}, 0, "298,15", "298.15", 298.15},
                          {celsius, 0, "25", "25", 298.15},
                          {celsius, 0, "-273.15", "", 0},  // 0 K is no value
                          {{}, 0, "300.12349", "300.123", 300.12349},
                          {{}, 1, "0.1234567", "0.12346", 0.1234567},
                          {torr, 1, "760", "760", 101.325},
                          {torr, 1, "1", "1", 101.325 / 760},
                          {atm, 1, "2,5", "2.5", 253.3125},
                          {{}, 2, "1.5", "1.5", 1.5},
                          {volume, 2, "20", "20", 5},  // 50 * 2 / 20
                          {volume, 3, "0.4", "0.4", 250},
                          {volume, 4, "30000", "30000", 30000},
                          {torr, 5, "75.25", "75.25", 75.25}}) {
        ExpBoxes boxes;
        boxes[c.box] = c.typed;
        const ExpBoxPoint read = exp_point(boxes, c.units);
        ASSERT_FALSE(read.refusal) << c.typed;
        EXPECT_FALSE(read.blank) << c.typed;
        EXPECT_NEAR(exp_value(read.point, c.box), c.stored, 1e-12 * c.stored) << c.typed;
        EXPECT_EQ(exp_boxes(read.point, c.units)[c.box], c.shown) << c.typed;
    }
    EXPECT_TRUE(exp_point({"0", "", " ", "0.0", "", ""}, celsius).blank);
}

TEST(ExpDataForm, refuses_what_cannot_be_measured) {
    struct Case {
        ExpInputUnits units;
        ExpBoxes boxes;
        std::size_t box;
        const char* rule;
    };
    for (const Case& c : {Case{{}, {"-1"}, 0, "T must not be below 0."},
                          {{.T = TUnit::celsius}, {"-274"}, 0, "T must not be below -273.15 °C."},
                          {{.p = PUnit::torr}, {"300", "-5"}, 1, "p must not be below 0."},
                          {{}, {"300", "1.2.3"}, 1, "1.2.3 is no number."},
                          {{}, {"300", "5", "1E39"}, 2, "rho_V is too large."}}) {
        const ExpBoxPoint read = exp_point(c.boxes, c.units);
        ASSERT_TRUE(read.refusal) << c.rule;
        EXPECT_EQ(read.refusal->box, c.box);
        EXPECT_EQ(read.refusal->rule, c.rule);
    }
}

TEST(ExpDataForm, prints_its_table_under_two_lines_of_heads) {
    ExperimentalData data;
    data.points.edit().push_back({-1, 298.15, 101.325, 0.5F, 790, 30000, 0});
    const PrintedTable table = exp_printed_table(data);
    ASSERT_EQ(table.head.size(), 3u);
    EXPECT_EQ(table.head[0].size(), table.head[1].size());
    EXPECT_THAT(table.head[0], HasSubstr("delta(LV)h /"));
    EXPECT_THAT(table.head[1], HasSubstr("kJ/(kmol K)"));
    EXPECT_THAT(table.lines, ElementsAre("     1         298.15        101.325            0.5            790"
                                         "          30000              0  off"));
}

}  // namespace
}  // namespace quom
