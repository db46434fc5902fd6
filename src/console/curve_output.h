// A curve as the console writes it: a table with a head in comments, or the sections of the JSON object.
#pragma once
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "diagrams/curve_generator.h"
#include "diagrams/diagram_setup.h"
#include "quantities/unit_table.h"
#include "report/report.h"
#include "session/session.h"

namespace quom {

// An axis or a hidden value of a curve: what it shows and in which unit.
struct CurveColumn {
    std::string name;                 // of the axis: "x", "y", "par", "tag"
    std::string symbol{};             // "v", "h", "eta(V)"; empty: the curve has no such value
    std::string text{};               // of the axis in the diagram: "v / (m^3/kmol)"
    std::string unit{};               // empty for a pure number
    std::string head{};               // of the column: "v/(m^3/kmol)", "T/T(cr)"
    UnitConversion conversion{};      // from what the curve holds
    std::optional<double> to_axis{};  // from the workbench's own unit to what the curve holds; none: no units
    std::optional<Quantity> quantity{};
};
using CurveColumns = std::array<CurveColumn, 4>;  // x, y, par, tag

// The kind is a curve along the phase equilibrium that a vapor fraction places between L and V.
bool has_vapor_fraction(const KindInfo& kind);

// The columns of a kind; par and tag as the header of its curve tells them.
CurveColumns curve_columns(Kind kind, const CurvePoints& curve, const Fluid& fluid, const Units& units,
                           const OutputUnits& output, double T);

// A limit of an axis in what the curve holds: a number in the unit of the column, or in its own.
OwnValue axis_limit(const GivenValue& given, const CurveColumn& column, double M);

// What was calculated, for the head.
struct CurveFacts {
    const Session& session;
    const CurveInput& input;
    CurveResult result;
    const DiagramRec& rec;
    std::string process;             // name of the process line; empty: a curve of the diagram itself
    std::vector<std::string> notes;  // what the user is told of it
};

// The table: lines of the head begin with "# ", then the names of the columns and one line a point,
// delimited by ";".
std::string curve_table(const CurveFacts& facts, const CurveColumns& columns);
// "curve", "header", "axes", "ranges", "points".
void add_curve_sections(Report& report, const CurveFacts& facts, const CurveColumns& columns);

}  // namespace quom
