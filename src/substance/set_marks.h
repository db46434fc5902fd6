// Marks of the sets of a record: which are an estimate, a fit of our own, or an extrapolated boiling point.
//
// They stand in a file beside the starter database, one row a marked set:
//     cas,set,mark,figures,source
// A mark belongs to figures, not to a name: "figures" is their checksum, and the row counts only while the
// record has those very figures. So the marks hold for a copy of the database too, and neither for another
// database nor for a set that was edited.
#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "substance/substance_constants.h"

namespace quom {

inline constexpr const char* MarksFile = "marks.csv";

enum class MarkKind {
    estimate,      // no measured value stands behind it
    fit,           // coefficients fitted to the figures of the source
    extrapolated,  // T(nb) below T(tr)
};
std::string_view mark_word(MarkKind kind);  // "estimate", "fit", "extrapolated"
std::optional<MarkKind> mark_kind(std::string_view word);

// A set of the record that can bear a mark.
struct MarkedSet {
    const char* column;  // its columns in the table of substances: "cppoly" of cppoly_C0 ..
    const char* field;   // its field in memory: "cpPoly"
    const char* label;   // "cp(idG), polynomial"
    int first, last;     // its cells
};
// The set with these columns; nullptr when there is none.
const MarkedSet* marked_set(std::string_view column);

// One row of the file.
struct MarkRow {
    std::string cas;
    const MarkedSet* set = nullptr;
    MarkKind kind = MarkKind::estimate;
    std::uint32_t figures = 0;
    std::string source;
};
struct MarkTable {
    std::vector<MarkRow> rows;
    std::string fault;  // what is wrong with the file, with its line; rows is empty then
};
MarkTable read_marks(std::string_view csv);
std::string marks_text(const std::vector<MarkRow>& rows);

// Checksum of the cells of a set as the constants give them (FNV-1a, 32 bits).
std::uint32_t figures_of(const SubstanceConstants& substance, const MarkedSet& set);

// A mark on the substance in force.
struct SetMark {
    const MarkedSet* set = nullptr;
    MarkKind kind = MarkKind::estimate;
    std::string source;
};
// The marks that hold for these constants, in the order of the cells. A T(nb) below T(tr) is marked whatever
// the table has.
std::vector<SetMark> marks_on(const SubstanceConstants& substance, const MarkTable& table);

// "cp(idG), polynomial: estimate, by group contributions (Joback, Reid 1987)"
std::string mark_sentence(const SetMark& mark);

}  // namespace quom
