// A project file, a file of measured data, and the program started on a folder that holds them.
#pragma once
#include <map>
#include <string>

#include "ui/window_driver.h"

namespace quom {

// What a line of a project file is in the tests, by its number.
using Lines = std::map<int, std::string>;

// A project file as the form has it: propane, Peng / Robinson; some lines otherwise.
inline std::string project_text(const Lines& other = {}) {
    const char* const lines[] = {"2026-11-20", "<>",  "quom.q07", "",        " 0 ", "74-98-6     ",
                                 "0",          "0",   "0",        "1",       "0",   "0",
                                 "-1",         "500", "\";\"",    "1",       "6",   "2",
                                 "1",          ".38", "-1",       "1",       "0",   "0",
                                 "298.15",     "0",   "298.15",   "101.325", "0",   "1",
                                 "0",          "0",   "0",        "0"};
    std::string text;
    for (int number = 1; number <= 34; ++number) {
        const auto at = other.find(number);
        text += (at != other.end() ? at->second : lines[number - 1]) + "\r\n";
    }
    return text;
}

inline std::string data_text(const char* substance = "74-98-6     ;Propane",
                             const char* comment = "measured") {
    return std::string("2026-11-19\r\n") + comment + "\r\n" + substance +
           "\r\n 2 \r\n300\r\n997\r\n0\r\n0\r\n0\r\n0\r\n310\r\n1269\r\n0\r\n0\r\n0\r\n0\r\n";
}

// The program, started on a folder that is there.
struct Program {
    explicit Program(const QTemporaryDir& folder, const QString& memory = {}, const std::string& project = {})
        : frame(folder.path().toStdString()) {
        auto queued = std::make_unique<QueuedDialogs>();
        dialogs = queued.get();
        frame.set_dialogs(std::move(queued));
        frame.bench().listen(messages);
        if (!memory.isEmpty()) frame.bench().memory = UiMemory(memory);
        frame.show();
        frame.start(project);
    }
    ~Program() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }
    QueuedMessages messages;
    mdiQUOM frame;
    QueuedDialogs* dialogs = nullptr;
};

}  // namespace quom
