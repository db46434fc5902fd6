#include "engine/models.h"

#include <algorithm>
#include <array>

namespace quom {
namespace {

// A text of a list: padded with blanks to 35 characters, longer ones whole; empty for a code without an
// entry.
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

// In the order of the enumeration EosRow below, which is that of the list of models.
constexpr ListText EosTexts[] = {
    {"Idealgas EOS"},
    {"CEOS van der Waals"},
    {"CEOS Berthelot"},
    {"CEOS Redlich / Kwong"},
    {"CEOS Soave / Redlich / Kwong"},
    {"CEOS Peng / Robinson"},
    {"CEOS Tovarn / Ji I   "},
    {"CEOS Tovarn / Ji II  "},
    {"VIRIAL-EOS manual input"},
    {"VIRIAL-EOS Pitzer / Curl     "},
    {"VIRIAL-EOS Van der Waals"},
    {"VIRIAL-EOS Berthelot"},
    {"VIRIAL-EOS Redlich / Kwong"},
    {"VIRIAL-EOS Soave / Redlich / Kwong"},
    {"VIRIAL-EOS Peng / Robinson  "},
};
constexpr std::string_view eos_text(int row) { return EosTexts[row].view(); }

using enum EosFamily;
constexpr EosInfo EosRows[] = {
    {.code = Eos::ideal_gas, .family = ideal_gas, .text = eos_text(0), .virial = Eos::ideal_gas},
    {.code = Eos::van_der_waals,
     .family = cubic,
     .text = eos_text(1),
     .virial = Eos::virial_van_der_waals,
     .help_topic = 21},
    {.code = Eos::berthelot,
     .family = cubic,
     .text = eos_text(2),
     .virial = Eos::virial_berthelot,
     .help_topic = 21},
    {.code = Eos::redlich_kwong,
     .family = cubic,
     .text = eos_text(3),
     .virial = Eos::virial_redlich_kwong,
     .help_topic = 21},
    {.code = Eos::soave,
     .family = cubic,
     .text = eos_text(4),
     .needs_omega = true,
     .warns_omega = true,
     .virial = Eos::virial_soave,
     .help_topic = 22},
    {.code = Eos::peng_robinson,
     .family = cubic,
     .text = eos_text(5),
     .needs_omega = true,
     .warns_omega = true,
     .virial = Eos::virial_peng_robinson,
     .help_topic = 22},
    {.code = Eos::tovarn_ji_1,
     .family = tovarn_ji,
     .text = eos_text(6),
     .warns_omega = true,
     .virial = Eos::tovarn_ji_1,
     .help_topic = 23},
    {.code = Eos::tovarn_ji_2,
     .family = tovarn_ji,
     .text = eos_text(7),
     .warns_omega = true,
     .virial = Eos::tovarn_ji_2,
     .help_topic = 23},
    {.code = Eos::virial_manual,
     .family = manual,
     .text = eos_text(8),
     .virial = Eos::virial_manual,
     .help_topic = 24},
    {.code = Eos::pitzer_curl,
     .family = pitzer_curl,
     .text = eos_text(9),
     .needs_omega = true,
     .warns_omega = true,
     .virial = Eos::pitzer_curl,
     .help_topic = 26},
    {.code = Eos::virial_van_der_waals,
     .family = virial,
     .text = eos_text(10),
     .cubic = Eos::van_der_waals,
     .virial = Eos::virial_van_der_waals,
     .help_topic = 25},
    {.code = Eos::virial_berthelot,
     .family = virial,
     .text = eos_text(11),
     .cubic = Eos::berthelot,
     .virial = Eos::virial_berthelot,
     .help_topic = 25},
    {.code = Eos::virial_redlich_kwong,
     .family = virial,
     .text = eos_text(12),
     .cubic = Eos::redlich_kwong,
     .virial = Eos::virial_redlich_kwong,
     .help_topic = 25},
    {.code = Eos::virial_soave,
     .family = virial,
     .text = eos_text(13),
     .needs_omega = true,
     .warns_omega = true,
     .cubic = Eos::soave,
     .virial = Eos::virial_soave,
     .help_topic = 25},
    {.code = Eos::virial_peng_robinson,
     .family = virial,
     .text = eos_text(14),
     .needs_omega = true,
     .warns_omega = true,
     .cubic = Eos::peng_robinson,
     .virial = Eos::virial_peng_robinson,
     .help_topic = 25},
};
constexpr EosInfo NoEos{};

constexpr ListText EvpTexts[] = {
    {"none"},
    {"            Frost/Kalkwarf (MDB equ.)"},
    {"                    Wagner (MDB equ.)"},
    {"Antoine (T < normal boil. T)(MDB equ.)"},
    {"Antoine (T > normal boil. T)(MDB equ.)"},
    {"August (correlated)"},
    {"Fro/Kalk (v.d.Waals correlated)"},
    {"Fro/Kalk (Redl./Kwong correlated)"},
    {"Antoine  (Thompson correlated)"},
};
constexpr EvpInfo NoEvp{.text = EvpTexts[0].view()};
constexpr EvpInfo EvpRows[] = {
    {Evp::frost_kalkwarf, EvpForm::frost_kalkwarf, "FRO", EvpTexts[1].view(), false, 32},
    {Evp::wagner, EvpForm::wagner, "WAG", EvpTexts[2].view(), false, 33},
    {Evp::antoine_low, EvpForm::antoine, "ALP", EvpTexts[3].view(), false, 31},
    {Evp::antoine_high, EvpForm::antoine, "AHP", EvpTexts[4].view(), false, 31},
    {Evp::august, EvpForm::august, "AUG", EvpTexts[5].view(), true, 34},
    {Evp::kfw, EvpForm::frost_kalkwarf, "KFW", EvpTexts[6].view(), true, 35},
    {Evp::kfr, EvpForm::frost_kalkwarf, "KFR", EvpTexts[7].view(), true, 35},
    {Evp::thompson, EvpForm::antoine, "THO", EvpTexts[8].view(), true, 36},
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
constexpr HlvInfo NoHlv{.text = HlvTexts[0].view()};
constexpr HlvInfo HlvRows[] = {
    {.code = Hlv::equation, .text = HlvTexts[1].view(), .help_topic = 62},
    {.code = Hlv::chen, .text = HlvTexts[2].view(), .uses_evp = true},
    {.code = Hlv::carruth_kobayashi, .text = HlvTexts[3].view()},
    {.code = Hlv::watson, .text = HlvTexts[4].view()},
    {.code = Hlv::evp_rhoL,
     .text = HlvTexts[5].view(),
     .uses_evp = true,
     .uses_zeta = true,
     .help_topic = 63},
    {.code = Hlv::evp_benson,
     .text = HlvTexts[6].view(),
     .uses_evp = true,
     .uses_zeta = true,
     .help_topic = 63},
    {.code = Hlv::eos, .text = HlvTexts[7].view(), .help_topic = 70},
};

constexpr ListText CpTexts[] = {
    {"(no equation available)  "},
    {"Polynomial approach (MDB equ.)"},
    {"sinh/cosh approach (MDB equ.)"},
};
constexpr CpInfo NoCp{.text = CpTexts[0].view()};
constexpr CpInfo CpRows[] = {{CpForm::polynomial, CpTexts[1].view(), 41},
                             {CpForm::sinh_cosh, CpTexts[2].view(), 42}};

// The row of a code, or the one for no entry.
template <class Rows, class Info, class Code>
const Info& row_of(const Rows& rows, const Info& none, Code code) {
    for (const Info& row : rows) {
        if (row.code == code) return row;
    }
    return none;
}

// Place of a code among rows that begin with the code -1.
constexpr std::size_t place_of(Eos code) {
    const int place = number_of(code) + 1;
    return static_cast<std::size_t>(place);
}

// Rows of the equations of state by code + 1: the one question that is asked for every state.
constexpr auto EosByCode = [] {
    std::array<const EosInfo*, 18> rows{};
    for (auto& row : rows) row = &NoEos;
    for (const EosInfo& row : EosRows) rows[place_of(row.code)] = &row;
    return rows;
}();

// Rows of the vapor pressure equations by code.
constexpr auto EvpByCode = [] {
    std::array<const EvpInfo*, 9> rows{};
    for (auto& row : rows) row = &NoEvp;
    for (const EvpInfo& row : EvpRows) rows[static_cast<std::size_t>(number_of(row.code))] = &row;
    return rows;
}();

template <class Code, class Rows>
Code code_of(const Rows& rows, Code none, int number) {
    for (const auto& row : rows) {
        if (number_of(row.code) == number) return row.code;
    }
    return none;
}

}  // namespace

const EosInfo& eos_info(Eos code) {
    const std::size_t index = place_of(code);
    return index < EosByCode.size() ? *EosByCode[index] : NoEos;
}
std::span<const EosInfo> eos_list() { return EosRows; }

const EvpInfo& evp_info(Evp code) {
    const auto index = static_cast<std::size_t>(number_of(code));
    return index < EvpByCode.size() ? *EvpByCode[index] : NoEvp;
}
std::span<const EvpInfo> evp_list() { return EvpRows; }

const HlvInfo& hlv_info(Hlv code) { return row_of(HlvRows, NoHlv, code); }
std::span<const HlvInfo> hlv_list() { return HlvRows; }

const CpInfo& cp_info(CpForm code) { return row_of(CpRows, NoCp, code); }

Eos eos_of(int number) { return code_of(EosRows, Eos::none, number); }
Evp evp_of(int number) { return code_of(EvpRows, Evp::none, number); }
Hlv hlv_of(int number) { return code_of(HlvRows, Hlv::none, number); }
CpForm cp_form_of(int number) { return code_of(CpRows, CpForm::none, number); }

Evp evp_of_tag(std::string_view tag) {
    for (const EvpInfo& row : EvpRows) {
        if (row.tag == tag) return row.code;
    }
    return Evp::none;
}

}  // namespace quom
