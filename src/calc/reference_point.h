// The reference point of Benson's method, from what the database and the selected models know.
#pragma once
#include <cstdint>
#include <string>

#include "session/session.h"

namespace quom {

// Density data of the liquid at one temperature, with the slope when the record has one.
struct LiquidPoint {
    double rho = 0;     // [kg/m^3], 0 none
    double T = 0;       // [K]
    double drhodT = 0;  // [kg/(m^3 K)], 0 none
};
// The single point that a record holds in place of an equation rho(L) = Fu(T).
LiquidPoint liquid_point(const SubstanceConstants& substance);

// The point as shown by the proposal; text tells for each value where it comes from, '\n' between lines.
struct ReferencePointResult {
    double T = 0;     // [K]
    double p = 0;     // [kPa]
    double rhoV = 0;  // [kg/m^3]
    double rhoL = 0;  // [kg/m^3], 0: no liquid density is known
    std::string text;
    std::int16_t err = 0;
};

// Proposes the reference point: the normal boiling point, or the single point of the record where the normal
// boiling T is not known. Reads the substance, the EOS and EVP in force; leaves their scratch. Where the EOS
// gives no rho(V), it comes from Pitzer and Curl (1957), without omega from the ideal gas.
// err -1: neither T is known; the others are 0 then. Writes nothing to s.benson.
ReferencePointResult ReferencePoint(Session& s);

// Runs ReferencePoint and stores the point in s.benson; a failure leaves s.benson as it was.
ReferencePointResult TakeReferencePoint(Session& s);

// Benson's point at the normal boiling T: rho(L) by his own formula, rho(V) from the EOS.
// err -1: no T(nb), p(cr) or rho(cr). Writes nothing to s.benson.
ReferencePointResult BensonReferencePoint(Session& s);

void store(BensonReference& benson, const ReferencePointResult& point);

// Whether all four values of the point are there.
bool is_complete(const BensonReference& benson);

}  // namespace quom
