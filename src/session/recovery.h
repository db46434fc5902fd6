// A copy of the session as a text, kept while the program runs, so that a crash loses at most a minute: the
// whole document with its measured points and X-Y data, the names of the files and what is not yet saved.
//
// Form: a first line with the mark and the version, the time of writing, then one line for each field in a
// fixed order, "name=value"; a list is a line with its count and one line for each entry; "end" closes.
// Numbers in the shortest form that reads back as the same; "%", CR and LF of texts as "%25", "%0D", "%0A".
#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

inline constexpr std::size_t LargestCopy = std::size_t{20} << 20;  // bytes; about 400,000 points

struct SessionCopy {
    std::string written;  // when, "2026-11-22 05:40"
    Document document;
    ShellState shell;
    int StoffIndex = 0;
};
// What of a session is copied; lists are not shared with it, so that another thread may write the copy.
SessionCopy copy_of(const Session& session);
// Whether a session still is as it was copied.
bool same_session(const SessionCopy& copy, const Session& session);

std::string session_copy_bytes(const SessionCopy& copy);

struct SessionCopyRead {
    std::optional<SessionCopy> copy;
    std::string fault;  // what is wrong, with the number of the line
};
// Never allocates more than the bytes can hold. A field that is missing, out of its range or no number, a
// list that is cut off and a version that is not this one are faults.
SessionCopyRead read_session_copy(std::string_view bytes);

// What a copy holds, in lines: substance, models, data with their files, and what was not saved.
std::string copy_preview(const SessionCopy& copy);

// Makes the session what was copied: database opened, fluid made anew, models confirmed as they were. Where
// the database cannot be opened, or has another substance at that place, the user is told and gets the rest:
// data, options and units without a substance.
void restore_session(Session& session, const SessionCopy& copy, Messages& messages);

}  // namespace quom
