#include "engine/volume_solver.h"

#include <algorithm>
#include <cmath>

#include "engine/eos_parameters.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"

namespace quom {
namespace {

constexpr double CriticalVolumeBand = 0.001;  // [m^3/kmol], absolute for every substance
constexpr double SaturationBand = 0.001;      // |fd| below it: the state lies on the saturation curve

// v^3 + q2 v^2 + q1 v + q0 = 0
struct Cubic {
    double q2, q1, q0;
    double value(double x) const { return ((x + q2) * x + q1) * x + q0; }
    double slope(double x) const { return (3.0 * x + 2.0 * q2) * x + q1; }
};

// Newton's iteration from x; true when |dx/x| came below 5e-7, with one more step taken then.
// A walk that does not come nearer for ten rounds hops between the two humps and is given up.
bool newton(const Cubic& f, double& x) {
    double smallest = HUGE_VAL;
    int idle = 0;
    for (int round = 0; round < 200; ++round) {
        const double slope = f.slope(x);
        if (std::fabs(slope) < 1e-80) return false;
        const double dx = -f.value(x) / slope;
        x += dx;
        const double size = std::fabs(dx);
        if (size <= 5e-7 * std::fabs(x)) {
            const double last = f.slope(x);
            if (std::fabs(last) > 1e-80) {
                const double polish = -f.value(x) / last;
                if (std::fabs(polish) <= size) x += polish;
            }
            return std::isfinite(x);
        }
        if (!std::isfinite(x)) return false;
        idle = size < 0.9 * smallest ? 0 : idle + 1;
        smallest = std::min(smallest, size);
        if (idle > 10) return false;
    }
    return false;
}

// One Newton step on a root of the deflated quadratic, taken when it only polishes.
double polished(const Cubic& f, double x) {
    const double dx = -f.value(x) / f.slope(x);
    return std::fabs(dx) < 1e-6 * std::fabs(x) ? x + dx : x;
}

bool equal_single(double x, double y) { return static_cast<float>(x) == static_cast<float>(y); }
bool less_single(double x, double y) { return static_cast<float>(x) < static_cast<float>(y); }

// Region of the phase diagram; p is compared with pcr in single precision, T in double.
std::int16_t region_of(const Session& s, double T, double p) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    const bool p_equal = equal_single(p, pcr), p_below = less_single(p, pcr);
    if ((p_equal && T == Tcr) || (p_below && T < Tcr)) return 0;
    if (T > Tcr && !p_equal && !p_below) return 2;
    if (T <= Tcr && !p_below) return 1;
    return 3;
}

double density(const Session& s, double v) {
    return v > 0.0 ? static_cast<double>(s.substance.MolMass) / v : 0.0;
}

void set_liquid(const Session& s, VolumeResult& r, double v) { r.vL = v, r.rhoL = density(s, v); }
void set_vapor(const Session& s, VolumeResult& r, double v) { r.vV = v, r.rhoV = density(s, v); }

VolumeResult vapor_only(Session& s, double T, double p) {
    VolumeResult r;
    r.msg = "EOS for the V-phase only!";
    r.PhaseRegion = s.scratch.PhaseRegion;
    s.scratch.Bvirial = VirialB(s, s.models.EOSKode, T);
    const double v = RGas * T / p + s.scratch.Bvirial;
    if (!(v > 0.0) || !std::isfinite(v)) {
        r.err = -1;
        return r;
    }
    r.VFlag = true;
    set_vapor(s, r, v);
    return r;
}

void one_root(const Session& s, VolumeResult& r, double T, double p) {
    const double v = s.scratch.VRoot[0], vcr = s.eos.vcrEOS;
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    r.msg = "one solution of the EOS";
    bool supercritical = false;
    if (T == Tcr && p == pcr) {
        r.LFlag = r.VFlag = true;
        set_liquid(s, r, v), set_vapor(s, r, v);
    } else if (T <= Tcr && p <= pcr) {
        if (v < vcr) r.LFlag = true, set_liquid(s, r, v);
        if (v > vcr) r.VFlag = true, set_vapor(s, r, v);
    } else {
        supercritical = true;
        r.LFlag = r.VFlag = true;
        set_liquid(s, r, v), set_vapor(s, r, v);
        r.msg = "one solution of the EOS;supercritical";
    }
    if (std::fabs(v - vcr) < CriticalVolumeBand) {
        r.PhaseRegion = 4;
        r.LFlag = r.VFlag = true;
        set_liquid(s, r, v), set_vapor(s, r, v);
        r.msg = supercritical ? "one solution of the EOS;supercritical; critical"
                              : "one solution of the EOS; critical";
    }
}

void three_roots(Session& s, VolumeResult& r, double T, double p) {
    const auto& v = s.scratch.VRoot;
    const double b = s.scratch.bT;
    if (!((v[2] - b) / (v[1] - b) >= 1e-6 && (v[1] - b) / (v[0] - b) >= 1e-6 && v[0] > b)) {
        r.msg = "No solution found";
        r.err = -1;
        return;
    }
    r.msg = "3 V solutions of the EOS";
    set_vapor(s, r, v[2]), set_liquid(s, r, v[0]);
    const Areas areas = MaxwellDiff(s, T, p);
    r.fd = areas.fd, r.g1 = areas.g1, r.g2 = areas.g2, r.err = areas.err;
    if (r.err) return;
    if (std::fabs(r.fd) < SaturationBand) r.LFlag = r.VFlag = true;
    if (r.fd >= SaturationBand || (r.fd < SaturationBand && T > s.substance.Tcr)) {
        r.VFlag = true, r.LFlag = false;
    } else if (r.fd <= -SaturationBand) {
        r.LFlag = true, r.VFlag = false;
    }
}

}  // namespace

CubicRoots CubicV(Session& s, double T, double p) {
    Scratch& x = s.scratch;
    x.VRoot = {0.0, 0.0, 0.0};
    const double a = x.aT, b = x.bT, c = x.cT, d = x.dT;
    const double A = RGas * T / p;
    const Cubic f{
        .q2 = d + c - (b + A), .q1 = d * c + a / p - (d + c) * (b + A), .q0 = -a * b / p - d * c * (b + A)};
    double first = A;
    if (!newton(f, first)) {
        first = 2.0 * b;
        if (!newton(f, first)) return {.nRoots = 0, .err = -1};
    }
    // Deflation to v^2 - sum v + product = 0 from the side that does not cancel (Kahan 1986).
    double sum, product;
    if (std::fabs(first * first * first) > std::fabs(f.q0)) {
        product = -f.q0 / first;
        sum = (f.q1 - product) / first;
    } else {
        sum = -(first + f.q2);
        product = f.q1 - sum * first;
    }
    const double half = 0.5 * sum, D = half * half - product;
    double root[3] = {first, 0.0, 0.0};
    int n = 1;
    if (D >= 0.0) {
        const double large = half + std::copysign(std::sqrt(D), half);
        root[1] = polished(f, large);
        root[2] = large != 0.0 ? polished(f, product / large) : 0.0;
        n = 3;
        if (root[0] > root[1]) std::swap(root[0], root[1]);
        if (root[1] > root[2]) std::swap(root[1], root[2]);
        if (root[0] > root[1]) std::swap(root[0], root[1]);
    }
    if (n == 3 && root[0] > b) {
        x.VRoot = {root[0], root[1], root[2]};
        return {.nRoots = 3, .err = 0};
    }
    // Only a volume above b is a physical one; of three, one or three are.
    x.VRoot[0] = n == 3 ? root[2] : root[0];
    return {.nRoots = 1, .err = 0};
}

VolumeResult VolumeTp(Session& s, double T, double p) {
    VolumeResult r;
    if (!(p > 0.0) || !(T >= TinyT) || !std::isfinite(T) || !std::isfinite(p)) {
        r.err = -1;
        return r;
    }
    if (s.models.VPhaseOnly) return vapor_only(s, T, p);
    r.PhaseRegion = region_of(s, T, p);
    s.scratch.PhaseRegion = r.PhaseRegion;
    EOSParT(s, T);
    const CubicRoots roots = CubicV(s, T, p);
    r.nRoots = roots.nRoots, r.err = roots.err;
    if (r.err) return r;
    if (!(s.scratch.VRoot[0] > s.scratch.bT)) {
        r.err = -1;
        return r;
    }
    if (r.nRoots < 2) {
        one_root(s, r, T, p);
    } else {
        three_roots(s, r, T, p);
    }
    s.scratch.PhaseRegion = r.PhaseRegion;
    return r;
}

double VirialB(Session& s, int code, double T) {
    if (!(T >= TinyT)) return 0.0;
    Scratch& x = s.scratch;
    if (code == eos_ideal_gas) {
        x.aT = x.bT = x.cT = x.dT = 0.0;
        return 0.0;
    }
    if (code == eos_pitzer_curl) {
        // B pcr/(R Tcr) = f0 + omega f1
        const double u = s.substance.Tcr / T;
        const double u2 = u * u, u3 = u2 * u, u8 = u3 * u3 * u2;
        const double f0 = 0.1445 - 0.33 * u - 0.1385 * u2 - 0.0121 * u3;
        const double f1 = 0.073 + 0.46 * u - 0.5 * u2 - 0.097 * u3 - 0.0073 * u8;
        return (f0 + s.substance.omega * f1) * RGas * s.substance.Tcr / s.substance.pcr;
    }
    EOSParT(s, T);
    if (code == eos_virial_manual) return s.eos.EOSb - s.eos.EOSnb / std::pow(T, s.eos.EOSm);
    const bool cubic_parent = code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2 ||
                              (code >= eos_virial_first && code <= eos_virial_last);
    return cubic_parent ? x.bT - x.aT / (RGas * T) : 0.0;  // B = b - a/(R T)
}

PressureResult pTv(Session& s, double T, double v) {
    Scratch& x = s.scratch;
    if (s.models.VPhaseOnly) x.bT = VirialB(s, s.models.EOSKode, T);
    if (!(v > x.bT)) return {.p = 0.0, .err = -1};
    double p;
    if (s.models.VPhaseOnly) {
        p = RGas * T / (v - x.bT);
    } else {
        EOSParT(s, T);
        p = RGas * T / (v - x.bT) - x.aT / (v + x.cT) / (v + x.dT);
    }
    if (!std::isfinite(p)) return {.p = 0.0, .err = -1};
    return {.p = p, .err = 0};
}

namespace {

// T of the ideal gas or a virial equation: T = (v - B(T)) p/R by repetition.
double TpV_vapor_only(Session& s, double p, double v) {
    double T = v * p / RGas;
    for (int round = 0; round <= 1000; ++round) {
        const double old = T;
        T = (v - VirialB(s, s.models.EOSKode, old)) * p / RGas;
        if (!(T >= 0.0)) return 0.0;
        if (std::fabs(T - old) < 0.001) return T;
    }
    return 0.0;
}

// T of the cubic equation taken as it is: Newton on F(T) = (a/((v + d)(v + c)) + p)(v - b)/R - T.
double TpV_plain(Session& s, double p, double v, double T) {
    const auto F = [&](double at) {
        EOSParT(s, at);
        const Scratch& x = s.scratch;
        return (x.aT / ((v + x.dT) * (v + x.cT)) + p) * (v - x.bT) / RGas - at;
    };
    for (int round = 0; round <= 2000; ++round) {
        const double here = F(T);
        const double slope = (F(T + 1e-6) - here) / 1e-6;
        const double dT = -here / slope;
        if (!std::isfinite(dT)) return 0.0;
        const double next = T + dT;
        T = next > TinyT ? next : 0.5 * T;  // a step beyond T = 0 is halved
        // Below b the equation has no state, although F may have a zero there.
        if (std::fabs(dT) <= 1e-5 * T) return v > s.scratch.bT ? T : 0.0;
        if (T < TinyT) return 0.0;
    }
    return 0.0;
}

// Whether the equation has v at T and p, or v lies between the saturated volumes at T. The stop of the search
// for T(LV) at small p leaves up to 2 % in p.
bool fits(Session& s, double T, double p, double v) {
    const Saturation sat = pLV_EOS(s, T);
    const bool dome = sat.err == 0;
    const double vL = s.scratch.VRoot[0], vV = s.scratch.VRoot[2];
    if (dome && v > vL && v < vV) return std::fabs(sat.value - p) < 0.03 * p;
    const VolumeResult r = VolumeTp(s, T, p);
    if (r.err) return false;
    const auto near = [&](double x) { return std::fabs(x - v) <= 1e-3 * v; };
    return (r.LFlag && near(r.vL)) || (r.VFlag && near(r.vV));
}

}  // namespace

double TpV(Session& s, double p, double rho, bool skipTwoPhase) {
    if (!(p > 0.0) || !(rho > 0.0)) return 0.0;
    const double v = static_cast<double>(s.substance.MolMass) / rho;
    if (s.models.VPhaseOnly) return TpV_vapor_only(s, p, v);
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    double start = less_single(p, pcr) ? static_cast<double>(s.substance.Tnb) : Tcr;
    if (start < TinyT) start = 0.7 * Tcr;
    const double T = TpV_plain(s, p, v, start);
    if (T >= Tcr) return T;
    if (skipTwoPhase) return T > 0.0 ? T : 0.0;
    if (T > 0.0) {
        EOSParT(s, T);
        const CubicRoots roots = CubicV(s, T, p);
        if (roots.err == 0 && roots.nRoots < 2) return T;
        // A failed search for p(LV) tells nothing about the dome; the state goes on as one inside of it.
        const bool dome = pLV_EOS(s, T).err == 0;
        if (dome && (v <= s.scratch.VRoot[0] || v >= s.scratch.VRoot[2])) return T;
    }
    // Inside the dome the state is two-phase: T = T(LV)(p).
    const Saturation boiling = TLV_EOS(s, p);
    if (boiling.err == 0 && fits(s, boiling.value, p, v)) return boiling.value;
    return T > 0.0 && fits(s, T, p, v) ? T : 0.0;
}

namespace {

// One walk along v from start, in steps that shrink at each change of sign of d2p/dv2.
struct InflectionWalk {
    double v = 0, p = 0, d2 = 0;
    std::int16_t err = 0;
};

double curvature(Session& s, double T, double v, int phase, double& p) {
    p = pTv(s, T, v).p;
    PhaseArrays arrays;
    ThermoReal(s, phase, T, p, v, CubicTerme(s, T), arrays);
    return arrays.Deriv2A[phase][d2pdv2];
}

InflectionWalk walk(Session& s, double T, int phase, double start, double previous) {
    InflectionWalk w{.v = start};
    double step = 0.0002;
    for (int count = 0;;) {
        w.v += step;
        w.d2 = curvature(s, T, w.v, phase, w.p);
        if (w.d2 == 0.0 || !std::isfinite(w.d2)) {
            w.err = -1;
            return w;
        }
        const double ratio = previous / w.d2;
        previous = w.d2;
        ++count;
        if (ratio > 0.0 && count < 12000) continue;
        step *= -0.1;
        if (count >= 12000) {
            w.err = -1;
            return w;
        }
        if (std::fabs(step) < 1e-12) return w;
    }
}

}  // namespace

Inflection InflectionV(Session& s, double T, int phase) {
    Inflection r;
    EOSParT(s, T);
    InflectionWalk w = walk(s, T, phase, s.scratch.bT, 0.1);
    if (w.err) {
        r.err = -1;
        return r;
    }
    r.v[0] = w.v, r.pv[0] = w.p, r.d2[0] = w.d2;
    double p = 0.0;
    const double start = w.v + 1e-6;
    const double previous = curvature(s, T, start, phase, p);
    w = walk(s, T, phase, start - 0.0002, previous);
    if (w.err == 0) r.v[1] = w.v, r.pv[1] = w.p, r.d2[1] = w.d2;
    return r;  // one inflection found is a valid result
}

}  // namespace quom
