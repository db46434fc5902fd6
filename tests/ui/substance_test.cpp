#include <QLabel>
#include <QLineEdit>
#include <QListView>

#include "ui/main/status_panel.h"
#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::Pair;
using ::testing::StartsWith;

class SubstanceWindow : public WindowDriver {
 protected:
    SubstanceWindow() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
        open_starter_database();
        window = frame.child<frmQStoffWahl>();
    }
    // Keys go to what has the focus, as a keyboard's do.
    static void key(Qt::Key k) { QTest::keyClick(QApplication::focusWidget(), k); }
    void type_name(const char* text) const {
        window->NameCombo->setFocus();
        window->NameCombo->lineEdit()->selectAll();
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
    }
    std::string marked() const { return window->StoffListe->currentIndex().data().toString().toStdString(); }
    std::string row(int i) const {
        return window->StoffListe->model()->index(i, 0).data().toString().toStdString();
    }
    int rows() const { return window->StoffListe->model()->rowCount(); }
    std::string name() const { return window->NameCombo->currentText().toStdString(); }
    std::string casrn() const { return window->tex4->text().toStdString(); }
    std::string told() const { return window->notice->text().toStdString(); }
    bool is_open() const { return window->isVisible(); }

    frmQStoffWahl* window = nullptr;
};

TEST_F(SubstanceWindow, shows_the_database) {
    ASSERT_TRUE(window && is_open());
    const int count = session().database.StoffAnzahl();
    EXPECT_EQ(window->windowTitle().toStdString(),
              "Select a substance (in total  " + std::to_string(count) + ")");
    EXPECT_EQ(rows(), count);
    EXPECT_EQ(window->txtDatenbank->text().toStdString(), "quom.q07");
    EXPECT_THAT(marked(), StartsWith("1     "));
    EXPECT_EQ(window->StoffOK->text().toStdString(), " Continue >\nLoad data");
    EXPECT_EQ(QApplication::focusWidget(), window->NameCombo);
}

TEST_F(SubstanceWindow, enter_takes_the_best_hit) {
    type_name("propan");  // german
    EXPECT_THAT(marked(), HasSubstr("Propane"));
    EXPECT_EQ(name(), "propan") << "the box keeps what is typed";
    EXPECT_EQ(casrn(), "CAS-RN:   74-98-6");
    EXPECT_THAT(window->Text2->text().toStdString(), StartsWith("structure: "));
    EXPECT_THAT(window->lblMarks->text().toStdString(), HasSubstr("fit: p(LV), Wagner"));
    EXPECT_THAT(window->lblMarks->toolTip().toStdString(), HasSubstr("p(LV), Wagner: fit, fitted here "));
    EXPECT_TRUE(is_open());
    EXPECT_EQ(document().substance.StoffIndexAktiv, 0);
    key(Qt::Key_Return);
    EXPECT_FALSE(is_open());
    EXPECT_EQ(session().substance().StoffName, "Propane");
    EXPECT_EQ(frame.panels[1]->text().toStdString(), "Propane");
    ASSERT_TRUE(frame.child<frmQModell>());
    EXPECT_EQ(frame.child<frmQModell>()->windowTitle().toStdString(), "Propane Calculation Models for ");
    EXPECT_TRUE(enabled("mnuModel"));
    EXPECT_FALSE(enabled("mnuCalcMain"));
    EXPECT_TRUE(messages.take().empty());
}

// Typed letter by letter, the row that a user means is marked and "Continue >" takes it.
TEST_F(SubstanceWindow, what_is_typed_finds_the_substance_that_is_meant) {
    const struct {
        const char *typed, *name, *casrn;
    } rows[] = {{"isobut", "Isobutane", "75-28-5"}, {"Wasser", "Water", "7732-18-5"},
                {"butan", "Butane", "106-97-8"},    {"CO", "Carbon monoxide", "630-08-0"},
                {"C3H8", "Propane", "74-98-6"},     {"74-98-6", "Propane", "74-98-6"}};
    for (const auto& row : rows) {
        menu("mnuStoffwahl")->trigger();
        type_name(row.typed);
        EXPECT_THAT(marked(), HasSubstr(row.name)) << row.typed;
        EXPECT_EQ(window->StoffListe->currentIndex().row(), 0) << row.typed;
        EXPECT_EQ(casrn(), std::string("CAS-RN:   ") + row.casrn) << row.typed;
        press(window, "StoffOK");
        EXPECT_EQ(session().substance().StoffName, row.name) << row.typed;
    }
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(SubstanceWindow, the_list_shows_what_is_found_best_first) {
    const int all = rows();
    type_name("isobut");
    EXPECT_THAT(window->lblFound->text().toStdString(),
                StartsWith(std::to_string(rows()) + " of " + std::to_string(all) + ", best first"));
    const QAbstractItemModel* list = window->StoffListe->model();
    std::string last = list->index(rows() - 1, 0).data(Qt::AccessibleTextRole).toString().toStdString();
    EXPECT_THAT(last, HasSubstr("synonym ISOBUT")) << "found by a text that the line does not hold";
    type_name("butan");
    EXPECT_THAT(row(0), HasSubstr("Butane"));
    EXPECT_THAT(row(1), HasSubstr("Butanal"));

    key(Qt::Key_Down);  // into the list, the mark stays
    EXPECT_EQ(QApplication::focusWidget(), window->StoffListe);
    EXPECT_THAT(marked(), HasSubstr("Butane"));
    key(Qt::Key_Down);
    EXPECT_EQ(name(), "Butanal");
    EXPECT_EQ(casrn(), "CAS-RN:   123-72-8");
    key(Qt::Key_Return);
    EXPECT_EQ(session().substance().StoffName, "Butanal");

    menu("mnuStoffwahl")->trigger();
    type_name("x");
    key(Qt::Key_Backspace);  // nothing typed: all rows in the order of the file
    EXPECT_EQ(rows(), all);
    EXPECT_THAT(row(0), StartsWith("1     "));
    EXPECT_TRUE(window->lblFound->text().isEmpty());
    EXPECT_TRUE(window->StoffOK->isEnabled());
}

TEST_F(SubstanceWindow, what_is_not_found_is_said_in_place) {
    type_name("Etanol");
    EXPECT_TRUE(window->notice->isVisible());
    EXPECT_THAT(told(),
                StartsWith("Nothing found. No name, synonym, formula or CAS number contains \"Etanol\"."));
    EXPECT_THAT(told(), HasSubstr("Did you mean one of these?"));
    EXPECT_THAT(row(0), HasSubstr("Ethanol"));
    EXPECT_LE(rows(), 5);
    EXPECT_TRUE(window->StoffListe->selectionModel()->selectedIndexes().isEmpty());
    EXPECT_EQ(casrn(), "CAS-RN:   ");
    EXPECT_TRUE(window->Text1->text().isEmpty() && window->lblMarks->text().isEmpty());
    EXPECT_FALSE(window->StoffOK->isEnabled() || window->cmdSynonyme->isEnabled());

    key(Qt::Key_Return);  // marks the guess and takes none
    EXPECT_TRUE(is_open());
    EXPECT_EQ(document().substance.StoffIndexAktiv, 0);
    EXPECT_THAT(marked(), HasSubstr("Ethanol"));
    EXPECT_EQ(casrn(), "CAS-RN:   64-17-5");
    EXPECT_EQ(name(), "Etanol");
    key(Qt::Key_Return);  // seen, it is taken
    EXPECT_EQ(session().substance().StoffName, "Ethanol");

    menu("mnuStoffwahl")->trigger();
    EXPECT_FALSE(window->notice->isVisible());
    type_name("Etanol");
    key(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), window->StoffListe);
    EXPECT_THAT(marked(), HasSubstr("Ethanol"));
    type_name("unobtainium");
    EXPECT_EQ(rows(), 0);
    EXPECT_THAT(told(), Not(HasSubstr("Did you mean")));
    for (const auto k : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return}) key(k);
    EXPECT_TRUE(is_open());
    type_name("water");
    EXPECT_FALSE(window->notice->isVisible());
    EXPECT_TRUE(messages.take().empty()) << "no box";
}

TEST_F(SubstanceWindow, a_substance_that_the_database_lacks_is_said_in_place) {
    QFile file(folder.filePath(QStringLiteral("SYNOM7.TXT")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("99-99-9\r\n#X\r\nUNOBTAINIUM\r\n\r\nEND\r\n");
    file.close();
    open_starter_database();
    window = frame.child<frmQStoffWahl>();
    type_name("unobtainium");
    EXPECT_EQ(told(), "CASRN 99-99-9 This substance is not involved in the database ");
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(SubstanceWindow, a_missing_file_of_synonyms_is_said_once) {
    const QString file = folder.filePath(QStringLiteral("SYNOM7.TXT"));
    ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".away")));
    open_starter_database();
    window = frame.child<frmQStoffWahl>();
    for (const std::size_t times : {1u, 0u}) {
        const auto told = messages.take();
        ASSERT_EQ(told.size(), times);
        for (const auto& [title, text] : told)
            EXPECT_THAT(text, HasSubstr("has no file of synonyms SYNOM7.TXT"));
        key(Qt::Key_Escape);
        key(Qt::Key_Escape);
        EXPECT_FALSE(is_open());
        menu("mnuStoffwahl")->trigger();
    }
    type_name("Wasser");
    EXPECT_THAT(marked(), HasSubstr("Water")) << "a name of the database";
    type_name("R50");
    EXPECT_EQ(rows(), 0);
    ASSERT_TRUE(QFile::rename(file + QStringLiteral(".away"), file));  // mended
    menu("mnuStoffwahl")->trigger();
    type_name("R50");
    EXPECT_THAT(marked(), HasSubstr("Methane"));
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(SubstanceWindow, system_numbers) {
    const int number = session().database.rows[9].SubstanceNo;
    window->Text1->setFocus();
    window->Text1->clear();
    QTest::keyClicks(window->Text1, QString::number(number));
    EXPECT_THAT(marked(), StartsWith("10    "));
    window->Text1->setText(QStringLiteral("0001"));
    QTest::keyClicks(window->Text1, QStringLiteral("1"));  // five characters do nothing
    EXPECT_THAT(marked(), StartsWith("10    "));
    window->Text1->clear();
    QTest::keyClicks(window->Text1, QStringLiteral("0"));
    EXPECT_TRUE(window->Text1->text().isEmpty());
    EXPECT_EQ(session().StoffIndex, 10);
}

TEST_F(SubstanceWindow, remembers_eight_names) {
    const char* const names[] = {"Methane", "Ethane", "Propane",  "Benzene", "Toluene",
                                 "Water",   "Helium", "Nitrogen", "Oxygen"};
    for (const char* text : names) {
        menu("mnuStoffwahl")->trigger();
        type_name(text);
        key(Qt::Key_Return);
    }
    ASSERT_EQ(window->NameCombo->count(), 8);
    EXPECT_EQ(window->NameCombo->itemText(0).toStdString(), "Ethane");
    EXPECT_EQ(window->NameCombo->itemText(7).toStdString(), "Oxygen");
    menu("mnuStoffwahl")->trigger();
    EXPECT_EQ(name(), "Oxygen");
    key(Qt::Key_Up);  // through the names, each of which is looked up
    EXPECT_THAT(marked(), HasSubstr("Nitrogen"));
}

TEST_F(SubstanceWindow, escape_goes_to_the_list_and_then_out_with_nothing_changed) {
    choose_substance("Propane");
    press(frame.child<frmQModell>(), "cmdOKModell");
    menu("mnuStoffwahl")->trigger();
    EXPECT_THAT(marked(), HasSubstr("Propane"));
    type_name("benzene");
    key(Qt::Key_Escape);
    EXPECT_TRUE(is_open());
    EXPECT_EQ(QApplication::focusWidget(), window->StoffListe);
    key(Qt::Key_Escape);
    EXPECT_FALSE(is_open());
    EXPECT_EQ(session().substance().StoffName, "Propane");
    EXPECT_EQ(session().StoffIndex, document().substance.StoffIndexAktiv);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_TRUE(frame.child<frmQModell>());
}

TEST_F(SubstanceWindow, a_new_substance_asks_what_becomes_of_the_data) {
    change([](Document& d) { d.exp.points.edit().resize(3); });
    messages.answers = {Answer::no};
    choose_substance("Propane");
    EXPECT_THAT(
        messages.take(),
        ElementsAre(Pair("exper. data", "New substance was chosen.\nDelete loaded exper. data now?")));
    EXPECT_EQ(document().exp.points.size(), 3u);
    messages.answers = {Answer::yes};
    choose_substance("Benzene");
    EXPECT_EQ(document().exp.points.size(), 1u);
}

TEST_F(SubstanceWindow, shows_the_synonyms_of_the_marked_substance) {
    type_name("propane");
    press(window, "cmdSynonyme");
    auto* list = frame.child<frmQTextEdit>();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->windowTitle().toStdString(), " List of synonyms");
    EXPECT_THAT(list->head->toPlainText().toStdString(), HasSubstr("CAS-RN: 74-98-6"));
    EXPECT_THAT(list->text->toPlainText().toStdString(), HasSubstr("PROPAN"));
    QTest::keyClick(list->text, Qt::Key_Escape);
    EXPECT_FALSE(frame.child<frmQTextEdit>());
    EXPECT_TRUE(is_open());
}

TEST_F(WindowDriver, no_substance_without_a_database) {
    frmQStoffWahl::open(frame);
    EXPECT_FALSE(frame.child<frmQStoffWahl>());
    const auto told = messages.take();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].second,
              "A database must be selected before choosing a substance. \n"
              "=> via icon \"New project\" or via Menüpunkt \"Daten\" or via menue item \"Data\"");
}

}  // namespace
}  // namespace quom
