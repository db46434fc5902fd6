// The lists of models that a substance offers, and the rules of changing a selection; values in, values out.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "engine/models.h"

namespace quom {

// Entries of one list, and which of them is selected.
struct ModelList {
    struct Entry {
        int code = 0;      // number of the list's code
        std::string text;  // as the windows show it
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> entries;
    int selected = 0;       // index in entries
    ModelSelection models;  // the selection as the list leaves it
    int selected_code() const {
        return entries.empty() ? 0 : entries[static_cast<std::size_t>(selected)].code;
    }
    bool offers(int code) const;
};

// The lists that the data of the substance allow, with the entry of the selection in force (else the first)
// selected. models of the list is the selection as it came; only EOSKode none becomes Peng/Robinson
// (Redlich/Kwong without omega), and HLVKode equation becomes none without its equation. The selected entry
// takes force by its _Click.
ModelList AktualisiereEOSKombi(const SubstanceConstants& substance, const ModelSelection& models);
ModelList AktualisierepKombi(const SubstanceConstants& substance, const ModelSelection& models);
// Selects the entry whose code is the number of the vapor pressure equation, unless HLVKode is none.
ModelList AktualisiereHLVKombi(const SubstanceConstants& substance, const ModelSelection& models);
ModelList cp_list(const SubstanceConstants& substance, const ModelSelection& models);

// cpKode at the opening of the model window, from the one before.
CpForm opening_cp_code(const SubstanceConstants& substance, CpForm before);

// Texts of the Watson exponents: 0.38, and one by T(nb)/T(cr).
std::vector<std::string> watson_list(const SubstanceConstants& substance);
// Index of the text that is nWat, compared as singles; -1 for an exponent typed by the user, which stays.
int selected_watson(const std::vector<std::string>& texts, float nWat);

// State of the equation rho(L) = Fu(T) in words; validity is empty when there is none.
struct RhoLState {
    std::string availability;
    std::string validity;
};
RhoLState rhoL_state(const SubstanceConstants& substance);

// The selection after a choice. hlv is the list of delta(LV)h shown: Hlv::eos leaves and returns with the
// equation of state. An equation of the V-phase only takes the PARTIAL concept; coming back from one takes
// GLOBAL. The constants of the manual virial equation are typed anew when it is chosen over another one.
ModelSelection EOSKombi_Click(ModelSelection models, Eos code, ModelList& hlv);
ModelSelection pkombi_click(ModelSelection models, Evp code);
ModelSelection HLVKombi_Click(ModelSelection models, Hlv code);
ModelSelection cpKombi_Click(ModelSelection models, CpForm code);
// option 0 GLOBAL, which an equation of the V-phase only refuses; 1 PARTIAL.
ModelSelection PriorOpt_Click(ModelSelection models, int option);
// text as chosen or typed, with comma or point; nothing changes unless it is a number between 0 and 10.
ModelSelection WatsonKombi_Change(ModelSelection models, std::string_view text);

// The selection as the model window makes it on opening, with the model of delta(LV)h that is wanted chosen
// in it; an entry that is not offered falls back as in the window.
ModelSelection proposed_models(const SubstanceConstants& substance, const ModelSelection& wanted);

// The selection asks for omega, which the substance lacks: it is calculated with omega = 0, and the user is
// told.
bool warns_of_omega(const SubstanceConstants& substance, const ModelSelection& models);
// Calculations that need T(cr), p(cr) are possible.
bool has_critical_data(const SubstanceConstants& substance);
// Why a substance does not offer an equation of state: "the record has no T(cr), omega"; empty when it does.
std::string missing_constants(const SubstanceConstants& substance, Eos code);
// "Peng / Robinson": the name of an equation of state without the kind of equation where that is a cubic.
std::string eos_name(Eos code);
// "CEOS Peng / Robinson (GLOBAL concept)", "Wagner (MDB equ.) (PARTIAL concept)".
std::string ModelStatus(const ModelSelection& models);

}  // namespace quom
