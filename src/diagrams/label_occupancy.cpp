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
    CellLines& cell = cells_[static_cast<std::size_t>(row * columns_ + column)];
    for (int i = 0; i < cell.count; ++i)
        if (cell.line[i] == line) return;
    if (cell.count < Most) cell.line[cell.count++] = line;
}

const LabelOccupancy::CellLines* LabelOccupancy::at(double x, double y) const {
    if (x < 0.0 || y < 0.0) return nullptr;
    const int column = static_cast<int>(x / Cell), row = static_cast<int>(y / Cell);
    if (column >= columns_ || row >= rows_) return nullptr;
    return &cells_[static_cast<std::size_t>(row * columns_ + column)];
}

LabelOccupancy::Under LabelOccupancy::under(const LabelBox& box, std::size_t own, double margin) const {
    Under r;
    const double a = box.angle * std::numbers::pi / 180.0, ca = std::cos(a), sa = std::sin(a);
    const int family = input_.lines[own].family;
    const auto samples = [](double length) {
        return std::max(1, static_cast<int>(std::ceil(length / Cell)));
    };
    const double width = box.width + 2.0 * margin, height = box.height + 2.0 * margin;
    const int nx = samples(width), ny = samples(height);
    for (int j = 0; j <= ny; ++j) {
        const double y = (static_cast<double>(j) / ny - 0.5) * height;
        for (int i = 0; i <= nx; ++i) {
            const double x = (static_cast<double>(i) / nx - 0.5) * width;
            const CellLines* cell = at(box.centre.x + x * ca - y * sa, box.centre.y + x * sa + y * ca);
            if (!cell || cell->count == 0) continue;
            const bool inside = 2.0 * std::fabs(x) <= box.width && 2.0 * std::fabs(y) <= box.height;
            for (int k = 0; k < cell->count; ++k) {
                const auto line = static_cast<std::size_t>(cell->line[k]);
                if (line == own) continue;
                if (input_.lines[line].keep_clear) {
                    r.clear = false;
                    return r;
                }
                if (inside) r.crossings += input_.lines[line].family == family ? OfFamily : OfOthers;
            }
        }
    }
    r.crossings *= Cell / std::max(6.0, box.height);
    return r;
}

double LabelOccupancy::weight(int column, int row) const {
    const CellLines& cell = cells_[static_cast<std::size_t>(row * columns_ + column)];
    double sum = 0.0;
    for (int i = 0; i < cell.count; ++i)
        sum += input_.lines[static_cast<std::size_t>(cell.line[i])].keep_clear ? DomeWeight : LineWeight;
    return sum;
}

}  // namespace quom
