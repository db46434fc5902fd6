// The menus of a sheet: what there is to insert and to delete, limits of the axes, points, control graphs,
// files.
#include "forms/sheet_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "diagrams/marks.h"
#include "forms/diagram_form.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using I = Insertion;

class SheetForm : public ::testing::Test {
 protected:
    template <class Change>
    void change(Change make) {
        Document document = session.document;
        make(document);
        commit(session, std::move(document));
    }
    void open(Kind kind) {
        unload_sheet(session.diagram);
        ASSERT_TRUE(choose_diagram(session, kind, user).open);
    }
    void draw(const char* parameter) {
        ASSERT_TRUE(take_parameter(session, parameter, user).taken);
        ASSERT_GT(draw_curve(session, user), 0);
    }
    void put(Insertion what) { insert(session, what, false, user); }
    GraphDocument& sheet() { return *session.diagram.sheet; }
    std::vector<std::string> names() {
        std::vector<std::string> there;
        for (const DeleteEntry& entry : delete_entries(sheet())) there.push_back(entry.name);
        return there;
    }

    Session session = sample::propane();
    QueuedMessages user;
};

TEST_F(SheetForm, offers_what_the_axes_can_show) {
    struct Row {
        Kind kind;
        std::vector<Insertion> offered;  // of marks and overlays
    };
    const Row rows[] = {
        {Kind::p_v,
         {I::p, I::v, I::b, I::crit_measured, I::crit_calculated, I::coexistence, I::loop, I::tie_line}},
        {Kind::T_rho,
         {I::T, I::v, I::b, I::crit_measured, I::crit_calculated, I::coexistence, I::loop, I::tie_line}},
        {Kind::p_T,
         {I::T, I::p, I::crit_measured, I::crit_calculated, I::coexistence, I::inversion, I::tie_line}},
        {Kind::sat_rho_T,
         {I::T, I::v, I::b, I::crit_measured, I::crit_calculated, I::coexistence, I::bisector}},
        {Kind::sat_lnp_invT, {I::T}},
    };
    for (const Row& row : rows) {
        open(row.kind);
        std::vector<Insertion> offered;
        for (const InsertEntry& entry : insert_entries())
            if (!entry.name.empty() && entry.what <= I::bisector && can_insert(session, entry.what))
                offered.push_back(entry.what);
        EXPECT_EQ(offered, row.offered) << static_cast<int>(row.kind);
        EXPECT_FALSE(can_insert(session, I::process_line) || can_insert(session, I::measured_points) ||
                     can_insert(session, I::xy_data));
        EXPECT_TRUE(can_insert(session, I::legend) && can_insert(session, I::text));
    }
}

TEST_F(SheetForm, deletes_what_is_there_entry_by_entry) {
    open(Kind::p_v);
    EXPECT_THAT(names(), ElementsAre("mnuDelTotal"));
    put(I::legend);
    EXPECT_THAT(user.take()[0].second, HasSubstr("No legend text given"));
    draw("330");
    draw("400");
    for (const Insertion what : {I::p, I::crit_measured, I::crit_calculated, I::legend}) put(what);
    EXPECT_THAT(names(), ElementsAre("mnuDelTotal", "mnuDelMarkTP", "mnuDelMarkLabels", "mnuDelCritPointEx",
                                     "mnuDelCritPointCalc", "mnuDelLegend", "mnuDelLabels", "mnuSubDelKurv_1",
                                     "mnuSubDelKurv_2"));
    // Each one takes what it names, and no other entry but that of texts of the marks.
    for (std::size_t i = delete_entries(sheet()).size(); i-- > 1;) {
        const std::vector<DeleteEntry> before = delete_entries(sheet());
        if (i >= before.size()) continue;
        remove_from(sheet(), before[i]);
        for (const DeleteEntry& entry : delete_entries(sheet())) EXPECT_NE(entry.name, before[i].name);
    }
    EXPECT_TRUE(is_empty(sheet()));
    draw("350");
    EXPECT_EQ(sheet().curve(1).series.label.text, "C.1 350.00 K");
    insert_text(sheet(), "a note");
    remove_from(sheet(), delete_entries(sheet())[0]);
    EXPECT_TRUE(is_empty(sheet()));
    EXPECT_THAT(sheet().texts, IsEmpty());
    EXPECT_EQ(sheet().diagram.kind, Kind::p_v);
}

TEST_F(SheetForm, limits_are_taken_as_shown_or_refused) {
    open(Kind::p_v);
    const CurveRange before = sheet().diagram.range;
    struct Row {
        CoordinateTexts texts;
        int box;  // -1: a message
        std::string told;
    };
    const Row rows[] = {
        {{"1", "1", "0", "10"}, -1, "lower limit has to smaller than upper limit"},
        {{"0", "1", "10", "5"}, -1, "Lower limit has to smaller than upper limit."},
        {{"0", "1e39", "0", "5"}, -1, "lower limit has to smaller than upper limit"},
        {{"0", "x", "0", "5"}, 1, "no number"},
        {{"0", "1", "", "5"}, 2, "missing"},
    };
    for (const Row& row : rows) {
        const CoordinatesRefused refused = take_coordinates(sheet(), row.texts);
        ASSERT_EQ(refused.box.has_value(), row.box >= 0) << row.told;
        if (refused.box) {
            EXPECT_EQ(refused.box->box, static_cast<std::size_t>(row.box));
            EXPECT_THAT(refused.box->rule, HasSubstr(row.told));
        } else {
            ASSERT_TRUE(refused.message);
            EXPECT_EQ(refused.message->title, "INPUT ERROR");
            EXPECT_EQ(refused.message->text, row.told);
        }
        EXPECT_EQ(sheet().diagram.range, before);
    }
    sheet().Interchanged = true;
    EXPECT_FALSE(take_coordinates(sheet(), {"100", "200", "0.5", "0,75"}).any());
    EXPECT_EQ(sheet().diagram.range, (CurveRange{.XMin = 0.5F, .YMin = 100, .XMax = 0.75F, .YMax = 200}));
    EXPECT_THAT(coordinate_texts(sheet()), ElementsAre("100", "200", "0.5", "0.75"));
    EXPECT_EQ(sheet().diagram.initial, before);
}

TEST_F(SheetForm, measured_points_are_those_of_the_section) {
    change([](Document& d) {
        insert_rows(d.exp, 1, "400\t3000\t51\n400\t4000\t78\n400\t5000\t90\n330\t1500\t60\n");
        toggle_lines(d.exp, 3, 3);
    });
    open(Kind::p_v);
    ASSERT_TRUE(take_parameter(session, "330", user).taken);
    put(I::measured_points);  // before any curve: at the parameter that is offered
    draw("400");
    put(I::measured_points);
    ASSERT_EQ(PointCount(sheet()), 2);
    EXPECT_THAT(sheet().set(1).series.points.list(), ElementsAre(SheetPoint{44.0956F / 60.0F, 1500}));
    ASSERT_EQ(sheet().set(2).series.points.size(), 2u);
    EXPECT_EQ(sheet().set(2).series.points[1].Y, 4000.0F);
    for (int i = 3; i <= 13; ++i) put(I::measured_points);
    EXPECT_EQ(PointCount(sheet()), 12);
    EXPECT_EQ(user.take().at(0).second,
              "Maximum 12 sets of experimental points possible\nDelete the experimental points if existing");
}

TEST_F(SheetForm, control_graphs_have_their_own_axes) {
    EXPECT_FALSE(show_control_graph(session, ControlGraph::xy_points, user));
    EXPECT_EQ(user.take()[0].second, "at least one active point required!");
    change([](Document& d) {
        insert_rows(d.exp, 1, "300\t997\n320\t1599\n");
        insert_rows(d.xy, 1, "1\t5\n3\t9\n2\t0\n");
        toggle_lines(d.xy, 3, 3);
        d.exp.optFitFunction = 1;
    });
    ASSERT_TRUE(show_control_graph(session, ControlGraph::y_T, user));
    EXPECT_EQ(sheet().diagram.XTitle, "T / K");
    EXPECT_THAT(sheet().set(1).series.points.list(),
                ElementsAre(SheetPoint{300, 997}, SheetPoint{320, 1599}));
    EXPECT_EQ(sheet().diagram.range.XMin, 299.0F);  // a twentieth of the span
    EXPECT_EQ(sheet().diagram.range.XMax, 321.0F);
    EXPECT_EQ(draw_curve(session, user), 0);
    ASSERT_TRUE(show_control_graph(session, ControlGraph::y_T, user));  // the same: shown anew
    EXPECT_TRUE(user.take().empty());
    user.answers = {Answer::no};
    EXPECT_FALSE(show_control_graph(session, ControlGraph::xy_curve, user));
    EXPECT_EQ(PointCount(sheet()), 1);
    ASSERT_TRUE(show_control_graph(session, ControlGraph::xy_curve, user));
    EXPECT_EQ(sheet().curve(1).series.points.size(), 2u);
    user.take();
    // One with points of no p is refused by the words of its place.
    change([](Document& d) { insert_rows(d.exp, 1, "300\t0\t5\n"); });
    EXPECT_FALSE(show_control_graph(session, ControlGraph::ln_p, user));
    EXPECT_EQ(user.take()[0].second, "T and p columns cannot contain zero values!");
}

TEST_F(SheetForm, files_keep_the_sheet_and_ask_first) {
    const std::string path = (std::filesystem::temp_directory_path() / "quom_sheet_form.oc2").string();
    open(Kind::p_v);
    draw("400");
    const auto points = sheet().curve(1).series.points;
    sheet().Interchanged = true;
    user.answers = {Answer::no};
    EXPECT_FALSE(may_save_sheet(session, user));
    sheet().Interchanged = false;
    EXPECT_TRUE(may_save_sheet(session, user));
    EXPECT_TRUE(save_sheet(session, path, user));
    EXPECT_EQ(user.take().size(), 1u);
    delete_all(sheet());
    tell_before_loading(session, user);
    tell_before_loading(session, user);
    EXPECT_EQ(user.take().size(), 1u);  // once in a session
    ASSERT_TRUE(load_sheet(session, path, user));
    EXPECT_EQ(session.diagram.LastFile, "quom_sheet_form.oc2");
    EXPECT_EQ(sheet().curve(1).series.points, points);
    std::filesystem::remove(path);
    EXPECT_FALSE(load_sheet(session, path, user));
    EXPECT_FALSE(save_sheet(session, "/nowhere/at/all.oc2", user));
    EXPECT_EQ(user.take().size(), 2u);
    EXPECT_EQ(CurveCount(sheet()), 1);
}

}  // namespace
}  // namespace quom
