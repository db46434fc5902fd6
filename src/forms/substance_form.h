// Choosing a substance: frmQStoffWahl without its window.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "session/session.h"
#include "substance/name_index.h"
#include "substance/search.h"

namespace quom {

// "Execution not possible": a database has to be there first.
Message no_database();
// "Execution not possible": the record cannot be read.
Message substance_not_readable();

// "Select a substance (in total  496)".
std::string substance_caption(const DatabaseFile& file);

// One row of the list and what it was found by.
struct FoundSubstance {
    int index = 0;        // 1-based
    TextPart part{};      // of the line of the list that the typed text stands for; none: not in the line
    std::string kind{};   // of what was found instead: "german", "synonym", "CAS"; empty when the line tells
    std::string found{};  // that text as it is written
    TextPart found_part{};  // of found; none of a close spelling
};
// What the window shows for a text that is being typed.
struct SubstanceSearch {
    std::vector<FoundSubstance> rows;  // best first; of an empty text all in their order
    bool filtered = false;             // the text is not empty
    bool sure = true;    // the first row is what the text names; else none is to be taken unseen
    std::string count;   // "11 of 496, best first"; empty when nothing was found or typed
    std::string notice;  // why nothing was found, and what may help, in lines
};
SubstanceSearch search_substances(const DatabaseFile& file, const NameIndex& names, bool Englisch,
                                  std::string_view text);

// What the boxes tell of a row.
struct SubstanceBoxes {
    std::string NameCombo;  // main name
    std::string Text1;      // system number
    std::string tex4;       // CAS number with its label
    std::string Text2;      // structure with its label; empty for a database of kind 6
    bool has_structure = false;
};
// Index 0: the labels alone.
SubstanceBoxes substance_boxes(const DatabaseFile& file, int index);

// What of a row's data is an estimate, a fit or extrapolated: in one line, and one sentence a set.
struct SubstanceRemarks {
    std::string line, sentences;
};
SubstanceRemarks substance_remarks(const Session& session, int index);

}  // namespace quom
