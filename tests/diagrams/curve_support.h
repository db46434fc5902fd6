// Curves of the tests: fluids, units and ranges that suit a kind.
#pragma once
#include <string>

#include "diagrams/curve_generator.h"
#include "support/starter.h"

namespace quom::test {

// A substance with an equation of state, and units.
struct Setting {
    std::string name;
    std::shared_ptr<const Fluid> fluid;
    Units units;
    double Tcr() const { return fluid->substance.Tcr; }
    double pcr() const { return fluid->substance.pcr; }
    // v(cr) of the equation; of the substance where the equation has none.
    double vcr() const { return fluid->eos.vcrEOS > 0.0 ? fluid->eos.vcrEOS : fluid->substance.vcrDB; }
};

inline constexpr Units molar{energy_molar, volume_molar}, per_R{energy_per_R, volume_molar},
    specific{energy_per_mass, volume_per_mass}, reduced{energy_per_RT, reduced_volume};

// The call of a kind over a range that its curves fill: T 0.5 to 1.3 T(cr), p to 1.5 p(cr), v to 16 v(cr).
CurveInput curve_input(const Setting& setting, Kind kind, int Dens);

}  // namespace quom::test
