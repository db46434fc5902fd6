// Published figures of real substances against what the models make of the starter database.
#include <gtest/gtest.h>

#include "engine/condensed_phases.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/vapor_pressure.h"
#include "engine/vaporization_enthalpy.h"
#include "engine/volume_solver.h"
#include "support/starter.h"

namespace quom {
namespace {

// One quantity at T [K], p [kPa] of a fluid; code is that of the equation behind it.
using Quantity = double (*)(const Fluid& fluid, double T, double p, int code);

double rhoV(const Fluid& fluid, double T, double p, int) { return VolumeTp(fluid, T, p).rhoV; }
double rhoL_sat(const Fluid& fluid, double T, double, int) { return fluid.M / pLV_EOS(fluid, T).vL; }
double rhoV_sat(const Fluid& fluid, double T, double, int) { return fluid.M / pLV_EOS(fluid, T).vV; }
double cp_gas(const Fluid& fluid, double T, double p, int) {
    return ThermoState(fluid, T, p, VolumeTp(fluid, T, p).vV).cp;
}
double w_gas(const Fluid& fluid, double T, double p, int) {
    return ThermoState(fluid, T, p, VolumeTp(fluid, T, p).vV).w;
}
double pLV(const Fluid& fluid, double T, double, int) { return pLV_EOS(fluid, T).p; }
double TLV(const Fluid& fluid, double, double p, int) { return TLV_EOS(fluid, p).T; }
double dh(const Fluid& fluid, double T, double, int code) {
    return hLV(fluid, {.model = hlv_of(code), .T = T, .EVP = Evp::wagner}).value;
}
double p_evp(const Fluid& fluid, double T, double, int code) {
    return pLV_EVP(fluid.substance, T, evp_of(code)).value;
}
double T_evp(const Fluid& fluid, double, double p, int code) {
    return TLV_EVP(fluid.substance, p, evp_of(code)).value;
}
double rhoL(const Fluid& fluid, double T, double, int) {
    return rhoL_Fu(fluid.substance, static_cast<float>(T)).rho;
}
double cpL(const Fluid& fluid, double T, double, int) { return cpL_Fu(fluid.substance, T); }
double B(const Fluid& fluid, double T, double, int) { return VirialB(fluid, T); }

struct Figure {
    std::string_view cas;
    const char* name;
    Quantity quantity;
    int code;
    double T, p,
        figure;      // [K], [kPa], unit of the engine: kg/m^3, kJ/(kmol K), m/s, kPa, K, kJ/kmol, m^3/kmol
    double percent;  // what the model may be off
    const char* source;
};
constexpr std::string_view R134a = "811-97-2", toluene = "108-88-3", hexane = "110-54-3", acetone = "67-64-1",
                           ethane = "74-84-0";
constexpr const char *iapws = "IAPWS-95", *nist = "NIST Chemistry WebBook, fluid properties",
                     *crc = "CRC Handbook", *dymond = "Dymond et al., Virial Coefficients (2002)";

const Figure Figures[] = {
    // gases: to some 0.1 % where Z is near 1; steam associates, which corresponding states do not know
    {test::nitrogen, "rho", rhoV, 5, 300.0, 100.0, 1.1232, 0.05, nist},
    {test::carbon_dioxide, "rho", rhoV, 6, 300.0, 100.0, 1.7730, 0.1, nist},
    {test::ammonia, "rho", rhoV, 6, 300.0, 100.0, 0.6894, 0.3, nist},
    {test::water, "rho", rhoV, 16, 500.0, 1000.0, 4.5323, 0.5, iapws},
    {test::water, "rho", rhoV, 6, 600.0, 10000.0, 49.773, 2.5, iapws},
    {test::nitrogen, "cp", cp_gas, 6, 300.0, 100.0, 29.17, 0.2, nist},
    {test::carbon_dioxide, "cp", cp_gas, 5, 300.0, 100.0, 37.52, 0.3, nist},
    {test::water, "cp", cp_gas, 16, 500.0, 100.0, 35.69, 0.6, iapws},
    {test::water, "cp", cp_gas, 6, 500.0, 1000.0, 41.07, 12.0, iapws},
    {test::nitrogen, "w", w_gas, 5, 300.0, 100.0, 353.2, 0.1, nist},
    {test::argon, "w", w_gas, 6, 300.0, 100.0, 322.7, 0.1, nist},
    {test::carbon_dioxide, "w", w_gas, 5, 300.0, 100.0, 269.4, 0.2, nist},
    {test::methane, "w", w_gas, 16, 300.0, 100.0, 449.9, 0.1, nist},
    {test::water, "w", w_gas, 6, 500.0, 1000.0, 535.74, 0.5, iapws},
    // saturation by the cubic equations: p(LV) well, the liquid with their known error of volume, which is
    // worst for water
    {test::propane, "p(LV)", pLV, 6, 300.0, 0.0, 997.8, 0.3, nist},
    {test::nitrogen, "p(LV)", pLV, 5, 100.0, 0.0, 778.3, 1.2, nist},
    {test::ammonia, "p(LV)", pLV, 6, 300.0, 0.0, 1061.7, 0.5, nist},
    {test::carbon_dioxide, "p(LV)", pLV, 6, 273.15, 0.0, 3485.1, 0.5, nist},
    {R134a, "p(LV)", pLV, 6, 273.15, 0.0, 292.8, 0.5, nist},
    {test::water, "p(LV)", pLV, 6, 500.0, 0.0, 2639.2, 1.2, iapws},
    {test::propane, "T(LV)", TLV, 6, 0.0, 101.325, 231.04, 0.1, nist},
    {test::benzene, "T(LV)", TLV, 6, 0.0, 101.325, 353.24, 0.2, nist},
    {test::water, "T(LV)", TLV, 5, 0.0, 101.325, 373.124, 0.8, iapws},
    {test::propane, "rho(V)", rhoV_sat, 6, 231.04, 0.0, 2.417, 0.5, nist},
    {test::carbon_dioxide, "rho(V)", rhoV_sat, 6, 273.15, 0.0, 97.65, 0.5, nist},
    {R134a, "rho(V)", rhoV_sat, 6, 273.15, 0.0, 14.43, 2.5, nist},
    {test::nitrogen, "rho(L)", rhoL_sat, 5, 77.355, 0.0, 806.1, 1.0, nist},
    {test::propane, "rho(L)", rhoL_sat, 6, 300.0, 0.0, 489.5, 5.0, nist},
    {test::carbon_dioxide, "rho(L)", rhoL_sat, 6, 250.0, 0.0, 1046.0, 3.0, nist},
    {test::water, "rho(L)", rhoL_sat, 6, 373.124, 0.0, 958.37, 18.0, iapws},
    {test::methane, "delta(LV)h", dh, 7, 111.667, 0.0, 8195, 0.5, nist},
    {test::argon, "delta(LV)h", dh, 7, 87.302, 0.0, 6437, 1.2, nist},
    // equations of the database
    {test::water, "delta(LV)h", dh, 1, 300.0, 0.0, 43908, 0.3, iapws},
    {toluene, "delta(LV)h", dh, 1, 298.15, 0.0, 38010, 0.3, crc},
    {acetone, "p(LV)", p_evp, 4, 298.15, 0.0, 30.8, 0.5, crc},
    {"7782-44-7", "T(LV)", T_evp, 4, 0.0, 101.325, 90.188, 0.02, nist},
    {test::water, "rho(L)", rhoL, 0, 298.15, 0.0, 997.05, 0.1, iapws},
    {test::water, "rho(L)", rhoL, 0, 500.0, 0.0, 831.31, 0.1, iapws},
    {test::propane, "rho(L)", rhoL, 0, 300.0, 0.0, 489.5, 0.5, nist},
    {R134a, "rho(L)", rhoL, 0, 273.15, 0.0, 1294.8, 0.2, nist},
    {test::argon, "rho(L)", rhoL, 0, 87.302, 0.0, 1395.4, 0.2, nist},
    {test::benzene, "rho(L)", rhoL, 0, 298.15, 0.0, 873.6, 0.3, crc},
    {test::water, "cp(L)", cpL, 0, 298.15, 0.0, 75.33, 0.3, iapws},
    {test::water, "cp(L)", cpL, 0, 500.0, 0.0, 84.01, 0.5, iapws},
    {test::benzene, "cp(L)", cpL, 0, 298.15, 0.0, 136.0, 0.5, crc},
    {test::ethanol, "cp(L)", cpL, 0, 298.15, 0.0, 112.3, 0.5, crc},
    {hexane, "cp(L)", cpL, 0, 298.15, 0.0, 195.6, 0.5, crc},
    // second virial coefficients: Pitzer/Curl to 4 %, Soave's to 5 %
    {test::nitrogen, "B", B, 16, 200.0, 0.0, -0.0352, 4.0, dymond},
    {test::methane, "B", B, 16, 200.0, 0.0, -0.105, 4.0, dymond},
    {test::carbon_dioxide, "B", B, 16, 300.0, 0.0, -0.122, 4.0, dymond},
    {ethane, "B", B, 14, 300.0, 0.0, -0.182, 5.0, dymond},
    {test::argon, "B", B, 14, 200.0, 0.0, -0.0474, 5.0, dymond},
    {test::water, "B", B, 16, 500.0, 0.0, -0.1696, 2.0, iapws},
};

TEST(PublishedFigures, WithinWhatTheModelCanDo) {
    for (const Figure& f : Figures) {
        const bool is_eos = f.quantity != dh && f.quantity != p_evp && f.quantity != T_evp && f.code > 0;
        const auto fluid = test::starter_fluid(f.cas, is_eos ? eos_of(f.code) : Eos::peng_robinson);
        EXPECT_NEAR(f.quantity(*fluid, f.T, f.p, f.code) / f.figure, 1.0, 0.01 * f.percent)
            << f.name << " of " << fluid->substance.StoffName << ", T " << f.T << ", p " << f.p << ", code "
            << f.code << ": " << f.figure << " (" << f.source << ")";
    }
}

}  // namespace
}  // namespace quom
