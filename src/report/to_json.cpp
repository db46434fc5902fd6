#include <nlohmann/json.hpp>

#include "report/report.h"

namespace quom {

namespace {

using Json = nlohmann::ordered_json;

Json json_of(const Value& value) {
    switch (value.kind) {
        case Value::Kind::truth:
            return value.whole != 0;
        case Value::Kind::whole:
            return value.whole;
        case Value::Kind::number:
            return value.number;
        case Value::Kind::text:
            return value.text;
        case Value::Kind::absent:
            break;
    }
    return {};
}

Json text_or_null(const std::string& text) { return text.empty() ? Json() : Json(text); }

void note_unit(Json& units, const std::string& key, const std::string& unit) {
    if (!unit.empty()) units[key] = unit;
}

Json json_of(const Block& block, Json& units) {
    Json object = Json::object();
    for (const Field& field : block.fields) {
        object[field.key] = json_of(field.value);
        note_unit(units, field.key, field.unit);
    }
    return object;
}

Json json_of(const Table& table, Json& units) {
    for (const Column& column : table.columns) note_unit(units, column.key, column.unit);
    Json rows = Json::array();
    for (const auto& row : table.rows) {
        Json object = Json::object();
        for (std::size_t k = 0; k < table.columns.size(); ++k) object[table.columns[k].key] = json_of(row[k]);
        rows.push_back(std::move(object));
    }
    return rows;
}

Json json_of(const Grid& grid, Json& units) {
    Json object = Json::object();
    for (const GridRow& row : grid.rows) {
        for (std::size_t k = 0; k < grid.columns.size(); ++k) {
            const std::string key = row.key + "_" + grid.columns[k];
            object[key] = json_of(row.values[k]);
            note_unit(units, key, row.unit);
        }
    }
    return object;
}

}  // namespace

std::string to_json(const Report& report) {
    Json object = Json::object();
    object["command"] = text_or_null(report.command);
    object["status"] = static_cast<int>(report.status);
    object["message"] = text_or_null(report.message);
    object["reason"] = text_or_null(report.reason);
    Json units = Json::object();
    for (const ReportSection& section : report.sections)
        std::visit([&](const auto& part) { object[part.key] = json_of(part, units); }, section);
    object["units"] = std::move(units);
    object["notes"] = report.notes;
    return object.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quom
