// Files of measured data and of X-Y data in a session.
#pragma once
#include <string>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// Loads a data file (.BAQ) into the session, behind the points that are there when add is set.
bool LoadExpDataFile(Session& session, const std::string& path, bool add, Messages& messages);

}  // namespace quom
