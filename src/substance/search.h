// Finding a substance by what a user types: name, synonym, CAS number, system number.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "substance/database_file.h"

namespace quom {

// Index of the first substance whose main name or CAS number is the text, in any case of letters; 0 when
// there is none.
int find_in_tables(const DatabaseFile& file, std::string_view text);

struct SubstanceHit {
    int index = 0;  // 1-based; the row marked before when nothing was found
    bool found = false;
    std::optional<Message> message{};  // why nothing was found
};
// Looks a text up: main names in the language of the tables and CAS numbers first, then the file of synonyms
// in ProgramPath.
SubstanceHit FindSubstance(const DatabaseFile& file, std::string_view ProgramPath, std::string_view text,
                           int marked = 0);

// What typing into the box of the system number does.
struct SystemNoEntry {
    int index = 0;  // row to be marked; the one marked before when the number is not there
    bool found = false;
    bool clear = false;  // beep and empty the box
};
// Only texts of 1 to 4 characters act.
SystemNoEntry enter_system_no(const DatabaseFile& file, std::string_view text, int marked);

// The main name of a row: up to its first ";".
std::string main_name(std::string_view SubstanceName);

// The list of substances: its header, and the line of row index (1-based).
inline constexpr const char* SubstanceListHeader = " ser. #     Formula                  Name of substance";
std::string substance_list_line(int index, const SubstanceRow& row);
// Where the line shows formula and name, in bytes.
struct SubstanceLinePlaces {
    std::size_t formula = 0, name = 0;
};
SubstanceLinePlaces substance_line_places(int index, const SubstanceRow& row);
inline constexpr std::size_t LineNameLength = 107;  // characters of the name in the line

// The names looked up last, at most eight, oldest first; a name that is there already is not added again.
class NameMemory {
 public:
    static constexpr std::size_t Capacity = 8;
    void add(std::string name);
    const std::vector<std::string>& names() const { return names_; }

 private:
    std::vector<std::string> names_;
};

}  // namespace quom
