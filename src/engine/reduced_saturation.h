// The saturation curve of a cubic equation of state in reduced form: one curve for all substances of a shape.
//
// With b as unit of volume and a/b^2 as unit of pressure, p = R T/(v - b) - a/((v + c)(v + d)) reads
//
//     p' = t/w - 1/(w^2 + s w + m),   t = R T b/a,  w = (v - b)/b,
//     s = 2 + (c + d)/b,  m = (1 + c/b)(1 + d/b)
//
// so that p', w(L), w(V) at saturation depend on t and the shape c/b, d/b alone. Tabled over
// theta = sqrt(1 - t/tc):
//
//     t ln p',   w(L)/t,   z(V) = p' w(V)/t
//
// All three are smooth from the critical point (theta = 0) down to T = 0, where they go to
// -J(0) = -ln((b + d)/(b + c)) b/(d - c), m and 1.
#pragma once
#include <algorithm>
#include <cmath>
#include <memory>

#include "engine/fluid.h"

namespace quom {

// Piecewise polynomials in theta, equal cells from 0 to theta_end.
struct SaturationTable {
    static constexpr int Cells = 48, Terms = 10, Functions = 3;
    double s = 0, m = 0;         // of the shape
    double tc = 0, wc = 0;       // critical t and w
    double slope_c = 0;          // d ln p'/d ln t at the critical point
    double theta_end = 0;        // end of the table: ln p' = -650 there
    double cells_per_theta = 0;  // Cells/theta_end
    // By cell, power of theta Cells/theta_end - cell - 1/2, function.
    double c[Cells][Terms][Functions] = {};
};

// A saturated state in reduced form.
struct ReducedSaturation {
    double ln_p = 0;        // ln p'
    double wL = 0, zV = 0;  // w(L), p' w(V)/t
};

// Whether t lies on the tabled curve: 0 < theta <= theta_end.
inline bool on_curve(const SaturationTable& table, double t) {
    return t < table.tc && t >= table.tc * (1.0 - table.theta_end * table.theta_end);
}

// Place of a t on the curve: its cell, and u from -1/2 to 1/2 in it; t above tc counts as tc.
struct CurvePlace {
    int cell = 0;
    double u = 0, theta = 0;
};
inline CurvePlace place_on(const SaturationTable& table, double t) {
    const double theta = std::sqrt(std::max(0.0, 1.0 - t / table.tc)), x = theta * table.cells_per_theta;
    const int cell = std::min(static_cast<int>(x), SaturationTable::Cells - 1);
    return {.cell = cell, .u = x - cell - 0.5, .theta = theta};
}

// One function at a place; even and odd powers apart, which halves the chain of dependent operations.
inline double tabled_value(const SaturationTable& table, const CurvePlace& place, int function) {
    const auto& c = table.c[place.cell];
    const double u2 = place.u * place.u;
    double even = c[SaturationTable::Terms - 2][function], odd = c[SaturationTable::Terms - 1][function];
    for (int k = SaturationTable::Terms - 4; k >= 0; k -= 2) {
        even = even * u2 + c[k][function];
        odd = odd * u2 + c[k + 1][function];
    }
    return odd * place.u + even;
}

// Derivative of one function by u.
inline double tabled_slope(const SaturationTable& table, const CurvePlace& place, int function) {
    const auto& c = table.c[place.cell];
    const double u2 = place.u * place.u;
    double even = (SaturationTable::Terms - 1) * c[SaturationTable::Terms - 1][function];
    double odd = (SaturationTable::Terms - 2) * c[SaturationTable::Terms - 2][function];
    for (int k = SaturationTable::Terms - 3; k > 0; k -= 2) {
        even = even * u2 + k * c[k][function];
        if (k > 1) odd = odd * u2 + (k - 1) * c[k - 1][function];
    }
    return odd * place.u + even;
}

// State at t, which has to lie on the curve: ln p' within some 1e-15, w(L), w(V) within 1e-16/theta^2.
inline ReducedSaturation reduced_saturation(const SaturationTable& table, double t) {
    const CurvePlace place = place_on(table, t);
    return {.ln_p = tabled_value(table, place, 0) / t,
            .wL = tabled_value(table, place, 1) * t,
            .zV = tabled_value(table, place, 2)};
}

// ln p' and d ln p'/d ln t at t on the curve.
struct ReducedPressure {
    double ln_p = 0, slope = 0;
};
inline ReducedPressure reduced_pressure(const SaturationTable& table, double t) {
    const CurvePlace place = place_on(table, t);
    const double by_t = 1.0 / t, dtheta = -0.5 * table.cells_per_theta / (place.theta * table.tc);
    // d ln p'/d ln t = dP/dt - P/t with P = t ln p', dtheta/dt = -1/(2 theta tc)
    const double ln_p = tabled_value(table, place, 0) * by_t;
    return {.ln_p = ln_p, .slope = dtheta * tabled_slope(table, place, 0) - ln_p};
}

// Table of a shape, computed in extended precision (some 2 ms); null where the shape has no saturation curve.
std::shared_ptr<const SaturationTable> make_saturation_table(double c_of_b, double d_of_b);

// Curves of codes 2 and 3, 4 and 5, 6, written at build time by cmake/generate/make_saturation_table.cpp.
extern const SaturationTable VanDerWaalsCurve;   // c/b = d/b = 0
extern const SaturationTable RedlichKwongCurve;  // 0, 1
extern const SaturationTable PengRobinsonCurve;  // 1 - sqrt(2), 1 + sqrt(2)

// Table of an equation of state: a constant of the program for codes 2 to 6, made here for codes 7 and 8,
// whose factor F multiplies b, c, d alike. Null for an equation of the V-phase only, and without a curve.
std::shared_ptr<const SaturationTable> saturation_table_for(const EosBlock& block, Eos code);

}  // namespace quom
