// Propane by Peng and Robinson, written out by hand for this one fluid: numbers in place of tables and
// selections, plain loops, nothing of the program. What the engine takes longer than this is the price of its
// generality.
#pragma once
#include <cstddef>

namespace yardstick {

// Stable phase at T [K], p [kPa]: v [m^3/kmol], molar functions [kJ/kmol], [kJ/(kmol K)], w [m/s].
struct State {
    double v, rho, h, u, s, g, a, cp, cV, w, lnphi;
    bool vapor;
};
State state(double T, double p);
void states(const double* T, const double* p, std::size_t n, State* out);
void isotherm(double T, const double* p, std::size_t n, State* out);

double vapor_pressure(double T);       // [kPa], T below T(cr)
double boiling_temperature(double p);  // [K], p below p(cr)

// T [K] where h or s has its value at p, by Newton's iteration from a start.
double T_of_h(double p, double h, double start);
double T_of_s(double p, double s, double start);

}  // namespace yardstick
