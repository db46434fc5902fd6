// Measured points of the substance on a sheet.
#pragma once
#include <span>
#include <vector>

#include "diagrams/graph_document.h"
#include "quantities/units.h"

namespace quom {

// One measured point; 0 means "no value".
struct MeasuredPoint {
    double T = 0, p = 0;        // [K], [kPa]
    double rhoV = 0, rhoL = 0;  // [kg/m^3]
    double hLV = 0;             // delta(LV)h [kJ/kmol]
    double cp = 0;              // [kJ/(kmol K)]
};

// A measured point in the coordinates of a kind, displayed units; liquid or vapor: it stands there by the
// density of this phase.
struct SectionPoint {
    double X = 0, Y = 0;
    bool liquid = false, vapor = false;
};
// Those that have both quantities of the kind and, in a section, its parameter, the same to 1e-6. The order
// and the number do not depend on the equation of state.
std::vector<SectionPoint> points_of_section(Kind kind, const LastParameter& parameter, const Fluid& fluid,
                                            const Units& units, std::span<const MeasuredPoint> measured);

// Those of the points that the diagram of the sheet can show: with both of its quantities, in the range in
// force, and in a section with its parameter, T, p or v of the last curve, the same to 1e-6. A point with
// both densities may give two.
std::vector<SheetPoint> points_in_diagram(const GraphDocument& sheet, const Fluid& fluid, const Units& units,
                                          std::span<const MeasuredPoint> measured);

// mnuAddPunkte: puts them onto the sheet as a set of points. Refused for a 13th set, and where none fits.
Added mnuAddPunkte(GraphDocument& sheet, const Fluid& fluid, const Units& units,
                   std::span<const MeasuredPoint> measured);

}  // namespace quom
