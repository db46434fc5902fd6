// The editors of experimental data and of X-Y data, used as by a hand: keys to what has the focus, mouse on
// the grid, clipboard, files on the disk.
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QTimer>
#include <cmath>
#include <fstream>
#include <functional>

#include "ui/widgets/notice_strip.h"
#include "ui/widgets/number_box.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQCalcOut.h"
#include "ui/windows/frmQXYEdit.h"
#include "ui/windows/frmTpRhoEdit.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

class DataWindows : public WindowDriver {
 protected:
    DataWindows() {
        frame.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&frame));
    }
    static void key(Qt::Key k, Qt::KeyboardModifiers modifiers = {}) {
        ASSERT_TRUE(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), k, modifiers);
    }
    // Texts go key by key to whatever has the focus by then.
    static void type(const char* text) {
        for (const char c : std::string(text)) {
            ASSERT_TRUE(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), c);
        }
    }
    static void click_cell(DataGrid* grid, int line, int column, Qt::KeyboardModifiers modifiers = {}) {
        const QModelIndex at = grid->model()->index(line, column);
        grid->scrollTo(at);
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, grid->visualRect(at).center());
    }
    static void click_line(DataGrid* grid, int line, Qt::KeyboardModifiers modifiers = {}) {
        QHeaderView* lines = grid->verticalHeader();
        const int y = lines->sectionViewportPosition(line) + lines->sectionSize(line) / 2;
        QTest::mouseClick(lines->viewport(), Qt::LeftButton, modifiers, QPoint(8, y));
    }
    static void to_clipboard(const QString& text) { QApplication::clipboard()->setText(text); }
    static QString cell(const DataGrid* grid, int line, int column) {
        return grid->model()->index(line, column).data().toString();
    }
    QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }
    // What the popup menu of the grid offers, and the entry that is chosen in it.
    static QStringList popup(DataGrid* grid, const char* choice) {
        QStringList offered;
        QTimer::singleShot(0, grid, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            EXPECT_EQ(menu->objectName(), QStringLiteral("mnuEdit1"));
            QAction* chosen = nullptr;
            for (QAction* action : menu->actions()) {
                offered << action->text();
                if (action->text() == QLatin1String(choice)) chosen = action;
            }
            ASSERT_TRUE(chosen) << choice;
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(chosen).center());
        });
        const QPoint at = grid->visualRect(grid->currentIndex()).center();
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid->viewport()->mapToGlobal(at));
        QApplication::sendEvent(grid->viewport(), &event);
        return offered;
    }

    const std::vector<TpRhoPoint>& points() { return document().exp.points.list(); }
    const std::vector<XYPoint>& pairs() { return document().xy.points.list(); }
    std::vector<double> column_T() {
        std::vector<double> T;
        for (std::size_t i = 1; i < points().size(); ++i) T.push_back(points()[i].T);
        return T;
    }

    frmTpRhoEdit* open_exp_editor() {
        menu("mnuData_BatchInput")->trigger();
        auto* window = frame.child<frmTpRhoEdit>();
        EXPECT_TRUE(window && window->isVisible());
        return window;
    }
    frmQXYEdit* open_xy_editor() {
        menu("mnuData_EditXY")->trigger();
        auto* window = frame.child<frmQXYEdit>();
        EXPECT_TRUE(window && window->isVisible());
        return window;
    }
    // Twenty vapor pressures of acetone as a spreadsheet of this language has them.
    static QString twenty_lines() {
        QString text;
        for (int i = 0; i < 20; ++i)
            text += QStringLiteral("%1,5\t%2,25\r\n").arg(260 + 5 * i).arg(4 + 7 * i);
        return text;
    }
};

TEST_F(DataWindows, new_data_need_a_substance_and_ask_before_points_are_deleted) {
    EXPECT_FALSE(enabled("mnuData_BatchInput"));
    EXPECT_TRUE(enabled("mnuData_EditXY"));
    open_starter_database();
    menu("mnuData_BatchInput")->trigger();
    EXPECT_THAT(messages.take(), ElementsAre(Pair("friendly remark",
                                                  "first choose a substance or load a project;\n"
                                                  "and after that you can view or load exper. data")));
    EXPECT_FALSE(frame.child<frmTpRhoEdit>());

    go_to_calculations("Acetone");
    EXPECT_FALSE(enabled("Toolbar1_22"));
    auto* window = open_exp_editor();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("  experimental data input / edit"));
    EXPECT_EQ(window->grid->accessibleDescription(), QStringLiteral("empty list"));
    type("300\r50+");
    ASSERT_EQ(points().size(), 2u);
    EXPECT_TRUE(enabled("Toolbar1_22"));
    EXPECT_TRUE(enabled("mnuData_BatchEdit"));
    messages.take();

    menu("Toolbar1_20")->trigger();  // the answer proposed is No
    EXPECT_THAT(messages.take(), ElementsAre(Pair("WARNING",
                                                  "Input of new data is expected;\nthe existing data are "
                                                  "deleted.\nDo you want this?")));
    EXPECT_EQ(points().size(), 2u);
    messages.answers = {Answer::yes};
    menu("mnuData_BatchInput")->trigger();
    EXPECT_EQ(points().size(), 1u) << "the direct input stays";
    EXPECT_FALSE(enabled("Toolbar1_22"));
    EXPECT_FALSE(enabled("mnuData_BatchEdit"));
    EXPECT_FALSE(document().exp.ExpGeaendert);
}

TEST_F(DataWindows, points_are_typed_in_the_units_chosen) {
    go_to_calculations("Acetone");
    auto* window = open_exp_editor();
    press(window, "opt_T_unit_1");
    press(window, "opt_p_Unit_2");
    window->y[0]->setFocus();
    type("+");
    EXPECT_EQ(points().size(), 1u) << "nothing in the boxes";
    EXPECT_EQ(window->lblZeile->text(), QStringLiteral("line 1"));
    type("25\r760+");
    ASSERT_EQ(points().size(), 2u);
    EXPECT_EQ(points()[1].T, 298.15);
    EXPECT_EQ(points()[1].p, 101.325);
    EXPECT_EQ(window->lblZeile->text(), QStringLiteral("line 2"));
    EXPECT_EQ(window->y[0], QApplication::focusWidget());
    type("56,1\r\r\r\r\r\r");  // a decimal comma, and Enter through all boxes
    ASSERT_EQ(points().size(), 3u);
    EXPECT_DOUBLE_EQ(points()[2].T, 329.25);
    EXPECT_EQ(points()[2].p, 0.0) << "an empty box is no value";
    EXPECT_TRUE(document().exp.ExpGeaendert);

    type("-300+");
    EXPECT_EQ(points().size(), 3u);
    EXPECT_TRUE(window->y[0]->refused());
    EXPECT_THAT(in<QLabel>(window, "y_0_refusal")->text().toStdString(), HasSubstr("-273.15"));

    // The marked line shows again what was typed, in any unit.
    click_cell(window->grid, 0, 1);
    press(window, "optInputMode_1");
    EXPECT_EQ(window->y[0]->text(), QStringLiteral("25"));
    EXPECT_EQ(window->y[1]->text(), QStringLiteral("760"));
    EXPECT_EQ(window->lblZeile->text(), QStringLiteral("line 1"));
    press(window, "opt_p_Unit_1");
    EXPECT_EQ(window->y[1]->text(), QStringLiteral("1"));
    press(window, "opt_T_unit_0");
    EXPECT_EQ(window->y[0]->text(), QStringLiteral("298.15"));

    // v(V) of 2 kmol: rho = M n / V.
    press(window, "opt_Rho_Unit_1");
    EXPECT_EQ(window->lblDensity->text(), QStringLiteral("mol. volume"));
    EXPECT_EQ(window->lblY[2]->text(), QStringLiteral("v_V"));
    EXPECT_EQ(window->lblUnit[3]->text(), QStringLiteral("m^3"));
    EXPECT_THAT(window->lblMolHint->text().toStdString(), HasSubstr("58.08"));
    window->txtMol->setFocus();
    window->txtMol->selectAll();
    type("2\t");
    window->y[2]->setFocus();
    window->y[2]->selectAll();
    type("48+");
    ASSERT_EQ(points().size(), 3u) << "the line is edited, none is added";
    const double M = static_cast<double>(session().substance().MolMass);
    EXPECT_FLOAT_EQ(points()[1].rhoV, static_cast<float>(M * 2 / 48));
    EXPECT_EQ(points()[1].p, 101.325) << "1 atm";
    press(window, "opt_Rho_Unit_0");
    EXPECT_NEAR(window->y[2]->text().toDouble(), M * 2 / 48, 1e-5);
}

TEST_F(DataWindows, the_grid_is_edited_and_exchanged_with_spreadsheets) {
    go_to_calculations("Acetone");
    auto* window = open_exp_editor();
    DataGrid* grid = window->grid;
    to_clipboard(twenty_lines());
    press(window, "cmdClipEinfuegen");
    ASSERT_EQ(points().size(), 21u);
    EXPECT_EQ(points()[1].T, 260.5);
    EXPECT_EQ(points()[20].p, 137.25);
    EXPECT_EQ(cell(grid, 19, 0), QStringLiteral("355.5"));

    // A number typed over a cell; Enter goes down; a text that is none is not taken.
    click_cell(grid, 2, 1);
    type("1,5\r");
    QApplication::processEvents();
    EXPECT_EQ(points()[3].p, 1.5);
    EXPECT_EQ(grid->currentIndex().row(), 3);
    type("1.2.3\r");
    EXPECT_EQ(window->notice->text(), QStringLiteral("1.2.3 is no number."));
    key(Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(points()[4].p, 25.25);
    EXPECT_TRUE(window->isVisible()) << "Esc left the cell, not the window";

    // Cells as a spreadsheet gets them, over others, and as lines of their own.
    click_cell(grid, 0, 0);
    click_cell(grid, 1, 1, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("260.5\t4.25\n265.5\t11.25\n"));
    click_cell(grid, 19, 0);
    key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(points().size(), 22u) << "one over the last line, one behind it";
    EXPECT_EQ(points()[20].T, 260.5);
    EXPECT_EQ(points()[21].p, 11.25);
    to_clipboard(QStringLiteral("1.5\t2,5\t3\t4\t5\t6"));
    click_cell(grid, 1, 3);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(points().size(), 23u);
    EXPECT_TRUE((points()[2] == TpRhoPoint{0, 1.5, 2.5, 3, 4, 5, 6}));
    EXPECT_EQ(points()[3].T, 265.5);
    to_clipboard(QStringLiteral("300\tabc"));
    click_cell(grid, 0, 0);
    key(Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(points()[1].T, 260.5) << "all of it or nothing";
    EXPECT_THAT(window->notice->text().toStdString(), HasSubstr("abc is no number."));

    // Cells to 0.
    click_cell(grid, 1, 2);
    click_cell(grid, 1, 3, Qt::ShiftModifier);
    EXPECT_THAT(
        popup(grid, "marked cell(s) => 0"),
        ElementsAre(QStringLiteral("copy"), QStringLiteral("paste"), QStringLiteral("delete"),
                    QStringLiteral("marked cell(s) => 0"), QStringLiteral("remove marked line(s)"), QString(),
                    QStringLiteral("copy the table"), QStringLiteral("save the table as...")));
    EXPECT_TRUE((points()[2] == TpRhoPoint{0, 1.5, 2.5, 0, 0, 5, 6}));
    EXPECT_EQ(cell(grid, 1, 2), QStringLiteral("0"));
}

TEST_F(DataWindows, lines_are_removed_sorted_and_switched_off) {
    go_to_calculations("Acetone");
    auto* window = open_exp_editor();
    DataGrid* grid = window->grid;
    press(window, "cmdErase");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible", "No marked line!")));
    to_clipboard(QStringLiteral("300\t5\n290\t9\n310\t1\n295\t7\n"));
    grid->setFocus();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(column_T(), ElementsAre(300, 290, 310, 295));

    press(window, "TSort");
    EXPECT_THAT(column_T(), ElementsAre(290, 295, 300, 310));
    press(window, "pSort");
    EXPECT_THAT(column_T(), ElementsAre(310, 300, 295, 290));

    click_line(grid, 1);
    click_line(grid, 2, Qt::ShiftModifier);
    press(window, "cmdAus");
    EXPECT_EQ(points()[2].Aus, -1);
    EXPECT_EQ(points()[3].Aus, -1);
    EXPECT_NE(grid->model()->index(1, 0).data(Qt::ForegroundRole), QVariant()) << "greyed";
    EXPECT_EQ(grid->model()->index(0, 0).data(Qt::ForegroundRole), QVariant());
    const QModelIndex box = grid->model()->index(1, 6);
    EXPECT_EQ(box.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    grid->setFocus();
    grid->setCurrentIndex(box);
    key(Qt::Key_Space);
    EXPECT_EQ(points()[2].Aus, 0) << "by the check box";

    click_line(grid, 1);
    messages.answers = {Answer::no};
    press(window, "cmdErase");
    EXPECT_EQ(points().size(), 5u);
    click_line(grid, 2, Qt::ShiftModifier);
    messages.answers = {Answer::yes};
    key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_THAT(messages.take(), ElementsAre(Pair("WARNING", "line 2 really remove?"),
                                             Pair("WARNING", "lines 2 to 3 really remove?")));
    EXPECT_THAT(column_T(), ElementsAre(310, 290));
    click_line(grid, 0);
    click_line(grid, 1, Qt::ShiftModifier);
    messages.answers = {Answer::yes};
    popup(grid, "remove marked line(s)");
    EXPECT_THAT(column_T(), IsEmpty());
    EXPECT_EQ(grid->accessibleDescription(), QStringLiteral("empty list"));
    EXPECT_FALSE(enabled("Toolbar1_22"));
}

TEST_F(DataWindows, experimental_data_are_saved_loaded_joined_and_asked_for) {
    go_to_calculations("Acetone");
    auto* window = open_exp_editor();
    to_clipboard(twenty_lines());
    press(window, "cmdClipEinfuegen");
    window->txtComment->setFocus();
    type("Brown and Smith +");
    EXPECT_EQ(points().size(), 21u) << "+ is a letter of a comment";
    click_line(window->grid, 0);
    press(window, "cmdAus");
    const std::vector<TpRhoPoint> typed = points();

    // Cancel keeps the window, Yes saves and closes it.
    QWidget* sub = window->parentWidget();
    messages.answers = {Answer::cancel};
    sub->close();
    EXPECT_THAT(messages.take(),
                ElementsAre(Pair("WARNING",
                                 "The data has not yet been saved after modification.\nSave now as *.BAQ?")));
    EXPECT_TRUE(window->isVisible());
    messages.answers = {Answer::yes};
    sub->close();
    EXPECT_TRUE(window->isVisible()) << "no file was named";
    messages.answers = {Answer::yes};
    dialogs->files = {path("acetone.BAQ")};
    press(window, "cmdClose");
    EXPECT_FALSE(frame.child<frmTpRhoEdit>());
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Save exper. data as text file *.BAQ"));
    EXPECT_FALSE(document().exp.ExpGeaendert);
    EXPECT_EQ(points().size(), 21u) << "the data stay in memory";

    menu("mnuData_BatchEdit")->trigger();
    window = frame.child<frmTpRhoEdit>();
    ASSERT_TRUE(window);
    EXPECT_THAT(window->windowTitle().toStdString(), HasSubstr("acetone.BAQ"));
    messages.take();
    dialogs->files = {path("acetone.BAQ"), path("acetone.BAQ"), {}};
    press(window, "cmdBatchLoad");
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Load data file (with preview)"));
    ASSERT_EQ(points().size(), 21u);
    EXPECT_EQ(points()[1].Aus, 0) << "a file knows no lines that are off";
    EXPECT_EQ(points()[20], typed[20]);
    EXPECT_EQ(window->txtComment->text(), QStringLiteral("Brown and Smith +"));
    EXPECT_THAT(window->windowTitle().toStdString(), HasSubstr("experimental data, Acetone"));
    press(window, "cmdBatchAdd");
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Join data from a file (with preview)"));
    EXPECT_EQ(points().size(), 41u);
    press(window, "cmdBatchAdd");
    EXPECT_EQ(points().size(), 41u) << "given up";
    EXPECT_THAT(messages.take(), IsEmpty());

    // No drops nothing.
    click_cell(window->grid, 0, 0);
    type("300\r");
    QApplication::processEvents();
    messages.answers = {Answer::no};
    window->parentWidget()->close();
    EXPECT_EQ(messages.take().size(), 1u);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(points()[1].T, 300);
    EXPECT_TRUE(document().exp.ExpGeaendert);
}

TEST_F(DataWindows, T_y_pairs_become_x_y_data) {
    go_to_calculations("Acetone");
    auto* window = open_exp_editor();
    press(window, "cmdSaveXY");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("Execution not possible", "no data available ")));
    to_clipboard(QStringLiteral("300\t5\t1\t790\n310\t6\t2\t780\n320\t7\t3\t770\n"));
    press(window, "cmdClipEinfuegen");
    click_line(window->grid, 1);
    press(window, "cmdAus");
    press(window, "optFitFunction_2");
    dialogs->files = {path("rho.XY")};
    press(window, "cmdSaveXY");
    EXPECT_EQ(dialogs->asked.back().title, QStringLiteral("Save T-y data as ..."));
    auto* xy = open_xy_editor();
    dialogs->files = {path("rho.XY")};
    press(xy, "cmdLoad");
    ASSERT_EQ(pairs().size(), 2u);
    EXPECT_EQ(pairs()[1].x, 320.0f);
    EXPECT_EQ(pairs()[1].y, 770.0f);
    auto* fitting = in<QAbstractButton>(window, "cmdFitting");
    EXPECT_FALSE(fitting->isEnabled());
    EXPECT_THAT(fitting->toolTip().toStdString(), HasSubstr("not yet available"));
    for (const auto& [editor, button] :
         {std::pair<QWidget*, const char*>{window, "cmdPrintTpVListe"}, {xy, "cmdPrint"}}) {
        QString shown;
        QTimer::singleShot(0, editor, [&shown] {
            QWidget* preview = QApplication::activeModalWidget();
            ASSERT_TRUE(preview);
            shown = preview->objectName();
            preview->close();
        });
        press(editor, button);
        EXPECT_EQ(shown, QStringLiteral("print_preview"));
    }
}

TEST_F(DataWindows, x_y_points_are_typed_pasted_sorted_and_swapped) {
    auto* window = open_xy_editor();
    EXPECT_EQ(window->lblZeile->text(), QStringLiteral("Add line 1"));
    type("1,5\r-2,5+");
    type("1E39+");
    EXPECT_TRUE(window->txtX->refused()) << "beyond the range of singles";
    ASSERT_EQ(pairs().size(), 1u);
    EXPECT_TRUE((pairs()[0] == XYPoint{1.5f, -2.5f, 0}));
    to_clipboard(QStringLiteral("3\t4\n0,5\t8\n"));
    window->grid->setFocus();
    window->grid->clearSelection();
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(pairs().size(), 3u);
    press(window, "XSort");
    EXPECT_EQ(cell(window->grid, 0, 0), QStringLiteral("0.5"));
    press(window, "YSort");
    EXPECT_EQ(cell(window->grid, 0, 0), QStringLiteral("1.5"));
    press(window, "cmdChangeXY");
    EXPECT_EQ(cell(window->grid, 0, 0), QStringLiteral("-2.5"));
    EXPECT_EQ(cell(window->grid, 0, 1), QStringLiteral("1.5"));
    click_line(window->grid, 1);
    press(window, "optInputMode_1");
    EXPECT_EQ(window->lblZeile->text(), QStringLiteral("Edit line 2"));
    EXPECT_EQ(window->txtX->text(), QStringLiteral("4"));
    window->txtX->setFocus();
    window->txtX->selectAll();
    type("9+");
    EXPECT_TRUE((pairs()[1] == XYPoint{9, 3, 0}));
    EXPECT_EQ(pairs().size(), 3u);
    messages.answers = {Answer::yes};
    press(window, "cmdErase");
    EXPECT_THAT(messages.take(), ElementsAre(Pair("WARNING", "line 2 really remove?")));
    EXPECT_EQ(pairs().size(), 2u);
}

TEST_F(DataWindows, conversions_change_all_active_points_or_none) {
    auto* window = open_xy_editor();
    to_clipboard(QStringLiteral("0.25\t1\n0.5\t0\n0.75\t2\n"));
    press(window, "cmdClipEinfuegen");
    EXPECT_FALSE(window->cmdExecManip->isVisible());
    press(window, "cmdManip");
    const auto convert = [&](int operation, const char* W) {
        press(window, qPrintable(QStringLiteral("optManip_%1").arg(operation)));
        window->txtW->setText(QLatin1String(W));
        press(window, "cmdExecManip");
    };
    const std::vector<XYPoint> before = pairs();
    for (const int refused : {1, 4}) {
        convert(refused, "");
        EXPECT_EQ(pairs(), before);
        const auto told = messages.take();
        ASSERT_EQ(told.size(), 1u) << refused;
        EXPECT_EQ(told[0].second,
                  "Action is not possible using the present data\n"
                  "(The problematic points can be set \"inactive\" (activate checkbox)\n or deleted.)");
    }
    window->grid->setFocus();
    window->grid->setCurrentIndex(window->grid->model()->index(1, 2));
    key(Qt::Key_Space);
    EXPECT_EQ(pairs()[1].Aus, -1);
    convert(1, "");
    EXPECT_FLOAT_EQ(pairs()[2].y, std::log(2.0f));
    convert(0, "");
    EXPECT_FLOAT_EQ(pairs()[2].y, 2.0f);
    convert(2, "3");
    convert(3, "-1");
    convert(4, "");
    convert(5, "");
    EXPECT_FLOAT_EQ(pairs()[0].y, 1.0f / 2);
    EXPECT_FLOAT_EQ(pairs()[2].y, 1.0f / 5);
    EXPECT_FLOAT_EQ(pairs()[2].x, 0.25f);
    EXPECT_TRUE((pairs()[1] == XYPoint{0.5f, 0, -1})) << "a point that is off stays as it was";
    convert(2, "");
    EXPECT_TRUE(window->txtW->refused());
    EXPECT_THAT(messages.take(), IsEmpty());
    press(window, "cmdCloseManip");
    EXPECT_FALSE(window->fraManip->isVisible());
}

TEST_F(DataWindows, x_y_data_are_saved_loaded_and_asked_for) {
    auto* window = open_xy_editor();
    to_clipboard(QStringLiteral("1\t2\n3\t4\n5\t6\n"));
    press(window, "cmdClipEinfuegen");
    click_line(window->grid, 1);
    press(window, "cmdAus");
    messages.answers = {Answer::cancel};
    window->parentWidget()->close();
    EXPECT_THAT(messages.take(), ElementsAre(Pair("WARNING", "Data not yet saved.\nSave now?")));
    EXPECT_TRUE(window->isVisible());
    dialogs->files = {path("pairs.XY"), path("pairs.XY")};
    press(window, "cmdSave");
    EXPECT_FALSE(document().xy.XYGeaendert);
    press(window, "cmdLoad");
    EXPECT_EQ(window->lblStatus->text(), QStringLiteral("  loaded: pairs.XY (2 data lines)"));
    ASSERT_EQ(pairs().size(), 2u) << "a point that is off is not saved";
    EXPECT_TRUE((pairs()[1] == XYPoint{5, 6, 0}));
    press(window, "cmdClose");
    EXPECT_THAT(messages.take(), IsEmpty());
    EXPECT_FALSE(frame.child<frmQXYEdit>());
    EXPECT_EQ(pairs().size(), 2u);
}

TEST_F(DataWindows, the_result_opens_the_x_y_editor) {
    go_to_calculations("Acetone");
    menu("mnuCalc_2")->trigger();
    type("300\r500\r");
    auto* result = frame.child<frmQCalcOut>();
    ASSERT_TRUE(result);
    press(result, "cmdShowManuInput");
    auto* window = frame.child<frmQXYEdit>();
    ASSERT_TRUE(window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isAncestorOf(QApplication::focusWidget()));
}

// A hundred thousand points load, sort, scroll and are edited without a pause that is felt; the bounds leave
// room for a busy machine.
TEST_F(DataWindows, many_points_are_no_trouble) {
    go_to_calculations("Acetone");
    constexpr int N = 100000;
    const std::string file = path("many.BAQ").toStdString();
    {
        std::ofstream out(file, std::ios::binary);
        out << "01.01.26\r\nmany\r\n67-64-1;Acetone\r\n" << N << "\r\n";
        for (int i = 0; i < N; ++i)
            out << 200 + (i * 7919) % N * 0.001 << "\r\n" << i << "\r\n0\r\n0\r\n0\r\n0\r\n";
    }
    auto* window = open_exp_editor();
    dialogs->files = {QString::fromStdString(file)};
    QElapsedTimer clock;
    const auto within = [&](const char* what, int most) {
        QApplication::processEvents();
        std::cout << what << ": " << clock.elapsed() << " ms" << std::endl;
        EXPECT_LT(clock.elapsed(), most) << what;
        clock.start();
    };
    clock.start();
    press(window, "cmdBatchLoad");
    within("load", 3000);
    ASSERT_EQ(points().size(), N + 1u);
    press(window, "TSort");
    within("sort", 3000);
    EXPECT_EQ(points()[1].T, 200.0);
    EXPECT_TRUE(std::is_sorted(points().begin() + 1, points().end(),
                               [](const TpRhoPoint& a, const TpRhoPoint& b) { return a.T < b.T; }));
    window->grid->scrollToBottom();
    within("scroll", 1000);
    click_cell(window->grid, N - 1, 1);
    type("5\r");
    within("edit", 1000);
    EXPECT_EQ(points()[N].p, 5.0);
    key(Qt::Key_A, Qt::ControlModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    within("copy", 3000);
    EXPECT_EQ(QApplication::clipboard()->text().count(QLatin1Char('\n')), N);
    messages.answers = {Answer::yes};
    press(window, "cmdErase");
    within("remove", 3000);
    EXPECT_EQ(points().size(), 1u);
}

}  // namespace
}  // namespace quom
