// The names of the open database: made when they are first asked for, kept until another database is loaded.
#pragma once
#include <string>

#include "session/session.h"
#include "substance/name_index.h"

namespace quom {

struct SubstanceNames {
    NameIndex index;    // of the database with the file of synonyms of the program folder
    std::string fault;  // one sentence on what is wrong with that file; empty when nothing is
};

// The names of the session's database; empty ones without a database. Lives until the next LoadDatabase or
// start_session.
const SubstanceNames& substance_names(Session& session);

}  // namespace quom
