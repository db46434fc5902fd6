#include "ui/main/mdi_menus.h"

#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QToolBar>

#include "calc/mode_table.h"
#include "ui/look/svg_icons.h"
#include "ui/main/mdiQUOM.h"
#include "ui/main/menu_table.h"
#include "ui/widgets/labels.h"

namespace quom {

namespace {

const QString NotYet = QStringLiteral("not yet available");

QString object_name(const char* name, int index) {
    const QString text = QLatin1String(name);
    return index < 0 ? text : text + QLatin1Char('_') + QString::number(index);
}

QString caption_of(const MenuRow& row) {
    if (row.caption) return QString::fromUtf8(row.caption);
    const std::string_view text = mode_info(mode_of(row.value)).menu_text;
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

bool is_separator(const MenuRow& row) { return row.caption && row.caption[0] == '-' && !row.caption[1]; }

}  // namespace

mdiMenus::mdiMenus(mdiQUOM& frame) : frame_(frame) {}

void mdiMenus::build_menu_bar() {
    // Filled when they open.
    QSet<QString> parents{QStringLiteral("mnuWindow"), QStringLiteral("mnuData_RecentProjects"),
                          QStringLiteral("mnuData_RecentData")};
    for (const MenuRow& row : menu_rows()) parents.insert(QLatin1String(row.parent));
    for (const MenuRow& row : menu_rows()) {
        const QString name = object_name(row.name, row.index);
        if (!parents.contains(name)) {
            add_row(row);
            continue;
        }
        auto* menu = new QMenu(caption_of(row), &frame_);
        menu->setObjectName(name);
        menu->setToolTipsVisible(true);
        QAction* action = row.parent[0] ? menus_.value(QLatin1String(row.parent))->addMenu(menu)
                                        : frame_.menuBar()->addMenu(menu);
        menus_.insert(name, menu);
        actions_.insert(name, action);
    }
}

void mdiMenus::add_row(const MenuRow& row) {
    const QString name = object_name(row.name, row.index);
    auto* action = new QAction(is_separator(row) ? QString() : caption_of(row), &frame_);
    action->setObjectName(name);
    if (is_separator(row))
        action->setSeparator(true);
    else
        connect_action(action, row.action, row.value);
    if (row.parent[0])
        menus_.value(QLatin1String(row.parent))->addAction(action);
    else
        frame_.menuBar()->addAction(action);
    actions_.insert(name, action);
}

void mdiMenus::connect_action(QAction* action, void (*run)(mdiQUOM&, int), int value) {
    action->setMenuRole(QAction::NoRole);
    if (!run) {
        action->setToolTip(NotYet);
        action->setStatusTip(NotYet);
        action->setEnabled(false);
        return;
    }
    QObject::connect(action, &QAction::triggered, &frame_, [this, run, value] { run(frame_, value); });
}

void mdiMenus::build_toolbar(QToolBar* toolbar) {
    for (const ToolRow& row : tool_rows()) {
        if (row.index == 0) {
            toolbar->addSeparator();
            continue;
        }
        const QString tip = QString::fromUtf8(row.tip);
        auto* action = new QAction(svg_icon(QLatin1String(row.icon)), spoken(tip), &frame_);
        action->setObjectName(object_name("Toolbar1", row.index));
        action->setToolTip(tip);
        connect_action(action, row.action, row.value);
        if (!row.action) action->setToolTip(tip + QStringLiteral("(") + NotYet + QLatin1Char(')'));
        toolbar->addAction(action);
        QWidget* button = toolbar->widgetForAction(action);
        button->setObjectName(action->objectName());
        button->setAccessibleName(spoken(tip));
        button->setFocusPolicy(Qt::TabFocus);
        actions_.insert(action->objectName(), action);
    }
}

void mdiMenus::refresh() {
    const Session& s = frame_.session();
    for (const MenuRow& row : menu_rows()) {
        const QString name = object_name(row.name, row.index);
        if (menus_.contains(name) || row.action) actions_[name]->setEnabled(fulfilled(s, row.needs));
    }
    for (const ToolRow& row : tool_rows())
        if (row.action) actions_[object_name("Toolbar1", row.index)]->setEnabled(fulfilled(s, row.needs));
}

}  // namespace quom
