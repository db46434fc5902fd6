// Table of functions, extended output, second virial coefficients, and the value of one equation of the
// database.
#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/number_text.h"
#include "report/list_writer.h"
#include "report/titles.h"

namespace quom {

namespace {

constexpr std::string_view signed_mask = " 0.0000E+00;-0.0000E+00";
constexpr std::string_view plain_mask = "0.0000E+00";

bool is_exergy(Quantity q) { return q == Quantity::eH || q == Quantity::eU; }

bool has_warning(const Outcome& outcome, WarningKind kind) {
    return std::ranges::any_of(outcome.warnings, [kind](const Warning& w) { return w.kind == kind; });
}

// A column of the equation of state.
const PhaseOutcome* eos_column(const ListWriter& w, Phase phase) {
    const PhaseOutcome* const found = w.column(phase);
    return found && found->from_eos ? found : nullptr;
}
// A column of functions: without cp(idG) the volume stands alone in it.
const PhaseOutcome* function_column(const ListWriter& w, Phase phase) {
    const PhaseOutcome* const found = eos_column(w, phase);
    return found && (found->h || found->functions_reason == Reason::no_ideal_gas_cp) ? found : nullptr;
}

// Exponent of the volume unit in a derivative row.
int volume_power(std::size_t row) {
    switch (row) {
        case 0:
        case 4:
            return -1;  // (dp/dV), (dT/dV)
        case 2:
        case 3:
        case 12:
            return 1;  // (dV/dp), (dV/dT), d2V/dT2
        case 9:
        case 13:
            return -2;  // d2p/dV2, d2T/dV2
        default:
            return 0;
    }
}

// Both phases at once.
struct Extended {
    ListWriter& w;
    const PhaseArrays* L = nullptr;
    const PhaseArrays* V = nullptr;
    double vFactor = 1.0;  // per kg instead of per kmol

    std::optional<double> value(const PhaseArrays* arrays, std::size_t row) const {
        const double x = arrays ? extended_value(*arrays, row) : NAN;
        if (!std::isfinite(x)) return std::nullopt;
        return x * std::pow(vFactor, volume_power(row));
    }
    void print_values(std::string row, std::size_t number, std::string_view mask) const {
        const std::optional<double> l = value(L, number), v = value(V, number);
        row += text_padded(l ? formatMask(*l, mask) : std::string(), ColumnWidth);
        if (v) row += formatMask(*v, mask);
        w.line(trim_right(row));
    }
    void print_rows(std::initializer_list<std::size_t> numbers, std::string_view mask) const {
        for (const std::size_t number : numbers)
            print_values(text_padded(extended_label(number), 31) + " : ", number, mask);
    }
    bool is_set(std::size_t number) const { return value(L, number) || value(V, number); }
};

void first_box(const Extended& x) {
    constexpr std::size_t head_ruler = 74;
    ListWriter& w = x.w;
    w.line(" ");
    w.ruler(head_ruler, '*');
    w.line("diff. Joule-Thomson coefficients; fugacity coeff.; residual functions");
    w.ruler(head_ruler, '*');
    if (x.is_set(21)) {
        w.line(std::string(extended_label(21)) + " (Joule-Thomson coefficient [K/kPa]):");
        x.print_values(std::string(34, ' '), 21, signed_mask);
    }
    x.print_rows({14, 15, 16}, signed_mask);
    w.line("Residual functions:");
    x.print_rows({17, 18, 19, 20}, signed_mask);
    w.ruler(WideRuler, '*');
    w.line("                    Mechanical coefficients");
    w.ruler(WideRuler, '*');
    x.print_rows({6, 7, 8}, plain_mask);
}

void second_box(const Extended& x) {
    ListWriter& w = x.w;
    w.ruler(WideRuler, '*');
    w.line("                    derivatives with respect to T, p, v");
    w.ruler(WideRuler, '*');
    w.line(x.vFactor == 1.0 ? "(molar)" : "(specif.)");
    x.print_rows({0, 1, 2, 3, 4, 5}, signed_mask);
    x.print_rows({9, 12, 13}, signed_mask);
    for (const std::size_t number : {std::size_t{22}, std::size_t{23}}) {
        if (x.is_set(number)) x.print_rows({number}, signed_mask);
    }
}

void inflection_lines(const Extended& x) {
    ListWriter& w = x.w;
    if (!w.outcome.inflection) return;
    const Inflection& points = *w.outcome.inflection;
    bool found = false;
    for (std::size_t k = 0; k < 2 && points.reason == Reason::none; ++k) {
        if (!(points.v[k] > 0.0)) continue;
        found = true;
        w.line(std::string(k == 0 ? "1st" : "2nd") +
               " point of inflection p-v isoth.: v = " + formatMask(points.v[k] * x.vFactor, "#0.0000#") +
               (x.vFactor == 1.0 ? " m^3/kmol" : " m^3/kg") + ", p = " + formatMask(points.pv[k], "#####0") +
               " kPa (cf. 2nd deriv.= " + formatMask(points.d2[k], "0.0E+00") + ")");
    }
    if (!found) w.line("inflection point of p-v isoth.: No solution found");
}

// The value of a database function in molar units, by mode; where it stands in the outcome.
struct DatabaseText {
    Mode mode;
    Quantity quantity;
    std::string_view label;
    std::array<std::string_view, 4> units;  // by EnergyMode
    std::optional<double> (*value)(const Outcome&);
};
using Optional = std::optional<double>;
constexpr std::array<std::string_view, 4> density_unit = {" kg/m^3", " kg/m^3", " kg/m^3", " kg/m^3"};
constexpr std::array<std::string_view, 4> pressure_unit = {" kPa", " kPa", " kPa", " kPa"};
constexpr std::array<std::string_view, 4> energy_unit = {" kJ/kmol", " K", " ", " kJ/kg"};
constexpr std::array<std::string_view, 4> capacity_unit = {" kJ/(kmol/)", " ", " 1/K", " kJ/(kg K)"};
constexpr auto pressure_value = [](const Outcome& o) -> Optional { return o.p; };
constexpr auto heat_value = [](const Outcome& o) -> Optional {
    return o.vaporization ? o.vaporization->hLV : std::nullopt;
};
constexpr DatabaseText database_texts[] = {
    {Mode::fn_rhoL, Quantity::rho, " rho(L) = ", density_unit,
     [](const Outcome& o) -> Optional { return o.rhoL_fn; }},
    {Mode::fn_hLV, Quantity::hLV, " delta(LV)h = ", energy_unit, heat_value},
    {Mode::fn_cpIdG, Quantity::cpId, " cp_IdGas = ", capacity_unit,
     [](const Outcome& o) -> Optional { return o.cpId_fn; }},
    {Mode::fn_cpL, Quantity::cp, " cp(L) = ", capacity_unit,
     [](const Outcome& o) -> Optional { return o.cpL_fn; }},
    {Mode::fn_cpS, Quantity::cp, " cp(S) = ", capacity_unit,
     [](const Outcome& o) -> Optional { return o.cpS_fn; }},
    {Mode::fn_frost_kalkwarf, Quantity::p, " p(LV), extnd. Frost-Kalkwarf = ", pressure_unit, pressure_value},
    {Mode::fn_wagner, Quantity::p, " p(LV), Wagner = ", pressure_unit, pressure_value},
    {Mode::fn_antoine_low, Quantity::p, " p(LV), Antoine (Lo-p) = ", pressure_unit, pressure_value},
    {Mode::fn_antoine_high, Quantity::p, " p(LV), Antoine (Hi-p) = ", pressure_unit, pressure_value},
    {Mode::fn_rhoS, Quantity::rho, " rho(S) = ", density_unit,
     [](const Outcome& o) -> Optional { return o.rhoS_fn; }},
};

}  // namespace

void write_functions(ListWriter& w) {
    const PhaseOutcome* const V = function_column(w, phase_V);
    const PhaseOutcome* const L = function_column(w, phase_L);
    if (!V && !L) return w.line("no result received");
    const bool table = w.mode() == Mode::functions;
    const bool no_exergies = has_warning(w.outcome, WarningKind::no_environment);
    for (const Quantity q : function_rows) {
        if (no_exergies && is_exergy(q)) continue;
        const auto displayed = [&](const PhaseOutcome* phase) -> Optional {
            const Optional x = phase ? function_value(*phase, q) : std::nullopt;
            return x ? Optional(*x * w.factor(q)) : std::nullopt;
        };
        const QuantityInfo& info = quantity_info(q);
        w.table_row(table ? info.table_name : info.list_name, label_text(w.settings.units, q), displayed(L),
                    displayed(V));
    }
    if (no_exergies) {
        w.line("no state of the surroundings at T(surr)/K =" + strNum(w.fluid.reference.TEnv) +
               ", p(surr)/kPa =" + strNum(w.fluid.reference.pEnv) + ": no exergies");
    }
    if (has_warning(w.outcome, WarningKind::no_ideal_gas_cp)) w.line("No cp(idGas) parameters available");
}

void write_extended(ListWriter& w) {
    const auto arrays = [&w](Phase phase) -> const PhaseArrays* {
        const PhaseOutcome* const found = eos_column(w, phase);
        return found && found->arrays ? &*found->arrays : nullptr;
    };
    Extended x{.w = w, .L = arrays(phase_L), .V = arrays(phase_V)};
    if (!(x.L || x.V)) return;
    const int level = w.settings.ExtLevel;
    if (w.settings.units.VolumeMode == volume_per_mass) x.vFactor = w.factors.vFactor;
    if (level == 2 || level == 4) first_box(x);
    if (level == 3 || level == 4) second_box(x);
    if (!w.fluid.VPhaseOnly) inflection_lines(x);
}

void write_virial(ListWriter& w) {
    if (!show_specified(w)) return;
    constexpr std::string_view head = "Comparison of Virial Coefficients, [B] = m^3/kmol";
    w.line(head);
    w.ruler(head.size(), '=');
    if (w.outcome.virial.empty()) w.line("critical data T(cr), p(cr) are missing");
    for (const VirialOutcome& equation : w.outcome.virial) {
        w.line(std::string(trim(eos_info(equation.code).text)) +
               " {B} = " + (equation.B ? genNum(*equation.B) : std::string("(Error)")) +
               (equation.omega_zero ? " (omega = 0)" : ""));
    }
}

void write_database(ListWriter& w) {
    const Reason reason = w.outcome.failure.reason;
    if (reason == Reason::no_T_given || reason == Reason::T_not_positive) {
        show_specified(w);
        return;
    }
    const auto* const text = std::ranges::find(database_texts, w.mode(), &DatabaseText::mode);
    if (text == std::end(database_texts)) return;
    const Optional value = text->value(w.outcome);
    if (!w.outcome.has_result() || !value) return;
    const auto energy_mode = static_cast<std::size_t>(w.settings.units.EnergyMode);
    show_specified(w);
    w.view.co1.text = " Calculation using the database function " + std::string(text->label) + " Fu(T)";
    w.view.txtco2.text = std::string(text->label) + genSingle(*value * w.factor(text->quantity));
    w.view.txtco2.text += text->units[energy_mode < text->units.size() ? energy_mode : 0];
    if (text->quantity == Quantity::rho) {
        w.line("v  /m^3/kmol = " + formatMask(w.fluid.M / *value, "##0.000###"));
        w.line("v  /m^3/kg   = " + formatMask(1.0 / *value, "##0.000###"));
    }
    w.line("The function is valid within the following temperature limits:");
    w.line(" T(Lo)/K = " + genNum(int{w.outcome.limits.TLo}));
    w.line(" T(Hi)/K = " + genNum(int{w.outcome.limits.THi}));
}

}  // namespace quom
