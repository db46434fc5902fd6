// The window of state charts without its window: what may be chosen, the chart of the session, its zoom, and
// the states last calculated on it.
#pragma once
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "diagrams/state_chart.h"
#include "report/table_export.h"
#include "session/session.h"

namespace quom {

// What the user chose; the numbers are places in the lists of entries below.
struct StateChartForm {
    ChartKind kind = ChartKind::log_ph;
    int T_unit = 0, p_unit = 0, basis = 0;
    int reference = 0;
    bool black = false;
    std::optional<ChartWindow> window{};  // in view; none: the whole chart
    bool operator==(const StateChartForm&) const = default;
};

// Entries of the choices: kinds of chart; K, °C; kPa, bar, MPa; the unit of h, which those of s and v follow;
// zero points of h and s.
std::span<const std::string_view> chart_kind_entries();
std::span<const std::string_view> chart_T_entries();
std::span<const std::string_view> chart_p_entries();
std::span<const std::string_view> chart_basis_entries();
std::span<const std::string_view> chart_reference_entries();

// " log p-h diagram, Propane"
std::string chart_caption(const Session& session, ChartKind kind);

// The chart of the session's fluid on an area of that many pixels; where it cannot be, its fault is the first
// thing to be done: "first confirm the models". A window that reaches beyond the whole chart is moved into
// it.
struct ChartLimits {
    ChartAxis x, y;  // without a zoom
};
struct SessionChart {
    StateChart chart;
    ChartLimits whole;
};
SessionChart session_chart(const Session& session, const StateChartForm& form, double width = 1208,
                           double height = 786);

// Zoom and pan, in shares of the axes as they are in view: X to the right, Y upwards. They stay within the
// whole chart; one that shows all of it is none.
// The part between two corners; none where it is too narrow to be meant, or too narrow for its numbers.
std::optional<ChartWindow> zoomed_window(const StateChart& chart, double X1, double Y1, double X2, double Y2);
// factor below 1: closer, the point at X, Y stays where it is.
std::optional<ChartWindow> zoomed_window(const StateChart& chart, const ChartLimits& whole, double X,
                                         double Y, double factor);
std::optional<ChartWindow> moved_window(const StateChart& chart, const ChartLimits& whole, double dX,
                                        double dY);

// The states of the session's last calculation as states of the chart: that which is stable; of saturation
// without a vapor fraction both phases. Empty: nothing was calculated, or not a state.
std::vector<ChartState> calculated_states(const Session& session, const StateChart& chart);

// A state for the clipboard: names and units in one row, numbers below, parted by tabs.
std::string state_for_clipboard(const StateChart& chart, const ChartState& state);
// The states in sight of all lines: line, value, T, p, v, h, s, x.
ExportTable chart_table(const StateChart& chart);

}  // namespace quom
