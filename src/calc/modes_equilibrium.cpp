// Modes 4 and 5: L-V equilibrium at T or at p.
#include "calc/calc_run.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"

namespace quom {
namespace {

bool given_T(const CalcRun& run) { return run.mode() == Mode::equilibrium_T; }

// The coordinate that was searched for is known.
void take_found(CalcRun& run, double value, SaturationSource source) {
    (given_T(run) ? run.out.p : run.out.T) = value;
    run.out.saturation = source;
}

// Saturation by the vapor pressure equation. False without.
bool by_vapor_pressure_equation(CalcRun& run) {
    const SubstanceConstants& substance = run.substance();
    const Evp code = run.fluid.models.EVPKode;
    if (code == Evp::none) return false;
    const EvpResult r = given_T(run) ? pLV_EVP(substance, run.T(), code) : TLV_EVP(substance, run.p(), code);
    if (r.reason != Reason::none || !(r.value > 0.0) || !std::isfinite(r.value)) return false;
    take_found(run, r.value, SaturationSource::evp);
    run.warn(
        evp_warning(substance, run.T(), code, r.dT, given_T(run) ? evp_warns_forward : evp_warns_inverse));
    return true;
}

// Saturation of the PARTIAL concept: vapor pressure equation, else the data point. False after the failure.
bool partial_saturation(CalcRun& run) {
    if (by_vapor_pressure_equation(run)) return true;
    const std::optional<double>& value = given_T(run) ? run.input.p : run.input.T;
    if (!is_given(value) || *value < TinyT) {
        run.fail(given_T(run) ? Reason::no_p_available : Reason::no_T_available,
                 given_T(run) ? run.T() : run.p());
        return false;
    }
    take_found(run, *value, SaturationSource::data_point);
    return true;
}

// V by the equation of state at p(LV), L by Benson's method or the database.
void partial_equilibrium(CalcRun& run) {
    if (!partial_saturation(run)) return;
    set_eos_constants(run);
    if (const double vV = partial_vapor_volume(run.fluid, run.T(), run.p()); vV > 0.0) set_V(run, vV);
    if (!run.input.setup.RhoLWanted) return;
    const double rhoV = run.out.V ? run.out.V->rho.value_or(0.0) : 0.0;
    set_partial_L(run, partial_liquid_density(run, run.T(), rhoV, run.input.setup.benson));
}

// Both phases by the cubic equation.
void eos_equilibrium(CalcRun& run) {
    const Saturation saturation = given_T(run) ? pLV_EOS(run.fluid, run.T()) : TLV_EOS(run.fluid, run.p());
    if (!saturation.found()) {
        const SubstanceConstants& substance = run.substance();
        return run.fail(saturation.reason, given_T(run) ? run.T() : run.p(),
                        given_T(run) ? substance.Tcr : substance.pcr);
    }
    take_found(run, given_T(run) ? saturation.p : saturation.T, SaturationSource::eos);
    run.out.liquid = LiquidSource::eos;
    set_eos(run, saturation);
    set_L(run, saturation.vL);
    set_V(run, saturation.vV);
}

void find_equilibrium(CalcRun& run) {
    if (!run.input.setup.GlobalCalc || run.fluid.VPhaseOnly) {
        partial_equilibrium(run);
    } else if (run.fluid.models.Konzept) {
        eos_equilibrium(run);
    } else if (partial_saturation(run)) {
        set_eos_constants(run);  // a vapor pressure equation alone has no densities
    }
}

}  // namespace

void mode_equilibrium(CalcRun& run) {
    const SubstanceConstants& substance = run.substance();
    if (!(given_T(run) ? take_T(run) : take_p(run))) return;
    if (given_T(run) && !(run.T() < substance.Tcr))
        return run.fail(Reason::above_critical_T, run.T(), substance.Tcr);
    if (!given_T(run) && !(run.p() < substance.pcr))
        return run.fail(Reason::above_critical_p, run.p(), substance.pcr);
    set_phases(run, true, true, PhaseWord::VL);
    find_equilibrium(run);
    if (!run.out.failure) add_vaporization(run, false);
}

}  // namespace quom
