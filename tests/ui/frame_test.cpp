#include <QMenuBar>
#include <set>

#include "ui/main/mdi_area.h"
#include "ui/main/menu_table.h"
#include "ui/main/status_panel.h"
#include "ui/main/traffic_lights.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;

TEST_F(WindowDriver, starts_without_a_database) {
    EXPECT_EQ(frame.windowTitle().toStdString(),
              "QUOM-6   Thermodynamic Calculations of States and Processes for Pure Substances");
    EXPECT_EQ(frame.panels[0]->text().toStdString(), " Database loaded: none");
    for (const char* name : {"mnuData_OpenBank_0", "mnuData_OpenBank_2", "mnuData_NewProject", "mnuData",
                             "mnuShowApp_path", "mnuData_Exit", "mnuKonv3X", "Toolbar1_2"})
        EXPECT_TRUE(enabled(name)) << name;
    for (const char* name : {"mnuStoffwahl", "mnuModel", "mnu2D", "mnu3D", "mnuCalcMain", "mnuFitting",
                             "mnuOptions", "mnuData_SaveProject", "Toolbar1_15"})
        EXPECT_FALSE(enabled(name)) << name;
    QApplication::processEvents();
    EXPECT_FALSE(frame.cmdDatenDiagnose->isVisible());
    EXPECT_EQ(frame.txtAmpel->level(), 0);
    EXPECT_THAT(frame.area->accessibleDescription().toStdString(), HasSubstr("No database is loaded."));
}

TEST_F(WindowDriver, menus_bear_their_captions_and_no_entry_is_there_twice) {
    const std::pair<const char*, const char*> captions[] = {
        {"mnuData", "   &Data..."},
        {"mnuData_OpenBank_0", "Open database *.Q07 / new project"},
        {"mnuData_BatchInput", "Editor for exper. Data T-p-rho-delta(LV)h       NEW (Inputn |L oad *.BAQ)"},
        {"mnuData_Exit", "E&xit                                            Alt+F4"},
        {"mnuCalc_2", "T, p         => rho, State L/V + Functions"},
        {"mnuCalc_16", "Tank (T, m, v => p, v(L)/v(V)),\"PARTIAL method\" "},
        {"mnuCalc_sub_database_2", "S-density"},
        {"mnuWindow", "&Windows..."},
    };
    for (const auto& [name, caption] : captions) {
        ASSERT_TRUE(menu(name)) << name;
        EXPECT_EQ(menu(name)->text().toStdString(), caption);
    }
    EXPECT_TRUE(menu("mnuData_OpenBank_1")->isSeparator());

    std::set<std::pair<std::string, int>> seen;
    for (const MenuRow& row : menu_rows())
        EXPECT_TRUE(seen.insert({row.name, row.index}).second) << row.name << row.index;
    for (const QAction* top : frame.menuBar()->actions()) EXPECT_FALSE(top->text().isEmpty());
}

TEST_F(WindowDriver, a_cancelled_or_failing_database_leaves_all_as_it_was) {
    menu("mnuData_OpenBank_0")->trigger();
    ASSERT_EQ(dialogs->asked.size(), 1u);
    EXPECT_EQ(dialogs->asked[0].title.toStdString(), "Database *.Q07 laden ()");
    EXPECT_TRUE(messages.take().empty());
    EXPECT_FALSE(enabled("mnuStoffwahl"));

    const QString missing = folder.filePath(QStringLiteral("none.q07"));
    dialogs->files.push_back(missing);
    menu("mnuData_OpenBank_0")->trigger();
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("Execution not possible",
                                 "Database " + missing.toStdString() + " not found or empty resp.")));
    EXPECT_FALSE(frame.child<frmQStoffWahl>());

    go_to_calculations();
    messages.take();
    dialogs->files.push_back(missing);
    menu("mnuData_OpenBank_0")->trigger();
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("WARNING", "Database " + missing.toStdString() +
                                                "not found in the QUOM directory or empty resp.\n"
                                                "Already loaded database will be used further.")));
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_EQ(session().substance().StoffName, "Propane");
    menu("mnuData_OpenBank_0")->trigger();  // cancelled
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_TRUE(frame.child<frmQModell>());
}

TEST_F(WindowDriver, a_new_database_closes_what_belongs_to_the_substance) {
    go_to_calculations();
    open_starter_database();
    EXPECT_FALSE(frame.child<frmQModell>());
    EXPECT_TRUE(frame.child<frmQStoffWahl>());
    for (const char* name : {"mnuModel", "mnuCalcMain", "mnuOptions", "mnuData_SaveProject"})
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_TRUE(enabled("mnuStoffwahl"));
    QApplication::processEvents();
    EXPECT_FALSE(frame.cmdDatenDiagnose->isVisible());
    EXPECT_TRUE(frame.panels[1]->text().isEmpty());
    EXPECT_EQ(frame.panels[0]->text().toStdString(), " Database loaded: quom.q07");
}

TEST_F(WindowDriver, data_diagnosis_and_notes_are_told_in_words) {
    open_starter_database();
    choose_substance("Propane");
    EXPECT_TRUE(frame.cmdDatenDiagnose->isVisible());
    EXPECT_EQ(frame.cmdDatenDiagnose->text().toStdString(), "     Data Diagnosis");
    EXPECT_EQ(frame.txtAmpel->level(), 1);
    EXPECT_EQ(frame.txtAmpel->colour(), QColor(50, 255, 50));
    EXPECT_EQ(frame.txtAmpel->accessibleName().toStdString(), "Traffic lights: green, level 1 of 4");
    press(&frame, "cmdDatenDiagnose");
    menu("mnuShowApp_path")->trigger();
    menu("mnuKonv3X")->trigger();
    const auto told = messages.take();
    ASSERT_EQ(told.size(), 3u);
    EXPECT_EQ(told[0].first, "Substance data situation (\"traffic lights\")");
    EXPECT_THAT(told[0].second, HasSubstr("\n\nWITH THIS DATA SITUATION, THERE ARE NO LIMITATIONS"));
    EXPECT_THAT(told[1], Pair("present working directory of QUOM", folder.path().toStdString()));
    EXPECT_THAT(told[2], Pair("Execution not possible", "File Konv3X_E.EXE not found in the QUOM directory"));
}

TEST_F(WindowDriver, the_calculation_menu_follows_equation_and_batch_mode) {
    go_to_calculations();
    auto* calc = in<QMenu>(&frame, "mnuCalcMain");
    emit calc->aboutToShow();
    EXPECT_EQ(menu("mnuCalc_18")->text().toStdString(), "T => Virial coefficient B, Parameters of the CEOS");
    choose(frame.child<frmQModell>()->EOSKombi, "VIRIAL-EOS Pitzer / Curl");
    press(frame.child<frmQModell>(), "cmdOKModell");
    change([](Document& d) { d.options.BatchMode = true; });
    messages.take();
    emit calc->aboutToShow();
    EXPECT_EQ(menu("mnuCalc_18")->text().toStdString(), "T => Virial coefficient B");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible",
                                                  "This type of calculation is possible only if "
                                                  "exper. data are available.")));
}

TEST_F(WindowDriver, every_topic_has_its_page_and_every_link_leads_to_one) {
    const QRegularExpression link(QStringLiteral("topic:(\\d+)"));
    for (const int topic : {1,  2,  3,  4,  20, 21, 22, 23, 24, 25, 26, 30, 31,   32,
                            33, 34, 35, 36, 40, 41, 42, 50, 60, 62, 63, 70, 15340}) {
        QFile page(help_page(topic));
        ASSERT_TRUE(page.open(QIODevice::ReadOnly)) << topic;
        const QString text = QString::fromUtf8(page.readAll());
        EXPECT_TRUE(text.startsWith(QStringLiteral("# "))) << topic;
        for (auto it = link.globalMatch(text); it.hasNext();)
            EXPECT_FALSE(help_page(it.next().captured(1).toInt()).isEmpty()) << topic;
    }
    menu("mnuHilfe_Index")->trigger();
    auto* help = frame.findChild<HelpWindow*>();
    ASSERT_TRUE(help && help->isVisible());
    frame.close();
    EXPECT_FALSE(help->isVisible());
}

// Every control that takes the focus has an object name and says what it is; nothing is smaller than it
// needs, also with a larger font.
void expect_reachable(const QWidget* window) {
    for (const QWidget* control : window->findChildren<QWidget*>()) {
        if (!control->isVisibleTo(window) || !(control->focusPolicy() & Qt::TabFocus)) continue;
        if (control->objectName().startsWith(QStringLiteral("qt_")) || control->focusProxy() ||
            qobject_cast<const QComboBox*>(control->parentWidget()))
            continue;
        EXPECT_FALSE(control->objectName().isEmpty())
            << window->objectName().toStdString() << " " << control->metaObject()->className();
        EXPECT_FALSE(control->accessibleName().isEmpty())
            << window->objectName().toStdString() << " " << control->objectName().toStdString();
        EXPECT_GE(control->width(), control->minimumSizeHint().width())
            << control->objectName().toStdString();
        if (!qobject_cast<const QAbstractButton*>(control)) continue;
        EXPECT_GE(control->width(), control->sizeHint().width()) << control->objectName().toStdString();
    }
}

TEST_F(WindowDriver, controls_are_named_and_not_cut_off_at_any_font_size) {
    const QFont usual = QApplication::font();
    for (const double points : {9.0, 14.0}) {
        QFont font = usual;
        font.setPointSizeF(points);
        QApplication::setFont(font);
        QApplication::processEvents();
        open_starter_database();
        QApplication::processEvents();
        expect_reachable(frame.child<frmQStoffWahl>());
        choose_substance("Propane");
        QApplication::processEvents();
        expect_reachable(frame.child<frmQModell>());
    }
    QApplication::setFont(usual);
}

}  // namespace
}  // namespace quom
