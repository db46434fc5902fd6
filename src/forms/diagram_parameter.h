// The parameter of a sheet's curves: T, p or v of its section.
#pragma once
#include <optional>
#include <string_view>

#include "base/messages.h"
#include "session/session.h"

namespace quom {

// What is asked for in a section.
struct SectionParameter {
    Section section;
    std::string_view name, label, reduced_label;
    double DiagramState::*value;  // [K], [kPa], [m^3/kmol]
    double UnitFactors::*factor;  // to the units of the sheet
    std::string_view refusal;     // of a value that is not above 0
};
// None for a sheet of which the curves have no parameter.
const SectionParameter* section_parameter(const Session& session);
double factor_of(const Session& session, const SectionParameter& row);

// b at T(cr) [m^3/kmol]; 0 for an equation of the V-phase only.
double covolume(const Fluid& fluid);
inline constexpr double close_to_b = 1.05;  // v/b up to which the user is warned
// Why no curve has this parameter [K], [kPa], [m^3/kmol].
std::optional<Message> parameter_refusal(const Fluid& fluid, const SectionParameter& row, double value);
std::optional<Message> close_to_b_note(const Fluid& fluid, const SectionParameter& row, double value);

}  // namespace quom
