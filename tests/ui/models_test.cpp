#include <QLabel>
#include <QMenuBar>
#include <QRadioButton>
#include <QTimer>
#include <functional>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/models.h"
#include "ui/main/status_panel.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmBParInput.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

class ModelsWindow : public WindowDriver {
 protected:
    ModelsWindow() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        open_starter_database();
        choose_substance("Propane");
        window = frame.child<frmQModell>();
    }
    // Closes and opens the window anew, as after a change of the substance's data.
    void reopen() {
        frame.unload(frmQModell::Name);
        frmQModell::open(frame);
        window = frame.child<frmQModell>();
    }
    static std::string last_entry(const QComboBox* box) {
        return box->itemText(box->count() - 1).toStdString();
    }
    const ModelSelection& models() { return document().models; }
    // Keys and a notch of the wheel as a user's: to what has the focus, and to what lies under the pointer.
    static void key(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    static void turn_wheel(QWidget* over) {
        const QPointF at = over->rect().center();
        QWheelEvent notch(at, over->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&notch);
        qApp->notify(over, &notch);
    }
    void open_calculation() {
        press(window, "cmdOKModell");
        menu("mnuCalc_1")->trigger();
        ASSERT_TRUE(frame.child("frmParinput"));
        frame.show_child(window);
        window->EOSKombi->setFocus();
    }
    bool calculation_is_open() const { return frame.child("frmParinput") != nullptr; }
    std::string eos() const { return window->EOSKombi->currentText().toStdString(); }
    std::string next() const { return window->lblNext->text().toStdString(); }

    frmQModell* window = nullptr;
};

TEST_F(ModelsWindow, proposes_models_and_its_ok_opens_the_calculations) {
    EXPECT_EQ(window->EOSKombi->currentText().toStdString(), "CEOS Peng / Robinson");
    EXPECT_TRUE(window->PriorOpt[0]->isChecked());
    EXPECT_EQ(window->rhoL_available->text().toStdString(), "Parameters available from database");
    EXPECT_TRUE(window->rhoL_validity->text().startsWith(QStringLiteral("validity T/K = ")));
    EXPECT_TRUE(frame.panels[2]->text().isEmpty());
    press(window, "cmdOKModell");
    for (const char* name : {"mnu2D", "mnu3D", "mnuCalcMain"}) EXPECT_TRUE(enabled(name)) << name;
    EXPECT_EQ(frame.panels[2]->text().toStdString(),
              "CEOS Peng / Robinson   Vapor press. equ.: " + window->pkombi->currentText().toStdString());
    EXPECT_EQ(frame.panels[3]->text().toStdString(), "CEOS Peng / Robinson (GLOBAL concept)");
    EXPECT_GT(session().fluid->eos.EOSb, 0.0);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(ModelsWindow, a_change_closes_the_calculations_until_the_next_ok) {
    press(window, "cmdOKModell");
    window->PriorOpt[1]->click();
    EXPECT_FALSE(enabled("mnuCalcMain"));
    press(window, "cmdOKModell");
    EXPECT_FALSE(models().Konzept);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_EQ(frame.panels[3]->text(), window->pkombi->currentText() + QStringLiteral(" (PARTIAL concept)"));
    frmQModell::open(frame);  // it is there already: nothing changes
    EXPECT_TRUE(enabled("mnuCalcMain"));
}

TEST_F(ModelsWindow, a_virial_equation_allows_the_partial_concept_only) {
    const std::string eos_difference = "using CEOS ('GLOBAL calculation')";
    EXPECT_EQ(last_entry(window->HLVKombi), eos_difference);
    choose(window->EOSKombi, "VIRIAL-EOS Peng / Robinson");
    EXPECT_TRUE(window->PriorOpt[1]->isChecked());
    EXPECT_FALSE(window->PriorOpt[0]->isEnabled());
    EXPECT_NE(last_entry(window->HLVKombi), eos_difference);
    press(window, "cmdOKModell");
    EXPECT_TRUE(models().VPhaseOnly());
    EXPECT_FALSE(models().Konzept);
    choose(window->EOSKombi, "CEOS Soave / Redlich / Kwong");
    EXPECT_TRUE(window->PriorOpt[0]->isChecked() && window->PriorOpt[0]->isEnabled());
    EXPECT_EQ(last_entry(window->HLVKombi), eos_difference);
    press(window, "cmdOKModell");
    EXPECT_TRUE(models().Konzept);
}

TEST_F(ModelsWindow, watson_exponent) {
    EXPECT_FALSE(window->WatsonKombi->isVisible());
    choose(window->HLVKombi, "Watson correlation");
    EXPECT_TRUE(window->WatsonKombi->isVisible() && window->lblWatson->isVisible());
    EXPECT_EQ(window->WatsonKombi->currentText().toStdString(), "0.38");
    window->WatsonKombi->setEditText(QStringLiteral("0,41"));
    EXPECT_EQ(window->WatsonKombi->currentText().toStdString(), "0.41");
    press(window, "cmdOKModell");
    EXPECT_EQ(models().nWat, 0.41F);
    window->WatsonKombi->setCurrentIndex(0);
    press(window, "cmdOKModell");
    EXPECT_EQ(models().nWat, 0.38F);
}

TEST_F(ModelsWindow, the_watson_exponent_survives_closing_and_refilling) {
    choose(window->HLVKombi, "Watson correlation");
    // The second entry is 0.74 T(nb)/T(cr) - 0.116: propane boils at 231.036 K, T(cr) is 369.89 K.
    ASSERT_EQ(window->WatsonKombi->count(), 2);
    window->WatsonKombi->setCurrentIndex(1);
    const std::string by_boiling_point = window->WatsonKombi->currentText().toStdString();
    EXPECT_NEAR(Val(by_boiling_point), 0.74 * 231.036 / 369.89 - 0.116, 2e-5);
    const auto expect_kept = [this](const std::string& text) {
        press(window, "cmdOKModell");
        const float chosen = models().nWat;
        EXPECT_EQ(chosen, static_cast<float>(Val(text)));
        reopen();
        EXPECT_EQ(window->WatsonKombi->currentText().toStdString(), text);
        choose(window->HLVKombi, "Watson correlation");
        EXPECT_TRUE(window->WatsonKombi->isVisible());
        EXPECT_EQ(window->WatsonKombi->currentText().toStdString(), text);
        press(window, "cmdOKModell");
        EXPECT_EQ(models().nWat, chosen);
    };
    expect_kept(by_boiling_point);
    EXPECT_EQ(window->WatsonKombi->currentIndex(), 1);
    window->WatsonKombi->setEditText(QStringLiteral("0.4"));
    expect_kept("0.4");
}

TEST_F(ModelsWindow, a_change_that_is_not_confirmed_leaves_the_document_as_it_was) {
    press(window, "cmdOKModell");
    const Document before = document();
    choose(window->EOSKombi, "CEOS Soave / Redlich / Kwong");
    choose(window->HLVKombi, "Watson correlation");
    window->WatsonKombi->setEditText(QStringLiteral("0.4"));
    window->pkombi->setCurrentIndex(window->pkombi->count() - 1);
    window->PriorOpt[1]->click();
    EXPECT_TRUE(document() == before);
    EXPECT_FALSE(enabled("mnuCalcMain"));
    reopen();
    EXPECT_EQ(window->EOSKombi->currentText().toStdString(), "CEOS Peng / Robinson");
    EXPECT_TRUE(window->PriorOpt[0]->isChecked());
    EXPECT_TRUE(document() == before);
    press(window, "cmdOKModell");
    EXPECT_EQ(models().EOSKode, before.models.EOSKode);
    EXPECT_EQ(models().EVPKode, before.models.EVPKode);
    EXPECT_EQ(models().nWat, before.models.nWat);
    EXPECT_EQ(models().Konzept, true);
    EXPECT_TRUE(enabled("mnuCalcMain"));
}

TEST_F(ModelsWindow, without_acentric_factor) {
    change([](Document& d) {
        d.substance.constants.omega = 0;
        d.models.EOSKode = Eos::none;
    });
    reopen();
    EXPECT_EQ(window->EOSKombi->currentText().toStdString(), "CEOS Redlich / Kwong");
    for (const char* text : {"CEOS Soave / Redlich / Kwong", "CEOS Peng / Robinson",
                             "VIRIAL-EOS Peng / Robinson", "VIRIAL-EOS Pitzer / Curl"})
        EXPECT_LT(window->EOSKombi->findText(QLatin1String(text)), 0) << text;
    press(window, "cmdOKModell");
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(ModelsWindow, without_critical_data_only_the_ideal_gas_is_left) {
    change([](Document& d) {
        d.substance.constants.Tcr = 0;
        d.substance.constants.pcr = 0;
    });
    reopen();
    EXPECT_EQ(window->EOSKombi->count(), 1);
    press(window, "cmdOKModell");
    EXPECT_EQ(models().EOSKode, Eos::ideal_gas);
    EXPECT_FALSE(models().Konzept);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    for (const char* name : {"mnu2D", "mnu3D", "mnuFitting", "Toolbar1_15"}) EXPECT_FALSE(enabled(name));
}

TEST_F(ModelsWindow, an_equation_without_parameters_opens_nothing) {
    press(window, "cmdOKModell");
    choose(window->EOSKombi, "CEOS Tovarn / Ji I");
    press(window, "cmdOKModell");
    EXPECT_FALSE(messages.take().empty());
    EXPECT_FALSE(enabled("mnuCalcMain"));
}

TEST_F(ModelsWindow, the_virial_equation_by_hand_keeps_what_was_typed) {
    const auto answer = [](const char* b0, bool ok) {
        QTimer::singleShot(0, [b0, ok] {
            auto* box = qobject_cast<frmBParInput*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            box->par[0]->clear();
            QTest::keyClicks(box->par[0], QLatin1String(b0));
            QTest::keyClick(box->par[0], Qt::Key_Return);  // on to the next box
            if (ok)
                QTest::keyClick(box->par[2], Qt::Key_Return);
            else
                QTest::keyClick(box, Qt::Key_Escape);
        });
    };
    answer("0,125x", true);
    choose(window->EOSKombi, "VIRIAL-EOS manual input");
    EXPECT_EQ(document().eos_input.b0, 0.0);
    press(window, "cmdOKModell");
    EXPECT_EQ(document().eos_input.b0, 0.125);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    choose(window->EOSKombi, "CEOS Peng / Robinson");
    answer("7", false);
    choose(window->EOSKombi, "VIRIAL-EOS manual input");
    press(window, "cmdOKModell");
    EXPECT_EQ(document().eos_input.b0, 0.0);
    // Looked through and left by OK: the box comes once, and before the models are confirmed.
    choose(window->EOSKombi, "CEOS Peng / Robinson");
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    window->EOSKombi->setFocus();
    while (eos() != "VIRIAL-EOS manual input") key(Qt::Key_Down);
    answer("0.25", true);
    press(window, "cmdOKModell");
    EXPECT_EQ(document().eos_input.b0, 0.25);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    QTest::qWait(1);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(ModelsWindow, equations_are_looked_through_without_being_taken) {
    open_calculation();
    EXPECT_EQ(next(), "next: choose what to calculate in the menu \"Calculation...\"");
    const std::string taken = eos();
    for (ChoiceBox* box : {window->EOSKombi, window->pkombi, window->HLVKombi, window->cpKombi}) {
        box->setFocus();
        const QString before = box->currentText();
        const int at = box->currentIndex();
        key(Qt::Key_Home);
        for (int i = 1; i < box->count(); ++i) {  // the virial equation by hand is among them
            key(Qt::Key_Down);
            EXPECT_EQ(box->currentIndex(), i);
            EXPECT_EQ(next(), i != at ? "next: <Enter> takes the equation shown, <Esc> goes back"
                                      : "next: choose what to calculate in the menu \"Calculation...\"");
            EXPECT_FALSE(QApplication::activeModalWidget());
        }
        EXPECT_TRUE(calculation_is_open());
        EXPECT_TRUE(enabled("mnuCalcMain"));
        key(Qt::Key_Escape);
        EXPECT_EQ(box->currentText(), before);
        EXPECT_THAT(next(), HasSubstr("choose what to calculate"));
    }
    EXPECT_EQ(eos(), taken);
    EXPECT_TRUE(calculation_is_open());

    window->EOSKombi->setFocus();
    key(Qt::Key_Up);  // Soave / Redlich / Kwong, before Peng / Robinson
    key(Qt::Key_Return);
    EXPECT_FALSE(enabled("mnuCalcMain"));
    EXPECT_EQ(next(), "next: OK puts these models in force");
    EXPECT_EQ(eos(), "CEOS Soave / Redlich / Kwong");
    key(Qt::Key_Return);  // nothing is open any more: the default button
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_EQ(models().EOSKode, Eos::soave);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(ModelsWindow, leaving_the_list_takes_what_it_shows) {
    const struct {
        const char* way;
        std::function<void()> leave;
        bool confirms;
    } ways[] = {
        {"Tab", [] { key(Qt::Key_Tab); }, false},
        {"a key of a command", [] { key(Qt::Key_F5); }, false},
        {"a click on OK", [this] { press(window, "cmdOKModell"); }, true},
        {"the menu bar", [this] { frame.menuBar()->setFocus(Qt::MenuBarFocusReason); }, false},
    };
    for (const auto& way : ways) {
        open_calculation();
        key(Qt::Key_Up);
        const std::string shown = eos();
        way.leave();
        EXPECT_EQ(eos(), shown) << way.way;
        EXPECT_EQ(enabled("mnuCalcMain"), way.confirms) << way.way;
        if (way.confirms) {
            EXPECT_EQ(trim(eos_info(models().EOSKode).text), shown) << way.way;
        }
        choose(window->EOSKombi, "CEOS Peng / Robinson");
    }
    // A click in the list that drops down takes at once; keys within it do not.
    open_calculation();
    key(Qt::Key_F4);
    QAbstractItemView* list = window->EOSKombi->view();
    ASSERT_TRUE(list->isVisible());
    QTest::keyClick(list, Qt::Key_Up);
    EXPECT_TRUE(calculation_is_open() && enabled("mnuCalcMain"));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_FALSE(enabled("mnuCalcMain"));
    EXPECT_EQ(eos(), "CEOS Soave / Redlich / Kwong");
}

TEST_F(ModelsWindow, the_wheel_turns_what_has_the_focus) {
    open_calculation();
    window->cmdOKModell->setFocus();
    for (QComboBox* box : window->findChildren<QComboBox*>()) {
        EXPECT_NE(box->focusPolicy(), Qt::WheelFocus) << box->objectName().toStdString();
        const int before = box->currentIndex();
        turn_wheel(box);
        if (box->lineEdit()) turn_wheel(box->lineEdit());
        EXPECT_EQ(box->currentIndex(), before) << box->objectName().toStdString();
    }
    EXPECT_EQ(QApplication::focusWidget(), window->cmdOKModell);
    EXPECT_TRUE(calculation_is_open());
    window->EOSKombi->setFocus();
    const std::string taken = eos();
    turn_wheel(window->EOSKombi);
    EXPECT_NE(eos(), taken);
    EXPECT_TRUE(calculation_is_open()) << "shown, not taken";
    key(Qt::Key_Escape);
    EXPECT_EQ(eos(), taken);
    turn_wheel(window->EOSKombi);  // the program ends with an equation that was not taken
}

TEST_F(ModelsWindow, keys_and_help) {
    window->EOSKombi->setFocus();
    QTest::keyClick(window->EOSKombi, Qt::Key_Return);  // presses the default button
    EXPECT_TRUE(enabled("mnuCalcMain"));
    for (const char* name : {"EOSHilfe", "PriorHilfe", "pHilfe", "HLVHilfe", "cpHilfe", "rhoLHilfe"}) {
        press(window, name);
        auto* help = frame.findChild<QWidget*>(QStringLiteral("help_window"));
        ASSERT_TRUE(help && help->isVisible()) << name;
        help->close();
    }
}

TEST_F(ModelsWindow, the_constants_of_the_equation_are_told) {
    press(window, "cmdOKModell");
    menu("mnuData_ParameterEOS")->trigger();
    auto* shown = frame.child<frmQTextEdit>();
    ASSERT_TRUE(shown);
    EXPECT_TRUE(shown->head->toPlainText().startsWith(QStringLiteral("CEOS Peng / Robinson\n")));
    // b = 0.0777961 R T(cr)/p(cr), m = 0.37464 + 1.54226 omega - 0.26992 omega^2, v(cr) = 0.3074 R
    // T(cr)/p(cr) of propane: 369.89 K, 4251.2 kPa, omega 0.1521
    const std::string text = shown->text->toPlainText().toStdString();
    EXPECT_THAT(text, HasSubstr("b     = .056280"));
    EXPECT_THAT(text, HasSubstr("m     = .602973"));
    EXPECT_THAT(text, HasSubstr("crit. volume calculated fromT(cr) and p(cr):\nv(cr) = .222382"));
    choose(window->EOSKombi, "Idealgas EOS");
    press(window, "cmdOKModell");
    menu("mnuData_ParameterEOS")->trigger();
    EXPECT_EQ(frame.child<frmQTextEdit>()->head->toPlainText().toStdString(), "Selected: Ideal gas equation");
}

}  // namespace
}  // namespace quom
