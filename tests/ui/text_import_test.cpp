// Import of texts and tables, driven by hand: clipboard and files in, points of the document out.
#include <QClipboard>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>
#include <functional>

#include "ui/widgets/notice_strip.h"
#include "ui/widgets/table_view.h"
#include "ui/window_driver.h"
#include "ui/windows/frmTextImport.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

// Vapor pressures of acetone, rounded, from log10(p/bar) = 4.42448 - 1312.253/(T/K - 32.445): Ambrose, Sprake
// and Townsend, J. Chem. Thermodyn. 6 (1974) 693.
constexpr const char* Acetone =
    "t / °C\tDampfdruck / kPa\r\n"
    "-5,0\t7,20\r\n0,0\t9,39\r\n5,0\t12,13\r\n10,0\t15,50\r\n15,0\t19,61\r\n20,0\t24,60\r\n25,0\t30,60\r\n"
    "30,0\t37,75\r\n35,0\t46,22\r\n40,0\t56,19\r\n45,0\t67,83\r\n50,0\t81,37\r\n55,0\t97,00\r\n60,0\t114,"
    "96\r\n"
    "65,0\t135,50\r\n70,0\t158,86\r\n75,0\t185,31\r\n80,0\t215,13\r\n85,0\t248,61\r\n90,0\t286,04\r\n";

class TextImportWindow : public WindowDriver {
 protected:
    ~TextImportWindow() override { QApplication::clipboard()->clear(); }
    using Use = std::function<void(frmTextImport*)>;
    // Opens the window from the menu; `use` drives it, and leaves it by one of its buttons.
    void in_window(const Use& use) {
        bool used = false;
        QTimer::singleShot(0, &frame, [&] {
            auto* window = qobject_cast<frmTextImport*>(QApplication::activeModalWidget());
            ASSERT_TRUE(window);
            used = true;
            use(window);
            if (window->isVisible()) press(window, "cmdClose");
        });
        menu("mnuData_ImportText")->trigger();
        EXPECT_TRUE(used);
    }
    static void copy(const char* text) { QApplication::clipboard()->setText(QString::fromUtf8(text)); }
    // Chooses an entry as the keyboard does, so that the window hears of it.
    static void pick(QWidget* window, const char* name, const char* text) {
        auto* box = in<QComboBox>(window, name);
        ASSERT_TRUE(box);
        const int at = box->findText(QString::fromUtf8(text));
        ASSERT_GE(at, 0) << text;
        box->setFocus();
        QTest::keyClick(box, at < box->currentIndex() ? Qt::Key_Home : Qt::Key_End);
        while (box->currentIndex() < at) QTest::keyClick(box, Qt::Key_Down);
        while (box->currentIndex() > at) QTest::keyClick(box, Qt::Key_Up);
        emit box->activated(at);
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // the boxes shown before
    }
    static std::string cell(const QAbstractItemView* table, int row, int column) {
        return table->model()->index(row, column).data().toString().toStdString();
    }
};

TEST_F(TextImportWindow, twenty_vapor_pressures_with_decimal_comma_and_degrees) {
    go_to_calculations("Acetone");
    copy(Acetone);
    in_window([&](frmTextImport* w) {
        EXPECT_EQ(w->cmbDelimiter->currentText().toStdString(), "tab");
        EXPECT_EQ(w->cmbDecimal->currentText().toStdString(), "comma  ,");
        EXPECT_EQ(w->spnHead->value(), 1);
        EXPECT_EQ(in<QComboBox>(w, "cmbQuantity_0")->currentText().toStdString(), "T");
        EXPECT_EQ(in<QComboBox>(w, "cmbUnit_0")->currentText().toStdString(), "°C");
        EXPECT_EQ(in<QComboBox>(w, "cmbQuantity_1")->currentText().toStdString(), "p");
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("20 of 20 rows will be taken, 1 head line"));
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("The list has 0 points."));
        EXPECT_FALSE(w->notice->isVisible());
        EXPECT_FALSE(w->tblBad->isVisible());
        EXPECT_EQ(cell(w->tblPreview, 0, 0), "head");
        EXPECT_EQ(cell(w->tblPreview, 1, 0), "taken");
        EXPECT_EQ(cell(w->tblPreview, 1, 2), "7,20");
        EXPECT_FALSE(w->cmdReplace->isEnabled());
        QTest::keyClick(QApplication::focusWidget() ? QApplication::focusWidget() : w, Qt::Key_Return);
    });
    ASSERT_EQ(data_point_count(document().exp), 20);
    EXPECT_TRUE(document().exp.ExpGeaendert);
    // By hand: 0 °C = 273.15 K.
    EXPECT_DOUBLE_EQ(document().exp.points[1].T, 268.15);
    EXPECT_DOUBLE_EQ(document().exp.points[1].p, 7.2);
    EXPECT_DOUBLE_EQ(document().exp.points[20].T, 363.15);
    EXPECT_DOUBLE_EQ(document().exp.points[20].p, 286.04);
    EXPECT_THAT(messages.take(), IsEmpty());

    // Once more, in their place: the points have not been saved, so the user is asked.
    copy("T/K\tp/bar\n300\t0,33\n");
    messages.answers.push_back(Answer::no);
    messages.answers.push_back(Answer::yes);
    in_window([&](frmTextImport* w) {
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("The list has 20 points."));
        press(w, "cmdReplace");
        EXPECT_TRUE(w->isVisible());
        press(w, "cmdReplace");
    });
    EXPECT_EQ(messages.take().size(), 2u);
    ASSERT_EQ(data_point_count(document().exp), 1);
    EXPECT_DOUBLE_EQ(document().exp.points[1].p, 33.0);
}

TEST_F(TextImportWindow, shows_what_is_wrong_and_takes_corrections) {
    go_to_calculations();
    const Document before = document();
    copy("Wert;Messung\n300;1,234\n310;abc\n\n320;2,5\n");
    in_window([&](frmTextImport* w) {
        EXPECT_THAT(w->notice->text().toStdString(), HasSubstr("No head names the quantities"));
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("2 of 3 rows will be taken"));
        ASSERT_TRUE(w->tblBad->isVisible());
        EXPECT_EQ(cell(w->tblBad, 0, 0), "3");
        EXPECT_EQ(cell(w->tblBad, 0, 1), "p: \"abc\" is no number.");
        EXPECT_EQ(cell(w->tblPreview, 2, 0), "not taken");
        w->tblBad->setCurrentIndex(w->tblBad->model()->index(0, 0));
        EXPECT_EQ(w->tblPreview->currentIndex().row(), 2);
        pick(w, "cmbDecimal", "point  .");
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("1 of 3 rows will be taken"));
        pick(w, "cmbDecimal", "comma  ,");
        pick(w, "cmbQuantity_1", "delta(LV)h");
        pick(w, "cmbUnit_1", "kJ/kg");
        EXPECT_EQ(in<QComboBox>(w, "cmbUnit_1")->currentText().toStdString(), "kJ/kg");
        w->spnHead->setValue(2);
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("1 of 2 rows will be taken"));
        pick(w, "cmbQuantity_1", "not used");
        pick(w, "cmbQuantity_0", "not used");
        EXPECT_THAT(w->notice->text().toStdString(), HasSubstr("No column is chosen"));
        EXPECT_FALSE(w->cmdAppend->isEnabled());
    });
    EXPECT_EQ(document(), before);  // cancelled
    EXPECT_THAT(messages.take(), IsEmpty());
}

TEST_F(TextImportWindow, takes_files_and_pairs) {
    const QString path = folder.filePath(QStringLiteral("table.csv"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x,y\r\n1,2.5\r\n2,-1e3\r\n");
    file.close();
    QApplication::clipboard()->clear();
    in_window([&](frmTextImport* w) {
        EXPECT_THAT(w->lblSource->text().toStdString(), HasSubstr("Ctrl+V"));
        EXPECT_FALSE(w->cmdAppend->isEnabled());
        dialogs->files.push_back(folder.filePath(QStringLiteral("none.csv")));
        press(w, "cmdFile");
        EXPECT_EQ(messages.take().size(), 1u);
        dialogs->files.push_back(path);
        press(w, "cmdFile");
        EXPECT_THAT(w->lblSource->text().toStdString(), HasSubstr("table.csv"));
        // Data points belong to a database.
        EXPECT_FALSE(w->cmdAppend->isEnabled());
        pick(w, "cmbTarget", "X-Y data");
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("2 of 2 rows will be taken"));
        copy("5\t6\n");
        QTest::keySequence(w, QKeySequence::Paste);
        EXPECT_THAT(w->lblCount->text().toStdString(), HasSubstr("1 of 1 row will be taken"));
        dialogs->files.push_back(path);
        press(w, "cmdFile");
        press(w, "cmdAppend");
    });
    EXPECT_THAT(document().xy.points.list(), ElementsAre(XYPoint{1, 2.5f, 0}, XYPoint{2, -1000, 0}));
    EXPECT_TRUE(document().xy.XYGeaendert);
}

}  // namespace
}  // namespace quom
