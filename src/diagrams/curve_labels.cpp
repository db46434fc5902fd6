#include "diagrams/curve_labels.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "diagrams/axis_texts.h"
#include "engine/model_catalogue.h"
#include "engine/unit_factors.h"

namespace quom {
namespace {

constexpr std::size_t LongestLabel = 60;  // characters; a longer text gives way to its short form

// Names of curves of the phase equilibrium: long, and short.
struct CurveName {
    Kind kind;
    std::string_view text, shorter;
};
constexpr auto curve_names = std::to_array<CurveName>({
    {Kind::sat_p_v, "p-V projection (coexistence curve V - L); ", "p-V projection,  "},
    {Kind::sat_T_v, "T-V projection (coexistence curve V - L); ", "T-V projection from  "},
    {Kind::sat_T_rho, "T-rho projection (coexistence curve V - L); ", "T-rho projection from  "},
    {Kind::sat_rho_T, "rho-T projection (coexistence curve V - L); ", "rho-T projection from  "},
    {Kind::sat_rho_p, "rho-p projection (coexistence curve V - L); ", "rho-p projection from  "},
    {Kind::sat_pv_p, "pV-p projection (coexistence curve V - L); ", "pV-p projection from  "},
    {Kind::bisector, "Mathias-Cailletet bisector curve from ", "Mathias-Cailletet bisector curve from "},
    {Kind::inversion_p_T, "Inversion Curve (Joule-Thomson effect); ", "Inversion Curve, "},
    {Kind::inversion_pv_p, "Inversion Curve (Joule-Thomson effect); ", "Inversion Curve, "},
});
constexpr CurveName other_boundary = {Kind::none, "coexistence curve V - L; ", "coexistence V - L; "};

// Curves that hold both branches, or the one line that both share.
constexpr auto undivided =
    std::to_array<Kind>({Kind::sat_rho_T, Kind::sat_p_T, Kind::bnd_g_p, Kind::sat_g_T});
constexpr auto called_both = std::to_array<Kind>({Kind::bnd_g_p, Kind::sat_g_T});

template <std::size_t Size>
bool holds(const std::array<Kind, Size>& list, Kind kind) {
    return std::ranges::find(list, kind) != list.end();
}

std::string trimmed(std::string_view text) {
    return std::string(text.substr(0, text.find_last_not_of(' ') + 1));
}

// Without the letters of the code: "Wagner (MDB equ.)".
std::string evp_name(Evp code) { return trimmed(evp_info(code).text); }

std::string of_length(const std::string& text, const std::string& shorter) {
    return text.size() > LongestLabel ? shorter : text;
}

std::string branch_text(const CurveInput& input) {
    if (holds(called_both, input.kind)) return "(V-L) ";
    if (holds(undivided, input.kind) || input.kind == Kind::bisector) return "";
    if (input.VaporFraction == 0.0) return "(L) ";
    return input.VaporFraction == 1.0 ? "(V) " : "";
}

std::string vapor_pressure_text(const Fluid& fluid) {
    const ModelSelection& models = fluid.models;
    if (models.Konzept) {
        const std::string eos = eos_name(models.EOSKode);
        return "p(LV) calculated from " + eos + " (according to setting \"Models\"). GOBAL concept";
    }
    std::string text =
        "p(LV)according to EVP setting (=> \"Models\")" + evp_name(models.EVPKode) + ", PARTIAL concept";
    if (evp_info(models.EVPKode).form == EvpForm::august)
        text += "; AUGUST-Par: A = " + genNum(fluid.substance.AugustA) +
                ", B = " + genNum(fluid.substance.AugustB) + " K";
    return text;
}

std::string vapor_pressure_name(const Fluid& fluid) {
    return "p(LV) " +
           (fluid.models.Konzept ? eos_name(fluid.models.EOSKode) : evp_name(fluid.models.EVPKode));
}

// What the curve shows, long and short.
CurveText projection_text(const Fluid& fluid, const CurveInput& input) {
    const KindInfo& kind = kind_info(input.kind);
    if (kind.family == CurveFamily::vapor_pressure)
        return {vapor_pressure_name(fluid), vapor_pressure_text(fluid)};
    if (kind.family == CurveFamily::vaporization)
        return {"delta(LV)h", "delta(LV)h; " + trimmed(hlv_info(fluid.models.HLVKode).text)};
    const auto found = std::ranges::find(curve_names, input.kind, &CurveName::kind);
    const CurveName& name = found != curve_names.end() ? *found : other_boundary;
    const std::string eos = eos_name(fluid.models.EOSKode);
    const std::string text = std::string(name.text) + eos, shorter = std::string(name.shorter) + eos;
    const std::string branch = kind.section == Section::inversion ? "" : branch_text(input);
    const bool isohygric = branch.empty() && input.VaporFraction > 0.0 && input.VaporFraction < 1.0;
    const std::string fraction =
        isohygric ? ", eta(V) = " + formatMask(input.VaporFraction, "0.0###") : std::string();
    return {branch + of_length(text, shorter) + fraction, branch + text + fraction};
}

CurveText section_text(const Fluid& fluid, const CurveInput& input) {
    struct Parameter {
        Section section;
        double value;
        std::string_view reduced;  // before a pure number
    };
    const auto parameters = std::to_array<Parameter>({{Section::isothermal, input.T, "T(red) = "},
                                                      {Section::isobaric, input.p, "p(red) = "},
                                                      {Section::isochoric, input.v, "v(red) = "}});
    const Section section = kind_info(input.kind).section;
    std::string text;
    for (const Parameter& parameter : parameters) {
        if (parameter.section != section) continue;
        if (input.units.VolumeMode == reduced_volume) text = parameter.reduced;
        text += parameter_text(section, parameter.value, input.units, unit_factors(fluid, input.units));
    }
    if (input.TieLine) text += ", tie line";
    if (input.SCurve) text += ", instable/metastable region";
    return {text, text};
}

}  // namespace

CurveText curve_text(const Fluid& fluid, const CurveInput& input, const CurveResult& result) {
    const KindInfo& kind = kind_info(input.kind);
    CurveText text;
    if (kind.section == Section::database)
        text.label = text.legend = kind_title(input.kind, input.units);
    else if (kind.section == Section::projection || kind.section == Section::inversion)
        text = projection_text(fluid, input);
    else
        text = section_text(fluid, input);
    text.legend += ", " + fluid.substance.StoffName;
    if (kind.section != Section::database) text.legend += ", " + trimmed(fluid.eos_row().text);
    if (!result.Msg.empty()) text.legend = result.Msg + ", " + text.legend;
    return text;
}

}  // namespace quom
