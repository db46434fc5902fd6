// Changes of state as lines in a diagram: straight line, isotherm, isobar, isochore, isentrope, isenthalpe,
// and the last three between the saturated states.
#include <algorithm>
#include <array>
#include <cmath>

#include "diagrams/curve_xy.h"
#include "engine/iso_search.h"
#include "engine/lever_rule.h"

namespace quom {
namespace {

constexpr int StraightSteps = 50;
constexpr double SearchStep = 0.8;    // of an isentrope or isenthalpe, in parts of the span over Dens
constexpr double TwoPhaseStep = 1.5;  // between the saturated states
constexpr double BeyondLimit = 0.9;   // a scan runs on by this share of a step, clamped: it ends at the limit
constexpr double FractionBand = 1e-5;

// A process line in the making. The ideal gas in place of the equation in force is a fluid of its own.
struct LineRun {
    CurveRun& run;
    const ProcessRec& process;
    std::shared_ptr<const Fluid> ideal;
    const Fluid& fluid;

    explicit LineRun(CurveRun& r)
        : run(r),
          process(r.in.process),
          ideal(process.UseIdealEOS ? with_eos(r.fluid, Eos::ideal_gas) : nullptr),
          fluid(ideal ? *ideal : r.fluid) {}

    bool homogeneous() const { return run.in.line != Kind::line_two_phase; }
    // Values of the running quantity from limit to limit.
    std::vector<double> scan(double from, double to, double share) const {
        const double step = share * (to - from) / std::max(run.in.options.Dens, 1);
        return scan_values(from, to, step, BeyondLimit, true, run.round_limit());
    }
    void add(const LineState& state) {
        if (run.below_triple(state.T)) return;
        const std::size_t before = run.out.curve.points.size();
        const LinePoint point = CurveXY(run, state, homogeneous());
        run.add(point.X, point.Y, point.Par);
        if (run.out.curve.points.size() == before) return;
        run.out.LastProcessT = state.T;
        run.out.LastProcessP = state.p;
    }
};

void no_result(CurveRun& run) {
    run.out.Status = CurveStatus::no_result;
    run.out.Msg = "no result with these input data";
    run.out.Outside = false;
}

// Volume of a homogeneous state at T, p: of three roots that of the phase, stable or not; a single root where
// it is this phase.
std::optional<double> volume_of_phase(const Fluid& fluid, double T, double p, Phase phase) {
    const VolumeResult r = VolumeTp(fluid, T, p);
    if (r.reason != Reason::none) return std::nullopt;
    const auto& root = r.roots.VRoot;
    if (r.nRoots == 3) return phase == phase_V ? root[2] : root[0];
    if (r.nRoots == 0) return r.vV;
    if (!(phase == phase_V ? r.VFlag : r.LFlag)) return std::nullopt;
    return root[2] > 0.0 ? root[2] : root[0];
}

void add_T_p(LineRun& line, double T, double p) {
    const std::optional<double> v = volume_of_phase(line.fluid, T, p, line.process.phase);
    if (v) line.add({.T = T, .p = p, .at = ThermoState(line.fluid, T, p, *v)});
}

void straight(CurveRun& run) {
    const ProcessRec& line = run.in.process;
    const double span_x = line.T2 - line.T1, span_y = line.p2 - line.p1;
    if (!std::isfinite(span_x) || !std::isfinite(span_y) || (span_x == 0.0 && span_y == 0.0)) {
        run.out.Status = CurveStatus::outside;
        return;
    }
    const bool x_leads = std::fabs(span_x) >= std::fabs(span_y);
    const double from = x_leads ? line.T1 : line.p1, span = x_leads ? span_x : span_y;
    const double other = x_leads ? line.p1 : line.T1, slope = (x_leads ? span_y : span_x) / span;
    double leading = from;
    for (int i = 0; i <= StraightSteps; ++i, leading += span / StraightSteps) {
        const double a = i == StraightSteps ? from + span : leading, b = other + (a - from) * slope;
        run.add(x_leads ? a : b, x_leads ? b : a, 0.0);
    }
}

void isotherm(LineRun& line) {
    const double T = line.process.T1 > 0.0 ? line.process.T1 : line.run.in.T;
    for (const double p : line.scan(line.process.From, line.process.To, 1.0)) add_T_p(line, T, p);
}

void isobar(LineRun& line) {
    const double p = line.process.p1 > 0.0 ? line.process.p1 : line.run.in.p;
    for (const double T : line.scan(line.process.From, line.process.To, 1.0)) add_T_p(line, T, p);
}

// A state that the equation has and that can be: p above 0, not between the spinodals.
std::optional<LineState> isochoric_state(const Fluid& fluid, double x, double v, bool ScanT) {
    LineState state;
    state.T = state.p = x;
    if (ScanT) {
        const PressureResult r = pTv(fluid, x, v);
        if (r.reason != Reason::none) return std::nullopt;
        state.p = r.p;
    } else {
        const TemperatureResult r = TpV(fluid, x, fluid.M / v, true);
        if (r.reason != Reason::none) return std::nullopt;
        state.T = r.T;
    }
    if (!(state.p > 0.0) || !(state.T > 0.0)) return std::nullopt;
    const PhaseArrays arrays = ThermoFunc(fluid, state.T, state.p, v);
    if (arrays.DerivA[dpdv_T] >= 0.0) return std::nullopt;
    state.at = state_functions(fluid, state.T, state.p, v, arrays);
    return state;
}

void isochore(LineRun& line) {
    const ProcessRec& process = line.process;
    const std::optional<double> v = volume_of_phase(line.fluid, process.T1, process.p1, process.phase);
    if (!v) return;
    bool interrupted = false;
    for (const double x : line.scan(process.From, process.To, 1.0)) {
        const std::optional<LineState> state = isochoric_state(line.fluid, x, *v, process.ScanT);
        if (state) {
            line.add(*state);
        } else {
            interrupted = true;
        }
    }
    if (interrupted && !line.run.out.curve.points.empty()) line.run.out.Status = CurveStatus::line_aborted;
}

// The state at the running T or p in which s or h has its value, found from the state before.
class HeldFunction {
 public:
    HeldFunction(const Fluid& fluid, const ProcessRec& process)
        : fluid_(fluid),
          ScanT_(process.ScanT),
          column_(process.kind == ProcessKind::isenthalpe ? iso_h : iso_s),
          asked_(fluid.VPhaseOnly ? phase_V : process.phase),
          phase_(asked_) {
        const std::optional<double> v = volume_of_phase(fluid, process.T1, process.p1, process.phase);
        if (!v) return;
        target_ = function_of(ThermoState(fluid, process.T1, process.p1, *v), column_);
        start_ = ScanT_ ? process.p1 : process.T1;
        rises_ = dhdp(process.T1, process.p1, *v) > 0.0;
    }
    bool has_start() const { return std::isfinite(target_); }

    std::optional<LineState> at(double x) {
        for (const Phase phase : {phase_, phase_ == phase_V ? phase_L : phase_V}) {
            const IsoResult found = IsoSearch(fluid_, {.What = ScanT_ ? iso_find_p : iso_find_T,
                                                       .Column = column_,
                                                       .Target = target_,
                                                       .phase = phase,
                                                       .given = x,
                                                       .start = guess(x),
                                                       .all = false});
            if (found.reason != Reason::none || !(found.value > 0.0)) continue;
            const double T = ScanT_ ? x : found.value, p = ScanT_ ? found.value : x;
            // Beyond the critical point both phases are one fluid: the line goes on there under either name.
            if (phase != asked_ && phase_region(fluid_, T, p) == 0) continue;
            const VolumeResult r = VolumeTp(fluid_, T, p);
            const double v = phase == phase_V ? r.vV : r.vL;
            if (ScanT_ && column_ == iso_h && (dhdp(T, p, v) > 0.0) != rises_) return std::nullopt;
            phase_ = phase;
            remember(x, found.value);
            return LineState{.T = T, .p = p, .at = ThermoState(fluid_, T, p, v)};
        }
        return std::nullopt;
    }

 private:
    // (dh/dp)_T = v - T (dv/dT)_p. An isenthalpe runs in T up to the inversion curve, where its sign changes:
    // a state behind it is not on this line.
    double dhdp(double T, double p, double v) const {
        return v - T * ThermoFunc(fluid_, T, p, v).DerivA[dvdT_p];
    }
    double guess(double x) const {
        if (!(last_x_ > 0.0)) return start_;
        const double next = start_ + (x - last_x_) * slope_;
        return next > 0.5 * start_ && next < 2.0 * start_ ? next : start_;
    }
    void remember(double x, double value) {
        slope_ = last_x_ > 0.0 && x != last_x_ ? (value - start_) / (x - last_x_) : 0.0;
        last_x_ = x;
        start_ = value;
    }

    const Fluid& fluid_;
    bool ScanT_;
    IsoFunction column_;
    Phase asked_, phase_;  // phase_: in which the last state was found
    double target_ = std::numeric_limits<double>::quiet_NaN();
    double start_ = 0, last_x_ = 0, slope_ = 0;  // the state before and the way to it
    bool rises_ = false;                         // h with p at the start
};

void isentrope(LineRun& line) {
    HeldFunction held(line.fluid, line.process);
    bool aborted = false;
    if (held.has_start()) {
        const double share = line.process.ScanT ? 0.5 * SearchStep : SearchStep;
        for (const double x : line.scan(line.process.From, line.process.To, share)) {
            const std::optional<LineState> state = held.at(x);
            aborted = !state;
            if (aborted) break;
            line.add(*state);
        }
    }
    const std::size_t made = line.run.out.curve.points.size();
    if (made <= 1) return no_result(line.run);
    if (aborted && made > 2) line.run.out.Status = CurveStatus::line_aborted;
}

std::optional<LeverQuantity> held_quantity(ProcessKind kind) {
    switch (kind) {
        case ProcessKind::isochore:
            return lever_v;
        case ProcessKind::isentrope:
            return lever_s;
        case ProcessKind::isenthalpe:
            return lever_h;
        default:
            return std::nullopt;
    }
}

void two_phase(LineRun& line) {
    const ProcessRec& process = line.process;
    const std::optional<LeverQuantity> held = held_quantity(process.kind);
    if (!held) return;
    const auto index = static_cast<std::size_t>(*held);
    const auto temperature = [&](double x) { return process.ScanT ? x : TLV_EOS(line.fluid, x).T; };
    const double given = process.ScanT ? process.T1 : process.p1;
    const SaturatedFunctions start = ThermoSat(line.fluid, temperature(given > 0.0 ? given : process.From));
    if (start.reason != Reason::none) return;
    const LeverRow at_start = lever_table(start.L, start.V)[index];
    const double value = process.phase == phase_V ? at_start.V : at_start.L;
    const double from = temperature(process.From), to = temperature(process.To);
    if (!(from > 0.0) || !(to > 0.0)) return;
    for (const double T : line.scan(from, to, TwoPhaseStep)) {
        const SaturatedFunctions both = ThermoSat(line.fluid, T);
        if (both.reason != Reason::none) continue;
        LeverTable table = lever_table(both.L, both.V);
        table[index].mix = value;
        const LeverResult mixed = LeverRule(*held, table);
        if (mixed.Err != 0 || !(mixed.Fraction >= -FractionBand && mixed.Fraction <= 1.0 + FractionBand))
            continue;
        line.add({.T = T, .p = both.p, .at = lever_state(mixed.Table), .fraction = mixed.Fraction});
    }
}

struct Line {
    Kind kind;
    void (*calculate)(LineRun& line);
};
constexpr auto lines = std::to_array<Line>({
    {Kind::line_isotherm, isotherm},
    {Kind::line_isobar, isobar},
    {Kind::line_isochore, isochore},
    {Kind::line_isentrope, isentrope},
    {Kind::line_two_phase, two_phase},
});

}  // namespace

void curve_process_line(CurveRun& run) {
    run.out.curve.Par = run.out.curve.Tag = par_none;
    if (run.kind.process_par == par_none) {
        run.out.Status = CurveStatus::failed;
        run.out.Msg = "A process line is not possible in this diagram.";
        return;
    }
    if (run.in.line == Kind::line_straight) return straight(run);
    const ProcessRec& process = run.in.process;
    if (process.From == process.To) {
        run.out.Status = CurveStatus::outside;
        return;
    }
    LineRun line(run);
    run.out.curve.Par = process_par(run.kind, line.homogeneous());
    for (const Line& row : lines)
        if (row.kind == run.in.line) row.calculate(line);
    if (run.out.curve.points.empty()) no_result(run);
}

}  // namespace quom
