// Contents of a closed tank of known volume, mass and temperature: phases, pressure and shares.
#pragma once
#include "calc/outcome.h"

namespace quom {

// Phase split of mean density m/V between the saturated phases. y = (V/m - 1/rhoL)/(1/rhoV - 1/rhoL), and
//
//     V(V) = rhoL y V/((rhoL - rhoV) y + rhoV)
//
// m [kg], V [m^3], M [kg/kmol], rhoL and rhoV [kg/m^3]. y 0 is a tank full of liquid, y 1 one full of vapor;
// the density of a phase that is not there may be 0.
TankContents tank_contents(double m, double V, double M, double y, double rhoL, double rhoV);

}  // namespace quom
