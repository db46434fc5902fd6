// Change of state that a process line shows.
#pragma once
#include <cstdint>

#include "engine/thermo_functions.h"

namespace quom {

enum class ProcessKind : std::int16_t {
    straight = 0,
    isotherm = 1,
    isobar = 2,
    isochore = 3,
    isentrope = 4,
    isenthalpe = 5,
    polytropic = 6,
    section = 7,         // line of the diagram in force
    vapor_fraction = 8,  // line of constant vapor fraction
};

// check_process completes From and To from the points. An isotherm is that of T1, an isobar that of p1;
// without them it is that of the section.
struct ProcessRec {
    ProcessKind kind = ProcessKind::straight;
    bool ScanT = false;           // the line runs over T, else over p
    double From = 0, To = 0;      // limits of the running quantity: T [K] or p [kPa]
    double T1 = 0, p1 = 0;        // start point [K], [kPa]; of a straight line x1, y1 as displayed
    double T2 = 0, p2 = 0;        // end point; of a straight line x2, y2
    Phase phase = phase_V;        // of a homogeneous line
    bool Homogen = true;          // false: between the saturated states
    bool EndToBegin = false;      // the start is the end of the line before
    bool UseIdealEOS = false;     // ideal gas in place of the equation of state in force
    double nPoly = 0, kappa = 0;  // polytropic exponent, cp/cV
    double VaporFraction = 0;     // of a line of constant vapor fraction
    bool operator==(const ProcessRec&) const = default;
};

}  // namespace quom
