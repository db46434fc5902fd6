// Lines and labels of a chart on an area in pixels.
#pragma once
#include "diagrams/label_placing.h"
#include "diagrams/state_chart.h"

namespace quom {

// The lines of a chart in an area of this size, in their order, with the critical point as a blocked box.
// What else is to stay free (points of states, tables) is added to `blocked`; process lines to `lines`,
// behind those of the chart, with keep_clear.
LabelInput chart_label_input(const StateChart& chart, double width, double height, TextMeasure measure);

}  // namespace quom
