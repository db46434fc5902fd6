// A curve in hand: the values of the slider, and what stands on the sheet while it moves and afterwards.
#include "forms/live_curve.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "base/number_text.h"
#include "engine/eos_parameters.h"
#include "forms/diagram_form.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class LiveCurves : public ::testing::Test {
 protected:
    void open(Kind kind, int VolumeMode = volume_molar) {
        Document document = session.document;
        document.units.VolumeMode = VolumeMode;
        commit(session, std::move(document));
        unload_sheet(session.diagram);
        ASSERT_TRUE(choose_diagram(session, kind, user).open);
    }
    int draw(const char* parameter) {
        EXPECT_TRUE(take_parameter(session, parameter, user).taken) << parameter;
        return draw_curve(session, user);
    }
    LiveMove move(const char* typed) { return move_live_curve(session, live, typed); }
    GraphDocument& sheet() { return *session.diagram.sheet; }

    Session session = sample::propane();
    QueuedMessages user;
    LiveCurve live;
};

TEST_F(LiveCurves, the_slider_runs_over_what_can_be_drawn) {
    const double b = EOSParT(*session.fluid, 369.83).b, M = session.fluid->M;
    struct Row {
        Kind kind;
        int VolumeMode;
        double low, high;
        bool log;
    };
    for (const Row& row :
         {Row{Kind::p_v, volume_molar, 85.47, 2 * 369.83, false},
          {Kind::h_p, reduced_volume, 85.47 / 369.83, 2, false},
          {Kind::T_v, volume_molar, 0.001, 1.4 * 4248, true},
          {Kind::p_T, volume_molar, 1.06 * b, 7 * session.fluid->eos.vcrEOS, true},
          {Kind::p_T, volume_per_mass, 1.06 * b / M, 7 * session.fluid->eos.vcrEOS / M, true}}) {
        open(row.kind, row.VolumeMode);
        const auto scale = parameter_scale(session);
        ASSERT_TRUE(scale) << static_cast<int>(row.kind);
        EXPECT_EQ(scale->log, row.log);
        EXPECT_NEAR(scale->low, row.low, 1e-3 * row.low);
        EXPECT_NEAR(scale->high, row.high, 1e-3 * row.high);
        EXPECT_GE(scale->low, row.low * (1 - 1e-7));  // the triple point itself is single
        EXPECT_LE(scale->high, row.high * (1 + 1e-12));
        for (int i = 0; i <= ParameterScale::Steps; ++i)
            ASSERT_EQ(position_of(*scale, Val(value_at(*scale, i))), i) << static_cast<int>(row.kind);
        EXPECT_EQ(position_of(*scale, -1), 0);
        EXPECT_EQ(position_of(*scale, 1e9), ParameterScale::Steps);
        // Both ends can be drawn.
        for (const int end : {0, ParameterScale::Steps})
            EXPECT_TRUE(move(value_at(*scale, end).c_str()).drawn)
                << static_cast<int>(row.kind) << ' ' << end;
    }
    open(Kind::sat_p_v);
    EXPECT_FALSE(parameter_scale(session));
    EXPECT_TRUE(user.take().empty());
}

TEST_F(LiveCurves, one_curve_moves_and_goes) {
    open(Kind::p_v);
    EXPECT_EQ(draw("300"), 1);
    sheet().NextColor = rgb(0x123456);
    const GraphDocument before = sheet();
    for (const char* T : {"350", "345.5", "340"}) {
        const LiveMove moved = move(T);
        EXPECT_TRUE(moved.drawn && moved.told.empty()) << T;
        EXPECT_EQ(CurveCount(sheet()), 2);
        EXPECT_EQ(live.slot, 2);
        EXPECT_EQ(sheet().curve(2).series.label.text, "C.2 " + formatMask(Val(T), "###0.00") + " K");
        EXPECT_EQ(sheet().curve(2).series.style.color, rgb(0x123456));
    }
    EXPECT_EQ(session.diagram.state.T, 300);
    // What no curve has leaves the last one, with the reason.
    for (const auto& [typed, why] :
         {std::pair{"-1", "must be greater than zero"}, {"", "T is missing"}, {"3e", "is no number"}}) {
        const LiveMove refused = move(typed);
        EXPECT_FALSE(refused.drawn);
        EXPECT_THAT(refused.told, HasSubstr(why));
        EXPECT_EQ(sheet().curve(2).series.label.text, "C.2 340.00 K");
    }
    const GraphDocument moving = sheet();
    drop_live_curve(session, live);
    EXPECT_EQ(sheet(), before);
    // Drawn for good it is the same curve.
    EXPECT_EQ(draw("340"), 2);
    EXPECT_EQ(sheet().curve(2), moving.curve(2));
    EXPECT_TRUE(user.take().empty());
}

TEST_F(LiveCurves, leaves_what_has_become_of_the_sheet_alone) {
    open(Kind::p_v);
    move("350");
    delete_curve(sheet(), 1);  // by the menu
    EXPECT_EQ(draw("400"), 1);
    drop_live_curve(session, live);
    EXPECT_EQ(CurveCount(sheet()), 1);
    // A slot in front of it becomes free: it goes on there.
    draw("410");
    move("420");
    EXPECT_EQ(live.slot, 3);
    delete_curve(sheet(), 1);
    move("430");
    EXPECT_EQ(live.slot, 1);
    EXPECT_EQ(CurveCount(sheet()), 2);
    drop_live_curve(session, live);
    while (CurveCount(sheet()) < CurveSlots) draw("400");
    const GraphDocument full = sheet();
    const LiveMove refused = move("350");
    EXPECT_FALSE(refused.drawn);
    EXPECT_EQ(refused.told, "Maximum 24 curves possible  Delete existing curves");
    EXPECT_EQ(sheet(), full);
    move("350");
    unload_sheet(session.diagram);
    drop_live_curve(session, live);
    EXPECT_FALSE(move("350").drawn);
}

TEST_F(LiveCurves, tells_in_one_line_what_a_box_would_tell) {
    open(Kind::p_T);
    const double b = EOSParT(*session.fluid, 369.83).b;
    EXPECT_EQ(move(genNum(b).c_str()).told, "Input v <= b not possible!");
    open(Kind::p_v);
    sheet().diagram.range = {.XMin = 50, .YMin = 5000, .XMax = 60, .YMax = 6000};
    const LiveMove outside = move("300");
    EXPECT_THAT(outside.told, HasSubstr("outside"));
    EXPECT_EQ(outside.told.find('\n'), std::string::npos);
}

}  // namespace
}  // namespace quom
