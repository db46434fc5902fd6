#include "engine/unit_factors.h"

namespace quom {

UnitFactors unit_factors(const Fluid& fluid, Units units, double T) {
    if (units.VolumeMode == reduced_volume) {
        units.TcrStart = fluid.substance.Tcr;
        units.pcrStart = fluid.substance.pcr;
        units.vcrStart = fluid.eos.vcrEOS;
    }
    return unit_factors(units, fluid.M, T);
}

}  // namespace quom
