#include "ui/main/recent_files.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QStringList>

#include "base/code_page.h"
#include "base/files.h"
#include "forms/open_form.h"
#include "session/data_files.h"
#include "session/project_file.h"
#include "ui/main/data_windows.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/project_actions.h"
#include "ui/main/quick_start.h"

namespace quom {

namespace {

constexpr qsizetype Remembered = 8;
constexpr int FolderDigits = 36;  // width of a folder in the menu

QString key_of(RecentFiles kind) {
    return kind == RecentFiles::projects ? QStringLiteral("recent/projects") : QStringLiteral("recent/data");
}

void remember(UiMemory& memory, RecentFiles kind, const std::string& path) {
    if (path.empty()) return;
    QStringList list = memory.value(key_of(kind)).toStringList();
    const QString added = QString::fromStdString(absolute_path(path));
    if (!list.isEmpty() && list.front() == added) return;
    list.removeAll(added);
    list.prepend(added);
    while (list.size() > Remembered) list.removeLast();
    memory.set(key_of(kind), list);
}

}  // namespace

std::vector<std::string> recent_files(const UiMemory& memory, RecentFiles kind) {
    std::vector<std::string> list;
    for (const QString& path : memory.value(key_of(kind)).toStringList())
        if (QFileInfo(path).isFile()) list.push_back(path.toStdString());
    return list;
}

void remember_project(Workbench& bench) {
    const std::string& path = bench.session.shell.ProjectPath;
    if (!is_last_session(path)) remember(bench.memory, RecentFiles::projects, path);
}

void remember_data(Workbench& bench, const Changes& changes) {
    const Document& d = bench.document();
    if (changes.data) remember(bench.memory, RecentFiles::data, d.exp.file.ExpFile);
    if (changes.xy) remember(bench.memory, RecentFiles::data, d.xy.XYFile);
}

void open_recent(mdiQUOM& frame, RecentFiles kind, const std::string& path) {
    if (kind == RecentFiles::projects) {
        load_project(frame, path);
        return;
    }
    Workbench& bench = frame.bench();
    if (is_data_file_name(path)) {
        take_substance_of(frame, std::string(trim(ExpDataPreview(path, bench.session).CAS)));
        if (!BatchSaveFrage(frame) || !LoadExpDataFile(bench.session, path, false, bench.messages())) return;
        bench.announce({.data = true});
        edit_exp_data(frame, 0);
    } else {
        if (!XYSaveFrage(frame) || !LoadXYFile(bench.session, path, bench.messages())) return;
        bench.announce({.xy = true});
        edit_xy_data(frame, 0);
    }
}

void fill_recent_menu(mdiQUOM& frame, QMenu* menu, RecentFiles kind) {
    menu->clear();
    int number = 0;
    for (const std::string& path : recent_files(frame.bench().memory, kind)) {
        QString name = QString::fromStdString(name_part(path));
        const QString folder = QDir::toNativeSeparators(QString::fromStdString(folder_part(path)));
        const QFontMetrics metrics = menu->fontMetrics();
        const QString beside = metrics.elidedText(folder, Qt::ElideLeft,
                                                  FolderDigits * metrics.horizontalAdvance(QLatin1Char('0')));
        QAction* action =
            menu->addAction(name.replace(QLatin1Char('&'), QStringLiteral("&&")) + QLatin1Char('\t') + beside,
                            &frame, [&frame, kind, path] { open_recent(frame, kind, path); });
        action->setObjectName(menu->objectName() + QLatin1Char('_') + QString::number(number++));
        action->setToolTip(QString::fromStdString(path));
    }
    menu->menuAction()->setEnabled(number > 0);
}

}  // namespace quom
