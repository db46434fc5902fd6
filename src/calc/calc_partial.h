// The choice between GLOBAL and PARTIAL for one calculation of an equilibrium, with the reference point of
// Benson's method: frmCalcIn without its window.
#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "session/session.h"

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
    bool diagram_pending = false;  // entered on the way to a diagram
};

// Opens: RhoLWanted false, ParInputKind 4, reference point 0; PARTIAL where GLOBAL is not possible. Then the
// proposed reference point is taken (Ref_opt 0).
PartialSelection OpenPartial(Session& s, bool diagram_pending = false);

// opt_glob. Refused, with the option as it was, for GLOBAL with an EOS of the V-phase only.
std::optional<Message> ChooseConcept(Session& s, PartialSelection& selection, bool global);

// optPartialBenson: Benson's method, or the database equation rho(L) = Fu(T).
void ChooseDensity(Session& s, PartialSelection& selection, bool benson);

// Ref_opt. Index 2 leaves the point to the input of kind 4: true means that frmParinput is to open.
bool ChooseReference(Session& s, PartialSelection& selection, int Ref_opt);

// Shows a reference point that frmParinput has taken.
void ReferenceTaken(Session& s, PartialSelection& selection);

// What follows "Continue >".
struct PartialContinue {
    bool result_window = false;
    bool parameter_input = false;  // with s.calc.ParInputKind
    bool diagram_setup = false;    // with the pending kind
};
// Sets RhoLWanted and ParInputKind; the window closes.
PartialContinue ContinuePartial(Session& s, const PartialSelection& selection);

// Whether rho(L) = Fu(T) of the database, or its single point, can be evaluated.
bool has_liquid_density(const SubstanceConstants& substance);

// The same without a window: the concept and the density as asked for, the reference point as proposed, else
// by Benson's formula. Returns the refusal, none when the calculation can go on.
std::optional<Message> SelectPartial(Session& s, bool global, bool benson);

}  // namespace quom
