// Pictures of all windows, taken along one short session, for looking at them.
#pragma once
#include <QSize>
#include <QString>
#include <QStringList>

namespace quom {

class mdiQUOM;

// Writes PNG files into the folder, with the main window in that size; returns how many were written.
int take_screenshots(mdiQUOM& frame, const QString& folder, const QSize& size);

// Runs the program without a display, each run into a folder of its own: at 100 % and 200 %, in the dark
// theme, and with main windows of two smaller sizes ("100", "200", "dark", "1024", "1280"). Returns the exit
// status: 0 done, 3 a run failed.
int screenshot_runs(const QString& program, const QStringList& others, const QString& folder);

}  // namespace quom
