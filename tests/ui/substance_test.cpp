#include <QLabel>
#include <QLineEdit>
#include <QListView>

#include "ui/main/status_panel.h"
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
using ::testing::Pair;
using ::testing::StartsWith;

class SubstanceWindow : public WindowDriver {
 protected:
    SubstanceWindow() {
        open_starter_database();
        window = frame.child<frmQStoffWahl>();
    }
    void type_name(const char* text) const {
        window->NameCombo->lineEdit()->selectAll();
        QTest::keyClicks(window->NameCombo->lineEdit(), QString::fromUtf8(text));
    }
    void key(Qt::Key k) const { QTest::keyClick(window->NameCombo->lineEdit(), k); }
    std::string marked() const { return window->StoffListe->currentIndex().data().toString().toStdString(); }
    std::string name() const { return window->NameCombo->currentText().toStdString(); }
    bool is_open() const { return window->isVisible(); }

    frmQStoffWahl* window = nullptr;
};

TEST_F(SubstanceWindow, shows_the_database) {
    ASSERT_TRUE(window && is_open());
    const int count = session().database.StoffAnzahl();
    EXPECT_EQ(window->windowTitle().toStdString(),
              "Select a substance (in total  " + std::to_string(count) + ")");
    EXPECT_EQ(window->StoffListe->model()->rowCount(), count);
    EXPECT_EQ(window->txtDatenbank->text().toStdString(), "quom.q07");
    EXPECT_THAT(marked(), StartsWith("1     "));
    EXPECT_EQ(window->StoffOK->text().toStdString(), " Continue >\nLoad data");
}

TEST_F(SubstanceWindow, enter_finds_and_a_second_enter_goes_on_to_the_models) {
    type_name("propan");  // german
    key(Qt::Key_Return);
    EXPECT_THAT(marked(), HasSubstr("Propane"));
    EXPECT_EQ(name(), "Propane");
    EXPECT_EQ(window->tex4->text().toStdString(), "CAS-RN:   74-98-6");
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

TEST_F(SubstanceWindow, a_name_that_is_not_found_loads_nothing) {
    type_name("propane");
    key(Qt::Key_Return);
    type_name("unobtainium");
    key(Qt::Key_Return);
    EXPECT_THAT(messages.take(), ElementsAre(Pair("ERROR: Selection of a substance", "Nothing found.")));
    EXPECT_EQ(name(), "Propane");  // the entry marked in the list is shown again
    type_name("unobtainium");
    press(window, "StoffOK");
    EXPECT_EQ(messages.take().size(), 1u);
    EXPECT_TRUE(is_open());
    EXPECT_EQ(document().substance.StoffIndexAktiv, 0);
    EXPECT_FALSE(frame.child<frmQModell>());
}

TEST_F(SubstanceWindow, typing_filters_the_list_and_keeps_the_choice) {
    const int all = window->StoffListe->model()->rowCount();
    type_name("propan");
    const int some = window->StoffListe->model()->rowCount();
    EXPECT_GT(some, 1);
    EXPECT_LT(some, all / 4);
    EXPECT_EQ(session().StoffIndex, 1);
    type_name("unobtainium");
    EXPECT_EQ(window->StoffListe->model()->rowCount(), all);
    type_name("74-98-6");
    EXPECT_EQ(window->StoffListe->model()->rowCount(), 1);
    key(Qt::Key_Return);
    EXPECT_EQ(window->StoffListe->model()->rowCount(), all);
    EXPECT_THAT(marked(), HasSubstr("Propane"));

    type_name("1-propanol");
    key(Qt::Key_Down);  // to the filtered list
    window->StoffListe->setCurrentIndex(window->StoffListe->model()->index(0, 0));
    EXPECT_EQ(name(), "1-Propanol");
    QTest::keyClick(window->StoffListe, Qt::Key_Return);
    EXPECT_EQ(session().substance().StoffName, "1-Propanol");
}

TEST_F(SubstanceWindow, the_best_hit_is_on_top_and_close_spellings_are_shown) {
    const auto row = [&](int i) {
        return window->StoffListe->model()->index(i, 0).data().toString().toStdString();
    };
    type_name("butan");
    EXPECT_THAT(row(0), HasSubstr("Butane"));
    EXPECT_THAT(row(1), HasSubstr("Butanal"));
    type_name("Etanol");
    EXPECT_THAT(row(0), HasSubstr("Ethanol"));
    key(Qt::Key_Return);  // a guess is not taken
    EXPECT_THAT(messages.take(), ElementsAre(Pair("ERROR: Selection of a substance", "Nothing found.")));
    EXPECT_EQ(session().StoffIndex, 1);
    type_name("co2");
    key(Qt::Key_Return);
    EXPECT_EQ(name(), "Carbon dioxide");
    EXPECT_EQ(window->StoffListe->model()->rowCount(), session().database.StoffAnzahl());
    EXPECT_THAT(row(0), StartsWith("1     "));
}

TEST_F(SubstanceWindow, a_missing_file_of_synonyms_is_said_once) {
    ASSERT_TRUE(QFile::remove(folder.filePath(QStringLiteral("SYNOM7.TXT"))));
    for (const std::size_t times : {1u, 0u}) {
        menu("mnuStoffwahl")->trigger();
        const auto told = messages.take();
        ASSERT_EQ(told.size(), times);
        for (const auto& [title, text] : told)
            EXPECT_THAT(text, HasSubstr("has no file of synonyms SYNOM7.TXT"));
        key(Qt::Key_Escape);
        QTest::keyClick(window->StoffListe, Qt::Key_Escape);
    }
    menu("mnuStoffwahl")->trigger();
    type_name("Wasser");
    key(Qt::Key_Return);
    EXPECT_EQ(name(), "Water") << "a name of the database";
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
        type_name(text);
        key(Qt::Key_Return);
    }
    ASSERT_EQ(window->NameCombo->count(), 8);
    EXPECT_EQ(window->NameCombo->itemText(0).toStdString(), "Ethane");
    EXPECT_EQ(window->NameCombo->itemText(7).toStdString(), "Oxygen");
}

TEST_F(SubstanceWindow, escape_goes_to_the_list_and_then_out_with_nothing_changed) {
    choose_substance("Propane");
    press(frame.child<frmQModell>(), "cmdOKModell");
    menu("mnuStoffwahl")->trigger();
    EXPECT_THAT(marked(), HasSubstr("Propane"));
    type_name("benzene");
    key(Qt::Key_Return);
    key(Qt::Key_Escape);
    EXPECT_TRUE(is_open());
    QTest::keyClick(window->StoffListe, Qt::Key_Escape);
    EXPECT_FALSE(is_open());
    EXPECT_EQ(session().substance().StoffName, "Propane");
    EXPECT_EQ(session().StoffIndex, document().substance.StoffIndexAktiv);
    EXPECT_TRUE(enabled("mnuCalcMain"));
    EXPECT_TRUE(frame.child<frmQModell>());
}

TEST_F(SubstanceWindow, a_new_substance_asks_what_becomes_of_the_data) {
    change([](Document& d) { d.exp.points.resize(3); });
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
    key(Qt::Key_Return);
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
