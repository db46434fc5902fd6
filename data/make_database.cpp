// Writes the starter database from its tables:
//     make_database TABLES DATE FOLDER
// makes FOLDER/quom.q07, FOLDER/SYNOM7.TXT and FOLDER/marks.csv from the files substances.csv, synonyms.csv,
// sources.csv and source_list.csv of the folder TABLES, or names every row that breaks a rule.
#include <iostream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "base/files.h"
#include "substance/set_marks.h"
#include "substance/starter_database.h"
#include "substance/starter_marks.h"
#include "substance/synonyms.h"

namespace {

int fail(const std::string& reason) {
    std::cerr << reason << '\n';
    return 1;
}

int fail_all(const std::vector<std::string>& faults) {
    for (const std::string& fault : faults) std::cerr << fault << '\n';
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) return fail("usage: make_database TABLES DATE FOLDER");
    std::string tables[4];
    const char* const names[] = {"substances.csv", "synonyms.csv", "sources.csv", "source_list.csv"};
    for (std::size_t k = 0; k < std::size(names); ++k) {
        quom::FileBytes file = quom::read_file(quom::join_path(argv[1], names[k]));
        if (!file.bytes) return fail(file.fault);
        tables[k] = std::move(*file.bytes);
    }

    const quom::StarterDatabase made =
        quom::build_starter_database({.substances = tables[0], .synonyms = tables[1], .date = argv[2]});
    if (!made.faults.empty()) return fail_all(made.faults);
    const quom::StarterMarks marks =
        quom::build_starter_marks({.sources = tables[2], .source_list = tables[3]}, made.database);
    if (!marks.faults.empty()) return fail_all(marks.faults);

    const std::pair<const char*, const std::string&> files[] = {
        {"quom.q07", made.database}, {quom::SynonymFile, made.synonyms}, {quom::MarksFile, marks.text}};
    for (const auto& [name, bytes] : files)
        if (const auto fault = quom::write_file_atomic(quom::join_path(argv[3], name), bytes); !fault.empty())
            return fail(fault);
    return 0;
}
