#include "console/name_matches.h"

#include "base/files.h"
#include "session/substance_names.h"
#include "substance/search.h"
#include "substance/synonyms.h"

namespace quom {
namespace {

constexpr std::size_t MostProposals = 3;
constexpr std::size_t MostCandidates = 9;  // substances of one formula, in the sentence

const SubstanceRow& row_of(const DatabaseFile& file, const NameHit& hit) {
    return file.rows[static_cast<std::size_t>(hit.index) - 1];
}

// "A", "B" or "C"
std::string any_of_names(const DatabaseFile& file, const std::vector<NameHit>& hits) {
    std::string text;
    for (std::size_t i = 0; i < hits.size(); ++i) {
        if (i > 0) text += i + 1 < hits.size() ? ", " : " or ";
        text += in_quotes(main_name(row_of(file, hits[i]).SubstanceName));
    }
    return text;
}

Table proposal_table(const DatabaseFile& file, const std::vector<NameHit>& hits) {
    Table table{"proposals",
                "",
                {{"index", "#", ""}, {"StoffName", "name", ""}, {"StoffCAS", "CAS", ""}},
                {},
                Layout::json};
    for (const NameHit& hit : hits) {
        const SubstanceRow& row = row_of(file, hit);
        table.rows.push_back({hit.index, main_name(row.SubstanceName), row.SubstanceCAS});
    }
    return table;
}

}  // namespace

const NameIndex& name_index(Program& program) {
    const SubstanceNames& names = substance_names(program.session);
    if (!names.fault.empty()) program.messages.ask(synonym_file_message(names.fault));
    return names.index;
}

Fault unknown_substance(const DatabaseFile& file, const NameIndex& names, std::string_view text) {
    const std::vector<NameHit> hits = names.proposals(text, MostProposals);
    const std::string known = hits.empty()
                                  ? ". \"quomc list\" shows all " + std::to_string(file.StoffAnzahl()) + "."
                                  : "; did you mean " + any_of_names(file, hits) + "?";
    return {status_no_result,
            "There is no substance " + in_quotes(text) + " in " + name_part(file.path) + known,
            {proposal_table(file, hits)}};
}

Fault ambiguous_substance(const DatabaseFile& file, const std::vector<NameHit>& hits, std::string_view text) {
    std::string list;
    for (std::size_t i = 0; i < hits.size() && i < MostCandidates; ++i) {
        const SubstanceRow& row = row_of(file, hits[i]);
        list += (list.empty() ? "" : ", ") + in_quotes(main_name(row.SubstanceName)) + " (" +
                row.SubstanceCAS + ")";
    }
    if (hits.size() > MostCandidates) list += " ...";
    return {status_no_result,
            in_quotes(text) + " stands for " + std::to_string(hits.size()) + " substances: " + list +
                ". Name one of them.",
            {proposal_table(file, hits)}};
}

Fault nothing_contains(const DatabaseFile& file, const NameIndex& names, std::string_view text) {
    const std::vector<NameHit> hits = names.proposals(text, MostProposals);
    const std::string near = hits.empty() ? "." : "; did you mean " + any_of_names(file, hits) + "?";
    return {status_no_result,
            "No name, synonym, formula or CAS number contains " + in_quotes(text) + near,
            {proposal_table(file, hits)}};
}

}  // namespace quom
