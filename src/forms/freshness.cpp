#include "forms/freshness.h"

#include "forms/calculation_form.h"
#include "forms/shell.h"
#include "report/basis_line.h"
#include "session/document_words.h"

namespace quom {
namespace {

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
    Document chosen = document;
    chosen.models = form.models;
    chosen.eos_input = form.eos_input;
    const FieldWords* field = changed_field(DocumentPart::models, document, chosen);
    if (!field) return {};
    const std::string name = std::string(field->article) + std::string(field->name);
    return field->several ? name + " were changed" : name + " was changed to " + field->text(chosen);
}

}  // namespace quom
