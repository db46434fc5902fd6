// The result window over data points: the page of all points, the record, the list on paper and on the disk.
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

#include "base/dates.h"
#include "base/files.h"
#include "ui/main/calculation_windows.h"
#include "ui/widgets/table_view.h"
#include "ui/widgets/value_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/points_page.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;
using ::testing::SizeIs;
using ::testing::StartsWith;

class BatchOutput : public WindowDriver {
 protected:
    BatchOutput() { go_to_calculations(); }
    // Mode 3 at 300 K to 300 + count - 1 K, 500 kPa; the second point is inactive.
    frmQCalcOut* open(int count) {
        change([count](Document& d) {
            d.options.BatchMode = true;
            d.calc.CalcMode = Mode::T_p;
            d.exp.file.ExpTitle = "points.BAQ";
            auto& points = d.exp.points.edit();
            points.resize(static_cast<std::size_t>(count) + 1);
            for (int i = 1; i <= count; ++i)
                points[static_cast<std::size_t>(i)] = {.T = 300.0 + (i - 1) % 90, .p = 500, .rhoV = 9.5F};
            points[2].Aus = -1;
        });
        auto* window = new frmQCalcOut(frame.bench());
        frame.open_child(window);
        return window;
    }
    std::string file(const std::string& name) {
        return read_file(folder.filePath(QString::fromStdString(name)).toStdString()).bytes.value_or("none");
    }
    std::string record_name(const char* number) {
        const std::string date = today_text();
        return date.substr(2, 2) + date.substr(5, 2) + date.substr(8) + number + ".CSV";
    }
    static QString cell(const PointsPage* page, int row, const char* head) {
        const QAbstractItemModel* model = page->tblPoints->model();
        for (int column = 0; column < model->columnCount(); ++column)
            if (model->headerData(column, Qt::Horizontal).toString().startsWith(QLatin1String(head)))
                return model->index(row, column).data().toString();
        return QStringLiteral("no column");
    }
};

TEST_F(BatchOutput, rows_are_written_and_the_closed_record_is_on_the_clipboard) {
    frmQCalcOut* window = open(3);
    window->tabs->setCurrentIndex(2);
    EXPECT_EQ(window->lblProtText2->text().toStdString(), record_name("01"));
    EXPECT_FALSE(window->cmdOpenNew->isEnabled());
    press(window, "cmdProtokoll");
    press(window, "cmdVor");
    press(window, "cmdProtokoll");
    QApplication::clipboard()->setText(QStringLiteral("old"));
    press(window, "cmdOpenNew");
    EXPECT_FALSE(window->cmdOpenNew->isEnabled());
    EXPECT_EQ(window->lblProtText2->text().toStdString(), record_name("02"));
    const std::string record = file(record_name("01"));
    const auto lines = split_lines(record);
    ASSERT_THAT(lines, SizeIs(9));
    EXPECT_THAT(std::string(lines[1]), "Propane");
    EXPECT_THAT(std::string(lines[6]), StartsWith("T;p;v(V);h(V);"));
    EXPECT_THAT(std::string(lines[7]), StartsWith("300;500;"));
    EXPECT_THAT(std::string(lines[8]), StartsWith("302;500;")) << "the inactive point was skipped";
    const std::string clipboard = QApplication::clipboard()->text().toStdString();
    EXPECT_THAT(clipboard, HasSubstr("\n300\t500\t"));
    EXPECT_EQ(split_lines(clipboard).size(), 9u);
    // What is left open is written when the window closes.
    press(window, "cmdProtokoll");
    frame.unload(frmQCalcOut::Name);
    EXPECT_THAT(file(record_name("02")), HasSubstr("\r\n302;500;"));
    EXPECT_FALSE(session().record.ProtocolOpen);
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(BatchOutput, list_is_saved_with_points_that_were_never_stepped_to) {
    frmQCalcOut* window = open(4);
    window->tabs->setCurrentIndex(2);
    window->optResultPrint[2]->click();
    dialogs->files.push_back(QString());
    press(window, "cmdCalc_OK");
    EXPECT_TRUE(frame.child<frmQCalcOut>()) << "without a file nothing ends";
    dialogs->files = {folder.filePath(QStringLiteral("list.LST"))};
    press(window, "cmdCalc_OK");
    EXPECT_EQ(dialogs->asked.back().title.toStdString(), "Save QUOM result-list as ...");
    EXPECT_FALSE(frame.child<frmQCalcOut>());
    const std::string list = file("list.LST");
    const auto lines = split_lines(list);
    EXPECT_EQ(lines.at(1), std::string(19, ' ') + "QUOM Results of Calculation");
    EXPECT_THAT(list,
                HasSubstr("\r\n  Number of Data Sets  :  4 \r\n  Name of Batchfile    : points.BAQ\r\n"));
    // 300 K, 500 kPa: v = 4.561946 m^3/kmol, so rho = 9.66...
    std::vector<std::string> numbers;
    for (std::size_t i = 0; i + 2 < lines.size(); ++i) {
        if (lines[i].size() < 12 || lines[i].substr(8, 2) != " 3" || !std::isdigit(lines[i][0])) continue;
        numbers.emplace_back(lines[i].substr(0, 1));
        EXPECT_EQ(lines[i + 1].substr(3, 3), " V ");
        EXPECT_EQ(lines[i + 1].substr(8, 4), lines[i].substr(8, 4)) << "T is specified";
        EXPECT_EQ(lines[i + 3].substr(0, 32), std::string(31, ' ') + "(")
            << "the only deviation is of rho(V)";
    }
    EXPECT_THAT(numbers, ElementsAre("1", "3", "4"));
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(BatchOutput, list_for_the_printer) {
    frmQCalcOut* window = open(3);
    window->optResultPrint[1]->click();
    press(window, "cmdCalc_OK");
    ASSERT_EQ(dialogs->printed.size(), 1u);
    const QStringList& lines = dialogs->printed[0].lines;
    EXPECT_EQ(lines.at(1).trimmed().toStdString(), "QUOM: Results of Calculation");
    EXPECT_TRUE(lines.contains(QString(9, QLatin1Char(' ')) + QString(70, QLatin1Char('X'))));
    EXPECT_FALSE(frame.child<frmQCalcOut>());
}

TEST_F(BatchOutput, page_of_all_points) {
    frmQCalcOut* window = open(4);
    PointsPage* page = window->points;
    window->tabs->setCurrentWidget(page);
    EXPECT_EQ(page->tblPoints->model()->rowCount(), 4);
    EXPECT_EQ(cell(page, 0, "phase"), QStringLiteral("V"));
    EXPECT_EQ(cell(page, 1, "phase"), QStringLiteral("inactive"));
    EXPECT_EQ(cell(page, 2, "phase"), QString());
    EXPECT_EQ(page->lblPoints->text(), QStringLiteral("1 of 3 points calculated"));
    press(page, "cmdCalculateAll");
    EXPECT_EQ(page->lblPoints->text(), QStringLiteral("3 of 3 points calculated"));
    const double calculated = cell(page, 2, "rho(V) calc.").toDouble();
    EXPECT_NEAR(cell(page, 2, "difference").toDouble(), calculated - 9.5, 1e-5);
    EXPECT_NEAR(cell(page, 2, "deviation").toDouble(), (calculated / 9.5 - 1) * 100, 0.006);
    EXPECT_EQ(cell(page, 2, "T calc."), QStringLiteral("no column")) << "T is specified";
    double mean = 0;
    for (const int row : {0, 2, 3}) mean += std::fabs(cell(page, row, "deviation").toDouble()) / 3;
    EXPECT_THAT(page->lblMeans->text().toStdString(), StartsWith("Mean |deviation|: rho(V) "));
    EXPECT_NEAR(page->lblMeans->text().section(QLatin1Char(' '), 3, 3).toDouble(), mean, 0.011);
    // Copied as it is seen: title, heads, units, rows.
    press(page, "cmdCopy");
    const QString copied = QApplication::clipboard()->text();
    EXPECT_THAT(copied.toStdString(), HasSubstr("\nphase\tT exp.\tp exp.\trho(V) exp.\trho(V) calc.\t"));
    EXPECT_THAT(copied.toStdString(), HasSubstr("\tK\tkPa\tkg/m^3\tkg/m^3\tkg/m^3\t%\n"));
    EXPECT_THAT(copied.toStdString(), HasSubstr(cell(page, 2, "rho(V) calc.").toStdString()));
    dialogs->files.push_back(folder.filePath(QStringLiteral("points.html")));
    press(page, "cmdSaveTable");
    EXPECT_THAT(*read_file(folder.filePath(QStringLiteral("points.html")).toStdString()).bytes,
                HasSubstr("rho(V) calc."));
    // A click goes to the point; an inactive one has nothing to show.
    const auto click = [page](int row) {
        const QRect place = page->tblPoints->visualRect(page->tblPoints->model()->index(row, 0));
        QTest::mouseClick(page->tblPoints->viewport(), Qt::LeftButton, {}, place.center());
    };
    click(3);
    EXPECT_EQ(document().calc.CurrentPoint, 4);
    EXPECT_EQ(window->par1->text().toStdString(), "T = 303.000 K");
    click(1);
    EXPECT_EQ(document().calc.CurrentPoint, 4);
    // A point that changes loses its result.
    change([](Document& d) { d.exp.points.edit()[3].p = 400; });
    EXPECT_EQ(page->lblPoints->text(), QStringLiteral("2 of 3 points calculated"));
    // Direct input has no points.
    frame.unload(frmQCalcOut::Name);
    change([](Document& d) { d.options.BatchMode = false; });
    auto* direct = new frmQCalcOut(frame.bench());
    frame.open_child(direct);
    EXPECT_FALSE(direct->tabs->isTabVisible(direct->tabs->indexOf(direct->points)));
    EXPECT_FALSE(direct->optResultPrint[2]->isEnabled());
}

TEST_F(BatchOutput, many_points_run_in_the_background_and_can_be_cancelled) {
    frmQCalcOut* window = open(100000);
    PointsPage* page = window->points;
    window->tabs->setCurrentWidget(page);
    press(page, "cmdCalculateAll");
    ASSERT_TRUE(page->is_running()) << "the window's thread is free at once";
    EXPECT_FALSE(window->cmdVor->isEnabled());
    EXPECT_FALSE(window->cmdCalc_OK->isEnabled());
    press(page, "cmdCancel");
    ASSERT_TRUE(QTest::qWaitFor([page] { return !page->is_running(); }, 60000));
    const int done = 99999 - open_points(session());
    EXPECT_LT(done, 99999);
    EXPECT_EQ(page->lblPoints->text(), QStringLiteral("%1 of 99999 points calculated").arg(done));
    EXPECT_TRUE(window->cmdCalc_OK->isEnabled());
    press(page, "cmdCalculateAll");
    ASSERT_TRUE(QTest::qWaitFor([page] { return !page->is_running(); }, 60000));
    EXPECT_EQ(open_points(session()), 0);
    // The window may be closed while it runs.
    press(page, "cmdCalculateAll");
    frame.unload(frmQCalcOut::Name);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST_F(BatchOutput, without_data_there_is_one_box) {
    change([](Document& d) { d.options.BatchMode = true; });
    const auto box = Pair("Execution not possible",
                          "This type of calculation is possible only if exper. data are available.");
    start_calculation(frame, 3);
    EXPECT_THAT(messages.take(), ElementsAre(box));
    auto* calculations = frame.findChild<QMenu*>(QStringLiteral("mnuCalcMain"));
    ASSERT_TRUE(calculations);
    emit calculations->aboutToShow();
    emit calculations->aboutToHide();
    start_calculation(frame, 3);
    EXPECT_THAT(messages.take(), ElementsAre(box)) << "told as the menu opened";
    QCoreApplication::processEvents();
    start_calculation(frame, 3);
    EXPECT_THAT(messages.take(), ElementsAre(box));
    EXPECT_FALSE(frame.child<frmQCalcOut>());
}

}  // namespace
}  // namespace quom
