#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QLabel>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>

#include "report/titles.h"
#include "ui/charts/isotherm_picture.h"
#include "ui/charts/tank_picture.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/value_box.h"
#include "ui/widgets/view_label.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmKessel.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/frmQCalcOut.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;
using ::testing::StartsWith;

class Output : public WindowDriver {
 protected:
    Output() {
        go_to_calculations();
        select_eos(Eos::peng_robinson);
        change([](Document& d) { d.models.HLVKode = Hlv::eos; });
    }
    void select_eos(Eos code) {
        change([code](Document& d) {
            d.models.EOSKode = code;
            d.models.Konzept = eos_info(code).is_cubic();
            d.calc.setup.GlobalCalc = d.models.Konzept;
        });
    }
    void enter(Mode mode, double T, double p, double rho = 0.0) {
        change([&](Document& d) {
            d.calc.CalcMode = mode;
            const auto single = static_cast<float>(rho);
            d.exp.points.edit()[0] = {.T = T, .p = p, .rhoV = single, .rhoL = single};
        });
    }
    void enter_tank(Mode mode, double m, double T) {
        change([&](Document& d) {
            d.calc.CalcMode = mode;
            d.calc.setup.GlobalCalc = mode == Mode::tank_global;
            d.calc.tank = {.m = static_cast<float>(m), .V = 1.0F, .T = static_cast<float>(T)};
        });
    }
    // The view of data point 0, made without a window.
    OutputView core_view() {
        const Outcome outcome = CalcBatch(*session().fluid, state_input(document(), 0));
        return make_result_list(*session().fluid, outcome,
                                {.units = document().units, .setup = document().calc.setup});
    }
    frmQCalcOut* open() {
        frame.unload(frmQCalcOut::Name);
        auto* window = new frmQCalcOut(frame.bench());
        frame.open_child(window);
        return window;
    }
    frmQCalcOut* open(Mode mode, double T, double p, double rho = 0.0) {
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
        Mode mode;
        double T, p, rho;
        const char *value, *list;
        bool L, V, diagnosis, picture;
    } cases[] = {
        {"vapor", Mode::T_p, 300, 500, 0, "", "9.665957", false, true, true, false},
        {"liquid", Mode::T_p, 300, 2000, 0, "", "513.9976", true, false, true, false},
        {"two phases", Mode::T_rho, 300, 0, 100, "Vapor pressure p(LV)/kPa = 997.430",
         "Vapor fraction eta(V) = 0.18148", true, true, true, false},
        {"supercritical", Mode::T_p, 400, 6000, 0, "", "170.5828            170.5828", true, true, true,
         true},
        {"no p", Mode::T_p, 300, 0, 0, "", "", false, false, false, false},
        {"above T(cr)", Mode::equilibrium_T, 400, 0, 0, "", "", false, false, false, true},
        {"equilibrium", Mode::equilibrium_T, 300, 0, 0, "p(LV) = 997.430", "Enthalpy of vaporization", true,
         true, true, false},
        {"database", Mode::fn_rhoL, 300, 0, 0, "", "The function is valid within", false, false, false,
         false},
    };
    for (const auto& at : cases) {
        SCOPED_TRACE(at.what);
        frmQCalcOut* window = open(at.mode, at.T, at.p, at.rho);
        const OutputView view = core_view();
        EXPECT_EQ(window->windowTitle().toStdString(), CalcCaption(at.mode, document().calc.setup));
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
    frmQCalcOut* window = open(Mode::T_p, 400, 6000);
    EXPECT_TRUE(window->co1->font().bold());
    EXPECT_EQ(window->co1->palette().color(QPalette::WindowText), QColor(170, 10, 10));
    EXPECT_EQ(text(window->Bezeichnung2), "identic");
    EXPECT_EQ(text(window->lblGleich), " no 2-phase state! ");
    enter(Mode::T_p, 300, 0);
    EXPECT_TRUE(window->refresh());
    EXPECT_EQ(text(window->par1), "no p in this data set");
    EXPECT_EQ(window->par1->palette().color(QPalette::Text), QColor(128, 0, 0));
    EXPECT_FALSE(window->Bezeichnung2->isVisible());
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(Output, steps_through_the_data_points) {
    change([](Document& d) {
        d.options.BatchMode = true;
        d.calc.CalcMode = Mode::T_p;
        d.exp.points.edit().resize(5);
        for (std::size_t i = 1; i <= 4; ++i)
            d.exp.points.edit()[i] = {.T = 300.0 + static_cast<double>(i), .p = 500.0};
        d.exp.points.edit()[1].Aus = -1;
        d.exp.points.edit()[3].Aus = -1;
    });
    frmQCalcOut* window = open();
    const auto title = [&] { return window->fraBatchVorgabe->title().toStdString(); };
    EXPECT_EQ(title(), "Specificated value(s) from data point #2");
    EXPECT_EQ(text(window->par1), "T = 302.000 K");
    EXPECT_EQ(window->cmdCalc_OK->text().remove(QLatin1Char('&')).toStdString(), "Exit (+ data output)");
    press(window, "cmdVor");
    EXPECT_EQ(title(), "Specificated values from data point 4");
    EXPECT_EQ(text(window->par1), "T = 304.000 K");
    press(window, "cmdVor");
    EXPECT_EQ(title(), "Specificated values from data point 4");
    press(window, "cmdRueck");
    press(window, "cmdRueck");
    EXPECT_EQ(title(), "Specificated values from data point 2");
    const std::vector<BatchResult>& batch = session().batch;
    ASSERT_EQ(batch.size(), 5u);
    EXPECT_EQ(batch[4].phase(), " V ");
    EXPECT_EQ(batch[3].state, PointState::open) << "a point that is marked as deleted is not calculated";
    change([](Document& d) {
        for (TpRhoPoint& point : d.exp.points.edit()) point.Aus = -1;
    });
    EXPECT_FALSE(frmQCalcOut(frame.bench()).loaded());
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "all data points are marked as deleted")));
}

TEST_F(Output, boxes_of_the_extended_output) {
    frmQCalcOut* window = open(Mode::T_p, 300, 500);
    const std::string joule = "diff. Joule-Thomson coefficients",
                      derivatives = "derivatives with respect to T, p, v", functions = "thermodynamic Fu(T)";
    EXPECT_FALSE(window->chkFuncPrint->isEnabled());
    QTest::keyClick(window->ResPlus[0], Qt::Key_Space);
    EXPECT_EQ(document().calc.ExtLevel, 2);
    EXPECT_THAT(list(window), HasSubstr(joule));
    EXPECT_THAT(list(window), Not(HasSubstr(derivatives)));
    EXPECT_TRUE(window->chkFuncPrint->isEnabled());
    QTest::keyClick(window->ResPlus[1], Qt::Key_Space);
    EXPECT_EQ(document().calc.ExtLevel, 4);
    EXPECT_THAT(list(window), HasSubstr(derivatives));
    QTest::keyClick(window->ResPlus[0], Qt::Key_Space);
    EXPECT_EQ(document().calc.ExtLevel, 3);
    EXPECT_THAT(list(window), Not(HasSubstr(joule)));
    QTest::keyClick(window->chkUHS, Qt::Key_Space);
    EXPECT_THAT(list(window), HasSubstr(functions));
    window->Liste->selectAll();
    window->Liste->copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), list(window));
    // What is chosen stays chosen for the next window, and so does the tab.
    window->tabs->setCurrentIndex(2);
    window = open(Mode::vaporization_T, 300, 0);
    EXPECT_TRUE(window->chkUHS->isChecked());
    EXPECT_FALSE(window->ResPlus[0]->isChecked());
    EXPECT_TRUE(window->ResPlus[1]->isChecked());
    EXPECT_EQ(document().calc.ExtLevel, 3);
    EXPECT_EQ(window->tabs->currentIndex(), 2);
    EXPECT_FALSE(window->chkFuncPrint->isEnabled());
}

// The next result of a mode is read where the one before was read.
TEST_F(Output, scroll_place_stays_while_the_mode_does) {
    frmQCalcOut* window = open(Mode::T_p, 300, 500);
    for (QCheckBox* box : {window->chkUHS, window->ResPlus[0], window->ResPlus[1]}) box->click();
    QScrollBar* down = window->Liste->verticalScrollBar();
    ASSERT_GT(down->maximum(), 6);
    down->setValue(6);
    enter(Mode::T_p, 310, 500);
    EXPECT_EQ(text(window->par1), "T = 310.000 K");
    EXPECT_EQ(down->value(), 6);
    enter(Mode::equilibrium_T, 300, 0);
    EXPECT_EQ(down->value(), 0);
}

TEST_F(Output, iso_calculator_finds_states_and_goes_back_to_the_last) {
    frmQCalcOut* window = open(Mode::equilibrium_T, 300, 0);
    press(window, "cmdIsoCalc");
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible", "not yet a T|p value available!")));
    EXPECT_FALSE(frame.child<frmIsoCalc>());

    window = open(Mode::T_p, 300, 500);
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
    EXPECT_DOUBLE_EQ(document().exp.points[0].p, iso->txtTpCalc->text().toDouble());
    EXPECT_LT(p, 500.0);
    EXPECT_THAT(iso->Liste->toPlainText().toStdString(), HasSubstr("=                     -200"));
    EXPECT_EQ(text(window->par2), trimmed(core_view().par2.text));

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

TEST_F(Output, other_units_and_another_reference_state_reach_the_open_windows) {
    frmQCalcOut* window = open(Mode::T_p, 300, 500);
    press(window, "cmdIsoCalc");
    auto* iso = frame.child<frmIsoCalc>();
    ASSERT_TRUE(iso);
    EXPECT_THAT(text(iso->txtFuConst), StartsWith("4.56194"));  // m^3/kmol
    const double h = *window->outcome().V->h;
    change([](Document& d) {
        d.units.VolumeMode = volume_per_mass;
        d.reference.hOffset = 1000.0;
    });
    EXPECT_THAT(text(iso->txtFuConst), StartsWith("0.103455"));  // 4.561946/44.0956 m^3/kg
    EXPECT_THAT(list(window), HasSubstr("m^3/kg"));
    EXPECT_EQ(window->view().Liste.text, core_view().Liste.text);
    EXPECT_NEAR(*window->outcome().V->h, h + 1000.0, 1e-8);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(Output, diagnosis_names_the_roots) {
    frmQCalcOut* window = open(Mode::T_p, 300, 500);
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
    enter(Mode::T_p, 300, 2000);
    window->refresh();
    EXPECT_EQ(text(diagnosis->lblState), "T/K = 300   p/kPa = 2000");
    expect_root(0, "v(1) =", "8.5789", "(stable, L-phase)");
    EXPECT_FALSE(diagnosis->txtRoot[1]->isVisible());
    QTest::keyClick(diagnosis->txtRoot[0], Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmCEOSDiagnose>());

    // It is of the state that the result shows, also when the Iso Calculator has gone on to another one.
    window = open(Mode::T_rho, 300, 500, 100);
    press(window, "cmdIsoCalc");
    frame.child<frmIsoCalc>()->txtFuConst->setText(QStringLiteral("6"));
    press(frame.child<frmIsoCalc>(), "cmdCalc");
    EXPECT_LT(document().exp.points[0].p, 450.0);
    press(window, "cmdCEOSDiagnose");
    EXPECT_THAT(text(frame.child<frmCEOSDiagnose>()->lblState), StartsWith("T/K = 300   p/kPa = 997.4"));

    select_eos(Eos::virial_van_der_waals);
    EXPECT_FALSE(open(Mode::T_p, 300, 500)->cmdCEOSDiagnose->isEnabled());
}

TEST_F(Output, picture_of_the_supercritical_regions) {
    frmQCalcOut* window = open(Mode::T_p, 400, 6000);
    press(window, "cmdInfoSuperCrit");
    auto* picture = frame.child<frmPictureSuperCrit>();
    ASSERT_TRUE(picture);
    EXPECT_EQ(text(picture->lblRegion), "supercritical phase (L) = (V) (T > T(cr), p > p(cr))");
    EXPECT_EQ(text(picture->txtState), "T/K = 400   p/kPa = 6000");
    EXPECT_EQ(text(picture->txtCritical), "T(cr)/K = 369.89   p(cr)/kPa = 4251.2");
    enter(Mode::T_p, 300, 6000);
    window->refresh();
    EXPECT_EQ(text(picture->lblRegion), "supercritical L-phase (T < T(cr), p > p(cr))");
    // Refused above T(cr): T alone is known.
    window = open(Mode::equilibrium_T, 400, 0);
    press(window, "cmdInfoSuperCrit");
    EXPECT_EQ(text(frame.child<frmPictureSuperCrit>()->txtState), "T/K = 400");
}

TEST_F(Output, tank_is_drawn_as_it_is_filled) {
    const struct {
        const char* what;
        Mode mode;
        double m, T;
        TankFilling filling;
        const char *level, *p;
    } cases[] = {
        {"both", Mode::tank_global, 100.0, 300.0, TankFilling::both, "Filling level 16.09vol.-%",
         "997.43 kPa"},
        {"vapor", Mode::tank_global, 1.5, 300.0, TankFilling::vapor, "Filling level 0.0vol.-%", "83.696 kPa"},
        {"liquid", Mode::tank_global, 600.0, 300.0, TankFilling::liquid, "Filling level 100.0vol.-%",
         "36129.16 kPa"},
        {"full, PARTIAL", Mode::tank_partial, 600.0, 300.0, TankFilling::liquid, "Filling level 100.0vol.-%",
         ""},
        {"supercritical", Mode::tank_global, 100.0, 400.0, TankFilling::supercritical, "", "4623.762 kPa"},
        {"below the covolume", Mode::tank_global, 1000.0, 300.0, TankFilling::fault, "", ""},
        {"nothing entered", Mode::tank_global, 0.0, 300.0, TankFilling::nothing, "", ""},
    };
    auto* tank = new frmKessel(frame.bench());
    frame.open_child(tank);
    for (const auto& at : cases) {
        SCOPED_TRACE(at.what);
        enter_tank(at.mode, at.m, at.T);
        calculate(session(), 0);
        tank->refresh();
        EXPECT_EQ(tank->windowTitle().toStdString(), at.mode == Mode::tank_global
                                                         ? "Tank Calculation (GLOBAL method) "
                                                         : "Tank Calculation (PARTIAL method) ");
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
    enter_tank(Mode::tank_partial, 1.0, 400.0);
    EXPECT_FALSE(frmQCalcOut(frame.bench()).loaded());
    tank->refresh();
    EXPECT_EQ(messages.take().size(), 1u);
}

TEST_F(Output, windows_close_in_any_order) {
    const auto open_all = [this] {
        frmQCalcOut* window = open(Mode::T_p, 400, 6000);
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

    // Closed by its title bar with a window that belongs to it still open.
    window->parentWidget()->close();
    EXPECT_FALSE(frame.child<frmIsoCalc>());
}

TEST_F(Output, every_control_has_its_names) {
    frmQCalcOut* window = open(Mode::T_p, 400, 6000);
    press(window, "cmdIsoCalc");
    press(window, "cmdCEOSDiagnose");
    press(window, "cmdInfoSuperCrit");
    auto* tank = new frmKessel(frame.bench());
    frame.open_child(tank);
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
    // A list is of data points; a record waits for its first row.
    for (const QWidget* control :
         {static_cast<QWidget*>(window->cmdOpenNew), static_cast<QWidget*>(window->optResultPrint[1]),
          static_cast<QWidget*>(window->optResultPrint[2])})
        EXPECT_FALSE(control->isEnabled());
    EXPECT_TRUE(window->cmdProtokoll->isEnabled());
}

}  // namespace
}  // namespace quom
