// Substances by their names on the command line: the index of the open database, and what a name stands for.
#pragma once
#include <string>
#include <string_view>

#include "console/commands.h"
#include "substance/name_index.h"

namespace quom {

// The names of the open database with the file of synonyms of the program folder; a fault of that file is
// told.
const NameIndex& name_index(Program& program);

// Why a text names no substance or several: with the names that were meant, in the sentence and as the table
// "proposals" for JSON.
Fault unknown_substance(const DatabaseFile& file, const NameIndex& names, std::string_view text);
Fault ambiguous_substance(const DatabaseFile& file, const std::vector<NameHit>& hits, std::string_view text);
// The same for a search that finds nothing.
Fault nothing_contains(const DatabaseFile& file, const NameIndex& names, std::string_view text);

}  // namespace quom
