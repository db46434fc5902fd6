// The models that can be selected: their codes, what each one is, and the selection in force.
//
// Every question about a code ("is it cubic", "does it need omega", "which vapor pressure set") is answered
// by a row of the tables here; no other file compares codes with numbers.
#pragma once
#include <cstdint>
#include <span>
#include <string_view>

#include "substance/substance_constants.h"

namespace quom {

// Equations of state by their index in the list of models.
enum class Eos : std::int16_t {
    none = -1,
    ideal_gas = 0,
    van_der_waals = 2,
    berthelot = 3,
    redlich_kwong = 4,
    soave = 5,
    peng_robinson = 6,
    tovarn_ji_1 = 7,
    tovarn_ji_2 = 8,
    virial_manual = 10,
    virial_van_der_waals = 11,
    virial_berthelot = 12,
    virial_redlich_kwong = 13,
    virial_soave = 14,
    virial_peng_robinson = 15,
    pitzer_curl = 16,
};

// Vapor pressure equations (EVP).
enum class Evp : std::int16_t {
    none = 0,
    antoine_low = 1,
    antoine_high = 2,
    frost_kalkwarf = 3,
    wagner = 4,
    august = 5,
    kfw = 6,
    kfr = 7,
    thompson = 8,
};

// Models of delta(LV)h.
enum class Hlv : std::int16_t {
    none = 0,
    equation = 1,
    chen = 2,
    carruth_kobayashi = 3,
    watson = 4,
    evp_rhoL = 5,
    evp_benson = 6,
    eos = 7,
};

// Equations of cp(idG).
enum class CpForm : std::int16_t { none = 0, polynomial = 1, sinh_cosh = 2 };

enum class EosFamily {
    none,         // no equation behind the code
    ideal_gas,    // v = R T/p
    cubic,        // p = R T/(v - b) - a/((v + c)(v + d)), a(T) by AlphaForm
    tovarn_ji,    // the same form with parameters from a fit
    virial,       // v = R T/p + B, B = b - a/(R T) of a cubic equation
    manual,       // v = R T/p + B, B = b0 - b1/T^b2 as typed
    pitzer_curl,  // v = R T/p + B, B by the correlation of Pitzer and Curl (1957)
};

struct EosInfo {
    Eos code = Eos::none;
    EosFamily family = EosFamily::none;
    std::string_view text;     // of the list, padded to 35 characters, longer ones whole; "" without an entry
    bool needs_omega = false;  // offered only with omega
    bool warns_omega = false;  // calculated with omega = 0, the user is told
    Eos cubic = Eos::none;     // of a virial equation: the cubic equation that B comes from
    Eos virial = Eos::none;    // the equation to compare second virial coefficients with
    int help_topic = 20;
    bool is_cubic() const { return family == EosFamily::cubic || family == EosFamily::tovarn_ji; }
    bool is_vapor_only() const { return !is_cubic() && family != EosFamily::none; }
};
// Row of a code; that of Eos::none for a code without an entry.
const EosInfo& eos_info(Eos code);
// All rows with an entry, in the order of the list of models.
std::span<const EosInfo> eos_list();

enum class EvpForm { none, antoine, frost_kalkwarf, wagner, august };

struct EvpInfo {
    Evp code = Evp::none;
    EvpForm form = EvpForm::none;
    std::string_view tag = "000";  // three letters
    std::string_view text;         // of the list
    bool correlated = false;       // the set follows from T(cr), p(cr), T(nb)
    int help_topic = 30;
};
const EvpInfo& evp_info(Evp code);
std::span<const EvpInfo> evp_list();  // in the order of the list of models: 3, 4, 1, 2, 5 to 8

struct HlvInfo {
    Hlv code = Hlv::none;
    std::string_view text;
    bool uses_evp = false;   // p(LV) is asked from the vapor pressure equation
    bool uses_zeta = false;  // Clapeyron with compressibility factors z(L), z(V)
    int help_topic = 15340;
};
const HlvInfo& hlv_info(Hlv code);
std::span<const HlvInfo> hlv_list();

struct CpInfo {
    CpForm code = CpForm::none;
    std::string_view text;
    int help_topic = 40;
};
const CpInfo& cp_info(CpForm code);

// Codes from numbers of files and arguments; none (or Evp::none ...) for a number without an entry.
Eos eos_of(int number);
Evp evp_of(int number);
Evp evp_of_tag(std::string_view tag);  // Evp::none for a text that is none of the eight tags
Hlv hlv_of(int number);
CpForm cp_form_of(int number);
template <class Code>
constexpr int number_of(Code code) {
    return static_cast<int>(code);
}

// What the user selected for the substance.
struct ModelSelection {
    Eos EOSKode = Eos::none;
    Evp EVPKode = Evp::none;
    Hlv HLVKode = Hlv::none;
    CpForm cpKode = CpForm::none;
    float nWat = 0.38f;   // Watson exponent
    bool Konzept = true;  // true GLOBAL, false PARTIAL
    bool VPhaseOnly() const { return !eos_info(EOSKode).is_cubic(); }
    bool operator==(const ModelSelection&) const = default;
};

// Constants of equations of state that are typed or read from a file.
struct EosInput {
    double b0 = 0, b1 = 0, b2 = 0;  // manual virial equation B = b0 - b1/T^b2 [m^3/kmol]
    double JiP3 = 0, JiP4 = 0, JiP5 = 0, JiZc = 0, JiB1 = 0;  // Tovarn/Ji, from the fit
    bool operator==(const EosInput&) const = default;
};

// Zero points of h and s, with the numbers that project files keep.
enum ReferenceCode : int {
    reference_free = 1,        // 0 at TRef0, pRef0
    reference_formation = 2,   // h0 = dfH0, s0 = S0abs at 298.15 K, 101.325 kPa
    reference_from_gibbs = 10  // h0 = dfH0, s0 = (dfH0 - dfG0)/298.15
};

// Reference point of the ideal gas and environment of the exergies.
struct ReferenceState {
    int RefKode = reference_free;          // ReferenceCode
    float TRef0 = 298.15f;                 // reference temperature of the ideal gas [K]
    float pRef0 = 0.0f;                    // reference pressure [kPa]; 0 stands for 101.325
    double hOffset = 0, sOffset = 0;       // added to every ideal gas h [kJ/kmol] and s [kJ/(kmol K)]
    double TEnv = 298.15, pEnv = 101.325;  // environment of the exergies [K], [kPa]
    bool operator==(const ReferenceState&) const = default;
};

// Reference point of Benson's method [K], [kPa], [kg/m^3]; 0 where it is not known.
struct BensonReference {
    float TRefL = 0, pLVRef = 0, rhoLRef = 0, rhoVRef = 0;
    bool complete() const { return TRefL > 0 && pLVRef > 0 && rhoLRef > 0 && rhoVRef > 0; }
    bool operator==(const BensonReference&) const = default;
};

}  // namespace quom
