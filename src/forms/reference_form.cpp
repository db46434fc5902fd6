#include "forms/reference_form.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "engine/ideal_gas.h"
#include "session/data_diagnosis.h"

namespace quom {
namespace {

using Labels = std::array<std::string_view, 4>;
constexpr Labels h_labels = {"h /(kJ/kmol)", "h /K", "h /(R T)", "h /(kJ/kg)"};
constexpr Labels s_labels = {"s /(kJ/kmol/K)", "s /R", "s /(1/K) ", "s /(kJ/(kg K))"};

std::string_view by_energy_mode(const Units& units, const Labels& labels) {
    return labels[static_cast<std::size_t>(std::clamp(units.EnergyMode, 0, 3))];
}

// Factor of the displayed energy unit; per (R T) with T(cr), as the options set it.
double shown_factor(const Document& document) {
    return unit_factors(document.units, static_cast<double>(document.substance.constants.MolMass), 0.0)
        .uFactor;
}

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

std::string_view reference_h_label(const Units& units) { return by_energy_mode(units, h_labels); }
std::string_view reference_s_label(const Units& units) { return by_energy_mode(units, s_labels); }

ReferenceBoxes reference_boxes(const Document& document) {
    const ReferenceState& r = document.reference;
    const double factor = shown_factor(document);
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
    boxes.h = 0.0;
    boxes.s = 0.0;
}

ReferenceValues reference_values(const Document& document, int option) {
    ReferenceState reference;
    reference.RefKode = option_at(option).RefKode;
    const ReferenceConstants zero = RefConst(document.substance.constants, reference, 0.0);
    const double factor = shown_factor(document);
    return {.h0 = zero.h0 * factor, .s0 = zero.s0 * factor};
}

std::optional<Message> reference_refusal(const SubstanceConstants& substance, const ReferenceState& r) {
    if (const std::string missing(missing_formation_data(substance, r.RefKode)); !missing.empty())
        return refusal_message("This reference state is not possible: the record of " + substance.StoffName +
                               " has no " + missing + ". The free input needs none.");
    for (const double x : {r.hOffset, r.sOffset, r.TEnv, r.pEnv})
        if (!std::isfinite(x)) return no_valid_input();
    if (!std::isfinite(r.TRef0) || !std::isfinite(r.pRef0)) return no_valid_input();
    if (!(r.TRef0 > 0.0f) || r.pRef0 < 0.0f || r.TEnv < 0.0 || r.pEnv < 0.0) return no_valid_input();
    return std::nullopt;
}

std::optional<Message> take_reference(Document& document, const ReferenceBoxes& boxes) {
    const double factor = shown_factor(document);
    ReferenceState r = document.reference;
    r.RefKode = option_at(boxes.option).RefKode;
    r.TRef0 = static_cast<float>(boxes.T0);
    r.pRef0 = static_cast<float>(boxes.p0);
    r.hOffset = boxes.h / factor;
    r.sOffset = boxes.s / factor;
    r.TEnv = boxes.TEnv == 0.0 ? 1e-6 : boxes.TEnv;
    r.pEnv = boxes.pEnv;
    if (auto refusal = reference_refusal(document.substance.constants, r)) return refusal;
    document.reference = r;
    return std::nullopt;
}

ReferenceRefusal take_reference(Document& document, int option, const ReferenceTexts& texts) {
    ReferenceBoxes boxes{.option = option};
    const struct {
        std::string_view name;
        NumberRule rule;
        double ReferenceBoxes::*value;
    } rows[] = {
        {caption_parts(reference_T_label).name, NumberRule::above_zero, &ReferenceBoxes::T0},
        {caption_parts(reference_p_label).name, NumberRule::not_negative, &ReferenceBoxes::p0},
        {"h", NumberRule::any, &ReferenceBoxes::h},
        {"s", NumberRule::any, &ReferenceBoxes::s},
        {caption_parts(environment_T_label).name, NumberRule::not_negative, &ReferenceBoxes::TEnv},
        {caption_parts(environment_p_label).name, NumberRule::not_negative, &ReferenceBoxes::pEnv},
    };
    for (std::size_t i = 0; i < texts.size(); ++i) {
        BoxNumber read = read_box(rows[i].name, texts[i], rows[i].rule);
        if (!read.fault.empty()) return {.box = BoxRefusal{i, std::move(read.fault)}};
        boxes.*rows[i].value = read.value;
    }
    return {.message = take_reference(document, boxes)};
}

}  // namespace quom
