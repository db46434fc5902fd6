#include "session/data_files.h"

namespace quom {

bool LoadExpDataFile(Session&, const std::string&, bool, Messages&) { return false; }

}  // namespace quom
