// Why a routine has no result, and what a result has to be read with.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace quom {

// What ended a routine. none: it has a result.
enum class Reason : std::uint8_t {
    none,
    no_equation,       // no equation of state is selected, or its constants are missing
    vapor_only,        // the equation of state knows the V-phase alone
    no_critical_data,  // T(cr) or p(cr) is missing
    T_not_positive,    // T below 1e-6 K or not finite
    p_not_positive,    // p not above 0 or not finite
    rho_not_positive,
    above_critical_T,       // T at or above T(cr): there is no saturation
    above_critical_p,       // p at or above p(cr)
    p_too_low,              // p below 1e-10 kPa: no T(LV) is searched
    no_root_above_b,        // no volume above the covolume
    volume_below_b,         // v at or below b(T)
    volume_below_B,         // v at or below the second virial coefficient
    volume_not_positive,    // R T/p + B is not above 0
    pressure_not_positive,  // the equation of state gives no pressure above 0 at T, v
    unstable,               // (dp/dv)_T is above 0
    roots_not_separate,     // three roots that cannot be told apart
    not_settled,            // an iteration reached its limit
    not_finite,             // a step left the range of numbers
    no_ideal_gas_cp,        // the record has no cp(idG)
    ideal_gas_range,        // cp(idG) cannot be evaluated at T
    no_environment,         // no state of the environment at T(surr), p(surr)
    cp_not_positive,        // cp or cV is not above 0: no speed of sound
    critical_point,         // (dp/dv)_T is 0 within rounding: cp, w and the coefficients grow without limit
    no_vapor_pressure_equation,
    no_vapor_pressure,       // the vapor pressure equation has no value here
    above_wagner_T,          // T at or above T(cr) of the Wagner set
    no_T_of_vapor_pressure,  // the vapor pressure equation has no T(LV) at p
    no_liquid_density,       // neither Benson's method nor rho(L) = Fu(T) gives a density
    no_vapor_density,
    no_reference_point,  // no reference data for the PARTIAL method
    no_hlv_model,
    no_hlv_data,     // the record lacks what the model of delta(LV)h needs
    no_p_available,  // no p(LV) from an equation or a data point
    no_T_available,
    T_above_critical_found,  // T(LV) was found above T(cr)
    no_T_at_p_rho,           // the equation of state has no temperature at p, rho
    no_T_given,
    no_p_given,
    no_rho_given,
    no_tank_given,  // m, V, T of the tank are not all above 0
    no_molar_mass,
    partial_above_critical,  // a PARTIAL tank at or above T(cr)
    no_database_equation,    // the record has no such equation
    no_function,             // the mode has no function
    no_mode,                 // no such calculation mode
    no_solution,             // a search found none
    no_value,                // an equation of the record has no value above 0 at T
    no_phase,                // the phase asked for does not exist there
};

// The sentence for users: "The equation of state has no volume above its covolume b." Ends with a point.
std::string_view reason_text(Reason reason);
// Stable name for programs: "no_root_above_b".
std::string_view reason_name(Reason reason);
// 16-bit flag: 0 for none, else -1.
inline std::int16_t err_of(Reason reason) {
    return reason == Reason::none ? std::int16_t{0} : std::int16_t{-1};
}

// Why there is no result, with the numbers of its sentence.
struct Failure {
    Reason reason = Reason::none;
    double value = 0;  // what was met: T [K], p [kPa], v [m^3/kmol], by the reason
    double limit = 0;  // what it was compared with: T(cr), p(cr), b ...
    explicit operator bool() const { return reason != Reason::none; }
};

// A result that stands, with a reservation.
enum class WarningKind : std::uint8_t {
    below_triple_point,  // T below T(tr): the stable phase may be a solid
    evp_range,           // T more than 10 K (5 K from p) outside the vapor pressure equation
    rhoL_range,          // T more than 5 K outside rho(L) = Fu(T)
    rhoS_range,
    hlv_range,           // T more than 5 K outside delta(LV)h = Fu(T)
    function_range,      // T more than 10 K outside a database function
    beyond_pLV,          // V-phase-only equation above p(LV) of the vapor pressure equation
    below_B,             // V-phase-only equation at v < |B|
    other_phase_by_evp,  // PARTIAL: the vapor pressure equation has the other phase as the stable one
    no_omega,            // calculated with omega = 0
    no_environment,      // exergies are absent: no state of the environment
    no_ideal_gas_cp,     // h, s and what is built on them are absent: no cp(idG)
    critical_point,      // cp, w and the coefficients are absent
    several_solutions,   // a search has more solutions
};
struct Warning {
    WarningKind kind{};
    double value = 0;          // T [K], p [kPa] or v, by the kind
    double low = 0, high = 0;  // limits: T(Lo), T(Hi) [K]; p(LV) [kPa]; B [m^3/kmol]; T(tr)
    std::int16_t offset = 0;   // whole K outside the range, sign as the equation counts it
    bool operator==(const Warning&) const = default;
};
// "T < T(TP) (Triple Point)", "T = 90 K is 12 K outside the validity of the vapor pressure equation (100 ...
// 300 K)".
std::string warning_text(const Warning& warning);
std::string_view warning_name(WarningKind kind);

}  // namespace quom
