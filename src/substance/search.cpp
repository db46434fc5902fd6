#include "substance/search.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "substance/database.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

void tell_not_found(const Session& s, std::string text) {
    s.tell({.title = "ERROR: Selection of a substance",
            .text = std::move(text),
            .buttons = Buttons::ok,
            .default_button = Answer::ok,
            .kind = MessageKind::warning});
}

// First substance whose main name or CAS number is the text; 0 when there is none.
int find_in_tables(const Session& s, const std::string& wanted) {
    const auto& rows = s.database.file.rows;
    const auto hit = std::find_if(rows.begin(), rows.end(), [&](const SubstanceRow& row) {
        return trim(row.SubstanceCAS) == wanted || upper_text(main_name(row.SubstanceName)) == wanted;
    });
    return hit == rows.end() ? 0 : static_cast<int>(hit - rows.begin()) + 1;
}

}  // namespace

std::string main_name(std::string_view SubstanceName) {
    return std::string(trim(SubstanceName.substr(0, SubstanceName.find(';'))));
}

SubstanceHit FindSubstance(const Session& s, std::string_view text) {
    const SubstanceHit nothing{.index = s.database.StoffIndex, .found = false};
    const std::string wanted = upper_text(trim_right(text));
    if (!wanted.empty())
        if (const int index = find_in_tables(s, wanted); index != 0) return {.index = index, .found = true};

    const SynonymHit synonym = FindSynonym(s, text);
    if (!synonym.found) {
        tell_not_found(s, "Nothing found.");
        return nothing;
    }
    const int index = FindCAS(s, synonym.casrn);
    if (index == 0) {
        tell_not_found(s, "CASRN " + synonym.casrn + " This substance is not involved in the database ");
        return nothing;
    }
    return {.index = index, .found = true};
}

SystemNoEntry enter_system_no(const Session& s, std::string_view text) {
    SystemNoEntry entry{.index = s.database.StoffIndex, .found = false, .clear = false};
    const std::size_t length = text_length(text);
    if (length < 1 || length > 4) return entry;
    const std::int16_t number = to_i16(Val(text));
    entry.clear = number < 1;
    if (entry.clear) return entry;
    if (const int index = FindSystemNo(s, number); index != 0) {
        entry.index = index;
        entry.found = true;
    }
    return entry;
}

std::string substance_list_line(int index, const SubstanceRow& row) {
    return text_padded(std::to_string(index), 6) + text_padded(row.SubstanceFormula, 12) + " " +
           text_padded(row.SubstanceName, 107);
}

bool row_holds(const SubstanceRow& row, std::string_view text) {
    const std::string wanted = upper_text(trim(text));
    for (const std::string* field : {&row.SubstanceFormula, &row.SubstanceName, &row.SubstanceCAS})
        if (upper_text(*field).find(wanted) != std::string::npos) return true;
    return false;
}

void NameMemory::add(std::string name) {
    if (name.empty() || std::find(names_.begin(), names_.end(), name) != names_.end()) return;
    if (names_.size() == Capacity) names_.erase(names_.begin());
    names_.push_back(std::move(name));
}

}  // namespace quom
