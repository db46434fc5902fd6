#include "forms/model_form.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/number_text.h"
#include "engine/eos_parameters.h"
#include "forms/options_form.h"
#include "forms/refusal.h"

namespace quom {
namespace {

void select(ModelList& list, int code) {
    const auto at = std::ranges::find(list.entries, code, &ModelList::Entry::code);
    if (at != list.entries.end()) list.selected = static_cast<int>(at - list.entries.begin());
}

Message no_parameters() {
    return {.title = "Execution not possible",
            .text = "Error - EOS-parameter calculation (Tovarn-Ji model)",
            .kind = MessageKind::stop};
}

Message omega_warning() {
    return {.title = "WARNING",
            .text = "no acentric factor available.\nCalculated using omega = 0\n(Input => database editor)",
            .kind = MessageKind::warning};
}

// "Propane does not offer 14 (VIRIAL-EOS Soave / Redlich / Kwong): the record has no omega. It offers 0,
// 2, 3."
ModelRefusal not_offered(const ModelForm& form, ModelBox box, int code, std::string_view name,
                         const ModelList& list, const std::string& why) {
    std::string text = form.substance.StoffName + " does not offer " + std::to_string(code);
    if (!trim(name).empty()) text += " (" + std::string(trim(name)) + ")";
    text += why.empty() ? "." : ": " + why + ".";
    std::string codes;
    for (const ModelList::Entry& entry : list.entries)
        if (entry.code > 0 || list.entries.size() > 1)
            codes += (codes.empty() ? "" : ", ") + std::to_string(entry.code);
    text += codes.empty() ? " There is none." : " It offers " + codes + ".";
    return {box, std::move(text)};
}

constexpr const char* not_in_record = "its constants are not in the record";

// The equations that the lists of the substance alone decide.
std::optional<ModelRefusal> choose_equations(ModelForm& form, const ModelWishes& wishes) {
    if (wishes.eos && !form.EOSKombi.offers(number_of(*wishes.eos)))
        return not_offered(form, ModelBox::EOSKombi, number_of(*wishes.eos), eos_info(*wishes.eos).text,
                           form.EOSKombi, missing_constants(form.substance, *wishes.eos));
    if (wishes.evp && !form.pkombi.offers(number_of(*wishes.evp)))
        return not_offered(form, ModelBox::pkombi, number_of(*wishes.evp), evp_info(*wishes.evp).text,
                           form.pkombi, not_in_record);
    if (wishes.cp && !form.cpKombi.offers(number_of(*wishes.cp)))
        return not_offered(form, ModelBox::cpKombi, number_of(*wishes.cp), cp_info(*wishes.cp).text,
                           form.cpKombi, not_in_record);
    if (wishes.eos) EOSKombi_Click(form, *wishes.eos);
    if (wishes.evp) pkombi_click(form, *wishes.evp);
    if (wishes.cp) cpKombi_Click(form, *wishes.cp);
    return std::nullopt;
}

std::optional<ModelRefusal> choose_hlv(ModelForm& form, Hlv code) {
    if (!form.HLVKombi.offers(number_of(code))) {
        const bool needs_cubic = code == Hlv::eos && form.models.VPhaseOnly();
        return not_offered(
            form, ModelBox::HLVKombi, number_of(code), hlv_info(code).text, form.HLVKombi,
            needs_cubic ? "it needs a cubic equation of state" : "what it needs is not in the record");
    }
    HLVKombi_Click(form, code);
    return std::nullopt;
}

}  // namespace

ModelForm open_model_form(const Document& document) {
    ModelForm form;
    form.substance = document.substance.constants;
    form.eos_input = document.eos_input;
    const SubstanceConstants& c = form.substance;
    form.EOSKombi = AktualisiereEOSKombi(c, document.models);
    form.models = form.EOSKombi.models;
    form.pkombi = AktualisierepKombi(c, form.models);
    form.HLVKombi = AktualisiereHLVKombi(c, form.models);
    form.models = form.HLVKombi.models;
    form.cpKombi = cp_list(c, form.models);
    form.WatsonKombi = watson_list(c);
    form.rhoL = rhoL_state(c);

    // The selected entries take force in the order of the window.
    form.models = quom::EOSKombi_Click(form.models, eos_of(form.EOSKombi.selected_code()), form.HLVKombi);
    pkombi_click(form, evp_of(form.pkombi.selected_code()));
    HLVKombi_Click(form, hlv_of(form.HLVKombi.selected_code()));
    cpKombi_Click(form, cp_form_of(form.cpKombi.selected_code()));
    form.watson_selected = selected_watson(form.WatsonKombi, form.models.nWat);
    return form;
}

ModelForm confirmed_model_form(const Document& document) {
    ModelForm form = open_model_form(document);
    const ModelSelection& models = document.models;
    const std::pair<ModelList*, int> lists[] = {{&form.EOSKombi, number_of(models.EOSKode)},
                                                {&form.pkombi, number_of(models.EVPKode)},
                                                {&form.HLVKombi, number_of(models.HLVKode)},
                                                {&form.cpKombi, number_of(models.cpKode)}};
    for (const auto& [list, code] : lists) select(*list, code);
    form.models = models;
    form.watson_selected = selected_watson(form.WatsonKombi, models.nWat);
    return form;
}

bool differs(const ModelForm& form, const Document& document) {
    return form.models != document.models || form.eos_input != document.eos_input;
}

void EOSKombi_Click(ModelForm& form, Eos code) {
    if (code == Eos::virial_manual && form.models.EOSKode != code) {
        form.eos_input.b0 = 0.0;
        form.eos_input.b1 = 0.0;
        form.eos_input.b2 = 0.0;
    }
    form.models = EOSKombi_Click(form.models, code, form.HLVKombi);
    select(form.EOSKombi, number_of(code));
    HLVKombi_Click(form, hlv_of(form.HLVKombi.selected_code()));
}

void pkombi_click(ModelForm& form, Evp code) {
    form.models = pkombi_click(form.models, code);
    select(form.pkombi, number_of(code));
}

void HLVKombi_Click(ModelForm& form, Hlv code) {
    form.models = HLVKombi_Click(form.models, code);
    select(form.HLVKombi, number_of(code));
}

void cpKombi_Click(ModelForm& form, CpForm code) {
    form.models = cpKombi_Click(form.models, code);
    select(form.cpKombi, number_of(code));
}

void PriorOpt_Click(ModelForm& form, int option) { form.models = PriorOpt_Click(form.models, option); }

void WatsonKombi_Change(ModelForm& form, std::string_view text) {
    form.models = WatsonKombi_Change(form.models, text);
    form.watson_selected = selected_watson(form.WatsonKombi, form.models.nWat);
}

std::optional<ModelRefusal> choose_models(ModelForm& form, const ModelWishes& wishes) {
    ModelForm chosen = form;
    if (auto refusal = choose_equations(chosen, wishes)) return refusal;
    if (wishes.hlv) {
        if (auto refusal = choose_hlv(chosen, *wishes.hlv)) return refusal;
    }
    if (wishes.nWat) {
        if (!(*wishes.nWat > 0.0 && *wishes.nWat < 10.0))
            return ModelRefusal{ModelBox::WatsonKombi,
                                "A Watson exponent of " + genNum(*wishes.nWat) +
                                    " is not possible; one above 0 and below 10 is right, "
                                    "mostly 0.38."};
        WatsonKombi_Change(chosen, genNum(*wishes.nWat));
    }
    if (wishes.Konzept) {
        if (*wishes.Konzept && !chosen.global_enabled())
            return ModelRefusal{ModelBox::Konzept,
                                "The GLOBAL concept needs a cubic equation of state; " +
                                    std::string(trim(eos_info(chosen.models.EOSKode).text)) +
                                    " holds for the vapor alone."};
        PriorOpt_Click(chosen, *wishes.Konzept ? 0 : 1);
    }
    if (wishes.eos_input) chosen.eos_input = *wishes.eos_input;
    if (const auto refusal = check(chosen))
        return ModelRefusal{ModelBox::constants, "The parameters of the equation of state " +
                                                     std::to_string(number_of(chosen.models.EOSKode)) +
                                                     " give no equation."};
    form = std::move(chosen);
    return std::nullopt;
}

std::string next_step(const Session& session) {
    if (!session.shell.ModelsConfirmed) return "next: OK puts these models in force";
    if (!has_critical_data(session.substance()))
        return "next: the menu \"Calculation...\"; without T(cr), p(cr) the ideal gas only";
    return "next: choose what to calculate in the menu \"Calculation...\"";
}

std::optional<Message> check(const ModelForm& form) {
    if (eos_info(form.models.EOSKode).family != EosFamily::tovarn_ji) return std::nullopt;
    const EosConstants constants = InitEOSPar(form.substance, form.models.EOSKode, form.eos_input);
    if (constants.reason == Reason::none) return std::nullopt;
    return no_parameters();
}

ModelOk confirm_models(Session& session, const ModelForm& form, Messages& messages) {
    ModelOk ok;
    ok.needs_critical_available = has_critical_data(form.substance);
    if (warns_of_omega(form.substance, form.models)) messages.ask(omega_warning());
    if (const auto refusal = check(form)) {
        messages.ask(*refusal);
        unconfirm_models(session);
        ok.err = 1;
        return ok;
    }
    Document document = session.document;
    document.models = form.models;
    document.eos_input = form.eos_input;
    Changes changes = commit(session, document);

    if (document.units.vcrStart < TinyT) document.units.vcrStart = session.fluid->eos.vcrEOS;
    if (unit_refusal(*session.fluid, document.units.EnergyMode, document.units.VolumeMode))
        document.units.VolumeMode = volume_molar;
    changes.units = commit(session, std::move(document)).units;

    ok.changes = changes;
    ok.ModelStatus = ModelStatus(form.models);
    session.shell.ModelStatus = ok.ModelStatus;
    session.shell.ModelsConfirmed = true;
    session.shell.ModelChange.clear();
    return ok;
}

void unconfirm_models(Session& session, std::string change) {
    session.shell.ModelsConfirmed = false;
    session.shell.ModelChange = std::move(change);
    session.shell.ModelStatus.clear();
}

}  // namespace quom
