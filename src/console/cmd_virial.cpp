// virial: the second virial coefficient by every virial equation.
#include <cmath>
#include <memory>
#include <optional>

#include "console/selection.h"
#include "engine/model_catalogue.h"
#include "engine/volume_solver.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

struct VirialArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T;
};

// B of one virial equation with its own constants.
VirialRow coefficient(const Fluid& fluid, Eos code, double T) {
    VirialRow row;
    row.code = code;
    row.reason = missing_constants(fluid.substance, code);
    if (!row.reason.empty()) return row;
    const VirialDerivatives slopes = virial_derivatives(*with_eos(fluid, code), T);
    if (!std::isfinite(slopes.B)) {
        row.reason = "not finite at this T";
        return row;
    }
    row.B = slopes.B;
    row.B1 = slopes.B1;
    row.B2 = slopes.B2;
    return row;
}

bool is_virial(EosFamily family) {
    return family == EosFamily::virial || family == EosFamily::manual || family == EosFamily::pitzer_curl;
}

Report virial(Program& program, const VirialArguments& a) {
    if (!a.T) return refusal("virial", {status_usage, "A temperature is needed: --T."});
    ModelOptions models = a.models;
    if (models.b0 && !models.eos) models.eos = Eos::virial_manual;
    if (const Refused refused = prepare(program, a.substance, models)) return refusal("virial", *refused);
    const Session& session = program.session;
    std::vector<VirialRow> rows;
    for (const EosInfo& equation : eos_list()) {
        const bool typed = equation.family != EosFamily::manual || models.b0;
        if (is_virial(equation.family) && typed)
            rows.push_back(coefficient(*session.fluid, equation.code, *a.T));
    }
    std::ranges::sort(rows, {}, &VirialRow::code);
    Report report;
    report.title = substance_head(session.substance());
    add_heads(report, session);
    report.sections.emplace_back(Block{"state", "", {{"T", "T", *a.T, "K", ""}}, Layout::json});
    report.sections.emplace_back(virial_table(*a.T, rows));
    if (std::ranges::none_of(rows, [](const VirialRow& row) { return row.B.has_value(); })) {
        report.status = status_no_result;
        report.message = "No virial equation gives B: the record of " + session.substance().StoffName +
                         " has no T(cr), p(cr).";
        report.reason = reason_name(Reason::no_critical_data);
    }
    return report;
}

}  // namespace

Action declare_virial(CLI::App& app) {
    const auto arguments = std::make_shared<VirialArguments>();
    add_substance(app, arguments->substance);
    add_quantity(app, "--T", arguments->T, Quantity::T, NumberRange::above_zero, "Temperature");
    add_model_options(app, arguments->models);
    return [arguments](Program& program) { return virial(program, *arguments); };
}

}  // namespace quom
