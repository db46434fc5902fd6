// The file of a data set (.BAQ): lines of date, comment, CAS number and name, the number of points, and the
// values of the points, one a line, in the order T, p, rho(L), rho(V), delta(LV)h, cp.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/code_page.h"
#include "fitting/exp_data.h"

namespace quom {

struct BaqFile {
    std::string date, comment, CAS, name;
    std::vector<TpRhoPoint> points;  // [0] stays free for the direct input
    int values_per_point = 6;        // 5 in older files, which have no cp
    std::string note;                // values that are missing or left over, in a sentence; empty: none
};
struct BaqResult {
    std::optional<BaqFile> file;
    std::string fault;  // why there is none, with the name of the file
    int line = 0;       // and the line
};

// Reads the bytes of a file. Lines may end with CR LF or LF; values may have commas between them; blank lines
// among them are none. How many values a point has follows from the number of values and of points; missing
// values are 0. A count that the file cannot hold is refused, and nothing is allocated for it.
BaqResult read_baq(std::string_view bytes, std::string_view name);

// The bytes of a file of all measured points, active or not.
Encoded baq_bytes(const ExperimentalData& data);

}  // namespace quom
