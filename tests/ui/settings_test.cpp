// Reference state, options, constants of the manual virial equation.
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTimer>
#include <cmath>
#include <functional>

#include "ui/widgets/number_box.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmBParInput.h"
#include "ui/windows/frmQOptions.h"
#include "ui/windows/frmReferenz.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

class Settings : public WindowDriver {
 protected:
    Settings() { go_to_calculations(); }
    // Runs the dialog that an entry of the menu opens; `use` drives it and ends it.
    template <class Window>
    void in_dialog(const char* entry, const std::function<void(Window*)>& use) {
        bool used = false;
        QTimer::singleShot(0, &frame, [&] {
            auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window) << entry;
            used = true;
            use(window);
            if (window->isVisible()) window->reject();
        });
        menu(entry)->trigger();
        EXPECT_TRUE(used) << entry;
    }
};

TEST_F(Settings, reference_state_takes_its_options) {
    const ReferenceState& r = document().reference;
    const double M = static_cast<double>(session().substance().MolMass);
    change([](Document& d) { d.units.EnergyMode = energy_per_mass; });
    in_dialog<frmReferenz>("Toolbar1_11", [&](frmReferenz* w) {
        EXPECT_TRUE(w->opt_HNull[0]->isChecked());
        w->TRef0->setText(QStringLiteral("273.15"));
        w->pRef0->setText(QStringLiteral("100"));
        w->hOffset->setText(QStringLiteral("200"));
        w->sOffset->setText(QStringLiteral("1"));
        w->TEnv->setText(QStringLiteral("0"));
        w->OK->click();
    });
    EXPECT_EQ(r.TRef0, 273.15f);
    EXPECT_EQ(r.pRef0, 100.0f);
    EXPECT_NEAR(r.hOffset, 200 * M, 1e-9);  // kJ/kmol
    EXPECT_NEAR(r.sOffset, M, 1e-12);
    EXPECT_EQ(r.TEnv, 1e-6);
    struct Case {
        int option, RefKode;
        double s0;
    };
    const SubstanceConstants x = session().substance();
    for (const Case& c : {Case{1, 10, (x.dfH0 - x.dfG0) / 298.15}, Case{2, 2, x.S0abs}}) {
        in_dialog<frmReferenz>("Toolbar1_11", [&](frmReferenz* w) {
            w->opt_HNull[static_cast<std::size_t>(c.option)]->click();
            EXPECT_EQ(w->TRef0->text(), QStringLiteral("298.15"));
            EXPECT_EQ(w->pRef0->text(), QStringLiteral("101.325"));
            EXPECT_EQ(w->hOffset->text(), QStringLiteral("0"));
            EXPECT_FALSE(w->TRef0->isEnabled());
            EXPECT_NEAR(w->s0->text().toDouble(), c.s0 / M, 1e-5);
            w->OK->click();
        });
        EXPECT_EQ(r.RefKode, c.RefKode);
        EXPECT_EQ(r.hOffset, 0.0);
    }
}

TEST_F(Settings, reference_state_refused_or_cancelled_stays) {
    const Document before = document();
    in_dialog<frmReferenz>("Toolbar1_11", [&](frmReferenz* w) {
        struct Case {
            NumberBox* box;
            const char *text, *rule;
        };
        for (const Case& c : {Case{w->TRef0, "0", "To must be above 0."},
                              {w->pRef0, "-1", "po must not be below 0."},
                              {w->hOffset, "1.2.3", "1.2.3 is no number."},
                              {w->sOffset, "", "s is missing."},
                              {w->TEnv, "-1", "T(surr) must not be below 0."},
                              {w->pEnv, "-", "- is no number."}}) {
            const QString good = c.box->text();
            c.box->setText(QLatin1String(c.text));
            w->OK->click();
            EXPECT_TRUE(w->isVisible()) << c.text;
            EXPECT_THAT(messages.take(), IsEmpty()) << c.text;
            EXPECT_EQ(w->focusWidget(), c.box) << c.rule;
            const auto* line = in<QLabel>(w, qPrintable(c.box->objectName() + QStringLiteral("_refusal")));
            EXPECT_TRUE(line->isVisible());
            EXPECT_EQ(line->text().toStdString(), c.rule);
            EXPECT_TRUE(w->rect().contains(line->geometry().translated(line->parentWidget()->pos())));
            c.box->setText(good);
            EXPECT_FALSE(line->isVisible()) << "another text takes it back";
        }
        w->opt_HNull[2]->click();
        QTest::keyClick(w, Qt::Key_Escape);
        EXPECT_FALSE(w->isVisible());
    });
    EXPECT_TRUE(document() == before);
    in_dialog<frmReferenz>("Toolbar1_11", [&](frmReferenz* w) { w->OK->click(); });
    EXPECT_TRUE(document() == before) << "opened and confirmed, nothing is another value";
}

TEST_F(Settings, options_reach_the_document_and_the_menu) {
    in_dialog<frmQOptions>("mnuOptions", [&](frmQOptions* w) {
        EXPECT_FALSE(w->chkPartialKurve->isEnabled());
        EXPECT_TRUE(w->OptCalcMode[1]->isChecked());
        w->optMolarSpez[1]->click();
        w->OptCalcMode[0]->click();
        w->chkCurveTpRestricted->click();
        w->optKurvenMischen[1]->click();
        w->cmbSepCSV->setCurrentIndex(2);
        w->Slider1_punktdichte->setFocus();
        QTest::keyClick(w->Slider1_punktdichte, Qt::Key_Right);
        w->cmdOK->click();
    });
    const Options& o = document().options;
    EXPECT_EQ(document().units.EnergyMode, energy_per_mass);
    EXPECT_EQ(document().units.VolumeMode, volume_per_mass);
    EXPECT_NEAR(session().factors().vFactor * static_cast<double>(session().substance().MolMass), 1.0, 1e-12);
    EXPECT_TRUE(o.BatchMode && o.KurvenMischen && !o.chkCurveTpRestricted);
    EXPECT_EQ(o.SepCSV, '\t');
    EXPECT_EQ(o.Dens, 550);
    EXPECT_EQ(menu("mnuCalc_1")->text(),
              QStringLiteral("columns T, rho(L) => p, state L/V     + thermod. Fu."));

    const Document before = document();
    in_dialog<frmQOptions>("mnuOptions", [&](frmQOptions* w) {
        EXPECT_TRUE(w->optMolarSpez[1]->isChecked());
        w->optMolarSpez[0]->click();
        w->OptCalcMode[1]->click();
        QTest::keyClick(w, Qt::Key_Escape);
    });
    EXPECT_TRUE(document() == before);
}

TEST_F(Settings, options_that_cannot_be_had_keep_the_window_open) {
    change([](Document& d) {
        d.substance.constants.MolMass = 0;
        d.options.DezimalKomma = true;
    });
    in_dialog<frmQOptions>("mnuOptions", [&](frmQOptions* w) {
        w->optMolarSpez[1]->click();
        w->cmdOK->click();
        EXPECT_TRUE(w->isVisible());
        EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible",
                                                      "For this substance the molar mass is missing.")));
        w->optMolarSpez[0]->click();
        w->cmbSepXY->setCurrentIndex(1);
        messages.answers = {Answer::yes};
        w->cmdOK->click();
    });
    ASSERT_EQ(messages.asked.size(), 1u);
    EXPECT_EQ(messages.asked[0].title, "Warning for XY file");
    EXPECT_EQ(document().options.SepXY, ';');
}

TEST_F(Settings, manual_virial_constants_survive_the_comparison) {
    EosInput typed_in;
    {
        frmBParInput window(typed_in, &frame);
        const char* typed[] = {"0.15", "1.2e5", "2.1"};
        for (int i = 0; i < 3; ++i) window.par[i]->setText(QLatin1String(typed[i]));
        window.par[1]->setText(QStringLiteral("1.2e5e"));
        window.cmdParameter_OK->click();
        EXPECT_TRUE(window.par[1]->refused());
        EXPECT_EQ(window.par[1]->accessibleDescription().toStdString(), "1.2e5e is no number.");
        EXPECT_THAT(messages.take(), IsEmpty());
        EXPECT_EQ(window.constants(), EosInput{});
        window.par[1]->setText(QLatin1String(typed[1]));
        window.cmdParameter_OK->click();
        EXPECT_EQ(window.result(), QDialog::Accepted);
        typed_in = window.constants();
    }
    EXPECT_EQ(typed_in, (EosInput{.b0 = 0.15, .b1 = 1.2e5, .b2 = 2.1}));
    change([&](Document& d) {
        d.models.EOSKode = Eos::virial_manual;
        d.models.Konzept = false;
        d.eos_input = typed_in;
        d.exp.points.edit()[0] = {.T = 300};
        d.calc.CalcMode = Mode::virial;
    });
    const Outcome& outcome = calculate(session(), 0);
    ASSERT_TRUE(outcome.B);
    EXPECT_NEAR(*outcome.B, 0.15 - 1.2e5 / std::pow(300.0, 2.1), 1e-12);
    EXPECT_EQ(document().eos_input, typed_in);

    frmBParInput window(document().eos_input, &frame);
    EXPECT_EQ(window.par[0]->text(), QStringLiteral("0.15"));
    EXPECT_EQ(window.par[1]->text(), QStringLiteral("120000"));
    window.par[0]->setText(QStringLiteral("7"));
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_EQ(window.result(), QDialog::Rejected);
    EXPECT_EQ(window.constants(), typed_in);
}

}  // namespace
}  // namespace quom
