#include "fitting/marquardt.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace quom {
namespace {

constexpr double Increase = 10, Decrease = 4;  // of lambda
constexpr double Phi = 1;                      // additive part of the damping
constexpr double FirstLambda = 1e-4, LargestLambda = 1e30;
constexpr double Eps = 3e-16;
constexpr double RelTest = 10;  // b + 10 unchanged: the parameter stands still
constexpr int FunctionsPerParameter = 200, MostGradients = 250;
constexpr double DifferenceStep = 1.7e-7;

std::size_t packed(std::size_t row, std::size_t column) { return row * (row + 1) / 2 + column; }

class Run {
 public:
    explicit Run(const MarquardtProblem& problem)
        : problem_(problem),
          n_(problem.start.size()),
          b_(problem.start),
          mask_(n_),
          a_(n_ * (n_ + 1) / 2),
          c_(a_.size()),
          g_(n_),
          delta_(n_),
          row_(n_) {}

    MarquardtResult run() {
        set_masks();
        x0_ = b_;
        SS_ = sum_of_squares();
        if (!std::isfinite(SS_)) {
            SS_ = 0.0;
            not_computable_ = true;
            return result();
        }
        while (!limit_ && normal_equations()) {
            release_bounds();
            if (!better_point()) break;
        }
        return result();
    }

 private:
    bool held(std::size_t j) const { return mask_[j] == Mask::held; }
    bool fixed(std::size_t j) const { return mask_[j] != Mask::free; }

    MarquardtResult result() const {
        return {x0_, mask_, SS_, functions_, gradients_, limit_, not_computable_};
    }

    double sum_of_squares() {
        ++functions_;
        return calcFQS_Marquardt(problem_, b_);
    }

    // A start value outside its bounds is brought to them; where they are equal the parameter is held.
    void set_masks() {
        for (std::size_t j = 0; j < n_; ++j) {
            const FitBound& bound = problem_.FitBounds[j];
            mask_[j] = bound.mask;
            if (held(j)) continue;
            if (b_[j] < bound.lower) mask_[j] = Mask::at_lower;
            if (b_[j] > bound.upper) mask_[j] = Mask::at_upper;
            b_[j] = std::clamp(b_[j], bound.lower, bound.upper);
            if (bound.lower == bound.upper) mask_[j] = Mask::held;
        }
    }

    // One row of the Jacobian by forward differences.
    bool CalcAbleitungen(std::size_t point, double r) {
        for (std::size_t j = 0; j < n_; ++j) {
            const double b = b_[j], h = DifferenceStep * (std::fabs(b) + DifferenceStep);
            b_[j] = b + h;
            row_[j] = (problem_.CalcResiduals(point, b_.data()) - r) / h;
            b_[j] = b;
            if (!std::isfinite(row_[j])) return false;
        }
        return true;
    }

    // J^T J into a, J^T r into g, from x0. False at the end of the run.
    bool normal_equations() {
        if (functions_ > limit_of_functions()) limit_ = true;
        if (limit_) return false;
        lambda_ *= Decrease / Increase;
        std::ranges::fill(a_, 0.0);
        std::ranges::fill(g_, 0.0);
        for (std::size_t point = 0; point < problem_.points; ++point) {
            const double r = problem_.CalcResiduals(point, b_.data());
            if (!std::isfinite(r) || !CalcAbleitungen(point, r)) {
                not_computable_ = true;
                return false;
            }
            for (std::size_t j = 0; j < n_; ++j) {
                g_[j] += row_[j] * r;
                for (std::size_t k = 0; k <= j; ++k) a_[packed(j, k)] += row_[j] * row_[k];
            }
        }
        if (++gradients_ > MostGradients) limit_ = true;
        x0_ = b_;
        return true;
    }

    // A bound that the gradient leads away from does not hold any more.
    void release_bounds() {
        for (std::size_t j = 0; j < n_; ++j)
            if ((mask_[j] == Mask::at_lower && g_[j] < 0.0) || (mask_[j] == Mask::at_upper && g_[j] > 0.0))
                mask_[j] = Mask::free;
    }

    // Raises lambda until a step lowers the sum of squares. False when no parameter moves any more, or at a
    // limit.
    bool better_point() {
        for (;;) {
            if (solve_step() && downhill()) {
                if (stopped_by_bound()) continue;
                if (!take_step()) return false;
                const double SS = sum_of_squares();
                if (functions_ > limit_of_functions()) limit_ = true;
                if (std::isfinite(SS) && SS < SS_) {
                    SS_ = SS;
                    x0_ = b_;
                    mark_bounds();
                    return !limit_;
                }
                if (limit_) return false;
            }
            lambda_ *= Increase;
            if (!(lambda_ > 0.0)) lambda_ = Eps;
            b_ = x0_;
            if (lambda_ > LargestLambda) limit_ = true;
            if (limit_) return false;
        }
    }

    // delta = -(a + damping)^-1 g, held parameters left out. False where the matrix is not positive definite.
    bool solve_step() {
        c_ = a_;
        for (std::size_t j = 0; j < n_; ++j) {
            c_[packed(j, j)] = (1.0 + lambda_) * a_[packed(j, j)] + Phi * lambda_;
            delta_[j] = -g_[j];
        }
        for (std::size_t j = 0; j < n_; ++j) {
            if (!fixed(j)) continue;
            for (std::size_t k = 0; k < n_; ++k)
                c_[k <= j ? packed(j, k) : packed(k, j)] = k == j ? 1.0 : 0.0;
            delta_[j] = 0.0;
        }
        if (!choleski()) return false;
        if (std::ranges::all_of(delta_, [](double d) { return std::isfinite(d); })) return true;
        limit_ = true;
        return false;
    }

    bool choleski() {
        for (std::size_t j = 0; j < n_; ++j)
            for (std::size_t i = j; i < n_; ++i) {
                double sum = c_[packed(i, j)];
                for (std::size_t k = 0; k < j; ++k) sum -= c_[packed(i, k)] * c_[packed(j, k)];
                if (i > j) {
                    c_[packed(i, j)] = sum / c_[packed(j, j)];
                } else {
                    if (!(sum >= Eps)) return false;
                    c_[packed(j, j)] = std::sqrt(sum);
                }
            }
        for (std::size_t i = 0; i < n_; ++i) {
            for (std::size_t k = 0; k < i; ++k) delta_[i] -= c_[packed(i, k)] * delta_[k];
            delta_[i] /= c_[packed(i, i)];
        }
        for (std::size_t i = n_; i-- > 0;) {
            for (std::size_t k = i + 1; k < n_; ++k) delta_[i] -= c_[packed(k, i)] * delta_[k];
            delta_[i] /= c_[packed(i, i)];
        }
        return true;
    }

    bool downhill() const {
        double gradproj = 0.0;
        for (std::size_t j = 0; j < n_; ++j)
            if (!fixed(j)) gradproj += delta_[j] * g_[j];
        return gradproj <= 0.0;
    }

    double bound_ahead(std::size_t j) const {
        return delta_[j] < 0.0 ? problem_.FitBounds[j].lower : problem_.FitBounds[j].upper;
    }

    // A parameter that stands on its bound and whose step leads across it is left out of the step.
    bool stopped_by_bound() {
        bool stopped = false;
        for (std::size_t j = 0; j < n_; ++j) {
            if (fixed(j) || delta_[j] == 0.0 || bound_ahead(j) + RelTest != x0_[j] + RelTest) continue;
            mask_[j] = delta_[j] < 0.0 ? Mask::at_lower : Mask::at_upper;
            stopped = true;
        }
        return stopped;
    }

    // x0 + delta, shortened at the first bound. False when no parameter moved.
    bool take_step() {
        double step = 1.0;
        std::size_t first = n_;
        for (std::size_t j = 0; j < n_; ++j) {
            if (fixed(j) || delta_[j] == 0.0) continue;
            const double ratio = (bound_ahead(j) - x0_[j]) / delta_[j];
            if (!(ratio < step)) continue;
            step = std::max(0.0, ratio);
            first = j;
        }
        bool moved = false;
        for (std::size_t j = 0; j < n_; ++j) {
            if (fixed(j)) continue;
            b_[j] = j == first ? bound_ahead(j) : x0_[j] + step * delta_[j];
            if (b_[j] + RelTest != x0_[j] + RelTest) moved = true;
        }
        return moved;
    }

    void mark_bounds() {
        for (std::size_t j = 0; j < n_; ++j) {
            if (fixed(j)) continue;
            const FitBound& bound = problem_.FitBounds[j];
            if (std::fabs(b_[j] - bound.lower) < (std::fabs(bound.lower) + Eps) * Eps)
                mask_[j] = Mask::at_lower;
            if (std::fabs(b_[j] - bound.upper) < (std::fabs(bound.upper) + Eps) * Eps)
                mask_[j] = Mask::at_upper;
        }
    }

    int limit_of_functions() const { return FunctionsPerParameter * static_cast<int>(n_); }

    const MarquardtProblem& problem_;
    std::size_t n_;
    std::vector<double> b_, x0_;
    std::vector<Mask> mask_;
    std::vector<double> a_, c_;  // lower triangles, row by row
    std::vector<double> g_, delta_, row_;
    double SS_ = 0, lambda_ = FirstLambda;
    int functions_ = 0, gradients_ = 0;
    bool limit_ = false, not_computable_ = false;
};

}  // namespace

double calcFQS_Marquardt(const MarquardtProblem& problem, const std::vector<double>& b) {
    double sum = 0.0;
    for (std::size_t point = 0; point < problem.points; ++point) {
        const double r = problem.CalcResiduals(point, b.data());
        sum += r * r;
    }
    return sum;
}

MarquardtResult MarquardtNashFitting(const MarquardtProblem& problem) { return Run(problem).run(); }

std::vector<AxialSearch> axial_search(const MarquardtProblem& problem, MarquardtResult& result) {
    const std::vector<double> b = result.b;
    const double fmin = result.SS, step = 10.0 * std::sqrt(Eps);
    std::vector<AxialSearch> found(b.size());
    for (std::size_t j = 0; j < b.size(); ++j) {
        if (result.mask[j] == Mask::held) continue;
        const FitBound& bound = problem.FitBounds[j];
        const double st = (std::fabs(b[j]) + step) * step;
        double side[2];
        for (int i = 0; i < 2; ++i) {
            std::vector<double> point = b;
            point[j] += i == 0 ? -st : st;
            side[i] = std::numeric_limits<double>::quiet_NaN();
            if (point[j] < bound.lower || point[j] > bound.upper) continue;
            side[i] = calcFQS_Marquardt(problem, point);
            ++result.functions;
            if (!(side[i] < result.SS)) continue;
            result.SS = side[i];
            result.b = point;
            found[j].better = i == 0 ? -2 : -1;
        }
        AxialSearch& axis = found[j];
        const bool lower = std::isfinite(side[0]), upper = std::isfinite(side[1]);
        if (lower && upper) {
            axis.slope = 0.5 * (side[1] - side[0]) / (2.0 * st);
            axis.curvature = (side[1] + side[0] - 2.0 * fmin) / (2.0 * st * st);
        } else if (lower || upper) {
            axis.curvature = ((lower ? side[0] : side[1]) - fmin) / (st * st);
        }
        if (axis.curvature != 0.0)
            axis.radius = std::pow(1.0 + axis.slope * axis.slope, 1.5) / axis.curvature;
        axis.tilt = -45.0 * std::atan(axis.slope) / std::atan(1.0);
    }
    return found;
}

}  // namespace quom
