// The record between two substances: what is emptied before a substance is chosen, and what choosing one
// brings.
#pragma once
#include <string>

#include "session/session.h"

namespace quom {

// Brings the record to the state in which no substance is chosen. Reference temperature and environment get
// their defaults, the concept is GLOBAL, no calculation mode is set, constants of the EOS and all results are
// emptied; the selected equations and RefKode stay.
void ResetSession(Session& s);

// What the confirmation of a substance does to the record: ResetSession, the question whether experimental
// data go (title "exper. data"), SelectSubstance, the correlated vapor pressure equation in force, start
// values of diagrams. Returns the flag of SelectSubstance: -1 without T(cr) or p(cr), or when the record
// cannot be read. Index 0, "nothing chosen", changes nothing.
std::int16_t confirm_substance(Session& s, int index);

}  // namespace quom
