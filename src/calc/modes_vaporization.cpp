// Modes 6 and 7, and the block on the enthalpy of vaporization of all other modes.
#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {

namespace {

bool is_main_purpose(const CalcRun& run) { return run.mode() == 6 || run.mode() == 7; }

// Displayed value with its label, and the entropy of vaporization, between rulers.
void value_lines(CalcRun& run, double h) {
    const Session& s = run.s;
    const std::string label = label_text(s, Quantity::hLV);
    const std::string value = label + " = " + formatMask(h, h < 1000.0 ? "##0.00" : "##########.0");
    std::string entropy = "(entropy of vaporiz. delta(LV)s = delta(LV)h / T: " + label_text(s, Quantity::sLV);
    entropy += " =" + strNum(static_cast<float>(h / run.T)) + ")";
    run.line(ruler(value.size(), '-'));
    run.line(value);
    run.line(ruler(value.size(), '-'));
    run.line(entropy);
    run.line(ruler(entropy.size(), '-'));
}

void compressibility_lines(CalcRun& run, const HlvResult& r) {
    const bool benson = run.s.models.HLVKode == hlv_evp_benson;
    run.line("Following compressibility factors z were used:");
    run.line("z(L) =" + strNum(static_cast<float>(r.ZL)));
    run.line("z(V) =" + strNum(static_cast<float>(r.ZV)));
    run.line("z(V) using " + std::string(eos_text(run.s)));
    run.line(benson ? "rho(L) for z(L) calculation (MATHIAS/CAILLETET/BENSON)"
                    : "rho(L) for z(L) calculation using database function rho(L) = Fu(T)");
}

// The same quantity by the database equation, where the substance has one.
void comparison_line(CalcRun& run, double value) {
    Session& s = run.s;
    if (s.models.HLVKode == hlv_equation || s.substance.HLVTLo == 0) return;
    double T = run.T, p = run.p;
    const HlvResult r = hLV(s, hlv_equation, T, p, s.models.EVPKode);
    if (r.err || r.value == 0) return;
    const double database = static_cast<double>(r.value);
    const double h = database * s.units.uFactor;
    run.line("(cf. function from database: " + label_text(s, Quantity::hLV) + " = " +
             formatMask(h, h < 1000.0 ? "##0.00" : "##########.0") +
             ", difference = " + formatMask((value / database - 1.0) * 100.0, "##0.0#") + " %)");
}

// txtco2 of modes 6 and 7: the coordinate that belongs to the specified one.
void show_partner(CalcRun& run) {
    std::string& text = run.out.view.txtco2.text;
    if (run.mode() == 6 && run.p > TinyT) text = " p(LV) = " + pressure_text(run.p) + " kPa";
    if (run.mode() == 7) text = " T(LV) = " + formatMask(run.T, "####.000") + " K";
}

void no_result(CalcRun& run, const HlvResult& r) {
    run.line("no result received");
    if (!r.source.empty()) run.line(r.source);
    if (!is_main_purpose(run)) return;
    run.FetchFailed = run.NoResult = true;
    run.out.fault = r.source.empty() ? "no result received" : r.source;
}

}  // namespace

void vaporization_block(CalcRun& run) {
    Session& s = run.s;
    const int model = s.models.HLVKode;
    const bool main = is_main_purpose(run);
    double T = run.T, p = run.p;
    HlvResult r = hLV(s, model, T, p, s.models.EVPKode, !run.request.Quiet);
    if (r.value == 0) r.err = -1;
    if (run.text) {
        ViewText& co1 = run.out.view.co1;
        std::string head = "Enthalpy of vaporization from " + std::string(trim(hlv_name(model)));
        main ? co1.text = head : run.out.list.append(head).append("\n");
    }
    if (r.err || !std::isfinite(T) || !std::isfinite(p)) return no_result(run, r);
    if (main) {
        take_T(run, T);
        run.p = p;
        run.out.Result[slot_T] = T;
        run.out.Result[slot_p] = p;
        if (run.text) show_partner(run);
    }
    const double value = static_cast<double>(r.value), h = value * s.units.uFactor;
    run.record.hLVCalc = single(value);
    run.out.Result[slot_hLV] = h;
    if (run.T > 0.0) run.out.Result[slot_sLV] = h / run.T;
    if (main) {
        run.out.PhaseCode = 3;
        keep_state(run, r.fd, r.g1, r.g2);
    }
    if (!run.text) return;
    if (main && !r.source.empty()) run.line(r.source);
    value_lines(run, h);
    if (model == hlv_evp_rhoL || model == hlv_evp_benson) compressibility_lines(run, r);
    comparison_line(run, value);
}

AfterBranch mode_vaporization(CalcRun& run) {
    const SubstanceConstants& k = run.s.substance;
    set_phase(run, true, true);
    const bool by_T = run.mode() == 6;
    if (!(by_T ? FetchT(run) : Fetchp(run))) return AfterBranch::result_block;
    ViewText& par1 = run.out.view.par1;
    if (by_T) {
        EOSParT(run.s, run.T);
        show_T(run);
    } else {
        show_p(run, par1);
    }
    if (by_T ? !(run.T < k.Tcr) : !(run.p < k.pcr)) {
        refuse(run, par1, par1.text + (by_T ? " >= T(cr) !!!" : " >= p(cr) !!!"));
        return AfterBranch::result_block;
    }
    // A p of the data point is the second value of mode 6.
    if (by_T && run.point().p >= TinyT) run.p = run.point().p;
    vaporization_block(run);
    return AfterBranch::result_block;
}

}  // namespace quom
