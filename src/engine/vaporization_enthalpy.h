// Enthalpy of vaporization by the seven models.
#pragma once
#include <cstdint>
#include <string>

#include "session/session.h"

namespace quom {

enum HlvCode : int {
    hlv_none = 0,
    hlv_equation = 1,
    hlv_chen = 2,
    hlv_carruth_kobayashi = 3,
    hlv_watson = 4,
    hlv_evp_rhoL = 5,
    hlv_evp_benson = 6,
    hlv_eos = 7,
};

struct HlvResult {
    std::int32_t value = 0;  // delta(LV)h, a whole number of kJ/kmol
    double ZV = 0, ZL = 0;   // compressibility factors of models 5 and 6
    std::int16_t dT = 0;     // how far T lies outside the validity of model 1 [K], below it positive
    double fd = 0, g1 = 0, g2 = 0;
    std::string method;  // how it was calculated
    std::string source;  // where p or T comes from, or why there is no value
    std::int16_t err = 0;
};

// delta(LV)h by model 1 to 7 at T [K] or p [kPa]; of the two the missing one (below 1e-6) is completed along
// the vapor pressure curve in place. warn allows the box on the validity. err -1, value 0: T above Tcr, no p
// or T to be had, a missing quantity; source tells, except at entry. Chen (1965), Carruth and Kobayashi
// (1972), Watson (1943).
HlvResult hLV(Session& s, int model, double& T, double& p, int EVP, bool warn = false);

struct HlvEquation {
    float value = 0;  // [kJ/kmol], not rounded to a whole number
    std::int16_t dT = 0;
    std::int16_t err = 0;
};
// The database equation of model 1 at T [K], without the refusal above Tcr.
HlvEquation hLV_Fu(Session& s, double T, bool warn = false);

}  // namespace quom
