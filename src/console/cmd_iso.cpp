// iso: the T or p at which a function has a given value, or the value of another state.
#include <memory>

#include "base/number_text.h"
#include "calc/calc_batch.h"
#include "calc/iso_search.h"
#include "calc/quantities.h"
#include "console/calc_setup.h"
#include "engine/thermo_functions.h"

namespace quom::console {
namespace {

struct IsoArguments {
    std::string substance;
    ModelOptions models;
    std::optional<double> T, p;    // the one that is given
    std::optional<double> value;   // of the function, displayed unit
    std::optional<double> T0, p0;  // or the state whose value is held
    std::string hold, phase;
};

// Index of the function by its symbol; -1 for none.
int column_of(const std::string& symbol) {
    for (std::size_t i = 0; i < iso_functions.size(); ++i) {
        if (quantity_info(function_rows[i]).symbol == symbol) return static_cast<int>(i);
    }
    return -1;
}

std::string symbols() {
    std::string list;
    for (std::size_t i = 0; i < iso_functions.size(); ++i)
        list += (i ? "|" : "") + std::string(quantity_info(function_rows[i]).symbol);
    return list;
}

Refused check(const IsoArguments& a) {
    if (!a.T == !a.p) return Fault{status_usage, "give one of --T and --p; the other is searched."};
    if (!a.T0 != !a.p0) return Fault{status_usage, "--T0 and --p0 belong together."};
    if (!a.value == !a.T0)
        return Fault{status_usage,
                     "give the value of the function by --value, or the state that has it by --T0 --p0."};
    return {};
}

// Value to be held, and the phase of the state that has it when the user has named none.
struct Held {
    double value = 0;
    int phase = phase_V;
    std::string fault;
};
Held held_value(Session& s, const IsoArguments& a, int column) {
    Held held;
    if (a.phase == "L") held.phase = phase_L;
    if (a.value) {
        held.value = *a.value;
        return held;
    }
    s.exp.points[0] = {};
    s.exp.points[0].T = *a.T0, s.exp.points[0].p = *a.p0;
    const CalcBatchResult r = CalcBatch(s, {.Mode = 8, .Point = 0, .Quiet = true, .want_text = false});
    if (r.err) {
        held.fault = "no state at --T0, --p0: " + r.fault;
        return held;
    }
    if (a.phase.empty() && r.IsL && !r.IsV) held.phase = phase_L;
    if (!(held.phase == phase_L ? r.IsL : r.IsV)) {
        held.fault = "the state at --T0, --p0 has no " + a.phase + "-phase";
        return held;
    }
    held.value = r.Result[(held.phase == phase_L ? slot_vL : slot_vV) + column];
    return held;
}

Grid functions_grid(const Session& s, const CalcBatchResult& r, int phase) {
    Grid grid{"functions", "Functions", {phase == phase_L ? "L" : "V"}, {}};
    for (const Quantity q : function_rows) {
        const std::string symbol(quantity_info(q).symbol);
        grid.rows.push_back(
            {symbol, symbol, std::string(unit_text(s, q)), {if_known(r.Result[function_slot(q, phase)])}});
    }
    return grid;
}

Report iso(Program& program, const IsoArguments& a) {
    if (const Refused refused = check(a)) return refusal("iso", *refused);
    if (const Refused refused = prepare(program, a.substance, a.models)) return refusal("iso", *refused);
    Session& s = program.session;
    if (const Refused refused = set_up_mode(program, 8)) return refusal("iso", *refused);
    const int column = column_of(a.hold);
    const Held held = held_value(s, a, column);
    if (!held.fault.empty()) return refusal("iso", {status_no_result, held.fault});
    const int what = a.T ? iso_find_p : iso_find_T;
    TpRhoPoint& row = s.exp.points[0];
    if (a.value) {
        // Without a state to start from: the critical one.
        row = {};
        row.T = s.substance.Tcr, row.p = s.substance.pcr;
    }
    (a.T ? row.T : row.p) = a.T ? *a.T : *a.p;
    const IsoResult found = IsoSearch(s, what, column, held.value, held.phase);
    if (found.err) {
        return refusal("iso",
                       {status_no_result,
                        "No solution found: no " + std::string(held.phase == phase_L ? "L" : "V") +
                            "-phase with " + a.hold + " = " + shown(held.value) + " " +
                            std::string(unit_text(s, function_rows[static_cast<std::size_t>(column)])) +
                            (a.T ? " at T = " + shown(*a.T) + " K." : " at p = " + shown(*a.p) + " kPa.")});
    }
    const CalcBatchResult r = CalcBatch(s, {.Mode = 8, .Point = 0, .Quiet = true, .want_text = false});
    Report report;
    report.title = substance_head(s) + "\n" + models_head(s);
    report.sections.emplace_back(substance_block(s));
    report.sections.emplace_back(models_block(s));
    report.sections.emplace_back(
        Block{"iso",
              std::string(iso_functions[static_cast<std::size_t>(column)].caption) + " held",
              {{"T", "T", row.T, "K", what == iso_find_T ? "found" : ""},
               {"p", "p", row.p, "kPa", what == iso_find_p ? "found" : ""},
               {"phase", "phase", held.phase == phase_L ? "L" : "V", "", ""},
               {"value", a.hold, held.value,
                std::string(unit_text(s, function_rows[static_cast<std::size_t>(column)])), ""}},
              Layout::list});
    report.sections.emplace_back(functions_grid(s, r, held.phase));
    return report;
}

}  // namespace

Action declare_iso(CLI::App& app) {
    const auto a = std::make_shared<IsoArguments>();
    add_substance(app, a->substance);
    add_number(app, "--T", a->T, Range::above_zero, "K", "Given temperature; p is searched");
    add_number(app, "--p", a->p, Range::above_zero, "kPa", "Given pressure; T is searched");
    app.add_option("--hold", a->hold, "Function that is held: " + symbols())
        ->required()
        ->check([](const std::string& text) {
            return column_of(text) >= 0 ? std::string()
                                        : "\"" + text + "\" is no function; " + symbols() + " are.";
        })
        ->type_name("FUNCTION");
    add_number(app, "--value", a->value, Range::any, "", "Its value, in the unit of the output");
    add_number(app, "--T0", a->T0, Range::above_zero, "K", "or: temperature of the state that has the value");
    add_number(app, "--p0", a->p0, Range::above_zero, "kPa", "and its pressure");
    app.add_option("--phase", a->phase, "Phase that is searched (default: that of the state, else V)")
        ->check(CLI::IsMember({"L", "V"}))
        ->type_name("L|V");
    add_model_options(app, a->models);
    return [a](Program& program) { return iso(program, *a); };
}

}  // namespace quom::console
