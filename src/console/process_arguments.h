// Arguments of a process line in a diagram.
#pragma once
#include <optional>
#include <string>

#include "console/curve_output.h"
#include "console/selection.h"

namespace quom {

struct ProcessArguments {
    std::string process;                       // --process; empty: none
    std::optional<double> T1, p1, T2, p2;      // start and end [K], [kPa]
    std::optional<GivenValue> x1, y1, x2, y2;  // ends of a straight line, in the units of the axes
    std::string phase = "V";
    bool two_phase = false, ideal = false;
};
void add_process_options(CLI::App& app, ProcessArguments& arguments);

// Arguments that are missing or too many for the line.
Refused check_process_arguments(const ProcessArguments& a);

// The record of the line; columns: the axes of the diagram.
Refused take_process(const ProcessArguments& a, const CurveColumns& columns, double M, ProcessRec& into);

}  // namespace quom
