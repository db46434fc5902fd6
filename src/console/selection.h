// What stands before every calculation of the console: program folder, database, substance, models, units.
// Each step returns the refusal that ends the command, or nothing.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "console/commands.h"

namespace quom::console {

using Refused = std::optional<Fault>;

// Finds the program folder and loads the database of --db or the starter database.
Refused open_database(Program& program);

// Makes the substance named by SUBSTANCE the one in force. Refused with the names that are near when there is
// none.
Refused choose_substance(Session& s, std::string_view text);

// Selects models, reference state and units for the substance in force.
Refused apply_models(Session& s, const ModelOptions& options);

// All of it.
Refused prepare(Program& program, std::string_view substance, const ModelOptions& options);

// Why a substance does not offer an equation of state: "the record has no omega"; empty when it does.
std::string missing_constants(const SubstanceConstants& k, int eos);

// Sets the factors of energies and volumes for a state at T [K].
void set_units(Session& s, double T);

// "Water  H2O  7732-18-5", and the models in force "CEOS Peng / Robinson, GLOBAL concept".
std::string substance_head(const Session& s);
std::string models_head(const Session& s);
// The same as members of the JSON object.
Block substance_block(const Session& s);
Block models_block(const Session& s);

}  // namespace quom::console
