#include <QClipboard>
#include <QLabel>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

#include "ui/look/look.h"
#include "ui/main/traffic_lights.h"
#include "ui/widgets/labels.h"
#include "ui/widgets/number_box.h"
#include "ui/widgets/result_list.h"
#include "ui/widgets/table_view.h"
#include "ui/widgets/wheel_focus.h"
#include "ui/window_driver.h"

namespace quom {
namespace {

TEST(NumberBoxTest, takes_numbers_only) {
    const struct {
        const char *typed, *text;
        double value;
    } cases[] = {{"12,5", "12.5", 12.5}, {"1E-3", "1E-3", 1e-3}, {"-4e2x", "-4e2", -400.0},
                 {"3 0+0", "300", 300},  {"abc", "", 0.0},       {"..", "..", 0.0}};
    for (const auto& c : cases) {
        NumberBox box;
        QTest::keyClicks(&box, QLatin1String(c.typed));
        EXPECT_EQ(box.text().toStdString(), c.text) << c.typed;
        EXPECT_EQ(box.value(), c.value) << c.typed;
        QApplication::clipboard()->setText(QLatin1String(c.typed));
        NumberBox pasted;
        pasted.paste();
        EXPECT_EQ(pasted.text(), box.text());
    }
}

TEST(ResultListTest, keeps_and_copies_its_text) {
    const std::string text = "\n  Density  rho = 1.5\n\n   thermodynamic Fu(T)\n***********\n h = 2\n";
    ResultList list;
    list.show_text(text);
    EXPECT_EQ(list.toPlainText().toStdString(), text);
    list.selectAll();
    list.copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), text);
    EXPECT_TRUE(list.isReadOnly());
}

TEST(TableViewTest, copies_and_pastes_text) {
    QStandardItemModel model(3, 2);
    TableView table;
    table.setModel(&model);
    table.set_commands(TableView::Paste, {});
    QApplication::clipboard()->setText(QStringLiteral("1\t2\r\n3\t4\r\n5\t6\t7\n8\n"));  // more than fits
    table.setCurrentIndex(model.index(0, 0));
    table.paste();
    EXPECT_EQ(model.index(2, 1).data().toString().toStdString(), "6");
    table.selectAll();
    table.copy();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(), "1\t2\n3\t4\n5\t6");
}

// A wheel over controls that have not the focus scrolls what they lie in.
TEST(WheelFocusTest, turns_only_what_has_the_focus) {
    WheelFocus filter;
    QScrollArea area;
    auto* inside = new QWidget;
    auto* layout = new QVBoxLayout(inside);
    auto* box = new QComboBox;
    box->setEditable(true);
    box->addItems({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    auto* number = new QSpinBox;
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setValue(50);
    auto* heads = new QTabBar;
    for (const char* head : {"x", "y"}) heads->addTab(QLatin1String(head));
    for (QWidget* widget : {static_cast<QWidget*>(box), static_cast<QWidget*>(number),
                            static_cast<QWidget*>(slider), static_cast<QWidget*>(heads)})
        layout->addWidget(widget);
    inside->setMinimumHeight(1000);
    area.setWidget(inside);
    area.setWidgetResizable(true);
    area.resize(300, 200);
    area.show();
    area.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&area));
    area.setFocus();
    const auto turn = [&](QWidget* over) {
        const QPointF at = over->rect().center();
        QWheelEvent notch(at, over->mapToGlobal(at), {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QSpontaneKeyEvent::setSpontaneous(&notch);
        qApp->notify(over, &notch);
    };
    const auto state = [&] {
        return std::array{box->currentIndex(), number->value(), slider->value(), heads->currentIndex()};
    };
    const auto before = state();
    for (QWidget* over :
         {static_cast<QWidget*>(box), static_cast<QWidget*>(box->lineEdit()), static_cast<QWidget*>(number),
          static_cast<QWidget*>(slider), static_cast<QWidget*>(heads)}) {
        const int scrolled = area.verticalScrollBar()->value();
        turn(over);
        EXPECT_EQ(state(), before) << over->metaObject()->className();
        EXPECT_GT(area.verticalScrollBar()->value(), scrolled) << over->metaObject()->className();
        EXPECT_EQ(QApplication::focusWidget(), &area);
    }
    box->setFocus();
    turn(box->lineEdit());
    EXPECT_EQ(box->currentIndex(), before[0] + 1);
    slider->setFocus();
    turn(slider);
    EXPECT_NE(slider->value(), before[2]);
}

TEST(Labels, are_painted_trimmed_and_spoken_plainly) {
    const TrimmedLabel padded(QStringLiteral("      T/K     ")), plain(QStringLiteral("T/K"));
    EXPECT_EQ(padded.sizeHint(), plain.sizeHint());
    EXPECT_EQ(padded.text().toStdString(), "      T/K     ");
    EXPECT_EQ(spoken(QStringLiteral("   &Data  && more ")).toStdString(), "Data & more");
}

TEST(TrafficLightsTest, tell_their_level_by_colour_and_word) {
    TrafficLights lights;
    const struct {
        int level;
        QColor colour;
        const char* name;
    } cases[] = {{1, {50, 255, 50}, "Traffic lights: green, level 1 of 4"},
                 {2, {255, 255, 0}, "Traffic lights: yellow, level 2 of 4"},
                 {3, {255, 200, 0}, "Traffic lights: orange, level 3 of 4"},
                 {4, {255, 0, 0}, "Traffic lights: red, level 4 of 4"},
                 {0, lights.palette().color(QPalette::Button), "Traffic lights: no substance"}};
    for (const auto& c : cases) {
        lights.SetzeAmpel(c.level);
        EXPECT_EQ(lights.colour(), c.colour) << c.level;
        EXPECT_EQ(lights.accessibleName().toStdString(), c.name);
    }
}

TEST(MessageBoxesTest, show_plain_text_and_the_default_button) {
    QWidget parent;
    MessageBoxes boxes(&parent);
    const Message question{.title = "exper. data",
                           .text = "a <b> c\nsecond line",
                           .buttons = Buttons::yes_no,
                           .default_button = Answer::no,
                           .kind = MessageKind::question};
    for (const auto& [key, answer] : {std::pair{Qt::Key_Return, Answer::no}, {Qt::Key_Escape, Answer::no}}) {
        QTimer::singleShot(0, [key = key] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(box);
            EXPECT_EQ(box->textFormat(), Qt::PlainText);
            EXPECT_EQ(box->windowTitle().toStdString(), "exper. data");
            QTest::keyClick(box, key);
        });
        EXPECT_EQ(boxes.ask(question), answer);
    }
}

TEST(Look, texts_stand_out_in_both_themes) {
    // Contrast by relative luminance, W3C WCAG 2.1.
    const auto luminance = [](const QColor& c) {
        const auto part = [](double x) {
            return x <= 0.03928 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(c.redF()) + 0.7152 * part(c.greenF()) + 0.0722 * part(c.blueF());
    };
    const auto contrast = [&](const QColor& a, const QColor& b) {
        const double x = luminance(a), y = luminance(b);
        return (std::max(x, y) + 0.05) / (std::min(x, y) + 0.05);
    };
    for (const bool dark : {false, true}) {
        const QPalette p = makePalette(dark);
        EXPECT_EQ(is_dark(p), dark);
        EXPECT_GE(contrast(p.color(QPalette::Text), p.color(QPalette::Base)), 7);
        EXPECT_GE(contrast(p.color(QPalette::PlaceholderText), p.color(QPalette::Window)), 5);
        EXPECT_GE(contrast(p.color(QPalette::HighlightedText), p.color(QPalette::Highlight)), 4.5);
        EXPECT_GE(contrast(p.color(QPalette::Disabled, QPalette::Text), p.color(QPalette::Window)), 2.9);
    }
}

}  // namespace
}  // namespace quom
