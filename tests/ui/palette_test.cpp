// Ctrl+K and the other keys of the whole program, sent to whatever has the focus.
#include "ui/main/palette.h"

#include <QLineEdit>
#include <QListView>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QTimer>

#include "ui/main/calculation_windows.h"
#include "ui/main/mdi_area.h"
#include "ui/main/menu_actions.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/help_window.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class PaletteTest : public WindowDriver {
 protected:
    PaletteTest() : palette(*frame.findChild<Palette*>()) {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus || QApplication::activeWindow());
        QTest::keyClick(focus ? focus : QApplication::activeWindow(), key, with);
    }
    void find(const char* text) {
        key(Qt::Key_K, Qt::ControlModifier);
        ASSERT_TRUE(palette.isVisible());
        ASSERT_EQ(QApplication::focusWidget(), palette.txtFind);
        QTest::keyClicks(QApplication::focusWidget(), QLatin1String(text));
    }
    int rows() const { return palette.lstHits->model()->rowCount(); }
    std::string text(int row) const { return at(row).data().toString().toStdString(); }
    std::string description(int row) const {
        return at(row).data(Qt::AccessibleDescriptionRole).toString().toStdString();
    }
    std::string marked() const { return palette.lstHits->currentIndex().data().toString().toStdString(); }
    QModelIndex at(int row) const { return palette.lstHits->model()->index(row, 0); }

    Palette& palette;
};

TEST_F(PaletteTest, a_german_name_at_the_start_opens_database_substance_and_models) {
    find("wasser");
    ASSERT_GE(rows(), 1);
    EXPECT_EQ(text(0), "Water");
    EXPECT_THAT(description(0), HasSubstr("Substance"));
    key(Qt::Key_Return);
    EXPECT_FALSE(palette.isVisible());
    EXPECT_EQ(session().substance().StoffName, "Water");
    EXPECT_TRUE(frame.child<frmQModell>());
    EXPECT_TRUE(messages.take().empty());
    find("");
    ASSERT_EQ(rows(), 1);  // what was used last
    EXPECT_EQ(text(0), "Water");
}

TEST_F(PaletteTest, what_cannot_run_says_why_and_is_passed) {
    find("Heat of vaporization: T");
    ASSERT_GE(rows(), 1);
    EXPECT_THAT(description(0), HasSubstr("first open a database"));
    EXPECT_FALSE(at(0).flags() & Qt::ItemIsEnabled);
    key(Qt::Key_Return);
    EXPECT_TRUE(palette.isVisible());
    EXPECT_FALSE(frame.child<frmParinput>());
    key(Qt::Key_Escape);

    go_to_calculations();
    find("Fitting Tool");
    EXPECT_THAT(description(0), HasSubstr("not yet available"));
    key(Qt::Key_Escape);
    find("vaporiz");
    const std::string first = marked();
    EXPECT_EQ(first, text(0));
    key(Qt::Key_Up);
    EXPECT_EQ(marked(), first);
    key(Qt::Key_Down);
    EXPECT_EQ(marked(), text(1));
    for (int i = 0; i < 40; ++i) key(Qt::Key_Down);
    EXPECT_TRUE(palette.lstHits->currentIndex().flags() & Qt::ItemIsEnabled);
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    key(Qt::Key_PageUp);
    EXPECT_EQ(marked(), first);
}

TEST_F(PaletteTest, it_calculates_and_the_focus_returns_to_the_box_that_had_it) {
    go_to_calculations();
    find("T, p => rho");
    ASSERT_EQ(text(0), "T, p => rho, State L/V + Functions");
    key(Qt::Key_Return);
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    ASSERT_EQ(QApplication::focusWidget(), input->par[0]);
    QTest::keyClicks(input->par[0], QStringLiteral("350"));
    // Ctrl+K reaches the palette from a box of text, and a second one closes it.
    find("opt");
    key(Qt::Key_K, Qt::ControlModifier);
    EXPECT_FALSE(palette.isVisible());
    EXPECT_EQ(QApplication::focusWidget(), input->par[0]);
    EXPECT_EQ(input->par[0]->text().toStdString(), "350");
    find("opt");
    QTest::mouseClick(input->par[1], Qt::LeftButton);  // a press outside
    EXPECT_FALSE(palette.isVisible());
    find("peng");
    QTest::mouseClick(palette.lstHits->viewport(), Qt::LeftButton, {},
                      palette.lstHits->visualRect(at(0)).center());
    EXPECT_FALSE(palette.isVisible());
    EXPECT_TRUE(frame.child<frmQModell>()->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(PaletteTest, its_button_opens_it_over_the_frame_and_a_modal_box_keeps_it_away) {
    for (const QSize size : {QSize(960, 640), QSize(1400, 900)}) {
        frame.resize(size);
        QTest::mouseClick(frame.cmdFind, Qt::LeftButton);
        ASSERT_TRUE(palette.isVisible());
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("e"));
        QApplication::processEvents();
        EXPECT_TRUE(frame.rect().contains(palette.geometry()));
        EXPECT_NEAR(palette.geometry().center().x(), frame.rect().center().x(), 1);
        EXPECT_LE(palette.lstHits->height(), 10 * (palette.fontMetrics().height() + 12));
        key(Qt::Key_Escape);
    }
    QMessageBox box(&frame);
    bool looked = false;
    QTimer::singleShot(0, &frame, [&] {
        key(Qt::Key_K, Qt::ControlModifier);
        EXPECT_FALSE(palette.isVisible());
        looked = true;
        box.close();
    });
    box.exec();
    EXPECT_TRUE(looked);
}

TEST_F(PaletteTest, open_windows_and_help_pages_are_found) {
    go_to_calculations();
    find("calculation models");
    ASSERT_GE(rows(), 1);
    EXPECT_THAT(description(0), HasSubstr("Window"));
    key(Qt::Key_Escape);
    find("wagner equ");
    int help = -1;
    for (int row = 0; row < rows(); ++row)
        if (description(row).starts_with("Help")) help = row;
    ASSERT_GE(help, 0);
    while (palette.lstHits->currentIndex().row() < help) key(Qt::Key_Down);
    key(Qt::Key_Return);
    auto* window = frame.findChild<HelpWindow*>();
    ASSERT_TRUE(window && window->isVisible());
    EXPECT_EQ(window->topic(), 33);
}

TEST_F(PaletteTest, keys_of_the_program_work_from_any_box) {
    dialogs->files.push_back(folder.filePath(QStringLiteral("quom.q07")));
    key(Qt::Key_O, Qt::ControlModifier);
    ASSERT_TRUE(frame.child<frmQStoffWahl>());
    key(Qt::Key_F1);
    auto* help = frame.findChild<HelpWindow*>();
    ASSERT_TRUE(help);
    EXPECT_EQ(help->topic(), 10);
    help->close();
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));

    choose_substance("Propane");
    press(frame.child<frmQModell>(), "cmdOKModell");
    menu("mnuCalc_2")->trigger();
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("350"));
    key(Qt::Key_Return);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("1000"));
    EXPECT_FALSE(frame.child<frmQCalcOut>());
    key(Qt::Key_F5);
    EXPECT_TRUE(frame.child<frmQCalcOut>());
    key(Qt::Key_F1);
    EXPECT_EQ(help->topic(), 82);
    help->close();
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    bool opened = false;
    QTimer::singleShot(0, &frame, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            opened = modal->objectName() == QStringLiteral("frmQOptions");
            modal->close();
        }
    });
    key(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_TRUE(opened);
    frame.unload_session_windows();
    QTest::keyClick(&frame, Qt::Key_F5);  // nothing to calculate
}

}  // namespace
}  // namespace quom
