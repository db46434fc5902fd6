// What a point of a curve claims: from some of X, Y, Par, Tag the others follow through the single calls of
// the engine. The tests of curves compare both.
#pragma once
#include <string>
#include <vector>

#include "diagrams/curve.h"
#include "engine/fluid.h"

namespace quom::test {

// Factors from molar values, K and kPa to displayed ones, worked out anew.
struct DisplayFactors {
    double T = 1, p = 1, v = 1;
    const Fluid* fluid = nullptr;
    int EnergyMode = 0;
    double u(double at_T) const;
};
DisplayFactors display_factors(const Fluid& fluid, const Units& units);

// Where the point does not keep what it claims: what it shows and what was expected of it; empty: it does.
//
// X, Y, Par, Tag are singles: each coordinate that the state is read from is moved by one unit in its last
// place, down and up, and what follows may move as far.
std::string broken_claim(const Fluid& fluid, const CurveInput& input, const CurvePoint& point);

}  // namespace quom::test
