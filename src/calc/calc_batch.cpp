#include "calc/calc_batch.h"

#include <algorithm>

#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/vaporization_enthalpy.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

bool is_database_mode(int mode) { return mode >= 14; }
bool has_region(int mode) { return mode != 11 && mode != 12 && !is_database_mode(mode); }

// Head line, labels and code of the region. T or p may be unknown (0).
struct RegionTexts {
    std::int16_t code;
    std::string_view head, L_label, V_label, identity, no_equilibrium;
};
constexpr RegionTexts region_critical = {
    4, "critical point (T = T(cr), p = p(cr))   > > > > > > > > >", "", "", "identic", ""};
constexpr RegionTexts region_supercritical = {
    2,         "supercritical phase (L) = (V) (T > T(cr), p > p(cr))   > > > > >",
    "",        "",
    "identic", " no 2-phase state! "};
constexpr RegionTexts region_liquid = {
    1, "supercritical L-phase (T < T(cr), p > p(cr))   > > > > > > >", "L-Phase", "", "(identical)", ""};
constexpr RegionTexts region_pressure = {
    1, "supercritical phase (p > p(cr)), NO VLE   > > > > > > > >", "", "", "", ""};
constexpr RegionTexts region_vapor = {
    3, "supercritical V-phase (T > T(cr), p < p(cr))   > > > > > > > >", "", "V-phase", "(identical)", ""};
constexpr RegionTexts region_temperature = {
    3, "supercritical phase (T > T(cr)), NO VLE   > > > > > > > > >", "", "", "", ""};

// Compared as singles; null below the critical point.
const RegionTexts* region_of(const CalcRun& run) {
    const auto T = static_cast<float>(run.T), p = static_cast<float>(run.p);
    const auto Tcr = static_cast<float>(run.s.substance.Tcr), pcr = static_cast<float>(run.s.substance.pcr);
    if (T == Tcr && p == pcr) return &region_critical;
    if (T > Tcr && p > pcr) return &region_supercritical;
    if (p > pcr) return run.T > 0.0 ? &region_liquid : &region_pressure;
    if (T > Tcr) return run.p > 0.0 ? &region_vapor : &region_temperature;
    return nullptr;
}

void region_block(CalcRun& run) {
    OutputView& view = run.out.view;
    if (run.text) view.lblLphase.text = "L-phase", view.lblVphase.text = "V-phase";
    view.lblLphase.visible = run.out.IsL, view.lblVphase.visible = run.out.IsV;
    if (run.s.models.VPhaseOnly || !has_region(run.mode())) return;
    const RegionTexts* region = region_of(run);
    run.s.scratch.PhaseRegion = region ? region->code : std::int16_t{0};
    if (run.s.calc.state.has_state()) run.s.calc.state.PhaseRegion = run.s.scratch.PhaseRegion;
    view.cmdInfoSuperCrit = region != nullptr;
    if (!region || !run.text) return;
    view.co1 = {.text = std::string(region->head), .colour = colour_region, .bold = true, .size = 10};
    if (!region->L_label.empty()) view.lblLphase.text = region->L_label;
    if (!region->V_label.empty()) view.lblVphase.text = region->V_label;
    view.Bezeichnung2.text = region->identity, view.Bezeichnung2.visible = !region->identity.empty();
    view.lblGleich.text = region->no_equilibrium, view.lblGleich.visible = !region->no_equilibrium.empty();
}

void functions_block(CalcRun& run) {
    run.line(ruler(68, '*'));
    run.line("                               thermodynamic Fu(T)");
    run.line(ruler(68, '*'));
    function_table(run);
}

// a(T) to d(T), or B(T), of the equation in force at T of the state.
void parameter_lines(CalcRun& run) {
    Session& s = run.s;
    const int mode = run.mode();
    const std::string name(eos_text(s));
    if (!run.text || run.T < TinyT || is_database_mode(mode) || mode == 12) return;
    if (s.models.VPhaseOnly) {
        if (mode == 11) return;
        run.line("Virial coeffizient: (" + name + "):");
        const double B = VirialB(s, s.models.EOSKode, run.T);
        run.line("  B =" + strNum(static_cast<float>(B)) + " m^3/kmol");
        return;
    }
    const bool by_model = mode == 6 || mode == 7;
    if (!is_cubic(s.models.EOSKode) || (by_model && s.models.HLVKode != hlv_eos)) return;
    EOSParT(s, run.T);
    const std::string head = "Paramet. of the generalized cub. EOS (" + name + "):";
    run.line(head);
    run.line(ruler(head.size(), '='));
    run.line("  A =" + strNum(static_cast<float>(s.scratch.aT)));
    run.line("  B =" + strNum(static_cast<float>(s.scratch.bT)));
    run.line("  C =" + strNum(static_cast<float>(s.scratch.cT)));
    run.line("  D =" + strNum(static_cast<float>(s.scratch.dT)));
}

void offer_diagnosis(CalcRun& run) {
    const Session& s = run.s;
    const int mode = run.mode();
    const bool by_concept = mode == 4 || mode == 5 || mode == 11;
    const bool by_model = mode == 6 || mode == 7;
    const bool offered = is_cubic(s.models.EOSKode) && s.calc.GlobalCalc && s.calc.state.has_state() &&
                         mode != 12 && !is_database_mode(mode) && (s.models.Konzept || !by_concept) &&
                         (!by_model || s.models.HLVKode == hlv_eos);
    run.out.view.cmdCEOSDiagnose = offered;
    if (offered) run.out.view.cmdCEOSDiagnose_colour = colour_diagnosis;
}

void store_record(CalcRun& run) {
    std::vector<BatchResult>& list = run.s.calc.BatchResults;
    const auto point = static_cast<std::size_t>(run.request.Point);
    if (list.size() <= point) list.resize(std::max(point + 1, run.s.exp.points.size()));
    list[point] = run.record;
}

void fill_record(CalcRun& run) {
    BatchResult& r = run.record;
    if (run.out.IsL && run.out.IsV) {
        r.Phase = {'V', '+', 'L'};
    } else if (run.out.IsL || run.out.IsV) {
        r.Phase = {' ', run.out.IsL ? 'L' : 'V', ' '};
    }
    r.TCalc = single(run.T), r.pCalc = single(run.p);
    r.rhoVCalc = single(run.rhoV), r.rhoLCalc = single(run.rhoL);
}

// The point has no result: its record is blank, and nothing is said of phases.
void end_without_result(CalcRun& run) {
    run.record = {};
    run.s.calc.state = {};
    set_phase(run, false, false);
    run.out.PhaseCode = 0;
    run.out.p = run.request.p;
    run.out.err = -1;
    region_block(run);
    store_record(run);
}

void end_with_result(CalcRun& run) {
    CalcBatchResult& out = run.out;
    const CalcState& calc = run.s.calc;
    const int mode = run.mode();
    region_block(run);
    if (calc.ExtLevel > 1 && mode != 6 && mode != 7) extended_output(run);
    const bool has_state = (out.IsL || out.IsV) && run.T > 0.0 && run.p > 0.0;
    if (calc.ShowFunctions && has_state && mode != 6 && mode != 7 && mode != 8) functions_block(run);
    parameter_lines(run);
    fill_record(run);
    store_record(run);
    out.p = run.p;
    if (out.IsV && !out.IsL) out.LPercent = 0.0f;
    if (out.IsL && !out.IsV) out.LPercent = 100.0f;
    offer_diagnosis(run);
}

void result_block(CalcRun& run) {
    run.NoResult ? end_without_result(run) : end_with_result(run);
    for (double& slot : run.out.Result.values) {
        if (!std::isfinite(slot)) slot = 0.0;
    }
    if (run.text && !run.request.Quiet) run.out.view.Liste.text = run.out.list;
}

}  // namespace

CalcBatchResult CalcBatch(Session& s, const CalcRequest& request) {
    CalcBatchResult out;
    out.p = request.p;
    const ModeEntry* entry = mode_entry(request.Mode);
    if (!entry || request.Point < 0 || static_cast<std::size_t>(request.Point) >= s.exp.points.size()) {
        out.err = -1;
        out.fault = entry ? "no such data point" : "no such calculation mode";
        return out;
    }
    s.units.uFactor = unitFactor(s, static_cast<double>(s.calc.state.T));
    s.calc.state = {};
    s.scratch.VRoot = {};
    for (ViewText* label :
         {&out.view.lblVphase, &out.view.lblLphase, &out.view.lblGleich, &out.view.Bezeichnung2}) {
        label->visible = false;
    }
    CalcRun run{.s = s, .request = request, .out = out, .text = request.want_text};
    AfterBranch after = AfterBranch::result_block;
    if (entry->state_of_eos && !has_eos(s)) {
        CalcMessage(run, error_code(-1), "no equation of state with its constants");
    } else {
        after = entry->branch(run);
    }
    if (after == AfterBranch::result_block) result_block(run);
    return out;
}

}  // namespace quom
