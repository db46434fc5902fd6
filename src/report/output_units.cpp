#include "report/output_units.h"

#include <algorithm>

namespace quom {
namespace {

// Units that belong to one quantity alone, whatever the key.
constexpr Quantity by_unit_alone[] = {Quantity::p, Quantity::rho,  Quantity::v,
                                      Quantity::w, Quantity::mass, Quantity::tank_volume};

bool has_own_unit(Quantity q, std::string_view unit) { return units_of(q).front() == unit; }

std::optional<Quantity> quantity_of(std::string_view key, std::string_view unit) {
    if (unit.empty()) return {};
    // "delta(LV)h" before "delta", "h" of "h_V" and "h(V)".
    for (const std::string_view name : {key, key.substr(0, key.find_first_of("_("))}) {
        const std::optional<Quantity> q = quantity_named(name);
        if (q && has_own_unit(*q, unit)) return q;
    }
    // T(Lo), T(Hi), T_0, but no difference dT.
    if (key.starts_with('T') && has_own_unit(Quantity::T, unit)) return Quantity::T;
    const auto q = std::ranges::find_if(by_unit_alone, [unit](Quantity x) { return has_own_unit(x, unit); });
    return q != std::end(by_unit_alone) ? std::optional(*q) : std::nullopt;
}

// The unit chosen for a value; null where it keeps its own.
const UnitMatch* chosen(const OutputUnits& units, std::optional<Quantity> q, std::string_view key,
                        std::string_view unit) {
    if (!q) q = quantity_of(key, unit);
    if (!q || !has_own_unit(*q, unit)) return nullptr;
    const auto it = units.by_quantity.find(*q);
    return it == units.by_quantity.end() ? nullptr : &it->second;
}

void convert(Value& value, const UnitConversion& unit) {
    if (!value.is_number() || unit == UnitConversion{}) return;
    const double own = value.kind == Value::Kind::whole ? static_cast<double>(value.whole) : value.number;
    value = Value(unit.from_own(own));
}

void convert(std::vector<Field>& fields, const OutputUnits& units) {
    for (Field& field : fields) {
        const UnitMatch* const unit = chosen(units, field.quantity, field.key, field.unit);
        if (!unit) continue;
        convert(field.value, unit->conversion);
        field.unit = unit->name;
    }
}

void convert(Block& block, const OutputUnits& units) { convert(block.fields, units); }

void convert(Table& table, const OutputUnits& units) {
    for (std::size_t k = 0; k < table.columns.size(); ++k) {
        Column& column = table.columns[k];
        const UnitMatch* const unit = chosen(units, {}, column.key, column.unit);
        if (!unit) continue;
        for (std::vector<Value>& row : table.rows) convert(row[k], unit->conversion);
        column.unit = unit->name;
    }
}

void convert(Grid& grid, const OutputUnits& units) {
    for (GridRow& row : grid.rows) {
        const UnitMatch* const unit = chosen(units, {}, row.key, row.unit);
        if (!unit) continue;
        for (Value& value : row.values) convert(value, unit->conversion);
        row.unit = unit->name;
    }
}

}  // namespace

Report in_units(Report report, const OutputUnits& units) {
    for (ReportSection& section : report.sections)
        std::visit([&units](auto& part) { convert(part, units); }, section);
    convert(report.footer.quantities, units);
    return report;
}

}  // namespace quom
