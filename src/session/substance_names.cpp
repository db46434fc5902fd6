#include "session/substance_names.h"

#include <utility>

#include "substance/synonyms.h"

namespace quom {

const SubstanceNames& substance_names(Session& session) {
    if (!session.names) {
        SynonymFileBytes synonyms = read_synonym_file(session.ProgramPath);
        session.names = std::make_shared<const SubstanceNames>(
            SubstanceNames{NameIndex(session.database, synonyms.bytes), std::move(synonyms.fault)});
    }
    return *session.names;
}

}  // namespace quom
