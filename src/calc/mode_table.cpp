#include "calc/mode_table.h"

#include <array>
#include <cstddef>

namespace quom {
namespace {

using enum Mode;
using Family = ModeFamily;

constexpr std::string_view tank_title = "Phases and Pressure in a Tank";

constexpr ModeInfo state_mode(Mode mode, std::string_view menu_text, std::string_view title,
                              unsigned specified) {
    return {.mode = mode,
            .family = Family::state,
            .menu_text = menu_text,
            .list_title = title,
            .specified = specified,
            .needs_eos = true,
            .has_region = true,
            .concept_of_models = true};
}
constexpr ModeInfo equilibrium_mode(Mode mode, Family family, std::string_view menu_text,
                                    std::string_view title, unsigned specified, bool concept_of_models) {
    return {.mode = mode,
            .family = family,
            .menu_text = menu_text,
            .list_title = title,
            .specified = specified,
            .has_region = true,
            .concept_of_models = concept_of_models};
}
constexpr ModeInfo tank_mode(Mode mode, std::string_view menu_text) {
    return {.mode = mode,
            .family = Family::tank,
            .menu_text = menu_text,
            .list_title = tank_title,
            .specified = spec_tank,
            .needs_eos = true,
            .has_region = true};
}
constexpr ModeInfo database_mode(Mode mode, std::string_view menu_text, bool solid_allowed = false) {
    return {.mode = mode,
            .family = Family::database,
            .menu_text = menu_text,
            .specified = spec_T,
            .solid_allowed = solid_allowed};
}

constexpr std::array<ModeInfo, 24> modes = {{
    state_mode(T_rho, "T, rho    => p, State L/V     + Functions", " T, rho(V)  => p", spec_T | spec_rhoV),
    state_mode(T_rhoL, "T, rho(L) => p, State L/V     + Functions", " T, rho(L)  => p", spec_T | spec_rhoL),
    state_mode(T_p, "T, p         => rho, State L/V + Functions", " T, p => rho", spec_T | spec_p),
    equilibrium_mode(equilibrium_T, Family::equilibrium,
                     "L-V Equilibrium: T => p(LV), [rho(L), rho(V)] + Functions", " T => p(LV)", spec_T,
                     false),
    equilibrium_mode(equilibrium_p, Family::equilibrium,
                     "L-V Equilibrium: p => T(LV), [rho(L), rho(V)] + Functions", " p => T(LV)", spec_p,
                     false),
    equilibrium_mode(vaporization_T, Family::vaporization, "Heat of vaporization: T => del(LV)h",
                     "T => Enthalpy of Vaporization according to \"Models\"", spec_T, true),
    equilibrium_mode(vaporization_p, Family::vaporization, "Heat of vaporization: p => del(LV)h",
                     "p => Enthalpy of Vaporization according to \"Models\"", spec_p, true),
    state_mode(functions, "Thermodynamic Functions: T, p => H, U, S, G, A, Cp, ...",
               " thermodynamic functions Fu(T)", spec_T | spec_p),
    tank_mode(tank_global, "Tank (T, m, v => p, v(L)/v(V)),\"GLOBAL method\" "),
    tank_mode(tank_partial, "Tank (T, m, v => p, v(L)/v(V)),\"PARTIAL method\" "),
    {.mode = virial,
     .family = Family::virial,
     .menu_text = "T => 2nd Virial Coefficients B",
     .list_title = "Comparison of Virial Coefficients",
     .specified = spec_T,
     .concept_of_models = true},
    {.mode = process,
     .family = Family::process,
     .menu_text = "Polytropic process",
     .list_title = "Polytropic process",
     .specified = spec_process,
     .on_console = false},
    state_mode(p_rho, "p, rho     => T, State L/V     + Functions", " p, rho => T", spec_p | spec_rhoV),
    database_mode(fn_rhoL, "L-density"),
    database_mode(fn_hLV, "Enthalpy of vaporization"),
    database_mode(fn_cpIdG, "Idealgas heat capacity", true),
    database_mode(fn_cpL, "L-heat capacity"),
    database_mode(fn_cpS, "S-heat capacity", true),
    database_mode(fn_frost_kalkwarf, "extended Frost-Kalkwarf equation"),
    database_mode(fn_wagner, "Wagner equation"),
    database_mode(fn_antoine_low, "Antoine equation (Lo-p)"),
    database_mode(fn_antoine_high, "Antoine equation (Hi-p)"),
    {.mode = empty, .family = Family::database, .specified = spec_T, .on_console = false},
    database_mode(fn_rhoS, "S-density", true),
}};

constexpr ModeInfo no_mode{.on_console = false};

constexpr bool in_order() {
    for (std::size_t i = 0; i < modes.size(); ++i) {
        if (static_cast<std::size_t>(modes[i].mode) != i + 1) return false;
    }
    return true;
}
static_assert(in_order(), "a row stands at the number of its mode");

}  // namespace

const ModeInfo& mode_info(Mode mode) {
    const auto number = static_cast<int>(mode);
    const bool known = number >= 1 && number <= static_cast<int>(modes.size());
    return known ? modes[static_cast<std::size_t>(number - 1)] : no_mode;
}

std::span<const ModeInfo> mode_list() { return modes; }

Mode mode_of(int number) {
    return number >= 1 && number <= static_cast<int>(modes.size()) ? static_cast<Mode>(number) : Mode::none;
}

}  // namespace quom
