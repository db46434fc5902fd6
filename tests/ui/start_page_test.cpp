// The start page under a user's hands: keys to what has the focus, presses where the rows are.
#include "ui/main/start_page.h"

#include <QMdiSubWindow>

#include "calc/outcome.h"
#include "ui/main/mdi_area.h"
#include "ui/main/quick_start.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmQTextEdit.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class StartPageTest : public WindowDriver {
 protected:
    StartPageTest() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    static void key(int key) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    }
    static StartRowButton* row_in_focus() {
        return qobject_cast<StartRowButton*>(QApplication::focusWidget());
    }
    static std::vector<std::string> texts(const mdiQUOM& of, bool enabled) {
        std::vector<std::string> list;
        for (const auto* row : of.start_page->findChildren<StartRowButton*>())
            if (row->isEnabled() == enabled) list.push_back(row->text().toStdString());
        return list;
    }
    static StartRowButton* row(const mdiQUOM& of, const char* text) {
        for (auto* row : of.start_page->findChildren<StartRowButton*>())
            if (row->text().startsWith(QLatin1String(text))) return row;
        ADD_FAILURE() << text;
        return nullptr;
    }
    static void press_row(const mdiQUOM& of, const char* text) {
        StartRowButton* button = row(of, text);
        ASSERT_TRUE(button);
        QApplication::processEvents();
        of.start_page->ensureWidgetVisible(button);
        QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
    }
};

TEST_F(StartPageTest, enter_begins_with_the_starter_database) {
    ASSERT_TRUE(frame.start_page->isVisible());
    ASSERT_TRUE(row_in_focus());
    EXPECT_EQ(row_in_focus()->text().toStdString(), "Open the starter database");
    EXPECT_EQ(row_in_focus()->accessibleDescription().toStdString(),
              "quom.q07, " + std::to_string(496) + " substances");
    key(Qt::Key_Return);
    EXPECT_TRUE(frame.child<frmQStoffWahl>());
    EXPECT_EQ(session().database.StoffAnzahl(), 496);
    EXPECT_FALSE(frame.start_page->isVisible());
}

TEST_F(StartPageTest, arrows_pass_the_rows_that_cannot_act_and_these_say_why) {
    EXPECT_THAT(texts(frame, false), ElementsAre("Load last session"));
    EXPECT_EQ(row(frame, "Load last session")->accessibleDescription().toStdString(), "none was saved yet");
    key(Qt::Key_Down);
    ASSERT_TRUE(row_in_focus());
    EXPECT_EQ(row_in_focus()->text().toStdString(), "Load a project *.QC6 ...");
    key(Qt::Key_Down);
    EXPECT_EQ(row_in_focus()->text().toStdString(), "Open database *.Q07 / new project ...");
    key(Qt::Key_Down);  // the last one of its card
    EXPECT_EQ(row_in_focus()->text().toStdString(), "Open database *.Q07 / new project ...");
    key(Qt::Key_Space);
    ASSERT_EQ(dialogs->asked.size(), 1u);  // cancelled
    EXPECT_TRUE(frame.start_page->isVisible());
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(row_in_focus()->text().toStdString(), "Open the starter database");
    key(Qt::Key_Up);
    for (int row = 1; row <= 3; ++row) key(Qt::Key_Tab);  // over the rows that can act
    EXPECT_EQ(row_in_focus()->text().toStdString(), "A state: propane at 350 K and 1000 kPa");
}

TEST_F(StartPageTest, any_window_hides_the_page_and_its_end_brings_it_back) {
    frmQTextEdit::open(frame, QStringLiteral("note"), "head", "text");
    EXPECT_FALSE(frame.start_page->isVisible());
    frame.unload(frmQTextEdit::Name);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
    EXPECT_TRUE(frame.start_page->isVisible());
    EXPECT_TRUE(row_in_focus());
    EXPECT_TRUE(frame.area->subWindowList().isEmpty());
    // With a database the hint of the area is what remains.
    key(Qt::Key_Return);
    frame.hide_child(frame.child<frmQStoffWahl>());
    EXPECT_FALSE(frame.start_page->isVisible());
    EXPECT_THAT(frame.area->accessibleDescription().toStdString(), HasSubstr("No substance is chosen."));
}

TEST_F(StartPageTest, examples_calculate_what_they_say) {
    struct Wanted {
        const char* text;
        const char* substance;
        double T, T_within, p, p_within;
    };
    // Water boils at 373.124 K (IAPWS-95), ammonia at 300 K under 1061.7 kPa (NIST Chemistry WebBook); a
    // cubic equation comes within half a percent.
    const Wanted examples[] = {{"A state", "Propane", 350, 1e-9, 1000, 1e-9},
                               {"Boiling", "Water", 373.124, 1.9, 101.325, 1e-9},
                               {"A tank", "Ammonia", 300, 1e-9, 1061.7, 5.3}};
    for (const Wanted& wanted : examples) {
        mdiQUOM other(folder.path().toStdString());
        QueuedMessages quiet;
        other.bench().listen(quiet);
        other.show();
        other.start({});
        press_row(other, wanted.text);
        EXPECT_EQ(other.session().substance().StoffName, wanted.substance);
        EXPECT_TRUE(other.child<frmQCalcOut>()) << wanted.text;
        EXPECT_FALSE(other.start_page->isVisible());
        const Outcome* outcome = current_outcome(other.session());
        ASSERT_TRUE(outcome && outcome->T && outcome->p) << wanted.text;
        EXPECT_NEAR(*outcome->T, wanted.T, wanted.T_within) << wanted.text;
        EXPECT_NEAR(*outcome->p, wanted.p, wanted.p_within) << wanted.text;
        EXPECT_TRUE(quiet.take().empty()) << wanted.text;
    }
}

TEST_F(StartPageTest, substances_taken_last_stand_there_in_the_next_session) {
    const QString file = folder.filePath(QStringLiteral("memory.ini"));
    const QString second_database = folder.filePath(QStringLiteral("own.q07"));
    ASSERT_TRUE(QFile::copy(folder.filePath(QStringLiteral("quom.q07")), second_database));
    frame.bench().memory = UiMemory(file);
    open_starter_database();
    for (const char* name : {"Water", "Propane", "Methane", "Ethane", "Butane", "Propane", "Ammonia"})
        choose_substance(name);
    dialogs->files.push_back(second_database);
    menu("mnuData_OpenBank_0")->trigger();
    choose_substance("Toluene");
    frame.bench().memory = UiMemory();

    mdiQUOM next(folder.path().toStdString());
    QueuedMessages quiet;
    next.bench().listen(quiet);
    next.bench().memory = UiMemory(file);
    next.show();
    next.start({});
    EXPECT_THAT(texts(next, true), ElementsAre("Open the starter database", "Load a project *.QC6 ...",
                                               "Open database *.Q07 / new project ...", "Toluene", "Ammonia",
                                               "Propane", "Butane", "Ethane"));
    EXPECT_EQ(row(next, "No project")->accessibleDescription().toStdString(), "none was saved yet");
    press_row(next, "Propane");
    EXPECT_EQ(next.session().substance().StoffName, "Propane");
    EXPECT_TRUE(next.child<frmQModell>());

    // A database that is gone takes its substances with it.
    ASSERT_TRUE(QFile::remove(second_database));
    mdiQUOM third(folder.path().toStdString());
    third.bench().memory = UiMemory(file);
    third.show();
    third.start({});
    EXPECT_THAT(texts(third, true), ElementsAre("Open the starter database", "Load a project *.QC6 ...",
                                                "Open database *.Q07 / new project ...", "Propane", "Ammonia",
                                                "Butane", "Ethane"));
}

TEST_F(StartPageTest, without_its_database_the_page_says_so) {
    const QTemporaryDir empty;
    mdiQUOM other(empty.path().toStdString());
    other.show();
    other.start({});
    EXPECT_FALSE(row(other, "Open the starter database")->isEnabled());
    EXPECT_EQ(row(other, "Open the starter database")->accessibleDescription().toStdString(),
              "quom.q07 is not in the program folder");
}

TEST_F(StartPageTest, nothing_is_squeezed_at_any_size_of_font_and_frame) {
    const QFont usual = QApplication::font();
    for (const double points : {9.0, 14.0}) {
        QFont font = usual;
        font.setPointSizeF(points);
        QApplication::setFont(font);
        for (const QSize size : {QSize(960, 640), QSize(1400, 900)}) {
            frame.resize(size);
            QApplication::processEvents();
            int within = 0;
            for (const auto* row : frame.start_page->findChildren<StartRowButton*>()) {
                EXPECT_GE(row->height(), row->sizeHint().height()) << row->text().toStdString();
                const QPoint right = row->mapTo(frame.start_page->widget(), row->rect().topRight());
                EXPECT_LT(right.x(), frame.start_page->viewport()->width());
                if (row->width() >= row->sizeHint().width()) ++within;
            }
            EXPECT_EQ(within, 7) << points << " " << size.width();
        }
    }
    QApplication::setFont(usual);
}

}  // namespace
}  // namespace quom
