// Round values for a family of curves.
#pragma once
#include <vector>

namespace quom {

// How many curves a family should have, and within which bounds.
struct FamilyCount {
    double wish = 10;
    int low = 8, high = 16;
};

// Multiples of a step of 1, 2, 2.5 or 5 times a power of ten from low to high: the step whose number of
// values n comes nearest to the wish,
//     least |ln(n/wish)| + 0.12 for 2.5 + 5 where n is outside the bounds.
// Ascending; empty where low is not below high.
std::vector<double> linear_family(double low, double high, const FamilyCount& count);

// The same on a logarithmic scale, low above 0: one of the sets 1 | 1 3 | 1 2 5 | 1 1.5 2 3 5 7 |
// 1 1.2 1.5 2 2.5 3 4 5 6 8 in every decade; 1 2 5 is preferred by 0.35. A range too narrow for them takes
// linear_family.
std::vector<double> log_family(double low, double high, const FamilyCount& count);

// Step of the numbers of a linear axis, 1, 2 or 5 times a power of ten for about so many steps from low to
// high, and the step of the small ticks between them.
struct AxisSteps {
    double major = 1, minor = 0.2;
};
AxisSteps axis_steps(double low, double high, int about);

}  // namespace quom
