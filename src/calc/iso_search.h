// The inverse question to a state calculation: which p at a given T, or which T at a given p, gives a
// function its value. The search, and the Iso Calculator over it.
#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "calc/calc_batch.h"
#include "session/session.h"

namespace quom {

enum IsoUnknown : int { iso_find_p = 0, iso_find_T = 1 };

// Functions that can be held, by their index: v, h, s, g, u, a, eH, eU.
struct IsoFunction {
    std::string_view caption;
    std::string_view label;
};
inline constexpr std::array<IsoFunction, 8> iso_functions = {{
    {"Volume V", "V  = "},
    {"Enthalpy H", "H  = "},
    {"Entropy S", "S  = "},
    {"Gibbs Function G", "G  = "},
    {"Internal Energy U", "U  = "},
    {"Helmholtz Fu. A", "A  = "},
    {"Exergy E(H)", "E(H)= "},
    {"Exergy E(U)", "E(U)= "},
}};

struct IsoResult {
    double value = 0;        // p [kPa] or T [K]
    int rounds = 0;          // of the Newton search, 500 at most
    bool bracketed = false;  // found between two states with the target between them, Newton having failed
    std::int16_t err = 0;
};

// Finds p [kPa] (What 0) or T [K] (What 1) of the data point Point at which function Column (0 to 7) of the
// phase (0 L, 1 V) is Target, in displayed units. The other of T, p is read from the data point; the unknown
// starts from its value there, 0 for none.
//
// Newton with a forward difference through CalcBatch in mode 8, to |dx/x| <= 1.5e-6; a root that is none of
// the chosen phase does not count. Where Newton fails, the range of the phase is searched for the solution
// next to the start. Success leaves the value in the data point and s.calc at the state found. err -1: no
// state of this phase has the target; T, p and s.calc are as before.
IsoResult IsoSearch(Session& s, int What, int Column, double Target, int Phase, int Point = 0);

// ---- frmIsoCalc ----

struct IsoCalculator {
    int IsoIn = iso_find_p;   // 0: T is given and p is searched
    int IsoFu = 0;            // index in iso_functions
    int optIsoPhase = 1;      // 0 L-phase, 1 V-phase
    double txtTpVorgabe = 0;  // given T [K] or p [kPa]
    double txtFuConst = 0;    // value of the function, displayed unit
    std::string txtTpCalc;    // result, or why there is none
    std::string result_label;
    struct Success {
        double T = 0, p = 0;  // [K], [kPa]
        int IsoIn = 0, IsoFu = 0, optIsoPhase = 1;
        double txtFuConst = 0;
    };
    std::optional<Success> last;  // for "Reset Last"
};

struct IsoOpened {
    std::optional<Message> refusal{};
    IsoCalculator calculator;
};
// Opens on T and p of data point 0; refused while one of them is 0.
IsoOpened open_iso_calculator(Session& s);

// "  T/K = " or "p/kPa = ", the label of the given value.
std::string_view iso_given_label(const IsoCalculator& c);
std::string_view iso_unit(const Session& s, const IsoCalculator& c);  // of the function

// After another choice of optIsoTp, OptIsoFu or optIsoPhase: given value and function of the current state.
void show_current_state(Session& s, IsoCalculator& c);

// cmdCalc: searches from the state of data point 0. False: txtTpCalc is "No solution found".
bool iso_calculate(Session& s, IsoCalculator& c);

// The state of data point 0 as mode 8 shows it, without extended output.
CalcBatchResult iso_state(Session& s);

// cmdReset: data point 0 and the boxes as of the last success; "No solution" without one.
void iso_reset(Session& s, IsoCalculator& c);

}  // namespace quom
