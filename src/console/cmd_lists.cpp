// list, find: rows of the database.
#include <memory>

#include "console/name_matches.h"
#include "console/selection.h"
#include "session/starter_update.h"
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
    if (!program.options.db.empty()) return report;
    const StarterUpdate update = find_starter_update(program_places({}), program.session.ProgramPath);
    if (update.offered())
        report.notes.push_back("A newer starter database is installed, " + update.installed_version +
                               ", this one is of " + update.own_version + "; see \"quomc starter\".");
    return report;
}

Report find(Program& program, const std::string& text) {
    if (const Refused refused = load_database(program)) return refusal("find", *refused);
    const DatabaseFile& file = program.session.database;
    const NameIndex& names = name_index(program);
    const std::vector<NameHit> hits = names.find(text);
    if (hits.empty()) return refusal("find", nothing_contains(file, names, text));
    Report report;
    Table table{"substances", "", columns, {}};
    // The last two give way to what the text was found in.
    table.columns.pop_back();
    table.columns.back() = {"found_in", "found in", ""};
    table.columns.push_back({"synonym", "found by", ""});
    for (const NameHit& hit : hits) {
        if (table.rows.size() == FindLimit) break;
        table.rows.push_back(row_of(file, hit.index));
        table.rows.back().pop_back();
        const bool shown = hit.kind <= NameKind::casrn;  // the row shows what matched
        const bool Englisch = program.session.document.options.Englisch;
        table.rows.back().back() = std::string(kind_word(hit.kind, Englisch));
        table.rows.back().push_back(remark(shown ? std::string() : std::string(hit.name)));
    }
    report.title = std::to_string(hits.size()) + " substances with \"" + text + "\"";
    if (hits.size() == 1) report.title = "1 substance with \"" + text + "\"";
    if (hits.size() > FindLimit)
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
