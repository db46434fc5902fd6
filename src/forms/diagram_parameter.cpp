#include "forms/diagram_parameter.h"

#include <algorithm>
#include <array>

#include "engine/eos_parameters.h"
#include "engine/unit_factors.h"
#include "forms/refusal.h"

namespace quom {
namespace {

constexpr auto section_parameters = std::to_array<SectionParameter>({
    {Section::isothermal, "T", "T/K = ", "T(red) = ", &DiagramState::T, &UnitFactors::TFactor,
     " The default temperature must be greater than zero! "},
    {Section::isobaric, "p", "p/kPa = ", "p(red) = ", &DiagramState::p, &UnitFactors::pFactor,
     " The default pressure must be greater than zero! "},
    {Section::isochoric, "v", "V/", "v(red.) = ", &DiagramState::v, &UnitFactors::vFactor,
     "Input v <= b not possible!"},
});

}  // namespace

const SectionParameter* section_parameter(const Session& session) {
    const DiagramSession& d = session.diagram;
    if (!d.sheet || d.sheet->diagram.kind == Kind::none) return nullptr;
    const auto* row =
        std::ranges::find(section_parameters, d.sheet->diagram.section, &SectionParameter::section);
    return row == section_parameters.end() ? nullptr : row;
}

double factor_of(const Session& session, const SectionParameter& row) {
    return unit_factors(*session.fluid, session.diagram.units).*row.factor;
}

double covolume(const Fluid& fluid) { return fluid.VPhaseOnly ? 0.0 : EOSParT(fluid, fluid.substance.Tcr).b; }

std::optional<Message> parameter_refusal(const Fluid& fluid, const SectionParameter& row, double value) {
    if (row.section == Section::isochoric) {
        if (value > covolume(fluid)) return std::nullopt;
        return Message{.title = "WARNING", .text = std::string(row.refusal), .kind = MessageKind::warning};
    }
    if (value > 0.0) return std::nullopt;
    return refusal_message(std::string(row.refusal));
}

std::optional<Message> close_to_b_note(const Fluid& fluid, const SectionParameter& row, double value) {
    if (row.section != Section::isochoric || fluid.VPhaseOnly) return std::nullopt;
    if (value > close_to_b * covolume(fluid)) return std::nullopt;
    return Message{.title = "WARNING",
                   .text = "v close to b\npossibly there are problems during calculation",
                   .kind = MessageKind::warning};
}

}  // namespace quom
