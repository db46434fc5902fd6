#include "calc/reference_input.h"

#include <algorithm>
#include <cmath>

#include "calc/calc_input.h"
#include "calc/quantities.h"
#include "engine/ideal_gas.h"

namespace quom {
namespace {

using Labels = std::array<std::string_view, 4>;
constexpr Labels h_labels = {"h /(kJ/kmol)", "h /K", "h /(R T)", "h /(kJ/kg)"};
constexpr Labels s_labels = {"s /(kJ/kmol/K)", "s /R", "s /(1/K) ", "s /(kJ/(kg K))"};

std::string_view by_energy_mode(const Session& s, const Labels& labels) {
    return labels[static_cast<std::size_t>(std::clamp(s.units.EnergyMode, 0, 3))];
}

// Factor of the displayed energy unit; per (R T) with T(cr), as the options set it.
double shown_factor(const Session& s) { return unitFactor(s, 0.0); }

const ReferenceOption& option_at(int option) {
    return reference_options[static_cast<std::size_t>(std::clamp(option, 0, 2))];
}

}  // namespace

int reference_option_of(int RefKode) {
    for (std::size_t i = 0; i < reference_options.size(); ++i) {
        if (reference_options[i].RefKode == RefKode) return static_cast<int>(i);
    }
    return 0;
}

std::string_view reference_h_label(const Session& s) { return by_energy_mode(s, h_labels); }
std::string_view reference_s_label(const Session& s) { return by_energy_mode(s, s_labels); }

ReferenceBoxes reference_boxes(const Session& s) {
    const ReferenceState& r = s.reference;
    const double factor = shown_factor(s);
    return {.option = reference_option_of(r.RefKode),
            .T0 = static_cast<double>(r.TRef0),
            .p0 = static_cast<double>(r.pRef0),
            .h = r.hOffset * factor,
            .s = r.sOffset * factor,
            .TEnv = r.TEnv,
            .pEnv = r.pEnv};
}

void choose_reference_option(ReferenceBoxes& boxes, int option) {
    boxes.option = option;
    if (!option_at(option).fixed_point) return;
    boxes.T0 = static_cast<double>(298.15f);
    boxes.p0 = static_cast<double>(101.325f);
    boxes.h = boxes.s = 0.0;
}

ReferenceValues reference_values(const Session& s, int option) {
    Session trial;
    trial.substance = s.substance;
    trial.reference.RefKode = option_at(option).RefKode;
    const ReferenceConstants zero = RefConst(trial, 0.0);
    const double factor = shown_factor(s);
    return {.h0 = zero.h0 * factor, .s0 = zero.s0 * factor};
}

std::optional<Message> take_reference(Session& s, const ReferenceBoxes& boxes) {
    const auto T0 = static_cast<float>(boxes.T0), p0 = static_cast<float>(boxes.p0);
    for (const double x : {boxes.h, boxes.s, boxes.TEnv, boxes.pEnv}) {
        if (!std::isfinite(x)) return no_valid_input();
    }
    if (!std::isfinite(T0) || !std::isfinite(p0) || !(T0 > 0.0f) || p0 < 0.0f || boxes.TEnv < 0.0 ||
        boxes.pEnv < 0.0)
        return no_valid_input();
    ReferenceState& r = s.reference;
    const double factor = shown_factor(s);
    r.RefKode = option_at(boxes.option).RefKode;
    r.TRef0 = T0;
    r.pRef0 = p0;
    r.hOffset = boxes.h / factor;
    r.sOffset = boxes.s / factor;
    r.TEnv = boxes.TEnv == 0.0 ? 1e-6 : boxes.TEnv;
    r.pEnv = boxes.pEnv;
    return std::nullopt;
}

}  // namespace quom
