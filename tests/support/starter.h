// Substances and fluids of the starter database, for tests and benchmarks.
#pragma once
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "engine/fluid.h"
#include "engine/model_catalogue.h"
#include "substance/database.h"
#include "support/test_paths.h"

namespace quom::test {

// The starter database, opened anew.
inline DatabaseFile starter_database() {
    OpenedDatabase opened = open_database(7, test::starter_data() + "/quom.q07", true);
    if (opened.err != 0) throw std::runtime_error("the starter database is missing: " + opened.fault);
    return std::move(opened.file);
}

// Constants of the substance with a CAS number.
inline SubstanceConstants starter_substance(std::string_view cas) {
    const DatabaseFile file = starter_database();
    const int index = FindCAS(file, cas);
    if (index == 0) throw std::runtime_error("not in the starter database: " + std::string(cas));
    return unpack_substance(file, index, true).constants;
}

// The models that the model window proposes for a substance and an equation of state.
inline ModelSelection proposed_models(const SubstanceConstants& substance, Eos code) {
    ModelSelection models;
    models.EOSKode = code;
    models = quom::proposed_models(substance, models);
    models.EOSKode = code;  // a code that the window does not offer is tested too
    models.Konzept = !models.VPhaseOnly();
    return models;
}

// A substance of the starter database with an equation of state; the other models as the model window
// proposes them. input: the constants of the equations that are typed or read from a file.
inline std::shared_ptr<const Fluid> starter_fluid(const SubstanceConstants& substance, Eos code,
                                                  const EosInput& input = {}) {
    return make_fluid({.substance = substance,
                       .models = proposed_models(substance, code),
                       .eos_input = input,
                       .reference = {}});
}
inline std::shared_ptr<const Fluid> starter_fluid(std::string_view cas, Eos code,
                                                  const EosInput& input = {}) {
    return starter_fluid(starter_substance(cas), code, input);
}

inline constexpr std::string_view propane = "74-98-6", water = "7732-18-5", methane = "74-82-8",
                                  decane = "124-18-5", ammonia = "7664-41-7", carbon_dioxide = "124-38-9",
                                  helium = "7440-59-7", hydrogen = "1333-74-0", benzene = "71-43-2",
                                  nitrogen = "7727-37-9", ethanol = "64-17-5", argon = "7440-37-1";

}  // namespace quom::test
