// Which series of a sheet run through which part of the axes.
#pragma once
#include <QPointF>
#include <QRectF>
#include <cstdint>
#include <vector>

namespace quom {

// A net of cells of 3 px over the area of the axes; a cell knows every series that runs through it.
class LineCells {
 public:
    static constexpr int MostSeries = 64;
    LineCells() = default;
    explicit LineCells(const QRectF& area);
    // The line of a series, 0 to 63, in pixels; a point that is no number is a gap.
    void add(const std::vector<QPointF>& line, int series);
    // How many series run through a box, one of them left out; own -1: none left out.
    int crossed(const QRectF& box, int own) const;
    bool crosses(const QRectF& box, int series) const { return (series_in(box) & bit(series)) != 0; }

 private:
    static constexpr double Cell = 3;
    static std::uint64_t bit(int series) { return std::uint64_t{1} << static_cast<unsigned>(series); }
    struct Cells {
        int left = 0, top = 0, right = -1, bottom = -1;
    };
    Cells cells_of(const QRectF& box) const;
    std::uint64_t series_in(const QRectF& box) const;
    std::uint64_t at(int column, int row) const {
        return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
                      static_cast<std::size_t>(column)];
    }
    void mark(double x, double y, std::uint64_t series);

    QPointF corner_;
    int columns_ = 0, rows_ = 0;
    std::vector<std::uint64_t> cells_;
};

}  // namespace quom
