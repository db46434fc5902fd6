// The reference point of Benson's method, from what the database and the selected models know.
#pragma once
#include <string>

#include "engine/fluid.h"

namespace quom {

// Density data of the liquid at one temperature, with the slope when the record has one.
struct LiquidPoint {
    double rho = 0;     // [kg/m^3], 0 none
    double T = 0;       // [K]
    double drhodT = 0;  // [kg/(m^3 K)], 0 none
};
// The single point that a record holds in place of an equation rho(L) = Fu(T).
LiquidPoint liquid_point(const SubstanceConstants& substance);
// Whether rho(L) = Fu(T) of the database, or its single point, can be evaluated.
bool has_liquid_density(const SubstanceConstants& substance);

// The point as shown by the proposal; text tells for each value where it comes from, '\n' between lines.
struct ReferencePointResult {
    double T = 0;     // [K]
    double p = 0;     // [kPa]
    double rhoV = 0;  // [kg/m^3]
    double rhoL = 0;  // [kg/m^3], 0: no liquid density is known
    std::string text;
    Reason reason = Reason::none;
    std::int16_t err() const { return err_of(reason); }
    BensonReference reference() const;  // as singles; all 0 on failure
};

// Proposes the reference point: the normal boiling point, or the single point of the record where the normal
// boiling T is not known. Where the EOS gives no rho(V), it comes from Pitzer and Curl (1957), without omega
// from the ideal gas. Fails when neither T is known.
ReferencePointResult ReferencePoint(const Fluid& fluid);

// Benson's point at the normal boiling T: rho(L) by his own formula, rho(V) from the EOS. Fails: no T(nb),
// p(cr) or rho(cr).
ReferencePointResult BensonReferencePoint(const Fluid& fluid);

}  // namespace quom
