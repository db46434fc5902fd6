#include "engine/model_catalogue.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>

#include "base/code_page.h"
#include "base/number_text.h"
#include "engine/eos_parameters.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"

namespace quom {
namespace {

// A list text: padded with blanks to 35 characters, longer ones whole; empty for a code without an entry.
class ListText {
 public:
    constexpr ListText(std::string_view text)
        : length_(text.empty() ? 0 : std::max(text.size(), std::size_t{35})) {
        for (std::size_t i = 0; i < length_; ++i) chars_[i] = i < text.size() ? text[i] : ' ';
    }
    constexpr std::string_view view() const { return {chars_.data(), length_}; }

 private:
    std::array<char, 44> chars_{};
    std::size_t length_;
};

constexpr ListText EosTexts[] = {
    {"Idealgas EOS"},
    {""},
    {"CEOS van der Waals"},
    {"CEOS Berthelot"},
    {"CEOS Redlich / Kwong"},
    {"CEOS Soave / Redlich / Kwong"},
    {"CEOS Peng / Robinson"},
    {"CEOS Tovarn / Ji I   "},
    {"CEOS Tovarn / Ji II  "},
    {""},
    {"VIRIAL-EOS manual input"},
    {"VIRIAL-EOS Van der Waals"},
    {"VIRIAL-EOS Berthelot"},
    {"VIRIAL-EOS Redlich / Kwong"},
    {"VIRIAL-EOS Soave / Redlich / Kwong"},
    {"VIRIAL-EOS Peng / Robinson  "},
    {"VIRIAL-EOS Pitzer / Curl     "},
};

constexpr ListText EvpTexts[] = {
    {"none"},
    {"Antoine (T < normal boil. T)(MDB equ.)"},
    {"Antoine (T > normal boil. T)(MDB equ.)"},
    {"            Frost/Kalkwarf (MDB equ.)"},
    {"                    Wagner (MDB equ.)"},
    {"August (correlated)"},
    {"Fro/Kalk (v.d.Waals correlated)"},
    {"Fro/Kalk (Redl./Kwong correlated)"},
    {"Antoine  (Thompson correlated)"},
};

constexpr ListText HlvTexts[] = {
    {"none"},
    {"Equation Fu(T)  (MDB equ.)"},
    {"Chen-correlation"},
    {"Carruth/Kobayashi correlation"},
    {"Watson correlation"},
    {"using vapor press. equ.+ rhoL(T)"},
    {"using vapor press. equ. + Benson's method "},
    {"using CEOS ('GLOBAL calculation')"},
};

constexpr ListText CpTexts[] = {
    {"(no equation available)  "},
    {"Polynomial approach (MDB equ.)"},
    {"sinh/cosh approach (MDB equ.)"},
};

template <std::size_t N>
std::string_view text_of(const ListText (&texts)[N], int code) {
    return code >= 0 && code < static_cast<int>(N) ? texts[code].view() : std::string_view();
}

void add(ModelList& list, std::string_view (*name)(int), int code) {
    list.entries.push_back({code, std::string(name(code))});
}

// Selects the entry of a code, or else the first.
void select(ModelList& list, int code) {
    const auto at = std::ranges::find(list.entries, code, &ModelList::Entry::code);
    list.selected = at == list.entries.end() ? 0 : static_cast<int>(at - list.entries.begin());
}

bool offers(const ModelList& list, int code) {
    return std::ranges::find(list.entries, code, &ModelList::Entry::code) != list.entries.end();
}

bool last_is_eos(const ModelList& hlv) { return !hlv.entries.empty() && hlv.entries.back().code == hlv_eos; }

}  // namespace

std::string_view eos_name(int code) { return text_of(EosTexts, code); }
std::string_view evp_name(int code) { return text_of(EvpTexts, code); }
std::string_view hlv_name(int code) { return text_of(HlvTexts, code); }
std::string_view cp_name(int code) { return text_of(CpTexts, code); }

ModelList AktualisiereEOSKombi(Session& s) {
    const SubstanceConstants& c = s.substance;
    const bool has_omega = c.omega != 0.0;
    if (s.models.EOSKode < 0) s.models.EOSKode = has_omega ? eos_peng_robinson : eos_redlich_kwong;
    struct Row {
        int code;
        bool needs_omega;
    };
    constexpr Row rows[] = {{2, false},  {3, false},  {4, false},  {5, true},  {6, true},
                            {7, false},  {8, false},  {10, false}, {16, true}, {11, false},
                            {12, false}, {13, false}, {14, true},  {15, true}};
    ModelList list;
    add(list, eos_name, eos_ideal_gas);
    if (c.Tcr > TinyT && c.pcr > TinyT) {
        for (const Row& row : rows) {
            if (has_omega || !row.needs_omega) add(list, eos_name, row.code);
        }
    }
    select(list, s.models.EOSKode);
    return list;
}

ModelList AktualisierepKombi(const Session& s) {
    constexpr float Present = 1e-6f;
    const SubstanceConstants& c = s.substance;
    ModelList list;
    if (c.KFTLo != 0) add(list, evp_name, evp_frost_kalkwarf);
    if (c.WagnerTLo > 0) add(list, evp_name, evp_wagner);
    if (c.AntLo[0] > Present) add(list, evp_name, evp_antoine_low);
    if (c.AntHi[0] > Present) add(list, evp_name, evp_antoine_high);
    if (c.Tnb > Present && c.Tcr * c.pcr > TinyT) {
        for (const int code : {evp_august, evp_kfw, evp_kfr, evp_thompson}) add(list, evp_name, code);
    }
    if (list.entries.empty()) add(list, evp_name, evp_none);
    select(list, s.models.EVPKode);
    return list;
}

ModelList AktualisiereHLVKombi(Session& s) {
    const SubstanceConstants& c = s.substance;
    const bool has_omega = std::fabs(c.omega) > TinyT, has_Tcr = c.Tcr > TinyT;
    const double watson = static_cast<double>(c.WatsonHLV) * static_cast<double>(c.WatsonT);
    const struct {
        int code;
        bool offered;
    } tests[] = {
        {hlv_equation, c.HLVTLo > 0},
        {hlv_chen, c.Tcr * c.pcr > 1.0},
        {hlv_carruth_kobayashi, has_omega && has_Tcr},
        {hlv_watson, watson > TinyT && has_Tcr},
        {hlv_evp_rhoL, c.RhoLTLo > 0},
        {hlv_evp_benson, has_Tcr},
        {hlv_eos, has_omega && !s.models.VPhaseOnly},
    };
    ModelList list;
    for (const auto& test : tests) {
        if (test.offered) add(list, hlv_name, test.code);
    }
    if (s.models.HLVKode == hlv_equation && c.HLVTLo <= 0) s.models.HLVKode = hlv_none;
    if (list.entries.empty()) add(list, hlv_name, hlv_none);
    // The entry whose code is that of the vapor pressure equation: required as it stands.
    if (s.models.HLVKode != hlv_none) select(list, s.models.EVPKode);
    return list;
}

ModelList cp_list(const Session& s) {
    ModelList list;
    if (s.substance.havePoly) add(list, cp_name, 1);
    if (s.substance.haveSinh) add(list, cp_name, 2);
    if (list.entries.empty()) add(list, cp_name, 0);
    select(list, opening_cp_code(s));
    return list;
}

std::vector<std::string> watson_list(const Session& s) {
    std::vector<std::string> texts{"0.38"};
    if (!(s.substance.Tcr > TinyT)) return texts;
    const double Tbr = static_cast<double>(s.substance.Tnb) / s.substance.Tcr;
    if (Tbr <= 0.57) {
        texts.emplace_back("0.30");
    } else if (Tbr < 0.71) {
        texts.push_back(genNum(static_cast<float>(0.74 * Tbr - 0.116)));
    } else {
        texts.emplace_back("0.41");
    }
    return texts;
}

RhoLState rhoL_state(const Session& s) {
    const SubstanceConstants& c = s.substance;
    if (c.RhoLTLo == 0 && c.RhoLTHi == 0 && std::fabs(c.RhoL[0]) < 1e-6F && std::fabs(c.RhoL[1]) < 1e-6F)
        return {.availability = "Parameters not available", .validity = {}};
    return {.availability = "Parameters available from database",
            .validity = "validity T/K = " + genNum(c.RhoLTLo) + " ..." + genNum(c.RhoLTHi) + " K"};
}

int opening_cp_code(const Session& s) {
    const bool poly = s.substance.havePoly, hyper = s.substance.haveSinh;
    if (s.models.cpKode == 1) return poly ? 1 : hyper ? 2 : 0;
    return hyper ? 2 : poly ? 1 : 0;
}

void EOSKombi_Click(Session& s, int code, ModelList& hlv) {
    ModelSelection& m = s.models;
    if (code == eos_virial_manual && m.EOSKode != code) ClearEOSPar(s);  // its constants are typed next
    m.EOSKode = code;
    if (is_cubic(code)) {
        if (!m.VPhaseOnly) return;
        m.VPhaseOnly = false;
        m.Konzept = true;
        if (!last_is_eos(hlv)) add(hlv, hlv_name, hlv_eos);
        return;
    }
    m.VPhaseOnly = true;
    m.Konzept = false;
    if (!last_is_eos(hlv)) return;
    hlv.entries.pop_back();
    if (hlv.entries.empty()) add(hlv, hlv_name, hlv_none);
    hlv.selected = 0;
    HLVKombi_Click(s, hlv.selected_code());
}

void pkombi_click(Session& s, int code) {
    s.models.EVPKode = code;
    s.models.EVPTag = evp_tag(code);
}

void HLVKombi_Click(Session& s, int code) { s.models.HLVKode = code; }

void cpKombi_Click(Session& s, int code) { s.models.cpKode = code; }

void PriorOpt_Click(Session& s, int option) {
    if (option == 0 && s.models.VPhaseOnly) return;  // no GLOBAL concept with an EOS of the V-phase alone
    s.models.Konzept = option == 0;
}

void WatsonKombi_Change(Session& s, std::string_view text) {
    std::string number(text);
    std::ranges::replace(number, ',', '.');
    const double n = Val(number);
    if (n > 0.0 && n < 10.0) s.models.nWat = static_cast<float>(n);  // while it is being typed it may be none
}

ModelOk cmdOKModell_Click(Session& s) {
    const SubstanceConstants& c = s.substance;
    const ModelSelection& m = s.models;
    const bool uses_omega = m.HLVKode == hlv_carruth_kobayashi ||
                            (m.EOSKode >= eos_soave && m.EOSKode <= eos_tovarn_ji_2) || m.EOSKode >= 14;
    if (c.omega == 0.0 && uses_omega) {
        s.tell(
            {.title = "WARNING",
             .text = "no acentric factor available.\nCalculated using omega = 0\n(Input => database editor)",
             .kind = MessageKind::warning});
    }
    ModelOk ok;
    ok.needs_critical_available = c.Tcr * c.pcr >= TinyT;
    if (m.EVPKode > evp_august) {
        KorreliereEVP(s, m.EVPKode, static_cast<float>(c.Tcr), static_cast<float>(c.pcr), c.Tnb);
    }
    if (m.EOSKode == eos_virial_manual) {
        s.eos.vcrEOS = s.eos.rhocrEOS = 0.0;  // not those of the EOS before
    } else {
        ClearEOSPar(s);
        ok.err = InitEOSPar(s, m.EOSKode);
        if (ok.err > 0) return ok;
    }
    if (s.units.vcrStart < TinyT) s.units.vcrStart = s.eos.vcrEOS;
    const std::string_view name = m.Konzept ? eos_name(m.EOSKode) : evp_name(m.EVPKode);
    ok.ModelStatus = std::string(trim(name)) + (m.Konzept ? " (GLOBAL concept)" : " (PARTIAL concept)");
    return ok;
}

ModelOk select_models(Session& s) {
    const int wanted_hlv = s.models.HLVKode;
    const ModelList eos = AktualisiereEOSKombi(s);
    const ModelList evp = AktualisierepKombi(s);
    ModelList hlv = AktualisiereHLVKombi(s);
    EOSKombi_Click(s, eos.selected_code(), hlv);
    pkombi_click(s, evp.selected_code());
    if (offers(hlv, wanted_hlv)) select(hlv, wanted_hlv);  // as if chosen in the open window
    HLVKombi_Click(s, hlv.selected_code());
    cpKombi_Click(s, opening_cp_code(s));
    return cmdOKModell_Click(s);
}

}  // namespace quom
