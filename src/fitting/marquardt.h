// Nonlinear least squares by Marquardt's method in the form of Nash: normal equations in packed form,
// Choleski decomposition, bounds and held parameters.
//
// Marquardt, J. SIAM 11 (1963) 431; Nash, Compact Numerical Methods for Computers (1979), algorithm 23.
#pragma once
#include <cstddef>
#include <functional>
#include <vector>

namespace quom {

// How a parameter stands in a run.
enum class Mask { at_lower = -2, at_upper = -1, held = 0, free = 1 };

// Lower and upper bound, and whether the parameter takes part.
struct FitBound {
    double lower = -1e20, upper = 1e20;
    Mask mask = Mask::free;
    bool operator==(const FitBound&) const = default;
};

struct MarquardtProblem {
    std::size_t points = 0;           // residuals
    std::vector<double> start;        // start values of the parameters
    std::vector<FitBound> FitBounds;  // as many
    // Residual of a point; not finite where it cannot be computed.
    std::function<double(std::size_t point, const double* b)> CalcResiduals;
};

struct MarquardtResult {
    std::vector<double> b;       // best parameters
    std::vector<Mask> mask;      // held, or at a bound
    double SS = 0;               // their sum of squares
    int functions = 0;           // sums of squares that were evaluated
    int gradients = 0;           // Jacobian matrices: iterations
    bool limit = false;          // ended by a limit, not by standing still
    bool NotComputable = false;  // the start, or a Jacobian, cannot be computed
};

// The sum of squares at b; not finite where a residual is not.
double calcFQS_Marquardt(const MarquardtProblem& problem, const std::vector<double>& b);

// Runs until no free parameter moves. At most 200 sums of squares a parameter and 250 Jacobian matrices.
MarquardtResult MarquardtNashFitting(const MarquardtProblem& problem);

// What the neighbourhood of a result looks like along the axis of a parameter.
struct AxialSearch {
    double slope = 0, curvature = 0;
    double radius = 1e35;  // of curvature
    double tilt = 0;       // of the axis [degrees]
    int better = 0;        // a lower sum of squares was found: -2 on the lower side, -1 on the upper one
};
// Looks on both sides along each axis that is not held; a better point takes the place of the result's.
std::vector<AxialSearch> axial_search(const MarquardtProblem& problem, MarquardtResult& result);

}  // namespace quom
