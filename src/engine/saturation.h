// p(LV) and T(LV) of the cubic equation of state in force.
#pragma once
#include <cstdint>

#include "session/session.h"

namespace quom {

struct Areas {
    double fd = 0;  // (g1 + g2)/(g1 - g2), 0 at saturation
    double g1 = 0;  // area between the middle and the vapor root [kPa m^3/kmol]
    double g2 = 0;  // area between the liquid and the middle root [kPa m^3/kmol]
    std::int16_t err = 0;
};
// Relative difference of the two areas between the isotherm and p [kPa]; needs EOSParT(T) and three roots in
// VRoot. err -1: not finite.
Areas MaxwellDiff(const Session& s, double T, double p);

// What one saturation search found.
struct Saturation {
    double value = 0;  // p(LV) [kPa] from pLV_EOS, T(LV) [K] from TLV_EOS
    double fd = 0, g1 = 0, g2 = 0;
    std::int16_t err = 0;
};

// Vapor pressure of the cubic equation at T [K], 0 < T <= Tcr: equal areas under the isotherm (Maxwell 1875).
// Leaves v(L), v(V) in VRoot[0], VRoot[2] and a(T) .. d(T); at Tcr both are 1/rhocrEOS [m^3/kg], so that
// callers take v(cr) from vcrEOS. Within 1e-7 of Tcr the three roots may be one in double precision: p is pcr
// then, VRoot[0] = VRoot[2]. err -1: T above Tcr, no equation or one of the vapor phase only, or no solution.
Saturation pLV_EOS(Session& s, double T);

// Boiling temperature of the cubic equation at p [kPa], 0 < p <= pcr; Tstart [K], 0 none. Leaves the same.
// err -1: p above pcr, no equation or one of the vapor phase only, or no solution.
Saturation TLV_EOS(Session& s, double p, double Tstart = 0);

}  // namespace quom
