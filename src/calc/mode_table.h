// The modes of calculation in one table: texts of the menu and the list, specified values, and the branch
// that runs.
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

namespace quom {

struct CalcRun;  // calc/calc_run.h

// Values of the data point that a mode reads.
enum SpecifiedValue : unsigned {
    spec_none = 0,
    spec_T = 1,
    spec_p = 2,
    spec_rhoV = 4,      // column rho(V)
    spec_rhoL = 8,      // column rho(L)
    spec_tank = 16,     // the tank record instead of the data point
    spec_process = 32,  // start of the process
};

// What follows a branch.
enum class AfterBranch {
    result_block,  // the common end: region, extended output, functions, parameters, record
    leave,         // nothing more
};
using ModeBranch = AfterBranch (*)(CalcRun&);

struct ModeEntry {
    int mode;
    std::string_view menu_text;
    std::string_view list_title;
    unsigned specified;
    ModeBranch branch;
    bool state_of_eos = false;  // the equation of state gives the state: it must be there
};

inline constexpr int last_mode = 24;

// Entry of a mode 1 to 24; null for any other number.
const ModeEntry* mode_entry(int mode);

}  // namespace quom
