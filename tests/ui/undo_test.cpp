// Ctrl+Z and Ctrl+Shift+Z over open windows: every one of them shows the document that is in force, and what
// is typed in a box stays the box's own.
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>
#include <QTextBrowser>
#include <QTimer>

#include "report/basis_line.h"
#include "report/eos_report.h"
#include "ui/main/recovery_keeper.h"
#include "ui/main/status_panel.h"
#include "ui/widgets/footer_line.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/state_strip.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class UndoKeys : public WindowDriver {
 protected:
    UndoKeys() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    void key(Qt::KeyboardModifiers with) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : &frame, Qt::Key_Z, with);
        QApplication::processEvents();
    }
    void undo() { key(Qt::ControlModifier); }
    void redo() { key(Qt::ControlModifier | Qt::ShiftModifier); }
    std::string caption(const char* name) { return menu(name)->text().toStdString(); }
    std::string told() const { return frame.statusBar()->currentMessage().toStdString(); }
    void confirm_eos(const char* name) {
        auto* models = frame.child<frmQModell>();
        ASSERT_TRUE(models);
        frame.show_child(models);
        choose(models->EOSKombi, name);
        press(models, "cmdOKModell");
    }
    // What each open window shows, against the document.
    void expect_windows_of_document() {
        const Session& s = session();
        if (auto* models = frame.child<frmQModell>(); models && models->isVisible()) {
            EXPECT_EQ(models->EOSKombi->currentData().toInt(), number_of(s.document.models.EOSKode));
            EXPECT_EQ(models->pkombi->currentData().toInt(), number_of(s.document.models.EVPKode));
            EXPECT_EQ(models->HLVKombi->currentData().toInt(), number_of(s.document.models.HLVKode));
            EXPECT_EQ(models->cpKombi->currentData().toInt(), number_of(s.document.models.cpKode));
            EXPECT_EQ(models->PriorOpt[0]->isChecked(), s.document.models.Konzept);
            EXPECT_THAT(models->windowTitle().toStdString(), StartsWith(s.substance().StoffName));
        }
        if (auto* result = frame.child<frmQCalcOut>()) {
            EXPECT_FALSE(result->strip->is_stale()) << result->strip->accessibleName().toStdString();
            EXPECT_EQ(result->footer->text().toStdString(), basis_line(*s.fluid));
        }
        if (auto* text = frame.child<frmQTextEdit>()) {
            EXPECT_EQ(text->text->toPlainText().trimmed(),
                      QString::fromStdString(eos_report(*s.fluid).text).trimmed());
        }
        EXPECT_EQ(frame.panels[1]->text().toStdString(), s.substance().StoffName);
        EXPECT_EQ(frame.panels[3]->text().toStdString(), s.shell.ModelStatus);
    }
};

TEST_F(UndoKeys, models_go_back_and_forth_in_every_open_window) {
    EXPECT_FALSE(enabled("mnuUndo"));
    EXPECT_EQ(caption("mnuUndo"), "Undo");
    go_to_calculations();
    menu("mnuCalc_2")->trigger();
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    QTest::keyClicks(input->par[0], QStringLiteral("350"));
    QTest::keyClicks(input->par[1], QStringLiteral("1000"));
    press(input, "cmdParameter_OK");
    menu("mnuData_ParameterEOS")->trigger();
    messages.take();  // the question whether T, p are an equilibrium
    const Document peng = document();
    confirm_eos("CEOS Redlich / Kwong");
    confirm_eos("CEOS van der Waals");
    const Document waals = document();
    expect_windows_of_document();
    EXPECT_EQ(caption("mnuUndo"), "Undo: Models: equation of state Redlich / Kwong -> van der Waals");
    EXPECT_FALSE(enabled("mnuRedo"));

    undo();
    EXPECT_EQ(document().models.EOSKode, Eos::redlich_kwong);
    EXPECT_EQ(told(), "Undone: Models: equation of state Redlich / Kwong -> van der Waals");
    expect_windows_of_document();
    undo();
    EXPECT_EQ(document(), peng);
    EXPECT_TRUE(session().shell.ModelsConfirmed);
    expect_windows_of_document();
    EXPECT_EQ(frame.child<frmQCalcOut>()->par1->text(), QStringLiteral("T = 350.000 K"));
    redo();
    redo();
    EXPECT_EQ(document(), waals);
    EXPECT_EQ(told(), "Done again: Models: equation of state Redlich / Kwong -> van der Waals");
    expect_windows_of_document();
    EXPECT_FALSE(enabled("mnuRedo"));

    // A choice that is not confirmed is the last step.
    auto* models = frame.child<frmQModell>();
    choose(models->EOSKombi, "CEOS Peng / Robinson");
    EXPECT_EQ(caption("mnuUndo"),
              "Undo: Models, not confirmed: the equation of state was changed to Peng / Robinson");
    undo();
    EXPECT_EQ(document(), waals);
    expect_windows_of_document();
    EXPECT_THAT(messages.take(), ::testing::IsEmpty());
}

TEST_F(UndoKeys, substances_come_back_with_their_models) {
    go_to_calculations("Propane");
    confirm_eos("CEOS Redlich / Kwong");
    const Document propane = document();
    choose_substance("Benzene");
    press(frame.child<frmQModell>(), "cmdOKModell");
    messages.take();
    const Document benzene = document();
    expect_windows_of_document();
    undo();
    EXPECT_EQ(document().substance, benzene.substance);
    EXPECT_FALSE(session().shell.ModelsConfirmed);
    EXPECT_FALSE(enabled("mnuCalcMain"));
    undo();
    EXPECT_EQ(told(), "Undone: Substance: Propane -> Benzene");
    EXPECT_EQ(document(), propane);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    expect_windows_of_document();
    redo();
    redo();
    EXPECT_EQ(document(), benzene);
    EXPECT_TRUE(session().shell.ModelsConfirmed);
    expect_windows_of_document();

    // Back to the beginning: no window of a substance is left; the whole way forth again.
    while (enabled("mnuUndo")) undo();
    EXPECT_EQ(session().database.DatabaseKind, 0);
    for (const char* name : {"frmQModell", "frmQStoffWahl", "frmQCalcOut"}) EXPECT_FALSE(frame.child(name));
    while (enabled("mnuRedo")) redo();
    EXPECT_EQ(document(), benzene);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(UndoKeys, boxes_keep_the_key_for_what_is_typed) {
    go_to_calculations();
    confirm_eos("CEOS Redlich / Kwong");
    menu("mnuCalc_2")->trigger();
    auto* input = frame.child<frmParinput>();
    input->par[0]->setFocus();
    QTest::keyClicks(input->par[0], QStringLiteral("350"));
    undo();
    EXPECT_EQ(input->par[0]->text(), QString());
    EXPECT_EQ(document().models.EOSKode, Eos::redlich_kwong);
    redo();
    EXPECT_EQ(input->par[0]->text(), QStringLiteral("350"));
    undo();
    undo();
    EXPECT_EQ(document().models.EOSKode, Eos::peng_robinson) << "nothing typed is left";
}

// The choice of GLOBAL and PARTIAL follows models that change under it.
TEST_F(UndoKeys, the_selection_of_an_equilibrium_follows) {
    go_to_calculations();
    confirm_eos("CEOS Redlich / Kwong");
    menu("mnuCalc_5")->trigger();
    auto* selection = frame.child<frmCalcIn>();
    ASSERT_TRUE(selection);
    press(selection, "opt_glob_1");
    undo();
    ASSERT_EQ(frame.child<frmCalcIn>(), selection);
    EXPECT_TRUE(selection->opt_glob[1]->isChecked());
    const frmCalcIn fresh(frame.bench(), selection->selection().mode, selection->selection().setup);
    fresh.opt_glob[1]->click();
    const auto shown = [](const QLabel* label) { return label->text().toStdString(); };
    EXPECT_EQ(shown(selection->lblAssumption), shown(fresh.lblAssumption));
    EXPECT_EQ(shown(selection->lblStatus), shown(fresh.lblStatus));
}

TEST_F(UndoKeys, a_database_that_is_gone_is_told) {
    go_to_calculations();
    const QString other = folder.filePath(QStringLiteral("other.q07"));
    ASSERT_TRUE(QFile::copy(folder.filePath(QStringLiteral("quom.q07")), other));
    dialogs->files.push_back(other);
    menu("mnuData_OpenBank_0")->trigger();
    choose_substance("Benzene");
    messages.take();
    undo();
    undo();
    EXPECT_EQ(session().substance().StoffName, "Propane");
    ASSERT_TRUE(QFile::remove(other));
    const Document before = document();
    redo();
    const auto boxes = messages.take();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_THAT(boxes[0].second, HasSubstr("Database: quom.q07 -> other.q07\n\nThere is no database"));
    EXPECT_EQ(document(), before);
}

// F1 opens the page of a modal window, in a window that can be used beside it.
TEST_F(UndoKeys, F1_opens_the_page_of_a_modal_window) {
    go_to_calculations();
    int seen = 0;
    QTimer::singleShot(0, &frame, [&] {
        auto* options = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_TRUE(options);
        QTest::keyClick(options, Qt::Key_F1);
        QTest::keyClick(options, Qt::Key_F1);
        const auto helps = options->findChildren<HelpWindow*>();
        ASSERT_EQ(helps.size(), 1);
        EXPECT_TRUE(helps[0]->isVisible());
        EXPECT_THAT(helps[0]->browser->toPlainText().toStdString(), HasSubstr("Options"));
        const QString page = helps[0]->browser->toPlainText();
        QTest::mouseClick(helps[0]->cmdIndex, Qt::LeftButton);
        EXPECT_NE(helps[0]->browser->toPlainText(), page) << "it takes input";
        ++seen;
        options->reject();
    });
    menu("mnuOptions")->trigger();
    EXPECT_EQ(seen, 1);
}

// The copy of the session: none while nothing differs, one after a change of data, offered after a crash.
TEST_F(UndoKeys, what_a_crash_leaves_is_offered_at_the_next_start) {
    const std::string path = folder.path().toStdString();
    const auto copies = [&] {
        return QDir(folder.path()).entryList({QStringLiteral("session-*.copy")}).size();
    };
    {
        RecoveryKeeper keeper(frame, path);
        keeper.begin();
        keeper.write_now();
        EXPECT_EQ(copies(), 0) << "nothing differs";
        go_to_calculations();
        change([](Document& d) { d.exp.points.edit().resize(100001); });
        EXPECT_TRUE(QTest::qWaitFor([&] { return copies() == 1; }, 10000)) << "after a change of data";
        change([](Document& d) { d.options.Dens = 123; });
        keeper.write_now();
    }
    messages.take();
    const Document kept = document();
    frame.bench().commit(Document());
    {
        RecoveryKeeper keeper(frame, path);
        keeper.begin();
        const auto boxes = messages.take();
        ASSERT_EQ(boxes.size(), 1u);
        EXPECT_THAT(boxes[0].second, HasSubstr("Measured data: 100000 lines"));
        EXPECT_EQ(document(), kept);
        EXPECT_TRUE(enabled("mnuCalcMain"));
        EXPECT_EQ(copies(), 1) << "of this program now";
        keeper.leave();
    }
    EXPECT_EQ(QDir(folder.path()).entryList({QStringLiteral("session-*")}).size(), 0);
}

}  // namespace
}  // namespace quom
