#include "calc/calc_run.h"

#include <algorithm>

#include "engine/condensed_phases.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {

bool CalcRun::below_critical() const {
    return static_cast<float>(T()) < static_cast<float>(substance().Tcr) &&
           static_cast<float>(p()) < static_cast<float>(substance().pcr);
}

void CalcRun::warn(const Warning& warning) {
    const auto same = [&](const Warning& other) { return other.kind == warning.kind; };
    if (std::none_of(out.warnings.begin(), out.warnings.end(), same)) out.warnings.push_back(warning);
}

namespace {

// Takes a specified value over: absent and 0 are one of missing, what cannot be is not_positive.
bool take(CalcRun& run, const std::optional<double>& given, double least, std::optional<double>& out,
          Reason missing, Reason not_positive) {
    if (!is_given(given) || *given < least) {
        run.fail(!given || std::fabs(*given) < TinyT ? missing : not_positive);
        return false;
    }
    out = given;
    return true;
}

}  // namespace

bool take_T(CalcRun& run) {
    return take(run, run.input.T, TinyT, run.out.T, Reason::no_T_given, Reason::T_not_positive);
}

bool take_p(CalcRun& run) {
    return take(run, run.input.p, 0.0, run.out.p, Reason::no_p_given, Reason::p_not_positive);
}

bool take_rho(CalcRun& run) {
    if (!take(run, run.input.rho, 0.0, run.out.rho, Reason::no_rho_given, Reason::rho_not_positive))
        return false;
    if (!run.has_M()) {
        run.fail(Reason::no_molar_mass);
        return false;
    }
    run.out.v = run.M() / *run.input.rho;
    return true;
}

namespace {

void take_functions(PhaseOutcome& phase, const StateFunctions& f) {
    phase.h = present(f.h);
    phase.s = present(f.s);
    phase.g = present(f.g);
    phase.u = present(f.u);
    phase.a = present(f.a);
    phase.eH = present(f.eH);
    phase.eU = present(f.eU);
    phase.cp = present(f.cp);
    phase.cV = present(f.cV);
    phase.w = present(f.w);
    phase.cpId = present(f.cpId);
    phase.lnphi = present(f.lnphi);
    phase.functions_reason = f.reason;
}

void warn_of_functions(CalcRun& run, const StateFunctions& f) {
    const ReferenceState& reference = run.fluid.reference;
    if (f.reason == Reason::no_ideal_gas_cp)
        run.warn({.kind = WarningKind::no_ideal_gas_cp, .value = run.T()});
    if (f.exergy_reason == Reason::no_environment && f.reason != Reason::no_ideal_gas_cp)
        run.warn({.kind = WarningKind::no_environment, .value = reference.TEnv});
}

// One phase of volume v at T, p of the run, with functions and arrays as the input asks for them.
void set_phase(CalcRun& run, std::optional<PhaseOutcome>& to, double v, bool from_eos) {
    PhaseOutcome& phase = to.emplace();
    const double T = run.T(), p = run.p();
    phase.v = v;
    if (run.has_M()) phase.rho = run.M() / v;
    if (T > 0.0 && p > 0.0) phase.z = p * v / (RGas * T);
    phase.from_eos = from_eos && run.fluid.has_eos() && p > 0.0;
    if (!phase.from_eos) return;
    bool critical = false;
    if (run.input.coefficients) {
        phase.arrays = ThermoFunc(run.fluid, T, p, v);
        critical = !std::isfinite(phase.arrays->CoefA[coef_chi]);
    }
    if (run.input.functions || run.mode() == Mode::functions) {
        const StateFunctions f = phase.arrays ? state_functions(run.fluid, T, p, v, *phase.arrays)
                                              : ThermoState(run.fluid, T, p, v);
        take_functions(phase, f);
        warn_of_functions(run, f);
        critical = critical || f.reason == Reason::critical_point;
    }
    if (critical) run.warn({.kind = WarningKind::critical_point, .value = T});
}

}  // namespace

void set_L(CalcRun& run, double v, bool from_eos) { set_phase(run, run.out.L, v, from_eos); }
void set_V(CalcRun& run, double v) { set_phase(run, run.out.V, v, true); }

void set_phases(CalcRun& run, bool IsL, bool IsV, PhaseWord phase) {
    run.out.IsL = IsL;
    run.out.IsV = IsV;
    run.out.phase = phase;
}

void set_eos(CalcRun& run, const VolumeResult& volume) {
    EosOutcome& eos = run.out.eos.emplace();
    eos.at = volume.eos;
    eos.msg = volume.msg;
    if (run.fluid.VPhaseOnly) {
        eos.B = volume.Bvirial;
        return;
    }
    eos.roots = volume.roots;
    eos.PhaseCode = volume.nRoots == 3 ? std::int16_t{3} : std::int16_t{1};
    eos.fd = volume.fd;
    eos.g1 = volume.g1;
    eos.g2 = volume.g2;
}

void set_eos(CalcRun& run, const Saturation& saturation) {
    EosOutcome& eos = run.out.eos.emplace();
    eos.at = saturation.eos;
    eos.roots.VRoot = {saturation.vL, saturation.vMiddle, saturation.vV};
    eos.roots.nRoots = saturation.vV > saturation.vL ? std::int16_t{3} : std::int16_t{1};
    eos.PhaseCode = 3;
    eos.fd = saturation.fd;
    eos.g1 = saturation.g1;
    eos.g2 = saturation.g2;
}

void set_eos_constants(CalcRun& run) {
    if (!run.fluid.has_eos() || !(run.T() >= TinyT)) return;
    EosOutcome& eos = run.out.eos.emplace();
    eos.at = EOSParT(run.fluid, run.T());
    if (run.fluid.VPhaseOnly) eos.B = VirialB(run.fluid, run.T());
}

double partial_vapor_volume(const Fluid& fluid, double T, double pLV) {
    if (!fluid.has_eos() || !(pLV > 0.0)) return 0.0;
    if (fluid.VPhaseOnly) {
        const double v = RGas * T / pLV + VirialB(fluid, T);
        return v > 0.0 && std::isfinite(v) ? v : 0.0;
    }
    const CubicRoots roots = CubicV(EOSParT(fluid, T), pLV);
    if (roots.reason == Reason::none && roots.nRoots == 3) return roots.VRoot[2];
    if (roots.reason == Reason::none && roots.VRoot[0] > fluid.eos.vcrEOS) return roots.VRoot[0];
    // Only a liquid-like root at the pressure of the vapor pressure equation: the saturated vapor of the EOS.
    const Saturation saturation = pLV_EOS(fluid, T);
    return saturation.found() ? saturation.vV : 0.0;
}

double partial_liquid_density(CalcRun& run, double T, double rhoV, const BensonReference& benson) {
    const SubstanceConstants& substance = run.substance();
    double rhoL = 0.0;
    if (run.input.setup.BensonRhoL) {
        run.out.liquid = LiquidSource::benson;
        rhoL = rhoLBenson(substance, benson, T, rhoV);
    } else {
        run.out.liquid = LiquidSource::database;
        const DensityResult density = rhoL_Fu(substance, static_cast<float>(T));
        if (density.reason == Reason::none) rhoL = density.rho;
        run.warn(range_warning(WarningKind::rhoL_range, T, {substance.RhoLTLo, substance.RhoLTHi}, density.dT,
                               density_warns));
    }
    return rhoL > TinyT && std::isfinite(rhoL) ? rhoL : 0.0;
}

void set_partial_L(CalcRun& run, double rhoL) {
    if (!(rhoL > 0.0) || !run.has_M()) return;
    set_L(run, run.M() / rhoL, false);
    run.out.L->rho = rhoL;
}

}  // namespace quom
