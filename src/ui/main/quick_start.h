// What the start page and the palette begin: a database, a substance, an example, by the same functions as
// the menus; and the substances that were taken last.
#pragma once
#include <string>
#include <vector>

#include "forms/start_page_form.h"

namespace quom {

class UiMemory;
class Workbench;
class mdiQUOM;

std::vector<RecentSubstance> recent_substances(const UiMemory& memory);
// Remembers the substance in force, when there is one.
void remember_substance(Workbench& bench);

// Opens the starter database and the choice of a substance.
void open_starter(mdiQUOM& frame);
// Loads a database into the session; false: the user was told why not, and nothing has changed.
bool use_database(mdiQUOM& frame, int kind, const std::string& path);
// Opens its database, when another one is in force, takes the substance and opens the models.
void take_recent(mdiQUOM& frame, const RecentSubstance& recent);
// With no substance in force: takes that of a CAS number, from the database it was last taken from, else from
// the starter database. Nothing happens where none of them has it.
void take_substance_of(mdiQUOM& frame, const std::string& casrn);
// Database, substance, models as they are proposed, values, result.
void run_example(mdiQUOM& frame, const Example& example);

}  // namespace quom
