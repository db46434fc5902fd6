#include "diagrams/point_claims.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <sstream>

#include "engine/condensed_phases.h"
#include "engine/ideal_gas.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom::test {
namespace {

using Q = AxisQuantity;
using F = CurveFamily;
constexpr double open = std::numeric_limits<double>::quiet_NaN();  // a coordinate of which nothing is claimed
constexpr double ulp = 0x1p-23;                                    // of a single, relative

struct Reading {
    const Fluid& fluid;
    const CurveInput& in;
    const KindInfo& kind;
    DisplayFactors f;
    std::array<double, 4> at;  // X, Y, Par, Tag
    double X() const { return at[0]; }
    double Y() const { return at[1]; }
    double Par() const { return at[2]; }
    double Tag() const { return at[3]; }
    double Tcr() const { return fluid.substance.Tcr; }
};
// X, Y, Par, Tag that would be right, and what a process line holds constant, less its value at the start.
using Expected = std::array<double, 5>;
using Choices = std::vector<Expected>;

struct State {
    double T = 0, p = 0, v = 0;
};

bool same_single(double x, double y) { return std::fabs(x - y) <= 2.0 * ulp * std::fabs(y); }

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

// ---- one function a family: X, Y, Par, Tag that would be right -------------------------------------------

bool in_dome(const Fluid& fluid, double T, double v) {
    if (fluid.VPhaseOnly || T >= fluid.substance.Tcr) return false;
    const Saturation s = pLV_EOS(fluid, T);
    return s.found() && v > s.vL * (1.0 + 2.0 * ulp) && v < s.vV * (1.0 - 2.0 * ulp);
}

Choices isotherm_v(const Reading& r) {
    const double v = r.X() / r.f.v;
    const bool loop = r.in.SCurve || r.in.options.chkSKurveOhneKonnode;
    if (!loop && in_dome(r.fluid, r.in.T, v)) return {};
    return {{open, pTv(r.fluid, r.in.T, v).p * r.f.p, r.in.T, open}};
}

Choices isotherm_p(const Reading& r) {
    Choices all;
    if (r.in.SCurve) {  // Y has the volume, X must be its pressure
        const double v = r.kind.y == Q::rho ? r.fluid.M / r.Y() : r.Y() / r.f.v / r.X();
        const Saturation s = pLV_EOS(r.fluid, r.in.T);
        if (v < s.vL * (1.0 - 1e-6) || v > s.vV * (1.0 + 1e-6)) return {};
        return {{pTv(r.fluid, r.in.T, v).p * r.f.p, open, r.in.T, open}};
    }
    // The limit of p v at p = 0 is R T.
    if (r.fluid.VPhaseOnly && r.kind.y == Q::pv && r.X() < 1e-30)
        return {{open, RGas * r.in.T * r.f.p * r.f.v, r.in.T, open}};
    for (const State& st : isotherm_states(r, r.X() / r.f.p))
        all.push_back({open, displayed(r, r.kind.y, st), r.in.T, open});
    return all;
}

Choices isotherm_functions(const Reading& r) {
    Choices all;
    for (const State& st : isotherm_states(r, r.X() / r.f.p))
        all.push_back({open, displayed(r, r.kind.y, st), r.in.T, open});
    return all;
}

Choices isotherm_functions_v(const Reading& r) {
    const double T = r.in.T, v = r.X() / r.f.v;
    if (in_dome(r.fluid, T, v) != r.in.SCurve && !same_single(v, pLV_EOS(r.fluid, T).vL) &&
        !same_single(v, pLV_EOS(r.fluid, T).vV))
        return {};
    const double p = pTv(r.fluid, T, v).p;
    const double y = displayed(r, r.kind.y, {T, p, v});
    return {{open, r.kind.y == Q::cV ? std::fabs(y) : y, p, T}};
}

Choices pairs(const Reading& r) {
    const bool isotherm = r.kind.section == Section::isothermal;
    Choices all;
    for (const State& st : isotherm ? isotherm_states(r, r.Par()) : isobar_states(r, r.Par()))
        all.push_back(
            {displayed(r, r.kind.x, st), displayed(r, r.kind.y, st), open, isotherm ? r.in.T : r.in.p});
    return all;
}

Choices isobar_volume(const Reading& r) {
    const double T = r.Y() / r.f.T;
    if (r.in.SCurve) {
        const double v = r.kind.x == Q::rho ? r.fluid.M / r.X() : r.X() / r.f.v;
        const Saturation s = TLV_EOS(r.fluid, r.in.p);
        if (v < s.vL * (1.0 - 1e-6) || v > s.vV * (1.0 + 1e-6)) return {};
        return {{open, open, pTv(r.fluid, T, v).p, open}};
    }
    Choices all;
    for (const State& st : isobar_states(r, T))
        all.push_back({displayed(r, r.kind.x, st), open, r.in.p, open});
    return all;
}

Choices isobar_functions(const Reading& r) {
    Choices all;
    for (const State& st : isobar_states(r, r.X() / r.f.T))
        all.push_back({open, displayed(r, r.kind.y, st), r.in.p, open});
    return all;
}

// Outside the dome p of the equation, inside p(LV).
Choices isochore_p(const Reading& r) {
    const double T = r.X() / r.f.T, v = r.in.v, vcr = r.fluid.eos.vcrEOS;
    const double p = pTv(r.fluid, T, v).p;
    if (r.fluid.VPhaseOnly || T >= r.Tcr()) {
        if (!(T > r.Tcr() && same_single(T, r.Tcr()))) return {{open, p * r.f.p, v, open}};
    }
    const Saturation s = saturated_T(r.fluid, T);
    const bool critical = std::fabs(v - vcr) < std::fabs(vcr / 1000.0);
    const bool inside = v > s.vL && v < s.vV;
    return {{open, (inside || critical ? s.p : p) * r.f.p, v, open}};
}

Choices isochore_functions(const Reading& r) {
    const double T = r.X() / r.f.T, v = r.in.v;
    if (in_dome(r.fluid, T, v)) return {};
    return {{open, displayed(r, r.kind.y, {T, pTv(r.fluid, T, v).p, v}), v, open}};
}

double p_by_concept(const Fluid& fluid, double T) {
    return fluid.models.Konzept ? saturated_T(fluid, T).p
                                : pLV_EVP(fluid.substance, T, fluid.models.EVPKode).value;
}

Choices vapor_pressure(const Reading& r) {
    switch (r.kind.y) {
        case Q::p:
            return {{open, p_by_concept(r.fluid, r.X() / r.f.T) * r.f.p, open, open}};
        case Q::ln_p:
            return {{open, std::log(p_by_concept(r.fluid, 1.0 / (r.X() * r.f.T)) * r.f.p), open, open}};
        default:
            return {{open,
                     static_cast<double>(
                         dpLVdT_EVP(r.fluid.substance, 1.0 / (r.X() * r.f.T), r.fluid.models.EVPKode).value),
                     open, open}};
    }
}

Choices vaporization(const Reading& r) {
    const double T = r.X() / r.f.T;
    const HlvResult h =
        hLV(r.fluid,
            {.model = r.fluid.models.HLVKode, .T = T, .EVP = r.fluid.models.EVPKode, .benson = r.in.benson});
    return {{open, h.value * r.f.u(T), h.p, open}};
}

// ---- along the phase equilibrium --------------------------------------------------------------------------

double mix(double L, double V, double x) { return L + x * (V - L); }

State mixed(const Reading& r, const Saturation& s) { return {s.T, s.p, mix(s.vL, s.vV, r.in.VaporFraction)}; }

Choices dome_p_v(const Reading& r) {
    const State st = mixed(r, saturated_T(r.fluid, r.Par()));
    return {{displayed(r, Q::v, st), displayed(r, Q::p, st), open, open}};
}
Choices dome_p(const Reading& r) {
    const Saturation s = saturated_p(r.fluid, r.X() / r.f.p);
    return {{open, displayed(r, r.kind.y, mixed(r, s)), s.T, open}};
}
Choices dome_T(const Reading& r) {
    const Saturation s = saturated_T(r.fluid, r.Y() / r.f.T);
    return {{displayed(r, r.kind.x, mixed(r, s)), open, s.p, open}};
}
Choices densities_T(const Reading& r) {
    const Saturation s = saturated_T(r.fluid, r.X() / r.f.T);
    return {{open, r.fluid.M / s.vL, s.p, open}, {open, r.fluid.M / s.vV, s.p, open}};
}
Choices bisector(const Reading& r) {
    const Saturation s = saturated_T(r.fluid, r.X() / r.f.T);
    return {{open, (r.fluid.M / s.vL + r.fluid.M / s.vV) / 2.0, s.p, open}};
}

double boundary_value(const Reading& r, const Saturation& s, Q q) {
    return mix(displayed(r, q, {s.T, s.p, s.vL}), displayed(r, q, {s.T, s.p, s.vV}), r.in.VaporFraction);
}
Choices boundary_p(const Reading& r) {
    const Saturation s = saturated_p(r.fluid, r.X() / r.f.p);
    return {{open, boundary_value(r, s, r.kind.y), s.T, open}};
}
Choices boundary_T(const Reading& r) {
    const Saturation s = saturated_T(r.fluid, r.X() / r.f.T);
    return {{open, boundary_value(r, s, r.kind.y), s.p, open}};
}

// Both saturated states as ThermoSat has them; at the critical point that one state.
Choices of_both(const Reading& r, double T, double Par) {
    const double x = r.in.VaporFraction, pcr = r.fluid.substance.pcr;
    Choices all;
    if (same_single(T, r.Tcr())) {
        for (const State& st : stable_states(r.fluid, r.Tcr(), pcr))
            all.push_back({displayed(r, r.kind.x, st), displayed(r, r.kind.y, st), Par, open});
        const State st{r.Tcr(), pcr, r.fluid.eos.vcrEOS};
        all.push_back({displayed(r, r.kind.x, st), displayed(r, r.kind.y, st), Par, open});
    }
    const SaturatedFunctions s = ThermoSat(r.fluid, T);
    const double u = r.f.u(T);
    const auto value = [&](Q q) {
        if (q == Q::v) return mix(s.L.v, s.V.v, x) * r.f.v;
        return mix(function_of(r.fluid, s.L, q), function_of(r.fluid, s.V, q), x) * u;
    };
    all.push_back({value(r.kind.x), value(r.kind.y), Par, open});
    return all;
}
Choices boundary_v(const Reading& r) { return of_both(r, r.Par(), open); }
Choices boundary_pairs(const Reading& r) {
    const double pcr = r.fluid.substance.pcr, p = r.Par();
    if (same_single(p, pcr)) return of_both(r, r.Tcr(), open);
    return of_both(r,
                   r.fluid.models.Konzept ? saturated_p(r.fluid, p).T
                                          : TLV_EVP(r.fluid.substance, p, r.fluid.models.EVPKode).value,
                   open);
}

// T (dv/dT)_p / v, 1 where the Joule-Thomson coefficient is 0. Rounding of T and p to singles moves it by
// some 1e-7 of itself, which the limits of broken_claim allow for.
double inversion_ratio(const Fluid& fluid, const State& st) {
    return st.T * ThermoFunc(fluid, st.T, st.p, st.v).DerivA[dvdT_p] / st.v;
}
// The point is on the inversion curve, or where that ends on the vapor pressure curve.
Choices inversion(const Reading& r) {
    const bool over_T = r.kind.x == Q::T;
    const double T = over_T ? r.X() / r.f.T : r.Par(), p = over_T ? r.Y() / r.f.p : r.X() / r.f.p;
    Choices all;
    std::vector<State> states = stable_states(r.fluid, T, p);
    const Saturation s = of_isotherm(r.fluid, T);
    const bool at_end = over_T && s.found() && same_single(p, s.p);
    if (at_end) states = ends_of(s);
    for (const State& st : states) {
        if (!at_end && std::fabs(inversion_ratio(r.fluid, st) - 1.0) > 2e-6) continue;
        if (over_T) {
            all.push_back({open, open, st.v, open});
        } else {
            all.push_back({open, displayed(r, Q::pv, st), open, open});
        }
    }
    return all;
}

Choices database(const Reading& r) {
    const SubstanceConstants& s = r.fluid.substance;
    const double T = r.X() / r.f.T;
    const auto single = static_cast<float>(T);
    const auto p = [&](Evp code) { return pLV_EVP(s, T, code).value * r.f.p; };
    struct Row {
        Kind kind;
        double value;
    };
    const Row rows[] = {
        {Kind::db_rhoL, rhoL_Fu(s, single).rho},
        {Kind::db_vL, r.fluid.M * r.f.v / rhoL_Fu(s, single).rho},
        {Kind::db_rhoS, rhoS_Fu(s, single).rho},
        {Kind::db_cpId_polynomial, static_cast<double>(cpIdG(s, T, CpForm::polynomial).cp) * r.f.u(T)},
        {Kind::db_cpId_sinh, static_cast<double>(cpIdG(s, T, CpForm::sinh_cosh).cp) * r.f.u(T)},
        {Kind::db_cpL, static_cast<double>(cpL_Fu(s, T)) * r.f.u(T)},
        {Kind::db_cpS, static_cast<double>(cpS_Fu(s, T)) * r.f.u(T)},
        {Kind::db_hLV, static_cast<double>(hLV_Fu(s, T).value) * r.f.u(T)},
        {Kind::db_frost_kalkwarf, p(Evp::frost_kalkwarf)},
        {Kind::db_wagner, p(Evp::wagner)},
        {Kind::db_antoine_low, p(Evp::antoine_low)},
        {Kind::db_antoine_high, p(Evp::antoine_high)},
        {Kind::db_august, p(Evp::august)},
        {Kind::db_kfw, p(Evp::kfw)},
        {Kind::db_kfr, p(Evp::kfr)},
        {Kind::db_thompson, p(Evp::thompson)},
    };
    for (const Row& row : rows)
        if (row.kind == r.kind.kind) return {{open, row.value, open, open}};
    return {};
}

// How far a state is from the start of a line in what the line holds constant, over the scale of it.
double departure(const Reading& r, const State& st, const State& start) {
    const auto functions = [&](const State& at) { return ThermoState(r.fluid, at.T, at.p, at.v); };
    switch (r.in.process.kind) {
        case ProcessKind::isotherm:
            return st.T / start.T - 1.0;
        case ProcessKind::isobar:
            return st.p / start.p - 1.0;
        case ProcessKind::isochore:
            return st.v / start.v - 1.0;
        case ProcessKind::isentrope:
            return (functions(st).s - functions(start).s) / RGas;
        default:
            return (functions(st).h - functions(start).h) / (RGas * start.T);
    }
}

// Between the saturated states: Par is the fraction of V that keeps the quantity of the first state.
Choices line_between_phases(const Reading& r, double T) {
    const Saturation s = saturated_T(r.fluid, T), first = pLV_EOS(r.fluid, r.in.process.T1);
    const State L{s.T, s.p, s.vL}, V{s.T, s.p, s.vV};
    const State start{first.T, first.p, r.in.process.phase == phase_L ? first.vL : first.vV};
    const auto value = [&](Q q) { return mix(displayed(r, q, L), displayed(r, q, V), r.Par()); };
    return {{value(r.kind.x), value(r.kind.y), open, open,
             mix(departure(r, L, start), departure(r, V, start), r.Par())}};
}

// The coordinates belong to one state, and the state to the line.
Choices process_line(const Reading& r) {
    const ProcessRec& process = r.in.process;
    if (r.in.line == Kind::line_straight) {
        const double share = (r.X() - process.T1) / (process.T2 - process.T1);
        return {{open, process.p1 + share * (process.p2 - process.p1), open, open, 0.0}};
    }
    const auto read = [&](Q q, double factor, std::int16_t par, double otherwise) {
        if (r.kind.x == q) return r.X() / factor;
        if (r.kind.y == q) return r.Y() / factor;
        return r.kind.process_par == par && process.Homogen ? r.Par() : otherwise;
    };
    const double p = read(Q::p, r.f.p, par_p, process.p1);
    double T = read(Q::T, r.f.T, par_T, process.T1);
    if (!process.Homogen)
        return line_between_phases(r, r.kind.x == Q::T || r.kind.y == Q::T ? T : saturated_p(r.fluid, p).T);
    if (r.kind.x == Q::v && r.kind.process_par == par_p && r.kind.y != Q::T)
        T = TpV(r.fluid, p, r.fluid.M / (r.X() / r.f.v), true).T;
    const auto outer = [&](double at_T, double at_p) {
        const std::vector<State> all =
            r.fluid.VPhaseOnly ? stable_states(r.fluid, at_T, at_p) : volumes(r.fluid, at_T, at_p);
        if (all.empty()) return State{};
        return process.phase == phase_L ? all.front() : all.back();
    };
    const State st = outer(T, p), start = outer(process.T1, process.p1);
    if (!(st.v > 0.0)) return {};
    return {{displayed(r, r.kind.x, st), displayed(r, r.kind.y, st),
             r.kind.process_par == par_v ? st.v : open, open, departure(r, st, start)}};
}

enum Reads : unsigned { reads_X = 1, reads_Y = 2, reads_Par = 4 };
struct Claim {
    F family;
    Choices (*expected)(const Reading&);
    unsigned reads;  // coordinates that the state is read from
};
constexpr Claim claims[] = {
    {F::isotherm_v, isotherm_v, reads_X},
    {F::isotherm_p, isotherm_p, reads_X | reads_Y},
    {F::isotherm_functions_p, isotherm_functions, reads_X},
    {F::isotherm_residual, isotherm_functions, reads_X},
    {F::isotherm_functions_v, isotherm_functions_v, reads_X},
    {F::isotherm_pairs, pairs, reads_Par},
    {F::isobar_volume, isobar_volume, reads_X | reads_Y},
    {F::isobar_functions, isobar_functions, reads_X},
    {F::isobar_cp, isobar_functions, reads_X},
    {F::isobar_residual, isobar_functions, reads_X},
    {F::joule_thomson, isobar_functions, reads_X},
    {F::isobar_pairs, pairs, reads_Par},
    {F::isochore_p, isochore_p, reads_X},
    {F::isochore_functions, isochore_functions, reads_X},
    {F::vapor_pressure, vapor_pressure, reads_X},
    {F::vaporization, vaporization, reads_X},
    {F::dome_p_v, dome_p_v, reads_Par},
    {F::dome_p, dome_p, reads_X},
    {F::dome_T, dome_T, reads_Y},
    {F::densities_T, densities_T, reads_X},
    {F::bisector, bisector, reads_X},
    {F::boundary_p, boundary_p, reads_X},
    {F::boundary_T, boundary_T, reads_X},
    {F::boundary_v, boundary_v, reads_Par},
    {F::boundary_pairs, boundary_pairs, reads_Par},
    {F::inversion_T, inversion, reads_X | reads_Y},
    {F::inversion_p, inversion, reads_X | reads_Par},
    {F::database, database, reads_X},
    {F::process_line, process_line, reads_X | reads_Y | reads_Par},
};

// How far what is expected may be from what the point shows.
struct Limits {
    Expected low, high;
};
void widen(Limits& limits, const Expected& base, const Expected& moved) {
    for (std::size_t k = 0; k < base.size(); ++k) {
        const double d = std::fabs(moved[k] - base[k]);
        if (!std::isfinite(d)) continue;
        limits.low[k] -= d;
        limits.high[k] += d;
    }
}

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

std::string broken_claim(const Fluid& fluid, const CurveInput& input, const CurvePoint& point) {
    const KindInfo& kind = kind_info(input.kind);
    const F family = input.line == Kind::none ? kind.family : kind_info(input.line).family;
    const Claim* claim = std::ranges::find(claims, family, &Claim::family);
    if (claim == std::end(claims)) return "no claim for the family";
    const std::array<float, 4> shown{point.X, point.Y, point.Par, point.Tag};
    Reading r{fluid, input, kind, display_factors(fluid, input.units), {}};
    std::ranges::copy(shown, r.at.begin());
    const Choices base = claim->expected(r);
    std::vector<Limits> limits;
    for (const Expected& e : base) limits.push_back({e, e});
    for (std::size_t k = 0; k < 3; ++k) {
        if (!(claim->reads & (1u << k))) continue;
        for (const float towards :
             {-std::numeric_limits<float>::infinity(), std::numeric_limits<float>::infinity()}) {
            Reading moved = r;
            moved.at[k] = static_cast<double>(std::nextafter(shown[k], towards));
            const Choices there = claim->expected(moved);
            for (std::size_t i = 0; i < base.size() && base.size() == there.size(); ++i)
                widen(limits[i], base[i], there[i]);
            if (base.size() == there.size()) continue;
            // Where two states become none within a unit of the last place, the point lies between them.
            const bool turns = there.size() < base.size();
            const double step = moved.at[k] - r.at[k];
            moved.at[k] = r.at[k] + (turns ? -step : 2.0 * step);
            const Choices &near = turns ? base : there, further = claim->expected(moved);
            for (std::size_t i = 0; i + 1 < near.size(); ++i) {
                limits.push_back({near[i], near[i]});
                widen(limits.back(), near[i], near[i + 1]);
                if (further.size() == near.size()) widen(limits.back(), near[i], further[i]);
            }
        }
    }
    const double energy = 1e-11 * RGas * fluid.substance.Tcr * r.f.u(fluid.substance.Tcr);
    for (const Limits& l : limits) {
        bool good = true;
        for (std::size_t k = 0; k < 4; ++k) {
            const double value = static_cast<double>(shown[k]),
                         slack = ulp * std::fabs(value) + (k < 2 ? energy : 0.0);
            if (!std::isnan(l.low[k])) good = good && value >= l.low[k] - slack && value <= l.high[k] + slack;
        }
        // A search for the state ends within 1.5e-6 of T or p.
        good = good && l.low[4] <= 1e-5 && l.high[4] >= -1e-5;
        if (good) return "";
    }
    std::ostringstream text;
    text.precision(9);
    text << "shows";
    for (const float value : shown) text << ' ' << value;
    for (const Limits& l : limits) {
        text << "; expected";
        for (std::size_t k = 0; k < 4; ++k) text << " [" << l.low[k] << ", " << l.high[k] << ']';
        if (l.low[4] > 1e-5 || l.high[4] < -1e-5) text << ", off its line by " << l.low[4];
    }
    if (limits.empty()) text << "; no such state";
    return text.str();
}

}  // namespace quom::test
