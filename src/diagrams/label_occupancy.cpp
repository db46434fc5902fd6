#include "diagrams/label_occupancy.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quom {
namespace {

constexpr double Step = 2.0;                           // of the walk along a line [px]
constexpr double OfFamily = 5.0, OfOthers = 0.8;       // cost of a sample over another line
constexpr double DomeWeight = 60.0, LineWeight = 1.0;  // of a cell to a box

}  // namespace

LabelOccupancy::LabelOccupancy(const LabelInput& input)
    : columns_(std::max(1, static_cast<int>(std::ceil(input.width / Cell)))),
      rows_(std::max(1, static_cast<int>(std::ceil(input.height / Cell)))),
      cells_(static_cast<std::size_t>(columns_) * static_cast<std::size_t>(rows_)),
      input_(input) {
    for (const LabelLine& line : input.lines) {
        clear_.push_back(line.keep_clear);
        family_.push_back(line.family);
    }
    // Lines that stay clear first: a full cell never loses them.
    for (const bool clear : {true, false}) {
        for (std::size_t i = 0; i < input.lines.size(); ++i)
            if (input.lines[i].keep_clear == clear) add_line(static_cast<int>(i));
    }
}

void LabelOccupancy::add_line(int line) {
    const auto& points = input_.lines[static_cast<std::size_t>(line)].points;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const PixelPoint a = points[i - 1], b = points[i];
        const double length = std::hypot(b.x - a.x, b.y - a.y);
        if (std::isnan(length)) continue;
        const int n = std::max(1, static_cast<int>(std::ceil(length / Step)));
        for (int k = 0; k <= n; ++k) {
            const double t = static_cast<double>(k) / n;
            add(a.x + t * (b.x - a.x), a.y + t * (b.y - a.y), line);
        }
    }
}

void LabelOccupancy::add(double x, double y, int line) {
    const int column = std::clamp(static_cast<int>(x / Cell), 0, columns_ - 1);
    const int row = std::clamp(static_cast<int>(y / Cell), 0, rows_ - 1);
    CellLines& cell = cells_[place(column, row)];
    for (int i = 0; i < cell.count; ++i)
        if (cell.line[i] == line) return;
    if (cell.count < Most) cell.line[cell.count++] = static_cast<std::uint16_t>(line);
}

LabelOccupancy::Under LabelOccupancy::under(const LabelBox& box, std::size_t own, double margin) const {
    Under r;
    const double a = box.angle * std::numbers::pi / 180.0, ca = std::cos(a), sa = std::sin(a);
    const int family = family_[own];
    const auto samples = [](double length) {
        return std::max(1, static_cast<int>(std::ceil(length / Cell)));
    };
    const double width = box.width + 2.0 * margin, height = box.height + 2.0 * margin;
    const int nx = samples(width), ny = samples(height);
    // In cells; a step along the text is (ux, uy), one across is (-uy, ux).
    const double ux = ca / Cell, uy = sa / Cell, step_x = width / nx, step_y = height / ny;
    const double x0 = box.centre.x / Cell, y0 = box.centre.y / Cell;
    for (int j = 0; j <= ny; ++j) {
        const double y = j * step_y - 0.5 * height;
        const bool row_inside = 2.0 * std::fabs(y) <= box.height;
        for (int i = 0; i <= nx; ++i) {
            const double x = i * step_x - 0.5 * width;
            const int column = static_cast<int>(x0 + x * ux - y * uy),
                      row = static_cast<int>(y0 + x * uy + y * ux);
            if (column < 0 || row < 0 || column >= columns_ || row >= rows_) continue;
            const CellLines& cell = cells_[place(column, row)];
            const bool inside = row_inside && 2.0 * std::fabs(x) <= box.width;
            for (int k = 0; k < cell.count; ++k) {
                const std::size_t line = cell.line[k];
                if (line == own) continue;
                if (clear_[line]) {
                    r.clear = false;
                    return r;
                }
                if (inside) r.crossings += family_[line] == family ? OfFamily : OfOthers;
            }
        }
    }
    r.crossings *= Cell / std::max(6.0, box.height);
    return r;
}

double LabelOccupancy::weight(int column, int row) const {
    const CellLines& cell = cells_[place(column, row)];
    double sum = 0.0;
    for (int i = 0; i < cell.count; ++i)
        sum += input_.lines[static_cast<std::size_t>(cell.line[i])].keep_clear ? DomeWeight : LineWeight;
    return sum;
}

}  // namespace quom
