// Controls that the windows of data sets share.
#pragma once
#include <QPushButton>
#include <QString>
#include <cstddef>
#include <initializer_list>
#include <vector>

#include "base/messages.h"

class QBoxLayout;
class QGroupBox;
class QRadioButton;

namespace quom {

class mdiQUOM;
struct FileQuestion;

// A button whose tool tip is also what a screen reader tells of it.
QPushButton* data_button(QWidget* parent, const char* name, const char* caption, const char* tip = "");

// Options of one question: name_0, name_1, ... from `first` on, the first one chosen.
void make_options(QWidget* parent, const char* name, QRadioButton** options,
                  std::initializer_list<const char*> captions, int first = 0);
int chosen_option(QRadioButton* const* options, int count);

// What a control waits for stands in its tool tip.
void switch_off(QWidget* control, const char* why);

// A row of controls, left-aligned.
QBoxLayout* control_row(std::initializer_list<QWidget*> controls);

// The numbers of a range of lines in a question: "line 3 really remove?", "lines 3 to 5 really remove?".
Message removal_question(int first, int last);

// The path of a file to open or to save; empty: the user gave up.
std::string ask_open_path(mdiQUOM& frame, const FileQuestion& question);
std::string ask_save_path(mdiQUOM& frame, const FileQuestion& question);

}  // namespace quom
