// The windows of data sets: from an entry of the menu to the window, the questions for their files, and the
// questions before something is lost.
#pragma once
#include <string>

namespace quom {

class mdiQUOM;

// Actions of the menu and the toolbar.
void new_exp_data(mdiQUOM& frame, int);   // an empty editor; existing data are deleted after a question
void edit_exp_data(mdiQUOM& frame, int);  // the editor with the points that are loaded
void edit_xy_data(mdiQUOM& frame, int);

// The file of experimental data to load, or to join; empty: the user gave up.
std::string ask_exp_data_file(mdiQUOM& frame, bool add);

// Loads the points of a file that the user picks; false: nothing was loaded.
bool load_exp_data(mdiQUOM& frame, bool add);
bool load_xy_data(mdiQUOM& frame);
// Saves under a path that the user picks; false: nothing was saved.
bool save_exp_data(mdiQUOM& frame);
bool save_xy_data(mdiQUOM& frame);
// Saves T and the chosen column of the active points as X-Y data.
void save_exp_data_as_xy(mdiQUOM& frame);

// Before data that are not saved are left: false when the user wants to stay.
bool BatchSaveFrage(mdiQUOM& frame);
bool XYSaveFrage(mdiQUOM& frame);

}  // namespace quom
