// Answers of the commands of single calculations, from the outcome.
#pragma once
#include <string>

#include "calc/outcome.h"
#include "report/report.h"
#include "session/session.h"

namespace quom {

// state: the state with all functions, derivatives and coefficients.
Report state_report(const Session& session, const Outcome& outcome);

// calc: slots by key and, with extended output, the result arrays; in JSON only.
Report calc_report(const Session& session, const Outcome& outcome);
// calc: the result window from top to bottom.
std::string calc_text(const Session& session, const Outcome& outcome);

}  // namespace quom
