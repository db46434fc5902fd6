// The strip of the state: its words, its height in narrow windows, what a screen reader hears, and its
// button.
#include "ui/widgets/state_strip.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include "support/starter.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class Strip : public ::testing::Test {
 protected:
    Strip() : fluid(test::starter_fluid(test::propane, Eos::peng_robinson)) {
        auto* layout = new QVBoxLayout(&window);
        strip = new StateStrip;
        layout->addWidget(strip);
        layout->addStretch();
        window.resize(700, 400);
        window.show();
    }
    Outcome at(double T, double p) const { return state_at(*fluid, T, p, {}); }
    std::string name() const { return strip->accessibleName().toStdString(); }

    std::shared_ptr<const Fluid> fluid;
    QWidget window;
    StateStrip* strip = nullptr;
};

TEST_F(Strip, says_all_its_words) {
    strip->show_outcome(*fluid, at(350, 1000));
    EXPECT_THAT(name(),
                HasSubstr("superheated vapor 49.9 K above T(LV); EOS against record, 350 K: rho(L) "));
    EXPECT_THAT(name(), HasSubstr(" p(LV) "));
    EXPECT_FALSE(strip->cmdCalculateAgain->isVisible());
    strip->show_outcome(*fluid, at(1600, 6000));
    EXPECT_THAT(name(), HasSubstr("; Nothing in the record to compare with at 1600 K: T is above T(cr).; "
                                  "cp(idG) is extrapolated: "));
    Outcome refused;
    refused.failure = {Reason::above_critical_T, 500.0, 369.89};
    strip->show_outcome(*fluid, refused);
    EXPECT_EQ(name().find("no result 500 K is not below T(cr)"), 0u) << name();
    strip->show_stale(QStringLiteral("the reference state was changed"), QStringLiteral("Shown: before."));
    EXPECT_EQ(name(), "not up to date; the reference state was changed; Shown: before.");
}

// Nothing is cut: the lines flow, and the strip asks for the height.
TEST_F(Strip, grows_where_it_is_narrow) {
    strip->show_outcome(*fluid, at(1600, 6000));
    const int wide = strip->heightForWidth(900), narrow = strip->heightForWidth(260);
    EXPECT_GE(wide, 72);
    EXPECT_GT(narrow, wide);
    window.resize(280, 400);
    QCoreApplication::processEvents();
    EXPECT_GE(strip->height(), strip->heightForWidth(strip->width()));
    strip->show_outcome(*fluid, at(350, 1000));
    EXPECT_EQ(strip->heightForWidth(900), 72);
    QFont larger = strip->font();
    larger.setPointSizeF(larger.pointSizeF() + 8);
    strip->setFont(larger);
    EXPECT_GT(strip->heightForWidth(300), 72);
}

TEST_F(Strip, button_while_stale) {
    int pressed = 0;
    QObject::connect(strip, &StateStrip::calculate_again, &window, [&] { ++pressed; });
    strip->show_stale(QStringLiteral("p was typed and is not yet calculated"), {});
    QPushButton* button = strip->cmdCalculateAgain;
    ASSERT_TRUE(button->isVisible());
    EXPECT_TRUE(button->isDefault());
    EXPECT_TRUE(strip->rect().contains(button->geometry()));
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(pressed, 1);
    QApplication::setActiveWindow(&window);
    strip->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), button);
}

}  // namespace
}  // namespace quom
