// An open substance database: random access file of fixed-length records, and the tables of its substances.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "base/files.h"

namespace quom {

// One row of the list of substances.
struct SubstanceRow {
    std::int16_t SubstanceNo = 0;  // system number
    std::string SubstanceFormula;  // 12 characters at most
    std::string SubstanceName;     // name of the language in force with its synonyms
    std::string OtherName;         // the same of the other language
    std::string SubstanceCAS;
};

// The file stays open so that any record can be read at any moment; copies share it. Kind 0: none loaded.
struct DatabaseFile {
    RandomFile handle;
    int DatabaseKind = 0;            // 6 or 7
    std::string path;                // path in force
    std::string PathQ06, PathQ07;    // last paths by kind
    std::vector<SubstanceRow> rows;  // [i - 1] is substance i
    int StoffAnzahl() const { return static_cast<int>(rows.size()); }
};

}  // namespace quom
