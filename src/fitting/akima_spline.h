// A piecewise cubic through points by Akima's rule, after an optional smoothing of the ordinates.
//
// Akima, J. ACM 17 (1970) 589.
#pragma once
#include <cstddef>
#include <optional>
#include <vector>

#include "base/messages.h"

namespace quom {

// Sorts points by x, each with its y. True when two neighbouring x differ by less than 1e-30.
bool SplineOrder(std::vector<double>& x, std::vector<double>& y);

// Smoothing factors that are taken; 0: no smoothing.
inline constexpr double SmallestSm = 0, LargestSm = 5000;

enum class SplineDerivative { value = 0, first = 1 };

// The cubic of interval i, with t = x - SplineX[i]:  y = ((D[i] t + C[i]) t + B[i]) t + A[i].
// The last A and B are those of the straight line behind the last point.
struct AkimaSpline {
    std::vector<double> SplineX;
    std::vector<double> SplineA, SplineB, SplineC, SplineD;

    std::size_t SplineN() const { return SplineX.size(); }
};

// Ordinates smoothed over up to 7 points, fewer near the ends; the end points stay.
std::vector<double> smoothed(const std::vector<double>& x, const std::vector<double>& y, double Sm);

// The coefficients for at least 3 points with increasing x. Empty for fewer points, for x that are not
// increasing, and where a coefficient is not finite.
AkimaSpline SplineCoefficients(const std::vector<double>& x, const std::vector<double>& y, double Sm);

// y, or dy/dx, at t; straight lines outside the points. None for an empty spline.
std::optional<double> SplineValue(const AkimaSpline& spline, double t, SplineDerivative mode);

// Where the points come from, for the pointer in a refusal.
enum class SplineData { experimental, xy };

// Why there can be no spline through points; none when there can. Sorts them.
std::optional<Message> check_spline(std::vector<double>& x, std::vector<double>& y, SplineData data);

}  // namespace quom
