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

// Indices (1-based) of the rows that the text is found in, best first; where it is in none, of those with a
// close spelling. Empty for an empty text, and when there is neither: the list shows all rows then.
std::vector<int> filtered_rows(const NameIndex& names, std::string_view text);

// What the boxes tell of a row.
struct SubstanceBoxes {
    std::string NameCombo;  // main name
    std::string Text1;      // system number
    std::string tex4;       // CAS number with its label
    std::string Text2;      // structure with its label; empty for a database of kind 6
    bool has_structure = false;
};
SubstanceBoxes substance_boxes(const DatabaseFile& file, int index);

// What of a row's data is an estimate, a fit or extrapolated: in one line, and one sentence a set.
struct SubstanceRemarks {
    std::string line, sentences;
};
SubstanceRemarks substance_remarks(const Session& session, int index);

// FindSubstance on a typed text, else the one substance that the text names in another spelling or by its
// formula; the user is told when nothing is found. The row marked is the session's.
SubstanceHit look_up_substance(const Session& session, const NameIndex& names, std::string_view text,
                               Messages& messages);

}  // namespace quom
