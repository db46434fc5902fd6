// iso: the T or p at which a function has a given value, or the value of another state.
#include <algorithm>
#include <cmath>
#include <memory>

#include "console/selection.h"
#include "engine/iso_search.h"
#include "forms/iso_form.h"
#include "report/comparison_report.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct IsoArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p;       // the one that is given
    std::optional<GivenValue> value;  // of the function; without a unit in that of the output
    std::optional<double> T0, p0;     // or the state whose value is held
    std::string hold, phase;
};

Quantity quantity_of(int column) { return function_rows[static_cast<std::size_t>(column)]; }

// Index of the function by its symbol; -1 for none.
int column_of(const std::string& symbol) {
    for (int column = 0; column < iso_function_count; ++column) {
        if (quantity_info(quantity_of(column)).symbol == symbol) return column;
    }
    return -1;
}

std::string symbols() {
    std::string list;
    for (int column = 0; column < iso_function_count; ++column)
        list += (column ? "|" : "") + std::string(quantity_info(quantity_of(column)).symbol);
    return list;
}

Refused check(const IsoArguments& a) {
    if (!a.T == !a.p) return Fault{status_usage, "give one of --T and --p; the other is searched."};
    if (!a.T0 != !a.p0) return Fault{status_usage, "--T0 and --p0 belong together."};
    if (!a.value == !a.T0)
        return Fault{status_usage,
                     "give the value of the function by --value, or the state that has it by --T0 --p0."};
    if (!a.value || a.value->unit.empty()) return {};
    const Quantity q = quantity_of(column_of(a.hold));
    constexpr double any_molar_mass = 1.0;
    const OwnValue value = own_value(*a.value, q, any_molar_mass);
    if (!value.fault.empty()) return Fault{status_usage, "--value: " + value.fault + "."};
    if (q == Quantity::v ? a.models.volume != volume_molar : a.models.energy != energy_molar)
        return Fault{status_usage,
                     "--value with a unit does not go with --energy and --volume; choose the unit of the "
                     "output by --units."};
    return {};
}

std::string_view phase_name(Phase phase) {
    return phase_text(phase == phase_L ? PhaseWord::L : PhaseWord::V);
}

// Value to be held in displayed units, and the phase of the state that has it when the user has named none.
struct Held {
    double value = 0;
    Phase phase = phase_V;
    Refused refused;
};

// The value of --value: its own unit, else that of --units, else the displayed one.
OwnValue typed_value(const Program& program, const IsoArguments& a, Quantity q) {
    GivenValue given = *a.value;
    const auto chosen = program.output_units.by_quantity.find(q);
    if (given.unit.empty() && chosen != program.output_units.by_quantity.end())
        given.unit = chosen->second.name;
    return own_value(given, q, program.session.fluid->M);
}

Held held_value(const Program& program, const IsoArguments& a, int column) {
    const Session& session = program.session;
    Held held;
    if (a.phase == phase_name(phase_L)) held.phase = phase_L;
    if (a.value) {
        const OwnValue typed = typed_value(program, a, quantity_of(column));
        held.value = typed.value;
        if (!typed.fault.empty()) held.refused = Fault{status_no_result, "--value: " + typed.fault + "."};
        return held;
    }
    const Outcome outcome = state_at(*session.fluid, a.T0, a.p0, {});
    if (!outcome.has_result()) {
        held.refused = Fault{status_no_result, "no state at --T0, --p0: " + outcome_message(outcome)};
        return held;
    }
    if (a.phase.empty() && outcome.phase == PhaseWord::L) held.phase = phase_L;
    const PhaseOutcome* const phase = phase_of(outcome, held.phase);
    const std::optional<double> x = phase ? function_of(*phase, column) : std::nullopt;
    if (!phase) {
        held.refused = Fault{status_no_result, "the state at --T0, --p0 has no " + a.phase + "-phase"};
    } else if (!x) {
        held.refused = Fault{status_no_result, "the state at --T0, --p0 has no " + a.hold + ": " +
                                                   std::string(reason_text(phase->functions_reason))};
    } else {
        held.value = *x * iso_factor(session, column, *a.T0);
    }
    return held;
}

IsoInput search_input(const Session& session, const IsoArguments& a, int column, const Held& held) {
    IsoInput input;
    input.What = a.T ? iso_find_p : iso_find_T;
    input.Column = column;
    input.Target = held.value;
    input.phase = held.phase;
    input.given = a.T ? *a.T : *a.p;
    // Without a state to start from: the critical one.
    input.start = a.T ? a.p0.value_or(session.substance().pcr) : a.T0.value_or(session.substance().Tcr);
    return input;
}

Report not_found(const Session& session, const IsoArguments& a, const IsoInput& input, Reason reason) {
    Report report =
        refusal("iso", {status_no_result,
                        "No solution found: no " + std::string(phase_name(input.phase)) + "-phase with " +
                            a.hold + " = " + shown(input.Target) + " " +
                            std::string(unit_text(session.document.units, quantity_of(input.Column))) +
                            (a.T ? " at T = " + shown(*a.T) + " K." : " at p = " + shown(*a.p) + " kPa.")});
    report.reason = reason_name(reason);
    add_heads(report, session);
    return report;
}

// The state that was found nearest to the start.
Block state_block(const IsoArguments& a, double T, double p, const Outcome& outcome) {
    return {"state",
            "State",
            {{"T", "T", T, "K", a.T ? "" : "found"},
             {"p", "p", p, "kPa", a.T ? "found" : ""},
             {"phase", "phase", phase_text(outcome.phase), "", ""}},
            Layout::list};
}

Block held_block(const IsoArguments& a, const Held& held, const std::string& unit, int column) {
    return {"held",
            std::string(iso_captions[static_cast<std::size_t>(column)].caption) + " held",
            {{"function", "", a.hold, "", ""}, {"target", a.hold, held.value, unit, "", quantity_of(column)}},
            Layout::list};
}

// T, p, phase and density of every solution, nearest to the start first; in text where there are several.
Table solutions_table(const Fluid& fluid, const IsoArguments& a, const IsoInput& input,
                      const IsoResult& found) {
    std::vector<double> unknowns = found.others;
    const auto away = [start = input.start.value_or(found.value)](double x) {
        return std::fabs(std::log(x / start));
    };
    std::ranges::sort(unknowns, {}, away);
    unknowns.insert(unknowns.begin(), found.value);
    Table table{"solutions",
                "Solutions, nearest first",
                {{"T", "T", "K"}, {"p", "p", "kPa"}, {"phase", "phase", ""}, {"rho", "rho", "kg/m^3"}},
                {},
                unknowns.size() > 1 ? Layout::list : Layout::json};
    for (const double x : unknowns) {
        const Outcome state = state_at(fluid, a.T.value_or(x), a.p.value_or(x), {});
        const PhaseOutcome* const phase = phase_of(state, state.phase == PhaseWord::L ? phase_L : phase_V);
        table.rows.push_back({a.T.value_or(x), a.p.value_or(x), phase_text(state.phase),
                              phase ? if_present(phase->rho) : Value()});
    }
    return table;
}

Report iso(Program& program, const IsoArguments& a) {
    if (const Refused refused = check(a)) return refusal("iso", *refused);
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("iso", *refused);
    const Session& session = program.session;
    const Fluid& fluid = *session.fluid;
    const Units& units = session.document.units;
    const int column = column_of(a.hold);
    const Held held = held_value(program, a, column);
    if (held.refused) return refusal("iso", *held.refused);
    const IsoInput input = search_input(session, a, column, held);
    const IsoResult found = iso_search(session, input);
    if (found.err()) return not_found(session, a, input, found.reason);
    const double T = a.T.value_or(found.value);
    const double p = a.p.value_or(found.value);
    Outcome outcome = state_at(fluid, T, p, {});
    if (!found.others.empty()) outcome.warnings.push_back({.kind = WarningKind::several_solutions});
    Report report;
    report.title = substance_head(fluid.substance) + "\n" + models_head(fluid.models);
    report.footer = footer_of(fluid, units);
    add_heads(report, session);
    const std::string unit(unit_text(units, quantity_of(column)));
    report.sections.emplace_back(held_block(a, held, unit, column));
    report.sections.emplace_back(state_block(a, T, p, outcome));
    report.sections.emplace_back(solutions_table(fluid, a, input, found));
    report.sections.emplace_back(functions_grid(outcome, units, outcome_factors(fluid, outcome, units)));
    report.sections.emplace_back(comparison_block(fluid, outcome, units));
    add_reservations(report, fluid, outcome);
    return report;
}

}  // namespace

Action declare_iso(CLI::App& app) {
    const auto a = std::make_shared<IsoArguments>();
    add_substance(app, a->substance);
    add_quantity(app, "--T", a->T, Quantity::T, NumberRange::above_zero, "Given temperature; p is searched");
    add_quantity(app, "--p", a->p, Quantity::p, NumberRange::above_zero, "Given pressure; T is searched");
    app.add_option("--hold", a->hold, "Function that is held: " + symbols())
        ->required()
        ->check([](const std::string& text) {
            return column_of(text) >= 0 ? std::string()
                                        : "\"" + text + "\" is no function; " + symbols() + " are.";
        })
        ->type_name("FUNCTION");
    add_quantity(app, "--value", a->value, {}, NumberRange::any,
                 "Its value, in its unit or in that of the output");
    add_quantity(app, "--T0", a->T0, Quantity::T, NumberRange::above_zero,
                 "or: temperature of the state that has the value");
    add_quantity(app, "--p0", a->p0, Quantity::p, NumberRange::above_zero, "and its pressure");
    app.add_option("--phase", a->phase, "Phase that is searched (default: that of the state, else V)")
        ->check(CLI::IsMember({"L", "V"}))
        ->type_name("L|V");
    add_model_options(app, a->models);
    return [a](Program& program) { return iso(program, *a); };
}

}  // namespace quom
