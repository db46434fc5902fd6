// Builds menu bar and toolbar from the tables and keeps their entries as the session allows.
#pragma once
#include <QHash>
#include <QString>

class QAction;
class QMenu;
class QToolBar;

namespace quom {

class mdiQUOM;
struct MenuRow;
struct ToolRow;

class mdiMenus {
 public:
    explicit mdiMenus(mdiQUOM& frame);
    void build_menu_bar();
    void build_toolbar(QToolBar* toolbar);
    void refresh();  // enables what the record allows

    // By object name: "mnuModel", "mnuCalc_3", "Toolbar1_15"; null for an unknown name.
    QAction* action(const QString& name) const { return actions_.value(name); }
    QMenu* menu(const QString& name) const { return menus_.value(name); }

 private:
    void add_row(const MenuRow& row);
    void connect_action(QAction* action, void (*run)(mdiQUOM&, int), int value);

    mdiQUOM& frame_;
    QHash<QString, QAction*> actions_;
    QHash<QString, QMenu*> menus_;
};

}  // namespace quom
