#include "session/diagram_session.h"

#include "session/document.h"

namespace quom {

void keep_diagram(DiagramSession& diagram, const Document& before, const Document& after) {
    const bool other_substance = before.DatabaseKind != after.DatabaseKind ||
                                 before.DatabasePath != after.DatabasePath ||
                                 before.substance != after.substance;
    const bool other_units = before.units.EnergyMode != after.units.EnergyMode ||
                             before.units.VolumeMode != after.units.VolumeMode;
    if (other_substance) {
        unload_sheet(diagram);
        diagram.state = {};
    } else if (other_units && after.options.ResetOnClose) {
        unload_sheet(diagram);
    }
    const bool other_equation = before.models != after.models || before.eos_input != after.eos_input;
    if (other_equation) diagram.isochore = {};
}

void unload_sheet(DiagramSession& diagram) {
    diagram.sheet.reset();
    diagram.isochore = {};
    diagram.LastFile.clear();
}

}  // namespace quom
