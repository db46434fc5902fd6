// The choice between GLOBAL and PARTIAL for one calculation of an equilibrium, with the reference point of
// Benson's method: frmCalcIn without its window. The selection is a copy; what it became is in
// PartialContinue.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "calc/state_input.h"
#include "engine/fluid.h"

namespace quom {

inline constexpr std::string_view partial_caption = "Selection of GLOBAL or PARTIAL calculation for the VLE";
inline constexpr std::string_view partial_reference_title = "Reference  point for BENSON's method";

// What the texts and the free options of the window follow from.
enum class PartialSituation {
    vapor_only,       // PARTIAL is fixed: the EOS knows the V-phase alone
    assumed_state,    // mode 3: T and p are taken as an equilibrium
    free_choice,      // the concept of the models is GLOBAL
    partial_concept,  // the concept of the models is PARTIAL
    benson_only,      // tank, delta(LV)h by Benson: PARTIAL and his method are fixed
};

enum RefOption : int { ref_proposed = 0, ref_benson = 1, ref_manual = 2 };

// What the window shows.
struct PartialView {
    PartialSituation situation = PartialSituation::free_choice;
    std::string_view assumption;    // text of the situation
    std::string_view second_title;  // "Situation of Calculation" where the second group is enlarged
    bool opt_glob_enabled = true;   // the user may choose between GLOBAL and PARTIAL
    bool GlobalCalc = true;         // opt_glob: true index 0 "GLOBAL calculation", false index 1
    bool optPartialBenson_enabled = true;
    bool BensonRhoL = true;
    std::string_view method;  // text of the chosen density
    std::string range;        // validity of rho(L) = Fu(T)
    std::string status;       // status line
    int Ref_opt = ref_proposed;
    std::string heading;         // above the text of the reference point
    std::string reference_text;  // '\n' between lines
    bool OK_enabled = true;      // "Continue >"
};

// The selection while its window is open.
struct PartialSelection {
    PartialView view;
    CalcSetup setup;  // as chosen so far
    Mode mode = Mode::none;
    bool diagram_pending = false;  // entered on the way to a diagram
};

// Opens for a mode over the setup of the calculation: RhoLWanted false, PARTIAL where GLOBAL is not possible,
// and the proposed reference point (Ref_opt 0).
PartialSelection OpenPartial(const Fluid& fluid, Mode mode, const CalcSetup& setup,
                             bool diagram_pending = false);

// opt_glob. Refused, with the option as it was, for GLOBAL with an EOS of the V-phase only.
std::optional<Message> ChooseConcept(const Fluid& fluid, PartialSelection& selection, bool global);

// optPartialBenson: Benson's method, or the database equation rho(L) = Fu(T).
void ChooseDensity(const Fluid& fluid, PartialSelection& selection, bool benson);

// Ref_opt. Index 2 leaves the point to the input of kind 4: true means that frmParinput is to open.
bool ChooseReference(const Fluid& fluid, PartialSelection& selection, int Ref_opt);

// Takes a reference point that was typed, and shows it.
void ReferenceTaken(const Fluid& fluid, PartialSelection& selection, const BensonReference& point);

// What follows "Continue >".
struct PartialContinue {
    CalcSetup setup;  // of the calculation, with RhoLWanted
    bool result_window = false;
    bool parameter_input = false;  // with ParInputKind
    bool diagram_setup = false;    // with the pending kind
    int ParInputKind = 0;
};
// direct: the values of the mode come from boxes (is_direct of calculation_form.h).
PartialContinue ContinuePartial(const Fluid& fluid, const PartialSelection& selection, bool direct);

// The same without a window: the concept and the density as asked for, the reference point as proposed, else
// by Benson's formula.
struct PartialChoice {
    std::optional<Message> refusal{};  // setup is that of the call
    CalcSetup setup;
};
PartialChoice SelectPartial(const Fluid& fluid, Mode mode, const CalcSetup& setup, bool global, bool benson);

}  // namespace quom
