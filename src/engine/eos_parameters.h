// Constants of the equation of state in force, and a(T) .. d(T).
//
//     p = R T/(v - b) - a/((v + c)(v + d))
#pragma once
#include <cstdint>

#include "session/session.h"

namespace quom {

// Codes of the equations of state = index in the list of models.
enum EosCode : int {
    eos_none = -1,
    eos_ideal_gas = 0,
    eos_van_der_waals = 2,
    eos_berthelot = 3,
    eos_redlich_kwong = 4,
    eos_soave = 5,
    eos_peng_robinson = 6,
    eos_tovarn_ji_1 = 7,
    eos_tovarn_ji_2 = 8,
    eos_virial_manual = 10,
    eos_virial_first = 11,  // 11 to 15: virial forms of 2 to 6
    eos_virial_last = 15,
    eos_pitzer_curl = 16,
};

inline bool is_cubic(int code) { return code >= 1 && code <= 9; }

// Sets every constant and exponent of the block to 0; JiPar, AlphaForm and vcrEOS stay.
void ClearEOSPar(Session& s);

// Fills the block, vcrEOS [m^3/kmol] and rhocrEOS [kg/m^3] for an EOS code from Tcr, pcr, omega.
// Needs VPhaseOnly to be right for the code. Codes 7 and 8 take JiZc, JiP3 .. JiP5, JiB1 as given.
// Returns err: 0 good (also without T(cr), p(cr): nothing changes then); 1 when codes 7, 8 have no
// parameters, after a message. van der Waals (1873), Berthelot (1899), Redlich and Kwong (1949), Soave
// (1972), Peng and Robinson (1976).
std::int16_t InitEOSPar(Session& s, int code);

// v(cr) = Zc R Tcr/pcr [m^3/kmol].
double vCritZ(const Session& s, double Zc);

// Sets aT, bT, cT, dT of the scratch at T [K]; changes nothing below 1e-6 K.
void EOSParT(Session& s, double T);

// a, b, c, d at one T.
struct CubicParameters {
    double a = 0, b = 0, c = 0, d = 0;  // a [kPa m^6/kmol^2], the others [m^3/kmol]
};
// The law of codes 7 and 8 at T [K] for a block of parameters.
CubicParameters EOSParT_Ji(const Session& s, double T, const EosBlock& block);

// The constant of the second bracket of alpha(T) of codes 7 and 8, the same for every substance.
inline constexpr double JiBracket = 0.76528558;

// JiCd of the Tovarn/Ji block from JiZc and JiOb.
inline double JiCdOf(double JiZc, double JiOb) { return (1.0 - 3.0 * JiZc + JiOb) / JiOb; }

}  // namespace quom
