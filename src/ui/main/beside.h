// Windows that belong to another window: opened beside it in the main window, or as windows of their own
// without one.
#pragma once
#include <QSize>

class QString;
class QWidget;

namespace quom {

class mdiQUOM;

// The main window around a window; null without one.
mdiQUOM* frame_of(QWidget* window);

// Opens a new window, known by its object name, beside its opener; an older one of that name goes.
void open_beside(QWidget* opener, QWidget* window);
// Closes a window and forgets it; null is none.
void drop_window(QWidget* window);

// What stands in for a control whose time has not come.
void not_yet_available(QWidget* control);

// Shows the page of a window in the main window around it.
void show_help_of(QWidget* window);

}  // namespace quom
