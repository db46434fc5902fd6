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
        Json& values = object[row.key] = Json::object();
        for (std::size_t k = 0; k < grid.columns.size(); ++k)
            values[grid.columns[k]] = json_of(row.values[k]);
        note_unit(units, row.key, row.unit);
    }
    return object;
}

}  // namespace

std::string to_json(const Report& report) {
    Json object = Json::object();
    object["command"] = report.command;
    object["message"] = report.message.empty() ? Json() : Json(report.message);
    object["reason"] = report.reason.empty() ? Json() : Json(report.reason);
    Json units = Json::object();
    for (const Section& section : report.sections) {
        std::visit(
            [&](const auto& part) {
                Json own = Json::object();
                object[part.key] = json_of(part, own);
                if (!own.empty()) units[part.key] = std::move(own);
            },
            section);
    }
    if (!units.empty()) object["units"] = std::move(units);
    if (!report.notes.empty()) object["notes"] = report.notes;
    return object.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace quom
