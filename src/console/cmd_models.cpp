// models: the lists of models that a substance offers, and the selection in force.
#include <memory>

#include "base/code_page.h"
#include "base/number_text.h"
#include "console/selection.h"
#include "engine/eos_parameters.h"
#include "engine/model_catalogue.h"
#include "engine/vaporization_enthalpy.h"

namespace quom::console {
namespace {

// What a model needs or lacks.
std::string eos_remark(const SubstanceConstants& k, int code) {
    std::string text = missing_constants(k, code);
    if (text.empty() && (code == eos_tovarn_ji_1 || code == eos_tovarn_ji_2)) text = "with --ji FILE";
    if (text.empty() && code == eos_virial_manual) text = "with --b0 --b1 --b2";
    return text;
}

struct Catalogue {
    const char* key;
    const char* title;
    std::string_view (*name)(int);
    int codes;  // 0 to codes - 1
};
constexpr Catalogue eos_list{"EOS", "Equation of state (--eos)", eos_name, 17};
constexpr Catalogue evp_list{"EVP", "Vapor pressure equation (--evp)", evp_name, 9};
constexpr Catalogue hlv_list{"HLV", "Enthalpy of vaporization (--hlv)", hlv_name, 8};
constexpr Catalogue cp_catalogue{"cp", "Ideal gas heat capacity (--cp)", cp_name, 3};

// Every entry of a catalogue in the order of codes.
Table table_of(const Session& s, const Catalogue& catalogue, const ModelList& offered, int selected) {
    Table table{catalogue.key,
                catalogue.title,
                {{"selected", "selected", ""},
                 {"code", "code", ""},
                 {"name", "model", ""},
                 {"offered", "offered", ""},
                 {"remark", "", ""}},
                {}};
    for (int code = 0; code < catalogue.codes; ++code) {
        const std::string_view name = trim(catalogue.name(code));
        if (name.empty()) continue;
        bool offers = false;
        for (const ModelList::Entry& entry : offered.entries) offers = offers || entry.code == code;
        if (!offers && code == 0 && code != selected) continue;
        const bool eos = &catalogue == &eos_list;
        table.rows.push_back({code == selected, code, name, offers,
                              remark(eos      ? eos_remark(s.substance, code)
                                     : offers ? ""
                                              : "not in the record")});
    }
    return table;
}

Report models(Program& program, const std::string& substance, const ModelOptions& options) {
    if (const Refused refused = prepare(program, substance, options)) return refusal("models", *refused);
    Session& s = program.session;
    Report report;
    report.title = substance_head(s);
    report.sections.emplace_back(substance_block(s));
    const ModelSelection m = s.models;
    report.sections.emplace_back(table_of(s, eos_list, AktualisiereEOSKombi(s), m.EOSKode));
    report.sections.emplace_back(table_of(s, evp_list, AktualisierepKombi(s), m.EVPKode));
    report.sections.emplace_back(table_of(s, hlv_list, AktualisiereHLVKombi(s), m.HLVKode));
    report.sections.emplace_back(table_of(s, cp_catalogue, cp_list(s), m.cpKode));
    const SubstanceConstants& k = s.substance;
    const bool rhoL = k.RhoLTLo > 0;
    std::string exponents;
    for (const std::string& text : watson_list(s)) exponents += (exponents.empty() ? "" : ", ") + text;
    report.sections.emplace_back(
        Block{"selection",
              "Selection",
              {{"Konzept", "concept (--concept)", m.Konzept ? "GLOBAL" : "PARTIAL", "",
                m.Konzept ? "cubic equation of state (CEOS)" : "equation for vapor pressure (EVP)"},
               {"nWat", "Watson exponent (--watson)", m.nWat, "", "proposed: " + exponents},
               {"BensonRhoL", "rho(L) by Benson's method (--benson)", s.calc.BensonRhoL, "", ""},
               {"RhoLTLo", "rho(L) = Fu(T) of the database from", rhoL ? Value(k.RhoLTLo) : Value(), "K", ""},
               {"RhoLTHi", "to", rhoL ? Value(k.RhoLTHi) : Value(), "K", ""}},
              Layout::list});
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

}  // namespace quom::console
