// The command line of quom, read before there is a window or a display.
#pragma once
#include <QSize>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

#include "ui/charts/picture_file.h"

namespace quom {

struct CommandLine {
    std::string program_folder;
    std::string screenshots;  // pictures of every window into this folder, without a display
    std::string pictures;     // one run for them, with the main window in picture_size
    QSize picture_size;
    bool trace_start = false;
    std::string draw;  // the sheet of this file as a picture, without a display
    std::string draw_out;
    PictureSize draw_size;
    bool draw_size_given = false;
    bool draw_black = false;           // a state chart on a black sheet
    std::vector<std::string> project;  // the rest: one path, also in several words

    // Set when the program ends at once: 0 with text for the output (help, version), 2 with what is wrong.
    std::optional<int> status;
    std::string text;
};

// arguments: the name of the program first. "--" ends the options.
CommandLine read_command_line(const QStringList& arguments);

// Why no window can come up, one sentence; empty when one may: QT_QPA_PLATFORM names a platform that needs no
// display, or DISPLAY or WAYLAND_DISPLAY name one.
std::string missing_display();

// While it lives, a display that does not answer ends the program with a sentence and status 1, not with an
// abort.
class DisplayGuard {
 public:
    DisplayGuard();
    ~DisplayGuard();
    DisplayGuard(const DisplayGuard&) = delete;
    DisplayGuard& operator=(const DisplayGuard&) = delete;

 private:
    QtMessageHandler before_;
};

}  // namespace quom
