// What the cubic equation of state says about the state of the last calculation: its volume roots and their
// meaning.
#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "calc/outcome.h"
#include "engine/fluid.h"
#include "quantities/units.h"

namespace quom {

inline constexpr std::string_view diagnosis_caption = " Cubic Equation of State";

enum class RootMeaning { stable_L, stable_V, metastable, unstable };
std::string_view root_remark(RootMeaning meaning);  // "(stable, L-phase)"

struct RootLine {
    std::string_view label;  // "v(1) ="
    double v = 0;            // displayed unit
    std::string value;       // as shown, without unit
    RootMeaning meaning{};
};

struct EosDiagnosis {
    bool available = false;       // false: no state, or an EOS that is not cubic
    std::string heading;          // name of the EOS
    std::string_view unit;        // of the volumes
    float T = 0;                  // [K]
    double p = 0;                 // [kPa]
    bool below_critical = true;   // T < T(cr): the picture is the isotherm with three roots, the loop in it
    std::vector<RootLine> lines;  // ascending: one, or three
};
// Volumes times factors.vFactor; v_unit is their unit.
EosDiagnosis diagnose_eos(const Fluid& fluid, const Outcome& outcome, const UnitFactors& factors,
                          std::string_view v_unit);

// Whether the window of the diagnosis is offered for an outcome of this setup: a state of a cubic equation
// under the GLOBAL concept.
bool diagnosis_offered(const Fluid& fluid, const CalcSetup& setup, const Outcome& outcome);

}  // namespace quom
