// Pictures of all windows, taken along one short session, for looking at them.
#pragma once
#include <QString>
#include <QStringList>

namespace quom {

class mdiQUOM;

// Writes PNG files into the folder; returns how many were written.
int take_screenshots(mdiQUOM& frame, const QString& folder);

// Runs the program without a display at 100 % and 200 %, and in the dark theme, each run into a folder of its
// own
// ("100", "200", "dark"). Returns the exit status: 0 done, 3 a run failed.
int screenshot_runs(const QString& program, const QStringList& others, const QString& folder);

}  // namespace quom
