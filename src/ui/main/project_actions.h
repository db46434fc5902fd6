// Projects in the main window: loading, saving, what is told of them, and what is kept at the end.
#pragma once
#include <string>

namespace quom {

class mdiQUOM;

// Entries of the menu and the toolbar.
void load_last_session(mdiQUOM& frame, int);
void ask_for_project(mdiQUOM& frame, int);
void save_project(mdiQUOM& frame, int);
void show_project_status(mdiQUOM& frame, int);

// Loads a project of this path, as the command line or a list of recent files names it: substance, data and
// models are those of the project, the windows of the session before are closed, and the models open. False:
// the user was told why not, and nothing has changed.
bool load_project(mdiQUOM& frame, const std::string& path);

// What is kept when the program ends: with a database in force, the session for the next start.
void leave_session(mdiQUOM& frame);

}  // namespace quom
