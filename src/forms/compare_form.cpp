#include "forms/compare_form.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/code_page.h"
#include "diagrams/axis_texts.h"
#include "diagrams/curve_labels.h"
#include "diagrams/database_kinds.h"
#include "diagrams/draw_curve.h"
#include "engine/model_catalogue.h"
#include "engine/unit_factors.h"
#include "forms/active_points.h"
#include "forms/diagram_form.h"
#include "forms/refusal.h"
#include "report/basis_line.h"

namespace quom {
namespace {

// A kind of models: its name in keys, its list, and the name of an entry.
struct ModelKind {
    CompareBy by;
    std::string_view key;
    ModelList (*list)(const SubstanceConstants&, const ModelSelection&);
    std::string (*name)(int code);
};
constexpr auto model_kinds = std::to_array<ModelKind>({
    {CompareBy::eos, "eos", AktualisiereEOSKombi, [](int code) { return eos_name(eos_of(code)); }},
    {CompareBy::evp, "evp", AktualisierepKombi,
     [](int code) { return std::string(trim(evp_info(evp_of(code)).text)); }},
    {CompareBy::hlv, "hlv", AktualisiereHLVKombi,
     [](int code) { return std::string(trim(hlv_info(hlv_of(code)).text)); }},
    {CompareBy::cp, "cp", cp_list,
     [](int code) { return std::string(trim(cp_info(cp_form_of(code)).text)); }},
});

// Database diagrams of one quantity by several equations, each with a kind of its own.
struct DatabaseChoice {
    CompareBy by;
    int code;
    Kind kind;
};
constexpr auto database_choices = std::to_array<DatabaseChoice>({
    {CompareBy::evp, number_of(Evp::frost_kalkwarf), Kind::db_frost_kalkwarf},
    {CompareBy::evp, number_of(Evp::wagner), Kind::db_wagner},
    {CompareBy::evp, number_of(Evp::antoine_low), Kind::db_antoine_low},
    {CompareBy::evp, number_of(Evp::antoine_high), Kind::db_antoine_high},
    {CompareBy::evp, number_of(Evp::august), Kind::db_august},
    {CompareBy::evp, number_of(Evp::kfw), Kind::db_kfw},
    {CompareBy::evp, number_of(Evp::kfr), Kind::db_kfr},
    {CompareBy::evp, number_of(Evp::thompson), Kind::db_thompson},
    {CompareBy::cp, number_of(CpForm::polynomial), Kind::db_cpId_polynomial},
    {CompareBy::cp, number_of(CpForm::sinh_cosh), Kind::db_cpId_sinh},
});

// What the curves of a kind depend on.
std::vector<CompareBy> dependence(const KindInfo& kind) {
    if (kind.section == Section::database) {
        const auto* row = std::ranges::find(database_choices, kind.kind, &DatabaseChoice::kind);
        return row == database_choices.end() ? std::vector<CompareBy>{} : std::vector{row->by};
    }
    if (kind.family == CurveFamily::vaporization) return {CompareBy::hlv};
    if (kind.y == AxisQuantity::slope) return {CompareBy::evp};
    if (kind.family == CurveFamily::vapor_pressure) return {CompareBy::eos, CompareBy::evp};
    return kind.family == CurveFamily::none ? std::vector<CompareBy>{} : std::vector{CompareBy::eos};
}

// The kind in which the curve of a choice is drawn on a sheet of the kind.
Kind kind_by(const CompareChoice& choice, Kind sheet) {
    if (kind_info(sheet).section != Section::database) return sheet;
    for (const DatabaseChoice& row : database_choices)
        if (row.by == choice.by && row.code == choice.code) return row.kind;
    return sheet;
}

// A manual virial equation that nobody has typed is the ideal gas.
bool has_constants(const Fluid& fluid, const CompareChoice& choice) {
    if (choice.by != CompareBy::eos) return choice.code != 0;
    if (!fluid.has_eos()) return false;
    const EosInput& typed = fluid.eos_input;
    return eos_of(choice.code) != Eos::virial_manual || typed.b0 != 0.0 || typed.b1 != 0.0;
}

// Inputs of the curves that are drawn for a choice: a coexistence curve has one of each phase.
std::vector<CurveInput> inputs_by(const Fluid& fluid, const CurveInput& next, const CompareChoice& choice) {
    CurveInput input = next;
    input.kind = kind_by(choice, next.kind);
    const KindInfo& kind = kind_info(input.kind);
    if (kind.boundary != kind.kind) return {input};
    return plan_overlay(fluid, input, Overlay::coexistence).curves;
}

std::string with_name(const std::string& text, const std::string& name) {
    return text.find(name) == std::string::npos ? text + ", " + name : text;
}

// Why a curve is not on the sheet, in a line.
std::string note_of(const std::string& name, const std::vector<Message>& messages) {
    std::string text = messages.empty() ? std::string("no curve") : messages.front().text;
    std::ranges::replace(text, '\n', ' ');
    return name + ": " + text;
}

std::vector<int> draw_one(GraphDocument& sheet, const ComparedCurve& curve, std::vector<std::string>& notes) {
    std::vector<int> slots;
    for (const CurveInput& input : curve.inputs) {
        const DrawnCurve drawn = cmdDraw(sheet, *curve.fluid, input);
        if (drawn.slot == 0) {
            notes.push_back(note_of(curve.name, drawn.messages));
            continue;
        }
        const Series& series = sheet.curve(drawn.slot).series;
        rename_curve(sheet, drawn.slot,
                     {with_name(series.label.text, curve.name), with_name(series.legend, curve.name)});
        slots.push_back(drawn.slot);
    }
    return slots;
}

std::size_t curves_needed(const CompareInput& input) {
    std::size_t needed = 0;
    for (const ComparedCurve& curve : input.curves) needed += curve.inputs.size();
    return needed;
}

std::size_t free_slots(const GraphDocument& sheet) {
    return static_cast<std::size_t>(CurveSlots - CurveCount(sheet));
}

// Report ------------------------------------------------------------------------------------------------

// "1", "2": equations in the heads of columns, by their number in the table of equations.
std::string number_text(std::size_t i) { return std::to_string(i + 1); }

class ComparisonReport {
 public:
    ComparisonReport(const Session& session, const CompareInput& input, const CurveComparison& table)
        : session_(session), in_(input), table_(table), kind_(kind_info(input.kind)) {
        const Units& units = session.diagram.units;
        x_ = axis_symbol(kind_.x);
        y_ = axis_symbol(kind_.y);
        x_unit_ = axis_unit(kind_.x, units);
        y_unit_ = axis_unit(kind_.y, units);
    }

    Report make() const {
        Report report;
        report.command = "compare";
        report.title = y_ + " over " + x_ + " of " + session_.substance().StoffName + " by " +
                       std::to_string(table_.names.size()) + " equations";
        report.sections = {head(),
                           summary("curves", "Deviations from " + reference_name() + " over the curve",
                                   table_.curves, true)};
        if (!table_.points.empty())
            report.sections.emplace_back(
                summary("points", "Deviations from the measured points", table_.points, false));
        report.sections.emplace_back(rows("values", "Values", table_.rows, false));
        if (!table_.measured_rows.empty())
            report.sections.emplace_back(
                rows("measured", "At the measured points", table_.measured_rows, true));
        report.notes = table_.notes;
        report.footer.basis = basis_line(*session_.fluid);
        return report;
    }

 private:
    std::string reference_name() const { return table_.names[table_.reference]; }

    Block head() const {
        const CurveInput& input = in_.curves.front().inputs.front();
        const UnitFactors factors = unit_factors(*session_.fluid, input.units);
        const struct {
            Section section;
            double value;
        } parameters[] = {
            {Section::isothermal, input.T}, {Section::isobaric, input.p}, {Section::isochoric, input.v}};
        Block block{.key = "comparison", .title = "", .fields = {}};
        block.fields.push_back({"kind", "", number_of(kind_.kind), "", ""});
        block.fields.push_back({"diagram", "Diagram", kind_title(kind_.kind, input.units), "", ""});
        for (const auto& parameter : parameters)
            if (parameter.section == kind_.section)
                block.fields.push_back({"parameter", "At",
                                        parameter_text(kind_.section, parameter.value, input.units, factors),
                                        "", ""});
        block.fields.push_back({"reference", "Reference", reference_name(), "", ""});
        return block;
    }

    Table summary(std::string key, std::string title, const std::vector<DeviationSummary>& list,
                  bool against_curve) const {
        Table table{.key = std::move(key), .title = std::move(title), .columns = {}, .rows = {}};
        table.columns = {{"number", "No.", ""}, {"key", "", "", Layout::json}, {"equation", "equation", ""}};
        const auto add = [&](std::initializer_list<Column> columns) {
            table.columns.insert(table.columns.end(), columns);
        };
        if (table_.percent)
            add({{"aad", "AAD", "%"},
                 {"bias", "bias", "%"},
                 {"largest_percent", "largest", "%"},
                 {"largest_percent_at", "at " + x_, x_unit_}});
        add({{"mean_size", "mean |d|", y_unit_},
             {"mean", "mean d", y_unit_},
             {"largest", "largest d", y_unit_},
             {"largest_at", "at " + x_, x_unit_},
             {"count", against_curve ? "positions" : "points", ""},
             {"missing", "without", ""}});
        for (std::size_t i = 0; i < list.size(); ++i) {
            const DeviationSummary& s = list[i];
            std::vector<Value> row = {i + 1, in_.curves[i].key, table_.names[i]};
            const auto put = [&](const std::optional<double>& size, const std::optional<double>& mean,
                                 const std::optional<double>& largest, double x) {
                for (const auto& value : {size, mean, largest}) row.push_back(if_present(value));
                row.push_back(largest ? Value(x) : Value());
            };
            if (table_.percent)
                put(s.mean_size_percent, s.mean_percent, s.largest_percent, s.largest_percent_x);
            put(s.mean_size, s.mean, s.largest, s.largest_x);
            row.emplace_back(s.count);
            row.emplace_back(s.missing);
            table.rows.push_back(std::move(row));
        }
        return table;
    }

    Table rows(std::string key, std::string title, const std::vector<ComparedRow>& list,
               bool measured) const {
        Table table{.key = std::move(key), .title = std::move(title), .columns = {}, .rows = {}};
        table.columns = {{"x", x_, x_unit_}, {"part", "", ""}};
        if (measured) table.columns.push_back({"measured", y_ + " measured", y_unit_});
        const auto differs = [&](std::size_t i) { return measured || i != table_.reference; };
        for (std::size_t i = 0; i < table_.names.size(); ++i)
            table.columns.push_back({in_.curves[i].key, y_ + " " + number_text(i), y_unit_});
        for (std::size_t i = 0; i < table_.names.size(); ++i) {
            if (!differs(i)) continue;
            const std::string d = "d " + number_text(i);
            table.columns.push_back({in_.curves[i].key + "_deviation", d, y_unit_});
            if (table_.percent) table.columns.push_back({in_.curves[i].key + "_percent", d, "%"});
        }
        for (const ComparedRow& row : list) {
            std::string part = branch_name(table_, row.part, row.returning);
            std::vector<Value> cells = {row.x, remark(std::move(part))};
            if (measured) cells.push_back(if_present(row.measured));
            for (const auto& y : row.y) cells.push_back(if_present(y));
            for (std::size_t i = 0; i < row.y.size(); ++i) {
                if (!differs(i)) continue;
                cells.push_back(if_present(deviation(table_, row, i)));
                if (table_.percent) cells.push_back(if_present(deviation_percent(table_, row, i)));
            }
            table.rows.push_back(std::move(cells));
        }
        return table;
    }

    const Session& session_;
    const CompareInput& in_;
    const CurveComparison& table_;
    const KindInfo& kind_;
    std::string x_, y_, x_unit_, y_unit_;
};

}  // namespace

std::vector<CompareChoice> compare_choices(const Fluid& fluid, const Units& units, Kind kind) {
    std::vector<CompareChoice> choices;
    const std::vector<CompareBy> wanted = dependence(kind_info(kind));
    for (const ModelKind& row : model_kinds) {
        if (std::ranges::find(wanted, row.by) == wanted.end()) continue;
        for (const ModelList::Entry& entry : row.list(fluid.substance, fluid.models).entries) {
            CompareChoice choice{.by = row.by, .code = entry.code, .key = {}, .name = row.name(entry.code)};
            choice.key = std::string(row.key) + "_" + std::to_string(entry.code);
            const auto by = fluid_by(fluid, choice, kind);
            const Kind own = kind_by(choice, kind);
            const bool only_cubic = wanted.size() > 1 && choice.by == CompareBy::eos && by->VPhaseOnly;
            if (only_cubic || !has_constants(*by, choice) || kind_refusal(*by, units, own)) continue;
            choices.push_back(std::move(choice));
        }
    }
    return choices;
}

std::vector<CompareChoice> compare_choices(const Session& session) {
    const DiagramSession& d = session.diagram;
    return d.sheet ? compare_choices(*session.fluid, d.units, d.sheet->diagram.kind)
                   : std::vector<CompareChoice>{};
}

std::size_t choice_in_force(const Session& session, const std::vector<CompareChoice>& choices) {
    const ModelSelection& models = session.fluid->models;
    const bool both = std::ranges::find(choices, CompareBy::evp, &CompareChoice::by) != choices.end();
    const auto in_force = [&](const CompareChoice& choice) {
        switch (choice.by) {
            case CompareBy::eos:
                return choice.code == number_of(models.EOSKode) && (!both || models.Konzept);
            case CompareBy::evp:
                return choice.code == number_of(models.EVPKode);
            case CompareBy::hlv:
                return choice.code == number_of(models.HLVKode);
            case CompareBy::cp:
                return choice.code == number_of(models.cpKode);
        }
        return false;
    };
    const auto at = std::ranges::find_if(choices, in_force);
    return at == choices.end() ? 0 : static_cast<std::size_t>(at - choices.begin());
}

std::shared_ptr<const Fluid> fluid_by(const Fluid& fluid, const CompareChoice& choice, Kind kind) {
    ModelSelection models = fluid.models;
    switch (choice.by) {
        case CompareBy::eos:
            models.EOSKode = eos_of(choice.code);
            if (kind_info(kind).family == CurveFamily::vapor_pressure) models.Konzept = true;
            if (models.VPhaseOnly()) models.Konzept = false;
            break;
        case CompareBy::evp:
            models.EVPKode = evp_of(choice.code);
            models.Konzept = false;
            break;
        case CompareBy::hlv:
            models.HLVKode = hlv_of(choice.code);
            break;
        case CompareBy::cp:
            models.cpKode = cp_form_of(choice.code);
            break;
    }
    return with_models(fluid, models);
}

CompareInput compare_input(const Session& session, const std::vector<CompareChoice>& choices,
                           std::size_t reference) {
    const GraphDocument& sheet = *session.diagram.sheet;
    const CurveInput next = next_curve(session);
    CompareInput input;
    input.reference = reference;
    input.kind = next.kind;
    input.range = next.range;
    input.log_x = sheet.x.log;
    input.measured = measured_points(session);
    for (const CompareChoice& choice : choices) {
        const auto fluid = fluid_by(*session.fluid, choice, next.kind);
        auto inputs = inputs_by(*fluid, next, choice);
        if (inputs.empty()) inputs = {next};
        input.curves.push_back({choice.key, choice.name, fluid, std::move(inputs)});
    }
    return input;
}

DrawnComparison draw_comparison(Session& session, const std::vector<CompareChoice>& choices,
                                std::size_t reference, Messages& messages) {
    DrawnComparison result;
    if (!session.diagram.sheet || choices.size() < 2 || reference >= choices.size()) {
        messages.ask(
            refusal_message("Choose two or more equations to compare, and one of them as reference."));
        return result;
    }
    GraphDocument& sheet = *session.diagram.sheet;
    const CompareInput input = compare_input(session, choices, reference);
    if (curves_needed(input) > free_slots(sheet)) {
        messages.ask(too_many_curves());
        return result;
    }
    std::vector<std::string> notes;
    for (const ComparedCurve& curve : input.curves) {
        const std::vector<int> slots = draw_one(sheet, curve, notes);
        result.curve_slots.insert(result.curve_slots.end(), slots.begin(), slots.end());
    }
    result.drawn = true;
    result.table = compare_curves(input);
    result.table.notes.insert(result.table.notes.begin(), notes.begin(), notes.end());
    return result;
}

Report comparison_report(const Session& session, const CompareInput& input, const CurveComparison& table) {
    return ComparisonReport(session, input, table).make();
}

}  // namespace quom
