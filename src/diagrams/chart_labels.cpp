#include "diagrams/chart_labels.h"

#include <array>

namespace quom {
namespace {

constexpr double CriticalPoint = 7.0;  // px

struct RuleRow {
    ChartKind kind{};
    ChartFamily family{};
    PlaceRule rule;
};
using Along = PlaceRule::Along;

// Isotherms of log p-h below T(cr) carry their label in the dome.
constexpr PlaceRule in_dome_rule{Along::fraction, 8, 0.55, -1, 8};
// The triple line its own on the level part, though the vapor fractions end there.
constexpr PlaceRule edge_rule{Along::fraction, 8, 0.5, -1, 24};

const std::array rule_rows = {
    RuleRow{ChartKind::log_ph, ChartFamily::T, {Along::Y, 7, 0.42}},
    RuleRow{ChartKind::log_ph, ChartFamily::v, {Along::X, 8, 1.0}},
    RuleRow{ChartKind::log_ph, ChartFamily::s, {Along::Y, 8, 0.90}},
    RuleRow{ChartKind::log_ph, ChartFamily::x, {Along::Y, 14, 0.10}},
    RuleRow{ChartKind::Ts, ChartFamily::p, {Along::Y, 8, 0.90, 9}},
    RuleRow{ChartKind::Ts, ChartFamily::h, {Along::X, 8, 1.0}},
    RuleRow{ChartKind::Ts, ChartFamily::v, {Along::Y, 8, 0.70}},
    RuleRow{ChartKind::Ts, ChartFamily::x, {Along::Y, 14, 0.10}},
    RuleRow{ChartKind::hs, ChartFamily::p, {Along::Y, 8, 0.90}},
    RuleRow{ChartKind::hs, ChartFamily::T, {Along::X, 8, 1.0}},
    RuleRow{ChartKind::hs, ChartFamily::x, {Along::X, 10, 0.86}},
};

PlaceRule rule_of(const StateChart& chart, const ChartLine& line) {
    if (line.family == ChartFamily::limit) return edge_rule;
    if (chart.kind == ChartKind::log_ph && line.family == ChartFamily::T) {
        const double Tcr = chart.shown(chart.critical, ChartQuantity::T);
        if (line.value < Tcr) return in_dome_rule;
    }
    for (const RuleRow& row : rule_rows)
        if (row.kind == chart.kind && row.family == line.family) return row.rule;
    return {};
}

}  // namespace

LabelInput chart_label_input(const StateChart& chart, double width, double height, TextMeasure measure) {
    LabelInput input{
        .width = width, .height = height, .lines = {}, .blocked = {}, .measure = std::move(measure)};
    const auto pixel = [&](double x, double y) {
        return PixelPoint{chart.x.place(x) * width, (1.0 - chart.y.place(y)) * height};
    };
    for (const ChartLine& line : chart.lines) {
        LabelLine out;
        out.family = static_cast<int>(line.family);
        out.keep_clear = line.family == ChartFamily::saturation || line.family == ChartFamily::limit;
        out.text = line.label;
        out.long_text = line.long_label;
        out.beside = line.label.starts_with("\u2212");
        out.rule = rule_of(chart, line);
        for (const ChartVertex& vertex : line.vertices) {
            out.points.push_back(pixel(vertex.x, vertex.y));
            out.fraction.push_back(vertex.fraction);
        }
        input.lines.push_back(std::move(out));
    }
    const PixelPoint critical =
        pixel(chart.shown(chart.critical, chart.x.quantity), chart.shown(chart.critical, chart.y.quantity));
    input.blocked.push_back(
        {.centre = critical, .width = CriticalPoint, .height = CriticalPoint, .angle = 0});
    return input;
}

}  // namespace quom
