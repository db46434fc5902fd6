// tank: phases, pressure and shares in a closed tank.
#include <memory>

#include "console/calc_setup.h"
#include "report/comparison_report.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct TankArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, n, V;
    std::optional<GivenValue> m;
};

Report tank(Program& program, const TankArguments& a) {
    if (!a.m == !a.n)
        return refusal("tank", {status_usage, "the contents need --m kg or --n kmol, one of them."});
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("tank", *refused);
    Session& session = program.session;
    const Fluid& fluid = *session.fluid;
    const Mode mode = fluid.models.Konzept ? Mode::tank_global : Mode::tank_partial;
    if (const Refused refused = set_up_mode(program, mode)) return refusal("tank", *refused);
    const OwnValue m = a.m ? own_value(*a.m, Quantity::mass, fluid.M) : OwnValue{*a.n * fluid.M, {}};
    if (!m.fault.empty()) return refusal("tank", {status_no_result, "--m: " + m.fault + "."});
    const SpecifiedValues values{.T = a.T, .p = {}, .rho = {}, .m = m.value, .V = a.V};
    if (const Refused refused = take_values(session, values)) return refusal("tank", *refused);
    const Outcome outcome = CalcBatch(fluid, exact_input(session.document, values));
    Report report;
    add_heads(report, session);
    if (outcome.has_result()) {
        report.title = substance_head(fluid.substance) + "\n" + models_head(fluid.models);
        report.footer = footer_of(fluid, session.document.units);
        report.sections.emplace_back(tank_block(outcome));
        if (outcome.tank) report.sections.emplace_back(contents_grid(*outcome.tank));
        report.sections.emplace_back(comparison_block(fluid, outcome, session.document.units));
        if (!outcome.p) report.notes.push_back("The tank is full of liquid; its pressure is not known.");
    }
    add_reservations(report, fluid, outcome);
    return report;
}

}  // namespace

Action declare_tank(CLI::App& app) {
    const auto a = std::make_shared<TankArguments>();
    add_substance(app, a->substance);
    add_quantity(app, "--T", a->T, Quantity::T, NumberRange::above_zero, "Temperature")->required();
    add_quantity(app, "--V", a->V, Quantity::tank_volume, NumberRange::above_zero, "Volume of the tank")
        ->required();
    add_quantity(app, "--m", a->m, Quantity::mass, NumberRange::above_zero, "Mass in the tank");
    add_number(app, "--n", a->n, NumberRange::above_zero, "kmol", "Amount of substance in the tank");
    add_model_options(app, a->models);
    return [a](Program& program) { return tank(program, *a); };
}

}  // namespace quom
