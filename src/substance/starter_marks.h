// The marks of the starter database, from the tables of its sources.
//
// The table of sources holds one row a substance and one column a set, in it the number of a row of the list
// of sources; behind a colon the greatest deviation of a fit from its source in percent. The list holds
// number, mark (empty for figures as printed) and text of each source.
#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace quom {

struct SourceTables {
    std::string_view sources;      // header cas,M,Tcr,..; "20" or "20:0.31"; UTF-8
    std::string_view source_list;  // header no,mark,source; UTF-8
};

struct StarterMarks {
    std::string text;                 // of the file of marks
    std::vector<std::string> faults;  // one sentence each; not empty: no text
};
// Marks for a database of kind 7 (its bytes). Refused: a substance that the database lacks, a number that the
// list lacks, a mark on a set that the record does not have or that cannot bear one.
StarterMarks build_starter_marks(const SourceTables& tables, std::string_view database);

}  // namespace quom
