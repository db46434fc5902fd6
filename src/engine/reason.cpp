#include "engine/reason.h"

#include <cmath>
#include <cstdlib>
#include <iterator>

#include "base/number_text.h"

namespace quom {
namespace {

struct ReasonRow {
    Reason reason;
    std::string_view name, text;
};

// In the order of the enumeration.
constexpr ReasonRow ReasonRows[] = {
    {Reason::none, "none", ""},
    {Reason::no_equation, "no_equation", "No equation of state is selected, or its constants are missing."},
    {Reason::vapor_only, "vapor_only", "The equation of state knows the V-phase alone."},
    {Reason::no_critical_data, "no_critical_data", "T(cr) or p(cr) of the substance is missing."},
    {Reason::T_not_positive, "T_not_positive", "T has to be above 0 K."},
    {Reason::p_not_positive, "p_not_positive", "p has to be above 0 kPa."},
    {Reason::rho_not_positive, "rho_not_positive", "rho has to be above 0 kg/m^3."},
    {Reason::above_critical_T, "above_critical_T", "T is not below T(cr): there is no saturation."},
    {Reason::above_critical_p, "above_critical_p", "p is not below p(cr): there is no saturation."},
    {Reason::p_too_low, "p_too_low", "p is below 1E-10 kPa: no T(LV) is searched there."},
    {Reason::no_root_above_b, "no_root_above_b", "The equation of state has no volume above its covolume b."},
    {Reason::volume_below_b, "volume_below_b", "v is not above the covolume b of the equation of state."},
    {Reason::volume_below_B, "volume_below_B", "v is not above the second virial coefficient."},
    {Reason::volume_not_positive, "volume_not_positive",
     "The equation of state gives no volume above 0: its second virial coefficient is beyond -R T/p."},
    {Reason::pressure_not_positive, "pressure_not_positive",
     "The equation of state gives no pressure above 0 at this T and rho."},
    {Reason::unstable, "unstable", "The state is unstable: its pressure rises with the volume."},
    {Reason::roots_not_separate, "roots_not_separate",
     "The three volumes of the equation of state cannot be told apart."},
    {Reason::not_settled, "not_settled", "The iteration did not settle."},
    {Reason::not_finite, "not_finite", "A step of the calculation left the range of numbers."},
    {Reason::no_ideal_gas_cp, "no_ideal_gas_cp", "The substance has no equation for cp(idG)."},
    {Reason::ideal_gas_range, "ideal_gas_range", "cp(idG) cannot be evaluated at this T."},
    {Reason::no_environment, "no_environment",
     "The models have no state of the environment at T(surr), p(surr)."},
    {Reason::cp_not_positive, "cp_not_positive", "cp or cV is not above 0: there is no speed of sound."},
    {Reason::critical_point, "critical_point",
     "cp, w and the coefficients grow without limit here: (dp/dV) at T is 0."},
    {Reason::no_vapor_pressure_equation, "no_vapor_pressure_equation",
     "The substance has no constants of the vapor pressure equation."},
    {Reason::no_vapor_pressure, "no_vapor_pressure", "The vapor pressure equation has no value here."},
    {Reason::above_wagner_T, "above_wagner_T", "T is not below the T(cr) of the Wagner equation."},
    {Reason::no_T_of_vapor_pressure, "no_T_of_vapor_pressure",
     "The vapor pressure equation has no T(LV) at this p."},
    {Reason::no_liquid_density, "no_liquid_density",
     "Neither Benson's method nor rho(L) = Fu(T) gives a density of the L-phase."},
    {Reason::no_vapor_density, "no_vapor_density", "The equation of state gives no density of the V-phase."},
    {Reason::no_reference_point, "no_reference_point",
     "The reference point of the PARTIAL method is not known."},
    {Reason::no_hlv_model, "no_hlv_model", "No model of delta(LV)h is selected."},
    {Reason::no_hlv_data, "no_hlv_data", "The substance lacks what the model of delta(LV)h needs."},
    {Reason::no_p_available, "no_p_available", "No p(LV) is available."},
    {Reason::no_T_available, "no_T_available", "No T(LV) is available."},
    {Reason::T_above_critical_found, "T_above_critical_found", "T(LV) was found above T(cr)."},
    {Reason::no_T_at_p_rho, "no_T_at_p_rho", "The equation of state has no temperature at this p and rho."},
    {Reason::no_T_given, "no_T_given", "No T is given."},
    {Reason::no_p_given, "no_p_given", "No p is given."},
    {Reason::no_rho_given, "no_rho_given", "No rho is given."},
    {Reason::no_tank_given, "no_tank_given", "m, V and T of the tank have to be above 0."},
    {Reason::no_molar_mass, "no_molar_mass", "The molar mass of the substance is missing."},
    {Reason::partial_above_critical, "partial_above_critical",
     "The PARTIAL method has no tank at or above T(cr)."},
    {Reason::no_database_equation, "no_database_equation", "The substance has no such equation."},
    {Reason::no_function, "no_function", "There is no function for this calculation."},
    {Reason::no_mode, "no_mode", "There is no such calculation."},
    {Reason::no_solution, "no_solution", "No solution was found."},
    {Reason::no_value, "no_value", "The equation has no value above 0 at this T."},
    {Reason::no_phase, "no_phase", "The phase asked for does not exist here."},
};
static_assert(std::size(ReasonRows) == static_cast<std::size_t>(Reason::no_phase) + 1);
constexpr bool in_order() {
    for (std::size_t i = 0; i < std::size(ReasonRows); ++i) {
        if (static_cast<std::size_t>(ReasonRows[i].reason) != i) return false;
    }
    return true;
}
static_assert(in_order());

const ReasonRow& row_of(Reason reason) {
    const auto index = static_cast<std::size_t>(reason);
    return ReasonRows[index < std::size(ReasonRows) ? index : 0];
}

struct WarningRow {
    WarningKind kind;
    std::string_view name;
    std::string_view equation;  // of a range: "T = .. K is .. K outside the validity of " this
    std::string_view text;      // whole sentence of a kind without numbers
};

// In the order of the enumeration.
constexpr WarningRow WarningRows[] = {
    {WarningKind::below_triple_point, "below_triple_point", "", "T < T(TP) (Triple Point)"},
    {WarningKind::evp_range, "evp_range", "the vapor pressure equation", ""},
    {WarningKind::rhoL_range, "rhoL_range", "rho(L) = Fu(T)", ""},
    {WarningKind::rhoS_range, "rhoS_range", "rho(S) = Fu(T)", ""},
    {WarningKind::hlv_range, "hlv_range", "delta(LV)h = Fu(T)", ""},
    {WarningKind::function_range, "function_range", "the database equation", ""},
    {WarningKind::beyond_pLV, "beyond_pLV", "", ""},
    {WarningKind::below_B, "below_B", "", ""},
    {WarningKind::other_phase_by_evp, "other_phase_by_evp", "",
     "by the vapor pressure equation the other phase is the stable one"},
    {WarningKind::no_omega, "no_omega", "", "no acentric factor available, calculated using omega = 0"},
    {WarningKind::no_environment, "no_environment", "",
     "no exergies: the models have no state of the environment at T(surr), p(surr)"},
    {WarningKind::no_ideal_gas_cp, "no_ideal_gas_cp", "",
     "no absolute functions: the substance has no equation for cp(idG)"},
    {WarningKind::critical_point, "critical_point", "",
     "cp, w and the coefficients grow without limit here: (dp/dV) at T is 0"},
    {WarningKind::several_solutions, "several_solutions", "", "the search has more solutions"},
};
static_assert(std::size(WarningRows) == static_cast<std::size_t>(WarningKind::several_solutions) + 1);

const WarningRow& row_of(WarningKind kind) {
    const auto index = static_cast<std::size_t>(kind);
    return WarningRows[index < std::size(WarningRows) ? index : 0];
}

// "90" or "90.25": no more than the digits that are there.
std::string number(double x) { return genNum(x, 7); }

}  // namespace

std::string_view reason_text(Reason reason) { return row_of(reason).text; }
std::string_view reason_name(Reason reason) { return row_of(reason).name; }
std::string_view warning_name(WarningKind kind) { return row_of(kind).name; }

std::string warning_text(const Warning& warning) {
    const WarningRow& row = row_of(warning.kind);
    if (!row.equation.empty()) {
        return "T = " + number(warning.value) + " K is " + genNum(std::abs(int{warning.offset})) +
               " K outside the validity of " + std::string(row.equation) + " (" + number(warning.low) +
               " ... " + number(warning.high) + " K)";
    }
    const double limit = warning.low != 0.0 ? warning.low : warning.high;
    if (warning.kind == WarningKind::beyond_pLV) {
        return "p = " + number(warning.value) + " kPa is beyond p(LV) = " + number(limit) +
               " kPa of the vapor pressure equation: the equation of state describes the V-phase alone";
    }
    if (warning.kind == WarningKind::below_B) {
        return "v = " + number(warning.value) + " m^3/kmol is below |B| = " + number(std::fabs(limit)) +
               " m^3/kmol: the virial equation is not valid there";
    }
    return std::string(row.text);
}

}  // namespace quom
