// What stands before every calculation of the console: program folder, database, substance, models, reference
// state, units. Each step commits its part of the document and returns the refusal that ends the command, or
// nothing.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "console/commands.h"

namespace quom {

using Refused = std::optional<Fault>;

// Finds the program folder and loads the database of --db or the starter database.
Refused load_database(Program& program);

// Makes the substance named by SUBSTANCE the one in force. Refused with proposals when there is none, or when
// the text stands for several.
Refused choose_substance(Program& program, std::string_view text);

// Selects models, reference state and units for the substance in force.
Refused apply_models(Program& program, const ModelOptions& options);

// All of it.
Refused prepare(Program& program, std::string_view substance, const ModelOptions& options);

// "substance", "models" and "reference" of the JSON object.
void add_heads(Report& report, const Session& session);

}  // namespace quom
