// What a drawn sheet or chart is written as.
#pragma once
#include <string>

#include "diagrams/chart_file.h"
#include "report/report.h"
#include "session/session.h"

namespace quom {

// The sheet of the session: "diagram", "ranges", "series", "sheet_points". file: where it was written.
Report sheet_report(const Session& session, const std::string& file);

// One row a state of the lines of a chart: number and part of the line, family, value, T, p, v, h, s, x. A
// line that is interrupted has several parts. Lines of the head begin with "# ".
std::string chart_csv(const StateChart& chart);
// "chart", "lines".
Report chart_report(const Session& session, const ChartFile& chart, const std::string& file);

}  // namespace quom
