// The fields of a document that the user chooses, in words: one table for the steps of undo and for results
// that are not up to date.
#pragma once
#include <span>
#include <string>
#include <string_view>

#include "session/document.h"

namespace quom {

enum class DocumentPart { models, reference, units, options };
std::string_view name_of(DocumentPart part);  // "Models", "Reference state", "Units", "Options"

struct FieldWords {
    DocumentPart part;
    std::string_view article;  // "the " or empty
    std::string_view name;     // "equation of state"
    std::string (*text)(const Document& document);
    bool several = false;  // several numbers, which a sentence does not tell
};
// The fields of a part, those first that a user would name first.
std::span<const FieldWords> fields_of(DocumentPart part);

// The first field of a part whose values differ; null when all agree.
const FieldWords* changed_field(DocumentPart part, const Document& before, const Document& after);

}  // namespace quom
