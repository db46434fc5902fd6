// The lists of models, what a substance offers of them, and the rules of changing a selection.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace quom {

// List texts by code, as the windows show them (35 characters, longer ones whole); "" for a code without an
// entry.
std::string_view eos_name(int code);
std::string_view evp_name(int code);
std::string_view hlv_name(int code);
std::string_view cp_name(int code);

// Entries of one list, and which of them is selected.
struct ModelList {
    struct Entry {
        int code = 0;
        std::string text;
    };
    std::vector<Entry> entries;
    int selected = 0;  // index in entries
    int selected_code() const {
        return entries.empty() ? 0 : entries[static_cast<std::size_t>(selected)].code;
    }
};

// The lists that the data of the substance allow. Only EOSKode "none" (-> 6 or 4) and HLVKode 1 without
// equation
// (-> 0) are changed in the record.
ModelList AktualisiereEOSKombi(Session& s);
ModelList AktualisierepKombi(const Session& s);
ModelList AktualisiereHLVKombi(Session& s);
ModelList cp_list(const Session& s);                     // what the record has of cp(idG)
std::vector<std::string> watson_list(const Session& s);  // texts of the exponents
// cpKode at the opening of the model window, from the one before.
int opening_cp_code(const Session& s);

// State of the equation rho(L) = Fu(T) in words; validity is empty when there is none.
struct RhoLState {
    std::string availability;
    std::string validity;
};
RhoLState rhoL_state(const Session& s);

// Reactions to a choice; hlv is the list shown, code 7 leaves and returns with the EOS.
void EOSKombi_Click(Session& s, int code, ModelList& hlv);
void pkombi_click(Session& s, int code);
void HLVKombi_Click(Session& s, int code);
void cpKombi_Click(Session& s, int code);
void PriorOpt_Click(Session& s, int option);  // 0 GLOBAL, 1 PARTIAL
void WatsonKombi_Change(Session& s, std::string_view text);

// What the OK of the model window does to the record. err > 0: the EOS has no parameters, stop.
struct ModelOk {
    std::int16_t err = 0;
    bool needs_critical_available = false;  // calculations that need T(cr), p(cr) are possible
    std::string ModelStatus;                // EOS or EVP name with the concept
};
ModelOk cmdOKModell_Click(Session& s);

// The selection as the model window would make it on opening and OK, over the current codes of the record: an
// entry that is not offered falls back as in the window.
ModelOk select_models(Session& s);

}  // namespace quom
