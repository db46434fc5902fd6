// Projects under a user's hands: saved, looked at in the dialog, loaded again by the menu, by the command
// line, by the start page, and as the last session of a program that was started anew.
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "base/dates.h"
#include "calc/outcome.h"
#include "ui/main/recent_files.h"
#include "ui/main/start_page.h"
#include "ui/project_program.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/window_driver.h"
#include "ui/windows/frmBParInput.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQCmnDlg.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::Pair;
using ::testing::SizeIs;

class ProjectWindows : public WindowDriver {
 protected:
    QString at(const char* name) const { return folder.filePath(QLatin1String(name)); }
    void write(const char* name, const std::string& bytes) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }
    void load(const char* name) {
        dialogs->files.push_back(at(name));
        menu("mnuData_LoadProject")->trigger();
    }
    // T, p => rho; what is asked on the way gets its default answer.
    static void calculate(mdiQUOM& frame, QueuedMessages& messages) {
        frame.findChild<QAction*>(QStringLiteral("mnuCalc_2"))->trigger();
        if (auto* selection = frame.child("frmCalcIn")) press(selection, "OK");
        auto* input = frame.child<frmParinput>();
        ASSERT_TRUE(input);
        input->par[0]->setText(QStringLiteral("320"));
        input->par[1]->setText(QStringLiteral("500"));
        input->cmdParameter_OK->click();
        messages.take();
    }
    // Runs the dialog of files that an entry of the menu opens; `use` drives it and ends it.
    void in_dialog(const char* entry, const std::function<void(frmQCmnDlg&)>& use) {
        frame.set_dialogs(std::make_unique<Dialogs>());
        bool used = false;
        QTimer::singleShot(0, &frame, [&] {
            auto* window = qobject_cast<frmQCmnDlg*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window) << entry;
            used = true;
            use(*window);
            if (window->isVisible()) window->reject();
        });
        menu(entry)->trigger();
        EXPECT_TRUE(used) << entry;
    }
    static std::vector<std::string> names(const QListWidget* list) {
        std::vector<std::string> all;
        for (int i = 0; i < list->count(); ++i) all.push_back(list->item(i)->text().toStdString());
        return all;
    }
    static void mark(frmQCmnDlg& window, const char* name) {
        const auto items = window.filOpenList->findItems(QLatin1String(name), Qt::MatchExactly);
        ASSERT_EQ(items.size(), 1) << name;
        QTest::mouseClick(window.filOpenList->viewport(), Qt::LeftButton, {},
                          window.filOpenList->visualItemRect(items.front()).center());
        QApplication::processEvents();
    }
    std::string status() {
        menu("mnuProjectStatus")->trigger();
        auto* window = frame.child<frmQTextEdit>();
        return window ? window->text->toPlainText().toStdString() : std::string();
    }
};

TEST_F(ProjectWindows, the_next_start_goes_on_with_the_same_numbers) {
    go_to_calculations();
    auto* models = frame.child<frmQModell>();
    choose(models->EOSKombi, "CEOS Soave / Redlich / Kwong");
    models->pkombi->setCurrentIndex(models->pkombi->findText(QStringLiteral("Wagner"), Qt::MatchContains));
    models->PriorOpt[1]->click();
    press(models, "cmdOKModell");
    change([](Document& d) {
        d.reference.hOffset = 1234.5;
        d.options.Dens = 250;
    });
    calculate(frame, messages);
    const Outcome* found = current_outcome(session());
    ASSERT_TRUE(found && found->V && found->V->h);
    const Outcome first = *found;

    // Saved with a comment; the note comes once.
    for (const char* comment : {"cycle of the plant, 2nd try", "<cancelled>"}) {
        dialogs->files.push_back(at("cycle.QC6"));
        if (comment[0] != '<') dialogs->texts.push_back(QLatin1String(comment));
        menu("mnuData_SaveProject")->trigger();
        EXPECT_EQ(frame.session().document.ProjectComment, comment[0] != '<' ? comment : "<>");
    }
    EXPECT_EQ(dialogs->texts_asked.at(0), std::pair(QStringLiteral(" File comment (optional) "), QString()));
    EXPECT_EQ(dialogs->texts_asked.at(1).second.toStdString(), "cycle of the plant, 2nd try");
    EXPECT_EQ(dialogs->asked.back().title.toStdString(), "Save Present Project as ...");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("one-time general note",
                                                  "Tip:\nBefore saving the project check the settings \n"
                                                  "under \"Models\" and \"Options\".")));
    EXPECT_EQ(session().shell.ProjectTitle, "cycle.QC6");
    EXPECT_THAT(status(), HasSubstr("/cycle.QC6"));
    const Document before = document();
    frame.close();
    EXPECT_TRUE(QFile::exists(at("QuomLastSession.QC6")));

    Program next(folder);
    mdiQUOM& again = next.frame;
    auto* row = again.start_page->findChildren<StartRowButton*>().at(1);
    EXPECT_TRUE(row->isEnabled());
    EXPECT_THAT(row->accessibleDescription().toStdString(),
                AllOf(HasSubstr("Propane, CEOS Soave / Redlich / Kwong, "), HasSubstr(":")));
    QTest::mouseClick(row, Qt::LeftButton);
    EXPECT_THAT(next.messages.take(), SizeIs(1)) << "the diagnosis of its data";
    EXPECT_FALSE(again.start_page->isVisible());
    ASSERT_TRUE(again.child<frmQModell>());
    EXPECT_TRUE(again.session().shell.LastSessionLoaded);
    press(again.child<frmQModell>(), "cmdOKModell");
    const Document& now = again.session().document;
    // The list of delta(LV)h models selects by the vapor pressure equation whenever it opens with one chosen.
    ModelSelection models_before = before.models;
    models_before.HLVKode = now.models.HLVKode;
    EXPECT_EQ(now.models, models_before);
    EXPECT_EQ(now.reference, before.reference);
    EXPECT_EQ(now.options.Dens, 250);
    calculate(again, next.messages);
    found = current_outcome(again.session());
    ASSERT_TRUE(found && found->V && found->V->h);
    EXPECT_EQ(found->V->rho, first.V->rho);
    EXPECT_EQ(found->V->h, first.V->h);
    EXPECT_EQ(found->V->s, first.V->s);
}

TEST_F(ProjectWindows, without_a_database_nothing_is_kept) {
    frame.close();
    EXPECT_FALSE(QFile::exists(at("QuomLastSession.QC6")));
    menu("mnuData_LoadLastSession")->trigger();
    const auto told = messages.take();
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].first, "Execution not possible");
    EXPECT_THAT(told[0].second,
                AllOf(HasSubstr("QuomLastSession.QC6"), HasSubstr(" not found in the QUOM directory")));
    EXPECT_FALSE(frame.child<frmQModell>());
}

TEST_F(ProjectWindows, a_project_replaces_windows_and_data_of_the_session_before) {
    go_to_calculations("Water");
    calculate(frame, messages);
    ASSERT_TRUE(frame.child<frmQCalcOut>());
    write("measured.BAQ", data_text());
    write("propane.QC6", project_text({{2, "with data"}, {4, "measured.BAQ"}, {5, " 2 "}}));
    load("propane.QC6");
    EXPECT_THAT(messages.take(), SizeIs(1));  // the diagnosis
    EXPECT_EQ(session().substance().StoffName, "Propane");
    EXPECT_EQ(data_point_count(document().exp), 2);
    EXPECT_FALSE(frame.child<frmQCalcOut>() || frame.child<frmParinput>());
    EXPECT_TRUE(frame.child<frmQModell>()->isVisible());
    EXPECT_FALSE(enabled("mnuCalcMain")) << "the models are not confirmed";
    EXPECT_TRUE(enabled("mnuStoffwahl") && enabled("mnuData_SaveProject") && enabled("Toolbar1_32"));
    EXPECT_TRUE(frame.cmdDatenDiagnose->isVisible());
    EXPECT_EQ(frame.child<frmQModell>()->EOSKombi->currentText().trimmed().toStdString(),
              "CEOS Peng / Robinson");
    EXPECT_EQ(document().ProjectComment, "with data");
    const std::string told = status();
    EXPECT_THAT(told, AllOf(HasSubstr("    Project comment: with data"), HasSubstr("    quom.q07  with  496"),
                            HasSubstr("    File measured.BAQ  from  2026-11-19")));

    // A project without data asks about those that are there.
    write("bare.QC6", project_text());
    messages.answers = {Answer::no};
    load("bare.QC6");
    EXPECT_THAT(messages.take().at(0),
                Pair("exper. data", "Do you want to preserve the loaded exper. data?"));
    EXPECT_EQ(data_point_count(document().exp), 0);

    // Data of another substance are asked about, too.
    write("other.BAQ", data_text("7732-18-5   ;Water"));
    write("other.QC6", project_text({{4, "other.BAQ"}, {5, " 2 "}}));
    for (const auto& [answer, points] : {std::pair{Answer::no, 0}, {Answer::yes, 2}}) {
        messages.answers = {answer};
        load("other.QC6");
        EXPECT_THAT(messages.take().at(0),
                    Pair("WARNING",
                         "You are trying to load a data set \nfor a different substance!\n"
                         "Load T-p-rho data anyway?"));
        EXPECT_EQ(data_point_count(document().exp), points);
    }
    EXPECT_THAT(status(), HasSubstr("    WARNING:"));

    // A database opened anew begins a project without name and comment.
    open_starter_database();
    EXPECT_THAT(status(), HasSubstr("project\n    (not yet completely defined)"));
    EXPECT_THAT(document().ProjectComment, IsEmpty());
}

TEST_F(ProjectWindows, leaving_asks_about_data_that_are_not_saved) {
    go_to_calculations();
    change([](Document& d) {
        d.exp.points.edit().push_back({.T = 300, .p = 997});
        d.exp.ExpGeaendert = true;
    });
    messages.answers = {Answer::cancel};
    frame.close();
    EXPECT_TRUE(frame.isVisible());
    EXPECT_FALSE(QFile::exists(at("QuomLastSession.QC6")));
    EXPECT_THAT(messages.take(), ElementsAre(Pair("WARNING",
                                                  "The data has not yet been saved after modification.\n"
                                                  "Save now as *.BAQ?")));
    messages.answers = {Answer::yes};
    dialogs->files.push_back(at("points.BAQ"));
    frame.close();
    EXPECT_FALSE(frame.isVisible());
    Program next(folder);
    next.frame.findChild<QAction*>(QStringLiteral("mnuData_LoadLastSession"))->trigger();
    EXPECT_EQ(data_point_count(next.frame.session().document.exp), 1);
    EXPECT_TRUE(next.frame.findChild<QAction*>(QStringLiteral("Toolbar1_22"))->isEnabled());
}

TEST_F(ProjectWindows, what_cannot_be_loaded_is_told_and_changes_nothing) {
    write("gone.QC6", project_text({{3, "C:\\DATA\\gone.Q07"}}));
    write("strange.QC6", project_text({{6, "99-99-9     "}}));
    write("broken.QC6", "2026-11-20\r\nhalf");
    load("gone.QC6");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible",
                                                  "Database C:\\DATA\\gone.Q07\nnot found in the QUOM "
                                                  "directory ")));
    EXPECT_TRUE(frame.start_page->isVisible());
    EXPECT_FALSE(enabled("mnuStoffwahl"));

    go_to_calculations("Water");
    calculate(frame, messages);
    const Document before = document();
    for (const char* name : {"strange.QC6", "broken.QC6"}) {
        load(name);
        const auto told = messages.take();
        ASSERT_THAT(told, SizeIs(1)) << name;
        EXPECT_EQ(told[0].first, "Execution not possible");
        EXPECT_TRUE(document() == before) << name;
        EXPECT_TRUE(frame.child<frmQCalcOut>()) << "its windows stay";
        EXPECT_TRUE(enabled("mnuCalcMain"));
        EXPECT_THAT(session().shell.ProjectPath, IsEmpty());
    }
    menu("mnuData_LoadProject")->trigger();  // cancelled
    EXPECT_TRUE(document() == before);

    // With a database in force the project goes on with that one.
    load("gone.QC6");
    EXPECT_THAT(messages.take().at(0), Pair("Note",
                                            "Database C:\\DATA\\gone.Q07\n not found in the QUOM directory\n"
                                            "The currently loaded database will continue to be used."));
    EXPECT_EQ(session().substance().StoffName, "Propane");
}

TEST_F(ProjectWindows, constants_of_the_manual_equation_are_asked_for_with_the_models) {
    write("manual.QC6", project_text({{17, "10"}, {21, "0"}}));
    QTimer::singleShot(0, &frame, [] {
        auto* input = qobject_cast<frmBParInput*>(QApplication::activeModalWidget());
        ASSERT_TRUE(input);
        const char* const values[] = {"0.1", "20000", "2"};
        for (int i = 0; i < 3; ++i) input->par[i]->setText(QLatin1String(values[i]));
        input->cmdParameter_OK->click();
    });
    load("manual.QC6");
    press(frame.child<frmQModell>(), "cmdOKModell");
    EXPECT_EQ(document().models.EOSKode, Eos::virial_manual);
    EXPECT_EQ(document().eos_input, (EosInput{.b0 = 0.1, .b1 = 20000, .b2 = 2}));
}

TEST_F(ProjectWindows, the_command_line_loads_a_project) {
    write("measured.TXT", data_text());
    write("my plant.QC6", project_text({{4, "measured.TXT"}, {5, " 2 "}}));
    {
        const std::vector<std::string> words = {QStringLiteral("\"%1").arg(at("my")).toStdString(),
                                                "plant.QC6\""};
        Program run(folder, {}, command_line_project(words));
        const auto told = run.messages.take();
        ASSERT_THAT(told, SizeIs(2));
        EXPECT_EQ(told[0], std::pair(std::string("Execution not possible"),
                                     std::string("file is not of the type .BAQ and cannot be loaded")));
        EXPECT_EQ(run.frame.session().substance().StoffName, "Propane");
        EXPECT_TRUE(run.frame.child<frmQModell>());
        EXPECT_EQ(run.frame.session().shell.ProjectTitle, "my plant.QC6");
    }
    Program failed(folder, {}, "nowhere.QC6");
    EXPECT_THAT(failed.messages.take(), SizeIs(1));
    EXPECT_TRUE(failed.frame.start_page->isVisible());
    EXPECT_FALSE(failed.frame.child<frmQModell>());
}

TEST_F(ProjectWindows, the_dialog_shows_what_is_in_a_file_before_it_is_loaded) {
    write("a.QC6", project_text({{2, "first, with a comma"}, {4, "measured.BAQ"}, {5, " 2 "}}));
    write("b.qc6", project_text({{3, "X:\\gone.Q07"}, {6, "99-99-9     "}}));
    write("old.QC5", project_text());
    write("ancient.QC6", project_text({{3, "bank.Q04"}}));
    write("measured.BAQ", data_text());
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("inner")));
    write("inner/c.QC6", project_text());
    session().shell.ProjectFolder = folder.path().toStdString();
    in_dialog("mnuData_LoadProject", [&](frmQCmnDlg& w) {
        EXPECT_EQ(w.windowTitle().toStdString(), "Load a project (*.QC6)");
        EXPECT_EQ(w.fraViewStoff->title().toStdString(), "Project Information");
        EXPECT_EQ(w.StatusBar1->text().toStdString(), "database active:  none");
        EXPECT_THAT(names(w.filOpenList), ElementsAre("a.QC6", "ancient.QC6", "b.qc6"));
        EXPECT_THAT(names(w.dirOpenList), ElementsAre("inner"));
        mark(w, "a.QC6");
        EXPECT_EQ(w.txtOpenFile->text().toStdString(), "a.QC6");
        EXPECT_EQ(w.lblDate->text().toStdString(), "2026-11-20");
        EXPECT_EQ(w.lblStoff->text().toStdString(), "Propane  (74-98-6)");
        EXPECT_EQ(w.lblBank->text().toStdString(), "quom.q07");
        EXPECT_EQ(w.lblExp->text().toStdString(), "measured.BAQ  (2 exper. points)");
        EXPECT_EQ(w.Text2->toPlainText().toStdString(), "first, with a comma");
        EXPECT_FALSE(w.Text2->isReadOnly());
        mark(w, "b.qc6");
        EXPECT_EQ(w.lblStoff->text().toStdString(),
                  "99-99-9 (substance is not available in the present database)");
        EXPECT_EQ(w.lblBank->text().toStdString(), "gone.Q07 not in the QUOM working directory");
        EXPECT_EQ(w.lblExp->text().toStdString(), "(none)");
        EXPECT_THAT(messages.take(), IsEmpty());
        mark(w, "ancient.QC6");
        EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible",
                                                      "Databases *.Q04 and *.Q05 are not longer supported.\n"
                                                      "(Change the name to *.Q07 in the project file)")));
        EXPECT_EQ(w.lblStoff->text(), QString());
        EXPECT_TRUE(w.Text2->isReadOnly());

        // A mask filters the list, a folder is gone into, a wrong name is told.
        const auto enter = [&w](const char* text) {
            w.txtOpenFile->setFocus();
            w.txtOpenFile->selectAll();
            QTest::keyClicks(w.txtOpenFile, QLatin1String(text));
            QTest::keyClick(w.txtOpenFile, Qt::Key_Return);
        };
        enter("*.q?5");
        EXPECT_THAT(names(w.filOpenList), ElementsAre("old.QC5"));
        mark(w, "old.QC5");
        EXPECT_THAT(messages.take(),
                    ElementsAre(Pair("Execution not possible", "Only *.QC6 projects are supported.")));
        enter("nothing.QC6");
        EXPECT_THAT(messages.take(),
                    ElementsAre(Pair("Execution not possible", "File not found in the QUOM directory")));
        enter("*.QC6");
        enter("inner");
        EXPECT_THAT(names(w.filOpenList), ElementsAre("c.QC6"));
        press(&w, "cmdReturn");
        EXPECT_EQ(w.dirOpenList->currentItem()->text().toStdString(), "inner") << "where one comes from";
        w.dirOpenList->setFocus();
        QTest::keyClick(w.dirOpenList, Qt::Key_Return);
        EXPECT_THAT(names(w.filOpenList), ElementsAre("c.QC6"));
        QTest::keyClick(w.dirOpenList, Qt::Key_Backspace);
        EXPECT_TRUE(w.isVisible());

        // The comment that is changed is that of the session, once the project is loaded.
        mark(w, "a.QC6");
        w.Text2->setFocus();
        QTest::keyClick(w.Text2, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(w.Text2, QStringLiteral("second"));
        messages.answers = {};
        w.cmdOpenOK->click();
        EXPECT_FALSE(w.isVisible());
    });
    EXPECT_EQ(session().substance().StoffName, "Propane");
    EXPECT_EQ(document().ProjectComment, "second");
    EXPECT_EQ(session().shell.ProjectTitle, "a.QC6");

    // Left by Esc nothing is another one: neither comment nor folder nor database.
    const Document before = document();
    in_dialog("mnuData_LoadProject", [&](frmQCmnDlg& w) {
        EXPECT_EQ(w.StatusBar1->text().toStdString(), "database active: quom.q07");
        EXPECT_EQ(w.txtOpenFile->text().toStdString(), "a.QC6") << "the project in force";
        mark(w, "b.qc6");
        w.Text2->setPlainText(QStringLiteral("lost"));
        QTest::keyClick(&w, Qt::Key_Escape);
        EXPECT_FALSE(w.isVisible());
    });
    EXPECT_TRUE(document() == before);
    EXPECT_EQ(session().shell.ProjectTitle, "a.QC6");
}

TEST_F(ProjectWindows, the_dialog_deletes_after_a_question_and_opens_by_a_double_click) {
    write("a.QC6", project_text());
    write("b.QC6", project_text());
    session().shell.ProjectFolder = folder.path().toStdString();
    in_dialog("mnuData_LoadProject", [&](frmQCmnDlg& w) {
        mark(w, "a.QC6");
        for (const Answer answer : {Answer::no, Answer::yes}) {
            messages.answers = {answer};
            QTest::keyClick(w.filOpenList, Qt::Key_Delete);
            ASSERT_THAT(messages.asked, SizeIs(1));
            EXPECT_EQ(messages.asked[0].title, "Confirm deleting");
            EXPECT_EQ(messages.asked[0].text, "File a.QC6 really delete?");
            EXPECT_EQ(messages.asked[0].default_button, Answer::no);
            messages.take();
            EXPECT_EQ(QFile::exists(at("a.QC6")), answer == Answer::no);
        }
        EXPECT_THAT(names(w.filOpenList), ElementsAre("b.QC6"));
        EXPECT_EQ(w.txtOpenFile->text().toStdString(), "b.QC6") << "the next one is marked";
        mark(w, "b.QC6");
        QTest::mouseDClick(w.filOpenList->viewport(), Qt::LeftButton, {},
                           w.filOpenList->visualItemRect(w.filOpenList->item(0)).center());
        EXPECT_FALSE(w.isVisible());
    });
    EXPECT_EQ(session().shell.ProjectTitle, "b.QC6");
}

TEST_F(ProjectWindows, the_dialog_previews_data_files) {
    open_starter_database();
    write("m.BAQ", data_text("74-98-6     ;Propane", "old set"));
    write("n.baq", data_text("99-99-9     ;Unknown"));
    write("empty.BAQ", "");
    frame.set_dialogs(std::make_unique<Dialogs>());
    QTimer::singleShot(0, &frame, [&] {
        auto* w = qobject_cast<frmQCmnDlg*>(QApplication::activeModalWidget());
        ASSERT_TRUE(w);
        EXPECT_EQ(w->fraViewStoff->title().toStdString(), "File information");
        EXPECT_THAT(names(w->filOpenList), ElementsAre("empty.BAQ", "m.BAQ", "n.baq"));
        mark(*w, "m.BAQ");
        EXPECT_EQ(w->lblDate->text().toStdString(), "2026-11-19");
        EXPECT_THAT(w->lblStoff->text().toStdString(), AllOf(HasSubstr("Propane"), HasSubstr("74-98-6")));
        EXPECT_EQ(w->lblExp->text().toStdString(), "2  experimental points");
        EXPECT_EQ(w->Text2->toPlainText().toStdString(), "old set");
        EXPECT_TRUE(w->Text2->isReadOnly());
        EXPECT_FALSE(w->lblBank->isVisible());
        mark(*w, "n.baq");
        EXPECT_EQ(w->lblStoff->text().toStdString(), "substance not found in the present database");
        EXPECT_THAT(messages.take(), IsEmpty());
        mark(*w, "empty.BAQ");
        EXPECT_THAT(messages.take(), SizeIs(1));
        mark(*w, "m.BAQ");
        w->cmdOpenOK->click();
    });
    const auto opened = open_with_preview(frame, {.title = QStringLiteral("Load data file (with preview)"),
                                                  .folder = folder.path().toStdString(),
                                                  .mask = "*.BAQ"});
    ASSERT_TRUE(opened);
    EXPECT_EQ(opened->path, at("m.BAQ").toStdString());
    EXPECT_FALSE(opened->comment);
}

TEST_F(ProjectWindows, a_text_is_asked_for_in_a_window_of_its_own) {
    for (const bool accept : {true, false}) {
        QTimer::singleShot(0, &frame, [&] {
            auto* window = qobject_cast<TextQuestion*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window);
            EXPECT_EQ(window->windowTitle().toStdString(), " File comment (optional) ");
            EXPECT_EQ(window->txtText->selectedText().toStdString(), "old");
            QTest::keyClicks(window->txtText, QStringLiteral("new"));
            QTest::keyClick(window->txtText, accept ? Qt::Key_Return : Qt::Key_Escape);
        });
        const auto text = Dialogs().ask_text(&frame, QStringLiteral(" File comment (optional) "),
                                             QStringLiteral("<Cancel> = No Comment"), QStringLiteral("old"));
        EXPECT_EQ(text, accept ? std::optional(QStringLiteral("new")) : std::nullopt);
    }
}

}  // namespace
}  // namespace quom
