// Enthalpy of vaporization by the seven models.
#pragma once
#include <optional>
#include <string>
#include <vector>

#include "engine/fluid.h"

namespace quom {

struct HlvInput {
    Hlv model = Hlv::none;
    std::optional<double> T = {}, p = {};  // [K], [kPa]; at least one
    Evp EVP = Evp::none;
    BensonReference benson = {};  // of model evp_benson
    // of the data point: taken where no equation gives the missing one
    std::optional<double> point_T = {}, point_p = {};
};

struct HlvResult {
    std::int32_t value = 0;  // delta(LV)h, a whole number of kJ/kmol (half to even)
    double T = 0, p = 0;     // completed [K], [kPa]; 0 not known
    double ZV = 0, ZL = 0;   // compressibility factors of the models with z
    std::int16_t dT = 0;     // how far T lies outside the validity of model 1 [K], below it positive
    double fd = 0, g1 = 0, g2 = 0;
    std::string method;  // how it was calculated
    std::string source;  // where p or T comes from, or why there is no value
    std::vector<Warning> warnings;
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
inline constexpr int hlv_warns = 5;  // whole kelvin outside model 1 that are told of

// delta(LV)h at T or p; the missing one is completed along the vapor pressure curve. Fails: T above Tcr, no p
// or T to be had, a missing quantity. Chen (1965), Carruth and Kobayashi (1972), Watson (1943).
HlvResult hLV(const Fluid& fluid, const HlvInput& input);

struct HlvEquation {
    float value = 0;  // [kJ/kmol], not rounded to a whole number
    std::int16_t dT = 0;
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
// The database equation of model 1 at T [K], without the refusal above Tcr.
HlvEquation hLV_Fu(const SubstanceConstants& substance, double T);

}  // namespace quom
