// What the calculations keep between two calls: mode and switches, the data of the tank, one result per data
// point, and the state that the diagnosis of the equation of state reads.
#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quom {

// Rows of the extended output, by the number of their label: 0 to 5 first derivatives, 6 to 8 mechanical
// coefficients, 9 to 13 second derivatives (10 and 11 stay empty), 14 to 23 fugacity and residual functions,
// Joule-Thomson coefficient, cV, cp.
inline constexpr std::size_t ExtendedRows = 24;

// L and V value of one row, side by side; 0 where the phase does not exist.
struct PhasePair {
    float L = 0, V = 0;
};

// Result of one data point. Written by CalcBatch; the fields of a point without a result are 0.
struct BatchResult {
    std::array<char, 3> Phase{' ', ' ', ' '};  // " V ", " L ", "V+L", blanks: no result
    float TCalc = 0;                           // [K], calculated or specified
    float pCalc = 0;                           // [kPa], calculated or specified
    float rhoVCalc = 0, rhoLCalc = 0;          // [kg/m^3]
    float hLVCalc = 0;                         // [kJ/kmol], modes 4 to 7
    std::array<PhasePair, ExtendedRows>
        Extended{};                             // by label number; molar units, only with extended output
    float h = 0, s = 0, g = 0, eH = 0, eU = 0;  // mode 8, V-phase if there is one, else L; displayed units
    std::string_view phase() const { return {Phase.data(), Phase.size()}; }
    bool has_result() const { return phase() != "   "; }
};

// State of the last calculation, for the diagnosis of the equation of state and for the factor per (R T).
// Written by CalcBatch in modes 1 to 8 and 13; T 0 means "no state".
struct CEOSState {
    float T = 0;                    // [K]
    double p = 0;                   // [kPa]
    bool IsL = false, IsV = false;  // stable phases
    std::array<double, 3> VRoot{};  // volume roots ascending [m^3/kmol], [0] liquid, [2] vapor
    std::int16_t PhaseCode = 0;     // 1 one solution, 3 three solutions or equilibrium, 0 V-phase-only EOS
    std::int16_t PhaseRegion = 0;   // region 0 to 4
    float g1 = 0, g2 = 0;           // areas of the equal-area rule [kPa m^3/kmol]
    double fd = 0;                  // their relative difference, 0 at saturation
    bool has_state() const { return T > 0; }
};

// Contents of the tank. Written by the input of the tank.
struct TankInput {
    float m = 0;  // mass [kg]
    float V = 0;  // volume [m^3]
    float T = 0;  // [K]
};

struct CalcState {
    // Written by the calculation menu and the console; 0 none, 1 to 24 (src/calc/mode_table.h).
    int CalcMode = 0;

    // Written by frmCalcIn, CalcDispatch, the tank entries of the menu, the console.
    bool GlobalCalc = true;   // the L-V result comes from the cubic EOS alone; false: PARTIAL
    bool BensonRhoL = true;   // rho(L) of a PARTIAL calculation by Benson's method, else by rho(L) = Fu(T)
    bool RhoLWanted = false;  // a liquid density is to be calculated in a PARTIAL calculation
    bool VLEAssumed = false;  // mode 3: T, p describe an equilibrium

    // Written by frmQCalcOut and the console.
    int ExtLevel = 1;            // 1 no extended output; 2 first box, 3 second box, 4 both
    bool ShowFunctions = false;  // the table of functions in the list

    // Written by frmQCalcOut: where the user last moved it; -1 before.
    int QCalcOutLeft = -1, QCalcOutTop = -1;

    // Written by CalcDispatch and frmCalcIn: 4 reference point, 33 tank, 100 + CalcMode direct values.
    int ParInputKind = 0;

    // Written by the process window: start of the process of mode 12 [K], [kPa].
    double ProcessT = 0, ProcessP = 0;

    TankInput tank;                         // written by frmParinput and the console
    CEOSState state;                        // written by CalcBatch
    std::vector<BatchResult> BatchResults;  // index = data point, [0] direct input; written by CalcBatch
};

}  // namespace quom
