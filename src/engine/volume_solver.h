// Volumes of the equation of state at T and p, the stable phase, B(T), p(T, v), T(p, v), inflection points.
#pragma once
#include <array>
#include <cstdint>
#include <string_view>

#include "engine/eos_parameters.h"
#include "engine/fluid.h"

namespace quom {

// Region of the phase diagram. T and p are compared with T(cr), p(cr) in single precision; the one answer to
// this question for every caller:
//   4 T = T(cr) and p = p(cr), 2 both above, 1 p above p(cr), 3 T above T(cr), 0 else.
// T or p of 0 (not known) counts as not above.
std::int16_t phase_region(const Fluid& fluid, double T, double p);

// Roots of the cubic at T, p.
struct CubicRoots {
    std::array<double, 3> VRoot{};  // ascending [m^3/kmol]; one root: in [0], the others 0
    std::int16_t nRoots = 0;        // 1 or 3; roots at or below max(b, 0) are none
    Reason reason = Reason::none;   // not_settled, no_root_above_b
    std::int16_t err() const { return err_of(reason); }
};
CubicRoots CubicV(const EosAtT& eos, double p);

// What VolumeTp found. Volumes and densities are 0 where the phase does not exist.
struct VolumeResult {
    double T = 0, p = 0;           // as asked
    std::int16_t PhaseRegion = 0;  // phase_region, or 4 for a single root within 0.001 m^3/kmol of vcrEOS
    EosAtT eos{};                  // a(T) .. d(T)
    CubicRoots roots{};            // of a cubic equation
    bool LFlag = false, VFlag = false;  // both: saturation, or one fluid above the critical point
    double rhoV = 0, rhoL = 0;          // [kg/m^3]
    double vV = 0, vL = 0;              // [m^3/kmol]
    std::int16_t nRoots = 0;            // 1 or 3, 0 for an EOS of the V-phase only
    double Bvirial = 0;                 // B(T) of an EOS of the V-phase only
    double fd = 0, g1 = 0, g2 = 0;      // areas of three roots, see Areas in engine/saturation.h
    std::string_view msg{};             // what was found
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
// Volumes, stable phase and region at T [K], p [kPa]. Fails: T or p not above 0, no equation, no physical
// volume.
VolumeResult VolumeTp(const Fluid& fluid, double T, double p);

// B(T) [m^3/kmol] at T [K] by the equation in force; 0 for a plain cubic equation and below 1e-6 K.
// Code 16: Pitzer and Curl (1957).
double VirialB(const Fluid& fluid, double T);
// B(T), dB/dT, d2B/dT2 [m^3/kmol] over K of an equation of the V-phase only.
struct VirialDerivatives {
    double B = 0, B1 = 0, B2 = 0;
};
VirialDerivatives virial_derivatives(const Fluid& fluid, double T);

struct PressureResult {
    double p = 0;                  // [kPa]; 0 on failure, may be below 0 between the spinodals
    double bound = 0;              // b(T) or B(T) that v has to exceed
    Reason reason = Reason::none;  // volume_below_b, volume_below_B, not_finite
    std::int16_t err() const { return err_of(reason); }
};
// p of the EOS in force at T [K], v [m^3/kmol]. v is tested against b (or B) at this T.
PressureResult pTv(const Fluid& fluid, double T, double v);
// p [kPa] of a cubic equation whose a .. d are known, at a v [m^3/kmol] above b, which is not tested.
inline double pressure_at(const EosAtT& eos, double v) {
    return RGas * eos.T / (v - eos.b) - eos.a / (v + eos.c) / (v + eos.d);
}

struct TemperatureResult {
    double T = 0;  // [K]; 0 on failure
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
};
// T [K] at p [kPa], rho [kg/m^3]. skipTwoPhase: take the state as it is, without the search for a two-phase
// state. Inside the dome T is T(LV) of p.
TemperatureResult TpV(const Fluid& fluid, double p, double rho, bool skipTwoPhase);

// The two points of inflection of the p-v isotherm; v[k] = 0 where there is none.
struct Inflection {
    double v[2] = {0, 0};          // [m^3/kmol]
    double pv[2] = {0, 0};         // [kPa]
    double d2[2] = {0, 0};         // d2p/dv2 there
    Reason reason = Reason::none;  // no_solution: not even one was found
    std::int16_t err() const { return err_of(reason); }
};
Inflection InflectionV(const Fluid& fluid, double T);

}  // namespace quom
