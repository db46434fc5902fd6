// Refusals under the boxes of windows that show results too.
#include <QLabel>

#include "report/outcome_messages.h"
#include "ui/main/calculation_windows.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"

namespace quom {
namespace {

using ::testing::IsEmpty;

class InputRefusal : public WindowDriver {
 protected:
    InputRefusal() {
        go_to_calculations();
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        start_calculation(frame, number_of(Mode::functions));
        QApplication::processEvents();
        type("300");
        type("500");
        messages.asked.clear();
    }
    static void type(const char* text) {
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }
    static std::string rule_under(const NumberBox* box) {
        const auto* line = box->window()->findChild<QLabel*>(box->objectName() + QStringLiteral("_refusal"));
        return line && line->isVisible() ? line->text().toStdString() : std::string();
    }
    const TpRhoPoint& point() { return document().exp.points[0]; }
};

TEST_F(InputRefusal, iso_calculator_refuses_in_place_and_its_state_reaches_the_input) {
    press(frame.child<frmQCalcOut>(), "cmdIsoCalc");
    auto* iso = frame.child<frmIsoCalc>();
    ASSERT_TRUE(iso);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), iso->txtFuConst);
    EXPECT_EQ(iso->txtFuConst->selectedText(), iso->txtFuConst->text());
    const TpRhoPoint before = point();
    struct Case {
        const char *given, *function;
        NumberBox* box;
        const char* rule;
    };
    for (const Case& c : {Case{"0", "5", iso->txtTpVorgabe, "T must be above 0."},
                          {"300", "", iso->txtFuConst, "V is missing."},
                          {"3.0.0", "-", iso->txtTpVorgabe, "3.0.0 is no number."},
                          {"300", "-", iso->txtFuConst, "- is no number."}}) {
        iso->txtTpVorgabe->setText(QLatin1String(c.given));
        iso->txtFuConst->setText(QLatin1String(c.function));
        iso->cmdCalc->click();
        QApplication::processEvents();
        EXPECT_EQ(rule_under(c.box), c.rule);
        EXPECT_EQ(QApplication::focusWidget(), c.box);
        EXPECT_EQ(point(), before);
        EXPECT_THAT(messages.take(), IsEmpty());
    }
    iso->txtFuConst->selectAll();
    type("6");
    EXPECT_EQ(rule_under(iso->txtFuConst), "");
    EXPECT_EQ(QApplication::focusWidget(), iso->txtFuConst);
    // The state found stands in the boxes of the input too.
    const auto* input = frame.child<frmParinput>();
    EXPECT_LT(point().p, 400);
    EXPECT_DOUBLE_EQ(input->par[1]->text().toDouble(), point().p);
    // ... and a state typed there is the one that the calculator starts from.
    input->par[0]->setText(QStringLiteral("350"));
    input->par[1]->setText(QStringLiteral("100"));
    input->cmdParameter_OK->click();
    EXPECT_EQ(iso->txtTpVorgabe->text().toStdString(), "350");
}

// Below everything that was measured: a temperature out of every range is one box, not three in a row.
TEST_F(InputRefusal, one_fault_is_one_box) {
    std::size_t most = 0;
    for (const Mode mode : {Mode::vaporization_T, Mode::functions, Mode::fn_cpL}) {
        SCOPED_TRACE(mode_info(mode).menu_text);
        start_calculation(frame, number_of(mode));
        QApplication::processEvents();
        messages.asked.clear();
        type("30");
        if (mode == Mode::functions) type("1");
        EXPECT_LE(messages.take().size(), 1u);
        const Outcome* outcome = current_outcome(session());
        ASSERT_TRUE(outcome);
        most = std::max(most, outcome_messages(frame.bench().fluid(), *outcome, true).size());
    }
    EXPECT_GE(most, 2u) << "more than one thing was said";
}

}  // namespace
}  // namespace quom
