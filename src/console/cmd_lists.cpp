// list, find: rows of the database.
#include <memory>

#include "base/code_page.h"
#include "base/files.h"
#include "console/name_matches.h"
#include "console/selection.h"
#include "substance/record.h"
#include "substance/search.h"

namespace quom {
namespace {

constexpr std::size_t FindLimit = 40;  // rows of find

const std::vector<Column> columns = {
    {"index", "#", ""},      {"StoffName", "name", ""},   {"StoffFormula", "formula", ""},
    {"StoffCAS", "CAS", ""}, {"MolMass", "M", "kg/kmol"}, {"Tcr", "T(cr)", "K"},
    {"pcr", "p(cr)", "kPa"}, {"Tnb", "T(nb)", "K"}};

// One row with the constants that tell substances apart.
std::vector<Value> row_of(const DatabaseFile& file, int index) {
    const SubstanceRow& row = file.rows[static_cast<std::size_t>(index) - 1];
    const RecordLayout& layout = *record_layout(file.DatabaseKind);
    std::string record(layout.length, '\0');
    SubstanceConstants k;
    if (file.handle.read_at(layout.length * static_cast<std::size_t>(index), record))
        k = unpack_record(record, layout, true).constants;
    return {index,
            main_name(row.SubstanceName),
            row.SubstanceFormula,
            row.SubstanceCAS,
            if_known(static_cast<double>(k.MolMass)),
            if_known(k.Tcr),
            if_known(k.pcr),
            if_known(static_cast<double>(k.Tnb))};
}

Report list(Program& program) {
    if (const Refused refused = load_database(program)) return refusal("list", *refused);
    const DatabaseFile& file = program.session.database;
    Table table{"substances", "", columns, {}};
    for (int index = 1; index <= file.StoffAnzahl(); ++index) table.rows.push_back(row_of(file, index));
    Report report;
    report.title = std::to_string(file.StoffAnzahl()) + " substances in " + file.path;
    report.sections.emplace_back(std::move(table));
    return report;
}

Report find(Program& program, const std::string& text) {
    if (const Refused refused = load_database(program)) return refusal("find", *refused);
    const Session& session = program.session;
    const std::vector<NameMatch> matches = matching_substances(name_source(session), text);
    Report report;
    if (matches.empty()) {
        std::string near;
        for (const NameMatch& match : near_substances(name_source(session), text, 5)) {
            near += near.empty() ? " Near are: " : ", ";
            near += main_name(session.database.rows[static_cast<std::size_t>(match.index) - 1].SubstanceName);
        }
        return refusal("find", {status_no_result, "No name, synonym, formula or CAS number contains \"" +
                                                      text + "\"." + near + (near.empty() ? "" : ".")});
    }
    Table table{"substances", "", columns, {}};
    // The last two give way to the synonym.
    table.columns.pop_back();
    table.columns.back() = {"synonym", "found by", ""};
    for (const NameMatch& match : matches) {
        if (table.rows.size() == FindLimit) break;
        table.rows.push_back(row_of(session.database, match.index));
        table.rows.back().pop_back();
        table.rows.back().back() = remark(match.via);
    }
    report.title = std::to_string(matches.size()) + " substances with \"" + text + "\"";
    if (matches.size() == 1) report.title = "1 substance with \"" + text + "\"";
    if (matches.size() > FindLimit)
        report.notes.push_back("Only the first " + std::to_string(FindLimit) +
                               " are shown; a longer text finds fewer.");
    report.sections.emplace_back(std::move(table));
    return report;
}

}  // namespace

Action declare_list(CLI::App&) { return list; }

Action declare_find(CLI::App& app) {
    const auto text = std::make_shared<std::string>();
    app.add_option("TEXT", *text, "A part of a name, synonym, formula, or CAS number")
        ->required()
        ->type_name("");
    return [text](Program& program) { return find(program, *text); };
}

}  // namespace quom
