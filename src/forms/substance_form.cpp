#include "forms/substance_form.h"

#include <algorithm>

#include "base/code_page.h"
#include "forms/refusal.h"
#include "session/substance_marks.h"
#include "substance/database.h"
#include "substance/search.h"

namespace quom {
namespace {

constexpr std::size_t CloseSpellings = 5;
constexpr std::size_t MostTyped = 60;  // characters of a typed text in a sentence

// Where the line of the list shows the match: in the text that was found, else in another of its names.
FoundSubstance found_substance(const DatabaseFile& file, const NameHit& hit, std::string_view key,
                               bool Englisch) {
    const SubstanceRow& row = file.rows[static_cast<std::size_t>(hit.index) - 1];
    const SubstanceLinePlaces places = substance_line_places(hit.index, row);
    FoundSubstance found{.index = hit.index};
    if (hit.kind == NameKind::formula) {
        found.part = {places.formula + hit.part.begin, hit.part.length};
        return found;
    }
    const std::string all = text_left(row.SubstanceName, LineNameLength);
    const bool in_line = hit.kind == NameKind::main || hit.kind == NameKind::further;
    bool shown = false;  // the line shows the text that was found, or another one that matches
    for (std::size_t at = 0; at < all.size() && !shown;) {
        const std::size_t end = std::min(all.find(';', at), all.size());
        const std::string_view name = std::string_view(all).substr(at, end - at);
        const bool is_hit = in_line && trim(name) == hit.name;
        const TextPart part = is_hit ? hit.part : part_of_name(trim(name), in_line ? "" : key);
        const std::size_t blanks = name.size() - trim_left(name).size();
        shown = is_hit || part.length > 0;
        if (shown) found.part = {places.name + at + blanks + part.begin, part.length};
        at = end + 1;
    }
    if (shown) return found;
    found.kind = kind_word(hit.kind, Englisch);
    found.found = hit.name;
    found.found_part = hit.part;
    return found;
}

std::string nothing_found(std::string_view text, bool close_spellings) {
    std::string typed = text_left(text, MostTyped);
    if (typed.size() < text.size()) typed += "...";
    std::string notice = "Nothing found. No name, synonym, formula or CAS number contains \"" + typed + "\".";
    if (close_spellings)
        notice += "\nDid you mean one of these? <Down> goes to the list, <Enter> takes the marked one.";
    return notice;
}

}  // namespace

Message no_database() {
    return refusal_message(
        "A database must be selected before choosing a substance. \n"
        "=> via icon \"New project\" or via Menüpunkt \"Daten\" or via menue item \"Data\"");
}

Message substance_not_readable() { return refusal_message("The record of this substance can not be read."); }

std::string substance_caption(const DatabaseFile& file) {
    return "Select a substance (in total  " + std::to_string(file.StoffAnzahl()) + ")";
}

SubstanceSearch search_substances(const DatabaseFile& file, const NameIndex& names, bool Englisch,
                                  std::string_view text) {
    SubstanceSearch search;
    text = trim(text);
    search.filtered = !text.empty();
    if (!search.filtered) {
        search.rows.resize(file.rows.size());
        for (std::size_t i = 0; i < file.rows.size(); ++i) search.rows[i].index = static_cast<int>(i) + 1;
        return search;
    }
    const std::string_view missing = names.missing_casrn(text);
    std::vector<NameHit> hits = names.find(text);
    if (!hits.empty()) {
        search.count = std::to_string(hits.size()) + " of " + std::to_string(file.StoffAnzahl()) +
                       (hits.size() > 1 ? ", best first" : "");
    } else if (missing.empty()) {
        hits = names.near(text, CloseSpellings);
    }
    const std::string key = compared_name(text).key;
    for (const NameHit& hit : hits) search.rows.push_back(found_substance(file, hit, key, Englisch));

    search.sure = missing.empty() && !search.count.empty();
    if (!missing.empty())
        search.notice = "CASRN " + std::string(missing) + " This substance is not involved in the database ";
    else if (!search.sure)
        search.notice = nothing_found(text, !hits.empty());
    return search;
}

SubstanceBoxes substance_boxes(const DatabaseFile& file, int index) {
    SubstanceBoxes boxes;
    boxes.has_structure = file.DatabaseKind == 7;
    SubstanceHead head;
    if (index >= 1 && index <= file.StoffAnzahl()) {
        const SubstanceRow& row = file.rows[static_cast<std::size_t>(index - 1)];
        head = read_substance_head(file, index);
        boxes.NameCombo = main_name(row.SubstanceName);
        boxes.Text1 = std::to_string(row.SubstanceNo);
    }
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

}  // namespace quom
