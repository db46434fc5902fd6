// The windows of diagrams: from an entry of the menu to the sheet and the box of its parameter.
#pragma once
#include "forms/sheet_form.h"

namespace quom {

class mdiQUOM;

// An entry of the menus mnuGraf.. with the number of its kind.
void open_diagram(mdiQUOM& frame, int kind);
// A control graph of the data editors.
void open_control_graph(mdiQUOM& frame, ControlGraph graph);

// Shows the box of the parameter beside the sheet, or closes it where the diagram has none.
void show_parameter_box(mdiQUOM& frame, bool wanted);
// Closes the windows of a sheet that is no longer there.
void close_diagram_windows(mdiQUOM& frame);

// Draws the next curve on the sheet, and shows it.
void draw_next_curve(mdiQUOM& frame);
// What the user saves and loads; false: nothing was.
bool save_diagram(mdiQUOM& frame);
bool load_diagram(mdiQUOM& frame);

}  // namespace quom
