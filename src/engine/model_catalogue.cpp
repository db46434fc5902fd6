#include "engine/model_catalogue.h"

#include <algorithm>
#include <cmath>

#include "base/code_page.h"
#include "base/constants.h"
#include "base/number_text.h"

namespace quom {
namespace {

constexpr float Present = 1e-6f;  // a constant above this was given

// Option buttons of the concepts.
constexpr int OptionGlobal = 0;

template <class Code>
void add(ModelList& list, Code code, std::string_view text) {
    list.entries.push_back({number_of(code), std::string(text)});
}

// Selects the entry of a code, or else the first.
void select(ModelList& list, int code) {
    const auto at = std::ranges::find(list.entries, code, &ModelList::Entry::code);
    list.selected = at == list.entries.end() ? 0 : static_cast<int>(at - list.entries.begin());
}

bool offered(const SubstanceConstants& substance, const EosInfo& row) {
    if (row.family == EosFamily::ideal_gas) return true;
    return substance.Tcr > TinyT && substance.pcr > TinyT && (substance.omega != 0.0 || !row.needs_omega);
}

bool offered(const SubstanceConstants& substance, Evp code) {
    switch (code) {
        case Evp::frost_kalkwarf:
            return substance.KFTLo != 0;
        case Evp::wagner:
            return substance.WagnerTLo > 0;
        case Evp::antoine_low:
            return substance.AntLo[0] > Present;
        case Evp::antoine_high:
            return substance.AntHi[0] > Present;
        case Evp::august:
        case Evp::kfw:
        case Evp::kfr:
        case Evp::thompson:
            return substance.Tnb > Present && has_critical_data(substance);
        case Evp::none:
            break;
    }
    return false;
}

bool offered(const SubstanceConstants& substance, const ModelSelection& models, Hlv code) {
    const bool has_omega = std::fabs(substance.omega) > TinyT, has_Tcr = substance.Tcr > TinyT;
    switch (code) {
        case Hlv::equation:
            return substance.HLVTLo > 0;
        case Hlv::chen:
            return substance.Tcr * substance.pcr > 1.0;
        case Hlv::carruth_kobayashi:
            return has_omega && has_Tcr;
        case Hlv::watson:
            return static_cast<double>(substance.WatsonHLV) * static_cast<double>(substance.WatsonT) >
                       TinyT &&
                   has_Tcr;
        case Hlv::evp_rhoL:
            return substance.RhoLTLo > 0;
        case Hlv::evp_benson:
            return has_Tcr;
        case Hlv::eos:
            return has_omega && !models.VPhaseOnly();
        case Hlv::none:
            break;
    }
    return false;
}

bool last_is_eos(const ModelList& hlv) {
    return !hlv.entries.empty() && hlv.entries.back().code == number_of(Hlv::eos);
}

}  // namespace

bool ModelList::offers(int code) const {
    return std::ranges::find(entries, code, &Entry::code) != entries.end();
}

ModelList AktualisiereEOSKombi(const SubstanceConstants& substance, const ModelSelection& models) {
    ModelList list;
    list.models = models;
    if (models.EOSKode == Eos::none)
        list.models.EOSKode = substance.omega != 0.0 ? Eos::peng_robinson : Eos::redlich_kwong;
    for (const EosInfo& row : eos_list()) {
        if (offered(substance, row)) add(list, row.code, row.text);
    }
    select(list, number_of(list.models.EOSKode));
    return list;
}

ModelList AktualisierepKombi(const SubstanceConstants& substance, const ModelSelection& models) {
    ModelList list;
    list.models = models;
    for (const EvpInfo& row : evp_list()) {
        if (offered(substance, row.code)) add(list, row.code, row.text);
    }
    if (list.entries.empty()) add(list, Evp::none, evp_info(Evp::none).text);
    select(list, number_of(models.EVPKode));
    return list;
}

ModelList AktualisiereHLVKombi(const SubstanceConstants& substance, const ModelSelection& models) {
    ModelList list;
    list.models = models;
    for (const HlvInfo& row : hlv_list()) {
        if (offered(substance, models, row.code)) add(list, row.code, row.text);
    }
    if (models.HLVKode == Hlv::equation && !offered(substance, models, Hlv::equation))
        list.models.HLVKode = Hlv::none;
    if (list.entries.empty()) add(list, Hlv::none, hlv_info(Hlv::none).text);
    if (list.models.HLVKode != Hlv::none) select(list, number_of(models.EVPKode));
    return list;
}

CpForm opening_cp_code(const SubstanceConstants& substance, CpForm before) {
    const CpForm polynomial = substance.havePoly ? CpForm::polynomial : CpForm::none;
    const CpForm sinh_cosh = substance.haveSinh ? CpForm::sinh_cosh : CpForm::none;
    const CpForm first = before == CpForm::polynomial ? polynomial : sinh_cosh;
    const CpForm second = before == CpForm::polynomial ? sinh_cosh : polynomial;
    return first != CpForm::none ? first : second;
}

ModelList cp_list(const SubstanceConstants& substance, const ModelSelection& models) {
    ModelList list;
    list.models = models;
    if (substance.havePoly) add(list, CpForm::polynomial, cp_info(CpForm::polynomial).text);
    if (substance.haveSinh) add(list, CpForm::sinh_cosh, cp_info(CpForm::sinh_cosh).text);
    if (list.entries.empty()) add(list, CpForm::none, cp_info(CpForm::none).text);
    select(list, number_of(opening_cp_code(substance, models.cpKode)));
    return list;
}

// n = 0.74 Tnb/Tcr - 0.116 for 0.57 < Tnb/Tcr < 0.71, 0.30 below, 0.41 above: Fishtine (1963).
std::vector<std::string> watson_list(const SubstanceConstants& substance) {
    std::vector<std::string> texts{"0.38"};
    if (!(substance.Tcr > TinyT)) return texts;
    const double Tbr = static_cast<double>(substance.Tnb) / substance.Tcr;
    if (Tbr <= 0.57) {
        texts.emplace_back("0.30");
    } else if (Tbr < 0.71) {
        texts.push_back(genNum(static_cast<float>(0.74 * Tbr - 0.116)));
    } else {
        texts.emplace_back("0.41");
    }
    return texts;
}

int selected_watson(const std::vector<std::string>& texts, float nWat) {
    const auto at =
        std::ranges::find(texts, nWat, [](const std::string& text) { return static_cast<float>(Val(text)); });
    return at == texts.end() ? -1 : static_cast<int>(at - texts.begin());
}

RhoLState rhoL_state(const SubstanceConstants& substance) {
    const auto absent = [](float x) { return std::fabs(x) < Present; };
    const bool no_limits = substance.RhoLTLo == 0 && substance.RhoLTHi == 0;
    if (no_limits && absent(substance.RhoL[0]) && absent(substance.RhoL[1]))
        return {.availability = "Parameters not available", .validity = {}};
    return {.availability = "Parameters available from database",
            .validity =
                "validity T/K = " + genNum(substance.RhoLTLo) + " ..." + genNum(substance.RhoLTHi) + " K"};
}

ModelSelection EOSKombi_Click(ModelSelection models, Eos code, ModelList& hlv) {
    const bool was_vapor_only = models.VPhaseOnly();
    models.EOSKode = code;
    if (!models.VPhaseOnly()) {
        if (!was_vapor_only) return models;
        models.Konzept = true;
        if (!last_is_eos(hlv)) add(hlv, Hlv::eos, hlv_info(Hlv::eos).text);
        return models;
    }
    models.Konzept = false;
    if (!last_is_eos(hlv)) return models;
    hlv.entries.pop_back();
    if (hlv.entries.empty()) add(hlv, Hlv::none, hlv_info(Hlv::none).text);
    hlv.selected = 0;
    return HLVKombi_Click(models, hlv_of(hlv.selected_code()));
}

ModelSelection pkombi_click(ModelSelection models, Evp code) {
    models.EVPKode = code;
    return models;
}

ModelSelection HLVKombi_Click(ModelSelection models, Hlv code) {
    models.HLVKode = code;
    return models;
}

ModelSelection cpKombi_Click(ModelSelection models, CpForm code) {
    models.cpKode = code;
    return models;
}

ModelSelection PriorOpt_Click(ModelSelection models, int option) {
    if (option == OptionGlobal && models.VPhaseOnly()) return models;
    models.Konzept = option == OptionGlobal;
    return models;
}

ModelSelection WatsonKombi_Change(ModelSelection models, std::string_view text) {
    std::string number(text);
    std::ranges::replace(number, ',', '.');
    const double n = Val(number);  // while it is being typed it may be none
    if (n > 0.0 && n < 10.0) models.nWat = static_cast<float>(n);
    return models;
}

ModelSelection proposed_models(const SubstanceConstants& substance, const ModelSelection& wanted) {
    const ModelList eos = AktualisiereEOSKombi(substance, wanted);
    const ModelList evp = AktualisierepKombi(substance, eos.models);
    ModelList hlv = AktualisiereHLVKombi(substance, eos.models);
    ModelSelection models = EOSKombi_Click(hlv.models, eos_of(eos.selected_code()), hlv);
    models = pkombi_click(models, evp_of(evp.selected_code()));
    const int wanted_hlv = number_of(wanted.HLVKode);
    if (hlv.offers(wanted_hlv)) select(hlv, wanted_hlv);
    models = HLVKombi_Click(models, hlv_of(hlv.selected_code()));
    return cpKombi_Click(models, opening_cp_code(substance, models.cpKode));
}

bool warns_of_omega(const SubstanceConstants& substance, const ModelSelection& models) {
    return substance.omega == 0.0 &&
           (models.HLVKode == Hlv::carruth_kobayashi || eos_info(models.EOSKode).warns_omega);
}

bool has_critical_data(const SubstanceConstants& substance) { return substance.Tcr * substance.pcr >= TinyT; }

std::string missing_constants(const SubstanceConstants& substance, Eos code) {
    const EosInfo& row = eos_info(code);
    if (row.family == EosFamily::ideal_gas) return {};
    std::string missing;
    const auto add_if = [&missing](bool absent, std::string_view name) {
        if (absent) missing.append(missing.empty() ? "" : ", ").append(name);
    };
    add_if(substance.Tcr < TinyT, "T(cr)");
    add_if(substance.pcr < TinyT, "p(cr)");
    add_if(substance.omega == 0.0 && row.needs_omega, "omega");
    return missing.empty() ? missing : "the record has no " + missing;
}

std::string eos_name(Eos code) {
    const std::string_view text = trim(eos_info(code).text);
    constexpr std::string_view kind = "CEOS ";
    return std::string(text.starts_with(kind) ? text.substr(kind.size()) : text);
}

std::string ModelStatus(const ModelSelection& models) {
    const std::string_view name =
        models.Konzept ? eos_info(models.EOSKode).text : evp_info(models.EVPKode).text;
    return std::string(trim(name)) + (models.Konzept ? " (GLOBAL concept)" : " (PARTIAL concept)");
}

}  // namespace quom
