#include "calc/calc_run.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/quantities.h"
#include "engine/condensed_phases.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/saturation.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

bool fetch_failed(CalcRun& run, ViewText& where, std::string_view content) {
    run.FetchFailed = true;
    refuse(run, where, content);
    return false;
}

// rho of a column, with its volume.
bool take_rho(CalcRun& run, float rho, ViewText& where) {
    run.rho = static_cast<double>(rho);
    if (!(run.rho >= TinyT) || !std::isfinite(run.rho))
        return fetch_failed(run, where, "no rho in this data set");
    run.v = run.M() / run.rho;
    return true;
}

}  // namespace

bool CalcRun::below_critical() const {
    return static_cast<float>(T) < static_cast<float>(s.substance.Tcr) &&
           static_cast<float>(p) < static_cast<float>(s.substance.pcr);
}

void take_T(CalcRun& run, double T) {
    run.T = T;
    if (run.s.units.EnergyMode == 2) run.s.units.uFactor = unitFactor(run.s, T);
}

void warn_triple(CalcRun& run, std::string_view title) {
    const Session& s = run.s;
    if (s.models.VPhaseOnly || !(run.T < static_cast<double>(s.substance.Ttr))) return;
    const std::string content = "T < T(TP) (Triple Point)";
    if (run.text) run.out.warning = content;
    if (!run.request.WarnTriple) return;
    s.tell({.title = std::string(title), .text = content, .kind = MessageKind::warning});
}

bool FetchT(CalcRun& run) {
    const double T = run.point().T;
    if (!(T >= TinyT) || !std::isfinite(T))
        return fetch_failed(run, run.out.view.par1, "no T in this data set");
    take_T(run, T);
    run.out.Result[slot_T] = T;
    // The functions of the ideal gas and of the solid go below the triple point.
    const int mode = run.mode();
    if (mode != 16 && mode != 18 && mode != 24) warn_triple(run, "Remark");
    return true;
}

bool Fetchp(CalcRun& run) {
    const double p = run.point().p;
    if (!(p >= TinyT) || !std::isfinite(p))
        return fetch_failed(run, run.out.view.par1, "no p in this data set");
    run.p = p;
    run.out.Result[slot_p] = p;
    return true;
}

bool FetchRho(CalcRun& run) {
    if (!take_rho(run, run.point().rhoV, run.out.view.par1)) return false;
    run.out.Result[slot_rho] = run.rho;
    run.out.Result[slot_v] = run.s.units.vFactor * run.v;
    return true;
}

bool FetchRhoL(CalcRun& run) {
    if (!take_rho(run, run.point().rhoL, run.out.view.par2)) return false;
    run.out.Result[slot_rhoL] = run.rho;
    return true;
}

void show_T(CalcRun& run) {
    if (run.text) run.out.view.par1.text = "T = " + formatMask(run.T, "###0.000") + " K";
}

void show_p(CalcRun& run, ViewText& where) {
    if (run.text) where.text = "p = " + formatMask(run.p, "####0.000") + " kPa";
}

void show_rho(CalcRun& run, ViewText& where) {
    if (run.text) where.text = "rho = " + formatMask(run.rho, "###0.0###") + " kg/m^3";
}

void CalcMessage(CalcRun& run, std::string_view message, std::string_view reason) {
    run.FetchFailed = run.NoResult = true;
    CalcBatchResult& out = run.out;
    out.fault.assign(reason).append(message);
    out.view.Liste.colour = colour_red;
    if (!run.text) return;
    out.list.insert(0, 1, '\n');
    out.list.append("Message from Sub CalcBatch").append(25, ' ').append(message).push_back('\n');
}

void refuse(CalcRun& run, ViewText& where, std::string_view content) {
    run.NoResult = true;
    run.out.fault = trim(content);
    where.colour = colour_red;
    if (run.text) where.text = content;
}

bool has_eos(const Session& s) {
    const int code = s.models.EOSKode;
    if (is_cubic(code)) return s.eos.vcrEOS > 0.0;
    if (code >= eos_virial_first && code <= eos_virial_last) return s.eos.EOSb > 0.0;
    if (code == eos_pitzer_curl) return s.substance.Tcr > TinyT && s.substance.pcr > TinyT;
    return code != eos_none;
}

std::string error_code(int err) { return " (E" + genNum(err) + ")"; }

std::string pressure_text(double p) {
    return p < 0.01 ? genNum(static_cast<float>(p)) : formatMask(p, "####0.000");
}

std::string_view eos_text(const Session& s) { return trim(eos_name(s.models.EOSKode)); }

void table_row(CalcRun& run, std::string_view name, std::string_view label, bool has_L, double L, bool has_V,
               double V) {
    if (!run.text) return;
    std::string row = text_padded(name, 17) + text_padded(label, 14) + " = ";
    row += text_padded(has_L ? strNum(static_cast<float>(L)) : std::string(), 20);
    if (has_V) row += strNum(static_cast<float>(V));
    run.line(trim_right(row));
}

std::string ruler(std::size_t n, char c) { return std::string(n, c); }

void set_phase(CalcRun& run, bool IsL, bool IsV) { run.out.IsL = IsL, run.out.IsV = IsV; }

void keep_state(CalcRun& run, double fd, double g1, double g2) {
    CEOSState& state = run.s.calc.state;
    state.T = single(run.T);
    state.p = run.p;
    state.IsL = run.out.IsL, state.IsV = run.out.IsV;
    state.VRoot = run.s.scratch.VRoot;
    state.PhaseCode = run.out.PhaseCode;
    state.fd = fd, state.g1 = single(g1), state.g2 = single(g2);
}

bool volumes_at_Tp(CalcRun& run) {
    const VolumeResult r = VolumeTp(run.s, run.T, run.p);
    const bool sound = std::isfinite(r.vV) && std::isfinite(r.vL);
    if (r.err || !sound) {
        CalcMessage(run, error_code(r.err ? r.err : -1), "no volume of the equation of state at T, p");
        return false;
    }
    set_phase(run, r.LFlag, r.VFlag);
    if (r.LFlag) run.vL = r.vL, run.rhoL = r.rhoL;
    if (r.VFlag) run.vV = r.vV, run.rhoV = r.rhoV;
    run.vV_eos = r.vV;
    run.out.PhaseCode = r.nRoots == 3 ? 3 : 1;
    keep_state(run, r.fd, r.g1, r.g2);
    if (run.text) run.out.view.co1.text = r.msg;
    return true;
}

void partial_liquid(CalcRun& run) {
    const bool benson = run.s.calc.BensonRhoL;
    run.L_from_eos = false;
    run.rhoL = run.vL = 0.0;
    const double rhoL =
        benson ? rhoLBenson(run.s, run.T, run.rhoV) : rhoL_Fu(run.s, single(run.T), !run.request.Quiet).rho;
    if (benson) {
        run.rhoL_method = "BENSON's method:";
    } else {
        run.rhoL_method =
            run.mode() == 5 ? "using database equation rho(T)" : "using database equation rho(T):";
    }
    if (rhoL > TinyT && rhoL < NotAvailable) run.rhoL = rhoL, run.vL = run.M() / rhoL;
}

double partial_vapor_volume(CalcRun& run, double T, double pLV) {
    Session& s = run.s;
    if (!has_eos(s)) return 0.0;
    if (s.models.VPhaseOnly) {
        const double v = RGas * T / pLV + VirialB(s, s.models.EOSKode, T);
        return v > 0.0 && std::isfinite(v) ? v : 0.0;
    }
    EOSParT(s, T);
    const CubicRoots roots = CubicV(s, T, pLV);
    if (roots.err == 0 && roots.nRoots == 3) return s.scratch.VRoot[2];
    if (roots.err == 0 && s.scratch.VRoot[0] > s.eos.vcrEOS) return s.scratch.VRoot[0];
    // Only a liquid-like root at the pressure of the vapor pressure equation: the saturated vapor of the EOS.
    return pLV_EOS(s, T).err == 0 ? s.scratch.VRoot[2] : 0.0;
}

}  // namespace quom
