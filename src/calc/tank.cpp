// Modes 9 (GLOBAL) and 10 (PARTIAL).
#include "calc/tank.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/reference_point.h"
#include "engine/condensed_phases.h"
#include "engine/eos_parameters.h"
#include "engine/vapor_pressure.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

constexpr std::string_view execution_not_possible = "Execution not possible";

void contents_row(CalcRun& run, std::string_view label, double L, double V, std::string_view mask) {
    std::string row(label);
    row += text_padded(run.out.IsL ? formatMask(L, mask) : std::string(), 20);
    if (run.out.IsV) row += formatMask(V, mask);
    run.line(trim_right(row));
}

// The reference point of Benson's method: as the user chose it, else the proposal. False after the refusal.
bool have_reference(CalcRun& run) {
    Session& s = run.s;
    if (!s.calc.BensonRhoL || is_complete(s.benson)) return true;
    if (TakeReferencePoint(s).err == 0 && is_complete(s.benson)) return true;
    run.NoResult = run.FetchFailed = true;
    run.out.fault = "no reference data for PARTIAL method calculable";
    std::string content = run.out.fault;
    if (s.substance.Tnb == 0.0f) {
        content += "\n\nFor " + s.substance.StoffName +
                   "\nno normal boiling temperature is available in the database!"
                   "\n\nUse the GLOBAL calculation concept (=> \"Models\").";
    }
    s.tell({.title = std::string(execution_not_possible), .text = content, .kind = MessageKind::stop});
    return false;
}

// Only vapor: p of the EOS at T, v. False after a fault.
bool vapor_alone(CalcRun& run) {
    Session& s = run.s;
    if (s.models.VPhaseOnly) return vapor_state_T_v(run);
    EOSParT(s, run.T);
    const PressureResult r = pTv(s, run.T, run.v);
    if (r.err) {
        CalcMessage(run, " (v <= b)", "the volume is not above the covolume");
        return false;
    }
    run.p = r.p;
    run.y = 1.0;
    run.vV = run.v, run.rhoV = run.rho;
    run.vL = run.rhoL = 0.0;
    run.out.PhaseCode = 1;
    set_phase(run, false, true);
    return true;
}

void liquid_alone(CalcRun& run) {
    run.out.Text = "ERROR2";
    run.out.PhaseCode = 1;
    run.y = 0.0;
    run.vL = run.v, run.rhoL = run.rho;
    run.vV = run.rhoV = 0.0;
    set_phase(run, true, false);
}

// Phases by the mean density between rhoL and rhoV of the run at p(LV).
bool decide(CalcRun& run, double pLV) {
    if (run.rho >= run.rhoL) {
        liquid_alone(run);
        return true;
    }
    if (run.rho <= run.rhoV) return vapor_alone(run);
    run.p = pLV;
    run.y = (1.0 / run.rho - 1.0 / run.rhoL) / (1.0 / run.rhoV - 1.0 / run.rhoL);
    run.have_y = true;
    run.out.PhaseCode = 3;
    set_phase(run, true, true);
    return true;
}

// T, rho and v of the run from the tank record. False: not a tank.
bool fetch_tank(CalcRun& run) {
    const TankInput& tank = run.s.calc.tank;
    const double m = static_cast<double>(tank.m), V = static_cast<double>(tank.V);
    const double T = static_cast<double>(tank.T);
    const bool valid = m > 0.0 && V > 0.0 && T > 0.0 && m * V * T > TinyT && std::isfinite(m * V * T);
    if (!valid || !(run.M() > 0.0)) {
        run.out.err = -1;
        run.out.fault = "no valid input";
        return false;
    }
    take_T(run, T);
    run.rho = m / V;
    run.v = run.M() / run.rho;
    return true;
}

bool refuse_partial_above_critical(CalcRun& run) {
    const double Tcr = run.s.substance.Tcr;
    if (run.mode() != 10 || run.T < Tcr) return false;
    const std::string content =
        "\"PARTIAL Calculation\" - to use only for phase equilibria, i.e. T < T(cr)\n(T(cr)/K =" +
        strNum(Tcr) + ")";
    run.s.tell({.title = std::string(execution_not_possible), .text = content, .kind = MessageKind::stop});
    run.out.Text = "EXIT";
    run.out.fault = content;
    run.out.err = -1;
    return true;
}

void show_tank_pressure(CalcRun& run) {
    if (!run.text || !(run.p > 0.0)) return;
    const bool saturated = run.two_phase() && run.below_critical();
    run.out.view.txtco2.text =
        (saturated ? "Vapor pressure p(LV)/kPa = " : " System pressure p/kPa = ") + pressure_text(run.p);
}

}  // namespace

TankContents tank_contents(double m, double V, double M, double y, double rhoL, double rhoV) {
    TankContents t;
    t.y = y;
    if (y >= 1.0) {
        t.VV = V;
    } else if (y > 0.0) {
        t.VV = rhoL * y * V / ((rhoL - rhoV) * y + rhoV);
    }
    t.VL = V - t.VV;
    t.mV = y * m, t.mL = m - t.mV;
    t.nV = t.mV / M, t.nL = t.mL / M;
    return t;
}

void TankPartial(CalcRun& run) {
    Session& s = run.s;
    run.L_from_eos = false;
    const bool supercritical = s.substance.Tcr > 0.0 && run.T >= s.substance.Tcr;
    if (s.models.VPhaseOnly && supercritical) {
        if (vapor_alone(run)) TankResult(run);
        return;
    }
    const EvpResult saturation = pLV_EVP(s, run.T, s.models.EVPKode, !run.request.Quiet);
    const double pLV = saturation.value;
    if (saturation.err || !(pLV > 0.0) || !std::isfinite(pLV)) {
        CalcMessage(run, error_code(saturation.err ? saturation.err : -1),
                    "no p(LV) of the vapor pressure equation");
        return;
    }
    // An EOS of the V-phase only: up to p(LV) the whole tank is vapor at its own pressure.
    if (s.models.VPhaseOnly && run.p > 0.0 && run.p <= pLV) {
        TankResult(run);
        return;
    }
    if (!have_reference(run)) return;
    const double vV = partial_vapor_volume(run, run.T, pLV);
    run.vV = vV, run.rhoV = vV > 0.0 ? run.M() / vV : 0.0;
    if (run.rhoV > 0.0) partial_liquid(run);
    run.rhoL_method = {};
    if (!(run.rhoV > 0.0) || !(run.rhoL > TinyT)) {
        CalcMessage(run, error_code(-1), "no density of the L- or V-phase for the PARTIAL method");
        return;
    }
    run.p = 0.0;
    if (decide(run, pLV)) TankResult(run);
}

void TankResult(CalcRun& run) {
    const TankInput& tank = run.s.calc.tank;
    const double m = static_cast<double>(tank.m), V = static_cast<double>(tank.V);
    CalcBatchResult& out = run.out;
    const TankContents t = out.tank = tank_contents(m, V, run.M(), run.y, run.rhoL, run.rhoV);
    if (run.two_phase()) out.LPercent = single((1.0 - t.VV / V) * 100.0);
    if (!run.text) return;
    run.line("Vapor fraction eta(V) = " + formatMask(run.y, "0.0#######"));
    run.line("volume fraction V-phase phi(V),% = " + formatMask(t.VV / V * 100.0, "0.0###") + " %");
    run.line("Mass fraction = Mole fract. V-Phase y(V),% =" + strNum(static_cast<float>(t.mV / m * 100.0)) +
             " %");
    run.line("");
    contents_row(run, "Volume                   V/m^3  =  ", t.VL, t.VV, "##0.0000##");
    contents_row(run, "Mass                      m/kg  =  ", t.mL, t.mV, "##0.0000##");
    contents_row(run, "Amount of substance      n/kmol =  ", t.nL, t.nV, "##0.0000");
}

AfterBranch mode_tank(CalcRun& run) {
    Session& s = run.s;
    if (!fetch_tank(run) || refuse_partial_above_critical(run)) return AfterBranch::leave;
    warn_triple(run, "WARNING");
    run.out.Result[slot_T] = run.T;
    show_T(run);
    show_rho(run, run.out.view.par2);
    if (s.models.VPhaseOnly) {
        if (vapor_state_T_v(run)) {
            TankPartial(run);
        } else {
            run.out.Text = "ERROR3";
        }
    } else if (run.mode() == 10) {
        TankPartial(run);
    } else if (cubic_state_T_v(run)) {
        TankResult(run);
    }
    if (run.FetchFailed) return AfterBranch::result_block;
    run.out.Result[slot_p] = run.p;
    show_tank_pressure(run);
    density_and_vaporization(run);
    return AfterBranch::result_block;
}

}  // namespace quom
