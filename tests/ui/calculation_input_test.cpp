// A calculation and its input windows, typed as a user types.
#include <QAbstractItemView>
#include <QClipboard>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QRadioButton>
#include <cmath>

#include "report/outcome_messages.h"
#include "report/result_list.h"
#include "ui/main/calculation_windows.h"
#include "ui/main/mdi_area.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/unit_row.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmParinput.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

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

class Calculation : public WindowDriver {
 protected:
    Calculation() {
        go_to_calculations();
        messages.asked.clear();
        WindowMakers& windows = CalculationWindows::of(frame).windows;
        windows.result = [this](Workbench& bench) { return stand_in(bench, "frmQCalcOut"); };
        windows.tank = [this](Workbench& bench) { return stand_in(bench, "frmKessel"); };
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    // A window that calculates, and remembers what it was to show.
    ResultWindow stand_in(Workbench& bench, const char* name) {
        const auto refresh = [this, &bench, name] {
            shown.emplace_back(name);
            if (name[3] != 'Q') return;
            const Outcome& outcome = calculate(bench.session, calc().CurrentPoint);
            for (const Message& message : outcome_messages(bench.fluid(), outcome, true)) bench.tell(message);
            result =
                make_result_list(bench.fluid(), outcome, {.units = document().units, .setup = calc().setup});
        };
        refresh();
        if (result.Text == "EXIT") return {};
        auto* widget = new QWidget;
        widget->setObjectName(QLatin1String(name));
        widget->setMinimumSize(400, 300);
        return {widget, refresh};
    }
    void start(Mode mode) {
        start_calculation(frame, number_of(mode));
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
    const CalculationInput& calc() { return document().calc; }
    const TpRhoPoint& point() { return document().exp.points[0]; }

    std::vector<std::string> shown;  // in the order of their refreshes
    OutputView result;
};

TEST_F(Calculation, takes_typed_values_of_each_kind_and_shows_their_result) {
    struct Case {
        Mode mode;
        std::vector<const char*> typed;
        std::vector<double> taken;  // T, p, rho(V), rho(L) of the data point; m, V, T of the tank
    };
    const Case cases[] = {
        {Mode::T_rho, {"300", "2.5"}, {300, 0, 2.5, 0}},
        {Mode::T_rhoL, {"300", "500"}, {300, 0, 0, 500}},
        {Mode::T_p, {"298,15", "1e2"}, {298.15, 100, 0, 0}},
        {Mode::functions, {"400", "2000"}, {400, 2000, 0, 0}},
        {Mode::p_rho, {"500", "2.5"}, {0, 500, 2.5, 0}},
        {Mode::vaporization_T, {"300"}, {300, 0, 0, 0}},
        {Mode::vaporization_p, {"500"}, {0, 500, 0, 0}},
        {Mode::virial, {"300"}, {300, 0, 0, 0}},
        {Mode::fn_rhoL, {"300"}, {300, 0, 0, 0}},
        {Mode::tank_global, {"2", "10", "300"}, {10, 2, 300}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(mode_info(c.mode).menu_text);
        start(c.mode);
        EXPECT_EQ(messages.take().size(), c.mode == Mode::T_p ? 1u : 0u);  // an equilibrium? no
        ASSERT_TRUE(input());
        EXPECT_EQ(labels(input()).size(), static_cast<int>(c.typed.size()));
        EXPECT_THAT(shown, IsEmpty()) << "nothing is calculated before there is a value";
        for (const char* text : c.typed) type(text);
        EXPECT_THAT(messages.take(), IsEmpty());
        const TankInput& tank = calc().tank;
        const std::vector<double> taken =
            c.mode == Mode::tank_global
                ? std::vector<double>{tank.m, tank.V, tank.T}
                : std::vector<double>{point().T, point().p, point().rhoV, point().rhoL};
        EXPECT_EQ(taken, c.taken);
        EXPECT_EQ(calc().CalcMode, c.mode);
        const auto results = c.mode == Mode::tank_global
                                 ? std::vector<std::string>{"frmQCalcOut", "frmKessel"}
                                 : std::vector<std::string>{"frmQCalcOut"};
        EXPECT_EQ(shown, results);
        EXPECT_TRUE(input()->par[0]->hasFocus()) << "the next value can be typed at once";
        EXPECT_FALSE(result.Liste.text.empty());

        for (const char* text : c.typed) type(text);
        EXPECT_EQ(shown.size(), 2 * results.size()) << "the same windows are refreshed";
        EXPECT_EQ(open_windows().size(), 1 + results.size());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_THAT(open_windows(), IsEmpty());
        shown.clear();
    }
}

// The line under a box that is refused; empty without one.
std::string rule_under(const NumberBox* box) {
    const auto* line = box->window()->findChild<QLabel*>(box->objectName() + QStringLiteral("_refusal"));
    return line && line->isVisible() ? line->text().toStdString() : std::string();
}

TEST_F(Calculation, refuses_in_place_what_is_no_value) {
    change([](Document& d) { d.exp.points.edit()[0] = {.T = 250, .p = 80}; });
    start(Mode::functions);
    const QWidget* window = input();
    const QSize usual = window->parentWidget()->size();
    struct Case {
        const char *T, *p;
        std::size_t box;
        const char* rule;
    };
    for (const Case& c :
         {Case{"", "100", 0, "T is missing."}, Case{"0", "100", 0, "T must be above 0."},
          Case{"300", "-1", 1, "p must be above 0."}, Case{"-", "-1", 0, "- is no number."},
          Case{"1.2.3", "100", 0, "1.2.3 is no number."}, Case{"300", "1e400", 1, "p is too large."},
          Case{"300", "1e-60", 1, "p is too small."}}) {
        input()->par[0]->setText(QLatin1String(c.T));
        input()->par[1]->setText(QLatin1String(c.p));
        input()->cmdParameter_OK->click();
        QApplication::processEvents();
        EXPECT_THAT(messages.take(), IsEmpty()) << "no box besides";
        NumberBox* box = input()->par[c.box];
        EXPECT_EQ(QApplication::focusWidget(), box) << c.rule;
        EXPECT_EQ(box->selectedText().toStdString(), box->text().toStdString());
        EXPECT_EQ(rule_under(box), c.rule);
        EXPECT_EQ(box->toolTip().toStdString(), "no valid input");
        EXPECT_EQ(box->accessibleDescription().toStdString(), c.rule);
        EXPECT_FALSE(input()->par[1 - c.box]->refused()) << "one box at a time";
        EXPECT_GT(window->parentWidget()->height(), usual.height()) << "grown by the line";
        EXPECT_GE(window->height(), window->sizeHint().height());
        EXPECT_EQ(point().T, 250);
        EXPECT_THAT(open_windows(), ElementsAre("frmParinput"));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QApplication::processEvents();
        EXPECT_EQ(rule_under(box), "") << "the next key takes it away";
        EXPECT_TRUE(box->toolTip().isEmpty() && box->accessibleDescription().isEmpty());
        EXPECT_EQ(window->parentWidget()->size(), usual);
    }
    // Another box is corrected first: the one that is wrong now is told, and it alone.
    input()->cmdParameter_OK->click();
    EXPECT_TRUE(input()->par[1]->refused());
    input()->par[0]->setText(QStringLiteral("-"));
    input()->cmdParameter_OK->click();
    EXPECT_TRUE(input()->par[0]->refused());
    EXPECT_FALSE(input()->par[1]->refused());
    input()->par[0]->setText(QStringLiteral("300"));
    input()->par[0]->setFocus();
    type("");
    input()->par[1]->selectAll();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5e2"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(point().p, 500);
}

TEST_F(Calculation, takes_values_in_other_units) {
    start(Mode::functions);
    const auto key = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    // The list of the unit is opened and chosen from with keys.
    const auto choose_unit = [&](std::size_t box, int steps) {
        UnitCombo* unit = input()->rows[box]->unit;
        unit->setFocus();
        key(Qt::Key_Down);
        ASSERT_TRUE(unit->view()->isVisible());
        for (int i = 0; i < steps; ++i) QTest::keyClick(unit->view(), Qt::Key_Down);
        QTest::keyClick(unit->view(), Qt::Key_Return);
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        QApplication::processEvents();
    };
    const int height = input()->parentWidget()->height();
    choose_unit(0, 1);
    NumberBox* celsius = input()->rows[0]->other;
    EXPECT_EQ(QApplication::focusWidget(), celsius) << "the value goes on in the unit chosen";
    EXPECT_GT(input()->parentWidget()->height(), height);
    QTest::keyClicks(celsius, QStringLiteral("20"));
    EXPECT_EQ(input()->par[0]->text().toStdString(), "293.15");
    choose_unit(1, 3);
    NumberBox* atm = input()->rows[1]->other;
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1"));
    EXPECT_EQ(input()->par[1]->text().toStdString(), "101.325");
    // Enter goes over the boxes that are typed in, and calculates from the last.
    celsius->setFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget(), atm);
    key(Qt::Key_Return);
    EXPECT_EQ(point().T, 293.15);
    EXPECT_EQ(point().p, 101.325);
    EXPECT_EQ(QApplication::focusWidget(), celsius);
    EXPECT_EQ(celsius->selectedText(), celsius->text());
    // Typed in the other box, the first follows.
    input()->par[0]->setFocus();
    input()->par[0]->selectAll();
    QTest::keyClicks(input()->par[0], QStringLiteral("373.15"));
    EXPECT_EQ(celsius->text().toStdString(), "100");
    input()->par[0]->selectAll();
    QTest::keyClicks(input()->par[0], QStringLiteral("-"));
    EXPECT_TRUE(celsius->text().isEmpty()) << "no value is left of one that is gone";
    // Refused where it was typed, in its unit.
    celsius->setFocus();
    celsius->selectAll();
    QTest::keyClicks(celsius, QStringLiteral("-300"));
    input()->cmdParameter_OK->click();
    EXPECT_EQ(rule_under(celsius), "T must be above -273.15 °C.");
    EXPECT_FALSE(input()->par[0]->refused());
    celsius->selectAll();
    QTest::keyClicks(celsius, QStringLiteral("-"));
    input()->cmdParameter_OK->click();
    EXPECT_EQ(rule_under(celsius), "- is no number.");

    // Another window starts with the units chosen, in its own first one after the choice was taken back.
    start(Mode::virial);
    EXPECT_EQ(QApplication::focusWidget(), input()->rows[0]->other);
    EXPECT_EQ(input()->rows[0]->other->text().toStdString(), "20");
    input()->rows[0]->unit->setCurrentIndex(0);
    EXPECT_FALSE(input()->rows[0]->other->isVisible());
    EXPECT_EQ(QApplication::focusWidget(), input()->par[0]);
    start(Mode::functions);
    EXPECT_FALSE(input()->rows[0]->other->isVisible());
    EXPECT_TRUE(input()->rows[1]->other->isVisible());
}

TEST_F(Calculation, pasted_values_are_converted_or_refused) {
    start(Mode::functions);
    const auto paste = [](NumberBox* box, const char* text) {
        QApplication::clipboard()->setText(QString::fromUtf8(text));
        box->setFocus();
        box->selectAll();
        QTest::keyClick(box, Qt::Key_V, Qt::ControlModifier);
    };
    const auto* window = input();
    struct Case {
        std::size_t box;
        const char *pasted, *text, *rule;
    };
    for (const Case& c : {Case{0, "20 °C", "293.15", ""},
                          {0, " 68 °F \n", "293.15", ""},
                          {0, "3,5e2", "3.5e2", ""},
                          {0, "300 bar", "300 bar", "bar is no unit of T."},
                          {0, "1 000", "1 000", "1 000 is no number."},
                          {0, "\u2212 5", "- 5", "- 5 is no number."},
                          {0, "12abc", "12abc", "abc is no unit of T."},
                          {1, "1 atm", "101.325", ""},
                          {1, "2 MPa", "2000", ""}}) {
        input()->par[0]->setText(QStringLiteral("300"));
        input()->par[1]->setText(QStringLiteral("100"));
        paste(window->par[c.box], c.pasted);
        EXPECT_EQ(window->par[c.box]->text().toStdString(), c.text) << c.pasted;
        const TpRhoPoint before = point();
        window->cmdParameter_OK->click();
        EXPECT_EQ(rule_under(window->par[c.box]), c.rule) << c.pasted;
        if (*c.rule) {
            EXPECT_EQ(point(), before);
        }
    }
    const std::string digits(5000, '7');
    paste(window->par[0], digits.c_str());
    window->cmdParameter_OK->click();
    EXPECT_EQ(rule_under(window->par[0]), "The text of T is too long.");
}

TEST_F(Calculation, a_typed_box_is_told_until_it_is_calculated) {
    start(Mode::functions);
    int told = 0;
    QObject::connect(input(), &frmParinput::input_changed, &frame, [&] { ++told; });
    EXPECT_FALSE(input()->has_uncalculated_input());
    type("300");
    EXPECT_GT(told, 0);
    EXPECT_TRUE(input()->has_uncalculated_input());
    EXPECT_EQ(input()->uncalculated_boxes().toStdString(), "T");
    type("100");
    EXPECT_FALSE(input()->has_uncalculated_input());
    QTest::keyClicks(input()->par[0], QStringLiteral("301"));
    EXPECT_TRUE(input()->has_uncalculated_input());
    input()->par[0]->selectAll();
    QTest::keyClicks(input()->par[0], QStringLiteral("300"));
    EXPECT_FALSE(input()->has_uncalculated_input());
    // Values from elsewhere stand in the boxes, unless others are being typed.
    change([](Document& d) { d.exp.points.edit()[0].T = 323; });
    EXPECT_EQ(input()->par[0]->text().toStdString(), "323");
    EXPECT_FALSE(input()->has_uncalculated_input());
    input()->par[1]->selectAll();
    QTest::keyClicks(input()->par[1], QStringLiteral("7"));
    change([](Document& d) { d.exp.points.edit()[0].T = 330; });
    EXPECT_EQ(input()->par[0]->text().toStdString(), "323");
    EXPECT_TRUE(input()->has_uncalculated_input());
}

TEST_F(Calculation, turns_volumes_into_densities_in_the_unit_of_the_options) {
    // Propane, M = 44.0956 kg/kmol: 500 kg/m^3 are 0.0881912 m^3/kmol or 0.002 m^3/kg.
    struct Case {
        int VolumeMode;
        const char *label, *volume;
    };
    const double M = static_cast<double>(session().substance().MolMass);
    for (const Case& c : {Case{0, "V/m^3/kmol = ", "0.0881912"}, Case{1, "V/m^3/kg  = ", "0.002"}}) {
        change([&](Document& d) { d.units.VolumeMode = c.VolumeMode; });
        start(Mode::T_rhoL);
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
    start(Mode::T_rhoL);
    input()->optRhoV[1]->click();
    input()->par[1]->setText(QStringLiteral("0.002"));
    change([](Document& d) { d.units.VolumeMode = volume_molar; });
    EXPECT_EQ(labels(input())[1], QStringLiteral("V/m^3/kmol = "));
    EXPECT_TRUE(input()->par[1]->text().isEmpty()) << "a value of the former unit is not taken";

    start(Mode::tank_global);
    type("2");
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("10"));
    input()->optm_n[1]->click();
    EXPECT_EQ(labels(input())[1], QStringLiteral("      n/kmol  "));
    EXPECT_NEAR(input()->par[1]->text().toDouble(), 10 / M, 1e-7);
    input()->optm_n[0]->click();
    EXPECT_NEAR(input()->par[1]->text().toDouble(), 10, 1e-5);
}

TEST_F(Calculation, goes_over_the_selection_to_the_input) {
    start(Mode::equilibrium_T);
    ASSERT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_TRUE(selection()->opt_glob[0]->isChecked());
    EXPECT_FALSE(selection()->fraRef->isEnabled());
    EXPECT_EQ(
        selection()->lblStatus->text(),
        QStringLiteral("GLOBAL calculation: L and V density as well as p(LV) or T(LV) using a cubic EOS."));
    selection()->opt_glob[1]->click();
    EXPECT_FALSE(selection()->selection().setup.GlobalCalc);
    EXPECT_TRUE(selection()->txtRef->toPlainText().contains(QStringLiteral("(normal boiling T)")));
    selection()->Ref_opt[1]->click();
    EXPECT_TRUE(
        selection()->txtRef->toPlainText().startsWith(QStringLiteral("Reference point calculated using")));
    selection()->optPartialBenson[1]->click();
    EXPECT_FALSE(selection()->selection().setup.BensonRhoL);
    EXPECT_EQ(
        selection()->lblMethod->text(),
        QStringLiteral("The L-density is calculated by means of the database equation rho(L) = Fu(T)."));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);  // "Continue >" is the default
    ASSERT_THAT(open_windows(), ElementsAre("frmParinput"));
    EXPECT_EQ(labels(input()), QStringList{"      T/K     "});
    EXPECT_EQ(calc().CalcMode, Mode::none) << "nothing is kept before there is a value";
    type("300");
    EXPECT_THAT(shown, ElementsAre("frmQCalcOut"));
    EXPECT_EQ(calc().CalcMode, Mode::equilibrium_T);
    EXPECT_EQ(calc().setup.RhoLWanted, true);
    EXPECT_EQ(calc().setup.GlobalCalc, false);
    EXPECT_EQ(calc().setup.BensonRhoL, false);
}

TEST_F(Calculation, takes_a_typed_reference_point) {
    start(Mode::equilibrium_T);
    selection()->opt_glob[1]->click();
    const auto reference = [this] { return selection()->selection().setup.benson; };
    const BensonReference proposed = reference();
    EXPECT_TRUE(proposed.complete());
    selection()->Ref_opt[2]->click();
    QApplication::processEvents();
    ASSERT_TRUE(input());
    EXPECT_EQ(input()->windowTitle(), QStringLiteral("Input: Reference Point"));
    EXPECT_FALSE(selection()->OK->isEnabled()) << "no point yet";

    // Left: the proposal is in force again.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_TRUE(selection()->Ref_opt[0]->isChecked());
    EXPECT_EQ(reference(), proposed);
    EXPECT_TRUE(selection()->OK->isEnabled());

    // Another option closes the input.
    selection()->Ref_opt[2]->click();
    selection()->Ref_opt[1]->click();
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));

    selection()->Ref_opt[2]->click();
    QApplication::processEvents();
    for (const char* text : {"231", "101.3", "580", "2.4"}) type(text);
    EXPECT_THAT(open_windows(), ElementsAre("frmCalcIn"));
    EXPECT_EQ(reference(), (BensonReference{231.0f, 101.3f, 580.0f, 2.4f}));
    EXPECT_TRUE(selection()->txtRef->toPlainText().contains(QStringLiteral("580")));
    selection()->OK->click();
    type("300");
    EXPECT_EQ(calc().setup.benson.rhoLRef, 580.0f);
    EXPECT_TRUE(calc().setup.RhoLWanted);
}

TEST_F(Calculation, an_eos_of_the_vapor_phase_refuses_global) {
    change([](Document& d) { d.models.EOSKode = Eos::pitzer_curl; });
    start(Mode::equilibrium_T);
    selection()->opt_glob[0]->click();
    EXPECT_THAT(
        messages.take(),
        ElementsAre(Pair("Execution not possible",
                         "GLOBAL calculation is only possible with a cubic EOS (=> window \"Models\")")));
    EXPECT_TRUE(selection()->opt_glob[1]->isChecked());
    start(Mode::T_rhoL);
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "possible only using a cubic EOS")));
    EXPECT_THAT(open_windows(), IsEmpty());
    EXPECT_EQ(calc().CalcMode, Mode::none);
}

TEST_F(Calculation, a_cancelled_input_leaves_the_document_as_it_was) {
    change([](Document& d) {
        d.calc.CalcMode = Mode::functions;
        d.calc.setup = {
            .GlobalCalc = true, .BensonRhoL = false, .RhoLWanted = true, .benson = {250, 200, 500, 4}};
        d.exp.points.edit()[0] = {.T = 310, .p = 200};
    });
    const Document before = document();
    const auto leave = [&] {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_THAT(open_windows(), IsEmpty());
        EXPECT_TRUE(document() == before);
    };
    messages.answers = {Answer::yes};
    start(Mode::T_p);  // an assumed equilibrium
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("T-p specification",
                                 "Do you intend to describe a VLE?\n"
                                 "Selecting \"Yes\" => the existence of a L-phase is assumed\n"
                                 "and a \"PATIAL calulation\" is carried out")));
    ASSERT_TRUE(selection());
    selection()->Ref_opt[1]->click();
    leave();
    start(Mode::tank_partial);
    selection()->Ref_opt[2]->click();
    selection()->parentWidget()->close();  // by its title bar, the input of the point still open
    EXPECT_THAT(open_windows(), IsEmpty());
    EXPECT_TRUE(document() == before);
    start(Mode::tank_partial);
    selection()->OK->click();
    leave();
    start(Mode::tank_global);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("5"));
    leave();
    start(Mode::equilibrium_T);
    frame.unload_calculation_windows();  // as the opening of the menu does
    EXPECT_TRUE(document() == before);
}

TEST_F(Calculation, a_batch_needs_no_input_and_closing_the_result_ends_it) {
    change([](Document& d) {
        d.options.BatchMode = true;
        d.exp.points = {{}, {.T = 300}, {.T = 310}};
        d.calc.CurrentPoint = 1;
    });
    start(Mode::equilibrium_p);
    selection()->OK->click();
    EXPECT_THAT(open_windows(), ElementsAre("frmQCalcOut"));
    start(Mode::tank_global);  // a tank is always typed
    for (const char* text : {"2", "10", "300"}) type(text);
    EXPECT_THAT(open_windows(), ElementsAre("frmParinput", "frmQCalcOut", "frmKessel"));
    frame.child("frmQCalcOut")->parentWidget()->close();
    EXPECT_THAT(open_windows(), IsEmpty());
}

TEST_F(Calculation, a_partial_tank_above_the_critical_point_has_nothing_to_show) {
    start(Mode::tank_partial);
    selection()->OK->click();
    for (const char* text : {"2", "10", "400"}) type(text);
    ASSERT_EQ(messages.asked.size(), 1u);
    EXPECT_EQ(messages.asked[0].title, "Execution not possible");
    EXPECT_THAT(open_windows(), ElementsAre("frmParinput"));
    for (const char* text : {"2", "10", "300"}) type(text);
    EXPECT_EQ(open_windows().size(), 3u);
}

TEST_F(Calculation, the_menu_leads_to_the_result_beside_the_input) {
    delete &CalculationWindows::of(frame);  // and with it the stand-ins
    menu("mnuCalc_2")->trigger();
    for (const char* text : {"300", "100"}) type(text);
    ASSERT_EQ(open_windows(), (std::vector<std::string>{"frmParinput", "frmQCalcOut"}));
    const QRect inputs = input()->parentWidget()->geometry();
    const QWidget* result_window = frame.child("frmQCalcOut");
    const QRect results = result_window->parentWidget()->geometry();
    const QRect models = frame.child("frmQModell")->parentWidget()->geometry();
    EXPECT_EQ(results.left(), std::max(inputs.right(), models.right()) + 11);
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
    CalculationWindows::of(frame).select_for_diagram([&] { ++drawn; });
    selection()->opt_glob[1]->click();
    selection()->OK->click();
    EXPECT_EQ(drawn, 1);
    EXPECT_FALSE(calc().setup.GlobalCalc);
    EXPECT_THAT(open_windows(), IsEmpty());
}

TEST_F(Calculation, boxes_have_captions_and_tab_goes_down) {
    start(Mode::T_rho);
    const frmParinput* w = input();
    const QList<QWidget*> order = {w->par[0],     w->rows[0]->unit,   w->par[1],  w->rows[1]->unit,
                                   w->optRhoV[0], w->cmdParameter_OK, w->cmdClose};
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
