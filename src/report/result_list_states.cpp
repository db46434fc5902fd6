// Modes 1, 2 (T, rho), 3, 8 (T, p), 13 (p, rho), 9, 10 (tank) and 12 (start of a process): specified values,
// faults, density rows and the lines of each.
#include "base/code_page.h"
#include "base/number_text.h"
#include "report/list_writer.h"

namespace quom {

namespace {

void show_rho(ListWriter& w, ViewText& where) {
    where.text = "rho = " + value_text(w.outcome.rho.value_or(0.0), Quantity::rho) + " kg/m^3";
}

// p of value lines with its head.
void show_pressure(ListWriter& w) {
    const bool saturated = w.outcome.two_phase();
    w.view.txtco2.text = (saturated ? "Vapor pressure p(LV)/kPa = " : " System pressure p/kPa = ") +
                         (w.outcome.has_result() ? pressure_text(w.p()) : std::string("(Error)"));
}

void vapor_fraction_lines(ListWriter& w) {
    w.line("pressure p(LV)/kPa = " + pressure_text(w.p()));
    w.line("Vapor fraction eta(V) = " + formatMask(w.outcome.quality.value_or(0.0), "0.0#######"));
}

void critical_lines(ListWriter& w) {
    if (!w.outcome.near_critical) return;
    const SubstanceConstants& k = w.fluid.substance;
    w.line("Critical point!");
    w.line(" T(cr) = " + formatMask(k.Tcr, "####0.00") + " K");
    w.line(" p(cr) = " + formatMask(k.pcr, "#####.00") + " kPa");
    if (const double vcr = w.fluid.eos.vcrEOS; vcr > TinyT) {
        w.line("rho(cr) = " + formatMask(w.fluid.M / vcr, "####.0") + " kg/m^3");
        w.line("  v(cr) = " + genSingle(vcr) + " m^3/kmol");
    }
}

// Lines of a two-phase state: the mean of every function.
void mixture_block(ListWriter& w) {
    if (!w.outcome.mixture) return;
    const MixtureOutcome& m = *w.outcome.mixture;
    const Units& units = w.settings.units;
    const std::string_view head =
        units.EnergyMode == energy_per_mass ? "specific global functions" : "molar global functions";
    w.line(head);
    w.line("  z = y(V) z(V) + (1 - y(V)) z(L)");
    w.ruler(head.size(), '=');
    const auto row = [&](Quantity q, const std::optional<double>& value) {
        if (!value) return;
        std::string line(quantity_info(q).mixture);
        line += strSingle(*value * w.factor(q));
        if (const std::string_view unit = unit_text(units, q); !unit.empty()) line.append("  ").append(unit);
        w.line(line);
    };
    row(Quantity::rho, m.rho);
    row(Quantity::v, m.v);
    row(Quantity::h, m.h);
    row(Quantity::s, m.s);
    row(Quantity::g, m.g);
    row(Quantity::u, m.u);
    row(Quantity::a, m.a);
    row(Quantity::eH, m.eH);
    row(Quantity::eU, m.eU);
    row(Quantity::cp, m.cp);
    row(Quantity::cV, m.cV);
}

// What CalcMessage says of a fault.
std::string fault_text(Reason reason) {
    switch (reason) {
        case Reason::volume_below_b:
            return " (v <= b)";
        case Reason::volume_below_B:
            return ", no p-solution (v < b)";
        default:
            return " (E" + genNum(int{err_of(reason)}) + ")";
    }
}

void state_by_density(ListWriter& w) {
    if (!w.fluid.VPhaseOnly) show_pressure(w);
    if (!w.outcome.has_result()) return write_fault(w);
    if (w.fluid.VPhaseOnly) {
        w.view.txtco2.text = " p = " + pressure_text(w.p()) + " kPa";
    } else if (w.outcome.eos) {
        w.view.co1.text = w.outcome.eos->msg;
    }
    if (w.outcome.two_phase()) {
        vapor_fraction_lines(w);
        w.line("compare with vapor pressure from CEOS: " + std::string(eos_text(w.fluid)));
        w.line("p(LV )= " + genNum(w.p()) + " kPa");
    }
    write_densities(w);
    if (w.outcome.two_phase()) mixture_block(w);
}

void state_by_pressure(ListWriter& w) {
    critical_lines(w);
    if (!w.outcome.has_result()) return write_fault(w);
    if (!w.outcome.eos) return write_densities(w);
    w.view.co1.text = w.outcome.eos->msg;
    if (w.outcome.eos->B) {
        w.view.txtco2.text = " Virial coeff. B = " + genSingle(*w.outcome.eos->B) + "  m^3/kmol";
    }
    write_densities(w);
}

void functions_state(ListWriter& w) {
    if (!w.outcome.has_result()) return write_fault(w);
    if (w.outcome.eos) w.view.co1.text = w.outcome.eos->msg;
    write_functions(w);
}

void state_by_p_and_density(ListWriter& w) {
    if (w.outcome.failure.reason == Reason::no_T_at_p_rho) return refuse(w.view.txtco2, " Error");
    if (!w.outcome.has_result()) return write_fault(w);
    w.view.txtco2.text = " T = " + value_text(w.T(), Quantity::T) + " K";
    if (w.outcome.eos) w.view.co1.text = w.outcome.eos->msg;
    if (w.outcome.two_phase()) vapor_fraction_lines(w);
    write_densities(w);
}

void contents_row(ListWriter& w, std::string_view label, double L, double V, std::string_view mask) {
    std::string row(label);
    row += text_padded(w.outcome.phase != PhaseWord::V ? formatMask(L, mask) : std::string(), ColumnWidth);
    if (w.outcome.phase != PhaseWord::L) row += formatMask(V, mask);
    w.line(trim_right(row));
}

void contents_lines(ListWriter& w) {
    if (!w.outcome.tank) return;
    const TankContents& t = *w.outcome.tank;
    const double V = t.VL + t.VV, m = t.mL + t.mV;
    w.line("Vapor fraction eta(V) = " + formatMask(t.y, "0.0#######"));
    w.line("volume fraction V-phase phi(V),% = " + formatMask(t.VV / V * 100.0, "0.0###") + " %");
    w.line("Mass fraction = Mole fract. V-Phase y(V),% = " + strSingle(t.mV / m * 100.0) + " %");
    w.line("");
    contents_row(w, "Volume                   V/m^3  =  ", t.VL, t.VV, "##0.0000##");
    contents_row(w, "Mass                      m/kg  =  ", t.mL, t.mV, "##0.0000##");
    contents_row(w, "Amount of substance      n/kmol =  ", t.nL, t.nV, "##0.0000");
}

// How the L-phase was found, where it does not come with the V-phase from one equation at T, p.
std::string liquid_line(const ListWriter& w) {
    const CalcSetup& setup = w.settings.setup;
    const bool equilibrium = w.info().family == ModeFamily::equilibrium;
    const bool partial = equilibrium && (!setup.GlobalCalc || w.fluid.VPhaseOnly);
    const bool assumed = w.mode() == Mode::T_p && setup.VLEAssumed;
    if (equilibrium && !partial) return w.fluid.models.Konzept ? "using cubic EOS:" : "";
    if (!(partial || assumed) || !setup.RhoLWanted) return {};
    std::string text = "BENSON's method:";
    if (!setup.BensonRhoL) {
        text = "using database equation rho(T)";
        if (w.mode() != Mode::equilibrium_p) text += ":";
    }
    return w.outcome.L ? text : text + " (Error)";
}

}  // namespace

void show_T(ListWriter& w, ViewText& where) { where.text = "T = " + value_text(w.T(), Quantity::T) + " K"; }
void show_p(ListWriter& w, ViewText& where) { where.text = "p = " + value_text(w.p(), Quantity::p) + " kPa"; }

void refuse(ViewText& where, std::string content) {
    where.colour = colour_red;
    where.text = std::move(content);
}

bool show_specified(ListWriter& w) {
    OutputView& view = w.view;
    const unsigned specified = w.info().specified;
    const bool by_T = specified & (spec_T | spec_process), by_p = specified & (spec_p | spec_process);
    const bool by_density = specified & (spec_rhoV | spec_rhoL);
    switch (w.outcome.failure.reason) {
        case Reason::no_T_given:
        case Reason::T_not_positive:
            if (!by_T) break;
            refuse(view.par1, "no T in this data set");
            return false;
        case Reason::no_p_given:
        case Reason::p_not_positive:
            if (!by_p) break;
            refuse(view.par1, "no p in this data set");
            return false;
        case Reason::no_rho_given:
        case Reason::rho_not_positive:
            if (!by_density) break;
            if (specified & spec_rhoL) show_T(w, view.par1);
            refuse(specified & spec_rhoL ? view.par2 : view.par1, "no rho in this data set");
            return false;
        default:
            break;
    }
    if (by_T) show_T(w, view.par1);
    if (by_p) show_p(w, by_T ? view.par2 : view.par1);
    if (by_density) show_rho(w, view.par2);
    return true;
}

void write_fault(ListWriter& w) {
    const Failure& failure = w.outcome.failure;
    ViewText& list = w.view.Liste;
    list.colour = colour_red;
    list.text.insert(0, 1, '\n');
    w.line("Message from Sub CalcBatch" + std::string(25, ' ') + fault_text(failure.reason));
    w.line(failure_text(failure));
}

void write_densities(ListWriter& w) {
    if (const std::string text = liquid_line(w); !text.empty()) w.line(text);
    const PhaseOutcome* const L = w.column(phase_L);
    const PhaseOutcome* const V = w.column(phase_V);
    const auto volume = [&w](const PhaseOutcome* phase) {
        return phase ? std::optional<double>(phase->v * w.factor(Quantity::v)) : std::nullopt;
    };
    if (L || V) {
        w.table_row("Density", label_text(w.settings.units, Quantity::rho), L ? L->rho : std::nullopt,
                    V ? V->rho : std::nullopt);
        w.table_row("Volume", label_text(w.settings.units, Quantity::v), volume(L), volume(V));
    }
    if (w.outcome.vaporization) write_heat(w);
}

void write_state(ListWriter& w) {
    if (w.info().needs_eos && !w.fluid.has_eos()) return write_fault(w);
    if (!show_specified(w)) return;
    switch (w.mode()) {
        case Mode::T_rho:
        case Mode::T_rhoL:
            return state_by_density(w);
        case Mode::functions:
            return functions_state(w);
        case Mode::p_rho:
            return state_by_p_and_density(w);
        default:
            return state_by_pressure(w);
    }
}

void write_tank(ListWriter& w) {
    if (w.info().needs_eos && !w.fluid.has_eos()) return write_fault(w);
    show_T(w, w.view.par1);
    show_rho(w, w.view.par2);
    if (!w.outcome.has_result()) {
        if (w.outcome.failure.reason != Reason::no_reference_point) write_fault(w);
        return;
    }
    contents_lines(w);
    if (w.outcome.p) show_pressure(w);
    write_densities(w);
}

void write_process(ListWriter& w) {
    OutputView& view = w.view;
    view.Liste.visible = false;
    view.co1.visible = false;
    view.txtco2.visible = false;
    view.fraBatchVorgabe = false;
    show_specified(w);
}

}  // namespace quom
