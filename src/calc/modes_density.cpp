// Modes 1, 2 (T, rho), 3 (T, p) and 13 (p, rho), and the rows they share.
#include <algorithm>

#include "base/number_text.h"
#include "calc/calc_run.h"
#include "calc/quantities.h"
#include "engine/eos_parameters.h"
#include "engine/saturation.h"
#include "engine/vaporization_enthalpy.h"
#include "engine/volume_solver.h"

namespace quom {

namespace {

constexpr double critical_window_T = 0.05;  // [K]
constexpr double critical_window_p = 0.02;  // [kPa]

// Lines of a two-phase state: z = y z(V) + (1 - y) z(L) for every function.
void mixture_block(CalcRun& run) {
    if (!run.text) return;
    Session& s = run.s;
    const SaturatedFunctions sat = ThermoSat(s, run.T);
    const bool no_exergies = sat.L.environment_failed;
    if (sat.err && !no_exergies) return;
    const std::string_view head =
        s.units.EnergyMode == 3 ? "specific global functions" : "molar global functions";
    run.line(head);
    run.line("  z = y(V) z(V) + (1 - y(V)) z(L)");
    run.line(ruler(head.size(), '='));
    const auto mean = [&](double zL, double zV) { return run.y * zV + (1.0 - run.y) * zL; };
    const auto row = [&](Quantity q, double value) {
        std::string line(quantity_info(q).mixture);
        line += strNum(static_cast<float>(value));
        if (const std::string_view unit = unit_text(s, q); !unit.empty()) line.append("  ").append(unit);
        run.line(line);
    };
    const auto function = [&](Quantity q, double StateFunctions::*field) {
        row(q, mean(sat.L.*field, sat.V.*field) * display_factor(s, q));
    };
    row(Quantity::rho, run.M() / mean(sat.L.v, sat.V.v));
    function(Quantity::v, &StateFunctions::v);
    function(Quantity::h, &StateFunctions::h);
    function(Quantity::s, &StateFunctions::s);
    function(Quantity::g, &StateFunctions::g);
    function(Quantity::u, &StateFunctions::u);
    function(Quantity::a, &StateFunctions::a);
    if (!no_exergies) {
        function(Quantity::eH, &StateFunctions::eH);
        function(Quantity::eU, &StateFunctions::eU);
    }
    if (s.models.cpKode != 0) {
        function(Quantity::cp, &StateFunctions::cp);
        function(Quantity::cV, &StateFunctions::cV);
    }
}

// Value line of modes 1 and 2, from the state that was found.
void show_pressure(CalcRun& run) {
    if (!run.text) return;
    const bool saturated = run.two_phase() && run.below_critical();
    run.out.view.txtco2.text = (saturated ? "Vapor pressure p(LV)/kPa = " : " System pressure p/kPa = ") +
                               (run.FetchFailed ? std::string("(Error)") : pressure_text(run.p));
}

void vapor_fraction_lines(CalcRun& run) {
    run.line("pressure p(LV)/kPa = " + pressure_text(run.p));
    run.line("Vapor fraction eta(V) = " + formatMask(run.y, "0.0#######"));
}

void critical_lines(CalcRun& run) {
    const SubstanceConstants& k = run.s.substance;
    if (!run.text) return;
    if (!(std::fabs(run.T - k.Tcr) < critical_window_T && std::fabs(run.p - k.pcr) < critical_window_p))
        return;
    run.line("Critical point!");
    run.line(" T(cr) = " + formatMask(k.Tcr, "####0.00") + " K");
    run.line(" p(cr) = " + formatMask(k.pcr, "#####.00") + " kPa");
    if (const double vcr = run.s.eos.vcrEOS; vcr > TinyT) {
        run.line("rho(cr) = " + formatMask(run.M() / vcr, "####.0") + " kg/m^3");
        run.line("  v(cr) = " + genNum(static_cast<float>(vcr)) + " m^3/kmol");
    }
}

}  // namespace

bool vapor_state_T_v(CalcRun& run) {
    Session& s = run.s;
    const double B = VirialB(s, s.models.EOSKode, run.T);
    const double p = run.v > B ? RGas * run.T / (run.v - B) : 0.0;
    if (!(p > 0.0) || !std::isfinite(p)) {
        CalcMessage(run, ", no p-solution (v < b)", "the volume is below the second virial coefficient");
        return false;
    }
    s.scratch.Bvirial = B;
    run.p = p;
    run.vV = run.v, run.rhoV = run.rho;
    run.y = 1.0;
    run.out.PhaseCode = 1;
    set_phase(run, false, true);
    keep_state(run, 0.0, 0.0, 0.0);
    return true;
}

bool cubic_state_T_v(CalcRun& run) {
    Session& s = run.s;
    const double v = run.v;
    Saturation sat;
    if (static_cast<float>(run.T) < static_cast<float>(s.substance.Tcr)) {
        sat = pLV_EOS(s, run.T);
        run.out.PhaseCode = 3;
        if (sat.err || !(sat.value >= TinyT)) {
            CalcMessage(run, error_code(sat.err ? sat.err : -1), "no p(LV) of the equation of state at T");
            return false;
        }
        const double root_L = s.scratch.VRoot[0], root_V = s.scratch.VRoot[2];
        if (v > root_L && v < root_V) {
            set_phase(run, true, true);
            run.p = sat.value;
            run.vL = root_L, run.rhoL = run.M() / root_L;
            run.vV = root_V, run.rhoV = run.M() / root_V;
            run.y = (v - root_L) / (root_V - root_L);
            run.have_y = true;
            keep_state(run, sat.fd, sat.g1, sat.g2);
            return true;
        }
        set_phase(run, v <= root_L, v > root_L);
    } else {
        run.out.PhaseCode = 1;
        set_phase(run, false, true);
    }
    EOSParT(s, run.T);
    const PressureResult pressure = pTv(s, run.T, v);
    if (pressure.err) {
        if (run.mode() == 9) run.out.Text = "ERROR1";
        CalcMessage(run, " (v <= b)", "the volume is not above the covolume");
        return false;
    }
    run.p = pressure.p;
    run.y = run.out.IsV ? 1.0 : 0.0;
    if (run.out.IsV) run.vV = v, run.rhoV = run.rho;
    if (run.out.IsL) run.vL = v, run.rhoL = run.rho;
    keep_state(run, sat.fd, sat.g1, sat.g2);
    return true;
}

AfterBranch mode_T_rho(CalcRun& run) {
    Session& s = run.s;
    if (!FetchT(run)) return AfterBranch::result_block;
    show_T(run);
    if (!(run.mode() == 1 ? FetchRho(run) : FetchRhoL(run))) return AfterBranch::result_block;
    show_rho(run, run.out.view.par2);
    if (s.models.VPhaseOnly) {
        if (vapor_state_T_v(run) && run.text) {
            run.out.view.txtco2.text = " p = " + pressure_text(run.p) + " kPa";
        }
    } else if (cubic_state_T_v(run) && run.p > 0.0) {
        // The roots at T and p for the diagnosis; the phases stay as the volume decided.
        const VolumeResult r = VolumeTp(s, run.T, run.p);
        if (!r.err) {
            keep_state(run, r.fd, r.g1, r.g2);
            s.calc.state.PhaseCode = r.nRoots == 3 ? 3 : 1;
        }
        if (run.text) run.out.view.co1.text = r.msg;
    }
    if (!run.FetchFailed) {
        run.out.Result[slot_p] = run.p;
        if (run.have_y && run.text) {
            vapor_fraction_lines(run);
            run.line("compare with vapor pressure from CEOS: " + std::string(eos_text(s)));
            run.line("p(LV )= " + pressure_text(run.p) + " kPa");
        }
        density_and_vaporization(run);
        if (run.have_y && run.below_critical()) mixture_block(run);
    }
    if (!s.models.VPhaseOnly) show_pressure(run);
    return AfterBranch::result_block;
}

AfterBranch mode_T_p(CalcRun& run) {
    Session& s = run.s;
    if (!FetchT(run) || !Fetchp(run)) return AfterBranch::result_block;
    show_T(run);
    show_p(run, run.out.view.par2);
    critical_lines(run);
    if (!volumes_at_Tp(run)) return AfterBranch::result_block;
    if (s.models.VPhaseOnly && run.text) {
        run.out.view.txtco2.text =
            " Virial coeff. B = " + genNum(static_cast<float>(s.scratch.Bvirial)) + "  m^3/kmol";
    }
    if (s.calc.VLEAssumed && s.calc.RhoLWanted && run.vV_eos > TinyT) {
        run.vV = run.vV_eos, run.rhoV = run.M() / run.vV;
        partial_liquid(run);
        set_phase(run, true, true);
    }
    density_and_vaporization(run);
    return AfterBranch::result_block;
}

AfterBranch mode_p_rho(CalcRun& run) {
    Session& s = run.s;
    if (!Fetchp(run)) return AfterBranch::result_block;
    show_p(run, run.out.view.par1);
    if (!FetchRho(run)) return AfterBranch::result_block;
    show_rho(run, run.out.view.par2);
    const double T = TpV(s, run.p, run.rho, false);
    if (!(T > 0.0) || !std::isfinite(T)) {
        refuse(run, run.out.view.txtco2, " Error");
        run.out.fault = "no T of the equation of state at p, rho";
        return AfterBranch::result_block;
    }
    take_T(run, T);
    run.out.Result[slot_T] = T;
    if (run.text) run.out.view.txtco2.text = " T = " + formatMask(T, "###0.000") + " K";
    if (!volumes_at_Tp(run)) return AfterBranch::result_block;
    // T on the saturation curve is only as good as the search for it: a volume clearly between the two outer
    // roots is a two-phase state even when the areas call one of them stable.
    const auto& root = s.scratch.VRoot;
    const bool three = run.out.PhaseCode == 3 && !s.models.VPhaseOnly;
    if (three && run.v > root[0] * 1.0001 && run.v < root[2] * 0.9999) {
        set_phase(run, true, true);
        run.vL = root[0], run.rhoL = run.M() / root[0];
        run.vV = root[2], run.rhoV = run.M() / root[2];
        s.calc.state.IsL = s.calc.state.IsV = true;
        run.y = (run.v - run.vL) / (run.vV - run.vL);
        run.have_y = true;
        vapor_fraction_lines(run);
    }
    density_and_vaporization(run);
    return AfterBranch::result_block;
}

void density_rows(CalcRun& run) {
    CalcBatchResult& out = run.out;
    const double vFactor = run.s.units.vFactor;
    const bool has_L = run.vL > 0.0, has_V = run.vV > 0.0;
    if (has_V) out.Result[slot_vV] = run.vV * vFactor;
    if (has_L) out.Result[slot_vL] = run.vL * vFactor;
    if (!run.text || !(has_L || has_V)) return;
    table_row(run, "Density", label_text(run.s, Quantity::rho), has_L, run.rhoL, has_V, run.rhoV);
    table_row(run, "Volume", label_text(run.s, Quantity::v), has_L, run.vL * vFactor, has_V,
              run.vV * vFactor);
}

void density_and_vaporization(CalcRun& run) {
    if (run.text && !run.rhoL_method.empty()) {
        run.line(std::string(run.rhoL_method) + (run.vL > 0.0 ? "" : " (Error)"));
    }
    density_rows(run);
    const bool specified = run.mode() == 4 || run.mode() == 5;
    const bool equilibrium = specified || (run.two_phase() && run.below_critical() && run.vL != run.vV);
    if (equilibrium && run.s.models.HLVKode != hlv_none) vaporization_block(run);
}

}  // namespace quom
