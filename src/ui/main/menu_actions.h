// What the entries of the menus and the toolbar do.
#pragma once

namespace quom {

class mdiQUOM;

// Topics of the help pages that the frame opens by itself.
inline constexpr int help_index = 0;
inline constexpr int help_about = 1;
inline constexpr int help_first_steps = 2;
inline constexpr int help_exercise = 3;
inline constexpr int help_tips = 4;

void open_database(mdiQUOM& frame, int kind);
void show_working_directory(mdiQUOM& frame, int);
void leave_program(mdiQUOM& frame, int);
void select_substance(mdiQUOM& frame, int);
// Makes row index (1-based) of the database the substance in force and opens its models; the user is told
// when its record cannot be read.
void take_substance(mdiQUOM& frame, int index);
void open_models(mdiQUOM& frame, int);
void show_eos_parameters(mdiQUOM& frame, int);
void start_unit_converter(mdiQUOM& frame, int);
void undo_step(mdiQUOM& frame, int);
void redo_step(mdiQUOM& frame, int);
void show_help_topic(mdiQUOM& frame, int topic);
void show_help_note(mdiQUOM& frame, int);
void show_version(mdiQUOM& frame, int);

}  // namespace quom
