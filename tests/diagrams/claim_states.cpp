#include "diagrams/claim_states.h"

#include <algorithm>
#include <numbers>

#include "engine/eos_parameters.h"
#include "engine/volume_solver.h"

namespace quom::test {
namespace {

using Q = AxisQuantity;
constexpr double open = std::numeric_limits<double>::quiet_NaN();

}  // namespace

double DisplayFactors::u(double at_T) const {
    const double factors[] = {1.0, 1.0 / RGas, 1.0 / (RGas * at_T), 1.0 / fluid->M};
    return factors[EnergyMode];
}

DisplayFactors display_factors(const Fluid& fluid, const Units& units) {
    DisplayFactors f{.fluid = &fluid, .EnergyMode = units.EnergyMode};
    if (units.VolumeMode == volume_per_mass) f.v = 1.0 / fluid.M;
    if (units.VolumeMode == reduced_volume) {
        f.T = 1.0 / fluid.substance.Tcr;
        f.p = 1.0 / fluid.substance.pcr;
        f.v = 1.0 / fluid.eos.vcrEOS;
    }
    return f;
}

// A saturated state at a T or p that a single may have lifted above the critical point.
Saturation saturated_T(const Fluid& fluid, double T) {
    const double Tcr = fluid.substance.Tcr;
    return pLV_EOS(fluid, T > Tcr && same_single(T, Tcr) ? Tcr : T);
}
Saturation saturated_p(const Fluid& fluid, double p) {
    const double pcr = fluid.substance.pcr;
    return TLV_EOS(fluid, p > pcr && same_single(p, pcr) ? pcr : p);
}

double function_of(const Fluid& fluid, const StateFunctions& s, Q q) {
    struct Row {
        Q q;
        double value;
    };
    const Row rows[] = {
        {Q::u, s.u},   {Q::h, s.h},   {Q::s, s.s},   {Q::g, s.g},   {Q::a, s.a},
        {Q::eH, s.eH}, {Q::eU, s.eU}, {Q::cp, s.cp}, {Q::cV, s.cV}, {Q::TSurr_s, fluid.environment.T * s.s}};
    for (const Row& row : rows)
        if (row.q == q) return row.value;
    return open;
}

// Entries of ThermoFunc that an axis shows, in K, K/kPa or without a unit.
double entry_of(const PhaseArrays& arrays, Q q) {
    struct Row {
        Q q;
        int entry;
        double factor;
    };
    constexpr Row rows[] = {{Q::residual_s, fu_s_res, RGas},
                            {Q::residual_h, fu_h_res, RGas},
                            {Q::residual_g, fu_g_res, RGas},
                            {Q::residual_cp, fu_cp_res, RGas},
                            {Q::joule_thomson, fu_dTdp_h, 1.0}};
    for (const Row& row : rows)
        if (row.q == q) return row.factor * arrays.FuncA[row.entry];
    return open;
}

// What an axis shows of a state, in displayed units.
double displayed(const Reading& r, Q q, const State& st) {
    switch (q) {
        case Q::T:
            return st.T * r.f.T;
        case Q::p:
            return st.p * r.f.p;
        case Q::v:
            return st.v * r.f.v;
        case Q::pv:
            return st.p * r.f.p * st.v * r.f.v;
        case Q::rho:
            return r.fluid.M / st.v;
        case Q::joule_thomson:
            return entry_of(ThermoFunc(r.fluid, st.T, st.p, st.v), q);
        case Q::residual_s:
        case Q::residual_h:
        case Q::residual_g:
        case Q::residual_cp:
            return entry_of(ThermoFunc(r.fluid, st.T, st.p, st.v), q) * r.f.u(st.T);
        default:
            return function_of(r.fluid, ThermoState(r.fluid, st.T, st.p, st.v), q) * r.f.u(st.T);
    }
}

// All volumes above b of the cubic equation at T, p of either sign, by the cosines of Viete (1591).
std::vector<State> volumes(const Fluid& fluid, double T, double p) {
    const EosAtT e = EOSParT(fluid, T);
    using L = long double;
    const L A = static_cast<L>(RGas * T) / p + e.b, sum = static_cast<L>(e.c) + e.d,
            product = static_cast<L>(e.c) * e.d;
    const L q2 = sum - A, q1 = product + e.a / static_cast<L>(p) - sum * A,
            q0 = -e.b * (e.a / static_cast<L>(p)) - product * A;
    const L shift = -q2 / 3, P = q1 - q2 * q2 / 3, R = ((2 * q2 * q2 - 9 * q1) * q2 / 27 + q0) / 2;
    std::vector<L> roots;
    const L D = R * R + P * P * P / 27;
    if (D >= 0) {
        const L s = std::sqrt(D);
        roots.push_back(std::cbrt(-R + s) + std::cbrt(-R - s) + shift);
    } else {
        const L size = 2 * std::sqrt(-P / 3),
                angle = std::acos(std::clamp<L>(-R / std::sqrt(-P * P * P / 27), -1, 1));
        for (const int k : {0, 1, 2})
            roots.push_back(size * std::cos((angle + 2 * k * std::numbers::pi_v<L>) / 3) + shift);
    }
    std::vector<State> found;
    for (L v : roots) {
        for (int round = 0; round < 3; ++round) {
            const L y = ((v + q2) * v + q1) * v + q0, slope = (3 * v + 2 * q2) * v + q1;
            if (slope != 0 && std::fabs(y / slope) < 1e-3L * std::fabs(v)) v -= y / slope;
        }
        if (v > e.b) found.push_back({T, p, static_cast<double>(v)});
    }
    std::ranges::sort(found, {}, &State::v);
    return found;
}

// The loop between the saturated volumes, with them.
std::vector<State> loop_states(const Fluid& fluid, double T, double p, const Saturation& s) {
    std::vector<State> found = volumes(fluid, T, p);
    std::erase_if(found,
                  [&](const State& st) { return st.v < s.vL * (1.0 - 1e-6) || st.v > s.vV * (1.0 + 1e-6); });
    return found;
}

// The stable state at T, p; both where the two phases are told apart by less than singles show.
std::vector<State> stable_states(const Fluid& fluid, double T, double p) {
    const VolumeResult r = VolumeTp(fluid, T, p);
    std::vector<State> found;
    if (r.reason != Reason::none) return found;
    if (r.LFlag) found.push_back({T, p, r.vL});
    if (r.VFlag && !(r.LFlag && r.vL == r.vV)) found.push_back({T, p, r.vV});
    return found;
}
std::vector<State> ends_of(const Saturation& s) { return {{s.T, s.p, s.vL}, {s.T, s.p, s.vV}}; }

// Saturated states of the parameter of a section; not found at or above the critical point.
Saturation of_isotherm(const Fluid& fluid, double T) {
    Saturation s = pLV_EOS(fluid, T);
    if (!(T < fluid.substance.Tcr)) s.reason = Reason::above_critical_T;
    return s;
}
Saturation of_isobar(const Fluid& fluid, double p) {
    Saturation s = TLV_EOS(fluid, p);
    if (!(p < fluid.substance.pcr)) s.reason = Reason::above_critical_p;
    return s;
}

std::vector<State> section_states(const Reading& r, double T, double p, const Saturation& s) {
    if (s.found() && same_single(T, s.T) && same_single(p, s.p)) {
        std::vector<State> both = ends_of(s);
        const std::vector<State> roots = volumes(r.fluid, T, p);
        if (roots.size() == 3) both.insert(both.end(), {roots.front(), roots.back()});
        return both;
    }
    return r.in.SCurve ? loop_states(r.fluid, T, p, s) : stable_states(r.fluid, T, p);
}
std::vector<State> isotherm_states(const Reading& r, double p) {
    return section_states(r, r.in.T, p, of_isotherm(r.fluid, r.in.T));
}
std::vector<State> isobar_states(const Reading& r, double T) {
    return section_states(r, T, r.in.p, of_isobar(r.fluid, r.in.p));
}

}  // namespace quom::test
