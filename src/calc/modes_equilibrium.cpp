// Modes 4 and 5: L-V equilibrium at T or at p.
#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_run.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/vapor_pressure.h"

namespace quom {

namespace {

// What differs between T => p(LV) and p => T(LV).
struct Side {
    std::string_view limit;        // behind the specified value
    std::string_view evp_head;     // + name of the equation
    std::string_view evp_colon;    // behind the name
    std::string_view without_evp;  // head when the data set has to help out
    std::string_view no_data;
    std::string_view from_data;
    std::string_view data_mask;
    std::string_view value_mask;
    std::string_view eos_head;  // head of the GLOBAL calculation
    bool eos_name_in_head;
    std::string_view eos_value;
    std::string_view unit;
    std::string_view no_eos_value;  // for callers without a window
};
constexpr Side side_T = {.limit = " > T(cr) !!!",
                         .evp_head = "p(LV) from present vapor pressure equation: ",
                         .evp_colon = ":",
                         .without_evp = "No vapor pressure equation available",
                         .no_data = " no p(LV) available from data set",
                         .from_data = " p(LV)(from data set) = ",
                         .data_mask = "####0.0#",
                         .value_mask = "####0.000",
                         .eos_head = "p(LV) from ",
                         .eos_name_in_head = true,
                         .eos_value = " p(LV) = ",
                         .unit = " kPa",
                         .no_eos_value = "p(LV) by EOS: Error"};
constexpr Side side_p = {.limit = " > p(cr) !!!",
                         .evp_head = "T(LV) from present vapor pressure equation: ",
                         .evp_colon = "",
                         .without_evp = " No T(LV) available/calculable",
                         .no_data = " no T(LV) available from data set",
                         .from_data = " T(LV) (from data set) = ",
                         .data_mask = "####.0#",
                         .value_mask = "####.000",
                         .eos_head = "T(LV) using cubic EOS",
                         .eos_name_in_head = false,
                         .eos_value = " T(LV) = ",
                         .unit = " K",
                         .no_eos_value = "T(LV) using EOS: Error"};

bool given_T(const CalcRun& run) { return run.mode() == 4; }
const Side& side(const CalcRun& run) { return given_T(run) ? side_T : side_p; }

// The coordinate that was searched for is known.
void take_found(CalcRun& run, double value) {
    if (given_T(run)) {
        run.p = value;
        run.out.Result[slot_p] = value;
    } else {
        take_T(run, value);
        run.out.Result[slot_T] = value;
    }
}

std::string found_text(const CalcRun& run, double value) {
    return given_T(run) ? pressure_text(value) : formatMask(value, side(run).value_mask);
}

void show_found(CalcRun& run, std::string head, std::string value) {
    if (!run.text) return;
    run.out.view.co1.text = std::move(head);
    run.out.view.txtco2.text = std::move(value);
}

// Saturation by the vapor pressure equation; value 0 without.
double by_vapor_pressure_equation(CalcRun& run) {
    Session& s = run.s;
    if (s.models.EVPKode == evp_none) return 0.0;
    const bool warn = !run.request.Quiet;
    const EvpResult r =
        given_T(run) ? pLV_EVP(s, run.T, s.models.EVPKode, warn) : TLV_EVP(s, run.p, s.models.EVPKode, warn);
    return r.err == 0 && std::isfinite(r.value) && r.value >= TinyT && r.value < NotAvailable ? r.value : 0.0;
}

// Saturation of the PARTIAL concept: vapor pressure equation, else the data point. False without either.
bool partial_saturation(CalcRun& run) {
    const Side& k = side(run);
    if (const double value = by_vapor_pressure_equation(run); value > 0.0) {
        take_found(run, value);
        if (run.text) {
            std::string head(k.evp_head);
            head.append(trim(evp_name(run.s.models.EVPKode))).append(k.evp_colon);
            show_found(run, std::move(head), found_text(run, value) + std::string(k.unit));
        }
        return true;
    }
    const double value = given_T(run) ? run.point().p : run.point().T;
    if (run.text) run.out.view.co1.text = k.without_evp;
    if (!(value >= TinyT) || !std::isfinite(value)) {
        refuse(run, run.out.view.txtco2, k.no_data);
        return false;
    }
    take_found(run, value);
    if (run.text) {
        run.out.view.txtco2.text =
            std::string(k.from_data) + formatMask(value, k.data_mask) + std::string(k.unit);
    }
    return true;
}

void partial_equilibrium(CalcRun& run) {
    if (!partial_saturation(run)) return;
    run.L_from_eos = false;
    run.out.PhaseCode = 3;
    run.vV = partial_vapor_volume(run, run.T, run.p);
    if (run.vV > 0.0) run.rhoV = run.M() / run.vV;
    keep_state(run, 0.0, 0.0, 0.0);
    if (run.s.calc.RhoLWanted) partial_liquid(run);
    density_and_vaporization(run);
}

void eos_equilibrium(CalcRun& run) {
    Session& s = run.s;
    const Side& k = side(run);
    const Saturation sat = given_T(run) ? pLV_EOS(s, run.T) : TLV_EOS(s, run.p);
    const auto roots = s.scratch.VRoot;
    const bool good = sat.err == 0 && std::isfinite(sat.value) && sat.value >= TinyT && roots[0] > 0.0;
    if (!good) {
        CalcMessage(run, error_code(sat.err ? sat.err : -1), k.no_eos_value);
        return;
    }
    take_found(run, sat.value);
    run.out.PhaseCode = 3;
    run.vL = roots[0], run.rhoL = run.M() / run.vL;
    run.vV = roots[2], run.rhoV = run.M() / run.vV;
    keep_state(run, sat.fd, sat.g1, sat.g2);
    if (run.text) {
        std::string head(k.eos_head);
        if (k.eos_name_in_head) head += eos_text(s);
        std::string value(k.eos_value);
        value.append(found_text(run, sat.value)).append(k.unit);
        show_found(run, std::move(head), std::move(value));
    }
    run.rhoL_method = "using cubic EOS:";
    density_and_vaporization(run);
}

// GLOBAL without a cubic concept: the pressure or temperature alone.
void saturation_alone(CalcRun& run) {
    if (!partial_saturation(run)) return;
    constexpr std::string_view remark =
        "(Calculation of density is not possible using a vapor pressure equation!)";
    run.out.PhaseCode = 3;
    run.line(ruler(remark.size(), '-'));
    run.line(remark);
    run.line(ruler(remark.size(), '-'));
    density_and_vaporization(run);
}

AfterBranch equilibrium(CalcRun& run) {
    const Session& s = run.s;
    set_phase(run, true, true);
    if (!s.calc.GlobalCalc || s.models.VPhaseOnly) {
        partial_equilibrium(run);
    } else if (s.models.Konzept) {
        eos_equilibrium(run);
    } else {
        saturation_alone(run);
    }
    return AfterBranch::result_block;
}

AfterBranch beyond_limit(CalcRun& run) {
    const std::string content = run.out.view.par1.text + std::string(side(run).limit);
    refuse(run, run.out.view.par1, content);
    return AfterBranch::result_block;
}

}  // namespace

AfterBranch mode_equilibrium_T(CalcRun& run) {
    if (!FetchT(run)) return AfterBranch::result_block;
    EOSParT(run.s, run.T);
    show_T(run);
    return run.T < run.s.substance.Tcr ? equilibrium(run) : beyond_limit(run);
}

AfterBranch mode_equilibrium_p(CalcRun& run) {
    if (!Fetchp(run)) return AfterBranch::result_block;
    show_p(run, run.out.view.par1);
    return run.p < run.s.substance.pcr ? equilibrium(run) : beyond_limit(run);
}

}  // namespace quom
