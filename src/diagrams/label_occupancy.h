// Which lines run through which cell of an area.
#pragma once
#include <cstdint>

#include "diagrams/label_placing.h"

namespace quom {

// A net of cells of 3 px. A cell keeps up to three lines.
class LabelOccupancy {
 public:
    static constexpr double Cell = 3.0;
    explicit LabelOccupancy(const LabelInput& input);

    // What lies under a box: cost of the lines crossed, or a line that has to stay clear.
    struct Under {
        double crossings = 0;
        bool clear = true;
    };
    // own: the line that the label belongs to. margin [px] around the box for lines that stay clear.
    Under under(const LabelBox& box, std::size_t own, double margin) const;

    int columns() const { return columns_; }
    int rows() const { return rows_; }
    // Cost of a cell to a box that covers it.
    double weight(int column, int row) const;

 private:
    static constexpr int Most = 3;
    struct CellLines {
        std::uint16_t count = 0;
        std::uint16_t line[Most] = {};
    };
    void add_line(int line);
    void add(double x, double y, int line);
    int columns_ = 0, rows_ = 0;
    std::size_t place(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }
    std::vector<CellLines> cells_;
    const LabelInput& input_;
    std::vector<bool> clear_;  // keep_clear of each line
    std::vector<int> family_;
};

}  // namespace quom
