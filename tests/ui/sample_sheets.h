// Sheets as users make them, for pictures that are looked at and for tests of the drawing routine.
#pragma once
#include <string>
#include <vector>

#include "diagrams/graph_document.h"

namespace quom::test {

struct SampleSheet {
    std::string name;  // of its picture
    GraphDocument sheet;
};

// Families with domes, tie lines and marks, every sort of axis, presets, full sheets, designed ones.
std::vector<SampleSheet> sample_sheets();

// 24 curves of 1200 points each, smooth and inside the axes, and 12 sets of 40 points.
GraphDocument full_sheet();

// Ten isotherms on logarithmic axes, with dome, points, labels and legend, black.
GraphDocument black_log_sheet();

}  // namespace quom::test
