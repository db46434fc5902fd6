// Projects and data files that were used last, as they are remembered between sessions.
#pragma once
#include <string>
#include <vector>

class QMenu;

namespace quom {

class UiMemory;
class Workbench;
class mdiQUOM;
struct Changes;

enum class RecentFiles { projects, data };

// The last used first. Files that are gone are left out.
std::vector<std::string> recent_files(const UiMemory& memory, RecentFiles kind);

// Puts the project in force, or the files of data that have changed, at the front of their list.
void remember_project(Workbench& bench);
void remember_data(Workbench& bench, const Changes& changes);

// Opens one of them: the project as the menu does; data of a .BAQ or .XY file with their editor.
void open_recent(mdiQUOM& frame, RecentFiles kind, const std::string& path);

// Fills a menu with them: the name, and the folder beside it. Empty, the menu is off.
void fill_recent_menu(mdiQUOM& frame, QMenu* menu, RecentFiles kind);

}  // namespace quom
