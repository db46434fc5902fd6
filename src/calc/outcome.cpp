#include "calc/outcome.h"

#include "base/number_text.h"
#include "engine/iso_search.h"

namespace quom {
namespace {

std::string number(double x) { return genNum(x, 7); }
std::string kelvin(double T) { return number(T) + " K"; }
std::string kilopascal(double p) { return number(p) + " kPa"; }
std::string volume(double v) { return number(v) + " m^3/kmol"; }

std::string at_T_p(const Failure& f) { return " at " + kelvin(f.value) + " and " + kilopascal(f.limit); }

std::string not_below(const std::string& value, std::string_view name, const std::string& limit,
                      double known) {
    if (!(known > 0.0)) return std::string(name) + " of the substance is not known.";
    return value + " is not below " + std::string(name) + " = " + limit + ": there is no saturation.";
}

// The sentence with the numbers of the failure; empty for a reason whose own sentence says all.
std::string sentence_with_numbers(const Failure& f) {
    switch (f.reason) {
        case Reason::above_critical_T:
            return not_below(kelvin(f.value), "T(cr)", kelvin(f.limit), f.limit);
        case Reason::above_critical_p:
            return not_below(kilopascal(f.value), "p(cr)", kilopascal(f.limit), f.limit);
        case Reason::partial_above_critical:
            return "The PARTIAL method is for phase equilibria alone: " + kelvin(f.value) +
                   " is not below T(cr) = " + kelvin(f.limit) + ".";
        case Reason::no_root_above_b:
            return "The equation of state has no volume above its covolume b" + at_T_p(f) + ".";
        case Reason::volume_not_positive:
            return "The equation of state has no volume" + at_T_p(f) + ": R T/p + B is not above 0.";
        case Reason::roots_not_separate:
            return "The three volumes of the equation of state cannot be told apart" + at_T_p(f) + ".";
        case Reason::volume_below_b:
            return "v = " + volume(f.value) + " is not above the covolume b = " + volume(f.limit) +
                   " of the equation of state.";
        case Reason::volume_below_B:
            return "v = " + volume(f.value) +
                   " is not above the second virial coefficient B = " + volume(f.limit) + ".";
        case Reason::pressure_not_positive:
            return "The equation of state gives p = " + kilopascal(f.value) +
                   " there; a state needs p above 0.";
        case Reason::unstable:
            return "At v = " + volume(f.value) +
                   " the equation of state is unstable: (dp/dv) at T is above 0.";
        case Reason::no_T_at_p_rho:
            return "The equation of state has no temperature at " + kilopascal(f.value) + " and " +
                   number(f.limit) + " kg/m^3.";
        default:
            return {};
    }
}

}  // namespace

std::string_view phase_text(PhaseWord phase) {
    switch (phase) {
        case PhaseWord::L:
            return "L";
        case PhaseWord::V:
            return "V";
        case PhaseWord::VL:
            return "V+L";
        case PhaseWord::none:
            break;
    }
    return {};
}

std::string failure_text(const Failure& failure) {
    std::string text = sentence_with_numbers(failure);
    return text.empty() ? std::string(reason_text(failure.reason)) : text;
}

std::optional<double> function_of(const PhaseOutcome& phase, int Column) {
    switch (Column) {
        case iso_v:
            return phase.v;
        case iso_h:
            return phase.h;
        case iso_s:
            return phase.s;
        case iso_g:
            return phase.g;
        case iso_u:
            return phase.u;
        case iso_a:
            return phase.a;
        case iso_eH:
            return phase.eH;
        case iso_eU:
            return phase.eU;
        default:
            return std::nullopt;
    }
}

}  // namespace quom
