// States by the equation of state: at T, p (modes 3, 8), at T, rho (1, 2) and at p, rho (13).
#include <algorithm>
#include <cmath>

#include "calc/calc_run.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double SaturationMismatch = 1e-6;  // of p: how far p(LV) at the T found may be from the specified p
constexpr double SameVolume = 1e-6;          // relative

bool below_critical_T(const CalcRun& run) {
    return static_cast<float>(run.T()) < static_cast<float>(run.substance().Tcr);
}

// Phases as VolumeTp has them at T, p of the run.
void take_stable_phases(CalcRun& run, const VolumeResult& volume) {
    Outcome& out = run.out;
    const bool one_fluid = volume.LFlag && volume.VFlag && volume.nRoots == 1;
    if (one_fluid) {
        set_phases(run, true, true, word_of_one_fluid(run.fluid, run.T(), run.p(), volume.vV));
        set_V(run, volume.vV);
        out.L = out.V;
    } else {
        const bool both = volume.LFlag && volume.VFlag;
        set_phases(run, volume.LFlag, volume.VFlag,
                   both           ? PhaseWord::VL
                   : volume.LFlag ? PhaseWord::L
                                  : PhaseWord::V);
        if (volume.LFlag) set_L(run, volume.vL);
        if (volume.VFlag) set_V(run, volume.vV);
    }
    if (out.phase != PhaseWord::VL) out.quality = out.phase == PhaseWord::L ? 0.0 : 1.0;
}

// z = y z(V) + (1 - y) z(L) for every function that both phases have.
void add_mixture(CalcRun& run) {
    const PhaseOutcome& L = *run.out.L;
    const PhaseOutcome& V = *run.out.V;
    const double y = *run.out.quality;
    MixtureOutcome& mean = run.out.mixture.emplace();
    mean.v = y * V.v + (1.0 - y) * L.v;
    if (run.has_M()) mean.rho = run.M() / mean.v;
    const auto set = [&](std::optional<double> MixtureOutcome::*to,
                         std::optional<double> PhaseOutcome::*from) {
        if (L.*from && V.*from) mean.*to = y * *(V.*from) + (1.0 - y) * *(L.*from);
    };
    set(&MixtureOutcome::h, &PhaseOutcome::h);
    set(&MixtureOutcome::s, &PhaseOutcome::s);
    set(&MixtureOutcome::g, &PhaseOutcome::g);
    set(&MixtureOutcome::u, &PhaseOutcome::u);
    set(&MixtureOutcome::a, &PhaseOutcome::a);
    set(&MixtureOutcome::eH, &PhaseOutcome::eH);
    set(&MixtureOutcome::eU, &PhaseOutcome::eU);
    set(&MixtureOutcome::cp, &PhaseOutcome::cp);
    set(&MixtureOutcome::cV, &PhaseOutcome::cV);
}

// v between the saturated volumes: y = (v - v(L))/(v(V) - v(L)).
void two_phase_state(CalcRun& run, const Saturation& saturation) {
    const double v = *run.out.v;
    set_eos(run, saturation);
    run.out.eos->msg = VolumeTp(run.fluid, run.T(), saturation.p).msg;
    set_phases(run, true, true, PhaseWord::VL);
    set_L(run, saturation.vL);
    set_V(run, saturation.vV);
    run.out.quality = (v - saturation.vL) / (saturation.vV - saturation.vL);
    if (run.below_critical()) add_mixture(run);
}

// One phase of the volume of the run at T, p. False after a failure: the equation is unstable there.
bool one_phase_state(CalcRun& run, bool liquid) {
    Outcome& out = run.out;
    const double v = *out.v;
    set_phases(run, liquid, !liquid, liquid ? PhaseWord::L : PhaseWord::V);
    const PhaseArrays arrays = ThermoFunc(run.fluid, run.T(), run.p(), v);
    if (arrays.DerivA[dpdv_T] > 0.0) {
        run.fail(Reason::unstable, v, arrays.DerivA[dpdv_T]);
        return false;
    }
    liquid ? set_L(run, v) : set_V(run, v);
    out.quality = liquid ? 0.0 : 1.0;
    return true;
}

// p of the equation at T, v into the run. False after a failure: no such volume, or no pressure above 0.
bool take_pressure(CalcRun& run) {
    const double v = *run.out.v;
    const PressureResult pressure = pTv(run.fluid, run.T(), v);
    if (pressure.reason != Reason::none) {
        run.fail(pressure.reason, v, pressure.bound);
        return false;
    }
    if (!(pressure.p > 0.0)) {
        run.fail(Reason::pressure_not_positive, pressure.p);
        return false;
    }
    run.out.p = pressure.p;
    return true;
}

bool near(double x, double v) { return std::fabs(x - v) <= SameVolume * v; }

// Below T(cr) where the search for p(LV) has failed: the state is one phase where the equation itself has
// this volume as the stable one at its own pressure. Otherwise the cause of the failure is told.
void state_without_saturation(CalcRun& run, const Saturation& saturation) {
    const Failure no_saturation{saturation.reason, run.T(), run.substance().Tcr};
    if (!take_pressure(run)) {
        if (run.out.failure.reason == Reason::pressure_not_positive) run.out.failure = no_saturation;
        return;
    }
    const double v = *run.out.v;
    const VolumeResult volume = VolumeTp(run.fluid, run.T(), run.p());
    const bool liquid = volume.LFlag && near(volume.vL, v), vapor = volume.VFlag && near(volume.vV, v);
    if (volume.reason != Reason::none || !(liquid || vapor)) {
        run.out.failure = no_saturation;
        return;
    }
    set_eos(run, volume);
    one_phase_state(run, liquid);
}

// One side of the saturation, at T(cr) and above the vapor's.
void state_beside_saturation(CalcRun& run, bool liquid) {
    if (!take_pressure(run)) return;
    if (!one_phase_state(run, liquid)) return;
    const VolumeResult volume = VolumeTp(run.fluid, run.T(), run.p());
    if (volume.reason == Reason::none) {
        set_eos(run, volume);
    } else {
        set_eos_constants(run);
    }
}

void vapor_only_state(CalcRun& run) {
    const VolumeResult volume = VolumeTp(run.fluid, run.T(), run.p());
    one_phase_state(run, false);
    set_eos(run, volume);
}

}  // namespace

PhaseWord word_of_one_fluid(const Fluid& fluid, double T, double p, double v) {
    const std::int16_t region = phase_region(fluid, T, p);
    const bool liquid = region == 1 || (region == 0 && v < fluid.eos.vcrEOS);
    return liquid ? PhaseWord::L : PhaseWord::V;
}

void state_T_p(CalcRun& run) {
    const VolumeResult volume = VolumeTp(run.fluid, run.T(), run.p());
    if (volume.reason != Reason::none) return run.fail(volume.reason, run.T(), run.p());
    set_eos(run, volume);
    take_stable_phases(run, volume);
    // A state that is assumed to be an equilibrium: the vapor of the equation, the liquid of another model.
    const CalcSetup& setup = run.input.setup;
    if (run.mode() != Mode::T_p || !setup.VLEAssumed || !setup.RhoLWanted || !(volume.vV > 0.0)) return;
    set_phases(run, true, true, PhaseWord::VL);
    run.out.quality.reset();
    set_V(run, volume.vV);
    run.out.L.reset();
    set_partial_L(run, partial_liquid_density(run, run.T(), run.out.V->rho.value_or(0.0), setup.benson));
}

void state_T_v(CalcRun& run) {
    if (run.fluid.VPhaseOnly) {
        if (take_pressure(run)) vapor_only_state(run);
        return;
    }
    if (!below_critical_T(run)) return state_beside_saturation(run, false);
    const Saturation saturation = pLV_EOS(run.fluid, run.T());
    if (!saturation.found()) return state_without_saturation(run, saturation);
    const double v = *run.out.v;
    if (v > saturation.vL && v < saturation.vV) {
        run.out.p = saturation.p;
        return two_phase_state(run, saturation);
    }
    state_beside_saturation(run, v <= saturation.vL);
}

void state_p_v(CalcRun& run) {
    Outcome& out = run.out;
    const double p = *out.p, v = *out.v;
    const TemperatureResult found = TpV(run.fluid, p, *out.rho, false);
    if (found.reason != Reason::none) return run.fail(Reason::no_T_at_p_rho, p, *out.rho);
    out.T = found.T;
    if (run.fluid.VPhaseOnly) return vapor_only_state(run);
    if (below_critical_T(run)) {
        const Saturation saturation = pLV_EOS(run.fluid, found.T);
        if (saturation.found() && v > saturation.vL && v < saturation.vV) {
            if (std::fabs(saturation.p - p) > SaturationMismatch * p)
                return run.fail(Reason::no_T_at_p_rho, p, *out.rho);
            return two_phase_state(run, saturation);
        }
    }
    const VolumeResult volume = VolumeTp(run.fluid, found.T, p);
    if (volume.reason != Reason::none) return run.fail(volume.reason, found.T, p);
    const bool one_fluid = volume.nRoots == 1 && volume.LFlag && volume.VFlag;
    const bool liquid = one_fluid ? word_of_one_fluid(run.fluid, run.T(), p, v) == PhaseWord::L
                                  : below_critical_T(run) && v < run.fluid.eos.vcrEOS;
    if (!one_phase_state(run, liquid)) return;
    set_eos(run, volume);
    if (!one_fluid) return;
    set_phases(run, true, true, out.phase);
    liquid ? out.V = out.L : out.L = out.V;
}

void mode_state(CalcRun& run) {
    switch (run.mode()) {
        case Mode::T_rho:
        case Mode::T_rhoL:
            if (take_T(run) && take_rho(run)) state_T_v(run);
            break;
        case Mode::p_rho:
            if (take_p(run) && take_rho(run)) state_p_v(run);
            break;
        default:
            if (take_T(run) && take_p(run)) state_T_p(run);
            break;
    }
    if (run.out.failure || run.mode() == Mode::functions) return;
    add_vaporization_of_state(run);
}

}  // namespace quom
