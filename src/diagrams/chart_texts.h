// Texts of a chart: numbers, units, labels of lines, header, footer, legend, read-out.
#pragma once
#include "diagrams/state_chart.h"

namespace quom {

// A unit with signs for its powers: "m³/kg" for "m^3/kg".
std::string unit_sign(std::string_view unit);
// "h / (kJ/kg)", "T / °C".
std::string axis_text(const ChartUnit& unit);

// "425" and "T = 425 K" of a line of a family; those of the limit: "triple line, 0.01 °C".
struct LineLabel {
    std::string text, long_text;
};
LineLabel line_label(const StateChart& chart, ChartFamily family, double value);

// "R134a   log p-h diagram   Peng/Robinson".
std::string chart_header(const Fluid& fluid, ChartKind kind);
// Substance, formula, M, T(cr), p(cr), reference state in words, limits of cp(idG).
std::string chart_footer(const StateChart& chart);
// Rows of the legend: the saturation line, then the families that the chart has, in the order T, p, v, s, h,
// x.
struct LegendRow {
    ChartFamily family{};
    std::string text;
};
std::vector<LegendRow> chart_legend(const StateChart& chart);
// Lines of the read-out at the pointer: T, p, v, h, s and x or the phase, "T = 272.88 K".
std::vector<std::string> state_lines(const StateChart& chart, const ChartState& state);

ChartQuantity quantity_of(ChartFamily family);

}  // namespace quom
