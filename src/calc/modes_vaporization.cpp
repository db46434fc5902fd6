// Modes 6 and 7, and the enthalpy of vaporization that all other modes give beside their state.
#include "calc/calc_run.h"
#include "engine/validity.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

bool is_positive(double x) { return x > 0.0 && std::isfinite(x); }

std::optional<double> given(double x) { return x > 0.0 ? std::optional<double>(x) : std::nullopt; }

// The same quantity by the database equation, where another model is selected and the substance has one.
std::optional<double> database_value(const CalcRun& run, const HlvInput& selected) {
    if (selected.model == Hlv::equation || run.substance().HLVTLo == 0) return std::nullopt;
    HlvInput input = selected;
    input.model = Hlv::equation;
    input.T = given(run.T());
    input.p = given(run.p());
    const HlvResult r = hLV(run.fluid, input);
    if (r.reason != Reason::none || r.value == 0) return std::nullopt;
    return static_cast<double>(r.value);
}

HlvInput hlv_input(const CalcRun& run) {
    HlvInput input;
    input.model = run.fluid.models.HLVKode;
    input.T = given(run.T());
    input.p = given(run.p());
    input.EVP = run.fluid.models.EVPKode;
    input.benson = run.input.setup.benson;
    if (run.mode() == Mode::vaporization_T) input.point_p = run.input.p;
    if (run.mode() == Mode::vaporization_p) input.point_T = run.input.T;
    return input;
}

// Where the missing one of T, p of modes 6 and 7 comes from.
SaturationSource completed_by(const CalcRun& run, const HlvResult& r) {
    if (run.fluid.models.HLVKode == Hlv::eos) return SaturationSource::eos;
    const std::optional<double>& point = run.mode() == Mode::vaporization_T ? run.input.p : run.input.T;
    const double found = run.mode() == Mode::vaporization_T ? r.p : r.T;
    if (!(found > 0.0)) return SaturationSource::none;
    return point && *point == found ? SaturationSource::data_point : SaturationSource::evp;
}

// T and p as the model has completed them, with the roots where the equation of state has done it.
void take_completed(CalcRun& run, const HlvResult& r) {
    Outcome& out = run.out;
    out.saturation = completed_by(run, r);
    if (is_positive(r.T)) out.T = r.T;
    if (is_positive(r.p)) out.p = r.p;
    if (run.fluid.models.HLVKode == Hlv::eos) {
        if (const Saturation saturation = pLV_EOS(run.fluid, run.T()); saturation.found())
            set_eos(run, saturation);
    } else if (run.fluid.VPhaseOnly) {
        set_eos_constants(run);
    }
}

}  // namespace

void add_vaporization(CalcRun& run, bool main) {
    if (run.fluid.models.HLVKode == Hlv::none && !main) return;
    const HlvInput input = hlv_input(run);
    const HlvResult r = hLV(run.fluid, input);
    for (const Warning& warning : r.warnings) run.warn(warning);
    VaporizationOutcome& found = run.out.vaporization.emplace();
    found.method = r.method;
    found.source = r.source;
    found.reason = r.reason != Reason::none ? r.reason : r.value == 0 ? Reason::no_hlv_data : Reason::none;
    if (found.reason != Reason::none) {
        if (main) run.fail(found.reason, run.mode() == Mode::vaporization_T ? run.T() : run.p());
        return;
    }
    if (main) take_completed(run, r);
    found.hLV = static_cast<double>(r.value);
    if (run.T() > 0.0) found.sLV = *found.hLV / run.T();
    if (hlv_info(input.model).uses_zeta) {
        found.zL = r.ZL;
        found.zV = r.ZV;
    }
    found.database = database_value(run, input);
}

void add_vaporization_of_state(CalcRun& run) {
    const Outcome& out = run.out;
    if (out.phase != PhaseWord::VL || !run.below_critical()) return;
    if (!out.L || !out.V || out.L->v == out.V->v) return;
    add_vaporization(run, false);
}

void mode_vaporization(CalcRun& run) {
    const SubstanceConstants& substance = run.substance();
    const bool by_T = run.mode() == Mode::vaporization_T;
    if (!(by_T ? take_T(run) : take_p(run))) return;
    if (by_T && !(run.T() < substance.Tcr)) return run.fail(Reason::above_critical_T, run.T(), substance.Tcr);
    if (!by_T && !(run.p() < substance.pcr))
        return run.fail(Reason::above_critical_p, run.p(), substance.pcr);
    set_phases(run, true, true, PhaseWord::VL);
    add_vaporization(run, true);
}

}  // namespace quom
