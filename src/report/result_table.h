// The result of a calculation as a table: quantities by phases in sections, in units chosen row by row.
#pragma once
#include <array>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calc/outcome.h"
#include "quantities/unit_table.h"
#include "report/table_export.h"

namespace quom {

// Columns of values. What belongs to no phase stands in the column of the state.
enum ResultColumn : std::size_t { column_L = 0, column_V = 1, column_both = 2 };
inline constexpr std::size_t result_columns = 3;

struct ResultRow {
    std::string key;                      // "h"; unique in the table
    std::string quantity, symbol;         // "enthalpy", "h"
    std::optional<Quantity> dimension{};  // whose units the row may have; none: `unit` alone
    std::string unit{};                   // of the values; "" of a pure number
    std::array<std::optional<double>, result_columns> values{};
};

struct ResultSection {
    std::string key, title;
    bool folded_at_first = false;
    std::vector<ResultRow> rows;
};

struct ResultValues {
    std::string title, substance, models, reference;  // what the numbers rest on
    double M = 0;                                     // [kg/kmol]
    double T = 0;                                     // [K]; 0: not known
    std::size_t state_column = column_V;
    std::array<std::string, result_columns> heads;  // "" for a column that is not there
    std::vector<ResultSection> sections;
};

// The values of an outcome; setup: that of its calculation. All sections are there, however it was
// calculated; without a result all values are absent.
ResultValues make_result_values(const Fluid& fluid, const Outcome& outcome, const CalcSetup& setup);

// A unit of a row: its name, the same for every row of the dimension; its text in this row ("h/R in K").
struct UnitChoice {
    std::string name, text;
    UnitConversion conversion{};
};
// The units that a row may have, its own first. Those that need a molar mass or T are left out without.
std::vector<UnitChoice> unit_choices(const ResultValues& values, const ResultRow& row);

// Names of units by the keys of rows; rows that are not named have the unit of the options.
using ChosenUnits = std::map<std::string, std::string>;
// The unit of a row; its own where the chosen one is not possible.
UnitChoice unit_of(const ResultValues& values, const ResultRow& row, const ChosenUnits& chosen,
                   const Units& options);

// Keys of the rows that can have the units of this one, itself among them; and their symbols for people:
// "h, u, g, a, e", without those that are variants of one before.
std::vector<std::string> rows_alike(const ResultValues& values, const ResultRow& row);
std::string symbols_alike(const ResultValues& values, const ResultRow& row);

// A value in a unit with this many digits; "" for an absent one.
std::string cell_text(const std::optional<double>& value, const UnitConversion& unit, int digits);

// The whole table: title, substance, models, reference state, heads, every section and row.
ExportTable result_table_export(const ResultValues& values, const ChosenUnits& chosen, const Units& options,
                                int digits);
// The same with columns parted by tabs. Every line ends with '\n'.
std::string result_table_text(const ResultValues& values, const ChosenUnits& chosen, const Units& options,
                              int digits);

}  // namespace quom
