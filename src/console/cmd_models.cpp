// models: the lists of models that a substance offers, and the selection in force.
#include <memory>

#include "base/code_page.h"
#include "console/selection.h"
#include "engine/model_catalogue.h"
#include "report/outcome_report.h"

namespace quom {
namespace {

// What an equation of state needs or lacks.
std::string eos_remark(const SubstanceConstants& substance, const EosInfo& row) {
    const std::string missing = missing_constants(substance, row.code);
    if (!missing.empty()) return missing;
    if (row.family == EosFamily::tovarn_ji) return "with --ji FILE";
    return row.family == EosFamily::manual ? "with --b0 --b1 --b2" : "";
}

struct ListRow {
    int code;
    std::string_view text;
    std::string remark;  // where it is not offered, or needs an option
};

// Every row in the order of codes; the one that stands for "none" only where it is offered or selected.
Table models_table(std::string key, std::string title, std::vector<ListRow> rows, const ModelList& offered,
                   int selected) {
    Table table{std::move(key),
                std::move(title),
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "model", ""},
                 {"offered", "offered", ""},
                 {"remark", "", ""}},
                {}};
    std::ranges::sort(rows, {}, &ListRow::code);
    for (ListRow& row : rows) {
        const bool offers = offered.offers(row.code);
        if (!offers && row.code == 0 && row.code != selected) continue;
        table.rows.push_back(
            {row.code == selected, row.code, trim(row.text), offers, remark(std::move(row.remark))});
    }
    return table;
}

// Rows of a catalogue of database equations, "none" included.
template <class Info>
std::vector<ListRow> list_rows(const Info& none, std::span<const Info> infos, const ModelList& offered) {
    std::vector<ListRow> rows{{number_of(none.code), none.text, ""}};
    for (const Info& info : infos) {
        const int code = number_of(info.code);
        if (code != number_of(none.code))
            rows.push_back({code, info.text, offered.offers(code) ? "" : "not in the record"});
    }
    return rows;
}

void add_lists(Report& report, const Session& session) {
    const SubstanceConstants& k = session.substance();
    const ModelSelection& m = session.document.models;
    std::vector<ListRow> equations;
    for (const EosInfo& row : eos_list())
        equations.push_back({number_of(row.code), row.text, eos_remark(k, row)});
    report.sections.emplace_back(models_table("eos", "Equation of state (--eos)", std::move(equations),
                                              AktualisiereEOSKombi(k, m), number_of(m.EOSKode)));
    const ModelList evp = AktualisierepKombi(k, m);
    report.sections.emplace_back(models_table("evp", "Vapor pressure equation (--evp)",
                                              list_rows(evp_info(Evp::none), evp_list(), evp), evp,
                                              number_of(m.EVPKode)));
    const ModelList hlv = AktualisiereHLVKombi(k, m);
    report.sections.emplace_back(models_table("hlv", "Enthalpy of vaporization (--hlv)",
                                              list_rows(hlv_info(Hlv::none), hlv_list(), hlv), hlv,
                                              number_of(m.HLVKode)));
    const CpInfo forms[] = {cp_info(CpForm::polynomial), cp_info(CpForm::sinh_cosh)};
    const ModelList cp = cp_list(k, m);
    report.sections.emplace_back(models_table(
        "cp", "Ideal gas heat capacity (--cp)",
        list_rows(cp_info(CpForm::none), std::span<const CpInfo>(forms), cp), cp, number_of(m.cpKode)));
}

Block selection_block(const Session& session) {
    const SubstanceConstants& k = session.substance();
    const ModelSelection& m = session.document.models;
    const bool rhoL = k.RhoLTLo > 0;
    std::string exponents;
    for (const std::string& text : watson_list(k)) exponents += (exponents.empty() ? "" : ", ") + text;
    return {"selection",
            "Selection",
            {{"Konzept", "concept (--concept)", m.Konzept ? "GLOBAL" : "PARTIAL", "",
              m.Konzept ? "cubic equation of state (CEOS)" : "equation for vapor pressure (EVP)"},
             {"nWat", "Watson exponent (--watson)", m.nWat, "", "proposed: " + exponents},
             {"BensonRhoL", "rho(L) by Benson's method (--benson)", session.document.calc.setup.BensonRhoL,
              "", ""},
             {"RhoLTLo", "rho(L) = Fu(T) of the database from", rhoL ? Value(k.RhoLTLo) : Value(), "K", ""},
             {"RhoLTHi", "to", rhoL ? Value(k.RhoLTHi) : Value(), "K", ""}},
            Layout::list};
}

Report models(Program& program, const std::string& substance, const ModelOptions& options) {
    if (const Refused refused = prepare(program, substance, options)) return refusal("models", *refused);
    const Session& session = program.session;
    Report report;
    report.title = substance_head(session.substance());
    add_heads(report, session);
    add_lists(report, session);
    report.sections.emplace_back(selection_block(session));
    return report;
}

}  // namespace

Action declare_models(CLI::App& app) {
    const auto substance = std::make_shared<std::string>();
    const auto options = std::make_shared<ModelOptions>();
    add_substance(app, *substance);
    add_model_options(app, *options);
    return [substance, options](Program& program) { return models(program, *substance, *options); };
}

}  // namespace quom
