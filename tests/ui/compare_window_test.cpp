// The window that compares equations, driven by its controls.
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTabWidget>

#include "engine/saturation.h"
#include "forms/diagram_form.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/table_view.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCompare.h"
#include "ui/windows/frmQGraph2D.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class CompareWindow : public WindowDriver {
 protected:
    frmCompare* window() const { return frame.child<frmCompare>(); }
    GraphDocument& sheet() { return *session().diagram.sheet; }
    void open_compare(Kind kind) {
        go_to_calculations();
        choose_diagram(session(), kind, messages);
        frmQGraph2D::open(frame);
        QAction* entry = menu("mnuCompare");
        ASSERT_TRUE(entry && entry->isEnabled());
        entry->trigger();
        ASSERT_TRUE(window());
        QApplication::processEvents();
    }
    // Checks or takes the check off an equation with the space bar.
    void toggle(const char* name) {
        const auto found = window()->lstEquations->findItems(QLatin1String(name), Qt::MatchExactly);
        ASSERT_EQ(found.size(), 1) << name;
        window()->lstEquations->setCurrentItem(found[0]);
        window()->lstEquations->setFocus();
        QTest::keyClick(window()->lstEquations, Qt::Key_Space);
    }
    static QString cell(const TableView* table, int row, int column) {
        return table->model()->index(row, column).data().toString();
    }
};

TEST_F(CompareWindow, draws_and_tells_the_deviations) {
    open_compare(Kind::sat_p_T);
    EXPECT_FALSE(window()->cmdDraw->isEnabled());  // Peng/Robinson alone
    EXPECT_FALSE(window()->txtParameter->isVisible());
    toggle("Soave / Redlich / Kwong");
    toggle("Wagner (MDB equ.)");
    ASSERT_EQ(window()->tblCurve->model()->rowCount(), 3);
    EXPECT_EQ(cell(window()->tblCurve, 1, 1), QStringLiteral("Peng / Robinson"));
    // The first one chosen stays the reference until another one is.
    EXPECT_EQ(window()->cmbReference->currentText(), QStringLiteral("Peng / Robinson"));
    choose(window()->cmbReference, "Wagner (MDB equ.)");
    EXPECT_EQ(cell(window()->tblCurve, 2, 4), QStringLiteral("0"));
    choose(window()->cmbReference, "Peng / Robinson");
    // The row of the table against both equations computed here.
    const TableView* values = window()->tblValues;
    ASSERT_GE(values->model()->rowCount(), 10);
    const double T = cell(values, 8, 0).toDouble();
    const double PR = pLV_EOS(*with_eos(*session().fluid, Eos::peng_robinson), T).p;
    const double SRK = pLV_EOS(*with_eos(*session().fluid, Eos::soave), T).p;
    EXPECT_NEAR(cell(values, 8, 2).toDouble(), SRK, 2e-5 * SRK);  // T has six digits
    EXPECT_NEAR(cell(values, 8, 3).toDouble(), PR, 2e-5 * PR);
    EXPECT_NEAR(cell(values, 8, 6).toDouble(), 100.0 * (SRK / PR - 1.0), 2e-3);
    EXPECT_FALSE(window()->tabs->isTabEnabled(3));  // no measured points

    press(window(), "cmdDraw");
    EXPECT_EQ(CurveCount(sheet()), 3);
    EXPECT_THAT(sheet().curve(1).series.label.text, HasSubstr("Soave / Redlich / Kwong"));
    press(window(), "cmdCopy");
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("Peng / Robinson"));
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(CompareWindow, follows_parameter_models_and_sheet) {
    open_compare(Kind::rho_p);
    toggle("Idealgas EOS");
    NumberBox* box = window()->txtParameter;
    ASSERT_TRUE(box->isVisible());
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("450"));
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(session().diagram.state.T, 450.0);
    const TableView* values = window()->tblValues;
    ASSERT_GE(values->model()->rowCount(), 10);
    const double p = cell(values, 5, 0).toDouble(), ideal = p * session().fluid->M / (RGas * 450.0);
    EXPECT_NEAR(cell(values, 5, 2).toDouble(), ideal, 1e-4 * ideal);
    // Equations that are checked stay so on another diagram that offers them.
    choose_diagram(session(), Kind::h_p, messages);
    frmQGraph2D::open(frame);
    EXPECT_THAT(window()->lblDiagram->text().toStdString(), HasSubstr("Enthalpy"));
    EXPECT_EQ(window()->tblCurve->model()->rowCount(), 2);
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, QStringLiteral("0"));
    press(window(), "cmdDraw");
    EXPECT_EQ(CurveCount(sheet()), 0);
    EXPECT_FALSE(messages.take().empty());
    // Another substance takes the sheet and the window.
    choose_substance("Water");
    QApplication::processEvents();
    EXPECT_FALSE(window());
}

TEST_F(CompareWindow, the_25th_curve_is_refused) {
    open_compare(Kind::rho_p);
    while (CurveCount(sheet()) < 23) ASSERT_GT(draw_curve(session(), messages), 0);
    toggle("Idealgas EOS");
    messages.take();
    press(window(), "cmdDraw");
    EXPECT_EQ(CurveCount(sheet()), 23);
    EXPECT_EQ(messages.take()[0].second, "Maximum 24 curves possible\n\nDelete existing curves");
    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(window());
}

}  // namespace
}  // namespace quom
