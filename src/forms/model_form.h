// Choosing the models of a substance: frmQModell without its window. The form holds a copy; the session
// changes with confirm_models.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "engine/model_catalogue.h"
#include "session/session.h"

namespace quom {

struct ModelForm {
    SubstanceConstants substance;  // whose models are chosen
    ModelSelection models;
    EosInput eos_input;
    ModelList EOSKombi, pkombi, HLVKombi, cpKombi;  // lists as shown, each with its selected entry
    std::vector<std::string> WatsonKombi;           // texts of the exponents
    int watson_selected = 0;                        // index in WatsonKombi; -1: the exponent of models, typed
    RhoLState rhoL;                                 // equation rho(L) = Fu(T) in words
    bool needs_virial_input() const { return models.EOSKode == Eos::virial_manual; }
    bool global_enabled() const { return !models.VPhaseOnly(); }  // the GLOBAL concept can be chosen
    bool watson_shown() const { return models.HLVKode == Hlv::watson; }
};

// The form as the window opens: lists that the substance allows; an entry of the document that is not offered
// falls back.
ModelForm open_model_form(const Document& document);
// The form of models in force; a list that does not offer the one in force stays as it opens.
ModelForm confirmed_model_form(const Document& document);
// Whether the form holds other models than the document.
bool differs(const ModelForm& form, const Document& document);

// Reactions to a choice, lists included. The constants of the manual virial equation are 0 when it is chosen
// over another one.
void EOSKombi_Click(ModelForm& form, Eos code);
void pkombi_click(ModelForm& form, Evp code);
void HLVKombi_Click(ModelForm& form, Hlv code);
void cpKombi_Click(ModelForm& form, CpForm code);
void PriorOpt_Click(ModelForm& form, int option);  // 0 GLOBAL, 1 PARTIAL
void WatsonKombi_Change(ModelForm& form, std::string_view text);

// The boxes of the form.
enum class ModelBox { EOSKombi, pkombi, HLVKombi, cpKombi, Konzept, WatsonKombi, constants };
// A choice that is not possible, in a sentence.
struct ModelRefusal {
    ModelBox box{};
    std::string
        text;  // "Propane does not offer 14 (VIRIAL-EOS ...): the record has no omega. It offers 0, 2, 3."
};
// Models asked for by their codes; what is absent stays as the form has it.
struct ModelWishes {
    std::optional<Eos> eos{};
    std::optional<Evp> evp{};
    std::optional<Hlv> hlv{};
    std::optional<CpForm> cp{};
    std::optional<bool> Konzept{};  // true GLOBAL
    std::optional<double> nWat{};   // above 0, below 10
    std::optional<EosInput> eos_input{};
};
// Chooses one after the other as a user would. A refusal changes nothing.
std::optional<ModelRefusal> choose_models(ModelForm& form, const ModelWishes& wishes);

// What to do next, in a line: confirm the models, or calculate.
std::string next_step(const Session& session);

// Why OK is refused: the parameters give no equation of state.
std::optional<Message> check(const ModelForm& form);

// What OK does. Warns of a missing omega; a refused form is told and changes nothing but that no models are
// confirmed. Good: the document has the models, they are confirmed, ModelStatus and the start value v(cr) are
// set. Reduced units without v(cr) become molar ones.
struct ModelOk {
    std::int16_t err = 0;                   // above 0: the equation of state has no parameters
    bool needs_critical_available = false;  // calculations that need T(cr), p(cr) are possible
    std::string ModelStatus;                // EOS or EVP name with the concept
    Changes changes;
};
ModelOk confirm_models(Session& session, const ModelForm& form, Messages& messages);
// A choice in the window takes the confirmation back until the next OK. change: what was chosen, in words.
void unconfirm_models(Session& session, std::string change = {});

}  // namespace quom
