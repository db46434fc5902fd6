#include "ui/charts/sheet_cells.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace quom {

LineCells::LineCells(const QRectF& area)
    : corner_(area.topLeft()),
      columns_(std::max(0, static_cast<int>(std::ceil(area.width() / Cell)))),
      rows_(std::max(0, static_cast<int>(std::ceil(area.height() / Cell)))),
      cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)) {}

void LineCells::mark(double x, double y, std::uint64_t series) {
    const int column = static_cast<int>(std::floor(x / Cell)), row = static_cast<int>(std::floor(y / Cell));
    if (column < 0 || row < 0 || column >= columns_ || row >= rows_) return;
    cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
           static_cast<std::size_t>(column)] |= series;
}

void LineCells::add(const std::vector<QPointF>& line, int series) {
    const std::uint64_t own = bit(series);
    for (std::size_t i = 0; i < line.size(); ++i) {
        const QPointF to = line[i] - corner_;
        if (std::isnan(to.x())) continue;
        const QPointF from = i > 0 && !std::isnan(line[i - 1].x()) ? line[i - 1] - corner_ : to;
        const QPointF way = to - from;
        const int steps = 1 + static_cast<int>(std::max(std::abs(way.x()), std::abs(way.y())) / Cell);
        for (int k = 1; k <= steps; ++k)
            mark(from.x() + way.x() * k / steps, from.y() + way.y() * k / steps, own);
    }
}

LineCells::Cells LineCells::cells_of(const QRectF& box) const {
    const QRectF at = box.translated(-corner_);
    return {std::max(0, static_cast<int>(std::floor(at.left() / Cell))),
            std::max(0, static_cast<int>(std::floor(at.top() / Cell))),
            std::min(columns_ - 1, static_cast<int>(std::floor(at.right() / Cell))),
            std::min(rows_ - 1, static_cast<int>(std::floor(at.bottom() / Cell)))};
}

std::uint64_t LineCells::series_in(const QRectF& box) const {
    const Cells cells = cells_of(box);
    std::uint64_t found = 0;
    for (int row = cells.top; row <= cells.bottom; ++row)
        for (int column = cells.left; column <= cells.right; ++column) found |= at(column, row);
    return found;
}

int LineCells::crossed(const QRectF& box, int own) const {
    return std::popcount(series_in(box) & ~(own < 0 ? 0 : bit(own)));
}

}  // namespace quom
