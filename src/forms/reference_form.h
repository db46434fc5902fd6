// Input of the reference state of h and s and of the environment of exergies: frmReferenz without its window.
#pragma once
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "forms/refusal.h"
#include "session/document.h"

namespace quom {

inline constexpr std::string_view reference_caption = " Calculation of Thermodyn. Functions Z - Preparation";
inline constexpr std::string_view reference_heading =
    "Select the reference state for enthalpy h and entropy s:";
inline constexpr std::string_view reference_T_label = "at reference temperature To/K =";
inline constexpr std::string_view reference_p_label = "and ref. pressure po/kPa =";
inline constexpr std::string_view reference_p_hint = "(for CEOS: default value po = pLV(To)) ";
inline constexpr std::string_view reference_state_note = " (ideal gas state)";
inline constexpr std::string_view environment_heading = "Surrounding conditions (for exergy only):";
inline constexpr std::string_view environment_T_label = "T(surr)/K =";
inline constexpr std::string_view environment_p_label = "p(surr)/kPa =";

// opt_HNull by its index, and the code that the document and the project file keep.
struct ReferenceOption {
    int RefKode;
    std::string_view text;
    bool fixed_point;  // TRef0, pRef0 are 298.15 K, 101.325 kPa and there are no offsets
};
inline constexpr std::array<ReferenceOption, 3> reference_options = {{
    {reference_free, "free input", false},
    {reference_from_gibbs, "Conventional reference state (cf. Hilfe)", true},
    {reference_formation,
     "Z(ref) = quantity of formation for ideal gas state at (To=298.15 K and normal pressure) from elements "
     "in the "
     "stable state",
     true},
}};
// Index of the option of a code; 0 for an unknown one.
int reference_option_of(int RefKode);

// Labels of the boxes of h and s by EnergyMode.
std::string_view reference_h_label(const Units& units);
std::string_view reference_s_label(const Units& units);

// Boxes of the window; h and s in the displayed unit.
struct ReferenceBoxes {
    int option = 0;             // opt_HNull
    double T0 = 0, p0 = 0;      // [K], [kPa]; 0 for p0 becomes 101.325 kPa when it is used
    double h = 0, s = 0;        // offsets of the ideal gas
    double TEnv = 0, pEnv = 0;  // [K], [kPa]
};
ReferenceBoxes reference_boxes(const Document& document);

// The boxes after a click on an option: the fixed ones clear the offsets and show 298.15 K and 101.325 kPa.
void choose_reference_option(ReferenceBoxes& boxes, int option);

// h0 and s0 that an option takes from the substance, in the displayed unit, to be shown beside it.
struct ReferenceValues {
    double h0 = 0, s0 = 0;
};
ReferenceValues reference_values(const Document& document, int option);

// Why a substance cannot have a reference state: formation data that the record lacks; "no valid input" for a
// value that is not finite, a T0 not above 0, a negative p0, TEnv or pEnv.
std::optional<Message> reference_refusal(const SubstanceConstants& substance,
                                         const ReferenceState& reference);

// "OK": takes the boxes into the document; a TEnv of exactly 0 becomes 1e-6 K. A refusal takes nothing.
std::optional<Message> take_reference(Document& document, const ReferenceBoxes& boxes);

// The boxes of the window in their order.
enum ReferenceBox : std::size_t { box_T0, box_p0, box_h, box_s, box_TEnv, box_pEnv };
using ReferenceTexts = std::array<std::string, 6>;
// Why the boxes cannot be taken: a text that is no number of its box, or (message) what no box can mend.
struct ReferenceRefusal {
    std::optional<BoxRefusal> box{};
    std::optional<Message> message{};
    explicit operator bool() const { return box || message; }
};
// The same for the texts of the boxes under an option (opt_HNull).
ReferenceRefusal take_reference(Document& document, int option, const ReferenceTexts& texts);

}  // namespace quom
