// A curve of a diagram: its points, and what a calculation of one is asked and answers.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "diagrams/diagram_kinds.h"
#include "diagrams/process_record.h"
#include "engine/fluid.h"
#include "quantities/units.h"

namespace quom {

// X, Y in displayed units; Par and Tag what the mouse shows at the point: T [K], p [kPa], v [m^3/kmol] or a
// vapor fraction, as ParKind of the curve tells.
struct CurvePoint {
    float X = 0, Y = 0, Par = 0, Tag = 0;
    bool operator==(const CurvePoint&) const = default;
};

struct CurvePoints {
    std::vector<CurvePoint> points;
    std::int16_t Par = par_none, Tag = par_none;  // ParKind of Par and Tag
    bool operator==(const CurvePoints&) const = default;
};

// Rising in X or in Y; points of equal value keep their order.
void SortPointsX(std::vector<CurvePoint>& points);
void SortPointsY(std::vector<CurvePoint>& points);

// Range of the axes in displayed units.
struct CurveRange {
    float XMin = 0, YMin = 0, XMax = 0, YMax = 0;
    bool operator==(const CurveRange&) const = default;
};

struct CurveOptions {
    int Dens = 500;                     // points over the span of an axis
    bool chkCurveTpRestricted = true;   // no point below the triple temperature
    bool chkSKurveOhneKonnode = false;  // the p-v isotherm with its loop
    bool chkPartialKurve = false;       // an equation of the V-phase only draws up to saturation
    bool operator==(const CurveOptions&) const = default;
};

// The state at which the last isochore met the phase boundary; T 0: none. Its tie line lies there.
struct IsochoreEnd {
    double T = 0, p = 0;  // [K], [kPa]
    double v = 0;         // of the isochore [m^3/kmol]
    bool operator==(const IsochoreEnd&) const = default;
};

struct CurveInput {
    Kind kind = Kind::none;  // of the diagram
    Kind line = Kind::none;  // kind of a process line in it; none: a curve of the diagram's own kind
    CurveRange range;
    double T = 0, p = 0, v = 0;  // parameter of the section [K], [kPa], [m^3/kmol]
    double VaporFraction = 0;    // of curves along the phase equilibrium: 0 L, 1 V
    bool SCurve = false;         // the metastable and unstable loop in place of the stable curve
    bool TieLine = false;        // the tie line in place of the curve
    bool LogX = false;           // for a logarithmic axis: points at equal ratios of x too
    CurveOptions options;
    Units units;
    BensonReference benson;  // of delta(LV)h by Benson's method
    // Of a process line; limits From, To of diagrams of function pairs. Of the boundaries of function pairs
    // they are pressures [kPa]; both 0, or ScanT set: the whole boundary.
    ProcessRec process;
    IsochoreEnd isochore;  // where the last isochore ended
};

enum class CurveStatus : std::int16_t {
    done = 0,
    failed = -1,              // Msg tells why; the curve is dropped
    no_result = -2,           // an isentrope or isenthalpe with one point at most; the curve is dropped
    below_triple = 2,         // some points lie below the triple temperature
    no_critical_density = 3,  // the curve is dropped
    no_tie_line = 4,
    line_aborted = 5,  // a process line stopped on its way; the points so far are kept
    outside = 10,      // no point in the range
};

struct CurveResult {
    CurvePoints curve;
    std::string Msg;      // a note for the label, or why it failed
    bool Outside = true;  // no point lies inside the range
    CurveStatus Status = CurveStatus::done;
    IsochoreEnd isochore;                       // as it came in, or where this isochore met the boundary
    double LastProcessT = 0, LastProcessP = 0;  // end of a process line [K], [kPa]; 0 without one
    float DBTMin = 0, DBTMax = 0;               // validity of a database function [K]; 0 without one
};

}  // namespace quom
