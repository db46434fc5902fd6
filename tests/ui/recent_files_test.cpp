// Projects and data files that were used last: on the start page and in the menu of the next program.
#include "ui/main/recent_files.h"

#include "ui/main/start_page.h"
#include "ui/project_program.h"
#include "ui/window_driver.h"

namespace quom {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class RecentFilesTest : public WindowDriver {
 protected:
    QString at(const char* name) const { return folder.filePath(QLatin1String(name)); }
    void write(const char* name, const std::string& bytes) const {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }
    void load(const char* name) {
        dialogs->files.push_back(at(name));
        menu("mnuData_LoadProject")->trigger();
    }
};

TEST_F(RecentFilesTest, projects_and_data_stand_on_the_start_page_and_in_the_menu) {
    const QString memory = at("memory.ini");
    frame.bench().memory = UiMemory(memory);
    write("measured.BAQ", data_text());
    for (const char* name : {"1.QC6", "2.QC6", "3.QC6", "4.QC6", "5 & 6.QC6"}) {
        write(name, project_text({{4, "measured.BAQ"}, {5, " 2 "}}));
        load(name);
    }
    load("2.QC6");
    QFile::remove(at("4.QC6"));
    frame.bench().memory = UiMemory();

    Program next(folder, memory);
    const auto rows = [&] {
        std::vector<std::string> texts;
        for (const auto* row : next.frame.start_page->findChildren<StartRowButton*>())
            if (row->text().endsWith(QStringLiteral(".QC6")))
                texts.push_back(
                    (row->text() + QLatin1Char('|') + row->accessibleDescription()).toStdString());
        return texts;
    };
    EXPECT_THAT(rows(), ElementsAre("2.QC6|today", "5 & 6.QC6|today", "3.QC6|today"));
    const auto entries = [&](const char* name) {
        emit next.frame.findChild<QMenu*>(QStringLiteral("mnuData"))->aboutToShow();
        std::vector<std::string> texts;
        for (const QAction* action : next.frame.findChild<QMenu*>(QLatin1String(name))->actions())
            texts.push_back(action->text().section(QLatin1Char('\t'), 0, 0).toStdString());
        return texts;
    };
    EXPECT_THAT(entries("mnuData_RecentProjects"), ElementsAre("2.QC6", "5 && 6.QC6", "3.QC6", "1.QC6"));
    EXPECT_THAT(entries("mnuData_RecentData"), ElementsAre("measured.BAQ"));
    for (auto* row : next.frame.start_page->findChildren<StartRowButton*>())
        if (row->text() == QStringLiteral("3.QC6")) {
            QTest::mouseClick(row, Qt::LeftButton);
            break;
        }
    EXPECT_EQ(next.frame.session().shell.ProjectTitle, "3.QC6");
    EXPECT_EQ(entries("mnuData_RecentProjects").front(), "3.QC6");
    // Data alone: the project stays what it is.
    next.frame.findChild<QMenu*>(QStringLiteral("mnuData_RecentData"))->actions().front()->trigger();
    EXPECT_EQ(data_point_count(next.frame.session().document.exp), 2);
    QFile::remove(at("measured.BAQ"));
    entries("mnuData_RecentData");
    EXPECT_FALSE(
        next.frame.findChild<QMenu*>(QStringLiteral("mnuData_RecentData"))->menuAction()->isEnabled());
}

TEST_F(RecentFilesTest, data_files_of_the_last_session_open_from_the_start_page) {
    const QString memory = at("memory.ini");
    frame.bench().memory = UiMemory(memory);
    write("measured.BAQ", data_text());
    write("pairs.XY", "Size x, y\r\n1;2\r\n3;4\r\n5;6\r\n");
    write("more.BAQ", data_text());
    write("gone.BAQ", data_text());
    for (const char* name : {"gone.BAQ", "more.BAQ", "measured.BAQ"}) {
        write("p.QC6", project_text({{4, name}, {5, " 2 "}}));
        load("p.QC6");
    }
    menu("mnuData_EditXY")->trigger();
    dialogs->files.push_back(at("pairs.XY"));
    press(frame.child("frmQXYEdit"), "cmdLoad");
    QFile::remove(at("gone.BAQ"));
    frame.bench().memory = UiMemory();

    for (const char* opened : {"measured.BAQ", "pairs.XY"}) {
        Program next(folder, memory);
        std::vector<std::string> names;
        StartRowButton* wanted = nullptr;
        for (auto* row : next.frame.start_page->findChildren<StartRowButton*>()) {
            const QString name = row->text();
            if (name.endsWith(QStringLiteral(".BAQ")) || name.endsWith(QStringLiteral(".XY")))
                names.push_back(name.toStdString());
            if (name == QLatin1String(opened)) wanted = row;
        }
        ASSERT_THAT(names, UnorderedElementsAre("pairs.XY", "measured.BAQ", "more.BAQ"));
        ASSERT_TRUE(wanted);
        EXPECT_EQ(wanted->accessibleDescription(), QStringLiteral("today"));
        QApplication::processEvents();
        next.frame.start_page->ensureWidgetVisible(wanted);
        wanted->setFocus();
        QTest::keyClick(wanted, Qt::Key_Return);
        EXPECT_FALSE(next.frame.start_page->isVisible());
        EXPECT_THAT(next.messages.take(), IsEmpty());
        const Document& d = next.frame.session().document;
        const bool pairs = std::string_view(opened) == "pairs.XY";
        EXPECT_TRUE(next.frame.child(pairs ? "frmQXYEdit" : "frmTpRhoEdit"));
        EXPECT_EQ(data_point_count(d.exp), pairs ? 0 : 2);
        EXPECT_EQ(d.xy.XYFile.empty(), !pairs);
        // Measured values belong to a substance: it is taken with them.
        EXPECT_EQ(d.substance.constants.StoffName, pairs ? "" : "Propane");
        EXPECT_EQ(pairs ? 310.0 : d.exp.points[2].T, 310.0);
    }
}

}  // namespace
}  // namespace quom
