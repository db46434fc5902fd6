// Vapor pressure equations (EVP): p(LV), its slope, T(LV), and the sets correlated from T(cr), p(cr), T(nb).
#pragma once
#include <optional>

#include "engine/fluid.h"

namespace quom {

struct EvpResult {
    double value = 0;     // p(LV) [kPa] or T(LV) [K]; 0 on failure
    std::int16_t dT = 0;  // how far T lies outside the validity [K], below it negative
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};

// Whole kelvin outside the validity that are told of: more than 10 from T, more than 5 from p.
inline constexpr int evp_warns_forward = 10, evp_warns_inverse = 5;

// p(LV) at T [K]. Fails: T below 1e-6 K, no equation, T at or above T(cr) of a Wagner set, or no solution.
// Antoine (1888), Frost and Kalkwarf (1953), Wagner (1973), August (1828), Thomson (1946).
EvpResult pLV_EVP(const SubstanceConstants& substance, double T, Evp code);

// d(ln p)/d(1/T) at T [K] in value [K]; fails as pLV_EVP or on a zero denominator.
struct EvpSlope {
    float value = 0;
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
EvpSlope dpLVdT_EVP(const SubstanceConstants& substance, double T, Evp code);

// T(LV) at p [kPa]. Fails: p above pcr or below 1e-35, no equation, or no solution.
EvpResult TLV_EVP(const SubstanceConstants& substance, double p, Evp code);

// Stored validity of an equation [K]; TLo 0: none. A correlated set whose limits cross, with T(nb) below
// T(tr), has none.
TLimits evp_limits(const SubstanceConstants& substance, Evp code);

// The warning on a T [K] that lies dT K outside the validity, when that is more than the allowed whole kelvin
// (evp_warns_forward, evp_warns_inverse). The August line counts from T(nb) to T(cr).
std::optional<Warning> evp_warning(const SubstanceConstants& substance, double T, Evp code, std::int16_t dT,
                                   int allowed);

// Fills the set of code kfw, kfr or thompson from T(cr) [K], p(cr) [kPa], T(nb) [K] of the substance; nothing
// changes for other codes, or where one of the three is missing.
void KorreliereEVP(SubstanceConstants& substance, Evp code);

}  // namespace quom
