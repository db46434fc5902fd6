// Lines of a chart in units of its axes, cut at the axes.
#pragma once
#include "diagrams/state_chart.h"

namespace quom {

// The states of a line as vertices within the axes; cut in chart coordinates (logarithms on a logarithmic
// axis), gaps as NaN vertices.
std::vector<ChartVertex> clipped_line(const StateChart& chart, const ChartStates& states);

}  // namespace quom
