// Vapor pressure equations (EVP): p(LV), its slope, T(LV), and the sets correlated from T(cr), p(cr), T(nb).
#pragma once
#include <cstdint>
#include <string_view>

#include "session/session.h"

namespace quom {

enum EvpCode : int {
    evp_none = 0,
    evp_antoine_low = 1,
    evp_antoine_high = 2,
    evp_frost_kalkwarf = 3,
    evp_wagner = 4,
    evp_august = 5,
    evp_kfw = 6,
    evp_kfr = 7,
    evp_thompson = 8,
};

// Three-letter tag of a code, "000" for 0 and codes above 8; and back, 0 for a text that is none of the
// eight.
std::string_view evp_tag(int code);
int evp_code(std::string_view tag);

struct EvpResult {
    double value = 0;     // p(LV) [kPa] or T(LV) [K]; 0 with err -1
    std::int16_t dT = 0;  // how far T lies outside the validity [K], below it negative
    std::int16_t err = 0;
};

// p(LV) at T [K] by equation code 1 to 8; warn allows the box when T is more than 10 K outside the validity.
// err -1: T below 1e-6 K, code 0 or above 8, T at or above T(cr) of a Wagner set, or no solution.
// Antoine (1888), Frost and Kalkwarf (1953), Wagner (1973), August (1828), Thomson (1946).
EvpResult pLV_EVP(Session& s, double T, int code, bool warn = false);

// d(ln p)/d(1/T) at T [K] in value [K]; err -1 as in pLV_EVP or on a zero denominator.
struct EvpSlope {
    float value = 0;
    std::int16_t err = 0;
};
EvpSlope dpLVdT_EVP(Session& s, double T, int code);

// T(LV) at p [kPa]; warn allows the box when T is more than 5 K outside the validity.
// err -1: p above pcr or below 1e-35, code 0 or above 8, or no solution.
EvpResult TLV_EVP(Session& s, double p, int code, bool warn = false);

// Fills the set of code 6, 7 or 8 in the substance constants from Tcr [K], pcr [kPa], Tnb [K]. Nothing
// changes for other codes, or where one of the three is missing.
void KorreliereEVP(Session& s, int code, float Tcr, float pcr, float Tnb);

}  // namespace quom
