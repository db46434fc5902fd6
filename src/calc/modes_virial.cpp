// Mode 11: the second virial coefficient of every equation that gives one. Mode 12: start of a process.
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_run.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

// The EOS in force, put back at the end of the scope whatever was tried in between.
class KeepEos {
 public:
    explicit KeepEos(Session& s) : s_(s), models_(s.models), eos_(s.eos) {}
    ~KeepEos() { s_.models = std::move(models_), s_.eos = eos_; }
    KeepEos(const KeepEos&) = delete;
    KeepEos& operator=(const KeepEos&) = delete;

 private:
    Session& s_;
    ModelSelection models_;
    EosBlock eos_;
};

double virial_of(Session& s, int code, double T) {
    s.models.EOSKode = code;
    s.models.VPhaseOnly = true;
    ClearEOSPar(s);
    return InitEOSPar(s, code) == 0 ? VirialB(s, code, T) : 0.0;
}

}  // namespace

AfterBranch mode_virial(CalcRun& run) {
    Session& s = run.s;
    if (!FetchT(run)) return AfterBranch::result_block;
    show_T(run);
    const int code = s.models.EOSKode;
    const int comparison = code >= eos_van_der_waals && code <= eos_peng_robinson ? code + 9 : code;
    constexpr std::string_view head = "Comparison of Virial Coefficients, [B] = m^3/kmol";
    run.line(head);
    run.line(ruler(head.size(), '='));
    const bool critical_data = s.substance.Tcr > TinyT && s.substance.pcr > TinyT;
    double B = 0.0;
    bool found = false;
    if (critical_data) {
        const KeepEos keep(s);
        for (int other = eos_virial_first; other <= eos_pitzer_curl; ++other) {
            const double value = virial_of(s, other, run.T);
            if (other == comparison) B = value, found = true;
            const bool needs_omega = other >= 14;
            const bool no_omega = needs_omega && s.substance.omega == 0.0;
            run.line(std::string(trim(eos_name(other))) + " {B} = " + genNum(value) +
                     (no_omega ? " (omega = 0)" : ""));
        }
    } else {
        run.line("critical data T(cr), p(cr) are missing");
    }
    if (!found) B = VirialB(s, code, run.T);
    run.out.Result[slot_B] = B;
    return AfterBranch::result_block;
}

AfterBranch mode_process(CalcRun& run) {
    Session& s = run.s;
    TpRhoPoint& point = s.exp.points[static_cast<std::size_t>(run.request.Point)];
    point.T = s.calc.ProcessT, point.p = s.calc.ProcessP;
    OutputView& view = run.out.view;
    view.Liste.visible = view.co1.visible = view.txtco2.visible = view.fraBatchVorgabe = false;
    if (!FetchT(run) || !Fetchp(run)) return AfterBranch::result_block;
    show_T(run);
    show_p(run, view.par2);
    return AfterBranch::result_block;
}

}  // namespace quom
