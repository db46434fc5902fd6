// The road of a calculation and its input windows, typed as a user types.
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <cmath>

#include "calc/calc_batch.h"
#include "engine/eos_parameters.h"
#include "session/options.h"
#include "ui/calculation_road.h"
#include "ui/desk.h"
#include "ui/frmCalcIn.h"
#include "ui/frmParinput.h"
#include "ui/mdi_area.h"
#include "ui/number_box.h"
#include "ui/result_list.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

const auto not_valid = Pair("Execution not possible", "no valid input");

// Types into the box that has the focus and goes on with Enter.
void type(const char* text) {
    QWidget* box = QApplication::focusWidget();
    ASSERT_TRUE(qobject_cast<NumberBox*>(box));
    QTest::keyClicks(box, QLatin1String(text));
    QTest::keyClick(box, Qt::Key_Return);
}

QStringList labels(const frmParinput* window) {
    QStringList texts;
    for (const QLabel* label : window->Bz)
        if (!label->isHidden()) texts << label->text();
    return texts;
}

class Calculation : public Desk {
 protected:
    Calculation() {
        go_to_calculations();
        messages.asked.clear();
        RoadWindows& windows = CalculationRoad::of(frame).windows;
        windows.result = [this](Session& s) { return stand_in(s, "frmQCalcOut"); };
        windows.tank = [this](Session& s) { return stand_in(s, "frmKessel"); };
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    // A window that calculates, and remembers what it was to calculate.
    ResultWindow stand_in(Session& s, const char* name) {
        const auto refresh = [this, &s, name] {
            shown.emplace_back(name);
            if (name[3] == 'Q') result = CalcBatch(s, {.Mode = s.calc.CalcMode, .Point = s.exp.CurrentPoint});
        };
        refresh();
        if (result.Text == "EXIT") return {};
        auto* widget = new QWidget;
        widget->setObjectName(QLatin1String(name));
        return {widget, {400, 300}, refresh};
    }
    void start(int mode) {
        start_calculation(frame, mode);
        QApplication::processEvents();
    }
    std::vector<std::string> open_windows() const {
        std::vector<std::string> names;
        for (const QMdiSubWindow* sub : frame.area->subWindowList(QMdiArea::CreationOrder))
            if (!sub->isHidden() && sub->widget()->objectName() != QStringLiteral("frmQModell"))
                names.push_back(sub->widget()->objectName().toStdString());
        return names;
    }
    frmParinput* input() const { return frame.child<frmParinput>(); }
    frmCalcIn* selection() const { return frame.child<frmCalcIn>(); }
    CalcState& calc() { return session().calc; }
    TpRhoPoint& point() { return session().exp.points[0]; }

    std::vector<std::string> shown;  // in the order of their refreshes
    CalcBatchResult result;
};

// ---- Values ----

TEST_F(Calculation, takes_typed_values_of_each_kind_and_shows_their_result) {
    struct Case {
        int mode;
        std::vector<const char*> typed;
        std::vector<double> taken;  // T, p, rho(V), rho(L) of the data point; m, V, T of the tank
    };
    const Case cases[] = {
        {1, {"300", "2.5"}, {300, 0, 2.5, 0}},
        {2, {"300", "500"}, {300, 0, 0, 500}},
        {3, {"298,15", "1e2"}, {298.15, 100, 0, 0}},
        {8, {"400", "2000"}, {400, 2000, 0, 0}},
        {13, {"500", "2.5"}, {0, 500, 2.5, 0}},
        {6, {"300"}, {300, 0, 0, 0}},
        {7, {"500"}, {0, 500, 0, 0}},
        {11, {"300"}, {300, 0, 0, 0}},
        {14, {"300"}, {300, 0, 0, 0}},
        {9, {"2", "10", "300"}, {10, 2, 300}},
    };
    for (const Case& c : cases) {
        start(c.mode);
        EXPECT_EQ(messages.take().size(), c.mode == 3 ? 1u : 0u);  // an equilibrium? no
        ASSERT_TRUE(input()) << c.mode;
        EXPECT_EQ(labels(input()).size(), static_cast<int>(c.typed.size())) << c.mode;
        EXPECT_THAT(shown, IsEmpty()) << "nothing is calculated before there is a value";
        for (const char* text : c.typed) type(text);
        EXPECT_THAT(messages.take(), IsEmpty()) << c.mode;
        const TankInput& tank = calc().tank;
        const std::vector<double> taken =
            c.mode == 9 ? std::vector<double>{tank.m, tank.V, tank.T}
                        : std::vector<double>{point().T, point().p, point().rhoV, point().rhoL};
        EXPECT_EQ(taken, c.taken) << c.mode;
        EXPECT_EQ(calc().CalcMode, c.mode);
        const auto results = c.mode == 9 ? std::vector<std::string>{"frmQCalcOut", "frmKessel"}
                                         : std::vector<std::string>{"frmQCalcOut"};
        EXPECT_EQ(shown, results);
        EXPECT_TRUE(input()->par[0]->hasFocus()) << "the next value can be typed at once";
        EXPECT_FALSE(result.view.Liste.text.empty()) << c.mode;

        for (const char* text : c.typed) type(text);
        EXPECT_EQ(shown.size(), 2 * results.size()) << "the same windows are refreshed";
        EXPECT_EQ(open_windows().size(), 1 + results.size());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_THAT(open_windows(), IsEmpty()) << c.mode;
        shown.clear();
    }
}

TEST_F(Calculation, refuses_what_is_no_value_and_stays_at_the_box) {
    start(8);
    point() = {.T = 250, .p = 80};
    for (const auto& [T, p, box] : std::vector<std::tuple<const char*, const char*, int>>{
             {"", "100", 0}, {"0", "100", 0}, {"300", "-1", 1}, {"1.2.3", "100", 0}, {"300", "1e400", 1}}) {
        input()->par[0]->setText(QLatin1String(T));
        input()->par[1]->setText(QLatin1String(p));
        input()->cmdParameter_OK->click();
        EXPECT_THAT(messages.take(), ElementsAre(not_valid)) << T << " " << p;
        EXPECT_TRUE(input()->par[static_cast<std::size_t>(box)]->hasFocus()) << T << " " << p;
        EXPECT_EQ(point().T, 250);
        EXPECT_THAT(open_windows(), ElementsAre("frmParinput"));
    }
}

TEST_F(Calculation, turns_volumes_into_densities_in_the_unit_of_the_options) {
    // Propane, M = 44.0956 kg/kmol: 500 kg/m^3 are 0.0881912 m^3/kmol or 0.002 m^3/kg.
    struct Case {
        int VolumeMode;
        const char *label, *volume;
    };
    const double M = static_cast<double>(session().substance.MolMass);
    for (const Case& c : {Case{0, "V/m^3/kmol = ", "0.0881912"}, Case{1, "V/m^3/kg  = ", "0.002"}}) {
        session().units.VolumeMode = c.VolumeMode;
        ASSERT_TRUE(set_unit_factors(session()));
        start(2);
        type("300");
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("500"));
        input()->optRhoV[1]->click();
        EXPECT_EQ(labels(input()), QStringList({"      T/K     ", QLatin1String(c.label)}));
        EXPECT_NEAR(input()->par[1]->text().toDouble(), std::atof(c.volume), 2e-5 * std::atof(c.volume));
        EXPECT_EQ(input()->par[0]->text(), QStringLiteral("300"));
        input()->par[1]->setText(QLatin1String(c.volume));
        input()->cmdParameter_OK->click();
        const double factor = c.VolumeMode == 0 ? 1.0 : 1.0 / M;
        EXPECT_NEAR(static_cast<double>(point().rhoL), M * factor / std::atof(c.volume), 1e-4);
        input()->optRhoV[0]->click();
        EXPECT_NEAR(input()->par[1]->text().toDouble(), 500, 0.02);
        input()->par[1]->setText(QStringLiteral("1.2.3"));
        input()->optRhoV[1]->click();
        EXPECT_EQ(input()->par[1]->text(), QStringLiteral("1.2.3")) << "what is no number is not thrown away";
    }
    start(9);
    type("2");
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("10"));
    input()->optm_n[1]->click();
    EXPECT_EQ(labels(input())[1], QStringLiteral("      n/kmol  "));
    EXPECT_NEAR(input()->par[1]->text().toDouble(), 10 / M, 1e-7);
    input()->optm_n[0]->click();
    EXPECT_NEAR(input()->par[1]->text().toDouble(), 10, 1e-5);
}

// ---- GLOBAL or PARTIAL ----

TEST_F(Calculation, goes_over_the_selection_to_the_input) {
    start(4);
    ASSERT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_TRUE(selection()->opt_glob[0]->isChecked());
    EXPECT_FALSE(selection()->fraRef->isEnabled());
    EXPECT_EQ(
        selection()->lblStatus->text(),
        QStringLiteral("GLOBAL calculation: L and V density as well as p(LV) or T(LV) using a cubic EOS."));
    selection()->opt_glob[1]->click();
    EXPECT_FALSE(calc().GlobalCalc);
    EXPECT_TRUE(selection()->txtRef->toPlainText().contains(QStringLiteral("(normal boiling T)")));
    selection()->Ref_opt[1]->click();
    EXPECT_TRUE(
        selection()->txtRef->toPlainText().startsWith(QStringLiteral("Reference point calculated using")));
    selection()->optPartialBenson[1]->click();
    EXPECT_FALSE(calc().BensonRhoL);
    EXPECT_EQ(
        selection()->lblMethod->text(),
        QStringLiteral("The L-density is calculated by means of the database equation rho(L) = Fu(T)."));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // "Continue >" is the default
    ASSERT_THAT(open_windows(), ElementsAre("frmParinput"));
    EXPECT_TRUE(calc().RhoLWanted);
    EXPECT_EQ(calc().ParInputKind, 104);
    type("300");
    EXPECT_THAT(shown, ElementsAre("frmQCalcOut"));
    EXPECT_FALSE(calc().GlobalCalc);
}

TEST_F(Calculation, takes_a_typed_reference_point) {
    start(4);
    selection()->opt_glob[1]->click();
    const BensonReference proposed = session().benson;
    selection()->Ref_opt[2]->click();
    QApplication::processEvents();
    ASSERT_TRUE(input());
    EXPECT_EQ(input()->windowTitle(), QStringLiteral("Input: Reference Point"));
    EXPECT_FALSE(selection()->OK->isEnabled()) << "no point yet";

    // Left: the proposal is in force again.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_TRUE(selection()->Ref_opt[0]->isChecked());
    EXPECT_EQ(session().benson.TRefL, proposed.TRefL);
    EXPECT_TRUE(selection()->OK->isEnabled());

    // Another option closes the input.
    selection()->Ref_opt[2]->click();
    selection()->Ref_opt[1]->click();
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));

    selection()->Ref_opt[2]->click();
    QApplication::processEvents();
    for (const char* text : {"231", "101.3", "580", "2.4"}) type(text);
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_EQ(session().benson.rhoLRef, 580.0f);
    EXPECT_TRUE(selection()->txtRef->toPlainText().contains(QStringLiteral("580")));
    selection()->OK->click();
    EXPECT_EQ(session().benson.rhoLRef, 580.0f);
    EXPECT_TRUE(calc().RhoLWanted);
}

TEST_F(Calculation, an_eos_of_the_vapor_phase_refuses_global) {
    session().models.VPhaseOnly = true;
    session().models.EOSKode = eos_pitzer_curl;
    start(4);
    selection()->opt_glob[0]->click();
    EXPECT_THAT(
        messages.take(),
        ElementsAre(Pair("Execution not possible",
                         "GLOBAL calculation is only possible with a cubic EOS (=> window \"Models\")")));
    EXPECT_TRUE(selection()->opt_glob[1]->isChecked());
    start(2);
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "possible only using a cubic EOS")));
    EXPECT_THAT(open_windows(), IsEmpty());
    EXPECT_EQ(calc().CalcMode, 0);
}

TEST_F(Calculation, a_cancelled_input_leaves_the_record_as_it_was) {
    session().benson = {250, 200, 500, 4};
    calc().CalcMode = 8, calc().ParInputKind = 108, calc().RhoLWanted = true;
    const auto record = [&] {
        return std::tuple(calc().CalcMode, calc().ParInputKind, calc().GlobalCalc, calc().BensonRhoL,
                          calc().RhoLWanted, calc().VLEAssumed, session().benson.TRefL,
                          session().benson.rhoLRef, point().T, calc().tank.m);
    };
    const auto before = record();
    const auto leave = [&] {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_THAT(open_windows(), IsEmpty());
        EXPECT_EQ(record(), before);
    };
    messages.answers = {Answer::yes};
    start(3);  // an assumed equilibrium
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("T-p specification",
                                 "Do you intend to describe a VLE?\n"
                                 "Selecting \"Yes\" => the existence of a L-phase is assumed\n"
                                 "and a \"PATIAL calulation\" is carried out")));
    ASSERT_TRUE(selection());
    selection()->Ref_opt[1]->click();
    leave();
    start(10);
    selection()->Ref_opt[2]->click();
    selection()->parentWidget()->close();  // by its title bar, the input of the point still open
    EXPECT_THAT(open_windows(), IsEmpty());
    EXPECT_EQ(record(), before);
    start(10);
    selection()->OK->click();
    leave();
    start(9);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5"));
    leave();
    start(4);
    frame.unload_calculation_windows();  // as the opening of the menu does
    EXPECT_EQ(record(), before);
}

// ---- The ends of the road ----

TEST_F(Calculation, a_batch_needs_no_input_and_closing_the_result_ends_it) {
    session().options.BatchMode = true;
    session().exp.points = {{}, {.T = 300}, {.T = 310}};
    session().exp.CurrentPoint = 1;
    start(5);
    selection()->OK->click();
    EXPECT_THAT(open_windows(), ElementsAre("frmQCalcOut"));
    start(9);  // a tank is always typed
    for (const char* text : {"2", "10", "300"}) type(text);
    EXPECT_THAT(open_windows(), ElementsAre("frmParinput", "frmQCalcOut", "frmKessel"));
    frame.child("frmQCalcOut")->parentWidget()->close();
    EXPECT_THAT(open_windows(), IsEmpty());
}

TEST_F(Calculation, a_partial_tank_above_the_critical_point_has_nothing_to_show) {
    start(10);
    selection()->OK->click();
    for (const char* text : {"2", "10", "400"}) type(text);
    ASSERT_EQ(messages.asked.size(), 1u);
    EXPECT_EQ(messages.asked[0].title, "Execution not possible");
    EXPECT_THAT(open_windows(), ElementsAre("frmParinput"));
    for (const char* text : {"2", "10", "300"}) type(text);
    EXPECT_EQ(open_windows().size(), 3u);
}

TEST_F(Calculation, the_menu_leads_to_the_result_beside_the_input) {
    delete &CalculationRoad::of(frame);  // and with it the stand-ins
    session().units.VolumeMode = 0;
    menu("mnuCalc_2")->trigger();
    for (const char* text : {"300", "100"}) type(text);
    ASSERT_EQ(open_windows(), (std::vector<std::string>{"frmParinput", "frmQCalcOut"}));
    const QRect inputs = input()->parentWidget()->geometry();
    const QWidget* result_window = frame.child("frmQCalcOut");
    const QRect results = result_window->parentWidget()->geometry();
    EXPECT_EQ(results.left(), inputs.right() + 11);
    EXPECT_TRUE(frame.area->viewport()->rect().contains(results));
    const auto list = [&] { return in<ResultList>(result_window, "Liste")->toPlainText(); };
    const QString first = list();
    EXPECT_TRUE(first.contains(QStringLiteral("Density")));
    type("400");
    type("100");
    EXPECT_NE(list(), first);
    press(result_window, "cmdCalc_OK");
    EXPECT_THAT(open_windows(), IsEmpty());
    menu("Toolbar1_15")->trigger();
    for (const char* text : {"1", "100", "300"}) type(text);
    EXPECT_EQ(open_windows(), (std::vector<std::string>{"frmParinput", "frmQCalcOut", "frmKessel"}));
}

TEST_F(Calculation, the_selection_leads_to_a_diagram_too) {
    int drawn = 0;
    CalculationRoad::of(frame).select_for_diagram([&] { ++drawn; });
    selection()->opt_glob[1]->click();
    selection()->OK->click();
    EXPECT_EQ(drawn, 1);
    EXPECT_FALSE(calc().GlobalCalc);
    EXPECT_THAT(open_windows(), IsEmpty());
}

TEST_F(Calculation, boxes_have_captions_and_tab_goes_down) {
    start(1);
    const frmParinput* w = input();
    const QList<QWidget*> order = {w->par[0], w->par[1], w->optRhoV[0], w->cmdParameter_OK, w->cmdClose};
    for (QWidget* control : order) {
        EXPECT_EQ(QApplication::focusWidget(), control) << qPrintable(control->objectName());
        EXPECT_FALSE(control->accessibleName().isEmpty()) << qPrintable(control->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const std::size_t i : {0u, 1u}) EXPECT_EQ(w->Bz[i]->buddy(), w->par[i]);
    EXPECT_EQ(w->par[1]->accessibleName(), QStringLiteral("rho/kg/m^3 ="));
}

}  // namespace
}  // namespace quom
