#include "console/sweep_plan.h"

#include <algorithm>

#include "base/code_page.h"

namespace quom {
namespace {

// "h_V" of "h(V)", "sound_speed_V" of "sound speed(V)".
std::string key_of(std::string_view name) {
    std::string key;
    for (const char c : name) {
        if (c != ')') key += c == '(' || c == ' ' ? '_' : c;
    }
    return key;
}

bool is_called(const SweepColumn& column, std::string_view text) {
    const std::string key = key_of(text);
    if (key_of(column.name) == key) return true;
    if (!column.quantity || !column.phase) return false;
    const std::string_view symbol = quantity_info(*column.quantity).symbol;
    return std::string(symbol) + (*column.phase == phase_L ? "_L" : "_V") == key;
}

// A unit of the displayed values; what is divided by R or R T has no unit of its own.
std::string displayed_unit(const Units& units, Quantity q) {
    const std::string_view unit = unit_text(units, q);
    const UnitKind kind = quantity_info(q).kind;
    if (unit.empty() && kind == UnitKind::energy) return "R T";
    if (unit.empty() && kind == UnitKind::entropy) return "R";
    return std::string(unit);
}

std::string head_of(std::string_view name, const std::string& unit) {
    if (unit.empty()) return std::string(name);
    const bool compound = unit.find_first_of("/ ") != std::string::npos;
    return std::string(name) + "/" + (compound ? "(" + unit + ")" : unit);
}

SweepPlan::Column make_column(const SweepColumn& source, const Units& units, const OutputUnits& own) {
    SweepPlan::Column column{.source = source, .head = {}, .unit_name = std::string(source.unit), .unit = {}};
    if (source.quantity) {
        const auto asked = own.by_quantity.find(*source.quantity);
        if (asked == own.by_quantity.end()) {
            column.unit_name = displayed_unit(units, *source.quantity);
        } else {
            column.unit_name = asked->second.name;
            column.unit = asked->second.conversion;
        }
    }
    column.head = head_of(source.name, column.unit_name);
    return column;
}

std::string names_of(const std::vector<SweepColumn>& columns) {
    std::string names;
    for (const SweepColumn& column : columns) names += (names.empty() ? "" : ", ") + key_of(column.name);
    return names;
}

// The columns called by `results`; empty after a fault.
std::vector<SweepColumn> chosen_columns(Mode mode, std::string_view results, std::string& fault) {
    const std::vector<SweepColumn> all = sweep_columns(mode, true);
    std::vector<SweepColumn> chosen;
    for (std::size_t begin = 0; begin <= results.size();) {
        const std::size_t end = std::min(results.find(',', begin), results.size());
        const std::string_view name = trim(results.substr(begin, end - begin));
        begin = end + 1;
        const auto found =
            std::ranges::find_if(all, [name](const SweepColumn& column) { return is_called(column, name); });
        if (found == all.end()) {
            fault = "\"" + std::string(name) + "\" is no column of the mode; it has " + names_of(all);
            return {};
        }
        if (std::ranges::find(chosen, found->name, &SweepColumn::name) != chosen.end()) {
            fault = "the column \"" + std::string(name) + "\" is named twice";
            return {};
        }
        chosen.push_back(*found);
    }
    if (std::ranges::find(chosen, SweepCell::reason, &SweepColumn::cell) == chosen.end())
        chosen.push_back(*std::ranges::find(all, SweepCell::reason, &SweepColumn::cell));
    return chosen;
}

}  // namespace

std::vector<std::string> SweepPlan::heads() const {
    std::vector<std::string> heads;
    for (const Column& column : columns) heads.push_back(column.head);
    return heads;
}

SweepPlan make_sweep_plan(Mode mode, bool functions, const Units& units, const OutputUnits& own,
                          std::string_view results) {
    SweepPlan plan;
    const std::vector<SweepColumn> plain = sweep_columns(mode, false);
    const std::vector<SweepColumn> sources =
        results.empty() ? sweep_columns(mode, functions) : chosen_columns(mode, results, plan.fault);
    for (const SweepColumn& source : sources) {
        plan.columns.push_back(make_column(source, units, own));
        if (std::ranges::find(plain, source.name, &SweepColumn::name) == plain.end()) plan.functions = true;
    }
    plan.functions = plan.functions || functions || mode == Mode::functions;
    return plan;
}

}  // namespace quom
