// The session between two substances: opening a database, choosing a substance, and what is emptied before.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// Values of a session at start-up: no database, no equation of state chosen.
void start_session(Session& session, std::string ProgramPath, bool DezimalKomma);

struct LoadResult {
    std::int16_t err = 0;
    std::string fault;
};
// Loads a database of kind 6 or 7; a path without a folder part is taken from the program folder. Good: it is
// the one in force, and no substance is chosen any more. err -1: the file is missing, cut off, foreign, or
// holds no substance; nothing has changed.
LoadResult LoadDatabase(Session& session, int kind, std::string_view path);

// Makes substance index (1-based) the one in force, with a fluid of the models that the document has; they
// are not confirmed. Benson's reference point, typed constants of equations and all outcomes go. Returns -1
// without T(cr) or p(cr), or when the record cannot be read, which leaves no substance in force. Index 0
// changes nothing.
std::int16_t SelectSubstance(Session& session, int index);

// Brings the session to the state in which no substance is chosen. Reference temperature and environment get
// their defaults, the concept is GLOBAL, no calculation mode and no model of delta(LV)h is set; the other
// equations, RefKode and the offsets stay.
void ResetSession(Session& session);

// A reference state that lacks its data in the record would take 0 for them: it gives way to the free one,
// and the user is told.
void check_reference(Document& document, Messages& messages);

// What the confirmation of a substance does: ResetSession, the question whether experimental data go (title
// "exper. data"), SelectSubstance, start values of diagrams. A reference state that lacks its data in the new
// record gives way to the free one, and the user is told. Returns the flag of SelectSubstance. Index 0,
// "nothing chosen", changes nothing.
std::int16_t confirm_substance(Session& session, int index, Messages& messages);

}  // namespace quom
