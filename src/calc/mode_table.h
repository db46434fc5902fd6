// The modes of calculation in one table: texts of the menu and the list, specified values, what a mode needs
// and what it may do.
#pragma once
#include <cstdint>
#include <span>
#include <string_view>

namespace quom {

enum class Mode : std::int16_t {
    none = 0,
    T_rho = 1,
    T_rhoL = 2,
    T_p = 3,
    equilibrium_T = 4,
    equilibrium_p = 5,
    vaporization_T = 6,
    vaporization_p = 7,
    functions = 8,
    tank_global = 9,
    tank_partial = 10,
    virial = 11,
    process = 12,
    p_rho = 13,
    fn_rhoL = 14,
    fn_hLV = 15,
    fn_cpIdG = 16,
    fn_cpL = 17,
    fn_cpS = 18,
    fn_frost_kalkwarf = 19,
    fn_wagner = 20,
    fn_antoine_low = 21,
    fn_antoine_high = 22,
    empty = 23,
    fn_rhoS = 24,
};

// Values that a mode reads.
enum SpecifiedValue : unsigned {
    spec_none = 0,
    spec_T = 1,
    spec_p = 2,
    spec_rhoV = 4,      // column rho(V)
    spec_rhoL = 8,      // column rho(L)
    spec_tank = 16,     // m, V, T of a tank
    spec_process = 32,  // start of the process
};

// What kind of calculation a mode is.
enum class ModeFamily { none, state, equilibrium, vaporization, tank, virial, process, database };

struct ModeInfo {
    Mode mode = Mode::none;
    ModeFamily family = ModeFamily::none;
    std::string_view menu_text{};
    std::string_view list_title{};
    unsigned specified = spec_none;
    bool needs_eos = false;      // the equation of state gives the state: it must be there
    bool solid_allowed = false;  // no word on T below the triple point
    bool has_region = false;     // the region of T, p is told
    bool concept_of_models =
        false;  // GlobalCalc follows the concept of the models, without the selection window
    bool on_console = true;
};
// Row of a mode; that of Mode::none for any other number.
const ModeInfo& mode_info(Mode mode);
std::span<const ModeInfo> mode_list();  // modes 1 to 24
Mode mode_of(int number);               // Mode::none for a number without a mode

}  // namespace quom
