// Every combination of values in place of a table.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "console/sweep_head.h"

namespace quom {

struct SweepRows;

// "T=250:550:301 p=100:8000:80,log": from 250 to 550 in 301 values, both ends exact; "T/C=20" is one value.
// The last variable runs fastest.
struct SweepGrid {
    struct Axis {
        SweepField field = field_T;
        double low = 0, high = 0;  // in the unit of the axis; high may be the smaller
        std::size_t count = 0;
        bool log = false;  // equal ratios in place of equal differences
        UnitConversion unit;
        double value(std::size_t i) const;  // in the workbench's own unit, i from 0
    };
    std::vector<Axis> axes;
    std::string fault;  // why the text is no grid for the mode; empty when good
    std::uint64_t rows() const;
};
SweepGrid parse_grid(std::string_view text, Mode mode, double M);
// Appends `count` rows (fewer where the grid ends), the first of them number `first`, from 1. SweepRows::line
// is the number of the row in the grid.
void grid_rows(const SweepGrid& grid, std::uint64_t first, std::size_t count, SweepRows& rows);

}  // namespace quom
