// Which columns a sweep writes, under which names and in which units.
#pragma once
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "quantities/unit_table.h"
#include "report/sweep_columns.h"

namespace quom {

struct SweepPlan {
    struct Column {
        SweepColumn source;
        std::string head, unit_name;         // "h(V)/(kJ/kmol)": name and unit, "kJ/kmol"
        std::optional<UnitConversion> unit;  // to the unit that was asked for; none: the displayed factor
    };
    std::vector<Column> columns;
    bool functions = false;  // a column needs h .. w
    std::string fault;       // a name that is no column of the mode
    std::vector<std::string> heads() const;
};

// The columns of a mode; with `results` ("h_V,rho_V,phase") only those, in that order, and the reason behind
// them. A column is called as its head without the unit, or with "_V" in place of "(V)". Units: by `own`
// where a quantity is named there, else those in force.
SweepPlan make_sweep_plan(Mode mode, bool functions, const Units& units, const OutputUnits& own,
                          std::string_view results);

}  // namespace quom
