#include "engine/reduced_saturation.h"

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace quom {
namespace {

using Real = long double;

struct Shape {
    Real c, d;  // c/b, d/b
    Real s, m;
    Shape(Real c_of_b, Real d_of_b)
        : c(c_of_b), d(d_of_b), s(2 + c_of_b + d_of_b), m((1 + c_of_b) * (1 + d_of_b)) {}

    // N = (v/b + c/b)(v/b + d/b) = w^2 + s w + m
    Real N(Real w) const { return (w + s) * w + m; }
    // Integral of dw/N from x to y: ln((x + 1 + d)(y + 1 + c)/((x + 1 + c)(y + 1 + d)))/(d - c)
    Real attraction(Real x, Real y) const {
        const Real q = (y - x) / ((x + 1 + c) * (y + 1 + d));
        return c == d ? q : std::log1p((d - c) * q) / (d - c);
    }
    // J(0): the integral from 0 to infinity
    Real J0() const { return c == d ? 1 / (1 + c) : std::log1p((d - c) / (1 + c)) / (d - c); }
};

// The critical w, where the t of equal pressures at two equal volumes, w^2 (2 w + s)/N^2, is largest.
Real critical_w(const Shape& shape) {
    Real lo = 1e-6L, hi = 1e6L;
    for (int round = 0; round < 200; ++round) {
        const Real w = std::sqrt(lo * hi);
        const Real slope = 1 / w + 1 / (2 * w + shape.s) - (2 * w + shape.s) / shape.N(w);
        (slope > 0 ? lo : hi) = w;
    }
    return lo;
}

struct Point {
    Real theta = 0, t = 0, ln_p = 0;
    Real ln_wL = 0, ln_wV = 0;
    bool settled = false;
};

// What two volumes wL, wV of one isotherm and one pressure have in common. W = wL wV, S = wL + wV + s,
// J the integral of dw/N from wL to wV:
//
//     t = W S/(NL NV),   p' = (W - m)/(NL NV)
//     F = ln(wV/wL) - J/t - (wV - wL) p'/t,   0 at equal fugacity
//
// Derivatives are by ln wL and ln wV; both volumes staying roots, dF = -J d(1/t) - (wV - wL) d(p'/t).
struct PairOfRoots {
    Real ln_t, ln_p, F;
    Real tL, tV, FL, FV;  // derivatives of ln t and F by ln wL, ln wV

    PairOfRoots(const Shape& shape, Real ln_wL, Real ln_wV) {
        const Real wL = std::exp(ln_wL), wV = std::exp(ln_wV);
        const Real NL = shape.N(wL), NV = shape.N(wV), W = wL * wV, S = wL + wV + shape.s;
        ln_t = std::log(W / NL * S / NV);
        ln_p = std::log((W - shape.m) / NL / NV);
        const Real J_by_t = shape.attraction(wL, wV) * (NL / W) * (NV / S);
        const Real z_difference = (wV - wL) * ((W - shape.m) / W / S);
        F = ln_wV - ln_wL - J_by_t - z_difference;
        const Real slope_NL = wL * (2 * wL + shape.s) / NL, slope_NV = wV * (2 * wV + shape.s) / NV;
        tL = 1 + wL / S - slope_NL;
        tV = 1 + wV / S - slope_NV;
        FL = J_by_t * tL - z_difference * (W / (W - shape.m) - slope_NL - tL);
        FV = J_by_t * tV - z_difference * (W / (W - shape.m) - slope_NV - tV);
    }
};

// The saturated pair at t by Newton's iteration on ln t and F from a start.
Point saturated_pair(const Shape& shape, Real t, Real ln_wL, Real ln_wV) {
    const Real small = std::sqrt(std::numeric_limits<Real>::epsilon());
    bool last = false;
    for (int round = 0; round < 50; ++round) {
        const PairOfRoots pair(shape, ln_wL, ln_wV);
        const Real e = pair.ln_t - std::log(t), det = pair.tL * pair.FV - pair.tV * pair.FL;
        const Real step_L = (pair.tV * pair.F - e * pair.FV) / det;
        const Real step_V = (e * pair.FL - pair.tL * pair.F) / det;
        ln_wL += step_L;
        ln_wV += step_V;
        const Real step = std::fabs(step_L) + std::fabs(step_V);
        if (!std::isfinite(step)) break;
        if (last) {
            const Real ln_p = PairOfRoots(shape, ln_wL, ln_wV).ln_p;
            return {.t = t, .ln_p = ln_p, .ln_wL = ln_wL, .ln_wV = ln_wV, .settled = ln_wV > ln_wL};
        }
        last = step < small * (ln_wV - ln_wL);
    }
    return {};
}

// The curve from low t upwards, each point started from the ones before.
class Curve {
 public:
    Curve(const Shape& shape, Real tc) : shape_(shape), tc_(tc), J0_(shape.J0()) {}

    const Point& add(Real theta) {
        const Real t = tc_ * (1 - theta * theta);
        // Low t: w(L) = m t, p' = exp(-J(0)/t)/m, w(V) = t/p'; so these two change slowly.
        Real by_L = std::log(shape_.m), by_V = by_L;
        if (!points_.empty()) {
            by_L = extrapolated(theta, [](const Point& p) { return p.ln_wL - std::log(p.t); });
            by_V =
                extrapolated(theta, [this](const Point& p) { return p.ln_wV - std::log(p.t) - J0_ / p.t; });
        }
        Point point = saturated_pair(shape_, t, by_L + std::log(t), by_V + std::log(t) + J0_ / t);
        point.theta = theta;
        settled_ = settled_ && point.settled;
        points_.push_back(point);
        return points_.back();
    }
    bool settled() const { return settled_; }

 private:
    const Shape& shape_;
    Real tc_, J0_;
    std::vector<Point> points_;
    bool settled_ = true;

    // Lagrange's polynomial through the last three points.
    template <class Value>
    Real extrapolated(Real theta, const Value& value) const {
        const std::size_t n = std::min<std::size_t>(points_.size(), 3), first = points_.size() - n;
        Real sum = 0;
        for (std::size_t i = first; i < points_.size(); ++i) {
            Real weight = 1;
            for (std::size_t j = first; j < points_.size(); ++j) {
                if (j != i) weight *= (theta - points_[j].theta) / (points_[i].theta - points_[j].theta);
            }
            sum += weight * value(points_[i]);
        }
        return sum;
    }
};

constexpr int Terms = SaturationTable::Terms, Functions = SaturationTable::Functions;
using Values = std::array<Real, Terms>;

// Coefficients of the polynomial through (x, y): divided differences, multiplied out.
Values polynomial(const Values& x, Values y) {
    for (std::size_t j = 1; j < Terms; ++j) {
        for (std::size_t i = Terms - 1; i >= j; --i) y[i] = (y[i] - y[i - 1]) / (x[i] - x[i - j]);
    }
    Values c{};
    for (std::size_t i = Terms; i-- > 0;) {
        for (std::size_t k = Terms - 1; k > 0; --k) c[k] = c[k - 1] - x[i] * c[k];
        c[0] = y[i] - x[i] * c[0];
    }
    return c;
}

// t ln p', w(L)/t, z(V)
std::array<Real, Functions> tabled(const Point& p, Real ln_wL, Real ln_wV) {
    return {p.t * p.ln_p, std::exp(ln_wL) / p.t, std::exp(p.ln_p + ln_wV) / p.t};
}

// One cell from its nodes. theta -> -theta exchanges liquid and vapor, so that the cell at the critical point
// is laid through both branches and needs no node where the two volumes cannot be told apart.
void fill_cell(SaturationTable& table, int cell, Curve& curve) {
    constexpr Real CriticalReach = 0.03L;
    const Real width = static_cast<Real>(table.theta_end) / SaturationTable::Cells;
    const Real middle = cell == 0 ? 0 : (static_cast<Real>(cell) + 0.5L) * width;
    const Real half = cell == 0 ? CriticalReach : 0.5L * width;
    Values x{};
    std::array<Values, Functions> y{};
    const int nodes = cell == 0 ? Terms / 2 : Terms;
    for (int k = 0; k < nodes; ++k) {
        const Real chebyshev = std::cos(std::acos(Real{-1}) * (static_cast<Real>(k) + 0.5L) / Terms);
        const auto i = static_cast<std::size_t>(k), mirrored = static_cast<std::size_t>(Terms - 1 - k);
        const Point& p = curve.add(middle + half * chebyshev);
        x[i] = p.theta / width - static_cast<Real>(cell) - 0.5L;
        const auto values = tabled(p, p.ln_wL, p.ln_wV), swapped = tabled(p, p.ln_wV, p.ln_wL);
        for (std::size_t f = 0; f < Functions; ++f) y[f][i] = values[f];
        if (cell != 0) continue;
        x[mirrored] = -p.theta / width - 0.5L;
        for (std::size_t f = 0; f < Functions; ++f) y[f][mirrored] = swapped[f];
    }
    for (std::size_t f = 0; f < Functions; ++f) {
        const Values c = polynomial(x, y[f]);
        for (std::size_t k = 0; k < Terms; ++k) table.c[cell][k][f] = static_cast<double>(c[k]);
    }
}

}  // namespace

std::shared_ptr<const SaturationTable> make_saturation_table(double c_of_b, double d_of_b) {
    constexpr Real LargestExponent = 650;  // of p' = exp(-650), at the cold end
    if (!(c_of_b > -1.0) || !(d_of_b >= c_of_b) || !std::isfinite(d_of_b)) return nullptr;
    const Shape shape(c_of_b, d_of_b);
    const Real wc = critical_w(shape), Nc = shape.N(wc), tc = wc * wc * (2 * wc + shape.s) / (Nc * Nc);
    const Real cold = shape.J0() / (LargestExponent * tc);
    if (!(cold < 1)) return nullptr;
    auto table = std::make_shared<SaturationTable>();
    table->s = static_cast<double>(shape.s);
    table->m = static_cast<double>(shape.m);
    table->tc = static_cast<double>(tc);
    table->wc = static_cast<double>(wc);
    // at the critical point the curve goes on as the isochore: dp'/dt = 1/w
    table->slope_c = static_cast<double>(tc / wc / (tc / wc - 1 / Nc));
    table->theta_end = static_cast<double>(std::sqrt(1 - cold));
    table->cells_per_theta = SaturationTable::Cells / table->theta_end;
    Curve curve(shape, tc);
    for (int cell = SaturationTable::Cells - 1; cell >= 0; --cell) fill_cell(*table, cell, curve);
    return curve.settled() ? table : nullptr;
}

}  // namespace quom
