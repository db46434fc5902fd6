// One calculation: the function of its mode, and what every mode ends with.
#include <array>

#include "calc/calc_run.h"
#include "calc/mode_table.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {
namespace {

constexpr double critical_window_T = 0.05;  // [K]
constexpr double critical_window_p = 0.02;  // [kPa]

void no_calculation(CalcRun& run) { run.fail(Reason::no_mode, static_cast<double>(run.mode())); }

// By family.
using ModeFunction = void (*)(CalcRun&);
struct FamilyRow {
    ModeFamily family;
    ModeFunction function;
};
constexpr std::array<FamilyRow, 8> families = {{
    {ModeFamily::none, no_calculation},
    {ModeFamily::state, mode_state},
    {ModeFamily::equilibrium, mode_equilibrium},
    {ModeFamily::vaporization, mode_vaporization},
    {ModeFamily::tank, mode_tank},
    {ModeFamily::virial, mode_virial},
    {ModeFamily::process, mode_process},
    {ModeFamily::database, mode_database},
}};
constexpr bool in_order() {
    for (std::size_t i = 0; i < families.size(); ++i) {
        if (static_cast<std::size_t>(families[i].family) != i) return false;
    }
    return true;
}
static_assert(in_order(), "a row stands at the number of its family");

// Tells of a T at which the stable phase may be a solid.
void warn_triple_point(CalcRun& run, const ModeInfo& mode) {
    const double Ttr = static_cast<double>(run.substance().Ttr);
    if (mode.solid_allowed || mode.family == ModeFamily::none || run.fluid.VPhaseOnly) return;
    if (!run.out.T || !(*run.out.T < Ttr)) return;
    run.warn({.kind = WarningKind::below_triple_point, .value = *run.out.T, .low = Ttr});
}

// An equation of the V-phase only at a volume where its series in 1/v no longer holds.
void warn_below_B(CalcRun& run) {
    const Outcome& out = run.out;
    if (out.eos && out.eos->B && out.V && out.V->v < std::fabs(*out.eos->B))
        run.warn({.kind = WarningKind::below_B, .value = out.V->v, .low = *out.eos->B});
}

// An equation of the V-phase only beyond p(LV) of the vapor pressure equation. Under the PARTIAL concept a
// cubic equation may have another stable phase than the vapor pressure equation.
void warn_of_other_phase(CalcRun& run) {
    const Outcome& out = run.out;
    const ModelSelection& models = run.fluid.models;
    const bool by_evp = run.fluid.VPhaseOnly || !models.Konzept;
    if (!by_evp || models.EVPKode == Evp::none || out.phase == PhaseWord::VL) return;
    if (!out.T || !out.p || !(*out.T < run.substance().Tcr)) return;
    const EvpResult saturation = pLV_EVP(run.substance(), *out.T, models.EVPKode);
    if (saturation.reason != Reason::none || (*out.p > saturation.value) == (out.phase == PhaseWord::L))
        return;
    run.warn({.kind = run.fluid.VPhaseOnly ? WarningKind::beyond_pLV : WarningKind::other_phase_by_evp,
              .value = *out.p,
              .high = saturation.value});
}

// Whether the outcome rests on the equation of state.
bool uses_eos(const Outcome& out) {
    return (out.V && out.V->from_eos) || (out.L && out.L->from_eos) ||
           out.saturation == SaturationSource::eos;
}

void add_region(CalcRun& run, const ModeInfo& mode) {
    Outcome& out = run.out;
    if (run.fluid.VPhaseOnly || !mode.has_region) return;
    out.region = phase_region(run.fluid, run.T(), run.p());
    out.near_critical = out.T && out.p && std::fabs(*out.T - run.substance().Tcr) < critical_window_T &&
                        std::fabs(*out.p - run.substance().pcr) < critical_window_p;
}

void end_with_result(CalcRun& run, const ModeInfo& mode) {
    Outcome& out = run.out;
    add_region(run, mode);
    warn_below_B(run);
    if (mode.family == ModeFamily::state) warn_of_other_phase(run);
    const SubstanceConstants& substance = run.substance();
    if (run.fluid.eos_row().warns_omega && substance.omega == 0.0 && uses_eos(out))
        run.warn({.kind = WarningKind::no_omega});
    if (!out.eos) return;
    for (const Warning& warning : out.warnings) {
        if (warning.kind == WarningKind::critical_point) out.eos->critical = true;
    }
    if (run.input.inflection && !run.fluid.VPhaseOnly) out.inflection = InflectionV(run.fluid, run.T());
}

// The point has no result: what was specified is left, and what was told of it.
void end_without_result(CalcRun& run) {
    Outcome& out = run.out;
    Outcome left;
    left.mode = out.mode;
    left.failure = out.failure;
    left.warnings = std::move(out.warnings);
    const unsigned specified = mode_info(out.mode).specified;
    if (specified & (spec_T | spec_tank | spec_process)) left.T = out.T;
    if (specified & (spec_p | spec_process)) left.p = out.p;
    left.rho = out.rho;
    left.v = out.v;
    left.tank_mass = out.tank_mass;
    left.tank_volume = out.tank_volume;
    left.limits = out.limits;
    left.vaporization = std::move(out.vaporization);
    out = std::move(left);
}

}  // namespace

Outcome CalcBatch(const Fluid& fluid, const StateInput& input) {
    Outcome out;
    CalcRun run{.fluid = fluid, .input = input, .out = out};
    const ModeInfo& mode = mode_info(input.mode);
    out.mode = mode.mode;
    if (mode.needs_eos && !fluid.has_eos()) {
        run.fail(fluid.eos_reason);
        out.T = input.T;
        out.p = input.p;
        out.rho = input.rho;
    } else {
        families[static_cast<std::size_t>(mode.family)].function(run);
    }
    warn_triple_point(run, mode);
    out.failure ? end_without_result(run) : end_with_result(run, mode);
    return out;
}

Outcome state_at(const Fluid& fluid, std::optional<double> T, std::optional<double> p,
                 std::optional<double> rho) {
    const Mode mode = !rho ? Mode::T_p : T ? Mode::T_rho : Mode::p_rho;
    return CalcBatch(fluid, {.mode = mode, .T = T, .p = p, .rho = rho, .coefficients = true});
}

}  // namespace quom
