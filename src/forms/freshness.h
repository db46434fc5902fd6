// Whether a result that is shown still belongs to the document, and why it does not.
#pragma once
#include <memory>
#include <optional>
#include <string>

#include "forms/model_form.h"
#include "session/session.h"

namespace quom {

// What a result was calculated from.
struct ShownResult {
    std::shared_ptr<const Fluid> fluid;  // null: nothing is shown yet
    StateInput input;
    Units units;
    bool ShowFunctions = false;
    int ExtLevel = 1;
    bool direct = true;  // from direct input, not from a data point
    bool operator==(const ShownResult&) const = default;
};
// The result that the document asks for now.
ShownResult result_in_force(const Session& session);

struct StaleWords {
    std::string changed;  // "the equation of state was changed to Redlich / Kwong"
    std::string shown;    // "Shown: Peng / Robinson. Press OK in "Models", or calculate again."
};
// Why what is shown cannot be calculated anew without the user: the models are not confirmed, the equation of
// state has no parameters, the values are to come from elsewhere. None: it can.
std::optional<StaleWords> why_stale(const Session& session, const ShownResult& shown);

// A box that was typed and not yet calculated. shown: what the result stands for, "T = 350.000 K".
StaleWords typed_words(const std::string& typed, const std::string& shown);

// What the form of the models has changed in the models of the document, the first of them: "the equation of
// state was changed to Redlich / Kwong"; empty where they agree.
std::string model_change(const ModelForm& form, const Document& document);

}  // namespace quom
