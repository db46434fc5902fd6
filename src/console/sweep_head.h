// The head of a table for a sweep: which column holds which value, in which unit, and what is passed through.
#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "calc/mode_table.h"
#include "console/table_input.h"
#include "quantities/unit_table.h"

namespace CLI {
class App;
}

namespace quom {

// Values that a row gives.
enum SweepField : int { field_T, field_p, field_rho, field_m, field_V, field_count };
// Those that a mode needs: T and p; m, V and T of a tank.
std::vector<SweepField> needed_fields(Mode mode);
std::string_view field_name(SweepField field);  // "T", "rho"
Quantity field_quantity(SweepField field);

// A value by its name and unit: "T/C", "rho (g/cm^3)", "v".
struct ColumnMatch {
    int field = -1;       // SweepField; -1: no name of a value, or its unit is not known
    UnitConversion unit;  // to the workbench's own
    std::string fault;    // why the unit is not known
};
ColumnMatch match_column(std::string_view name, double M);

// How a table that comes in is read.
struct TableOptions {
    char decimal = '.';  // --decimal: '.' or ','
    std::string
        columns;       // --columns "T/C,p/bar": the head of a table without one; empty: its first line is it
    std::string keep;  // --keep all|NAMES: columns passed through, before the results; empty: none
    bool line_numbers = false;  // --line-numbers: first column of the output "line"
};
void add_table_options(CLI::App& app, TableOptions& options);

struct SweepHead {
    struct Column {
        int field = -1;       // SweepField; -1: not read
        UnitConversion unit;  // from the table to the workbench's own unit
        bool kept = false;
        std::string name;  // as in the table, without quotes
    };
    char delimiter = ';';  // ";", tab or ","; of the output too
    std::vector<Column> columns;
    bool from_first_line = true;  // false with --columns
    std::string fault;            // why the head cannot be used; empty when good
};
// Reads the head for a mode. The delimiter is the first of ";", tab and "," that stands outside of quotes
// (with decimal commas ";" or tab). With options.columns these are the head, and the line, the first of the
// rows, only shows the delimiter. M [kg/kmol] is for units per amount.
//
// A unit behind a name is converted: "T/C", "p [bar]", "rho (g/cm^3)", "p in MPa", "rho/(kg/m^3)"; a column
// whose unit is not known is not read, and where no other gives the value the fault says so. For rho may also
// stand rho(V), rho(L), or v, v(V), v(L) with a volume (without a unit m^3/kmol); rho goes first, then the
// phase of the mode, then volumes, then the other phase.
SweepHead read_sweep_head(std::string_view line, Mode mode, double M, const TableOptions& options);
// The same off a table: takes its first line, or with options.columns only looks at it.
SweepHead read_sweep_head(TableInput& input, Mode mode, double M, const TableOptions& options);

// Names of the kept columns for the head of the output, quoted and delimited as the rows are, without a
// trailing delimiter; empty without kept columns. A name that a result (or another kept column) has as well,
// units aside, gets " (in)" behind it: "T/C (in)".
std::string kept_names(const SweepHead& head, std::span<const std::string> result_names);

}  // namespace quom
