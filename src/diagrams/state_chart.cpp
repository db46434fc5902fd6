#include "diagrams/state_chart.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "diagrams/chart_axes.h"
#include "diagrams/chart_clip.h"
#include "diagrams/chart_families.h"
#include "diagrams/chart_lines.h"
#include "diagrams/chart_texts.h"

namespace quom {
namespace {

constexpr int SampleSide = 21;
constexpr double VolumesFrom = 0.93;  // v lines begin at v(L) of this T/Tcr: colder ones lie on the isotherms
constexpr double NearDome = 12.0;     // px: x lines of h-s this near to the dome all along are not drawn
constexpr double NearEdge = 8.0;      // px: nor isotherms this near to the edge
constexpr double MostFineness = 8.0;
constexpr int Nodes = 160;

// Which states of the window tell the range of a family.
enum class From { everywhere, outside_dome };

struct FamilyRow {
    ChartKind kind{};
    ChartFamily family{};
    bool log = false;
    FamilyCount count;
    From from = From::everywhere;
};
const std::array family_rows = {
    FamilyRow{ChartKind::log_ph, ChartFamily::T, false, {14, 8, 18}},
    FamilyRow{ChartKind::log_ph, ChartFamily::v, true, {11, 8, 16}, From::outside_dome},
    FamilyRow{ChartKind::log_ph, ChartFamily::s, false, {10, 7, 14}, From::outside_dome},
    FamilyRow{ChartKind::Ts, ChartFamily::p, true, {12, 8, 17}},
    FamilyRow{ChartKind::Ts, ChartFamily::h, false, {12, 8, 16}},
    FamilyRow{ChartKind::Ts, ChartFamily::v, true, {6, 4, 8}, From::outside_dome},
    FamilyRow{ChartKind::hs, ChartFamily::p, true, {12, 8, 17}},
    FamilyRow{ChartKind::hs, ChartFamily::T, false, {12, 8, 15}, From::outside_dome},
};

// Smallest and largest value of a quantity over the window.
struct Range {
    double low = HUGE_VAL, high = -HUGE_VAL;
    void take(double value) {
        if (!std::isfinite(value)) return;
        low = std::min(low, value);
        high = std::max(high, value);
    }
};

// States on a net over the window, its borders included.
ChartStates sample_window(const StateChart& chart) {
    ChartStates states;
    for (int i = 0; i < SampleSide; ++i) {
        for (int k = 0; k < SampleSide; ++k) {
            const ChartState state = state_at(chart, chart.x.shown_at(i / (SampleSide - 1.0)),
                                              chart.y.shown_at(k / (SampleSide - 1.0)));
            if (state.exists()) states.push_back(state);
        }
    }
    return states;
}

// Whether lines are drawn at the pressure of a state.
bool at_drawn_p(const ChartSpan& span, const ChartState& state) {
    return state.p > span.p_low * (1.0 - 1e-9) && state.p < span.p_high * (1.0 + 1e-9);
}

// Range of the values that a family may have, shown.
Range family_range(const StateChart& chart, const ChartStates& samples, const FamilyRow& row) {
    const ChartQuantity quantity = quantity_of(row.family);
    Range r;
    for (const ChartState& state : samples) {
        const bool drawn = row.family == ChartFamily::p || at_drawn_p(chart.span, state);
        if (drawn && (row.from == From::everywhere || state.x < 0.0)) r.take(chart.shown(state, quantity));
    }
    const auto shown = [&](double own) {
        return chart.units[static_cast<std::size_t>(quantity)].conversion.from_own(own);
    };
    const ChartState& critical = chart.critical;
    if (row.family == ChartFamily::p) {
        r.low = std::max(r.low, shown(chart.span.p_low));
        r.high = std::min(r.high, shown(chart.span.p_high));
    } else if (row.family == ChartFamily::v) {
        const SaturatedPair pair = saturated_at_T(*chart.fluid, VolumesFrom * critical.T);
        if (pair.exists()) r.low = std::max(r.low, shown(pair.L.v));
    } else if (row.family == ChartFamily::s) {
        r.low = std::max(r.low, shown(critical.s));
    } else if (row.family == ChartFamily::T) {
        r.low = std::max(r.low, shown(chart.span.T_low));
    }
    return r;
}

// Vapor fractions: tenths, finer ones where a window shows less than a third of them.
std::vector<double> fractions(const ChartStates& samples) {
    Range r;
    for (const ChartState& state : samples)
        if (state.x >= 0.0) r.take(state.x);
    if (r.high - r.low > 0.35 || !(r.high > r.low)) r = {.low = 0.0, .high = 1.0};
    std::vector<double> values = linear_family(r.low, r.high, {.wish = 10, .low = 5, .high = 12});
    std::erase_if(values, [](double x) { return x < 1e-9 || x > 1.0 - 1e-9; });
    return values;
}

ChartStates states_of(const LineInput& in, const StateChart& chart, ChartFamily family, double shown) {
    const double own = chart.units[static_cast<std::size_t>(quantity_of(family))].conversion.to_own(shown);
    switch (family) {
        case ChartFamily::T:
            return isotherm_states(in, own, chart.kind != ChartKind::hs);
        case ChartFamily::limit:
            return isotherm_states(in, own, true);
        case ChartFamily::p:
            return isobar_states(in, own);
        case ChartFamily::v:
            return isochore_states(in, own);
        case ChartFamily::s:
            return isentrope_states(in, own);
        case ChartFamily::h:
            return isenthalp_states(in, own);
        case ChartFamily::x:
        case ChartFamily::saturation:
            break;
    }
    return fraction_states(in.nodes, own);
}

// Distance of a point from a line [px].
double distance(const ChartVertex& point, const ChartLine& line, const StateChart& chart,
                const ChartOptions& options) {
    double least = HUGE_VAL;
    const auto X = [&](const ChartVertex& a) { return chart.x.place(a.x) * options.width; };
    const auto Y = [&](const ChartVertex& a) { return chart.y.place(a.y) * options.height; };
    const double px = X(point), py = Y(point);
    for (std::size_t i = 1; i < line.vertices.size(); ++i) {
        const ChartVertex &a = line.vertices[i - 1], &b = line.vertices[i];
        const double dx = X(b) - X(a), dy = Y(b) - Y(a), square = dx * dx + dy * dy;
        if (std::isnan(square)) continue;
        const double t =
            square > 0.0 ? std::clamp(((px - X(a)) * dx + (py - Y(a)) * dy) / square, 0.0, 1.0) : 0.0;
        least = std::min(least, std::hypot(px - X(a) - t * dx, py - Y(a) - t * dy));
    }
    return least;
}

// Whether a line stays within so many px of others all along: its label would find no place.
bool hugs(const ChartLine& line, const std::vector<const ChartLine*>& others, double px,
          const StateChart& chart, const ChartOptions& options) {
    for (std::size_t i = 0; i < line.vertices.size(); i += 2) {
        if (std::isnan(line.vertices[i].x)) continue;
        double least = HUGE_VAL;
        for (const ChartLine* other : others)
            least = std::min(least, distance(line.vertices[i], *other, chart, options));
        if (least > px) return false;
    }
    return true;
}

void add_line(StateChart& chart, const LineInput& in, ChartFamily family, double value, double height) {
    ChartLine line;
    line.family = family;
    line.value = value;
    line.states = states_of(in, chart, family, value);
    line.vertices = clipped_line(chart, line.states);
    if (line.vertices.size() < 2) return;
    const LineLabel label = line_label(chart, family, value);
    // On a T-s chart the limit may lie on the axis.
    const bool on_axis = family == ChartFamily::limit && chart.kind == ChartKind::Ts &&
                         chart.y.place(value) * height < NearDome;
    line.label = on_axis ? std::string() : label.text;
    line.long_label = label.long_text;
    chart.lines.push_back(std::move(line));
}

// Lines of h-s whose labels would find no place.
void drop_hugging(StateChart& chart, const ChartOptions& options) {
    if (chart.kind != ChartKind::hs) return;
    std::vector<const ChartLine*> dome, edge;
    for (const ChartLine& line : chart.lines) {
        if (line.family == ChartFamily::saturation) dome.push_back(&line);
        if (line.family == ChartFamily::limit) edge.push_back(&line);
    }
    std::vector<bool> drop;
    for (const ChartLine& line : chart.lines) {
        drop.push_back((line.family == ChartFamily::x && hugs(line, dome, NearDome, chart, options)) ||
                       (line.family == ChartFamily::T && hugs(line, edge, NearEdge, chart, options)));
    }
    std::vector<ChartLine> kept;
    for (std::size_t i = 0; i < drop.size(); ++i)
        if (!drop[i]) kept.push_back(std::move(chart.lines[i]));
    chart.lines = std::move(kept);
}

void add_lines(StateChart& chart, const ChartStates& samples, const ChartOptions& options, double fineness) {
    const LineInput in{*chart.fluid, chart.nodes, chart.span, fineness};
    for (const double x : fractions(samples)) add_line(chart, in, ChartFamily::x, x, options.height);
    for (const ChartFamily family :
         {ChartFamily::v, ChartFamily::h, ChartFamily::s, ChartFamily::p, ChartFamily::T}) {
        for (const FamilyRow& row : family_rows) {
            if (row.kind != chart.kind || row.family != family) continue;
            const Range r = family_range(chart, samples, row);
            const std::vector<double> values =
                row.log ? log_family(r.low, r.high, row.count) : linear_family(r.low, r.high, row.count);
            for (const double value : values) add_line(chart, in, family, value, options.height);
        }
    }
    if (chart.span.edge) {
        const double T_low =
            chart.units[static_cast<std::size_t>(ChartQuantity::T)].conversion.from_own(chart.span.T_low);
        add_line(chart, in, ChartFamily::limit, T_low, options.height);
    }
    for (const double x : {0.0, 1.0}) add_line(chart, in, ChartFamily::saturation, x, options.height);
    drop_hugging(chart, options);
}

// The part that is in view, and how much finer than the whole its lines have to be.
double zoom_to(StateChart& chart, const ChartWindow& window) {
    const double whole_x = chart.x.place(window.x_high) - chart.x.place(window.x_low);
    const double whole_y = chart.y.place(window.y_high) - chart.y.place(window.y_low);
    chart.x = zoomed_axis(chart.x, window.x_low, window.x_high);
    chart.y = zoomed_axis(chart.y, window.y_low, window.y_high);
    return std::clamp(1.0 / std::min(whole_x, whole_y), 1.0, MostFineness);
}

bool usable(const ChartAxis& axis, double low, double high) {
    return std::isfinite(low) && std::isfinite(high) && low < high && (!axis.log || low > 0.0);
}

// Highest T that a line may need: a little above what the window shows.
double highest_T(const StateChart& chart, const ChartStates& samples) {
    double most = chart.critical.T;
    for (const ChartState& state : samples)
        if (at_drawn_p(chart.span, state)) most = std::max(most, state.T);
    if (chart.kind == ChartKind::hs) {
        // Where the line of p_high leaves at the top.
        const double h =
            chart.units[static_cast<std::size_t>(ChartQuantity::h)].conversion.to_own(chart.y.high);
        const ChartState corner = state_at_p(*chart.fluid, chart.span.p_high, GivenAtP::h, h);
        if (corner.exists()) most = std::max(most, corner.T);
    }
    return 1.02 * most;
}

}  // namespace

std::string why_no_chart(const Fluid& fluid) {
    if (!fluid.has_eos()) return std::string(reason_text(fluid.eos_reason));
    if (fluid.VPhaseOnly || !fluid.eos_row().is_cubic()) return std::string(reason_text(Reason::vapor_only));
    if (!(fluid.substance.Tcr > 0.0) || !(fluid.substance.pcr > 0.0))
        return std::string(reason_text(Reason::no_critical_data));
    if (fluid.ideal_gas.reason != Reason::none) return std::string(reason_text(fluid.ideal_gas.reason));
    if (!(fluid.M > 0.0)) return std::string(reason_text(Reason::no_molar_mass));
    return {};
}

StateChart make_state_chart(const Fluid& fluid, ChartKind kind, const ChartOptions& options) {
    StateChart chart;
    const auto refused = [](std::string fault) {
        StateChart none;
        none.fault = std::move(fault);
        return none;
    };
    if (std::string fault = why_no_chart(fluid); !fault.empty()) return refused(std::move(fault));
    ReferencedFluid referenced = with_reference(fluid, options.reference);
    if (!referenced.fluid) return refused(std::move(referenced.fault));
    ChosenUnits units = chart_units(options.units, fluid.M);
    if (!units.fault.empty()) return refused(std::move(units.fault));
    chart.kind = kind;
    chart.fluid = std::move(referenced.fluid);
    chart.reference = options.reference;
    chart.reference_T = referenced.T;
    chart.units = std::move(units.units);
    ChartArea area = chart_area(*chart.fluid, kind, chart.units);
    if (!area.fault.empty()) return refused(std::move(area.fault));
    chart.span = area.span;
    chart.nodes = std::move(area.nodes);
    chart.x = std::move(area.x);
    chart.y = std::move(area.y);
    chart.critical = chart.nodes.critical();
    chart.critical.x = -1.0;
    chart.starts =
        hover_starts(*chart.fluid, chart.nodes, 1.6 * chart.critical.T, chart.span.p_low, chart.span.p_high);
    double fineness = 1.0;
    if (const auto& window = options.window) {
        if (!usable(chart.x, window->x_low, window->x_high) ||
            !usable(chart.y, window->y_low, window->y_high))
            return refused("The part of the chart is empty.");
        fineness = zoom_to(chart, *window);
        if (fineness > 1.0)
            chart.nodes = saturation_nodes(*chart.fluid, chart.nodes.at.front().L.T,
                                           static_cast<int>(Nodes * fineness));
    }
    const ChartStates samples = sample_window(chart);
    chart.span.T_high = highest_T(chart, samples);
    chart.header = chart_header(*chart.fluid, kind);
    add_lines(chart, samples, options, fineness);
    chart.footer = chart_footer(chart);
    return chart;
}

ChartState state_at(const StateChart& chart, double x, double y) {
    const auto own = [&](const ChartAxis& axis, double shown) {
        return chart.units[static_cast<std::size_t>(axis.quantity)].conversion.to_own(shown);
    };
    const double a = own(chart.x, x), b = own(chart.y, y);
    const Fluid& fluid = *chart.fluid;
    ChartState state;
    switch (chart.kind) {
        case ChartKind::log_ph:
            state = state_at_p(fluid, b, GivenAtP::h, a);
            break;
        case ChartKind::Ts:
            state = state_at_Ts(fluid, b, a);
            break;
        case ChartKind::hs:
            state = state_at_hs(fluid, chart.nodes, chart.starts, b, a);
            break;
    }
    // Nothing below the drawn area.
    const double least = std::min(chart.span.T_low, chart.nodes.at.front().L.T) * (1.0 - 1e-9);
    return state.exists() && state.T >= least ? state : ChartState{};
}

}  // namespace quom
