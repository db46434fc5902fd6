#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QRadioButton>

#include "calc/calc_titles.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/vaporization_enthalpy.h"
#include "ui/desk.h"
#include "ui/frmCEOSDiagnose.h"
#include "ui/frmIsoCalc.h"
#include "ui/frmKessel.h"
#include "ui/frmPictureSuperCrit.h"
#include "ui/frmQCalcOut.h"
#include "ui/isotherm_picture.h"
#include "ui/number_box.h"
#include "ui/result_list.h"
#include "ui/tank_picture.h"
#include "ui/value_box.h"
#include "ui/view_label.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;
using ::testing::StartsWith;

class Output : public Desk {
 protected:
    Output() {
        go_to_calculations();
        select_eos(eos_peng_robinson);
        session().models.HLVKode = hlv_eos;
    }
    void select_eos(int code) {
        Session& s = session();
        s.models.EOSKode = code;
        s.models.VPhaseOnly = !is_cubic(code);
        s.models.Konzept = s.calc.GlobalCalc = is_cubic(code);
        ClearEOSPar(s);
        InitEOSPar(s, code);
    }
    void enter(int mode, double T, double p, double rho = 0.0) {
        session().calc.CalcMode = mode;
        const auto single = static_cast<float>(rho);
        session().exp.points[0] = {.T = T, .p = p, .rhoV = single, .rhoL = single};
    }
    frmQCalcOut* open() {
        frame.unload(frmQCalcOut::Name);
        auto* window = new frmQCalcOut(session());
        frame.open_child(window, window->sizeHint(), Sizing::free);
        return window;
    }
    frmQCalcOut* open(int mode, double T, double p, double rho = 0.0) {
        enter(mode, T, p, rho);
        return open();
    }
    static std::string text(const QLineEdit* box) { return box->text().toStdString(); }
    static std::string text(const QLabel* label) { return label->text().toStdString(); }
    static std::string list(const frmQCalcOut* window) { return window->Liste->toPlainText().toStdString(); }
    static std::string trimmed(const std::string& t) {
        return QString::fromStdString(t).trimmed().toStdString();
    }
};

TEST_F(Output, shows_what_the_core_has_found) {
    const struct {
        const char* what;
        int mode;
        double T, p, rho;
        const char *value, *list;
        bool L, V, diagnosis, picture;
    } cases[] = {
        {"vapor", 3, 300, 500, 0, "", "9.665957", false, true, true, false},
        {"liquid", 3, 300, 2000, 0, "", "513.9976", true, false, true, false},
        {"two phases", 1, 300, 0, 100, "Vapor pressure p(LV)/kPa = 997.426",
         "Vapor fraction eta(V) = 0.18148", true, true, true, false},
        {"supercritical", 3, 400, 6000, 0, "", "170.5828            170.5828", true, true, true, true},
        {"no p", 3, 300, 0, 0, "", "", false, false, false, false},
        {"above T(cr)", 4, 400, 0, 0, "", "", false, false, false, true},
        {"equilibrium", 4, 300, 0, 0, "p(LV) = 997.426", "Enthalpy of vaporization", true, true, true, false},
        {"database", 14, 300, 0, 0, "", "The function is valid within", false, false, false, false},
    };
    for (const auto& at : cases) {
        SCOPED_TRACE(at.what);
        frmQCalcOut* window = open(at.mode, at.T, at.p, at.rho);
        const CalcBatchResult core = CalcBatch(session(), {.Mode = at.mode});
        const OutputView& view = core.view;
        EXPECT_EQ(window->windowTitle().toStdString(), CalcCaption(session(), at.mode));
        EXPECT_EQ(text(window->par1), trimmed(view.par1.text));
        EXPECT_EQ(text(window->par2), trimmed(view.par2.text));
        EXPECT_EQ(text(window->co1), view.co1.text);
        EXPECT_EQ(text(window->txtco2), trimmed(view.txtco2.text));
        EXPECT_THAT(text(window->txtco2), HasSubstr(at.value));
        EXPECT_EQ(
            list(window) + (view.Liste.text.ends_with('\n') && !list(window).ends_with('\n') ? "\n" : ""),
            view.Liste.text);
        EXPECT_THAT(list(window), HasSubstr(at.list));
        EXPECT_EQ(!window->lblLphase->text().isEmpty(), at.L);
        EXPECT_EQ(!window->lblVphase->text().isEmpty(), at.V);
        EXPECT_EQ(window->cmdCEOSDiagnose->isEnabled(), at.diagnosis);
        EXPECT_EQ(window->cmdCEOSDiagnose->palette().color(QPalette::Button) == QColor(0xC0FFC0),
                  at.diagnosis);
        EXPECT_EQ(window->cmdInfoSuperCrit->isVisible(), at.picture);
        EXPECT_EQ(window->fraBatchVorgabe->title().toStdString(), "Specificated value(s) from direct input");
        EXPECT_EQ(window->cmdCalc_OK->text().remove(QLatin1Char('&')).toStdString(), "Close");
    }
    frmQCalcOut* window = open(3, 400, 6000);
    EXPECT_TRUE(window->co1->font().bold());
    EXPECT_EQ(window->co1->palette().color(QPalette::WindowText), QColor(170, 10, 10));
    EXPECT_EQ(text(window->Bezeichnung2), "identic");
    EXPECT_EQ(text(window->lblGleich), " no 2-phase state! ");
    enter(3, 300, 0);
    EXPECT_TRUE(window->refresh());
    EXPECT_EQ(text(window->par1), "no p in this data set");
    EXPECT_EQ(window->par1->palette().color(QPalette::Text), QColor(128, 0, 0));
    EXPECT_FALSE(window->Bezeichnung2->isVisible());
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(Output, steps_through_the_data_points) {
    Session& s = session();
    s.options.BatchMode = true;
    s.calc.CalcMode = 3;
    s.exp.points.resize(5);
    for (int i = 1; i <= 4; ++i) s.exp.points[static_cast<std::size_t>(i)] = {.T = 300.0 + i, .p = 500.0};
    s.exp.points[1].Aus = s.exp.points[3].Aus = -1;
    frmQCalcOut* window = open();
    const auto title = [&] { return window->fraBatchVorgabe->title().toStdString(); };
    EXPECT_EQ(title(), "Specificated value(s) from data point #2");
    EXPECT_EQ(text(window->par1), "T = 302.000 K");
    EXPECT_EQ(window->cmdCalc_OK->text().toStdString(), "Exit (+ data output)");
    press(window, "cmdVor");
    EXPECT_EQ(title(), "Specificated values from data point 4");
    EXPECT_EQ(text(window->par1), "T = 304.000 K");
    press(window, "cmdVor");
    EXPECT_EQ(title(), "Specificated values from data point 4");
    press(window, "cmdRueck");
    press(window, "cmdRueck");
    EXPECT_EQ(title(), "Specificated values from data point 2");
    ASSERT_EQ(s.calc.BatchResults.size(), 5u);
    EXPECT_EQ(s.calc.BatchResults[4].phase(), " V ");
    EXPECT_FALSE(s.calc.BatchResults[3].has_result());
    for (TpRhoPoint& point : s.exp.points) point.Aus = -1;
    EXPECT_FALSE(frmQCalcOut(s).loaded());
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "all data points are marked as deleted")));
}

TEST_F(Output, boxes_of_the_extended_output) {
    frmQCalcOut* window = open(3, 300, 500);
    const std::string joule = "diff. Joule-Thomson coefficients",
                      derivatives = "derivatives with respect to T, p, v", functions = "thermodynamic Fu(T)";
    EXPECT_FALSE(window->chkFuncPrint->isEnabled());
    QTest::keyClick(window->ResPlus[0], Qt::Key_Space);
    EXPECT_EQ(session().calc.ExtLevel, 2);
    EXPECT_THAT(list(window), HasSubstr(joule));
    EXPECT_THAT(list(window), Not(HasSubstr(derivatives)));
    EXPECT_TRUE(window->chkFuncPrint->isEnabled());
    QTest::keyClick(window->ResPlus[1], Qt::Key_Space);
    EXPECT_EQ(session().calc.ExtLevel, 4);
    EXPECT_THAT(list(window), HasSubstr(derivatives));
    QTest::keyClick(window->ResPlus[0], Qt::Key_Space);
    EXPECT_EQ(session().calc.ExtLevel, 3);
    EXPECT_THAT(list(window), Not(HasSubstr(joule)));
    QTest::keyClick(window->chkUHS, Qt::Key_Space);
    EXPECT_THAT(list(window), HasSubstr(functions));
    window->Liste->selectAll();
    window->Liste->copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), list(window));
    // The functions stay chosen for the next window, the boxes do not.
    window = open(6, 300, 0);
    EXPECT_TRUE(window->chkUHS->isChecked());
    EXPECT_EQ(session().calc.ExtLevel, 1);
    QTest::keyClick(window->ResPlus[0], Qt::Key_Space);
    EXPECT_FALSE(window->chkFuncPrint->isEnabled());
}

TEST_F(Output, iso_calculator_finds_states_and_goes_back_to_the_last) {
    frmQCalcOut* window = open(4, 300, 0);
    press(window, "cmdIsoCalc");
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "not yet a T|p value available!")));
    EXPECT_FALSE(frame.child<frmIsoCalc>());

    window = open(3, 300, 500);
    press(window, "cmdIsoCalc");
    auto* iso = frame.child<frmIsoCalc>();
    ASSERT_TRUE(iso);
    EXPECT_EQ(text(iso->lblTpVorgabe), "  T/K = ");
    EXPECT_EQ(text(iso->txtTpVorgabe), "300");
    EXPECT_THAT(text(iso->txtFuConst), StartsWith("4.56194"));
    press(iso, "cmdReset");
    EXPECT_EQ(text(iso->txtTpCalc), "No solution");

    // h of the vapor at 250 kPa and back: T, p of the direct input follow, and so does the result window.
    iso->OptIsoFu[1]->click();
    EXPECT_EQ(text(iso->lblFuConst), "H  = ");
    EXPECT_THAT(text(iso->txtFuConst), StartsWith("-451.63333"));
    iso->txtFuConst->setText(QStringLiteral("-200"));
    QTest::keyClick(iso->txtFuConst, Qt::Key_Return);
    EXPECT_EQ(text(iso->lblTpCalc), "p/kPa =");
    const double p = text(iso->txtTpCalc).empty() ? 0.0 : std::stod(text(iso->txtTpCalc));
    EXPECT_DOUBLE_EQ(session().exp.points[0].p, iso->txtTpCalc->text().toDouble());
    EXPECT_LT(p, 500.0);
    EXPECT_THAT(iso->Liste->toPlainText().toStdString(), HasSubstr("=                     -200"));
    EXPECT_EQ(text(window->par2), trimmed(CalcBatch(session(), {.Mode = 3}).view.par2.text));

    iso->optIsoTp[1]->click();
    EXPECT_EQ(text(iso->lblTpVorgabe), "p/kPa = ");
    EXPECT_EQ(text(iso->lblTpCalc), "T/K =");
    iso->txtFuConst->setText(QStringLiteral("-1E9"));
    press(iso, "cmdCalc");
    EXPECT_EQ(text(iso->txtTpCalc), "No solution found");
    EXPECT_TRUE(iso->Liste->toPlainText().isEmpty());
    press(iso, "cmdReset");
    EXPECT_TRUE(iso->optIsoTp[0]->isChecked());
    EXPECT_EQ(text(iso->txtTpVorgabe), "300");
    EXPECT_DOUBLE_EQ(iso->txtTpCalc->text().toDouble(), p);
    QTest::keyClick(iso->txtTpCalc, Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmIsoCalc>());
}

TEST_F(Output, diagnosis_names_the_roots) {
    frmQCalcOut* window = open(3, 300, 500);
    press(window, "cmdCEOSDiagnose");
    auto* diagnosis = frame.child<frmCEOSDiagnose>();
    ASSERT_TRUE(diagnosis);
    EXPECT_EQ(diagnosis->windowTitle().toStdString(), " Cubic Equation of State");
    EXPECT_EQ(text(diagnosis->lblEOS), "CEOS Peng / Robinson");
    EXPECT_EQ(text(diagnosis->lblState), "T/K = 300   p/kPa = 500");
    const auto expect_root = [&](int i, const char* label, const char* value, const char* remark) {
        EXPECT_EQ(text(diagnosis->lblRoot[i]), label);
        EXPECT_THAT(text(diagnosis->txtRoot[i]), StartsWith(value));
        EXPECT_TRUE(text(diagnosis->txtRoot[i]).ends_with(remark)) << text(diagnosis->txtRoot[i]);
    };
    expect_root(0, "v(1) =", "8.7176", " m^3/kmol   (metastable)");
    expect_root(1, "v(2) =", "0.28330", "(unstable)");
    expect_root(2, "v(3) =", "4.56194", "(stable, V-phase)");
    EXPECT_EQ(diagnosis->picIsotherm->picture().isotherm.size(), 5u);
    EXPECT_THAT(diagnosis->picIsotherm->accessibleDescription().toStdString(),
                HasSubstr("p(LV) = 997.43 kPa"));
    QTest::keyClick(diagnosis->picIsotherm, Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(QApplication::clipboard()->image().isNull());

    // The window follows the next calculation.
    enter(3, 300, 2000);
    window->refresh();
    EXPECT_EQ(text(diagnosis->lblState), "T/K = 300   p/kPa = 2000");
    expect_root(0, "v(1) =", "8.5789", "(stable, L-phase)");
    EXPECT_FALSE(diagnosis->txtRoot[1]->isVisible());
    QTest::keyClick(diagnosis->txtRoot[0], Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmCEOSDiagnose>());

    select_eos(eos_virial_first);
    EXPECT_FALSE(open(3, 300, 500)->cmdCEOSDiagnose->isEnabled());
}

TEST_F(Output, picture_of_the_supercritical_regions) {
    frmQCalcOut* window = open(3, 400, 6000);
    press(window, "cmdInfoSuperCrit");
    auto* picture = frame.child<frmPictureSuperCrit>();
    ASSERT_TRUE(picture);
    EXPECT_EQ(text(picture->lblRegion), "supercritical phase (L) = (V) (T > T(cr), p > p(cr))");
    EXPECT_EQ(text(picture->txtState), "T/K = 400   p/kPa = 6000");
    EXPECT_EQ(text(picture->txtCritical), "T(cr)/K = 369.89   p(cr)/kPa = 4251.2");
    enter(3, 300, 6000);
    window->refresh();
    EXPECT_EQ(text(picture->lblRegion), "supercritical L-phase (T < T(cr), p > p(cr))");
    // Refused above T(cr): T alone is known.
    window = open(4, 400, 0);
    press(window, "cmdInfoSuperCrit");
    EXPECT_EQ(text(frame.child<frmPictureSuperCrit>()->txtState), "T/K = 400");
}

TEST_F(Output, tank_is_drawn_as_it_is_filled) {
    const struct {
        const char* what;
        int mode;
        double m, T;
        TankFilling filling;
        const char *level, *p;
    } cases[] = {
        {"both", 9, 100.0, 300.0, TankFilling::both, "Filling level 16.09vol.-%", "997.426 kPa"},
        {"vapor", 9, 1.5, 300.0, TankFilling::vapor, "Filling level 0.0vol.-%", "83.696 kPa"},
        {"liquid", 9, 600.0, 300.0, TankFilling::liquid, "Filling level 100.0vol.-%", "36129.16 kPa"},
        {"full, PARTIAL", 10, 600.0, 300.0, TankFilling::liquid, "Filling level 100.0vol.-%", ""},
        {"supercritical", 9, 100.0, 400.0, TankFilling::supercritical, "", "4623.762 kPa"},
        {"below the covolume", 9, 1000.0, 300.0, TankFilling::fault, "", ""},
        {"nothing entered", 9, 0.0, 300.0, TankFilling::nothing, "", ""},
    };
    auto* tank = new frmKessel(session());
    frame.open_child(tank, tank->sizeHint(), Sizing::free);
    for (const auto& at : cases) {
        SCOPED_TRACE(at.what);
        session().calc.CalcMode = at.mode;
        session().calc.GlobalCalc = at.mode == 9;
        session().calc.tank = {.m = static_cast<float>(at.m), .V = 1.0F, .T = static_cast<float>(at.T)};
        tank->refresh();
        EXPECT_EQ(tank->windowTitle().toStdString(),
                  at.mode == 9 ? "Tank Calculation (GLOBAL method) " : "Tank Calculation (PARTIAL method) ");
        EXPECT_EQ(tank->picTank->tank().filling, at.filling);
        EXPECT_EQ(text(tank->txtLevel), at.level);
        EXPECT_EQ(text(tank->txtp), at.p);
        EXPECT_EQ(tank->lblError->isVisible(),
                  at.filling == TankFilling::fault || at.filling == TankFilling::nothing);
        if (at.filling == TankFilling::fault) {
            EXPECT_EQ(text(tank->lblError), "Error: v < B\nError (cf. help \"Tank\")");
        }
    }
    // PARTIAL above T(cr): the result window tells it, once, and is not to open.
    session().calc.CalcMode = 10;
    session().calc.tank = {.m = 1.0F, .V = 1.0F, .T = 400.0F};
    EXPECT_FALSE(frmQCalcOut(session()).loaded());
    tank->refresh();
    EXPECT_EQ(messages.take().size(), 1u);
}

TEST_F(Output, windows_close_in_any_order) {
    const auto open_all = [this] {
        frmQCalcOut* window = open(3, 400, 6000);
        press(window, "cmdIsoCalc");
        press(window, "cmdCEOSDiagnose");
        press(window, "cmdInfoSuperCrit");
        return window;
    };
    const char* const belonging[] = {frmIsoCalc::Name, frmCEOSDiagnose::Name, frmPictureSuperCrit::Name};
    frmQCalcOut* window = open_all();
    press(window, "cmdCalc_OK");
    for (const char* name : belonging) EXPECT_FALSE(frame.child(name)) << name;
    EXPECT_FALSE(frame.child<frmQCalcOut>());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    window = open_all();
    for (const char* name : belonging) {
        frame.unload(name);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(window->refresh());
    }
    press(window, "cmdIsoCalc");
    press(window, "cmdIsoCalc");  // anew, once
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(frame.findChildren<frmIsoCalc*>().size(), 1);

    // Closed by its title bar with a window that belongs to it still open; its place is kept.
    auto* sub = qobject_cast<QMdiSubWindow*>(window->parentWidget());
    sub->move(37, 41);
    sub->close();
    EXPECT_FALSE(frame.child<frmIsoCalc>());
    window = open(3, 300, 500);
    EXPECT_EQ(window->parentWidget()->pos(), QPoint(37, 41));
}

TEST_F(Output, every_control_has_its_names) {
    frmQCalcOut* window = open(3, 400, 6000);
    press(window, "cmdIsoCalc");
    press(window, "cmdCEOSDiagnose");
    press(window, "cmdInfoSuperCrit");
    auto* tank = new frmKessel(session());
    frame.open_child(tank, tank->sizeHint(), Sizing::free);
    for (const char* name : {frmQCalcOut::Name, frmIsoCalc::Name, frmCEOSDiagnose::Name,
                             frmPictureSuperCrit::Name, frmKessel::Name}) {
        QWidget* shown = frame.child(name);
        ASSERT_TRUE(shown) << name;
        EXPECT_GE(shown->width(), shown->minimumSizeHint().width()) << name;
        EXPECT_GE(shown->height(), shown->minimumSizeHint().height()) << name;
        for (const QWidget* control : shown->findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus ||
                control->objectName().startsWith(QStringLiteral("qt_")))
                continue;
            EXPECT_FALSE(control->objectName().isEmpty())
                << name << ' ' << control->metaObject()->className();
            EXPECT_FALSE(control->accessibleName().isEmpty())
                << name << ' ' << control->objectName().toStdString();
        }
    }
    for (QWidget* control :
         {static_cast<QWidget*>(window->cmdProtokoll), static_cast<QWidget*>(window->cmdOpenNew),
          static_cast<QWidget*>(window->optResultPrint[1]), static_cast<QWidget*>(window->optResultPrint[2]),
          static_cast<QWidget*>(window->cmdShowManuInput)}) {
        EXPECT_FALSE(control->isEnabled());
        EXPECT_EQ(control->toolTip().toStdString(), "not yet available");
    }
}

}  // namespace
}  // namespace quom
