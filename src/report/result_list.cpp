#include "report/result_list.h"

#include "base/code_page.h"
#include "base/number_text.h"
#include "report/list_writer.h"

namespace quom {

namespace {

// Head line, labels and marks of a region.
struct RegionTexts {
    std::string_view head, L_label, V_label, identity, no_equilibrium;
};
constexpr RegionTexts region_critical = {"critical point (T = T(cr), p = p(cr))   > > > > > > > > >", "", "",
                                         "identic", ""};
constexpr RegionTexts region_supercritical = {
    "supercritical phase (L) = (V) (T > T(cr), p > p(cr))   > > > > >", "", "", "identic",
    " no 2-phase state! "};
constexpr RegionTexts region_liquid = {"supercritical L-phase (T < T(cr), p > p(cr))   > > > > > > >",
                                       "L-Phase", "", "(identical)", ""};
constexpr RegionTexts region_pressure = {"supercritical phase (p > p(cr)), NO VLE   > > > > > > > >", "", "",
                                         "", ""};
constexpr RegionTexts region_vapor = {"supercritical V-phase (T > T(cr), p < p(cr))   > > > > > > > >", "",
                                      "V-phase", "(identical)", ""};
constexpr RegionTexts region_temperature = {"supercritical phase (T > T(cr)), NO VLE   > > > > > > > > >", "",
                                            "", "", ""};

// Numbers of phase_region; 0 has no text.
enum Region : int { below = 0, liquid = 1, both_above = 2, vapor = 3, critical = 4 };

// Null below the critical point.
const RegionTexts* region_texts(int region, bool has_T, bool has_p) {
    switch (region) {
        case critical:
            return &region_critical;
        case both_above:
            return &region_supercritical;
        case liquid:
            return has_T ? &region_liquid : &region_pressure;
        case vapor:
            return has_p ? &region_vapor : &region_temperature;
        default:
            return nullptr;
    }
}

void region_block(ListWriter& w) {
    OutputView& view = w.view;
    view.lblLphase.text = "L-phase";
    view.lblVphase.text = "V-phase";
    view.lblLphase.visible = w.outcome.IsL;
    view.lblVphase.visible = w.outcome.IsV;
    if (w.fluid.VPhaseOnly || !w.info().has_region) return;
    const RegionTexts* region = region_texts(phase_region(w.fluid, w.T(), w.p()), w.T() > 0.0, w.p() > 0.0);
    view.cmdInfoSuperCrit = region != nullptr;
    if (!region) return;
    view.co1 = {.text = std::string(region->head), .colour = colour_region, .bold = true, .size = 10};
    if (!region->L_label.empty()) view.lblLphase.text = region->L_label;
    if (!region->V_label.empty()) view.lblVphase.text = region->V_label;
    view.Bezeichnung2.text = region->identity;
    view.Bezeichnung2.visible = !region->identity.empty();
    view.lblGleich.text = region->no_equilibrium;
    view.lblGleich.visible = !region->no_equilibrium.empty();
}

bool is_heat(const ListWriter& w) { return w.info().family == ModeFamily::vaporization; }

// A state of the equation of state alone is told with its constants, and can be diagnosed.
bool rests_on_eos(const ListWriter& w) {
    const ModeFamily family = w.info().family;
    if (family == ModeFamily::database || family == ModeFamily::process || !w.fluid.has_eos()) return false;
    return !is_heat(w) || w.fluid.models.HLVKode == Hlv::eos;
}

// a(T) to d(T), or B(T), of the equation in force at T of the state.
void parameter_lines(ListWriter& w) {
    if (!w.outcome.T) return;
    const std::string name(eos_text(w.fluid));
    const auto row = [&w](std::string_view label, double x) { w.line(std::string(label) + strSingle(x)); };
    if (w.fluid.VPhaseOnly) {
        const ModeFamily family = w.info().family;
        const bool told = family != ModeFamily::database && family != ModeFamily::process &&
                          family != ModeFamily::virial && w.fluid.has_eos();
        if (!told) return;
        const bool known = w.outcome.eos && w.outcome.eos->B.has_value();
        const double B = known ? *w.outcome.eos->B : VirialB(w.fluid, w.T());
        w.line("Virial coeffizient: (" + name + "):");
        w.line("  B =" + strSingle(B) + " m^3/kmol");
        return;
    }
    if (!rests_on_eos(w)) return;
    const EosAtT at = w.outcome.eos ? w.outcome.eos->at : EOSParT(w.fluid, w.T());
    const std::string head = "Paramet. of the generalized cub. EOS (" + name + "):";
    w.line(head);
    w.ruler(head.size(), '=');
    row("  A =", at.a);
    row("  B =", at.b);
    row("  C =", at.c);
    row("  D =", at.d);
}

// Reservations that have neither a box nor a line of their own elsewhere.
void warning_lines(ListWriter& w) {
    for (const Warning& warning : w.outcome.warnings) {
        switch (warning.kind) {
            case WarningKind::beyond_pLV:
            case WarningKind::below_B:
            case WarningKind::other_phase_by_evp:
                w.line("Note: " + warning_text(warning));
                break;
            default:
                break;
        }
    }
}

void offer_diagnosis(ListWriter& w) {
    const bool by_concept =
        w.info().family == ModeFamily::equilibrium || w.info().family == ModeFamily::virial;
    const bool offered = w.fluid.eos_row().is_cubic() && w.settings.setup.GlobalCalc &&
                         w.outcome.eos.has_value() && w.outcome.p.has_value() && rests_on_eos(w) &&
                         (w.fluid.models.Konzept || !by_concept);
    w.view.cmdCEOSDiagnose = offered;
    if (offered) w.view.cmdCEOSDiagnose_colour = colour_diagnosis;
}

void functions_block(ListWriter& w) {
    w.ruler(WideRuler, '*');
    w.line("                               thermodynamic Fu(T)");
    w.ruler(WideRuler, '*');
    write_functions(w);
}

using WriteMode = void (*)(ListWriter&);
WriteMode writer_of(ModeFamily family) {
    switch (family) {
        case ModeFamily::state:
            return write_state;
        case ModeFamily::equilibrium:
            return write_equilibrium;
        case ModeFamily::vaporization:
            return write_vaporization;
        case ModeFamily::tank:
            return write_tank;
        case ModeFamily::virial:
            return write_virial;
        case ModeFamily::process:
            return write_process;
        case ModeFamily::database:
            return write_database;
        case ModeFamily::none:
            break;
    }
    return nullptr;
}

// "EXIT", "ERROR1" to "ERROR3" of a tank.
std::string tank_text(const Outcome& outcome) {
    if (mode_info(outcome.mode).family != ModeFamily::tank) return {};
    switch (outcome.failure.reason) {
        case Reason::partial_above_critical:
            return "EXIT";
        case Reason::volume_below_b:
            return outcome.mode == Mode::tank_global ? "ERROR1" : "";
        case Reason::volume_below_B:
            return "ERROR3";
        case Reason::none:
            return outcome.phase == PhaseWord::L && !outcome.p ? "ERROR2" : "";
        default:
            return {};
    }
}

// A request that is no calculation shows nothing.
bool leaves_at_once(const Outcome& outcome) {
    const Reason reason = outcome.failure.reason;
    return reason == Reason::no_mode || reason == Reason::no_tank_given ||
           reason == Reason::partial_above_critical;
}

void end_with_result(ListWriter& w) {
    const Outcome& outcome = w.outcome;
    if (w.settings.ExtLevel > 1 && !is_heat(w)) write_extended(w);
    const bool has_state = outcome.phase != PhaseWord::none && outcome.T && outcome.p;
    if (w.settings.ShowFunctions && has_state && !is_heat(w) && w.mode() != Mode::functions)
        functions_block(w);
    parameter_lines(w);
    warning_lines(w);
    offer_diagnosis(w);
}

}  // namespace

const PhaseOutcome* ListWriter::column(Phase phase) const {
    if (!(phase == phase_L ? outcome.IsL : outcome.IsV)) return nullptr;
    const std::optional<PhaseOutcome>& own = phase == phase_L ? outcome.L : outcome.V;
    const std::optional<PhaseOutcome>& other = phase == phase_L ? outcome.V : outcome.L;
    if (own) return &*own;
    return other && !outcome.two_phase() ? &*other : nullptr;
}

void ListWriter::table_row(std::string_view name, std::string_view label, const std::optional<double>& L,
                           const std::optional<double>& V) {
    const auto cell = [](const std::optional<double>& x) { return x ? strSingle(*x) : std::string(); };
    const std::string row =
        text_padded(name, 17) + text_padded(label, 14) + " = " + text_padded(cell(L), ColumnWidth) + cell(V);
    line(trim_right(row));
}

std::string pressure_text(double p) { return p < 0.01 ? genSingle(p) : value_text(p, Quantity::p); }

std::string value_text(double x, Quantity q) { return formatMask(x, quantity_info(q).value_mask); }

std::string_view eos_text(const Fluid& fluid) { return trim(fluid.eos_row().text); }

OutputView make_result_list(const Fluid& fluid, const Outcome& outcome, const ListSettings& settings) {
    OutputView view;
    for (ViewText* label : {&view.lblVphase, &view.lblLphase, &view.lblGleich, &view.Bezeichnung2}) {
        label->visible = false;
    }
    view.Text = tank_text(outcome);
    const WriteMode write = writer_of(mode_info(outcome.mode).family);
    if (!write || leaves_at_once(outcome)) return view;
    ListWriter w{.fluid = fluid,
                 .outcome = outcome,
                 .settings = settings,
                 .factors = outcome_factors(fluid, outcome, settings.units),
                 .view = view};
    write(w);
    region_block(w);
    if (outcome.has_result()) end_with_result(w);
    return view;
}

std::string list_text(const OutputView& view) {
    constexpr std::size_t first_value = 34;  // name, unit and "=" before the column of the L-phase
    std::string out;
    for (const ViewText* text :
         {&view.par1, &view.par2, &view.co1, &view.txtco2, &view.Bezeichnung2, &view.lblGleich}) {
        if (text->visible && !trim(text->text).empty()) out += text->text + "\n";
    }
    if (view.Liste.text.empty()) return out;
    out += '\n';
    if (view.lblLphase.visible || view.lblVphase.visible) {
        std::string heads(first_value, ' ');
        heads += text_padded(view.lblLphase.visible ? view.lblLphase.text : "", ColumnWidth);
        if (view.lblVphase.visible) heads += view.lblVphase.text;
        out.append(trim_right(heads)).push_back('\n');
    }
    out += view.Liste.text;
    if (!out.ends_with('\n')) out += '\n';
    return out;
}

}  // namespace quom
