// Menus and toolbar of the main window in two tables: caption, index, what an entry needs, what it does.
#pragma once
#include <span>

#include "forms/shell.h"

namespace quom {

class mdiQUOM;

// What an entry does; value is its own (CalcMode, kind of diagram, topic of help, ...).
using MenuAction = void (*)(mdiQUOM& frame, int value);

// A row without an action that is no menu is shown disabled as "not yet available".
struct MenuRow {
    const char* parent;   // name of the menu it stands in, "" for the menu bar
    const char* name;     // object name; rows of an array get "_<index>" behind it
    int index;            // -1: no array
    const char* caption;  // "-" is a separator; nullptr: text of the mode of calculation `value`
    Needs needs;
    MenuAction action;
    int value;
};
std::span<const MenuRow> menu_rows();

struct ToolRow {
    int index;         // of the button; 0 is a separator
    const char* icon;  // of icons/
    const char* tip;
    Needs needs;
    MenuAction action;
    int value;
};
std::span<const ToolRow> tool_rows();

}  // namespace quom
