// An answer in the units that the user chose for it.
#pragma once
#include "quantities/unit_table.h"
#include "report/report.h"

namespace quom {

// The report with every value of a chosen quantity in its unit. The quantity of a value follows from its key
// ("h", "h_V", "TLo") and its unit together; what has another unit than the workbench's own stays as it is:
// temperature differences, derivatives, residual functions, and all values that the options --energy and
// --volume have converted. So do sentences, which name their units. A value that has none in the unit, as
// M/0, becomes absent.
Report in_units(Report report, const OutputUnits& units);

}  // namespace quom
