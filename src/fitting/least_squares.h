// Linear least squares of few unknowns by orthogonal transformations.
#pragma once
#include <cstddef>
#include <span>
#include <vector>

namespace quom {

// A matrix of m rows and n columns, one column after the other.
struct Columns {
    std::size_t m = 0, n = 0;
    std::vector<double> values;

    Columns(std::size_t rows, std::size_t columns) : m(rows), n(columns), values(rows * columns) {}
    double& operator()(std::size_t i, std::size_t j) { return values[j * m + i]; }
    double operator()(std::size_t i, std::size_t j) const { return values[j * m + i]; }
    std::span<double> column(std::size_t j) { return std::span(values).subspan(j * m, m); }
    std::span<const double> column(std::size_t j) const { return std::span(values).subspan(j * m, m); }
};

// The unknowns that make |J x - r| least, and the covariance (J^T J)^-1.
struct LeastSquares {
    std::vector<double> x;
    std::vector<double> inverse;  // n by n
    bool solved = false;  // false: not finite, fewer rows than columns, or columns that depend on each
                          // other to within rounding
};
// Householder (1958), columns brought to length 1 first; damping is added to the diagonal of their J^T J.
LeastSquares solve_least_squares(Columns J, std::span<const double> r, double damping = 0);

}  // namespace quom
