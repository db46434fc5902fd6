// One job from its first start to the next morning: measured vapor pressures are pasted, calculated by a
// vapor pressure equation, compared, put into a list and a record, saved, and found again by the next start.
#include <QClipboard>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <cmath>
#include <functional>
#include <sstream>

#include "base/files.h"
#include "ui/main/start_page.h"
#include "ui/window_driver.h"
#include "ui/windows/frmCalcIn.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQModell.h"
#include "ui/windows/frmQOptions.h"
#include "ui/windows/frmTextImport.h"
#include "ui/windows/frmTpRhoEdit.h"
#include "ui/windows/points_page.h"

namespace quom {
namespace {

using ::testing::HasSubstr;

// log10(p/kPa) of acetone, Ambrose, Sprake and Townsend, J. Chem. Thermodyn. 6 (1974) 693.
double measured_pressure(double T) { return 100.0 * std::pow(10.0, 4.42448 - 1312.253 / (T - 32.445)); }

constexpr int Points = 20;
double celsius(int point) { return 5.0 * point - 10.0; }  // -5 to 90 °C

// As a spreadsheet with a decimal comma copies it.
QString pasted_table() {
    QString text = QStringLiteral("t / °C\tp / kPa\r\n");
    for (int i = 1; i <= Points; ++i) {
        const QString row = QStringLiteral("%1\t%2\r\n")
                                .arg(celsius(i), 0, 'f', 1)
                                .arg(measured_pressure(celsius(i) + 273.15), 0, 'f', 4);
        text += QString(row).replace(QLatin1Char('.'), QLatin1Char(','));
    }
    return text;
}

class WholeJob : public WindowDriver {
 protected:
    ~WholeJob() override { QApplication::clipboard()->clear(); }
    QString at(const char* name) const { return folder.filePath(QLatin1String(name)); }
    // What a modal window does while the entry of a menu holds it open.
    template <class Window>
    void in_dialog(const char* entry, const std::function<void(Window*)>& use) {
        QTimer::singleShot(0, &frame, [&] {
            auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window) << entry;
            use(window);
        });
        menu(entry)->trigger();
    }
    static void take_antoine_and_partial(mdiQUOM& frame) {
        auto* models = frame.child<frmQModell>();
        ASSERT_TRUE(models);
        const int antoine = models->pkombi->findText(QStringLiteral("Antoine"), Qt::MatchContains);
        ASSERT_GE(antoine, 0);
        models->pkombi->setCurrentIndex(antoine);
        models->PriorOpt[1]->click();
        press(models, "cmdOKModell");
    }
    // Mode 4 over all points; the window of results with its page of points.
    static frmQCalcOut* calculate_all(mdiQUOM& frame) {
        frame.findChild<QAction*>(QStringLiteral("mnuCalc_5"))->trigger();
        if (auto* selection = frame.child<frmCalcIn>()) press(selection, "OK");
        auto* result = frame.child<frmQCalcOut>();
        if (!result) return nullptr;
        press(result, "cmdCalculateAll");
        return result;
    }
    static std::string bytes(const QString& path) {
        return read_file(path.toStdString()).bytes.value_or(std::string());
    }
};

// Values of one line of the list, read back from its text.
std::vector<double> numbers(const std::string& line) {
    std::istringstream words(line);
    std::vector<double> found;
    for (double x = 0; words >> x;) found.push_back(x);
    return found;
}

TEST_F(WholeJob, from_pasted_values_to_the_next_start) {
    go_to_calculations("Acetone");
    take_antoine_and_partial(frame);
    ASSERT_EQ(session().fluid->models.EVPKode, document().models.EVPKode);

    QApplication::clipboard()->setText(pasted_table());
    in_dialog<frmTextImport>("mnuData_ImportText", [](frmTextImport* w) { press(w, "cmdAppend"); });
    ASSERT_EQ(data_point_count(document().exp), Points);
    EXPECT_NEAR(document().exp.points[1].T, 268.15, 1e-9);
    EXPECT_NEAR(document().exp.points[Points].p, measured_pressure(363.15), 1e-4);
    menu("mnuData_BatchEdit")->trigger();
    auto* editor = frame.child<frmTpRhoEdit>();
    ASSERT_TRUE(editor);
    dialogs->files.push_back(at("acetone.BAQ"));
    press(editor, "cmdBatchSave");
    EXPECT_FALSE(document().exp.ExpGeaendert);
    in_dialog<frmQOptions>("mnuOptions", [](frmQOptions* w) {
        w->OptCalcMode[0]->click();
        press(w, "cmdOK");
    });
    ASSERT_TRUE(document().options.BatchMode);

    frmQCalcOut* result = calculate_all(frame);
    ASSERT_TRUE(result);
    ASSERT_EQ(session().batch.size(), Points + 1u);
    for (std::size_t i = 1; i <= Points; ++i) {
        const double T = celsius(static_cast<int>(i)) + 273.15;
        // Antoine of the record against the measured values: a few parts in a thousand around T(nb).
        EXPECT_NEAR(static_cast<double>(session().batch[i].pCalc) / measured_pressure(T), 1.0, 0.02) << T;
    }
    EXPECT_THAT(result->points->lblMeans->text().toStdString(), HasSubstr("p 0."));
    EXPECT_THAT(result->points->lblMeans->text().toStdString(), HasSubstr("% (20)"));

    // Record of the first two points, then the list.
    press(result, "cmdProtokoll");
    press(result, "cmdVor");
    press(result, "cmdProtokoll");
    const QString record = at(session().record.ProtocolFile.c_str());
    press(result, "cmdOpenNew");
    const std::string csv = bytes(record);
    EXPECT_THAT(csv, HasSubstr("\r\nAcetone\r\n"));
    EXPECT_THAT(csv, HasSubstr("\r\n268.15;"));
    EXPECT_THAT(csv, HasSubstr("\r\n273.15;"));
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), HasSubstr("\n273.15\t"));
    dialogs->files.push_back(at("acetone.LST"));
    result->optResultPrint[2]->click();
    press(result, "cmdCalc_OK");
    const std::string list = bytes(at("acetone.LST"));
    const auto lines = split_lines(list);
    const auto first =
        std::find_if(lines.begin(), lines.end(), [](std::string_view l) { return l[0] == '1'; });
    ASSERT_NE(first, lines.end());
    const auto exp = numbers(std::string(first->substr(8))), calc = numbers(std::string(first[1].substr(8)));
    ASSERT_GE(exp.size(), 2u);
    ASSERT_GE(calc.size(), 2u);
    EXPECT_NEAR(exp[0], 268.15, 1e-9);
    EXPECT_NEAR(exp[1], measured_pressure(268.15), 1e-4);
    EXPECT_FLOAT_EQ(static_cast<float>(calc[1]), session().batch[1].pCalc);
    EXPECT_THAT(list, HasSubstr("arithmet. mean of ABS(%-deviations):"));

    dialogs->files.push_back(at("acetone.QC6"));
    dialogs->texts.push_back(QStringLiteral("vapor pressures"));
    menu("mnuData_SaveProject")->trigger();
    ASSERT_TRUE(QFile::exists(at("acetone.QC6")));
    const Document before = document();
    const std::vector<BatchResult> results = session().batch;
    messages.take();
    frame.close();

    // The next morning.
    QueuedMessages told;
    mdiQUOM again(folder.path().toStdString());
    again.bench().listen(told);
    again.show();
    again.start({});
    again.findChild<QAction*>(QStringLiteral("mnuData_LoadLastSession"))->trigger();
    const Document& now = again.session().document;
    EXPECT_EQ(now.substance.constants.StoffName, "Acetone");
    EXPECT_EQ(now.models, before.models);
    EXPECT_EQ(now.reference, before.reference);
    EXPECT_EQ(now.ProjectComment, "vapor pressures");
    ASSERT_EQ(data_point_count(now.exp), Points);
    for (std::size_t i = 1; i <= Points; ++i) EXPECT_EQ(now.exp.points[i], before.exp.points[i]) << i;
    press(again.child<frmQModell>(), "cmdOKModell");
    Document batch = now;
    batch.options.BatchMode = true;  // no project keeps it
    again.bench().commit(std::move(batch));
    ASSERT_TRUE(calculate_all(again));
    ASSERT_EQ(again.session().batch.size(), results.size());
    for (std::size_t i = 1; i <= Points; ++i)
        EXPECT_EQ(again.session().batch[i].pCalc, results[i].pCalc) << "point " << i;
}

}  // namespace
}  // namespace quom
