// p(LV) and T(LV) of the cubic equation of state.
#pragma once
#include "engine/volume_solver.h"

namespace quom {

// Areas between the isotherm and p.
struct Areas {
    double fd = 0;                 // (g1 + g2)/(g1 - g2), 0 at saturation
    double g1 = 0;                 // area between the middle and the vapor root [kPa m^3/kmol]
    double g2 = 0;                 // area between the liquid and the middle root [kPa m^3/kmol]
    Reason reason = Reason::none;  // not_finite
    std::int16_t err() const { return err_of(reason); }
};
// Areas of three roots at p [kPa].
Areas MaxwellDiff(const EosAtT& eos, const CubicRoots& roots, double p);

// A saturated state, or why there is none.
struct Saturation {
    double T = 0, p = 0;                 // [K], [kPa]; the one searched is 0 on failure
    double vL = 0, vMiddle = 0, vV = 0;  // roots [m^3/kmol]; at the critical point all are its volume
    EosAtT eos;                          // a(T) .. d(T)
    double fd = 0, g1 = 0, g2 = 0;       // areas as of MaxwellDiff: g2 = -g1, fd = 0 within rounding
    // no_equation, vapor_only, no_critical_data, T_not_positive, p_not_positive, above_critical_T,
    // above_critical_p, p_too_low, not_settled
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
    bool found() const { return reason == Reason::none; }
};

// Vapor pressure at T [K], 0 < T <= Tcr.
//
// Equal areas under the isotherm (Maxwell 1875), which for this form is the equality of fugacities: the p at
// which
//     integral of p dv from v(L) to v(V)  =  p (v(V) - v(L)).
// T = Tcr gives pcr, and so does T within 1e-7 of it, where the three roots are one in double precision.
// p_too_low: so cold that p is below the numbers of double precision. The vapor pressure equation of the
// fluid has no part in it.
Saturation pLV_EOS(const Fluid& fluid, double T);

// Boiling temperature at p [kPa], 1e-10 <= p <= pcr; closes with pLV_EOS to 1e-9.
Saturation TLV_EOS(const Fluid& fluid, double p);

// The boiling curve of a fluid: X = Tcr/T as cubics in ln(pcr/p), in equal cells from pcr down to 1e-10 kPa.
// Good for some 1e-6 of T: the search for T(LV) starts from it.
struct BoilingCurve {
    static constexpr int Cells = 64;
    double ln_pcr = 0, cells_per_ln_p = 0;
    double c[Cells][4] = {};  // by cell, power of ln(pcr/p) cells_per_ln_p - cell
};
// Null for a fluid without a reduced saturation curve.
std::shared_ptr<const BoilingCurve> boiling_curve_for(const Fluid& fluid);

}  // namespace quom
