#include "calc/iso_search.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "calc/quantities.h"
#include "engine/thermo_functions.h"

namespace quom {
namespace {

constexpr int NewtonRounds = 500;
constexpr double NewtonLimit = 1.5e-6;  // |dx/x|
constexpr double LargestValue = 1e9;
constexpr int ScanPoints = 160;

// f(x): the function of the phase, or that there is none at x.
class PhaseFunction {
 public:
    PhaseFunction(Session& s, int what, int column, double target, int phase, int point)
        : s_(s),
          slot_((phase == phase_V ? static_cast<int>(slot_vV) : static_cast<int>(slot_vL)) + column),
          column_(column),
          phase_(phase),
          target_(target),
          request_{.Mode = 8, .Point = point, .Quiet = true, .want_text = false},
          x_(what == iso_find_p ? s.exp.points[static_cast<std::size_t>(point)].p
                                : s.exp.points[static_cast<std::size_t>(point)].T) {}

    std::optional<double> function(double x) {
        x_ = x;
        const CalcBatchResult r = CalcBatch(s_, request_);
        const double f = r.Result[slot_];
        const bool present = phase_ == phase_V ? r.IsV : r.IsL;
        // An exergy of 0 is one without a state of the environment.
        if (r.err || !present || (f == 0.0 && column_ >= 6)) return std::nullopt;
        return f;
    }
    // Distance from the target; none where the phase does not exist.
    std::optional<double> distance(double x) {
        const std::optional<double> f = function(x);
        return f ? std::optional(*f - target_) : std::nullopt;
    }
    double target() const { return target_; }
    double& x() { return x_; }

 private:
    Session& s_;
    int slot_;
    int column_;
    int phase_;
    double target_;
    CalcRequest request_;
    double& x_;  // the unknown of the data point
};

// The search as stated: f is 0 where the phase does not exist.
std::optional<double> newton(PhaseFunction& f, double x, double first_step, int& rounds) {
    double h = first_step;
    for (rounds = 1; rounds <= NewtonRounds; ++rounds) {
        const double here = f.function(x).value_or(0.0);
        const double slope = (f.function(x + h).value_or(0.0) - here) / h;
        if (slope == 0.0) {
            h *= 50.0;
            if (h > LargestValue) return std::nullopt;
            continue;
        }
        const double correction = (here - f.target()) / slope;
        x -= correction;
        if (x < 0.0) x *= -2.0;
        if (!(x > 0.0 && x < LargestValue)) return std::nullopt;
        if (std::fabs(correction / x) <= NewtonLimit) return x;
        if (std::fabs(correction) < h) h = first_step;
    }
    return std::nullopt;
}

// Whether x is a solution: the phase exists there, and one more Newton step, with a slope inside the phase,
// stays near.
bool is_solution(PhaseFunction& f, double x, double step) {
    const std::optional<double> here = f.distance(x);
    if (!here) return false;
    if (*here == 0.0) return true;
    for (const double h : {step, -step, 1e-6 * x, -1e-6 * x}) {
        const std::optional<double> there = f.distance(x + h);
        if (!there) continue;
        const double slope = (*there - *here) / h;
        return slope != 0.0 && std::fabs(*here / slope) <= 4.0 * NewtonLimit * x;
    }
    return false;
}

// Range of x that is searched when Newton fails.
struct Range {
    double low, high;
    double at(int i) const { return low * std::pow(high / low, static_cast<double>(i) / ScanPoints); }
};
Range range_of(const Session& s, int what, double x) {
    const double critical = what == iso_find_p ? s.substance.pcr : s.substance.Tcr;
    const double middle = critical > TinyT ? critical : x;
    if (!(middle > TinyT)) return {0.0, 0.0};
    const Range range =
        what == iso_find_p ? Range{1e-7 * middle, 300.0 * middle} : Range{0.2 * middle, 6.0 * middle};
    return {std::min(range.low, x > 0.0 ? 0.5 * x : range.low), std::max(range.high, 2.0 * x)};
}

// A place where the phase exists, with its distance from the target.
struct Place {
    double x = 0, distance = 0;
};

// The last place of the phase between one where it exists and one where it does not.
Place edge_of_phase(PhaseFunction& f, Place inside, double outside) {
    for (int i = 0; i < 60 && std::fabs(outside - inside.x) > 1e-10 * inside.x; ++i) {
        const double x = 0.5 * (inside.x + outside);
        if (const std::optional<double> d = f.distance(x)) {
            inside = {x, *d};
        } else {
            outside = x;
        }
    }
    return inside;
}

// Solution between two places with distances of different signs: halving with a secant step where it helps.
std::optional<double> solve_between(PhaseFunction& f, Place a, Place b) {
    for (int i = 0; i < 200; ++i) {
        if (a.distance == 0.0) return a.x;
        if (b.distance == 0.0) return b.x;
        if (std::fabs(b.x - a.x) <= 1e-9 * b.x) return 0.5 * (a.x + b.x);
        double x = b.x - b.distance * (b.x - a.x) / (b.distance - a.distance);
        const double margin = 0.01 * (b.x - a.x);
        const double low = std::min(a.x + margin, b.x - margin), high = std::max(a.x + margin, b.x - margin);
        x = i % 3 == 2 ? 0.5 * (a.x + b.x) : std::clamp(x, low, high);
        const std::optional<double> d = f.distance(x);
        if (!d) return std::nullopt;
        (*d * a.distance > 0.0 ? a : b) = {x, *d};
    }
    return std::nullopt;
}

// Every solution of the range; the one next to the start counts.
std::optional<double> scan(PhaseFunction& f, const Range& range, double start) {
    if (!(range.low > 0.0)) return std::nullopt;
    const double from = start > 0.0 ? start : std::sqrt(range.low * range.high);
    std::optional<double> best;
    const auto consider = [&](std::optional<double> x) {
        if (x && (!best || std::fabs(std::log(*x / from)) < std::fabs(std::log(*best / from)))) best = x;
    };
    const auto between = [&](const Place& a, const Place& b) {
        if ((a.distance > 0.0) != (b.distance > 0.0)) consider(solve_between(f, a, b));
    };
    const double tolerance = 1e-9 * std::fabs(f.target());
    std::optional<Place> last;
    double last_x = 0.0;
    for (int i = 0; i <= ScanPoints; ++i) {
        const double x = range.at(i);
        const std::optional<double> d = f.distance(x);
        std::optional<Place> here;
        if (d) here = Place{x, *d};
        if (last && here) {
            between(*last, *here);
        } else if (i > 0 && (last || here)) {
            const Place inside = last ? *last : *here;
            const Place edge = edge_of_phase(f, inside, last ? x : last_x);
            if (std::fabs(edge.distance) <= tolerance)
                consider(edge.x);
            else if (edge.x != inside.x)
                between(inside, edge);
        }
        last = here;
        last_x = x;
    }
    return best;
}

}  // namespace

IsoResult IsoSearch(Session& s, int What, int Column, double Target, int Phase, int Point) {
    IsoResult result;
    const bool valid = Column >= 0 && Column <= 7 && Point >= 0 &&
                       static_cast<std::size_t>(Point) < s.exp.points.size() && std::isfinite(Target);
    if (!valid) {
        result.err = -1;
        return result;
    }
    const int ExtLevel = s.calc.ExtLevel;
    const CEOSState state = s.calc.state;
    const auto row = static_cast<std::size_t>(Point);
    if (s.calc.BatchResults.size() <= row) s.calc.BatchResults.resize(row + 1);
    const BatchResult record = s.calc.BatchResults[row];
    s.calc.ExtLevel = 1;
    PhaseFunction f(s, What, Column, Target, Phase, Point);
    const double start = f.x();
    const double first_step = What == iso_find_p ? 0.0005 : 0.0001;
    std::optional<double> x;
    if (start > 0.0 && start < LargestValue) x = newton(f, start, first_step, result.rounds);
    result.rounds = std::min(result.rounds, NewtonRounds);
    if (!x || !is_solution(f, *x, first_step)) {
        x = scan(f, range_of(s, What, start), start);
        result.bracketed = x.has_value();
    }
    const bool found = x && f.distance(*x);
    s.calc.ExtLevel = ExtLevel;
    if (!found) {
        f.x() = start;
        s.calc.state = state;
        s.calc.BatchResults[row] = record;
        result.bracketed = false;
        result.err = -1;
        return result;
    }
    result.value = *x;
    return result;
}

std::string_view iso_given_label(const IsoCalculator& c) {
    return c.IsoIn == iso_find_p ? "  T/K = " : "p/kPa = ";
}

std::string_view iso_unit(const Session& s, const IsoCalculator& c) {
    return unit_text(s, function_rows[static_cast<std::size_t>(c.IsoFu)]);
}

void show_current_state(Session& s, IsoCalculator& c) {
    const TpRhoPoint& row = s.exp.points[0];
    c.txtTpVorgabe = c.IsoIn == iso_find_p ? row.T : row.p;
    c.txtTpCalc.clear();
    c.result_label = c.IsoIn == iso_find_p ? "p/kPa =" : "T/K =";
    const CalcBatchResult state = CalcBatch(s, {.Mode = 8, .Point = 0, .Quiet = true, .want_text = false});
    c.txtFuConst = state.Result[(c.optIsoPhase == phase_V ? slot_vV : slot_vL) + c.IsoFu];
}

IsoOpened open_iso_calculator(Session& s) {
    IsoOpened opened;
    if (s.exp.points.empty() || !(s.exp.points[0].T > 0.0) || !(s.exp.points[0].p > 0.0)) {
        opened.refusal = Message{.title = "Execution not possible",
                                 .text = "not yet a T|p value available!",
                                 .kind = MessageKind::warning};
        return opened;
    }
    IsoCalculator& c = opened.calculator;
    const CalcBatchResult state = CalcBatch(s, {.Mode = 8, .Point = 0, .Quiet = true, .want_text = false});
    c.optIsoPhase = state.IsL && !state.IsV ? phase_L : phase_V;
    show_current_state(s, c);
    return opened;
}

bool iso_calculate(Session& s, IsoCalculator& c) {
    TpRhoPoint& row = s.exp.points[0];
    const double before = c.IsoIn == iso_find_p ? row.T : row.p;
    (c.IsoIn == iso_find_p ? row.T : row.p) = c.txtTpVorgabe;
    c.result_label = c.IsoIn == iso_find_p ? "p/kPa =" : "T/K =";
    const IsoResult found = IsoSearch(s, c.IsoIn, c.IsoFu, c.txtFuConst, c.optIsoPhase);
    if (found.err) {
        (c.IsoIn == iso_find_p ? row.T : row.p) = before;
        c.txtTpCalc = "No solution found";
        return false;
    }
    c.txtTpCalc = genNum(found.value);
    c.last = IsoCalculator::Success{.T = row.T,
                                    .p = row.p,
                                    .IsoIn = c.IsoIn,
                                    .IsoFu = c.IsoFu,
                                    .optIsoPhase = c.optIsoPhase,
                                    .txtFuConst = c.txtFuConst};
    return true;
}

CalcBatchResult iso_state(Session& s) {
    const int ExtLevel = s.calc.ExtLevel;
    s.calc.ExtLevel = 1;
    CalcBatchResult state = CalcBatch(s, {.Mode = 8, .Point = 0});
    s.calc.ExtLevel = ExtLevel;
    return state;
}

void iso_reset(Session& s, IsoCalculator& c) {
    if (!c.last) {
        c.txtTpCalc = "No solution";
        return;
    }
    const IsoCalculator::Success& last = *c.last;
    s.exp.points[0].T = last.T;
    s.exp.points[0].p = last.p;
    c.IsoIn = last.IsoIn;
    c.IsoFu = last.IsoFu;
    c.optIsoPhase = last.optIsoPhase;
    c.txtFuConst = last.txtFuConst;
    c.txtTpVorgabe = c.IsoIn == iso_find_p ? last.T : last.p;
    c.result_label = c.IsoIn == iso_find_p ? "p/kPa =" : "T/K =";
    c.txtTpCalc = genNum(c.IsoIn == iso_find_p ? last.p : last.T);
}

}  // namespace quom
