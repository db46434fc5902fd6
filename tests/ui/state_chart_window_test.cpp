// The window of state charts, driven by menu, mouse and keys.
#include <qcustomplot.h>

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPrinter>
#include <QTimer>
#include <cmath>

#include "diagrams/chart_texts.h"
#include "engine/thermo_functions.h"
#include "ui/charts/state_chart_plot.h"
#include "ui/charts/state_chart_view.h"
#include "ui/main/mdi_area.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmParinput.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmStateChart.h"
#include "ui/windows/picture_dialogs.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

class StateChartWindow : public WindowDriver {
 protected:
    frmStateChart* window() const { return frame.child<frmStateChart>(); }
    const StateChart& chart() const { return window()->chart->chart(); }
    QCustomPlot* plot() const { return window()->findChild<QCustomPlot*>(); }
    void go_to_chart(const char* entry = "mnuChart_0", const char* substance = "Propane") {
        go_to_calculations(substance);
        open(entry);
    }
    void open(const char* entry) {
        ASSERT_TRUE(enabled(entry));
        menu(entry)->trigger();
        ASSERT_TRUE(window());
        settle();
    }
    // The chart is made anew for the size of the window a little later.
    static void settle() { QTest::qWait(120); }
    QPoint pixel(double X, double Y) const {
        const QRectF area = window()->chart->area();
        return QPointF(area.left() + X * area.width(), area.top() + (1 - Y) * area.height()).toPoint();
    }
    QPoint pixel_of(const ChartState& state) const {
        return QPointF(plot()->xAxis->coordToPixel(chart().shown(state, chart().x.quantity)),
                       plot()->yAxis->coordToPixel(chart().shown(state, chart().y.quantity)))
            .toPoint();
    }
    void move(const QPoint& to, Qt::MouseButtons buttons = {}) {
        QMouseEvent event(QEvent::MouseMove, to, plot()->mapToGlobal(to), Qt::NoButton, buttons, {});
        QApplication::sendEvent(plot(), &event);
    }
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys = {}) {
        QTest::mousePress(plot(), Qt::LeftButton, keys, from);
        for (int i = 1; i <= 4; ++i) move(from + (to - from) * i / 4, Qt::LeftButton);
        QTest::mouseRelease(plot(), Qt::LeftButton, keys, to);
    }
    void calculate(const char* entry, std::initializer_list<const char*> values) {
        menu(entry)->trigger();
        auto* input = frame.child<frmParinput>();
        ASSERT_TRUE(input);
        std::size_t box = 0;
        for (const char* value : values) input->par[box++]->setText(QLatin1String(value));
        input->cmdParameter_OK->click();
        QApplication::processEvents();
    }
    bool rings(const ChartState& state) const {
        const QImage picture = plot()->toPixmap().toImage();
        const QPoint at = pixel_of(state);
        return picture.pixelColor(at).lightness() < 100 &&
               picture.pixelColor(at + QPoint(5, 0)).lightness() > 200;
    }
};

TEST_F(StateChartWindow, opens_from_the_menu_once_charts_are_possible) {
    EXPECT_FALSE(enabled("mnuChart_0"));
    EXPECT_EQ(menu("mnuChart")->text(), QStringLiteral("Charts"));
    go_to_chart();
    EXPECT_EQ(window()->windowTitle(), QStringLiteral(" log p-h diagram, Propane"));
    EXPECT_TRUE(window()->chart->isVisible());
    EXPECT_EQ(chart().header, "Propane   log p-h diagram   Peng/Robinson");
    EXPECT_GT(window()->chart->drawn().labels().size(), 25u);
    for (const auto& [entry, kind] :
         {std::pair{"mnuChart_1", ChartKind::Ts}, {"mnuChart_2", ChartKind::hs}}) {
        open(entry);
        EXPECT_EQ(chart().kind, kind);
        EXPECT_EQ(window()->cboKind->currentIndex(), static_cast<int>(kind));
    }
    EXPECT_TRUE(messages.take().empty());
    QTest::keyClick(plot(), Qt::Key_Escape);
    EXPECT_FALSE(window());
}

TEST_F(StateChartWindow, units_reference_and_sheet_are_by_choice) {
    go_to_chart();
    window()->cboT->setCurrentIndex(1);
    choose(window()->cboP, "bar");
    choose(window()->cboBasis, "kJ/kmol");
    EXPECT_EQ(chart().units[0].unit, "°C");
    EXPECT_EQ(chart().x.text, "h / (kJ/kmol)");
    EXPECT_EQ(chart().y.text, "p / bar");
    window()->cboReference->setCurrentIndex(1);
    EXPECT_THAT(chart().footer, HasSubstr("saturated liquid at 0 °C"));
    const SaturatedPair at = saturated_at_T(*chart().fluid, 273.15);
    EXPECT_NEAR(chart().shown(at.L, ChartQuantity::h), 200 * session().fluid->M, 1e-3);
    QTest::mouseClick(window()->chkBlack, Qt::LeftButton, {}, QPoint(8, window()->chkBlack->height() / 2));
    EXPECT_EQ(plot()->toPixmap().toImage().pixelColor(2, 2), QColor(Qt::black));
    // The choices are there when the window opens again.
    frame.unload(frmStateChart::Name);
    open("mnuChart_0");
    EXPECT_EQ(chart().y.text, "p / bar");
    EXPECT_TRUE(window()->chkBlack->isChecked());
    EXPECT_EQ(window()->cboReference->currentIndex(), 1);
}

TEST_F(StateChartWindow, zooms_by_band_wheel_and_keys_and_never_leaves_the_chart) {
    go_to_chart();
    const ChartAxis x = chart().x, y = chart().y;
    drag(pixel(0.5, 0.75), pixel(0.75, 0.25));
    EXPECT_NEAR(x.place(chart().x.low), 0.5, 0.005);
    EXPECT_NEAR(x.place(chart().x.high), 0.75, 0.005);
    EXPECT_NEAR(y.place(chart().y.low), 0.25, 0.005);
    EXPECT_NEAR(y.place(chart().y.high), 0.75, 0.005);
    EXPECT_NEAR(plot()->yAxis->range().lower, chart().y.low, 1e-9 * chart().y.low);
    // A drag with Shift moves the part in view with the hand.
    drag(pixel(0.2, 0.5), pixel(0.6, 0.5), Qt::ShiftModifier);
    EXPECT_NEAR(x.place(chart().x.low), 0.4, 0.005);
    EXPECT_NEAR(x.place(chart().x.high), 0.65, 0.005);
    for (int i = 0; i < 20; ++i) QTest::keyClick(plot(), Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_NEAR(x.place(chart().x.low), 0.0, 1e-9);
    EXPECT_NEAR(x.place(chart().x.high), 0.25, 0.005);
    QTest::keyClick(plot(), Qt::Key_Minus);
    EXPECT_NEAR(x.place(chart().x.high) - x.place(chart().x.low), 0.25 / 0.7, 0.01);
    QTest::keyClick(plot(), Qt::Key_0);
    EXPECT_EQ(chart().x.high, x.high);
    // The wheel keeps the state under the pointer.
    const QPoint at = pixel(0.75, 0.5);
    const double h = plot()->xAxis->pixelToCoord(at.x());
    const auto turn = [&](int delta) {
        QWheelEvent wheel(at, plot()->mapToGlobal(at), {}, {0, delta}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(plot(), &wheel);
    };
    for (int i = 0; i < 3; ++i) turn(120);
    EXPECT_NEAR(x.place(chart().x.high) - x.place(chart().x.low), std::pow(0.8, 3), 0.005);
    EXPECT_NEAR(plot()->xAxis->pixelToCoord(at.x()), h, 0.01 * (x.high - x.low));
    // As close as it goes, and the whole again.
    for (int i = 0; i < 5; ++i) turn(1200);
    EXPECT_NEAR(x.place(chart().x.high) - x.place(chart().x.low), 2e-4, 1e-6);
    EXPECT_GT(plot()->xAxis->tickVector().size(), 1);
    EXPECT_GT(window()->chart->drawn().labels().size(), 5u);
    for (int i = 0; i < 5; ++i) turn(-1200);
    EXPECT_EQ(chart().x.low, x.low);
    EXPECT_FALSE(window()->form().window);
    drag(pixel(0.5, 0.5), pixel(0.5, 0.5) + QPoint(2, 1));
    EXPECT_FALSE(window()->form().window);
}

TEST_F(StateChartWindow, the_cross_reads_the_state_and_a_click_copies_it) {
    go_to_chart();
    const ChartState wanted = stable_state(*chart().fluid, 400, 1000);
    move(pixel_of(wanted));
    const ChartState& found = window()->chart->pointed();
    ASSERT_TRUE(found.exists());
    EXPECT_NEAR(found.T, 400, 1.5);
    EXPECT_NEAR(found.p, 1000, 10);
    EXPECT_THAT(plot()->accessibleDescription().toStdString(), HasSubstr("vapor"));
    QTest::mouseClick(plot(), Qt::LeftButton, {}, pixel_of(wanted));
    const QStringList rows = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    ASSERT_GE(rows.size(), 2);
    EXPECT_TRUE(rows[0].startsWith(QStringLiteral("T / K\tp / kPa\t")));
    EXPECT_NEAR(rows[1].section(QLatin1Char('\t'), 0, 0).toDouble(), 400, 1.5);
    EXPECT_FALSE(window()->form().window);
    // Inside the dome, by keys: to the left until there are two phases.
    move({1, 1});
    EXPECT_FALSE(window()->chart->pointed().exists());
    plot()->setFocus();
    for (int i = 0; i < 50 && !(window()->chart->pointed().x > 0); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
    EXPECT_GT(window()->chart->pointed().x, 0);
    EXPECT_THAT(plot()->accessibleDescription().toStdString(), HasSubstr("x = "));
}

TEST_F(StateChartWindow, marks_the_state_last_calculated) {
    go_to_chart();
    calculate("mnuCalc_2", {"400", "1000"});
    EXPECT_TRUE(rings(stable_state(*chart().fluid, 400, 1000)));
    EXPECT_EQ(calculated_states(session(), chart()).size(), 1u);
    const auto liquid = stable_state(*chart().fluid, 300, 3000);
    calculate("mnuCalc_2", {"300", "3000"});
    EXPECT_TRUE(rings(liquid));
    EXPECT_FALSE(rings(stable_state(*chart().fluid, 400, 1000)));
    // Equilibrium at T: both phases.
    menu("mnuCalc_5")->trigger();
    press(frame.child("frmCalcIn"), "OK");
    auto* input = frame.child<frmParinput>();
    ASSERT_TRUE(input);
    input->par[0]->setText(QStringLiteral("320"));
    input->cmdParameter_OK->click();
    QApplication::processEvents();
    const auto states = calculated_states(session(), chart());
    ASSERT_EQ(states.size(), 2u);
    for (const ChartState& state : states) {
        EXPECT_NEAR(state.T, 320, 1e-9);
        EXPECT_TRUE(rings(state));
    }
}

TEST_F(StateChartWindow, follows_models_reference_and_substance_and_says_what_is_missing_in_its_place) {
    go_to_chart("mnuChart_1");
    change([](Document& d) { d.models.EOSKode = Eos::redlich_kwong; });
    EXPECT_THAT(chart().header, HasSubstr("Redlich"));
    const double s = chart().critical.s;
    change([](Document& d) { d.reference.sOffset += 10; });
    EXPECT_NEAR(chart().critical.s, s + 10, 1e-6);
    // An equation of the vapor alone.
    change([](Document& d) { d.models.EOSKode = Eos::virial_soave; });
    EXPECT_FALSE(window()->chart->isVisible());
    EXPECT_TRUE(window()->lblRefusal->isVisible());
    EXPECT_THAT(window()->lblRefusal->text().toStdString(), HasSubstr("No chart: "));
    EXPECT_FALSE(enabled("mnuChart_1"));
    change([](Document& d) { d.models.EOSKode = Eos::peng_robinson; });
    EXPECT_TRUE(window()->chart->isVisible());
    // Another substance: the window stays, and waits for the models.
    choose_substance("Water");
    ASSERT_TRUE(window());
    EXPECT_THAT(window()->lblRefusal->text().toStdString(), HasSubstr("first confirm the models"));
    press(frame.child<frmQModell>(), "cmdOKModell");
    EXPECT_TRUE(window()->chart->isVisible());
    EXPECT_THAT(chart().header, HasSubstr("Water"));
    // A reference state that water does not have.
    window()->cboReference->setCurrentIndex(2);
    EXPECT_THAT(window()->lblRefusal->text().toStdString(), HasSubstr("below the triple point"));
    window()->cboReference->setCurrentIndex(4);
    EXPECT_TRUE(window()->chart->isVisible());
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(StateChartWindow, pictures_and_data_for_other_programs) {
    go_to_chart();
    const auto trigger = [&](const char* name) { in<QAction>(window(), name)->trigger(); };
    for (const char* file : {"a.png", "b.svg", "c.pdf"}) {
        const QString path = folder.filePath(QLatin1String(file));
        dialogs->files.push_back(path);
        trigger("mnuChart_save");
        EXPECT_GT(QFileInfo(path).size(), 10000) << file;
    }
    EXPECT_THAT(dialogs->asked.back().start.toStdString(), HasSubstr("Propane log p-h.png"));
    for (const bool vector : {false, true}) {
        QTimer::singleShot(0, &frame, [vector] {
            auto* dialog = qobject_cast<ClipboardDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            (vector ? dialog->optVector : dialog->optBitmap)->setChecked(true);
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        trigger("mnuChart_copy");
        const QMimeData* taken = QGuiApplication::clipboard()->mimeData();
        EXPECT_EQ(taken->hasFormat(QStringLiteral("image/x-emf")), vector);
        EXPECT_EQ(taken->data(QStringLiteral("image/svg+xml")).contains("Propane"), vector);
        EXPECT_TRUE(vector || taken->hasImage());
    }
    trigger("mnuChart_print");
    ASSERT_EQ(dialogs->pages.size(), 1u);
    QPrinter printer;
    printer.setOutputFileName(folder.filePath(QStringLiteral("page.pdf")));
    printer.setPageOrientation(QPageLayout::Landscape);
    EXPECT_TRUE(dialogs->pages.front().paint(printer));
    EXPECT_GT(QFileInfo(folder.filePath(QStringLiteral("page.pdf"))).size(), 20000);
    trigger("mnuChart_copyData");
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(text.contains(QStringLiteral("saturation\t")));
    EXPECT_GT(text.count(QLatin1Char('\n')), 2000);
}

}  // namespace
}  // namespace quom
