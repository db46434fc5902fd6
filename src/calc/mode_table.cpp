#include "calc/mode_table.h"

#include "calc/calc_run.h"

namespace quom {

namespace {

constexpr std::string_view tank_title = "Phases and Pressure in a Tank";

constexpr std::array<ModeEntry, last_mode> modes = {{
    {1, "T, rho    => p, State L/V     + Functions", " T, rho(V)  => p", spec_T | spec_rhoV, mode_T_rho,
     true},
    {2, "T, rho(L) => p, State L/V     + Functions", " T, rho(L)  => p", spec_T | spec_rhoL, mode_T_rho,
     true},
    {3, "T, p         => rho, State L/V + Functions", " T, p => rho", spec_T | spec_p, mode_T_p, true},
    {4, "L-V Equilibrium: T => p(LV), [rho(L), rho(V)] + Functions", " T => p(LV)", spec_T,
     mode_equilibrium_T},
    {5, "L-V Equilibrium: p => T(LV), [rho(L), rho(V)] + Functions", " p => T(LV)", spec_p,
     mode_equilibrium_p},
    {6, "Heat of vaporization: T => del(LV)h", "T => Enthalpy of Vaporization according to \"Models\"",
     spec_T, mode_vaporization},
    {7, "Heat of vaporization: p => del(LV)h", "p => Enthalpy of Vaporization according to \"Models\"",
     spec_p, mode_vaporization},
    {8, "Thermodynamic Functions: T, p => H, U, S, G, A, Cp, ...", " thermodynamic functions Fu(T)",
     spec_T | spec_p, mode_functions, true},
    {9, "Tank (T, m, v => p, v(L)/v(V)),\"GLOBAL method\" ", tank_title, spec_tank, mode_tank, true},
    {10, "Tank (T, m, v => p, v(L)/v(V)),\"PARTIAL method\" ", tank_title, spec_tank, mode_tank, true},
    {11, "T => 2nd Virial Coefficients B", "Comparison of Virial Coefficients", spec_T, mode_virial},
    {12, "Polytropic process", "Polytropic process", spec_process, mode_process},
    {13, "p, rho     => T, State L/V     + Functions", " p, rho => T", spec_p | spec_rhoV, mode_p_rho, true},
    {14, "L-density", "", spec_T, mode_database},
    {15, "Enthalpy of vaporization", "", spec_T, mode_database},
    {16, "Idealgas heat capacity", "", spec_T, mode_database},
    {17, "L-heat capacity", "", spec_T, mode_database},
    {18, "S-heat capacity", "", spec_T, mode_database},
    {19, "extended Frost-Kalkwarf equation", "", spec_T, mode_database},
    {20, "Wagner equation", "", spec_T, mode_database},
    {21, "Antoine equation (Lo-p)", "", spec_T, mode_database},
    {22, "Antoine equation (Hi-p)", "", spec_T, mode_database},
    {23, "", "", spec_T, mode_database},  // no menu entry, no function
    {24, "S-density", "", spec_T, mode_database},
}};

}  // namespace

const ModeEntry* mode_entry(int mode) {
    return mode >= 1 && mode <= last_mode ? &modes[static_cast<std::size_t>(mode - 1)] : nullptr;
}

}  // namespace quom
