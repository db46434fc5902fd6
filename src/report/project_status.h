// The text window "project info": what the session holds, and where it came from.
#pragma once
#include <string>
#include <vector>

#include "session/session.h"

namespace quom {

inline constexpr const char* project_status_caption = " Info Project";

// One section: its title, and its lines as they are shown, with their indents.
struct StatusSection {
    std::string title;  // empty: no title
    std::vector<std::string> lines;
};
// The sections in the order of the window.
std::vector<StatusSection> project_status(const Session& session);
// The whole text; sections are separated by blank lines.
std::string project_status_text(const Session& session);

}  // namespace quom
