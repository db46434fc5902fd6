#include "forms/freshness.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "forms/calculation_form.h"
#include "forms/shell.h"
#include "report/basis_line.h"

namespace quom {
namespace {

std::string trimmed(std::string_view text) { return std::string(trim(text)); }

std::string shown_models(const ShownResult& shown) {
    return "Shown: " + shown.fluid->substance.StoffName + ", " + eos_name(shown.fluid->models.EOSKode) + ". ";
}

}  // namespace

ShownResult result_in_force(const Session& session) {
    const CalculationInput& calc = session.document.calc;
    return {.fluid = session.fluid,
            .input = state_input(session.document, calc.CurrentPoint),
            .units = session.document.units,
            .ShowFunctions = calc.ShowFunctions,
            .ExtLevel = calc.ExtLevel,
            .direct = is_direct(session.document, calc.CalcMode)};
}

std::optional<StaleWords> why_stale(const Session& session, const ShownResult& shown) {
    if (!shown.fluid) return std::nullopt;
    const Document& document = session.document;
    if (!fulfilled(session, Needs::substance))
        return StaleWords{"no substance is chosen any more", shown_models(shown)};
    if (!session.shell.ModelsConfirmed) {
        const std::string& change = session.shell.ModelChange;
        return StaleWords{change.empty() ? "the models are not confirmed" : change,
                          shown_models(shown) + "Press OK in \"Models\", or calculate again."};
    }
    const ModeInfo& mode = mode_info(document.calc.CalcMode);
    if (mode.needs_eos && !session.fluid->has_eos() && shown.fluid->has_eos())
        return StaleWords{eos_name(document.models.EOSKode) + " has no parameters",
                          shown_models(shown) + "Give it its parameters in \"Models\"."};
    if (is_direct(document, document.calc.CalcMode) != shown.direct)
        return StaleWords{shown.direct ? "the values are to come from the data points now"
                                       : "the values are to come from direct input now",
                          shown.direct ? "Shown: the direct input." : "Shown: a data point."};
    return std::nullopt;
}

StaleWords typed_words(const std::string& typed, const std::string& shown) {
    return {typed + " was typed and is not yet calculated", "Shown: " + shown + '.'};
}

std::string model_change(const ModelForm& form, const Document& document) {
    const ModelSelection& now = form.models;
    const ModelSelection& before = document.models;
    if (now.EOSKode != before.EOSKode) return "the equation of state was changed to " + eos_name(now.EOSKode);
    if (form.eos_input != document.eos_input) return "the constants of the equation of state were changed";
    if (now.Konzept != before.Konzept)
        return std::string("the concept was changed to ") + (now.Konzept ? "GLOBAL" : "PARTIAL");
    if (now.EVPKode != before.EVPKode)
        return "the vapor pressure equation was changed to " + trimmed(evp_info(now.EVPKode).text);
    if (now.HLVKode != before.HLVKode)
        return "delta(LV)h was changed to " + trimmed(hlv_info(now.HLVKode).text);
    if (now.cpKode != before.cpKode) return "cp(idG) was changed to " + trimmed(cp_info(now.cpKode).text);
    if (now.nWat != before.nWat) return "the Watson exponent was changed to " + genNum(now.nWat);
    return {};
}

}  // namespace quom
