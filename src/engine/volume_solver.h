// Volumes of the equation of state at T and p, the stable phase, B(T), p(T, v), T(p, v), inflection points.
#pragma once
#include <cstdint>
#include <string_view>

#include "session/session.h"

namespace quom {

// What VolumeTp found. Volumes and densities are 0 where the phase does not exist.
struct VolumeResult {
    std::int16_t PhaseRegion = 0;  // 0 below the critical point, 1 L above pcr, 2 supercritical, 3 V above
                                   // Tcr, 4 critical
    bool LFlag = false, VFlag = false;
    double rhoV = 0, rhoL = 0;      // [kg/m^3]
    double vV = 0, vL = 0;          // [m^3/kmol]
    std::int16_t nRoots = 0;        // 1 or 3, 0 for an EOS of the V-phase only
    double fd = 0, g1 = 0, g2 = 0;  // of MaxwellDiff
    std::string_view msg;           // what was found
    std::int16_t err = 0;
};

// Volumes, stable phase and region at T [K], p [kPa]. Leaves aT .. dT, VRoot (or Bvirial) and PhaseRegion in
// the scratch. err -1: T or p not above 0, or no physical volume.
VolumeResult VolumeTp(Session& s, double T, double p);

struct CubicRoots {
    std::int16_t nRoots = 0;
    std::int16_t err = 0;
};
// Roots of the cubic at T [K], p [kPa] into VRoot, ascending; needs EOSParT(T) before.
// nRoots is 1 (the root in VRoot[0], VRoot[2] = 0) or 3; roots at or below b are no roots. err -1: none
// found.
CubicRoots CubicV(Session& s, double T, double p);

// B(T) [m^3/kmol] of an EOS code at T [K]; 0 for a plain cubic code. Leaves aT, bT.
// Code 16: Pitzer and Curl (1957).
double VirialB(Session& s, int code, double T);

struct PressureResult {
    double p = 0;  // [kPa]
    std::int16_t err = 0;
};
// p of the EOS in force at T [K], v [m^3/kmol]. err -1, p 0: v at or below b (or B).
// The test uses bT of the last evaluation, so the caller runs EOSParT(T) before.
PressureResult pTv(Session& s, double T, double v);

// T [K] at p [kPa], rho [kg/m^3]; 0 when there is none. skipTwoPhase: take the state as it is, without the
// search for a two-phase state.
double TpV(Session& s, double p, double rho, bool skipTwoPhase);

// The two points of inflection of the p-v isotherm; v[k] = 0 where there is none.
struct Inflection {
    double v[2] = {0, 0};   // [m^3/kmol]
    double pv[2] = {0, 0};  // [kPa]
    double d2[2] = {0, 0};  // d2p/dv2 there
    std::int16_t err = 0;   // -1: not even one was found
};
// phase 0 L, 1 V names the row of the arrays that the search fills.
Inflection InflectionV(Session& s, double T, int phase);

}  // namespace quom
