// A whole session by hand: database, substance, models, each entry of the calculation menu, typed values, and
// the texts that the result window shows.
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmQCalcOut.h"

namespace quom {
namespace {

class CalculationByHand : public WindowDriver {
 protected:
    static void type(const char* text) {
        QWidget* box = QApplication::focusWidget();
        ASSERT_TRUE(qobject_cast<NumberBox*>(box));
        QTest::keyClicks(box, QLatin1String(text));
        QTest::keyClick(box, Qt::Key_Return);
    }
};

TEST_F(CalculationByHand, LeadsToEveryCalculation) {
    const struct {
        const char* entry;
        std::vector<const char*> typed;
        const char* shown;  // propane with Peng/Robinson and the models proposed
    } rows[] = {
        {"mnuCalc_0", {"300", "100"}, "Vapor pressure p(LV)/kPa = 997.430"},
        {"mnuCalc_1", {"300", "520"}, "System pressure p/kPa = 3229.63"},
        {"mnuCalc_2", {"300", "500"}, "9.665957"},
        {"mnuCalc_3", {"500", "9.665957"}, "T = 300.000 K"},  // back to the state before
        {"mnuCalc_5", {"300"}, "p(LV) = 997.430 kPa"},
        {"mnuCalc_6", {"997.43"}, "T(LV) = 300.000 K"},
        {"mnuCalc_8", {"300"}, "delta(LV)h/(kJ/kmol) = 14663.0"},
        {"mnuCalc_9", {"998.923"}, "T(LV) = 300.000 K"},  // by the vapor pressure equation
        {"mnuCalc_11", {"300", "500"}, "-451.6333"},
        {"mnuCalc_15", {"1", "100", "300"}, "Vapor fraction eta(V) = 0.18148"},
        {"mnuCalc_16",
         {"1", "100", "300"},
         "Vapor fraction eta(V) = 0.18059"},  // (1/100 - 1/491.79)/(1/21.6698 - 1/491.79)
        {"mnuCalc_18", {"300"}, "VIRIAL-EOS Pitzer / Curl {B} = -0.396031"},
        {"mnuCalc_sub_database_1", {"300"}, "rho(L) = 488.0536 kg/m^3"},
        {"mnuCalc_sub_database_3", {"300"}, "delta(LV)h = 14662.88"},
        {"mnuCalc_sub_database_4", {"300"}, "cp_IdGas = 73.7219"},
        {"mnuCalc_sub_database_5", {"300"}, "cp(L) = "},
        {"mnuCalc_sub_sub_database_0", {"300"}, "998.923"},
        {"mnuCalc_sub_sub_database_1", {"300"}, "997.975"},
        {"mnuCalc_sub_sub_database_2", {"230"}, "p(LV), Antoine (Lo-p) = "},
    };
    go_to_calculations();
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    for (const auto& row : rows) {
        ASSERT_TRUE(enabled(row.entry)) << row.entry;
        messages.answers = {Answer::no};  // mode 3 asks whether the values are an equilibrium
        menu(row.entry)->trigger();
        if (auto* selection = frame.child<frmCalcIn>(); selection && selection->isVisible())
            press(selection, "OK");
        QApplication::processEvents();
        for (const char* text : row.typed) type(text);
        auto* window = frame.child<frmQCalcOut>();
        ASSERT_TRUE(window) << row.entry;
        const QString all = window->txtco2->text() + QLatin1Char('\n') + window->Liste->toPlainText();
        EXPECT_TRUE(all.contains(QLatin1String(row.shown))) << row.entry << ": " << all.toStdString();
        EXPECT_FALSE(all.contains(QStringLiteral("nan"), Qt::CaseInsensitive)) << row.entry;
        EXPECT_EQ(window->Liste->toPlainText().toStdString(), window->view().Liste.text) << row.entry;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        messages.asked.clear();
    }
}

}  // namespace
}  // namespace quom
