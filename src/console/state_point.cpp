#include "console/state_point.h"

#include <cmath>

#include "base/code_page.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"

namespace quom::console {
namespace {

constexpr double VanishingSlope = 1e-8;  // |v/p (dp/dv)_T|, 1 in an ideal gas

PhaseState evaluate(Session& s, int phase, double T, double p, double v) {
    PhaseState state;
    state.v = v;
    state.functions = ThermoState(s, T, p, v, phase);
    phase_functions(s, phase, T, p, v, state.arrays);
    ExpansionKoeff(phase, p, v, state.arrays);
    return state;
}

// Tells where a phase is stable that the equation of state does not describe: a solid, or the one that the
// vapor pressure equation of the PARTIAL concept finds.
void note_other_phase(Session& s, StateResult& r) {
    const double Ttr = s.substance.Ttr;
    if (r.T < Ttr)
        r.notes.push_back(
            "The triple point is at " + shown(Ttr) +
            " K: below it the stable phase may be a solid, which no equation of state here describes.");
    if (s.models.Konzept || r.y || r.T >= s.substance.Tcr || s.models.EVPKode == evp_none) return;
    const EvpResult evp = pLV_EVP(s, r.T, s.models.EVPKode);
    if (evp.err || (r.p > evp.value) == r.L.has_value()) return;
    const std::string pLV = "p(LV) = " + shown(evp.value) + " kPa by " +
                            std::string(trim(evp_name(s.models.EVPKode))) + ": the stable phase is a ";
    if (r.p > evp.value) {
        r.notes.push_back(pLV + "liquid" +
                          (s.models.VPhaseOnly ? ", which this equation of state does not describe."
                                               : "; the equation of state has it as a vapor."));
    } else {
        r.notes.push_back(pLV + "vapor; the equation of state has it as a liquid.");
    }
}

// Fills the phases of a state at T and p from the volumes found there.
void take_phases(Session& s, StateResult& r) {
    const VolumeResult& volume = r.volume;
    const bool one_fluid = volume.nRoots == 1 && volume.LFlag && volume.VFlag;
    const bool liquid_side = one_fluid && volume.PhaseRegion == 1;
    if (volume.LFlag && (!one_fluid || liquid_side)) r.L = evaluate(s, phase_L, r.T, r.p, volume.vL);
    if (volume.VFlag && !liquid_side) r.V = evaluate(s, phase_V, r.T, r.p, volume.vV);
    if (one_fluid) {
        r.phase = volume.PhaseRegion == 4 ? "critical" : liquid_side ? "L, above p(cr)" : "fluid, L = V";
        if (volume.PhaseRegion == 3) r.phase = "V";
    } else {
        r.phase = r.L && r.V ? "L and V in equilibrium" : r.L ? "L" : "V";
    }
}

std::optional<Fault> state_of_T_p(Session& s, double T, double p, StateResult& r) {
    r.T = T, r.p = p;
    r.volume = VolumeTp(s, T, p);
    r.roots = s.scratch.VRoot;
    if (r.volume.err)
        return Fault{status_no_result, "The equation of state has no volume at " + shown(T) + " K and " +
                                           shown(p) + " kPa" +
                                           (s.models.VPhaseOnly ? ": R T/p + B is not above 0." : ".")};
    take_phases(s, r);
    return {};
}

// The saturated volumes at T when v lies between them.
struct Dome {
    double p = 0, vL = 0, vV = 0;
};
std::optional<Dome> dome_around(Session& s, double T, double v, StateResult& r) {
    if (s.models.VPhaseOnly || T >= s.substance.Tcr) return {};
    const Saturation sat = pLV_EOS(s, T);
    const Dome dome{sat.value, s.scratch.VRoot[0], s.scratch.VRoot[2]};
    if (sat.err)
        r.notes.push_back("The equation of state gives no p(LV) at " + shown(T) +
                          " K: whether this state is one phase is not known.");
    if (sat.err || !(v > dome.vL && v < dome.vV)) return {};
    return dome;
}

void two_phases(Session& s, double T, double p, double v, const Dome& dome, StateResult& r) {
    r.T = T, r.p = p, r.v = v;
    r.volume = VolumeTp(s, T, p);
    r.roots = {dome.vL, s.scratch.VRoot[1], dome.vV};
    r.volume.vL = dome.vL, r.volume.vV = dome.vV;
    r.volume.LFlag = r.volume.VFlag = true;
    r.L = evaluate(s, phase_L, T, p, dome.vL);
    r.V = evaluate(s, phase_V, T, p, dome.vV);
    r.y = (v - dome.vL) / (dome.vV - dome.vL);
    r.phase = "L and V in equilibrium";
}

// A single phase with a given volume: its side is that of the critical volume.
std::optional<Fault> single_phase(Session& s, double T, double p, double v, StateResult& r) {
    r.T = T, r.p = p, r.v = v;
    r.volume = VolumeTp(s, T, p);
    r.roots = s.scratch.VRoot;
    const bool vapor_only = s.models.VPhaseOnly, below = T < s.substance.Tcr;
    const bool liquid = !vapor_only && below && v < s.eos.vcrEOS;
    const PhaseState phase = evaluate(s, liquid ? phase_L : phase_V, T, p, v);
    if (phase.arrays.DerivA[liquid ? phase_L : phase_V][dpdv_T] > 0.0)
        return Fault{status_no_result, "At " + shown(T) + " K and v = " + shown(v) +
                                           " m^3/kmol the equation of state is unstable (dp/dv above 0)."};
    if (r.volume.nRoots == 3) r.volume.LFlag = liquid, r.volume.VFlag = !liquid;
    (liquid ? r.L : r.V) = phase;
    const bool fluid = !vapor_only && !below && p >= s.substance.pcr;
    r.phase = liquid ? "L" : fluid ? "fluid, L = V" : "V";
    return {};
}

std::optional<Fault> state_of_T_v(Session& s, double T, double v, StateResult& r) {
    if (const std::optional<Dome> dome = dome_around(s, T, v, r)) {
        two_phases(s, T, dome->p, v, *dome, r);
        return {};
    }
    EOSParT(s, T);
    const PressureResult pressure = pTv(s, T, v);
    const std::string rho = shown(static_cast<double>(s.substance.MolMass) / v) + " kg/m^3";
    if (pressure.err)
        return Fault{status_no_result, rho + " is not possible at " + shown(T) + " K: v = " + shown(v) +
                                           " m^3/kmol is not above " + (s.models.VPhaseOnly ? "B" : "b") +
                                           " = " + shown(s.scratch.bT) +
                                           " m^3/kmol of the equation of state."};
    if (!(pressure.p > 0.0))
        return Fault{status_no_result, "At " + shown(T) + " K and " + rho +
                                           " the equation of state gives p = " + shown(pressure.p) +
                                           " kPa; a state needs p above 0."};
    return single_phase(s, T, pressure.p, v, r);
}

std::optional<Fault> state_of_p_v(Session& s, double p, double v, StateResult& r) {
    const double M = static_cast<double>(s.substance.MolMass);
    const double T = TpV(s, p, M / v, false);
    if (!(T > 0.0))
        return Fault{status_no_result, "The equation of state has no temperature at " + shown(p) +
                                           " kPa and " + shown(M / v) + " kg/m^3."};
    const std::optional<Dome> dome = dome_around(s, T, v, r);
    if (!dome) return single_phase(s, T, p, v, r);
    if (std::fabs(dome->p - p) > 0.05 * p)
        return Fault{status_no_result, "T(LV) at " + shown(p) + " kPa was not found: at " + shown(T) +
                                           " K the equation of state has p(LV) = " + shown(dome->p) +
                                           " kPa."};
    two_phases(s, T, p, v, *dome, r);
    return {};
}

Fault form_fault(const char* what) {
    return {status_usage, std::string(what) + " Two of --T, --p, --rho are needed."};
}

}  // namespace

std::optional<Fault> compute_state(Session& s, const StateInput& a, StateResult& r) {
    const int given = int{a.T.has_value()} + int{a.p.has_value()} + int{a.rho.has_value()};
    if (given < 2) return form_fault(given == 0 ? "No state is given." : "One value is not a state.");
    if (given > 2) return form_fault("Three values are too many.");
    const double M = static_cast<double>(s.substance.MolMass);
    if (a.rho && M < TinyT)
        return Fault{status_no_result, "A density needs the molar mass, which the record of " +
                                           s.substance.StoffName + " does not have; give --T and --p."};
    const std::optional<Fault> fault = !a.rho ? state_of_T_p(s, *a.T, *a.p, r)
                                       : a.T  ? state_of_T_v(s, *a.T, M / *a.rho, r)
                                              : state_of_p_v(s, *a.p, M / *a.rho, r);
    if (fault) return fault;
    if (!r.y && r.V) {
        const double slope = r.V->arrays.DerivA[phase_V][dpdv_T];
        r.critical = std::fabs(slope) * r.V->v < VanishingSlope * r.p;
    }
    note_other_phase(s, r);
    return {};
}

}  // namespace quom::console
