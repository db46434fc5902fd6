#include "yardstick.h"

#include <cmath>

namespace yardstick {
namespace {

constexpr double R = 8.31451, M = 44.0956001, Tcr = 369.89, pcr = 4251.2002;
constexpr double b = 0.0777960739038885 * R * Tcr / pcr, a_cr = 0.457235528921382 * R * R * Tcr * Tcr / pcr;
constexpr double c = -0.414213562373095 * b, d = 2.414213562373095 * b;
constexpr double m = 0.37464 + 1.54226 * 0.1521 - 0.26992 * 0.1521 * 0.1521;
// cp(idG) = A + B (x/sinh x)^2 + D (y/cosh y)^2, x = C/T, y = E/T
constexpr double A = 55.2988167, B = 190.405914, C = 1718.90137, D = 121.446526, E = 776.67041;

// a(T) and the ideal gas at 101.325 kPa, from 298.15 K.
struct AtT {
    double T, a, a1, a2, h, s, cp;
};

double ideal_h(double T) { return A * T + B * C / std::tanh(C / T) - D * E * std::tanh(E / T); }
double ideal_s(double T) {
    const double x = C / T, y = E / T;
    return A * std::log(T) + B * (x / std::tanh(x) - std::log(std::sinh(x))) -
           D * (y * std::tanh(y) - std::log(std::cosh(y)));
}

AtT at_T(double T) {
    static const double h0 = ideal_h(298.15), s0 = ideal_s(298.15);
    const double root = std::sqrt(T / Tcr), alpha = 1.0 + m * (1.0 - root), slope = -0.5 * m * root / T;
    const double q1 = C / T / std::sinh(C / T), q2 = E / T / std::cosh(E / T);
    return {T,
            a_cr * alpha * alpha,
            2.0 * a_cr * alpha * slope,
            2.0 * a_cr * (slope * slope - 0.5 * slope * alpha / T),
            ideal_h(T) - h0,
            ideal_s(T) - s0,
            A + B * q1 * q1 + D * q2 * q2};
}

struct Roots {
    double low, high;  // equal where there is one
};

// Outer roots of v^3 + q2 v^2 + q1 v + q0 above b.
Roots roots(const AtT& t, double p) {
    const double V = R * t.T / p + b, q2 = c + d - V, q1 = c * d + t.a / p - (c + d) * V;
    const double q0 = -t.a * b / p - c * d * V, bend = -q2 / 3.0;
    const bool low_side = ((bend + q2) * bend + q1) * bend + q0 > 0.0 && bend > b;
    double v = low_side ? b * (1.0 + 1e-7) : V;
    for (int round = 0; round < 50; ++round) {
        const double step = (((v + q2) * v + q1) * v + q0) / ((3.0 * v + 2.0 * q2) * v + q1);
        v -= step;
        if (std::fabs(step) < 1e-9 * v) break;
    }
    const double product = -q0 / v, sum = v * v * v <= std::fabs(q0) ? -(v + q2) : (q1 - product) / v;
    const double disc = 0.25 * sum * sum - product;
    if (disc <= 0.0 || sum <= 0.0) return {v, v};
    const double large = 0.5 * sum + std::sqrt(disc), other = low_side ? large : product / large;
    if (other <= b) return {v, v};
    return low_side ? Roots{v, other} : Roots{other, v};
}

double integral(double v) { return std::log((v + d) / (v + c)) / (d - c); }
double lnphi(const AtT& t, double p, double v) {
    const double RT = R * t.T;
    return p * v / RT - 1.0 - std::log(p * (v - b) / RT) - t.a / RT * integral(v);
}

State functions(const AtT& t, double p, double v, double ln_phi, bool vapor) {
    const double T = t.T, V = v - b, N = (v + c) * (v + d), I = integral(v);
    const double slope_T = R / V - t.a1 / N, slope_v = t.a * (2.0 * v + c + d) / (N * N) - R * T / (V * V);
    const double h_res = (T * t.a1 - t.a) * I + p * v - R * T;
    State r;
    r.v = v;
    r.rho = M / v;
    r.h = t.h + h_res;
    r.u = r.h - p * v;
    r.s = t.s - R * std::log(p / 101.325) + h_res / T - R * ln_phi;
    r.g = r.h - T * r.s;
    r.a = r.g - p * v;
    r.cV = t.cp - R + T * t.a2 * I;
    r.cp = r.cV - T * slope_T * slope_T / slope_v;
    r.w = v * std::sqrt(-1000.0 / M * r.cp / r.cV * slope_v);
    r.lnphi = ln_phi;
    r.vapor = vapor;
    return r;
}

State stable(const AtT& t, double p) {
    const Roots v = roots(t, p);
    const double low = lnphi(t, p, v.low);
    if (v.low == v.high) return functions(t, p, v.low, low, v.low > 0.3074 * R * Tcr / pcr);
    const double high = lnphi(t, p, v.high);
    return high < low ? functions(t, p, v.high, high, true) : functions(t, p, v.low, low, false);
}

template <class Value>
double search(double p, double target, double T, Value value) {
    for (int round = 0; round < 50; ++round) {
        const State s = state(T, p);
        const double step = value(s, T, target);
        T += step;
        if (std::fabs(step) < 1e-9 * T) break;
    }
    return T;
}

}  // namespace

State state(double T, double p) { return stable(at_T(T), p); }

void states(const double* T, const double* p, std::size_t n, State* out) {
    for (std::size_t i = 0; i < n; ++i) out[i] = state(T[i], p[i]);
}

void isotherm(double T, const double* p, std::size_t n, State* out) {
    const AtT t = at_T(T);
    for (std::size_t i = 0; i < n; ++i) out[i] = stable(t, p[i]);
}

// Newton in ln p on equal fugacity, d(ln phi)/d(ln p) = Z - 1; start by Lee and Kesler's rule in its simplest
// form.
double vapor_pressure(double T) {
    const AtT t = at_T(T);
    double p = pcr * std::exp(5.373 * 1.1521 * (1.0 - Tcr / T));
    for (int round = 0; round < 50; ++round) {
        const Roots v = roots(t, p);
        if (v.low == v.high) {
            p *= v.low > 0.3074 * R * Tcr / pcr ? 1.05 : 0.95;
            continue;
        }
        const double step = (lnphi(t, p, v.low) - lnphi(t, p, v.high)) * R * T / (p * (v.high - v.low));
        p *= std::exp(step);
        if (std::fabs(step) < 1e-10) break;
    }
    return p;
}

// Newton in 1/T on ln p(LV) with Clapeyron's slope between saturated volumes.
double boiling_temperature(double p) {
    double T = Tcr / (1.0 - std::log(p / pcr) / (5.373 * 1.1521));
    for (int round = 0; round < 50; ++round) {
        const AtT t = at_T(T);
        const Roots v = roots(t, p);
        if (v.low == v.high) {
            T *= v.low > 0.3074 * R * Tcr / pcr ? 0.99 : 1.01;
            continue;
        }
        // d(ln phi(L) - ln phi(V))/dT = -(h(L) - h(V))/(R T^2)
        const double difference = lnphi(t, p, v.low) - lnphi(t, p, v.high);
        const double dh = (T * t.a1 - t.a) * (integral(v.low) - integral(v.high)) + p * (v.low - v.high);
        const double step = difference * R * T * T / dh;
        T += step;
        if (std::fabs(step) < 1e-10 * T) break;
    }
    return T;
}

double T_of_h(double p, double h, double start) {
    return search(p, h, start, [](const State& s, double, double target) { return (target - s.h) / s.cp; });
}
double T_of_s(double p, double entropy, double start) {
    return search(p, entropy, start,
                  [](const State& s, double T, double target) { return (target - s.s) * T / s.cp; });
}

}  // namespace yardstick
