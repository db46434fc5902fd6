#include "engine/fluid.h"

#include <utility>

#include "engine/eos_parameters.h"
#include "engine/ideal_gas.h"
#include "engine/reduced_saturation.h"
#include "engine/saturation.h"
#include "engine/thermo_functions.h"
#include "engine/vapor_pressure.h"

namespace quom {

std::shared_ptr<const Fluid> make_fluid(FluidInput input) {
    auto fluid = std::make_shared<Fluid>();
    fluid->substance = std::move(input.substance);
    fluid->models = input.models;
    fluid->eos_input = input.eos_input;
    fluid->reference = input.reference;
    for (const EvpInfo& row : evp_list()) {
        if (row.correlated) KorreliereEVP(fluid->substance, row.code);
    }
    const Eos code = fluid->models.EOSKode;
    const EosConstants constants = InitEOSPar(fluid->substance, code, fluid->eos_input);
    fluid->eos = constants.block;
    fluid->eos_reason = constants.reason;
    fluid->VPhaseOnly = fluid->models.VPhaseOnly();
    fluid->M = static_cast<double>(fluid->substance.MolMass);
    fluid->ideal_gas = ideal_gas_reference(fluid->substance, fluid->models.cpKode, fluid->reference);
    if (fluid->has_eos() && !fluid->VPhaseOnly) fluid->saturation = saturation_table_for(fluid->eos, code);
    fluid->boiling = boiling_curve_for(*fluid);
    fluid->environment = make_environment(*fluid);
    return fluid;
}

std::shared_ptr<const Fluid> with_models(const Fluid& fluid, const ModelSelection& models) {
    return make_fluid({.substance = fluid.substance,
                       .models = models,
                       .eos_input = fluid.eos_input,
                       .reference = fluid.reference});
}

std::shared_ptr<const Fluid> with_eos(const Fluid& fluid, Eos code) {
    ModelSelection models = fluid.models;
    models.EOSKode = code;
    return with_models(fluid, models);
}

}  // namespace quom
