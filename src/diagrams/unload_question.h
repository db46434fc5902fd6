// The question before a sheet goes that the next diagram cannot share.
#pragma once
#include "base/messages.h"

namespace quom {

Message unload_question();

}  // namespace quom
