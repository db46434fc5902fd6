#include "forms/state_chart_form.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "diagrams/chart_texts.h"
#include "forms/shell.h"

namespace quom {
namespace {

constexpr double LeastShare = 2e-4;   // of the whole axis that may be in view
constexpr double LeastBand = 0.004;   // of the axis in view that a rubber band has to span
constexpr double ZoomedShare = 0.98;  // of the whole axis from which all of it is shown
constexpr int Digits = 8;             // of copied numbers

constexpr std::array<std::string_view, 3> kinds = {"log p-h", "T-s", "h-s"};
constexpr std::array<std::string_view, 2> T_units = {"K", "°C"};
constexpr std::array<std::string_view, 3> p_units = {"kPa", "bar", "MPa"};
constexpr std::array<std::string_view, 3> h_units = {"kJ/kg", "kJ/kmol", "J/mol"};
constexpr std::array<std::string_view, 3> s_units = {"kJ/(kg K)", "kJ/(kmol K)", "J/(mol K)"};
constexpr std::array<std::string_view, 3> v_units = {"m^3/kg", "m^3/kmol", "l/mol"};

// In the order of ChartReference.
constexpr std::array<std::string_view, 5> references = {
    "as selected (reference state)", "liquid at 0 °C: h = 200 kJ/kg, s = 1 kJ/(kg K)",
    "liquid at \u221240 °C: h = 0, s = 0", "liquid at normal boiling point: h = 0, s = 0",
    "liquid at triple point: u = 0, s = 0"};

std::string_view entry(std::span<const std::string_view> entries, int number) {
    return entries[static_cast<std::size_t>(std::clamp(number, 0, static_cast<int>(entries.size()) - 1))];
}

OutputUnits units_of(const StateChartForm& form, double M) {
    std::string text = "T=" + std::string(entry(T_units, form.T_unit));
    text += ",p=" + std::string(entry(p_units, form.p_unit));
    text += ",energy=" + std::string(entry(h_units, form.basis));
    text += ",entropy=" + std::string(entry(s_units, form.basis));
    text += ",v=" + std::string(entry(v_units, form.basis));
    return parse_units(text, M);
}

// Limits of an axis in view, as shares of the whole axis.
struct Shares {
    double low = 0, high = 1;
    double width() const { return high - low; }
};

Shares shares(const ChartAxis& whole, double low, double high) {
    return {whole.place(low), whole.place(high)};
}

// As wide as it is, within the whole axis.
Shares within(Shares s) {
    const double width = std::clamp(s.width(), LeastShare, 1.0);
    const double low = std::clamp(s.low, 0.0, 1.0 - width);
    return {low, low + width};
}

std::optional<ChartWindow> window_of(const ChartLimits& whole, Shares x, Shares y) {
    x = within(x);
    y = within(y);
    if (std::min(x.width(), y.width()) > ZoomedShare) return std::nullopt;
    return ChartWindow{.x_low = whole.x.shown_at(x.low),
                       .x_high = whole.x.shown_at(x.high),
                       .y_low = whole.y.shown_at(y.low),
                       .y_high = whole.y.shown_at(y.high)};
}

std::string number(double x) { return std::isfinite(x) ? genNum(x, Digits) : std::string(); }

constexpr std::array quantities = {ChartQuantity::T, ChartQuantity::p, ChartQuantity::v,
                                   ChartQuantity::h, ChartQuantity::s, ChartQuantity::x};

std::string heads(const StateChart& chart) {
    std::string text;
    for (const ChartQuantity q : quantities) {
        const ChartUnit& unit = chart.units[static_cast<std::size_t>(q)];
        if (!text.empty()) text += '\t';
        text += unit.unit.empty() ? std::string(unit.symbol) : axis_text(unit);
    }
    return text;
}

std::string numbers(const StateChart& chart, const ChartState& state) {
    std::string text;
    for (const ChartQuantity q : quantities) {
        if (q != ChartQuantity::T) text += '\t';
        if (q != ChartQuantity::x || state.x >= 0.0) text += number(chart.shown(state, q));
    }
    return text;
}

bool in_sight(const StateChart& chart, const ChartState& state) {
    if (!state.exists()) return false;
    const double X = chart.x.place(chart.shown(state, chart.x.quantity)),
                 Y = chart.y.place(chart.shown(state, chart.y.quantity));
    return X >= 0.0 && X <= 1.0 && Y >= 0.0 && Y <= 1.0;
}

std::string family_name(const StateChart& chart, ChartFamily family) {
    if (family == ChartFamily::saturation) return "saturation";
    if (family == ChartFamily::limit) return chart.span.triple ? "triple line" : "lower limit";
    return std::string(chart.units[static_cast<std::size_t>(quantity_of(family))].symbol);
}

}  // namespace

std::span<const std::string_view> chart_kind_entries() { return kinds; }
std::span<const std::string_view> chart_T_entries() { return T_units; }
std::span<const std::string_view> chart_p_entries() { return p_units; }
std::span<const std::string_view> chart_basis_entries() { return h_units; }
std::span<const std::string_view> chart_reference_entries() { return references; }

std::string chart_caption(const Session& session, ChartKind kind) {
    std::string text = " " + std::string(kinds[static_cast<std::size_t>(kind)]) + " diagram";
    if (fulfilled(session, Needs::substance)) text += ", " + session.substance().StoffName;
    return text;
}

SessionChart session_chart(const Session& session, const StateChartForm& form, double width, double height) {
    SessionChart result;
    result.chart.fault = why_not(session, Needs::state_chart);
    if (!result.chart.exists()) return result;
    ChartOptions options{.units = units_of(form, session.fluid->M),
                         .reference = static_cast<ChartReference>(
                             std::clamp(form.reference, 0, static_cast<int>(references.size()) - 1)),
                         .window = {},
                         .width = width,
                         .height = height};
    result.chart = make_state_chart(*session.fluid, form.kind, options);
    if (!result.chart.exists()) return result;
    result.whole = {result.chart.x, result.chart.y};
    if (!form.window) return result;
    const ChartLimits& whole = result.whole;
    options.window = window_of(whole, shares(whole.x, form.window->x_low, form.window->x_high),
                               shares(whole.y, form.window->y_low, form.window->y_high));
    if (options.window) result.chart = make_state_chart(*session.fluid, form.kind, options);
    return result;
}

std::optional<ChartWindow> zoomed_window(const StateChart& chart, double X1, double Y1, double X2,
                                         double Y2) {
    const auto [left, right] = std::minmax(std::clamp(X1, 0.0, 1.0), std::clamp(X2, 0.0, 1.0));
    const auto [bottom, top] = std::minmax(std::clamp(Y1, 0.0, 1.0), std::clamp(Y2, 0.0, 1.0));
    if (right - left < LeastBand || top - bottom < LeastBand) return std::nullopt;
    return ChartWindow{.x_low = chart.x.shown_at(left),
                       .x_high = chart.x.shown_at(right),
                       .y_low = chart.y.shown_at(bottom),
                       .y_high = chart.y.shown_at(top)};
}

std::optional<ChartWindow> zoomed_window(const StateChart& chart, const ChartLimits& whole, double X,
                                         double Y, double factor) {
    const auto scaled = [factor](const ChartAxis& all, const ChartAxis& axis, double at) {
        const Shares now = shares(all, axis.low, axis.high);
        // Kept in proportion when the narrowest part is reached.
        const double width = std::clamp(now.width() * factor, LeastShare, 1.0),
                     fixed = now.low + at * now.width();
        return Shares{fixed - at * width, fixed - at * width + width};
    };
    return window_of(whole, scaled(whole.x, chart.x, X), scaled(whole.y, chart.y, Y));
}

std::optional<ChartWindow> moved_window(const StateChart& chart, const ChartLimits& whole, double dX,
                                        double dY) {
    const auto moved = [](const ChartAxis& all, const ChartAxis& axis, double by) {
        const Shares now = shares(all, axis.low, axis.high);
        return Shares{now.low + by * now.width(), now.high + by * now.width()};
    };
    return window_of(whole, moved(whole.x, chart.x, dX), moved(whole.y, chart.y, dY));
}

std::vector<ChartState> calculated_states(const Session& session, const StateChart& chart) {
    const Outcome* outcome = current_outcome(session);
    if (!chart.exists() || !outcome || !outcome->has_result() || !outcome->T || !outcome->p) return {};
    const Fluid& fluid = *chart.fluid;
    std::vector<ChartState> states;
    if (outcome->two_phase()) {
        const SaturatedPair pair = saturated_at_T(fluid, *outcome->T);
        if (!pair.exists()) return {};
        if (outcome->quality)
            states.push_back(mixed(pair, *outcome->quality));
        else
            states = {pair.L, pair.V};
    } else if (outcome->phase != PhaseWord::none) {
        states.push_back(stable_state(fluid, *outcome->T, *outcome->p));
    }
    std::erase_if(states, [](const ChartState& state) { return !state.exists(); });
    return states;
}

std::string state_for_clipboard(const StateChart& chart, const ChartState& state) {
    return state.exists() ? heads(chart) + "\n" + numbers(chart, state) + "\n" : std::string();
}

ExportTable chart_table(const StateChart& chart) {
    ExportTable table{.title = {chart.header, chart.footer}, .heads = {"line", "value"}, .units = {"", ""}};
    for (const ChartQuantity q : quantities) {
        const ChartUnit& unit = chart.units[static_cast<std::size_t>(q)];
        table.heads.emplace_back(unit.symbol);
        table.units.push_back(unit.unit);
    }
    for (const ChartLine& line : chart.lines) {
        const std::string name = family_name(chart, line.family);
        for (const ChartState& state : line.states) {
            if (!in_sight(chart, state)) continue;
            std::vector<ExportCell> row = {{name}, {number(line.value), true}};
            for (const ChartQuantity q : quantities) {
                const bool there = q != ChartQuantity::x || state.x >= 0.0;
                row.emplace_back(there ? number(chart.shown(state, q)) : std::string(), there);
            }
            table.rows.push_back(std::move(row));
        }
    }
    return table;
}

}  // namespace quom
