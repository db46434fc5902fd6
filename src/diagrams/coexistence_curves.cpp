// The coexistence curve of liquid and vapor in the planes of p, v, T, rho and pv, and the bisector of its
// densities.
#include <algorithm>
#include <cmath>

#include "diagrams/curve_run.h"

namespace quom {
namespace {

constexpr double LowestP = 1e-6;  // [kPa]; saturation below it is not drawn
constexpr double LowestV = 1e-6;  // [m^3/kmol]

bool has_dome(const CurveRun& run) { return run.knows_saturation() && run.vcr > LowestV; }

// Temperatures below T(cr) down to low [K]. Where the points of a scan would not suffice to come down to the
// range, they start above its upper end `high`, and the step is the smallest that goes through it.
std::vector<double> temperatures_below_critical(const CurveRun& run, double low, double high, double step) {
    if (!(step > 0.0)) return {};
    low = std::max(low, TinyT);
    const auto most = static_cast<double>(run.round_limit());
    double from = run.Tcr - step;
    if ((from - low) / step > most) {
        if (high < from) from -= std::floor((from - high) / step) * step;
        step = std::max(step, (from - low) / (most - 1.0));
    }
    return scan_values(from, low, -step, 0.0, false, run.round_limit());
}

// A saturated state on the way down in the p-v plane.
struct DomePoint {
    double p = 0, v = 0;  // v by the vapor fraction
    bool LInside = false, VInside = false;
    Reason reason = Reason::none;
};

// At T [K]. Volumes on the wrong side of v(cr), or p at or above p(cr), count as not found.
DomePoint dome_point(const CurveRun& run, double T) {
    const Saturation sat = pLV_EOS(run.fluid, T);
    if (!sat.found()) return {.reason = sat.reason};
    if (sat.p < LowestP) return {.p = sat.p, .reason = Reason::p_too_low};
    if (sat.p >= run.pcr || sat.vL > run.vcr || sat.vV < run.vcr) return {.reason = Reason::not_settled};
    const auto shown = [&](double v) {
        return v * run.f.vFactor >= run.XMin && v * run.f.vFactor <= run.XMax;
    };
    return {.p = sat.p, .v = run.between(sat.vL, sat.vV), .LInside = shown(sat.vL), .VInside = shown(sat.vV)};
}

// The temperature to start from: that of the upper end of the range, or T(cr), and from there down to where
// one of the phases lies inside the range of v. 0: there is none.
double upper_end(const CurveRun& run) {
    constexpr double Step = 0.05;  // [K]
    if (run.pcr * run.f.pFactor <= run.YMin) return 0.0;
    double T = run.Tcr;
    if (run.pcr * run.f.pFactor > run.YMax) {
        const Saturation sat = TLV_EOS(run.fluid, run.YMax / run.f.pFactor);
        if (sat.found()) T = sat.T;
    }
    if (T == run.Tcr) T -= Step;
    for (; T > 0.0; T -= Step) {
        const DomePoint at = dome_point(run, T);
        if (at.reason == Reason::none && (at.LInside || at.VInside)) return T;
        if (at.reason == Reason::p_too_low) return 0.0;
    }
    return 0.0;
}

// The walk down the coexistence curve. Its step is doubled as long as a point would lie too near to the last
// one, and never falls again.
class DomeWalk {
 public:
    DomeWalk(CurveRun& run, double T)
        : run_(run),
          T_(T),
          dp_((run.YMax - run.YMin) / (800.0 * run.f.pFactor)),
          dv_((run.XMax - run.XMin) / (800.0 * run.f.vFactor)),
          last_p_(5.0 * run.pcr) {
        const double start = std::fabs(std::log((run.YMax - run.YMin) / run.f.pFactor)) / 1000.0;
        if (std::isfinite(start)) dT_ = std::max(dT_, start);
    }

    // The next point; false at the end of the curve. It may be one that was not found.
    bool next(DomePoint& at) {
        constexpr int MostDoublings = 200;
        if (!step(at) || at.p == last_p_) return false;
        for (int n = 0; n < MostDoublings && too_dense(at); ++n) {
            dT_ *= 2.0;
            if (!step(at)) return false;
        }
        if (at.reason == Reason::none) {
            last_p_ = at.p;
            last_v_ = at.v;
        }
        return true;
    }
    double T() const { return T_; }

 private:
    bool step(DomePoint& at) {
        T_ -= dT_;
        if (T_ < TinyT || run_.below_triple(T_)) return false;
        at = dome_point(run_, T_);
        return at.reason != Reason::p_too_low;
    }
    bool too_dense(const DomePoint& at) const {
        return at.reason == Reason::none && std::fabs(last_p_ - at.p) < dp_ &&
               std::fabs(last_v_ - at.v) < dv_;
    }

    CurveRun& run_;
    double T_, dp_, dv_;
    double dT_ = 1e-4;
    double last_p_, last_v_ = 1000.0;
};

}  // namespace

void curve_dome_p_v(CurveRun& run) {
    if (!has_dome(run)) return;
    const double T0 = upper_end(run);
    if (!(T0 > 0.0)) {
        run.out.Status = CurveStatus::outside;
        return;
    }
    run.add(run.vcr * run.f.vFactor, run.pcr * run.f.pFactor, run.Tcr);
    DomeWalk walk(run, T0);
    DomePoint at;
    bool entered = false;
    for (std::size_t n = 0; n < run.round_limit() && walk.next(at); ++n) {
        if (at.reason != Reason::none) continue;
        const double x = at.v * run.f.vFactor;
        entered = entered || (x >= run.XMin && x <= run.XMax && at.v > LowestV);
        if (entered) run.add(x, at.p * run.f.pFactor, walk.T());
        if (x > run.XMax || x < 1.5 * run.XMin - 0.5 * run.XMax) break;
    }
}

// rho or pv over p.
void curve_dome_p(CurveRun& run) {
    constexpr double FirstP = 0.1, BelowCritical = 5.0;  // [kPa]
    if (!has_dome(run)) return;
    const double pFactor = run.f.pFactor;
    const auto y = [&](double p, double v) {
        return run.kind.y == AxisQuantity::rho ? run.M / v : p * pFactor * v * run.f.vFactor;
    };
    const double from = std::max(run.XMin, FirstP * pFactor), to = (run.pcr - BelowCritical) * pFactor;
    for (const double x : scan_values(from, to, 0.75 * run.dx, 0.0, false, run.round_limit())) {
        const double p = x / pFactor;
        const Saturation sat = TLV_EOS(run.fluid, p);
        if (!sat.found() || run.below_triple(sat.T)) continue;
        run.add(x, y(p, run.between(sat.vL, sat.vV)), sat.T);
    }
    if (!run.out.Outside) run.add(run.pcr * pFactor, y(run.pcr, run.vcr), run.Tcr);
}

// T over v or rho.
void curve_dome_T(CurveRun& run) {
    if (!has_dome(run)) return;
    const double TFactor = run.f.TFactor;
    const auto x = [&](double v) { return run.kind.x == AxisQuantity::rho ? run.M / v : v * run.f.vFactor; };
    run.add(x(run.vcr), run.Tcr * TFactor, run.pcr);
    const double step = (run.in.VaporFraction < 0.5 ? 0.5 : 2.0) * run.dy / TFactor;
    for (const double T : temperatures_below_critical(run, run.YMin / TFactor, run.YMax / TFactor, step)) {
        if (run.below_triple(T)) break;
        const Saturation sat = pLV_EOS(run.fluid, T);
        if (!sat.found() || sat.p <= LowestP) continue;
        run.add(x(run.between(sat.vL, sat.vV)), T * TFactor, sat.p);
    }
}

// rho(L) and rho(V) over T in one curve, from the vapor over the critical point to the liquid.
void curve_densities_T(CurveRun& run) {
    if (!run.knows_saturation()) return;
    if (!(run.vcr > LowestV)) {
        run.out.Status = CurveStatus::no_critical_density;
        return;
    }
    const double TFactor = run.f.TFactor;
    run.add(run.Tcr * TFactor, run.M / run.vcr, run.pcr);
    const double step = std::min(run.dx, run.dy) / TFactor;
    for (const double T : temperatures_below_critical(run, run.XMin / TFactor, run.XMax / TFactor, step)) {
        if (run.below_triple(T)) break;
        const Saturation sat = pLV_EOS(run.fluid, T);
        if (!sat.found() || !(sat.vL > sat.eos.b) || !(sat.p > LowestP) || !(sat.vV > LowestV)) continue;
        run.add(T * TFactor, run.M / sat.vL, sat.p);
        run.add(T * TFactor, run.M / sat.vV, sat.p);
    }
    run.sort_y();
}

// (rho(L) + rho(V))/2 over T, Cailletet and Mathias (1886).
void curve_bisector(CurveRun& run) {
    constexpr double SmallestProduct = 1e-4;  // of both volumes [m^6/kmol^2]
    if (!has_dome(run)) return;
    const double TFactor = run.f.TFactor;
    run.add(run.Tcr * TFactor, run.M / run.vcr, run.pcr);
    const double step = 3.0 * run.dx / TFactor;
    for (const double T : temperatures_below_critical(run, run.XMin / TFactor, run.XMax / TFactor, step)) {
        if (run.below_triple(T)) break;
        const Saturation sat = pLV_EOS(run.fluid, T);
        if (!sat.found() || !(sat.vL * sat.vV >= SmallestProduct)) continue;
        run.add(T * TFactor, 0.5 * (run.M / sat.vL + run.M / sat.vV), sat.p);
    }
}

}  // namespace quom
