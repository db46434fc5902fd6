// What a calculation starts from: mode, specified values, and what was chosen for it.
#pragma once
#include <optional>

#include "calc/mode_table.h"
#include "engine/models.h"

namespace quom {

// How phases are to be described in one calculation; chosen in frmCalcIn.
struct CalcSetup {
    bool GlobalCalc = true;    // the L-V result comes from the cubic EOS alone; false: PARTIAL
    bool BensonRhoL = true;    // rho(L) of a PARTIAL calculation by Benson's method, else by rho(L) = Fu(T)
    bool RhoLWanted = false;   // a liquid density is to be calculated in a PARTIAL calculation
    bool VLEAssumed = false;   // mode 3: T, p describe an equilibrium
    BensonReference benson{};  // reference point; a PARTIAL tank without one takes the proposal
    bool operator==(const CalcSetup&) const = default;
};

// One calculation. T [K], p [kPa], rho [kg/m^3] (mode 2: of the L-phase), m [kg], V [m^3]; absent is absent.
// In modes 4 to 7 the value that is not specified is that of the data point, used where no equation gives it.
struct StateInput {
    Mode mode = Mode::none;
    std::optional<double> T{}, p{}, rho{}, m{}, V{};
    CalcSetup setup{};
    bool functions = true;  // h .. w of the phases
    bool coefficients =
        false;  // the result arrays of the phases (derivatives, coefficients, residual functions)
    bool inflection = false;  // points of inflection of the isotherm
    bool operator==(const StateInput&) const = default;
};

}  // namespace quom
