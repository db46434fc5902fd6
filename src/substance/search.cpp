#include "substance/search.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "substance/database.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

Message not_found(std::string text) {
    return {
        .title = "ERROR: Selection of a substance", .text = std::move(text), .kind = MessageKind::warning};
}

}  // namespace

std::string main_name(std::string_view SubstanceName) {
    return std::string(trim(SubstanceName.substr(0, SubstanceName.find(';'))));
}

int find_in_tables(const DatabaseFile& file, std::string_view text) {
    const std::string wanted = upper_text(trim_right(text));
    if (wanted.empty()) return 0;
    const auto hit = std::ranges::find_if(file.rows, [&](const SubstanceRow& row) {
        return trim(row.SubstanceCAS) == wanted || upper_text(main_name(row.SubstanceName)) == wanted;
    });
    return hit == file.rows.end() ? 0 : static_cast<int>(hit - file.rows.begin()) + 1;
}

SubstanceHit FindSubstance(const DatabaseFile& file, std::string_view ProgramPath, std::string_view text,
                           int marked) {
    if (const int index = find_in_tables(file, text); index != 0) return {.index = index, .found = true};

    const SynonymHit synonym = FindSynonym(ProgramPath, text);
    if (!synonym.found) return {.index = marked, .message = not_found("Nothing found.")};
    const int index = FindCAS(file, synonym.casrn);
    if (index != 0) return {.index = index, .found = true};
    return {
        .index = marked,
        .message = not_found("CASRN " + synonym.casrn + " This substance is not involved in the database ")};
}

SystemNoEntry enter_system_no(const DatabaseFile& file, std::string_view text, int marked) {
    SystemNoEntry entry{.index = marked};
    const std::size_t length = text_length(text);
    if (length < 1 || length > 4) return entry;
    const std::int16_t number = to_i16(Val(text));
    entry.clear = number < 1;
    if (entry.clear) return entry;
    if (const int index = FindSystemNo(file, number); index != 0) {
        entry.index = index;
        entry.found = true;
    }
    return entry;
}

std::string substance_list_line(int index, const SubstanceRow& row) {
    return text_padded(std::to_string(index), 6) + text_padded(row.SubstanceFormula, 12) + " " +
           text_padded(row.SubstanceName, LineNameLength);
}

SubstanceLinePlaces substance_line_places(int index, const SubstanceRow& row) {
    const std::size_t formula = text_padded(std::to_string(index), 6).size();
    return {formula, formula + text_padded(row.SubstanceFormula, 12).size() + 1};
}

void NameMemory::add(std::string name) {
    if (name.empty() || std::find(names_.begin(), names_.end(), name) != names_.end()) return;
    if (names_.size() == Capacity) names_.erase(names_.begin());
    names_.push_back(std::move(name));
}

}  // namespace quom
