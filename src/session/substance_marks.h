// What of a substance is an estimate, a fit or an extrapolated boiling point, from the file of marks in the
// program folder.
#pragma once
#include <string>
#include <vector>

#include "substance/set_marks.h"

namespace quom {

struct SubstanceMarks {
    std::vector<SetMark> marks;
    std::string fault;  // a sentence: the file of marks is missing, unreadable or foreign
};
// Marks on these constants. A fault of the file leaves the mark that follows from T(nb) and T(tr); without a
// substance there is neither mark nor fault.
SubstanceMarks substance_marks(const std::string& ProgramPath, const SubstanceConstants& substance);

// One sentence a mark, and the fault.
std::vector<std::string> sentences(const SubstanceMarks& marks);
// One line: "estimate: cp(idG), polynomial; fit: rho(L), delta(LV)h", or the fault; empty without both.
std::string one_line(const SubstanceMarks& marks);

}  // namespace quom
