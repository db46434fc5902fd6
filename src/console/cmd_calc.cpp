// calc: one calculation of one mode, as the result window shows it or as slots by name.
#include <memory>

#include "base/code_page.h"
#include "base/number_text.h"
#include "calc/calc_batch.h"
#include "calc/calc_titles.h"
#include "calc/quantities.h"
#include "console/calc_setup.h"

namespace quom::console {
namespace {

struct CalcArguments {
    std::string substance;
    ModelOptions models;
    SpecifiedValues values;
    int mode = 0, ext = 1;
    bool functions = false;
};

// Text of the result window from top to bottom.
std::string window_text(const Session& s, int mode, const CalcBatchResult& r) {
    std::string out = substance_head(s) + "\n" + models_head(s) + "\n\n" + CalcCaption(s, mode) + "\n";
    const OutputView& view = r.view;
    for (const ViewText* line :
         {&view.par1, &view.par2, &view.co1, &view.txtco2, &view.Bezeichnung2, &view.lblGleich}) {
        if (line->visible && !trim(line->text).empty()) out += line->text + "\n";
    }
    if (!view.Liste.text.empty()) {
        out += '\n';
        constexpr std::size_t first_value =
            34;  // names and units of the tables before the column of the L-phase
        if (view.lblLphase.visible || view.lblVphase.visible) {
            std::string heads(first_value, ' ');
            heads += text_padded(view.lblLphase.visible ? view.lblLphase.text : "", 20);
            if (view.lblVphase.visible) heads += view.lblVphase.text;
            out += std::string(trim_right(heads)) + "\n";
        }
        out += view.Liste.text;
        if (!out.ends_with('\n')) out += '\n';
    }
    return out;
}

const char* phase_text(const CalcBatchResult& r) {
    return r.IsL && r.IsV ? "V+L" : r.IsV ? "V" : r.IsL ? "L" : "";
}

Block state_block(const Session& s, int mode, const CalcBatchResult& r) {
    const CEOSState& state = s.calc.state;
    Block block{
        "state", "", {{"mode", "mode", mode, "", ""}, {"phase", "phase", Value(), "", ""}}, Layout::json};
    if (*phase_text(r)) block.fields.back().value = phase_text(r);
    const bool has_region = state.has_state() && !s.models.VPhaseOnly;
    block.fields.push_back(
        {"PhaseRegion", "region", has_region ? Value(int{state.PhaseRegion}) : Value(), "", ""});
    block.fields.push_back({"GlobalCalc", "GLOBAL", s.calc.GlobalCalc, "", ""});
    if (mode == 9 || mode == 10 || (r.IsL && r.IsV))
        block.fields.push_back({"LPercent", "L-phase", static_cast<double>(r.LPercent), "%", ""});
    constexpr const char* names[] = {"VRoot1", "VRoot2", "VRoot3"};
    for (std::size_t i = 0; i < 3; ++i)
        block.fields.push_back({names[i], names[i], if_known(state.VRoot[i]), "m^3/kmol", ""});
    if (!r.warning.empty()) block.fields.push_back({"warning", "warning", r.warning, "", ""});
    return block;
}

Block slot_block(const Session& s, const CalcBatchResult& r) {
    Block block{"slots", "", {}, Layout::json};
    for (int i = 0; i < slot_count; ++i) {
        const auto slot = static_cast<CalcSlot>(i);
        if (slot == slot_x6 || slot == slot_x8) continue;
        const std::string name(trim(slot_name(slot)));
        block.fields.push_back(
            {name, name, if_known(r.Result[i]), std::string(unit_text(s, slot_quantity(slot))), ""});
    }
    return block;
}

Grid derivative_grid(const Session& s) {
    Grid grid{"derivatives", "", {"L", "V"}, {}};
    const BatchResult& record = s.calc.BatchResults[0];
    for (std::size_t row = 0; row < ExtendedRows; ++row) {
        const std::string label(trim(extended_label_plain(row)));
        if (label.empty()) continue;
        const PhasePair& pair = record.Extended[row];
        grid.rows.push_back({label,
                             label,
                             "",
                             {if_known(static_cast<double>(pair.L)), if_known(static_cast<double>(pair.V))}});
    }
    return grid;
}

Report calc(Program& program, const CalcArguments& a) {
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("calc", *refused);
    if (const Refused refused = set_up_mode(program, a.mode)) return refusal("calc", *refused);
    Session& s = program.session;
    if (const Refused refused = take_values(s, a.mode, a.values)) return refusal("calc", *refused);
    s.calc.ExtLevel = a.ext;
    s.calc.ShowFunctions = a.functions;
    const CalcBatchResult r = CalcBatch(s, {.Mode = a.mode, .Point = 0, .WarnTriple = true});
    Report report;
    if (r.err) {
        report.status = status_no_result;
        report.message = r.fault.empty() ? "no result" : r.fault;
    }
    if (!program.options.json) {
        program.out << window_text(s, a.mode, r);
        return report;
    }
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    report.sections.emplace_back(state_block(s, a.mode, r));
    report.sections.emplace_back(slot_block(s, r));
    if (a.ext > 1) report.sections.emplace_back(derivative_grid(s));
    return report;
}

}  // namespace

Action declare_calc(CLI::App& app) {
    const auto a = std::make_shared<CalcArguments>();
    add_substance(app, a->substance);
    add_mode(app, a->mode);
    add_specified_values(app, a->values);
    app.add_option("--ext", a->ext,
                   "Extended output: 1 none, 2 coefficients and residual functions, 3 derivatives, 4 both")
        ->check(CLI::Range(1, 4))
        ->type_name("1..4");
    app.add_flag("--functions", a->functions, "With the table of h, s, g, u, a, exergies, cp, cV, w");
    add_model_options(app, a->models);
    return [a](Program& program) { return calc(program, *a); };
}

}  // namespace quom::console
