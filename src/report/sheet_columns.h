// The data of a sheet as columns for other programs: one block of columns for each curve, set of points and
// mark, with what its numbers rest on.
#pragma once
#include <string>
#include <string_view>

#include "diagrams/graph_document.h"
#include "quantities/units.h"
#include "report/table_export.h"

namespace quom {

// Curves C.1 to C.24, sets of points P.1 to P.12, then marks M.26 to M.34, as far as there are any. Each has
// a column for the axis that is shown as x and one for y; with interchanged axes they change places, the
// heads name what they are. Curves have their hidden values behind them (T, p, v, vapor fraction), blank
// where a point has none. Shorter columns end in blank cells; numbers have the 7 digits that a point has.
//
// The lines above the table tell the diagram, substance, models and reference state, and what each block is.
// units: those of the sheet. file: the diagram file that the sheet was loaded from, which tells nothing of
// its substance and models; empty without.
ExportTable sheet_columns(const GraphDocument& sheet, const Fluid& fluid, const Units& units,
                          std::string_view file = {});

// The same as text: lines of the head begin with "# ", then the names of the columns, their units and the
// rows as to_csv writes them. Lines end with CR LF.
std::string sheet_csv(ExportTable columns, char delimiter = ';', char decimal = '.');

}  // namespace quom
