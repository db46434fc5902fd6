// state: region, phases, volumes, derivatives and functions at two of T, p, rho.
#include <memory>

#include "console/command_reports.h"
#include "console/selection.h"
#include "report/comparison_report.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct StateArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p;
    std::optional<GivenValue> rho;
};

Refused check(const StateArguments& a) {
    const int given = int{a.T.has_value()} + int{a.p.has_value()} + int{a.rho.has_value()};
    if (given == 2) return {};
    const char* what = given == 0   ? "No state is given."
                       : given == 1 ? "One value is not a state."
                                    : "Three values are too many.";
    return Fault{status_usage, std::string(what) + " Two of --T, --p, --rho are needed."};
}

Report state(Program& program, const StateArguments& a) {
    if (const Refused refused = check(a)) return refusal("state", *refused);
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("state", *refused);
    const Session& session = program.session;
    std::optional<double> rho;
    if (a.rho) {
        const OwnValue own = own_value(*a.rho, Quantity::rho, session.fluid->M);
        if (!own.fault.empty()) return refusal("state", {status_no_result, "--rho: " + own.fault + "."});
        rho = own.value;
    }
    return state_report(session, state_at(*session.fluid, a.T, a.p, rho));
}

}  // namespace

Report state_report(const Session& session, const Outcome& outcome) {
    const Fluid& fluid = *session.fluid;
    const Units& units = session.document.units;
    Report report;
    add_heads(report, session);
    if (outcome.has_result()) {
        report.title = substance_head(fluid.substance) + ": " + models_head(fluid.models);
        report.footer = footer_of(fluid, units);
        report.sections.emplace_back(state_block(fluid, outcome, units));
        report.sections.emplace_back(functions_grid(outcome, units, outcome_factors(fluid, outcome, units)));
        report.sections.emplace_back(comparison_block(fluid, outcome, units));
        for (Grid& grid : array_grids(outcome)) report.sections.emplace_back(std::move(grid));
    }
    add_reservations(report, fluid, outcome);
    return report;
}

Action declare_state(CLI::App& app) {
    const auto arguments = std::make_shared<StateArguments>();
    add_substance(app, arguments->substance);
    add_quantity(app, "--T", arguments->T, Quantity::T, NumberRange::above_zero, "Temperature");
    add_quantity(app, "--p", arguments->p, Quantity::p, NumberRange::above_zero, "Pressure");
    add_quantity(app, "--rho", arguments->rho, Quantity::rho, NumberRange::above_zero, "Density");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return state(program, *arguments); };
}

}  // namespace quom
