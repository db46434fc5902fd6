// What the user is told of a curve, and whether it is drawn.
#include <gmock/gmock.h>

#include "diagrams/curve_generator.h"
#include "support/starter.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

TEST(CurveMessages, tell_each_status) {
    const auto cubic = test::starter_fluid(test::propane, Eos::peng_robinson);
    const auto vapor = test::starter_fluid(test::propane, Eos::pitzer_curl);
    const struct {
        CurveStatus status;
        bool outside;
        std::size_t count;
        bool keeps;  // with a point
        const char *title, *says;
    } cases[] = {
        {CurveStatus::done, false, 0, true, "", ""},
        {CurveStatus::done, true, 1, true, "WARNING", "Enlarge the coordinates area."},
        {CurveStatus::failed, true, 2, false, "ERROR", "Critical error occured:\nwhy"},
        {CurveStatus::no_result, false, 1, false, "Aborted", "no result with these input data"},
        {CurveStatus::below_triple, false, 1, true, "WARNING",
         "Calculated partially at T < T(triple)!\n(=> Options)"},
        {CurveStatus::below_triple, true, 2, true, "WARNING", "curve outside range of diagram coordinates"},
        {CurveStatus::no_critical_density, true, 1, false, "Execution not possible",
         "No critical density available"},
        {CurveStatus::no_tie_line, true, 1, true, "WARNING", "and for v <> v(cr)"},
        {CurveStatus::line_aborted, false, 1, true, "WARNING",
         "possibly the V-L coexistence curve was reached"},
        {CurveStatus::outside, true, 1, true, "WARNING", "Curve outside the present coordinates\nEnlarge"},
    };
    for (const auto& c : cases) {
        CurveResult result;
        result.curve.points = {{1, 2, 3, 4}};
        result.Msg = "why";
        result.Outside = c.outside;
        result.Status = c.status;
        const std::vector<Message> messages = curve_messages(*cubic, result);
        const int number = static_cast<int>(c.status);
        ASSERT_EQ(messages.size(), c.count) << number;
        if (c.count > 0) {
            EXPECT_EQ(messages.front().title, c.title) << number;
            EXPECT_THAT(messages.front().text, HasSubstr(c.says)) << number;
        }
        EXPECT_EQ(keeps_curve(result), c.keeps) << number;
        result.curve.points.clear();
        EXPECT_FALSE(keeps_curve(result)) << number;
    }
    CurveResult below;
    below.Outside = false;
    below.Status = CurveStatus::below_triple;
    EXPECT_TRUE(curve_messages(*vapor, below).empty());
}

}  // namespace
}  // namespace quom
