// Substance databases: opening one, reading a substance, finding it by its numbers, and writing one substance
// to a file of its own. Indices of substances are 1-based; 0 is none.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "substance/database_file.h"
#include "substance/record.h"

namespace quom {

// A database opened and checked. err -1: fault tells in a sentence what is wrong and what would be right,
// file is empty.
struct OpenedDatabase {
    DatabaseFile file;
    std::int16_t err = 0;
    std::string fault;
};
// Opens the file at path (an existing path), kind 6 or 7, and reads the list of its
// substances, names in the language asked for.
OpenedDatabase open_database(int kind, const std::string& path, bool Englisch);

// CAS number and structure of a substance as its record has them now; empty when it cannot be read.
struct SubstanceHead {
    std::string CASRN, Structure;
};
SubstanceHead read_substance_head(const DatabaseFile& file, int index);

// Constants of a substance, names in the language asked for. err -1: T(cr) or p(cr) is missing (the rest is
// there), or the record cannot be read (readable is false, all constants are 0).
UnpackedRecord unpack_substance(const DatabaseFile& file, int index, bool Englisch);

// Index of the first substance with this system number; 0 when there is none.
int FindSystemNo(const DatabaseFile& file, int number);
// Index of the first substance with this CAS number, blanks at the end dropped; 0 when there is none or the
// number is empty.
int FindCAS(const DatabaseFile& file, std::string_view casrn);

// The private database of one substance that is to be written.
struct PrivateDatabase {
    int kind = 7;      // that of the database the substance was read from
    std::string path;  // a name without a folder part goes into ProgramPath
    std::string ProgramPath;
    std::string date;      // of the header, 16 characters at most
    bool Englisch = true;  // language of StoffName
};
struct WriteResult {
    std::string fault;         // empty when good
    std::size_t replaced = 0;  // characters outside the code page, written as "?"
};
// Writes the constants of substance index as a database of this one substance. Cells and texts that the
// constants do not hold come from the record of the database, and so does what the header keeps beside date,
// names and count. Refused before anything is written: no such substance, another kind, or the file of the
// database itself.
WriteResult WriteDataBaseQ07(const DatabaseFile& file, int index, const SubstanceConstants& constants,
                             const PrivateDatabase& target);

}  // namespace quom
