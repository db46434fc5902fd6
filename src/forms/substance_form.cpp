#include "forms/substance_form.h"

#include "forms/refusal.h"
#include "session/substance_marks.h"
#include "substance/database.h"

namespace quom {

Message no_database() {
    return refusal_message(
        "A database must be selected before choosing a substance. \n"
        "=> via icon \"New project\" or via Menüpunkt \"Daten\" or via menue item \"Data\"");
}

Message substance_not_readable() { return refusal_message("The record of this substance can not be read."); }

std::string substance_caption(const DatabaseFile& file) {
    return "Select a substance (in total  " + std::to_string(file.StoffAnzahl()) + ")";
}

std::vector<int> filtered_rows(const NameIndex& names, std::string_view text) {
    constexpr std::size_t close_spellings = 5;
    std::vector<NameHit> hits = names.find(text);
    if (hits.empty()) hits = names.near(text, close_spellings);
    std::vector<int> indices;
    for (const NameHit& hit : hits) indices.push_back(hit.index);
    return indices;
}

SubstanceBoxes substance_boxes(const DatabaseFile& file, int index) {
    SubstanceBoxes boxes;
    if (index < 1 || index > file.StoffAnzahl()) return boxes;
    const SubstanceRow& row = file.rows[static_cast<std::size_t>(index - 1)];
    const SubstanceHead head = read_substance_head(file, index);
    boxes.has_structure = file.DatabaseKind == 7;
    boxes.NameCombo = main_name(row.SubstanceName);
    boxes.Text1 = std::to_string(row.SubstanceNo);
    boxes.tex4 = (boxes.has_structure ? "CAS-RN:   " : " CAS-RN: ") + head.CASRN;
    if (boxes.has_structure) boxes.Text2 = "structure: " + head.Structure;
    return boxes;
}

SubstanceRemarks substance_remarks(const Session& session, int index) {
    const UnpackedRecord record =
        unpack_substance(session.database, index, session.document.options.Englisch);
    const SubstanceMarks marks = substance_marks(session.ProgramPath, record.constants);
    SubstanceRemarks remarks{.line = one_line(marks), .sentences = {}};
    for (const std::string& sentence : sentences(marks))
        remarks.sentences += (remarks.sentences.empty() ? "" : "\n") + sentence;
    return remarks;
}

SubstanceHit look_up_substance(const Session& session, const NameIndex& names, std::string_view text,
                               Messages& messages) {
    SubstanceHit hit = FindSubstance(session.database, session.ProgramPath, text, session.StoffIndex);
    if (hit.found) return hit;
    if (const std::vector<NameHit> named = names.named(text); named.size() == 1)
        return {.index = named.front().index, .found = true};
    if (hit.message) messages.ask(*hit.message);
    return hit;
}

}  // namespace quom
