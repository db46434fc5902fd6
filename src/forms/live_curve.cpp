#include "forms/live_curve.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "diagrams/draw_curve.h"
#include "forms/diagram_form.h"
#include "forms/diagram_parameter.h"
#include "forms/refusal.h"

namespace quom {
namespace {

constexpr int Digits = 4;              // of the values of positions
constexpr double above_b = 1.06;       // least v/b: the first without a warning
constexpr double least_share = 1e-6;   // of the largest p, where the table begins at 0
constexpr double volumes_of_gas = 20;  // largest v over the least, at least

double rounded(double x) { return Val(genNum(x, Digits)); }

// The number of so many digits at or inside a limit.
double inside_limit(double limit, bool upper) {
    const double unit = std::pow(10.0, std::floor(std::log10(limit)) + 1 - Digits);
    const double x = rounded(limit);
    if (upper) return x > limit ? rounded(x - unit) : x;
    return x < limit ? rounded(x + unit) : x;
}

std::pair<double, double> temperatures(const Fluid& fluid) {
    const double Tcr = fluid.substance.Tcr, Ttr = static_cast<double>(fluid.substance.Ttr);
    return {Ttr > 1e-6 && Ttr < Tcr ? Ttr : 0.5 * Tcr, 2.0 * Tcr};
}

std::pair<double, double> volumes(const Fluid& fluid, double largest) {
    const double b = covolume(fluid);
    const double vcr = fluid.eos.vcrEOS > 1e-6 ? fluid.eos.vcrEOS : fluid.substance.vcrDB;
    const double low = b > 0.0 ? above_b * b : vcr / 3.0;
    return {low, std::max(largest, volumes_of_gas * low)};
}

// The first of the texts that the user is told elsewhere, in one line.
std::string first_text(const std::vector<Message>& messages) {
    if (messages.empty()) return {};
    std::string text = messages.front().text;
    std::ranges::replace(text, '\n', ' ');
    return text;
}

// What the next curve is with this value of the parameter.
CurveInput input_at(Session& session, const SectionParameter& row, double value) {
    double& offered = session.diagram.state.*row.value;
    const double before = std::exchange(offered, value);
    CurveInput input = next_curve(session);
    offered = before;
    return input;
}

bool stands(const GraphDocument& sheet, const LiveCurve& live) {
    return live.slot > 0 && !sheet.curve(live.slot).CurveFree &&
           sheet.curve(live.slot).series.points == live.points;
}

}  // namespace

std::optional<ParameterScale> parameter_scale(const Session& session) {
    const SectionParameter* const row = section_parameter(session);
    if (!row) return std::nullopt;
    const double factor = factor_of(session, *row);
    const RangeTable& table = session.diagram.state.ranges;
    std::pair<double, double> limits;
    if (row->section == Section::isothermal) {
        limits = temperatures(*session.fluid);
    } else if (row->section == Section::isobaric) {
        const RangeLimits& p = table[RangePair::p];
        limits = {(p.min > 0.0 ? p.min : least_share * p.max) / factor, p.max / factor};
    } else {
        limits = volumes(*session.fluid, table[RangePair::v].max / factor);
    }
    const double low = limits.first * factor, high = limits.second * factor;
    if (!(low > 0.0) || !(high > 1.1 * low) || !std::isfinite(high)) return std::nullopt;
    return ParameterScale{inside_limit(low, false), inside_limit(high, true),
                          row->section != Section::isothermal};
}

std::string value_at(const ParameterScale& scale, int position) {
    const double share = std::clamp(static_cast<double>(position) / ParameterScale::Steps, 0.0, 1.0);
    const double value = scale.log ? scale.low * std::pow(scale.high / scale.low, share)
                                   : scale.low + share * (scale.high - scale.low);
    return genNum(value, Digits);
}

int position_of(const ParameterScale& scale, double value) {
    if (!(value > scale.low)) return 0;
    if (!(value < scale.high)) return ParameterScale::Steps;
    const double share = scale.log ? std::log(value / scale.low) / std::log(scale.high / scale.low)
                                   : (value - scale.low) / (scale.high - scale.low);
    return static_cast<int>(std::lround(share * ParameterScale::Steps));
}

LiveMove move_live_curve(Session& session, LiveCurve& live, const std::string& typed) {
    const SectionParameter* const row = section_parameter(session);
    if (!row) return {};
    GraphDocument& sheet = *session.diagram.sheet;
    const BoxNumber number = read_box(row->name, typed, NumberRule::any);
    if (!number.fault.empty()) return {false, number.fault};
    const double value = number.value / factor_of(session, *row);
    if (const auto refusal = parameter_refusal(*session.fluid, *row, value))
        return {false, first_text({*refusal})};
    if (const auto refusal = kind_refusal(*session.fluid, session.diagram.units, sheet.diagram.kind))
        return {false, first_text({*refusal})};

    const auto picked = sheet.NextColor;
    const LastParameter last = stands(sheet, live) ? live.last : sheet.last;
    CurveSlot before;
    if (stands(sheet, live)) before = std::exchange(sheet.curve(live.slot), CurveSlot());
    const DrawnCurve drawn = cmdDraw(sheet, *session.fluid, input_at(session, *row, value));
    sheet.NextColor = picked;
    if (drawn.slot == 0) {
        if (!before.CurveFree) sheet.curve(live.slot) = std::move(before);
        const std::string why = first_text(drawn.messages);
        return {false, why.empty() ? "The curve has no points." : why};
    }
    live = {drawn.slot, sheet.curve(drawn.slot).series.points, last};
    return {true, first_text(drawn.messages)};
}

void drop_live_curve(Session& session, LiveCurve& live) {
    auto& sheet = session.diagram.sheet;
    if (sheet && stands(*sheet, live)) {
        delete_curve(*sheet, live.slot);
        sheet->last = live.last;
    }
    live = {};
}

}  // namespace quom
