// Nothing on the screen is older than the document: each of its fields is changed in turn, and every open
// window has to show what the core makes of the document now, or to say that it does not.
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>

#include "base/number_text.h"
#include "calc/isotherm_points.h"
#include "forms/iso_form.h"
#include "forms/reference_form.h"
#include "report/basis_line.h"
#include "report/eos_report.h"
#include "report/tank_view.h"
#include "report/titles.h"
#include "ui/charts/tank_picture.h"
#include "ui/widgets/footer_line.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/stale_line.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCEOSDiagnose.h"
#include "ui/windows/frmIsoCalc.h"
#include "ui/windows/frmKessel.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmPictureSuperCrit.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQOptions.h"
#include "ui/windows/frmQTextEdit.h"
#include "ui/windows/frmReferenz.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

struct FieldChange {
    const char* what;
    void (*make)(Document&);
};

// Every field of the document, with a value that it can have.
constexpr FieldChange Fields[] = {
    {"DatabasePath", [](Document& d) { d.DatabasePath = "other.q07"; }},
    {"substance", [](Document& d) { d.substance.constants.Tcr = 380.0; }},
    {"name", [](Document& d) { d.substance.constants.StoffName = "Another"; }},
    {"EOSKode", [](Document& d) { d.models.EOSKode = Eos::soave; }},
    {"EOSKode, V-phase", [](Document& d) { d.models.EOSKode = Eos::virial_soave; }},
    {"EOSKode, none", [](Document& d) { d.models.EOSKode = Eos::none; }},
    {"EVPKode", [](Document& d) { d.models.EVPKode = Evp::august; }},
    {"HLVKode", [](Document& d) { d.models.HLVKode = Hlv::chen; }},
    {"cpKode", [](Document& d) { d.models.cpKode = CpForm::none; }},
    {"nWat", [](Document& d) { d.models.nWat = 0.5F; }},
    {"Konzept", [](Document& d) { d.models.Konzept = false; }},
    {"eos_input", [](Document& d) { d.eos_input.b0 = 0.1; }},
    {"RefKode", [](Document& d) { d.reference.RefKode = reference_formation; }},
    {"TRef0", [](Document& d) { d.reference.TRef0 = 273.15F; }},
    {"pRef0", [](Document& d) { d.reference.pRef0 = 100.0F; }},
    {"hOffset", [](Document& d) { d.reference.hOffset = 1000.0; }},
    {"sOffset", [](Document& d) { d.reference.sOffset = 1.0; }},
    {"TEnv", [](Document& d) { d.reference.TEnv = 280.0; }},
    {"pEnv", [](Document& d) { d.reference.pEnv = 90.0; }},
    {"EnergyMode", [](Document& d) { d.units.EnergyMode = energy_per_mass; }},
    {"VolumeMode", [](Document& d) { d.units.VolumeMode = volume_per_mass; }},
    {"Englisch", [](Document& d) { d.options.Englisch = !d.options.Englisch; }},
    {"BatchMode",
     [](Document& d) {
         d.exp.points.edit().resize(3);
         d.exp.points.edit()[1] = {.T = 310.0, .p = 400.0};
         d.options.BatchMode = true;
     }},
    {"Dens", [](Document& d) { d.options.Dens = 100; }},
    {"point 0, T", [](Document& d) { d.exp.points.edit()[0].T = 390.0; }},
    {"point 0, p", [](Document& d) { d.exp.points.edit()[0].p = 5000.0; }},
    {"point 0, rho", [](Document& d) { d.exp.points.edit()[0].rhoV = 50.0F; }},
    {"CalcMode", [](Document& d) { d.calc.CalcMode = Mode::T_rho; }},
    {"CalcMode, refused", [](Document& d) { d.calc.CalcMode = Mode::equilibrium_T; }},
    {"GlobalCalc", [](Document& d) { d.calc.setup.GlobalCalc = !d.calc.setup.GlobalCalc; }},
    {"BensonRhoL", [](Document& d) { d.calc.setup.BensonRhoL = !d.calc.setup.BensonRhoL; }},
    {"VLEAssumed",
     [](Document& d) {
         d.calc.setup.VLEAssumed = true;
         d.calc.setup.RhoLWanted = true;
     }},
    {"benson", [](Document& d) { d.calc.setup.benson.TRefL = 300.0F; }},
    {"tank m", [](Document& d) { d.calc.tank.m = 50.0F; }},
    {"tank V", [](Document& d) { d.calc.tank.V = 2.0F; }},
    {"tank T", [](Document& d) { d.calc.tank.T = 320.0F; }},
    {"CurrentPoint",
     [](Document& d) {
         d.exp.points.edit().resize(2);
         d.calc.CurrentPoint = 1;
     }},
    {"ExtLevel", [](Document& d) { d.calc.ExtLevel = 4; }},
    {"ShowFunctions", [](Document& d) { d.calc.ShowFunctions = !d.calc.ShowFunctions; }},
    {"ProcessT", [](Document& d) { d.calc.ProcessT = 300.0; }},
    {"ProjectComment", [](Document& d) { d.ProjectComment = "changed"; }},
};

class Freshness : public WindowDriver {
 protected:
    Freshness() {
        go_to_calculations();
        change([](Document& d) {
            d.models.EOSKode = Eos::peng_robinson;
            d.models.HLVKode = Hlv::eos;
            d.models.Konzept = true;
        });
    }
    ReferenceBoxes open_reference() { return reference_boxes(document()); }
    frmQCalcOut* open_result(Mode mode) {
        change([mode](Document& d) {
            d.calc.CalcMode = mode;
            d.calc.tank = {.m = 100, .V = 1, .T = 300};
            d.exp.points.edit()[0] = {.T = 400.0, .p = 6000.0, .rhoV = 100.0F};
        });
        auto* window = new frmQCalcOut(frame.bench());
        frame.open_child(window);
        return window;
    }
    Outcome calculated() {
        return CalcBatch(*session().fluid, state_input(document(), document().calc.CurrentPoint));
    }
    static std::string text(const QLineEdit* box) { return box->text().toStdString(); }
    static std::string text(const QPlainTextEdit* list) { return list->toPlainText().toStdString(); }

    void expect_result_fresh() {
        auto* window = frame.child<frmQCalcOut>();
        if (!window || window->strip->is_stale()) return;
        const CalculationInput& calc = document().calc;
        const OutputView view = make_result_list(*session().fluid, calculated(),
                                                 {.units = document().units,
                                                  .setup = calc.setup,
                                                  .ExtLevel = calc.ExtLevel,
                                                  .ShowFunctions = calc.ShowFunctions});
        EXPECT_EQ(window->view().Liste.text, view.Liste.text);
        EXPECT_EQ(QString::fromStdString(view.par1.text).trimmed(), window->par1->text());
        EXPECT_EQ(window->windowTitle().toStdString(), CalcCaption(calc.CalcMode, calc.setup));
        EXPECT_EQ(window->footer->text().toStdString(), basis_line(*session().fluid));
        EXPECT_EQ(window->ResPlus[0]->isChecked(), calc.ExtLevel == 2 || calc.ExtLevel == 4);
        EXPECT_EQ(window->chkUHS->isChecked(), calc.ShowFunctions);
        const StateWords words = state_words(*session().fluid, calculated());
        EXPECT_THAT(window->strip->accessibleName().toStdString(), HasSubstr(words.word));
        EXPECT_THAT(window->strip->accessibleName().toStdString(), HasSubstr(words.distance));
    }
    void expect_windows_beside_fresh() {
        const Outcome outcome = calculated();
        const UnitFactors factors = session().factors(outcome.T.value_or(0.0));
        const std::string_view v_unit = VolumeName(document().units);
        if (auto* window = frame.child<frmCEOSDiagnose>(); window && window->stale->reason().isEmpty()) {
            const EosDiagnosis diagnosis = diagnose_eos(*session().fluid, outcome, factors, v_unit);
            if (diagnosis.available) {
                EXPECT_EQ(window->lblEOS->text().toStdString(), diagnosis.heading);
            } else {
                EXPECT_EQ(window->lblEOS->text(), QStringLiteral("no state of a cubic EOS"));
            }
            for (std::size_t i = 0; i < diagnosis.lines.size(); ++i)
                EXPECT_THAT(text(window->txtRoot[i]), HasSubstr(diagnosis.lines[i].value));
        }
        if (auto* window = frame.child<frmPictureSuperCrit>(); window && window->stale->reason().isEmpty()) {
            const double T = outcome.T.value_or(0.0);
            EXPECT_THAT(text(window->txtState), HasSubstr(T > 0 ? genNum(static_cast<float>(T)) : ""));
            const IsothermPicture picture =
                region_picture(*session().fluid, T, outcome.p.value_or(0.0), factors, v_unit);
            EXPECT_THAT(text(window->txtCritical),
                        HasSubstr(picture.available ? genNum(static_cast<float>(picture.Tcr)) : ""));
        }
        if (auto* window = frame.child<frmQTextEdit>()) {
            EXPECT_EQ(window->text->toPlainText().trimmed(),
                      QString::fromStdString(eos_report(*session().fluid).text).trimmed());
        }
        if (auto* window = frame.child<frmKessel>(); window && window->stale->reason().isEmpty()) {
            const TankView view = tank_view(*session().fluid, outcome, document().calc.setup);
            EXPECT_EQ(text(window->txtp), QString::fromStdString(view.pressure).trimmed().toStdString());
            EXPECT_EQ(window->picTank->tank().filling, view.filling);
        }
    }
    void expect_iso_fresh() {
        auto* window = frame.child<frmIsoCalc>();
        if (!window || !window->stale->reason().isEmpty()) return;
        IsoCalculator now;
        now.optIsoPhase = window->optIsoPhase[0]->isChecked() ? phase_L : phase_V;
        show_current_state(session(), now);
        EXPECT_EQ(window->txtTpVorgabe->text().toDouble(), now.txtTpVorgabe);
        EXPECT_FLOAT_EQ(window->txtFuConst->text().toFloat(), static_cast<float>(now.txtFuConst));
    }
    void expect_nothing_older() {
        expect_result_fresh();
        expect_windows_beside_fresh();
        expect_iso_fresh();
    }
};

TEST_F(Freshness, every_field_reaches_every_window) {
    for (const Mode mode : {Mode::T_p, Mode::tank_global}) {
        frmQCalcOut* window = open_result(mode);
        if (mode == Mode::T_p) {
            press(window, "cmdIsoCalc");
            press(window, "cmdCEOSDiagnose");
            press(window, "cmdInfoSuperCrit");
            menu("mnuData_ParameterEOS")->trigger();
            ASSERT_TRUE(frame.child<frmQTextEdit>());
        } else {
            auto* tank = new frmKessel(frame.bench());
            frame.open_child(tank);
        }
        const Document base = document();
        for (const FieldChange& field : Fields) {
            SCOPED_TRACE(field.what);
            change(field.make);
            EXPECT_TRUE(document() != base);
            expect_nothing_older();
            frame.bench().commit(base);
            expect_nothing_older();
            EXPECT_FALSE(window->strip->is_stale()) << "the former document is in force again";
        }
        EXPECT_TRUE(messages.take().empty()) << "no box comes up by itself";
        frame.unload_calculation_windows();
    }
}

TEST_F(Freshness, what_needs_the_user_is_marked) {
    frmQCalcOut* window = open_result(Mode::T_p);
    press(window, "cmdCEOSDiagnose");
    const auto strip = [&] { return window->strip->accessibleName().toStdString(); };
    const std::string list = text(window->Liste);
    EXPECT_THAT(strip(), HasSubstr("supercritical 30.1 K above T(cr)"));
    EXPECT_FALSE(window->strip->cmdCalculateAgain->isVisible());

    // An equation without its parameters.
    change([](Document& d) { d.models.EOSKode = Eos::tovarn_ji_1; });
    EXPECT_THAT(strip(), HasSubstr("not up to date; Tovarn / Ji I has no parameters"));
    EXPECT_THAT(strip(), HasSubstr("Shown: Propane, Peng / Robinson."));
    EXPECT_EQ(text(window->Liste), list) << "what is shown stays to be read";
    EXPECT_NE(window->Liste->palette().color(QPalette::Text), QApplication::palette().color(QPalette::Text));
    for (const QLabel* head : {window->lblLphase, window->lblVphase})
        EXPECT_NE(head->palette().color(QPalette::WindowText),
                  QApplication::palette().color(QPalette::WindowText));
    EXPECT_THAT(window->footer->text().toStdString(), HasSubstr("Peng / Robinson, GLOBAL concept"));
    EXPECT_FALSE(frame.child<frmCEOSDiagnose>()->stale->reason().isEmpty());
    press(window->strip, "cmdCalculateAgain");
    EXPECT_THAT(strip(), HasSubstr("no result"));
    change([](Document& d) { d.models.EOSKode = Eos::peng_robinson; });
    EXPECT_EQ(text(window->Liste), list);

    // Values that come from elsewhere.
    change([](Document& d) {
        d.exp.points.edit().resize(2);
        d.exp.points.edit()[1] = {.T = 310.0, .p = 400.0};
        d.options.BatchMode = true;
    });
    EXPECT_THAT(strip(), HasSubstr("the values are to come from the data points now"));
    press(window->strip, "cmdCalculateAgain");
    EXPECT_EQ(text(window->par1), "T = 310.000 K");
    EXPECT_EQ(window->fraBatchVorgabe->title(), QStringLiteral("Specificated value(s) from data point #1"));
    change([](Document& d) { d.options.BatchMode = false; });
    press(window->strip, "cmdCalculateAgain");
    EXPECT_EQ(text(window->par1), "T = 400.000 K");
    EXPECT_FALSE(window->strip->is_stale());
    EXPECT_TRUE(frame.child<frmCEOSDiagnose>()->stale->reason().isEmpty());
}

TEST_F(Freshness, models_chosen_and_not_confirmed) {
    frmQCalcOut* window = open_result(Mode::T_p);
    menu("mnuModel")->trigger();
    auto* models = frame.child<frmQModell>();
    ASSERT_TRUE(models);
    choose(models->EOSKombi, "CEOS Redlich / Kwong");
    ASSERT_EQ(frame.child<frmQCalcOut>(), window) << "a choice closes nothing";
    EXPECT_THAT(window->strip->accessibleName().toStdString(),
                HasSubstr("the equation of state was changed to Redlich / Kwong; Shown: Propane, Peng"));
    press(window->strip, "cmdCalculateAgain");
    EXPECT_EQ(document().models.EOSKode, Eos::redlich_kwong);
    EXPECT_FALSE(window->strip->is_stale());
    EXPECT_THAT(window->footer->text().toStdString(), HasSubstr("Redlich / Kwong"));
    expect_nothing_older();
}

TEST_F(Freshness, box_typed_and_not_calculated) {
    menu("mnuCalc_2")->trigger();
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    input->par[0]->setText(QStringLiteral("350"));
    input->par[1]->setText(QStringLiteral("1000"));
    press(input, "cmdParameter_OK");
    auto* window = frame.child<frmQCalcOut>();
    ASSERT_TRUE(window);
    EXPECT_FALSE(window->strip->is_stale());
    input->par[0]->setFocus();
    input->par[0]->selectAll();
    QTest::keyClicks(input->par[0], QStringLiteral("360"));
    EXPECT_THAT(window->strip->accessibleName().toStdString(), HasSubstr("typed and is not yet calculated; "
                                                                         "Shown: T = 350.000 K"));
    // A change from elsewhere is taken up, but does not take the mark away.
    change([](Document& d) { d.reference.hOffset = 500.0; });
    EXPECT_TRUE(window->strip->is_stale());
    expect_result_fresh();
    press(window->strip, "cmdCalculateAgain");
    EXPECT_FALSE(window->strip->is_stale());
    EXPECT_EQ(document().exp.points[0].T, 360.0);
    EXPECT_EQ(text(window->par1), "T = 360.000 K");

    // Typed back it is as if nothing had been typed.
    QTest::keyClick(input->par[0], Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(input->par[0], QStringLiteral("361"));
    EXPECT_TRUE(window->strip->is_stale());
    QTest::keyClick(input->par[0], Qt::Key_Backspace);
    QTest::keyClicks(input->par[0], QStringLiteral("0"));
    EXPECT_FALSE(window->strip->is_stale());

    // The state that the Iso Calculator finds is that of the boxes and of the result.
    press(window, "cmdIsoCalc");
    auto* iso = frame.child<frmIsoCalc>();
    iso->txtFuConst->setText(QStringLiteral("4"));
    press(iso, "cmdCalc");
    EXPECT_NE(document().exp.points[0].p, 1000.0);
    EXPECT_DOUBLE_EQ(input->par[1]->text().toDouble(), document().exp.points[0].p);
    EXPECT_FALSE(window->strip->is_stale());
    expect_nothing_older();
}

// The windows of settings show what they would change.
TEST_F(Freshness, options_and_reference_state) {
    frmQOptions options(frame.bench());
    frmReferenz reference(frame.bench());
    change([](Document& d) {
        d.units.EnergyMode = energy_per_mass;
        d.units.VolumeMode = volume_per_mass;
        d.options.Dens = 300;
        d.reference.hOffset = 1000.0;
        d.reference.TEnv = 280.0;
    });
    EXPECT_TRUE(options.optMolarSpez[1]->isChecked());
    EXPECT_EQ(options.Slider1_punktdichte->value(), 300);
    EXPECT_FLOAT_EQ(reference.hOffset->text().toFloat(), static_cast<float>(open_reference().h));
    EXPECT_EQ(reference.TEnv->text(), QStringLiteral("280"));
    const auto labels = reference.findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(
        labels, [](const QLabel* label) { return label->text().contains(QStringLiteral("kJ/kg")); }));
}

}  // namespace
}  // namespace quom
