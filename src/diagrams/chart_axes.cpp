#include "diagrams/chart_axes.h"

#include <algorithm>
#include <cmath>

#include "diagrams/chart_families.h"
#include "diagrams/chart_texts.h"
#include "diagrams/ticks.h"

namespace quom {
namespace {

constexpr int Nodes = 160;
constexpr int TicksWanted = 9;
constexpr double LowestRatio = -4.7;    // log10 of the least p/p(cr) at the lowest T
constexpr double LowestT = 273.16;      // [K]
constexpr double TripleWindow = 100.0;  // [kPa]: with a triple line the picture goes down to here
constexpr double SmallPcr = 1000.0;     // [kPa]: below it does not

struct UnitDefault {
    ChartQuantity chart;
    Quantity quantity;
    std::string_view unit;
};
constexpr std::array unit_defaults = {
    UnitDefault{ChartQuantity::T, Quantity::T, "K"},
    UnitDefault{ChartQuantity::p, Quantity::p, "kPa"},
    UnitDefault{ChartQuantity::v, Quantity::v, "m^3/kg"},
    UnitDefault{ChartQuantity::h, Quantity::h, "kJ/kg"},
    UnitDefault{ChartQuantity::s, Quantity::s, "kJ/(kg K)"},
};

// What the ranges are made of.
struct Basis {
    const Fluid& fluid;
    const ChartUnits& units;
    ChartArea& area;
    double Tcr, pcr;

    const ChartUnit& unit(ChartQuantity q) const { return units[static_cast<std::size_t>(q)]; }
    double shown(ChartQuantity q, double own) const { return unit(q).conversion.from_own(own); }
    // Rounded to 1, 2 or 5 in the shown unit.
    double up(double p) const { return round_p(p, up_125); }
    double down(double p) const { return round_p(p, down_125); }
    double round_p(double p, double (*rule)(double)) const {
        const UnitConversion& c = unit(ChartQuantity::p).conversion;
        return c.to_own(rule(c.from_own(p)));
    }
    const SaturatedPair& lowest() const { return area.nodes.at.front(); }
    double most_vapor(double ChartState::*quantity) const {
        double most = -HUGE_VAL;
        for (const SaturatedPair& pair : area.nodes.at) most = std::max(most, pair.V.*quantity);
        return most;
    }
};

// Lowest T, pressures and nodes; false without saturation there.
bool set_span(const Basis& b, ChartKind kind) {
    ChartSpan& span = b.area.span;
    const double Ttr = static_cast<double>(b.fluid.substance.Ttr), Tcr = b.Tcr, pcr = b.pcr;
    double T0 = std::max(Ttr, std::min(0.5 * Tcr, LowestT));
    const double least = pcr * std::pow(10.0, LowestRatio);
    Saturation sat = pLV_EOS(b.fluid, T0);
    while (T0 < 0.98 * Tcr && (!sat.found() || sat.p < least)) {
        T0 += 0.01 * Tcr;
        sat = pLV_EOS(b.fluid, T0);
    }
    if (!sat.found()) return false;
    span.triple = T0 == Ttr;
    span.p_high = b.up(2.5 * pcr);
    double T_nodes = T0;
    if (span.triple) {
        span.p_axis = b.down(pcr > SmallPcr ? std::min(sat.p, TripleWindow) : sat.p);
    } else {
        span.p_axis = b.up(sat.p);
        sat = TLV_EOS(b.fluid, span.p_axis);
        if (!sat.found()) return false;
        T0 = sat.T;
        // The dome runs out of the picture, except in h-s.
        T_nodes = kind == ChartKind::hs ? T0 : std::max(Ttr, T0 - 0.02 * Tcr);
    }
    span.edge = span.triple || kind == ChartKind::hs;
    span.T_low = T0;
    span.p_low = span.p_axis;
    b.area.nodes = saturation_nodes(b.fluid, T_nodes, Nodes);
    return b.area.nodes.at.size() > Nodes / 2 && b.area.nodes.critical().T == Tcr;
}

ChartAxis axis_of(const Basis& b, ChartQuantity quantity, double own_low, double own_high, bool snap_up) {
    const ChartUnit& unit = b.unit(quantity);
    ChartAxis axis{.quantity = quantity, .log = false, .text = axis_text(unit)};
    double low = b.shown(quantity, own_low), high = b.shown(quantity, own_high);
    const double minor = axis_steps(low, high, TicksWanted).minor;
    low = (snap_up ? std::ceil(low / minor - 1e-9) : std::floor(low / minor + 1e-9)) * minor;
    high = std::ceil(high / minor - 1e-9) * minor;
    return zoomed_axis(axis, low, high);
}

// Below p_axis the vapor lines of T-s and h-s go to the right edge, but not without end.
void extend_vapor(const Basis& b) {
    ChartSpan& span = b.area.span;
    const double s_max = b.unit(ChartQuantity::s).conversion.to_own(b.area.x.high);
    const ChartState corner = state_at_Ts(b.fluid, span.T_low, s_max);
    const double floor = 0.02 * span.p_axis;
    span.p_low = std::min(span.p_axis, std::max(corner.exists() ? corner.p : floor, floor));
}

bool set_log_ph(const Basis& b) {
    const ChartSpan& span = b.area.span;
    const SaturatedPair low = saturated_at_T(b.fluid, span.T_low);
    const ChartState hot = stable_state(b.fluid, 1.6 * b.Tcr, span.p_axis);
    if (!low.exists() || !hot.exists()) return false;
    double left = low.L.h;
    const double right = std::min(hot.h, left + 1.75 * (b.most_vapor(&ChartState::h) - left));
    if (span.triple) left -= 0.02 * (right - left);
    b.area.x = axis_of(b, ChartQuantity::h, left, right, false);
    const ChartUnit& p = b.unit(ChartQuantity::p);
    b.area.y = {.quantity = ChartQuantity::p, .log = true, .text = axis_text(p)};
    b.area.y = zoomed_axis(b.area.y, p.conversion.from_own(span.p_axis), p.conversion.from_own(span.p_high));
    return true;
}

bool set_Ts(const Basis& b) {
    const ChartSpan& span = b.area.span;
    const SaturatedPair low = saturated_at_T(b.fluid, span.T_low);
    if (!low.exists()) return false;
    const double most = b.most_vapor(&ChartState::s), right = most + 0.16 * (most - low.L.s);
    b.area.x = axis_of(b, ChartQuantity::s, low.L.s, right, false);
    extend_vapor(b);
    const ChartState corner = state_at_p(b.fluid, span.p_high, GivenAtP::s, right);
    const double top = std::min(1.35 * b.Tcr, corner.exists() ? corner.T : HUGE_VAL);
    b.area.y = axis_of(b, ChartQuantity::T, span.T_low, top, !span.triple);
    return true;
}

bool set_hs(const Basis& b) {
    const ChartSpan& span = b.area.span;
    const SaturatedPair low = saturated_at_T(b.fluid, span.T_low);
    const ChartState& critical = b.area.nodes.critical();
    if (!low.exists()) return false;
    const double most = b.most_vapor(&ChartState::s), D = most - low.L.s;
    const double left = std::min(critical.s - 0.02 * D, low.L.s + 0.75 * (low.V.s - low.L.s));
    const double right = most + 0.16 * D, T1 = 1.45 * b.Tcr;
    b.area.x = axis_of(b, ChartQuantity::s, left, right, false);
    extend_vapor(b);
    const ChartState hot = stable_state(b.fluid, T1, span.p_axis);
    const ChartState by_T = state_at_Ts(b.fluid, T1, right);
    const ChartState by_p = state_at_p(b.fluid, span.p_high, GivenAtP::s, right);
    if (!hot.exists() || !by_T.exists()) return false;
    const double top = std::min(by_T.h, by_p.exists() ? by_p.h : HUGE_VAL);
    // h of the tie line of T_low at the left edge
    const double edge = low.L.h + span.T_low * (left - low.L.s);
    const double bottom = std::max(edge, std::min(critical.h, low.V.h) - 0.45 * (hot.h - critical.h));
    b.area.y = axis_of(b, ChartQuantity::h, bottom, top, false);
    return true;
}

}  // namespace

double own_value_of(const ChartState& state, ChartQuantity quantity) {
    const double values[chart_quantity_count] = {state.T, state.p, state.v, state.h, state.s, state.x};
    return values[static_cast<std::size_t>(quantity)];
}

double ChartAxis::place(double shown) const {
    return log ? std::log(shown / low) / std::log(high / low) : (shown - low) / (high - low);
}

double ChartAxis::shown_at(double place) const {
    return log ? low * std::pow(high / low, place) : low + place * (high - low);
}

ChosenUnits chart_units(const OutputUnits& wanted, double M) {
    ChosenUnits r;
    r.fault = wanted.fault;
    for (const UnitDefault& row : unit_defaults) {
        const auto found = wanted.by_quantity.find(row.quantity);
        const UnitMatch match =
            found != wanted.by_quantity.end() ? found->second : find_unit(row.quantity, row.unit, M);
        if (r.fault.empty()) r.fault = match.fault;
        if (match.conversion.inverse && r.fault.empty())
            r.fault = "A chart shows volumes, not " + std::string(match.name);
        r.units[static_cast<std::size_t>(row.chart)] = {.symbol = quantity_info(row.quantity).symbol,
                                                        .unit = unit_sign(match.name),
                                                        .conversion = match.conversion};
    }
    r.units[static_cast<std::size_t>(ChartQuantity::x)].symbol = "x";
    return r;
}

ChartAxis zoomed_axis(ChartAxis axis, double low, double high) {
    axis.low = low;
    axis.high = high;
    if (axis.log) return axis;
    const AxisSteps steps = axis_steps(low, high, TicksWanted);
    axis.major = steps.major;
    axis.minor = steps.minor;
    return axis;
}

ChartArea chart_area(const Fluid& fluid, ChartKind kind, const ChartUnits& units) {
    ChartArea area;
    const Basis basis{fluid, units, area, fluid.substance.Tcr, fluid.substance.pcr};
    bool good = set_span(basis, kind);
    if (good) {
        constexpr bool (*rules[])(const Basis&) = {set_log_ph, set_Ts, set_hs};
        good = rules[static_cast<std::size_t>(kind)](basis);
    }
    good = good && area.x.high > area.x.low && area.y.high > area.y.low;
    if (!good) area.fault = "The equation of state has no saturated states to draw a chart of.";
    return area;
}

}  // namespace quom
