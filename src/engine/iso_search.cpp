#include "engine/iso_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double NewtonLimit = 1.5e-6;  // |dx/x|
constexpr double SettledStep = 1e-8;    // |dx/x| of a Newton step that leaves nothing but the last digits
constexpr double LastDigits = 1e-14;    // |dx/x| of a bracket
constexpr int NewtonRounds = 40;
constexpr int RootRounds = 12;
constexpr int FineScan = 60;      // places of a scan where a coarser one has found nothing
constexpr double ThinGas = 1e-3;  // of the critical value: below it the functions are those of the ideal gas
constexpr double LowestReducedP = 1e-12, LargestReducedP = 300.0;
constexpr double LowestReducedT = 0.1, LargestReducedT = 5.0;

// Derivatives of v, h, s at the state: by T at p, or by p at T.
struct Slopes {
    double v, h, s;
};

// What a function is made of: v, h, s and T, p of the state, TEnv and pEnv of the environment.
struct FunctionRow {
    double (*value)(const StateFunctions& f);
    // d/dT at p: ds = dh/T holds.
    double (*slope_T)(const StateFunctions& f, const Slopes& d, double T, double p, double TEnv, double pEnv);
    // d/dp at T: dh - T ds = v.
    double (*slope_p)(const StateFunctions& f, const Slopes& d, double T, double p, double TEnv, double pEnv);
    bool derivatives_T, derivatives_p;  // the slope needs dv/dT or dv/dp
    int scan_T, scan_p;                 // places of a scan; 0: one solution in a phase at most
};

using F = const StateFunctions&;
using D = const Slopes&;
constexpr std::array<FunctionRow, iso_function_count> rows = {{
    {[](F f) { return f.v; }, [](F, D d, double, double, double, double) { return d.v; },
     [](F, D d, double, double, double, double) { return d.v; }, true, true, 0, 0},
    {[](F f) { return f.h; }, [](F, D d, double, double, double, double) { return d.h; },
     [](F, D d, double, double, double, double) { return d.h; }, false, true, 0, 6},
    {[](F f) { return f.s; }, [](F, D d, double, double, double, double) { return d.s; },
     [](F, D d, double, double, double, double) { return d.s; }, false, true, 0, 0},
    {[](F f) { return f.g; }, [](F f, D, double, double, double, double) { return -f.s; },
     [](F f, D, double, double, double, double) { return f.v; }, false, false, 6, 0},
    // du = dh - p dv - v dp
    {[](F f) { return f.u; }, [](F, D d, double, double p, double, double) { return d.h - p * d.v; },
     [](F f, D d, double, double p, double, double) { return d.h - p * d.v - f.v; }, true, true, 0, 0},
    // da = -s dT - p dv
    {[](F f) { return f.a; }, [](F f, D d, double, double p, double, double) { return -f.s - p * d.v; },
     [](F, D d, double, double p, double, double) { return -p * d.v; }, true, true, 6, 0},
    // deH = dh - TEnv ds
    {[](F f) { return f.eH; }, [](F, D d, double, double, double TEnv, double) { return d.h - TEnv * d.s; },
     [](F, D d, double, double, double TEnv, double) { return d.h - TEnv * d.s; }, false, true, 6, 24},
    // deU = du - TEnv ds + pEnv dv
    {[](F f) { return f.eU; },
     [](F, D d, double, double p, double TEnv, double pEnv) {
         return d.h - p * d.v - TEnv * d.s + pEnv * d.v;
     },
     [](F f, D d, double, double p, double TEnv, double pEnv) {
         return d.h - p * d.v - f.v - TEnv * d.s + pEnv * d.v;
     },
     true, true, 24, 24},
}};

// A place of the search: the function less its target, and its slope.
struct Place {
    double x = 0, distance = 0, slope = 0;
};

// The function of the phase along the unknown.
class PhaseFunction {
 public:
    PhaseFunction(const Fluid& fluid, const IsoInput& input)
        : fluid_(fluid), input_(input), row_(rows[static_cast<std::size_t>(input.Column)]) {}

    bool finds_T() const { return input_.What == iso_find_T; }
    int scan_places() const { return finds_T() ? row_.scan_T : row_.scan_p; }
    bool monotone() const { return scan_places() == 0; }
    double T_at(double x) const { return finds_T() ? x : input_.given; }
    double p_at(double x) const { return finds_T() ? input_.given : x; }

    // Volume of the phase at x; none where it does not exist.
    std::optional<double> volume(double x) const {
        const double T = T_at(x), p = p_at(x);
        const VolumeResult r = VolumeTp(fluid_, T, p);
        const bool liquid = input_.phase == phase_L;
        if (r.reason != Reason::none || !(liquid ? r.LFlag : r.VFlag)) return std::nullopt;
        if (!fluid_.VPhaseOnly && phase_region(fluid_, T, p) == (liquid ? 3 : 1)) return std::nullopt;
        return liquid ? r.vL : r.vV;
    }
    // The function on the branch of v, whether or not that is the stable one; none where it has no value.
    std::optional<Place> on_branch(double x, double v) const {
        const double T = T_at(x), p = p_at(x);
        const bool derivatives = finds_T() ? row_.derivatives_T : row_.derivatives_p;
        Slopes d{};
        StateFunctions f;
        if (derivatives) {
            const PhaseArrays arrays = ThermoFunc(fluid_, T, p, v);
            f = state_functions(fluid_, T, p, v, arrays);
            d.v = arrays.DerivA[finds_T() ? dvdT_p : dvdp_T];
            if (!finds_T()) {
                d.s = -arrays.DerivA[dvdT_p];
                d.h = v + T * d.s;
            }
        } else {
            f = ThermoState(fluid_, T, p, v);
        }
        if (finds_T()) {
            d.h = f.cp;
            d.s = f.cp / T;
        }
        const double value = row_.value(f);
        if (!std::isfinite(value)) return std::nullopt;
        const ReferenceState& reference = fluid_.reference;
        const auto slope = finds_T() ? row_.slope_T : row_.slope_p;
        return Place{x, value - input_.Target, slope(f, d, T, p, reference.TEnv, reference.pEnv)};
    }
    // The function of the stable phase; none where the phase does not exist.
    std::optional<Place> at(double x) const {
        const std::optional<double> v = volume(x);
        return v ? on_branch(x, *v) : std::nullopt;
    }
    // The root of the equation at x next to v, by Newton steps on the cubic; none where they leave the
    // branch.
    std::optional<double> next_volume(double x, double v) const {
        const double T = T_at(x), p = p_at(x);
        if (fluid_.VPhaseOnly) {
            const double next = RGas * T / p + VirialB(fluid_, T);
            return next > 0.0 ? std::optional<double>(next) : std::nullopt;
        }
        const EosAtT e = EOSParT(fluid_, T);
        const double A = RGas * T / p + e.b, cd = e.c + e.d, product = e.c * e.d;
        const double q2 = cd - A, q1 = product + e.a / p - cd * A, q0 = -e.a * e.b / p - product * A;
        for (int round = 0; round < RootRounds; ++round) {
            const double slope = (3.0 * v + 2.0 * q2) * v + q1;
            const double step = (((v + q2) * v + q1) * v + q0) / slope;
            if (!(slope > 0.0) || !(std::fabs(step) < 0.5 * v)) return std::nullopt;
            v -= step;
            if (!(v > e.b)) return std::nullopt;
            if (std::fabs(step) <= 1e-9 * v) return v;
        }
        return std::nullopt;
    }

 private:
    const Fluid& fluid_;
    const IsoInput& input_;
    const FunctionRow& row_;
};

// Where the phase is searched, and from where; low 0: nowhere.
struct Range {
    double low = 0, high = 0, start = 0;
    double dense = 0;  // from here on the places of a scan are even in ln x
    double at(int i, int points) const {
        const double from = std::clamp(dense, low, high);
        return from * std::pow(high / from, static_cast<double>(i) / points);
    }
};

Range range_of_p(const Fluid& fluid, const IsoInput& input, double pcr, double limit) {
    const bool liquid = input.phase == phase_L;
    const Range whole{.low = LowestReducedP * pcr, .high = limit, .start = liquid ? pcr : 0.01 * pcr};
    if (fluid.VPhaseOnly) return whole;
    if (static_cast<float>(input.given) >= static_cast<float>(fluid.substance.Tcr))
        return liquid ? Range{.low = pcr, .high = limit, .start = pcr} : whole;
    const Saturation saturation = pLV_EOS(fluid, input.given);
    if (!saturation.found()) return whole;
    if (liquid) return {.low = saturation.p, .high = limit, .start = saturation.p};
    return {.low = std::min(whole.low, 1e-6 * saturation.p),
            .high = saturation.p,
            .start = 0.01 * std::min(saturation.p, pcr)};
}

Range range_of_T(const Fluid& fluid, const IsoInput& input, double Tcr, double limit) {
    const bool liquid = input.phase == phase_L;
    const Range whole{.low = LowestReducedT * Tcr, .high = limit, .start = Tcr};
    if (fluid.VPhaseOnly) return whole;
    if (static_cast<float>(input.given) >= static_cast<float>(fluid.substance.pcr))
        return liquid ? whole : Range{.low = Tcr, .high = limit, .start = Tcr};
    const Saturation saturation = TLV_EOS(fluid, input.given);
    if (!saturation.found()) return whole;
    if (!liquid) return {.low = saturation.T, .high = limit, .start = saturation.T};
    return {.low = std::min(whole.low, 0.5 * saturation.T), .high = saturation.T, .start = saturation.T};
}

// 0: none.
double start_of(const IsoInput& input) {
    return input.start && *input.start > 0.0 && std::isfinite(*input.start) ? *input.start : 0.0;
}

// What a search is measured by: the critical value of the unknown, without one the start.
double scale_of(const Fluid& fluid, const IsoInput& input) {
    const double critical = input.What == iso_find_p ? fluid.substance.pcr : fluid.substance.Tcr;
    return critical > TinyT ? critical : start_of(input);
}

double limit_of(const Fluid& fluid, const IsoInput& input) {
    const double factor = input.What == iso_find_p ? LargestReducedP : LargestReducedT;
    return std::max(factor * scale_of(fluid, input), 2.0 * start_of(input));
}

Range range_of(const Fluid& fluid, const IsoInput& input) {
    const double scale = scale_of(fluid, input);
    if (!(scale > 0.0)) return {};
    const double limit = limit_of(fluid, input);
    Range r = input.What == iso_find_p ? range_of_p(fluid, input, scale, limit)
                                       : range_of_T(fluid, input, scale, limit);
    if (input.What == iso_find_p) r.dense = ThinGas * scale;
    if (const double start = start_of(input); start > 0.0) r.start = start;
    return r;
}

// Newton along the branch from x. None where the phase does not exist at the start or at the root, or where a
// step leaves it.
std::optional<double> newton(const PhaseFunction& f, double x, int& rounds) {
    std::optional<double> v = f.volume(x);
    for (rounds = 1; v && rounds <= NewtonRounds; ++rounds) {
        const std::optional<Place> here = f.on_branch(x, *v);
        if (!here) return std::nullopt;
        const double step = -here->distance / here->slope;
        if (!std::isfinite(step)) return std::nullopt;
        if (std::fabs(step) <= NewtonLimit * x) {
            if (rounds > 1 && !f.volume(x)) return std::nullopt;
            return x + step;
        }
        x += std::clamp(step, -0.5 * x, x);
        v = f.next_volume(x, *v);
    }
    return std::nullopt;
}

// Solution between two places with distances of different signs: Newton inside the bracket, halving where it
// leaves it.
std::optional<double> solve_between(const PhaseFunction& f, Place a, Place b) {
    if (a.distance == 0.0) return a.x;
    if (b.distance == 0.0) return b.x;
    Place here = std::fabs(a.distance) < std::fabs(b.distance) ? a : b;
    double last_width = HUGE_VAL;
    for (int i = 0; i < 200; ++i) {
        const double low = std::min(a.x, b.x), high = std::max(a.x, b.x);
        if (high - low <= LastDigits * high) return here.x;
        double x = here.x - here.distance / here.slope;
        const bool slow = i % 4 == 3 && high - low > 0.5 * last_width;
        if (i % 4 == 3) last_width = high - low;
        if (x > low && x < high && !slow) {
            if (std::fabs(x - here.x) <= SettledStep * x) return x;
        } else {
            x = high > 4.0 * low ? std::sqrt(low * high) : 0.5 * (low + high);
        }
        const std::optional<Place> next = f.at(x);
        if (!next) return std::nullopt;
        here = *next;
        if (here.distance == 0.0) return x;
        (here.distance * a.distance > 0.0 ? a : b) = here;
    }
    return here.x;
}

// The last place of the phase between one where it exists and one where it does not.
Place edge_of_phase(const PhaseFunction& f, Place inside, double outside) {
    for (int i = 0; i < 60 && std::fabs(outside - inside.x) > 1e-12 * inside.x; ++i) {
        const double x = 0.5 * (inside.x + outside);
        if (const std::optional<Place> place = f.at(x)) {
            inside = *place;
        } else {
            outside = x;
        }
    }
    return inside;
}

// All solutions of a range.
class Scan {
 public:
    // known: a solution found before, which is not searched again.
    Scan(const PhaseFunction& f, double target, std::optional<double> known)
        : f_(f), tolerance_(1e-9 * std::fabs(target)), known_(known) {}

    void run(const Range& range, int points) {
        std::optional<Place> last = f_.at(range.low);
        double last_x = range.low;
        for (int i = 0; i <= points; ++i) {
            const double x = i == points ? range.high : range.at(i, points);
            if (!(x > last_x)) continue;
            const std::optional<Place> here = f_.at(x);
            step(last, last_x, here, x);
            last = here;
            last_x = x;
        }
    }
    std::vector<double> solutions;

 private:
    void step(const std::optional<Place>& a, double a_x, const std::optional<Place>& b, double b_x) {
        if (a && b) return between(*a, *b);
        if (!a && !b) return;
        const Place inside = a ? *a : *b;
        const Place edge = edge_of_phase(f_, inside, a ? b_x : a_x);
        if (std::fabs(edge.distance) <= tolerance_) return add(edge.x);
        if (edge.x != inside.x) between(inside, edge);
    }
    void between(const Place& a, const Place& b) {
        if ((a.distance > 0.0) != (b.distance > 0.0)) return cross(a, b);
        for (const Place& end : {a, b}) {
            if (std::fabs(end.distance) <= tolerance_) add(end.x);
        }
        // Both on one side, and the function turns in between: it may reach the target twice.
        const double towards = a.distance > 0.0 ? -1.0 : 1.0;
        if (a.slope * towards * (b.x - a.x) > 0.0 && b.slope * towards * (b.x - a.x) < 0.0)
            turning_point(a, b);
    }
    // One sign of the distance at a, the other at b.
    void cross(const Place& a, const Place& b) {
        if (known_ && *known_ >= std::min(a.x, b.x) && *known_ <= std::max(a.x, b.x)) return;
        add(solve_between(f_, a, b));
    }
    void turning_point(Place a, Place b) {
        for (int i = 0; i < 60 && std::fabs(b.x - a.x) > 1e-9 * b.x; ++i) {
            // The tangents at both places bound the function between them where it is bent one way.
            const double meet =
                (b.distance - a.distance + a.slope * a.x - b.slope * b.x) / (a.slope - b.slope);
            const double bound = a.distance + a.slope * (meet - a.x);
            if ((bound > 0.0) == (a.distance > 0.0) && std::fabs(bound) > tolerance_) return;
            const std::optional<Place> middle = f_.at(0.5 * (a.x + b.x));
            if (!middle) return;
            if ((middle->distance > 0.0) != (a.distance > 0.0)) {
                cross(a, *middle);
                cross(*middle, b);
                return;
            }
            ((middle->slope > 0.0) == (a.slope > 0.0) ? a : b) = *middle;
        }
    }
    void add(std::optional<double> x) {
        if (x) solutions.push_back(*x);
    }
    const PhaseFunction& f_;
    double tolerance_;
    std::optional<double> known_;
};

// The solution next to the start; the others ascending, each once.
void choose(std::vector<double> found, double start, IsoResult& result) {
    const auto away = [start](double x) { return std::fabs(std::log(x / start)); };
    const auto best =
        std::min_element(found.begin(), found.end(), [&](double a, double b) { return away(a) < away(b); });
    result.value = *best;
    std::sort(found.begin(), found.end());
    for (const double x : found) {
        const auto same = [x](double other) { return std::fabs(x - other) <= 1e-6 * x; };
        if (same(result.value) || (!result.others.empty() && same(result.others.back()))) continue;
        result.others.push_back(x);
    }
}

bool is_valid(const Fluid& fluid, const IsoInput& input) {
    const bool known = input.Column >= 0 && input.Column < iso_function_count;
    const bool phase = input.phase == phase_V || !fluid.VPhaseOnly;
    return known && phase && fluid.has_eos() && std::isfinite(input.Target) && input.given > 0.0 &&
           std::isfinite(input.given);
}

}  // namespace

IsoResult IsoSearch(const Fluid& fluid, const IsoInput& input) {
    IsoResult result;
    result.reason = Reason::no_solution;
    if (!is_valid(fluid, input)) return result;
    const PhaseFunction f(fluid, input);
    std::optional<double> x;
    const double start = start_of(input), limit = limit_of(fluid, input);
    if (start > 0.0) x = newton(f, start, result.rounds);
    if (x && *x > limit) x.reset();
    if (x && (f.monotone() || !input.all)) {
        result.value = *x;
        result.reason = Reason::none;
        return result;
    }
    const Range range = range_of(fluid, input);
    if (!(range.low > 0.0) || !(range.high > range.low)) return result;
    if (!(start > 0.0)) x = newton(f, range.start, result.rounds);
    const bool by_newton = x && *x <= limit;
    std::vector<double> found;
    if (by_newton) found.push_back(*x);
    if (!by_newton || (!f.monotone() && input.all)) {
        Scan scan(f, input.Target, by_newton ? x : std::nullopt);
        scan.run(range, f.scan_places());
        if (!by_newton && scan.solutions.empty()) scan.run(range, FineScan);
        result.bracketed = !by_newton && !scan.solutions.empty();
        found.insert(found.end(), scan.solutions.begin(), scan.solutions.end());
    }
    if (found.empty()) return result;
    choose(std::move(found), range.start, result);
    result.reason = Reason::none;
    return result;
}

double function_of(const StateFunctions& state, int Column) {
    return Column >= 0 && Column < iso_function_count ? rows[static_cast<std::size_t>(Column)].value(state)
                                                      : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace quom
