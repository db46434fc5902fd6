// Tables taken to other programs: from the result, the grids of data and the list of substances.
#include <QClipboard>
#include <QListView>
#include <QMimeData>
#include <QTabWidget>

#include "ui/main/data_windows.h"
#include "ui/main/menu_actions.h"
#include "ui/widgets/data_grid.h"
#include "ui/widgets/table_copy.h"
#include "ui/window_driver.h"
#include "ui/windows/frmQStoffWahl.h"
#include "ui/windows/frmTpRhoEdit.h"

namespace quom {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class TableCopy : public WindowDriver {
 protected:
    ~TableCopy() override { QApplication::clipboard()->clear(); }
    std::string bytes_of(const QString& path) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        return file.readAll().toStdString();
    }
    void load_points() {
        change([](Document& d) {
            d.exp.points.edit().push_back({0, 300, 33.25, 0, 780, 0, 0});
            d.exp.points.edit().push_back({-1, 310.5, 50, 0, 770, 0, 0});
        });
    }
};

TEST_F(TableCopy, data_go_into_files_as_they_are_seen) {
    go_to_calculations("Acetone");
    load_points();
    edit_exp_data(frame, 0);
    auto* window = frame.child<frmTpRhoEdit>();
    ASSERT_TRUE(window);
    const ExportTable table = table_of(*window->grid->model());
    ASSERT_EQ(table.rows.size(), 2u);
    EXPECT_EQ(table.rows[0][0], ExportCell("300", true));
    EXPECT_EQ(table.rows[1].back().text, "x");  // off
    copy_table(table);
    const QMimeData* mime = QApplication::clipboard()->mimeData();
    EXPECT_THAT(mime->text().toStdString(), HasSubstr("\n300\t33.25\t"));
    EXPECT_THAT(mime->html().toStdString(), HasSubstr("<td align=\"right\">33.25</td>"));

    const QString csv = folder.filePath(QStringLiteral("a.csv")),
                  html = folder.filePath(QStringLiteral("a.html")),
                  tsv = folder.filePath(QStringLiteral("a.tsv"));
    change([](Document& d) { d.options.DezimalKomma = true; });
    for (const QString& path : {csv, html, tsv, folder.filePath(QStringLiteral("none/a.csv"))})
        dialogs->files.push_back(path);
    for (int i = 0; i < 3; ++i) EXPECT_TRUE(save_table(window->grid, table, QStringLiteral("data")));
    EXPECT_THAT(dialogs->asked.back().start.toStdString(), HasSubstr("data.csv"));
    EXPECT_THAT(bytes_of(csv), HasSubstr("\r\n300;33,25;"));
    EXPECT_THAT(bytes_of(html), StartsWith("<!DOCTYPE html>"));
    EXPECT_THAT(bytes_of(tsv), HasSubstr("\n300\t33,25\t"));
    messages.take();
    EXPECT_FALSE(save_table(window->grid, table, QStringLiteral("data")));  // no such folder
    EXPECT_EQ(messages.take().size(), 1u);
    EXPECT_FALSE(save_table(window->grid, table, QStringLiteral("data")));  // cancelled
    EXPECT_TRUE(messages.take().empty());
}

TEST_F(TableCopy, the_list_of_substances_is_copied_with_its_rows) {
    open_starter_database();
    auto* window = frame.child<frmQStoffWahl>();
    ASSERT_TRUE(window);
    window->NameCombo->setEditText(QStringLiteral("acetone"));
    QApplication::processEvents();
    ASSERT_EQ(window->StoffListe->actions().size(), 2);
    window->StoffListe->actions()[0]->trigger();
    const std::string text = QApplication::clipboard()->text().toStdString();
    EXPECT_THAT(text, StartsWith("ser. #\tFormula\tName of substance\n"));
    EXPECT_THAT(text, HasSubstr("C3H6O\tAcetone"));
    EXPECT_EQ(std::ranges::count(text, '\n'), window->StoffListe->model()->rowCount() + 1);
}

}  // namespace
}  // namespace quom
