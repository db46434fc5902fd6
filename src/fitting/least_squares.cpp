#include "fitting/least_squares.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quom {
namespace {

constexpr double Dependent = 4e-15;  // what may be left of a column of length 1 behind those before it

double dot(std::span<const double> a, std::span<const double> b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += a[i] * b[i];
    return sum;
}

// Length without overflow.
double length(std::span<const double> a) {
    double largest = 0.0;
    for (const double x : a) {
        if (!std::isfinite(x)) return x;
        largest = std::fmax(largest, std::fabs(x));
    }
    if (largest == 0.0) return 0.0;
    double sum = 0.0;
    for (const double x : a) sum += (x / largest) * (x / largest);
    return largest * std::sqrt(sum);
}

// Takes from b what lies along v, mirrored: b - 2 v (v b)/(v v).
void reflect(std::span<const double> v, double vv, std::span<double> b) {
    const double factor = 2.0 * dot(v, b) / vv;
    for (std::size_t i = 0; i < b.size(); ++i) b[i] -= factor * v[i];
}

// Makes J upper triangular and turns r with it; false where columns depend on each other.
bool triangulate(Columns& J, std::vector<double>& r) {
    for (std::size_t k = 0; k < J.n; ++k) {
        const std::span<double> v = J.column(k).subspan(k);
        const double norm = length(v);
        if (!(norm > Dependent)) return false;
        const double diagonal = v[0] > 0.0 ? -norm : norm;
        v[0] -= diagonal;
        const double vv = dot(v, v);
        for (std::size_t j = k + 1; j < J.n; ++j) reflect(v, vv, J.column(j).subspan(k));
        reflect(v, vv, std::span(r).subspan(k));
        v[0] = diagonal;
    }
    return true;
}

// Solves R x = b for the upper triangle R of J.
void back_substitute(const Columns& J, std::span<double> b) {
    for (std::size_t k = J.n; k-- > 0;) {
        for (std::size_t j = k + 1; j < J.n; ++j) b[k] -= J(k, j) * b[j];
        b[k] /= J(k, k);
    }
}

// The columns with one row more for each, which holds the root of the damping.
Columns damped(const Columns& J, double damping) {
    Columns longer(J.m + J.n, J.n);
    for (std::size_t j = 0; j < J.n; ++j) {
        std::ranges::copy(J.column(j), longer.column(j).begin());
        longer(J.m + j, j) = std::sqrt(damping);
    }
    return longer;
}

}  // namespace

LeastSquares solve_least_squares(Columns J, std::span<const double> r, double damping) {
    const std::size_t n = J.n;
    LeastSquares result{std::vector<double>(n), std::vector<double>(n * n), false};
    if (J.m < n) return result;
    std::vector<double> lengths(n);
    for (std::size_t j = 0; j < n; ++j) {
        lengths[j] = length(J.column(j));
        if (!(lengths[j] > 0.0) || !std::isfinite(lengths[j])) return result;
        for (double& value : J.column(j)) value /= lengths[j];
    }
    if (damping > 0.0) J = damped(J, damping);
    std::vector<double> turned(r.begin(), r.end());
    turned.resize(J.m);
    if (!triangulate(J, turned)) return result;

    back_substitute(J, turned);
    for (std::size_t j = 0; j < n; ++j) {
        result.x[j] = turned[j] / lengths[j];
        if (!std::isfinite(result.x[j])) return result;
    }
    // (J^T J)^-1 = R^-1 R^-T
    Columns inverse(n, n);
    for (std::size_t j = 0; j < n; ++j) {
        inverse(j, j) = 1.0;
        back_substitute(J, inverse.column(j));
    }
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            double sum = 0.0;
            for (std::size_t k = 0; k < n; ++k) sum += inverse(i, k) * inverse(j, k);
            result.inverse[i * n + j] = sum / (lengths[i] * lengths[j]);
            if (!std::isfinite(result.inverse[i * n + j])) return result;
        }
    result.solved = true;
    return result;
}

}  // namespace quom
