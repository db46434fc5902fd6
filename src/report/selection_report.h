// What the numbers of an answer rest on: substance, models, reference state, units; as blocks for programs
// and as the line that ends every text.
#pragma once
#include <string>

#include "engine/fluid.h"
#include "quantities/units.h"
#include "report/report.h"

namespace quom {

// "Water  H2O  7732-18-5", and the models in force "CEOS Peng / Robinson, GLOBAL concept".
std::string substance_head(const SubstanceConstants& substance);
std::string models_head(const ModelSelection& models);
// All models: "Peng / Robinson, GLOBAL concept, p(LV): Wagner, cp(idG): sinh/cosh".
std::string models_text(const ModelSelection& models);
// "h = s = 0 of the ideal gas at 298.15 K, 101.325 kPa"; without cp(idG) that there is none.
std::string reference_text(const Fluid& fluid);

// "substance", "models", "reference", in JSON only. index: number in the list of the database. TRef0 [K],
// pRef0 [kPa] is the state of the ideal gas where h is h0 [kJ/kmol] and s is s0 [kJ/(kmol K)]; TEnv [K], pEnv
// [kPa] the environment of the exergies.
Block substance_block(const SubstanceConstants& substance, int index);
Block models_block(const ModelSelection& models);
Block reference_block(const Fluid& fluid);

// "Propane, 74-98-6; CEOS Peng / Robinson, GLOBAL concept, ...; h = s = 0 of the ideal gas at 298.15 K,
// 101.325 kPa; h in kJ/kmol, s in kJ/(kmol K), v in m^3/kmol". Pure numbers have what they are divided by.
Footer footer_of(const Fluid& fluid, const Units& units);

}  // namespace quom
