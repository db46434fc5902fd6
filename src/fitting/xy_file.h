// The file of X-Y data (.XY, .LRG): a comment, then a point a line.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/code_page.h"
#include "fitting/exp_data.h"
#include "fitting/xy_data.h"

namespace quom {

struct XYFile {
    std::string comment;
    std::vector<XYPoint> points;
    char delimiter = 0;         // 0: one column
    bool more_columns = false;  // behind y, dropped
};
struct XYResult {
    std::optional<XYFile> file;
    std::string fault;  // why there is none, with the name of the file
    int line = 0;       // and the line
};

// Reads the bytes of a file. The delimiter is the last of blank, comma, semicolon, tab that the first line
// behind the comment holds; without one there is x alone, and y is 0. Empty lines are none. Numbers with
// decimal point or comma.
XYResult read_xy(std::string_view bytes, std::string_view name);

// The bytes of a file of the active points.
Encoded xy_bytes(const XYData& data, char delimiter);
// The same of T and the column of optFitFunction, with a third column of 0.
Encoded T_y_bytes(const ExperimentalData& data, char delimiter);

}  // namespace quom
