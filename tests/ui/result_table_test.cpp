// The table of a result under keys and mouse, alone in a tab.
#include "ui/widgets/result_table.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>

#include "support/starter.h"
#include "ui/main/workbench.h"
#include "ui/widgets/result_table_view.h"
#include "ui/window_driver.h"

namespace quom {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Model = ResultTableModel;

struct Tab {
    explicit Tab(Workbench& bench) : table(new ResultTable(bench)) {
        tabs.addTab(table, QStringLiteral("Table"));
        tabs.setCornerWidget(table->corner());
        table->corner()->show();
        tabs.resize(700, 460);
        tabs.show();
        QApplication::processEvents();
    }
    ResultTableView* view() const { return table->view(); }
    QModelIndex cell(const char* key, int column) const {
        const auto& sections = table->model()->values().sections;
        for (std::size_t s = 0; s < sections.size(); ++s)
            for (std::size_t r = 0; r < sections[s].rows.size(); ++r)
                if (sections[s].rows[r].key == key)
                    return table->model()->index(static_cast<int>(r), column,
                                                 table->model()->index(static_cast<int>(s), 0));
        ADD_FAILURE() << key;
        return {};
    }
    std::string text(const char* key, int column) const {
        return cell(key, column).data().toString().toStdString();
    }
    QModelIndex section(int row) const { return table->model()->index(row, 0); }
    void go_to(const QModelIndex& index) const {
        view()->setFocus();
        view()->setCurrentIndex(index);
        view()->selectionModel()->clearSelection();
    }
    void click(const QModelIndex& index) const {
        view()->scrollTo(index);
        QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, view()->visualRect(index).center());
    }
    void press(const char* name) const {
        auto* button = tabs.findChild<QPushButton*>(QLatin1String(name));
        ASSERT_TRUE(button);
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QComboBox* digits() const { return tabs.findChild<QComboBox*>(QStringLiteral("result_digits")); }

    QTabWidget tabs;
    ResultTable* table;
};

class TableOfResult : public ::testing::Test {
 protected:
    TableOfResult() { show(state(300, 100)); }
    // Two phases at 300 K and 100 kg/m^3; one phase at T, p.
    Outcome state(double T, double rho) const {
        return CalcBatch(*fluid, {.mode = Mode::T_rho, .T = T, .rho = rho});
    }
    void show(const Outcome& outcome) {
        tab.table->show_outcome(*fluid, outcome, {});
        QApplication::processEvents();
    }
    static void key(Qt::Key code, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* popup = QApplication::activePopupWidget();
        QTest::keyClick(popup ? popup : QApplication::focusWidget(), code, modifiers);
    }
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    // The entry of the open menu, by a click.
    static void choose(const char* text) {
        ASSERT_TRUE(menu());
        for (QAction* action : menu()->actions())
            if (action->text() == QString::fromUtf8(text))
                return QTest::mouseClick(menu(), Qt::LeftButton, {}, menu()->actionGeometry(action).center());
        FAIL() << text;
    }
    static std::string clipboard() { return QApplication::clipboard()->text().toStdString(); }

    QueuedMessages messages;
    Workbench bench{messages};
    std::shared_ptr<const Fluid> fluid = test::starter_fluid(test::propane, Eos::peng_robinson);
    Tab tab{bench};
};

TEST_F(TableOfResult, points_stand_below_each_other_and_columns_fit_at_every_width) {
    QTest::keyClick(tab.view(), Qt::Key_Asterisk);
    for (const int width : {640, 700, 760, 1000, 1500}) {
        SCOPED_TRACE(width);
        tab.tabs.resize(width, 460);
        QApplication::processEvents();
        EXPECT_FALSE(tab.view()->horizontalScrollBar()->isVisible());
        EXPECT_LE(tab.view()->header()->length(), tab.view()->viewport()->width());
        const QFontMetricsF metrics(tab.view()->font());
        for (int s = 0; s < tab.table->model()->rowCount(); ++s)
            for (int column = Model::FirstValue; column < Model::ColumnCount; ++column) {
                const double point =
                    tab.view()->point_of(tab.table->model()->index(0, column, tab.section(s)));
                for (int r = 0; r < tab.table->model()->rowCount(tab.section(s)); ++r) {
                    const QModelIndex at = tab.table->model()->index(r, column, tab.section(s));
                    EXPECT_EQ(tab.view()->point_of(at), point);
                    const NumberParts parts = cut_at_point(at.data().toString());
                    const QRectF cell = tab.view()->visualRect(at);
                    EXPECT_GE(point - metrics.horizontalAdvance(parts.left), cell.left());
                    EXPECT_LE(point + metrics.horizontalAdvance(parts.right), cell.right() + 1);
                }
            }
    }
    // Where it is too narrow for the points, every number is still whole.
    tab.tabs.resize(520, 460);
    QApplication::processEvents();
    EXPECT_LE(tab.view()->header()->length(), tab.view()->viewport()->width());
    EXPECT_TRUE(tab.view()->isColumnHidden(Model::Symbol));
    for (const char* row : {"dpdv_T", "d2Tdv2", "h", "T"})
        for (int column = Model::FirstValue; column < Model::ColumnCount; ++column) {
            const QModelIndex at = tab.cell(row, column);
            EXPECT_LE(QFontMetricsF(tab.view()->font()).horizontalAdvance(at.data().toString()),
                      tab.view()->visualRect(at).width());
        }
    tab.tabs.resize(1500, 460);
    QApplication::processEvents();
    EXPECT_FALSE(tab.view()->isColumnHidden(Model::Symbol));
}

TEST_F(TableOfResult, numbers_are_cut_at_point_exponent_or_end) {
    const struct {
        const char *number, *left, *right;
    } cases[] = {{"3122.209", "3122", ".209"}, {"1E+06", "1", "E+06"}, {"100", "100", ""}, {"", "", ""}};
    for (const auto& c : cases) {
        EXPECT_EQ(cut_at_point(QLatin1String(c.number)).left.toStdString(), c.left);
        EXPECT_EQ(cut_at_point(QLatin1String(c.number)).right.toStdString(), c.right);
    }
}

TEST_F(TableOfResult, arrows_go_by_cell_and_fold_sections) {
    tab.go_to(tab.section(0));
    key(Qt::Key_Left);
    EXPECT_FALSE(tab.view()->isExpanded(tab.section(0)));
    key(Qt::Key_Right);
    EXPECT_TRUE(tab.view()->isExpanded(tab.section(0)));
    key(Qt::Key_Space);
    EXPECT_FALSE(tab.view()->isExpanded(tab.section(0)));
    key(Qt::Key_Asterisk);
    for (int s = 0; s < tab.table->model()->rowCount(); ++s)
        EXPECT_TRUE(tab.view()->isExpanded(tab.section(s)));
    key(Qt::Key_Down);
    EXPECT_EQ(tab.view()->currentIndex(), tab.cell("T", 0));
    for (int i = 0; i < 9; ++i) key(Qt::Key_Right);  // the last column holds
    EXPECT_EQ(tab.view()->currentIndex(), tab.cell("T", Model::ColumnCount - 1));
    key(Qt::Key_Down);
    key(Qt::Key_Left);
    EXPECT_EQ(tab.view()->currentIndex(), tab.cell("p", Model::ColumnCount - 2));
    tab.click(tab.section(0));
    EXPECT_FALSE(tab.view()->isExpanded(tab.section(0)));
}

TEST_F(TableOfResult, keys_of_the_window_go_through) {
    tab.go_to(tab.cell("h", Model::Unit));
    for (const Qt::Key code : {Qt::Key_Escape, Qt::Key_F5, Qt::Key_F1, Qt::Key_Return}) {
        QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
        QApplication::sendEvent(QApplication::focusWidget(), &event);
        EXPECT_FALSE(event.isAccepted()) << code;
    }
    EXPECT_EQ(tab.view()->currentIndex(), tab.cell("h", Model::Unit));
    key(Qt::Key_Tab);
    EXPECT_NE(QApplication::focusWidget(), tab.view());
}

TEST_F(TableOfResult, marked_cells_are_copied_else_all) {
    tab.go_to(tab.cell("h", Model::FirstValue));
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(clipboard(), HasSubstr("\nQuantity\tSymbol\tUnit\tliquid L\tvapor V\tmixture\n"));
    EXPECT_THAT(clipboard(), HasSubstr("\nExpansion coefficients\nthermal expansion\talpha\t1/K\t"));
    EXPECT_THAT(clipboard(), HasSubstr("\t-"));
    EXPECT_EQ(clipboard().find("\u2212"), std::string::npos);
    const std::string all = clipboard();

    tab.click(tab.cell("h", Model::FirstValue));
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(clipboard(), StartsWith("-159"));
    EXPECT_EQ(std::stod(clipboard()), std::stod(cell_text(state(300, 100).L->h, {}, 7)));
    key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_Down, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(std::ranges::count(clipboard(), '\t'), 2);
    EXPECT_EQ(std::ranges::count(clipboard(), '\n'), 1);
    // What is hidden is not among the marked cells.
    show(state(300, 5));
    tab.go_to(tab.cell("h", Model::FirstValue));
    for (int i = 0; i < 4; ++i) key(Qt::Key_Right, Qt::ShiftModifier);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(std::ranges::count(clipboard(), '\t'), 1);
    show(state(300, 100));
    tab.press("result_copy");
    EXPECT_EQ(clipboard(), all);
}

TEST_F(TableOfResult, units_are_chosen_by_mouse_and_keys) {
    const double h = *state(300, 100).mixture->h;
    tab.click(tab.cell("h", Model::Unit));
    ASSERT_TRUE(menu());
    EXPECT_EQ(menu()->actions().back()->text().toStdString(), "this unit for h, u, g, a, e");
    choose("kJ/kg");
    EXPECT_EQ(tab.text("h", Model::Unit), "kJ/kg");
    EXPECT_EQ(tab.text("u", Model::Unit), "kJ/kmol");
    EXPECT_NEAR(tab.cell("h", 5).data().toString().replace(QChar(0x2212), '-').toDouble(), h / fluid->M,
                1e-3);
    tab.click(tab.cell("h", Model::Unit));
    choose("this unit for h, u, g, a, e");
    for (const char* row : {"u", "g", "a", "eH", "eU", "hLV"}) EXPECT_EQ(tab.text(row, Model::Unit), "kJ/kg");

    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* unit;
    } cases[] = {{Qt::Key_F4, {}, "°C"}, {Qt::Key_Space, {}, "°F"}, {Qt::Key_Down, Qt::AltModifier, "°R"}};
    for (const auto& c : cases) {  // the unit in force is marked: Down is the next one
        tab.go_to(tab.cell("T", Model::Unit));
        key(c.key, c.modifiers);
        ASSERT_TRUE(menu());
        EXPECT_TRUE(menu()->activeAction() && menu()->activeAction()->isChecked());
        key(Qt::Key_Down);
        key(Qt::Key_Return);
        EXPECT_EQ(tab.text("T", Model::Unit), c.unit);
    }
    EXPECT_EQ(tab.text("T", 5), "540");  // 300 K 9/5
    tab.go_to(tab.cell("z", Model::Unit));
    key(Qt::Key_F4);
    EXPECT_FALSE(menu());
    tab.go_to(tab.cell("T", Model::FirstValue));
    key(Qt::Key_F4);
    EXPECT_FALSE(menu());
}

TEST_F(TableOfResult, choices_are_remembered) {
    EXPECT_EQ(tab.view()->folded(), QStringList({"fugacity", "derivatives", "expansion"}));
    tab.digits()->setFocus();
    key(Qt::Key_Down);
    EXPECT_EQ(tab.text("T", 5), "300");
    EXPECT_EQ(tab.text("x", 5).size(), std::string("0.1814809").size() + 3);  // 10 digits
    tab.click(tab.cell("p", Model::Unit));
    choose("bar");
    tab.click(tab.section(1));
    const QStringList folded = tab.view()->folded();
    EXPECT_EQ(folded, QStringList({"functions", "fugacity", "derivatives", "expansion"}));

    Tab next(bench);
    next.table->show_outcome(*fluid, state(300, 100), {});
    EXPECT_EQ(next.digits()->currentText().toStdString(), "10");
    EXPECT_EQ(next.text("p", Model::Unit), "bar");
    EXPECT_EQ(next.view()->folded(), folded);
    next.press("result_fold");
    EXPECT_FALSE(next.view()->any_unfolded());
    next.press("result_fold");
    EXPECT_TRUE(next.view()->folded().isEmpty());
    Tab last(bench);
    last.table->show_outcome(*fluid, state(300, 100), {});
    EXPECT_TRUE(last.view()->folded().isEmpty());

    bench.memory.set(QStringLiteral("result/digits"), QStringLiteral("many"));
    bench.memory.set(QStringLiteral("result/units"), QStringLiteral("p=furlong;=;T"));
    bench.memory.set(QStringLiteral("result/folded"), QStringLiteral("nothing,"));
    Tab spoiled(bench);
    spoiled.table->show_outcome(*fluid, state(300, 100), {});
    EXPECT_EQ(spoiled.digits()->currentText().toStdString(), "7");
    EXPECT_EQ(spoiled.text("p", Model::Unit), "kPa");
}

TEST_F(TableOfResult, a_new_result_keeps_the_place) {
    tab.tabs.resize(700, 260);
    QApplication::processEvents();
    tab.view()->verticalScrollBar()->setValue(120);
    tab.go_to(tab.cell("cp", Model::FirstValue + 1));
    const int place = tab.view()->verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    show(state(320, 5));
    EXPECT_EQ(tab.view()->verticalScrollBar()->value(), place);
    EXPECT_EQ(tab.view()->currentIndex(), tab.cell("cp", Model::FirstValue + 1));
    EXPECT_TRUE(tab.view()->isColumnHidden(Model::ColumnCount - 1));  // one phase
    EXPECT_EQ(tab.text("h", Model::FirstValue), "");
}

TEST_F(TableOfResult, stale_and_refused_tell_so) {
    tab.table->set_stale(true);
    EXPECT_FALSE(tab.digits()->isEnabled());
    tab.click(tab.cell("T", Model::Unit));
    EXPECT_FALSE(menu());
    tab.go_to(tab.cell("T", Model::Unit));
    key(Qt::Key_F4);
    EXPECT_FALSE(menu());
    EXPECT_EQ(tab.view()->accessibleDescription().toStdString(), "not up to date");
    EXPECT_EQ(tab.text("T", 5), "300");  // still to be read

    Outcome refused;
    refused.mode = Mode::T_p;
    refused.failure = {Reason::no_root_above_b, 300, 500};
    show(refused);
    EXPECT_FALSE(tab.view()->isVisible());
    const auto* word = tab.table->findChild<QLabel*>();
    ASSERT_TRUE(word && word->isVisible());
    EXPECT_EQ(word->text().toStdString(), "No values: see the line above.");
    show(state(300, 100));
    EXPECT_TRUE(tab.view()->isVisible());
    EXPECT_TRUE(tab.digits()->isEnabled());
    EXPECT_EQ(tab.view()->accessibleDescription().toStdString(), "");
}

TEST_F(TableOfResult, cells_speak_in_whole_words) {
    const auto spoken = [](const QModelIndex& index) {
        return index.data(Qt::AccessibleTextRole).toString().toStdString();
    };
    const std::string value = tab.text("h", Model::FirstValue + 1);
    EXPECT_EQ(spoken(tab.cell("h", Model::FirstValue + 1)), "enthalpy h, vapor V, " + value + " kJ/kmol");
    EXPECT_EQ(spoken(tab.cell("T", Model::FirstValue)), "temperature T, liquid L, no value");
    EXPECT_EQ(spoken(tab.cell("z", Model::Unit)), "compressibility factor z, unit none");
    EXPECT_EQ(spoken(tab.section(0)), "State, 6 rows");
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(tab.view());
    ASSERT_TRUE(face && face->tableInterface());
    std::vector<std::string> texts;
    for (int i = 0; i < face->childCount(); ++i)
        if (QAccessibleInterface* child = face->child(i))
            texts.push_back(child->text(QAccessible::Name).toStdString());
    EXPECT_THAT(texts, ::testing::Contains("enthalpy h, vapor V, " + value + " kJ/kmol"));
}

}  // namespace
}  // namespace quom
