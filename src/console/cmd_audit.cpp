// audit: the sets of each record against each other, one line a doubt.
#include <memory>

#include "base/code_page.h"
#include "base/files.h"
#include "calc/record_audit.h"
#include "console/selection.h"
#include "substance/search.h"

namespace quom {
namespace {

struct AuditArguments {
    std::string substance;  // empty: all
    bool rules = false;
};

std::string_view unit_of_difference(const AuditRule& rule) {
    return rule.measure == AuditMeasure::percent ? "%" : rule.unit;
}

Table rules_table(bool shown) {
    Table table{"rules",
                shown ? "Checks" : "",
                {{"check", "check", ""},
                 {"what", "compares", ""},
                 {"tolerance", "tolerance", ""},
                 {"unit", "", ""},
                 {"remark", "because", ""}},
                {},
                shown ? Layout::list : Layout::json};
    for (const AuditRule& rule : audit_rules())
        table.rows.push_back({rule.name, rule.what, rule.tolerance, unit_of_difference(rule), rule.reason});
    return table;
}

Table doubts_table() {
    return {"doubts",
            "",
            {{"StoffCAS", "CAS", ""},
             {"StoffName", "name", ""},
             {"check", "check", ""},
             {"what", "doubt", ""},
             {"value", "found", ""},
             {"reference", "against", ""},
             {"unit", "", ""},
             {"difference", "difference", ""},
             {"difference_unit", "", ""}},
            {}};
}

void add_doubts(Table& table, const DatabaseFile& file, int index, const std::vector<Doubt>& doubts) {
    const SubstanceRow& row = file.rows[static_cast<std::size_t>(index) - 1];
    for (const Doubt& doubt : doubts) {
        const AuditRule& rule = audit_rule(doubt.check);
        table.rows.push_back({trim(row.SubstanceCAS), main_name(row.SubstanceName), rule.name, doubt.what,
                              doubt.value, doubt.reference, rule.unit, doubt.difference(),
                              unit_of_difference(rule)});
    }
}

std::string count_of(std::size_t n, const char* what) {
    return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
}

// Numbers of the records that are asked for; a refusal for a substance that is not there.
struct Records {
    int first = 1, last = 0;
    Refused refused;
};
Records records_of(Program& program, const AuditArguments& a) {
    const Session& session = program.session;
    if (a.substance.empty()) return {1, session.database.StoffAnzahl(), {}};
    if (Refused refused = choose_substance(program, a.substance)) return {1, 0, std::move(refused)};
    const int index = session.document.substance.StoffIndexAktiv;
    return {index, index, {}};
}

Report audit(Program& program, const AuditArguments& a) {
    if (const Refused refused = load_database(program)) return refusal("audit", *refused);
    const Records records = records_of(program, a);
    if (records.refused) return refusal("audit", *records.refused);
    const DatabaseFile& file = program.session.database;
    const RecordLayout& layout = *record_layout(file.DatabaseKind);
    Table table = doubts_table();
    std::size_t doubtful = 0;
    std::string record(layout.length, '\0');
    for (int index = records.first; index <= records.last; ++index) {
        if (!file.handle.read_at(layout.length * static_cast<std::size_t>(index), record))
            return refusal("audit", {status_file, "The record of substance #" + std::to_string(index) +
                                                      " cannot be read from " + file.path + "."});
        const std::vector<Doubt> doubts = audit_record(record, layout);
        doubtful += doubts.empty() ? 0 : 1;
        add_doubts(table, file, index, doubts);
    }
    const std::size_t checked = static_cast<std::size_t>(records.last - records.first + 1);
    Report report;
    report.sections.emplace_back(Block{"audit",
                                       "",
                                       {{"database", "", name_part(file.path), "", ""},
                                        {"records", "", checked, "", ""},
                                        {"doubtful", "", doubtful, "", ""},
                                        {"count", "", table.rows.size(), "", ""}},
                                       Layout::json});
    report.notes.push_back(table.rows.empty()
                               ? "No doubt in " + count_of(checked, "record") + "."
                               : count_of(table.rows.size(), "doubt") + " in " + std::to_string(doubtful) +
                                     " of " + count_of(checked, "record") + ".");
    table.layout = table.rows.empty() ? Layout::json : Layout::list;
    report.sections.emplace_back(std::move(table));
    report.sections.emplace_back(rules_table(a.rules));
    return report;
}

}  // namespace

Action declare_audit(CLI::App& app) {
    const auto a = std::make_shared<AuditArguments>();
    app.add_option("SUBSTANCE", a->substance, "One substance in place of the whole database")->type_name("");
    app.add_flag("--rules", a->rules, "With the table of checks, their tolerances and reasons");
    return [a](Program& program) { return audit(program, *a); };
}

}  // namespace quom
