#include "forms/iso_form.h"

#include <cmath>
#include <utility>

#include "base/code_page.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr int factor_rounds = 60;
constexpr double factor_limit = 1e-10;  // of T, relative

Quantity quantity_of(int Column) { return function_rows[static_cast<std::size_t>(Column)]; }

std::string result_label(const IsoCalculator& c) { return c.IsoIn == iso_find_p ? "p/kPa =" : "T/K ="; }

// Whether the factor of a function changes with T.
bool factor_follows_T(const Session& session, int Column) {
    return iso_factor(session, Column, 300.0) != iso_factor(session, Column, 600.0);
}

// Value of the function at a state, displayed; absent without the phase.
std::optional<double> displayed(const Session& session, const Outcome& state, int Column, int phase) {
    const std::optional<PhaseOutcome>& there = phase == phase_L ? state.L : state.V;
    if (!there || !state.T) return std::nullopt;
    const std::optional<double> molar = function_of(*there, Column);
    if (!molar) return std::nullopt;
    return *molar * iso_factor(session, Column, *state.T);
}

Changes set_point(Session& session, double T, double p) {
    Document document = session.document;
    document.exp.points.edit()[0].T = T;
    document.exp.points.edit()[0].p = p;
    return commit(session, std::move(document));
}

}  // namespace

double iso_factor(const Session& session, int Column, double T) {
    return display_factor(session.factors(T), quantity_of(Column));
}

IsoResult iso_search(const Session& session, const IsoInput& input) {
    IsoInput molar = input;
    const bool T_searched = input.What == iso_find_T && factor_follows_T(session, input.Column);
    double T = input.What == iso_find_p ? input.given : input.start.value_or(session.substance().Tcr);
    IsoResult result;
    for (int round = 0; round < factor_rounds; ++round) {
        molar.Target = input.Target / iso_factor(session, input.Column, T);
        result = IsoSearch(*session.fluid, molar);
        if (!T_searched || result.reason != Reason::none) return result;
        if (std::fabs(result.value - T) <= factor_limit * T) return result;
        T = result.value;
        molar.start = T;
    }
    result.reason = Reason::no_solution;
    return result;
}

IsoOpened open_iso_calculator(const Session& session) {
    IsoOpened opened;
    const TpRhoPoint& point = session.document.exp.points[0];
    if (!(point.T > 0.0) || !(point.p > 0.0)) {
        opened.refusal = refusal_message("not yet a T|p value available!");
        return opened;
    }
    IsoCalculator& c = opened.calculator;
    const Outcome state = iso_state(session);
    c.optIsoPhase = state.L && !state.V ? phase_L : phase_V;
    show_current_state(session, c);
    return opened;
}

std::string_view iso_given_label(const IsoCalculator& c) {
    return c.IsoIn == iso_find_p ? "  T/K = " : "p/kPa = ";
}

Quantity iso_quantity(const IsoCalculator& c) { return quantity_of(c.IsoFu); }

std::string_view iso_unit(const Session& session, const IsoCalculator& c) {
    return unit_text(session.document.units, quantity_of(c.IsoFu));
}

void show_current_state(const Session& session, IsoCalculator& c) {
    const TpRhoPoint& point = session.document.exp.points[0];
    c.txtTpVorgabe = c.IsoIn == iso_find_p ? point.T : point.p;
    c.txtTpCalc.clear();
    c.result_label = result_label(c);
    c.txtFuConst = displayed(session, iso_state(session), c.IsoFu, c.optIsoPhase).value_or(0.0);
}

std::optional<BoxRefusal> take_iso_boxes(IsoCalculator& c, const std::string& given,
                                         const std::string& function) {
    BoxNumber Tp = read_box(caption_parts(iso_given_label(c)).name, given, NumberRule::above_zero);
    if (!Tp.fault.empty()) return BoxRefusal{0, std::move(Tp.fault)};
    const std::string_view label = iso_captions[static_cast<std::size_t>(c.IsoFu)].label;
    BoxNumber value = read_box(trim(label.substr(0, label.find('='))), function, NumberRule::any);
    if (!value.fault.empty()) return BoxRefusal{1, std::move(value.fault)};
    c.txtTpVorgabe = Tp.value;
    c.txtFuConst = value.value;
    return std::nullopt;
}

std::optional<Changes> iso_calculate(Session& session, IsoCalculator& c) {
    const TpRhoPoint& point = session.document.exp.points[0];
    const bool find_p = c.IsoIn == iso_find_p;
    const double start = find_p ? point.p : point.T;
    c.result_label = result_label(c);
    const IsoResult found = iso_search(session, {.What = c.IsoIn,
                                                 .Column = c.IsoFu,
                                                 .Target = c.txtFuConst,
                                                 .phase = c.optIsoPhase == phase_L ? phase_L : phase_V,
                                                 .given = c.txtTpVorgabe,
                                                 .start = start > 0.0 ? std::optional(start) : std::nullopt});
    if (found.reason != Reason::none) {
        c.txtTpCalc = "No solution found";
        return std::nullopt;
    }
    c.txtTpCalc = genNum(found.value);
    c.last = IsoCalculator::Success{.T = find_p ? c.txtTpVorgabe : found.value,
                                    .p = find_p ? found.value : c.txtTpVorgabe,
                                    .IsoIn = c.IsoIn,
                                    .IsoFu = c.IsoFu,
                                    .optIsoPhase = c.optIsoPhase,
                                    .txtFuConst = c.txtFuConst};
    return set_point(session, c.last->T, c.last->p);
}

Outcome iso_state(const Session& session) {
    Document document = session.document;
    document.calc.CalcMode = Mode::functions;
    document.calc.ExtLevel = 1;
    return CalcBatch(*session.fluid, state_input(document, 0));
}

Changes iso_reset(Session& session, IsoCalculator& c) {
    if (!c.last) {
        c.txtTpCalc = "No solution";
        return {};
    }
    const IsoCalculator::Success last = *c.last;
    const Changes changes = set_point(session, last.T, last.p);
    c.IsoIn = last.IsoIn;
    c.IsoFu = last.IsoFu;
    c.optIsoPhase = last.optIsoPhase;
    c.txtFuConst = last.txtFuConst;
    c.txtTpVorgabe = c.IsoIn == iso_find_p ? last.T : last.p;
    c.result_label = result_label(c);
    c.txtTpCalc = genNum(c.IsoIn == iso_find_p ? last.p : last.T);
    return changes;
}

}  // namespace quom
