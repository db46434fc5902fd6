// The program folder: where the starter database, synonyms and everything the program writes by itself live.
#pragma once
#include <string>
#include <vector>

namespace quom {

inline constexpr const char* StarterDatabase = "quom.q07";

// What the choice of the program folder depends on. Empty texts: not given.
struct ProgramPlaces {
    std::string option;                  // --program-folder
    std::string home;                    // environment QUOM_HOME
    std::string executable;              // folder of the executable
    std::string user_data;               // where programs keep a user's data: XDG_DATA_HOME or ~/.local/share
    std::vector<std::string> installed;  // folders that an installation may have put the starter data into
};
// The places of this process, option as the command line gave it.
ProgramPlaces program_places(std::string option);

struct ProgramFolder {
    std::string path;   // absolute, without a separator at its end
    std::string fault;  // why there is none; path is empty then
};
// The first that holds of: the option; QUOM_HOME; the folder of the executable, when it is writable and has
// the starter database; the data folder of the build tree that the executable lies in; the folder quom in the
// user's data, made at first start and filled there with what the installed folders hold. Files that are
// there stay. A folder named by option or QUOM_HOME has to exist.
ProgramFolder find_program_folder(const ProgramPlaces& places);

}  // namespace quom
