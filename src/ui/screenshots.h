// Pictures of all windows, taken along one short road through the program, for looking at them.
#pragma once
#include <QString>

namespace quom {

class mdiQUOM;

// Writes PNG files into the folder; returns how many were written.
int take_screenshots(mdiQUOM& frame, const QString& folder);

}  // namespace quom
