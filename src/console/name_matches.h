// Substances by a part of a name, and names that are near a name that is not there.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "substance/database_file.h"

namespace quom {

struct NameMatch {
    int index = 0;  // 1-based row of the list
    // 0 equal, 1 begins with the text, 2 contains it; of near names the number of differing letters
    int rank = 0;
    std::string via;  // the synonym that matched, when it was not the main name, formula or CAS number
};
// Where the names of substances are: the open database, and the folder of the file of synonyms.
struct NameSource {
    const DatabaseFile& file;
    std::string_view ProgramPath;
};
// All substances with a name, synonym, formula or CAS number that contains the text, in any spelling that the
// search knows; the best first.
std::vector<NameMatch> matching_substances(const NameSource& source, std::string_view text);

// At most count substances with a name or synonym that differs from the text in few letters, the nearest
// first; where none does, those that contain it.
std::vector<NameMatch> near_substances(const NameSource& source, std::string_view text, std::size_t count);

}  // namespace quom
