// The measured points of the session that are in use.
#pragma once
#include <vector>

#include "diagrams/measured_points.h"
#include "session/session.h"

namespace quom {

// Those of the document that the user has not taken out.
std::vector<MeasuredPoint> measured_points(const Session& session);

}  // namespace quom
