// The substance database in force: opening it, choosing a substance, and writing one substance to a file of
// its own.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "session/session.h"
#include "substance/record.h"

namespace quom {

// A database opened and checked beside the one in force. err -1: fault tells in a sentence what is wrong and
// what would be right, file is empty.
struct OpenedDatabase {
    DatabaseFile file;
    std::int16_t err = 0;
    std::string fault;
};
// Opens the file at path (a path that exists as it stands), kind 6 or 7, and reads the list of its
// substances, names in the language asked for.
OpenedDatabase open_database(int kind, const std::string& path, bool Englisch);

struct LoadResult {
    std::int16_t err = 0;
    std::string fault;
};
// Loads a database of kind 6 or 7; a path without a folder part is taken from the program folder.
// Good: handle, kind, path and tables are taken over, and no substance is chosen any more.
// err -1: the file is missing, cut off, foreign, or holds no substance; the database in force stays.
LoadResult LoadDatabase(Session& s, int kind, std::string_view path);

// CAS number and structure of substance index (1-based) as its record has them now; empty when it cannot be
// read. The substance in force stays.
struct SubstanceHead {
    std::string CASRN, Structure;
};
SubstanceHead read_substance_head(const Session& s, int index);

// Unpacks substance index (1-based) of the database in force into s.substance and sets s.models.EVPTag.
// err -1: T(cr) or p(cr) is missing (the rest is there), or the record cannot be read (all constants are 0
// then).
std::int16_t UnpackSubstance(Session& s, int index);

// Empties everything that belongs to the substance before: constants of the EOS and its critical volume
// (AlphaForm stays), roots and B(T), Benson's reference point, results of calculations. Otherwise p(T, v)
// would test v against the covolume of another substance.
void drop_derived_state(Session& s);

// Makes substance index the one in force: unpacks it, builds StoffFormulaCompact, drops the derived state.
// Returns the flag of UnpackSubstance; index 0 changes nothing. A record that cannot be read leaves no
// substance in force.
std::int16_t SelectSubstance(Session& s, int index);

// Index (1-based) of the first substance with this system number; 0 when there is none.
int FindSystemNo(const Session& s, int number);
// Index (1-based) of the first substance with this CAS number, blanks at the end dropped; 0 when there is
// none or the number is empty.
int FindCAS(const Session& s, std::string_view casrn);

struct WriteResult {
    std::string fault;         // empty when good
    std::size_t replaced = 0;  // characters outside the code page, written as "?"
};
// Writes the substance in force, as the session has it, as a database of this one substance. kind is that of
// the database in force, date the text of the header (16 characters at most). A name without a folder part
// goes into the program folder. Cells and texts that the session does not hold come from the record of the
// database. Refused before anything is written: no substance in force, another kind, or the file of the
// database in force.
WriteResult WriteDataBaseQ07(Session& s, int kind, std::string_view path, std::string_view date);

}  // namespace quom
