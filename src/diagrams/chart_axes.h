// Units, span and axes of a chart, from T(cr), p(cr) and T(tr) of the fluid.
#pragma once
#include "diagrams/state_chart.h"

namespace quom {

// Units of a chart; a fault where one is not possible.
struct ChosenUnits {
    ChartUnits units{};
    std::string fault;
};
ChosenUnits chart_units(const OutputUnits& wanted, double M);

// Span, nodes and whole axes; a fault where the fluid has no states there.
struct ChartArea {
    ChartSpan span;
    SaturationNodes nodes;
    ChartAxis x, y;
    std::string fault;
};
ChartArea chart_area(const Fluid& fluid, ChartKind kind, const ChartUnits& units);

// The axis of a part of a chart: its limits, ticks for them.
ChartAxis zoomed_axis(ChartAxis axis, double low, double high);

}  // namespace quom
