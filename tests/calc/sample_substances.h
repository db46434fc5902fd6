// Sessions with a substance and its models, made in memory.
#pragma once
#include <cmath>
#include <string>

#include "engine/eos_parameters.h"
#include "engine/vapor_pressure.h"
#include "session/session.h"
#include "support/queued_messages.h"

namespace quom::sample {

// Propane. Critical data, omega, T(nb): Poling, Prausnitz and O'Connell, The Properties of Gases and Liquids,
// 5th ed. (2001), appendix A. cp(idG): Perry's Chemical Engineers' Handbook, 7th ed. (1997), table 2-198,
// Antoine (in ln p/kPa turned to log10): fitted to p(nb) and p(cr) by KorreliereEVP, code 6.
inline Session propane(int EOSKode = eos_peng_robinson) {
    Session s;
    SubstanceConstants& x = s.substance;
    x.StoffName = "Propane";
    x.StoffCAS = "74-98-6";
    x.MolMass = 44.0956f;
    x.Tcr = 369.83, x.pcr = 4248.0, x.omega = 0.152;
    x.vcrDB = 0.2, x.rhocrDB = 44.0956 / 0.2;
    x.Tnb = 231.02f, x.Ttr = 85.47f;
    x.cpDIPPR = {51.92f, 192.45f, 1626.5f, 116.8f, 723.6f};
    x.cpDIPPRTLo = 200, x.cpDIPPRTHi = 1500;
    x.haveSinh = true;
    s.models.EOSKode = EOSKode;
    s.models.VPhaseOnly = !is_cubic(EOSKode);
    s.models.Konzept = !s.models.VPhaseOnly;
    s.models.cpKode = 2;
    s.models.EVPKode = evp_kfw;
    s.models.EVPTag = "KFW";
    s.models.HLVKode = s.models.VPhaseOnly ? 6 : 7;
    s.units.TcrStart = x.Tcr, s.units.pcrStart = x.pcr;
    KorreliereEVP(s, evp_kfw, static_cast<float>(x.Tcr), static_cast<float>(x.pcr), x.Tnb);
    InitEOSPar(s, EOSKode);
    return s;
}

}  // namespace quom::sample
