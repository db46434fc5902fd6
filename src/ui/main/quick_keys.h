// The keys of the whole program: Ctrl+K finds, F5 calculates, Ctrl+O opens a database, Ctrl+, the options,
// Ctrl+Z and Ctrl+Shift+Z undo and redo, F1 the help on the window in front.
#pragma once

namespace quom {

class mdiMenus;
class mdiQUOM;

// Puts the keys on the main window; those of menu entries stand beside their captions.
void add_quick_keys(mdiQUOM& frame, const mdiMenus& menus);

// Presses what calculates now: "Calculate again" of the result, else the button of the Iso Calculator in
// front, else that of the input. Without one of them nothing happens.
void calculate_now(mdiQUOM& frame);

// Shows the page of the window in front.
void help_in_front(mdiQUOM& frame);

}  // namespace quom
