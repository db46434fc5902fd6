// A session with propane made in memory, for tests whose expected values stand beside its constants.
#pragma once
#include "session/session.h"

namespace quom::sample {

// Propane. Critical data, omega, T(nb): Poling, Prausnitz and O'Connell, The Properties of Gases and Liquids,
// 5th ed. (2001), appendix A. cp(idG): Perry's Chemical Engineers' Handbook, 7th ed. (1997), table 2-198. No
// equation of the vapor pressure: code 6 is correlated from T(cr), p(cr), T(nb).
inline SubstanceConstants propane_constants() {
    SubstanceConstants x;
    x.StoffName = "Propane";
    x.StoffCAS = "74-98-6";
    x.MolMass = 44.0956f;
    x.Tcr = 369.83;
    x.pcr = 4248.0;
    x.omega = 0.152;
    x.vcrDB = 0.2;
    x.rhocrDB = 44.0956 / 0.2;
    x.Tnb = 231.02f;
    x.Ttr = 85.47f;
    x.cpDIPPR = {51.92f, 192.45f, 1626.5f, 116.8f, 723.6f};
    x.cpDIPPRTLo = 200;
    x.cpDIPPRTHi = 1500;
    x.haveSinh = true;
    return x;
}

// rho(L) = A/B^(1 + (1 - T/C)^D): Perry, 7th ed., table 2-30, times M; T(cr) in RhoLTcr.
inline void add_liquid_density(SubstanceConstants& x) {
    x.RhoL = {0.0f, 60.662f, 0.27453f, 0.29359f};
    x.RhoLTcr = 369.83f;
    x.RhoLTLo = 85;
    x.RhoLTHi = 369;
}

// Formation of the ideal gas at 298.15 K: CRC Handbook of Chemistry and Physics.
inline void add_formation(SubstanceConstants& x) {
    x.dfH0 = -104680.0f;
    x.dfG0 = -24390.0f;
    x.S0abs = 270.2f;
}

inline Document propane_document(Eos code = Eos::peng_robinson,
                                 const SubstanceConstants& x = propane_constants()) {
    Document document;
    document.substance = {.StoffIndexAktiv = 1, .constants = x};
    document.models.EOSKode = code;
    document.models.Konzept = eos_info(code).is_cubic();
    document.models.cpKode = CpForm::sinh_cosh;
    document.models.EVPKode = Evp::kfw;
    document.models.HLVKode = document.models.Konzept ? Hlv::eos : Hlv::evp_benson;
    document.units.TcrStart = x.Tcr;
    document.units.pcrStart = x.pcr;
    return document;
}

inline Session propane(Eos code = Eos::peng_robinson, const SubstanceConstants& x = propane_constants()) {
    Session session;
    commit(session, propane_document(code, x));
    return session;
}

}  // namespace quom::sample
