// A starter database of the installation that is newer than the one the user works with. Its version is the
// date in the header of the file; nothing that the user has is ever overwritten.
#pragma once
#include <string>

#include "base/messages.h"
#include "session/program_path.h"

namespace quom {

// Version of a database, "2026-11-21"; empty when it cannot be read or its header holds no such date.
std::string database_version(const std::string& path);

struct StarterUpdate {
    std::string own, own_version;              // starter database of the program folder
    std::string installed, installed_version;  // the newest of the installation; empty when there is none
    std::string copy;                          // path under which a newer one is put beside the own one
    bool newer = false;                        // the installed one is
    bool copied = false;                       // and its copy is there already
    bool offered() const { return newer && !copied; }
};
StarterUpdate find_starter_update(const ProgramPlaces& places, const std::string& ProgramPath);

// Copies the newer database, and the file of synonyms beside it, under names with its version. Returns the
// fault, empty when good; what is there stays.
std::string copy_starter_update(const StarterUpdate& update);

// Asks whether the newer database is to be copied, once for each version, and does so; the user is told what
// became of it. Nothing is asked where nothing is offered.
void offer_starter_update(const StarterUpdate& update, Messages& messages);

}  // namespace quom
