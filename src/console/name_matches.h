// Substances by a part of a name, and names that are near a name that is not there.
#pragma once
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace quom::console {

struct NameMatch {
    int index = 0;  // 1-based row of the list
    int rank =
        0;  // 0 equal, 1 begins with the text, 2 contains it; of near names the number of differing letters
    std::string via;  // the synonym that matched, when it was not the main name, formula or CAS number
};
// All substances with a name, synonym, formula or CAS number that contains the text, in any spelling that the
// search knows; the best first.
std::vector<NameMatch> matching_substances(const Session& s, std::string_view text);

// At most count substances with a name or synonym that differs from the text in few letters, the nearest
// first; where none does, those that contain it.
std::vector<NameMatch> near_substances(const Session& s, std::string_view text, std::size_t count);

}  // namespace quom::console
