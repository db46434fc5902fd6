// Contents of a closed tank of known volume, mass and temperature: phases, pressure and shares.
#pragma once
#include "calc/calc_batch.h"

namespace quom {

struct CalcRun;

// Phase split of mean density m/V between the saturated phases. y = (V/m - 1/rhoL)/(1/rhoV - 1/rhoL), and
//
//     V(V) = rhoL y V/((rhoL - rhoV) y + rhoV)
//
// m [kg], V [m^3], M [kg/kmol], rhoL and rhoV [kg/m^3]. y 0 is a tank full of liquid, y 1 one full of vapor;
// the density of a phase that is not there may be 0.
TankContents tank_contents(double m, double V, double M, double y, double rhoL, double rhoV);

// Decides the phases of the tank of the run by the PARTIAL method: p(LV) from the vapor pressure equation,
// rho(V) from the EOS, rho(L) by Benson's method or from rho(L) = Fu(T); then writes TankResult. A tank full
// of liquid ("ERROR2") has no known pressure: p stays 0. Without p(LV) or rho(L) the run gets no result.
void TankPartial(CalcRun& run);

// Contents of the tank of the run from the state that was found, share of the L-phase, and the lines of the
// list.
void TankResult(CalcRun& run);

}  // namespace quom
