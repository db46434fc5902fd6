// Which column of a table is which quantity, in which unit: recognised from the head, the units and the
// values, and corrected by the user.
#pragma once
#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "forms/import_head.h"
#include "quantities/unit_table.h"

namespace quom {

enum class ImportTarget { data_points, xy };

// What the user decided of a column; the rest is proposed.
struct ColumnChoice {
    std::optional<ImportQuantity> quantity{};
    std::optional<std::string> unit{};
};
using ColumnChoices = std::map<std::size_t, ColumnChoice>;  // by index

// A column of a table before anybody says what it is.
struct ColumnSample {
    std::vector<std::string> head;  // its cells, from the top
    std::size_t numbers = 0;        // cells of the first rows that hold a number
    bool below_zero = false;        // ... one of them not above 0
    std::string unit{};             // behind the first number
};

struct ImportColumn {
    std::string title;  // its head as it stands
    ImportQuantity quantity = ImportQuantity::skip;
    std::string unit{};    // as the table of units calls it
    std::string reason{};  // why it is taken as that
    std::string fault{};   // why it cannot be
    UnitConversion conversion{};
    bool unit_is_guess = false;  // no unit is given anywhere
};

struct ImportColumns {
    std::vector<ImportColumn> columns;
    std::vector<std::string> warnings;
    std::string fault;  // nothing can be taken
};

// M [kg/kmol]: for units of mass; 0: not known.
ImportColumns import_columns(const std::vector<ColumnSample>& samples, ImportTarget target, double M,
                             const ColumnChoices& choices);

}  // namespace quom
