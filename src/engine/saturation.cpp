#include "engine/saturation.h"

#include <cmath>

#include "engine/eos_parameters.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double SmallestP = 1e-10;  // [kPa], below it a search for p starts anew or is refused

// Side of the saturation curve of a state without three roots: the volume of a vapor-like root, -1 for a
// liquid-like one.
double indicator_of(const Session& s) {
    return s.scratch.VRoot[0] < s.eos.vcrEOS ? -1.0 : s.scratch.VRoot[0];
}
bool liquid_like(const Session& s) { return s.scratch.VRoot[0] < s.eos.vcrEOS; }

bool refused(const Session& s) { return s.models.EOSKode < 0 || s.models.VPhaseOnly; }

void take(Saturation& r, const Areas& areas) { r.fd = areas.fd, r.g1 = areas.g1, r.g2 = areas.g2; }

// Saturated volumes at the critical point: deliberately 1/rho; callers at Tcr take v from rhocrEOS
// themselves.
void critical_volumes(Session& s) {
    if (s.eos.rhocrEOS > 0.0) s.scratch.VRoot[0] = 1.0 / s.eos.rhocrEOS;
    s.scratch.VRoot[2] = s.scratch.VRoot[0];
}

// So near to the critical point that the three roots are one in double precision (1e-7 of Tcr or pcr),
// saturation is the critical point itself; both volumes are that root.
constexpr double CriticalBand = 1e-7;
Saturation critical_saturation(Session& s, double T, double p, double value) {
    EOSParT(s, T);
    const CubicRoots roots = CubicV(s, T, p);
    if (roots.err) return {.err = -1};
    s.scratch.VRoot[2] = s.scratch.VRoot[0];
    return {.value = value};
}

// Roots at (T, p) and, where there are three, the areas. state: 3 three roots, 1 one root, 0 none above b.
int roots_and_areas(Session& s, double T, double p, Areas& areas) {
    const CubicRoots roots = CubicV(s, T, p);
    if (roots.err || !(s.scratch.VRoot[0] > s.scratch.bT)) return 0;
    if (roots.nRoots < 2) return 1;
    areas = MaxwellDiff(s, T, p);
    return 3;
}

// The secant search for p at T from a start value [kPa]. err -1 when it does not settle: value is then the p
// of the last round.
Saturation search_p(Session& s, double T, double p) {
    const double pcr = s.substance.pcr;
    Saturation r;
    double dp = 0.0, p_old = 0.0, fd_old = 0.0, previous = 0.0;
    int one = 0, three = 0, restarts = 0;
    for (int round = 1; round <= 300; ++round) {
        Areas areas;
        const int roots = roots_and_areas(s, T, p, areas);
        r.value = p;
        if (roots == 0 || areas.err) return {.err = -1};
        if (roots == 1) {
            const double indicator = indicator_of(s);
            if (++one == 1) {
                dp *= 0.1;
                if (std::fabs(dp) < 1e-5) dp = -0.01 * p;
            } else if (previous * indicator < 1e-6) {
                dp *= 0.1;
            }
            dp = std::copysign(dp, liquid_like(s) ? -1.0 : 1.0);
            previous = indicator;
        } else {
            one = 0;
            take(r, areas);
            if (++three == 1) {
                if (std::fabs(dp) < 1e-5) dp = 0.01 * p;
                dp = std::copysign(dp, areas.fd);
            } else {
                if (std::fabs(areas.fd) < 1e-5) return r;
                if (std::fabs(areas.fd - fd_old) <= 1e-11) {
                    dp = areas.fd < fd_old ? -0.01 * p : 0.01 * p;
                } else {
                    dp = -(p - p_old) * areas.fd / (areas.fd - fd_old);
                }
                if (std::fabs(dp / p) < 1e-10 || !std::isfinite(dp)) break;
            }
            p_old = p, fd_old = areas.fd;
        }
        p += dp;
        if (static_cast<float>(p) == static_cast<float>(pcr)) {
            if (roots == 3) return r;
            break;
        }
        if (p < SmallestP) {
            p = 0.01 / ++restarts;
            dp = (p_old - p) * 0.1;
        }
    }
    r.err = -1;
    return r;
}

// Bisection for p at T; fd > 0 or a vapor-like only root raises p. err -1 without three roots at the end.
Saturation bisect_p(Session& s, double T) {
    double lo = SmallestP, hi = s.substance.pcr;
    for (int round = 0; round < 200; ++round) {
        const double p = hi > 4.0 * lo ? std::sqrt(lo * hi) : 0.5 * (lo + hi);
        Areas areas;
        const int roots = roots_and_areas(s, T, p, areas);
        if (roots == 0 || areas.err) return {.err = -1};
        const bool settled = roots == 3 && std::fabs(areas.fd) < 1e-5;
        if (settled || hi - lo < 1e-12 * hi) {
            Saturation r{.value = p, .err = static_cast<std::int16_t>(roots == 3 ? 0 : -1)};
            take(r, areas);
            return r;
        }
        const bool raise = roots == 3 ? areas.fd > 0.0 : !liquid_like(s);
        (raise ? lo : hi) = p;
    }
    return {.err = -1};
}

// The secant search for T at p. err -1 when it does not settle.
Saturation search_T(Session& s, double p, double T) {
    const double Tcr = s.substance.Tcr;
    Saturation r;
    double dT = 0.0, T_old = 0.0, fd_old = 0.0, previous = 0.0;
    int one = 0, three = 0, restarts = 0;
    for (int round = 1; round <= 200; ++round) {
        EOSParT(s, T);
        Areas areas;
        const int roots = roots_and_areas(s, T, p, areas);
        r.value = T;
        if (roots == 0 || areas.err) return {.err = -1};
        if (roots == 1) {
            const double indicator = indicator_of(s);
            if (++one == 1) {
                dT *= 0.1;
                if (std::fabs(dT) < 1e-9) dT = 0.01 * T;
            } else if (previous * indicator < 0.0) {
                dT *= 0.1;
            }
            dT = std::copysign(dT, liquid_like(s) ? 1.0 : -1.0);
            previous = indicator;
        } else {
            one = 0;
            take(r, areas);
            if (++three == 1) {
                if (std::fabs(dT) < 1e-9) dT = 0.01 * T;
                dT = std::copysign(dT, -areas.fd);
            } else {
                if (std::fabs(areas.fd) < 5e-5) return r;
                if (std::fabs(areas.fd - fd_old) <= 1e-7) {
                    dT = areas.fd > fd_old ? -0.01 * T : 0.01 * T;
                } else {
                    dT = -(T - T_old) * areas.fd / (areas.fd - fd_old);
                    if (std::fabs(dT) > 0.01 * T) dT = std::copysign(0.01 * T, dT);
                }
                if (std::fabs(dT / T) < 1e-12 || !std::isfinite(dT)) break;
            }
            T_old = T, fd_old = areas.fd;
        }
        T += dT;
        if (std::fabs(T - Tcr) < 0.0001) {
            if (roots == 3) return r;
            break;
        }
        if (T < 1e-10) {
            T = 0.01 / ++restarts;
            dT = (T_old - T) * 0.1;
        }
    }
    r.err = -1;
    return r;
}

// The walk down from Tcr for a p far below pcr, where a secant start would be poor: the step turns and
// shrinks at each change of sign of fd. Its size in K is taken from the pressure difference in kPa on
// purpose.
Saturation scan_T(Session& s, double p) {
    const double Tcr = s.substance.Tcr;
    double dT = (s.substance.pcr - p) / 100.0, T = Tcr + dT, fd_old = p;
    for (int round = 0; round < 2000; ++round) {
        T -= dT;
        while (T <= 0.0) {
            T += dT;
            dT *= 0.1;
            T -= dT;
        }
        if (std::fabs(dT) < 1e-9 || !std::isfinite(T)) break;
        EOSParT(s, T);
        Areas areas;
        const int roots = roots_and_areas(s, T, p, areas);
        if (roots == 0 || areas.err) return {.err = -1};
        if (roots == 1) continue;
        const double ratio = fd_old / areas.fd;
        fd_old = areas.fd;
        if (ratio > 0.0) continue;
        dT *= -0.1;
        if (std::fabs(areas.fd) >= 0.0002 && std::fabs(dT) >= 0.0005) continue;
        Saturation r{.value = T, .err = static_cast<std::int16_t>(T >= TinyT ? 0 : -1)};
        take(r, areas);
        return r;
    }
    return {.err = -1};
}

// Bisection for T at p; fd > 0 or a vapor-like only root lowers T. err -1 without three roots at the end.
Saturation bisect_T(Session& s, double p) {
    double lo = 0.2 * s.substance.Tcr, hi = s.substance.Tcr;
    for (int round = 0; round < 200; ++round) {
        const double T = 0.5 * (lo + hi);
        EOSParT(s, T);
        Areas areas;
        const int roots = roots_and_areas(s, T, p, areas);
        if (roots == 0 || areas.err) return {.err = -1};
        const bool settled = roots == 3 && std::fabs(areas.fd) < 5e-5;
        if (settled || hi - lo < 1e-12 * hi) {
            Saturation r{.value = T, .err = static_cast<std::int16_t>(roots == 3 ? 0 : -1)};
            take(r, areas);
            return r;
        }
        const bool lower = roots == 3 ? areas.fd > 0.0 : !liquid_like(s);
        (lower ? hi : lo) = T;
    }
    return {.err = -1};
}

}  // namespace

Areas MaxwellDiff(const Session& s, double T, double p) {
    const Scratch& x = s.scratch;
    const auto& v = x.VRoot;
    const double RT = RGas * T, a = x.aT, b = x.bT, c = x.cT, d = x.dT;
    // Integral of p dv from y to z: R T ln((z - b)/(y - b)) + attraction
    const auto integral = [&](double z, double y) {
        const double repulsion = RT * std::log((z - b) / (y - b));
        if (c == d) return repulsion + a * (1.0 / (z + c) - 1.0 / (y + c));
        return repulsion + a / (c - d) * std::log((z + c) * (y + d) / ((y + c) * (z + d)));
    };
    Areas r;
    r.g1 = integral(v[2], v[1]) - (v[2] - v[1]) * p;
    r.g2 = integral(v[1], v[0]) - (v[1] - v[0]) * p;
    r.fd = (r.g1 + r.g2) / (r.g1 - r.g2);
    if (!std::isfinite(r.fd)) return {.fd = 0.0, .g1 = 0.0, .g2 = 0.0, .err = -1};
    return r;
}

Saturation pLV_EOS(Session& s, double T) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    if (T == Tcr && T > 0.0) {
        critical_volumes(s);
        return {.value = pcr};
    }
    EOSParT(s, T);
    if (!(T < Tcr) || !(T >= TinyT) || refused(s)) return {.err = -1};
    double start = 0.0;
    if (s.models.EVPKode > 0) start = pLV_EVP(s, T, s.models.EVPKode).value;
    if (start < TinyT) start = std::exp(std::log(pcr) * T / Tcr);
    const Saturation found = search_p(s, T, start);
    if (found.err == 0) return found;
    const Saturation settled = bisect_p(s, T);
    if (settled.err == 0) return settled;
    if (T > Tcr * (1.0 - CriticalBand)) return critical_saturation(s, T, pcr, pcr);
    return found;
}

Saturation TLV_EOS(Session& s, double p, double Tstart) {
    const double Tcr = s.substance.Tcr, pcr = s.substance.pcr;
    if (refused(s)) return {.err = -1};
    if (p == pcr && p > 0.0) {
        critical_volumes(s);
        return {.value = Tcr};
    }
    if (!(p < pcr) || !(p >= SmallestP)) return {.err = -1};
    Saturation found;
    if (p / pcr >= 0.02) {
        double start = Tstart != 0.0 ? Tstart : Tcr * std::log(p) / std::log(pcr);
        if (!(start > TinyT && start < Tcr)) start = 0.7 * Tcr;
        found = search_T(s, p, start);
    } else {
        found = scan_T(s, p);
    }
    if (found.err == 0) return found;
    const Saturation settled = bisect_T(s, p);
    if (settled.err == 0) return settled;
    if (p > pcr * (1.0 - CriticalBand)) return critical_saturation(s, Tcr, p, Tcr);
    return found;
}

}  // namespace quom
