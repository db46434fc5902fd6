// Writes the starter database from its tables:
//     make_database SUBSTANCES.CSV SYNONYMS.CSV DATE FOLDER
// makes FOLDER/quom.q07 and FOLDER/SYNOM7.TXT, or names every row that breaks a rule.
#include <iostream>
#include <string>

#include "base/files.h"
#include "substance/starter_database.h"
#include "substance/synonyms.h"

namespace {

int fail(const std::string& reason) {
    std::cerr << reason << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 5) return fail("usage: make_database SUBSTANCES.CSV SYNONYMS.CSV DATE FOLDER");
    const quom::FileBytes substances = quom::read_file(argv[1]);
    if (!substances.bytes) return fail(substances.fault);
    const quom::FileBytes synonyms = quom::read_file(argv[2]);
    if (!synonyms.bytes) return fail(synonyms.fault);

    const quom::StarterDatabase made = quom::build_starter_database(
        {.substances = *substances.bytes, .synonyms = *synonyms.bytes, .date = argv[3]});
    for (const std::string& fault : made.faults) std::cerr << fault << '\n';
    if (!made.faults.empty()) return 1;

    const std::string folder = argv[4];
    if (const auto fault = quom::write_file_atomic(quom::join_path(folder, "quom.q07"), made.database);
        !fault.empty())
        return fail(fault);
    if (const auto fault = quom::write_file_atomic(quom::join_path(folder, quom::SynonymFile), made.synonyms);
        !fault.empty())
        return fail(fault);
    return 0;
}
