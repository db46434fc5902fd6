// calc: one calculation of one mode, as the result window shows it or as slots by name.
#include <memory>

#include "console/calc_setup.h"
#include "console/command_reports.h"
#include "report/comparison_report.h"
#include "report/outcome_messages.h"
#include "report/outcome_report.h"
#include "report/result_list.h"
#include "report/titles.h"

namespace quom {
namespace {

struct CalcArguments {
    std::string substance;
    ModelOptions models;
    SpecifiedArguments arguments;
    Mode mode = Mode::none;
    int ext = 1;
    bool functions = false;
};

void take_output(Session& session, const CalcArguments& a) {
    Document document = session.document;
    document.calc.ExtLevel = a.ext;
    document.calc.ShowFunctions = a.functions;
    commit(session, std::move(document));
}

Report calc(Program& program, const CalcArguments& a) {
    if (!a.models.units.empty() && !program.options.json)
        return refusal("calc", {status_usage,
                                "the list of results has the units of --energy and --volume; --units "
                                "needs --json."});
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("calc", *refused);
    if (const Refused refused = set_up_mode(program, a.mode)) return refusal("calc", *refused);
    Session& session = program.session;
    SpecifiedValues values;
    if (const Refused refused = convert(a.arguments, session.fluid->M, values))
        return refusal("calc", *refused);
    if (const Refused refused = take_values(session, values)) return refusal("calc", *refused);
    take_output(session, a);
    const Outcome outcome = CalcBatch(*session.fluid, exact_input(session.document, values));
    for (const Message& message : outcome_messages(*session.fluid, outcome, true))
        program.messages.ask(message);
    Report report = calc_report(session, outcome);
    if (program.options.json) return report;
    program.out << calc_text(session, outcome);
    if (outcome.has_result()) {
        program.out << '\n';
        report.footer = footer_of(*session.fluid, session.document.units);
    }
    report.sections.clear();
    Block comparison = comparison_block(*session.fluid, outcome, session.document.units);
    if (comparison.layout != Layout::json) report.sections.emplace_back(std::move(comparison));
    report.notes.clear();
    return report;
}

}  // namespace

Report calc_report(const Session& session, const Outcome& outcome) {
    const Fluid& fluid = *session.fluid;
    const Document& document = session.document;
    Report report;
    add_heads(report, session);
    report.sections.emplace_back(mode_block(fluid, outcome, document.calc.setup, document.units));
    const UnitFactors factors = outcome_factors(fluid, outcome, document.units);
    report.sections.emplace_back(slot_block(calc_result(outcome, factors), document.units));
    report.sections.emplace_back(comparison_block(fluid, outcome, document.units));
    if (document.calc.ExtLevel > 1)
        for (Grid& grid : array_grids(outcome)) report.sections.emplace_back(std::move(grid));
    add_reservations(report, fluid, outcome);
    return report;
}

std::string calc_text(const Session& session, const Outcome& outcome) {
    const Fluid& fluid = *session.fluid;
    const CalculationInput& calc = session.document.calc;
    const ListSettings settings{.units = session.document.units,
                                .setup = calc.setup,
                                .ExtLevel = calc.ExtLevel,
                                .ShowFunctions = calc.ShowFunctions};
    return substance_head(fluid.substance) + "\n" + models_head(fluid.models) + "\n\n" +
           CalcCaption(outcome.mode, calc.setup) + "\n" +
           list_text(make_result_list(fluid, outcome, settings));
}

Action declare_calc(CLI::App& app) {
    const auto a = std::make_shared<CalcArguments>();
    add_substance(app, a->substance);
    add_mode(app, a->mode);
    add_specified_values(app, a->arguments);
    app.add_option("--ext", a->ext,
                   "Extended output: 1 none, 2 coefficients and residual functions, 3 derivatives, 4 both")
        ->check(CLI::Range(1, 4))
        ->type_name("1..4");
    app.add_flag("--functions", a->functions, "With the table of h, s, g, u, a, exergies, cp, cV, w");
    add_model_options(app, a->models);
    return [a](Program& program) { return calc(program, *a); };
}

}  // namespace quom
