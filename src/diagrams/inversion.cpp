#include "diagrams/inversion.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "engine/eos_parameters.h"
#include "engine/saturation.h"

namespace quom {
namespace {

constexpr double Settled = 1e-12;   // relative step that ends an iteration
constexpr double Agreement = 1e-3;  // of the pressure asked for

// The condition at one T as a function of eta = b/v, with g = v/(v + c), h = v/(v + d):
//
//     v^2 (T (dp/dT)_v + v (dp/dv)_T)
//         = -R T (b - T b')/(1 - eta)^2 + g h (a (g + h + (T/v) (c' g + d' h)) - T a')
//
// It is positive where throttling cools.
class Condition {
 public:
    Condition(const Fluid& fluid, double T) {
        const auto [at, k] = EOSTerme(fluid, T);
        RT_ = RGas * T;
        a_ = at.a;
        b_ = at.b;
        repulsion_ = RT_ * (at.b - T * k.b1);
        cooling_ = T * k.a1;
        c_ = at.c / at.b;
        d_ = at.d / at.b;
        c1_ = T * k.c1 / at.b;
        d1_ = T * k.d1 / at.b;
    }
    struct Value {
        double y, slope;
    };
    Value operator()(double eta) const {
        const double g = 1.0 / (1.0 + c_ * eta), h = 1.0 / (1.0 + d_ * eta), free = 1.0 / (1.0 - eta);
        const double g1 = -c_ * g * g, h1 = -d_ * h * h, moving = c1_ * g + d1_ * h;
        const double bracket = a_ * (g + h + eta * moving) - cooling_;
        const double bracket1 = a_ * (g1 + h1 + moving + eta * (c1_ * g1 + d1_ * h1));
        return {
            .y = g * h * bracket - repulsion_ * free * free,
            .slope = (g1 * h + g * h1) * bracket + g * h * bracket1 - 2.0 * repulsion_ * free * free * free};
    }
    double b() const { return b_; }
    // p = R T/(v - b) - a/((v + c)(v + d))
    double p(double eta) const {
        const double inverse_v = eta / b_, N = (1.0 + c_ * eta) * (1.0 + d_ * eta);
        return inverse_v * (RT_ / (1.0 - eta) - a_ * inverse_v / N);
    }

 private:
    double RT_, a_, b_, repulsion_, cooling_, c_, d_, c1_, d1_;
};

// Zero of a function between x1 and x2, where its values y1 and y2 have different signs; Illinois rule.
template <class Function>
double zero_between(double x1, double y1, double x2, double y2, const Function& f) {
    constexpr int MostRounds = 100;
    for (int round = 0; round < MostRounds; ++round) {
        double x = x1 - y1 * (x2 - x1) / (y2 - y1);
        if (!(x > std::min(x1, x2) && x < std::max(x1, x2))) x = 0.5 * (x1 + x2);
        const double y = f(x);
        if (y == 0.0 || !std::isfinite(y)) return x;
        const double step = std::fabs(x - x2);
        if ((y > 0.0) == (y2 > 0.0)) {
            y1 *= 0.5;
        } else {
            x1 = x2;
            y1 = y2;
        }
        x2 = x;
        y2 = y;
        if (step <= Settled * std::fabs(x) || std::fabs(x1 - x2) <= Settled * std::fabs(x)) return x;
    }
    return x2;
}

// Temperature at which the condition of the thin gas, B = T B', is met: the first one above T(cr).
double highest_T(const Fluid& fluid) {
    constexpr double Step = 0.1, Last = 20.0;  // of T/T(cr)
    const auto f = [&](double T) { return Condition(fluid, T)(0.0).y; };
    const double Tcr = fluid.substance.Tcr;
    double T1 = Tcr, y1 = f(T1);
    if (!(y1 > 0.0)) return 0.0;
    for (double Tr = 1.0 + Step; Tr <= Last; Tr += Step) {
        const double T2 = Tr * Tcr, y2 = f(T2);
        if (y2 < 0.0) return zero_between(T1, y1, T2, y2, f);
        T1 = T2;
        y1 = y2;
    }
    return 0.0;
}

// Inversion pressure less p(LV) at T, with the last inversion point kept.
struct AboveBoiling {
    const Fluid& fluid;
    InversionPoint& at;
    double operator()(double T) const {
        at = InversionP(fluid, T, at.v);
        const Saturation sat = pLV_EOS(fluid, T);
        return at.found() && sat.found() ? at.p - sat.p : std::numeric_limits<double>::quiet_NaN();
    }
};

// Highest pressure between two temperatures, by the golden section.
InversionPoint highest_p(const Fluid& fluid, double low, double high) {
    constexpr double Golden = 0.6180339887498949, Width = 1e-5;
    InversionPoint x1 = InversionP(fluid, high - Golden * (high - low));
    InversionPoint x2 = InversionP(fluid, low + Golden * (high - low), x1.v);
    while (high - low > Width * high) {
        if (x1.p > x2.p) {
            high = x2.T;
            x2 = x1;
            x1 = InversionP(fluid, high - Golden * (high - low), x1.v);
        } else {
            low = x1.T;
            x1 = x2;
            x2 = InversionP(fluid, low + Golden * (high - low), x2.v);
        }
        if (!x1.found() || !x2.found()) break;
    }
    return x1.p > x2.p ? x1 : x2;
}

Reason refusal(const Fluid& fluid) {
    if (!fluid.has_eos()) return fluid.eos_reason;
    return fluid.VPhaseOnly ? Reason::vapor_only : Reason::none;
}

}  // namespace

InversionPoint InversionP(const Fluid& fluid, double T, double start) {
    constexpr int MostRounds = 100;
    InversionPoint r{.T = T, .reason = refusal(fluid)};
    if (r.reason != Reason::none) return r;
    r.reason = Reason::T_not_positive;
    if (!(T >= TinyT) || !std::isfinite(T)) return r;
    r.reason = Reason::no_solution;
    const Condition condition(fluid, T);
    if (!(condition.b() > 0.0) || !(condition(0.0).y > 0.0)) return r;
    // Newton's iteration between an eta where throttling cools and one where it heats; at 1 it heats.
    double low = 0.0, high = 1.0, eta = start > condition.b() ? condition.b() / start : 0.3;
    for (int round = 0; round < MostRounds; ++round) {
        const auto [y, slope] = condition(eta);
        if (!std::isfinite(y)) return r;
        (y > 0.0 ? low : high) = eta;
        double next = eta - y / slope;
        if (!(next > low && next < high)) {
            if (y == 0.0 || high - low <= Settled * high)
                next = eta;
            else
                next = 0.5 * (low + high);
        }
        const double step = std::fabs(next - eta);
        eta = next;
        if (step <= Settled * eta) {
            r.v = condition.b() / eta;
            r.p = condition.p(eta);
            if (std::isfinite(r.v) && std::isfinite(r.p)) r.reason = Reason::none;
            return r;
        }
    }
    r.reason = Reason::not_settled;
    return r;
}

InversionPoint InversionT(const Fluid& fluid, double p, double T1, double T2, double start) {
    InversionPoint at{.v = start, .reason = refusal(fluid)};
    if (at.reason != Reason::none) return at;
    const auto f = [&](double T) {
        at = InversionP(fluid, T, at.v);
        return at.p - p;
    };
    const double y1 = f(T1), y2 = f(T2);
    if (!(y1 * y2 <= 0.0)) return {};
    const InversionPoint r = InversionP(fluid, zero_between(T1, y1, T2, y2, f), at.v);
    // Where the law of a(T) has a corner, the inversion pressure jumps over p.
    return std::fabs(r.p - p) <= Agreement * p ? r : InversionPoint{};
}

InversionPoint boiling_inversion(const Fluid& fluid, double T1, double T2, double start) {
    InversionPoint at{.v = start, .reason = refusal(fluid)};
    if (at.reason != Reason::none) return at;
    const AboveBoiling f{fluid, at};
    const double y1 = f(T1), y2 = f(T2);
    if (!(y1 * y2 <= 0.0)) return {};
    return InversionP(fluid, zero_between(T1, y1, T2, y2, f), at.v);
}

InversionDome inversion_dome(const Fluid& fluid) {
    constexpr double Step = 0.02, Last = 0.3;  // of T/T(cr)
    InversionDome r;
    r.reason = refusal(fluid);
    if (r.reason != Reason::none) return r;
    r.reason = Reason::no_solution;
    r.Thighest = highest_T(fluid);
    if (!(r.Thighest > 0.0)) return r;
    const double Tcr = fluid.substance.Tcr;
    InversionPoint at;
    const AboveBoiling f{fluid, at};
    double T1 = Tcr * (1.0 - 0.5 * Step);
    if (!(f(T1) > 0.0)) return r;
    for (double Tr = 1.0 - Step; Tr > Last && !r.boiling.found(); Tr -= Step) {
        const double T2 = Tr * Tcr, y2 = f(T2);
        if (!std::isfinite(y2)) break;
        if (y2 < 0.0) r.boiling = boiling_inversion(fluid, T1, T2, at.v);
        T1 = T2;
    }
    if (!r.boiling.found()) return r;
    r.top = highest_p(fluid, r.boiling.T, r.Thighest);
    if (r.top.found()) r.reason = Reason::none;
    return r;
}

}  // namespace quom
