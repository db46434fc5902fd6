// Modes 9 (GLOBAL) and 10 (PARTIAL).
#include "calc/tank.h"

#include "calc/calc_run.h"
#include "calc/reference_point.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

// T, rho and v of the run from m, V, T. False after the failure: not a tank.
bool take_tank(CalcRun& run) {
    const StateInput& in = run.input;
    Outcome& out = run.out;
    out.T = in.T;
    out.tank_mass = in.m;
    out.tank_volume = in.V;
    const bool given = is_given(in.m) && is_given(in.V) && is_given(in.T);
    if (!given || !(*in.m * *in.V * *in.T > TinyT) || !std::isfinite(*in.m * *in.V * *in.T)) {
        run.fail(Reason::no_tank_given);
        return false;
    }
    if (!run.has_M()) {
        run.fail(Reason::no_molar_mass);
        return false;
    }
    out.rho = *in.m / *in.V;
    out.v = run.M() / *out.rho;
    return true;
}

// The reference point of Benson's method: as the input has it, else the proposal. False after the failure.
bool take_reference(CalcRun& run, BensonReference& benson) {
    benson = run.input.setup.benson;
    if (!run.input.setup.BensonRhoL || benson.complete()) return true;
    const ReferencePointResult proposal = ReferencePoint(run.fluid);
    benson = proposal.reference();
    if (proposal.reason == Reason::none && benson.complete()) return true;
    run.fail(Reason::no_reference_point);
    return false;
}

// A tank full of liquid: nothing tells its pressure.
void liquid_alone(CalcRun& run) {
    set_phases(run, true, false, PhaseWord::L);
    run.out.p.reset();
    set_L(run, *run.out.v, false);
    run.out.quality = 0.0;
    set_eos_constants(run);
}

// Only vapor: p of the equation of state at T, v.
void vapor_alone(CalcRun& run) {
    const double v = *run.out.v;
    const PressureResult pressure = pTv(run.fluid, run.T(), v);
    if (pressure.reason != Reason::none) return run.fail(pressure.reason, v, pressure.bound);
    if (!(pressure.p > 0.0)) return run.fail(Reason::pressure_not_positive, pressure.p);
    run.out.p = pressure.p;
    set_phases(run, false, true, PhaseWord::V);
    set_V(run, v);
    run.out.quality = 1.0;
    const VolumeResult volume = VolumeTp(run.fluid, run.T(), pressure.p);
    if (volume.reason == Reason::none) {
        set_eos(run, volume);
    } else {
        set_eos_constants(run);
    }
}

// Both phases at p(LV): y = (V/m - 1/rho(L))/(1/rho(V) - 1/rho(L)).
void both_phases(CalcRun& run, double pLV, double vV, double rhoL) {
    Outcome& out = run.out;
    out.p = pLV;
    out.saturation = SaturationSource::evp;
    set_phases(run, true, true, PhaseWord::VL);
    set_V(run, vV);
    set_partial_L(run, rhoL);
    const double rhoV = run.M() / vV;
    out.quality = (1.0 / *out.rho - 1.0 / rhoL) / (1.0 / rhoV - 1.0 / rhoL);
    set_eos_constants(run);
    out.eos->PhaseCode = run.fluid.VPhaseOnly ? std::int16_t{0} : std::int16_t{3};
}

// Phases by the PARTIAL method: p(LV) from the vapor pressure equation, rho(V) from the equation of state,
// rho(L) by Benson's method or from rho(L) = Fu(T).
void partial_tank(CalcRun& run) {
    const SubstanceConstants& substance = run.substance();
    Outcome& out = run.out;
    const double T = run.T();
    if (run.fluid.VPhaseOnly && substance.Tcr > 0.0 && T >= substance.Tcr) return vapor_alone(run);
    const Evp code = run.fluid.models.EVPKode;
    const EvpResult saturation = pLV_EVP(substance, T, code);
    if (saturation.reason != Reason::none) return run.fail(saturation.reason, T);
    run.warn(evp_warning(substance, T, code, saturation.dT, evp_warns_forward));
    const double pLV = saturation.value;
    // An equation of the V-phase only: up to p(LV) the whole tank is vapor at its own pressure.
    if (run.fluid.VPhaseOnly) {
        const PressureResult pressure = pTv(run.fluid, T, *out.v);
        if (pressure.reason == Reason::none && pressure.p > 0.0 && pressure.p <= pLV) return vapor_alone(run);
    }
    BensonReference benson;
    if (!take_reference(run, benson)) return;
    const double vV = partial_vapor_volume(run.fluid, T, pLV);
    if (!(vV > 0.0)) return run.fail(Reason::no_vapor_density, T);
    const double rhoV = run.M() / vV;
    const double rhoL = partial_liquid_density(run, T, rhoV, benson);
    if (!(rhoL > 0.0)) return run.fail(Reason::no_liquid_density, T);
    if (*out.rho >= rhoL) return liquid_alone(run);
    if (*out.rho <= rhoV) return vapor_alone(run);
    both_phases(run, pLV, vV, rhoL);
}

void add_contents(CalcRun& run) {
    Outcome& out = run.out;
    const double rhoL = out.L ? run.M() / out.L->v : 0.0, rhoV = out.V ? run.M() / out.V->v : 0.0;
    out.tank =
        tank_contents(*out.tank_mass, *out.tank_volume, run.M(), out.quality.value_or(1.0), rhoL, rhoV);
}

}  // namespace

TankContents tank_contents(double m, double V, double M, double y, double rhoL, double rhoV) {
    TankContents t;
    t.y = y;
    if (y >= 1.0) {
        t.VV = V;
    } else if (y > 0.0) {
        t.VV = rhoL * y * V / ((rhoL - rhoV) * y + rhoV);
    }
    t.VL = V - t.VV;
    t.mV = y * m;
    t.mL = m - t.mV;
    t.nV = t.mV / M;
    t.nL = t.mL / M;
    t.fill = t.VL / V;
    return t;
}

void mode_tank(CalcRun& run) {
    if (!take_tank(run)) return;
    const bool partial = run.mode() == Mode::tank_partial;
    const double Tcr = run.substance().Tcr;
    if (partial && run.T() >= Tcr) return run.fail(Reason::partial_above_critical, run.T(), Tcr);
    if (run.fluid.VPhaseOnly) {
        // The volume has to be one that the equation of state can have at all.
        const PressureResult pressure = pTv(run.fluid, run.T(), *run.out.v);
        if (pressure.reason != Reason::none) return run.fail(pressure.reason, *run.out.v, pressure.bound);
    }
    if (partial || run.fluid.VPhaseOnly) {
        partial_tank(run);
    } else {
        state_T_v(run);
    }
    if (run.out.failure) return;
    add_contents(run);
    add_vaporization_of_state(run);
}

}  // namespace quom
