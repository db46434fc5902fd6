// The help window with keys only: history, search, index; and what it keeps in memory.
#include "ui/windows/help_window.h"

#include <malloc.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QTextBrowser>

#include "ui/window_driver.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class HelpTest : public ::testing::Test {
 protected:
    HelpTest() : help(nullptr) {
        help.show_topic(2);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&help));
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers with = {}) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_TRUE(focus || QApplication::activeWindow());
        QTest::keyClick(focus ? focus : QApplication::activeWindow(), key, with);
    }
    static HelpPage page(int topic) {
        for (const HelpPage& page : help_pages())
            if (page.topic == topic) return page;
        ADD_FAILURE() << topic;
        return {};
    }
    HelpWindow help;
};

TEST_F(HelpTest, back_and_forward_go_through_the_pages_seen) {
    EXPECT_FALSE(help.cmdBack->isEnabled());
    help.show_topic(82);
    const int bottom = help.browser->verticalScrollBar()->maximum();
    help.browser->verticalScrollBar()->setValue(bottom);
    key(Qt::Key_I, Qt::AltModifier);  // a button stays down for a moment
    EXPECT_TRUE(QTest::qWaitFor([this] { return help.topic() == 0; }));
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(help.topic(), 82);
    EXPECT_EQ(help.browser->verticalScrollBar()->value(), bottom);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(help.topic(), 2);
    key(Qt::Key_Left, Qt::AltModifier);  // the first
    EXPECT_EQ(help.topic(), 2);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(help.topic(), 82);
    help.show_topic(50);  // the pages in front go
    EXPECT_FALSE(help.cmdForward->isEnabled());
    key(Qt::Key_B, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return help.topic() == 82; }));
    for (int i = 0; i < 300; ++i) help.show_topic(i % 2 == 0 ? 30 : 31);
    int steps = 0;
    for (; help.cmdBack->isEnabled() && steps < 400; ++steps) help.cmdBack->click();
    EXPECT_LT(steps, 120);
}

TEST_F(HelpTest, search_shows_the_pages_and_the_lines_while_one_types) {
    const HelpPage tank = page(81);
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(QApplication::focusWidget(), help.txtSearch);
    QTest::keyClicks(QApplication::focusWidget(), tank.title);
    ASSERT_GE(help.lstFound->count(), 1);
    const auto* first = help.lstFound->item(0);
    EXPECT_EQ(first->text(), tank.title + QLatin1Char('\n') + tank.paragraphs.at(1));
    EXPECT_THAT(help.lblFound->text().toStdString(), HasSubstr(" page"));
    key(Qt::Key_Down);
    ASSERT_EQ(QApplication::focusWidget(), help.lstFound);
    key(Qt::Key_Return);
    EXPECT_EQ(help.topic(), 81);
    EXPECT_EQ(help.browser->textCursor().selectedText(), tank.title);
    EXPECT_EQ(QApplication::focusWidget(), help.browser);

    // A text over the end of a line of the file (they have 110 letters), in other letters; then one that is
    // nowhere.
    const QStringList paragraphs = page(50).paragraphs;
    const auto longest =
        std::max_element(paragraphs.begin(), paragraphs.end(),
                         [](const QString& a, const QString& b) { return a.size() < b.size(); });
    const QString over = longest->mid(85, 45).simplified();
    key(Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(QApplication::focusWidget(), over.toUpper());
    ASSERT_GE(help.lstFound->count(), 1);
    EXPECT_THAT(help.lstFound->item(0)->text().toStdString(), HasSubstr(over.toStdString()));
    key(Qt::Key_Escape);
    EXPECT_TRUE(help.isVisible());
    EXPECT_TRUE(help.txtSearch->text().isEmpty());
    EXPECT_FALSE(help.lstFound->isVisible());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("zzzz"));
    EXPECT_EQ(help.lblFound->text().toStdString(), "Nothing found.");
    key(Qt::Key_Return);
    EXPECT_EQ(help.topic(), 81);
    key(Qt::Key_Escape);
    key(Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

TEST_F(HelpTest, five_hundred_openings_keep_no_memory) {
    const auto open = [this](int times) {
        for (int i = 0; i < times; ++i) {
            help.show_topic(i % 3 == 0 ? 82 : i % 3 == 1 ? 21 : 0);
            help.txtSearch->setText(QStringLiteral("equation"));
            QApplication::processEvents();
            help.close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // as a loop of events does
        }
    };
    open(150);  // history and caches are full
    const auto before = mallinfo2().uordblks;
    open(500);
    EXPECT_LT(static_cast<double>(mallinfo2().uordblks) - static_cast<double>(before), 100e3);
}

}  // namespace
}  // namespace quom
