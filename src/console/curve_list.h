// The curves of a sheet as they are typed: "T=300,320,340", "T=300:400:20;T/K=450", "p=5bar,1MPa".
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "quantities/unit_table.h"

namespace quom {

struct CurveValue {
    std::string symbol;  // "T"
    GivenValue value;
};
struct CurveList {
    std::vector<CurveValue> values;
    std::string fault;  // what is wrong, in a sentence; no values then
};
// Groups are separated by ';', values of a group by ','. FROM:TO:STEP stands for its values, TO included
// where a step meets it. A unit behind the symbol ("T/degC=") is that of the values without one of their own;
// the numbers of FROM:TO:STEP are in one unit. More values than a sheet has curves are refused.
CurveList read_curve_list(std::string_view text);

}  // namespace quom
