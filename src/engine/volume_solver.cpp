#include "engine/volume_solver.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "engine/saturation.h"

namespace quom {
namespace {

constexpr double CriticalVolumeBand = 0.001;  // [m^3/kmol], absolute for every substance
constexpr double SaturationBand = 0.001;      // |fd| below it: the state lies on the saturation curve
constexpr double SmallestRatio = 1e-6;        // of v - b of two neighbouring roots
constexpr int MaxRounds = 200;                // of a Newton iteration

// v^3 + q2 v^2 + q1 v + q0 = 0
struct Cubic {
    double q2, q1, q0;
    double value(double x) const { return ((x + q2) * x + q1) * x + q0; }
    double slope(double x) const { return (3.0 * x + 2.0 * q2) * x + q1; }
};

// x^(1/3) of x >= 0 to some 6 %, from the exponent of the number.
double rough_cbrt(double x) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) / 3 + 0x2A9F7893782DA1CEULL);
}

// The root on the side of the point of inflection where it surely lies, from a start outside of it (Kahan
// 1986), by Halley's iteration. Not finite where there is none.
double outer_root(const Cubic& f, const EosAtT& eos, double A) {
    const double inflection = f.q2 * (-1.0 / 3.0);
    const double height = f.value(inflection), slope = f.slope(inflection);
    if (height == 0.0) return inflection;
    // All real roots of t^3 + slope t + height lie within this distance.
    const double far =
        std::max(1.4 * rough_cbrt(std::fabs(height)), 1.325 * std::sqrt(std::max(-slope, 0.0)));
    double x = 0.0;
    if (height < 0.0) {
        x = inflection + far;
        if (A > inflection) x = std::min(x, A);
    } else {
        x = inflection - far;
        if (inflection > eos.b) x = std::max(x, eos.b + 1e-7 * std::fabs(eos.b));
    }
    for (int round = 0; round < MaxRounds; ++round) {
        const double y = f.value(x), k = f.slope(x), bend = 3.0 * x + f.q2;
        const double below = k * k - y * bend;
        // Near a point where the slope vanishes Newton's step is the safe one.
        const double dx = below > 0.25 * k * k ? -y * k / below : -y / k;
        if (!std::isfinite(dx)) return x;
        x += dx;
        if (std::fabs(dx) <= 2e-6 * std::fabs(x)) {
            // The error that is left is of the size dx (dx bend/k)^2, unless the slope vanishes at the root.
            if (dx * dx * bend * bend < 1e-11 * k * k) return x;
            const double last = -f.value(x) / f.slope(x);
            return std::fabs(last) <= std::fabs(dx) ? x + last : x;
        }
    }
    return x;
}

// One Newton step on a root of the deflated quadratic, taken when it only polishes.
double polished(const Cubic& f, double x) {
    const double dx = -f.value(x) / f.slope(x);
    return std::fabs(dx) < 1e-6 * std::fabs(x) ? x + dx : x;
}

bool above_single(double x, double limit) { return static_cast<float>(x) > static_cast<float>(limit); }
bool equal_single(double x, double y) { return static_cast<float>(x) == static_cast<float>(y); }

void set_liquid(const Fluid& fluid, VolumeResult& r, double v) {
    r.vL = v;
    r.rhoL = fluid.M / v;
}
void set_vapor(const Fluid& fluid, VolumeResult& r, double v) {
    r.vV = v;
    r.rhoV = fluid.M / v;
}
void set_both(const Fluid& fluid, VolumeResult& r, double v) {
    r.LFlag = true;
    r.VFlag = true;
    set_liquid(fluid, r, v);
    set_vapor(fluid, r, v);
}

void vapor_only(const Fluid& fluid, VolumeResult& r) {
    r.msg = "EOS for the V-phase only!";
    r.Bvirial = VirialB(fluid, r.T);
    const double v = RGas * r.T / r.p + r.Bvirial;
    if (!(v > 0.0) || !std::isfinite(v)) {
        r.reason = Reason::volume_not_positive;
        return;
    }
    r.VFlag = true;
    set_vapor(fluid, r, v);
}

void one_root(const Fluid& fluid, VolumeResult& r, double v) {
    const double vcr = fluid.eos.vcrEOS;
    bool supercritical = false;
    r.msg = "one solution of the EOS";
    if (r.PhaseRegion == 0) {
        if (v < vcr) {
            r.LFlag = true;
            set_liquid(fluid, r, v);
        } else {
            r.VFlag = true;
            set_vapor(fluid, r, v);
        }
    } else {
        supercritical = r.PhaseRegion != 4;
        set_both(fluid, r, v);
        if (supercritical) r.msg = "one solution of the EOS;supercritical";
    }
    if (std::fabs(v - vcr) < CriticalVolumeBand) {
        r.PhaseRegion = 4;
        set_both(fluid, r, v);
        r.msg = supercritical ? "one solution of the EOS;supercritical; critical"
                              : "one solution of the EOS; critical";
    }
}

void three_roots(const Fluid& fluid, VolumeResult& r) {
    const auto& v = r.roots.VRoot;
    const double b = r.eos.b;
    if (!(v[2] - b >= SmallestRatio * (v[1] - b) && v[1] - b >= SmallestRatio * (v[0] - b))) {
        r.msg = "No solution found";
        r.reason = Reason::roots_not_separate;
        return;
    }
    const Areas areas = MaxwellDiff(r.eos, r.roots, r.p);
    if (areas.reason != Reason::none) {
        r.msg = "No solution found";
        r.reason = areas.reason;
        return;
    }
    r.msg = "3 V solutions of the EOS";
    set_vapor(fluid, r, v[2]);
    set_liquid(fluid, r, v[0]);
    r.fd = areas.fd;
    r.g1 = areas.g1;
    r.g2 = areas.g2;
    const bool saturated = std::fabs(r.fd) < SaturationBand && !(r.T > fluid.substance.Tcr);
    r.VFlag = saturated || r.fd >= SaturationBand || r.T > fluid.substance.Tcr;
    r.LFlag = saturated || !r.VFlag;
}

}  // namespace

std::int16_t phase_region(const Fluid& fluid, double T, double p) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    if (!(Tcr > 0.0) || !(pcr > 0.0)) return 0;
    if (equal_single(T, Tcr) && equal_single(p, pcr)) return 4;
    constexpr std::int16_t regions[2][2] = {{0, 1}, {3, 2}};
    return regions[above_single(T, Tcr)][above_single(p, pcr)];
}

CubicRoots CubicV(const EosAtT& eos, double p) {
    // v^3 + (c + d - A) v^2 + (c d + a/p - (c + d) A) v - a b/p - c d A = 0 with A = R T/p + b
    const double ip = 1.0 / p, A = RGas * eos.T * ip + eos.b, ap = eos.a * ip;
    const double sum_cd = eos.c + eos.d, product_cd = eos.c * eos.d;
    const Cubic f{.q2 = sum_cd - A, .q1 = product_cd + ap - sum_cd * A, .q0 = -eos.b * ap - product_cd * A};
    const double lowest = std::max(eos.b, 0.0);
    CubicRoots r;
    const double first = outer_root(f, eos, A);
    if (!std::isfinite(first)) {
        r.reason = Reason::not_settled;
        return r;
    }
    // Deflation to v^2 - sum v + product = 0 from the side that does not cancel (Kahan 1986).
    double sum = 0.0, product = 0.0;
    if (std::fabs(first * first * first) > std::fabs(f.q0)) {
        const double inverse = 1.0 / first;
        product = -f.q0 * inverse;
        sum = (f.q1 - product) * inverse;
    } else {
        sum = -(first + f.q2);
        product = f.q1 - sum * first;
    }
    const double half = 0.5 * sum, D = half * half - product;
    double largest = first;
    if (D >= 0.0) {
        const double large = half + std::copysign(std::sqrt(D), half);
        double x = first, y = polished(f, large), z = large != 0.0 ? polished(f, product / large) : 0.0;
        if (x > y) std::swap(x, y);
        if (y > z) std::swap(y, z);
        if (x > y) std::swap(x, y);
        largest = z;
        if (x > lowest) {
            r.VRoot = {x, y, z};
            r.nRoots = 3;
            return r;
        }
    }
    // Only a volume above b is a physical one; of three, one or three are.
    if (!(largest > lowest)) {
        r.reason = Reason::no_root_above_b;
        return r;
    }
    r.VRoot[0] = largest;
    r.nRoots = 1;
    return r;
}

VolumeResult VolumeTp(const Fluid& fluid, double T, double p) {
    if (!(T >= TinyT) || !std::isfinite(T)) return {.T = T, .p = p, .reason = Reason::T_not_positive};
    if (!(p > 0.0) || !std::isfinite(p)) return {.T = T, .p = p, .reason = Reason::p_not_positive};
    if (!fluid.has_eos()) return {.T = T, .p = p, .reason = fluid.eos_reason};
    const EosAtT eos = EOSParT(fluid, T);
    VolumeResult r{.T = T,
                   .p = p,
                   .PhaseRegion = phase_region(fluid, T, p),
                   .eos = eos,
                   .roots = fluid.VPhaseOnly ? CubicRoots{} : CubicV(eos, p)};
    r.nRoots = r.roots.nRoots;
    r.reason = r.roots.reason;
    if (fluid.VPhaseOnly) {
        vapor_only(fluid, r);
    } else if (r.nRoots == 1) {
        one_root(fluid, r, r.roots.VRoot[0]);
    } else if (r.nRoots == 3 && r.PhaseRegion == 4) {
        // At the critical point the three roots are one within rounding.
        r.roots = {.VRoot = {r.roots.VRoot[1], 0.0, 0.0}, .nRoots = 1};
        r.nRoots = 1;
        one_root(fluid, r, r.roots.VRoot[0]);
    } else if (r.nRoots == 3) {
        three_roots(fluid, r);
    }
    return r;
}

VirialDerivatives virial_derivatives(const Fluid& fluid, double T) {
    VirialDerivatives r;
    if (!(T >= TinyT) || !fluid.has_eos()) return r;
    const EosFamily family = fluid.eos_row().family;
    if (family == EosFamily::manual) {  // B = b0 - b1/T^b2
        const double m = fluid.eos.EOSm, part = fluid.eos.EOSnb / std::pow(T, m);
        r.B = fluid.eos.EOSb - part;
        r.B1 = m * part / T;
        r.B2 = -(m + 1.0) * r.B1 / T;
    } else if (family == EosFamily::pitzer_curl) {
        // B pcr/(R Tcr) = f0 + omega f1 with u = Tcr/T
        const double Tcr = fluid.substance.Tcr, omega = fluid.substance.omega;
        const double u = Tcr / T, u2 = u * u, u3 = u2 * u, u8 = u3 * u3 * u2;
        const double f0 = 0.1445 - 0.33 * u - 0.1385 * u2 - 0.0121 * u3;
        const double f1 = 0.073 + 0.46 * u - 0.5 * u2 - 0.097 * u3 - 0.0073 * u8;
        // -u df/du and u d(u df/du)/du + u df/du
        const double f0s = 0.33 * u + 0.277 * u2 + 0.0363 * u3;
        const double f0t = 0.66 * u + 0.831 * u2 + 0.1452 * u3;
        const double f1s = -0.46 * u + u2 + 0.291 * u3 + 0.0584 * u8;
        const double f1t = -0.92 * u + 3.0 * u2 + 1.164 * u3 + 0.5256 * u8;
        const double scale = RGas * Tcr / fluid.substance.pcr;
        r.B = (f0 + omega * f1) * scale;
        r.B1 = scale / T * (f0s + omega * f1s);
        r.B2 = -scale / (T * T) * (f0t + omega * f1t);
    } else if (family == EosFamily::virial || family == EosFamily::tovarn_ji) {  // B = b - a/(R T)
        const auto [at, k] = EOSTerme(fluid, T);
        r.B = at.b - at.a / (RGas * T);
        r.B1 = (at.a / T - k.a1) / (RGas * T) + k.b1;
        r.B2 = k.b2 - (2.0 * (at.a / T - k.a1) + T * k.a2) / (RGas * T) / T;
    }
    return r;
}

double VirialB(const Fluid& fluid, double T) {
    const EosFamily family = fluid.eos_row().family;
    if (family == EosFamily::ideal_gas || family == EosFamily::cubic) return 0.0;
    if (family != EosFamily::virial) return virial_derivatives(fluid, T).B;
    if (!(T >= TinyT) || !fluid.has_eos()) return 0.0;
    const EosAtT at = EOSParT(fluid, T);
    return at.b - at.a / (RGas * T);
}

PressureResult pTv(const Fluid& fluid, double T, double v) {
    PressureResult r;
    if (!fluid.has_eos()) {
        r.reason = fluid.eos_reason;
        return r;
    }
    if (!(T >= TinyT)) {
        r.reason = Reason::T_not_positive;
        return r;
    }
    if (fluid.VPhaseOnly) {
        r.bound = VirialB(fluid, T);
        if (!(v > r.bound) || !(v > 0.0)) {
            r.reason = Reason::volume_below_B;
            return r;
        }
        r.p = RGas * T / (v - r.bound);
    } else {
        const EosAtT at = EOSParT(fluid, T);
        r.bound = at.b;
        if (!(v > r.bound) || !(v > 0.0)) {
            r.reason = Reason::volume_below_b;
            return r;
        }
        r.p = pressure_at(at, v);
    }
    if (!std::isfinite(r.p)) {
        r.p = 0.0;
        r.reason = Reason::not_finite;
    }
    return r;
}

namespace {

// T of the ideal gas or a virial equation: Newton's iteration on F(T) = (v - B(T)) p/R - T, kept between a T
// with F > 0 and one with F < 0. B rises with T, so that F falls and has one zero.
double TpV_vapor_only(const Fluid& fluid, double p, double v) {
    const double ideal = v * p / RGas;
    const auto F = [&](const VirialDerivatives& B, double T) { return (v - B.B) * p / RGas - T; };
    double lo = 0.0, hi = 0.0, T = ideal;
    for (int round = 0; round < MaxRounds; ++round) {
        const VirialDerivatives B = virial_derivatives(fluid, T);
        const double here = F(B, T);
        if (!std::isfinite(here)) return 0.0;
        (here > 0.0 ? lo : hi) = T;
        const double dT = -here / (-B.B1 * p / RGas - 1.0);
        double next = T + dT;
        const bool outside = !(next > lo) || (hi > 0.0 && !(next < hi));
        if (outside || !std::isfinite(next)) next = hi > 0.0 ? 0.5 * (lo + hi) : 2.0 * T;
        if (next < TinyT || !std::isfinite(next)) return 0.0;
        const double step = std::fabs(next - T);
        T = next;
        if (step <= 1e-12 * T) return T;
    }
    return T;
}

// T of the cubic equation taken as it is: Newton's iteration on F(T) = (a/((v + d)(v + c)) + p)(v - b)/R - T.
double TpV_plain(const Fluid& fluid, double p, double v, double T) {
    for (int round = 0; round < 2000; ++round) {
        const auto [at, k] = EOSTerme(fluid, T);
        const double N = (v + at.c) * (v + at.d), Nt = (v + at.d) * k.c1 + (v + at.c) * k.d1;
        const double D = v - at.b, inner = at.a / N + p;
        const double F = inner * D / RGas - T;
        const double slope = ((k.a1 - at.a * Nt / N) / N * D - inner * k.b1) / RGas - 1.0;
        const double dT = -F / slope;
        if (!std::isfinite(dT)) return 0.0;
        const double next = T + dT;
        T = next > TinyT ? next : 0.5 * T;  // a step beyond T = 0 is halved
        // Below b the equation has no state, although F may have a zero there.
        if (std::fabs(dT) <= 1e-11 * T) return v > EOSParT(fluid, T).b ? T : 0.0;
        if (T < TinyT) return 0.0;
    }
    return 0.0;
}

// Whether the equation has v as a stable volume at T and p.
bool is_stable(const Fluid& fluid, double T, double p, double v) {
    const VolumeResult r = VolumeTp(fluid, T, p);
    const auto near = [&](double x) { return std::fabs(x - v) <= 1e-3 * v; };
    return r.reason == Reason::none && ((r.LFlag && near(r.vL)) || (r.VFlag && near(r.vV)));
}

double TpV_cubic(const Fluid& fluid, double p, double v, bool skipTwoPhase) {
    const double Tcr = fluid.substance.Tcr, pcr = fluid.substance.pcr;
    double start = above_single(pcr, p) ? static_cast<double>(fluid.substance.Tnb) : Tcr;
    if (start < TinyT) start = 0.7 * Tcr;
    const double T = TpV_plain(fluid, p, v, start);
    if (T >= Tcr || skipTwoPhase) return T;
    if (T > 0.0) {
        const CubicRoots roots = CubicV(EOSParT(fluid, T), p);
        if (roots.reason == Reason::none && roots.nRoots < 2) return T;
    }
    // Inside the dome the state is two-phase: T = T(LV)(p).
    if (p < pcr) {
        const Saturation boiling = TLV_EOS(fluid, p);
        if (boiling.found()) return v > boiling.vL && v < boiling.vV ? boiling.T : T;
    }
    return T > 0.0 && is_stable(fluid, T, p, v) ? T : 0.0;
}

}  // namespace

TemperatureResult TpV(const Fluid& fluid, double p, double rho, bool skipTwoPhase) {
    TemperatureResult r;
    if (!fluid.has_eos()) {
        r.reason = fluid.eos_reason;
    } else if (!(p > 0.0) || !std::isfinite(p)) {
        r.reason = Reason::p_not_positive;
    } else if (!(rho > 0.0) || !std::isfinite(rho)) {
        r.reason = Reason::rho_not_positive;
    } else if (!(fluid.M > 0.0)) {
        r.reason = Reason::no_molar_mass;
    } else {
        const double v = fluid.M / rho;
        r.T = fluid.VPhaseOnly ? TpV_vapor_only(fluid, p, v) : TpV_cubic(fluid, p, v, skipTwoPhase);
        if (!(r.T > 0.0)) {
            r.T = 0.0;
            r.reason = Reason::no_T_at_p_rho;
        }
    }
    return r;
}

namespace {

// d2p/dv2 of the cubic isotherm at v.
double curvature(const EosAtT& at, double v) {
    const double D = v - at.b, N = (v + at.c) * (v + at.d), sum = at.c + at.d;
    return 2.0 *
           (RGas * at.T / (D * D * D) - at.a * (3.0 * v * (v + sum) + sum * sum - at.c * at.d) / (N * N * N));
}

// One walk along v from start, in steps that shrink tenfold at each change of sign of d2p/dv2.
struct InflectionWalk {
    double v = 0, d2 = 0;
    bool found = false;
};

InflectionWalk walk(const EosAtT& at, double start, double previous) {
    InflectionWalk w{.v = start};
    double step = 0.0002;  // [m^3/kmol]
    for (int count = 1; count < 12000; ++count) {
        w.v += step;
        w.d2 = curvature(at, w.v);
        if (w.d2 == 0.0 || !std::isfinite(w.d2)) return w;
        const bool same_sign = previous / w.d2 > 0.0;
        previous = w.d2;
        if (same_sign) continue;
        step *= -0.1;
        if (std::fabs(step) < 1e-12) {
            w.found = true;
            return w;
        }
    }
    return w;
}

}  // namespace

Inflection InflectionV(const Fluid& fluid, double T) {
    Inflection r;
    if (!fluid.has_eos() || fluid.VPhaseOnly || !(T >= TinyT)) {
        r.reason = !fluid.has_eos()   ? fluid.eos_reason
                   : fluid.VPhaseOnly ? Reason::no_solution
                                      : Reason::T_not_positive;
        return r;
    }
    const EosAtT at = EOSParT(fluid, T);
    const auto take = [&](int k, const InflectionWalk& w) {
        r.v[k] = w.v;
        r.pv[k] = pTv(fluid, T, w.v).p;
        r.d2[k] = w.d2;
    };
    InflectionWalk w = walk(at, at.b, 0.1);
    if (!w.found) {
        r.reason = Reason::no_solution;
        return r;
    }
    take(0, w);
    const double start = w.v + 1e-6;
    w = walk(at, start - 0.0002, curvature(at, start));
    if (w.found) take(1, w);  // one inflection found is a valid result
    return r;
}

}  // namespace quom
