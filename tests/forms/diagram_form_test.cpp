// Diagrams between menu and sheet: what an entry opens, the box of the parameter, what is drawn, and what a
// change of the document leaves of it.
#include "forms/diagram_form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagrams/axis_texts.h"
#include "engine/eos_parameters.h"
#include "forms/sample_session.h"
#include "support/queued_messages.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr const char* no_fit =
    "The units of the diagram axes do not fit together.\n\nDelete the existing diagram?";

class DiagramForm : public ::testing::Test {
 protected:
    DiagramForm() {
        options([](Options& o) { o.KurvenMischen = true; });
    }
    template <class Change>
    void change(Change make) {
        Document document = session.document;
        make(document);
        commit(session, std::move(document));
    }
    template <class Change>
    void options(Change make) {
        change([&](Document& d) { make(d.options); });
    }
    DiagramOpening choose(Kind kind) { return choose_diagram(session, kind, user); }
    int draw(const char* parameter) {
        EXPECT_TRUE(take_parameter(session, parameter, user).taken) << parameter;
        return draw_curve(session, user);
    }
    GraphDocument& sheet() { return *session.diagram.sheet; }
    std::vector<std::pair<std::string, std::string>> told() { return user.take(); }

    Session session = sample::propane();
    QueuedMessages user;
};

TEST_F(DiagramForm, an_entry_opens_a_sheet_and_what_it_needs) {
    struct Row {
        Kind kind;
        bool box;
    };
    for (const Row& row : {Row{Kind::p_v, true},
                           {Kind::T_v, true},
                           {Kind::p_T, true},
                           {Kind::sat_p_v, false},
                           {Kind::inversion_p_T, false},
                           {Kind::db_cpId_sinh, false},
                           {Kind::h_s_isobar, true}}) {
        unload_sheet(session.diagram);
        const DiagramOpening opening = choose(row.kind);
        EXPECT_TRUE(opening.open);
        EXPECT_EQ(opening.parameter_box, row.box) << static_cast<int>(row.kind);
        EXPECT_EQ(sheet().diagram.kind, row.kind);
    }
    EXPECT_TRUE(told().empty());
    EXPECT_FALSE(choose(Kind::db_cpL).open);  // propane of the test has no such function
    EXPECT_EQ(told()[0].second, "for this substance no function cp(L)=Fu(T)available ");
}

TEST_F(DiagramForm, a_family_of_axes_shares_the_sheet_and_another_asks) {
    choose(Kind::h_T);
    EXPECT_EQ(draw("4000"), 1);
    EXPECT_TRUE(choose(Kind::g_T).open);  // h and g: "hT"
    EXPECT_EQ(CurveCount(sheet()), 1);
    EXPECT_EQ(sheet().diagram.YTitle, "g / (kJ/kmol) ");
    EXPECT_THAT(sheet().header.text, StartsWith("Gibbs Enthalpy G (isobaric section)"));
    EXPECT_TRUE(told().empty());

    user.answers = {Answer::no};
    EXPECT_FALSE(choose(Kind::s_T).open);
    EXPECT_EQ(told()[0].second, no_fit);
    EXPECT_EQ(sheet().diagram.kind, Kind::g_T);
    EXPECT_EQ(CurveCount(sheet()), 1);

    user.answers = {Answer::yes};
    EXPECT_FALSE(choose(Kind::s_T).open);  // the entry is chosen again
    EXPECT_FALSE(session.diagram.sheet);
    EXPECT_TRUE(choose(Kind::s_T).open);
    EXPECT_EQ(told().size(), 1u);

    options([](Options& o) { o.KurvenMischen = false; });
    draw("4000");
    EXPECT_TRUE(choose(Kind::h_T).open);  // deleted without a question
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(CurveCount(sheet()), 0);
}

TEST_F(DiagramForm, a_heading_of_the_user_stays) {
    choose(Kind::h_T);
    sheet().header.text = "Report 7";
    choose(Kind::g_T);
    EXPECT_EQ(sheet().header.text, "Report 7");
}

TEST_F(DiagramForm, the_box_offers_the_critical_state_in_the_units_of_the_sheet) {
    const double vcr = session.fluid->eos.vcrEOS, M = session.fluid->M;
    struct Row {
        Kind kind;
        int VolumeMode;
        std::string caption, label;
        double value;
    };
    const Row rows[] = {
        {Kind::p_v, volume_molar, " for intersection curve ( p - v)", "T/K = ", 369.83},
        {Kind::T_rho, volume_molar, " for intersection curve ( T - rho)", "p/kPa = ", 4248},
        {Kind::p_T, volume_molar, "", "V/(m^3/kmol) = ", vcr},
        {Kind::p_T, volume_per_mass, "", "V/(m^3/kg) = ", vcr / M},
        {Kind::p_v, reduced_volume, " for intersection curve ( p - v)", "T(red) = ", 1},
        {Kind::T_rho, reduced_volume, " for intersection curve ( T - rho)", "p(red) = ", 1},
        {Kind::p_T, reduced_volume, "", "v(red.) = ", 1},
    };
    for (const Row& row : rows) {
        change([&](Document& d) {
            d.units.VolumeMode = row.VolumeMode;
            d.units.EnergyMode = row.VolumeMode == volume_per_mass ? energy_per_mass : energy_molar;
        });
        unload_sheet(session.diagram);
        choose(row.kind);
        const ParameterBox box = parameter_box(session);
        EXPECT_EQ(box.caption, row.caption);
        EXPECT_EQ(box.label, row.label);
        EXPECT_NEAR(std::stod(box.text), row.value, 1e-9 * row.value) << row.label;
        const DiagramState before = session.diagram.state;
        EXPECT_TRUE(take_parameter(session, box.text, user).taken);
        EXPECT_EQ(session.diagram.state, before);  // not a last digit of it is lost
    }
    // In reduced units 0.9 is 0.9 T(cr).
    unload_sheet(session.diagram);
    choose(Kind::p_v);
    EXPECT_EQ(draw("0.9"), 1);
    EXPECT_NEAR(session.diagram.state.T, 332.847, 1e-9);
    EXPECT_EQ(parameter_box(session).text, "0.9");  // offered the next time
}

TEST_F(DiagramForm, refuses_parameters_that_no_curve_has) {
    const double b = 0.07780 * 8.31451 * 369.83 / 4248;  // Peng and Robinson (1976) [m^3/kmol]
    struct Row {
        Kind kind;
        std::string typed, title, text;
        bool taken;
    };
    const Row rows[] = {
        {Kind::p_v, "0", "Execution not possible", " The default temperature must be greater than zero! ",
         false},
        {Kind::T_v, "-5", "Execution not possible", " The default pressure must be greater than zero! ",
         false},
        {Kind::p_T, std::to_string(0.99 * b), "WARNING", "Input v <= b not possible!", false},
        {Kind::p_T, std::to_string(1.02 * b), "WARNING",
         "v close to b\npossibly there are problems during calculation", true},
        {Kind::p_T, std::to_string(1.2 * b), "", "", true},
    };
    for (const Row& row : rows) {
        unload_sheet(session.diagram);
        choose(row.kind);
        const ParameterTaken taken = take_parameter(session, row.typed, user);
        EXPECT_EQ(taken.taken, row.taken) << row.typed;
        EXPECT_TRUE(taken.fault.empty());
        const auto messages = told();
        ASSERT_EQ(messages.size(), row.text.empty() ? 0u : 1u) << row.typed;
        if (!row.text.empty()) {
            EXPECT_EQ(messages[0], std::pair(row.title, row.text));
        }
    }
    EXPECT_THAT(take_parameter(session, "abc", user).fault, HasSubstr("no number"));
    EXPECT_THAT(take_parameter(session, "", user).fault, HasSubstr("missing"));
    EXPECT_TRUE(told().empty());
}

TEST_F(DiagramForm, draws_at_the_parameter_and_tells_of_isochores_once) {
    choose(Kind::p_v);
    EXPECT_EQ(draw("330"), 1);
    EXPECT_EQ(draw("300"), 2);
    EXPECT_EQ(sheet().curve(2).series.label.text, "C.2 300.00 K");
    draw_overlay(session, Overlay::tie_line, user);
    ASSERT_EQ(CurveCount(sheet()), 3);
    // At p(LV) of 300 K: 0.9978 MPa by the reference equation of Lemmon, McLinden and Wagner (2009), from
    // which Peng/Robinson lies within 1.5 %.
    for (const SheetPoint& point : sheet().curve(3).series.points) EXPECT_NEAR(point.Y, 997.8, 15);
    EXPECT_TRUE(told().empty());
    EXPECT_EQ(draw("400"), 4);
    draw_overlay(session, Overlay::tie_line, user);
    EXPECT_THAT(told()[0].second, HasSubstr("T < T(cr)"));
    EXPECT_EQ(CurveCount(sheet()), 4);

    unload_sheet(session.diagram);
    choose(Kind::u_T_isochore);
    EXPECT_EQ(draw("1"), 1);
    EXPECT_EQ(told()[0].first, "One-time notice");
    EXPECT_EQ(draw("2"), 2);
    EXPECT_TRUE(told().empty());
    EXPECT_GT(session.diagram.isochore.T, 200);  // where the tie line of the last isochore lies
    EXPECT_EQ(session.diagram.isochore.v, 2);
}

TEST_F(DiagramForm, a_25th_curve_is_refused_and_a_freed_slot_taken) {
    choose(Kind::p_v);
    for (int i = 1; i <= 24; ++i) EXPECT_EQ(draw(std::to_string(300 + 10 * i).c_str()), i);
    EXPECT_EQ(draw("600"), 0);
    EXPECT_EQ(told()[0].second, "Maximum 24 curves possible\n\nDelete existing curves");
    delete_curve(sheet(), 3);
    EXPECT_EQ(draw("600"), 3);
}

TEST_F(DiagramForm, pairs_of_functions_run_over_the_range_of_the_table) {
    choose(Kind::h_s_isobar);
    const CurveInput input = next_curve(session);
    EXPECT_NEAR(input.process.To, 1.1 * 369.83, 1e-6);
    EXPECT_EQ(draw("1000"), 1);
    draw_overlay(session, Overlay::coexistence, user);
    EXPECT_EQ(CurveCount(sheet()), 3);
}

TEST_F(DiagramForm, a_change_of_the_document_takes_the_sheet_or_leaves_it) {
    const auto start = [&] {
        unload_sheet(session.diagram);
        choose(Kind::h_T);
        ASSERT_EQ(draw("4000"), 1);
    };
    const auto specific = [](Document& d) {
        d.units.EnergyMode = energy_per_mass;
        d.units.VolumeMode = volume_per_mass;
    };
    const auto molar = [](Document& d) { d.units.EnergyMode = d.units.VolumeMode = 0; };
    start();
    change(specific);
    EXPECT_FALSE(session.diagram.sheet) << "units";

    // Without the option it stays in the units that it has, and so does what is drawn into it.
    change(molar);
    options([](Options& o) { o.ResetOnClose = false; });
    start();
    change(specific);
    ASSERT_TRUE(session.diagram.sheet);
    EXPECT_EQ(draw("4000"), 2);
    EXPECT_EQ(sheet().curve(1).series.points, sheet().curve(2).series.points);
    // An entry with equal axes of other units does not share it.
    user.answers = {Answer::no};
    EXPECT_FALSE(choose(Kind::g_T).open);
    EXPECT_EQ(told()[0].second, no_fit);
    options([](Options& o) { o.KurvenMischen = false; });
    EXPECT_TRUE(choose(Kind::h_T).open);
    EXPECT_EQ(CurveCount(sheet()), 0);
    EXPECT_EQ(sheet().diagram.YTitle, "h / (kJ/kg) ");

    change(molar);
    options([](Options& o) { o.ResetOnClose = true; });
    start();
    change([](Document& d) { d.models.EOSKode = Eos::redlich_kwong; });
    EXPECT_TRUE(session.diagram.sheet) << "models";
    change([](Document& d) { d.reference.hOffset = 5; });
    EXPECT_TRUE(session.diagram.sheet) << "reference";
    change([](Document& d) { d.units.TcrStart = 350; });
    EXPECT_TRUE(session.diagram.sheet) << "start values are no units";
    change([](Document& d) { d.substance.constants.StoffName = "Butane"; });
    EXPECT_FALSE(session.diagram.sheet) << "substance";
    EXPECT_EQ(session.diagram.state, DiagramState{});
}

TEST_F(DiagramForm, models_that_cannot_draw_the_kind_any_more_are_told) {
    choose(Kind::sat_p_v);
    EXPECT_EQ(draw_curve(session, user), 1);
    EXPECT_THAT(sheet().curve(1).series.label.text, StartsWith("C.1 (L) "));
    EXPECT_THAT(sheet().curve(2).series.label.text, StartsWith("C.2 (V) "));
    change([](Document& d) {
        d.models.EOSKode = Eos::virial_redlich_kwong;
        d.models.Konzept = false;
    });
    EXPECT_EQ(draw_curve(session, user), 0);
    EXPECT_EQ(told()[0].second, "Phase equlilibria calculations are only possible using a cubic EOS");
}

TEST_F(DiagramForm, reduced_units_without_a_critical_volume_become_molar) {
    change([](Document& d) {
        d.models.EOSKode = Eos::virial_redlich_kwong;
        d.models.Konzept = false;
        d.units.VolumeMode = reduced_volume;
    });
    ASSERT_FALSE(session.fluid->eos.vcrEOS > 0.0);
    const DiagramOpening opening = choose(Kind::p_v);
    EXPECT_FALSE(opening.open);
    EXPECT_TRUE(opening.changes.units);
    EXPECT_EQ(session.document.units.VolumeMode, volume_molar);
    EXPECT_THAT(told()[0].second, StartsWith("The selected EOS does not provide V(cr)"));
}

}  // namespace
}  // namespace quom
