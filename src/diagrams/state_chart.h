// Ready state charts of a fluid: log p-h, T-s and h-s with saturation dome and families of curves at round
// values. What comes back is plain data; a window or a picture only draws it.
#pragma once
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "diagrams/chart_hover.h"
#include "diagrams/chart_reference.h"
#include "diagrams/chart_states.h"
#include "quantities/unit_table.h"

namespace quom {

enum class ChartKind { log_ph, Ts, hs };

// In the order in which they are drawn.
enum class ChartFamily { x, v, h, s, p, T, limit, saturation };

// Part of a chart, in units of its axes.
struct ChartWindow {
    double x_low = 0, x_high = 0, y_low = 0, y_high = 0;
    bool operator==(const ChartWindow&) const = default;
};

struct ChartOptions {
    // Units of T, p, v, h, s as parse_units reads them; what is not named is shown in K, kPa, m^3/kg, kJ/kg,
    // kJ/(kg K).
    OutputUnits units{};
    ChartReference reference = ChartReference::session;
    std::optional<ChartWindow> window{};  // of a zoom; none: the whole chart
    double width = 1208, height = 786;    // of the area between the axes [px]
};

// Quantities of a chart, with unit and conversion to shown values.
enum class ChartQuantity { T, p, v, h, s, x };
inline constexpr std::size_t chart_quantity_count = 6;
struct ChartUnit {
    std::string_view symbol;  // "T"
    std::string unit;         // "°C", "m³/kg"; empty: a pure number
    UnitConversion conversion{};
};
using ChartUnits = std::array<ChartUnit, chart_quantity_count>;
double own_value_of(const ChartState& state, ChartQuantity quantity);

struct ChartAxis {
    ChartQuantity quantity{};
    bool log = false;
    double low = 0, high = 0;     // shown values
    double major = 0, minor = 0;  // steps of ticks; 0 on a logarithmic axis
    std::string text;             // "p / bar"
    // 0 at low, 1 at high.
    double place(double shown) const;
    double shown_at(double place) const;
};

// A vertex of a drawn line, in units of the axes; NaN: a gap.
struct ChartVertex {
    double x = 0, y = 0;
    double fraction = -1;  // vapor fraction; below 0: one phase
};

struct ChartLine {
    ChartFamily family{};
    double value = 0;   // shown; of saturation 0
    std::string label;  // "425", and the same with symbol and unit: "T = 425 K"
    std::string long_label;
    ChartStates states;                 // all that were computed, with gaps
    std::vector<ChartVertex> vertices;  // what lies within the axes
};

// What the lines of a chart run over.
struct ChartSpan {
    double T_low = 0, T_high = 0;  // [K]
    double p_low = 0, p_high = 0;  // [kPa]; below p_axis only the vapor of T-s and h-s
    double p_axis = 0;             // lowest p of a log p-h chart
    bool triple = false;           // T_low is T(tr)
    bool edge = false;             // the line of T_low bounds the area
};

struct StateChart {
    ChartKind kind{};
    std::string fault;                   // why the chart cannot be; then nothing else is filled
    std::shared_ptr<const Fluid> fluid;  // with the reference of the chart
    ChartReference reference{};
    double reference_T = 0;  // [K]; 0 for that of the session
    ChartUnits units{};
    ChartAxis x, y;
    ChartSpan span;
    SaturationNodes nodes;
    HoverStarts starts;  // of h-s
    std::vector<ChartLine> lines;
    ChartState critical;
    std::string header, footer;
    bool exists() const { return fault.empty(); }
    double shown(const ChartState& state, ChartQuantity quantity) const {
        return units[static_cast<std::size_t>(quantity)].conversion.from_own(own_value_of(state, quantity));
    }
};

// Why a fluid has no chart of any kind; empty: it has.
std::string why_no_chart(const Fluid& fluid);

// The chart of a fluid. Refused with the reason: no cubic equation, no cp(idG), no M, T(cr) or p(cr) missing,
// a unit or a reference state that is not possible.
StateChart make_state_chart(const Fluid& fluid, ChartKind kind, const ChartOptions& options = {});

// State at a point in units of the axes; none outside the drawn area.
ChartState state_at(const StateChart& chart, double x, double y);

}  // namespace quom
