#include "session/document_words.h"

#include <algorithm>
#include <array>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/model_catalogue.h"

namespace quom {
namespace {

template <class Info>
std::string name_in_list(const Info& info) {
    const std::string_view text = trim(info.text);
    return text.empty() ? "none" : std::string(text);
}

std::string quantity(double x, std::string_view unit) { return genNum(x) + ' ' + std::string(unit); }
std::string quantity(float x, std::string_view unit) { return genNum(x) + ' ' + std::string(unit); }

std::string on_off(bool on) { return on ? "on" : "off"; }
std::string delimiter(char sign) {
    return sign == '\t' ? std::string("Tab") : '"' + std::string(1, sign) + '"';
}

std::string numbers(const EosInput& i) {
    std::string text;
    for (const double x : {i.b0, i.b1, i.b2, i.JiP3, i.JiP4, i.JiP5, i.JiZc, i.JiB1})
        text += exactNum(x) + ' ';
    return text;
}

std::string reference_text(int RefKode) {
    if (RefKode == reference_formation) return "quantities of formation";
    return RefKode == reference_from_gibbs ? "conventional" : "free input";
}

std::string energy_text(const Units& units) {
    constexpr std::array<std::string_view, 4> texts = {"kJ/kmol", "K (per R)", "per R T", "kJ/kg"};
    return std::string(texts[static_cast<std::size_t>(std::clamp(units.EnergyMode, 0, 3))]);
}

using enum DocumentPart;
using D = Document;

// clang-format off
constexpr FieldWords Models[] = {
    {models, "the ", "equation of state", [](const D& d) { return eos_name(d.models.EOSKode); }},
    {models, "the ", "constants of the equation of state", [](const D& d) { return numbers(d.eos_input); }, true},
    {models, "the ", "concept", [](const D& d) -> std::string { return d.models.Konzept ? "GLOBAL" : "PARTIAL"; }},
    {models, "the ", "vapor pressure equation", [](const D& d) { return name_in_list(evp_info(d.models.EVPKode)); }},
    {models, "", "delta(LV)h", [](const D& d) { return name_in_list(hlv_info(d.models.HLVKode)); }},
    {models, "", "cp(idG)", [](const D& d) { return name_in_list(cp_info(d.models.cpKode)); }},
    {models, "the ", "Watson exponent", [](const D& d) { return genNum(d.models.nWat); }},
};
constexpr FieldWords Reference[] = {
    {reference, "the ", "zero point", [](const D& d) { return reference_text(d.reference.RefKode); }},
    {reference, "", "T0", [](const D& d) { return quantity(d.reference.TRef0, "K"); }},
    {reference, "", "p0", [](const D& d) { return quantity(d.reference.pRef0, "kPa"); }},
    {reference, "", "h0", [](const D& d) { return quantity(d.reference.hOffset, "kJ/kmol"); }},
    {reference, "", "s0", [](const D& d) { return quantity(d.reference.sOffset, "kJ/(kmol K)"); }},
    {reference, "", "T(surr)", [](const D& d) { return quantity(d.reference.TEnv, "K"); }},
    {reference, "", "p(surr)", [](const D& d) { return quantity(d.reference.pEnv, "kPa"); }},
};
constexpr FieldWords UnitFields[] = {
    {units, "", "energies", [](const D& d) { return energy_text(d.units); }},
    {units, "", "volumes", [](const D& d) { return std::string(VolumeName(d.units)); }},
};
constexpr FieldWords OptionFields[] = {
    {options, "", "values", [](const D& d) -> std::string { return d.options.BatchMode ? "data points" : "direct input"; }},
    {options, "the ", "names of substances", [](const D& d) -> std::string { return d.options.Englisch ? "English" : "German"; }},
    {options, "", "points per curve", [](const D& d) { return genNum(d.options.Dens); }},
    {options, "the ", "CSV delimiter", [](const D& d) { return delimiter(d.options.SepCSV); }},
    {options, "the ", "XY delimiter", [](const D& d) { return delimiter(d.options.SepXY); }},
    {options, "", "closing the diagram with new units", [](const D& d) { return on_off(d.options.ResetOnClose); }},
    {options, "", "parameters stored with curves", [](const D& d) { return on_off(d.options.ParSpeichern); }},
    {options, "", "partial curves", [](const D& d) { return on_off(d.options.chkPartialKurve); }},
    {options, "", "sublimation curves without tie lines", [](const D& d) { return on_off(d.options.chkSKurveOhneKonnode); }},
    {options, "", "curves restricted in T and p", [](const D& d) { return on_off(d.options.chkCurveTpRestricted); }},
    {options, "", "mixed curves", [](const D& d) { return on_off(d.options.KurvenMischen); }},
};
// clang-format on

}  // namespace

std::string_view name_of(DocumentPart part) {
    constexpr std::array<std::string_view, 4> names = {"Models", "Reference state", "Units", "Options"};
    return names[static_cast<std::size_t>(part)];
}

std::span<const FieldWords> fields_of(DocumentPart part) {
    switch (part) {
        case models:
            return Models;
        case reference:
            return Reference;
        case units:
            return UnitFields;
        case options:
            return OptionFields;
    }
    return {};
}

const FieldWords* changed_field(DocumentPart part, const Document& before, const Document& after) {
    for (const FieldWords& field : fields_of(part))
        if (field.text(before) != field.text(after)) return &field;
    return nullptr;
}

}  // namespace quom
